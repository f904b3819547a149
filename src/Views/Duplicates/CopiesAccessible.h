#pragma once
#include "Duplicates/CopiesList.h"
#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

namespace quillane {

// What assistive tools meet of the copies: a list of radio buttons, each holding the button that looks at its copy.
// The base gives a list whose rows can only be selected, which would be taken for the choice.
class CopiesAccessible : public QAccessibleWidget {
  public:
    explicit CopiesAccessible(CopiesList* list);
    ~CopiesAccessible() override;

    // Every such list is met so from now on. May be called again.
    static void install();
    // Told to whoever listens: the keyboard has come to the current row's part; this row is or is no longer the choice.
    static void tellFocus(CopiesList& list);
    static void tellChoice(CopiesList& list, const QModelIndex& row);
    // What was met of rows that have gone goes too.
    static void forgetGone(CopiesList& list);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    // A part of a row; made when it is first asked for. Null for none.
    QAccessibleInterface* at(const QModelIndex& row, CopiesList::Part part) const;

  private:
    CopiesList& list() const;
    static CopiesAccessible& of(CopiesList& list);

    using Met = QHash<QPersistentModelIndex, QAccessible::Id>;
    Met& metOf(CopiesList::Part part) const { return part == CopiesList::Part::Choice ? m_choices : m_looks; }
    mutable Met m_choices;
    mutable Met m_looks;
};

} // namespace quillane
