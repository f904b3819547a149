#include "Gallery.h"
#include "SidebarView.h"
#include "SymbolButton.h"
#include "TableRole.h"
#include "TableView.h"
#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

QString nameOf(QWidget* widget) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

bool isControl(const QWidget* widget) {
    return widget->focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QProgressBar*>(widget) != nullptr;
}

// Parts of a control that assistive tools meet as one with it.
bool isPartOfAControl(const QWidget* widget) {
    const QWidget* parent = widget->parentWidget();
    return qobject_cast<const QLineEdit*>(parent) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(parent) != nullptr ||
           qobject_cast<const QComboBox*>(parent) != nullptr || widget->inherits("QScrollBar") ||
           widget->inherits("QComboBoxPrivateContainer") || widget->inherits("QComboBoxListView") ||
           widget->objectName() == QLatin1String("qt_scrollarea_viewport");
}

void expectNames(QWidget& root) {
    int controls = 0;
    for (QWidget* widget : root.findChildren<QWidget*>()) {
        if (isControl(widget) && !isPartOfAControl(widget)) {
            ++controls;
            EXPECT_FALSE(nameOf(widget).isEmpty()) << widget->metaObject()->className();
        }
    }
    EXPECT_GT(controls, 5);
}

TEST(Accessibility, EveryControlOfTheGalleryHasAName) {
    expectNames(*makeGallery());
}

TEST(Accessibility, EveryControlOfASectionHasAName) {
    expectNames(*makeSampleWindow());
}

TEST(Accessibility, ASymbolButtonHasTheSameNameAndTooltip) {
    SymbolButton button("folder", "Reveal in Finder");
    EXPECT_EQ(button.accessibleName(), "Reveal in Finder");
    EXPECT_EQ(button.toolTip(), "Reveal in Finder");
    EXPECT_TRUE(button.text().isEmpty());
}

TEST(Accessibility, ASymbolButtonIsNeverTooSmallToHit) {
    SymbolButton button("xmark", "Dismiss", PushButton::Role::Plain, 12);
    EXPECT_GE(button.sizeHint().width(), 26);
    EXPECT_GE(button.sizeHint().height(), 26);
}

TEST(Accessibility, ASidebarItemReadsItsCount) {
    SidebarView sidebar("Sections");
    sidebar.addSection("Startup", "power");
    EXPECT_EQ(sidebar.item(0)->data(Qt::AccessibleTextRole).toString(), "Startup");
    sidebar.setBadge(0, "3", "Startup, 3 problems", Tint::Orange);
    EXPECT_EQ(sidebar.item(0)->data(Qt::AccessibleTextRole).toString(), "Startup, 3 problems");
    EXPECT_EQ(sidebar.badge(0), "3");
}

TEST(Accessibility, ATableCellReadsItsText) {
    const auto window = makeSampleWindow();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get())); // the rows are laid out
    auto* table = window->findChild<TableView*>("table");
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(table);
    ASSERT_NE(interface, nullptr);
    ASSERT_NE(interface->tableInterface(), nullptr);
    EXPECT_EQ(interface->tableInterface()->rowCount(), table->model()->rowCount());
    EXPECT_EQ(interface->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), "Harbour VM");
}

} // namespace
} // namespace quillane
