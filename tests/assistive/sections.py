"""What only some sections have: uninstalling, lenses and their search, the copy to keep."""

import pyatspi

from disk import contents
from reader import act, has, words


def uninstall(reader, complaints, volume):
    before = contents(volume)
    reader.go_to("Applications")
    table = reader.table()
    names = [table.queryTable().getAccessibleAt(row, 0).name for row in (0, 1)]
    for row in (0, 1):
        reader.select(table, row)
    reader.press("Uninstall 2 Apps…")
    review = reader.meet("Items to review", "list")
    reviewed = {box.name.rsplit(",", 1)[0] for box in reader.all("check box", review)}
    if reviewed != set(names):
        complaints.append(f"selected are {names}, reviewed {sorted(reviewed)}")
    reader.press("Cancel")
    reader.wait(lambda: reader.find("Items to review") is None, "the review to close")
    if contents(volume) != before:
        complaints.append("a review that was cancelled has moved something")
    return f"A review of {' and '.join(names)} opened and cancelled."


def names_in(table):
    rows = table.queryTable()
    return [rows.getAccessibleAt(row, 0).name for row in range(rows.nRows)]


def search_files(reader, complaints, volume):
    reader.go_to("Files")
    before = names_in(reader.table())
    lens = reader.meet("Screenshots", "radio button")
    reader.toggle(lens)
    reader.wait(lambda: reader.find("Files", "tree") and names_in(reader.table()) != before, "screenshots")
    if has(reader.meet("Large & Old", "radio button"), pyatspi.STATE_CHECKED):
        complaints.append("two lenses are chosen at once")
    reader.toggle(reader.meet("Search", "radio button"))
    field = reader.meet("Name, or text inside the file", "text")
    field.queryEditableText().setTextContents("holiday")
    reader.press("Search", within=field.parent)
    found = lambda: [name for name in names_in(reader.table()) if "holiday" in name.lower()]
    names = reader.wait(found, "files with holiday in their names")
    reader.toggle(reader.meet("Large & Old", "radio button"))
    return f"A search for holiday found {len(names)} files by their names."


def filter_applications(reader, complaints, volume):
    reader.go_to("Applications")
    rows = reader.table().queryTable()
    all_rows = rows.nRows
    field = reader.meet("Search", "text").queryEditableText()
    field.setTextContents("harbour")
    reader.wait(lambda: 0 < rows.nRows < all_rows, "the rows with harbour")
    names = [rows.getAccessibleAt(row, 0).name for row in range(rows.nRows)]
    field.setTextContents("")
    reader.wait(lambda: rows.nRows == all_rows, "all rows again")
    return f"Filtered by harbour: {', '.join(names)}."


def choose_copy(reader, complaints, volume):
    reader.go_to("Duplicates")
    table = reader.table()
    reader.select(table, 0)
    reader.meet("Keep Selected…", "push button")
    copies = lambda: reader.all("radio button")
    count = int(table.queryTable().getAccessibleAt(0, 1).name)
    if len(copies()) != count or sum(has(copy, pyatspi.STATE_CHECKED) for copy in copies()) != 1:
        complaints.append(f"of {count} copies are met {[words(copy) for copy in copies()]}")
    other = next(copy for copy in copies() if not has(copy, pyatspi.STATE_CHECKED))
    reader.toggle(other)
    kept = [copy.name for copy in copies() if has(copy, pyatspi.STATE_CHECKED)]
    if kept != [other.name]:
        complaints.append(f"{other.name} was chosen, and to be kept are {kept}")
    act(table.queryTable().getAccessibleAt(0, 0), "Toggle")
    return f"Of {count} copies another one was chosen: {kept[0]}."


ALL = (uninstall, filter_applications, search_files, choose_copy)
