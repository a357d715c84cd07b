"""Comparing, classifying, splitting, and the stored forms."""

import json
import plistlib

import pytest

import typeprobe
from conftest import run_tool

DFONT = "tests/data/mac/dfont/DejaVuSans.dfont"
OTF_DFONT = "tests/data/mac/otf-dfont/DejaVuSans.otf.dfont"
SERIF = "tests/data/mac/ps-family/DejaVuSerif.bin"
SUITCASE = "tests/data/mac/tt-family/DejaVuSans.suit"
COLLECTION = "/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc"
STORED = [DFONT, SERIF, SUITCASE, "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", COLLECTION]


def attribute_names(mask):
    return sorted(name.lower().replace("_", "-") for name, bit in typeprobe.Attribute.__members__.items()
                  if bit != typeprobe.ALL and mask & bit)


@pytest.mark.parametrize("a, b", [(DFONT, OTF_DFONT), (SUITCASE, DFONT), (SERIF, SERIF)])
def test_match_agrees_with_the_tool(a, b):
    expected = json.loads(run_tool("match", "-f", "json", a, b).stdout)
    result = typeprobe.match(a, typeprobe.identify(b)[0])
    tool_names = {"postscript-name": "postscript-name", "kind": "kind", "family": "family",
                  "foundry": "foundry", "version": "version", "kerning-checksum": "kerning-checksum",
                  "outline-size": "outline-file-size", "printer-font": "printer-font"}
    assert attribute_names(result.matching) == sorted(tool_names[n] for n in expected["matching"])
    assert attribute_names(result.differing) == sorted(tool_names[n] for n in expected["differing"])


def test_classify_and_styles_agree_with_the_tool():
    for family, alternate in [("Times New Roman", None), ("Nonesuch Sans", "Times New Roman"),
                              ("Nonesuch Sans", None), ("DejaVu Sans", None)]:
        expected = run_tool("classify", family, *([alternate] if alternate else [])).stdout
        assert typeprobe.classify(family, alternate) == expected.rstrip("\n")
    for names in [("DejaVuSerif-BoldItalic", "DejaVu Serif Bold Italic"),
                  ("LiberationSansNarrow-Bold",), ("Plain",)]:
        expected = run_tool("styles", *names).stdout.splitlines()
        assert typeprobe.styles(*names) == expected


def test_split_writes_faces_that_keep_their_checksums(tmp_path):
    faces = typeprobe.identify(COLLECTION)
    written = typeprobe.split(COLLECTION, tmp_path)
    assert written == [str(tmp_path / f"{i}.ttf") for i in range(len(faces))]
    # A face of a collection has the checksum of the standalone font split writes.
    assert [typeprobe.identify(path)[0].checksum for path in written] == \
        [face.checksum for face in faces]
    with pytest.raises(typeprobe.NotAFontError):
        typeprobe.split(SERIF, tmp_path)
    with pytest.raises(FileNotFoundError):
        typeprobe.split(COLLECTION, tmp_path / "missing")


def carried(face):
    """The attributes the stored forms carry, checksums as a signed 32-bit read gives them."""
    def signed(value):
        return value if value < 0x80000000 else 0x7FFFFFFF
    return (face.kind, face.postscript_name, face.foundry, face.family, face.version,
            signed(face.checksum), signed(face.kerning_checksum), face.outline_file_size,
            face.printer_font)


def test_xml_round_trip_and_the_tools_document():
    faces = [face for path in STORED for face in typeprobe.identify(path)]
    document = typeprobe.to_xml(faces)
    assert document == run_tool("identify", "-q", "-f", "xml", *STORED).stdout
    for path in STORED:
        alone = typeprobe.identify(path)
        assert [carried(f) for f in typeprobe.from_xml(typeprobe.to_xml(alone))] == \
            [carried(f) for f in alone]
    # One face of a collection alone, and no face at all.
    assert typeprobe.to_xml(faces[-1:]).count("<FontData>") == 1
    assert "<FontData>" not in typeprobe.to_xml([])
    with pytest.raises(ValueError):
        typeprobe.from_xml("<FontData><Family>x</Family>")


def test_property_list_round_trip_and_the_tools_document():
    faces = [face for path in STORED for face in typeprobe.identify(path)]
    data = typeprobe.to_plist(faces)
    tool = run_tool("identify", "-q", "-f", "plist", *STORED).stdout.encode()
    assert plistlib.loads(data) == plistlib.loads(tool)
    for path in STORED:
        alone = typeprobe.identify(path)
        assert [carried(f) for f in typeprobe.from_plist(typeprobe.to_plist(alone))] == \
            [carried(f) for f in alone]
    binary = plistlib.dumps(plistlib.loads(data), fmt=plistlib.FMT_BINARY)
    assert typeprobe.from_plist(binary) == typeprobe.from_plist(data)
    with pytest.raises(ValueError):
        typeprobe.from_plist(b"<plist><dict/></plist>")


def test_stored_faces_must_still_be_their_files(tmp_path):
    copy = tmp_path / "DejaVuSans.dfont"
    copy.write_bytes(open(DFONT, "rb").read())
    face = typeprobe.identify(copy)[0]
    copy.write_bytes(open(OTF_DFONT, "rb").read())
    with pytest.raises(ValueError, match="changed"):
        typeprobe.to_xml([face])
