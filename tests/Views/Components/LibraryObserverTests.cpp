#include "Components/LibraryObserver.h"
#include <QCoreApplication>
#include <QStackedWidget>
#include <gtest/gtest.h>
#include <memory>

using namespace quillane;

TEST(LibraryObserver, DrawsOncePerTurnHoweverMuchChanges) {
    Published<int> first;
    Published<int> second;
    int renders = 0;
    LibraryObserver observer([&] {
        ++renders;
        first.get();
        second.get();
    });
    observer.renderNow();
    first = 1;
    second = 1;
    first = 2;
    EXPECT_EQ(renders, 1) << "nothing is drawn inside a store";
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 2);
}

TEST(LibraryObserver, WhatTheLastRenderDidNotReadIsNotObserved) {
    Published<bool> deep{true};
    Published<int> figure;
    int renders = 0;
    LibraryObserver observer([&] {
        ++renders;
        if (deep.get()) {
            figure.get();
        }
    });
    observer.renderNow();
    deep = false;
    QCoreApplication::processEvents();
    figure = 1;
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 2);
}

TEST(LibraryObserver, AnEqualValueDrawsNothing) {
    Published<int> field{3};
    int renders = 0;
    LibraryObserver observer([&] {
        ++renders;
        field.get();
    });
    observer.renderNow();
    field = 3;
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 1);
}

TEST(LibraryObserver, DrawingAtOnceReplacesTheTurnThatWasAskedFor) {
    Published<int> field;
    int renders = 0;
    LibraryObserver observer([&] {
        ++renders;
        field.get();
    });
    observer.renderNow();
    field = 1;
    observer.renderNow();
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 2);
}

TEST(LibraryObserver, AnObserverThatIsGoneIsNotDrawn) {
    Published<int> field;
    int renders = 0;
    auto observer = std::make_unique<LibraryObserver>([&] {
        ++renders;
        field.get();
    });
    observer->renderNow();
    field = 1;
    observer.reset();
    field = 2;
    QCoreApplication::processEvents();
    EXPECT_EQ(renders, 1);
}

namespace {

// A window with two screens, the first in front, and an observer that draws the second.
struct TwoScreens {
    TwoScreens() {
        window.addWidget(new QWidget);
        window.addWidget(new QWidget);
        observer.drawOnlyInSight(window.widget(1));
        observer.renderNow();
    }

    QStackedWidget window;
    Published<int> field{0};
    int drawn = -1;
    LibraryObserver observer{[this] { drawn = field.get(); }};
};

} // namespace

TEST(LibraryObserver, AScreenBehindAnotherIsNotDrawn) {
    TwoScreens screens;
    screens.window.show();
    screens.field = 1;
    QCoreApplication::processEvents();
    EXPECT_EQ(screens.drawn, 0);
}

TEST(LibraryObserver, AScreenThatComesToTheFrontIsDrawnAsThingsAreBeforeItIsSeen) {
    TwoScreens screens;
    screens.window.show();
    screens.field = 1;
    QCoreApplication::processEvents();
    screens.field = 2;
    screens.window.setCurrentIndex(1);
    EXPECT_EQ(screens.drawn, 2);
}

TEST(LibraryObserver, AScreenInFrontIsDrawnAndObservesFurther) {
    TwoScreens screens;
    screens.window.show();
    screens.window.setCurrentIndex(1);
    for (int value = 1; value < 4; ++value) {
        screens.field = value;
        QCoreApplication::processEvents();
        EXPECT_EQ(screens.drawn, value);
    }
}

TEST(LibraryObserver, WhileTheWindowIsNotShownEveryScreenIsDrawn) {
    TwoScreens screens;
    screens.field = 1;
    QCoreApplication::processEvents();
    EXPECT_EQ(screens.drawn, 1);
}
