#include "Components/Look.h"
#include "Overview/CompositionBar.h"
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using enum SweepCategory;
using Parts = std::vector<CompositionBar::Part>;

class CompositionBarTest : public testing::Test {
  protected:
    CompositionBarTest() {
        m_bar.resize(400, 8);
        m_bar.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_bar));
    }
    ~CompositionBarTest() override { Look::setReducedMotion(false); }

    // So many milliseconds after the parts were set.
    void at(int milliseconds) {
        m_bar.easing().pause(); // so that nothing moves but by hand
        m_bar.easing().setCurrentTime(milliseconds);
    }
    void setAndWait(Parts parts) {
        m_bar.setParts(std::move(parts));
        at(180);
    }
    std::vector<SweepCategory> categories() const {
        std::vector<SweepCategory> categories;
        for (const auto& stretch : m_bar.stretches())
            categories.push_back(stretch.category);
        return categories;
    }
    double lengthOf(SweepCategory category) const {
        for (const auto& stretch : m_bar.stretches()) {
            if (stretch.category == category)
                return stretch.length;
        }
        return 0;
    }
    double end() const {
        const auto stretches = m_bar.stretches();
        return stretches.empty() ? 0 : stretches.back().left + stretches.back().length;
    }
    bool isMoving() { return m_bar.easing().state() == QAbstractAnimation::Running; }

    CompositionBar m_bar;
};

TEST_F(CompositionBarTest, PartsShareTheWidthByTheirSizesWithGapsBetweenThem) {
    setAndWait({{caches, 300}, {developer, 100}});
    const auto stretches = m_bar.stretches();
    ASSERT_EQ(stretches.size(), 2U);
    EXPECT_DOUBLE_EQ(stretches[0].left, 0);
    EXPECT_DOUBLE_EQ(stretches[0].length, 4 + (400 - 2 - 8) * 0.75);
    EXPECT_DOUBLE_EQ(stretches[1].left, stretches[0].length + 2);
    EXPECT_DOUBLE_EQ(end(), 400);
}

TEST_F(CompositionBarTest, ASmallPartStillShowsAndOneOfNoSizeDoesNot) {
    setAndWait({{caches, 1'000'000'000'000}, {developer, 0}, {trash, 1}});
    EXPECT_EQ(categories(), (std::vector{caches, trash}));
    EXPECT_GE(lengthOf(trash), 4);
}

TEST_F(CompositionBarTest, NewPartsAreReachedInAHundredAndEightyMilliseconds) {
    setAndWait({{caches, 100}, {developer, 100}});
    const double before = lengthOf(caches);
    m_bar.setParts({{caches, 300}, {developer, 100}});
    EXPECT_TRUE(isMoving());
    EXPECT_EQ(m_bar.easing().duration(), 180);
    at(0);
    EXPECT_DOUBLE_EQ(lengthOf(caches), before);
    at(60);
    const double after = 4 + (400 - 2 - 8) * 0.75;
    EXPECT_GT(lengthOf(caches), (before + after) / 2) << "it eases out: most of the way comes first";
    EXPECT_LT(lengthOf(caches), after);
    EXPECT_DOUBLE_EQ(end(), 400) << "and stays full on the way";
    at(180);
    EXPECT_DOUBLE_EQ(lengthOf(caches), after);
    EXPECT_FALSE(isMoving());
}

TEST_F(CompositionBarTest, ACategoryThatComesGrowsInItsPlaceAndOneThatGoesShrinksToNothing) {
    setAndWait({{caches, 100}, {orphans, 100}});
    m_bar.setParts({{developer, 100}, {orphans, 100}});
    at(0);
    EXPECT_EQ(categories(), (std::vector{caches, orphans})) << "nothing jumps";
    at(60);
    EXPECT_EQ(categories(), (std::vector{caches, developer, orphans}));
    EXPECT_DOUBLE_EQ(end(), 400);
    at(180);
    EXPECT_EQ(categories(), (std::vector{developer, orphans}));
}

TEST_F(CompositionBarTest, FromNothingItFillsAndToNothingItEmpties) {
    m_bar.setParts({{caches, 100}, {developer, 100}});
    at(60);
    EXPECT_GT(end(), 200);
    EXPECT_LT(end(), 400);
    at(180);
    EXPECT_DOUBLE_EQ(end(), 400);
    m_bar.setParts({});
    at(60);
    EXPECT_LT(end(), 200);
    at(180);
    EXPECT_TRUE(m_bar.stretches().empty());
}

TEST_F(CompositionBarTest, PartsThatChangeOnTheWayAreReachedFromWhereItStands) {
    setAndWait({{caches, 100}, {developer, 100}});
    m_bar.setParts({{caches, 300}, {developer, 100}});
    at(60);
    const double there = lengthOf(caches);
    m_bar.setParts({{caches, 100}, {developer, 100}});
    at(0);
    EXPECT_DOUBLE_EQ(lengthOf(caches), there);
}

TEST_F(CompositionBarTest, TheSamePartsAgainMoveNothing) {
    setAndWait({{caches, 100}});
    m_bar.setParts({{caches, 100}, {trash, 0}});
    EXPECT_FALSE(isMoving());
}

TEST_F(CompositionBarTest, WithReducedMotionAndOutOfSightNothingMoves) {
    Look::setReducedMotion(true);
    m_bar.setParts({{caches, 100}});
    EXPECT_FALSE(isMoving());
    EXPECT_DOUBLE_EQ(end(), 400);
    Look::setReducedMotion(false);
    m_bar.hide();
    m_bar.setParts({{caches, 100}, {trash, 100}});
    EXPECT_FALSE(isMoving());
    EXPECT_DOUBLE_EQ(end(), 400);
}

} // namespace
} // namespace quillane
