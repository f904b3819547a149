"""Review, untick, move, put back: by what assistive tools meet and by nothing else, and compared with the disk."""

from collections import Counter

import pyatspi

from disk import contents, uppermost
from reader import Wrong, children, has, words
from walk import look_around

LEFT_OUT = "Developer Caches…"
MAIN_BUTTON = "Review and Clean…"


def figure(reader):
    """The number of the Overview, which stands below its words."""
    labels = [label.name for label in reader.all("label")]
    return labels[labels.index("RECLAIMABLE NOW") + 1]


def leave_out_category(reader, complaints):
    before = figure(reader)
    reader.toggle(reader.meet(LEFT_OUT, "check box"))
    reader.wait(lambda: figure(reader) != before, f"another figure than {before}")
    reader.press(MAIN_BUTTON)
    review = reader.meet("Items to review", "list")
    categories = [category.name for category in children(review)]
    if not categories or any(name.startswith(LEFT_OUT[:-1]) for name in categories):
        complaints.append(f"reviewed are {categories}")
    return review


def leaf(row):
    """What a row names on the disk: the last of its path, or what stands behind the kind of the place."""
    return row.description.rsplit("/", 1)[-1].rsplit(" - ", 1)[-1]


def untick_one(reader, complaints, review):
    rows = [row for row in shown_rows(review)]
    if not rows or not all(has(row, pyatspi.STATE_CHECKED) for row in rows):
        raise Wrong("not every row of the review is ticked")
    for row in rows:
        if not row.name or not row.description:
            complaints.append(f"a row of the review says “{row.name}”, “{row.description}”")
    # One whose name no other row has, so that it can be told from them on the disk.
    names = Counter(leaf(row) for row in rows)
    kept = next(row for row in rows if names[leaf(row)] == 1)
    reader.toggle(kept)
    reader.meet(f"{len(rows) - 1} of {len(rows)} selected…", "label")
    return leaf(kept), [leaf(row) for row in rows if row != kept]


def shown_rows(review):
    return [row for category in children(review) for row in children(category)]


def compare_moved(complaints, before, after, kept, going):
    gone = uppermost(set(before) - set(after))
    if Counter(path.rsplit("/", 1)[-1] for path in gone) != Counter(going):
        complaints.append(f"{sorted(going)} was to go, and went: {gone}")
    come = [path for path in after if path not in before and "/.Trash" not in path]
    if come:
        complaints.append(f"outside the Trash lies what was not there: {come}")
    staying = [path for path in before if path.rsplit("/", 1)[-1] == kept]
    if not staying or any(after.get(path) != before[path] for path in staying):
        complaints.append(f"{kept} was unticked and is not where it was")
    files = lambda entries: Counter(told for told in entries.values() if told != "folder")
    if files(before) - files(after):
        complaints.append(f"not in the Trash: {files(before) - files(after)}")


def hear_progress(reader, complaints):
    values = reader.progress
    if not values or max(values) != 1 or min(values) < 0:
        complaints.append(f"the bars told {values[:20]}")


def run(reader, complaints, volume):
    before = contents(volume)
    reader.go_to("Overview")
    review = leave_out_category(reader, complaints)
    met = look_around(reader, complaints, "the review")
    kept, going = untick_one(reader, complaints, review)
    reader.progress.clear()
    reader.announced.clear()
    reader.press("Move to Trash", within=reader.meet("Review", "dialog"))
    done = reader.meet("Done", "push button")
    met += look_around(reader, complaints, "the end of the sweep")
    hear_progress(reader, complaints)
    reader.wait(lambda: any(text.endswith("reclaimed") for text in reader.announced), "the result to be announced")
    compare_moved(complaints, before, contents(volume), kept, going)
    reader.announced.clear()
    reader.press(done.name)
    put_back(reader, complaints, len(going))
    if contents(volume) != before:
        different = set(contents(volume).items()) ^ set(before.items())
        complaints.append(f"after the put back the disk differs in {sorted(path for path, _ in different)[:20]}")
    reader.toggle(reader.meet(LEFT_OUT, "check box"))
    return f"{len(going)} items moved and put back; {kept} stayed where it was; {met} things met on the way."


def put_back(reader, complaints, count):
    reader.press("Put Back")
    told = reader.meet("Put Back Finished", None)
    if f"Restored {count} item(s)" not in told.description:
        complaints.append(f"{words(told)} says {told.description}")
    look_around(reader, complaints, "the end of the put back")
    reader.press("OK")
    reader.wait(lambda: any("apps" in text for text in reader.announced), "the end of the scan to be announced")
