// What every Trash keeps, over the plain Trash of a sample volume, the Trash of Linux desktops, and the wrapper in
// which tests make steps fail.
#include "DiskFolder.h"
#include "FaultTrash.h"
#include "FolderTrash.h"
#include "FreedesktopTrash.h"
#include "TrashInfo.h"
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

class FixedClock final : public Clock {
  public:
    Date now() const override { return m_now; }
    void setNow(Date now) { m_now = now; }
    Calendar calendar() const override { return m_calendar; }
    Instant instant() const override { return {}; }
    TimerId callAt(Instant, Job) override { return 0; }
    void cancel(TimerId) override {}

  private:
    Date m_now = Date::fromUnix(1763712000);
    Calendar m_calendar{"GMT"};
};

// A folder of the machine that holds a home with files, and a Trash over it.
struct World {
    World() {
        std::string pattern = (fs::temp_directory_path() / "quillane-trash-XXXXXX").string();
        root = fs::path(::mkdtemp(pattern.data()));
        fs::create_directories(root / "home");
    }
    ~World() { fs::remove_all(root); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void write(const std::string& below, const std::string& text) const {
        fs::create_directories((root / below).parent_path());
        std::ofstream(root / below) << text;
    }

    fs::path root;
    FixedClock clock;
    mutable std::unique_ptr<Trash> wrapped; // by the one under test
};

struct PlainTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        return std::make_unique<FolderTrash>(world.root.string(), FileURL("/home"));
    }
    // The location, as the Trash knows it, of a file of the world.
    static FileURL url(const World&, const std::string& below) { return FileURL("/" + below); }
    static fs::path host(const World& world, const FileURL& url) {
        return fs::path(world.root.string() + url.path());
    }
    static fs::path folder(const World& world) { return world.root / "home/.Trash"; }
    static constexpr bool kKeepsRecords = false;
};

struct WrappedTrash : PlainTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        world.wrapped = PlainTrash::make(world);
        return std::make_unique<FaultTrash>(*world.wrapped);
    }
};

struct DesktopTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        return std::make_unique<FreedesktopTrash>(
            FreedesktopTrash::Places{(world.root / "home/.local/share").string(), ::getuid()}, world.clock);
    }
    static FileURL url(const World& world, const std::string& below) {
        return FileURL((world.root / below).string());
    }
    static fs::path host(const World&, const FileURL& url) { return {url.path()}; }
    static fs::path folder(const World& world) { return world.root / "home/.local/share/Trash/files"; }
    static constexpr bool kKeepsRecords = true;
};

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

using Kinds = testing::Types<PlainTrash, DesktopTrash, WrappedTrash>;
TYPED_TEST_SUITE(TrashContract, Kinds);

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
    const std::string name(255, '\x80');
    for (int i = 0; i < 2; ++i) {
        this->world.write("home/" + name, std::to_string(i));
        EXPECT_EQ(this->content(this->host(this->trashed("home/" + name))), std::to_string(i));
    }
}

TYPED_TEST(TrashContract, AnOddNameComesThroughByteForByte) {
    for (const std::string name :
         {"new\nline", "\xff\xfe bad", "100% %41", "-rf", ".hidden", "é", "[Trash Info]"}) {
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
         {std::string("a"), std::string("new\nline"), std::string("\xff\xfe bad"), std::string("100% %41"),
          std::string("a%"), std::string("Path=/b"), std::string("é"), std::string(255, 'n')}) {
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

TYPED_TEST(TrashContract, AFolderCannotBeTrashedIntoItself) {
    this->world.write("home/a", "1");
    this->trashed("home/a");
    EXPECT_FALSE(this->trash->moveToTrash(this->url("home")).ok());
    EXPECT_TRUE(fs::exists(this->world.root / "home"));
}

// ---- what only the Trash of desktops has

struct FreedesktopTrashRecords : testing::Test {
    World world;
    std::unique_ptr<Trash> trash = DesktopTrash::make(world);
    fs::path info = world.root / "home/.local/share/Trash/info";
    std::size_t records() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(info), fs::directory_iterator()));
    }
};

TEST_F(FreedesktopTrashRecords, EachItemHasARecordOfItsOriginAndTime) {
    world.write("home/a b%.txt", "x");
    ASSERT_TRUE(trash->moveToTrash(DesktopTrash::url(world, "home/a b%.txt")).ok());
    std::ifstream stream(info / "a b%.txt.trashinfo");
    std::stringstream text;
    text << stream.rdbuf();
    EXPECT_EQ(TrashInfo::originalPath(text.str()), (world.root / "home/a b%.txt").string());
    EXPECT_NE(text.str().find("a%20b%25.txt\nDeletionDate=2025-11-2"), std::string::npos) << text.str();
    EXPECT_TRUE(text.str().starts_with("[Trash Info]\nPath="));
}

TEST_F(FreedesktopTrashRecords, ARecordIsWithdrawnWhenTheMoveFails) {
    world.write("home/a", "x");
    ASSERT_TRUE(trash->moveToTrash(DesktopTrash::url(world, "home/a")).ok());
    EXPECT_FALSE(trash->moveToTrash(DesktopTrash::url(world, "home")).ok()); // can't go into itself
    EXPECT_EQ(records(), 1U);
}

TEST_F(FreedesktopTrashRecords, WhatIsPutBackOrDeletedLeavesNoRecord) {
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    EXPECT_EQ(records(), 2U);
    ASSERT_TRUE(trash->moveOut(**a, DesktopTrash::url(world, "home/a")).ok());
    EXPECT_EQ(records(), 1U);
    ASSERT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_EQ(records(), 0U);
}

TEST_F(FreedesktopTrashRecords, ANameWhoseRecordIsTakenByAStrayIsNotUsed) {
    fs::create_directories(info);
    std::ofstream(info / "a.trashinfo") << "stray";
    world.write("home/a", "x");
    const auto landed = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_EQ((*landed)->lastPathComponent(), "a 2");
}

// The clock by which the system dates files.
Date realNow() {
    return Date::fromUnix(::time(nullptr), 0);
}

// A crash between the record and the move leaves a record. A young one may be of a move that is under way.
TEST_F(FreedesktopTrashRecords, DeletingTheLastItemDeletesOldRecordsThatHaveNoItem) {
    constexpr double kHour = 3600;
    world.clock.setNow(realNow().addingSeconds(2 * kHour));
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    DiskFolder folder(info.string());
    const auto ago = [&](double seconds) { return world.clock.now().addingSeconds(-seconds); };
    folder.file("old.trashinfo").modified("old.trashinfo", ago(kHour + 1));
    folder.file("young.trashinfo").modified("young.trashinfo", ago(kHour - 1));
    folder.file("ahead.trashinfo").modified("ahead.trashinfo", ago(-3 * kHour));
    folder.file("something that is no record").modified("something that is no record", ago(2 * kHour));
    ASSERT_TRUE(trash->deleteItem(**a).ok());
    EXPECT_TRUE(fs::exists(info / "old.trashinfo")); // not while the Trash is in use
    ASSERT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_FALSE(fs::exists(info / "old.trashinfo"));
    for (const char* kept : {"young.trashinfo", "ahead.trashinfo", "something that is no record"}) {
        EXPECT_TRUE(fs::exists(info / kept)) << kept;
    }
    EXPECT_EQ(records(), 3U);
}

// As a program does that brings back a Trash with its dates: the record first, and the item later.
TEST_F(FreedesktopTrashRecords, AYoungRecordWithAnEarlierDateIsKept) {
    world.clock.setNow(realNow().addingSeconds(1800));
    world.write("home/a", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    ASSERT_TRUE(a.ok());
    DiskFolder(info.string()).file("b.trashinfo").modified("b.trashinfo", Date{0});
    ASSERT_TRUE(trash->deleteItem(**a).ok());
    EXPECT_TRUE(fs::exists(info / "b.trashinfo"));
}

TEST_F(FreedesktopTrashRecords, AnInfoFolderThatIsALinkIsNotFollowedToTheRecords) {
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    fs::rename(info, world.root / "elsewhere");
    fs::create_directory_symlink(world.root / "elsewhere", info);
    EXPECT_TRUE(trash->moveOut(**a, DesktopTrash::url(world, "home/a")).ok());
    EXPECT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_EQ(records(), 2U);
}

// ---- what the records of desktops say of an item's origin

struct FreedesktopTrashOrigin : FreedesktopTrashRecords {
    FreedesktopTrashOrigin() {
        world.write("home/folder/a", "x");
        trash->moveToTrash(url("home/folder/a")).valueOr(std::nullopt);
    }
    FileURL url(const std::string& below) const { return DesktopTrash::url(world, below); }
    void record(const std::string& text) const { std::ofstream(info / "a.trashinfo") << text; }
    Result<bool> cameFrom(const std::string& below) const {
        return trash->cameFrom(url("home/.local/share/Trash/files/a"), url(below));
    }
    bool isFrom(const std::string& below) const {
        const auto came = cameFrom(below);
        EXPECT_TRUE(came.ok());
        return came.ok() && *came;
    }
};

TEST_F(FreedesktopTrashOrigin, AnItemCameFromItsPlaceAlsoWhenTheFolderThereIsGone) {
    EXPECT_TRUE(isFrom("home/folder/a"));
    fs::remove_all(world.root / "home/folder");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/a"));
}

TEST_F(FreedesktopTrashOrigin, OneThatHasNoRecordCameFromNowhereThatIsKnown) {
    fs::remove(info / "a.trashinfo");
    EXPECT_FALSE(isFrom("home/folder/a"));
    fs::remove_all(info);
    EXPECT_FALSE(isFrom("home/folder/a"));
}

TEST_F(FreedesktopTrashOrigin, ARecordThatNamesNoPlaceIsNone) {
    for (const char* text : {"", "Path=/a", "[Trash Info]", "[Trash Info]\nPath=\n", "\xff"}) {
        record(text);
        EXPECT_FALSE(isFrom("home/folder/a")) << text;
    }
}

TEST_F(FreedesktopTrashOrigin, ThePathOfARecordIsReadAsOtherProgramsWriteIt) {
    record("[Trash Info]\nDeletionDate=2025-11-21T08:30:00\nPath=" + world.root.string() +
           "/home/f%6flder/%61\n");
    EXPECT_TRUE(isFrom("home/folder/a"));
    record("[Trash Info]\nPath=below/a\n");
    EXPECT_TRUE(isFrom("home/.local/share/below/a"));
    EXPECT_FALSE(isFrom("home/folder/a"));
}

// Programs differ in whether they record the way by which they came or the real one.
TEST_F(FreedesktopTrashOrigin, LinksAboveAPlaceMakeItNoOther) {
    fs::create_directory_symlink(world.root / "home/folder", world.root / "home/way");
    EXPECT_TRUE(isFrom("home/way/a"));
    record("[Trash Info]\nPath=" + (world.root / "home/way/a").string() + "\n");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/a"));
}

TEST_F(FreedesktopTrashOrigin, ALinkThatStandsWhereTheItemWasIsNotFollowed) {
    fs::create_symlink(world.root / "home/other/a", world.root / "home/folder/a");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/other/a"));
}

TEST_F(FreedesktopTrashOrigin, ARecordThatIsALinkOrNoFileOfBytesFailsToBeRead) {
    const auto path = info / "a.trashinfo";
    fs::rename(path, world.root / "elsewhere");
    fs::create_symlink(world.root / "elsewhere", path);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
    fs::remove(path);
    fs::rename(info, world.root / "records");
    fs::create_directory_symlink(world.root / "records", info);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
}

TEST_F(FreedesktopTrashOrigin, ARecordThatIsAPipeHoldsNothingUpAndNamesNoPlace) {
    const auto path = info / "a.trashinfo";
    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(isFrom("home/folder/a"));
}

TEST_F(FreedesktopTrashOrigin, OfAPlaceOutsideOfEveryTrashNothingIsSaid) {
    world.write("home/secret/files/a", "x");
    world.write("home/secret/info/a.trashinfo", "[Trash Info]\nPath=/a\n");
    EXPECT_FALSE(trash->cameFrom(url("home/secret/files/a"), FileURL("/a")).ok());
}

// ---- where a Trash of desktops may lie

struct FreedesktopTrashPlace : testing::Test {
    World world;
    std::unique_ptr<Trash> trash = DesktopTrash::make(world);
    FileURL url(const std::string& below) const { return DesktopTrash::url(world, below); }
    bool exists(const std::string& below) const { return fs::exists(world.root / below); }
};

TEST_F(FreedesktopTrashPlace, ATrashThatIsALinkToAFolderWithFilesIsNeverListedFilledOrEmptied) {
    world.write("home/Documents/files/precious", "kept");
    world.write("home/a", "kept");
    fs::create_directories(world.root / "home/.local/share");
    fs::create_directory_symlink(world.root / "home/Documents", world.root / "home/.local/share/Trash");
    EXPECT_EQ(trash->location(), url("home/.local/share/Trash/files"));
    EXPECT_FALSE(trash->items().ok());
    EXPECT_FALSE(trash->moveToTrash(url("home/a")).ok());
    const auto precious = url("home/.local/share/Trash/files/precious");
    EXPECT_FALSE(trash->deleteItem(precious).ok());
    EXPECT_FALSE(trash->moveOut(precious, url("home/stolen")).ok());
    EXPECT_TRUE(exists("home/Documents/files/precious") && exists("home/a"));
    EXPECT_FALSE(exists("home/Documents/info"));
}

TEST_F(FreedesktopTrashPlace, LinksAboveTheTrashAreFollowed) {
    fs::create_directories(world.root / "elsewhere");
    fs::create_directory_symlink(world.root / "elsewhere", world.root / "home/.local");
    world.write("home/a", "x");
    const auto landed = trash->moveToTrash(url("home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_TRUE(exists("elsewhere/share/Trash/files/a"));
    EXPECT_EQ(*trash->items(), std::vector{**landed});
    EXPECT_TRUE(trash->moveOut(**landed, url("home/a")).ok());
}

TEST_F(FreedesktopTrashPlace, AFileOnTheWayToTheTrashHoldsNone) {
    world.write("home/.local", "a file");
    EXPECT_FALSE(trash->location());
    EXPECT_TRUE(trash->items().ok());
}

TEST_F(FreedesktopTrashPlace, OnlyTheFilesFolderOfTheTrashHoldsItems) {
    world.write("home/.local/share/Trash/files/a", "kept");
    world.write("home/.local/share/Trash/info/a", "kept");
    EXPECT_FALSE(trash->moveOut(url("home/.local/share/Trash/info/a"), url("home/stolen")).ok());
    EXPECT_FALSE(exists("home/stolen"));
}

TEST_F(FreedesktopTrashPlace, WhatIsNamedLikeATrashBelowTheTopOfAVolumeIsNone) {
    const std::string user = std::to_string(::getuid());
    for (const auto& folder : {"home/.Trash-" + user, "home/.Trash/" + user, "home/" + user}) {
        world.write(folder + "/files/a", "kept");
        const auto moved = trash->moveOut(url(folder + "/files/a"), url("home/stolen"));
        EXPECT_TRUE(!moved.ok() && moved.error().underlying == EINVAL) << folder;
        EXPECT_FALSE(exists("home/stolen"));
    }
}

TEST(FreedesktopTrashPlaces, ADataFolderOfTheEnvironmentCountsOnlyWithAWholePath) {
    const char* before = std::getenv("XDG_DATA_HOME"); // NOLINT(concurrency-mt-unsafe): one thread
    const std::string kept = before != nullptr ? before : "";
    const auto dataHome = [](const char* variable) {
        ::setenv("XDG_DATA_HOME", variable, 1); // NOLINT(concurrency-mt-unsafe): one thread
        return FreedesktopTrash::Places::ofThisUser(FileURL("/home/me")).dataHome;
    };
    EXPECT_EQ(dataHome("/data/"), "/data");
    EXPECT_EQ(dataHome("relative/data"), "/home/me/.local/share");
    EXPECT_EQ(dataHome(""), "/home/me/.local/share");
    ::setenv("XDG_DATA_HOME", kept.c_str(), 1); // NOLINT(concurrency-mt-unsafe): empty counts as unset
}

TEST(TrashInfo, ARecordReadsBackWhateverBytesThePathHolds) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    const auto text = TrashInfo::text(path, "2026-11-21T08:30:00");
    EXPECT_EQ(TrashInfo::originalPath(text), path);
    EXPECT_EQ(TrashInfo::originalPath("[Trash Info]\nDeletionDate=2026\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath("Path=/a\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath(""), std::nullopt);
}

// To the system a path ends there, so that such a record would seem to name another place than it does.
TEST(TrashInfo, ARecordOfAPathWithANulIsNone) {
    EXPECT_EQ(TrashInfo::originalPath("[Trash Info]\nPath=/home%00elsewhere/a\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath(std::string("[Trash Info]\nPath=/home\0/a\n", 28)), std::nullopt);
}

} // namespace
} // namespace quillane
