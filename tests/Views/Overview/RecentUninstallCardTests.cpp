#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/SymbolButton.h"
#include "Components/Tile.h"
#include "ManualClock.h"
#include "Overview/RecentUninstallCard.h"
#include "StepTaskRunner.h"
#include "ToolTip.h"
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;

class RecentUninstallCardTest : public testing::Test {
  protected:
    RecentUninstall record(std::vector<Bytes> left = {}, Duration age = 3min) const {
        RecentUninstall record{"Ostrich Chat", "com.ostrich.chat", {}, {}};
        record.removedAt = m_clock.now().addingSeconds(-std::chrono::duration<double>(age).count());
        for (const Bytes bytes : left) {
            const auto number = std::to_string(record.leftovers.size());
            record.leftovers.push_back(
                {FileURL("/Users/alex/Library/Caches/" + number), "Caches", bytes, true});
        }
        return record;
    }
    void showNamed(const std::string& name) {
        auto named = record({1'000});
        named.name = name;
        m_card.setRecord(named);
        m_card.resize(600, 70);
        m_card.show();
        QCoreApplication::processEvents();
    }
    QString title() const { return m_card.title()->text(); }

    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
    RecentUninstallCard m_card{m_clock};
};

TEST_F(RecentUninstallCardTest, TellsWhatWasRemovedAndWhenAndWhatItLeft) {
    m_card.setRecord(record({400'000'000, 86'200'000}));
    m_card.resize(900, 70);
    m_card.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_card.symbol(), "trash.slash.circle.fill");
    EXPECT_EQ(m_card.findChild<Tile*>()->symbol(), "trash.slash.circle.fill");
    EXPECT_EQ(title(), "You removed Ostrich Chat 3 minutes ago");
    EXPECT_EQ(m_card.sentence()->text(), "It left 486.2 MB in 2 files across your Library.");
    EXPECT_EQ(m_card.accessibleName(), title());
    EXPECT_EQ(m_card.accessibleDescription(), m_card.sentence()->text());
    EXPECT_EQ(m_card.title()->toolTip(), "") << "nothing is cut";
}

TEST_F(RecentUninstallCardTest, OneFileIsCountedInTheSingularAndManyWithGroupedThousands) {
    m_card.setRecord(record({1'000}));
    EXPECT_EQ(m_card.sentence()->text(), "It left 1 KB in 1 file across your Library.");
    m_card.setRecord(record(std::vector<Bytes>(1'200, 1'000)));
    EXPECT_EQ(m_card.sentence()->text(), "It left 1.2 MB in 1,200 files across your Library.");
}

TEST_F(RecentUninstallCardTest, ARecordWithNoLeftoversOffersOnlyToDismissIt) {
    m_card.setRecord(record());
    EXPECT_EQ(m_card.sentence()->text(), "It left nothing behind. Clean uninstall.");
    EXPECT_TRUE(m_card.reviewButton()->isHidden());
    EXPECT_FALSE(m_card.dismissButton()->isHidden());
    EXPECT_FALSE(m_card.closeButton()->isHidden());
    m_card.setRecord(record({1}));
    EXPECT_FALSE(m_card.reviewButton()->isHidden());
}

TEST_F(RecentUninstallCardTest, ItsButtonsHaveTheirWordsAndTheMarkHasAName) {
    EXPECT_EQ(m_card.reviewButton()->label(), "Review Leftovers…");
    EXPECT_EQ(m_card.dismissButton()->label(), "Dismiss");
    EXPECT_EQ(m_card.closeButton()->symbol(), "xmark");
    EXPECT_EQ(m_card.closeButton()->accessibleName(), "Dismiss");
    EXPECT_EQ(readIn(m_card.closeButton()->toolTip()), "Dismiss");
}

TEST_F(RecentUninstallCardTest, BothWaysToDismissSaySoAndNeitherReviews) {
    m_card.setRecord(record({1}));
    m_card.show();
    int dismissed = 0;
    int reviewed = 0;
    QObject::connect(&m_card, &RecentUninstallCard::dismissWanted, &m_card, [&] { ++dismissed; });
    QObject::connect(&m_card, &RecentUninstallCard::reviewWanted, &m_card, [&] { ++reviewed; });
    m_card.dismissButton()->click();
    EXPECT_EQ(dismissed, 1);
    m_card.closeButton()->click();
    EXPECT_EQ(dismissed, 2);
    EXPECT_EQ(reviewed, 0);
    m_card.reviewButton()->click();
    EXPECT_EQ(dismissed, 2);
    EXPECT_EQ(reviewed, 1);
}

TEST_F(RecentUninstallCardTest, TheTimeStaysTrueWhileTheCardStandsAndCostsNothingWhileItDoesNot) {
    m_card.setRecord(record({}, 59s));
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_card.resize(900, 70);
    m_card.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(title(), "You removed Ostrich Chat 59 seconds ago");
    EXPECT_EQ(m_clock.sleepers(), 1U);
    m_clock.advance(1s);
    EXPECT_EQ(title(), "You removed Ostrich Chat 1 minute ago");
    EXPECT_EQ(m_card.accessibleName(), title());
    m_clock.advance(24h);
    EXPECT_EQ(title(), "You removed Ostrich Chat yesterday");
    m_card.hide();
    EXPECT_EQ(m_clock.sleepers(), 0U);
}

TEST_F(RecentUninstallCardTest, AnApplicationThatIsRemovedAgainIsFollowedFromThenOn) {
    m_card.setRecord(record({}, 24h));
    m_card.resize(900, 70);
    m_card.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(title(), "You removed Ostrich Chat yesterday");
    m_card.setRecord(record({}, 0s));
    EXPECT_EQ(title(), "You removed Ostrich Chat now");
    m_clock.advance(5s);
    EXPECT_EQ(title(), "You removed Ostrich Chat 5 seconds ago");
}

TEST_F(RecentUninstallCardTest, ANameThatDeceivesIsShownAsItIs) {
    showNamed("<b>Bold</b> &amp; \u202Eexe");
    EXPECT_EQ(m_card.accessibleName(), "You removed <b>Bold</b> &amp; ‹U+202E›exe 3 minutes ago");
    EXPECT_EQ(m_card.title()->textFormat(), Qt::PlainText);
}

TEST_F(RecentUninstallCardTest, ALongNameIsCutInTheMiddleToOneLineAndStandsWholeInTheToolTip) {
    const std::string name = "<i>" + std::string(3'000, 'M') + "End";
    showNamed(name);
    EXPECT_EQ(m_card.width(), 600) << "it does not widen the column";
    EXPECT_LT(title().size(), 100);
    EXPECT_TRUE(title().startsWith("You removed <i>M") && title().endsWith("End 3 minutes ago"))
        << title().toStdString();
    const QString whole = QString::fromStdString("You removed " + name + " 3 minutes ago");
    EXPECT_EQ(m_card.accessibleName(), whole);
    EXPECT_EQ(readIn(m_card.title()->toolTip()), whole);
    EXPECT_LE(m_card.title()->heightForWidth(m_card.title()->width()),
              4 * m_card.title()->fontMetrics().lineSpacing());
}

TEST_F(RecentUninstallCardTest, ACutNameFitsAnewWhenTheCardGetsNarrowerOrWider) {
    showNamed(std::string(200, 'M'));
    const auto before = title().size();
    m_card.resize(900, 70);
    QCoreApplication::processEvents();
    const auto wide = title().size();
    EXPECT_GT(wide, before);
    m_card.resize(520, 70);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_card.width(), 520);
    EXPECT_LT(title().size(), before);
}

} // namespace
} // namespace quillane
