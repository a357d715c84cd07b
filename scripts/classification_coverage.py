#!/usr/bin/env python3
"""Share of font families that data/DefaultClassifications.plist classifies.

By default the fonts are every face of the Debian packages fonts-dejavu-core,
fonts-liberation2, fonts-urw-base35, fonts-texgyre and fonts-noto-cjk, found
through `dpkg -L`; font files or folders given on the command line replace
them. Each face contributes its family name:

  * sfnt fonts (.ttf .otf .ttc .otc): the typographic family (name ID 16) if
    present, else the family (name ID 1); Windows English records first, then
    Mac English, then any other record;
  * Type 1 fonts (.pfa .pfb .t1) and AFM metrics (.afm): /FamilyName (AFM:
    FamilyName), else the font name of the "%!PS-AdobeFont-" header up to its
    first hyphen, else /FullName.

A family is looked up as the library does it: trailing blanks removed, the
whole name lower-cased, then an exact key match in "Mappings"; anything else
is "--". The script prints the families that stay unclassified and the
coverage figure, and exits with status 1 when the figure is below --minimum.

Only the standard library is needed.
"""

import argparse
import os
import pathlib
import plistlib
import re
import struct
import subprocess
import sys

PACKAGES = ["fonts-dejavu-core", "fonts-liberation2", "fonts-urw-base35", "fonts-texgyre", "fonts-noto-cjk"]
SFNT_SUFFIXES = {".ttf", ".otf", ".ttc", ".otc"}
TYPE1_SUFFIXES = {".pfa", ".pfb", ".t1", ".afm"}
UNKNOWN = "--"


# --- font files --------------------------------------------------------------

def package_fonts(package):
    try:
        listing = subprocess.run(["dpkg", "-L", package], capture_output=True, text=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        sys.exit(f"{package} is not installed (apt-get install -y {' '.join(PACKAGES)})")
    return sorted(p for p in listing.splitlines() if is_font(pathlib.Path(p)) and os.path.isfile(p))


def is_font(path):
    return path.suffix.lower() in SFNT_SUFFIXES | TYPE1_SUFFIXES


def fonts_under(path):
    if path.is_dir():
        return sorted(str(p) for p in path.rglob("*") if p.is_file() and is_font(p))
    return [str(path)]


# --- sfnt naming table ---------------------------------------------------------

def sfnt_families(data):
    """Family name of every face in an sfnt or collection file."""
    if data[:4] in (b"ttcf",):
        if len(data) < 12:
            return []
        count = struct.unpack_from(">I", data, 8)[0]
        offsets = [struct.unpack_from(">I", data, 12 + 4 * i)[0]
                   for i in range(count) if 16 + 4 * i <= len(data)]
    else:
        offsets = [0]
    families = []
    for offset in offsets:
        names = naming_records(data, offset)
        family = best_name(names, 16) or best_name(names, 1)
        if family:
            families.append(family)
    return families


def naming_records(data, font_offset):
    """[(platform, encoding, language, name ID, text)] of the face's "name" table."""
    if font_offset + 12 > len(data):
        return []
    num_tables = struct.unpack_from(">H", data, font_offset + 4)[0]
    for i in range(num_tables):
        entry = font_offset + 12 + 16 * i
        if entry + 16 > len(data):
            return []
        tag, _, table_offset, length = struct.unpack_from(">4sIII", data, entry)
        if tag == b"name":
            return parse_name_table(data[table_offset:table_offset + length])
    return []


def parse_name_table(table):
    if len(table) < 6:
        return []
    _, count, storage = struct.unpack_from(">HHH", table, 0)
    records = []
    for i in range(count):
        at = 6 + 12 * i
        if at + 12 > len(table):
            break
        platform, encoding, language, name_id, length, offset = struct.unpack_from(">6H", table, at)
        raw = table[storage + offset:storage + offset + length]
        text = decode_name(platform, encoding, raw)
        if text:
            records.append((platform, encoding, language, name_id, text))
    return records


def decode_name(platform, encoding, raw):
    if platform in (0, 3):
        return raw.decode("utf-16-be", errors="replace").rstrip("\0")
    if platform == 1 and encoding == 0:
        return raw.decode("mac_roman", errors="replace").rstrip("\0")
    return ""


def best_name(records, name_id):
    def rank(record):
        platform, _, language, _, _ = record
        if platform == 3 and language == 0x409:
            return 0
        if platform == 1 and language == 0:
            return 1
        if platform == 3:
            return 2
        return 3
    candidates = sorted((r for r in records if r[3] == name_id), key=rank)
    return candidates[0][4] if candidates else ""


# --- Type 1 ---------------------------------------------------------------------

def type1_family(data, is_afm):
    if is_afm:
        match = re.search(rb"^FamilyName[ \t]+(.*?)[ \t]*\r?$", data, re.M)
        return match.group(1).decode("latin-1") if match else ""
    for pattern in (rb"/FamilyName\s*\(((?:[^()\\]|\\.)*)\)",
                    rb"%!PS-AdobeFont-[^:]*:\s*([^-\s%]+)",
                    rb"/FullName\s*\(((?:[^()\\]|\\.)*)\)"):
        match = re.search(pattern, data[:65536])
        if match:
            return match.group(1).decode("latin-1")
    return ""


def file_families(path):
    data = pathlib.Path(path).read_bytes()
    suffix = pathlib.Path(path).suffix.lower()
    if suffix in TYPE1_SUFFIXES:
        family = type1_family(data, suffix == ".afm")
        return [family] if family else []
    return sfnt_families(data)


# --- lookup -----------------------------------------------------------------------

def load_mappings(plist_path):
    with open(plist_path, "rb") as handle:
        table = plistlib.load(handle)
    mappings = table.get("Mappings")
    classes = table.get("Default Classifications")
    if not isinstance(mappings, dict) or not isinstance(classes, list):
        sys.exit(f"{plist_path}: no \"Mappings\" dictionary or \"Default Classifications\" array")
    stray = sorted({v for v in mappings.values() if v not in classes})
    if stray:
        print(f"warning: classes used but not listed: {', '.join(map(str, stray))}", file=sys.stderr)
    bad_keys = [k for k in mappings if k != k.lower()]
    if bad_keys:
        print(f"warning: {len(bad_keys)} keys are not lower case and can never match, "
              f"e.g. {bad_keys[0]!r}", file=sys.stderr)
    return mappings


def classify(mappings, family):
    # The family loses trailing blanks when it is read; the whole lower-cased
    # name must match a key.
    value = mappings.get(family.rstrip(" ").lower())
    if isinstance(value, str) and len(value.encode("utf-8")) < 1024:
        return value
    return UNKNOWN


def main():
    default_plist = pathlib.Path(__file__).resolve().parent.parent / "data" / "DefaultClassifications.plist"
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("fonts", nargs="*", type=pathlib.Path,
                        help="font files or folders (default: the files of the Debian font packages)")
    parser.add_argument("--plist", type=pathlib.Path, default=default_plist)
    parser.add_argument("--minimum", type=float, default=90.0, help="lowest acceptable coverage in percent")
    parser.add_argument("-v", "--verbose", action="store_true", help="list every family with its class")
    args = parser.parse_args()

    mappings = load_mappings(args.plist)
    sources = {}
    if args.fonts:
        sources = {str(p): [f for f in fonts_under(p)] for p in args.fonts}
    else:
        sources = {package: package_fonts(package) for package in PACKAGES}

    families = {}  # family -> set of sources
    for source, files in sources.items():
        if not files:
            print(f"warning: no font files in {source}", file=sys.stderr)
        for path in files:
            try:
                names = file_families(path)
            except (OSError, struct.error) as error:
                print(f"warning: {path}: {error}", file=sys.stderr)
                continue
            for family in names:
                families.setdefault(family, set()).add(source)

    if not families:
        sys.exit("no families found")
    unclassified = []
    for family in sorted(families, key=str.lower):
        cls = classify(mappings, family)
        if cls == UNKNOWN:
            unclassified.append(family)
        if args.verbose or cls == UNKNOWN:
            print(f"{family:40s} {cls:28s} {', '.join(sorted(families[family]))}")

    classified = len(families) - len(unclassified)
    coverage = 100.0 * classified / len(families)
    print(f"classification coverage: {classified} of {len(families)} families ({coverage:.1f}%), "
          f"{len(mappings)} mappings in {args.plist.name}")
    return 0 if coverage >= args.minimum else 1


if __name__ == "__main__":
    sys.exit(main())
