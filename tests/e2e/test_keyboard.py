"""Without a mouse: everything by key events, and the focus never lost from sight."""

from learner import ABANDON, CLEAR, QUIZZES, Attempt
from program import Role, State, ask, children, has, name_of, shown

FIRST = QUIZZES[1].button  # where the focus is in a main menu
STRUCTURE = QUIZZES[5]


def test_from_the_start_to_mastery_and_out(learner, keyboard):
    keyboard.press("Return")
    keyboard.walk(keyboard.window("Zorvan", FIRST))

    keyboard.press_until_focus("Tab", STRUCTURE.button)
    keyboard.press("space")
    take_with_keys(learner, keyboard, answers="abc", go_on="Return")
    keyboard.press("ctrl+5")
    take_with_keys(learner, keyboard, answers=["KP_1", "2", "KP_3"], go_on="KP_Enter")
    open_menu_item(keyboard, "alt+q", "Structure")
    take_with_keys(learner, keyboard, answers="ABC", go_on="space")
    assert learner.passes(STRUCTURE) == 3

    settings(learner, keyboard)
    read_help(keyboard)
    open_menu_item(keyboard, "alt+z", "About Zorvan")
    keyboard.window("About Zorvan", "OK")
    keyboard.press("Escape")
    keyboard.wait_for_focus(FIRST)

    keyboard.press("ctrl+0")
    keyboard.press("alt+p")
    progress = learner.program.wait_for_window("Progress")
    values = ["0%", "0%", "0%", "0%", "100%", "0%"]
    passes = [f"{QUIZZES[quiz].name}: {value}" for quiz, value in enumerate(values, 1)]
    keyboard.wait_for_focus(". ".join(passes), Role.PANEL)
    keyboard.press("Escape")
    learner.program.wait_until_gone(progress)
    close_all(keyboard)
    keyboard.walk(keyboard.window("Zorvan", "Main Menu"))
    keyboard.press("Return")
    learner.expect_levels(keyboard.window("Zorvan", FIRST))
    learner.program.press("ctrl+q")
    learner.expect_the_end()
    assert learner.stored() == learner.store


def take_with_keys(learner, keyboard, answers, go_on):
    """Takes "Structure", all answers right but one, and goes on from its results."""
    program = learner.program
    learner.store["currentTest"] = "5"
    attempt = Attempt(learner, STRUCTURE, program.wait_for_window(STRUCTURE.name))
    while len(attempt.asked) < STRUCTURE.length:
        attempt.question()
        keyboard.wait_for_focus(name_of(attempt.buttons[0]))
        if not attempt.asked:
            keyboard.walk(attempt.window)
        # Only an answer's own keys choose it.
        keyboard.press("Return")
        right = len(attempt.asked) > 0
        attempt.answer(right, answers)
        if len(attempt.asked) < STRUCTURE.length:
            attempt.expect_verdict(right)
            keyboard.wait_for_focus("Next Question")
            # Further answers change nothing.
            keyboard.press(*answers)
            keyboard.press(go_on)
    learner.expect_results(attempt)
    results = keyboard.window("Results", "Home")
    keyboard.press("Return")
    learner.log.append("Going Home")
    program.wait_until("the log says so", lambda: program.log_lines() == learner.log)
    keyboard.press("Escape")
    program.wait_until_gone(results)
    keyboard.window("Zorvan", FIRST)


def open_menu_item(keyboard, menu, item):
    keyboard.program.press(menu)
    for _ in range(10):
        chosen = keyboard.program.wait_until(
            "a menu item is chosen", lambda: chosen_item(keyboard.program)
        )
        if name_of(chosen) == item:
            break
        keyboard.program.press("Down")
        keyboard.program.wait_until(
            "the next item is chosen",
            lambda: name_of(chosen_item(keyboard.program)) not in ("", name_of(chosen)),
        )
    keyboard.program.press("Return")


def chosen_item(program):
    """The item of an open menu that the arrow keys have reached."""
    for item in shown(program.windows()[0]):
        if ask(item.get_role) == Role.MENU_ITEM and has(item, State.FOCUSED):
            if not children(item):
                return item
    return None


def settings(learner, keyboard):
    program = learner.program
    keyboard.press("ctrl+comma")
    untimed, timed = "Untimed: take as long as you like", "Timed: about 15 seconds a question"
    window = keyboard.window("Settings", untimed, Role.RADIO_BUTTON)
    keyboard.walk(window)
    keyboard.press("Down")
    keyboard.wait_for_focus(timed, Role.RADIO_BUTTON)
    learner.store["timedQuizzes"] = "yes"
    program.wait_until("quizzes are timed", lambda: learner.stored() == learner.store)
    keyboard.press("Up")
    keyboard.wait_for_focus(untimed, Role.RADIO_BUTTON)
    learner.store["timedQuizzes"] = "no"
    program.wait_until("quizzes are untimed", lambda: learner.stored() == learner.store)
    keyboard.press_until_focus("Tab", "Clear Progress…")
    keyboard.press("space")
    keyboard.window(CLEAR, "Yes")
    keyboard.walk(program.windows()[0])
    keyboard.press("Escape")
    keyboard.window("Settings", "Clear Progress…")
    assert learner.stored() == learner.store
    keyboard.press("Escape")
    program.wait_until_gone(window)


def read_help(keyboard):
    keyboard.press("F1")
    window = keyboard.program.wait_for_window("Help")
    keyboard.walk(window)
    keyboard.press_until_focus("Tab", "Close")
    keyboard.press("Return")
    keyboard.program.wait_until_gone(window)


def close_all(keyboard):
    """Closes one window after another until only the way back is left."""
    program = keyboard.program
    while not program.find(Role.LABEL, "No window is open."):
        window = program.windows()[0]
        keyboard.press("ctrl+w")
        program.wait_until_gone(window)
        program.wait_until("another window has the focus", lambda: program.focus())


def test_every_shortcut_does_what_the_menu_says(learner, keyboard):
    program = learner.program
    keyboard.press("Return")
    menu = keyboard.window("Zorvan", FIRST)
    for quiz in QUIZZES.values():
        program.press(f"ctrl+{quiz.id}")
        learner.store["currentTest"] = str(quiz.id)
        window = program.wait_for_window(quiz.name)
        # Escape does not close a quiz, and Ctrl+W asks first.
        keyboard.press("Escape")
        program.press("ctrl+w")
        keyboard.window(ABANDON, "Yes")
        program.press("Return")
        program.wait_until_gone(window)
        keyboard.window("Zorvan", FIRST)
    keyboard.press("Escape")
    for keys, title in (("ctrl+comma", "Settings"), ("F1", "Help")):
        for closing in ("Escape", "ctrl+w", "alt+F4"):
            program.press(keys)
            window = program.wait_for_window(title)
            keyboard.focused()
            program.press(closing)
            program.wait_until_gone(window)
    assert program.windows() == [menu]
    program.press("ctrl+0")
    program.wait_until("another main menu is open", lambda: len(program.windows("Zorvan")) == 2)
    program.press("ctrl+q")
    learner.expect_the_end()
    assert learner.stored() == learner.store


def test_arrow_keys_reach_every_menu_item(learner, keyboard):
    program = learner.program
    keyboard.press("Return")
    keyboard.window("Zorvan", FIRST)
    menus = (
        ("About Zorvan", "Settings", "Quit"),
        tuple(quiz.name for quiz in QUIZZES.values()),
        ("Main Menu", "Close Window", "1 Zorvan"),
        ("Zorvan Help",),
    )
    program.press("alt+z")
    for items in menus:
        for item in items:
            program.wait_until(
                f'"{item}" is chosen',
                lambda: (chosen := chosen_item(program)) and name_of(chosen) == item,
            )
            program.press("Down")
        program.press("Right")
    program.press("Escape", "Escape")
    keyboard.wait_for_focus(FIRST)
    learner.quit()
