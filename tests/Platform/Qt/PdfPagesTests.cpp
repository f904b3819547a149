#include "PdfPages.h"
#include "PictureFiles.h"
#include "PosixCommandRunner.h"
#include "ScriptedCommandRunner.h"
#include "TemporaryFolder.h"
#include <QtEndian>
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(PdfPages, TheNumberOfPagesIsTheLastThatIsPrinted) {
    EXPECT_EQ(PdfPages::countIn("Title:          x\nPages:          12\nEncrypted:      no\n"), 12);
    EXPECT_EQ(PdfPages::countIn("Pages: 3"), 3);
    EXPECT_EQ(PdfPages::countIn("Title: x\nPages:          999\nPages:          4\n"), 4);
}

TEST(PdfPages, WhatTellsNoNumberHasNoPages) {
    for (const char* printed :
         {"", "Title: Pages: 4\n", "Pages:", "Pages: \n", "Pages: many\n", "Pages: -4\n"}) {
        EXPECT_EQ(PdfPages::countIn(printed), 0) << printed;
    }
}

TEST(PdfPages, ANumberThatNoDocumentHasIsTheLargest) {
    EXPECT_EQ(PdfPages::countIn("Pages: 2000000000\n"), PdfPages::kMostPages);
    EXPECT_EQ(PdfPages::countIn("Pages: 99999999999999999999\n"), PdfPages::kMostPages);
}

TEST(PdfPages, EachRunHasItsLimitsOfTimeAndMemoryAndWritesNothing) {
    ScriptedCommandRunner programs;
    EXPECT_FALSE(PdfPages::picture(programs, "/a b.pdf", 1, {300, 200}, Fit::within, {}));
    EXPECT_EQ(PdfPages::count(programs, "/a b.pdf", {}), 0);
    const auto calls = programs.calls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].path, "/usr/bin/timeout");
    EXPECT_EQ(calls[0].arguments,
              (std::vector<std::string>{"-k", "1", "5", "/usr/bin/prlimit", "--as=536870912", "--cpu=5",
                                        "--core=0", "--fsize=0", "/usr/bin/pdftoppm", "-f", "2", "-l", "2",
                                        "-singlefile", "-scale-to", "300", "-q", "/a b.pdf"}));
    EXPECT_EQ(calls[1].path, "/usr/bin/timeout");
    EXPECT_EQ(calls[1].arguments,
              (std::vector<std::string>{"-k", "1", "5", "/usr/bin/prlimit", "--as=536870912", "--cpu=5",
                                        "--core=0", "--fsize=0", "/usr/bin/pdfinfo", "/a b.pdf"}));
}

class RealPages : public testing::Test {
  protected:
    std::optional<IconImage> picture(int number, PixelSize size = {100, 100}) {
        return PdfPages::picture(m_programs, m_folder.at("a.pdf"), number, size, Fit::within, {});
    }
    TemporaryFolder m_folder;
    PosixCommandRunner m_programs;
};

TEST_F(RealPages, AreCountedAndDrawnOneByOne) {
    m_folder.file("a.pdf", PictureFiles::pdf(3));
    EXPECT_EQ(PdfPages::count(m_programs, m_folder.at("a.pdf"), {}), 3);
    const auto first = picture(0);
    const auto third = picture(2);
    ASSERT_TRUE(first && third);
    EXPECT_EQ(first->width, 50);
    EXPECT_EQ(first->height, 100);
    EXPECT_NE(*first, *third);
    EXPECT_FALSE(picture(3));
}

TEST_F(RealPages, APageLiesWithinWhatIsAskedForOnBothSides) {
    m_folder.file("a.pdf", PictureFiles::pdf(1));
    const auto page = picture(0, {400, 60});
    ASSERT_TRUE(page);
    EXPECT_EQ(page->width, 30);
    EXPECT_EQ(page->height, 60);
}

TEST_F(RealPages, AStopLeavesNoPage) {
    m_folder.file("a.pdf", PictureFiles::pdf(1));
    const StopSource stop;
    stop.requestStop();
    EXPECT_EQ(PdfPages::count(m_programs, m_folder.at("a.pdf"), stop.token()), 0);
    EXPECT_FALSE(PdfPages::picture(m_programs, m_folder.at("a.pdf"), 0, {9, 9}, Fit::within, stop.token()));
}

TEST_F(RealPages, OfADamagedDocumentAreNone) {
    const auto whole = PictureFiles::pdf(2);
    for (const std::size_t length : {std::size_t{0}, std::size_t{9}, whole.size() / 3}) {
        m_folder.file("a.pdf", std::string_view(whole).substr(0, length));
        EXPECT_EQ(PdfPages::count(m_programs, m_folder.at("a.pdf"), {}), 0) << length;
        EXPECT_FALSE(picture(0)) << length;
    }
}

TEST_F(RealPages, OfAnEncryptedDocumentAreNoneAndNobodyIsAskedForAPassword) {
    auto locked = PictureFiles::pdf(2);
    const auto trailer = locked.rfind("trailer");
    ASSERT_NE(trailer, std::string::npos);
    const auto entries = locked.find("<<", trailer) + 2;
    const std::string key(32, 'k');
    locked.insert(entries, " /ID [<01><02>] /Encrypt << /Filter /Standard /V 1 /R 2 /P -44 /O (" + key +
                               ") /U (" + key + ") >> ");
    m_folder.file("a.pdf", locked);
    EXPECT_EQ(PdfPages::count(m_programs, m_folder.at("a.pdf"), {}), 0);
    EXPECT_FALSE(picture(0));
}

} // namespace
} // namespace quillane
