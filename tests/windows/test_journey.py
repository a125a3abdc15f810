"""A learner's ways through the program, with the real pointer and keyboard."""

from accessible import Role, name_of
from quizzes import ABANDON, CLEAR, CLEARED, GREETING, QUIZZES, SEEDS, STRUCTURE


def test_progress_is_kept(learner):
    menu = learner.start_for_the_first_time()
    learner.expect_levels(menu)
    learner.take(STRUCTURE, menu, wrong=1)
    learner.newest_menu()
    learner.come_back()
    learner.quit()
