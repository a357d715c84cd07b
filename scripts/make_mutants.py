#!/usr/bin/env python3
"""Writes scripts/mutants.txt: a fixed, seeded choice of single-token mutants
of the identification path, for scripts/mutate.sh.

Each mutant is one tab-separated line:
    id  file  occurrence  original line (trimmed)  mutated line (trimmed)  what
The occurrence counts lines of the file whose trimmed text equals the
original, so a mutant survives edits elsewhere in the file and goes stale
only when its own line changes.

Rerunning with the same seed and the same sources gives the same list; the
list is committed, so a rerun is only needed when the list should change.
"""
import random
import re
import sys
from pathlib import Path

SEED = 14
COUNT = 40
ROOT = Path(__file__).resolve().parent.parent

FILES = [
    "src/support/ByteView.cpp", "src/containers/MacForks.cpp",
    "src/resourcefork/PascalStrings.cpp", "src/resourcefork/FONDRecord.cpp",
    "src/tables/KeywordTableLoad.cpp", "src/fontfiles/NamingTable.cpp",
    "src/fontfiles/SfntDirectory.cpp", "src/fontfiles/TrueTypeCollectionFont.cpp",
    "src/fontfiles/Type1MetaData.cpp", "src/resourcefork/FONDQueries.cpp",
    "src/resourcefork/ResourceMap.cpp", "src/containers/AppleDouble.cpp",
    "src/containers/MacBinary.cpp", "src/checksum/CChecksum.cpp",
    "src/checksum/FondKerning.cpp", "src/checksum/ResourceChecksums.cpp",
    "src/files/PathUtilities.cpp", "src/support/LxString.cpp",
    "src/support/GStringUtils.cpp", "src/support/XCFUtilsParse.cpp",
    "src/tables/LxFontStyleScan.cpp", "src/tables/CFoundryNameTable.cpp",
    "src/tables/CClassificationMappings.cpp",
] + sorted(str(p.relative_to(ROOT)) for p in (ROOT / "src/api").glob("*.cpp")
           if p.name != "UnitTestExports.cpp") \
  + sorted(str(p.relative_to(ROOT)) for p in (ROOT / "tools").glob("*Command*.cpp"))

# Mutants every list must hold: (file, original line, mutated line).
REQUIRED = [
    ("src/containers/MacForks.cpp",
     "if (info && info->length >= 8 && FileBytes::ReadRange(path, info->offset, 8, bytes))",
     "if (info && info->length > 8 && FileBytes::ReadRange(path, info->offset, 8, bytes))"),
]
# Files that must get at least one mutant of the random choice.
MUST_COVER = ["src/resourcefork/PascalStrings.cpp", "src/tables/KeywordTableLoad.cpp",
              "src/resourcefork/FONDRecord.cpp"]
# Lines never mutated: diagnostics only, or a mutant known to be equivalent.
SKIP_LINE = re.compile(r"assert|static_assert|std::cerr|fprintf|Log\(|Trace|throw |#")
# Individual sites found equivalent on review: (file, original line, what).
EQUIVALENT = {
    # rfind from 1 still finds a "./" at 0; a line of the form "x./" never occurs.
    ("tools/SplitCommand.cpp",
     'if (!dotted && line.rfind("./", 0) == 0) line.erase(0, 2);', "0 -> 1 (1st)"),
}
# The starting value of a variable is mostly overwritten by a read right
# after it (an out-parameter), so its mutants are mostly equivalent.
STARTING_VALUE = (re.compile(r"\w = $"), re.compile(r"^[,;]"))

SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
         "&&": "||", "||": "&&", "true": "false", "false": "true"}
# Comparisons and logic operators written with a space on both sides (which
# keeps template brackets, shifts and rvalue references out), boolean
# literals, negations, and integer literals.
SITE = re.compile(r"(?<= )(<=|>=|==|!=|<|>|&&|\|\|)(?= )"
                  r"|\b(true|false)\b"
                  r"|(?<![!=<>])!(?=[A-Za-z_(*])"
                  r"|(?<![\w.])(0x[0-9A-Fa-f]+|\d+)(?![\w.'])")


def code_only(line, in_block):
    """The line with comments, string and character literals blanked out."""
    out, i = [], 0
    while i < len(line):
        if in_block:
            end = line.find("*/", i)
            if end < 0:
                return "".join(out) + " " * (len(line) - i), True
            out.append(" " * (end + 2 - i))
            i, in_block = end + 2, False
        elif line.startswith("//", i):
            out.append(" " * (len(line) - i))
            break
        elif line.startswith("/*", i):
            in_block = True
        elif line[i] in "\"'":
            quote, j = line[i], i + 1
            while j < len(line) and line[j] != quote:
                j += 2 if line[j] == "\\" else 1
            out.append(" " * (j + 1 - i))
            i = j + 1
        else:
            out.append(line[i])
            i += 1
    return "".join(out), in_block


def ordinal(n):
    return f"{n}" + {1: "st", 2: "nd", 3: "rd"}.get(n if n < 20 else n % 10, "th")


def candidates(path):
    lines = (ROOT / path).read_text().splitlines()
    seen, in_block, found = {}, False, []
    for raw in lines:
        text = raw.strip()
        seen[text] = seen.get(text, 0) + 1
        code, in_block = code_only(raw, in_block)
        if not code.strip() or SKIP_LINE.search(code):
            continue
        counts = {}
        for m in SITE.finditer(code):
            token = m.group(0)
            counts[token] = counts.get(token, 0) + 1
            if (m.group(3) and STARTING_VALUE[0].search(code[:m.start()])
                    and STARTING_VALUE[1].match(code[m.end():])):
                continue
            if token == "!":
                new, what = "", "!x -> x"
            elif token in SWAPS:
                new, what = SWAPS[token], f"{token} -> {SWAPS[token]}"
            else:
                value = int(token, 0)
                new = hex(value + 1) if token.lower().startswith("0x") else str(value + 1)
                what = f"{token} -> {new}"
            what += f" ({ordinal(counts[token])})"
            if (path, text, what) in EQUIVALENT:
                continue
            mutated = (raw[:m.start()] + new + raw[m.end():]).strip()
            found.append((path, seen[text], text, mutated, what))
    return found


def main():
    rng = random.Random(SEED)
    pool = {f: candidates(f) for f in FILES}
    chosen = []
    for f, original, mutated in REQUIRED:
        site = next(c for c in pool[f] if c[2] == original and c[3] == mutated)
        chosen.append(site)
        pool[f].remove(site)
    for f in MUST_COVER:
        site = rng.choice(pool[f])
        chosen.append(site)
        pool[f].remove(site)
    # Spread the rest over the files: at most two per file from the draw.
    per_file = {f: sum(c[0] == f for c in chosen) for f in FILES}
    rest = [c for f in FILES for c in pool[f]]
    rng.shuffle(rest)
    for site in rest:
        if len(chosen) >= COUNT:
            break
        if per_file[site[0]] < 2:
            chosen.append(site)
            per_file[site[0]] += 1
    chosen.sort(key=lambda c: (FILES.index(c[0]), c[2]))
    out = ["# Mutants for scripts/mutate.sh, written by scripts/make_mutants.py.",
           "# id, file, occurrence of the line, original line, mutated line, what (tab-separated)"]
    for n, (f, occ, text, mutated, what) in enumerate(chosen, 1):
        out.append("\t".join([f"M{n:02d}", f, str(occ), text, mutated, what]))
    (ROOT / "scripts/mutants.txt").write_text("\n".join(out) + "\n")
    print(f"{len(chosen)} mutants written to scripts/mutants.txt", file=sys.stderr)


if __name__ == "__main__":
    main()
