#include "FaultFileSystem.h"
#include "OrdinaryUser.h"
#include "PosixFileSystem.h"
#include "RecordingFileSystem.h"
#include "TemporaryFolder.h"
#include "TextFileSearch.h"
#include "TextFolding.h"
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class TextFileSearchTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    PosixFileSystem m_files{m_folder.path(), FileURL("/")};

    bool occurs(std::string_view needle, const std::string& content, const StopToken& stop = {}) {
        m_folder.file("a.txt", content);
        return occursInFile(needle, "/a.txt", stop);
    }
    bool occursInFile(std::string_view needle, const std::string& path, const StopToken& stop = {}) {
        const FoldedNeedle folded(
            Text::folded(needle, {.caseInsensitive = true, .diacriticInsensitive = true}));
        return TextFileSearch::occurs(folded, m_files, FileURL(path), stop);
    }
};

// UTF-16 of Latin letters.
std::string utf16(std::string_view latin1, bool isBig) {
    std::string bytes;
    for (const char c : latin1) {
        bytes += isBig ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return bytes;
}

TEST_F(TextFileSearchTest, ANeedleIsFoundAtEveryPlaceAroundTheBorderOfTwoPortions) {
    for (std::size_t at = TextFileSearch::kPortion - 20; at <= TextFileSearch::kPortion + 4; ++at) {
        EXPECT_TRUE(
            occurs("needle found", std::string(at, 'x') + "Ne\u0301edle found" + std::string(500, 'y')))
            << at;
        EXPECT_FALSE(occurs("needle found", std::string(at, 'x') + "needle lost" + std::string(500, 'y')))
            << at;
    }
}

TEST_F(TextFileSearchTest, ANeedleAtTheEndIsFoundWhereverTheFileEnds) {
    const std::string needle = "needle";
    for (const std::size_t length :
         {TextFileSearch::kPortion - 1, TextFileSearch::kPortion, TextFileSearch::kPortion + 1,
          2 * TextFileSearch::kPortion, 2 * TextFileSearch::kPortion + 3}) {
        EXPECT_TRUE(occurs(needle, std::string(length - needle.size(), 'x') + needle)) << length;
        EXPECT_TRUE(occurs("\u043F\u0440", std::string(length - 4, 'x') + "\u041F\u0440")) << length;
    }
}

TEST_F(TextFileSearchTest, TheFirstPortionDecidesTheEncodingOfAll) {
    const std::string rest(TextFileSearch::kPortion, 'x');
    EXPECT_TRUE(occurs("cafe au lait", "Caf\xE9 " + rest + "caf\xE9 au lait"));
    EXPECT_TRUE(occurs("\u00C3\u00A9tude", "\xE9 " + rest + "\u00E9tude")); // two letters in Latin-1
    EXPECT_TRUE(occurs("etude needle", "\u00E9 " + rest + "\xFF \u00E9tude needle"));
    EXPECT_FALSE(occurs("etude", "\u00E9 " + rest + "\xE9tude"));
}

TEST_F(TextFileSearchTest, Utf16IsReadAcrossTheBorderOfPortions) {
    for (const bool isBig : {true, false}) {
        const std::string mark = isBig ? "\xFE\xFF" : "\xFF\xFE";
        for (std::size_t at = TextFileSearch::kPortion / 2 - 12; at < TextFileSearch::kPortion / 2 + 3;
             ++at) {
            const auto text = utf16(std::string(at, 'x') + "Caf\xE9 needle" + std::string(300, 'y'), isBig);
            EXPECT_TRUE(occurs("cafe needle", mark + text)) << at;
            EXPECT_TRUE(occurs("cafe needle", text)) << at;
        }
    }
}

TEST_F(TextFileSearchTest, APairOfUnitsThatABorderDividesIsOneCharacter) {
    for (std::size_t at = TextFileSearch::kPortion / 2 - 3; at < TextFileSearch::kPortion / 2 + 2; ++at) {
        const auto text =
            utf16(std::string(at, 'x'), false) + std::string("\x3D\xD8\x00\xDE", 4) + utf16("yy", false);
        EXPECT_TRUE(occurs("x\U0001F600y", text)) << at;
    }
}

TEST_F(TextFileSearchTest, AMarkIsNoPartOfTheText) {
    EXPECT_TRUE(occurs("needle", "\xEF\xBB\xBFneedle"));
    EXPECT_FALSE(occurs("\uFEFFneedle", "\xEF\xBB\xBFneedle"));
}

TEST_F(TextFileSearchTest, WhatIsNoTextIsNotRead) {
    EXPECT_FALSE(occurs("needle", std::string("\0\0\1", 3) + "needle"));
    EXPECT_FALSE(occurs("needle", ""));
}

TEST_F(TextFileSearchTest, WhatIsNoRegularFileIsNeitherFollowedNorWaitedFor) {
    m_folder.file("real.txt", "needle").link("link.txt", "real.txt").fifo("pipe.txt").folder("folder.txt");
    EXPECT_TRUE(occursInFile("needle", "/real.txt"));
    for (const auto* const path : {"/link.txt", "/pipe.txt", "/folder.txt", "/none.txt"}) {
        EXPECT_FALSE(occursInFile("needle", path)) << path;
    }
}

TEST_F(TextFileSearchTest, AStoppedSearchReadsNoFurtherPortion) {
    const StopSource source;
    m_folder.file("a.txt", std::string(3 * TextFileSearch::kPortion, 'x') + "needle");
    RecordingFileSystem recorded(m_files);
    int read = 0;
    recorded.beforeEach([&](const auto& made) {
        read += made.call == FileCall::readAt ? 1 : 0;
        if (made.call == FileCall::readAt) {
            source.requestStop();
        }
    });
    EXPECT_FALSE(
        TextFileSearch::occurs(FoldedNeedle(U"needle"), recorded, FileURL("/a.txt"), source.token()));
    EXPECT_EQ(read, 1);
}

TEST_F(TextFileSearchTest, ALetterOfLatin1IsOneAlsoAtTheVeryEnd) {
    EXPECT_TRUE(occurs("cafe", "caf\xE9"));
    EXPECT_TRUE(occurs("cafe", "a caf\xE9"));
}

// What another program does to a file while it is read

class ChangingTextTest : public TextFileSearchTest {
  protected:
    static constexpr std::size_t kPortion = TextFileSearch::kPortion;

    // Whether the needle is found in three portions and a bit, in the first, the third or the last of them, when this
    // happens right before the second reading. No file is read without end.
    bool isFoundIn(std::size_t portion, const std::function<void()>& change) {
        const std::string needle = "needle";
        std::string content(3 * kPortion + 100, 'x');
        content.replace(portion * kPortion + 10, needle.size(), needle);
        m_folder.file("a.txt", content);
        int readings = 0;
        RecordingFileSystem recorded(m_files);
        recorded.beforeEach([&](const auto& made) {
            if (made.call == FileCall::readAt && ++readings == 2) {
                change();
            }
        });
        const bool isFound = TextFileSearch::occurs(FoldedNeedle(U"needle"), recorded, FileURL("/a.txt"), {});
        EXPECT_LE(readings, 10) << "where the needle may stand a file is read again, once";
        return isFound;
    }
};

TEST_F(ChangingTextTest, AFileThatShrinksIsReadToItsNewEnd) {
    const auto shrink = [this] { std::filesystem::resize_file(m_folder.at("a.txt"), kPortion + 50); };
    EXPECT_TRUE(isFoundIn(0, shrink));
    EXPECT_TRUE(isFoundIn(1, shrink));
    EXPECT_FALSE(isFoundIn(2, shrink));
    EXPECT_FALSE(isFoundIn(3, shrink));
}

TEST_F(ChangingTextTest, AFileThatIsEmptiedEndsThere) {
    const auto empty = [this] { std::filesystem::resize_file(m_folder.at("a.txt"), 0); };
    EXPECT_TRUE(isFoundIn(0, empty));
    EXPECT_FALSE(isFoundIn(1, empty));
}

TEST_F(ChangingTextTest, AFileThatGrowsIsReadToItsNewEnd) {
    const auto grow = [this] {
        std::ofstream(m_folder.at("a.txt"), std::ios::app) << std::string(kPortion, 'y') << "thimble";
    };
    EXPECT_TRUE(isFoundIn(3, grow));
    m_folder.file("a.txt", std::string(kPortion, 'x'));
    RecordingFileSystem recorded(m_files);
    int readings = 0;
    recorded.beforeEach([&](const auto& made) {
        if (made.call == FileCall::readAt && ++readings == 2) {
            grow();
        }
    });
    EXPECT_TRUE(TextFileSearch::occurs(FoldedNeedle(U"thimble"), recorded, FileURL("/a.txt"), {}));
}

TEST_F(ChangingTextTest, AFileThatIsOpenIsReadOnWhoeverTakesItAwayOrLocksIt) {
    EXPECT_TRUE(isFoundIn(3, [this] { m_folder.remove("a.txt"); }));
    EXPECT_TRUE(isFoundIn(3, [this] { m_folder.permissions("a.txt", 0); }));
    m_folder.permissions("a.txt", 0600);
    EXPECT_TRUE(isFoundIn(3, [this] { m_folder.remove("a.txt").fifo("a.txt"); }));
    m_folder.remove("a.txt");
}

TEST_F(ChangingTextTest, AnErrorOfTheDiskEndsTheReadingAndWhatLiesBeforeItCounts) {
    FaultFileSystem faults(m_files);
    faults.failReadingAt(FileURL("/a.txt"), static_cast<Bytes>(kPortion) + 5,
                         {ErrorCode::kReadUnknown, std::nullopt});
    const auto isFound = [&](std::size_t at) {
        std::string content(3 * kPortion, 'x');
        m_folder.file("a.txt", content.replace(at, 6, "needle"));
        return TextFileSearch::occurs(FoldedNeedle(U"needle"), faults, FileURL("/a.txt"), {});
    };
    EXPECT_TRUE(isFound(kPortion - 6));
    EXPECT_FALSE(isFound(kPortion + 50));
    EXPECT_FALSE(isFound(2 * kPortion + 50));
}

TEST_F(TextFileSearchTest, OfTenGigabytesOfNothingOnePortionIsRead) {
    m_folder.sparse("a.txt", Bytes{10} << 30U);
    RecordingFileSystem recorded(m_files);
    EXPECT_FALSE(TextFileSearch::occurs(FoldedNeedle(U"needle"), recorded, FileURL("/a.txt"), {}));
    EXPECT_EQ(recorded.calls(FileCall::readAt).size(), 1U);
}

TEST_F(TextFileSearchTest, NeitherADeviceNorASocketIsWaitedFor) {
    m_folder.zeroDevice("device.txt").socket("socket.txt").link("zero.txt", "/dev/zero");
    for (const auto* const path : {"/device.txt", "/socket.txt", "/zero.txt"}) {
        EXPECT_FALSE(occursInFile("needle", path)) << path;
    }
}

TEST_F(TextFileSearchTest, WhatIsLockedIsNotRead) {
    m_folder.file("open.txt", "needle").file("locked.txt", "needle").file("folder/inside.txt", "needle");
    m_folder.permissions("locked.txt", 0).permissions("folder", 0);
    const OrdinaryUser ordinary;
    EXPECT_TRUE(occursInFile("needle", "/open.txt"));
    EXPECT_FALSE(occursInFile("needle", "/locked.txt"));
    EXPECT_FALSE(occursInFile("needle", "/folder/inside.txt"));
}

} // namespace
} // namespace quillane
