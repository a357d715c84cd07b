#!/usr/bin/env bash
# Times `typeprobe identify` with every attribute, on one thread and on two,
# against `cat`, `fc-scan` and a fontTools reader (lazy naming table plus a
# zlib CRC of each file) over the same font files in one run: the fonts of
# Debian's font packages, warm page cache, the median of several runs. Prints
# the machine, the medians, the ratios and the peak memory of identify.
#
#   scripts/bench.sh            # builds build-bench/ and measures
#   RUNS=21 scripts/bench.sh    # more runs per command
#   TYPEPROBE=/path/to/typeprobe scripts/bench.sh
set -euo pipefail
cd "$(dirname "$0")/.."

runs=${RUNS:-15}
build=${BUILD:-build-bench}
packages=(fonts-dejavu-core fonts-liberation2 fonts-urw-base35 fonts-texgyre fonts-noto-cjk
          fonts-wqy-zenhei fonts-lmodern lmodern xfonts-scalable gsfonts)
python=/usr/bin/python3  # Debian's, where python3-fonttools is installed

scripts/setup.sh
if [[ -z "${TYPEPROBE:-}" ]]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTYPEPROBE_BUILD_TESTS=OFF >/dev/null
  cmake --build "$build" -j2 --target typeprobe-cli >/dev/null
  TYPEPROBE=$build/bin/typeprobe
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The packages' own font files (links left out, so no file counts twice).
for package in "${packages[@]}"; do
  dpkg -L "$package" 2>/dev/null || true
done | grep -E '\.(ttf|ttc|otf|pfb|pfa|pfm|afm|t1)$' | sort -u | while read -r file; do
  [[ -f "$file" && ! -L "$file" ]] && printf '%s\n' "$file"
done > "$work/files"
mapfile -t files < "$work/files"
((${#files[@]} > 0)) || { echo "no font files: run scripts/setup.sh" >&2; exit 1; }

# Every other format too: a WOFF (fontTools) and a WOFF2 (woff2_compress) of
# each DejaVu, Liberation and URW TrueType and OpenType font, and the Mac
# fonts of the test data (suitcases, printer fonts, dfonts in MacBinary).
mkdir -p "$work/web"
grep -E '/(dejavu|liberation2|urw-base35)/.*\.(ttf|otf)$' "$work/files" > "$work/sources"
"$python" - "$work/web" < "$work/sources" <<'PY'
import os, sys
from fontTools.ttLib import TTFont
for n, path in enumerate(line.strip() for line in sys.stdin):
    font = TTFont(path, recalcTimestamp=False)
    font.flavor = "woff"
    font.save(os.path.join(sys.argv[1], f"{n}-{os.path.basename(path)}.woff"), reorderTables=False)
PY
n=0
while read -r source; do
  cp "$source" "$work/web/$n-$(basename "$source")" && woff2_compress "$work/web/$n-$(basename "$source")" >/dev/null 2>&1
  rm -f "$work/web/$n-$(basename "$source")"
  n=$((n + 1))
done < "$work/sources"
find "$work/web" -type f | sort >> "$work/files"
find tests/data/mac -type f ! -name '*.md' ! -name '*.txt' ! -path '*/scripts/*' | sort >> "$work/files"
mapfile -t files < "$work/files"
total_bytes=$(cat "${files[@]}" | wc -c)
largest_bytes=$(stat -c %s "${files[@]}" | sort -n | tail -1)

cat > "$work/names.py" <<'PY'
import io, sys, zlib
from fontTools.ttLib import TTCollection, TTFont
for path in sys.argv[1:]:
    data = open(path, "rb").read()
    zlib.crc32(data)
    try:
        fonts = TTCollection(io.BytesIO(data), lazy=True).fonts if data[:4] == b"ttcf" \
            else [TTFont(io.BytesIO(data), lazy=True)]
        for font in fonts:
            font["name"].getDebugName(6)
    except Exception:
        pass  # not an sfnt: the CRC alone
PY

echo "== machine"
lscpu | grep -E '^(Model name|CPU\(s\)|Thread\(s\) per core)' | sed 's/  */ /g'
echo "kernel: $(uname -r), memory: $(free -m | awk '/^Mem:/ {print $2}') MB"
echo "load before: $(cut -d' ' -f1-3 /proc/loadavg)"
echo "corpus: ${#files[@]} files, $((total_bytes / 1000000)) MB, largest $((largest_bytes / 1000000)) MB"
echo "runs: $runs per command, warm cache (3 warm-up runs each)"

# One hyperfine run over every command, so that they share the machine's
# state; -N runs them without a shell, -i accepts the non-zero exit of
# identify and fc-scan on the files that hold no font (metrics, Type 1 text).
hyperfine -N -i --warmup 3 --runs "$runs" --style none --export-json "$work/times.json" \
  -n cat "cat ${files[*]}" \
  -n "typeprobe -j1" "$TYPEPROBE identify -j1 -a all ${files[*]}" \
  -n "typeprobe -j2" "$TYPEPROBE identify -j2 -a all ${files[*]}" \
  -n fontTools "$python $work/names.py ${files[*]}" \
  -n fc-scan "fc-scan ${files[*]}" >/dev/null 2>"$work/hyperfine.txt" ||
  { cat "$work/hyperfine.txt" >&2; exit 1; }
echo "load after: $(cut -d' ' -f1-3 /proc/loadavg)"

# Peak memory of one identify over the whole corpus, on one and two threads.
peak_kb() {
  /usr/bin/time -v "$TYPEPROBE" identify "$1" -a all "${files[@]}" >/dev/null 2>"$work/time.txt" || true
  awk -F': ' '/Maximum resident set size/ {print $2}' "$work/time.txt"
}
peak1=$(peak_kb -j1)
peak2=$(peak_kb -j2)

"$python" - "$work/times.json" "$peak1" "$peak2" "$largest_bytes" <<'PY'
import json, statistics, sys
results = {r["command"]: r for r in json.load(open(sys.argv[1]))["results"]}
wall = {name: statistics.median(r["times"]) for name, r in results.items()}
cpu = {name: r["user"] + r["system"] for name, r in results.items()}
print("\n== time per run: median wall clock, mean CPU (user + system)")
for name in results:
    print(f"{name:14} {wall[name]:7.3f} s wall {cpu[name]:7.3f} s CPU")
print("\n== ratios                     wall    CPU")
def ratio(label, a, b, goal=""):
    print(f"{label:26} {wall[a] / wall[b]:6.2f} {cpu[a] / cpu[b]:6.2f}   {goal}")
ratio("typeprobe -j1 / cat", "typeprobe -j1", "cat", "(goal: at most 1.5)")
ratio("typeprobe -j2 / cat", "typeprobe -j2", "cat")
ratio("fc-scan / typeprobe -j1", "fc-scan", "typeprobe -j1", "(goal: at least 5)")
ratio("fc-scan / typeprobe -j2", "fc-scan", "typeprobe -j2")
ratio("fontTools / typeprobe -j1", "fontTools", "typeprobe -j1")
ratio("typeprobe -j1 / -j2", "typeprobe -j1", "typeprobe -j2")
mib = 1 << 20
peak1, peak2, largest = int(sys.argv[2]) * 1024, int(sys.argv[3]) * 1024, int(sys.argv[4])
print(f"\n== peak memory of identify: -j1 {peak1 / mib:.1f} MiB, -j2 {peak2 / mib:.1f} MiB "
      f"(goal: below 64 MiB + the largest file, {largest / mib:.1f} MiB: {64 + largest / mib:.1f} MiB)")
PY
