#include "Components/ColumnGround.h"
#include "Components/SidebarView.h"
#include "Components/Tokens.h"
#include "Gallery.h"
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class SidebarTest : public ::testing::Test {
  protected:
    void SetUp() override {
        m_sidebar.addSection("Overview", "sparkles");
        m_sidebar.addSection("Applications", "square.grid.2x2");
        m_sidebar.addSection("Startup", "power");
        m_sidebar.setCurrentRow(0);
        m_sidebar.resize(212, 400);
        m_ground.resize(m_sidebar.size());
        m_ground.show();
    }

    QPoint middleOf(int row) const { return m_sidebar.visualItemRect(m_sidebar.item(row)).center(); }
    // The middle of the badge's left end, where there is no figure.
    QColor badgeGround(int row) {
        const QRect item = m_sidebar.visualItemRect(m_sidebar.item(row));
        return drawn(m_ground).pixelColor((QPoint(item.right() - 10 - 8 - 21, item.center().y() - 1)) * 2);
    }

    ColumnGround m_ground{ColumnGround::Ground::Sidebar};
    SidebarView m_sidebar{"Sections", &m_ground};
};

TEST_F(SidebarTest, ItemsAreThirtyTwoHighTwoApart) {
    EXPECT_EQ(m_sidebar.visualItemRect(m_sidebar.item(1)).top(), 34);
}

TEST_F(SidebarTest, AClickChooses) {
    QTest::mouseClick(m_sidebar.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(m_sidebar.currentRow(), 2);
}

TEST_F(SidebarTest, OneSectionAlwaysStaysSelected) {
    QTest::mouseClick(m_sidebar.viewport(), Qt::LeftButton, {}, QPoint(100, 390));
    EXPECT_EQ(m_sidebar.selectedItems().size(), 1);
    QTest::mouseClick(m_sidebar.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(0));
    EXPECT_EQ(m_sidebar.selectedItems().size(), 1);
}

TEST_F(SidebarTest, ArrowsChooseToo) {
    QTest::keyClick(&m_sidebar, Qt::Key_Down);
    EXPECT_EQ(m_sidebar.currentRow(), 1);
    EXPECT_EQ(m_sidebar.selectedItems().size(), 1);
}

TEST_F(SidebarTest, AnEmptyBadgeIsNotDrawn) {
    const QImage without = drawn(m_ground);
    m_sidebar.setBadge(1, "64", "Applications, 64");
    EXPECT_NE(drawn(m_ground), without);
    m_sidebar.setBadge(1, {}, "Applications");
    EXPECT_EQ(drawn(m_ground), without);
}

TEST_F(SidebarTest, ABadgeOfProblemsIsOrange) {
    m_sidebar.setBadge(2, "3", "Startup, 3 problems");
    const QColor neutral = badgeGround(2);
    m_sidebar.setBadge(2, "3", "Startup, 3 problems", Tint::Orange);
    const QColor orange = badgeGround(2);
    EXPECT_GT(orange.hsvSaturation(), neutral.hsvSaturation() + 20);
}

TEST_F(SidebarTest, ANarrowSidebarStillShowsALongNameBesideThreeDigits) {
    m_sidebar.addSection("Orphaned Files", "questionmark.folder");
    m_sidebar.setCurrentRow(3); // in its widest letters
    m_ground.resize(196, 400);
    m_sidebar.resize(m_ground.size());
    const auto words = [&] {
        const QRect item = m_sidebar.visualItemRect(m_sidebar.item(3));
        return drawn(m_ground).copy(2 * (item.left() + 42), 2 * item.top(), 2 * 97, 2 * item.height());
    };
    const QImage alone = words();
    m_sidebar.setBadge(3, "130", "Orphaned Files, 130");
    EXPECT_EQ(words(), alone);
}

TEST_F(SidebarTest, ABadgeForARowThatIsNotThereIsIgnored) {
    m_sidebar.setBadge(9, "1", "nothing");
    EXPECT_TRUE(m_sidebar.badge(9).isEmpty());
}

} // namespace
} // namespace quillane
