#include "Components/DateWords.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "ManualClock.h"
#include "Overview/PutBackCard.h"
#include "StepTaskRunner.h"
#include "UndoableOperation.h"
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;

class PutBackCardTest : public testing::Test {
  protected:
    void tellAfter(Duration age) {
        UndoableOperation operation{"Clean Now", {}, {}, 4'070'000'000};
        operation.date = m_clock.now().addingSeconds(-std::chrono::duration<double>(age).count());
        operation.moves.resize(2);
        m_card.setOperation(operation);
    }
    std::string when() const {
        const QString text = m_card.sentence()->text();
        const QString before = QStringLiteral("2 item(s), 4.07 GB, ");
        const QString after = QStringLiteral(". Still in the Trash, so it can go back.");
        EXPECT_TRUE(text.startsWith(before) && text.endsWith(after)) << text.toStdString();
        return text.mid(before.size(), text.size() - before.size() - after.size()).toStdString();
    }

    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
    PutBackCard m_card{m_clock};
};

TEST_F(PutBackCardTest, TheDateStaysTrueWhileTheCardStands) {
    tellAfter(0s);
    m_card.show();
    EXPECT_EQ(when(), "now");
    m_clock.advance(1s);
    EXPECT_EQ(when(), "1 second ago");
    m_clock.advance(58s);
    EXPECT_EQ(when(), "59 seconds ago");
    m_clock.advance(1s);
    EXPECT_EQ(when(), "1 minute ago");
    m_clock.advance(1min);
    EXPECT_EQ(when(), "2 minutes ago");
    EXPECT_EQ(m_card.accessibleDescription(), m_card.sentence()->text());
    m_clock.advance(58min);
    EXPECT_EQ(when(), "1 hour ago");
    m_clock.advance(24h);
    EXPECT_EQ(when(), "yesterday");
    m_clock.advance(24h * 40);
    EXPECT_EQ(when(), "last month");
}

TEST_F(PutBackCardTest, AnotherTimeZoneShowsAtOnce) {
    tellAfter(40h); // the day before in London, and two days before in Tokyo
    m_card.show();
    m_card.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_card));
    QCoreApplication::processEvents(); // so that nothing else tells anew behind the change
    EXPECT_EQ(when(), "yesterday");
    m_clock.setCalendar("Asia/Tokyo");
    tellDateWordsMayDiffer();
    QCoreApplication::processEvents();
    EXPECT_EQ(when(), "2 days ago");
    EXPECT_EQ(m_clock.sleepers(), 1U);
}

TEST_F(PutBackCardTest, AnotherTimeZoneOutOfSightSetsNoTimer) {
    tellAfter(40h);
    m_clock.setCalendar("Asia/Tokyo");
    tellDateWordsMayDiffer();
    QCoreApplication::processEvents();
    EXPECT_EQ(when(), "2 days ago");
    EXPECT_EQ(m_clock.sleepers(), 0U);
}

TEST_F(PutBackCardTest, OneTimerWaitsWhileItCanBeSeenAndNoneWhileItCannot) {
    tellAfter(5min);
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_card.show();
    EXPECT_EQ(m_clock.sleepers(), 1U);
    tellAfter(7min);
    m_clock.advance(3min);
    EXPECT_EQ(m_clock.sleepers(), 1U);
    m_card.hide();
    EXPECT_EQ(m_clock.sleepers(), 0U);
}

TEST_F(PutBackCardTest, ShownAgainItHasKeptUp) {
    tellAfter(5min);
    m_card.show();
    m_card.hide();
    m_clock.advance(24h);
    m_card.show();
    EXPECT_EQ(when(), "yesterday");
}

TEST_F(PutBackCardTest, AWallClockThatWasSetShowsWhenTheWindowComesToTheFront) {
    tellAfter(5min);
    m_card.show();
    m_clock.setNow(m_clock.now().addingSeconds(-4 * 60));
    QEvent event(QEvent::WindowActivate);
    QApplication::sendEvent(&m_card, &event);
    EXPECT_EQ(when(), "1 minute ago");
    m_clock.advance(1min);
    EXPECT_EQ(when(), "2 minutes ago");
}

TEST_F(PutBackCardTest, ACleanupThatTakesTheOldOnesPlaceIsFollowedFromThenOn) {
    tellAfter(24h);
    m_card.show();
    EXPECT_EQ(when(), "yesterday");
    tellAfter(0s);
    EXPECT_EQ(when(), "now");
    m_clock.advance(5s);
    EXPECT_EQ(when(), "5 seconds ago");
}

TEST_F(PutBackCardTest, ACardThatGoesTakesItsTimerAlong) {
    {
        PutBackCard card(m_clock);
        card.setOperation({"Clean Now", m_clock.now(), {}, 0});
        card.show();
        EXPECT_EQ(m_clock.sleepers(), 1U);
    }
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_clock.advance(24h);
}

} // namespace
} // namespace quillane
