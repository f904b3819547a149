#pragma once
#include "AppLibrary.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "DefaultsKeys.h"
#include "Moving.h"
#include "Onboarding/OnboardingView.h"
#include "Onboarding/PageDots.h"
#include "Onboarding/SlideDeck.h"
#include "Onboarding/SlideView.h"
#include "RemovalWorld.h"
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {

// The welcome over a window, used as a person does. Nothing moves but where a test asks for it.
class OnboardingTest : public testing::Test {
  protected:
    static constexpr int kPages = 5;

    OnboardingTest() {
        Look::setReducedMotion(true);
        window.resize(1280, 760);
        window.show();
    }
    ~OnboardingTest() override {
        delete sheet;
        Look::setReducedMotion(false);
        Look::setHighContrast(false);
        Look::setDark(false);
        Look::setTextScale(1);
    }

    OnboardingView& open() {
        sheet = OnboardingView::present(library, &window);
        QApplication::setActiveWindow(sheet);
        turn();
        return *sheet;
    }
    OnboardingView& openAt(int page) {
        open();
        goTo(page);
        return *sheet;
    }
    void goTo(int page) {
        while (sheet->page() < page) {
            click(sheet->mainButton());
        }
        turn();
    }
    static void turn() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
    }
    static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    // Into what has the focus.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        turn();
    }
    static void hold(Qt::Key key) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &held);
        turn();
    }
    bool isOpen() const { return sheet && sheet->isVisible(); }
    bool isRecorded() const { return world.defaults.isStored(DefaultsKeys::kHasSeenOnboarding); }

    RemovalWorld world;
    AppLibrary library{world.platform};
    QWidget window;
    QPointer<OnboardingView> sheet;
};

} // namespace quillane
