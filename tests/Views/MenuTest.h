#pragma once
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewModel.h"
#include "Tables/TableView.h"
#include "WindowTest.h"
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <algorithm>
#include <string>

namespace quillane {

// The window with what its context menus do: what they hold, what they put on the clipboard, and the review
// that they open.
class MenuTest : public WindowTest {
  protected:
    // What a press of the right button at this place of the rows brings up. It comes before the release, which
    // then belongs to the menu.
    QMenu* menuAt(const QPoint& at) {
        QTest::mousePress(table().viewport(), Qt::RightButton, {}, at);
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, at, table().viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(table().viewport(), &wanted);
        return openMenu();
    }
    QMenu* menuOn(const QString& name) {
        return menuAt(table().visualRect(table().model()->index(rowOf(name), 0)).center());
    }
    QMenu* menuBelowTheRows() { return menuAt(QPoint(100, table().viewport()->height() - 5)); }
    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static void closeMenu() {
        if (auto* const menu = openMenu()) {
            menu->close();
        }
    }

    // As a person reads them; a divider is a dash.
    static QStringList entries(const QMenu* menu) {
        QStringList texts;
        for (const auto* action : menu->actions()) {
            texts << (action->isSeparator() ? "-" : action->text().replace("&&", "&"));
        }
        return texts;
    }
    static QAction* entry(const QMenu* menu, const QString& text) {
        for (auto* action : menu->actions()) {
            if (action->text().replace("&&", "&") == text) {
                return action;
            }
        }
        ADD_FAILURE() << "no entry " << text.toStdString() << " among "
                      << entries(menu).join(" | ").toStdString();
        static QAction none;
        return &none;
    }
    static const QMenu* submenu(const QMenu* menu, const QString& text) { return entry(menu, text)->menu(); }
    void choose(const QMenu* menu, const QString& text) {
        auto* const action = entry(menu, text);
        ASSERT_TRUE(action->isEnabled());
        action->trigger();
    }
    static QString pasted() { return QGuiApplication::clipboard()->text(); }

    void select(const QStringList& names) {
        for (const auto& name : names) {
            click(name, Qt::ControlModifier);
        }
        turn();
    }
    SweepPreviewSheet* sheet() const { return window->removalSheet(); }
    // The paths that are under review, a minus before those that are not ticked.
    QStringList reviewed() {
        turn();
        QStringList paths;
        if (sheet() == nullptr) {
            return paths;
        }
        const auto& removal = window->state().removal.get();
        for (const auto& row : removal->entries) {
            const bool isOut = removal->initiallyExcluded.contains(row.url);
            paths << (isOut ? "-" : "") + QString::fromStdString(row.url.path());
        }
        EXPECT_EQ(sheet()->model().review().includedCount(),
                  static_cast<std::size_t>(
                      std::ranges::count_if(paths, [](const QString& p) { return p[0] != '-'; })));
        return paths;
    }
    std::string label() {
        turn();
        const auto& removal = window->state().removal.get();
        return removal ? removal->label : std::string();
    }
};

} // namespace quillane
