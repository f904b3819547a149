"""Everything that can be met in the window: each control has a name, a role and an action, each table its rows, columns
and selection."""

import pyatspi
from gi.repository import GLib

from reader import TABLES, Wrong, act, actions, children, has, words

SECTIONS = ("Overview", "Applications", "Orphaned Files", "Developer", "Files", "Duplicates", "Startup")
NOTHING_SAID = ("filler", "unknown", "invalid", "")
MAY_BE_EMPTY = ("Owner", "Version")  # what nobody knows is told by an empty cell
LOOKED_AT = 30  # rows of a table
LOOKS = 10  # at what does not stand still


def faults(what):
    role = what.getRoleName()
    offered = actions(what)
    works = has(what, pyatspi.STATE_FOCUSABLE) or offered
    if role in NOTHING_SAID and (works or what.name):
        yield f"{words(what)} has no role"
    if works and not what.name and role != "scroll bar":  # which belongs to what it scrolls
        yield f"{words(what)} has no name"
    is_worked_by_its_parts = role in TABLES or role == "list"
    can_be_reached = has(what, pyatspi.STATE_FOCUSABLE) and has(what, pyatspi.STATE_ENABLED)
    if can_be_reached and not offered and not is_worked_by_its_parts:
        yield f"{words(what)} can be reached and offers nothing"
    if "<" in what.name + what.description:
        yield f"{words(what)} reads markup: {what.description}"
    if role == "list item" and "Toggle" in offered and not has(what, pyatspi.STATE_SELECTABLE):
        yield f"{words(what)} offers to be selected and can't be"
    if role == "progress bar" and what.queryValue().maximumValue <= what.queryValue().minimumValue:
        yield f"{words(what)} tells no range"


def faults_of_table(table):
    rows = table.queryTable()
    titles = [rows.getColumnDescription(column) for column in range(rows.nColumns)]
    if not all(titles) or len(set(titles)) != len(titles):
        yield f"{words(table)} has the headings {titles}"
    if table.childCount != (rows.nRows + 1) * rows.nColumns:
        yield f"{words(table)}: {rows.nRows} rows and {rows.nColumns} columns, but {table.childCount} cells"
    for row in list(range(rows.nRows))[:LOOKED_AT]:
        for column, title in enumerate(titles):
            cell = rows.getAccessibleAt(row, column)
            place = f"{words(table)}, row {row}, {title}"
            if cell.getRoleName() != "table cell" or "Toggle" not in actions(cell):
                yield f"{place}: {words(cell)} offers {actions(cell)}"
            if not any(letter.isalnum() for letter in cell.name) and cell.name != "—":
                if cell.name or title not in MAY_BE_EMPTY:
                    yield f"{place} says {ascii(cell.name)}"
            index = cell.getIndexInParent()
            if (rows.getRowAtIndex(index), rows.getColumnAtIndex(index)) != (row, column):
                yield f"{place} does not know where it is"


def look_around(reader, complaints, place):
    """Complains of all that is shown now; says how much that is. What goes while it is looked at, as a scan that ends
    replaces it, has all be looked at anew."""
    for _ in range(LOOKS):
        try:
            met = reader.all()
            found = [fault for what in met for fault in faults(what)]
            found += [fault for what in met if what.getRoleName() in TABLES for fault in faults_of_table(what)]
        except GLib.Error:
            continue
        complaints.extend(f"{place}: {fault}" for fault in found)
        return len(met)
    raise Wrong(f"{place} never stands still")


def select_rows(reader, complaints, section):
    """One row and then a second by their cells, and the pane follows; then none."""
    table = reader.table()
    rows = table.queryTable()
    if rows.nRows < 2:
        complaints.append(f"{section}: too few rows to select two of them")
        return 0
    reader.select(table, 0)
    met = look_around(reader, complaints, f"{section}, one row")
    reader.select(table, 1)
    if sorted(rows.getSelectedRows()) != [0, 1]:
        complaints.append(f"{section}: selected are {rows.getSelectedRows()}")
    reader.meet("2 …", "label")
    met += look_around(reader, complaints, f"{section}, two rows")
    for row in (0, 1):
        act(rows.getAccessibleAt(row, 1), "Toggle")
    reader.wait(lambda: not rows.getSelectedRows(), f"no row of {section} to be selected")
    return met


def walk(reader, complaints):
    met = 0
    for section in SECTIONS:
        reader.go_to(section)
        if section != "Overview":
            met += select_rows(reader, complaints, section)
        met += look_around(reader, complaints, section)
    frame = reader.windows()[0]
    if frame.getRoleName() != "frame":
        complaints.append(f"the window is a {frame.getRoleName()}")
    selected = [c.name for c in children(reader.meet("Sections", "list")) if has(c, pyatspi.STATE_SELECTED)]
    if [name.split(",")[0] for name in selected] != [SECTIONS[-1]]:
        complaints.append(f"in the sidebar is selected: {selected}")
    return f"{met} things met in {len(SECTIONS)} sections."
