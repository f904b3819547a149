#include "PosixFileSystem.h"
#include "StoredThumbnail.h"
#include "TemporaryFolder.h"
#include "ThumbnailStore.h"
#include <cstdlib>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using PictureFiles::colourful;

const Date kModified = Date::fromUnix(1'700'000'000, 400'000'000);

class ThumbnailStoreTest : public testing::Test {
  protected:
    void store(const std::string& flavor, int side, const std::string& modified = "1700000000") {
        storeThumbnail(m_folder, flavor, m_film, colourful(side, side / 2), modified);
    }
    // The width of the best thumbnail; 0 for none.
    int best(int leastSide = 0) const {
        const auto thumbnail = m_store.best(m_film, kModified, leastSide);
        return thumbnail ? thumbnail->width : 0;
    }

    FileURL m_film{"/home/alex/Videos/A film, 100% \xC3\xA9.mp4"};
    TemporaryFolder m_folder;
    PosixFileSystem m_files;
    ThumbnailStore m_store{m_files, m_folder.url()};
};

TEST_F(ThumbnailStoreTest, AFileIsKnownByTheNameThatTheDesktopsProgramsGiveIt) {
    EXPECT_EQ(ThumbnailStore::uriOf(m_film), "file:///home/alex/Videos/A%20film,%20100%25%20%C3%A9.mp4");
    EXPECT_EQ(ThumbnailStore::uriOf(FileURL("/-._~!$&'()*+,;=:@")), "file:///-._~!$&'()*+,;=:@");
    EXPECT_EQ(ThumbnailStore::uriOf(FileURL("/\"#<>?[\\]^`{|}\xFF")),
              "file:///%22%23%3C%3E%3F%5B%5C%5D%5E%60%7B%7C%7D%FF");
}

TEST_F(ThumbnailStoreTest, AThumbnailIsFoundUnderTheDigestOfItsName) {
    // The digest as any other program works it out.
    EXPECT_EQ(thumbnailPlace("normal", FileURL("/home/jens/photos/me.png")),
              "normal/c6ee772d9e49320e97ec29a7eb5b1697.png");
    store("normal", 100);
    EXPECT_EQ(best(), 100);
}

TEST_F(ThumbnailStoreTest, TheLargestIsTheBest) {
    store("normal", 128);
    store("x-large", 512);
    store("large", 256);
    EXPECT_EQ(best(), 512);
    store("xx-large", 1024);
    EXPECT_EQ(best(), 1024);
}

TEST_F(ThumbnailStoreTest, OneThatIsMeantToBeSmallerThanAskedIsNone) {
    store("large", 256);
    EXPECT_EQ(best(256), 256);
    EXPECT_EQ(best(257), 0);
    EXPECT_EQ(best(5000), 0);
}

TEST_F(ThumbnailStoreTest, TheSecondOfTheModificationCountsAndItsFractionDoesNot) {
    store("normal", 100, "1700000000.999");
    EXPECT_EQ(best(), 100);
    for (const char* other : {"1699999999", "1700000001", "1700000001.4", "", "yesterday", "-1700000000"}) {
        store("normal", 100, other);
        EXPECT_EQ(best(), 0) << other;
    }
}

TEST_F(ThumbnailStoreTest, AThumbnailOfAnotherFileIsNotBelieved) {
    auto picture = colourful(64, 64);
    picture.setText(QStringLiteral("Thumb::URI"), QStringLiteral("file:///home/alex/Videos/Other.mp4"));
    picture.setText(QStringLiteral("Thumb::MTime"), QStringLiteral("1700000000"));
    m_folder.file(thumbnailPlace("normal", m_film), PictureFiles::encoded(picture, "png"));
    EXPECT_EQ(best(), 0);
}

TEST_F(ThumbnailStoreTest, ADamagedThumbnailLeavesTheNextBest) {
    store("normal", 128);
    m_folder.file(thumbnailPlace("x-large", m_film), "no picture");
    m_folder.folder(thumbnailPlace("xx-large", m_film));
    m_folder.fifo(thumbnailPlace("large", m_film));
    EXPECT_EQ(best(), 128);
}

TEST_F(ThumbnailStoreTest, AThumbnailLargerThanTheLargestFlavorIsNotDecoded) {
    store("xx-large", 1025);
    EXPECT_EQ(best(), 0);
}

TEST_F(ThumbnailStoreTest, TheStoreLiesWhereTheDesktopKeepsItsCaches) {
    const char* before = std::getenv("XDG_CACHE_HOME");
    const std::string kept = before != nullptr ? before : "";
    ::setenv("XDG_CACHE_HOME", "/caches", 1);
    EXPECT_EQ(ThumbnailStore::folderOfThisUser(FileURL("/home/alex")), FileURL("/caches/thumbnails"));
    ::setenv("XDG_CACHE_HOME", "relative", 1);
    EXPECT_EQ(ThumbnailStore::folderOfThisUser(FileURL("/home/alex")),
              FileURL("/home/alex/.cache/thumbnails"));
    ::unsetenv("XDG_CACHE_HOME");
    EXPECT_EQ(ThumbnailStore::folderOfThisUser(FileURL("/home/alex")),
              FileURL("/home/alex/.cache/thumbnails"));
    if (before != nullptr) {
        ::setenv("XDG_CACHE_HOME", kept.c_str(), 1);
    }
}

} // namespace
} // namespace quillane
