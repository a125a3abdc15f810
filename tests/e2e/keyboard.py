"""Using a program without a mouse."""

from accessible import Role, State, ask, children, describe, extents, has, name_of, shown

CONTROLS = (Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.PANEL)


class Keyboard:
    """Presses keys, and checks that the focus is on a visible, enabled control."""

    def __init__(self, program, folder):
        self.program = program
        self.folder = folder

    def press(self, *keys):
        self.program.press(*keys)

    def focused(self):
        def usable():
            item = self.program.focus()
            return item if item and has(item, State.SHOWING) and has(item, State.ENABLED) else None

        return self.program.wait_until("some enabled control has the focus", usable)

    def wait_for_focus(self, name, role=Role.PUSH_BUTTON):
        return self.program.wait_until(
            f'the focus is on the {role.value_nick} "{name}"',
            lambda: (item := self.program.focus())
            and name_of(item) == name
            and ask(item.get_role) == role
            and item,
        )

    def window(self, title, focus, role=Role.PUSH_BUTTON):
        """The window of that title, once it is open and the focus is where it belongs."""
        window = self.program.wait_for_window(title)
        self.wait_for_focus(focus, role)
        return window

    def move_on(self, before=None):
        """Presses Tab, and returns the item that has the focus then."""
        before = before or self.focused()
        self.program.press("Tab")
        return self.program.wait_until(
            f"Tab moves the focus on from {describe(before)}",
            lambda: (item := self.focused()) != before and item,
        )

    def move_to(self, name):
        item = self.focused()
        for _ in range(20):
            if name_of(item) == name:
                return
            item = self.move_on(item)
        raise AssertionError(f'Tab does not lead to "{name}"')

    def walk(self, window):
        """Goes round a window with Tab. The focus can be seen at each stop, the stops follow the
        reading order, and no control is left out.
        """
        stops = [self.focused()]
        turns = 0
        picture = self._picture("before")
        while True:
            stop = self.move_on(stops[-1])
            picture = self._expect_visible_focus(stop, picture)
            turns += not follows(stops[-1], stop)
            if stop == stops[0]:
                break
            stops.append(stop)
        assert turns == 1, [describe(stop) for stop in stops]

        controls = [
            item
            for item in shown(window)
            if ask(item.get_role) in CONTROLS
            and has(item, State.FOCUSABLE)
            and has(item, State.ENABLED)
            # Tab reaches only the chosen option; arrow keys go on to the others.
            and (ask(item.get_role) != Role.RADIO_BUTTON or has(item, State.CHECKED))
        ]
        assert sorted(map(describe, stops)) == sorted(map(describe, controls))

    def _expect_visible_focus(self, stop, before):
        """Checks that the focus changes a stop at least as much as a frame around it would."""

        def changed():
            left, top, width, height = extents(row_of(stop))
            after = self._picture("after")
            crop = f"[{width}x{height}+{left}+{top}]"
            # A stop that is scrolled off the screen cannot be compared.
            difference = self.program.display.differing_pixels(f"{before}{crop}", f"{after}{crop}")
            return (difference or 0) >= width + height and after

        after = self.program.wait_until(f"the focus is seen on {describe(stop)}", changed)
        return after.replace(before)

    def _picture(self, name):
        file = self.folder / f"{name}.ppm"
        self.program.display.picture(file)
        return file


def row_of(item):
    """The row that a button is in, which shows the focus for it; otherwise the item itself."""
    parent = ask(item.get_parent)
    *_, width, height = extents(item)
    # The row is not much higher than the button, which is a letter or has a level beside it.
    is_row = ask(parent.get_role) == Role.FILLER and extents(parent)[3] <= 2 * height
    return parent if is_row and (width <= 2 * height or len(children(parent)) > 1) else item


def follows(a, b):
    """Whether `b` is read after `a`: further down, or on the same line and further right."""
    (a_left, a_top, _, a_height), (b_left, b_top, _, b_height) = extents(a), extents(b)
    on_one_line = a_top < b_top + b_height and b_top < a_top + a_height
    return b_left > a_left if on_one_line else b_top > a_top
