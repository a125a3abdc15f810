"""What Windows tells a screen reader of programs: items, their words, states and places."""

import os
import subprocess
import time
from dataclasses import dataclass, field
from types import SimpleNamespace

from gi.repository import Atspi

from session import Stuck
from wine import WINE

Role = Atspi.Role
State = Atspi.StateType

GROUP = "50026"
ROLES = {
    "50000": Role.PUSH_BUTTON,
    "50006": Role.IMAGE,
    "50009": Role.POPUP_MENU,
    "50010": Role.MENU_BAR,
    "50011": Role.MENU_ITEM,
    "50012": Role.PROGRESS_BAR,
    "50013": Role.RADIO_BUTTON,
    "50020": Role.LABEL,
    GROUP: Role.PANEL,
    "50032": Role.FRAME,
}
# In the order in which the reader tells them.
STATES = (State.ENABLED, State.FOCUSABLE, State.FOCUSED, State.CHECKED)

# The place of what is not on screen.
NOWHERE = [0, 0, 0, 0]

# Seconds for which a reading is good.
FRESH = 0.03


@dataclass(frozen=True)
class Item:
    """A part of a program, asked in the same way as those that the accessibility bus knows."""

    key: tuple
    reader: object = field(repr=False, compare=False)

    def get_name(self):
        return self._now("name", "")

    def get_description(self):
        return self._now("description", "")

    def get_role(self):
        return self._now("role", Role.INVALID)

    def get_state_set(self):
        states = self._now("states", set())
        return SimpleNamespace(contains=states.__contains__, get_states=lambda: states)

    def get_extents(self, _):
        left, top, width, height = self._now("place", NOWHERE)
        return SimpleNamespace(x=left, y=top, width=width, height=height)

    def get_parent(self):
        return self._now("parent", None)

    def get_child_count(self):
        return len(self._now("children", []))

    def get_child_at_index(self, index):
        return self._now("children", [])[index]

    def get_frame(self):
        """Left, top, width and height of the window that it is in, with its title bar."""
        return self._now("frame", NOWHERE)

    def activate(self):
        """Activates its window, as a click in the task bar does."""
        self.reader.ask(self._now("handle", ""))

    def _now(self, name, otherwise):
        """What is known of it; `otherwise` if it is gone."""
        return getattr(self.reader.items().get(self.key), name, otherwise)


class Reader:
    """Reads all windows of a Wine, in a `with` block, inside which the programs start."""

    def __init__(self, wine, build):
        self._wine = wine
        self._folder = build / "tests/windows"
        self._items = {}
        self._taken = 0

    def __enter__(self):
        library = "uiautomationcore"
        system = self._wine.path(f"C:\\windows\\system32\\{library}.dll")
        system.write_bytes((self._folder / f"{library}.dll").read_bytes())
        self._environment = dict(self._wine.environment)
        self._wine.environment["WINEDLLOVERRIDES"] += f";{library}=n"
        self._reader = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", WINE, self._folder / "reader.exe"],
            env=os.environ | self._wine.environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        return self

    def __exit__(self, *_):
        self._wine.environment = self._environment
        self._reader.stdin.close()
        self._reader.wait()
        self._reader.stdout.close()

    def processes(self):
        """The programs that have windows, by the numbers by which Windows knows them."""
        self.refresh()
        return {process for process, _ in self._items}

    def windows(self, process):
        """The windows of that program."""
        return [
            Item(key, self)
            for key, item in self.items().items()
            if not item.parent and key[0] == process
        ]

    def items(self):
        """What is known of each item, by its key."""
        if time.monotonic() - self._taken > FRESH:
            self.refresh()
        return self._items

    def refresh(self):
        self._items = self._parse(self.ask(""))
        self._taken = time.monotonic()

    def ask(self, command):
        """What the reader answers; see reader.cpp."""
        self._reader.stdin.write(f"{command}\n".encode())
        self._reader.stdin.flush()
        text = bytearray()
        while not text.endswith(b"\x1d\n"):
            part = self._reader.stdout.read1()
            if not part:
                raise Stuck("the reader has ended")
            text += part
        return text.decode("utf-8")

    def _parse(self, text):
        items = {}
        process, handle, frame = "", "", ""
        path = []
        for line in text.split("\x1e")[:-1]:
            kind, *fields = line.split("\x1f")
            if kind == "window":
                process, handle, frame = fields
                continue
            name, place, role, title, description, *flags = fields
            item = Item((process, name), self)
            path[int(kind) :] = [item]
            parent = path[-2] if len(path) > 1 else None
            states = {State.SHOWING} | {state for state, on in zip(STATES, flags) if on}
            if not parent and State.FOCUSED in states:
                states.add(State.ACTIVE)
            items[item.key] = SimpleNamespace(
                name=title,
                description=description,
                role=ROLES.get(role, Role.UNKNOWN) if title or role != GROUP else Role.FILLER,
                states=states,
                place=[int(number) for number in place.split()] or NOWHERE,
                parent=parent,
                children=[],
                handle=handle,
                frame=[int(number) for number in frame.split()],
            )
            if parent:
                items[parent.key].children.append(item)
        return items
