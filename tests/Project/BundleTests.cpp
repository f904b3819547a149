// What the Mac's bundle says of itself, as CMake has written it for this build.
#include "PropertyList.h"
#include "SourceTree.h"
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <string>

namespace {
namespace fs = std::filesystem;
using namespace quillane;

class Bundle : public ::testing::Test {
  protected:
    // A list that CMake wrote; empty where it can't be read.
    static PropertyList::Dictionary list(const char* name) {
        const auto parsed = PropertyList::parse(readFile(fs::path(QUILLANE_INFO_PLISTS) / name));
        const auto* root = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
        return root != nullptr ? *root : PropertyList::Dictionary();
    }

    static std::string text(const PropertyList::Dictionary& list, std::string_view key) {
        return PropertyList::asString(list.find(key)).value_or("no text");
    }

    // What the pattern's first group matches in a file of the tree.
    static std::string told(const char* file, const char* pattern) {
        const std::string content = readFile(fs::path(QUILLANE_SOURCE_DIR) / file);
        std::smatch match;
        return std::regex_search(content, match, std::regex(pattern)) ? match[1].str() : std::string();
    }

    const PropertyList::Dictionary m_plain = list("Info.plist");
    const PropertyList::Dictionary m_withFeed = list("InfoWithFeed.plist");
};

TEST_F(Bundle, IsTheApplicationThatEverythingElseCallsByThisIdentifier) {
    EXPECT_EQ(text(m_plain, "CFBundleIdentifier"), "org.quillane.Quillane");
    EXPECT_EQ(text(m_plain, "CFBundleName"), "Quillane");
    EXPECT_EQ(text(m_plain, "CFBundleExecutable"), "Quillane");
    EXPECT_EQ(text(m_plain, "CFBundlePackageType"), "APPL");
    EXPECT_EQ(text(m_plain, "NSPrincipalClass"), "NSApplication");
    EXPECT_EQ(text(m_plain, "LSApplicationCategoryType"), "public.app-category.utilities");
    EXPECT_EQ(PropertyList::asBool(m_plain.find("NSHighResolutionCapable")), true);
}

TEST_F(Bundle, NamesTheIconThatIsDrawnForIt) {
    EXPECT_EQ(text(m_plain, "CFBundleIconFile") + ".icns",
              told("packaging/mac/CMakeLists.txt", R"((\w+\.icns))"));
}

TEST_F(Bundle, HasTheVersionOfTheProgram) {
    const auto version = told("CMakeLists.txt", R"(project\(Quillane VERSION ([\d.]+))");
    ASSERT_FALSE(version.empty());
    EXPECT_EQ(text(m_plain, "CFBundleShortVersionString"), version);
    EXPECT_EQ(text(m_plain, "CFBundleVersion"), version);
}

TEST_F(Bundle, AsksForTheOldestMacThatTheSourcesAreCompiledFor) {
    const auto oldest = told("cmake/DeploymentTarget.cmake", R"(DEPLOYMENT_TARGET ([\d.]+)\))");
    ASSERT_FALSE(oldest.empty());
    EXPECT_EQ(text(m_plain, "LSMinimumSystemVersion"), oldest);
}

// The system shows these words when it asks a person; without them it asks without a reason.
TEST_F(Bundle, TellsWhyItLooksIntoEachPlaceThatTheSystemAsksAbout) {
    for (const char* place :
         {"DesktopFolder", "DocumentsFolder", "DownloadsFolder", "RemovableVolumes", "NetworkVolumes"}) {
        const auto reason = text(m_plain, std::string("NS") + place + "UsageDescription");
        EXPECT_TRUE(reason.ends_with(".") && reason.find("Quillane") != std::string::npos)
            << place << ": " << reason;
    }
}

// An agent has no icon in the Dock and no menu bar.
TEST_F(Bundle, IsNoAgent) {
    EXPECT_EQ(m_plain.find("LSUIElement"), nullptr);
    EXPECT_EQ(m_plain.find("LSBackgroundOnly"), nullptr);
}

TEST_F(Bundle, SaysNothingOfUpdatesWhenTheBuildHasNoFeed) {
    ASSERT_FALSE(m_plain.entries().empty());
    for (const auto& entry : m_plain.entries()) {
        EXPECT_FALSE(entry.key.starts_with("SU")) << entry.key;
    }
}

TEST_F(Bundle, HasTheFeedAndItsKeyAndAsksForNoLeaveAtTheSecondStart) {
    EXPECT_EQ(text(m_withFeed, "SUFeedURL"), "https://nowhere.invalid/feed?one=1&two=<2>");
    EXPECT_EQ(text(m_withFeed, "SUPublicEDKey"), "iojj3XQJ8ZX9UtstPLpdcspnCb8dlBIb83SIAbQPb1w=");
    EXPECT_EQ(PropertyList::asBool(m_withFeed.find("SUEnableAutomaticChecks")), false);
}

// It reads what a person has, all over the disk, and loads no code of others.
TEST_F(Bundle, IsGivenNoEntitlement) {
    const auto file = readFile(fs::path(QUILLANE_SOURCE_DIR) / "packaging/mac/Quillane.entitlements");
    const auto parsed = PropertyList::parse(file);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(*parsed, PropertyList::Value(PropertyList::Dictionary()));
    EXPECT_FALSE(file.empty());
}

} // namespace
