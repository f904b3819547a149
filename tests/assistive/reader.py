"""What a screen reader does: it hears the events of the accessibility bus, walks the tree, and acts through what it
meets. Nothing here sleeps: whoever waits is woken by an event and asks again whether it has come to what is awaited.
"""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import GLib  # noqa: E402

import pyatspi  # noqa: E402

HEARD = (
    "object:state-changed",
    "object:children-changed",
    "object:property-change",
    "object:text-changed",
    "object:selection-changed",
    "object:visible-data-changed",
    "object:model-changed",
    "window",
)
PATIENCE = 60  # seconds; a sanitized program on a busy machine is slow
TABLES = ("table", "tree table", "tree")


class Wrong(Exception):
    """Something is not as it has to be, and what follows can't be tried."""


def has(what, state):
    return what.getState().contains(state)


def children(what):
    met = (what.getChildAtIndex(i) for i in range(what.childCount))
    return [child for child in met if child is not None]


def shown(what):
    """All that can be met in it, itself first. What is hidden stays in the tree without being shown, and a table is
    asked by row and column."""
    if not has(what, pyatspi.STATE_SHOWING):
        return
    yield what
    if what.getRoleName() not in TABLES:
        for child in children(what):
            yield from shown(child)


def actions(what):
    if "Action" not in what.get_interfaces():
        return []
    action = what.queryAction()
    return [action.getName(i) for i in range(action.nActions)]


def act(what, wanted):
    offered = actions(what)
    if wanted not in offered:
        raise Wrong(f"{words(what)} offers {offered} and not {wanted}")
    what.queryAction().doAction(offered.index(wanted))


def words(what):
    return f"{what.getRoleName()} “{what.name}”"


class Reader:
    def __init__(self, application):
        self.announced = []  # what is to be spoken without having been asked for, in order
        self.progress = []  # values of bars as they change, from 0 to 1
        self._name = application
        self._application = None
        for kind in HEARD:
            pyatspi.Registry.registerEventListener(self._hear, kind)

    def _hear(self, event):
        try:
            if event.type == "object:state-changed:showing" and event.detail1:
                if event.source.getRole() in (pyatspi.ROLE_NOTIFICATION, pyatspi.ROLE_ALERT):
                    self.announced.append(event.source.name)
            elif event.type == "object:property-change:accessible-value":
                value = event.source.queryValue()
                self.progress.append(value.currentValue / value.maximumValue)
        except (GLib.Error, NotImplementedError):
            pass  # gone by now

    def wait(self, condition, what, seconds=PATIENCE):
        """The first true thing that the condition returns. It is asked now and after each event."""
        context = GLib.MainContext.default()
        late = []
        timer = GLib.timeout_add(seconds * 1000, lambda: late.append(True))
        try:
            while True:
                while context.pending():
                    context.iteration(False)
                try:
                    result = condition()
                except GLib.Error:
                    result = None  # it went while it was asked
                if result:
                    return result
                if late:
                    raise Wrong(f"in vain waited {seconds} seconds for {what}")
                context.iteration(True)
        finally:
            if not late:
                GLib.source_remove(timer)

    def start(self):
        """Waits until the program has come to the bus."""
        desktop = pyatspi.Registry.getDesktop(0)
        found = lambda: next((a for a in children(desktop) if a.name == self._name), None)
        self._application = self.wait(found, f"a program called {self._name}")

    def windows(self):
        return [w for w in children(self._application) if has(w, pyatspi.STATE_SHOWING)]

    def all(self, role=None, within=None):
        roots = [within] if within is not None else self.windows()
        return [w for root in roots for w in shown(root) if role in (None, w.getRoleName())]

    def find(self, name, role=None, within=None):
        """By its name, or how that begins when it ends with an ellipsis. None when it is not shown."""
        fits = (lambda n: n.startswith(name[:-1])) if name.endswith("…") else (lambda n: n == name)
        return next((w for w in self.all(role, within) if fits(w.name)), None)

    def meet(self, name, role=None, within=None):
        """The same, awaited."""
        return self.wait(lambda: self.find(name, role, within), f"{role or 'something'} “{name}”")

    def press(self, name, within=None):
        act(self.meet(name, "push button", within), "Press")

    def toggle(self, what):
        """A check box or radio button, and waits until it tells that it has changed."""
        before = has(what, pyatspi.STATE_CHECKED)
        act(what, "Toggle")
        self.wait(lambda: has(what, pyatspi.STATE_CHECKED) != before, f"another state of {words(what)}")

    def table(self):
        """The one of the section, with rows in it."""

        def filled():
            tables = [w for name in TABLES for w in self.all(name)]
            return next((t for t in tables if t.queryTable().nRows > 0), None)

        return self.wait(filled, "a table with rows")

    def select(self, table, row):
        rows = table.queryTable()
        act(rows.getAccessibleAt(row, 0), "Toggle")
        self.wait(lambda: rows.isRowSelected(row), f"row {row} of {words(table)} to be selected")

    def go_to(self, section):
        """By the sidebar, whose items tell a count behind the name."""
        sidebar = self.meet("Sections", "list")
        names = lambda: [c for c in children(sidebar) if c.name.split(",")[0] == section]
        act(self.wait(names, f"{section} in the sidebar")[0], "Toggle")
        self.meet(section, "label")
