#include "DocumentFiles.h"
#include "DocumentText.h"
#include "FakeMetadata.h"
#include "ForwardingFileSystem.h"
#include "IndexedItem.h"
#include "MainQueue.h"
#include "ManualClock.h"
#include "MetadataSearch.h"
#include "OddNames.h"
#include "PngText.h"
#include "PosixFileSystem.h"
#include "PropertyListWriter.h"
#include "RecordingFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "SearchingCommandRunner.h"
#include "TemporaryFolder.h"
#include "TextFileSearch.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

namespace quillane {
namespace {

// Counts what a search asks the disk for beyond the walk itself.
class CountingFileSystem final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    mutable int existenceAsked = 0;
    mutable int resourcesAsked = 0;

    bool exists(const FileURL& url) const override {
        ++existenceAsked;
        return ForwardingFileSystem::exists(url);
    }
    Result<ResourceValues> resourceValues(const FileURL& url) const override {
        ++resourcesAsked;
        return ForwardingFileSystem::resourceValues(url);
    }
};

std::vector<std::string> split(const std::string& text, char end) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (auto at = text.find(end); at != std::string::npos; at = text.find(end, begin)) {
        parts.push_back(text.substr(begin, at - begin));
        begin = at + 1;
    }
    EXPECT_EQ(begin, text.size()) << "every line has its end";
    return parts;
}

const std::string kApplications = "kMDItemContentType == 'com.apple.application-bundle'";
const std::string kEverything = "kMDItemFSName == *";
const std::string kNeedleInNameOrContent =
    "(kMDItemDisplayName == \"*needle*\"cd || kMDItemTextContent == \"*needle*\"cd)";

// A volume with one user, and a search over it.
class MetadataSearchTest : public testing::Test {
  protected:
    using Lines = std::vector<std::string>;

    TemporaryFolder m_volume;
    PosixFileSystem m_disk{m_volume.path(), FileURL("/Users/alex")};
    CountingFileSystem m_files{m_disk};
    FakeMetadata m_metadata;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    MetadataSearch m_search{m_files, m_metadata, m_clock, {FileURL("/")}};

    void application(const std::string& path) { m_volume.file(path + "/Contents/Info.plist", "<plist/>"); }
    Lines find(const std::string& query) const { return split(m_search.answer({query}), '\n'); }
    Lines findIn(const std::string& folder, const std::string& query) const {
        return split(m_search.answer({"-onlyin", folder, query}), '\n');
    }
};

TEST_F(MetadataSearchTest, ApplicationsAreFoundWhereverTheyLie) {
    application("Applications/Editor.app");
    application("Applications/Vendor/Suite/Tool.app");
    application("System/Applications/Clock.app");
    application("Users/alex/Applications/Mine.app");
    application("Users/alex/Downloads/New.app");
    application("Users/sam/Desktop/Other.app");
    application("Volumes/Disk/Portable.app");
    EXPECT_EQ(find(kApplications),
              (Lines{"/Applications/Editor.app", "/Applications/Vendor/Suite/Tool.app",
                     "/System/Applications/Clock.app", "/Users/alex/Applications/Mine.app",
                     "/Users/alex/Downloads/New.app", "/Users/sam/Desktop/Other.app",
                     "/Volumes/Disk/Portable.app"}));
}

TEST_F(MetadataSearchTest, AFolderNamedLikeAnApplicationIsOneOnlyWithItsPropertyList) {
    m_volume.folder("Applications/Empty.app")
        .file("Applications/File.app")
        .folder("Applications/Half.app/Contents");
    EXPECT_EQ(find(kApplications), Lines{});
    EXPECT_EQ(find("kMDItemContentType == 'public.folder' && kMDItemFSName == \"*.app\""),
              (Lines{"/Applications/Empty.app", "/Applications/Half.app"}));
}

TEST_F(MetadataSearchTest, WhatLiesInsideAPackageIsNotFound) {
    application("Applications/Outer.app");
    application("Applications/Outer.app/Contents/Inner.app");
    m_volume.file("Users/alex/Pictures/Mine.photoslibrary/originals/a.jpg");
    EXPECT_EQ(find(kApplications), Lines{"/Applications/Outer.app"});
    EXPECT_EQ(find("kMDItemContentTypeTree == 'public.image'"), Lines{});
    EXPECT_EQ(find("kMDItemContentTypeTree == 'com.apple.package'"),
              (Lines{"/Applications/Outer.app", "/Users/alex/Pictures/Mine.photoslibrary"}));
}

TEST_F(MetadataSearchTest, AFrameworkIsAFolderLikeAnyOther) {
    m_volume.file("Applications/Kit.framework/Resources/a.png");
    EXPECT_EQ(find("kMDItemContentType == 'public.png'"),
              Lines{"/Applications/Kit.framework/Resources/a.png"});
}

TEST_F(MetadataSearchTest, HiddenAndUnindexedThingsAreNotFound) {
    m_volume.file("Users/alex/.hidden/a.txt")
        .file("Users/alex/.b.txt")
        .file("Users/alex/Build.noindex/c.txt")
        .file("Users/alex/Build.NOINDEX/c.txt")
        .file("Users/alex/Library/Caches/d.txt")
        .file("Users/sam/Library/e.txt")
        .file(".f/g.txt")
        .file("private/h.txt")
        .file("usr/share/i.txt")
        .file("Users/alex/noindex/seen.txt");
    EXPECT_EQ(find("kMDItemContentType == 'public.plain-text'"), Lines{"/Users/alex/noindex/seen.txt"});
}

TEST_F(MetadataSearchTest, ALibraryFolderThatIsNoUsersIsSearched) {
    m_volume.file("Library/a.txt").file("Users/alex/Documents/Library/b.txt").file("Users/Library/c.txt");
    EXPECT_EQ(find("kMDItemContentType == 'public.plain-text'"),
              (Lines{"/Library/a.txt", "/Users/Library/c.txt", "/Users/alex/Documents/Library/b.txt"}));
}

TEST_F(MetadataSearchTest, TheHomesLibraryIsLeftOutWhereverTheHomeIs) {
    m_volume.file("home/me/Library/a.txt").file("home/me/b.txt");
    const PosixFileSystem files(m_volume.path(), FileURL("/home/me"));
    const MetadataSearch search(files, m_metadata, m_clock, {FileURL("/home/me")});
    EXPECT_EQ(search.answer({"kMDItemFSName == \"*.txt\""}), "/home/me/b.txt\n");
}

TEST_F(MetadataSearchTest, OnlyInGivesEverythingBelowAndNotTheFolderItself) {
    m_volume.file("Users/alex/Documents/a/b/c.txt").file("Users/alex/d.txt");
    EXPECT_EQ(
        findIn("/Users/alex/Documents", kEverything),
        (Lines{"/Users/alex/Documents/a", "/Users/alex/Documents/a/b", "/Users/alex/Documents/a/b/c.txt"}));
    EXPECT_EQ(findIn("/Users/alex/Documents/", "kMDItemFSName == 'a'"), Lines{"/Users/alex/Documents/a"});
}

TEST_F(MetadataSearchTest, OnlyInAMissingFolderAFileOrARelativePathGivesNothing) {
    m_volume.file("Users/alex/a.txt");
    EXPECT_EQ(findIn("/Users/alex/None", kEverything), Lines{});
    EXPECT_EQ(findIn("/Users/alex/a.txt", kEverything), Lines{});
    EXPECT_EQ(findIn("Users/alex", kEverything), Lines{});
    EXPECT_EQ(findIn("", kEverything), Lines{});
}

TEST_F(MetadataSearchTest, OnlyInWhatTheIndexDoesNotHoldGivesNothing) {
    application("Applications/Editor.app");
    m_volume.file("Users/alex/Library/Caches/a.txt")
        .file("Users/alex/.b/c.txt")
        .file("Users/alex/d.noindex/e/f.txt");
    for (const char* folder :
         {"/Applications/Editor.app", "/Applications/Editor.app/Contents", "/Users/alex/Library",
          "/Users/alex/Library/Caches", "/Users/alex/.b", "/Users/alex/d.noindex/e"}) {
        EXPECT_EQ(findIn(folder, kEverything), Lines{}) << folder;
    }
}

TEST_F(MetadataSearchTest, OnlyInAFolderOfTheSystemIsAnswered) {
    m_volume.file("private/tmp/a.txt");
    EXPECT_EQ(findIn("/private/tmp", kEverything), Lines{"/private/tmp/a.txt"});
}

TEST_F(MetadataSearchTest, OnlyInALinkAnswersByTheRealPlace) {
    m_volume.file("Volumes/Disk/Papers/a.txt").link("Users/alex/Documents", "/Volumes/Disk/Papers");
    EXPECT_EQ(findIn("/Users/alex/Documents", kEverything), Lines{"/Volumes/Disk/Papers/a.txt"});
}

TEST_F(MetadataSearchTest, SeveralFoldersAreOneSearchAndNothingIsToldTwice) {
    m_volume.file("a/b/1.txt").file("c/2.txt");
    EXPECT_EQ(
        m_search.answer({"-onlyin", "/a", "-onlyin", "/a/b", "-onlyin", "/c", "kMDItemFSName == '*.txt'"}),
        "/a/b/1.txt\n/c/2.txt\n");
}

TEST_F(MetadataSearchTest, LinksAreFoundAsLinksAndNeverFollowed) {
    m_volume.file("Users/alex/real/a.jpg")
        .link("Users/alex/b.jpg", "real/a.jpg")
        .link("Users/alex/loop", ".");
    EXPECT_EQ(find("kMDItemContentType == 'public.jpeg'"), Lines{"/Users/alex/real/a.jpg"});
    EXPECT_EQ(find("kMDItemContentType == 'public.symlink'"),
              (Lines{"/Users/alex/b.jpg", "/Users/alex/loop"}));
}

TEST_F(MetadataSearchTest, LargeFilesAreFoundByTheirLogicalSizeAndPlainFoldersHaveNone) {
    m_volume.sparse("Users/alex/Movies/big.mov", 100'000'000)
        .sparse("Users/alex/Movies/small.mov", 99'999'999)
        .folder("Users/alex/Movies/folder");
    EXPECT_EQ(
        findIn("/Users/alex/Movies", "kMDItemFSSize >= 100000000 && kMDItemContentType != 'public.folder'"),
        Lines{"/Users/alex/Movies/big.mov"});
    EXPECT_EQ(findIn("/Users/alex/Movies", "kMDItemFSSize >= 0"),
              (Lines{"/Users/alex/Movies/big.mov", "/Users/alex/Movies/small.mov"}));
}

TEST_F(MetadataSearchTest, APackagesSizeIsTheSumOfItsFiles) {
    m_volume.sparse("Users/alex/Notes.rtfd/TXT.rtf", 600).sparse("Users/alex/Notes.rtfd/deep/.hidden", 400);
    EXPECT_EQ(m_search.answer({"-attr", "kMDItemFSSize", "kMDItemFSSize == 1000"}),
              "/Users/alex/Notes.rtfd   kMDItemFSSize = 1000\n");
}

TEST_F(MetadataSearchTest, AttributesArePrintedBehindThePathUnquoted) {
    m_volume.file("Users/alex/a b.txt", "12345").modified("Users/alex/a b.txt", Date::fromUnix(1791586264));
    m_metadata.setLastUsed(FileURL("/Users/alex/a b.txt"), Date::fromUnix(-1));
    EXPECT_EQ(
        m_search.answer({"-onlyin", "/Users/alex", "-attr", "kMDItemFSSize", "-attr",
                         "kMDItemFSContentChangeDate", "-attr", "kMDItemLastUsedDate", "-attr",
                         "kMDItemContentType", kEverything}),
        "/Users/alex/a b.txt   kMDItemFSSize = 5   kMDItemFSContentChangeDate = 2026-10-09 22:51:04 +0000"
        "   kMDItemLastUsedDate = 1969-12-31 23:59:59 +0000   kMDItemContentType = public.plain-text\n");
}

TEST_F(MetadataSearchTest, AMissingAttributeIsPrintedAsNull) {
    m_volume.file("a/b.txt", "written").folder("a/c");
    EXPECT_EQ(m_search.answer({"-attr", "kMDItemFSSize", "-onlyin", "/a", kEverything}),
              "/a/b.txt   kMDItemFSSize = 7\n/a/c   kMDItemFSSize = (null)\n");
    for (const char* name : {"kMDItemLastUsedDate", "kMDItemIsScreenCapture", "kMDItemTextContent", "x"}) {
        EXPECT_EQ(m_search.answer({"-attr", name, "-onlyin", "/a", "kMDItemFSName == 'b.txt'"}),
                  "/a/b.txt   " + std::string(name) + " = (null)\n");
    }
}

TEST_F(MetadataSearchTest, AListIsPrintedAMemberALine) {
    m_volume.file("a/b.jpg");
    EXPECT_EQ(m_search.answer({"-attr", "kMDItemContentTypeTree", "-onlyin", "/a", kEverything}),
              "/a/b.jpg   kMDItemContentTypeTree = (\n    \"public.jpeg\",\n    \"public.image\",\n"
              "    \"public.data\",\n    \"public.content\",\n    \"public.item\"\n)\n");
}

TEST_F(MetadataSearchTest, NamesWithLineFeedsAreToldOnlyWhereNulsEndTheLines) {
    const auto odd = std::string("/a/") + OddNames::kOne + ".txt";
    m_volume.file("a/one\ntwo.txt").file(odd).file("a/x\n/etc/passwd.pdf");
    EXPECT_EQ(m_search.answer({"-onlyin", "/a", kEverything}), odd + "\n");
    EXPECT_EQ(m_search.answer({"-onlyin", "/a/x\n", kEverything}), "");
    EXPECT_EQ(m_search.answer({"-onlyin", "/a/x\n/etc", kEverything}), "");
    EXPECT_EQ(split(m_search.answer({"-0", "-onlyin", "/a", kEverything}), '\0'),
              (Lines{"/a/one\ntwo.txt", "/a/x\n", "/a/x\n/etc", "/a/x\n/etc/passwd.pdf", odd}));
}

TEST_F(MetadataSearchTest, NamesAreFoundWithoutRegardToCaseAndAccents) {
    m_volume.file("a/My R\u00C9SUM\u00C9.pdf").file("a/re\u0301sume\u0301.txt").file("a/sum.txt");
    EXPECT_EQ(findIn("/a", "kMDItemDisplayName == \"*resume*\"cd"),
              (Lines{"/a/My R\u00C9SUM\u00C9.pdf", "/a/re\u0301sume\u0301.txt"}));
}

TEST_F(MetadataSearchTest, AnApplicationIsShownWithoutItsExtension) {
    application("Applications/Editor.app");
    m_volume.file("Applications/notes.txt");
    EXPECT_EQ(m_search.answer({"-attr", "kMDItemDisplayName", "-attr", "kMDItemFSName", "-onlyin",
                               "/Applications", kEverything}),
              "/Applications/Editor.app   kMDItemDisplayName = Editor   kMDItemFSName = Editor.app\n"
              "/Applications/notes.txt   kMDItemDisplayName = notes.txt   kMDItemFSName = notes.txt\n");
}

TEST_F(MetadataSearchTest, ContentIsFoundInDocumentsWhereTheyCanBeRead) {
    m_volume.file("a/letter.docx", docxOf("Dear Ren\u00E9e, the Invoice"))
        .file("a/page.html", "<script>invoice</script>in<b>voice</b>")
        .file("a/script.html", "<script>invoice</script>")
        .file("a/notes.md", "# Invoice")
        .file("a/plain.txt", "invoice")
        .file("a/unknown.xyzzy", "invoice");
    ScriptedCommandRunner programs;
    const DocumentText documents(m_files, programs, m_clock);
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    EXPECT_EQ(split(search.answer({"kMDItemTextContent == \"*invoice*\"cd"}), '\n'),
              (Lines{"/a/letter.docx", "/a/notes.md", "/a/page.html", "/a/plain.txt", "/a/unknown.xyzzy"}));
    EXPECT_EQ(find("kMDItemTextContent == \"*invoice*\"cd"),
              (Lines{"/a/notes.md", "/a/page.html", "/a/plain.txt", "/a/script.html", "/a/unknown.xyzzy"}))
        << "as plain text";
}

TEST_F(MetadataSearchTest, ContentIsFoundInTextsAndNowhereElse) {
    m_volume.file("a/letter.txt", "Dear Ren\u00E9e, the Invoice of May")
        .file("a/page.html", "<p>invoice</p>")
        .file("a/picture.png", "invoice")
        .file("a/invoice.key", "nothing")
        .file("a/other.txt", "voice");
    EXPECT_EQ(
        findIn("/a", "(kMDItemDisplayName == \"*invoice*\"cd || kMDItemTextContent == \"*invoice*\"cd)"),
        (Lines{"/a/invoice.key", "/a/letter.txt", "/a/page.html"}));
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == \"renee\"cd"), Lines{"/a/letter.txt"});
}

TEST_F(MetadataSearchTest, ContentIsFoundInFilesThatNobodyKnowsWhereTheyLookLikeText) {
    m_volume.file("a/README", "a needle in the \x1B[1mhay\x1B[0m\n")
        .file("a/notes.2024", "Ne\u0301edle\r\n")
        .file("a/old", "na\xEFve needle")
        .file("a/data", std::string("needle\0\0\1", 9))
        .file("a/control", "needle \x01")
        .file("a/late", "a needle " + std::string(10'000, ' ') + "\x01")
        .file("a/picture.png", "needle");
    const Lines texts = {"/a/README", "/a/late", "/a/notes.2024", "/a/old"};
    EXPECT_EQ(find("kMDItemTextContent == \"*needle*\"cd"), texts);
    EXPECT_EQ(find("kMDItemTextContent == \"needle\"cd"), texts) << "a pattern of words";
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == *"), texts);
}

TEST_F(MetadataSearchTest, AFileThatNobodyKnowsIsReadToItsEndAndDataNoFurtherThanItsStart) {
    const std::string hay(TextFileSearch::kPortion * 5, 'x');
    m_volume.file("a/text", hay + "needle").file("a/data", std::string(1, '\0') + hay);
    RecordingFileSystem recorded(m_disk);
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
    EXPECT_EQ(search.answer({kNeedleInNameOrContent}), "/a/text\n");
    EXPECT_EQ(std::ranges::count(recorded.calls(FileCall::readAt), FileURL("/a/data")), 1);
}

TEST_F(MetadataSearchTest, APatternReadsDataNoFurtherThanItsStartEither) {
    m_volume.file("a/data", std::string(1, '\0') + std::string(TextFileSearch::kPortion * 5, 'x'))
        .file("a/text", "x and z");
    RecordingFileSystem recorded(m_disk);
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
    EXPECT_EQ(search.answer({"kMDItemTextContent == \"x*y\""}), "");
    EXPECT_EQ(std::ranges::count(recorded.calls(FileCall::read), FileURL("/a/data")), 1) << "its start";
    EXPECT_EQ(std::ranges::count(recorded.calls(FileCall::read), FileURL("/a/text")), 2) << "and all of it";
}

TEST_F(MetadataSearchTest, ContentIsReadToItsEndHoweverLongAFileIs) {
    m_volume.file("a/long.txt", std::string(std::size_t{5} << 20U, 'x') + "needle");
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == \"*needle*\"cd"), Lines{"/a/long.txt"});
}

TEST_F(MetadataSearchTest, APatternThatIsMoreThanATextReadsOnlyTheStartOfAFile) {
    std::string text(IndexedItem::kMostDecoded, 'x');
    text.back() = ' ';
    m_volume.file("a/within.txt", text.substr(7) + "needle");
    m_volume.file("a/beyond.txt", text + "needle");
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == \"needle\""), Lines{"/a/within.txt"});
}

TEST_F(MetadataSearchTest, AQueryMayDenyContent) {
    m_volume.file("a/with.txt", "a needle").file("a/without.txt", "hay").file("a/picture.png", "needle");
    EXPECT_EQ(findIn("/a", "kMDItemTextContent != \"*needle*\"cd"),
              (Lines{"/a/picture.png", "/a/without.txt"}));
    EXPECT_EQ(findIn("/a", "kMDItemFSName == \"*.txt\" && !(kMDItemTextContent == \"*needle*\"cd)"),
              Lines{"/a/without.txt"});
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == *"), (Lines{"/a/with.txt", "/a/without.txt"}));
}

TEST_F(MetadataSearchTest, WhatItsNameOrTypeDecidesIsNotRead) {
    m_volume.file("a/needle.txt", "needle").file("a/other.txt", "needle").file("a/page.html", "needle");
    RecordingFileSystem recorded(m_disk);
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
    EXPECT_EQ(search.answer({"-onlyin", "/a",
                             kNeedleInNameOrContent + " && kMDItemContentType == "
                                                      "'public.plain-text'"}),
              "/a/needle.txt\n/a/other.txt\n");
    EXPECT_EQ(recorded.calls(FileCall::open), std::vector{FileURL("/a/other.txt")});
    EXPECT_TRUE(recorded.calls(FileCall::read).empty());
}

TEST_F(MetadataSearchTest, ContentIsOpenedOnlyAfterTheLastEntryIsTold) {
    m_volume.file("a/b/1.txt", "needle").file("a/c/2.txt", "needle").file("a/d/e/3.txt", "needle");
    RecordingFileSystem recorded(m_disk);
    int opened = 0;
    int toldLater = 0;
    recorded.beforeEach([&](const auto& made) { opened += made.call == FileCall::open ? 1 : 0; });
    recorded.beforeEachEntry([&](const FileURL&) { toldLater += opened > 0 ? 1 : 0; });
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
    EXPECT_EQ(search.answer({kNeedleInNameOrContent}), "/a/b/1.txt\n/a/c/2.txt\n/a/d/e/3.txt\n");
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(toldLater, 0);
}

TEST_F(MetadataSearchTest, ASearchThatIsStoppedEntersNoFurtherFolder) {
    m_volume.file("a/b/1.txt").file("a/c/2.txt").file("a/d/3.txt");
    const StopSource source;
    RecordingFileSystem recorded(m_disk);
    recorded.beforeEachEntry([&](const FileURL& url) {
        if (url.lastPathComponent().ends_with(".txt")) {
            source.requestStop();
        }
    });
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/a"), FileURL("/a/b")});
    search.answer({kEverything}, source.token());
    EXPECT_EQ(recorded.entered().size(), 2U) << "the root and its first folder, and no second root";
}

TEST_F(MetadataSearchTest, ASearchThatIsStoppedOpensNoFurtherFile) {
    for (int i = 0; i < 50; ++i) {
        m_volume.file("a/" + std::to_string(i) + ".txt", "needle");
    }
    for (const auto* const query :
         {"kMDItemTextContent == \"*needle*\"cd", "kMDItemTextContent == \"needle\""}) {
        const StopSource source;
        RecordingFileSystem recorded(m_disk);
        recorded.beforeEach([&](const auto& made) {
            if (made.call == FileCall::open || made.call == FileCall::read) {
                source.requestStop();
            }
        });
        const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
        search.answer({query}, source.token());
        EXPECT_EQ(recorded.calls(FileCall::open).size() + recorded.calls(FileCall::read).size(), 1U);
    }
}

TEST_F(MetadataSearchTest, TheRunnerHandsItsTokenToTheSearch) {
    m_volume.file("a/b/1.txt").file("a/c/2.txt");
    const StopSource source;
    RecordingFileSystem recorded(m_disk);
    recorded.beforeEach([&](const auto& made) {
        if (made.call == FileCall::walk) {
            source.requestStop();
        }
    });
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/a")});
    ScriptedCommandRunner others;
    SearchingCommandRunner runner(recorded, search, others);
    const auto printed = runner.run("/usr/bin/mdfind", {kEverything}, source.token());
    EXPECT_FALSE(printed.ok());
    EXPECT_EQ(recorded.entered().size(), 1U);
}

// Documents whose text is a table. Keeps the order in which they are read and how many are at once.
class TableOfDocuments final : public DocumentReader {
  public:
    std::function<void()> whileReading = [] {};

    std::string text(const FileURL& file, DocumentKind /*kind*/, const StopToken& /*stop*/) const override {
        {
            const std::lock_guard lock(m_mutex);
            m_read.push_back(file.path());
            m_most = std::max(m_most, ++m_reading);
        }
        whileReading();
        const std::lock_guard lock(m_mutex);
        --m_reading;
        return "The Ne\u0301edle";
    }

    std::vector<std::string> read() const {
        const std::lock_guard lock(m_mutex);
        return m_read;
    }
    int mostAtOnce() const {
        const std::lock_guard lock(m_mutex);
        return m_most;
    }

  private:
    mutable std::mutex m_mutex; // guards the rest
    mutable std::vector<std::string> m_read;
    mutable int m_reading = 0;
    mutable int m_most = 0;
};

TEST_F(MetadataSearchTest, DocumentsHaveTheTextThatTheirReaderTells) {
    m_volume.file("a/page.html", "<p>other</p>").file("a/paper.pdf").file("a/picture.png", "needle");
    const TableOfDocuments documents;
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    for (const auto* const query :
         {"kMDItemTextContent == \"*needle*\"cd", "kMDItemTextContent == \"needle\"cd"}) {
        EXPECT_EQ(search.answer({query}), "/a/page.html\n/a/paper.pdf\n") << query;
    }
}

TEST_F(MetadataSearchTest, CostlyDocumentsAreReadAfterAllOthers) {
    m_volume.file("a/1.pdf").file("a/2.html").file("b/3.pdf").file("b/4.html");
    const TableOfDocuments documents;
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    EXPECT_EQ(search.answer({kNeedleInNameOrContent}), "/a/1.pdf\n/a/2.html\n/b/3.pdf\n/b/4.html\n");
    const auto read = documents.read();
    ASSERT_EQ(read.size(), 4U);
    EXPECT_THAT(std::vector(read.begin(), read.begin() + 2),
                testing::UnorderedElementsAre("/a/2.html", "/b/4.html"));
}

TEST_F(MetadataSearchTest, NoCostlyDocumentIsBegunWhenTheTimeForThemIsUp) {
    m_volume.file("a/1.pdf").file("a/2.pdf").file("a/3.pdf").file("a/4.html");
    TableOfDocuments documents;
    documents.whileReading = [&] { m_clock.advanceWithoutRunning(MetadataSearch::kTimeForCostly / 2); };
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    EXPECT_EQ(split(search.answer({kNeedleInNameOrContent}), '\n').size(),
              3U); // the time begins after the others
    EXPECT_EQ(documents.read().size(), 3U);
}

TEST_F(MetadataSearchTest, TheTimeForCostlyDocumentsIsOneForAllRunsOfASearch) {
    m_volume.file("a/1.pdf").file("a/2.pdf").file("b/3.pdf").file("b/4.pdf").file("c/5.pdf");
    TableOfDocuments documents;
    documents.whileReading = [&] { m_clock.advanceWithoutRunning(MetadataSearch::kTimeForCostly / 3); };
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    const auto searchAll = [&] {
        const StopSource source; // of this search
        for (const char* folder : {"/a", "/b", "/c"}) {
            search.answer({"-onlyin", folder, kNeedleInNameOrContent}, source.token());
            m_clock.advanceWithoutRunning(MetadataSearch::kTimeForCostly); // is not spent on documents
        }
        return documents.read().size();
    };
    EXPECT_EQ(searchAll(), 4U) << "the last one is begun a nanosecond before the end";
    EXPECT_EQ(searchAll(), 8U) << "another search has a time of its own";
}

TEST_F(MetadataSearchTest, RunsThatNobodyCanStopHaveTimesOfTheirOwn) {
    m_volume.file("a/1.pdf").file("a/2.pdf");
    TableOfDocuments documents;
    documents.whileReading = [&] { m_clock.advanceWithoutRunning(MetadataSearch::kTimeForCostly); };
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    search.answer({kNeedleInNameOrContent});
    search.answer({kNeedleInNameOrContent});
    EXPECT_EQ(documents.read().size(), 2U);
}

TEST_F(MetadataSearchTest, NoDocumentIsReadAfterAStop) {
    m_volume.file("a/1.pdf").file("a/2.pdf").file("a/3.html").file("a/4.html");
    const StopSource source;
    TableOfDocuments documents;
    documents.whileReading = [&] { source.requestStop(); };
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")}, {.documents = &documents});
    search.answer({kNeedleInNameOrContent}, source.token());
    EXPECT_EQ(documents.read().size(), 1U);
}

// Real threads beside the search's own.
class SharedSearchTest : public MetadataSearchTest {
  protected:
    MainQueue m_queue;
    TableOfDocuments m_documents;
    ThreadTaskRunner m_threads{m_queue};
    MetadataSearch m_shared{
        m_disk, m_metadata, m_clock, {FileURL("/")}, {.threads = &m_threads, .documents = &m_documents}};
};

TEST_F(SharedSearchTest, TheAnswerIsThatOfOneThread) {
    for (int i = 0; i < 300; ++i) {
        m_volume.file("a/" + std::to_string(i) + ".txt", i % 3 == 0 ? "a n\u00E9edle" : "hay");
    }
    const auto alone = m_search.answer({kNeedleInNameOrContent});
    EXPECT_EQ(split(alone, '\n').size(), 100U);
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(m_shared.answer({kNeedleInNameOrContent}), alone);
    }
}

TEST_F(SharedSearchTest, TwoCostlyDocumentsAreReadAtOnceAndNeverMore) {
    for (int i = 0; i < 12; ++i) {
        m_volume.file("a/" + std::to_string(i) + ".pdf");
    }
    std::atomic<int> begun = 0;
    m_documents.whileReading = [&] {
        ++begun;
        while (begun < 2) { // the second one comes, or this test never ends
            std::this_thread::yield();
        }
    };
    EXPECT_EQ(split(m_shared.answer({kNeedleInNameOrContent}), '\n').size(), 12U);
    EXPECT_EQ(m_documents.mostAtOnce(), MetadataSearch::kCostlyAtOnce);
}

TEST_F(MetadataSearchTest, OneThreadMoreIsAskedToReadCostlyDocuments) {
    for (int i = 0; i < 12; ++i) {
        m_volume.file("a/" + std::to_string(i) + ".pdf");
    }
    const TableOfDocuments documents;
    const MetadataSearch search(m_files, m_metadata, m_clock, {FileURL("/")},
                                {.threads = &m_tasks, .documents = &documents});
    EXPECT_EQ(split(search.answer({kNeedleInNameOrContent}), '\n').size(), 12U);
    EXPECT_EQ(m_tasks.waitingJobs(), 1U);
}

TEST_F(MetadataSearchTest, TextIsFoundInEveryUsualEncoding) {
    m_volume
        .file("a/latin1.txt", "Stra\xDF"
                              "e and Caf\xE9")
        .file("a/little.txt", std::string("\xFF\xFE"
                                          "C\0a\0f\0\xE9\0",
                                          10))
        .file("a/big.txt", std::string("\0C\0a\0f\0\xE9", 8))
        .file("a/mark.txt", "\xEF\xBB\xBF"
                            "Caf\u00E9")
        .file("a/bytes.txt", std::string("cafe\0\0\1", 7));
    EXPECT_EQ(findIn("/a", "kMDItemTextContent == \"*cafe*\"cd"),
              (Lines{"/a/big.txt", "/a/latin1.txt", "/a/little.txt", "/a/mark.txt"}));
}

TEST_F(MetadataSearchTest, AScreenCaptureIsKnownByTheAttributeOfItsFile) {
    const auto isTrue = binaryPropertyList(Plist(true));
    const auto attribute = [&](const char* path, std::string_view value) {
        m_volume.file(path, "x").attribute(path, "com.apple.metadata:kMDItemIsScreenCapture", value);
    };
    attribute("a/renamed.jpg", isTrue);
    attribute("a/capture.png", isTrue);
    attribute("a/not.png", binaryPropertyList(Plist(false)));
    attribute("a/broken.png", "bplist00 and nothing else");
    attribute("a/text.txt", isTrue);
    m_volume.file("a/Screenshot 2026-01-02 at 10.20.30.png");
    EXPECT_EQ(findIn("/a", "kMDItemIsScreenCapture == 1"), (Lines{"/a/capture.png", "/a/renamed.jpg"}));
    EXPECT_EQ(m_search.answer({"-onlyin", "/a", "-attr", "kMDItemIsScreenCapture", "kMDItemFSName == 'c*'"}),
              "/a/capture.png   kMDItemIsScreenCapture = 1\n");
}

TEST_F(MetadataSearchTest, AScreenCaptureIsKnownByTheToolThatAPngNames) {
    m_volume.file("a/gnome.png", PngText::png("Software", "gnome-screenshot"))
        .file("a/mate.png", PngText::png("Software", "mate-screenshot"))
        .file("a/edited.png", PngText::png("Software", "GIMP"))
        .file("a/titled.png", PngText::png("Title", "gnome-screenshot"))
        .file("a/false.jpg", PngText::png("Software", "gnome-screenshot"))
        .file("a/Screenshot from 2026-01-02 10-20-30.png", "no picture");
    EXPECT_EQ(findIn("/a", "kMDItemIsScreenCapture == 1"), (Lines{"/a/gnome.png", "/a/mate.png"}));
}

TEST_F(MetadataSearchTest, OnlyPicturesAreAskedForTheirMark) {
    m_volume.file("a/text.txt").file("a/film.mov").folder("a/folder.png").fifo("a/pipe.png");
    RecordingFileSystem recorded(m_disk);
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/")});
    EXPECT_EQ(search.answer({"-onlyin", "/a", "kMDItemIsScreenCapture == 1"}), "");
    EXPECT_TRUE(recorded.calls(FileCall::extendedAttribute).empty());
    EXPECT_TRUE(recorded.calls(FileCall::read).empty());
}

TEST_F(MetadataSearchTest, RecentlyUsedThingsAreFoundByTheMetadata) {
    m_volume.file("a/new.txt").file("a/old.txt").file("a/never.txt");
    m_metadata.setLastUsed(FileURL("/a/new.txt"), m_clock.now().addingSeconds(-50));
    m_metadata.setLastUsed(FileURL("/a/old.txt"), m_clock.now().addingSeconds(-500));
    EXPECT_EQ(findIn("/a", "kMDItemLastUsedDate >= $time.now(-100)"), Lines{"/a/new.txt"});
}

TEST_F(MetadataSearchTest, ASearchByTypeAsksTheDiskForNamesAlone) {
    application("Applications/Editor.app");
    for (int i = 0; i < 50; ++i) {
        m_volume.file("Users/alex/file " + std::to_string(i) + ".txt");
    }
    EXPECT_EQ(find(kApplications).size(), 1U);
    EXPECT_LE(m_files.resourcesAsked, 1); // the root
    EXPECT_EQ(m_files.existenceAsked, 1); // the property list
}

TEST_F(MetadataSearchTest, OnlyWhatNameAndTypeLeaveOpenIsAskedForItsSize) {
    m_volume.file("a/long.txt", "12345")
        .file("a/short.txt", "1")
        .file("a/long.png", "12345")
        .folder("a/b.txt");
    RecordingFileSystem recorded(m_disk);
    const MetadataSearch search(recorded, m_metadata, m_clock, {FileURL("/a")});
    EXPECT_EQ(search.answer({"kMDItemFSSize >= 5 && kMDItemContentType == 'public.plain-text'"}),
              "/a/long.txt\n");
    EXPECT_THAT(
        recorded.calls(FileCall::resourceValues),
        testing::UnorderedElementsAre(FileURL("/a"), FileURL("/a/long.txt"), FileURL("/a/short.txt")));
}

TEST_F(MetadataSearchTest, ASizeIsAskedOfTheWalkAndOfNoPath) {
    m_volume.file("a/b/long.txt", "12345").file("a/b/Pack.pages/Data/part", "1234567");
    EXPECT_EQ(findIn("/a", "kMDItemFSSize >= 5"), (Lines{"/a/b/Pack.pages", "/a/b/long.txt"}));
    EXPECT_EQ(m_files.resourcesAsked, 1); // the root
}

TEST_F(MetadataSearchTest, NoMatchIsTheEmptyText) {
    EXPECT_EQ(m_search.answer({kApplications}), "");
}

TEST_F(MetadataSearchTest, WhatCantBeReadIsToldOnTheOutput) {
    EXPECT_EQ(m_search.answer({"kMDItemFSSize >>> 1"}),
              "Failed to create query for 'kMDItemFSSize >>> 1'.\n");
    EXPECT_EQ(m_search.answer({"-onlyin", "/", "x\ny"}), "Failed to create query for 'x\ny'.\n");
}

TEST_F(MetadataSearchTest, TheQueryMayComeInParts) {
    m_volume.file("a/b.txt");
    EXPECT_EQ(m_search.answer({"kMDItemFSName", "==", "'b.txt'"}), "/a/b.txt\n");
}

TEST_F(MetadataSearchTest, WithoutAQueryOrWithAnUnknownOptionThereIsNoAnswer) {
    m_volume.file("a/b.txt");
    for (const auto& arguments : std::vector<Lines>{{},
                                                    {""},
                                                    {"-0"},
                                                    {"-onlyin"},
                                                    {"-onlyin", "/a"},
                                                    {"-attr"},
                                                    {"-live", kEverything},
                                                    {"-", kEverything}}) {
        EXPECT_EQ(m_search.answer(arguments), "");
    }
}

TEST_F(MetadataSearchTest, SeveralThreadsSearchAtOnce) {
    m_volume.file("a/b.txt", "words");
    std::vector<std::string> answers(4);
    const MetadataSearch search(m_disk, m_metadata, m_clock, {FileURL("/")});
    std::vector<std::thread> threads;
    for (auto& answer : answers) {
        threads.emplace_back([&] { answer = search.answer({"kMDItemTextContent == 'words'"}); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(answers, testing::Each("/a/b.txt\n"));
}

} // namespace
} // namespace quillane
