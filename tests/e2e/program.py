"""One run of a program, watched through the accessibility bus as a screen reader does, and used
with the pointer and the keyboard of its display.
"""

import re
from pathlib import Path

from gi.repository import Atspi

from accessible import Role, State, action_names, ask, children, describe, extents, fits, has
from accessible import lies_within, lines, name_of, shown, title_of, window_of
from session import Stuck, wait_until


class Program:
    """In all methods a name is a text, a compiled pattern that has to match the whole name, or a
    collection of texts.
    """

    def __init__(self, display, command, environment=()):
        self.display = display
        self._log = display.session.log("program")
        self._log.unlink(missing_ok=True)
        self._process = display.session.spawn(
            "program",
            [str(Path(command).absolute())],
            display.environment | dict(environment),
        )

    def log_lines(self):
        """What the program has written to its standard output and standard error."""
        return self._log.read_text(encoding="utf-8", errors="replace").splitlines()

    def mapped_files(self):
        """The files that it has loaded, including the program itself and its libraries."""
        maps = Path(f"/proc/{self._process.pid}/maps").read_text(encoding="utf-8")
        return {line.split()[-1] for line in maps.splitlines() if "/" in line}

    def is_running(self):
        return self._process.poll() is None

    def exit_status(self):
        """Waits for the program to end."""
        wait_until("the program ends", lambda: not self.is_running())
        return self._process.returncode

    def end(self):
        """Ends the program without asking it."""
        self.display.session.end(self._process)

    def leave_evidence(self, folder):
        """Saves what helps to understand a failure."""
        (folder / "tree.txt").write_text(self.tree(), "utf-8")
        (folder / "log.txt").write_text("\n".join(self.log_lines()), "utf-8")
        self.display.picture(folder / "screen.png")

    def wait_until(self, what, condition):
        """As the function wait_until(), but fails if the program has ended."""

        def holds():
            if not self.is_running():
                status = self._process.returncode
                raise Stuck(f"waiting until {what}: the program has ended with status {status}")
            return condition()

        return wait_until(what, holds)

    # What is on screen

    def windows(self, title=re.compile(".*")):
        """The windows of that title, the one with the focus first. An alert's is its message."""
        found = [
            window
            for window in children(self._application())
            if has(window, State.SHOWING) and fits(title_of(window), title)
        ]
        return sorted(found, key=lambda window: not has(window, State.ACTIVE))

    def wait_for_window(self, title):
        """The window of that title, once it has the focus."""
        return self.wait_until(
            f'the window "{title}" has the focus',
            lambda: [window for window in self.windows(title) if has(window, State.ACTIVE)],
        )[0]

    def wait_until_gone(self, window):
        """Waits for a window to close, alone or with the program."""
        wait_until(f"{describe(window)} is gone", lambda: not has(window, State.SHOWING))

    def close_all(self):
        """Closes one window after another, until only the way back is left, and returns it."""
        while not self.find(Role.LABEL, "No window is open."):
            window = self.windows()[0]
            self.press("ctrl+w")
            self.wait_until_gone(window)
            self.wait_until("another window has the focus", self.focus)
        return self.wait_for_window("Zorvan")

    def find(self, role, name, within=None):
        """All items of that role and name that are shown."""
        return [
            item
            for item in shown(within or self._application())
            if ask(item.get_role) == role and fits(name_of(item), name)
        ]

    def wait_for(self, role, name, within=None):
        """The first that find() finds, as soon as there is one."""
        return self.wait_until(
            f'a {role.value_nick} "{name}" is shown', lambda: self.find(role, name, within)
        )[0]

    def wait_for_all(self, within, *wanted):
        """An item for each role and name that is wanted, as soon as all are shown at once."""

        def found():
            items = [(ask(item.get_role), name_of(item), item) for item in shown(within)]
            firsts = [
                next((item for its, text, item in items if its == role and fits(text, name)), None)
                for role, name in wanted
            ]
            return None if None in firsts else firsts

        names = ", ".join(f'a {role.value_nick} "{name}"' for role, name in wanted)
        return self.wait_until(f"{names} are shown", found)

    def focus(self):
        """The item that has the focus; None if none has."""
        for window in self.windows():
            if has(window, State.ACTIVE):
                for item in shown(window):
                    if has(item, State.FOCUSED) and has(item, State.FOCUSABLE):
                        return item
        return None

    def tree(self):
        """All that the accessibility bus knows about the program, one line for each item."""
        application = self._application()
        return "\n".join(lines(application)) if application else ""

    # Pointer and keyboard

    def click(self, item):
        """Presses the left button over the middle of `item`, which has to be in the window with
        the focus.
        """
        window = window_of(item)
        self.wait_until(
            f"{describe(item)} is enabled, in a window with the focus",
            lambda: has(item, State.ENABLED) and has(window, State.ACTIVE),
        )
        left, top, width, height = self.place(item)
        self.display.click(left + width // 2, top + height // 2)

    def place(self, item):
        """Left, top, width and height, in pixels of the screen."""
        # Until bus and display agree, the program has not yet heard where its window is.
        self.x_window(window_of(item))
        return extents(item)

    def click_button(self, name, within=None, role=Role.PUSH_BUTTON):
        self.click(self.wait_for(role, name, within))

    def press(self, *keys):
        self.display.press(*keys)

    def bring_to_front(self, window):
        self.display.activate(self.x_window(window))
        self.wait_for_keyboard(window)

    def wait_for_keyboard(self, window):
        self.wait_until(f"{describe(window)} has the focus", lambda: has(window, State.ACTIVE))

    def x_window(self, window):
        """The X window of a top-level window, known by its place and size."""

        def found():
            places = self.display.windows().items()
            return [x_window for x_window, place in places if place == extents(window)]

        return self.wait_until(f"{describe(window)} is on screen", found)[0]

    def expect_on_screen(self, window):
        """Checks that a window and its frame are on the screen and nothing in it is cut off."""
        x_window = self.x_window(window)
        frame = self.display.frame(x_window)
        screen = (0, 0, *map(int, self.display.size.split("x")))
        assert lies_within(frame, screen), f"{describe(window)} at {frame} leaves the screen"
        hints = self.display.run("xprop", "-id", x_window, "WM_NORMAL_HINTS")
        [least] = re.findall(r"minimum size: (\d+) by (\d+)", hints)
        *_, width, height = extents(window)
        assert width >= int(least[0]) and height >= int(least[1]), f"{describe(window)} is cut off"

    def picture(self, file, window=None):
        """Saves a picture of a window with its frame, or of the whole screen, once it is painted
        and no longer changes. The pointer is put aside first.
        """
        self.display.put_pointer_aside()
        x_window = self.x_window(window) if window else None
        before = file.with_suffix(".before.png")

        def rests():
            file.replace(before)
            self.display.picture(file, x_window)
            colours = int(self.display.run("identify", "-format", "%k", file))
            return colours > 8 and self.display.differing_pixels(before, file) == 0

        self.display.picture(file, x_window)
        self.wait_until(f"{file.name} is painted", rests)
        before.unlink()

    def applications(self):
        """What the accessibility bus has of the program's process."""
        return [
            application
            for application in children(self.display.session.programs)
            if ask(application.get_process_id) == self._process.pid
        ]

    def _application(self):
        """The program on the accessibility bus; None while it is not there."""
        return next(iter(self.applications()), None)


class ActionProgram(Program):
    """A program that is used through the actions that its controls offer, as with a switch."""

    def click(self, item):
        self.wait_until(f"{describe(item)} is enabled", lambda: has(item, State.ENABLED))
        ask(Atspi.Action.do_action, item, action_names(item).index("Press"))
