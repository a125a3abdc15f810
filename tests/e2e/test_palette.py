"""The desktop turns dark, and light again, while the learner has windows open."""

import pytest

from quizzes import ABANDON, STRUCTURE

DARK = "/usr/share/qt6ct/colors/darker.conf"


@pytest.fixture
def learner(learner):
    learner.environment = {"QT_QPA_PLATFORMTHEME": "qt6ct"}
    return learner


def test_windows_follow_the_desktop(learner):
    turn(learner, dark=False)
    windows = open_windows(learner)
    before = pictures(learner, windows, "before", dark=False)
    turn(learner, dark=True)
    pictures(learner, windows, "dark", dark=True)
    turn(learner, dark=False)
    for title, picture in pictures(learner, windows, "after", dark=False).items():
        different = learner.display.differing_pixels(picture, before[title])
        assert different == 0, f"{different} pixels of {picture} are not as in {before[title]}"
    learner.program.press("ctrl+q")
    learner.dismiss(ABANDON, "Yes")
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


def pictures(learner, windows, name, dark):
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
