#include "Components/Fonts.h"
#include "Components/Look.h"
#include "Components/TabularText.h"
#include "Tables/HeaderView.h"
#include "Tables/TableView.h"
#include <QStandardItemModel>
#include <QTest>
#include <gtest/gtest.h>

using namespace quillane;

namespace {

// A table with a column of sizes, which stand at the right, in a window that is there before text grows.
class TextScale : public testing::Test {
  protected:
    TextScale() {
        m_model.setHorizontalHeaderLabels({"Name", "Size", "Kind"});
        m_model.setHeaderData(1, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter),
                              Qt::TextAlignmentRole);
        m_model.appendRow(
            {new QStandardItem("Cedar"), new QStandardItem("999.99 GB"), new QStandardItem("Tree")});
        m_table.setModel(&m_model);
        m_table.setColumns({{.width = 180, .stretches = true}, {.width = 84}, {.width = 112}});
        m_table.resize(500, 300);
        m_table.show();
        QCoreApplication::processEvents();
    }
    ~TextScale() override { Look::setTextScale(1); }

    void grow(double factor) {
        Look::setTextScale(factor);
        QCoreApplication::processEvents();
    }
    int widthOf(int column) const { return m_table.header()->sectionSize(column); }
    static double longestSize() { return TabularText::width(QFontMetricsF(Fonts::of(13)), "999.99 GB"); }

    QStandardItemModel m_model;
    TableView m_table{"Trees"};
};

constexpr int kInsets = 16; // of a cell's text, together

} // namespace

TEST_F(TextScale, ASizeNeverLosesItsUnit) {
    for (const double factor : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        grow(factor);
        EXPECT_GE(widthOf(1), longestSize() + kInsets) << factor;
    }
}

TEST_F(TextScale, OtherColumnsKeepTheirWidthsAndNothingScrollsSideways) {
    grow(1.5);
    EXPECT_EQ(widthOf(2), 112);
    EXPECT_EQ(m_table.header()->length(), m_table.viewport()->width());
}

TEST_F(TextScale, AWidthThatIsDraggedStaysAsItWasDragged) {
    grow(1.5);
    m_table.header()->resizeSection(1, 150);
    EXPECT_EQ(widthOf(1), 150);
    m_table.resize(520, 300);
    QCoreApplication::processEvents();
    EXPECT_EQ(widthOf(1), 150);
}

TEST_F(TextScale, RowsAndHeaderGrowWithTheTextAndComeBack) {
    const auto heights = [this] {
        return std::pair(m_table.visualRect(m_model.index(0, 0)).height(), m_table.header()->height());
    };
    const auto usual = heights();
    grow(2);
    EXPECT_GE(heights().first, QFontMetrics(Fonts::of(13)).height() + 12);
    EXPECT_GT(heights().second, usual.second);
    grow(1);
    EXPECT_EQ(heights(), usual);
}
