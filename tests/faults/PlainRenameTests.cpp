// A file system that can't refuse a taken name by itself: nothing is overwritten there either.
#include "RealHome.h"
#include "SystemCalls.h"
#include "ToldPlaces.h"
#include <cerrno>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

template <class Adapters>
struct PlainRename : testing::Test {
    // Another call may be made to fail, or lets somebody act right after it.
    struct Watch {
        std::string_view name;
        int error = 0;
        std::function<void()> act;
    };
    template <class Work>
    static auto onSuchADisk(Work work, const Watch& other = {}) {
        const SystemCallWatch watch(
            [&](const SystemCall& call) {
                return call.name == "renameat2" ? EINVAL : call.name == other.name ? other.error : 0;
            },
            [&](const SystemCall& call, bool succeeded) {
                if (succeeded && other.act && call.name == other.name) {
                    other.act();
                }
            });
        return work();
    }
    Trash& trash() { return launch.ports.adapters.trash; }
    FileURL url(const std::string& item) const { return Adapters::url(home, item); }
    Result<std::optional<FileURL>> moved(const std::string& item, const Watch& other = {}) {
        return onSuchADisk([&] { return trash().moveToTrash(url(item)); }, other);
    }
    Result<> movedOut(const FileURL& inTrash, const std::string& item, const Watch& other = {}) {
        return onSuchADisk([&] { return trash().moveOut(inTrash, url(item)); }, other);
    }
    // Nothing in the Trash but what was put there, each with its record.
    void expectNothingLeftBehind(std::size_t items) {
        EXPECT_EQ(trash().items()->size(), items);
        if (Adapters::kHasRecords) {
            EXPECT_TRUE(recordsWithoutItem(Adapters::trashFolder(home)).empty());
        }
    }

    RealHome home;
    Launch<Adapters> launch{home};
    const std::string folder = "Library/Caches/com.example.a";
    const std::string file = "Library/Caches/com.example.b";
    const std::string link = "Downloads/link";
};

using Kinds = testing::Types<PlainAdapters, DesktopAdapters>;
TYPED_TEST_SUITE(PlainRename, Kinds);

TYPED_TEST(PlainRename, EverythingMovesAndComesBackAndTakenNamesCount) {
    const auto rows = RealHome::rows();
    const auto report = this->onSuchADisk(
        [&] { return this->launch.sweep(entriesFor<TypeParam>(this->home, rows), "Sweep"); });
    EXPECT_EQ(report.itemsMovedToTrash, static_cast<int>(rows.size()));
    std::set<FileURL> inTrash;
    for (const auto& row : rows) {
        inTrash.insert(this->url(row));
    }
    expectTold<TypeParam>(this->home, rows, {}, inTrash);
    this->expectNothingLeftBehind(rows.size());
    EXPECT_TRUE(this->onSuchADisk([&] { return this->launch.undo(); }).failures.empty());
    for (const auto& row : rows) {
        EXPECT_TRUE(this->home.isHome(row)) << row;
    }
    this->expectNothingLeftBehind(0);
}

TYPED_TEST(PlainRename, WhatIsPutBackOverwritesNothingNotEvenAnEmptyFolderOrALink) {
    for (const auto& item : {this->folder, this->file, this->link}) {
        const auto landed = this->moved(item);
        ASSERT_TRUE(landed.ok());
        const auto place = this->home.path(item);
        for (const int kind : {0, 1, 2}) {
            if (kind == 0) {
                fs::create_directory(place);
            } else if (kind == 1) {
                std::ofstream(place) << "new";
            } else {
                fs::create_symlink("nowhere at all", place);
            }
            const auto before = everythingAt(place);
            const auto back = this->movedOut(**landed, item);
            EXPECT_TRUE(!back.ok() && back.error().code == ErrorCode::kWriteFileExists) << item << kind;
            EXPECT_EQ(everythingAt(place), before);
            fs::remove(place);
        }
        EXPECT_TRUE(this->movedOut(**landed, item).ok());
        EXPECT_TRUE(this->home.isHome(item));
    }
}

TYPED_TEST(PlainRename, AFolderThatIsFilledWhileItKeepsTheNameIsNotOverwritten) {
    const auto landed = this->moved(this->folder);
    ASSERT_TRUE(landed.ok());
    const auto place = this->home.path(this->folder);
    const auto back = this->movedOut(**landed, this->folder,
                                     {"mkdirat", 0, [&] { std::ofstream(place / "new") << "new"; }});
    EXPECT_FALSE(back.ok());
    EXPECT_EQ(everythingAt(place), "folder\nnew: new");
    this->expectNothingLeftBehind(1);
}

TYPED_TEST(PlainRename, WhatKeepsTheNameGoesAgainWhenTheMoveFails) {
    for (const auto& item : {this->folder, this->file, this->link}) {
        const auto landed = this->moved(item, {"renameat", EIO, nullptr});
        EXPECT_TRUE(!landed.ok() && landed.error().underlying == EIO) << item;
        EXPECT_TRUE(this->home.isHome(item));
        this->expectNothingLeftBehind(0);
    }
    const auto landed = this->moved(this->folder);
    ASSERT_TRUE(landed.ok());
    EXPECT_FALSE(this->movedOut(**landed, this->folder, {"renameat", EIO, nullptr}).ok());
    EXPECT_EQ(everythingAt(this->home.path(this->folder)), "");
    this->expectNothingLeftBehind(1);
}

TYPED_TEST(PlainRename, AFolderThatCannotGoIntoItselfStillCannotAndLeavesNothing) {
    ASSERT_TRUE(this->moved(this->file).ok());
    const auto home = this->moved("");
    EXPECT_TRUE(!home.ok() && home.error().underlying == EINVAL);
    this->expectNothingLeftBehind(1);
}

// Nothing is safe then.
TYPED_TEST(PlainRename, AFileStaysInTheTrashWhereNoSecondNamesAreHadAndThatIsNoRefusal) {
    const auto landed = this->moved(this->file);
    ASSERT_TRUE(landed.ok());
    const auto back = this->movedOut(**landed, this->file, {"linkat", EPERM, nullptr});
    EXPECT_TRUE(!back.ok() && back.error().underlying == EINVAL);
    EXPECT_EQ(everythingAt(this->home.path(this->file)), "");
    this->expectNothingLeftBehind(1);
}

} // namespace
} // namespace quillane
