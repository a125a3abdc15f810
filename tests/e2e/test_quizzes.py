"""With the mouse: quizzes, what is left of them at the next start, and several windows at once."""

from accessible import Role, State, has
from quizzes import ABANDON, CLEAR, CLEARED, QUIZZES, SEEDS, STRUCTURE


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

    learner.abandon(QUIZZES[4], learner.newest_menu())
    assert len(learner.program.windows("Results")) == 1
    learner.come_back()
    learner.quit()


def test_progress_is_cleared(learner):
    menu = learner.start_again(quiz5="2", quiz7="3", timedQuizzes="yes")
    learner.program.click_button("Settings", menu)
    settings = learner.program.wait_for_window("Settings")
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


def test_quit_asks_in_the_middle_of_a_quiz(learner):
    menu = learner.start_again(quiz5="1")
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    program.press("ctrl+comma")
    settings = program.wait_for_window("Settings")
    program.press("ctrl+q")
    learner.dismiss(ABANDON, "No")
    # Everything is as it was, including the other windows, where the Window menu leads.
    learner.choose_menu_item("Window", "3 Settings")
    program.wait_for_keyboard(settings)
    learner.choose_menu_item("Window", "1 Zorvan")
    program.wait_for_keyboard(menu)
    program.press("alt+w")
    names = ("1 Zorvan", "2 Structure", "3 Settings")
    items = program.wait_for_all(menu, *((Role.MENU_ITEM, name) for name in names))
    assert [has(item, State.CHECKED) for item in items] == [True, False, False]
    program.press("2")
    program.wait_for_keyboard(attempt.window)
    attempt.go_on()
    attempt.answer()
    learner.choose_menu_item("Zorvan", "Quit")
    learner.dismiss(ABANDON, "Yes")
    learner.expect_the_end()
