"""Several windows at once, none at all, and the end of the program in the middle of a quiz."""

from learner import QUIZZES, Attempt
from program import Role, State, has


def test_the_main_menu_needs_no_picture_file(learner):
    learner.start_for_the_first_time()
    # To read one picture file, Qt would load its plugins for every kind.
    loaded = learner.program.mapped_files()
    assert any("/platforms/" in file for file in loaded)
    assert [file for file in loaded if "/imageformats/" in file] == []
    learner.quit()


def test_the_window_manager_knows_the_program(learner):
    menu = learner.start_for_the_first_time()
    x_window = learner.program.x_window(menu)
    # The window manager finds the program's icon by this name, which the desktop entry has too.
    named = learner.display.run("xprop", "-id", x_window, "WM_CLASS")
    assert named.strip() == 'WM_CLASS(STRING) = "zorvan", "zorvan"'
    learner.quit()


def test_the_window_menu_leads_to_what_is_open(learner):
    menu = learner.start_for_the_first_time()
    attempt = learner.open_quiz(QUIZZES[5], menu)
    learner.program.press("ctrl+comma")
    settings = learner.program.wait_for_window("Settings")
    learner.choose_menu_item("Window", "2 Structure")
    learner.program.wait_until("the quiz has the focus", lambda: is_in_front(attempt.window))
    learner.program.press("alt+w")
    names = ("1 Zorvan", "2 Structure", "3 Settings")
    items = learner.program.wait_for_all(
        attempt.window, *((Role.MENU_ITEM, name) for name in names)
    )
    assert [has(item, State.CHECKED) for item in items] == [False, True, False]
    learner.program.press("3")
    learner.program.wait_until("the settings have the focus", lambda: is_in_front(settings))
    learner.program.press("Escape")
    learner.program.wait_until_gone(settings)
    learner.program.bring_to_front(attempt.window)
    learner.program.press("alt+w")
    learner.program.wait_for(Role.MENU_ITEM, "2 Structure")
    assert learner.program.find(Role.MENU_ITEM, "3 Settings") == []
    learner.program.press("1")
    learner.program.wait_until("the main menu has the focus", lambda: is_in_front(menu))
    learner.program.press("ctrl+q")
    learner.abandon("Yes")
    learner.expect_the_end()


def is_in_front(window):
    return has(window, State.ACTIVE)


def test_two_quizzes_share_one_attempt(learner):
    structure, methods = QUIZZES[5], QUIZZES[3]
    menu = learner.start_for_the_first_time()
    first = learner.open_quiz(structure, menu)
    first.answer()
    first.expect_verdict(right=True)
    learner.program.press("ctrl+3")
    learner.store["currentTest"] = "3"
    second = Attempt(learner, methods, learner.program.wait_for_window(methods.name))
    second.answer()
    second.expect_verdict(right=True)
    # There is one attempt at a time: the first window goes on with the one that the second began.
    learner.program.bring_to_front(first.window)
    first.go_on()
    learner.program.wait_for(Role.LABEL, "Question 2 of 10", first.window)
    learner.program.press("ctrl+w")
    learner.abandon("Yes")
    learner.program.wait_until_gone(first.window)
    learner.program.bring_to_front(second.window)
    second.go_on()
    second.answer_all()
    learner.expect_results(second)
    assert learner.passes(structure) == 0 and learner.passes(methods) == 1
    learner.come_back()
    learner.quit()


def test_the_last_window_leaves_a_way_back(learner):
    menu = learner.start_for_the_first_time()
    learner.program.press("alt+F4")
    learner.program.wait_until_gone(menu)
    way_back = learner.program.wait_for_window("Zorvan")
    learner.program.wait_for(Role.LABEL, "No window is open.", way_back)
    learner.program.click_button("Main Menu", way_back)
    learner.program.wait_until_gone(way_back)
    menu = learner.program.wait_for_window("Zorvan")
    learner.expect_levels(menu)

    learner.program.press("ctrl+w")
    learner.program.wait_until_gone(menu)
    way_back = learner.program.wait_for_window("Zorvan")
    learner.choose_menu_item("Quizzes", "Syntax")
    learner.store["currentTest"] = "6"
    learner.program.wait_until_gone(way_back)
    syntax = learner.program.wait_for_window("Syntax")
    learner.program.press("alt+F4")
    learner.abandon("Yes")
    learner.program.wait_until_gone(syntax)
    way_back = learner.program.wait_for_window("Zorvan")
    learner.program.wait_for(Role.LABEL, "No window is open.", way_back)
    learner.come_back()

    menu = learner.program.wait_for_window("Zorvan")
    learner.program.press("alt+F4")
    learner.program.wait_until_gone(menu)
    learner.program.wait_for_window("Zorvan")
    # The program has no other window left: if the way back is closed, it ends.
    learner.program.click_button("Quit")
    learner.expect_the_end()


def test_quit_asks_in_the_middle_of_a_quiz(learner):
    menu = learner.start_for_the_first_time()
    attempt = learner.open_quiz(QUIZZES[5], menu)
    attempt.answer()
    attempt.expect_verdict(right=True)
    learner.program.press("ctrl+q")
    learner.abandon("No")
    # Everything is as it was, including the other windows.
    assert len(learner.program.windows()) == 2
    attempt.go_on()
    attempt.answer()
    learner.choose_menu_item("Zorvan", "Quit")
    learner.abandon("Yes")
    learner.expect_the_end()
    assert learner.stored() == learner.store

    learner.start()
    learner.expect_levels(learner.program.wait_for_window("Zorvan"))
    learner.quit()


def test_quit_asks_once_for_each_quiz(learner):
    menu = learner.start_for_the_first_time()
    learner.open_quiz(QUIZZES[5], menu)
    learner.program.press("ctrl+1")
    learner.store["currentTest"] = "1"
    learner.program.wait_for_window("Terminology")
    learner.program.press("ctrl+q")
    learner.abandon("Yes")
    learner.abandon("No")
    # One quiz was left; the other one goes on, and so does the program.
    learner.program.wait_until(
        "one quiz is left", lambda: len(learner.program.windows(("Structure", "Terminology"))) == 1
    )
    assert len(learner.program.windows()) == 2
    learner.program.press("ctrl+q")
    learner.abandon("Yes")
    learner.expect_the_end()
    assert learner.stored() == learner.store
