// What every Trash keeps, over the plain Trash of a sample volume, the Trash of this system, and the wrapper in which
// tests make steps fail.
#include "DiskFolder.h"
#include "OddNames.h"
#include "OrdinaryUser.h"
#include "TrashKinds.h"
#include <cerrno>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <utility>

namespace quillane {
namespace {

const std::string kOdd = std::string(OddNames::kOne) + OddNames::kOther + " bad";

template <class Kind>
class TrashContract : public testing::Test {
  protected:
    FileURL url(const std::string& below) const { return Kind::url(world, below); }
    fs::path host(const FileURL& url) const { return Kind::host(world, url); }
    // Moves and expects it to have worked.
    FileURL trashed(const std::string& below) {
        auto landed = trash->moveToTrash(url(below));
        EXPECT_TRUE(landed.ok()) << below;
        EXPECT_TRUE(landed.ok() && landed->has_value());
        return landed.ok() && landed->has_value() ? **landed : FileURL("/nowhere");
    }
    std::string content(const fs::path& path) const {
        std::ifstream stream(path);
        std::stringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    World world;
    std::unique_ptr<Trash> trash = Kind::make(world);
};

TYPED_TEST_SUITE(TrashContract, TrashKinds);

// For the length of a block everybody may work in the world and use what the Trash holds, and nobody may list it.
class Unlisted {
  public:
    Unlisted(const World& world, fs::path folder)
        : m_folder(std::move(folder)) {
        setMode(world.root, 0777);
        setMode(world.root / "home", 0777);
        setMode(m_folder, 0333);
    }
    ~Unlisted() { setMode(m_folder, 0700); }
    Unlisted(const Unlisted&) = delete;
    Unlisted& operator=(const Unlisted&) = delete;

  private:
    static void setMode(const fs::path& path, mode_t mode) { EXPECT_EQ(::chmod(path.c_str(), mode), 0); }
    fs::path m_folder;
};

TYPED_TEST(TrashContract, BeforeTheFirstMoveThereIsNoTrashAndItListsEmpty) {
    EXPECT_FALSE(this->trash->location());
    const auto items = this->trash->items();
    ASSERT_TRUE(items.ok());
    EXPECT_TRUE(items->empty());
}

TYPED_TEST(TrashContract, AMovedFileIsWholeInTheTrashAndGoneFromItsPlace) {
    this->world.write("home/a file.txt", "content");
    const auto landed = this->trashed("home/a file.txt");
    EXPECT_EQ(this->content(this->host(landed)), "content");
    EXPECT_FALSE(fs::exists(this->world.root / "home/a file.txt"));
    EXPECT_EQ(this->host(landed).parent_path(), TypeParam::folder(this->world));
    EXPECT_EQ(*this->trash->items(), std::vector{landed});
}

TYPED_TEST(TrashContract, ANameThatIsTakenGetsACounterBeforeItsExtension) {
    for (const char* expected : {"Foo.app", "Foo 2.app", "Foo 3.app"}) {
        this->world.write("home/Foo.app/x", expected);
        const auto landed = this->trashed("home/Foo.app");
        EXPECT_EQ(landed.lastPathComponent(), expected);
        EXPECT_EQ(this->content(this->host(landed) / "x"), expected);
    }
}

TYPED_TEST(TrashContract, ANameOf255BytesMovesTwice) {
    const std::string name(255, 'n');
    for (int i = 0; i < 2; ++i) {
        this->world.write("home/" + name, std::to_string(i));
        EXPECT_EQ(this->content(this->host(this->trashed("home/" + name))), std::to_string(i));
    }
}

TYPED_TEST(TrashContract, ALongNameOfBytesThatAreNoTextMovesTwice) {
    std::string name;
    while (name.size() < 255) {
        name += OddNames::kContinuation;
    }
    for (int i = 0; i < 2; ++i) {
        this->world.write("home/" + name, std::to_string(i));
        EXPECT_EQ(this->content(this->host(this->trashed("home/" + name))), std::to_string(i));
    }
}

TYPED_TEST(TrashContract, AnOddNameComesThroughByteForByte) {
    for (const std::string& name :
         {std::string("new\nline"), kOdd, std::string("100% %41"), std::string("a;b"), std::string(";"),
          std::string("-rf"), std::string(".hidden"), std::string("é"), std::string("[Trash Info]")}) {
        this->world.write("home/" + name, name);
        const auto landed = this->trashed("home/" + name);
        EXPECT_EQ(landed.lastPathComponent(), name);
        ASSERT_TRUE(this->trash->moveOut(landed, this->url("home/" + name)).ok());
        EXPECT_EQ(this->content(this->world.root / "home" / name), name);
    }
}

TYPED_TEST(TrashContract, ALinkIsMovedAsALinkAndItsTargetStays) {
    this->world.write("home/target/file", "kept");
    fs::create_symlink(this->world.root / "home/target", this->world.root / "home/link");
    const auto landed = this->trashed("home/link");
    EXPECT_TRUE(fs::is_symlink(this->host(landed)));
    EXPECT_EQ(this->content(this->world.root / "home/target/file"), "kept");
}

TYPED_TEST(TrashContract, ADanglingLinkMovesAndComesBack) {
    fs::create_symlink("nowhere", this->world.root / "home/dangling");
    const auto landed = this->trashed("home/dangling");
    ASSERT_TRUE(this->trash->moveOut(landed, this->url("home/dangling")).ok());
    EXPECT_EQ(fs::read_symlink(this->world.root / "home/dangling"), "nowhere");
}

TYPED_TEST(TrashContract, AMissingFileFailsAndLeavesNothingInTheTrash) {
    const auto landed = this->trash->moveToTrash(this->url("home/missing"));
    ASSERT_FALSE(landed.ok());
    EXPECT_EQ(landed.error().code, ErrorCode::kNoSuchFileWriting);
    EXPECT_TRUE(this->trash->items()->empty());
}

TYPED_TEST(TrashContract, AFileTrashedTwiceFailsTheSecondTime) {
    this->world.write("home/a", "1");
    this->trashed("home/a");
    EXPECT_FALSE(this->trash->moveToTrash(this->url("home/a")).ok());
    EXPECT_EQ(this->trash->items()->size(), 1U);
}

TYPED_TEST(TrashContract, WhatIsPutBackNeverOverwritesWhatIsThere) {
    this->world.write("home/a", "old");
    const auto landed = this->trashed("home/a");
    this->world.write("home/a", "new");
    const auto back = this->trash->moveOut(landed, this->url("home/a"));
    ASSERT_FALSE(back.ok());
    EXPECT_EQ(back.error().code, ErrorCode::kWriteFileExists);
    EXPECT_EQ(this->content(this->world.root / "home/a"), "new");
    EXPECT_EQ(this->content(this->host(landed)), "old");
}

TYPED_TEST(TrashContract, ItNeverOverwritesADanglingLinkEither) {
    this->world.write("home/a", "old");
    const auto landed = this->trashed("home/a");
    fs::create_symlink("nowhere", this->world.root / "home/a");
    EXPECT_FALSE(this->trash->moveOut(landed, this->url("home/a")).ok());
    EXPECT_TRUE(fs::is_symlink(this->world.root / "home/a"));
}

TYPED_TEST(TrashContract, OnlyWhatLiesDirectlyInTheTrashIsMovedOutOfIt) {
    this->world.write("home/secret", "trashed");
    const auto landed = this->trashed("home/secret");
    this->world.write("home/secret", "at home"); // the Trash holds one of the same name
    for (const auto& outside : {this->url("home/secret"), landed.appending("secret"), this->url("secret")}) {
        EXPECT_FALSE(this->trash->moveOut(outside, this->url("home/stolen")).ok()) << outside.path();
    }
    EXPECT_FALSE(fs::exists(this->world.root / "home/stolen"));
    EXPECT_EQ(this->content(this->host(landed)), "trashed");
}

TYPED_TEST(TrashContract, WhateverItsNameAnItemCameFromItsPlace) {
    for (const std::string& name :
         {std::string("a"), std::string("new\nline"), kOdd, std::string("100% %41"), std::string("a%"),
          std::string("Path=/b"), std::string("é"), std::string(255, 'n')}) {
        this->world.write("home/" + name, "x");
        const auto came = this->trash->cameFrom(this->trashed("home/" + name), this->url("home/" + name));
        EXPECT_TRUE(came.ok() && *came) << name;
    }
}

TYPED_TEST(TrashContract, ItCameFromNoOtherPlaceAsFarAsTheTrashKnows) {
    this->world.write("home/a", "x");
    const auto landed = this->trashed("home/a");
    for (const char* other : {"home/b", "home/a/a", "home/A", "a", "home/a "}) {
        const auto came = this->trash->cameFrom(landed, this->url(other));
        ASSERT_TRUE(came.ok()) << other;
        EXPECT_EQ(*came, !TypeParam::kKeepsRecords) << other;
    }
}

TYPED_TEST(TrashContract, WhatTookTheNameOfADeletedItemCameFromItsOwnPlace) {
    this->world.write("home/one/Cache", "1");
    this->world.write("home/two/Cache", "2");
    const auto first = this->trashed("home/one/Cache");
    ASSERT_TRUE(this->trash->deleteItem(first).ok());
    const auto second = this->trashed("home/two/Cache");
    ASSERT_EQ(second, first);
    EXPECT_TRUE(*this->trash->cameFrom(second, this->url("home/two/Cache")));
    EXPECT_EQ(*this->trash->cameFrom(second, this->url("home/one/Cache")), !TypeParam::kKeepsRecords);
}

TYPED_TEST(TrashContract, HiddenItemsAreListedAndDeleted) {
    this->world.write("home/.DS_Store", "x");
    const auto landed = this->trashed("home/.DS_Store");
    ASSERT_EQ(this->trash->items()->size(), 1U);
    EXPECT_TRUE(this->trash->deleteItem(landed).ok());
    EXPECT_TRUE(this->trash->items()->empty());
}

TYPED_TEST(TrashContract, DeletingAFolderDeletesAllItHoldsAndFollowsNoLink) {
    this->world.write("home/kept/file", "kept");
    this->world.write("home/f/deep/er/file", "x");
    this->world.write("home/f/.hidden", "x");
    fs::create_directory_symlink(this->world.root / "home/kept", this->world.root / "home/f/deep/link");
    const auto landed = this->trashed("home/f");
    ASSERT_TRUE(this->trash->deleteItem(landed).ok());
    EXPECT_FALSE(fs::exists(this->host(landed)));
    EXPECT_EQ(this->content(this->world.root / "home/kept/file"), "kept");
}

// As the descriptors of a process are few.
class FewDescriptors {
  public:
    explicit FewDescriptors(rlim_t most) {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit few{most, m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    }
    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

  private:
    rlimit m_before = {};
};

TYPED_TEST(TrashContract, HoweverDeepAFolderIsItIsDeletedWithFewDescriptors) {
    DiskFolder(this->world.root.string()).chain("home/deep", 3000);
    const auto landed = this->trashed("home/deep");
    {
        const FewDescriptors few(64);
        EXPECT_TRUE(this->trash->deleteItem(landed).ok());
    }
    EXPECT_FALSE(fs::exists(this->host(landed)));
}

TYPED_TEST(TrashContract, InADeepFolderWhatLiesBesideTheWayDownIsDeletedToo) {
    std::string level = "home/deep";
    for (int i = 0; i < 60; ++i) {
        this->world.write(level + "/a", "x");
        this->world.write(level + "/c/x", "x");
        level += "/b";
    }
    this->world.write(level, "x");
    const auto landed = this->trashed("home/deep");
    EXPECT_TRUE(this->trash->deleteItem(landed).ok());
    EXPECT_FALSE(fs::exists(this->host(landed)));
}

TYPED_TEST(TrashContract, NothingOutsideTheTrashIsEverDeleted) {
    this->world.write("home/a", "1");
    this->world.write("home/kept", "2");
    const auto landed = this->trashed("home/a");
    const auto folder = landed.deletingLastPathComponent();
    for (const auto& outside : {this->url("home/kept"), this->url("home"), folder, folder.appending(".."),
                                folder.appending("../kept"), folder.appending("."), FileURL("/")}) {
        EXPECT_FALSE(this->trash->deleteItem(outside).ok()) << outside.path();
    }
    EXPECT_TRUE(fs::exists(this->world.root / "home/kept"));
    EXPECT_TRUE(fs::exists(this->host(landed)));
}

TYPED_TEST(TrashContract, ATrashThatIsALinkElsewhereIsRefused) {
    this->world.write("home/a", "1");
    this->world.write("elsewhere/precious", "2");
    fs::create_directories(TypeParam::folder(this->world).parent_path());
    fs::create_directory_symlink(this->world.root / "elsewhere", TypeParam::folder(this->world));
    EXPECT_FALSE(this->trash->items().ok());
    EXPECT_FALSE(this->trash->moveToTrash(this->url("home/a")).ok());
    const auto precious = this->trash->location()->appending("precious");
    EXPECT_FALSE(this->trash->deleteItem(precious).ok());
    EXPECT_FALSE(this->trash->moveOut(precious, this->url("home/stolen")).ok());
    EXPECT_TRUE(fs::exists(this->world.root / "elsewhere/precious"));
    EXPECT_TRUE(fs::exists(this->world.root / "home/a"));
}

// As macOS refuses the listing to a program without Full Disk Access.
TYPED_TEST(TrashContract, AListingThatIsRefusedIsToldFromAMissingTrash) {
    this->world.write("home/a", "1");
    this->trashed("home/a");
    const Unlisted unlisted(this->world, TypeParam::folder(this->world));
    const OrdinaryUser ordinary;
    EXPECT_TRUE(this->trash->location());
    const auto items = this->trash->items();
    ASSERT_FALSE(items.ok());
    EXPECT_EQ(items.error(), (PlatformError{ErrorCode::kReadNoPermission, EACCES}));
}

// As where it refuses every word about the folder.
TYPED_TEST(TrashContract, ATrashOfWhichNothingIsToldIsNoMissingOne) {
    this->world.write("home/a", "1");
    this->trashed("home/a");
    const Unlisted unlisted(this->world, TypeParam::folder(this->world));
    ASSERT_EQ(::chmod((this->world.root / "home").c_str(), 0444), 0);
    {
        const OrdinaryUser ordinary;
        EXPECT_TRUE(this->trash->location());
        EXPECT_FALSE(this->trash->items().ok());
    }
    ASSERT_EQ(::chmod((this->world.root / "home").c_str(), 0777), 0);
}

TYPED_TEST(TrashContract, WhatLiesInATrashThatCannotBeListedIsPutBack) {
    if (TypeParam::kNeedsListing) {
        return;
    }
    this->world.write("home/a", "1");
    const auto landed = this->trashed("home/a");
    const Unlisted unlisted(this->world, TypeParam::folder(this->world));
    const OrdinaryUser ordinary;
    EXPECT_TRUE(this->trash->moveOut(landed, this->url("home/a")).ok());
    EXPECT_EQ(this->content(this->world.root / "home/a"), "1");
}

// To the system a path ends there, so that another item would be reached.
TYPED_TEST(TrashContract, ANameWithANulReachesNothing) {
    this->world.write("home/a", "1");
    this->world.write("home/b", "2");
    const std::string nul("\0x", 2);
    EXPECT_FALSE(this->trash->moveToTrash(this->url("home/a" + nul)).ok());
    EXPECT_TRUE(fs::exists(this->world.root / "home/a"));
    const auto landed = this->trashed("home/b");
    EXPECT_FALSE(this->trash->deleteItem(FileURL(landed.path() + nul)).ok());
    EXPECT_FALSE(this->trash->moveOut(FileURL(landed.path() + nul), this->url("home/b")).ok());
    EXPECT_FALSE(this->trash->moveOut(landed, this->url("home/c" + nul)).ok());
    EXPECT_FALSE(fs::exists(this->world.root / "home/c"));
    EXPECT_EQ(this->content(this->host(landed)), "2");
}

TYPED_TEST(TrashContract, AFolderCannotBeTrashedIntoItself) {
    this->world.write("home/a", "1");
    this->trashed("home/a");
    EXPECT_FALSE(this->trash->moveToTrash(this->url("home")).ok());
    EXPECT_TRUE(fs::exists(this->world.root / "home"));
}

} // namespace
} // namespace quillane
