#include "ItemIdentity.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quillane {
namespace {

class ItemIdentityTest : public testing::Test {
  protected:
    ItemIdentityTest() {
        folder.file("Code/x/notes", "notes");
        folder.file("Code/x/Notes", "other notes");
        folder.link("code", "Code");
    }
    bool isOneOf(const std::string& below, const std::set<std::string>& others) const {
        std::set<std::string> paths;
        for (const auto& other : others) {
            paths.insert(folder.at(other));
        }
        return ItemIdentity::isOneOf(files, folder.url(below), paths);
    }

    TemporaryFolder folder;
    PosixFileSystem files;
};

TEST_F(ItemIdentityTest, APathIsItself) {
    EXPECT_TRUE(isOneOf("Code/x/notes", {"Code/x/notes"}));
    EXPECT_TRUE(isOneOf("gone", {"gone"})) << "also when nothing is there";
    EXPECT_FALSE(isOneOf("Code/x/notes", {}));
    EXPECT_FALSE(isOneOf("Code/x/notes", {"Code/x", "Code/y/notes"}));
}

TEST_F(ItemIdentityTest, AnotherWayToTheSameFolderLeadsToTheSameItem) {
    EXPECT_TRUE(isOneOf("code/x/notes", {"Code/x/notes"}));
    EXPECT_TRUE(isOneOf("code/x", {"Code/x"}));
}

TEST_F(ItemIdentityTest, NamesThatDifferByCaseAreTwoItemsWhereTheVolumeSaysSo) {
    EXPECT_FALSE(isOneOf("Code/x/Notes", {"Code/x/notes"}));
}

TEST_F(ItemIdentityTest, ALinkIsNotWhatItLeadsTo) {
    EXPECT_FALSE(isOneOf("code", {"Code"}));
}

TEST_F(ItemIdentityTest, AnotherHardLinkOfAFileIsAnotherItem) {
    folder.hardLink("copies/notes", "Code/x/notes");
    folder.hardLink("Code/x/more", "Code/x/notes");
    EXPECT_FALSE(isOneOf("copies/notes", {"Code/x/notes"}));
    EXPECT_FALSE(isOneOf("Code/x/more", {"Code/x/notes"}));
}

} // namespace
} // namespace quillane
