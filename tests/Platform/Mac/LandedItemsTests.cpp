#include "LandedItems.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct LandedItemsTest : testing::Test {
    // Another of the same name, while the first is still there: so it has an inode of its own.
    void replace(const std::string& name) {
        disk.file("another", "x");
        disk.rename("another", name);
    }

    TemporaryFolder disk;
    LandedItems items{3};
};

TEST_F(LandedItemsTest, WhatLiesWhereItLandedMayBeIt) {
    disk.file("a").folder("b").link("c", "nowhere");
    for (const char* name : {"a", "b", "c"}) {
        items.note(disk.url(name));
        EXPECT_TRUE(items.mayStillLie(disk.url(name))) << name;
    }
    disk.file("a", "changed");
    EXPECT_TRUE(items.mayStillLie(disk.url("a"))) << "its content is its own";
}

TEST_F(LandedItemsTest, AnotherItemOfTheNameIsNotIt) {
    disk.file("a");
    items.note(disk.url("a"));
    replace("a");
    EXPECT_FALSE(items.mayStillLie(disk.url("a")));
    items.note(disk.url("a"));
    EXPECT_TRUE(items.mayStillLie(disk.url("a"))) << "that one landed here as well";
}

TEST_F(LandedItemsTest, ALinkToItIsNotIt) {
    disk.file("a");
    items.note(disk.url("a"));
    disk.rename("a", "b").link("a", "b");
    EXPECT_FALSE(items.mayStillLie(disk.url("a")));
}

TEST_F(LandedItemsTest, WhatIsGoneNoLongerLiesThere) {
    disk.file("a");
    items.note(disk.url("a"));
    disk.remove("a");
    EXPECT_FALSE(items.mayStillLie(disk.url("a")));
}

TEST_F(LandedItemsTest, OfWhatWasNotNotedAnythingMayLieThere) {
    EXPECT_TRUE(items.mayStillLie(disk.url("a")));
    disk.file("a");
    items.note(disk.url("a"));
    disk.remove("a");
    items.note(disk.url("a")); // it landed and was gone at once
    replace("a");
    EXPECT_TRUE(items.mayStillLie(disk.url("a")));
}

TEST_F(LandedItemsTest, TheOldestAreForgottenWhereTheyAreTooMany) {
    for (const char* name : {"a", "b", "c", "a", "d"}) { // "a" is noted anew, and "b" is the oldest then
        disk.file(name);
        items.note(disk.url(name));
    }
    for (const char* name : {"a", "b", "c", "d"}) {
        replace(name);
        EXPECT_EQ(items.mayStillLie(disk.url(name)), std::string(name) == "b") << name;
    }
}

} // namespace
} // namespace quillane
