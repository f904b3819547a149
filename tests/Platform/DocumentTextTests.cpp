#include "DocumentFiles.h"
#include "DocumentText.h"
#include "ManualClock.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "RecordingFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include "Utf8.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace quillane {
namespace {

using testing::HasSubstr;

// A volume in a folder of the machine, and the documents on it.
class DocumentTextTest : public testing::Test {
  protected:
    std::string text(const std::string& path, const StopToken& stop = {}) {
        return textBy(m_documents, path, stop);
    }
    static std::string textBy(const DocumentText& documents, const std::string& path,
                              const StopToken& stop = {}) {
        const FileURL url(path);
        return documents.text(
            url, documentKind(ContentTypes::ofFile(url.pathExtension()), url.pathExtension()), stop);
    }
    std::string hostPath(const FileURL& url) const { return m_disk.hostPath(url); }
    // The arguments by which the program for PDF files is run.
    std::vector<std::string> argumentsFor(const std::string& path) const {
        return {"-k",
                "1",
                "5",
                "prlimit",
                "--as=536870912",
                "--cpu=5",
                "--core=0",
                "pdftotext",
                "-q",
                "-enc",
                "UTF-8",
                "-l",
                "50",
                m_volume.path() + path,
                "-"};
    }

    TemporaryFolder m_volume;
    PosixFileSystem m_disk{m_volume.path(), FileURL("/Users/alex")};
    RecordingFileSystem m_files{m_disk};
    PosixCommandRunner m_programs;
    ScriptedCommandRunner m_noPrograms;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    DocumentText m_documents{m_files, m_programs, m_clock,
                             [this](const FileURL& url) { return hostPath(url); }};
    DocumentText m_scripted{m_files, m_noPrograms, m_clock,
                            [this](const FileURL& url) { return hostPath(url); }};
};

TEST_F(DocumentTextTest, IsReadFromEveryKindOfDocument) {
    m_volume.file("a.docx", docxOf("words of a text"))
        .file("a.odt", zipOf({{"content.xml", "<text:p>words of another</text:p>"}}))
        .file("a.html", "<p>words of a <b>p</b>age")
        .file("a.rtf", "{\\rtf1 words in {\\i rich} text}")
        .file("a.eml", "Subject: words\n\nof a mail")
        .file("a.pdf", pdfOf({"words on", "paper"}));
    EXPECT_EQ(text("/a.docx"), "words of a text");
    EXPECT_EQ(text("/a.odt"), "words of another");
    EXPECT_EQ(text("/a.html"), "words of a page");
    EXPECT_EQ(text("/a.rtf"), "words in rich text");
    EXPECT_EQ(text("/a.eml"), "words of a mail");
    EXPECT_EQ(text("/a.pdf"), "words on paper");
}

TEST_F(DocumentTextTest, OfAPdfJoinsWordsThatTheEndOfALineParts) {
    m_volume.file("a.pdf", pdfOf({"the in-", "voice of May,", "a well-known one"}));
    EXPECT_EQ(text("/a.pdf"), "the invoice of May, a well-known one");
}

TEST_F(DocumentTextTest, OfAPdfIsReadByALimitedProgramAtThePathOfTheMachine) {
    m_volume.file("folder/a b.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/folder/a b.pdf"), "one\n\ntwo\f");
    EXPECT_EQ(textBy(m_scripted, "/folder/a b.pdf"), "one two");
    EXPECT_EQ(m_noPrograms.calls().size(), 1U);
}

TEST_F(DocumentTextTest, OfAPdfIsNoneWithoutTheProgramAndComesWithIt) {
    m_volume.file("a.pdf", pdfOf({"words"}));
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "words");
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "words");
}

TEST_F(DocumentTextTest, OfAPdfThatWasCutShortIsReadAgainAfterARest) {
    m_volume.file("a.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "one\ftw");
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "one tw");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "one\ftwo\f");
    m_clock.advanceWithoutRunning(DocumentText::kRetry - std::chrono::nanoseconds(1));
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "one tw") << "it costs its time once in a while only";
    m_clock.advanceWithoutRunning(std::chrono::nanoseconds(1));
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "one two");
    m_clock.advanceWithoutRunning(DocumentText::kRetry * 100);
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "one two");
    EXPECT_EQ(m_noPrograms.calls().size(), 2U);
}

TEST_F(DocumentTextTest, OfAPdfThatTookTooLongIsReadAgainToo) {
    m_volume.file("a.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "");
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "words\f");
    m_clock.advanceWithoutRunning(DocumentText::kRetry);
    EXPECT_EQ(textBy(m_scripted, "/a.pdf"), "words");
}

TEST_F(DocumentTextTest, OfAWholePdfIsKept) {
    const auto pdf = pdfOf({"words"});
    m_volume.file("a.pdf", pdf).modified("a.pdf", Date{1000});
    EXPECT_EQ(text("/a.pdf"), "words");
    m_volume.file("a.pdf", std::string(pdf.size(), 'x')).modified("a.pdf", Date{1000});
    m_clock.advanceWithoutRunning(DocumentText::kRetry);
    EXPECT_EQ(text("/a.pdf"), "words") << "by its size and date it is the same";
}

TEST_F(DocumentTextTest, OfAFileOfAnotherNameIsReadAsThatOne) {
    m_volume.file("a.html", "Subject: <b>bold</b>");
    EXPECT_EQ(text("/a.html"), "Subject: bold");
    m_volume.rename("a.html", "a.eml");
    EXPECT_EQ(text("/a.eml"), "<b>bold</b>");
}

TEST_F(DocumentTextTest, OfDocumentsThatNeedAProgramIsNotDisplacedByOthers) {
    DocumentLimits limits;
    limits.kept = 2000;
    limits.keptOfCostly = 2000;
    const DocumentText documents(
        m_files, m_noPrograms, m_clock, [this](const FileURL& url) { return hostPath(url); }, limits);
    for (int i = 0; i < 20; ++i) {
        m_volume.file(std::to_string(i) + ".html", std::string(700, 'x'));
        textBy(documents, "/" + std::to_string(i) + ".html");
    }
    m_volume.file("a.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), "words\f");
    textBy(documents, "/a.pdf");
    EXPECT_EQ(textBy(documents, "/a.pdf"), "words");
    EXPECT_EQ(m_noPrograms.calls().size(), 1U);
}

TEST_F(DocumentTextTest, OfAPdfThatPrintsWithoutEndIsNone) {
    DocumentLimits limits;
    limits.text = 100;
    const DocumentText documents(
        m_files, m_noPrograms, m_clock, [this](const FileURL& url) { return hostPath(url); }, limits);
    m_volume.file("a.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/a.pdf"), std::string(101, 'x'));
    EXPECT_EQ(textBy(documents, "/a.pdf"), "");
    EXPECT_EQ(textBy(documents, "/a.pdf"), "");
    EXPECT_EQ(m_noPrograms.calls().size(), 1U) << "it would print as much again";
}

TEST_F(DocumentTextTest, OfWhatIsNoRegularFileIsNoneAndNothingWaits) {
    m_volume.fifo("a.pdf")
        .fifo("a.docx")
        .fifo("a.html")
        .folder("b.docx")
        .file("real.html", "words")
        .link("c.html", "real.html");
    for (const char* path :
         {"/a.pdf", "/a.docx", "/a.html", "/b.docx", "/c.html", "/none.pdf", "/none.docx"}) {
        EXPECT_EQ(textBy(m_scripted, path), "") << path;
    }
    EXPECT_TRUE(m_noPrograms.calls().empty());
    EXPECT_TRUE(m_files.calls(FileCall::open).empty());
}

TEST_F(DocumentTextTest, OfAFileThatVanishesIsNone) {
    for (const char* path : {"/a.pdf", "/a.docx", "/a.html"}) {
        m_volume.file(path, "words");
        m_files.beforeEach([&](const RecordingFileSystem::Call& call) {
            if (call.call == FileCall::open) {
                m_volume.remove(path);
            }
        });
        EXPECT_EQ(text(path), "") << path;
    }
}

TEST_F(DocumentTextTest, OfAnEncryptedOrABrokenFileIsNone) {
    const std::string key(32, 'k');
    m_volume
        .file("a.pdf",
              pdfOf({"secret"}, "/ID [<01><02>] /Encrypt << /Filter /Standard /V 1 /R 2 /P -44 /O (" + key +
                                    ") /U (" + key + ") >>"))
        .file("b.pdf", "%PDF-1.4 and nothing else")
        .file("c.docx", zipOf({{"word/document.xml", "<t>secret</t>"}}, ZipPacking::encrypted))
        .file("d.rtf", "no rich text");
    for (const char* path : {"/a.pdf", "/b.pdf", "/c.docx", "/d.rtf"}) {
        EXPECT_EQ(text(path), "") << path;
    }
}

TEST_F(DocumentTextTest, OfDamagedPdfsIsWhatIsLeft) {
    const auto whole = pdfOf({"first words", "last words"});
    std::size_t withWords = 0;
    int number = 0;
    for (const auto& file : damaged(whole, 50)) {
        const auto path = "/" + std::to_string(number++) + ".pdf";
        m_volume.file(path, file);
        const auto words = text(path);
        EXPECT_TRUE(Utf8::isValid(words)) << path;
        EXPECT_LT(words.size(), 1000U) << path;
        withWords += words.find("words") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(withWords, 10U);
    EXPECT_LT(withWords, 100U);
}

TEST_F(DocumentTextTest, IsReadOnceAndAgainWhenTheFileHasChanged) {
    m_volume.file("a.html", "one").file("b.docx", docxOf("two")).file("c.pdf", "%PDF");
    m_noPrograms.answer("/usr/bin/timeout", argumentsFor("/c.pdf"), "three\f");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(textBy(m_scripted, "/a.html"), "one");
        EXPECT_EQ(textBy(m_scripted, "/b.docx"), "two");
        EXPECT_EQ(textBy(m_scripted, "/c.pdf"), "three");
    }
    EXPECT_EQ(m_files.calls(FileCall::open).size(), 2U);
    EXPECT_EQ(m_noPrograms.calls().size(), 1U);
    m_volume.file("a.html", "six").modified("a.html", Date{1000});
    EXPECT_EQ(textBy(m_scripted, "/a.html"), "six");
}

TEST_F(DocumentTextTest, OfASearchThatWasStoppedIsNoneAndIsNotKept) {
    const StopSource stop;
    m_volume.file("a.html", "words").file("b.docx", docxOf("words"));
    m_files.beforeEach([&](const RecordingFileSystem::Call& call) {
        if (call.call == FileCall::open) {
            stop.requestStop();
        }
    });
    EXPECT_EQ(text("/b.docx", stop.token()), "");
    EXPECT_EQ(text("/a.html", stop.token()), "");
    EXPECT_EQ(m_files.calls(FileCall::open).size(), 1U);
    m_files.beforeEach({});
    EXPECT_EQ(text("/b.docx"), "words");
}

TEST_F(DocumentTextTest, IsThatOfTheStartOfALargeFile) {
    DocumentLimits limits;
    limits.file = 20;
    limits.text = 10;
    const DocumentText documents(m_files, m_noPrograms, m_clock, {}, limits);
    m_volume.file("a.html", "<p>early</p>        late").file("b.html", "0123456789abcdef");
    EXPECT_EQ(textBy(documents, "/a.html"), "early");
    EXPECT_EQ(textBy(documents, "/b.html"), "0123456789");
}

TEST_F(DocumentTextTest, OfAFileWithoutATypeIsReadByItsExtension) {
    m_volume.file("a.ots", zipOf({{"content.xml", "<text:p>sheet</text:p>"}}));
    EXPECT_EQ(text("/a.ots"), "sheet");
}

TEST_F(DocumentTextTest, OfABookIsThatOfItsPages) {
    m_volume.file("a.epub", zipOf({{"mimetype", "application/epub+zip"},
                                   {"OEBPS/content.opf", "<dc:title>The Marsh</dc:title><meta>no</meta>"},
                                   {"OEBPS/one.xhtml", "<p>in<i>voice</i> of May</p>"},
                                   {"OEBPS/style.css", "p { margin: 0 }"}}));
    EXPECT_EQ(text("/a.epub"), "The Marsh invoice of May");
}

TEST_F(DocumentTextTest, OfWhatIsNoDocumentIsNoneAndTheDiskIsNotAsked) {
    m_volume.file("a.unknown", "words").file("a.jpg", "words").file("a", "words").file("a.txt", "words");
    m_files.clear();
    for (const char* path : {"/a.unknown", "/a.jpg", "/a", "/a.txt"}) {
        EXPECT_EQ(text(path), "") << path;
    }
    EXPECT_TRUE(m_files.calls().empty());
}

TEST_F(DocumentTextTest, IsReadBySeveralThreadsAtOnce) {
    constexpr int kDocuments = 20;
    for (int i = 0; i < kDocuments; ++i) {
        const auto number = std::to_string(i);
        m_volume.file("d" + number + ".docx", docxOf("text " + number))
            .file("e" + number + ".rtf", "{\\rtf1\\ansicpg1251 text \\'ef" + number + "}");
    }
    m_volume.file("f.pdf", pdfOf({"paper"}));
    const auto readAll = [&] {
        EXPECT_EQ(text("/f.pdf"), "paper");
        for (int i = 0; i < kDocuments; ++i) {
            const auto number = std::to_string(i);
            EXPECT_EQ(text("/d" + number + ".docx"), "text " + number);
            EXPECT_EQ(text("/e" + number + ".rtf"), "text \u043F" + number);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(readAll);
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace quillane
