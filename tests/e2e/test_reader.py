"""Without sight: what a screen reader finds in every window, and what it is told when."""

import re

import pyatspi
import pytest
from gi.repository import Atspi

from learner import ABANDON, CLEAR, CLEARED, GREETING, PASSED, QUIZZES, SEEDS, answer_names
from program import Role, State, ask, children, describe, description_of, has, name_of, shown

STRUCTURE = QUIZZES[5]
NAMELESS = (Role.FILLER, Role.SEPARATOR)
LEVEL = re.compile(r".+, (\d+) of (\d+) (passes|questions)")

# There is no other way to learn an action's name.
pytestmark = pytest.mark.filterwarnings("ignore:Atspi.Action.get_action_name is deprecated")


def expect_words(window):
    """Checks that everything has a name, every state is in words and every control is usable."""
    items = list(shown(window))
    controls = [item for item in items if has(item, State.FOCUSABLE)]
    buttons = [name_of(item) for item in controls if ask(item.get_role) == Role.PUSH_BUTTON]
    assert len(buttons) == len(set(buttons)), buttons
    for item in [window, *items]:
        role, name = ask(item.get_role), name_of(item)
        assert role not in (Role.INVALID, Role.UNKNOWN), describe(item)
        assert name.strip() or role in NAMELESS or holds_an_alerts_buttons(item), describe(item)
        assert not re.fullmatch("[A-Z0-9]", name), describe(item)
        if role == Role.PROGRESS_BAR:
            value, maximum, _ = LEVEL.fullmatch(name).groups()
            assert ask(Atspi.Value.get_current_value, item) == int(value)
            assert ask(Atspi.Value.get_maximum_value, item) == int(maximum)
        if role in (Role.PUSH_BUTTON, Role.RADIO_BUTTON) and has(item, State.ENABLED):
            assert item in controls and actions(item), describe(item)


def holds_an_alerts_buttons(item):
    parent = ask(item.get_parent)
    return ask(item.get_role) == Role.PANEL and ask(parent.get_role) == Role.ALERT


def actions(item):
    count = ask(Atspi.Action.get_n_actions, item) or 0
    return [ask(Atspi.Action.get_action_name, item, index) for index in range(count)]


def expect_shown(program, window, *wanted):
    program.wait_for_all(window, *wanted)
    expect_words(window)


def test_every_window_is_put_in_words(learner):
    learner.start()
    program = learner.program
    expect_shown(program, program.wait_for_window(GREETING), (Role.LABEL, GREETING))
    menu = learner.greeted()
    expect_words(menu)
    learner.expect_levels(menu)

    attempt = learner.open_quiz(STRUCTURE, menu)
    question = attempt.question()
    expect_shown(
        program,
        attempt.window,
        (Role.LABEL, "Structure"),
        (Role.PROGRESS_BAR, "Progress, 0 of 7 questions"),
        (Role.LABEL, "Question 1 of 7"),
        (Role.PANEL, question["text"]),
        (Role.LABEL, "Score: –"),
    )
    attempt.answer(right=False)
    attempt.expect_verdict(right=False)
    expect_words(attempt.window)
    program.press("ctrl+w")
    expect_shown(program, program.wait_for_window(ABANDON), (Role.LABEL, ABANDON))
    learner.abandon("No")
    attempt.go_on()
    attempt.answer_all()
    results = learner.expect_results(attempt)
    outcome = (
        "Structure. Pass mark 1: earned. Pass mark 2: missing. Pass mark 3: missing. " + PASSED[1]
    )
    expect_shown(program, results, (Role.PANEL, outcome), (Role.PUSH_BUTTON, "Home"))

    menu = learner.newest_menu()
    expect_words(menu)
    program.click_button("Progress", menu)
    values = ["0%", "0%", "0%", "0%", "33%", "0%"]
    passes = [f"{QUIZZES[quiz].name}: {value}" for quiz, value in enumerate(values, 1)]
    expect_shown(
        program,
        program.wait_for_window("Progress"),
        (Role.PANEL, ". ".join(passes)),
        *((Role.LABEL, value) for value in passes),
    )

    program.press("ctrl+comma")
    settings = program.wait_for_window("Settings")
    expect_words(settings)
    untimed, timed = "Untimed: take as long as you like", "Timed: about 15 seconds a question"
    assert has(program.wait_for(Role.RADIO_BUTTON, untimed, settings), State.CHECKED)
    assert not has(program.wait_for(Role.RADIO_BUTTON, timed, settings), State.CHECKED)
    program.click_button("Clear Progress…", settings)
    expect_shown(program, program.wait_for_window(CLEAR), (Role.LABEL, CLEAR))
    learner.dismiss(CLEAR, "Yes")
    expect_shown(program, program.wait_for_window(CLEARED), (Role.LABEL, CLEARED))
    learner.dismiss(CLEARED, "OK")
    learner.store |= SEEDS

    program.press("F1")
    expect_words(program.wait_for_window("Help"))
    learner.choose_menu_item("Zorvan", "About Zorvan")
    expect_words(program.wait_for_window("About Zorvan"))
    program.press("Escape")
    program.wait_for_window("Help")
    while not program.find(Role.LABEL, "No window is open."):
        window = program.windows()[0]
        program.press("ctrl+w")
        program.wait_until_gone(window)
        program.wait_until("another window has the focus", program.focus)
    way_back = program.wait_for_window("Zorvan")
    expect_words(way_back)
    # The same items were read as another window's before.
    learner.choose_menu_item("Zorvan", "Quit")
    learner.expect_the_end()


def test_menus_are_put_in_words_with_their_shortcuts(learner):
    window = learner.start_for_the_first_time()
    menu_bar = next(item for item in shown(window) if ask(item.get_role) == Role.MENU_BAR)
    found = {}
    for menu in children(menu_bar):
        [popup] = children(menu)
        assert name_of(popup) == name_of(menu)
        found[name_of(menu)] = [
            (name_of(item), ask(Atspi.Action.get_key_binding, item, 0))
            for item in children(popup)
            if ask(item.get_role) != Role.SEPARATOR
        ]
    assert found == {
        "Zorvan": [("About Zorvan", "Alt+A"), ("Settings", "Ctrl+,"), ("Quit", "Ctrl+Q")],
        "Quizzes": [(quiz.name, f"Ctrl+{quiz.id}") for quiz in QUIZZES.values()],
        "Window": [("Main Menu", "Ctrl+0"), ("Close Window", "Ctrl+W")],
        "Help": [("Zorvan Help", "F1")],
    }


class Reader:
    """Notes what a screen reader would be told: what gets the focus, what is announced, and what
    changes its name.
    """

    EVENTS = (
        "object:state-changed:focused",
        "object:announcement",
        "object:property-change:accessible-name",
        "object:property-change:accessible-description",
        "object:property-change:accessible-value",
        "object:text-changed",
        "object:text-caret-moved",
        "window:activate",
        "window:create",
    )

    def __init__(self):
        self.heard = []
        self.announced = []

    def __enter__(self):
        pyatspi.Registry.registerEventListener(self._hear, *self.EVENTS)
        return self

    def __exit__(self, *_):
        pyatspi.Registry.deregisterEventListener(self._hear, *self.EVENTS)

    def _hear(self, event):
        self.heard.append((event.type.name, event.source, event.detail1))
        if event.type.name == self.EVENTS[1]:
            self.announced.append(event.any_data)

    def forget(self):
        self.heard.clear()
        self.announced.clear()

    def focused(self):
        return [item for kind, item, on in self.heard if kind == self.EVENTS[0] and on]


def test_the_question_and_the_verdict_are_heard(learner):
    attempt = learner.open_quiz(STRUCTURE, learner.start_for_the_first_time())
    program = learner.program
    with Reader() as reader:
        for right in (True, False):
            question = attempt.question()
            first = attempt.buttons[0]
            program.wait_until("the first answer has the focus", lambda: program.focus() == first)
            assert description_of(first) == f"Question {len(attempt.asked) + 1} of 7"
            assert name_of(group_of(first)) == question["text"]

            reader.forget()
            attempt.answer(right)
            attempt.expect_verdict(right)

            def told():
                """Before Qt 6.8 a description says what newer versions announce."""
                texts = [*reader.announced, description_of(attempt.next_question)]
                return attempt.next_question in reader.focused() and list(filter(None, texts))

            answer = answer_names(question)[question["right"] - 1]
            wrong = f"wrong, the right answer is {answer}, score 50%"
            verdict = "correct, score 100 %" if right else wrong
            assert program.wait_until("the reader is told of the verdict", told) == [verdict]
            assert description_of(attempt.buttons[question["right"] - 1]) == "the right answer"

            reader.forget()
            attempt.go_on()
            attempt.question()
            program.wait_until(
                "the reader is told of the next question", lambda: first in reader.focused()
            )


def group_of(item):
    while ask(item.get_role) != Role.PANEL:
        item = ask(item.get_parent)
    return item


def test_the_time_is_readable_but_not_spoken(learner):
    menu = learner.start_for_the_first_time()
    program = learner.program
    settings = learner.set_timed(menu)
    program.press("Escape")
    program.wait_until_gone(settings)
    attempt = learner.open_quiz(STRUCTURE, program.wait_for_window("Zorvan"))
    clock = program.wait_for(Role.LABEL, "Time left: 1:45", attempt.window)
    expect_words(attempt.window)
    with Reader() as reader:
        for text in ("Time left: 1:44", "Time left: 1:43", "Time left: 1:42"):
            program.wait_until(f'"{text}" can be read', lambda: name_of(clock) == text)
        # A new name of a label without the focus is not spoken.
        told = {(kind, describe(item)) for kind, item, _ in reader.heard if item != clock}
        assert told == set()
        kinds = {kind for kind, _, _ in reader.heard}
        assert kinds == {"object:property-change:accessible-name"}
    assert not has(clock, State.FOCUSABLE)
