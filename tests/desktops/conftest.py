import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent.parent / "e2e"))
pytest_plugins = ["journeys"]
pytest.register_assert_rewrite("attempt", "learner")

from desktops import KWinX11, Metacity, Xfwm
from wayland import KWinWayland, Mutter, Sway

DESKTOPS = {
    "metacity": Metacity,
    "xfwm4": Xfwm,
    "kwin_x11": KWinX11,
    "kwin_wayland": KWinWayland,
    "mutter": Mutter,
    "sway": Sway,
}


def pytest_addoption(parser):
    parser.addoption("--desktop", required=True, choices=DESKTOPS, help="the desktop to try it on")


@pytest.fixture(scope="session")
def display(request, session):
    with DESKTOPS[request.config.getoption("--desktop")](session) as display:
        yield display
