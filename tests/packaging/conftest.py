import subprocess
from pathlib import Path

import pytest


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
def share(build, tmp_path_factory):
    """The folder of the files that are installed with the program."""
    prefix = tmp_path_factory.mktemp("prefix")
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True)
    return prefix / "share"
