import struct
import subprocess
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import pytest

ID = "org.zorvan.Zorvan"
ROOT = Path(__file__).parents[2]
ICONS = ROOT / "resources/icons"


def pytest_addoption(parser):
    parser.addoption("--build", type=Path, required=True, help="where the program was built")
    parser.addoption("--expected-version", required=True, help="the program's version")


@pytest.fixture(scope="session")
def build(request):
    return request.config.getoption("--build")


@pytest.fixture(scope="session")
def version(request):
    return request.config.getoption("--expected-version")


@pytest.fixture(scope="session")
def prefix(build, tmp_path_factory):
    """Where the program and its files are installed."""
    prefix = tmp_path_factory.mktemp("prefix")
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True)
    return prefix


@pytest.fixture
def metainfo(prefix):
    return ElementTree.parse(prefix / f"share/metainfo/{ID}.metainfo.xml").getroot()


def pictures_of_windows():
    """The picture of each width in the icon."""
    data = (ICONS / "zorvan.ico").read_bytes()
    _, kind, count = struct.unpack_from("<HHH", data)
    assert kind == 1
    entries = (struct.unpack_from("<BBBBHHII", data, 6 + 16 * index) for index in range(count))
    return {
        width or 256: data[offset : offset + length] for width, *_, length, offset in entries
    }
