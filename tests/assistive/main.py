"""Drives the window over a sample Mac from outside, as a screen reader would. Usage: main.py PROGRAM

On a display and a message bus of its own; .ci/assistive has both. Everything is done through what the accessibility
bus tells and offers. Ends with a status that is not 0 when something is wrong, and says what.
"""

import glob
import os
import signal
import subprocess
import sys
import time

from gi.repository import Gio, GLib

import loop
import sections
import walk
from reader import Reader, Wrong


def switch_on():
    """As a screen reader does when it starts: programs look whether somebody listens."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    value = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", value, None, 0, -1, None)


class Program:
    """The sample, whose volume lies beside it while it runs."""

    def __init__(self, path, *arguments):
        pattern = os.path.join(os.path.dirname(os.path.realpath(path)), "volume-*")
        others = set(glob.glob(pattern))
        self._process = subprocess.Popen([path, *arguments])
        self.volume = lambda: (set(glob.glob(pattern)) - others).pop()

    def end(self):
        self._process.send_signal(signal.SIGINT)
        return self._process.wait(60)


def try_all(reader, program, complaints):
    began = time.monotonic()

    def say(line):
        print(f"{time.monotonic() - began:6.1f} s  {line}", flush=True)

    reader.start()
    reader.wait(lambda: reader.find(loop.MAIN_BUTTON, "push button"), "the end of the first scan")
    say("The window is there.")
    say(walk.walk(reader, complaints))
    volume = program.volume()
    say(loop.run(reader, complaints, volume))
    for attempt in sections.ALL:
        say(attempt(reader, complaints, volume))


def main():
    switch_on()
    reader = Reader("Quillane")
    complaints = []
    program = Program(sys.argv[1], "--welcomed")
    try:
        try_all(reader, program, complaints)
    except Wrong as wrong:
        complaints.append(str(wrong))
    finally:
        status = program.end()
    if status != 0:
        complaints.append(f"the program ended with status {status}")
    for complaint in dict.fromkeys(complaints):
        print(f"WRONG: {complaint}")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
