#include "Components/EmptyState.h"
#include "Components/Look.h"
#include "Components/Tokens.h"
#include "Gallery.h"
#include "Tables/HeaderView.h"
#include "Tables/TableDelegate.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include <QAccessible>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class TableTest : public ::testing::Test {
  protected:
    void SetUp() override {
        m_model.setHorizontalHeaderLabels({"Name", "Size"});
        for (const char* name : {"Alder", "Birch", "Cedar", "Cypress", "Elm", "Banyan"}) {
            m_model.appendRow({new QStandardItem(name), new QStandardItem("1 GB")});
        }
        auto* row = new QHBoxLayout(&m_window);
        m_table = new TableView("Trees");
        m_table->setModel(&m_model);
        m_table->setColumns({{.width = 180, .stretches = true}, {.width = 88}});
        row->addWidget(m_table);
        m_field = new QLineEdit;
        row->addWidget(m_field);
        m_window.resize(600, 400);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_table->setFocus();
    }
    void TearDown() override { Look::setReducedMotion(false); }

    void select(int row) { m_table->setCurrentIndex(m_model.index(row, 0)); }
    int currentRow() const { return m_table->currentIndex().row(); }
    QList<int> selectedRows() const {
        QList<int> rows;
        for (int row = 0; row < m_model.rowCount(); ++row) {
            if (m_table->selectionModel()->isRowSelected(row)) {
                rows << row;
            }
        }
        return rows;
    }
    // Leaves room at the right of the columns, and answers a place there in this row.
    QPoint behindTheColumns(int row) {
        m_table->setColumns({{.width = 100}, {.width = 88}});
        const QRect cell = m_table->visualRect(m_model.index(row, 1));
        return {(cell.right() + m_table->viewport()->width()) / 2, cell.center().y()};
    }
    // The edge of a row's bar, where the ring of the cursor is.
    QColor edge(int row) {
        const QRect rect = m_table->visualRect(m_model.index(row, 1));
        const QPoint at = m_table->viewport()->mapTo(&m_window, QPoint(rect.right() - 60, rect.top()));
        return drawn(m_window).pixelColor(at * 2 + QPoint(0, 1));
    }
    bool isRinged(int row) {
        return edge(row) != (row % 2 == 1 ? Tokens::current().alt : Tokens::current().base);
    }
    HeaderView& header() { return *qobject_cast<HeaderView*>(m_table->header()); }
    QColor ground(int row) {
        const QRect rect = m_table->visualRect(m_model.index(row, 1));
        const QPoint corner = m_table->viewport()->mapTo(&m_window, rect.topRight() + QPoint(-11, 5));
        return drawn(m_window).pixelColor(corner * 2);
    }

    QStandardItemModel m_model;
    QWidget m_window;
    TableView* m_table = nullptr;
    QLineEdit* m_field = nullptr;
};

TEST_F(TableTest, RowsAreThirtyHighBelowAHeaderOfTwentyEightAndFour) {
    EXPECT_EQ(m_table->visualRect(m_model.index(0, 0)).height(), 30);
    EXPECT_EQ(m_table->header()->height(), 32);
}

TEST_F(TableTest, TheSelectionIsBrightWithFocusAndQuietWithout) {
    select(1);
    EXPECT_EQ(ground(1), Tokens::current().sel);
    m_field->setFocus();
    EXPECT_EQ(ground(1), Tokens::current().selIdle);
}

TEST_F(TableTest, EverySecondRowHasItsGround) {
    m_table->clearSelection();
    EXPECT_EQ(ground(0), Tokens::current().base);
    EXPECT_EQ(ground(1), Tokens::current().alt);
}

TEST_F(TableTest, NeighbouringSelectedRowsJoinIntoOneBlock) {
    const auto cornerBetween = [&] {
        const QRect row = m_table->visualRect(m_model.index(2, 0));
        const QPoint corner = m_table->viewport()->mapTo(&m_window, QPoint(8, row.top()));
        return drawn(m_window).pixelColor(corner * 2 + QPoint(1, 1));
    };
    select(2);
    EXPECT_NE(cornerBetween(), Tokens::current().sel);
    m_table->selectionModel()->select(m_model.index(1, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(cornerBetween(), Tokens::current().sel);
}

TEST_F(TableTest, TabLeavesTheTable) {
    select(0);
    QTest::keyClick(m_table, Qt::Key_Tab);
    EXPECT_TRUE(m_field->hasFocus());
}

TEST_F(TableTest, ArrowsHomeAndEndMoveAndShiftExtends) {
    select(1);
    QTest::keyClick(m_table, Qt::Key_Down);
    EXPECT_EQ(currentRow(), 2);
    QTest::keyClick(m_table, Qt::Key_End);
    EXPECT_EQ(currentRow(), 5);
    QTest::keyClick(m_table, Qt::Key_Home);
    EXPECT_EQ(currentRow(), 0);
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(m_table->selectionModel()->selectedRows().size(), 2);
    QTest::keyClick(m_table, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_table->selectionModel()->selectedRows().size(), 6);
}

TEST_F(TableTest, WithNothingSelectedAnArrowTakesTheRowAtItsEnd) {
    for (const auto& [key, row] : {std::pair{Qt::Key_Down, 0},
                                   {Qt::Key_Home, 0},
                                   {Qt::Key_PageDown, 0},
                                   {Qt::Key_Up, 5},
                                   {Qt::Key_End, 5},
                                   {Qt::Key_PageUp, 5}}) {
        for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier}) {
            select(3);
            m_table->clearSelection();
            QTest::keyClick(m_table, key, modifier);
            EXPECT_EQ(selectedRows(), QList{row}) << key;
            EXPECT_EQ(currentRow(), row) << key;
        }
    }
}

TEST_F(TableTest, FromWhereControlHasLedTheCursorAnArrowGoesOn) {
    select(1);
    m_table->clearSelection();
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_TRUE(selectedRows().isEmpty());
    QTest::keyClick(m_table, Qt::Key_Down);
    EXPECT_EQ(selectedRows(), QList{3});
    QTest::keyClick(m_table, Qt::Key_Up, Qt::ControlModifier);
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(5) + QPoint(0, 40));
    QTest::keyClick(m_table, Qt::Key_Down);
    EXPECT_EQ(selectedRows(), QList{0}) << "a click is a new beginning";
}

TEST_F(TableTest, InATableWithoutRowsTheArrowsDoNothing) {
    m_model.removeRows(0, m_model.rowCount());
    QTest::keyClick(m_table, Qt::Key_Down);
    EXPECT_FALSE(m_table->currentIndex().isValid());
}

TEST_F(TableTest, AKeyThatMovesTheCursorShowsItAfterAClickToo) {
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {},
                      m_table->visualRect(m_model.index(1, 0)).center());
    ASSERT_FALSE(isRinged(2));
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), QList{1});
    EXPECT_TRUE(isRinged(2));
    EXPECT_FALSE(isRinged(3));
}

TEST_F(TableTest, AmongSelectedRowsTheCursorIsWhiteWhileControlLeadsIt) {
    const auto isWhite = [&](int row) {
        const QRect rect = m_table->visualRect(m_model.index(row, 1));
        const QPoint at = m_table->viewport()->mapTo(&m_window, QPoint(rect.right() - 60, rect.top() + 3));
        return drawn(m_window).pixelColor(at * 2) == QColor(Qt::white);
    };
    select(1);
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_FALSE(isWhite(3));
    QTest::keyClick(m_table, Qt::Key_Up, Qt::ControlModifier);
    ASSERT_EQ(selectedRows(), (QList{1, 2, 3}));
    EXPECT_TRUE(isWhite(2));
    QTest::keyClick(m_table, Qt::Key_Up);
    EXPECT_FALSE(isWhite(1)) << "one selected row is the cursor itself";
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(m_table, Qt::Key_E);
    ASSERT_EQ(selectedRows(), QList{4});
    EXPECT_FALSE(isWhite(4)) << "so is one that letters have found";
}

TEST_F(TableTest, TheCursorStaysWithItsRowWhenTheOrderChanges) {
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(0, Qt::AscendingOrder);
    select(1);
    const QString name = m_table->currentIndex().data().toString();
    m_table->sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(m_table->currentIndex().data().toString(), name);
    EXPECT_EQ(selectedRows(), QList{currentRow()});
    EXPECT_NE(currentRow(), 1);
}

TEST_F(TableTest, BehindTheLastColumnAClickIsOneOnTheRow) {
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(2));
    EXPECT_EQ(selectedRows(), QList{2});
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::ShiftModifier, behindTheColumns(4));
    EXPECT_EQ(selectedRows(), (QList{2, 3, 4}));
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::ControlModifier, behindTheColumns(3));
    EXPECT_EQ(selectedRows(), (QList{2, 4}));
}

TEST_F(TableTest, BehindTheLastColumnADoubleClickIsOneOnTheRow) {
    QSignalSpy doubled(m_table, &QAbstractItemView::doubleClicked);
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(2));
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(2));
    ASSERT_EQ(doubled.size(), 1);
    EXPECT_EQ(doubled.front().front().toModelIndex().row(), 2);
}

TEST_F(TableTest, BehindTheLastColumnTheMenuIsThatOfTheRow) {
    QSignalSpy wanted(m_table, &TableView::menuWanted);
    const QPoint at = behindTheColumns(3);
    QTest::mouseClick(m_table->viewport(), Qt::RightButton, {}, at);
    emit m_table->customContextMenuRequested(at);
    EXPECT_EQ(selectedRows(), QList{3});
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_TRUE(wanted.front().front().toBool());
}

TEST_F(TableTest, ADragBehindTheLastColumnSelectsTheRowsItPasses) {
    const QPoint from = behindTheColumns(1);
    QTest::mousePress(m_table->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(m_table->viewport(), behindTheColumns(2));
    QTest::mouseMove(m_table->viewport(), behindTheColumns(4));
    QTest::mouseRelease(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(4));
    EXPECT_EQ(selectedRows(), (QList{1, 2, 3, 4}));
}

TEST_F(TableTest, BelowTheRowsAClickStillClearsTheSelection) {
    select(1);
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, behindTheColumns(5) + QPoint(0, 40));
    EXPECT_TRUE(selectedRows().isEmpty());
}

// The header by keyboard

TEST_F(TableTest, ShiftTabGoesFromTheRowsToTheSortedColumnsHeading) {
    m_table->header()->setSortIndicator(1, Qt::DescendingOrder);
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(header().hasFocus());
    EXPECT_EQ(header().focusedColumn(), 1);
}

TEST_F(TableTest, TabAndDownGoFromTheHeaderToTheRows) {
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down}) {
        QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(&header(), key);
        EXPECT_TRUE(m_table->hasFocus()) << key;
        EXPECT_EQ(header().focusedColumn(), -1) << key;
    }
}

TEST_F(TableTest, ShiftTabGoesFromTheHeaderToWhatStandsBeforeTheTable) {
    auto* const before = new QLineEdit;
    qobject_cast<QHBoxLayout*>(m_window.layout())->insertWidget(0, before);
    before->show();
    QWidget::setTabOrder(m_field, before);
    QWidget::setTabOrder(before, m_table);
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&header(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(before->hasFocus());
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(m_table->hasFocus()) << "forwards the rows come first";
    QTest::keyClick(m_table, Qt::Key_Tab);
    EXPECT_TRUE(m_field->hasFocus());
}

TEST_F(TableTest, ArrowsHomeAndEndChooseAColumnAndStopAtTheEdges) {
    m_table->header()->setSortIndicator(0, Qt::AscendingOrder);
    m_table->header()->moveSection(0, 1); // the second column stands first
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(header().focusedColumn(), 0);
    for (const auto& [key, column] : {std::pair{Qt::Key_Right, 0},
                                      {Qt::Key_Left, 1},
                                      {Qt::Key_Left, 1},
                                      {Qt::Key_End, 0},
                                      {Qt::Key_Home, 1}}) {
        QTest::keyClick(&header(), key);
        EXPECT_EQ(header().focusedColumn(), column) << key;
    }
}

TEST_F(TableTest, SpaceAndReturnSortLikeAClickOnTheHeading) {
    m_model.setHeaderData(1, Qt::Horizontal, int(Qt::DescendingOrder), Qt::InitialSortOrderRole);
    m_table->header()->setSortIndicator(0, Qt::AscendingOrder);
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    for (const auto& [key, order] : {std::pair{Qt::Key_Space, Qt::DescendingOrder},
                                     {Qt::Key_Return, Qt::AscendingOrder},
                                     {Qt::Key_Enter, Qt::DescendingOrder}}) {
        QTest::keyClick(&header(), key);
        EXPECT_EQ(header().sortIndicatorOrder(), order) << key;
    }
    QTest::keyClick(&header(), Qt::Key_Right);
    EXPECT_EQ(header().sortIndicatorSection(), 0) << "choosing alone sorts nothing";
    QTest::keyClick(&header(), Qt::Key_Space);
    EXPECT_EQ(header().sortIndicatorSection(), 1);
    EXPECT_EQ(header().sortIndicatorOrder(), Qt::DescendingOrder) << "the largest first";
}

TEST_F(TableTest, AKeyThatIsHeldDownSortsOnce) {
    m_table->header()->setSortIndicator(0, Qt::AscendingOrder);
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    for (const bool repeats : {false, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", repeats);
        QCoreApplication::sendEvent(&header(), &press);
    }
    EXPECT_EQ(header().sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(TableTest, OtherArrowsInTheHeaderLeaveTheRowsAlone) {
    select(2);
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    for (const auto key : {Qt::Key_Up, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End}) {
        QTest::keyClick(&header(), key);
        EXPECT_EQ(selectedRows(), QList{2}) << key;
        EXPECT_EQ(currentRow(), 2) << key;
    }
}

TEST_F(TableTest, TheChosenHeadingWearsTheRing) {
    const auto isRingedAt = [&](int column) {
        const QPoint at(header().sectionViewportPosition(column) + 3, header().height() / 2);
        const QPoint place = header().viewport()->mapTo(&m_window, at);
        return drawn(m_window).pixelColor(place * 2 + QPoint(1, 0)) != Tokens::current().base;
    };
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&header(), Qt::Key_Home);
    EXPECT_TRUE(isRingedAt(0));
    EXPECT_FALSE(isRingedAt(1));
    QTest::keyClick(&header(), Qt::Key_Right);
    EXPECT_FALSE(isRingedAt(0));
    EXPECT_TRUE(isRingedAt(1));
    QTest::keyClick(&header(), Qt::Key_Tab);
    EXPECT_FALSE(isRingedAt(1));
}

TEST_F(TableTest, AssistiveToolsMeetTheChosenHeading) {
    m_model.setHeaderData(1, Qt::Horizontal, "Sorted, largest first", Qt::AccessibleDescriptionRole);
    m_table->header()->setSortIndicator(1, Qt::DescendingOrder);
    auto* const met = QAccessible::queryAccessibleInterface(&header());
    EXPECT_EQ(met->text(QAccessible::Name), "Column headers");
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(met->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(met->text(QAccessible::Name), "Size");
    EXPECT_EQ(met->text(QAccessible::Description), "Sorted, largest first");
    EXPECT_TRUE(met->state().focused);
    QTest::keyClick(&header(), Qt::Key_Left);
    EXPECT_EQ(met->text(QAccessible::Name), "Name");
    EXPECT_EQ(met->text(QAccessible::Description), "");
}

TEST_F(TableTest, AHeaderThatGoesWithTheLastRowGivesTheFocusToTheTable) {
    m_table->setEmptyState(new EmptyState("magnifyingglass", "Nothing", "No trees."));
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    m_model.removeRows(0, m_model.rowCount());
    EXPECT_TRUE(m_table->hasFocus());
    QTest::keyClick(m_table, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(m_field->hasFocus()) << "past what cannot be seen";
}

// Type-ahead

TEST_F(TableTest, TypedLettersFindARow) {
    select(0);
    QTest::keyClicks(m_table, "cy");
    EXPECT_EQ(currentRow(), 3);
}

TEST_F(TableTest, TheSameLetterStepsThroughItsRowsAndWraps) {
    select(0);
    QTest::keyClick(m_table, Qt::Key_B);
    EXPECT_EQ(currentRow(), 1);
    QTest::keyClick(m_table, Qt::Key_B);
    EXPECT_EQ(currentRow(), 5);
    QTest::keyClick(m_table, Qt::Key_B);
    EXPECT_EQ(currentRow(), 1);
}

TEST_F(TableTest, TypedLettersSearchTheColumnThatIsTold) {
    m_model.item(4, 1)->setText("Large");
    m_table->setTypeAheadColumn(1);
    select(0);
    QTest::keyClick(m_table, Qt::Key_L);
    EXPECT_EQ(currentRow(), 4);
}

TEST_F(TableTest, NothingTypedLeadsNowhere) {
    select(2);
    m_table->keyboardSearch({});
    EXPECT_EQ(currentRow(), 2);
}

TEST_F(TableTest, SpaceIsToldAndKeepsTheSelection) {
    QSignalSpy pressed(m_table, &TableView::spacePressed);
    select(2);
    QTest::keyClick(m_table, Qt::Key_Space);
    EXPECT_EQ(pressed.size(), 1);
    EXPECT_TRUE(m_table->selectionModel()->isRowSelected(2, {}));
}

TEST_F(TableTest, SpaceWhileTypingBelongsToTheWord) {
    m_model.item(4, 0)->setText("El Capitan");
    select(0);
    QSignalSpy pressed(m_table, &TableView::spacePressed);
    QTest::keyClicks(m_table, "el c");
    EXPECT_EQ(currentRow(), 4);
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(TableTest, TheEmptyStateCoversAnEmptyTableOnly) {
    auto* empty = new EmptyState("magnifyingglass", "Nothing", "No trees.");
    m_table->setEmptyState(empty);
    EXPECT_TRUE(empty->isHidden());
    m_model.removeRows(0, m_model.rowCount());
    EXPECT_TRUE(empty->isVisible());
    EXPECT_EQ(empty->size(), m_table->size());
    m_model.appendRow(new QStandardItem("Ash"));
    EXPECT_TRUE(empty->isHidden());
}

TEST_F(TableTest, ColumnsFillTheWidthWheneverItChanges) {
    const auto sum = [&] { return m_table->header()->sectionSize(0) + m_table->header()->sectionSize(1); };
    EXPECT_EQ(sum(), m_table->viewport()->width());
    m_window.resize(900, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(sum(), m_table->viewport()->width());
    EXPECT_EQ(m_table->header()->sectionSize(1), 88);
}

TEST_F(TableTest, AWidthThatTheUserDragsIsKept) {
    m_table->header()->resizeSection(1, 120);
    m_window.resize(900, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_table->header()->sectionSize(1), 120);
    EXPECT_EQ(m_table->header()->sectionSize(0), m_table->viewport()->width() - 120);
}

TEST_F(TableTest, ASpinnerInACellMovesOnlyWhileItIsThere) {
    const int before = m_table->spinnerStep();
    m_model.item(0, 1)->setData(true, kBusyRole);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_table->spinnerStep() != before; }, 5000));
    m_model.item(0, 1)->setData(false, kBusyRole);
    m_table->viewport()->repaint();
    EXPECT_FALSE(m_table->isSpinning());
}

TEST_F(TableTest, ASpinnerInACellStandsStillWithReducedMotion) {
    Look::setReducedMotion(true);
    m_model.item(0, 1)->setData(true, kBusyRole);
    m_table->viewport()->repaint();
    EXPECT_FALSE(m_table->isSpinning());
}

TEST_F(TableTest, ATextThatDoesNotFitIsElidedWhereTheModelSays) {
    const TableDelegate delegate(m_table);
    m_model.item(0, 0)->setText("com.oldink.Sketchpad.sync.and.more.words.behind.it");
    const QRect cell(0, 0, 120, 30);
    const auto atEnd = delegate.layout(cell, m_model.index(0, 0));
    EXPECT_TRUE(atEnd.elided);
    EXPECT_TRUE(atEnd.shown.endsWith(QChar(0x2026)));
    m_model.item(0, 0)->setData(int(Qt::ElideMiddle), kElideRole);
    const auto inMiddle = delegate.layout(cell, m_model.index(0, 0));
    EXPECT_TRUE(inMiddle.elided);
    EXPECT_TRUE(inMiddle.shown.endsWith("t"));
    EXPECT_FALSE(delegate.layout(QRect(0, 0, 900, 30), m_model.index(0, 0)).elided);
}

TEST_F(TableTest, ATrailingSymbolFollowsItsTextAndStaysInTheCell) {
    const TableDelegate delegate(m_table);
    m_model.item(0, 0)->setData("bag.fill", kTrailingSymbolRole);
    const auto roomy = delegate.layout(QRect(0, 0, 400, 30), m_model.index(0, 0));
    EXPECT_LT(roomy.trailing.left(), 120);
    m_model.item(0, 0)->setText("A name that is much longer than its column");
    const auto tight = delegate.layout(QRect(0, 0, 120, 30), m_model.index(0, 0));
    EXPECT_LE(tight.trailing.right(), 120);
    EXPECT_TRUE(tight.elided);
}

} // namespace
} // namespace quillane
