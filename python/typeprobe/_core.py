"""Faces, the owner of a library font array, and the calls made with them."""

from __future__ import annotations

import ctypes
import enum
import errno
import os
import stat
import threading
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, fields
from typing import Any, Dict, Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union

from . import _native

PathArg = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]

_lib = _native.load()

_SUCCESS = 0
_NOT_FOUND = 1
_OUT_OF_RANGE = 4
_NOT_REQUESTED = 5

# Names are far shorter; a longer text is read again into a larger buffer.
_TEXT_CAPACITY = 1024
_REASON_CAPACITY = 4096
_MAX_STYLES = 64
_STYLE_CAPACITY = 256
# The library looks for at most this many faces in a file.
_MAX_FACES = 512


class Attribute(enum.IntFlag):
    """The library's attribute bits: what identify computes, what match reports."""

    POSTSCRIPT_NAME = 0x1
    KIND = 0x2
    FOUNDRY = 0x4
    VERSION = 0x8
    KERNING_CHECKSUM = 0x10
    OUTLINE_FILE_SIZE = 0x20
    FAMILY = 0x1000
    PRINTER_FONT = 0x2000
    CHECKSUM = 0x4000
    DISPLAY_NAME = 0x8000
    FULL_NAME = 0x10000
    LEGACY_CHECKSUM = 0x20000
    PLATFORM = 0x40000
    WINDOWS_MM_FILE = 0x80000
    ALL = 0xFF03F


ALL = Attribute.ALL

# Only the default options recognise a format by its first bytes.
_ALL_FORMATS = 0x1


class NotAFontError(ValueError):
    """A file in which the library found no face."""

    def __init__(self, path: str, reason: str = "") -> None:
        self.path = path
        self.reason = reason
        super().__init__(f"{path}: not a font" + (f": {reason}" if reason else ""))


@dataclass(frozen=True)
class Face:
    """One identified face. An attribute that was not asked for is None.

    Checksums and sizes are numbers (the tool prints checksums as %08X);
    `wrapper` is what held the face in its file ("sfnt", "collection", "PFB",
    ...), `container` the Mac container its bytes came through ("" for an
    ordinary file). `classic` says the face was identified by the classic
    rules. Faces rebuilt from XML or a property list have an empty path.
    """

    path: str
    index: int
    postscript_name: Optional[str] = None
    kind: Optional[str] = None
    family: Optional[str] = None
    full_name: Optional[str] = None
    display_name: Optional[str] = None
    foundry: Optional[str] = None
    legacy_foundry: Optional[str] = None
    version: Optional[str] = None
    platform: Optional[str] = None
    checksum: Optional[int] = None
    legacy_checksum: Optional[int] = None
    kerning_checksum: Optional[int] = None
    outline_file_size: Optional[int] = None
    printer_font: Optional[str] = None
    windows_mm_file: Optional[str] = None
    wrapper: str = ""
    container: str = ""
    classic: bool = False

    @property
    def attributes(self) -> Attribute:
        """The attributes this face carries."""
        mask = Attribute(0)
        for attr in _ATTRIBUTE_FIELDS:
            if getattr(self, attr.field) is not None:
                mask |= attr.bit
        return mask

    def to_json(self) -> Dict[str, Any]:
        """The object `typeprobe identify -f jsonl` prints for this face."""
        out: Dict[str, Any] = {"path": self.path, "index": self.index}
        for attr in _ATTRIBUTE_FIELDS:
            value = getattr(self, attr.field)
            if value is None:
                continue
            out[attr.json_key] = f"{value & 0xFFFFFFFF:08X}" if attr.checksum else value
            if attr.bit == Attribute.FOUNDRY and self.legacy_foundry is not None:
                out["legacyFoundry"] = self.legacy_foundry
        out["wrapper"] = self.wrapper
        out["container"] = self.container
        return out


class _AttributeField(NamedTuple):
    field: str
    json_key: str
    bit: Attribute
    accessor: str
    number: bool = False
    checksum: bool = False


# In the tool's order of keys.
_ATTRIBUTE_FIELDS: Tuple[_AttributeField, ...] = (
    _AttributeField("postscript_name", "postScriptName", Attribute.POSTSCRIPT_NAME,
                    "TP_GetPostScriptName"),
    _AttributeField("kind", "kind", Attribute.KIND, "TP_GetKindName"),
    _AttributeField("family", "family", Attribute.FAMILY, "TP_GetFamilyName"),
    _AttributeField("full_name", "fullName", Attribute.FULL_NAME, "TP_GetFullName"),
    _AttributeField("display_name", "displayName", Attribute.DISPLAY_NAME, "TP_GetDisplayName"),
    _AttributeField("foundry", "foundry", Attribute.FOUNDRY, "TP_GetFoundryName"),
    _AttributeField("version", "version", Attribute.VERSION, "TP_GetVersion"),
    _AttributeField("platform", "platform", Attribute.PLATFORM, "TP_GetPlatform"),
    _AttributeField("checksum", "checksum", Attribute.CHECKSUM, "TP_GetTypeprobeChecksum",
                    True, True),
    _AttributeField("legacy_checksum", "legacyChecksum", Attribute.LEGACY_CHECKSUM,
                    "TP_GetLegacyTypeprobeChecksum", True, True),
    _AttributeField("kerning_checksum", "kerningChecksum", Attribute.KERNING_CHECKSUM,
                    "TP_GetKerningChecksum", True, True),
    _AttributeField("outline_file_size", "outlineFileSize", Attribute.OUTLINE_FILE_SIZE,
                    "TP_GetOutlineFileSize", True),
    _AttributeField("printer_font", "printerFont", Attribute.PRINTER_FONT, "TP_GetPrinterFont"),
    _AttributeField("windows_mm_file", "windowsMMFile", Attribute.WINDOWS_MM_FILE,
                    "TP_GetWindowsMMFile"),
)

FIELD_NAMES = tuple(f.name for f in fields(Face))


def _encoded(path: PathArg, what: str = "path") -> bytes:
    if not isinstance(path, (str, bytes, os.PathLike)):
        raise TypeError(f"{what} must be str, bytes or os.PathLike, not {type(path).__name__}")
    raw = os.fsencode(path)
    if b"\0" in raw:
        raise ValueError(f"{what} holds a NUL character: {path!r}")
    return raw


def _text_arg(value: Optional[str], what: str, optional: bool = False) -> Optional[bytes]:
    if value is None and optional:
        return None
    if not isinstance(value, str):
        raise TypeError(f"{what} must be str, not {type(value).__name__}")
    raw = value.encode("utf-8", "surrogateescape")
    if b"\0" in raw:
        raise ValueError(f"{what} holds a NUL character")
    return raw


def _mask(attributes: int) -> int:
    if isinstance(attributes, bool) or not isinstance(attributes, int):
        raise TypeError(f"attributes must be an int or Attribute, not {type(attributes).__name__}")
    if attributes & ~ALL or attributes < 0:
        raise ValueError(f"attributes {attributes:#x} hold bits that are not defined")
    return int(attributes)


def _decoded(raw: bytes) -> str:
    return raw.decode("utf-8", "replace")


def _copied(call: Any, capacity: int) -> Tuple[int, str]:
    """Calls call(buffer, capacity) and grows the buffer while the text fills it."""
    while True:
        buffer = ctypes.create_string_buffer(capacity)
        result = call(buffer, capacity)
        raw = buffer.value
        if len(raw) < capacity - 1 or capacity >= 1 << 24:
            return result, _decoded(raw)
        capacity *= 16


class FontArray:
    """Owns one library font array; freed by close(), `with` or collection.

    Every call checks the array is still open, under a lock, so a closed
    array is never handed to the library again, even from another thread.
    """

    def __init__(self, handle: int, path: str = "", classic: bool = False) -> None:
        self._handle: Optional[int] = handle
        self._lock = threading.Lock()
        self.path = path
        self.classic = classic

    @classmethod
    def open(cls, path: PathArg, *, attributes: int = ALL, classic: bool = False) -> "FontArray":
        """Identifies the file at `path` (see identify)."""
        raw = _encoded(path)
        shown = os.fsdecode(path)
        mask = _mask(attributes)
        if not isinstance(classic, bool):
            raise TypeError("classic must be a bool")
        _check_file(raw, shown)
        options = 0 if classic else _ALL_FORMATS
        handle = ctypes.c_void_p()
        if _lib.TP_CreateSpecifierWithOptions(raw, options, mask, ctypes.byref(handle)) \
                != _SUCCESS or not handle.value:
            _raise_no_face(raw, shown, options)
        return cls(handle.value, shown, classic)

    @classmethod
    def _rebuilt(cls, function: str, text: bytes, what: str) -> "FontArray":
        handle = ctypes.c_void_p()
        if getattr(_lib, function)(text, ctypes.byref(handle)) != _SUCCESS or not handle.value:
            raise ValueError(f"no face in the {what}")
        return cls(handle.value)

    def close(self) -> None:
        """Frees the array; later calls raise ValueError."""
        with self._lock:
            handle, self._handle = self._handle, None
            if handle:
                _lib.TP_SpecifierFree(handle)

    def __enter__(self) -> "FontArray":
        return self

    def __exit__(self, *exc: object) -> None:
        self.close()

    def __del__(self) -> None:
        if getattr(self, "_handle", None):
            self.close()

    def _live(self) -> int:
        if not self._handle:
            raise ValueError("the font array is closed")
        return self._handle

    def __len__(self) -> int:
        with self._lock:
            count = ctypes.c_ulong()
            _lib.TP_GetFontCount(self._live(), ctypes.byref(count))
            return count.value

    def face(self, index: int) -> Face:
        """The face at `index`, its attributes read out."""
        if isinstance(index, bool) or not isinstance(index, int):
            raise TypeError("index must be an int")
        # Past the count the accessors would throw through C and end the process.
        if not 0 <= index < len(self):
            raise IndexError(f"face index {index} out of range")
        values: Dict[str, Any] = {}
        with self._lock:
            handle = self._live()
            for attr in _ATTRIBUTE_FIELDS:
                values[attr.field] = self._read(handle, attr.accessor, index, attr.number)
            if values["foundry"] is not None:
                values["legacy_foundry"] = self._read(handle, "TP_GetLegacyFoundryName", index)
            wrapper = self._read(handle, "TP_GetWrapper", index) or ""
            container = self._read(handle, "TP_GetContainer", index) or ""
        return Face(self.path, index, wrapper=wrapper, container=container,
                    classic=self.classic, **values)

    @staticmethod
    def _read(handle: int, accessor: str, index: int, number: bool = False) -> Any:
        function = getattr(_lib, accessor)
        if number:
            value = ctypes.c_ulong()
            result = function(handle, index, ctypes.byref(value))
            return value.value if result == _SUCCESS else None
        result, text = _copied(lambda buffer, size: function(handle, index, buffer, size),
                               _TEXT_CAPACITY)
        if result == _NOT_REQUESTED:
            return None
        # The multiple-master file answers 1 when the face has none.
        return text if result == _SUCCESS else ""

    def faces(self) -> List[Face]:
        """Every face, in the library's order."""
        return [self.face(index) for index in range(len(self))]

    def _document(self, function: str) -> str:
        capacity = 64 * 1024
        with self._lock:
            handle = self._live()
            while True:
                buffer = ctypes.create_string_buffer(capacity)
                length = ctypes.c_ulong(capacity)
                result = getattr(_lib, function)(handle, buffer, ctypes.byref(length))
                if result == _OUT_OF_RANGE and length.value > capacity:
                    capacity = length.value
                    continue
                # 1 also means "no face"; the document is still delivered then.
                if result not in (_SUCCESS, _NOT_FOUND):
                    raise RuntimeError(f"{function} failed with {result}")
                return _decoded(buffer.value)

    def to_xml(self) -> str:
        """The library's XML document of every face."""
        return self._document("TP_GetXMLRepresentation")

    def to_plist(self) -> str:
        """The library's XML property list of every face."""
        return self._document("TP_GetPropertyListRepresentation")


def _check_file(raw: bytes, shown: str) -> None:
    """Refuses, before the library opens it, what is not a regular file."""
    try:
        info = os.stat(raw)
    except FileNotFoundError:
        # A logical Mac file stands for its MacBinary copy.
        if os.path.isfile(raw + b".bin"):
            return
        raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), shown) from None
    except OSError as error:
        raise type(error)(error.errno, error.strerror, shown) from None
    if stat.S_ISDIR(info.st_mode):
        raise IsADirectoryError(errno.EISDIR, os.strerror(errno.EISDIR), shown)
    if not stat.S_ISREG(info.st_mode):
        # Opening a FIFO or a device could block or read forever.
        raise NotAFontError(shown, "not a regular file")


def _raise_no_face(raw: bytes, shown: str, options: int) -> None:
    for candidate in (raw, raw + b".bin"):
        try:
            os.close(os.open(candidate, os.O_RDONLY | os.O_CLOEXEC))
            break
        except FileNotFoundError:
            continue
        except OSError as error:
            raise type(error)(error.errno, error.strerror, shown) from None
    _, reason = _copied(
        lambda buffer, size: _lib.TP_ExplainRefusalsWithOptions(raw, options, buffer, size),
        _REASON_CAPACITY)
    raise NotAFontError(shown, reason)


def identify(path: PathArg, *, attributes: int = ALL, classic: bool = False) -> List[Face]:
    """Every face of the font file at `path`.

    `attributes` chooses what is computed (Attribute bits, ALL by default);
    the others are None. By default every format is recognised by the file's
    first bytes, as the tool does; `classic=True` keeps to the classic rules,
    which go by the file's name first.

    Raises FileNotFoundError, IsADirectoryError or PermissionError for a path
    that cannot be read, NotAFontError (with the readers' reasons) for a file
    with no face, TypeError or ValueError for bad arguments.
    """
    with FontArray.open(path, attributes=attributes, classic=classic) as array:
        return array.faces()


def identify_many(paths: Iterable[PathArg], workers: Optional[int] = None, *,
                  attributes: int = ALL, classic: bool = False,
                  return_exceptions: bool = False) -> List[Any]:
    """identify() over many files on a pool of threads, results in input order.

    The library identifies on several threads at once and ctypes lets go of
    the interpreter lock during each call. `workers` defaults to the number
    of processors. The first error is raised unless `return_exceptions`,
    when the exception takes the file's place in the list.
    """
    paths = list(paths)
    if workers is not None and (not isinstance(workers, int) or workers < 1):
        raise ValueError("workers must be a positive int")
    _mask(attributes)

    def one(path: PathArg) -> Any:
        try:
            return identify(path, attributes=attributes, classic=classic)
        except (OSError, NotAFontError) as error:
            if return_exceptions:
                return error
            raise

    with ThreadPoolExecutor(max_workers=workers or os.cpu_count() or 1) as pool:
        return list(pool.map(one, paths))


class Match(NamedTuple):
    """Attributes that two faces both have and that are equal (names without
    regard to letter case), and those that both have and differ."""

    matching: Attribute
    differing: Attribute


def _opened(source: Union[Face, PathArg]) -> Tuple[FontArray, int]:
    if isinstance(source, Face):
        if not source.path:
            raise ValueError("a face rebuilt from a stored form has no file to compare")
        return FontArray.open(source.path, classic=source.classic), source.index
    return FontArray.open(source), 0


def match(a: Union[Face, PathArg], b: Union[Face, PathArg]) -> Match:
    """Compares two faces as the library does: each a Face (its file is read
    again, every attribute) or a path (its first face)."""
    first, index_a = _opened(a)
    with first:
        second, index_b = _opened(b)
        with second, first._lock, second._lock:
            matching, differing = ctypes.c_ulong(), ctypes.c_ulong()
            result = _lib.TP_Match(first._live(), index_a, second._live(), index_b,
                                   ctypes.byref(matching), ctypes.byref(differing))
    if result == _OUT_OF_RANGE:
        raise IndexError("face index out of range")
    return Match(Attribute(matching.value), Attribute(differing.value))


def classify(family: str, alternate: Optional[str] = None) -> str:
    """The typographic classification of a family ("--" when unknown; the
    alternate family is looked up only then)."""
    first = _text_arg(family, "family")
    second = _text_arg(alternate, "alternate", optional=True)
    result, text = _copied(
        lambda buffer, size: _lib.TP_GetClassificationFromFamily(first, second, buffer, size),
        _TEXT_CAPACITY)
    if result != _SUCCESS:
        raise RuntimeError("the classification table could not be read")
    return text


def styles(name: str, other: Optional[str] = None) -> List[str]:
    """The built-in styles ("Bold", "Italic", ...) that a face's names express."""
    first = _text_arg(name, "name")
    second = _text_arg(other, "other", optional=True) or b""
    storage = [ctypes.create_string_buffer(_STYLE_CAPACITY) for _ in range(_MAX_STYLES)]
    buffers = (ctypes.c_char_p * _MAX_STYLES)(*(ctypes.addressof(b) for b in storage))
    count = ctypes.c_ulong()
    if _lib.TP_GetStyles(first, second, _MAX_STYLES, _STYLE_CAPACITY, ctypes.byref(count),
                         buffers) != _SUCCESS:
        raise RuntimeError("the style keyword table could not be read")
    return [_decoded(storage[i].value) for i in range(count.value)]


def split(collection: PathArg, folder: PathArg) -> List[str]:
    """Writes each face of a TrueType collection as a standalone .ttf in the
    existing `folder` ("0.ttf", "1.ttf", ..., a name taken moves on to the
    next number) and returns the paths written."""
    raw, shown = _encoded(collection, "collection"), os.fsdecode(collection)
    target = _encoded(folder, "folder")
    _check_file(raw, shown)
    if not os.path.isdir(target):
        code = errno.ENOTDIR if os.path.exists(target) else errno.ENOENT
        raise OSError(code, os.strerror(code), os.fsdecode(folder))
    # Sized for every face at once: a second call would write the files again.
    capacity = _MAX_FACES * (len(target) + 32) + 1
    buffer = ctypes.create_string_buffer(capacity)
    length, count = ctypes.c_ulong(capacity), ctypes.c_ulong()
    result = _lib.TP_SeparateTTCFonts(raw, target, buffer, ctypes.byref(length),
                                      ctypes.byref(count))
    written = [line for line in _decoded(buffer.value).split("\n") if line]
    if result == _SUCCESS:
        return written
    if result == _NOT_FOUND and count.value == 0:
        raise NotAFontError(shown, "not a readable collection")
    problem = {_NOT_FOUND: "a face cannot stand alone", _OUT_OF_RANGE: "a file cannot be written",
               _NOT_REQUESTED: "a face lies outside the file"}.get(result, f"result {result}")
    raise OSError(f"{shown}: {problem} ({len(written)} face files written: {written})")


def _runs(faces: Sequence[Face]) -> List[Tuple[Face, List[Face]]]:
    """Consecutive faces of the same file identified the same way."""
    runs: List[Tuple[Face, List[Face]]] = []
    for face in faces:
        if not isinstance(face, Face):
            raise TypeError(f"expected Face, not {type(face).__name__}")
        if not face.path:
            raise ValueError("a face rebuilt from a stored form has no file to store")
        last = runs[-1][0] if runs else None
        if last and (last.path, last.classic, last.attributes) == \
                (face.path, face.classic, face.attributes):
            runs[-1][1].append(face)
        else:
            runs.append((face, [face]))
    return runs


def _arrays(faces: Iterable[Face]) -> Iterable[Tuple[FontArray, List[Face]]]:
    """The file of every run of faces, read again and checked unchanged."""
    for first, run in _runs(list(faces)):
        with FontArray.open(first.path, attributes=first.attributes,
                            classic=first.classic) as array:
            for face in run:
                if face.index >= len(array) or array.face(face.index) != face:
                    raise ValueError(f"{face.path}: face {face.index} changed since identified")
            yield array, run
