#include "DesktopThumbnails.h"
#include "FilePreviews.h"
#include "ManualClock.h"
#include "PictureFiles.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "StepTaskRunner.h"
#include "StoredThumbnail.h"
#include "TemporaryFolder.h"
#include <QCoreApplication>
#include <QFile>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace quillane {
namespace {

using PictureFiles::colourful;
using PictureFiles::encoded;

class FilePreviewsWithDesktop : public testing::Test {
  protected:
    void lay(const char* name, const std::string& content) {
        m_folder.file(name, content).modified(name, Date::fromUnix(1'700'000'000));
    }
    void keep(const char* name, const char* flavor, int side) {
        storeThumbnail(m_store, flavor, m_folder.url(name), colourful(side, side / 2), "1700000000");
    }
    QSize desktopThumbnail(const char* name, PixelSize size) {
        const auto picture = m_withDesktop.thumbnail(m_folder.url(name), size, {});
        return picture ? QSize(picture->width, picture->height) : QSize();
    }
    static QSize sizeOf(const std::optional<PreviewPage>& page) {
        return page && page->picture ? QSize(page->picture->width, page->picture->height) : QSize();
    }

    TemporaryFolder m_folder;
    TemporaryFolder m_store;
    PosixFileSystem m_files;
    PosixCommandRunner m_programs;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    DesktopThumbnails m_desktop{ThumbnailStore(m_files, m_store.url()), m_clock,
                                [] { return QDBusConnection(QStringLiteral("none")); }, [](Duration) {}};
    FilePreviews m_withDesktop{m_files,
                               m_programs,
                               m_clock,
                               [](const FileURL& url) { return url.path(); },
                               QFile::encodeName(QCoreApplication::applicationFilePath()).toStdString(),
                               &m_desktop};
};

TEST_F(FilePreviewsWithDesktop, WhatIsNotDecodedHereIsShownAsTheDesktopShowsIt) {
    lay("film.mp4", std::string(500, '\0'));
    keep("film.mp4", "large", 256);
    EXPECT_EQ(desktopThumbnail("film.mp4", {1200, 800}), QSize(256, 128));
    EXPECT_EQ(sizeOf(m_withDesktop.page(m_folder.url("film.mp4"), 0, {100, 100}, {})), QSize(100, 50));
}

TEST_F(FilePreviewsWithDesktop, AStoredThumbnailSavesTheDecodingWhereItSuffices) {
    lay("a.png", encoded(colourful(900, 450), "png"));
    keep("a.png", "large", 250); // another width than ours would be
    EXPECT_EQ(desktopThumbnail("a.png", {256, 10}), QSize(40, 20));
    EXPECT_EQ(desktopThumbnail("a.png", {300, 150}), QSize(300, 150));
}

TEST_F(FilePreviewsWithDesktop, APageIsDecodedWhateverIsStored) {
    lay("a.png", encoded(colourful(900, 450), "png"));
    keep("a.png", "xx-large", 250);
    EXPECT_EQ(sizeOf(m_withDesktop.page(m_folder.url("a.png"), 0, {600, 600}, {})), QSize(600, 300));
}

} // namespace
} // namespace quillane
