#include "Components/Look.h"
#include "Components/Scrim.h"
#include "Components/Sheet.h"
#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>

using namespace quillane;

namespace {

class SheetOverWindow : public testing::Test {
  protected:
    SheetOverWindow() {
        window.setGeometry(0, 0, 700, 500);
        window.show();
        sheet = std::make_unique<Sheet>(QSize(300, 200), &field);
    }
    ~SheetOverWindow() override { Look::setDark(false); }

    QColor dimmed() { return window.grab().toImage().pixelColor(10, 10); }

    QWidget window;
    QWidget field{&window};
    std::unique_ptr<Sheet> sheet;
};

} // namespace

TEST_F(SheetOverWindow, TheWindowIsDimmedWhileTheSheetIsOpen) {
    const QColor before = dimmed();
    sheet->open();
    EXPECT_LT(dimmed().lightnessF(), before.lightnessF() - 0.1F);
    EXPECT_EQ(sheet->scrim()->geometry(), window.rect());
    sheet->reject();
    EXPECT_EQ(sheet->scrim(), nullptr);
    EXPECT_EQ(dimmed(), before);
}

TEST_F(SheetOverWindow, ItStaysInTheMiddleAndCoversTheWindowWhenThatMovesAndGrows) {
    sheet->open();
    window.setGeometry(80, 60, 900, 700);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet->geometry().center(), window.geometry().center());
    EXPECT_EQ(sheet->scrim()->size(), QSize(900, 700));
}

TEST_F(SheetOverWindow, InALowWindowItIsLowerSoThatTheWindowShowsAboveAndBelow) {
    window.setGeometry(0, 0, 700, 180);
    sheet->open();
    EXPECT_EQ(sheet->size(), QSize(300, 140));
    EXPECT_EQ(sheet->geometry().center(), window.geometry().center());
    window.setGeometry(0, 0, 700, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet->size(), QSize(300, 200)) << "there is room again";
}

TEST_F(SheetOverWindow, ItIsNeverLowerThanWhatItHolds) {
    auto* const column = new QVBoxLayout(sheet.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->addSpacing(170);
    window.setGeometry(0, 0, 700, 180);
    sheet->open();
    EXPECT_EQ(sheet->height(), 170);
}

TEST_F(SheetOverWindow, ItStaysOnTheScreenWhenTheWindowDoesNot) {
    sheet->open();
    const QRect room = window.screen()->availableGeometry();
    for (const QPoint& corner : {QPoint(-600, -400), QPoint(room.right() - 50, room.bottom() - 50)}) {
        window.move(corner);
        QCoreApplication::processEvents();
        EXPECT_TRUE(room.contains(sheet->geometry())) << corner.x();
    }
}

TEST_F(SheetOverWindow, WhatJoinsTheWindowMeanwhileIsDimmedToo) {
    sheet->open();
    QWidget late(&window);
    late.setGeometry(0, 0, 50, 50);
    late.setAutoFillBackground(true);
    late.show();
    QCoreApplication::processEvents();
    EXPECT_GT(window.children().indexOf(sheet->scrim()), window.children().indexOf(&late));
}

TEST_F(SheetOverWindow, TheWindowKnowsTheSheetThatLiesOpenOverIt) {
    EXPECT_EQ(Sheet::openOver(window), nullptr);
    sheet->open();
    EXPECT_EQ(Sheet::openOver(window), sheet.get());
    sheet->reject();
    EXPECT_EQ(Sheet::openOver(window), nullptr);
}

TEST_F(SheetOverWindow, ItsWindowIsTheOneThatHoldsTheWidgetItWasOpenedFor) {
    EXPECT_EQ(sheet->parentWidget(), &window);
    EXPECT_TRUE(sheet->isWindow());
}

TEST_F(SheetOverWindow, TheWindowMayGoFirst) {
    auto other = std::make_unique<QWidget>();
    other->show();
    const QPointer<Sheet> over(new Sheet({100, 100}, other.get()));
    over->open();
    other.reset();
    EXPECT_TRUE(over.isNull());
}

TEST_F(SheetOverWindow, WhoCameByKeyboardGoesOnByKeyboard) {
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    sheet->open();
    EXPECT_TRUE(sheet->testAttribute(Qt::WA_KeyboardFocusChange));
}

TEST(Sheet, StandsAloneWithoutAWindow) {
    Sheet sheet({200, 100}, nullptr);
    sheet.show();
    EXPECT_EQ(sheet.scrim(), nullptr);
}
