#include "ContentComparison.h"
#include "DuplicateFinder.h"
#include "OddNames.h"
#include "OrdinaryUser.h"
#include "RecordedPlatform.h"
#include "SamplePlatform.h"
#include "Sha256.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Texts = std::vector<std::string>;

constexpr PlatformError kFailure = {ErrorCode::kReadUnknown, EIO};
const std::string kHome(SampleMac::kHome);

std::vector<std::string> question(const std::string& root) {
    return {"-onlyin", kHome + "/" + root, "-attr", "kMDItemFSSize",
            "kMDItemFSSize >= 1000000 && kMDItemContentType != 'public.folder'"};
}

// A home folder whose search knows what was laid there.
class DuplicateFinderTest : public testing::Test {
  protected:
    static constexpr Bytes kSize = 1'000'000; // as the search tells it; what is read is short

    FileURL url(const std::string& path) const { return FileURL(kHome + "/" + path); }
    void lay(const std::string& path, const std::string& content) {
        sample.disk.file(kHome + "/" + path, content);
    }
    // Lays a file and lets the search tell it for the folder it lies in.
    void add(const std::string& path, const std::string& content, Bytes size = kSize) {
        lay(path, content);
        tell(path.substr(0, path.find('/')), kHome + "/" + path, std::to_string(size));
    }
    void tell(const std::string& root, const std::string& path, const std::string& size) {
        m_answers[root] += path + "   kMDItemFSSize = " + size + "\n";
        sample.commands.answer("/usr/bin/mdfind", question(root), m_answers[root]);
    }
    void modify(const std::string& path, double day) {
        sample.disk.modified(kHome + "/" + path, Date::fromUnix(static_cast<std::int64_t>(day * 86'400), 0));
    }

    std::vector<DuplicateGroup> found(const StopToken& stop = {}) const {
        return DuplicateFinder::find(sample.platform, Priority::userInitiated, stop);
    }
    // The words of the stages.
    Texts told() const {
        Texts told;
        static_cast<void>(DuplicateFinder::find(sample.platform, Priority::userInitiated, {},
                                                [&](const std::string& words) { told.push_back(words); }));
        return told;
    }
    // The paths of each group, below the home folder.
    static std::vector<Texts> paths(const std::vector<DuplicateGroup>& groups) {
        std::vector<Texts> paths;
        for (const auto& group : groups) {
            auto& files = paths.emplace_back();
            for (const auto& file : group.files) {
                files.push_back(file.url.path().substr(kHome.size() + 1));
            }
            std::ranges::sort(files);
        }
        return paths;
    }
    std::vector<Texts> foundPaths() const { return paths(found()); }

    SamplePlatform sample{SampleMac()};

  private:
    std::map<std::string, std::string> m_answers;
};

// The search

TEST_F(DuplicateFinderTest, EachFolderOfDocumentsThatExistsIsSearchedInOrder) {
    for (const auto* root : {"Pictures", "Music", "Downloads", "Desktop", "Library", "Public"}) {
        sample.disk.folder(kHome + "/" + root);
    }
    static_cast<void>(found());
    Texts asked;
    for (const auto& call : sample.commands.calls()) {
        EXPECT_EQ(call.path, "/usr/bin/mdfind");
        asked.push_back(call.arguments.at(1));
        EXPECT_EQ(call.arguments, question(call.arguments[1].substr(kHome.size() + 1)));
    }
    EXPECT_THAT(asked,
                ElementsAre(kHome + "/Desktop", kHome + "/Downloads", kHome + "/Music", kHome + "/Pictures"));
}

TEST_F(DuplicateFinderTest, DocumentsAndMoviesAreSearchedToo) {
    add("Documents/a", "same");
    add("Movies/b", "same");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Movies/b"}));
}

TEST_F(DuplicateFinderTest, WithoutASearchProgramThereAreNoGroups) {
    lay("Documents/a", "same");
    lay("Documents/b", "same");
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(DuplicateFinderTest, ALineIsAPathAndASizeAndAnythingElseIsIgnored) {
    const std::string separator = "   kMDItemFSSize = ";
    sample.commands.answer("/usr/bin/mdfind", question("Documents"),
                           "/plain" + separator + "1000000\n" +                               //
                               "/blanks" + separator + "  42\t\n" +                           //
                               "/signed" + separator + "+7\n/negative" + separator + "-7\n" + //
                               "/null" + separator + "(null)\n" +                             //
                               "/none" + separator + "\n/fraction" + separator + "1.5\n" +    //
                               "/both" + separator + "+-1\n/tail" + separator + "12x\n" +     //
                               "/huge" + separator + "9223372036854775808\n" +                //
                               "/most" + separator + "9223372036854775807\n" +                //
                               "no separator\n\n/two  kMDItemFSSize = 5\n" +                  //
                               "/once" + separator + "5" + separator + "6\n" +                //
                               "/caf\xff" + separator + "8\n/last" + separator + "9");
    using DuplicateFinder::Line;
    EXPECT_THAT(DuplicateFinder::mdfindWithSize(sample.platform, url("Documents")),
                ElementsAre(Line{"/plain", 1'000'000}, Line{"/blanks", 42}, Line{"/signed", 7},
                            Line{"/negative", -7}, Line{"/most", 9'223'372'036'854'775'807},
                            Line{"/caf\uFFFD", 8}, Line{"/last", 9}));
}

TEST_F(DuplicateFinderTest, TheRestOfANameWithALineFeedIsNoPath) {
    add("Documents/a", "same");
    tell("Documents", "a", "1000000");
    tell("Documents", "../" + kHome + "/Documents/a", "1000000");
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_EQ(told().back(), "Comparing 0 files") << "it is not tried either";
}

TEST_F(DuplicateFinderTest, WhatDoesNotLieBelowTheFolderThatWasAskedForIsNoCandidate) {
    add("Documents/a", "same");
    lay("Elsewhere/b", "same");
    tell("Documents", kHome + "/Elsewhere/b", "1000000");
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_EQ(told().back(), "Comparing 0 files");
}

TEST_F(DuplicateFinderTest, APathThatIsToldUnderTwoFoldersCountsOnce) {
    add("Documents/a", "same");
    sample.disk.folder(kHome + "/Pictures");
    tell("Documents", kHome + "/Documents/a", "1000000");
    tell("Pictures", kHome + "/Documents/a", "1000000");
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_THAT(told(), ElementsAre("Listing files", "Comparing 0 files"));
    add("Pictures/b", "same");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Pictures/b"}));
}

TEST_F(DuplicateFinderTest, WhatLooksLikeACopyAndIsNotTheUsersIsNoCandidate) {
    for (const auto* folder :
         {"bin", "obj", "node_modules", "dist", "build", "target", ".build", "Pods", "vendor", "DerivedData",
          ".venv", "venv", ".hidden", "Pictures.photoslibrary", "a/vendor/b", "a/.hidden/b"}) {
        add("Documents/" + std::string(folder) + "/a", "same");
        add("Documents/" + std::string(folder) + "/b", "same");
        EXPECT_THAT(found(), IsEmpty()) << folder;
    }
    add("Documents/.a", "same");
    add("Documents/.b", "same");
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(DuplicateFinderTest, AFileOrFolderWhoseNameOnlyHoldsSuchAWordIsACandidate) {
    add("Documents/build", "same");
    add("Documents/rebuild/vendor", "same");
    add("Documents/Vendor/bin", "same");
    add("Documents/x.photoslibrary", "same");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/Vendor/bin", "Documents/build",
                                                "Documents/rebuild/vendor", "Documents/x.photoslibrary"}));
}

TEST_F(DuplicateFinderTest, ItTellsWhatItDoesAndHowManyFilesItCompares) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    add("Documents/c", "other", 2'000'000);
    for (int i = 0; i < 1'200; ++i) {
        tell("Documents", kHome + "/Documents/missing" + std::to_string(i), "3000000");
    }
    EXPECT_THAT(told(), ElementsAre("Listing files", "Comparing 1202 files"));
}

// The groups

TEST_F(DuplicateFinderTest, FilesWithTheSameContentAreAGroupWhateverTheirNamesAndDates) {
    add("Documents/a.txt", "same");
    add("Downloads/other.mov", "same");
    modify("Documents/a.txt", 1);
    add("Documents/c.txt", "else");
    const auto groups = found();
    ASSERT_EQ(groups.size(), 1U);
    Sha256 hash;
    hash.update(std::as_bytes(std::span("same", 4)));
    EXPECT_EQ(groups[0].id, hash.hex());
    EXPECT_EQ(groups[0].bytesEach, kSize);
    EXPECT_THAT(paths(groups), ElementsAre(Texts{"Documents/a.txt", "Downloads/other.mov"}));
}

TEST_F(DuplicateFinderTest, FilesThatDifferOnlyInTheirMiddleAreInNoGroup) {
    std::string content(1'000'000, 'x');
    add("Documents/a", content);
    content[500'000] = 'y';
    add("Documents/b", content);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(DuplicateFinderTest, OneByteTellsFilesApartWhereverItLies) {
    const std::string content(2'100'000, 'x');
    add("Documents/a", content);
    add("Documents/b", content);
    for (const int at : {0, 65'535, 65'536, 131'071, 131'072, 1'048'575, 1'048'576, 2'034'463, 2'034'464,
                         2'097'151, 2'097'152, 2'099'999}) {
        auto other = content;
        other[static_cast<std::size_t>(at)] = 'y';
        lay("Documents/b", other);
        EXPECT_THAT(found(), IsEmpty()) << at;
    }
}

TEST_F(DuplicateFinderTest, OfEachEndSixtyFourKibibytesAreRead) {
    const std::string content(1'000'000, 'x');
    add("Documents/a", content);
    add("Documents/b", content);
    struct Row {
        std::size_t different;
        std::size_t opened; // four when the whole is compared too
    };
    for (const auto& row : {Row{65'535, 2}, Row{65'536, 4}, Row{934'463, 4}, Row{934'464, 2}}) {
        auto other = content;
        other[row.different] = 'y';
        lay("Documents/b", other);
        const RecordedPlatform recorded(sample.platform);
        static_cast<void>(DuplicateFinder::find(recorded.platform, Priority::userInitiated));
        EXPECT_EQ(recorded.files.calls(FileCall::open).size(), row.opened) << row.different;
    }
}

TEST_F(DuplicateFinderTest, FilesOfEqualContentButAnotherToldSizeAreNotCompared) {
    add("Documents/a", "same");
    add("Documents/b", "same", kSize + 1);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(DuplicateFinderTest, PairsOfEqualContentAndAnotherToldSizeAreTwoGroups) {
    for (const auto* name : {"a", "b"}) {
        add("Documents/" + std::string(name), "same");
        add("Music/" + std::string(name), "same", kSize + 1);
    }
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Music/a", "Music/b"}, Texts{"Documents/a", "Documents/b"}));
}

TEST_F(DuplicateFinderTest, TwoNamesOfOneFileAreTwoFiles) {
    add("Documents/a", "same");
    sample.disk.hardLink(kHome + "/Documents/b", kHome + "/Documents/a");
    tell("Documents", kHome + "/Documents/b", "1000000");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/b"}));
}

TEST_F(DuplicateFinderTest, AFileThatIsReachedOnTwoWaysIsNoCopyOfItself) {
    add("Documents/pictures/a", "same");
    sample.disk.link(kHome + "/Pictures", "Documents/pictures");
    tell("Pictures", kHome + "/Pictures/a", "1000000");
    EXPECT_THAT(found(), IsEmpty());
    add("Documents/b", "same");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/b", "Documents/pictures/a"}));
}

TEST_F(DuplicateFinderTest, GroupsThatWasteMostComeFirst) {
    for (const auto* name : {"a1", "a2", "a3"}) {
        add("Documents/" + std::string(name), "small", 1'500'000);
    }
    for (const auto* name : {"b1", "b2"}) {
        add("Documents/" + std::string(name), "middle", 2'000'000);
    }
    for (const auto* name : {"c1", "c2"}) {
        add("Documents/" + std::string(name), "large", 9'000'000);
    }
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/c1", "Documents/c2"},
                                          Texts{"Documents/a1", "Documents/a2", "Documents/a3"},
                                          Texts{"Documents/b1", "Documents/b2"}));
}

TEST_F(DuplicateFinderTest, GroupsOfEqualWasteStandByTheirSizeAndThenByTheirDigest) {
    for (const auto* name : {"a1", "a2"}) {
        add("Documents/" + std::string(name), "of two", 2'000'000);
    }
    for (const auto* name : {"b1", "b2", "b3"}) {
        add("Documents/" + std::string(name), "of three", 1'000'000);
    }
    for (const auto* content : {"one", "two", "three", "four", "five"}) {
        add("Documents/1" + std::string(content), content, 2'000'000);
        add("Documents/2" + std::string(content), content, 2'000'000);
    }
    const auto groups = found();
    ASSERT_EQ(groups.size(), 7U);
    EXPECT_EQ(groups[0].count(), 3U) << "the smallest files";
    EXPECT_TRUE(std::ranges::is_sorted(std::span(groups).subspan(1), {}, &DuplicateGroup::id));
}

TEST_F(DuplicateFinderTest, TheMostRecentlyUsedCopyComesFirst) {
    for (const auto* name : {"a", "b", "c", "d"}) {
        add("Documents/" + std::string(name), "same");
    }
    modify("Documents/a", 100);
    modify("Documents/b", 300);
    modify("Documents/c", 10);
    modify("Documents/d", 100);
    sample.metadata.setLastUsed(url("Documents/c"), Date::fromUnix(200 * 86'400, 0));
    Texts order;
    const auto groups = found();
    ASSERT_EQ(groups.size(), 1U);
    for (const auto& file : groups[0].files) {
        order.push_back(file.name());
    }
    EXPECT_THAT(order, ElementsAre("b", "c", "a", "d"));
}

TEST_F(DuplicateFinderTest, OnlyWhatPassesOneStageIsReadByTheNext) {
    add("Documents/alone", "x", 7'000'000);
    add("Documents/a", "one");
    add("Documents/b", "two");
    add("Documents/c", "two");
    const RecordedPlatform recorded(sample.platform);
    static_cast<void>(DuplicateFinder::find(recorded.platform, Priority::userInitiated));
    EXPECT_THAT(recorded.files.calls(FileCall::open),
                UnorderedElementsAre(url("Documents/a"), url("Documents/b"), url("Documents/c"),
                                     url("Documents/b"), url("Documents/c")));
    EXPECT_THAT(recorded.files.calls(FileCall::resourceValues),
                UnorderedElementsAre(url("Documents/b"), url("Documents/c"), url("Documents/b"),
                                     url("Documents/c"), url("Documents/b"), url("Documents/c")))
        << "before and after the comparison, and of the copies";
}

TEST_F(DuplicateFinderTest, ACopyThatCannotBeReadIsLeftOutAndTheOthersAreAGroup) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    add("Documents/c", "same");
    sample.files.fail(url("Documents/b"), kFailure);
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/c"}));
    sample.files.fail(url("Documents/c"), kFailure);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(DuplicateFinderTest, ACopyThatFailsInItsMiddleLeavesTheOthersAGroup) {
    const std::string content(3'000'000, 'x');
    add("Documents/a", content);
    add("Documents/b", content);
    add("Documents/c", content);
    sample.files.failReadingAt(url("Documents/a"), 1'500'000, kFailure);
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/b", "Documents/c"}));
}

TEST_F(DuplicateFinderTest, ACopyThatVanishesAfterItWasComparedLeavesTheOthersOrNoGroup) {
    for (const auto* name : {"a", "b", "c"}) {
        add("Documents/" + std::string(name), "same");
    }
    int touches = 0;
    sample.files.before(url("Documents/b"), [&] {
        if (++touches == 5) { // its ends and its content have been read
            sample.files.vanish(url("Documents/b"));
        }
    });
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/c"}));
    EXPECT_EQ(touches, 5);
    touches = 0;
    sample.files.before(url("Documents/c"), [&] {
        if (++touches == 5) {
            sample.files.vanish(url("Documents/c"));
        }
    });
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_EQ(touches, 5);
}

// Of copies one is hashed for all: what has become something else meanwhile must not stand for them.
TEST_F(DuplicateFinderTest, ACopyThatIsWrittenOverInPlaceWhileItIsComparedIsLeftOut) {
    for (const auto* name : {"a", "b", "c"}) {
        add("Documents/" + std::string(name), "same");
    }
    int touches = 0;
    sample.files.before(url("Documents/b"), [&] {
        if (++touches == 4) { // its ends and its content have been read
            std::filesystem::last_write_time(sample.volume.hostPath(url("Documents/b")),
                                             std::filesystem::file_time_type::clock::now() +
                                                 std::chrono::hours(1));
        }
    });
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/c"}));
}

TEST_F(DuplicateFinderTest, WhatHasBecomeALinkAPipeOrAFolderIsNoCopy) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    tell("Documents", kHome + "/Documents/link", "1000000");
    tell("Documents", kHome + "/Documents/pipe", "1000000");
    tell("Documents", kHome + "/Documents/folder", "1000000");
    sample.disk.link(kHome + "/Documents/link", "a").fifo(kHome + "/Documents/pipe");
    sample.disk.folder(kHome + "/Documents/folder");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/b"}));
}

TEST_F(DuplicateFinderTest, AStopBeforeItBeginsReadsNothing) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    const StopSource stop;
    stop.requestStop();
    EXPECT_THAT(found(stop.token()), IsEmpty());
    EXPECT_THAT(sample.commands.calls(), IsEmpty());
}

TEST_F(DuplicateFinderTest, AStopWhileItListsOrBeforeItComparesReadsNothingMore) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    sample.disk.folder(kHome + "/Pictures");
    for (const std::string last : {"Listing files", "Comparing 2 files"}) {
        const StopSource stop;
        Texts told;
        const RecordedPlatform recorded(sample.platform);
        const auto progress = [&](const std::string& words) {
            told.push_back(words);
            if (words == last) {
                stop.requestStop();
            }
        };
        EXPECT_THAT(DuplicateFinder::find(recorded.platform, Priority::userInitiated, stop.token(), progress),
                    IsEmpty());
        EXPECT_EQ(told.back(), last);
        EXPECT_THAT(recorded.files.calls(FileCall::open), IsEmpty());
    }
    EXPECT_EQ(sample.commands.calls().size(), 2U)
        << "nothing was listed the first time, two folders the second";
}

TEST_F(DuplicateFinderTest, AStopBehindTheEndsOpensNothingMore) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    const StopSource stop;
    RecordedPlatform recorded(sample.platform);
    int closed = 0;
    recorded.files.beforeEach([&](const RecordingFileSystem::Call& call) {
        if (call.call == FileCall::close && ++closed == 2) {
            stop.requestStop();
        }
    });
    EXPECT_THAT(DuplicateFinder::find(recorded.platform, Priority::userInitiated, stop.token()), IsEmpty());
    EXPECT_EQ(recorded.files.calls(FileCall::open).size(), 2U);
}

// One file

TEST_F(DuplicateFinderTest, AFileIsDescribedWithItsSizesKindAndDate) {
    sample.disk.sparse(kHome + "/Movies/film.mov", 40'000'000);
    modify("Movies/film.mov", 100);
    const auto file = DuplicateFinder::describe(sample.platform, url("Movies/film.mov"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->url, url("Movies/film.mov"));
    EXPECT_EQ(file->kind, UserFile::Kind::video);
    EXPECT_EQ(file->logicalBytes, 40'000'000);
    EXPECT_LT(file->bytes, 100'000);
    EXPECT_EQ(file->lastUsed, Date::fromUnix(100 * 86'400, 0));
    EXPECT_FALSE(file->isCloudPlaceholder) << "the cloud is not asked";
    EXPECT_FALSE(file->installsAnInstalledApp);
    const auto used = Date::fromUnix(7, 0);
    sample.metadata.setLastUsed(url("Movies/film.mov"), used);
    EXPECT_EQ(DuplicateFinder::describe(sample.platform, url("Movies/film.mov"))->lastUsed, used);
}

TEST_F(DuplicateFinderTest, OnlyARegularFileThatIsThereIsDescribed) {
    lay("Documents/file", "x");
    sample.disk.link(kHome + "/Documents/link", "file").fifo(kHome + "/Documents/pipe");
    for (const auto* path : {"Documents", "Documents/link", "Documents/pipe", "Documents/missing"}) {
        EXPECT_EQ(DuplicateFinder::describe(sample.platform, url(path)), std::nullopt) << path;
    }
}

// Bad input

TEST_F(DuplicateFinderTest, NothingThatIsNoFileIsWaitedFor) {
    add("Documents/a", "same");
    add("Documents/b", "same");
    for (const auto* name : {"pipe", "other pipe", "socket", "device"}) {
        tell("Documents", kHome + "/Documents/" + name, "1000000");
    }
    const auto folder = kHome + "/Documents/";
    sample.disk.fifo(folder + "pipe").fifo(folder + "other pipe").socket(folder + "socket");
    sample.disk.zeroDevice(folder + "device");
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/b"}));
}

// What another program does to a copy while it is read: nothing that it does makes it a copy of what it was not, nor
// the others any less.
class ChangingCopyTest : public DuplicateFinderTest {
  protected:
    static constexpr std::size_t kLength = 1'500'000; // no whole number of steps or portions

    // In place of whatever stands there.
    void layCopies() {
        sample.disk.folder(kHome + "/Documents").remove(kHome + "/Documents");
        for (const auto* path : {"Documents/a", "Documents/b", "Documents/c"}) {
            lay(path, std::string(kLength, 'x'));
        }
    }
    // Changes one of three copies right before it is read for the n-th time, for each n, and expects the others.
    void expectOthersWhateverChanges(const std::string& path, const std::function<void()>& change) {
        bool isReached = true;
        int reads = 0;
        for (int n = 1; isReached; ++n) {
            layCopies();
            RecordedPlatform recorded(sample.platform);
            reads = 0;
            recorded.files.beforeEach([&](const RecordingFileSystem::Call& call) {
                if (call.call == FileCall::readAt && call.url == url(path) && ++reads == n) {
                    change();
                }
            });
            auto expected = Texts{"Documents/a", "Documents/b", "Documents/c"};
            const auto found = paths(DuplicateFinder::find(recorded.platform, Priority::userInitiated));
            isReached = reads >= n;
            if (isReached) {
                std::erase(expected, path);
            }
            EXPECT_THAT(found, ElementsAre(expected)) << path << ", before read " << n;
        }
        EXPECT_GE(reads, 2 + static_cast<int>(kLength / SteppedComparison::kStep)) << "the whole was read";
    }
    void tellCopies() {
        for (const auto* name : {"a", "b", "c"}) {
            tell("Documents", kHome + "/Documents/" + name, std::to_string(kLength));
        }
    }
};

TEST_F(ChangingCopyTest, ACopyThatShrinksWhileItIsReadIsNoneAndTheOthersStay) {
    tellCopies();
    for (const std::string path : {"Documents/a", "Documents/b"}) {
        expectOthersWhateverChanges(path, [&] { lay(path, std::string(700'000, 'x')); });
    }
}

TEST_F(ChangingCopyTest, ACopyThatGrowsWhileItIsReadIsNoneAndTheOthersStay) {
    tellCopies();
    for (const std::string path : {"Documents/a", "Documents/b"}) {
        expectOthersWhateverChanges(path, [&] { lay(path, std::string(kLength + 100'000, 'x')); });
    }
}

TEST_F(ChangingCopyTest, ACopyThatIsRemovedWhileItIsReadIsNoneAndTheOthersStay) {
    tellCopies();
    for (const std::string path : {"Documents/a", "Documents/b"}) {
        expectOthersWhateverChanges(path, [&] { sample.disk.remove(kHome + "/" + path); });
    }
}

TEST_F(ChangingCopyTest, ACopyInWhosePlaceAPipeOrALinkComesIsNoneAndTheOthersStay) {
    tellCopies();
    const std::string path = "Documents/b";
    expectOthersWhateverChanges(path,
                                [&] { sample.disk.remove(kHome + "/" + path).fifo(kHome + "/" + path); });
    expectOthersWhateverChanges(
        path, [&] { sample.disk.remove(kHome + "/" + path).link(kHome + "/" + path, "a"); });
}

// Each call that is made for three copies, made to fail in turn.
TEST_F(ChangingCopyTest, AnyCallThatFailsCostsItsOwnCopyAlone) {
    layCopies();
    tellCopies();
    const RecordedPlatform recorded(sample.platform);
    static_cast<void>(DuplicateFinder::find(recorded.platform, Priority::userInitiated));
    for (const auto call :
         {FileCall::open, FileCall::readAt, FileCall::length, FileCall::close, FileCall::resourceValues}) {
        const auto calls = static_cast<int>(recorded.files.calls(call).size());
        EXPECT_GE(calls, 3);
        for (int n = 1; n <= calls; ++n) {
            sample.files.failNth(call, n, kFailure);
            const auto groups = foundPaths();
            ASSERT_EQ(groups.size(), 1U) << static_cast<int>(call) << ", " << n;
            EXPECT_EQ(groups[0].size(), 2U) << static_cast<int>(call) << ", " << n;
        }
    }
    EXPECT_THAT(foundPaths(), ElementsAre(Texts{"Documents/a", "Documents/b", "Documents/c"}));
}

TEST_F(ChangingCopyTest, WhereNothingCanBeReadThereAreNoGroups) {
    layCopies();
    tellCopies();
    for (const auto call : {FileCall::close, FileCall::readAt, FileCall::open}) {
        sample.files.failEvery(call, kFailure);
        EXPECT_THAT(found(), IsEmpty()) << static_cast<int>(call);
    }
}

// Files of zeros on the disk, and the search that walks it.

class DuplicatesOnTheDisk : public testing::Test {
  protected:
    void lay(const std::string& below, Bytes length = 1'000'000) {
        sample.disk.sparse(kHome + "/Documents/" + below, length);
    }
    // Of each group, below the folder.
    std::vector<Texts> found() const {
        std::vector<Texts> paths;
        for (const auto& group : DuplicateFinder::find(sample.platform, Priority::userInitiated)) {
            auto& names = paths.emplace_back();
            for (const auto& file : group.files) {
                names.push_back(file.url.path().substr(kHome.size() + 11));
            }
            std::ranges::sort(names);
        }
        return paths;
    }

    SamplePlatform sample{SampleMac(), SampleSpotlight::embedded};
};

TEST_F(DuplicatesOnTheDisk, FilesOfAMillionBytesAreComparedAndSmallerOnesNotLookedAt) {
    lay("a");
    lay("b");
    lay("c", 999'999);
    lay("d", 999'999);
    EXPECT_THAT(found(), ElementsAre(Texts{"a", "b"}));
    for (const auto* name : {"c", "d"}) {
        EXPECT_THAT(sample.files.touched(),
                    testing::Not(testing::Contains(FileURL(kHome + "/Documents/" + name))));
    }
}

TEST_F(DuplicatesOnTheDisk, NamesThatBreakTheLinesOfTheAnswerCostTheirFilesAlone) {
    for (const std::string name :
         {"line\nfeed", "line\n", OddNames::kLostInLines, "two   kMDItemFSSize = 1000000", "   "}) {
        lay(name + "a");
        lay("deep/" + name + "b/c");
    }
    lay("good");
    lay("deep/good");
    EXPECT_THAT(found(), ElementsAre(Texts{"   a", "deep/   b/c", "deep/good", "good"}));
}

TEST_F(DuplicatesOnTheDisk, WhatIsLockedIsLeftOut) {
    for (const auto* path : {"a", "b", "locked file", "locked/c", "open/d"}) {
        lay(path);
    }
    sample.disk.permissions(kHome + "/Documents/locked file", 0);
    sample.disk.permissions(kHome + "/Documents/locked", 0);
    const OrdinaryUser ordinary;
    EXPECT_THAT(found(), ElementsAre(Texts{"a", "b", "open/d"}));
}

} // namespace
} // namespace quillane
