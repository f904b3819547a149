#include "Announced.h"
#include "Components/Announcement.h"
#include "Components/Badge.h"
#include "Components/ListRow.h"
#include "Components/PaneScroll.h"
#include "Components/Panel.h"
#include "Components/Picker.h"
#include "Components/SearchField.h"
#include "Components/SegmentedControl.h"
#include "Components/Sheet.h"
#include "Components/SidebarView.h"
#include "Components/Stat.h"
#include "Components/SymbolButton.h"
#include "Components/SymbolView.h"
#include "Components/ToolTipText.h"
#include "Gallery.h"
#include "Panes/DetailList.h"
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
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace quillane {
namespace {

QAccessible::Role roleOf(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

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

TEST(Accessibility, AWindowIsToldFromWhatMerelyHoldsOthers) {
    QWidget window;
    auto* const inner = new QWidget(&window);
    EXPECT_EQ(roleOf(window), QAccessible::Window);
    EXPECT_EQ(roleOf(*inner), QAccessible::Client);
    inner->setFocusPolicy(Qt::StrongFocus);
    EXPECT_EQ(roleOf(*inner), QAccessible::Grouping) << "the focus can come to it";
}

TEST(Accessibility, APopoverIsADialog) {
    QWidget popover(nullptr, Qt::Popup);
    EXPECT_EQ(roleOf(popover), QAccessible::Dialog);
}

TEST(Accessibility, WhatHoldsOthersAndHasANameIsAGroup) {
    QWidget window;
    auto* const group = new QWidget(&window);
    new QWidget(group);
    group->setAccessibleName("Files to show");
    EXPECT_EQ(roleOf(*group), QAccessible::Grouping);
}

TEST(Accessibility, ADrawingWithANameIsAPictureAndABadgeIsItsWord) {
    QWidget window;
    auto* const drawing = new QWidget(&window);
    drawing->setAccessibleName("Succeeded");
    EXPECT_EQ(roleOf(*drawing), QAccessible::Graphic);
    auto* const badge = Badge::permanent(&window);
    EXPECT_EQ(roleOf(*badge), QAccessible::StaticText);
    EXPECT_EQ(nameOf(badge), "PERMANENT");
}

TEST(Accessibility, APaneThatScrollsIsAGroup) {
    PaneScroll pane("Application details", new QWidget);
    EXPECT_EQ(roleOf(pane), QAccessible::Grouping);
}

TEST(Accessibility, ASheetIsADialogAndSaysThatItBlocks) {
    QWidget window;
    Sheet sheet({200, 100}, &window);
    auto* const met = QAccessible::queryAccessibleInterface(&sheet);
    EXPECT_EQ(met->role(), QAccessible::Dialog);
    EXPECT_TRUE(met->state().modal);
    sheet.setWindowModality(Qt::NonModal);
    EXPECT_FALSE(met->state().modal);
}

TEST(Accessibility, AToolTipIsReadWithoutItsTags) {
    QPushButton button("Stop");
    setToolTipText(button, "Unloads <it> now");
    EXPECT_NE(button.toolTip(), "Unloads <it> now");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Description),
              "Unloads <it> now");
}

TEST(Accessibility, SegmentsAreOneChoiceOfSeveral) {
    SegmentedControl lenses("Files to show", {"Large", "Old"});
    lenses.show();
    QList<int> told;
    QObject::connect(&lenses, &SegmentedControl::currentChanged, [&](int index) { told << index; });
    auto* const control = QAccessible::queryAccessibleInterface(&lenses);
    ASSERT_EQ(control->childCount(), 2);
    auto* const other = control->child(1);
    EXPECT_EQ(other->role(), QAccessible::RadioButton);
    EXPECT_FALSE(other->state().checked);
    for (int i = 0; i < 2; ++i) { // one of them stays whatever is toggled
        other->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_TRUE(other->state().checked);
        EXPECT_FALSE(control->child(0)->state().checked);
        EXPECT_EQ(told, QList<int>{1});
    }
    lenses.setEnabled(false);
    EXPECT_TRUE(other->actionInterface()->actionNames().isEmpty());
}

TEST(Accessibility, WhatIsSelectedInTheOpenListOfAPickerIsChosen) {
    Picker picker("Frequency", {"Hourly", "Daily", "Weekly"});
    picker.setCurrentIndex(1);
    QList<int> activated;
    QObject::connect(&picker, &QComboBox::activated, [&](int index) { activated << index; });
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&picker)->text(QAccessible::Description), "Frequency");
    picker.showPopup();
    auto* const entries = QAccessible::queryAccessibleInterface(picker.view());
    ASSERT_EQ(entries->childCount(), 3);
    entries->child(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QCoreApplication::processEvents();
    EXPECT_EQ(picker.currentText(), "Weekly");
    EXPECT_EQ(activated, QList<int>{2});
    EXPECT_FALSE(picker.view()->isVisible());
}

TEST(Accessibility, WhoMovesThroughTheOpenListOfAPickerChoosesNothingYet) {
    Picker picker("Frequency", {"Hourly", "Daily", "Weekly"});
    picker.setCurrentIndex(1);
    picker.showPopup();
    QTest::keyClick(picker.view(), Qt::Key_Down);
    QCoreApplication::processEvents();
    EXPECT_EQ(picker.view()->currentIndex().row(), 2);
    EXPECT_EQ(picker.currentText(), "Daily");
    EXPECT_TRUE(picker.view()->isVisible());
    picker.hidePopup();
}

// The list of files of a pane stands for all lists that are read and not selected.
class ReadList : public testing::Test {
  protected:
    ReadList() {
        list.setRows({row("a"), row("b"), row("c")});
        list.resize(300, 300);
        list.show();
    }
    static DetailList::Row row(const std::string& name) {
        return {.url = FileURL("/" + name),
                .symbol = "doc",
                .title = QString::fromStdString(name),
                .subtitle = "Caches",
                .size = "1 KB"};
    }
    static QAccessibleInterface* met(DetailList& list) {
        return QAccessible::queryAccessibleInterface(&list);
    }
    QStringList names() {
        QStringList found;
        for (int i = 0; i < met(list)->childCount(); ++i) {
            found << met(list)->child(i)->text(QAccessible::Name);
        }
        return found;
    }
    DetailList list{"Files"};
};

TEST_F(ReadList, OffersTheFocusOfItsRowsAndNoSelection) {
    EXPECT_EQ(met(list)->role(), QAccessible::List);
    EXPECT_EQ(met(list)->text(QAccessible::Name), "Files");
    EXPECT_EQ(met(list)->tableInterface(), nullptr);
    EXPECT_EQ(names(), QStringList({"a, Caches, 1 KB", "b, Caches, 1 KB", "c, Caches, 1 KB"}));
    auto* const row = met(list)->child(1);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_FALSE(row->state().selectable);
    EXPECT_EQ(row->parent(), met(list));
    EXPECT_EQ(met(list)->indexOfChild(row), 1);
    EXPECT_EQ(met(list)->child(1), row) << "one thing is met as one";
    EXPECT_EQ(met(list)->child(3), nullptr);
    EXPECT_EQ(row->actionInterface()->actionNames(),
              QStringList{QAccessibleActionInterface::setFocusAction()});
    row->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(list.currentIndex().row(), 1);
}

TEST_F(ReadList, WhatWasMetOfARowStaysWithItAndGoesWithIt) {
    auto* const third = met(list)->child(2);
    const auto id = QAccessible::uniqueId(met(list)->child(1));
    list.setRows({row("a"), row("c")});
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_EQ(met(list)->child(1), third);
    EXPECT_EQ(names(), QStringList({"a, Caches, 1 KB", "c, Caches, 1 KB"}));
    list.setRows({});
    EXPECT_EQ(met(list)->childCount(), 0);
    list.setRows({row("d")});
    EXPECT_EQ(names(), QStringList{"d, Caches, 1 KB"});
}

TEST_F(ReadList, WhatLiesUnderAPointIsItsRow) {
    auto* const row = met(list)->child(1);
    const QPoint middle = row->rect().center();
    EXPECT_EQ(met(list)->childAt(middle.x(), middle.y()), row);
    EXPECT_EQ(met(list)->childAt(-50, -50), nullptr);
}

TEST(Accessibility, WhatIsAnnouncedComesToBeShownAsANotificationOfItsWindow) {
    QWidget window;
    auto* const stage = new QWidget(&window);
    window.show();
    const Announced announced;
    announce(*stage, "1 GB reclaimed");
    EXPECT_EQ(stage->accessibleName(), "1 GB reclaimed");
    speak(*stage, "Scan finished");
    EXPECT_EQ(stage->accessibleName(), "1 GB reclaimed") << "it keeps its name";
    EXPECT_EQ(announced.texts(), QStringList({"1 GB reclaimed", "Scan finished"}));
    EXPECT_EQ(window.findChildren<QWidget*>().size(), 2) << "one for all";
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
