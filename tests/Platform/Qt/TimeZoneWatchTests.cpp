#include "TemporaryFolder.h"
#include "TimeZoneWatch.h"
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class TimeZoneWatchTest : public testing::Test {
  protected:
    void SetUp() override { setZone("Asia/Tokyo"); }

    // As the system does it: a new link takes the place of the old one at once.
    void setZone(const std::string& name) {
        const auto next = m_folder.at("/next");
        std::filesystem::create_symlink("/usr/share/zoneinfo/" + name, next);
        std::filesystem::rename(next, m_link);
    }

    TemporaryFolder m_folder;
    std::string m_link = m_folder.at("/localtime");
};

TEST_F(TimeZoneWatchTest, AnotherLinkIsAnotherZone) {
    const TimeZoneWatch watch(QString::fromStdString(m_link));
    QSignalSpy changes(&watch, &TimeZoneWatch::changed);
    setZone("America/New_York");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.count() == 1; }));
    setZone("Asia/Tokyo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.count() == 2; }));
}

TEST_F(TimeZoneWatchTest, OtherFilesOfTheFolderAreNoZone) {
    const TimeZoneWatch watch(QString::fromStdString(m_link));
    QSignalSpy changes(&watch, &TimeZoneWatch::changed);
    m_folder.file("/hosts", "x");
    setZone("Asia/Tokyo"); // a new link to the same zone
    setZone("America/New_York");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.count() > 0; }));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(TimeZoneWatchTest, WithoutAFolderNothingIsEverTold) {
    const TimeZoneWatch watch(QStringLiteral("/nowhere/localtime"));
    QSignalSpy changes(&watch, &TimeZoneWatch::changed);
    setZone("America/New_York");
    QCoreApplication::processEvents();
    EXPECT_EQ(changes.count(), 0);
}

} // namespace
} // namespace quillane
