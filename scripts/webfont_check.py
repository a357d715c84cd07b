#!/usr/bin/python3
"""Writes a WOFF and a WOFF2 of every TrueType and OpenType font under the
given folders with fontTools and checks that typeprobe reports each with its
source's PostScript name and version, and each WOFF with its source's CRC-32
as its checksum. Prints the counts; exits 1 on any mismatch.

    scripts/webfont_check.py [--typeprobe build/bin/typeprobe] [FOLDER...]
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile
import zlib
from concurrent.futures import ProcessPoolExecutor

from fontTools.ttLib import TTFont


def convert(job):
    source, folder, number = job
    made = []
    for flavor in ("woff", "woff2"):
        font = TTFont(source, recalcTimestamp=False, lazy=False)
        font.flavor = flavor
        target = os.path.join(folder, f"{number}.{flavor}")
        font.save(target, reorderTables=False)
        made.append(target)
    return source, made


def identify(typeprobe, paths):
    faces = {}
    out = subprocess.run([typeprobe, "identify", "-f", "jsonl", *paths],
                         capture_output=True, text=True).stdout
    for line in out.splitlines():
        face = json.loads(line)
        if "index" in face and face["index"] == 0:
            faces[face["path"]] = face
    return faces


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--typeprobe", default="build/bin/typeprobe")
    parser.add_argument("folders", nargs="*",
                        default=["/usr/share/fonts", "/usr/share/texmf/fonts"])
    args = parser.parse_args()
    sources = sorted(os.path.join(root, name)
                     for folder in args.folders for root, _, names in os.walk(folder)
                     for name in names if name.lower().endswith((".ttf", ".otf")))
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        jobs = [(s, folder, n) for n, s in enumerate(sources)]
        with ProcessPoolExecutor() as pool:
            pairs = list(pool.map(convert, jobs))
        originals = identify(args.typeprobe, sources)
        wrapped = identify(args.typeprobe, [p for _, made in pairs for p in made])
        for source, made in pairs:
            want = originals.get(source)
            crc = "%08X" % zlib.crc32(open(source, "rb").read())
            for path in made:
                got = wrapped.get(path)
                problems = []
                if not want or not got:
                    problems.append("no face")
                else:
                    for key in ("postScriptName", "version"):
                        if got[key] != want[key]:
                            problems.append(f"{key} {got[key]!r}, source {want[key]!r}")
                    if path.endswith(".woff") and got["checksum"] != crc:
                        problems.append(f"checksum {got['checksum']}, source CRC-32 {crc}")
                if problems:
                    failures += 1
                    print(f"{source} as {path.rsplit('.', 1)[1]}: {'; '.join(problems)}")
    print(f"{len(sources)} fonts, {2 * len(sources)} web fonts, {failures} mismatches")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
