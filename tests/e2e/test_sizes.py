"""Large text and fine screens: every window fits its screen, and nothing in it is cut off."""

import re
from itertools import combinations
from math import floor

import pytest

from learner import CLEAR, GREETING, QUIZZES
from program import (
    Role,
    State,
    ask,
    children,
    common,
    describe,
    extents,
    has,
    lies_within,
    name_of,
)
from session import Display

# Without the second variable Qt takes so many dots for a finer screen, and enlarges everything.
SCREEN_AND_TEXT = {
    100: ("1280x720", {"QT_FONT_DPI": "96"}),
    200: ("1920x1080", {"QT_FONT_DPI": "192", "QT_ENABLE_HIGHDPI_SCALING": "0"}),
}
BUTTONS = (Role.PUSH_BUTTON, Role.RADIO_BUTTON)
SMALLEST_TARGET = 24  # in the program's pixels, as all places below
SCROLLED = "Help text"
FUNCTIONS = QUIZZES[4]


class FineDisplay(Display):
    """A display with more pixels than the program counts. The accessibility bus gives places in the
    program's pixels, the X server in its own. The methods here give and take the program's pixels,
    rounded as Qt does.
    """

    def __init__(self, session, size, scale, watched):
        self.screen = tuple(floor(int(side) * scale) for side in size.split("x"))
        super().__init__(session, "x".join(map(str, self.screen)), watched)
        self._scale = scale

    def windows(self):
        return {
            x_window: tuple(floor(pixels / self._scale + 0.5) for pixels in place)
            for x_window, place in super().windows().items()
        }

    def click(self, x, y):
        super().click(floor(x * self._scale), floor(y * self._scale))

    def is_large_enough(self, x_window):
        """Whether a window has at least its minimum size, so that nothing is cut off."""
        hints = self.run("xprop", "-id", x_window, "WM_NORMAL_HINTS")
        [least] = re.findall(r"minimum size: (\d+) by (\d+)", hints)
        *_, width, height = super().windows()[x_window]
        return width >= int(least[0]) and height >= int(least[1])


@pytest.fixture(params=SCREEN_AND_TEXT, ids="text {} %".format)
def screen_and_text(request):
    return SCREEN_AND_TEXT[request.param]


@pytest.fixture(params=[1, 1.5, 2], ids="scale {}".format)
def scale(request):
    return request.param


@pytest.fixture
def display(request, session, screen_and_text, scale):
    size, _ = screen_and_text
    with FineDisplay(session, size, scale, request.config.getoption("--watch")) as display:
        yield display


@pytest.fixture
def learner(learner, screen_and_text, scale):
    _, environment = screen_and_text
    learner.environment = environment | {"QT_SCALE_FACTOR": str(scale)}
    return learner


def test_every_window_fits(learner):
    learner.start()
    program = learner.program
    expect_to_fit(program, program.wait_for_window(GREETING))
    menu = learner.greeted()
    expect_to_fit(program, menu)
    program.press("F1")
    expect_to_fit(program, program.wait_for_window("Help"))
    program.press("Escape")
    program.wait_for_window("Zorvan")
    learner.choose_menu_item("Zorvan", "About Zorvan")
    expect_to_fit(program, program.wait_for_window("About Zorvan"))
    program.press("Escape")
    program.wait_for_window("Zorvan")

    attempt = learner.open_quiz(FUNCTIONS, menu)
    while len(attempt.asked) < FUNCTIONS.length:
        attempt.question()
        expect_to_fit(program, attempt.window)
        attempt.answer(keys="abc")
        if len(attempt.asked) < FUNCTIONS.length:
            attempt.expect_verdict(right=True)
            if len(attempt.asked) == 1:
                expect_to_fit(program, attempt.window)
            program.press("Return")
    results = learner.expect_results(attempt)
    expect_to_fit(program, results)
    program.press("Escape")
    program.wait_until_gone(results)

    menu = learner.newest_menu()
    program.click_button("Progress", menu)
    expect_to_fit(program, program.wait_for_window("Progress"))
    program.press("Escape")
    program.wait_for_window("Zorvan")
    program.click_button("Settings", menu)
    settings = program.wait_for_window("Settings")
    expect_to_fit(program, settings)
    program.click_button("Clear Progress…", settings)
    expect_to_fit(program, program.wait_for_window(CLEAR))
    learner.dismiss(CLEAR, "No")
    program.wait_for_window("Settings")
    program.press("Escape")
    program.wait_until_gone(settings)

    for _ in range(2):
        menu = program.wait_for_window("Zorvan")
        program.press("ctrl+w")
        program.wait_until_gone(menu)
    way_back = program.wait_for_window("Zorvan")
    program.wait_for(Role.LABEL, "No window is open.", way_back)
    expect_to_fit(program, way_back)
    learner.quit()


def expect_to_fit(program, window):
    """Checks that a window and its frame are on the screen, and everything in it can be seen."""
    x_window = program.x_window(window)
    frame, screen = program.display.frame(x_window), (0, 0, *program.display.screen)
    assert lies_within(frame, screen), f"{describe(window)} leaves the screen"
    assert program.display.is_large_enough(x_window), f"{describe(window)} is too small"
    assert list(flaws(window)) == []


def flaws(item, scrolls=False):
    """All items inside `item` that leave what is around them, overlap a neighbour or are hard to
    hit. What scrolls may be longer than its place.
    """
    place = extents(item)
    parts = [(part, extents(part)) for part in children(item) if has(part, State.SHOWING)]
    for part, (left, top, width, height) in parts:
        if scrolls:
            top, height = place[1], 0
        if not lies_within((left, top, width, height), place):
            yield f"{describe(part)} leaves {describe(item)} at {place}"
        if ask(part.get_role) in BUTTONS and height < SMALLEST_TARGET:
            yield f"{describe(part)} is {height} pixels high"
        yield from flaws(part, scrolls=name_of(item) == SCROLLED)
    for (one, one_place), (other, other_place) in combinations(parts, 2):
        if overlap(one_place, other_place):
            yield f"{describe(one)} lies on {describe(other)}"


def overlap(a, b):
    _, _, width, height = common(a, b)
    return width > 0 and height > 0
