"""Without a mouse: everything by key events, and the focus never lost from sight."""

from itertools import cycle

from accessible import Role, name_of
from quizzes import CLEAR, QUIZZES, STRUCTURE, TIMED, UNTIMED

FIRST = QUIZZES[1].button  # where the focus is in a main menu


def test_from_the_start_to_the_end(learner, keyboard):
    keyboard.press("Return")
    keyboard.walk(keyboard.window("Zorvan", FIRST))
    keyboard.move_to(STRUCTURE.button)
    keyboard.press("space")
    take_with_keys(learner, keyboard)
    settings(learner, keyboard)

    keyboard.press("F1")
    window = keyboard.program.wait_for_window("Help")
    keyboard.walk(window)
    keyboard.move_to("Close")
    keyboard.press("Return")
    keyboard.program.wait_until_gone(window)

    keyboard.wait_for_focus(FIRST)
    keyboard.press("alt+p")
    progress = learner.program.wait_for_window("Progress")
    keyboard.press("alt+F4")
    learner.program.wait_until_gone(progress)

    way_back = learner.program.close_all()
    keyboard.walk(keyboard.window("Zorvan", "Main Menu"))
    keyboard.press("Return")
    learner.program.wait_until_gone(way_back)
    learner.expect_levels(keyboard.window("Zorvan", FIRST))
    learner.quit()


def take_with_keys(learner, keyboard):
    """Takes "Structure", all answers right but one, and goes on from its results."""
    program = learner.program
    attempt = learner.attempt(STRUCTURE)
    keys_for_answers = cycle(("abc", "123", "ABC", ("KP_1", "KP_2", "KP_3")))
    keys_to_go_on = cycle(("Return", "KP_Enter", "space"))
    while not attempt.is_over:
        attempt.question()
        keyboard.wait_for_focus(name_of(attempt.buttons[0]))
        if attempt.answered == 0:
            keyboard.walk(attempt.window)
        # Only an answer's own keys choose it, and Escape does not close a quiz.
        keyboard.press("Return", "Escape")
        answers = next(keys_for_answers)
        attempt.answer(right=attempt.answered > 0, keys=answers)
        if not attempt.is_over:
            keyboard.wait_for_focus("Next Question")
            # Further answers change nothing.
            keyboard.press(*answers)
            keyboard.press(next(keys_to_go_on))
    learner.expect_results(attempt)
    results = keyboard.window("Results", "Home")
    keyboard.press("Return")
    learner.log.append("Going Home")
    program.wait_until("the log says so", lambda: program.log_lines() == learner.log)
    keyboard.press("Escape")
    program.wait_until_gone(results)
    keyboard.window("Zorvan", FIRST)


def settings(learner, keyboard):
    program = learner.program
    keyboard.press("alt+z")
    program.wait_for(Role.MENU_ITEM, "Settings")
    keyboard.press("Down", "Return")
    window = keyboard.window("Settings", UNTIMED, Role.RADIO_BUTTON)
    keyboard.walk(window)
    for key, option, timed in (("Down", TIMED, "yes"), ("Up", UNTIMED, "no")):
        keyboard.press(key)
        keyboard.wait_for_focus(option, Role.RADIO_BUTTON)
        learner.store["timedQuizzes"] = timed
        program.wait_until("the store says so", lambda: learner.stored() == learner.store)
    keyboard.move_to("Clear Progress…")
    keyboard.press("space")
    keyboard.walk(keyboard.window(CLEAR, "Yes"))
    keyboard.press("Escape")
    keyboard.window("Settings", "Clear Progress…")
    keyboard.press("Escape")
    program.wait_until_gone(window)
