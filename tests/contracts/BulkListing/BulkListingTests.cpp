// What a Mac's folders tell besides names and types, and what becomes of it in listings and walks.
#include "BulkListing.h"
#include "DirectoryReader.h"
#include "OrdinaryUser.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

class BulkListingTest : public testing::Test {
  protected:
    void SetUp() override { BulkListing::takeCalls(); }
    void TearDown() override {
        BulkListing::unmarkAll();
        BulkListing::refuseDetails(0);
    }

    void mark(const std::string& path, const BulkListing::Marks& marks) const {
        BulkListing::mark(folder.url(path).path(), marks);
    }
    // The names that are hidden.
    std::set<std::string> hiddenIn(const std::string& path) const {
        std::set<std::string> hidden;
        const auto entries = files.list(folder.url(path)).value();
        for (const auto& entry : entries) {
            if (entry.isHidden()) {
                hidden.insert(entry.name);
            }
        }
        return hidden;
    }
    std::map<std::string, Bytes> measured(const std::string& path) const {
        std::map<std::string, Bytes> bytes;
        EXPECT_TRUE(files.walk(folder.url(path), {.measures = true}, [&](const WalkEntry& entry) {
            bytes[std::string(entry.name)] = entry.allocated;
            return WalkAnswer::proceed;
        }));
        return bytes;
    }
    std::set<std::string> packagesIn(const std::string& path, WalkOptions options) const {
        std::set<std::string> packages;
        EXPECT_TRUE(files.walk(folder.url(path), options, [&](const WalkEntry& entry) {
            if (entry.isMarkedAsPackage) {
                packages.emplace(entry.name);
            }
            EXPECT_EQ(entry.name.find('/'), std::string_view::npos);
            return WalkAnswer::proceed;
        }));
        return packages;
    }

    TemporaryFolder folder;
    PosixFileSystem files;
};

TEST_F(BulkListingTest, WhatIsFlaggedIsHiddenAsDotNamesAre) {
    folder.file("tree/plain")
        .file("tree/.dot")
        .file("tree/flagged")
        .file("tree/invisible")
        .folder("tree/Library");
    mark("tree/flagged", {.flags = BulkAnswer::kHidden});
    mark("tree/invisible", {.finderFlags = BulkAnswer::kInvisible});
    mark("tree/Library", {.flags = BulkAnswer::kHidden});
    EXPECT_THAT(hiddenIn("tree"), UnorderedElementsAre(".dot", "flagged", "invisible", "Library"));
}

TEST_F(BulkListingTest, AMeasuringWalkTakesTheSizesThatFoldersTell) {
    folder.file("tree/told", "x").file("tree/sub/true", std::string(5000, 'x'));
    mark("tree/told", {.allocated = 123'456'789});
    EXPECT_THAT(measured("tree"), UnorderedElementsAre(Pair("told", 123'456'789), Pair("sub", 0),
                                                       Pair("true", folder.allocationOf("tree/sub/true"))));
}

TEST_F(BulkListingTest, OnlyAMeasuringWalkAsksForSizesAndOnlyOneThatReadsMarksForMarks) {
    folder.file("tree/file");
    (void)measured("tree");
    const auto measuring = BulkListing::takeCalls();
    EXPECT_EQ(measuring.forSizes, measuring.all);
    EXPECT_EQ(measuring.forMarks, 0);
    (void)packagesIn("tree", {.readsMarks = true});
    const auto reading = BulkListing::takeCalls();
    EXPECT_EQ(reading.forSizes, 0);
    EXPECT_EQ(reading.forMarks, reading.all);
    (void)packagesIn("tree", {});
    const auto plain = BulkListing::takeCalls();
    EXPECT_EQ(plain.forSizes + plain.forMarks, 0);
    EXPECT_GT(plain.all, 0);
}

TEST_F(BulkListingTest, AWalkTellsWhichFoldersAreMarkedAsPackages) {
    folder.folder("tree/a")
        .folder("tree/package")
        .folder("tree/z")
        .folder("tree/package/inside")
        .file("tree/file");
    folder.folder("tree/a/deeper");
    for (const auto* path : {"tree/package", "tree/a/deeper", "tree/file"}) {
        mark(path, {.finderFlags = BulkAnswer::kBundle});
    }
    EXPECT_THAT(packagesIn("tree", {.readsMarks = true}), UnorderedElementsAre("package", "deeper"));
    EXPECT_THAT(packagesIn("tree", {}), testing::IsEmpty());
}

TEST_F(BulkListingTest, AFolderThatIsMarkedAsAPackageIsEnteredAndAsked) {
    folder.file("tree/package/inside", "12345");
    mark("tree/package", {.finderFlags = BulkAnswer::kBundle});
    std::set<std::string> told;
    ASSERT_TRUE(files.walk(folder.url("tree"), {.readsMarks = true}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        EXPECT_TRUE(entry.resourceValues().ok()) << entry.name;
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(told, UnorderedElementsAre("package", "inside"));
}

TEST_F(BulkListingTest, WhatIsMountedOnAFolderIsWhatCounts) {
    folder.file("tree/volume/file", std::string(5000, 'x')).file("tree/firmlink/other");
    mark("tree/volume", {.flags = BulkAnswer::kHidden, .mountStatus = 1});
    mark("tree/firmlink", {.flags = BulkAnswer::kFirmlink | BulkAnswer::kHidden});
    EXPECT_THAT(hiddenIn("tree"), testing::IsEmpty()); // the flags are those of the covered folder
    EXPECT_THAT(measured("tree"),
                UnorderedElementsAre(Pair("volume", 0), Pair("firmlink", 0),
                                     Pair("file", folder.allocationOf("tree/volume/file")),
                                     Pair("other", folder.allocationOf("tree/firmlink/other"))));
    const auto entries = files.list(folder.url("tree")).value();
    for (const auto& entry : entries) {
        EXPECT_EQ(entry.type, EntryType::directory) << entry.name;
    }
}

TEST_F(BulkListingTest, AFileSystemThatKnowsOnlyNamesAndTypesIsMeasuredFileByFile) {
    folder.file("tree/file", std::string(5000, 'x')).folder("tree/sub").file("tree/.dot");
    for (const int error : {EACCES, EPERM, ENOTSUP, EINVAL}) {
        BulkListing::refuseDetails(error);
        EXPECT_THAT(measured("tree"),
                    UnorderedElementsAre(Pair("file", folder.allocationOf("tree/file")), Pair("sub", 0),
                                         Pair(".dot", folder.allocationOf("tree/.dot"))))
            << error;
        EXPECT_THAT(hiddenIn("tree"), ElementsAre(".dot")) << error;
    }
}

TEST_F(BulkListingTest, AFolderInACloudAloneIsNotAskedTwice) {
    folder.file("tree/file");
    BulkListing::refuseDetails(EDEADLK);
    const auto listed = files.list(folder.url("tree"));
    ASSERT_FALSE(listed.ok());
    EXPECT_EQ(listed.error(), (PlatformError{ErrorCode::kReadUnknown, EDEADLK}));
    EXPECT_THAT(measured("tree"), testing::IsEmpty());
    EXPECT_EQ(BulkListing::takeCalls().all, 2);
}

// --- the reader itself

std::set<std::string> readRest(DirectoryReader& reader, int folder, DirectoryReader::Place place) {
    std::set<std::string> names;
    constexpr std::size_t kBytes =
        DirectoryReader::kSmallestBatch / 3 * 4; // what is known ends within a batch
    while (reader.fill(folder, kBytes, place) == DirectoryReader::Filled::entries) {
        RawEntry entry;
        while (reader.next(entry)) {
            EXPECT_TRUE(names.emplace(entry.name, entry.length).second) << entry.name;
        }
        place = reader.placeAfter(place);
    }
    return names;
}

TEST_F(BulkListingTest, ReadingGoesOnWithAnotherDescriptorWhereItStood) {
    std::set<std::string> made;
    for (int i = 0; i < 500; ++i) {
        made.insert("name" + std::to_string(i));
        folder.file("many/name" + std::to_string(i));
    }
    for (const int batches : {1, 2, 7, 1000}) {
        const Descriptor first(::open(folder.at("many").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        DirectoryReader reader;
        DirectoryReader::Place place{};
        std::set<std::string> names;
        RawEntry entry;
        for (int i = 0; i < batches && reader.fill(first.get(), DirectoryReader::kSmallestBatch, place) ==
                                           DirectoryReader::Filled::entries;
             ++i) {
            while (reader.next(entry)) {
                names.emplace(entry.name, entry.length);
            }
            place = reader.placeAfter(place);
        }
        const Descriptor second(::open(folder.at("many").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        ASSERT_TRUE(DirectoryReader::resume(second.get(), place));
        for (const auto& name : readRest(reader, second.get(), place)) {
            EXPECT_TRUE(names.insert(name).second) << name;
        }
        EXPECT_EQ(names, made) << batches;
    }
}

TEST_F(BulkListingTest, ABatchTooSmallForAnEntryBecomesLarger) {
    folder.file("tree/" + std::string(200, 'n'));
    const Descriptor opened(::open(folder.at("tree").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    DirectoryReader reader;
    ASSERT_EQ(reader.fill(opened.get(), 64), DirectoryReader::Filled::entries);
    RawEntry entry;
    ASSERT_TRUE(reader.next(entry));
    EXPECT_EQ(entry.length, 200U);
}

} // namespace
} // namespace quillane
