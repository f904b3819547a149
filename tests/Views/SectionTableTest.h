#pragma once
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/SidebarView.h"
#include "Components/StatusRow.h"
#include "MenuTest.h"
#include "Shell/Sidebar.h"
#include "Tables/SectionTable.h"
#include <QAccessible>
#include <QHeaderView>

namespace quillane {

// The window in a section that is a table, `startsIn`.
class SectionTableTest : public MenuTest {
  protected:
    explicit SectionTableTest(LibrarySection section) { startsIn = section; }

    QStringList headings() const {
        QStringList titles;
        for (int column = 0; column < table().model()->columnCount(); ++column) {
            titles << table().model()->headerData(column, Qt::Horizontal).toString();
        }
        return titles;
    }
    // The texts of a column, from the top.
    QStringList column(int number) const {
        QStringList texts;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            texts << cell(row, number);
        }
        return texts;
    }
    // The names after a click on this header.
    QStringList orderBy(int column) {
        clickHeader(column);
        turn();
        return names();
    }
    // What assistive tools say of each heading's order, from the left.
    QStringList spokenOrders() const {
        auto* const met = QAccessible::queryAccessibleInterface(&table());
        QStringList spoken;
        for (int column = 0; column < table().model()->columnCount(); ++column) {
            auto* const heading = met->child(column); // the headings come before the rows
            EXPECT_EQ(heading->role(), QAccessible::ColumnHeader);
            spoken << heading->text(QAccessible::Description);
        }
        return spoken;
    }
    // The texts below the table that are there, from the left.
    QStringList footer() const {
        const auto* const row = qobject_cast<SectionTable*>(window->content(startsIn))->footer();
        QStringList texts;
        for (const auto* const label : {row->left(), row->extra(), row->right()}) {
            if (label->isVisible()) {
                texts << label->text();
            }
        }
        return texts;
    }
    const EmptyState& emptyState() const { return *table().findChild<EmptyState*>(); }
    // What the window shows takes the focus, and has no name that assistive tools could tell.
    QStringList namelessControls() const {
        QStringList nameless;
        for (auto* const widget : window->findChildren<QWidget*>()) {
            if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() &&
                QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty()) {
                nameless << widget->metaObject()->className();
            }
        }
        return nameless;
    }
    QString badge() const {
        auto* const sections = window->sidebar()->list();
        const auto title = QString::fromUtf8(rawValue(startsIn).data());
        return sections->badge(sections->row(sections->findItems(title, Qt::MatchExactly).front()));
    }
    Date daysAgo(int days) const { return clock.now().addingSeconds(-86'400.0 * days); }
    void protect(const std::vector<FileURL>& urls) {
        for (const auto& url : urls) {
            library.setProtected(url, true);
        }
        turn();
    }
};

} // namespace quillane
