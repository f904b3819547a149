#include "DocumentFiles.h"
#include "FileSystem.h"
#include "OfficeArchive.h"
#include "TextSink.h"
#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace quillane {
namespace {

// A file whose bytes are in memory.
class BytesFile final : public OpenFile {
  public:
    explicit BytesFile(std::string bytes)
        : m_bytes(std::move(bytes)) {}

    Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
        if (whenRead) {
            whenRead();
        }
        if (read >= failsBehind) {
            return PlatformError{ErrorCode::kReadUnknown, std::nullopt};
        }
        const auto begin = std::min(static_cast<std::size_t>(offset), m_bytes.size());
        const auto count = std::min(buffer.size(), m_bytes.size() - begin);
        std::memcpy(buffer.data(), m_bytes.data() + begin, count);
        read += count;
        return count;
    }
    Result<Bytes> length() override { return static_cast<Bytes>(m_bytes.size()); }
    Result<> close() override { return success(); }

    std::size_t read = 0;
    std::size_t failsBehind = std::string::npos; // bytes
    std::function<void()> whenRead = {};

  private:
    std::string m_bytes;
};

std::string textOf(const std::string& zip, const OfficeArchive::Limits& limits = {}) {
    BytesFile file(zip);
    TextSink sink(std::size_t{4} << 20U);
    EXPECT_TRUE(OfficeArchive::add(file, limits, {}, sink));
    return sink.take();
}

// A text with the word "other", whole and by the rules, as some program for archives packs it.
constexpr std::string_view kPackedByLzma(
    "\x50\x4B\x03\x04\x3F\x00\x02\x00\x0E\x00\x00\x00\x21\x00\x56\x37\x5B\x99\x20\x00\x00\x00\x0C\x00"
    "\x00\x00\x11\x00\x00\x00\x77\x6F\x72\x64\x2F\x64\x6F\x63\x75\x6D\x65\x6E\x74\x2E\x78\x6D\x6C\x09"
    "\x04\x05\x00\x5D\x00\x00\x80\x00\x00\x1E\x1D\x03\xC7\x11\x94\x12\x5A\x10\x83\x4B\x73\x1D\x58\xCC"
    "\x1C\xDC\xFF\xED\x11\x00\x00\x50\x4B\x01\x02\x3F\x03\x3F\x00\x02\x00\x0E\x00\x00\x00\x21\x00\x56"
    "\x37\x5B\x99\x20\x00\x00\x00\x0C\x00\x00\x00\x11\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x80"
    "\x01\x00\x00\x00\x00\x77\x6F\x72\x64\x2F\x64\x6F\x63\x75\x6D\x65\x6E\x74\x2E\x78\x6D\x6C\x50\x4B"
    "\x05\x06\x00\x00\x00\x00\x01\x00\x01\x00\x3F\x00\x00\x00\x4F\x00\x00\x00\x00\x00",
    164);

std::string run(std::string_view words) {
    return "<t>" + std::string(words) + "</t>";
}

TEST(OfficeArchive, HoldsTheTextOfAllPartsWithWords) {
    const std::vector<ZipMember> members = {{"word/styles.xml", run("style")},
                                            {"word/document.xml", run("body")},
                                            {"word/footnotes.xml", run("foot")},
                                            {"docProps/app.xml", run("app")}};
    EXPECT_EQ(textOf(zipOf(members)), "body foot");
    EXPECT_EQ(textOf(zipOf(members, ZipPacking::stored)), "body foot");
    EXPECT_EQ(textOf(zipOf({{"mimetype", "x"}, {"content.xml", "<text:p>open</text:p>"}})), "open");
    EXPECT_EQ(textOf(zipOf({{"ppt/slides/slide1.xml", run("one")}, {"ppt/slides/slide2.xml", run("two")}})),
              "one two");
}

TEST(OfficeArchive, OfWhatIsEncryptedOrPackedOtherwiseIsNothing) {
    EXPECT_EQ(textOf(zipOf({{"word/document.xml", run("secret")}}, ZipPacking::encrypted)), "");
    EXPECT_EQ(textOf(std::string(kPackedByLzma)), "");
}

TEST(OfficeArchive, OfWhatIsNoArchiveIsNothing) {
    EXPECT_EQ(textOf(""), "");
    EXPECT_EQ(textOf("PK"), "");
    EXPECT_EQ(textOf(std::string(100'000, 'x')), "");
    EXPECT_EQ(textOf("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(5000, '\0')), "")
        << "what a password is kept in";
}

TEST(OfficeArchive, UnpacksOfABombNoMoreThanItsLimits) {
    const std::string mebibyte(std::size_t{1} << 20U, ' ');
    std::string spaces;
    for (int i = 0; i < 64; ++i) {
        spaces += mebibyte;
    }
    const auto bomb = zipOf({{"word/document.xml", run("early") + spaces + run("late")},
                             {"word/footnotes.xml", run("note")},
                             {"xl/worksheets/sheet1.xml", spaces + run("sheet")},
                             {"xl/sharedStrings.xml", run("shared")}});
    ASSERT_LT(bomb.size(), std::size_t{1} << 20U);
    EXPECT_EQ(textOf(bomb), "early note shared");
    OfficeArchive::Limits small;
    small.words = std::size_t{2} << 20U;
    EXPECT_EQ(textOf(bomb, small), "early") << "all parts together";
    small.sheets = 0;
    small.words = small.member * 2;
    EXPECT_EQ(textOf(bomb, small), "early note shared") << "sheets count for themselves";
}

TEST(OfficeArchive, AStopEndsItWithinAMember) {
    std::string words;
    std::mt19937 random(5); // NOLINT: the same each time
    for (int i = 0; i < 1'000'000; ++i) {
        words += static_cast<char>('a' + random() % 26);
    }
    const auto zip = zipOf({{"word/document.xml", run(words)}});
    const StopSource source;
    int readings = 0;
    BytesFile file(zip);
    file.whenRead = [&] {
        if (++readings == 3) {
            source.requestStop();
        }
    };
    TextSink sink(std::size_t{4} << 20U);
    EXPECT_FALSE(OfficeArchive::add(file, {}, source.token(), sink));
    EXPECT_EQ(readings, 3);
}

TEST(OfficeArchive, StopsWhereTheTextIsFull) {
    BytesFile file(
        zipOf({{"word/document.xml", run(std::string(1000, 'a'))}, {"word/footnotes.xml", run("note")}}));
    TextSink sink(100);
    EXPECT_TRUE(OfficeArchive::add(file, {}, {}, sink));
    EXPECT_EQ(sink.text(), std::string(100, 'a'));
}

TEST(OfficeArchive, LooksAtNoMoreMembersThanItsLimit) {
    std::vector<ZipMember> members;
    for (int i = 0; i < 20; ++i) {
        members.push_back({"other/" + std::to_string(i), ""});
    }
    members.push_back({"word/document.xml", run("far")});
    OfficeArchive::Limits limits;
    limits.members = 21;
    EXPECT_EQ(textOf(zipOf(members), limits), "far");
    limits.members = 20;
    EXPECT_EQ(textOf(zipOf(members), limits), "");
}

TEST(OfficeArchive, ReadsNoDirectoryWithoutEnd) {
    const std::string longName(1000, 'n');
    std::vector<ZipMember> members = {{"word/document.xml", run("words")}};
    for (int i = 0; i < 400; ++i) {
        members.push_back({longName + std::to_string(i), ""});
    }
    const auto zip = zipOf(members);
    EXPECT_EQ(textOf(zip), "words");
    OfficeArchive::Limits limits;
    limits.directory = std::size_t{200} << 10U;
    BytesFile file(zip);
    TextSink sink(1000);
    EXPECT_TRUE(OfficeArchive::add(file, limits, {}, sink));
    EXPECT_EQ(sink.text(), "");
    EXPECT_LE(file.read, limits.directory + (std::size_t{64} << 10U));
}

void appendNumber(std::string& bytes, std::size_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
    }
}

// What the header of a member and its entry in the directory share: stored, of so many bytes.
void appendMember(std::string& bytes, const std::string& name, std::size_t size) {
    appendNumber(bytes, 20, 2);        // the version that unpacks it
    bytes.append(2 + 2 + 4 + 4, '\0'); // nothing special, stored, no date, no checksum
    appendNumber(bytes, size, 4);
    appendNumber(bytes, size, 4);
    appendNumber(bytes, name.size(), 2);
    bytes.append(2, '\0');
}

// An archive in which the bytes of each member are all that follows up to the directory: the headers of the others, and
// at last these words.
std::string zipOfQuotes(int count, const std::string& words) {
    const auto nameOf = [](int i) { return "ppt/slides/slide" + std::to_string(1000 + i) + ".xml"; };
    const auto header = 30 + nameOf(0).size();
    const auto end = static_cast<std::size_t>(count) * header + words.size();
    std::string zip;
    std::string directory;
    for (int i = 0; i < count; ++i) {
        const auto begin = zip.size();
        const auto size = end - begin - header;
        zip += "PK\x03\x04";
        appendMember(zip, nameOf(i), size);
        zip += nameOf(i);
        directory += "PK\x01\x02";
        appendNumber(directory, 20, 2);
        appendMember(directory, nameOf(i), size);
        directory.append(2 + 2 + 2 + 4, '\0');
        appendNumber(directory, begin, 4);
        directory += nameOf(i);
    }
    zip += words + directory + "PK\x05\x06";
    zip.append(2 + 2, '\0');
    appendNumber(zip, static_cast<std::size_t>(count), 2);
    appendNumber(zip, static_cast<std::size_t>(count), 2);
    appendNumber(zip, directory.size(), 4);
    appendNumber(zip, end, 4);
    zip.append(2, '\0'); // no comment
    return zip;
}

TEST(OfficeArchive, MembersThatQuoteEachOtherAreReadOnceInAll) {
    constexpr int kMembers = 60;
    constexpr std::size_t kStep = std::size_t{64} << 10U;
    static_assert(kMembers * 8 > 4 + 9 + kMembers + 2, "read for each member it would be more");
    const auto zip = zipOfQuotes(kMembers, run("quoted") + std::string(8 * kStep, ' '));
    OfficeArchive::Limits limits;
    limits.file = zip.size();
    limits.directory = 4 * kStep;
    limits.members = kMembers;
    BytesFile file(zip);
    TextSink sink(std::size_t{1} << 20U);
    OfficeArchive::add(file, limits, {}, sink);
    EXPECT_TRUE(sink.text().starts_with("quoted")) << "the first of them are read";
    EXPECT_GT(file.read, zip.size());
    EXPECT_LE(file.read, limits.directory + limits.file + (kMembers + 2) * kStep);
}

TEST(OfficeArchive, OfAFileBeyondTheLimitIsNotReadAtAll) {
    BytesFile file(docxOf("words"));
    OfficeArchive::Limits limits;
    limits.file = 100;
    TextSink sink(1000);
    EXPECT_TRUE(OfficeArchive::add(file, limits, {}, sink));
    EXPECT_EQ(file.read, 0U);
}

TEST(OfficeArchive, IsNotReadOnAfterAStop) {
    const StopSource stop;
    stop.requestStop();
    BytesFile file(docxOf("words"));
    TextSink sink(1000);
    OfficeArchive::add(file, {}, stop.token(), sink);
    EXPECT_EQ(sink.text(), "");
}

TEST(OfficeArchive, TellsThatTheFileCouldNotBeRead) {
    const auto zip = docxOf("words");
    for (const std::size_t bytes : {std::size_t{0}, zip.size() / 2, zip.size()}) {
        BytesFile file(zip);
        file.failsBehind = bytes;
        TextSink sink(1000);
        const bool isRead = OfficeArchive::add(file, {}, {}, sink);
        EXPECT_EQ(isRead, sink.text() == "words") << bytes;
        EXPECT_TRUE(isRead || file.read >= bytes);
    }
}

TEST(OfficeArchive, GivesOfDamagedFilesWhatIsLeftAndNeverMore) {
    std::string words;
    for (int i = 0; i < 2000; ++i) {
        words += std::to_string(i * 7919 % 10'007) + " ";
    }
    const auto zip = docxOf(words);
    std::size_t whole = 0;
    for (const auto& file : damaged(zip, 150)) {
        const auto text = textOf(file);
        EXPECT_LE(text.size(), std::size_t{64} << 10U);
        whole += text == words.substr(0, words.size() - 1) ? 1 : 0;
        EXPECT_TRUE(file.size() == zip.size() || text.empty()) << "the end tells where all begins";
    }
    EXPECT_GT(whole, 0U) << "a bit of what is not looked at";
    EXPECT_LT(whole, 150U);
}

} // namespace
} // namespace quillane
