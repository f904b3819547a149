"""The windows beside the main one: the menu that leads to them, the settings, the welcome."""

import pyatspi

from reader import act, has, words
from walk import look_around

PAGES = 5  # of the welcome


def choose(reader, complaints, entry):
    """In the window's menu."""
    reader.press("Quillane")
    menu = reader.wait(lambda: next(iter(reader.all("popup menu")), None), "the menu")
    look_around(reader, complaints, "the menu")
    act(reader.meet(entry, "menu item", menu), "Press")


def open_settings(reader, complaints, tab):
    choose(reader, complaints, "Settings…")
    window = reader.meet("Settings", "frame")
    act(reader.meet(tab, "page tab", window), "Press")
    reader.wait(lambda: has(reader.meet(tab, "page tab"), pyatspi.STATE_SELECTED), f"the tab {tab}")
    reader.meet(tab, "panel", window)
    look_around(reader, complaints, f"the settings, {tab}")
    return window


def set_up(reader, complaints, volume):
    """Each kind of control is set by its own means, and what was set is told again by the others that show it."""
    window = open_settings(reader, complaints, "Automation")
    switches = reader.all("check box", window)
    for switch in switches:
        for _ in range(2):
            reader.toggle(switch)
    reader.toggle(reader.meet("Rescan on a schedule", "check box", window))
    reader.toggle(reader.meet("Reclaimable space passes a threshold", "check box", window))
    threshold = reader.meet("Reclaimable space passes a threshold", "spin button", window)
    set_value(reader, threshold)
    choose_frequency(reader, complaints, window)
    kept = [(words(box), has(box, pyatspi.STATE_CHECKED)) for box in reader.all("check box", window)]
    act(reader.meet("General", "page tab", window), "Press")
    reader.meet("General", "panel", window)
    look_around(reader, complaints, "the settings, General")
    act(reader.meet("Automation", "page tab", window), "Press")
    reader.meet("Automation", "panel", window)
    if [(words(box), has(box, pyatspi.STATE_CHECKED)) for box in reader.all("check box", window)] != kept:
        complaints.append("the switches are not as they were left")
    return f"{len(switches)} switches, a number and a choice set in the settings."


def set_value(reader, spin):
    value = spin.queryValue()
    wanted = value.minimumValue + 2 * (value.minimumIncrement or 1)
    if value.currentValue == wanted:
        wanted += value.minimumIncrement or 1
    value.currentValue = wanted
    reader.wait(lambda: spin.queryValue().currentValue == wanted, f"{words(spin)} to be {wanted}")


def choose_frequency(reader, complaints, window):
    box = reader.wait(lambda: next(iter(reader.all("combo box", window)), None), "how often")
    if box.description != "Frequency":
        complaints.append(f"{words(box)} does not say what it is for: {box.description}")
    before = box.name
    act(box, "Press")
    entries = lambda: [e for e in reader.all("list item") if e.name and e.name.split(",")[0] not in NOT_CHOICES]
    other = next(e for e in reader.wait(entries, "what there is to choose") if e.name != before)
    act(other, "Toggle")
    reader.wait(lambda: box.name == other.name, f"{other.name} to be chosen")


NOT_CHOICES = ("Overview", "Applications", "Orphaned Files", "Developer", "Files", "Duplicates", "Startup")


def be_welcomed(reader, complaints, volume):
    open_settings(reader, complaints, "General")
    reader.press("Show Welcome Again")
    for page in range(1, PAGES + 1):
        reader.meet(f"Page {page} of {PAGES}", "label")
        if page > 1:
            begin = f"Page {page} of {PAGES}."
            reader.wait(lambda: any(text.startswith(begin) for text in reader.announced), f"“{begin}” to be said")
        look_around(reader, complaints, f"page {page} of the welcome")
        reader.press("Continue" if page < PAGES else "Get Started")
    reader.wait(lambda: reader.find("Welcome to Quillane", "dialog") is None, "the end of the welcome")
    return f"Welcomed, on {PAGES} pages."


def open_popover(reader, complaints, panel):
    """By the item in the panel, as panels open it for whoever works them by keys."""
    reader.wait(lambda: panel.items, "an item in the panel")
    title = panel.title()
    reader.go_to("Overview")
    if reader.figure() not in title:
        complaints.append(f"the item says {title}, the window {reader.figure()}")
    panel.activate()
    popover = reader.meet("Quillane", "dialog")
    met = look_around(reader, complaints, "the popover")
    if reader.find(reader.figure(), "label", popover) is None:
        complaints.append(f"the popover does not say {reader.figure()}")
    reader.press("Review and Clean…", within=popover)
    reader.meet("Items to review", "list")
    reader.press("Cancel")
    reader.wait(lambda: reader.find("Items to review") is None, "the review to close")
    return f"The item says “{title}”; its popover leads to the review. {met} things met."


ALL = (set_up, be_welcomed)
