"""python3 -m typeprobe PATH...: the faces as `typeprobe identify -f jsonl` prints them."""

from __future__ import annotations

import argparse
import json
import os
import sys
from typing import List, Optional, Sequence, Tuple

from ._core import ALL, Attribute, NotAFontError, identify_many

_SIDECAR_FOLDERS = {".AppleDouble", "__MACOSX"}


def _attributes(text: str) -> int:
    mask = 0
    for word in filter(None, (w.strip().lower().replace("-", "_") for w in text.split(","))):
        if word[0].isdigit():
            mask |= int(word, 0)
        elif word.upper() in Attribute.__members__:
            mask |= Attribute[word.upper()]
        else:
            raise argparse.ArgumentTypeError(f"unknown attribute {word!r}")
    return mask


def discover(paths: Sequence[str]) -> Tuple[List[Tuple[str, bool]], List[Tuple[str, str]]]:
    """The files to read, each with whether it was named, and the paths that
    cannot be walked. Folders are walked in byte order of names, Mac
    sidecars left out; a file reached twice is read once."""
    files: List[Tuple[str, bool]] = []
    problems: List[Tuple[str, str]] = []
    seen = set()

    def add(path: str, named: bool) -> None:
        key = os.path.realpath(path)
        if key not in seen:
            seen.add(key)
            files.append((path, named))

    def walk(folder: str) -> None:
        if os.path.realpath(folder) + "/" in seen:
            return
        seen.add(os.path.realpath(folder) + "/")
        try:
            names = sorted(os.listdir(os.fsencode(folder)))
        except OSError as error:
            problems.append((folder, error.strerror or str(error)))
            return
        prefix = folder if folder.endswith("/") else folder + "/"
        for raw in names:
            name = os.fsdecode(raw)
            if (name.startswith("._") and len(name) > 2) or name in _SIDECAR_FOLDERS:
                continue
            path = prefix + name
            if os.path.isdir(path) and not os.path.islink(path):
                walk(path)
            elif os.path.isfile(path):
                add(path, False)

    for path in paths:
        if os.path.isdir(path):
            walk(path)
        else:
            add(path, True)
    return files, problems


def main(argv: Optional[Sequence[str]] = None) -> int:
    parser = argparse.ArgumentParser(prog="python3 -m typeprobe", description=__doc__)
    parser.add_argument("paths", nargs="+", metavar="PATH")
    parser.add_argument("-a", "--attributes", type=_attributes, default=ALL,
                        help="attribute names or a mask number, comma separated (default all)")
    parser.add_argument("--classic", action="store_true", help="the classic rules")
    parser.add_argument("-j", "--jobs", type=int, default=None, help="threads (default: cores)")
    options = parser.parse_args(argv)
    files, problems = discover(options.paths)
    status = 0
    for path, message in problems:
        print(f"typeprobe: {path}: {message}", file=sys.stderr)
        status = 1
    results = identify_many([path for path, _ in files], options.jobs,
                            attributes=options.attributes, classic=options.classic,
                            return_exceptions=True)
    out = sys.stdout
    for (path, named), result in zip(files, results):
        if isinstance(result, NotAFontError) and not named:
            continue  # files in folders that are not fonts are skipped quietly
        if isinstance(result, Exception):
            if isinstance(result, NotAFontError):
                message = "not a font" + (f": {result.reason}" if result.reason else "")
            else:
                message = getattr(result, "strerror", None) or str(result)
            print(f"typeprobe: {path}: {message}", file=sys.stderr)
            status = 1
            continue
        for face in result:
            out.write(json.dumps(face.to_json(), ensure_ascii=False, separators=(",", ":")))
            out.write("\n")
    out.flush()
    return status


if __name__ == "__main__":
    sys.exit(main())
