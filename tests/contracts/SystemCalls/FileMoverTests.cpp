// The Mac's move, and what is made of an error that was none.
#include "CloudFetching.h"
#include "Descriptor.h"
#include "FileMover.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct FileMoverTest : testing::Test {
    FileMoverTest() {
        disk.file("from/a", "a");
        CloudFetching::setForCurrentThread(CloudFetching::Policy::forbidden);
    }
    ~FileMoverTest() override { SystemCalls::answers() = {}; }

    Descriptor made(const std::string& name) {
        disk.folder(name);
        return Descriptor(::open(disk.at(name).c_str(), FileMover::kOpenUnlisted | O_DIRECTORY));
    }
    Result<> move() const { return FileMover::move(from.get(), "a", to.get(), "b"); }
    bool exists(const std::string& below) const { return fs::exists(disk.at(below)); }
    static void answer(decltype(SystemCalls::Answers::move) move) {
        SystemCalls::answers().move = std::move(move);
    }

    TemporaryFolder disk;
    Descriptor from = made("from");
    Descriptor to = made("to");
};

TEST_F(FileMoverTest, AMoveMayFetchFromACloudAndLeavesThePolicyOfItsThread) {
    EXPECT_TRUE(move().ok());
    EXPECT_TRUE(exists("to/b"));
    EXPECT_EQ(CloudFetching::ofCurrentThread(), CloudFetching::Policy::forbidden);
}

TEST_F(FileMoverTest, ATakenNameIsTheErrorForThatAndNothingMoves) {
    disk.file("to/b", "b");
    EXPECT_EQ(move().error(), (PlatformError{ErrorCode::kWriteFileExists, EEXIST}));
    EXPECT_TRUE(exists("from/a"));
}

TEST_F(FileMoverTest, WhatWasMovedThoughAnErrorWasToldIsMoved) {
    answer([](int fromFolder, const char* name, int toFolder, const char* free) {
        ::renameat(fromFolder, name, toFolder, free);
        errno = EIO;
        return false;
    });
    EXPECT_TRUE(move().ok());
}

TEST_F(FileMoverTest, WhatStayedIsTheErrorThatWasTold) {
    answer([](int, const char*, int, const char*) {
        errno = EIO;
        return false;
    });
    EXPECT_EQ(move().error(), (PlatformError{ErrorCode::kWriteUnknown, EIO}));
}

TEST_F(FileMoverTest, WhatGotASecondNameOrMadeWayForAnotherIsNotMoved) {
    answer([](int fromFolder, const char* name, int toFolder, const char* free) {
        ::linkat(fromFolder, name, toFolder, free, 0);
        errno = EIO;
        return false;
    });
    EXPECT_FALSE(move().ok()) << "it lies in both places";
    disk.remove("to/b").file("to/b", "another");
    answer([](int fromFolder, const char* name, int, const char*) {
        ::unlinkat(fromFolder, name, 0);
        errno = EIO;
        return false;
    });
    EXPECT_FALSE(move().ok()) << "another lies there";
}

} // namespace
} // namespace quillane
