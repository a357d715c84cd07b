"""Identification through the package, compared with the tool."""

import errno
import os

import pytest

import typeprobe
from conftest import MAC_FONTS, REPOSITORY, installed_fonts, run_tool

SERIF = "tests/data/mac/ps-family/DejaVuSerif.bin"


def identified(path, classic):
    try:
        return [face.to_json() for face in typeprobe.identify(path, classic=classic)]
    except typeprobe.NotAFontError:
        return []


@pytest.mark.parametrize("classic", [False, True], ids=["all-formats", "classic"])
@pytest.mark.parametrize("path", MAC_FONTS + installed_fonts())
def test_faces_equal_the_tools_json_lines(path, classic, tool_faces):
    assert identified(path, classic) == tool_faces[(path, classic)]


def test_faces_have_typed_fields_and_only_the_attributes_asked_for():
    mask = typeprobe.Attribute.POSTSCRIPT_NAME | typeprobe.Attribute.OUTLINE_FILE_SIZE
    faces = typeprobe.identify(SERIF, attributes=mask)
    assert [face.postscript_name for face in faces] == [
        "DejaVuSerif", "DejaVuSerif-Bold", "DejaVuSerif-Italic", "DejaVuSerif-BoldItalic"]
    assert all(isinstance(face.outline_file_size, int) for face in faces)
    assert {face.attributes for face in faces} == {mask}
    assert faces[0].checksum is None and faces[0].legacy_foundry is None


def test_threads_give_the_serial_results():
    paths = MAC_FONTS + installed_fonts(step=4)

    def outcome(result):
        return result if isinstance(result, list) else (type(result), str(result))

    serial = [outcome(r) for r in typeprobe.identify_many(paths, 1, return_exceptions=True)]
    threaded = [outcome(r) for r in typeprobe.identify_many(paths, 8, return_exceptions=True)]
    assert threaded == serial
    assert sum(isinstance(r, list) for r in serial) > 100


def test_errors_name_the_path_and_the_reason(tmp_path):
    fifo = tmp_path / "fifo"
    os.mkfifo(fifo)
    cases = [
        ("tests/data/mac/missing.ttf", FileNotFoundError, "No such file"),
        ("tests/data/mac", IsADirectoryError, "Is a directory"),
        (str(fifo), typeprobe.NotAFontError, "not a regular file"),
        ("tests/data/mac/README.md", typeprobe.NotAFontError, "not a font: no font signature"),
    ]
    if os.geteuid() != 0:  # root reads whatever the mode says
        locked = tmp_path / "locked.ttf"
        locked.write_bytes((REPOSITORY / "tests/data/mac/dfont/DejaVuSans.dfont").read_bytes())
        locked.chmod(0)
        cases.append((str(locked), PermissionError, "Permission denied"))
    for path, kind, text in cases:
        with pytest.raises(kind) as raised:
            typeprobe.identify(path)
        assert path in str(raised.value) and text in str(raised.value), path
    # The Python error carries the tool's reason.
    message = run_tool("identify", "--explain", "tests/data/mac/README.md").stderr
    with pytest.raises(typeprobe.NotAFontError) as raised:
        typeprobe.identify("tests/data/mac/README.md")
    assert f"typeprobe: {raised.value}" == message.splitlines()[0]


@pytest.mark.parametrize("call, kind", [
    (lambda: typeprobe.identify(12), TypeError),
    (lambda: typeprobe.identify(SERIF, attributes="all"), TypeError),
    (lambda: typeprobe.identify(SERIF, attributes=0x40), ValueError),
    (lambda: typeprobe.identify("tests\0.ttf"), ValueError),
    (lambda: typeprobe.identify_many([SERIF], workers=0), ValueError),
    (lambda: typeprobe.classify(None), TypeError),
    (lambda: typeprobe.to_xml(["not a face"]), TypeError),
])
def test_bad_arguments(call, kind):
    with pytest.raises(kind):
        call()


def test_a_closed_array_is_never_touched_again():
    array = typeprobe.FontArray.open(SERIF)
    with array:
        assert len(array) == 4
        with pytest.raises(IndexError):
            array.face(4)  # the library would end the process
    for call in (len, lambda a: a.face(0), lambda a: a.to_xml()):
        with pytest.raises(ValueError, match="closed"):
            call(array)
    array.close()


def test_the_module_prints_the_tools_json_lines():
    import subprocess
    import sys

    arguments = ["tests/data/mac", "/usr/share/fonts/truetype/dejavu"]
    ours = subprocess.run([sys.executable, "-m", "typeprobe", *arguments], cwd=REPOSITORY,
                          env={**os.environ, "PYTHONPATH": str(REPOSITORY / "python")},
                          capture_output=True, text=True)
    assert ours.returncode == 0, ours.stderr
    assert ours.stdout == run_tool("identify", "-q", "-f", "jsonl", *arguments).stdout
