"""What is around the program on a desktop: the screen, another program, the clock."""

import filecmp
import time
from pathlib import Path

from session import wait_until


class Sight:
    """A part of the screen, and how it looked at first."""

    def __init__(self, program, place, folder):
        self._display = program.display
        self._place = place
        self._first = folder / "first.ppm"
        self._now = folder / "now.ppm"
        self._display.put_pointer_aside()
        self._display.part(self._first, self._place)
        wait_until("the screen rests", self._rests)

    def _rests(self):
        rests = self.is_seen()
        self._now.replace(self._first)
        return rests

    def is_seen(self):
        """Whether it looks the same now."""
        self._display.part(self._now, self._place)
        return filecmp.cmp(self._first, self._now, shallow=False)


class OtherProgram:
    """Another program, whose window is over the middle of one of ours."""

    width, height = 300, 640

    def __init__(self, program, window, folder):
        self._program = program
        self._session = program.display.session
        self._notes = folder / "notes"
        left, top, width, height = program.place(window)
        x, y = left + width // 2, top + height // 2
        self.middle = x - 100, y - 40, 200, 80
        self._place = x - self.width // 2, max(y - self.height // 2, 0), self.width, self.height

    def __enter__(self):
        command = Path(__file__).with_name("otherprogram.py"), self._notes, *self._place
        self._process = self._session.spawn(
            "other-program",
            ["/usr/bin/python3", *map(str, command)],
            self._program.display.environment | {"NO_AT_BRIDGE": "1"},
        )
        # The desktop may put it behind our window, but it is taller: its lower end can be clicked.
        left, top, width, height = self._place
        bottom = left + width // 2, top + height - 12
        wait_until("the other program has the keyboard", lambda: self._is_pressed(*bottom))
        return self

    def __exit__(self, *_):
        self._session.end(self._process)

    def _is_pressed(self, x, y):
        self._program.display.click(x, y)
        return self.notes()[-1:] == ["has the keyboard"]

    def notes(self):
        """What it has noted so far."""
        return self._notes.read_text("utf-8").splitlines() if self._notes.exists() else []

    def write(self, text):
        """Types a text, and checks that this program gets it and has not lost the keyboard."""
        expected = [*self.notes(), *text]
        self._program.press(*text)
        wait_until("the other program gets the keys", lambda: self.notes() == expected)


class Clock:
    """The time that the program sees."""

    rate = 40

    def __init__(self, learner, folder):
        self._file = folder / "clock"
        self._file.write_text("+0")
        self._started = time.monotonic()
        learner.environment = {
            "LD_PRELOAD": "/usr/$LIB/faketime/libfaketimeMT.so.1",
            "FAKETIME_TIMESTAMP_FILE": str(self._file),
            "FAKETIME_NO_CACHE": "1",
        }

    def hurry(self):
        self._file.write_text(f"+0 x{self.rate}")

    def slow_down(self):
        """Goes on at the usual rate, from a time no earlier than it has reached."""
        self._file.write_text(f"+{self.rate * (time.monotonic() - self._started):.0f}")
