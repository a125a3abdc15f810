"""A quiz against the clock, in real time."""

import re

from accessible import Role, name_of
from quizzes import FAILED, STRUCTURE, TIME_IS_UP


def test_the_time_runs_out(learner):
    attempt = learner.open_quiz(STRUCTURE, learner.start_again(timedQuizzes="yes", quiz5="1"))
    clock = learner.program.wait_for(Role.LABEL, re.compile("Time left: .*"), attempt.window)
    attempt.answer()
    # It begins at 1:45.
    for left in range(105, -1, -1):
        text = f"Time left: {left // 60}:{left % 60:02}"
        learner.program.wait_until(f'the clock says "{text}"', lambda: name_of(clock) == text)
    learner.dismiss(TIME_IS_UP, "OK")
    learner.expect_outcome(attempt, "fail", FAILED)
    learner.come_back()
    learner.quit()
