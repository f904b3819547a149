#include "Components/ListRow.h"
#include "Components/Panel.h"
#include "Components/SearchField.h"
#include "Components/SidebarView.h"
#include "Components/Stat.h"
#include "Components/SymbolButton.h"
#include "Components/SymbolView.h"
#include "Gallery.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>
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

TEST(Accessibility, TheButtonsOfTheSearchFieldHaveNamesTooltipsAndRoomToHit) {
    SearchField field;
    field.show();
    field.setText("a");
    QStringList names;
    for (auto* const button : field.findChildren<QToolButton*>()) {
        names << nameOf(button);
        EXPECT_EQ(button->toolTip(), names.last());
        EXPECT_GE(button->width(), 26);
        EXPECT_GE(button->height(), 26);
        EXPECT_TRUE(field.rect().contains(button->geometry()));
    }
    EXPECT_EQ(names, QStringList({"Search", "Clear"}));
}

TEST(Accessibility, TheMagnifierLeadsIntoTheField) {
    SearchField field;
    field.setText("a");
    auto* const magnifier = field.findChildren<QToolButton*>().front();
    magnifier->click();
    EXPECT_EQ(field.selectedText(), "a");
    EXPECT_EQ(field.text(), "a");
}

TEST(Accessibility, AStatisticIsReadOnce) {
    Stat stat("Combined Size", "9 MB");
    auto* const interface = QAccessible::queryAccessibleInterface(&stat);
    EXPECT_EQ(interface->role(), QAccessible::StaticText);
    EXPECT_EQ(interface->text(QAccessible::Name), "Combined Size, 9 MB");
    EXPECT_EQ(interface->childCount(), 0);
    EXPECT_EQ(interface->child(0), nullptr);
}

TEST(Accessibility, AListRowIsReadOnceWithWhatItsSymbolMeans) {
    ListRow row("lock.fill", "app.helper", "Privileged Helper", "52 KB");
    auto* const interface = QAccessible::queryAccessibleInterface(&row);
    EXPECT_EQ(interface->text(QAccessible::Name), "app.helper, Privileged Helper, 52 KB");
    EXPECT_EQ(interface->childCount(), 0);
    row.setSymbolHelp("Needs admin rights to remove");
    EXPECT_EQ(interface->text(QAccessible::Name),
              "app.helper, Privileged Helper, 52 KB, Needs admin rights to remove");
    EXPECT_EQ(row.findChild<SymbolView*>()->toolTip(), "Needs admin rights to remove");
}

TEST(Accessibility, CardsAndPanelsAreGroupsAndWhatTheyHoldIsMet) {
    Panel panel("Files", new QCheckBox("Include"));
    auto* const group = QAccessible::queryAccessibleInterface(&panel);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name), "Files");
    EXPECT_GT(group->childCount(), 0);
    Card card;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&card)->role(), QAccessible::Grouping);
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
