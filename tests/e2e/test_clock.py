"""A quiz against the clock, in real time."""

import re

from learner import FAILED, QUIZZES, TIME_IS_UP
from program import Role, name_of

START = 1 * 60 + 46  # what the clock of "Structure" starts from, in seconds


def test_the_time_runs_out(learner):
    structure = QUIZZES[5]
    menu = learner.start_for_the_first_time()
    learner.take(structure, menu)
    menu = learner.newest_menu()
    settings = learner.set_timed(menu)
    learner.program.press("Escape")
    learner.program.wait_until_gone(settings)

    learner.program.bring_to_front(menu)
    attempt = learner.open_quiz(structure, menu)
    clock = learner.program.wait_for(Role.LABEL, re.compile("Time left: .*"), attempt.window)
    attempt.answer()
    attempt.expect_verdict(right=True)
    for left in reversed(range(START)):
        text = f"Time left: {left // 60}:{left % 60:02}"
        learner.program.wait_until(f'the clock says "{text}"', lambda: name_of(clock) == text)
    learner.dismiss(TIME_IS_UP, "OK")

    learner.program.wait_until_gone(attempt.window)
    learner.store["currentStatus"] = "fail"
    learner.log += ["5"]
    learner.expect_outcome(structure, FAILED)
    assert learner.passes(structure) == 1
    learner.come_back()
    learner.quit()
