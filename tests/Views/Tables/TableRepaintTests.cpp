#include "Components/PushButton.h"
#include "Tables/TableView.h"
#include <QHeaderView>
#include <QScreen>
#include <QStandardItemModel>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace quillane {
namespace {

// A table whose columns leave room at the right, and what it has really put on the screen: QWidget::grab()
// would paint everything anew.
class TableRepaint : public ::testing::Test {
  protected:
    void SetUp() override {
        m_model.setHorizontalHeaderLabels({"Name", "Size"});
        for (int row = 0; row < 14; ++row) {
            m_model.appendRow(newRow());
        }
        auto* const column = new QVBoxLayout(&m_window);
        column->addWidget(&m_other);
        column->addWidget(&m_table);
        m_table.setModel(&m_model);
        m_table.setColumns({{.width = 120}, {.width = 88}});
        m_table.setSortingEnabled(true);
        m_window.resize(420, 380);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_table.setFocus();
    }

    QList<QStandardItem*> newRow() {
        const QString name = QStringLiteral("Tree %1").arg(m_named++ * 7 % 23, 2);
        return {new QStandardItem(name), new QStandardItem("1 GB")};
    }
    QImage onScreen() const {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents(); // what the first round asked to be painted
        return m_window.screen()
            ->grabWindow(m_window.winId())
            .toImage()
            .copy(QRect(m_table.pos(), m_table.size()));
    }
    QImage paintedAnew() {
        m_table.viewport()->repaint(); // a repaint of the window leaves out what hides it
        m_table.header()->viewport()->repaint();
        return onScreen();
    }

    unsigned upTo(unsigned count) { return static_cast<unsigned>(m_random()) % count; }
    Qt::KeyboardModifiers anyModifiers() {
        return QList<Qt::KeyboardModifiers>{
            {}, {}, Qt::ShiftModifier, Qt::ControlModifier, Qt::ControlModifier | Qt::ShiftModifier}[upTo(5)];
    }
    void pressAnArrow() {
        const auto key = QList{Qt::Key_Up,     Qt::Key_Down, Qt::Key_Down,    Qt::Key_Home,
                               Qt::Key_PageUp, Qt::Key_End,  Qt::Key_PageDown}[upTo(7)];
        QTest::keyClick(&m_table, key, anyModifiers());
    }
    void click() {
        const QRect area = m_table.viewport()->rect();
        const QPoint at(static_cast<int>(upTo(static_cast<unsigned>(area.width()))),
                        static_cast<int>(upTo(static_cast<unsigned>(area.height()))));
        QTest::mouseClick(m_table.viewport(), Qt::LeftButton, anyModifiers(), at);
    }
    void changeRows() {
        const int row = static_cast<int>(upTo(static_cast<unsigned>(m_model.rowCount())));
        switch (upTo(3)) {
        case 0:
            return m_model.item(row, 1)->setText(QStringLiteral("%1 MB").arg(upTo(900)));
        case 1:
            return m_model.insertRow(row, newRow());
        default:
            m_model.removeRow(row);
        }
    }
    void moveFocus() {
        switch (upTo(3)) {
        case 0:
            return m_other.setFocus(Qt::MouseFocusReason);
        case 1:
            return m_table.setFocus(Qt::TabFocusReason);
        default:
            QTest::keyClick(&m_table, Qt::Key_Backtab, Qt::ShiftModifier);
            QTest::keyClick(m_table.header(), upTo(2) == 0 ? Qt::Key_Right : Qt::Key_Space);
        }
    }
    const char* takeAnyStep() {
        switch (upTo(8)) {
        case 0:
            return moveFocus(), "focus";
        case 1:
            return changeRows(), "rows";
        case 2:
            return QTest::keyClick(&m_table, Qt::Key_Space, Qt::ControlModifier), "toggle";
        case 3:
            return m_table.selectionModel()->clearSelection(), "clear";
        case 4:
        case 5:
            return click(), "click";
        default:
            return pressAnArrow(), "arrow";
        }
    }

    std::mt19937 m_random{20}; // the same steps each time
    QStandardItemModel m_model;
    QWidget m_window;
    PushButton m_other{"Other"};
    TableView m_table{"Trees"};
    int m_named = 0;
};

TEST_F(TableRepaint, AfterAnyStepsTheScreenShowsWhatAFullPaintShows) {
    std::set<QByteArray> pictures;
    for (int step = 0; step < 300; ++step) {
        const char* const what = takeAnyStep();
        const QImage shown = onScreen();
        ASSERT_EQ(shown, paintedAnew()) << "step " << step << ", " << what;
        pictures.insert(QByteArray(reinterpret_cast<const char*>(shown.constBits()), shown.sizeInBytes()));
    }
    EXPECT_GT(pictures.size(), 100U) << "the steps must show something";
}

TEST_F(TableRepaint, AClickTakesTheRingFromTheScreenEvenWhereItSelectsNothing) {
    m_other.setFocus();
    m_table.setFocus(Qt::TabFocusReason);
    const QImage ringed = onScreen();
    QTest::mousePress(m_table.header()->viewport(), Qt::RightButton);
    const QImage shown = onScreen();
    EXPECT_NE(shown, ringed);
    EXPECT_EQ(shown, paintedAnew());
}

TEST_F(TableRepaint, ControlAndAnArrowShowTheCursorEvenWhereItCannotMove) {
    m_table.setCurrentIndex(m_model.index(0, 0));
    const QImage before = onScreen();
    QTest::keyClick(&m_table, Qt::Key_Up, Qt::ControlModifier);
    const QImage shown = onScreen();
    EXPECT_NE(shown, before);
    EXPECT_EQ(shown, paintedAnew());
}

} // namespace
} // namespace quillane
