#include "MacWorkspace.h"
#include "PictureStandIns.h"
#include "ScriptedCommandRunner.h"
#include "StandIns.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

class MacWorkspaceTest : public testing::Test {
  protected:
    MacWorkspaceTest() {
        StandIn::begin();
        StandIn::beginPictures();
    }

    StepTaskRunner tasks;
    ScriptedCommandRunner commands;
    MacWorkspace workspace{tasks, commands};
};

TEST_F(MacWorkspaceTest, AnIconIsDrawnInTheSizeThatIsAskedForWithItsColorsAsOurs) {
    StandIn::setIcon(StandIn::Picture{2, 1, {64, 0, 0, 128, 9, 8, 7, 255}});
    const auto icon = workspace.icon(FileURL("/Applications/A b é.app"), 2);
    EXPECT_EQ(*icon, (IconImage{2, 2, {128, 0, 0, 128, 9, 8, 7, 255, 128, 0, 0, 128, 9, 8, 7, 255}}));
    EXPECT_EQ(StandIn::drawingObjects(), 0);
}

TEST_F(MacWorkspaceTest, TheSystemsOwnImageIsLeftAsItIs) {
    StandIn::setIcon(StandIn::Picture{1, 1, {1, 2, 3, 255}});
    workspace.icon(FileURL("/Applications/A b é.app"), 64);
    const auto requests = StandIn::iconRequests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].path, "/Applications/A b é.app");
    EXPECT_EQ(requests[0].side, 64);
    EXPECT_EQ(requests[0].ownSide, 64);
    EXPECT_EQ(requests[0].lentSide, 32);
}

TEST_F(MacWorkspaceTest, ThereIsAPictureWhateverIsAskedFor) {
    StandIn::setIcon(std::nullopt);
    for (const char* path : {"/none", "/\xFF", "/"}) {
        EXPECT_EQ(*workspace.icon(FileURL(path), 2), (IconImage{2, 2, std::vector<std::uint8_t>(16)}))
            << path;
    }
    for (const int side : {0, -1}) {
        EXPECT_FALSE(workspace.icon(FileURL("/none"), side)->isEmpty());
    }
}

TEST_F(MacWorkspaceTest, OpensWithoutWaitingByTheAddressWhateverTheName) {
    workspace.open(FileURL("/Users/alex/100% ?#é\xFF.txt"));
    EXPECT_EQ(StandIn::opened(), std::vector{FileURL("/Users/alex/100% ?#é\xFF.txt").absoluteString()});
}

TEST_F(MacWorkspaceTest, RevealsAllInOneGoAwayFromTheMainThread) {
    workspace.reveal({FileURL("/a b"), FileURL("/c")});
    EXPECT_TRUE(StandIn::revealed().empty());
    tasks.runAll();
    EXPECT_EQ(StandIn::revealed(), (std::vector<std::vector<std::string>>{{"file:///a%20b", "file:///c"}}));
    workspace.reveal({});
    tasks.runAll();
    EXPECT_EQ(StandIn::revealed().size(), 1U) << "no window for nothing";
}

TEST_F(MacWorkspaceTest, OpensThePageForFullDiskAccess) {
    workspace.openFullDiskAccessSettings();
    EXPECT_EQ(
        StandIn::opened(),
        std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"});
}

TEST_F(MacWorkspaceTest, RelaunchesItsOwnBundleAndEndsByTheApplication) {
    StandIn::setBundle({.path = "/Applications/My Quillane.app"});
    workspace.relaunch();
    EXPECT_EQ(StandIn::ends(), 0);
    tasks.runAll();
    EXPECT_EQ(commands.calls(),
              (std::vector<ScriptedCommandRunner::Call>{
                  {"/usr/bin/open", {"-n", "/Applications/My Quillane.app", "--args", "--relaunched"}}}));
    EXPECT_EQ(StandIn::ends(), 1);
}

} // namespace
} // namespace quillane
