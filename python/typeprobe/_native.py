"""Finding and loading the shared library, and the C prototypes it exports."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import sys
from pathlib import Path
from typing import List, Optional

SONAME = "libtypeprobe.so.1"

# What cmake --install leaves under a prefix.
_PREFIXES = ("/usr/local", "/usr", "/opt/typeprobe", str(Path.home() / ".local"))


class LibraryNotFoundError(ImportError):
    """The shared library could not be found or loaded."""


def _repository_builds() -> List[Path]:
    """build/lib of every repository above this package or the working folder."""
    found: List[Path] = []
    for start in (Path(__file__).resolve().parent, Path.cwd()):
        for folder in (start, *start.parents):
            if (folder / "include" / "typeprobe" / "typeprobe.h").is_file():
                candidate = folder / "build" / "lib" / SONAME
                if candidate not in found:
                    found.append(candidate)
    return found


def candidates() -> List[str]:
    """Every place looked at, in order."""
    places = [str(Path(__file__).resolve().parent / SONAME)]
    prefixes = [sys.prefix, sys.base_prefix, *_PREFIXES]
    for prefix in dict.fromkeys(prefixes):
        places.append(os.path.join(prefix, "lib", SONAME))
    found = ctypes.util.find_library("typeprobe")
    if found:
        places.append(found)
    places.extend(str(path) for path in _repository_builds())
    return places


def load() -> ctypes.CDLL:
    """The library named by TYPEPROBE_LIBRARY, else the first one found."""
    explicit = os.environ.get("TYPEPROBE_LIBRARY")
    if explicit:
        try:
            return _declare(ctypes.CDLL(explicit))
        except (OSError, AttributeError) as error:
            raise LibraryNotFoundError(
                f"TYPEPROBE_LIBRARY={explicit} could not be loaded: {error}"
            ) from None
    failures = []
    for place in candidates():
        # A bare name from find_library goes through the loader's own search.
        if os.sep in place and not os.path.exists(place):
            failures.append(f"{place} (missing)")
            continue
        try:
            return _declare(ctypes.CDLL(place))
        except (OSError, AttributeError) as error:
            # AttributeError: an older library without one of the functions.
            failures.append(f"{place} ({error})")
    raise LibraryNotFoundError(
        f"{SONAME} not found; set TYPEPROBE_LIBRARY to its path. Looked at:\n  "
        + "\n  ".join(failures or ["nothing"])
    )


_ulong = ctypes.c_ulong
_ulong_p = ctypes.POINTER(ctypes.c_ulong)
_array_p = ctypes.c_void_p
_text = ctypes.c_char_p

TEXT_ACCESSORS = (
    "TP_GetKindName",
    "TP_GetFamilyName",
    "TP_GetPostScriptName",
    "TP_GetFullName",
    "TP_GetDisplayName",
    "TP_GetPrinterFont",
    "TP_GetPlatform",
    "TP_GetFoundryName",
    "TP_GetLegacyFoundryName",
    "TP_GetVersion",
    "TP_GetWindowsMMFile",
    "TP_GetWrapper",
    "TP_GetContainer",
)
NUMBER_ACCESSORS = (
    "TP_GetKerningChecksum",
    "TP_GetTypeprobeChecksum",
    "TP_GetLegacyTypeprobeChecksum",
    "TP_GetOutlineFileSize",
)


def _declare(lib: ctypes.CDLL) -> ctypes.CDLL:
    def proto(name: str, restype: Optional[type], *argtypes: type) -> None:
        function = getattr(lib, name)
        function.restype = restype
        function.argtypes = argtypes

    proto("TP_CreateSpecifierWithOptions", _ulong, _text, _ulong, _ulong,
          ctypes.POINTER(_array_p))
    proto("TP_ExplainRefusalsWithOptions", _ulong, _text, _ulong, ctypes.c_char_p, ctypes.c_int)
    proto("TP_SeparateTTCFonts", _ulong, _text, _text, ctypes.c_char_p, _ulong_p, _ulong_p)
    proto("TP_GetTypeprobeVersion", None, _ulong_p, _ulong_p)
    proto("TP_GetFontCount", _ulong, _array_p, _ulong_p)
    proto("TP_Match", _ulong, _array_p, _ulong, _array_p, _ulong, _ulong_p, _ulong_p)
    for name in TEXT_ACCESSORS:
        proto(name, _ulong, _array_p, _ulong, ctypes.c_char_p, ctypes.c_int)
    for name in NUMBER_ACCESSORS:
        proto(name, _ulong, _array_p, _ulong, _ulong_p)
    proto("TP_SpecifierFree", _ulong, _array_p)
    proto("TP_GetClassificationFromFamily", _ulong, _text, _text, ctypes.c_char_p, ctypes.c_int)
    proto("TP_GetStyles", _ulong, _text, _text, _ulong, ctypes.c_int, _ulong_p,
          ctypes.POINTER(ctypes.c_char_p))
    for name in ("TP_GetXMLRepresentation", "TP_GetPropertyListRepresentation"):
        proto(name, _ulong, _array_p, ctypes.c_char_p, _ulong_p)
    for name in ("TP_CreateSpecifierFromXML", "TP_CreateSpecifierFromPropertyList"):
        proto(name, _ulong, _text, ctypes.POINTER(_array_p))
    return lib
