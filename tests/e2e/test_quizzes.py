"""Quizzes from their first question to their results, with the mouse."""

import pytest

from learner import CLEAR, CLEARED, QUIZZES, SEEDS


def test_the_first_start_greets_and_the_next_does_not(learner):
    menu = learner.start_for_the_first_time()
    assert learner.stored() == SEEDS
    learner.expect_levels(menu)
    learner.come_back()
    learner.quit()


@pytest.mark.parametrize("quiz", QUIZZES.values(), ids=lambda quiz: quiz.name)
def test_a_quiz_is_passed(learner, quiz):
    attempt = learner.open_quiz(quiz, learner.start_for_the_first_time())
    attempt.answer_all()
    learner.expect_results(attempt)
    # In any order, each question came once; the main test asks some of all the questions.
    asked = sorted(attempt.asked)
    if quiz.id < 7:
        assert asked == sorted(quiz.asked(number) for number in quiz.numbers)
    else:
        assert len(asked) == 30 and all(asked.count(number) == 1 for number in asked if number < 74)
    learner.expect_levels(learner.newest_menu())
    learner.come_back()
    learner.quit()


def test_three_passes_master_a_quiz_whatever_comes_later(learner):
    structure = QUIZZES[5]
    menu = learner.start_for_the_first_time()
    for _ in range(3):
        learner.take(structure, menu)
        menu = learner.newest_menu()
    assert learner.passes(structure) == 3
    learner.take(structure, learner.come_back(), wrong=2)
    assert learner.passes(structure) == 3
    learner.come_back()
    learner.quit()


def test_a_quiz_is_failed_by_one_answer(learner):
    methods = QUIZZES[3]
    learner.take(methods, learner.start_for_the_first_time(), wrong=3)
    assert learner.passes(methods) == 0
    learner.come_back()
    learner.quit()


def test_a_quiz_is_abandoned(learner):
    attempt = learner.open_quiz(QUIZZES[4], learner.start_for_the_first_time())
    attempt.answer()
    attempt.expect_verdict(right=True)
    learner.program.press("alt+F4")
    learner.abandon("No")
    attempt.go_on()
    attempt.answer(right=False)
    attempt.expect_verdict(right=False)
    learner.program.press("alt+F4")
    learner.abandon("Yes")
    learner.program.wait_until_gone(attempt.window)
    learner.program.wait_for_window("Zorvan")
    assert not learner.program.windows("Results")
    learner.come_back()
    learner.quit()


def test_progress_is_cleared(learner):
    structure = QUIZZES[5]
    menu = learner.start_for_the_first_time()
    learner.take(structure, menu)
    menu = learner.newest_menu()
    settings = learner.set_timed(menu)
    learner.program.click_button("Clear Progress…", settings)
    learner.dismiss(CLEAR, "No")
    assert learner.stored() == learner.store
    learner.program.click_button("Clear Progress…", settings)
    learner.dismiss(CLEAR, "Yes")
    learner.dismiss(CLEARED, "OK")
    # An open main menu shows the old passes until it is refreshed.
    learner.program.bring_to_front(menu)
    learner.expect_levels(menu)
    learner.store |= SEEDS
    assert learner.stored() == learner.store
    learner.program.click_button("Refresh", menu)
    learner.expect_levels(menu)
    learner.come_back()
    learner.quit()
