"""The desktop turns dark, and light again, while the learner has windows open."""

import pytest

from accessible import extents
from quizzes import STRUCTURE

DARK = "/usr/share/qt6ct/colors/darker.conf"
# In the dark palette only letters and icons have that much red, and none has so broad a stroke.
BRIGHT = 80  # per cent
BROAD = 12  # pixels


@pytest.fixture
def learner(learner):
    learner.environment = {"QT_QPA_PLATFORMTHEME": "qt6ct"}
    return learner


def test_windows_follow_the_desktop(learner):
    turn(learner, dark=False)
    windows = open_windows(learner)
    before = pictures(learner, windows, dark=False, name="before")
    turn(learner, dark=True)
    for title, picture in pictures(learner, windows, dark=True, name="dark").items():
        bright = broad_bright_pixels(learner, windows[title], picture)
        assert bright == 0, f"{bright} pixels of {picture} are still light"
    turn(learner, dark=False)
    for title, picture in pictures(learner, windows, dark=False, name="after").items():
        different = learner.display.differing_pixels(picture, before[title])
        assert different == 0, f"{different} pixels of {picture} are not as in {before[title]}"

    learner.program.press("ctrl+q")
    learner.abandon("Yes")
    learner.expect_the_end()


def turn(learner, dark):
    """Turns the desktop dark or light, as its settings do."""
    file = learner.home / "qt6ct/qt6ct.conf"
    file.parent.mkdir(parents=True, exist_ok=True)
    # Only the folder is watched: a file that is overwritten would go unnoticed.
    new = file.with_suffix(".new")
    new.write_text(
        f"[Appearance]\nstyle=Fusion\nstandard_dialogs=default\n"
        f"custom_palette={str(dark).lower()}\ncolor_scheme_path={DARK}\n",
        "utf-8",
    )
    new.replace(file)


def open_windows(learner):
    """Opens a window of each kind, and returns them by their titles."""
    results = learner.take(STRUCTURE, learner.start_for_the_first_time())
    menu = learner.newest_menu()
    windows = {"Main menu": menu, "Results": results}
    for keys, title in (("ctrl+comma", "Settings"), ("F1", "Help")):
        learner.program.press(keys)
        windows[title] = learner.program.wait_for_window(title)
    learner.program.bring_to_front(menu)
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    return windows | {"Quiz": attempt.window}


def pictures(learner, windows, dark, name):
    """A picture of each window, once it has followed the desktop."""
    files = {}
    for title, window in windows.items():
        learner.program.bring_to_front(window)
        learner.program.wait_until(
            f"{title} is {'dark' if dark else 'light'}",
            lambda: (lightness(learner, window) < 0.5) == dark,
        )
        files[title] = learner.home / f"{name}-{title}.png"
        learner.program.picture(files[title], window)
    return files


def lightness(learner, window):
    """The mean lightness of a window, from 0 to 1."""
    picture = learner.home / "now.png"
    learner.display.picture(picture, learner.program.x_window(window))
    mean = ("-scale", "1x1!", "-format", "%[fx:mean]", "info:")
    return float(learner.display.run("convert", picture, *mean))


def broad_bright_pixels(learner, window, picture):
    """How many pixels are in bright squares that are too broad for a letter or an icon."""
    left, top, width, height = extents(window)
    frame_left, frame_top, *_ = learner.display.frame(learner.program.x_window(window))
    bright = ("-channel", "R", "-separate", "+channel", "-threshold", f"{BRIGHT}%")
    broad = ("-morphology", "Open", f"Square:{BROAD // 2}")
    count = ("-format", "%[fx:mean*w*h]", "info:")
    inner = f"{picture}[{width}x{height}+{left - frame_left}+{top - frame_top}]"
    return float(learner.display.run("convert", inner, *bright, *broad, *count))
