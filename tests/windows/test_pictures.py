"""Pictures of every window, for the eye: --evidence says where they go."""

import pytest

from accessible import Role
from quizzes import GREETING, SEEDS, STRUCTURE
from test_journey import reader
from wine import THEMES, Screen, Wine

__all__ = ["reader"]


@pytest.fixture(scope="module")
def display(session):
    with Screen(session, "1920x1440") as display:
        yield display


@pytest.fixture(scope="module", params=(100, 200))
def wine(request, display, tmp_path_factory):
    with Wine(display, tmp_path_factory.mktemp("pictures") / "wine") as wine:
        wine.use_desktop()
        wine.scale(request.param)
        wine.percent = request.param
        yield wine


@pytest.mark.parametrize("theme", THEMES)
def test_every_window(request, learner, theme):
    learner.wine.turn(theme)
    folder = request.config.getoption("--evidence").absolute() / "pictures"
    folder.mkdir(parents=True, exist_ok=True)

    def take(name, title=None):
        window = None
        if title:
            window = program.wait_for_window(title)
            program.wait_for_keyboard(window)
        file = folder / f"{name}-{theme}-{learner.wine.percent}.png"
        program.picture(file, window)
        return window

    def close(window):
        program.press("Escape")
        program.wait_until_gone(window)

    learner.start()
    program = learner.program
    take("alert", GREETING)
    learner.dismiss(GREETING, "OK")
    menu = take("main-menu", "Zorvan")
    for name in ("Zorvan", "Quizzes", "Window", "Help"):
        program.click_button(name, menu, Role.MENU_ITEM)
        take(f"menu-{name.lower()}")
        program.press("Escape", "Escape")
    learner.store = dict(SEEDS)
    attempt = learner.open_quiz(STRUCTURE, menu)
    while not attempt.is_over:
        attempt.question()
        take(f"quiz-{attempt.answered + 1}", STRUCTURE.name)
        attempt.answer(right=attempt.answered != 1)
        if not attempt.is_over:
            take(f"quiz-{attempt.answered}-answered", STRUCTURE.name)
            attempt.go_on()
    learner.expect_results(attempt)
    close(take("results", "Results"))
    menu = learner.newest_menu()
    take("main-menu-passed", "Zorvan")
    for name in ("Progress", "Settings"):
        program.click_button(name, menu)
        close(take(name.lower(), name))
    program.press("F1")
    take("help", "Help")
    program.press("Tab", "Tab", "Tab", "Tab", "Tab")
    close(take("help-keys", "Help"))
    learner.choose_menu_item("Zorvan", "About Zorvan")
    close(take("about", "About Zorvan"))
    program.close_all()
    take("way-back", "Zorvan")
    program.press("ctrl+q")
    assert program.exit_status() == 0
