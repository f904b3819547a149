#include "DesktopThumbnails.h"
#include "FakeThumbnailer.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "PrivateBus.h"
#include "StoredThumbnail.h"
#include "TemporaryFolder.h"
#include <QTest>
#include <future>
#include <gtest/gtest.h>
#include <utility>

namespace quillane {
namespace {

using PictureFiles::colourful;

const Date kModified = Date::fromUnix(1'700'000'000);

class DesktopThumbnailsTest : public testing::Test {
  protected:
    // Asks on another thread, as the service answers on this one.
    std::shared_ptr<const IconImage> made(const FileURL& url, int side = 200) {
        auto answer = std::async(std::launch::async,
                                 [&] { return m_thumbnails.made(url, kModified, side, m_stop.token()); });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return answer.get();
    }
    void answerWith(int side) {
        m_service.whenQueued = [this, side] {
            storeThumbnail(m_store, "large", m_film, colourful(side, side), "1700000000");
        };
    }

    FileURL m_film{"/home/alex/Videos/A film.mp4"};
    TemporaryFolder m_store;
    PosixFileSystem m_files;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    PrivateBus m_bus;
    FakeThumbnailer m_service{m_bus.connect()};
    StopSource m_stop;
    int m_pauses = 0;
    std::function<void()> m_whenPaused = [] {};
    DesktopThumbnails m_thumbnails{ThumbnailStore(m_files, m_store.url()), m_clock, m_bus.reach(),
                                   [this](Duration duration) {
                                       ++m_pauses;
                                       m_clock.advanceWithoutRunning(duration);
                                       m_whenPaused();
                                   }};
};

TEST_F(DesktopThumbnailsTest, TheServiceIsAskedForTheFileInTheForegroundAndItsFileIsTheAnswer) {
    answerWith(250);
    const auto thumbnail = made(m_film);
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(thumbnail->width, 250);
    EXPECT_EQ(m_service.uris, QStringList(QStringLiteral("file:///home/alex/Videos/A%20film.mp4")));
    EXPECT_EQ(m_service.kinds, QStringList(QStringLiteral("video/mp4")));
    EXPECT_EQ(m_service.flavor, QStringLiteral("large"));
    EXPECT_EQ(m_service.scheduler, QStringLiteral("foreground"));
}

TEST_F(DesktopThumbnailsTest, TheFlavorIsTheSmallestThatSufficesOrTheLargestThatIsMade) {
    answerWith(10);
    made(m_film, 100);
    EXPECT_EQ(m_service.flavor, QStringLiteral("normal"));
    made(m_film, 257);
    EXPECT_EQ(m_service.flavor, QStringLiteral("x-large"));
    made(m_film, 1200);
    EXPECT_EQ(m_service.flavor, QStringLiteral("x-large"));
}

TEST_F(DesktopThumbnailsTest, AThumbnailThatComesLaterIsWaitedFor) {
    m_whenPaused = [this] {
        if (m_pauses == 3) {
            storeThumbnail(m_store, "large", m_film, colourful(250, 250), "1700000000");
        }
    };
    EXPECT_NE(made(m_film), nullptr);
    EXPECT_EQ(m_pauses, 3);
}

TEST_F(DesktopThumbnailsTest, WhatDoesNotComeInThreeSecondsIsGivenUpAndWithdrawn) {
    const auto before = m_clock.instant();
    EXPECT_EQ(made(m_film), nullptr);
    EXPECT_GE(m_clock.instant() - before, DesktopThumbnails::kPatience);
    EXPECT_LE(m_clock.instant() - before, DesktopThumbnails::kPatience + DesktopThumbnails::kBetweenLooks);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_service.withdrawn == 7; }));
}

TEST_F(DesktopThumbnailsTest, AStopEndsTheWaiting) {
    m_whenPaused = [this] { m_stop.requestStop(); };
    EXPECT_EQ(made(m_film), nullptr);
    EXPECT_EQ(m_pauses, 1);
}

TEST_F(DesktopThumbnailsTest, WhatTheServiceCannotPictureOnThisMachineIsNotQueued) {
    EXPECT_EQ(made(FileURL("/home/alex/Archive.zip")), nullptr);
    EXPECT_EQ(made(FileURL("/home/alex/Picture.heif")), nullptr)
        << "it knows them on another kind of place only";
    EXPECT_EQ(m_service.uris, QStringList());
}

TEST_F(DesktopThumbnailsTest, TheServiceIsAskedOnceWhatItCanDo) {
    answerWith(10);
    made(m_film);
    made(m_film);
    EXPECT_EQ(m_service.questions, 1);
}

TEST_F(DesktopThumbnailsTest, AServiceThatMakesNothingIsAskedAgainAfterARest) {
    const auto types = std::exchange(m_service.types, {});
    EXPECT_EQ(made(m_film), nullptr);
    m_service.types = types;
    answerWith(250);
    m_clock.advanceWithoutRunning(DesktopThumbnails::kRest - std::chrono::nanoseconds(1));
    EXPECT_EQ(made(m_film), nullptr);
    EXPECT_EQ(m_service.questions, 1) << "it is left alone for a while";
    m_clock.advanceWithoutRunning(std::chrono::nanoseconds(1));
    EXPECT_NE(made(m_film), nullptr);
    EXPECT_EQ(m_service.questions, 2);
}

TEST_F(DesktopThumbnailsTest, AServiceThatGoesAndComesBackIsFoundAgain) {
    answerWith(250);
    EXPECT_NE(made(m_film), nullptr);
    const FileURL other("/home/alex/Videos/Other.mp4");
    m_service.leave();
    EXPECT_EQ(made(other), nullptr);
    m_service.comeBack();
    EXPECT_EQ(made(other), nullptr) << "after a rest";
    EXPECT_EQ(m_service.uris.first(), QStringLiteral("file:///home/alex/Videos/A%20film.mp4"));
    m_clock.advanceWithoutRunning(DesktopThumbnails::kRest);
    made(other);
    EXPECT_EQ(m_service.uris.first(), QStringLiteral("file:///home/alex/Videos/Other.mp4"));
    EXPECT_EQ(m_service.questions, 2);
}

TEST_F(DesktopThumbnailsTest, ARequestThatIsRefusedIsNoReasonToRest) {
    m_service.refuses = true;
    EXPECT_EQ(made(m_film), nullptr);
    m_service.refuses = false;
    answerWith(250);
    EXPECT_NE(made(m_film), nullptr);
}

TEST_F(DesktopThumbnailsTest, NobodyWaitsForTheAnswerThatAnotherThreadWaitsFor) {
    std::future<std::shared_ptr<const IconImage>> second;
    m_service.whenAsked = [&] { // the first one waits for this very call
        if (m_service.questions == 1) {
            second = std::async(std::launch::async,
                                [&] { return m_thumbnails.made(m_film, kModified, 200, m_stop.token()); });
            EXPECT_TRUE(QTest::qWaitFor([&] { return m_service.questions == 2; }));
        }
    };
    answerWith(250);
    EXPECT_NE(made(m_film), nullptr);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return second.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_NE(second.get(), nullptr);
}

TEST_F(DesktopThumbnailsTest, WithoutSuchAServiceOrWithoutABusNothingIsMade) {
    PrivateBus empty;
    DesktopThumbnails alone(ThumbnailStore(m_files, m_store.url()), m_clock, empty.reach(), [](Duration) {});
    EXPECT_EQ(alone.made(m_film, kModified, 200, {}), nullptr);
    DesktopThumbnails unconnected(
        ThumbnailStore(m_files, m_store.url()), m_clock,
        [] { return QDBusConnection(QStringLiteral("none")); }, [](Duration) {});
    EXPECT_EQ(unconnected.made(m_film, kModified, 200, {}), nullptr);
}

} // namespace
} // namespace quillane
