"""The package from this tree, the tool it is compared with, the test fonts."""

import json
import os
import subprocess
import sys
from pathlib import Path

import pytest

PYTHON = Path(__file__).resolve().parents[1]
REPOSITORY = PYTHON.parent
sys.path.insert(0, str(PYTHON))

MAC_FONTS = sorted(str(p.relative_to(REPOSITORY)) for p in (REPOSITORY / "tests/data/mac").rglob("*")
                   if p.is_file())


def installed_fonts(step: int = 8) -> list:
    """Every step-th file of Debian's installed fonts, by name."""
    found = {}
    for root in ("/usr/share/fonts", "/usr/share/texmf/fonts"):
        for folder, _, names in os.walk(root):
            for name in names:
                path = os.path.join(folder, name)
                # The tool reads a file reached through two names once.
                found.setdefault(os.path.realpath(path), path)
    return sorted(found.values())[::step]


def tool_path() -> str:
    for candidate in (os.environ.get("TYPEPROBE_TOOL"), REPOSITORY / "build-test/release/bin/typeprobe",
                      REPOSITORY / "build/bin/typeprobe"):
        if candidate and Path(candidate).is_file():
            return str(candidate)
    pytest.fail("no typeprobe tool built; set TYPEPROBE_TOOL")


def run_tool(*arguments: str) -> subprocess.CompletedProcess:
    return subprocess.run([tool_path(), *arguments], cwd=REPOSITORY, capture_output=True,
                          text=True, errors="surrogateescape")


@pytest.fixture(autouse=True)
def in_repository(monkeypatch):
    monkeypatch.chdir(REPOSITORY)


@pytest.fixture(scope="session")
def tool_faces():
    """The tool's JSON lines for every compared file, by (path, classic), read
    with one run of the tool per set of rules."""
    faces = {}
    for classic in (False, True):
        arguments = ["identify", "-q", "-f", "jsonl", *(["--classic"] if classic else [])]
        paths = MAC_FONTS + installed_fonts()
        for path in paths:
            faces[(path, classic)] = []
        output = run_tool(*arguments, *paths).stdout
        for line in output.splitlines():
            face = json.loads(line)
            faces[(face["path"], classic)].append(face)
    return faces
