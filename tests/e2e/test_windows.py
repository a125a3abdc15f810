"""Several windows at once, and the end of the program in the middle of a quiz."""

from accessible import Role, State, has
from quizzes import STRUCTURE


def test_the_window_menu_leads_to_what_is_open(learner):
    menu = learner.start_for_the_first_time()
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    program.press("ctrl+comma")
    settings = program.wait_for_window("Settings")
    learner.choose_menu_item("Window", "2 Structure")
    program.wait_for_keyboard(attempt.window)
    program.press("alt+w")
    names = ("1 Zorvan", "2 Structure", "3 Settings")
    items = program.wait_for_all(attempt.window, *((Role.MENU_ITEM, name) for name in names))
    assert [has(item, State.CHECKED) for item in items] == [False, True, False]
    program.press("3")
    program.wait_for_keyboard(settings)
    program.press("Escape")
    program.wait_until_gone(settings)

    program.bring_to_front(attempt.window)
    program.press("alt+w")
    program.wait_for(Role.MENU_ITEM, "2 Structure")
    assert program.find(Role.MENU_ITEM, "3 Settings") == []
    program.press("1")
    program.wait_for_keyboard(menu)


def test_quit_asks_in_the_middle_of_a_quiz(learner):
    menu = learner.start_again(quiz5="1")
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    learner.program.press("ctrl+q")
    learner.abandon("No")
    # Everything is as it was, including the other windows.
    assert len(learner.program.windows()) == 2
    attempt.go_on()
    attempt.answer()
    learner.choose_menu_item("Zorvan", "Quit")
    learner.abandon("Yes")
    learner.expect_the_end()
