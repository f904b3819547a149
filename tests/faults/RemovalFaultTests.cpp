// Somebody moves things about in a tree while it is deleted. What was never in it stays.
#include "Descriptor.h"
#include "FileRemover.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct RemovalFaults : testing::Test {
    RemovalFaults() { disk.file("precious/kept", "kept"); }

    // Deletes "tree" and lets somebody act once, right after a call with this name for this entry. Nothing is
    // deleted that this tree never held by name, so that a rule that is broken costs nobody a file.
    Result<> removeTree(const char* call, const char* entry, const std::function<void()>& act) const {
        const Descriptor folder(::open(disk.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        bool acted = false;
        const SystemCallWatch watch([](const SystemCall&) { return 0; },
                                    [&](const SystemCall& made, bool) {
                                        if (made.name == call && made.path == entry &&
                                            !std::exchange(acted, true)) {
                                            act();
                                        }
                                    });
        auto removed = FileRemover::removeTree(folder.get(), "tree");
        EXPECT_TRUE(acted);
        return removed;
    }
    bool isThere(const std::string& below) const { return fs::exists(fs::symlink_status(disk.at(below))); }
    static const std::set<std::string_view>& namesInTree() {
        static const std::set<std::string_view> names = {"tree", "below", "x", "late", "d", "leaf"};
        return names;
    }
    static std::string levels(int count) {
        std::string path;
        for (int i = 0; i < count; ++i) {
            path += "/d";
        }
        return path;
    }

    TemporaryFolder disk;
};

TEST_F(RemovalFaults, AFolderThatBecomesALinkBeforeItIsEnteredIsNotFollowed) {
    disk.file("tree/below/x");
    const auto removed = removeTree("fstatat", "below", [&] {
        disk.rename("tree/below", "away");
        disk.link("tree/below", "../precious");
    });
    EXPECT_FALSE(removed.ok());
    EXPECT_TRUE(isThere("precious/kept"));
}

TEST_F(RemovalFaults, AnEntryThatComesIntoAFolderWhileTheWorkIsBelowItGoesToo) {
    disk.file("tree/below/x");
    EXPECT_TRUE(removeTree("unlinkat", "x", [&] { disk.file("tree/late"); }).ok());
    EXPECT_FALSE(isThere("tree"));
}

// The way back leads through "..", and that is a stranger's folder then.
TEST_F(RemovalFaults, AFolderThatIsMovedOutOfADeepTreeDoesNotLeadTheWorkOutOfIt) {
    disk.chain("tree", 60);
    const auto removed =
        removeTree("unlinkat", "leaf", [&] { disk.rename("tree" + levels(30), "precious/d"); });
    ASSERT_FALSE(removed.ok());
    EXPECT_EQ(removed.error().underlying, ESTALE);
    EXPECT_TRUE(isThere("precious/kept"));
}

} // namespace
} // namespace quillane
