#include "Components/FlowLayout.h"
#include <QWidget>
#include <gtest/gtest.h>
#include <vector>

namespace quillane {
namespace {

// Boxes of 40 by 20, five apart, in a row of so many pixels.
class Flow : public testing::Test {
  protected:
    Flow() {
        for (int i = 0; i < 3; ++i) {
            auto* const box = new QWidget;
            box->setFixedSize(40, 20);
            layout->addWidget(box);
            boxes.push_back(box);
        }
    }
    std::vector<QPoint> places(int width) {
        layout->setGeometry(QRect(0, 0, width, 100));
        std::vector<QPoint> result;
        for (const auto* const box : boxes) {
            result.push_back(box->pos());
        }
        return result;
    }

    QWidget row;
    FlowLayout* layout = new FlowLayout(&row, 5);
    std::vector<QWidget*> boxes;
};

TEST_F(Flow, WhatDoesNotFitGoesOnInTheNextRow) {
    EXPECT_EQ(places(130), (std::vector<QPoint>{{0, 0}, {45, 0}, {90, 0}}));
    EXPECT_EQ(places(100), (std::vector<QPoint>{{0, 0}, {45, 0}, {0, 25}}));
    EXPECT_EQ(layout->heightForWidth(100), 45);
}

TEST_F(Flow, RowsInTheMiddleLeaveAsMuchAtBothSides) {
    layout->setCentred(true);
    EXPECT_EQ(places(150), (std::vector<QPoint>{{10, 0}, {55, 0}, {100, 0}}));
    EXPECT_EQ(places(105), (std::vector<QPoint>{{10, 0}, {55, 0}, {32, 25}}));
    EXPECT_EQ(layout->sizeHint(), QSize(130, 20));
}

TEST_F(Flow, RowsMayStandCloserThanNeighbours) {
    layout->setRowSpacing(2);
    EXPECT_EQ(places(100), (std::vector<QPoint>{{0, 0}, {45, 0}, {0, 22}}));
    EXPECT_EQ(layout->heightForWidth(100), 42);
}

TEST_F(Flow, WhatIsHiddenTakesNoRoomInTheMiddleEither) {
    layout->setCentred(true);
    boxes[1]->hide();
    places(105);
    EXPECT_EQ(boxes[0]->pos(), QPoint(10, 0));
    EXPECT_EQ(boxes[2]->pos(), QPoint(55, 0));
}

} // namespace
} // namespace quillane
