// The documents of the sample Mac must be what they claim to be.
#include "JpegFile.h"
#include "SampleArchives.h"
#include "SampleDocuments.h"
#include "SampleMedia.h"
#include "SamplePlatform.h"
#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace quillane {
namespace {

using SampleDocuments::Page;
using testing::HasSubstr;

std::uint64_t littleEndian(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = width; i > 0; --i) {
        value = (value << 8U) | static_cast<unsigned char>(bytes.at(at + i - 1));
    }
    return value;
}

// A file of the person's own

TEST(SampleFile, ContentIsFollowedByWhatIsAllocatedAndThenByAHole) {
    SampleMac mac;
    mac.ownFile("Documents/a.bin", UserFile::Kind::other).content("abc").allocated(40'960).length(5'000'000);
    const SamplePlatform sample(mac);
    const std::string path = "/Users/alex/Documents/a.bin";

    EXPECT_EQ(sample.disk.allocationOf(path), 40'960);
    const auto values = sample.volume.resourceValues(FileURL(path));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->fileSize, 5'000'000);
    EXPECT_EQ(sample.volume.read(FileURL(path), 5).valueOr(""), std::string("abc\0\0", 5));
}

TEST(SampleFile, ALengthCutsNothing) {
    SampleMac mac;
    mac.ownFile("Documents/a.txt", UserFile::Kind::document).content("abcdef").length(2);
    const SamplePlatform sample(mac);
    EXPECT_EQ(sample.volume.read(FileURL("/Users/alex/Documents/a.txt"), 9).valueOr(""), "abcdef");
}

TEST(SampleFile, ItsDatesAreThoseOfTheDiskAndOfTheIndex) {
    SampleMac mac;
    mac.ownFile("Documents/a.txt", UserFile::Kind::document).modified(daysAgo(9)).lastUsed(daysAgo(2));
    mac.ownFile("Documents/b.txt", UserFile::Kind::document).modified(daysAgo(8));
    const SamplePlatform sample(mac);
    const FileURL a("/Users/alex/Documents/a.txt");
    EXPECT_EQ(sample.volume.resourceValues(a)->contentModified, mac.date(daysAgo(9)));
    EXPECT_EQ(sample.metadata.lastUsed(a), mac.date(daysAgo(2)));
    EXPECT_EQ(sample.metadata.lastUsed(FileURL("/Users/alex/Documents/b.txt")), std::nullopt);
}

TEST(SampleFile, OfCopiesTheOneThatWasUsedLastShouldStayAndOfEqualOnesTheShortestPath) {
    SampleMac mac;
    const auto add = [&](const char* path, const char* word, int days) {
        mac.ownFile(path, UserFile::Kind::other).modified(daysAgo(days)).copyOf(word);
    };
    add("Documents/long name", "a", 3);
    add("Documents/short", "a", 3);
    add("Documents/x", "a", 4);
    add("Documents/older", "b", 9);
    add("Documents/the newer one", "b", 8);
    const SamplePlatform sample(mac);
    const auto groups = mac.expectedFiles(sample.disk.path()).duplicates;
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].keeper, "/Users/alex/Documents/short");
    EXPECT_EQ(groups[0].paths.size(), 3U);
    EXPECT_EQ(groups[1].keeper, "/Users/alex/Documents/the newer one");
}

TEST(SampleFile, TheSmallMacHasCopiesOfTwoThreeAndFive) {
    std::vector<std::size_t> counts;
    const SamplePlatform sample(SampleMac::small());
    for (const auto& group : sample.mac.expectedFiles(sample.disk.path()).duplicates) {
        EXPECT_GE(group.bytesEach, 1'000'000);
        counts.push_back(group.paths.size());
    }
    for (const auto count : {2U, 3U, 5U}) {
        EXPECT_THAT(counts, testing::Contains(count));
    }
}

// PDF

TEST(SampleDocuments, EachObjectOfAPdfLiesWhereItsTableSays) {
    const auto pdf = SampleDocuments::pdf({Page::text({"one"}),
                                           Page::picture(jpegFile(8, 8, std::string(192, 'g'), 9), 8, 8),
                                           Page::text({"a (b) \\ c"})});
    ASSERT_TRUE(pdf.starts_with("%PDF-1."));
    const auto table = std::stoul(pdf.substr(pdf.rfind("startxref\n") + 10));
    std::istringstream rows(pdf.substr(table));
    std::string word;
    std::size_t first = 0;
    std::size_t count = 0;
    rows >> word >> first >> count;
    ASSERT_EQ(word, "xref");
    ASSERT_EQ(count, 1 + 3 + 3 * 3U);
    rows >> word >> word >> word; // the free one
    for (std::size_t number = 1; number < count; ++number) {
        std::string offset;
        rows >> offset >> word >> word;
        EXPECT_EQ(offset.size(), 10U);
        EXPECT_TRUE(pdf.substr(std::stoul(offset)).starts_with(std::to_string(number) + " 0 obj\n"))
            << number;
    }
    EXPECT_THAT(pdf, HasSubstr("(a \\(b\\) \\\\ c) Tj"));
    EXPECT_THAT(pdf, HasSubstr("/Count 3"));
}

// Archives

TEST(SampleArchives, TheDirectoryOfAZipFindsEachMember) {
    const auto zip = SampleArchives::zip({{"a.txt", "first"}, {"folder/b.txt", "the second one"}});
    const auto end = zip.size() - 22;
    ASSERT_EQ(zip.substr(end, 4), "PK\5\6");
    ASSERT_EQ(littleEndian(zip, end + 10, 2), 2U);
    auto row = littleEndian(zip, end + 16, 4);
    for (const auto& [name, content] :
         {std::pair("a.txt", "first"), std::pair("folder/b.txt", "the second one")}) {
        ASSERT_EQ(zip.substr(row, 4), "PK\1\2");
        const std::string nameThere = zip.substr(row + 46, littleEndian(zip, row + 28, 2));
        EXPECT_EQ(nameThere, name);
        const auto entry = littleEndian(zip, row + 42, 4);
        EXPECT_EQ(zip.substr(entry, 4), "PK\3\4");
        EXPECT_EQ(zip.substr(entry + 30 + nameThere.size(), littleEndian(zip, entry + 18, 4)), content);
        row += 46 + nameThere.size();
    }
    EXPECT_EQ(row, end);
}

TEST(SampleArchives, ATarIsWholeBlocksWithASumThatHolds) {
    const auto tar = SampleArchives::tar({{"a.txt", "content"}});
    ASSERT_EQ(tar.size(), 4 * 512U);
    auto header = tar.substr(0, 512);
    const auto told = std::stoul(header.substr(148, 6), nullptr, 8);
    header.replace(148, 8, 8, ' ');
    unsigned long sum = 0;
    for (const char c : header) {
        sum += static_cast<unsigned char>(c);
    }
    EXPECT_EQ(told, sum);
    EXPECT_EQ(header.substr(257, 5), "ustar");
    EXPECT_EQ(std::stoul(header.substr(124, 11), nullptr, 8), 7U);
    EXPECT_EQ(tar.substr(512, 7), "content");
}

// Office, text and mail

TEST(SampleDocuments, AParagraphOfAnOfficeDocumentPartsInTheMiddleOfAWord) {
    const auto document = SampleDocuments::docx({"na\u00EFve & co"});
    EXPECT_THAT(document, HasSubstr(">na\u00EFv<"));
    EXPECT_THAT(document, HasSubstr(">e &amp; co<"));
}

TEST(SampleDocuments, AnOpenDocumentTellsItsKindByItsBeginning) {
    const auto document = SampleDocuments::odt({"a < b"});
    EXPECT_EQ(document.substr(30, 47), "mimetypeapplication/vnd.oasis.opendocument.text");
    EXPECT_THAT(document, HasSubstr("<text:p>a &lt; b</text:p>"));
}

TEST(SampleDocuments, LettersBeyondAsciiAreToldInEachFormsOwnWay) {
    const std::string text = "\u00EF{\u2013";
    EXPECT_THAT(SampleDocuments::rtf({text}), HasSubstr("\\'ef\\{\\u8211?\\par"));
    EXPECT_THAT(SampleDocuments::html("t", {text}, ""), HasSubstr("<p>&#239;{&#8211;</p>"));
    EXPECT_THAT(SampleDocuments::mail("a", "b", {text}), HasSubstr("\r\n\r\n=C3=AF{=E2=80=93\r\n"));
    EXPECT_EQ(SampleDocuments::utf16(text + "\U0001F426"),
              std::string("\xFF\xFE\xEF\0{\0\x13\x20\x3D\xD8\x26\xDC", 12));
    EXPECT_EQ(SampleDocuments::latin1(text), "\xEF{?");
}

TEST(SampleDocuments, ALongLineOfAMailIsBrokenSoftly) {
    const auto mail = SampleDocuments::mail("a", "b", {std::string(100, 'x')});
    EXPECT_THAT(mail, HasSubstr("\r\n\r\n" + std::string(60, 'x') + "=\r\n" + std::string(40, 'x') + "\r\n"));
}

// Sound and movies

TEST(SampleMedia, ASoundHasAsManySamplesAsItSays) {
    const auto wave = SampleMedia::wave(0.5);
    EXPECT_EQ(wave.size(), 44 + 22'050U);
    EXPECT_EQ(littleEndian(wave, 4, 4), wave.size() - 8);
    EXPECT_EQ(littleEndian(wave, 40, 4), wave.size() - 44);
}

TEST(SampleMedia, TheBoxesOfAMovieFillItsLength) {
    const auto head = SampleMedia::movieHead(5'000'000'000);
    ASSERT_EQ(head.size(), 40U);
    EXPECT_EQ(head.substr(4, 8), "ftypisom");
    EXPECT_EQ(head.substr(28, 4), "mdat");
    EXPECT_EQ(head.substr(32), std::string("\0\0\0\1\x2A\x05\xF1\xE8", 8)); // all but the first box
}

} // namespace
} // namespace quillane
