#include "ContinuousClock.h"
#include "FakePreviews.h"
#include "FilePreviews.h"
#include "PictureFiles.h"
#include "Pictures.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <QCoreApplication>
#include <gtest/gtest.h>

namespace quillane {
namespace {

// A picture, a document of two pages, a text, and what has no look of its own.
struct Ground {
    Ground() {
        folder.file("picture.png", PictureFiles::encoded(PictureFiles::colourful(60, 40), "png"));
        folder.file("document.pdf", PictureFiles::pdf(2));
        folder.file("text.txt", "Read me.");
        folder.file("data.bin", std::string(100, '\0'));
        folder.folder("folder.png");
    }
    TemporaryFolder folder;
    PosixFileSystem files;
    PosixCommandRunner programs;
    MainQueue queue;
    ContinuousClock clock{queue};
};

std::unique_ptr<Previews> makeReal(Ground& ground) {
    return std::make_unique<FilePreviews>(
        ground.files, ground.programs, ground.clock, [](const FileURL& url) { return url.path(); },
        QCoreApplication::applicationFilePath().toStdString());
}

std::unique_ptr<Previews> makeFake(Ground& ground) {
    auto fake = std::make_unique<FakePreviews>();
    const auto picture =
        std::make_shared<const IconImage>(Pictures::fromImage(PictureFiles::colourful(60, 40)));
    fake->setThumbnail(ground.folder.url("picture.png"), picture);
    fake->setThumbnail(ground.folder.url("document.pdf"), picture);
    fake->setPages(ground.folder.url("picture.png"), {{picture, {}, 0, 1}});
    fake->setPages(ground.folder.url("document.pdf"), {{picture, {}, 0, 2}, {picture, {}, 1, 2}});
    fake->setPages(ground.folder.url("text.txt"), {{nullptr, "Read me.", 0, 1}});
    return fake;
}

struct Adapter {
    const char* name;
    std::unique_ptr<Previews> (*make)(Ground& ground);
};

class PreviewsContract : public testing::TestWithParam<Adapter> {
  protected:
    FileURL url(const char* name) const { return m_ground.folder.url(name); }

    static constexpr PixelSize kSize{60, 60};
    Ground m_ground;
    std::unique_ptr<Previews> m_previews = GetParam().make(m_ground);
};

TEST_P(PreviewsContract, APictureHasAThumbnailAndOnePage) {
    const auto thumbnail = m_previews->thumbnail(url("picture.png"), kSize, {});
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(thumbnail->rgba.size(), std::size_t{4} * 60 * 40);
    const auto page = m_previews->page(url("picture.png"), 0, kSize, {});
    ASSERT_TRUE(page);
    ASSERT_NE(page->picture, nullptr);
    EXPECT_LE(page->picture->width, kSize.width);
    EXPECT_LE(page->picture->height, kSize.height);
    EXPECT_EQ(page->text, "");
    EXPECT_EQ(page->number, 0);
    EXPECT_EQ(page->count, 1);
}

TEST_P(PreviewsContract, ADocumentHasAThumbnailAndAllItsPages) {
    EXPECT_NE(m_previews->thumbnail(url("document.pdf"), kSize, {}), nullptr);
    for (const int number : {0, 1}) {
        const auto page = m_previews->page(url("document.pdf"), number, kSize, {});
        ASSERT_TRUE(page);
        EXPECT_NE(page->picture, nullptr);
        EXPECT_EQ(page->number, number);
        EXPECT_EQ(page->count, 2);
    }
}

TEST_P(PreviewsContract, ATextIsOnePageWithoutAPictureAndHasNoThumbnail) {
    EXPECT_EQ(m_previews->thumbnail(url("text.txt"), kSize, {}), nullptr);
    const auto page = m_previews->page(url("text.txt"), 0, kSize, {});
    ASSERT_TRUE(page);
    EXPECT_EQ(page->picture, nullptr);
    EXPECT_EQ(page->text, "Read me.");
    EXPECT_EQ(page->count, 1);
}

TEST_P(PreviewsContract, WhatHasNoLookOfItsOwnGivesNothing) {
    for (const char* name : {"data.bin", "folder.png", "none.png"}) {
        EXPECT_EQ(m_previews->thumbnail(url(name), kSize, {}), nullptr) << name;
        EXPECT_FALSE(m_previews->page(url(name), 0, kSize, {})) << name;
    }
}

TEST_P(PreviewsContract, APageThatIsNotThereGivesNothing) {
    for (const char* name : {"picture.png", "document.pdf", "text.txt"}) {
        for (const int number : {-1, 2, 1'000'000}) {
            EXPECT_FALSE(m_previews->page(url(name), number, kSize, {})) << name << number;
        }
    }
}

TEST_P(PreviewsContract, AStopLeavesNoAnswer) {
    const StopSource stop;
    stop.requestStop();
    for (const char* name : {"picture.png", "document.pdf", "text.txt"}) {
        EXPECT_EQ(m_previews->thumbnail(url(name), kSize, stop.token()), nullptr) << name;
        EXPECT_FALSE(m_previews->page(url(name), 0, kSize, stop.token())) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Adapters, PreviewsContract,
                         testing::Values(Adapter{"Files", makeReal}, Adapter{"Fake", makeFake}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace
} // namespace quillane
