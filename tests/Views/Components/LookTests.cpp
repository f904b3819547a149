#include "Components/Fonts.h"
#include "Components/Look.h"
#include "Components/Style/QuillaneStyle.h"
#include "Components/Tokens.h"
#include "Gallery.h"
#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QLayout>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class PaintCounter : public QObject {
  public:
    explicit PaintCounter(const QList<QWidget*>& widgets) {
        for (QWidget* widget : widgets) {
            widget->installEventFilter(this);
        }
    }
    int count(QWidget* widget) const { return m_paints.value(widget); }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++m_paints[object];
        }
        return false;
    }

  private:
    QHash<QObject*, int> m_paints;
};

class LookTest : public ::testing::Test {
  protected:
    void TearDown() override {
        Look::setDark(false);
        Look::setHighContrast(false);
        Look::setReducedMotion(false);
        Look::setTextScale(1);
    }
};

TEST_F(LookTest, EveryWidgetRepaintsAtOnceWhenTheModeChanges) {
    const auto gallery = makeGallery();
    gallery->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(gallery.get()));
    QCoreApplication::processEvents();
    QList<QWidget*> visible;
    for (QWidget* child : gallery->findChildren<QWidget*>()) {
        if (child->isVisible() && !child->visibleRegion().isEmpty()) {
            visible << child;
        }
    }
    ASSERT_GT(visible.size(), 60);
    const PaintCounter counter(visible);
    Look::setDark(true);
    // The window paints when its next frame comes.
    ASSERT_TRUE(QTest::qWaitFor([&] { return counter.count(visible.last()) > 0; }, 5000));
    for (QWidget* widget : visible) {
        EXPECT_GE(counter.count(widget), 1) << widget->metaObject()->className();
    }
    EXPECT_TRUE(Look::isDark());
}

TEST_F(LookTest, SwitchingThereAndBackLeavesNoTrace) {
    const auto gallery = makeGallery();
    Look::setReducedMotion(true); // spinners would move on between the two pictures
    gallery->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(gallery.get()));
    const QImage before = drawn(*gallery);
    Look::setDark(true);
    QCoreApplication::processEvents();
    const QImage dark = drawn(*gallery);
    Look::setDark(false);
    QCoreApplication::processEvents();
    EXPECT_NE(dark, before);
    EXPECT_EQ(drawn(*gallery), before);
}

TEST_F(LookTest, HighContrastStrengthensLinesInTheModeThatIsOn) {
    Look::setDark(true);
    Look::setHighContrast(true);
    EXPECT_TRUE(Look::isDark());
    EXPECT_TRUE(Tokens::current().highContrast);
    EXPECT_EQ(QApplication::palette().color(QPalette::Mid), Tokens::darkSet().text3);
}

// As high as it wants to be in its width. Layouts in layouts need some turns to agree on that.
QImage shown(QWidget& widget) {
    widget.show();
    for (int before = 0; before != widget.height();) {
        before = widget.height();
        QCoreApplication::processEvents();
        widget.resize(widget.width(), widget.layout()->totalHeightForWidth(widget.width()));
    }
    QCoreApplication::processEvents();
    return drawn(widget);
}

// Qt never forgets the least size of a combo box.
std::unique_ptr<QWidget> galleryWithoutComboBoxes() {
    auto gallery = makeGallery();
    qDeleteAll(gallery->findChildren<QComboBox*>());
    return gallery;
}

TEST_F(LookTest, TextThatGrowsLaterLooksAsIfItHadAlwaysBeenLarge) {
    Look::setReducedMotion(true);
    const auto grown = galleryWithoutComboBoxes();
    const QImage usual = shown(*grown);
    Look::setTextScale(1.5);
    const QImage large = shown(*grown);
    const auto born = galleryWithoutComboBoxes();
    EXPECT_EQ(large.size(), shown(*born).size());
    EXPECT_EQ(large, shown(*born));
    EXPECT_GT(large.height(), usual.height());
    Look::setTextScale(1);
    EXPECT_EQ(shown(*grown), usual);
}

TEST_F(LookTest, ReducedMotionTakesNoTime) {
    EXPECT_EQ(Look::duration(220), 220);
    Look::setReducedMotion(true);
    EXPECT_EQ(Look::duration(220), 0);
}

TEST_F(LookTest, TheFontIsUnhintedAndThirteenPixels) {
    const QFont font = QApplication::font();
    EXPECT_EQ(font.pixelSize(), 13);
    EXPECT_EQ(font.hintingPreference(), QFont::PreferNoHinting);
    if (QFontDatabase::families().contains("Inter")) {
        EXPECT_EQ(font.family(), "Inter");
    }
}

TEST_F(LookTest, HalfASizeGoesToItsEvenNeighbour) {
    EXPECT_EQ(Fonts::of(11.5).pixelSize(), 12);
    EXPECT_EQ(Fonts::of(12.5).pixelSize(), 12);
    EXPECT_EQ(Fonts::of(9.5).pixelSize(), 10);
}

TEST_F(LookTest, RowsGrowWithTheTextAndNeverShrink) {
    EXPECT_EQ(Fonts::rowHeight(30), 30);
    Fonts::setScale(2);
    EXPECT_GE(Fonts::rowHeight(30), QFontMetrics(Fonts::of(13)).height() + 12);
    EXPECT_EQ(Fonts::rowHeight(300), 300);
}

TEST_F(LookTest, TheStyleIsOurs) {
#ifndef Q_OS_MACOS
    EXPECT_NE(qobject_cast<QuillaneStyle*>(QApplication::style()), nullptr);
#endif
    EXPECT_TRUE(qApp->styleSheet().isEmpty());
}

} // namespace
} // namespace quillane
