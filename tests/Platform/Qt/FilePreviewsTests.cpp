#include "FaultFileSystem.h"
#include "FilePreviews.h"
#include "ManualClock.h"
#include "PictureFiles.h"
#include "PictureHead.h"
#include "Pictures.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace quillane {
namespace {

using namespace std::string_literals;
using PictureFiles::colourful;
using PictureFiles::encoded;

// Tells each reading of a file's content, and may end the file early: it has shrunk since it was opened.
class WatchedFileSystem final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    std::function<void()> whenRead = [] {};
    Bytes end = std::numeric_limits<Bytes>::max();

    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const override {
        auto file = ForwardingFileSystem::openForReading(url);
        if (!file) {
            return file.error();
        }
        return std::unique_ptr<OpenFile>(std::make_unique<File>(*this, std::move(file).value()));
    }

  private:
    class File final : public OpenFile {
      public:
        File(const WatchedFileSystem& files, std::unique_ptr<OpenFile> file)
            : m_files(files)
            , m_file(std::move(file)) {}
        Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
            m_files.whenRead();
            const auto left = std::max<Bytes>(m_files.end - offset, 0);
            return m_file->readAt(buffer.first(std::min(buffer.size(), static_cast<std::size_t>(left))),
                                  offset);
        }
        Result<Bytes> length() override { return m_file->length(); }
        Result<> close() override { return m_file->close(); }

      private:
        const WatchedFileSystem& m_files;
        std::unique_ptr<OpenFile> m_file;
    };
};

// Draws, as its main() says.
std::string thisProgram() {
    return QFile::encodeName(QCoreApplication::applicationFilePath()).toStdString();
}

class FilePreviewsTest : public testing::Test {
  protected:
    QSize pageSize(const char* name, PixelSize size) {
        return sizeOf(m_previews.page(m_folder.url(name), 0, size, m_stop.token()));
    }
    static QSize sizeOf(const std::optional<PreviewPage>& page) {
        return page && page->picture ? QSize(page->picture->width, page->picture->height) : QSize();
    }
    QSize thumbnailSize(const char* name, PixelSize size) {
        const auto picture = m_previews.thumbnail(m_folder.url(name), size, m_stop.token());
        return picture ? QSize(picture->width, picture->height) : QSize();
    }
    std::string text(const char* name) {
        const auto page = m_previews.page(m_folder.url(name), 0, {99, 99}, {});
        return page ? page->text : "";
    }
    bool hasNoLook(const char* name) {
        return thumbnailSize(name, {200, 200}).isEmpty() &&
               !m_previews.page(m_folder.url(name), 0, {200, 200}, {});
    }

    TemporaryFolder m_folder;
    PosixFileSystem m_realFiles;
    FaultFileSystem m_faults{m_realFiles};
    WatchedFileSystem m_files{m_faults};
    PosixCommandRunner m_programs;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    StopSource m_stop;
    FilePreviews m_previews{m_files, m_programs, m_clock, [](const FileURL& url) { return url.path(); },
                            thisProgram()};
};

TEST_F(FilePreviewsTest, APageLiesWithinWhatIsAskedForAndKeepsItsProportions) {
    for (const char* form : {"png", "jpeg", "bmp", "ppm"}) {
        m_folder.file("a", encoded(colourful(400, 200), form));
        EXPECT_EQ(pageSize("a", {100, 100}), QSize(100, 50)) << form;
        EXPECT_EQ(pageSize("a", {1000, 20}), QSize(40, 20)) << form;
    }
}

TEST_F(FilePreviewsTest, EveryPixelIsThere) {
    const auto image = colourful(300, 250);
    for (const char* form : {"png", "bmp", "ppm"}) {
        m_folder.file("a", encoded(image, form));
        const auto page = m_previews.page(m_folder.url("a"), 0, {300, 250}, {});
        ASSERT_TRUE(page && page->picture) << form;
        EXPECT_EQ(*page->picture, Pictures::fromImage(image)) << form;
    }
}

TEST_F(FilePreviewsTest, APictureIsNeverMadeLargerThanItIs) {
    m_folder.file("a.png", encoded(colourful(40, 20), "png"));
    EXPECT_EQ(pageSize("a.png", {4000, 4000}), QSize(40, 20));
    EXPECT_EQ(thumbnailSize("a.png", {4000, 4000}), QSize(40, 20));
}

TEST_F(FilePreviewsTest, AThumbnailCoversWhatIsAskedForAndIsAtMostTwiceThat) {
    m_folder.file("a.png", encoded(colourful(400, 300), "png"));
    EXPECT_EQ(thumbnailSize("a.png", {120, 80}), QSize(120, 90));
    m_folder.file("strip.png", encoded(colourful(400, 50), "png"));
    EXPECT_EQ(thumbnailSize("strip.png", {100, 100}), QSize(200, 25));
}

TEST_F(FilePreviewsTest, AWantedSizeOfNothingOrOfEverythingIsBroughtIntoReason) {
    m_folder.file("a.png", encoded(colourful(400, 300), "png"));
    EXPECT_EQ(pageSize("a.png", {0, -5}), QSize(1, 1));
    EXPECT_EQ(pageSize("a.png", {2'000'000'000, 2'000'000'000}), QSize(400, 300));
}

TEST_F(FilePreviewsTest, TheContentDecidesAndNotTheName) {
    m_folder.file("a.txt", encoded(colourful(40, 20), "jpeg"));
    EXPECT_EQ(pageSize("a.txt", {100, 100}), QSize(40, 20));
    m_folder.file("a.png", "in truth a text");
    EXPECT_EQ(text("a.png"), "in truth a text");
}

TEST_F(FilePreviewsTest, APictureIsTurnedAsTheCameraWasHeld) {
    auto jpeg = encoded(colourful(40, 20), "jpeg");
    jpeg.insert(2, "\xFF\xE1\x00\x22"s +
                       "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0"s);
    m_folder.file("a.jpg", jpeg);
    EXPECT_EQ(pageSize("a.jpg", {100, 100}), QSize(20, 40));
    EXPECT_EQ(pageSize("a.jpg", {10, 100}), QSize(10, 20));
    EXPECT_EQ(thumbnailSize("a.jpg", {10, 10}), QSize(10, 20));
}

TEST_F(FilePreviewsTest, ADrawingIsDrawnAsLargeAsAskedFor) {
    m_folder.file("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
                           "<rect width='20' height='10'/></svg>");
    EXPECT_EQ(pageSize("a.svg", {200, 200}), QSize(200, 100));
}

TEST_F(FilePreviewsTest, ADrawingThatNamesAFileIsNotDrawnAndIsToldAsText) {
    m_folder.file("secret.png", encoded(colourful(8, 8), "png"));
    const auto drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'><image href='" +
                         m_folder.at("secret.png") + "' width='8' height='8'/></svg>";
    m_folder.file("a.svg", drawing);
    EXPECT_EQ(pageSize("a.svg", {200, 200}), QSize());
    EXPECT_EQ(text("a.svg"), drawing);
    EXPECT_EQ(thumbnailSize("a.svg", {200, 200}), QSize());
}

// Some 50 KB: the reader has no end in sight, and no call would end it.
TEST_F(FilePreviewsTest, ADrawingThatTakesTooLongIsToldAsText) {
    std::string drawing = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 1000 1000'><path d='M0 0";
    for (int i = 0; i < 4000; ++i) {
        drawing += "L" + std::to_string(i * 7919 % 1000) + (i % 2 == 0 ? " 0" : " 1000");
    }
    drawing += "' stroke='red' stroke-width='400' stroke-linejoin='round'/></svg>";
    m_folder.file("a.svg", drawing);
    const auto page = m_previews.page(m_folder.url("a.svg"), 0, {4000, 4000}, {});
    ASSERT_TRUE(page);
    EXPECT_TRUE(page->text == drawing); // a failure had better not print it
}

TEST_F(FilePreviewsTest, ADrawingKeepsWhatShowsThrough) {
    m_folder.file("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='2' height='2'>"
                           "<rect width='1' height='2' fill='#ff0000'/></svg>");
    const auto page = m_previews.page(m_folder.url("a.svg"), 0, {2, 2}, {});
    ASSERT_TRUE(page && page->picture);
    const auto& rgba = page->picture->rgba;
    EXPECT_EQ((std::vector<int>{rgba.begin(), rgba.begin() + 8}),
              (std::vector<int>{255, 0, 0, 255, 0, 0, 0, 0}));
}

TEST_F(FilePreviewsTest, ADrawingOfMoreThanAMegabyteIsNotDrawn) {
    const auto filled = [](std::size_t length) {
        const auto start = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'><!--"s;
        const auto end = "--></svg>"s;
        return start + std::string(length - start.size() - end.size(), 'x') + end;
    };
    m_folder.file("a.svg", filled(PictureHead::kMostBytes));
    EXPECT_EQ(pageSize("a.svg", {20, 10}), QSize(20, 10));
    m_folder.file("a.svg", filled(PictureHead::kMostBytes + 1));
    EXPECT_EQ(pageSize("a.svg", {20, 10}), QSize());
}

TEST_F(FilePreviewsTest, ATextIsToldUpToItsBound) {
    m_folder.file("a.txt", std::string(FilePreviews::kMostText + 100, 'x'));
    EXPECT_EQ(text("a.txt").size(), FilePreviews::kMostText);
    m_folder.file("b.txt", "\xFF\xFEH\0i\0"s);
    EXPECT_EQ(text("b.txt"), "Hi");
}

TEST_F(FilePreviewsTest, WhatIsNeitherPictureNorTextHasNoLook) {
    m_folder.file("empty").file("data", std::string(5000, '\0')).folder("folder");
    m_folder.file("damaged.png", "\x89PNG\r\n\x1A\n and then words alone");
    for (const char* name : {"empty", "data", "folder", "damaged.png", "none"}) {
        EXPECT_TRUE(hasNoLook(name)) << name;
    }
}

TEST_F(FilePreviewsTest, NothingIsWaitedForThatIsNoFile) {
    m_folder.file("real.png", encoded(colourful(8, 8), "png"));
    m_folder.fifo("pipe.png").link("link.png", m_folder.at("real.png")).link("zero.png", "/dev/zero");
    for (const char* name : {"pipe.png", "link.png", "zero.png"}) {
        EXPECT_TRUE(hasNoLook(name)) << name;
    }
}

TEST_F(FilePreviewsTest, WhatTheSystemHasElsewhereIsNotFetched) {
    m_folder.file("a.png", encoded(colourful(8, 8), "png"));
    m_faults.sendToTheCloud(m_folder.url("a.png"));
    int readings = 0;
    m_files.whenRead = [&] { ++readings; };
    EXPECT_TRUE(hasNoLook("a.png"));
    EXPECT_EQ(readings, 0);
}

TEST_F(FilePreviewsTest, AnEmptyFileOfTenGigabytesIsReadAtItsBeginningOnly) {
    m_folder.sparse("a.png", Bytes{10} << 30U);
    int readings = 0;
    m_files.whenRead = [&] { ++readings; };
    EXPECT_TRUE(hasNoLook("a.png"));
    EXPECT_EQ(readings, 2); // once for each question
}

TEST_F(FilePreviewsTest, APictureThatClaimsToBeTooLargeIsNotLaidOut) {
    m_folder.file("a.png", PictureFiles::pngClaiming(30'000, 30'000));
    EXPECT_TRUE(hasNoLook("a.png"));
    m_folder.file("a.bmp", "BM"s + std::string(4, '\xFF') + std::string(4, '\0') + "\x36\0\0\0\x28\0\0\0"s +
                               "\x30\x75\0\0\x30\x75\0\0\x01\0\x18\0"s + std::string(24, '\0'));
    EXPECT_TRUE(hasNoLook("a.bmp"));
    m_folder.file("a.ppm", "P6\n30000 30000\n255\n");
    EXPECT_TRUE(hasNoLook("a.ppm"));
}

TEST_F(FilePreviewsTest, AJpegWhoseScansWouldFillTheMemoryIsNotDecoded) {
    auto jpeg = encoded(colourful(64, 64), "jpeg", true);
    const auto frame = jpeg.find("\xFF\xC2");
    ASSERT_NE(frame, std::string::npos);
    m_folder.file("a.jpg", jpeg);
    EXPECT_EQ(pageSize("a.jpg", {64, 64}), QSize(64, 64));
    jpeg.replace(frame + 5, 4, "\x28\x00\x28\x00"s); // 10240 by 10240 pixels: shown small, kept whole
    m_folder.file("a.jpg", jpeg);
    EXPECT_TRUE(hasNoLook("a.jpg"));
}

TEST_F(FilePreviewsTest, ALargeJpegInOneScanIsDecodedSmall) {
    m_folder.file("a.jpg", encoded(colourful(4000, 3000), "jpeg"));
    EXPECT_EQ(thumbnailSize("a.jpg", {120, 90}), QSize(120, 90));
}

TEST_F(FilePreviewsTest, AFileThatShrinksWhileItIsReadDoesNoHarm) {
    const auto whole = encoded(colourful(300, 300), "bmp");
    m_folder.file("a.bmp", whole);
    for (const Bytes end : {Bytes{0}, Bytes{10}, Bytes{60}, static_cast<Bytes>(whole.size() / 2)}) {
        m_files.end = end;
        (void)thumbnailSize("a.bmp", {100, 100});
        EXPECT_EQ(text("a.bmp"), "") << end;
    }
    m_files.end = std::numeric_limits<Bytes>::max();
    EXPECT_EQ(pageSize("a.bmp", {100, 100}), QSize(100, 100));
}

TEST_F(FilePreviewsTest, AnErrorOfTheDiskLeavesNoPicture) {
    m_folder.file("a.png", encoded(colourful(600, 600), "png"));
    m_faults.failReadingAt(m_folder.url("a.png"), 10, {ErrorCode::kReadUnknown, std::nullopt});
    EXPECT_TRUE(hasNoLook("a.png"));
}

TEST_F(FilePreviewsTest, AFileThatAnswersTooSlowlyIsGivenUp) {
    m_folder.file("a.bmp", encoded(colourful(1500, 1500), "bmp"));
    int readings = 0;
    m_files.whenRead = [&] {
        ++readings;
        m_clock.advanceWithoutRunning(std::chrono::seconds(1));
    };
    EXPECT_EQ(pageSize("a.bmp", {100, 100}), QSize());
    EXPECT_LE(readings, 7); // the beginning, and as many as there is patience for
    EXPECT_GE(readings, 5);
}

TEST_F(FilePreviewsTest, AStopEndsTheDecodingAtTheNextReading) {
    m_folder.file("a.bmp", encoded(colourful(1500, 1500), "bmp"));
    int readings = 0;
    m_files.whenRead = [&] {
        if (++readings == 3) {
            m_stop.requestStop();
        }
    };
    EXPECT_EQ(pageSize("a.bmp", {100, 100}), QSize());
    EXPECT_EQ(readings, 3);
}

TEST_F(FilePreviewsTest, PagesOfADocumentAreDrawnByPathsOfTheMachine) {
    m_folder.file("Documents/a.pdf", PictureFiles::pdf(2));
    const PosixFileSystem volume(m_folder.path(), FileURL("/Users/alex"));
    FilePreviews previews(
        volume, m_programs, m_clock, [&](const FileURL& url) { return volume.hostPath(url); }, thisProgram());
    const auto page = previews.page(FileURL("/Documents/a.pdf"), 1, {100, 100}, {});
    ASSERT_TRUE(page);
    EXPECT_EQ(sizeOf(page), QSize(50, 100));
    EXPECT_EQ(page->number, 1);
    EXPECT_EQ(page->count, 2);
    EXPECT_NE(previews.thumbnail(FileURL("/Documents/a.pdf"), {100, 100}, {}), nullptr);
}

TEST_F(FilePreviewsTest, BrokenFilesByTheHundredDoNoHarm) {
    std::mt19937 random(20'260'101); // NOLINT(cert-msc51-cpp): the same files each time
    const PixelSize size{50, 50};
    for (const char* form : {"png", "jpeg", "bmp", "ppm"}) {
        const auto whole = encoded(colourful(64, 48), form);
        for (int i = 0; i < 200; ++i) {
            auto broken = whole.substr(0, i % 2 == 0 ? whole.size() : random() % whole.size());
            for (int flips = 0; flips < i % 7 && !broken.empty(); ++flips) {
                broken[random() % broken.size()] ^= static_cast<char>(1U << random() % 8);
            }
            m_folder.file("a", broken);
            const auto shown = pageSize("a", size);
            EXPECT_LE(shown.width(), size.width) << form << i;
            EXPECT_LE(shown.height(), size.height) << form << i;
        }
    }
}

TEST_F(FilePreviewsTest, BrokenDocumentsDoNoHarm) {
    std::mt19937 random(20'260'102); // NOLINT(cert-msc51-cpp): the same files each time
    const auto whole = PictureFiles::pdf(2);
    for (int i = 0; i < 25; ++i) {
        auto broken = i % 2 == 0 ? whole : whole.substr(0, random() % whole.size());
        for (int flips = 0; flips < 1 + i && !broken.empty(); ++flips) {
            broken[random() % broken.size()] ^= static_cast<char>(1U << random() % 8);
        }
        m_folder.file("a.pdf", broken);
        const auto shown = pageSize("a.pdf", {50, 50});
        EXPECT_LE(shown.height(), 50) << i;
    }
}

TEST_F(FilePreviewsTest, SeveralThreadsPictureAtOnce) {
    m_folder.file("a.png", encoded(colourful(300, 200), "png"));
    std::vector<QSize> sizes(6);
    std::vector<std::thread> threads;
    for (auto& size : sizes) {
        threads.emplace_back([&] { size = pageSize("a.png", {30, 30}); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sizes, std::vector(6, QSize(30, 20)));
}

} // namespace
} // namespace quillane
