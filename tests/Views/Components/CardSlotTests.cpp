#include "Components/CardSlot.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include <QPainter>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr int kGap = 12;
constexpr int kCardHeight = 60;

// A column of a card that may go and one that stays below it.
class CardSlotTest : public testing::Test {
  protected:
    CardSlotTest() {
        m_card->setFixedHeight(kCardHeight);
        m_below->setFixedHeight(20);
        auto* const layout = new QVBoxLayout(&m_column);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(m_slot);
        layout->addWidget(m_below);
        layout->addStretch();
        m_column.resize(300, 200);
        m_column.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_column));
    }
    ~CardSlotTest() override { Look::setReducedMotion(false); }

    // So many milliseconds after the card began to go.
    void at(int milliseconds) {
        m_slot->departure().pause(); // so that nothing moves but by hand
        m_slot->departure().setCurrentTime(milliseconds);
        m_column.layout()->activate();
    }
    void leave() {
        m_slot->setShown(true);
        m_slot->setShown(false);
    }
    int top() const { return m_below->y(); }
    // How far the middle of the card's place is from the bare column, 0 to 255.
    int ink() {
        const QImage picture = m_column.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QPoint middle(150, kGap + kCardHeight / 2);
        const QPoint bare(150, 190);
        const auto ratio = picture.devicePixelRatio();
        return std::abs(qGray(picture.pixel(middle * ratio)) - qGray(picture.pixel(bare * ratio)));
    }
    bool isMoving() { return m_slot->departure().state() == QAbstractAnimation::Running; }

    // Solid black.
    class Ink : public QWidget {
        void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), Qt::black); }
    };

    QWidget m_column;
    QWidget* m_card = new Ink;
    CardSlot* m_slot = new CardSlot(m_card, kGap);
    QWidget* m_below = new QWidget;
};

TEST_F(CardSlotTest, AnEmptySlotTakesNoPlace) {
    EXPECT_EQ(top(), 0);
    EXPECT_FALSE(m_card->isVisible());
}

TEST_F(CardSlotTest, ACardThatComesStandsAtOnceBelowItsGap) {
    m_slot->setShown(true);
    EXPECT_TRUE(m_card->isVisible());
    EXPECT_EQ(m_card->mapTo(&m_column, QPoint()), QPoint(0, kGap));
    m_column.layout()->activate();
    EXPECT_EQ(top(), kGap + kCardHeight);
    EXPECT_FALSE(isMoving());
}

TEST_F(CardSlotTest, ACardThatGoesFadesInItsPlaceAndThenTheColumnClosesUp) {
    leave();
    EXPECT_TRUE(isMoving());
    at(0);
    EXPECT_EQ(top(), kGap + kCardHeight);
    const int whole = ink();
    EXPECT_GT(whole, 200);
    at(CardSlot::kFadeMilliseconds / 3);
    EXPECT_EQ(top(), kGap + kCardHeight);
    EXPECT_LT(ink(), whole * 2 / 3) << "it eases out: most of it goes first";
    EXPECT_GT(ink(), 10);
    at(CardSlot::kFadeMilliseconds);
    EXPECT_EQ(top(), kGap + kCardHeight);
    EXPECT_LE(ink(), 1);
    at(CardSlot::kFadeMilliseconds + CardSlot::kCloseMilliseconds / 3);
    EXPECT_LT(top(), (kGap + kCardHeight) * 2 / 3);
    EXPECT_GT(top(), 0);
    at(CardSlot::kFadeMilliseconds + CardSlot::kCloseMilliseconds);
    EXPECT_EQ(top(), 0);
    EXPECT_FALSE(m_slot->isVisible());
    EXPECT_EQ(m_slot->departure().state(), QAbstractAnimation::Stopped);
}

TEST_F(CardSlotTest, ItTakesAHundredAndFiftyAndAHundredAndEightyMilliseconds) {
    EXPECT_EQ(m_slot->departure().totalDuration(), 150 + 180);
}

TEST_F(CardSlotTest, WhatStillFadesCanBeReachedByNobody) {
    m_below->setFocusPolicy(Qt::StrongFocus);
    auto* const button = new PushButton(QStringLiteral("Put Back"), {}, PushButton::Role::Normal,
                                        PushButton::Size::Regular, m_card);
    m_slot->setShown(true);
    button->show();
    button->setFocus();
    EXPECT_TRUE(button->hasFocus());
    m_slot->setShown(false);
    EXPECT_TRUE(m_slot->isVisible());
    EXPECT_FALSE(m_card->isVisible());
    EXPECT_FALSE(button->isVisible());
    EXPECT_TRUE(m_below->hasFocus());
}

TEST_F(CardSlotTest, ACardThatComesBackMeanwhileStandsWhole) {
    leave();
    at(CardSlot::kFadeMilliseconds + CardSlot::kCloseMilliseconds / 2);
    m_slot->setShown(true);
    m_column.layout()->activate();
    EXPECT_EQ(m_slot->departure().state(), QAbstractAnimation::Stopped);
    EXPECT_TRUE(m_card->isVisible());
    EXPECT_EQ(top(), kGap + kCardHeight);
    m_slot->setShown(false);
    at(0);
    EXPECT_GT(ink(), 200) << "and it fades from the beginning";
}

TEST_F(CardSlotTest, TellingItTwiceChangesNothing) {
    leave();
    at(CardSlot::kFadeMilliseconds / 3);
    const int there = ink();
    m_slot->setShown(false);
    EXPECT_EQ(ink(), there);
    EXPECT_EQ(m_slot->departure().currentTime(), CardSlot::kFadeMilliseconds / 3);
}

TEST_F(CardSlotTest, WithReducedMotionACardIsGoneAtOnce) {
    Look::setReducedMotion(true);
    leave();
    m_column.layout()->activate();
    EXPECT_FALSE(isMoving());
    EXPECT_EQ(top(), 0);
    EXPECT_LE(ink(), 1);
}

TEST_F(CardSlotTest, ACardThatNobodySeesIsGoneAtOnce) {
    m_slot->setShown(true);
    m_column.hide();
    m_slot->setShown(false);
    EXPECT_FALSE(isMoving());
    EXPECT_TRUE(m_slot->isHidden());
}

} // namespace
} // namespace quillane
