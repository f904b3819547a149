#include "Components/FocusRing.h"
#include "Components/Look.h"
#include "Components/RoundRegion.h"
#include "Components/Style/CheckBoxDrawing.h"
#include "Components/Tokens.h"
#include "Shell/BrandButton.h"
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

using namespace quillane;

namespace {

// What the menu itself paints; what it leaves out is transparent.
class MenuPicture {
  public:
    MenuPicture() {
        m_menu.addAction("Reveal in Finder");
        m_divider = m_menu.addSeparator();
        m_menu.addAction("Copy Identifiers");
        m_menu.popup({});
        QCoreApplication::processEvents();
        m_image = QImage(m_menu.size(), QImage::Format_ARGB32);
        m_image.fill(Qt::transparent);
        m_menu.render(&m_image, {}, {}, {});
    }

    QColor at(int x, int y) const { return m_image.pixelColor(x, y); }
    QSize size() const { return m_image.size(); }
    QPoint middleOfDivider() const { return m_menu.actionGeometry(m_divider).center(); }

  private:
    QMenu m_menu;
    QAction* m_divider;
    QImage m_image;
};

QImage checkBox(int side, QStyle::State state) {
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Tokens::current().card);
    QPainter painter(&image);
    CheckBoxDrawing::draw(painter, image.rect(), state | QStyle::State_Enabled);
    return image;
}

float lightest(const QImage& image) {
    float most = 0;
    for (int y = 3; y < image.height() - 3; ++y) { // the corners show what lies behind
        for (int x = 3; x < image.width() - 3; ++x) {
            most = std::max(most, image.pixelColor(x, y).redF());
        }
    }
    return most;
}

class StyleTest : public testing::Test {
  protected:
    ~StyleTest() override { Look::setDark(false); }
};

} // namespace

TEST_F(StyleTest, AMenuIsACardWithRoundCornersInBothModes) {
    for (const bool dark : {false, true}) {
        Look::setDark(dark);
        const MenuPicture menu;
        const Tokens& tokens = Tokens::current();
        const int right = menu.size().width() - 1;
        const int bottom = menu.size().height() - 1;
        for (const QPoint& corner :
             {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)}) {
            EXPECT_EQ(menu.at(corner.x(), corner.y()).alpha(), 0);
        }
        EXPECT_EQ(menu.at(right / 2, 0), tokens.line);
        EXPECT_EQ(menu.at(right / 2, bottom), tokens.line);
        EXPECT_EQ(menu.at(right / 2, 3), tokens.card);
        EXPECT_EQ(menu.at(menu.middleOfDivider().x(), menu.middleOfDivider().y()), tokens.line2);
    }
}

TEST_F(StyleTest, ATickIsWhiteAndNotAHairAtAnySideOfABox) {
    for (const int side : {16, 18}) {
        EXPECT_GT(lightest(checkBox(side, QStyle::State_On)), 0.9F) << side;
        EXPECT_GT(lightest(checkBox(side, QStyle::State_NoChange)), 0.9F) << side;
    }
}

TEST_F(StyleTest, ARoundRegionLacksTheCornersAndNothingElse) {
    const QRegion region = roundRegion({100, 60}, 14);
    EXPECT_EQ(region.boundingRect(), QRect(0, 0, 100, 60));
    for (const QPoint& corner : {QPoint(0, 0), QPoint(99, 0), QPoint(0, 59), QPoint(99, 59), QPoint(3, 3)}) {
        EXPECT_FALSE(region.contains(corner)) << corner.x() << ", " << corner.y();
    }
    EXPECT_TRUE(region.contains(QPoint(5, 5)));
    for (const QPoint& edge : {QPoint(14, 0), QPoint(0, 14), QPoint(85, 59), QPoint(99, 45)}) {
        EXPECT_TRUE(region.contains(edge)) << edge.x() << ", " << edge.y();
    }
}

TEST_F(StyleTest, ARoundRegionOfAnythingSmallStaysInside) {
    EXPECT_EQ(roundRegion({10, 4}, 14).boundingRect(), QRect(0, 0, 10, 4));
    EXPECT_TRUE(roundRegion({0, 0}, 14).isEmpty());
}

TEST_F(StyleTest, TheBrandWearsItsOwnRingAlone) {
    QWidget window;
    BrandButton brand(&window);
    QMenu menu;
    brand.setMenu(&menu);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    brand.clearFocus(); // it got it with the window
    brand.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(brand.hasFocus());
    EXPECT_TRUE(FocusRing::isShownFor(&brand));
    EXPECT_EQ(qApp->findChild<FocusRing*>()->target(), nullptr);
}
