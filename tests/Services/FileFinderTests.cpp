#include "FileFinder.h"
#include "OddNames.h"
#include "OrdinaryUser.h"
#include "RecordedPlatform.h"
#include "SamplePlatform.h"
#include "StopToken.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = UserFile::Kind;
using Texts = std::vector<std::string>;
using Call = ScriptedCommandRunner::Call;

constexpr std::string_view kDownloads = "/Users/alex/Downloads";

FileURL home(const std::string& below) {
    return FileURL(std::string(SampleMac::kHome)).appending(below);
}

Texts namesOf(const std::vector<UserFile>& files) {
    Texts names;
    for (const auto& file : files) {
        names.push_back(file.name());
    }
    return names;
}

// A Mac with files in Downloads, and an index that answers one question about that folder.
class FileFinderTest : public testing::Test {
  protected:
    static constexpr std::array<std::string_view, 1> kRoots = {"Downloads"};
    static constexpr const char* kQuery = "kMDItemFSName == *";

    FileFinderTest() { mac.folder("Downloads"); }

    void lay() { sample.emplace(mac); }
    // From now on this is what the index prints for the folder, a path to a line.
    void answer(const Texts& paths, const std::string& folder = std::string(kDownloads)) {
        std::string output;
        for (const auto& path : paths) {
            output += path + "\n";
        }
        print(output, folder);
    }
    void print(const std::string& output, const std::string& folder = std::string(kDownloads)) {
        sample->commands.answer("/usr/bin/mdfind", {"-onlyin", folder, kQuery}, output);
    }
    std::vector<UserFile> collected(std::size_t limit = FileFinder::kNoLimit) {
        return FileFinder::collect(sample->platform, kQuery, kRoots, limit);
    }
    // A file that lies in Downloads, as it is described.
    UserFile described(const std::string& name) {
        return FileFinder::describe(sample->platform, home("Downloads/" + name)).value_or(UserFile());
    }

    SampleMac mac;
    std::optional<SamplePlatform> sample;
};

// The questions that a lens asks, each as folder and query, on a Mac on which every folder is.
template <class Lens>
std::vector<std::pair<std::string, std::string>> asked(Lens lens) {
    SampleMac mac;
    for (const auto root : FileFinder::kUserRoots) {
        mac.folder(std::string(root));
    }
    const SamplePlatform sample(mac);
    EXPECT_THAT(lens(sample.platform), IsEmpty());
    std::vector<std::pair<std::string, std::string>> questions;
    for (const auto& call : sample.commands.calls()) {
        EXPECT_EQ(call.path, "/usr/bin/mdfind");
        EXPECT_EQ(call.arguments.size(), 3U);
        EXPECT_EQ(call.arguments.at(0), "-onlyin");
        questions.emplace_back(call.arguments.at(1), call.arguments.at(2));
    }
    return questions;
}

// The one query of a lens that looks in all six folders.
template <class Lens>
std::string queryInEveryRoot(Lens lens) {
    const auto questions = asked(lens);
    Texts folders;
    for (const auto& [folder, query] : questions) {
        folders.push_back(folder);
        EXPECT_EQ(query, questions.front().second);
    }
    EXPECT_EQ(folders, (Texts{"/Users/alex/Desktop", "/Users/alex/Documents", "/Users/alex/Downloads",
                              "/Users/alex/Movies", "/Users/alex/Music", "/Users/alex/Pictures"}));
    return questions.empty() ? "" : questions.front().second;
}

// Stopping

// Prints a file of Downloads and is then asked to stop.
class StoppingRunner final : public CommandRunner {
  public:
    int runs = 0;
    const StopSource source;
    std::uint32_t userID() const override { return ScriptedCommandRunner::kUserID; }

  protected:
    Result<std::string> outputOf(const Run& /*run*/) override {
        ++runs;
        source.requestStop();
        return std::string(kDownloads) + "/a.txt\n";
    }
};

TEST(FileFinder, ALensThatIsStoppedAsksNoFurtherFolderAndDescribesNothing) {
    SampleMac mac;
    for (const auto root : FileFinder::kUserRoots) {
        mac.folder(std::string(root));
    }
    mac.file("Downloads/a.txt", "a");
    const SamplePlatform sample(mac);
    const std::vector<std::function<std::vector<UserFile>(const Platform&, const StopToken&)>> lenses = {
        [](const auto& platform, const auto& stop) { return FileFinder::largeAndOld(platform, stop); },
        [](const auto& platform, const auto& stop) { return FileFinder::installers(platform, {}, stop); },
        [](const auto& platform, const auto& stop) { return FileFinder::search(platform, "a", {}, stop); }};
    for (const auto& lens : lenses) {
        StoppingRunner runner;
        const Platform& whole = sample.platform;
        const Platform platform{whole.files,    runner,          whole.metadata, whole.clock,
                                whole.tasks,    whole.workspace, whole.trash,    whole.runningApplications,
                                whole.defaults, whole.previews};
        EXPECT_THAT(lens(platform, runner.source.token()), IsEmpty());
        EXPECT_EQ(runner.runs, 1);
    }
}

TEST_F(FileFinderTest, FilesThatAreStillToBeDescribedWhenItIsStoppedAreNotLookedAt) {
    Texts paths;
    for (int i = 0; i < 40; ++i) {
        mac.file("Downloads/" + std::to_string(i), "x");
        paths.push_back(std::string(kDownloads) + "/" + std::to_string(i));
    }
    lay();
    answer(paths);
    RecordedPlatform recorded(sample->platform);
    const StopSource source;
    recorded.files.beforeEach([&](const auto& made) {
        if (made.call == FileCall::resourceValues) {
            source.requestStop();
        }
    });
    FileFinder::collect(recorded.platform, kQuery, kRoots, FileFinder::kNoLimit, source.token());
    EXPECT_EQ(recorded.files.calls(FileCall::resourceValues).size(), 1U);
}

// The queries

TEST(FileFinder, LargeFilesAreAskedForInEveryRoot) {
    EXPECT_EQ(queryInEveryRoot([](const Platform& platform) { return FileFinder::largeAndOld(platform); }),
              "kMDItemFSSize >= 100000000 && kMDItemContentType != 'public.folder'");
}

TEST(FileFinder, ScreenCapturesAreAskedForByTheirMark) {
    EXPECT_EQ(FileFinder::kScreenshotsQuery, "kMDItemIsScreenCapture == 1");
}

TEST(FileFinder, InstallersAreAskedForInDownloadsAndOnTheDesktop) {
    const std::string query = "kMDItemContentTypeTree == 'com.apple.disk-image' || "
                              "kMDItemContentTypeTree == 'com.apple.installer-package-archive' || "
                              "kMDItemContentTypeTree == 'public.zip-archive'";
    EXPECT_THAT(
        asked([](const Platform& platform) { return FileFinder::installers(platform, {}); }),
        ElementsAre(std::pair("/Users/alex/Downloads", query), std::pair("/Users/alex/Desktop", query)));
}

std::string searchQuery(const std::string& text, std::optional<Kind> kind = std::nullopt) {
    return queryInEveryRoot(
        [&](const Platform& platform) { return FileFinder::search(platform, text, kind); });
}

TEST(FileFinder, ASearchAsksForNameOrContent) {
    EXPECT_EQ(searchQuery("invoice 2023"),
              R"((kMDItemDisplayName == "*invoice 2023*"cd || kMDItemTextContent == "*invoice 2023*"cd))");
}

TEST(FileFinder, ADoubleQuoteIsEscapedAndNothingElse) {
    EXPECT_EQ(searchQuery(R"(a"b\c*'d)"),
              R"((kMDItemDisplayName == "*a\"b\c*'d*"cd || kMDItemTextContent == "*a\"b\c*'d*"cd))");
}

TEST(FileFinder, EachKindButOtherHasItsClause) {
    const std::map<Kind, std::string> clauses = {
        {Kind::image, "kMDItemContentTypeTree == 'public.image'"},
        {Kind::video, "kMDItemContentTypeTree == 'public.movie'"},
        {Kind::audio, "kMDItemContentTypeTree == 'public.audio'"},
        {Kind::pdf, "kMDItemContentTypeTree == 'com.adobe.pdf'"},
        {Kind::document, "(kMDItemContentTypeTree == 'public.text' || "
                         "kMDItemContentTypeTree == 'public.composite-content')"},
        {Kind::archive, "kMDItemContentTypeTree == 'public.archive'"},
        {Kind::diskImage, "kMDItemContentTypeTree == 'com.apple.disk-image'"},
        {Kind::installer, "kMDItemContentTypeTree == 'com.apple.installer-package-archive'"}};
    for (const auto kind : kAllUserFileKinds) {
        const auto clause = FileFinder::contentTypeTree(kind);
        EXPECT_EQ(clause.has_value(), kind != Kind::other) << rawValue(kind);
        if (clause) {
            EXPECT_EQ(*clause, clauses.at(kind)) << rawValue(kind);
        }
    }
}

TEST(FileFinder, TheClauseOfAKindIsTheSecondOfASearch) {
    const std::string plain = R"((kMDItemDisplayName == "*x*"cd || kMDItemTextContent == "*x*"cd))";
    EXPECT_EQ(searchQuery("x", Kind::pdf), plain + " && kMDItemContentTypeTree == 'com.adobe.pdf'");
    EXPECT_EQ(searchQuery("x", Kind::other), plain);
}

TEST_F(FileFinderTest, ASearchForAQuotedWordFindsIt) {
    mac.file("Downloads/the \"draft\" copy.txt", "x").file("Downloads/the draft.txt", "y");
    const SamplePlatform embedded(mac, SampleSpotlight::embedded);
    EXPECT_EQ(namesOf(FileFinder::search(embedded.platform, "\"draft\"", std::nullopt)),
              Texts{"the \"draft\" copy.txt"});
}

// What is collected

TEST_F(FileFinderTest, AFileThatIsNamedTwiceIsListedOnce) {
    mac.file("Downloads/a.txt", "x").folder("Desktop");
    lay();
    answer({"/Users/alex/Downloads/a.txt", "/Users/alex/Downloads/a.txt"});
    answer({"/Users/alex/Downloads/a.txt"}, "/Users/alex/Desktop");
    const std::array<std::string_view, 2> roots = {"Downloads", "Desktop"};
    EXPECT_EQ(namesOf(FileFinder::collect(sample->platform, kQuery, roots, FileFinder::kNoLimit)),
              Texts{"a.txt"});
}

TEST_F(FileFinderTest, AMissingRootIsNotAskedFor) {
    lay();
    const std::array<std::string_view, 2> roots = {"Movies", "Downloads"};
    EXPECT_THAT(FileFinder::collect(sample->platform, kQuery, roots, FileFinder::kNoLimit), IsEmpty());
    EXPECT_THAT(sample->commands.calls(),
                ElementsAre(Call{"/usr/bin/mdfind", {"-onlyin", std::string(kDownloads), kQuery}}));
}

TEST_F(FileFinderTest, NothingInsideAPhotosLibraryIsListedOrTouched) {
    const std::string inside = "/Users/alex/Downloads/Mine.photoslibrary/originals/a.jpg";
    mac.file(inside, "x").file("Downloads/b.jpg", "x");
    lay();
    answer({inside, "/Users/alex/Downloads/b.jpg"});
    EXPECT_EQ(namesOf(collected()), Texts{"b.jpg"});
    EXPECT_THAT(sample->files.touched(), testing::Not(testing::Contains(FileURL(inside))));
}

TEST_F(FileFinderTest, NothingHiddenIsListedOrTouched) {
    const Texts hidden = {"/Users/alex/Downloads/.a.txt", "/Users/alex/Downloads/.git/b/c.txt"};
    for (const auto& path : hidden) {
        mac.file(path, "x");
    }
    lay();
    answer(hidden);
    EXPECT_THAT(collected(), IsEmpty());
    for (const auto& path : hidden) {
        EXPECT_THAT(sample->files.touched(), testing::Not(testing::Contains(FileURL(path))));
    }
}

TEST_F(FileFinderTest, ADotInsideANameHidesNothing) {
    mac.file("Downloads/v1.2/notes.final.txt", "x");
    lay();
    answer({"/Users/alex/Downloads/v1.2/notes.final.txt"});
    EXPECT_EQ(namesOf(collected()), Texts{"notes.final.txt"});
}

TEST_F(FileFinderTest, TheLimitTakesTheFirstAnswersAndNotTheLargest) {
    mac.allocated("Downloads/a", 1'000).allocated("Downloads/b", 9'000).allocated("Downloads/c", 900'000);
    mac.folder("Desktop");
    lay();
    answer({"/Users/alex/Downloads/a", "/Users/alex/Downloads/.hidden", "/Users/alex/Downloads/a",
            "/Users/alex/Downloads/b", "/Users/alex/Downloads/c"});
    const std::array<std::string_view, 2> roots = {"Downloads", "Desktop"};
    EXPECT_EQ(namesOf(FileFinder::collect(sample->platform, kQuery, roots, 2)), (Texts{"b", "a"}));
    EXPECT_EQ(sample->commands.calls().size(), 1U) << "the limit ends the roots too";
}

TEST_F(FileFinderTest, AFolderCountsForTheLimitAndIsNotListed) {
    mac.folder("Downloads/folder").file("Downloads/a", "x").file("Downloads/b", "x");
    lay();
    answer({"/Users/alex/Downloads/folder", "/Users/alex/Downloads/a", "/Users/alex/Downloads/b"});
    EXPECT_EQ(namesOf(collected(2)), Texts{"a"});
}

TEST_F(FileFinderTest, ASearchListsThreeHundredAtMost) {
    for (int i = 0; i < 310; ++i) {
        mac.file("Downloads/word " + std::to_string(1000 + i), "x");
    }
    const SamplePlatform embedded(mac, SampleSpotlight::embedded);
    EXPECT_EQ(FileFinder::search(embedded.platform, "word", std::nullopt).size(), 300U);
}

TEST(FileFinder, OnlyASearchHasALimit) {
    constexpr int kFiles = 310;
    SampleMac mac;
    for (int i = 0; i < kFiles; ++i) {
        mac.file("Downloads/" + std::to_string(i) + ".zip", "x");
    }
    // Whatever is asked, all of them are the answer.
    class Naming final : public CommandRunner {
      public:
        std::uint32_t userID() const override { return ScriptedCommandRunner::kUserID; }
        Result<std::string> outputOf(const Run&) override {
            std::string output;
            for (int i = 0; i < kFiles; ++i) {
                output += std::string(kDownloads) + "/" + std::to_string(i) + ".zip\n";
            }
            return output;
        }
    } naming;
    const SamplePlatform sample(mac);
    const Platform platform = withCommands(sample.platform, naming);
    EXPECT_EQ(FileFinder::largeAndOld(platform).size(), 310U);
    EXPECT_EQ(FileFinder::installers(platform, {}).size(), 310U);
    EXPECT_EQ(FileFinder::search(platform, "zip", std::nullopt).size(), 300U);
}

TEST_F(FileFinderTest, WhatTheFilesTakeOnTheDiskOrdersThemAndNotTheirLength) {
    mac.sparse("Downloads/long", 5'000'000).allocated("Downloads/dense", 500'000);
    lay();
    answer({"/Users/alex/Downloads/long", "/Users/alex/Downloads/dense"});
    EXPECT_EQ(namesOf(collected()), (Texts{"dense", "long"}));
}

TEST_F(FileFinderTest, TheLargestOnDiskComesFirstAndEqualOnesKeepTheOrderOfTheIndex) {
    mac.allocated("Downloads/small", 5'000).allocated("Downloads/large", 500'000);
    Texts paths = {"/Users/alex/Downloads/small", "/Users/alex/Downloads/large"};
    Texts names = {"large", "small"};
    for (int i = 300; i > 0; --i) {
        mac.file("Downloads/" + std::to_string(i), "");
        paths.push_back("/Users/alex/Downloads/" + std::to_string(i));
        names.push_back(std::to_string(i));
    }
    lay();
    answer(paths);
    EXPECT_EQ(namesOf(collected()), names);
}

TEST_F(FileFinderTest, SeveralThreadsListTheSame) {
    Texts paths;
    for (int i = 0; i < 500; ++i) {
        const auto name = "Downloads/" + std::to_string(i);
        mac.file(name, std::string(static_cast<std::size_t>(i) % 7 * 5'000, 'x'));
        paths.push_back("/Users/alex/" + name);
    }
    lay();
    answer(paths);
    const auto expected = collected();
    EXPECT_EQ(expected.size(), 500U);
    MainQueue mainQueue;
    ThreadTaskRunner threads(mainQueue);
    EXPECT_EQ(FileFinder::collect(withTasks(sample->platform, threads), kQuery, kRoots, FileFinder::kNoLimit),
              expected);
}

TEST_F(FileFinderTest, WhatCannotBeStartedFindsNothing) {
    mac.file("Downloads/a.txt", "x");
    lay();
    EXPECT_THAT(collected(), IsEmpty());
}

TEST_F(FileFinderTest, ABrokenLineOfTheIndexIsNoFile) {
    mac.file("Downloads/a.txt", "x").file("Downloads/b.txt", "x");
    lay();
    print("Failed to create query for 'x'.\n\n/Users/alex/Downloads/a.txt\n"
          "/Users/alex/Downloads/\xff\n/Users/alex/Downloads/b.txt");
    EXPECT_THAT(namesOf(collected()), testing::UnorderedElementsAre("a.txt", "b.txt"));
}

TEST_F(FileFinderTest, TheSecondHalfOfABrokenLineIsNoFileWhateverItIsThePathOf) {
    const Texts elsewhere = {"/etc/passwd.pdf", "/Users/alex/Downloads.pdf", "/Users/alex/Documents/a.txt"};
    mac.file("Downloads/b.txt", "x");
    for (const auto& path : elsewhere) {
        mac.file(path, "x");
    }
    lay();
    for (const auto& path : elsewhere) {
        print("/Users/alex/Downloads/x\n" + path + "\n/Users/alex/Downloads/b.txt\n");
        EXPECT_EQ(namesOf(collected()), Texts{"b.txt"}) << path;
        EXPECT_THAT(sample->files.touched(), testing::Not(testing::Contains(FileURL(path))));
    }
}

// The folder's real place has two forms on a Mac, and the longer one is printed.
TEST_F(FileFinderTest, AFolderThatLeadsIntoWhatThePrivateFolderHoldsMayBeAnsweredInTheLongForm) {
    mac.file("/private/var/kept/a.txt", "x").folder("Desktop").file("/private/opt/kept/b.txt", "x");
    lay();
    sample->disk.link("/var", "private/var");
    sample->disk.remove("/Users/alex/Downloads").link("/Users/alex/Downloads", "/var/kept");
    print("/private/var/kept/a.txt\n/private/var/a.txt\n/private/opt/kept/b.txt\n");
    EXPECT_EQ(namesOf(collected()), Texts{"a.txt"});
    sample->disk.remove("/Users/alex/Downloads").link("/Users/alex/Downloads", "/private/opt/kept");
    print("/private/opt/kept/b.txt\n/private/private/opt/kept/b.txt\n");
    EXPECT_EQ(namesOf(collected()), Texts{"b.txt"}) << "a path of its own";
}

TEST_F(FileFinderTest, AFolderThatIsALinkMayBeAnsweredByItsRealPlace) {
    mac.file("Elsewhere/a.txt", "x").folder("Desktop");
    lay();
    sample->disk.remove("/Users/alex/Downloads").link("/Users/alex/Downloads", "/Users/alex/Elsewhere");
    answer({"/Users/alex/Elsewhere/a.txt"});
    EXPECT_EQ(namesOf(collected()), Texts{"a.txt"});
}

TEST_F(FileFinderTest, AFileThatGoesBetweenTheIndexAndTheDiskIsNotListed) {
    mac.file("Downloads/a.txt", "x").file("Downloads/b.txt", "x");
    lay();
    answer({"/Users/alex/Downloads/a.txt", "/Users/alex/Downloads/b.txt"});
    sample->files.before(home("Downloads/a.txt"), [&] { sample->files.vanish(home("Downloads/a.txt")); });
    EXPECT_EQ(namesOf(collected()), Texts{"b.txt"});
}

// What people and programs leave in folders, and the search that walks them

class FilesOnTheDisk : public testing::Test {
  protected:
    static constexpr const char* kFolder = "/Users/alex/Downloads/";

    void lay(const std::string& below) { sample.disk.file(kFolder + below, "needle"); }
    Texts named(const std::string& text) const {
        auto names = namesOf(FileFinder::search(sample.platform, text, std::nullopt));
        std::ranges::sort(names);
        return names;
    }

    SamplePlatform sample{SampleMac(), SampleSpotlight::embedded};
};

TEST_F(FilesOnTheDisk, NamesThatBreakTheLinesOfTheAnswerCostTheirFilesAlone) {
    for (const std::string name :
         {"line\nfeed", "line\n", "\nline", OddNames::kLostInLines, "tab\t", "cr\r", "   "}) {
        lay(name + "needle a");
        lay("deep/" + name + "/needle b");
    }
    lay("needle good");
    EXPECT_EQ(named("needle"), (Texts{"   needle a", "cr\rneedle a", "needle b", "needle b", "needle b",
                                      "needle good", "tab\tneedle a"}));
}

TEST_F(FilesOnTheDisk, WhatIsLockedIsPassedByAndAllElseIsFound) {
    for (const auto* path : {"needle a", "locked/needle b", "open/needle c", "locked needle"}) {
        lay(path);
    }
    sample.disk.permissions(kFolder + std::string("locked"), 0);
    sample.disk.permissions(kFolder + std::string("locked needle"), 0);
    const OrdinaryUser ordinary;
    EXPECT_EQ(named("needle"), (Texts{"locked needle", "needle a", "needle c"}))
        << "a file's name and size are its folder's";
}

TEST_F(FilesOnTheDisk, PipesSocketsDevicesAndLinksAreNoFilesAndNotWaitedFor) {
    const std::string folder = kFolder;
    lay("needle a");
    sample.disk.fifo(folder + "needle pipe.txt").socket(folder + "needle socket.txt");
    sample.disk.zeroDevice(folder + "needle device.txt").link(folder + "needle link.txt", "needle a");
    sample.disk.fifo(folder + "pipe.txt").zeroDevice(folder + "device.txt").link(folder + "round", ".");
    EXPECT_EQ(named("needle"), Texts{"needle a"});
}

TEST_F(FilesOnTheDisk, TenGigabytesOfNothingAreALargeFileThatTakesNoRoom) {
    sample.disk.sparse(kFolder + std::string("image.txt"), Bytes{10} << 30U);
    sample.disk.sparse(kFolder + std::string("small.txt"), 99'999'999);
    const auto files = FileFinder::largeAndOld(sample.platform);
    ASSERT_EQ(namesOf(files), Texts{"image.txt"});
    EXPECT_EQ(files[0].logicalBytes, Bytes{10} << 30U);
    EXPECT_EQ(files[0].bytes, 0);
    EXPECT_TRUE(files[0].isCloudPlaceholder);
    EXPECT_EQ(named("needle"), Texts());
}

// What a file is described as

TEST_F(FileFinderTest, AFileIsDescribedByItsKindItsTwoSizesAndItsChange) {
    mac.sparse("Downloads/Talk.mov", 800'000).modified("Downloads/Talk.mov", daysAgo(9));
    lay();
    const auto file = described("Talk.mov");
    EXPECT_EQ(file, (UserFile{home("Downloads/Talk.mov"), Kind::video,
                              allocatedOnDisk(sample->disk.at("Users/alex/Downloads/Talk.mov")), 800'000,
                              sample->mac.date(daysAgo(9)), false, false}));
}

TEST_F(FileFinderTest, TheLastUseOfTheIndexGoesBeforeTheChange) {
    mac.file("Downloads/a.txt", "x").modified("Downloads/a.txt", daysAgo(90));
    lay();
    sample->metadata.setLastUsed(home("Downloads/a.txt"), sample->mac.date(daysAgo(2)));
    EXPECT_EQ(described("a.txt").lastUsed, sample->mac.date(daysAgo(2)));
}

TEST_F(FileFinderTest, LinksFoldersPipesAndWhatCannotBeReadAreNoFiles) {
    mac.folder("Downloads/folder").file("Downloads/a.txt", "x").link("Downloads/link", "a.txt");
    lay();
    const std::string folder = "Users/alex/Downloads/";
    sample->disk.fifo(folder + "pipe").socket(folder + "socket").zeroDevice(folder + "device");
    sample->files.fail(home("Downloads/a.txt"), {ErrorCode::kReadNoPermission, std::nullopt});
    for (const char* name : {"folder", "link", "a.txt", "missing", "pipe", "socket", "device"}) {
        EXPECT_EQ(FileFinder::describe(sample->platform, home("Downloads").appending(name)), std::nullopt)
            << name;
    }
}

// Files of any size, as a file system may tell them.
class ToldSizes final : public ForwardingFileSystem {
  public:
    ToldSizes(FileSystem& files, Bytes length, std::optional<Bytes> allocated)
        : ForwardingFileSystem(files)
        , m_length(length)
        , m_allocated(allocated) {}
    Result<ResourceValues> resourceValues(const FileURL&) const override {
        ResourceValues values;
        values.type = EntryType::regular;
        values.fileSize = m_length;
        values.totalAllocated = m_allocated;
        return values;
    }

  private:
    Bytes m_length;
    std::optional<Bytes> m_allocated;
};

TEST(FileFinder, AFileWithUnderATwoPercentOfItsLengthOnDiskIsAPlaceholder) {
    struct Row {
        Bytes length;
        Bytes allocated;
        bool isPlaceholder;
    };
    const std::vector<Row> rows = {{50'000'000, 900'000, true},    {50'000'000, 999'999, true},
                                   {50'000'000, 1'000'000, false}, {50'000'049, 1'000'000, false},
                                   {50'000'050, 1'000'000, true},  {900'000, 0, false},
                                   {1'000'000, 0, false},          {1'000'001, 0, true},
                                   {1'000'001, 20'000, false},     {0, 0, false}};
    SamplePlatform sample{SampleMac()};
    for (const auto& row : rows) {
        ToldSizes files(sample.files, row.length, row.allocated);
        const auto file = FileFinder::describe(withFiles(sample.platform, files), home("a"));
        ASSERT_TRUE(file);
        EXPECT_EQ(file->isCloudPlaceholder, row.isPlaceholder) << row.length << " " << row.allocated;
        EXPECT_EQ(file->bytes, row.allocated);
        EXPECT_EQ(file->logicalBytes, row.length);
    }
}

TEST(FileFinder, WhereNoAllocationIsToldTheLengthCounts) {
    SamplePlatform sample{SampleMac()};
    ToldSizes files(sample.files, 123, std::nullopt);
    EXPECT_EQ(FileFinder::describe(withFiles(sample.platform, files), home("a"))->bytes, 123);
}

TEST_F(FileFinderTest, WhatAwaitsItsDownloadIsAPlaceholderWhateverItsSize) {
    mac.file("Downloads/a.txt", "x").file("Downloads/b.txt", "x");
    lay();
    sample->files.sendToTheCloud(home("Downloads/a.txt"));
    EXPECT_TRUE(described("a.txt").isCloudPlaceholder);
    EXPECT_FALSE(described("b.txt").isCloudPlaceholder);
}

// Installers

TEST(FileFinder, AnInstallerWhoseNameBeginsWithAnInstalledOneHasDoneItsJob) {
    struct Row {
        std::string name;
        bool isDone;
    };
    const std::vector<Row> rows = {
        {"Northlight-RAW 7.2.dmg", true}, {"northlightraw.pkg", true}, {"Northlight.dmg", false},
        {"My Northlight RAW.dmg", false}, {"Drawing.dmg", true},       {"Paint.zip", false},
        {"Loft 7.2.dmg", true},           {"Loft 7.dmg", false}};
    SampleMac mac;
    for (const auto& row : rows) {
        mac.file("Downloads/" + row.name, "x");
    }
    const SamplePlatform sample(mac, SampleSpotlight::embedded);
    const auto files = FileFinder::installers(sample.platform,
                                              {"Northlight RAW", "Draw", "Paint Zip", "Loft 7.2", "!!", ""});
    ASSERT_EQ(files.size(), rows.size());
    for (const auto& row : rows) {
        const auto file = std::ranges::find(files, row.name, &UserFile::name);
        ASSERT_NE(file, files.end()) << row.name;
        EXPECT_EQ(file->installsAnInstalledApp, row.isDone) << row.name;
    }
}

TEST(FileFinder, AZipArchiveIsListedWithTheInstallersAsAnArchive) {
    SampleMac mac;
    mac.file("Desktop/Tool.zip", "x").file("Documents/Else.zip", "x").file("Desktop/Tool.tar", "x");
    const SamplePlatform sample(mac, SampleSpotlight::embedded);
    const auto files = FileFinder::installers(sample.platform, {});
    ASSERT_EQ(namesOf(files), Texts{"Tool.zip"});
    EXPECT_EQ(files.front().kind, Kind::archive);
}

// The Photos library

TEST(FileFinder, ThePhotosLibraryIsMeasuredWholeAndIsAbsentWhenMissing) {
    EXPECT_EQ(FileFinder::photosLibraryBytes(SamplePlatform(SampleMac()).platform), std::nullopt);
    SampleMac mac;
    const std::string library = "Pictures/Photos Library.photoslibrary";
    mac.allocated(library + "/originals/a.jpg", 70'000).allocated(library + "/.hidden/b", 9'000);
    const SamplePlatform sample(mac);
    EXPECT_EQ(FileFinder::photosLibraryBytes(sample.platform),
              allocatedOnDisk(sample.disk.at("Users/alex/" + library)));
}

} // namespace
} // namespace quillane
