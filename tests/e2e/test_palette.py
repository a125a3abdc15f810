"""The desktop turns dark, and light again, while the learner has windows open."""

import re

import pytest

from learner import QUIZZES, Learner
from program import Role, extents

STRUCTURE = QUIZZES[5]
DARK = "/usr/share/qt6ct/colors/darker.conf"
# In the dark palette only letters and icons have that much red, and none has so broad a stroke.
BRIGHT = 80  # per cent
BROAD = 12  # pixels


@pytest.fixture
def learner(learner):
    learner.environment = {"QT_QPA_PLATFORMTHEME": "qt6ct"}
    return learner


def test_windows_follow_the_desktop(learner, tmp_path):
    born_dark = Desk(
        Learner(learner.display, learner.command, tmp_path / "dark", learner.environment)
    )
    born_dark.turn(dark=True)
    born_dark.open_windows()
    wanted = born_dark.pictures("wanted")
    # Its questions come in another order each time.
    del wanted[STRUCTURE.name]
    born_dark.leave()

    desk = Desk(learner)
    desk.turn(dark=False)
    desk.open_windows()
    before = desk.pictures("before")
    desk.turn(dark=True)
    dark = desk.pictures("dark")
    for title, picture in dark.items():
        left = desk.broad_bright_pixels(title, picture)
        assert left == 0, f"{title}: {left} pixels are still light, see {picture}"
    for title, picture in wanted.items():
        desk.expect_same(dark[title], picture)
    desk.turn(dark=False)
    for title, picture in desk.pictures("after").items():
        desk.expect_same(picture, before[title])

    desk.go_on()
    desk.turn(dark=True, titles=[STRUCTURE.name])
    desk.go_on()
    desk.leave()


class Desk:
    """A learner with a window of each kind open at once."""

    def __init__(self, learner):
        self.learner = learner
        self.display = learner.display
        self.attempt = None
        self.windows = {}

    @property
    def program(self):
        return self.learner.program

    def turn(self, dark, titles=None):
        """Turns the desktop dark or light, as its settings do, and waits until the windows with
        these titles, or all of them, have followed.
        """
        file = self.learner.home / "qt6ct/qt6ct.conf"
        file.parent.mkdir(parents=True, exist_ok=True)
        lines = (
            "[Appearance]",
            "style=Fusion",
            "standard_dialogs=default",
            f"custom_palette={str(dark).lower()}",
            f"color_scheme_path={DARK}",
        )
        # Only the folder is watched: a file that is overwritten would go unnoticed.
        new = file.with_suffix(".new")
        new.write_text("\n".join(lines), "utf-8")
        new.replace(file)
        for title in self.windows if titles is None else titles:
            window = self.windows[title]
            self.program.bring_to_front(window)
            self.program.wait_until(
                f"{title} is {'dark' if dark else 'light'}",
                lambda: (self.lightness(window) < 0.5) == dark,
            )

    def open_windows(self):
        """Opens the windows; the last is a quiz against the clock, with one question answered."""
        menu = self.learner.start_for_the_first_time()
        results = self.learner.take(STRUCTURE, menu)
        menu = self.learner.newest_menu()
        settings = self.learner.set_timed(menu)
        self.program.press("F1")
        help_window = self.program.wait_for_window("Help")
        self.program.bring_to_front(menu)
        self.attempt = self.learner.open_quiz(STRUCTURE, menu)
        self.attempt.answer()
        self.attempt.expect_verdict(right=True)
        self.windows = {
            "Main menu": menu,
            "Results": results,
            "Settings": settings,
            "Help": help_window,
            STRUCTURE.name: self.attempt.window,
        }

    def go_on(self):
        self.program.bring_to_front(self.attempt.window)
        self.attempt.go_on()
        self.attempt.answer()
        self.attempt.expect_verdict(right=True)

    def leave(self):
        """Quits in the middle of the quiz."""
        self.program.press("ctrl+q")
        self.learner.abandon("Yes")
        self.learner.expect_the_end()
        assert self.learner.stored() == self.learner.store

    # Pictures

    def pictures(self, name):
        """A picture of each window, without the time that is left."""
        files = {}
        for title, window in self.windows.items():
            self.program.bring_to_front(window)
            files[title] = self.learner.home / f"{name}-{title}.png"
            self.program.picture(files[title], window)
            for clock in self.program.find(Role.LABEL, re.compile("Time left: .*"), window):
                left, top, width, height = self.within_picture(clock, window)
                cover = f"rectangle {left},{top} {left + width},{top + height}"
                self.display.run("mogrify", "-draw", cover, files[title])
        return files

    def within_picture(self, item, window):
        """The item's place in the picture of its window."""
        left, top, width, height = extents(item)
        frame_left, frame_top, *_ = self.display.frame(self.program.x_window(window))
        return left - frame_left, top - frame_top, width, height

    def lightness(self, window):
        """The mean lightness of a window, from 0 to 1."""
        file = self.learner.home / "now.png"
        self.display.picture(file, self.program.x_window(window))
        mean = ("-scale", "1x1!", "-format", "%[fx:mean]", "info:")
        return float(self.display.run("convert", file, *mean))

    def broad_bright_pixels(self, title, file):
        """How many pixels are in bright squares that are too broad for a letter or an icon."""
        window = self.windows[title]
        left, top, width, height = self.within_picture(window, window)
        bright = ("-channel", "R", "-separate", "+channel", "-threshold", f"{BRIGHT}%")
        broad = ("-morphology", "Open", f"Square:{BROAD // 2}")
        count = ("-format", "%[fx:mean*w*h]", "info:")
        picture = f"{file}[{width}x{height}+{left}+{top}]"
        return float(self.display.run("convert", picture, *bright, *broad, *count))

    def expect_same(self, file, wanted):
        different = self.display.differing_pixels(file, wanted)
        assert different == 0, f"{different} pixels of {file} are not as in {wanted}"
