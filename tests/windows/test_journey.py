"""A learner's ways through the program, with the real pointer and keyboard."""

import re
from dataclasses import replace

import pytest

from accessible import Role, description_of
from quizzes import GREETING, PASSED, QUIZZES, SEEDS, STRUCTURE, answer_names
from reader import Reader
from test_keyboard import test_from_the_start_to_the_end
from test_quizzes import test_progress_is_cleared, test_quit_asks_in_the_middle_of_a_quiz
from windowslearner import COMPANY
from wine import THEMES, Screen, Wine

# Journeys with a mouse and without one that are the same on Linux.
__all__ = [
    "test_from_the_start_to_the_end",
    "test_progress_is_cleared",
    "test_quit_asks_in_the_middle_of_a_quiz",
]

UNWRITABLE = (
    r"The preferences cannot be written to \HKEY_CURRENT_USER\Software\Zorvan\Zorvan; they last"
    " only until the program ends. The system refuses them"
)


@pytest.fixture(scope="module")
def display(session):
    with Screen(session) as display:
        yield display


@pytest.fixture(scope="module")
def wine(display, tmp_path_factory):
    """One Windows for all journeys: what they leave there is removed before the next."""
    with Wine(display, tmp_path_factory.mktemp("journeys") / "wine") as wine:
        wine.use_desktop()
        yield wine


@pytest.fixture(scope="module")
def reader(wine, build):
    # Wine's desktop closes when no program is left on it, and takes those with it that just start.
    with Reader(wine, build) as reader:
        yield reader


def test_progress_is_kept(learner):
    menu = learner.start_for_the_first_time()
    learner.expect_levels(menu)
    learner.take(STRUCTURE, menu, wrong=1)
    assert learner.stored()["quiz5"] == "1"
    learner.newest_menu()
    menu = learner.come_back()
    learner.take(STRUCTURE, menu, wrong=2)
    assert learner.stored()["quiz5"] == "1"

    # A quiz that is closed half-way does not count.
    learner.abandon(QUIZZES[4], learner.newest_menu())
    learner.come_back()
    learner.quit()


def test_the_last_window_leaves_a_way_back(learner):
    learner.start_again(quiz5="1")
    program = learner.program
    way_back = program.close_all()
    learner.choose_menu_item("Window", "Main Menu")
    learner.expect_levels(program.wait_for_window("Zorvan"))
    program.wait_until_gone(way_back)
    learner.choose_menu_item("Zorvan", "Quit")
    learner.expect_the_end()


def test_a_screen_reader_hears_the_verdict(learner):
    attempt = learner.open_quiz(STRUCTURE, learner.start_again())
    for right in (True, False):
        question = attempt.question()
        assert description_of(attempt.buttons[0]) == f"Question {attempt.answered + 1} of 7"
        attempt.answer(right)
        answer = answer_names(question)[question["right"] - 1]
        wrong = f"wrong, the right answer is {answer}, score 50%"
        verdict = "correct, score 100 %" if right else wrong
        learner.program.wait_until(
            "the verdict can be heard",
            lambda: learner.program.focus() == attempt.next_question
            and description_of(attempt.next_question) == verdict,
        )
        attempt.go_on()


def test_two_copies_share_the_progress(learner):
    menu = learner.start_again()
    learner.take(STRUCTURE, menu)
    other = replace(learner, name="another program", store=dict(learner.store))
    other.start()
    other_menu = other.program.wait_for_window("Zorvan")
    other.expect_levels(other_menu)
    other.take(STRUCTURE, other_menu)
    assert other.stored()["quiz5"] == "2"
    other.quit()

    learner.store = other.store
    learner.program.bring_to_front(menu)
    learner.program.click_button("Refresh", menu)
    learner.expect_levels(menu)
    learner.quit()


def test_nobody_reads_the_log(learner):
    # As a desktop starts it, with no standard error.
    learner.starter = ("start", "/wait", "/unix")
    learner.start_again()
    learner.log = []
    learner.quit()


def test_the_registry_refuses_everything(learner, build):
    learner.wine.run(build / "tests/windows/volatilekey.exe", COMPANY.removeprefix("HKCU\\"))
    learner.start()
    program = learner.program
    learner.dismiss(GREETING, "OK")
    attempt = learner.open_quiz(STRUCTURE, program.wait_for_window("Zorvan"))
    attempt.answer_all()
    program.wait_for(Role.LABEL, PASSED[1], program.wait_for_window("Results"))
    # What was earned lasts until the program ends.
    learner.store = SEEDS | {"quiz5": "1"}
    learner.newest_menu()
    program.press("ctrl+q")
    assert program.exit_status() == 0
    assert program.log_lines() == [UNWRITABLE, "Finished Starting", "5"]
    assert learner.stored() == {}


@pytest.mark.parametrize("theme", THEMES)
def test_windows_are_as_dark_as_windows_is(learner, theme):
    learner.wine.turn(theme)
    window = learner.open_quiz(STRUCTURE, learner.start_again()).window
    picture = learner.home / "quiz.png"
    learner.program.picture(picture, window)
    background, text = colours(learner.display, picture)
    assert (background < 0.3 and text > 0.7) == (theme == "dark")
    assert (background > 0.7 and text < 0.3) == (theme == "light")


def colours(display, picture):
    """How light the commonest colour of a picture is, and that which is furthest from it."""
    grey = ("-colorspace", "gray", "-format", "%c", "histogram:info:")
    histogram = display.run("convert", picture, *grey)
    counts = {int(grey): int(count) for count, grey in re.findall(r"(\d+): \((\d+)", histogram)}
    background = max(counts, key=counts.get)
    text = max(counts, key=lambda grey: abs(grey - background))
    return background / 255, text / 255
