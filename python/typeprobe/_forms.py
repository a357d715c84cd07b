"""The library's stored forms of faces: its XML document and property list."""

from __future__ import annotations

import plistlib
from typing import Iterable, List, Union

from ._core import Face, FontArray, _arrays

# Used only when there is no face, so no library document was seen.
_EMPTY_HEADER = '<?xml version="1.0" encoding="utf-8" ?>\n<TypeprobeData>\n'
_EMPTY_CLOSING = "</TypeprobeData>\n"


def _blocks(document: str, count: int, path: str) -> List[str]:
    """The face blocks of one library XML document, one per face."""
    blocks: List[str] = []
    current: List[str] = []
    for line in document.splitlines(keepends=True)[2:-1]:
        current.append(line)
        if line == "\t</FontData>\n":
            blocks.append("".join(current))
            current = []
    # Values go in unescaped: a name holding such a line would shift the blocks.
    if len(blocks) != count or current:
        raise ValueError(f"{path}: the XML form cannot be told apart face by face")
    return blocks


def to_xml(faces: Iterable[Face]) -> str:
    """One XML document of the faces, as `typeprobe identify -f xml` writes it:
    the library's form of each file (read again, and checked unchanged), the
    faces' blocks after a comment naming their file. Values are not escaped."""
    header, closing, body = _EMPTY_HEADER, _EMPTY_CLOSING, []
    for number, (array, run) in enumerate(_arrays(faces)):
        document = array.to_xml()
        lines = document.splitlines(keepends=True)
        if number == 0:
            header, closing = "".join(lines[:2]), lines[-1]
        blocks = _blocks(document, len(array), array.path)
        # A comment may not hold "--".
        body.append(f"\t<!-- {array.path.replace('--', '- -')} -->\n")
        body.extend(blocks[face.index] for face in run)
    return header + "".join(body) + closing


def to_plist(faces: Iterable[Face]) -> bytes:
    """One XML property list of the faces, each dictionary's "Path" filled
    with its file, as `typeprobe identify -f plist` writes it."""
    entries = []
    for array, run in _arrays(faces):
        document = plistlib.loads(array.to_plist().encode("utf-8"), fmt=plistlib.FMT_XML)
        for face in run:
            entry = dict(document[face.index])
            entry["Path"] = face.path
            entries.append(entry)
    return plistlib.dumps(entries, fmt=plistlib.FMT_XML, sort_keys=False)


def _rebuilt(function: str, text: bytes, what: str) -> List[Face]:
    if b"\0" in text:
        raise ValueError(f"the {what} holds a NUL character")
    with FontArray._rebuilt(function, text, what) as array:
        return array.faces()


def from_xml(text: Union[str, bytes]) -> List[Face]:
    """The faces of an XML document (each <FontData> block), as the library
    rebuilds them: nine attributes, checksums with the top bit set come back
    as 0x7FFFFFFF, no path."""
    if not isinstance(text, (str, bytes)):
        raise TypeError(f"expected str or bytes, not {type(text).__name__}")
    raw = text.encode("utf-8") if isinstance(text, str) else text
    return _rebuilt("TP_CreateSpecifierFromXML", raw, "XML text")


def from_plist(data: Union[str, bytes]) -> List[Face]:
    """The faces of a property list whose top level is an array of
    dictionaries; a binary property list is converted to XML first."""
    if not isinstance(data, (str, bytes)):
        raise TypeError(f"expected str or bytes, not {type(data).__name__}")
    raw = data.encode("utf-8") if isinstance(data, str) else data
    # The library reads XML property lists only.
    if raw.startswith(b"bplist"):
        try:
            raw = plistlib.dumps(plistlib.loads(raw, fmt=plistlib.FMT_BINARY))
        except Exception as error:
            raise ValueError(f"not a property list: {error}") from None
    return _rebuilt("TP_CreateSpecifierFromPropertyList", raw, "property list")
