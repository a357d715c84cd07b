"""Typeprobe from Python: identifies font files through the shared library.

>>> import typeprobe
>>> for face in typeprobe.identify("tests/data/mac/ps-family/DejaVuSerif.bin"):
...     print(face.postscript_name, f"{face.checksum:08X}")
DejaVuSerif 127C1AF4
...
"""

from ._core import (
    ALL,
    Attribute,
    Face,
    FontArray,
    Match,
    NotAFontError,
    classify,
    identify,
    identify_many,
    match,
    split,
    styles,
)
from ._forms import from_plist, from_xml, to_plist, to_xml
from ._native import LibraryNotFoundError

__all__ = [
    "ALL",
    "Attribute",
    "Face",
    "FontArray",
    "LibraryNotFoundError",
    "Match",
    "NotAFontError",
    "classify",
    "from_plist",
    "from_xml",
    "identify",
    "identify_many",
    "library_version",
    "match",
    "split",
    "styles",
    "to_plist",
    "to_xml",
]

__version__ = "1.2.0"


def library_version() -> "tuple[int, int]":
    """The loaded library's (major, minor) version."""
    import ctypes

    from ._core import _lib

    major, minor = ctypes.c_ulong(), ctypes.c_ulong()
    _lib.TP_GetTypeprobeVersion(ctypes.byref(major), ctypes.byref(minor))
    return major.value, minor.value
