"""Quizzes with the mouse, and what is left of them when the program starts again."""

from quizzes import CLEAR, CLEARED, QUIZZES, SEEDS, STRUCTURE


def test_progress_is_kept(learner):
    menu = learner.start_for_the_first_time()
    learner.expect_levels(menu)
    # To read one picture file, Qt would load its plugins for every kind.
    loaded = learner.program.mapped_files()
    assert any("/platforms/" in file for file in loaded)
    assert [file for file in loaded if "/imageformats/" in file] == []
    # The window manager finds the program's icon by this name, which the desktop entry has too.
    x_window = learner.program.x_window(menu)
    named = learner.display.run("xprop", "-id", x_window, "WM_CLASS")
    assert named.strip() == 'WM_CLASS(STRING) = "zorvan", "zorvan"'

    learner.take(STRUCTURE, menu, wrong=1)
    learner.newest_menu()
    menu = learner.come_back()
    learner.take(STRUCTURE, menu, wrong=2)
    assert learner.passes(STRUCTURE) == 1

    attempt = learner.open_quiz(QUIZZES[4], learner.newest_menu())
    attempt.answer()
    learner.program.press("alt+F4")
    learner.abandon("No")
    attempt.go_on()
    attempt.answer(right=False)
    learner.program.press("alt+F4")
    learner.abandon("Yes")
    learner.program.wait_until_gone(attempt.window)
    assert len(learner.program.windows("Results")) == 1
    learner.come_back()
    learner.quit()


def test_progress_is_cleared(learner):
    menu = learner.start_again(quiz5="2", quiz7="3")
    settings = learner.set_timed(menu)
    learner.program.click_button("Clear Progress…", settings)
    learner.dismiss(CLEAR, "Yes")
    learner.dismiss(CLEARED, "OK")
    # An open main menu shows the old passes until it is refreshed.
    learner.program.bring_to_front(menu)
    learner.expect_levels(menu)
    learner.store |= SEEDS
    learner.program.click_button("Refresh", menu)
    learner.expect_levels(menu)
    learner.come_back()
    learner.quit()
