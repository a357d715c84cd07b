#!/usr/bin/python3
"""Compares typeprobe with fc-scan and fontTools over the installed fonts:
every file in which fc-scan finds a face must give typeprobe at least one
face, and the PostScript names typeprobe reports must be those fontTools
reads from the font (naming table ID 6, the CFF font name, or a Type 1
font's FontName). Prints the counts and each disagreement; exits 1 on any.

    scripts/format_coverage.py [--typeprobe build/bin/typeprobe] [--classic] [FOLDER...]
"""
import argparse
import json
import os
import subprocess
import sys

from fontTools.t1Lib import T1Font
from fontTools.ttLib import TTCollection, TTFont


def fontconfig_files(paths):
    """The files in which fc-scan finds at least one face."""
    found = set()
    for start in range(0, len(paths), 200):
        out = subprocess.run(["fc-scan", "--format", "%{file}\n", *paths[start:start + 200]],
                             capture_output=True, text=True).stdout
        found.update(os.path.realpath(line) for line in out.splitlines() if line)
    return found


def fonttools_names(path):
    """PostScript names fontTools reads, or None when it reads no font."""
    with open(path, "rb") as f:
        head = f.read(4)
    try:
        if head == b"ttcf":
            fonts = TTCollection(path, lazy=True).fonts
        elif head in (b"\0\1\0\0", b"OTTO", b"true", b"wOFF", b"wOF2"):
            fonts = [TTFont(path, lazy=True)]
        else:
            font = T1Font(path)
            font.parse()
            return {font.font["FontName"]}
        names = set()
        for font in fonts:
            name = font["name"].getDebugName(6) if "name" in font else None
            if not name and "CFF " in font:
                name = font["CFF "].cff.fontNames[0]
            names.add(name or "")
        return names
    except Exception:
        return None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--typeprobe", default="build/bin/typeprobe")
    parser.add_argument("--classic", action="store_true")
    parser.add_argument("folders", nargs="*",
                        default=["/usr/share/fonts", "/usr/share/texmf/fonts"])
    args = parser.parse_args()
    # A file reached through links counts once, as the tool reads it once.
    paths = sorted({os.path.realpath(os.path.join(root, name)) for folder in args.folders
                    for root, _, names in os.walk(folder) for name in names
                    if os.path.isfile(os.path.join(root, name))})
    command = [args.typeprobe, "identify", "-f", "jsonl", "-q", "--no-progress", *paths]
    if args.classic:
        command.insert(2, "--classic")
    faces = {}
    for line in subprocess.run(command, capture_output=True, text=True).stdout.splitlines():
        face = json.loads(line)
        if "postScriptName" in face:
            faces.setdefault(os.path.realpath(face["path"]), set()).add(face["postScriptName"])
    scanned = fontconfig_files(paths)
    missed = sorted(scanned - faces.keys())
    misnamed = []
    for path in sorted(faces):
        names = fonttools_names(path)
        if names is not None and not faces[path] <= names | {""}:
            misnamed.append((path, sorted(faces[path]), sorted(names)))
    for path in missed:
        print(f"no face, fc-scan finds one: {path}")
    for path, ours, theirs in misnamed:
        print(f"names differ: {path}: {ours} vs fontTools {theirs}")
    print(f"{len(paths)} files; fc-scan finds a face in {len(scanned)}; typeprobe gives faces "
          f"for {len(faces)} files, {len(scanned) - len(missed)} of fc-scan's; "
          f"{len(misnamed)} with names fontTools does not read")
    return 1 if missed or misnamed else 0


if __name__ == "__main__":
    sys.exit(main())
