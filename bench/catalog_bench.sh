#!/usr/bin/env bash
# Times the catalog over a large tree of font files, beside fc-cache on the
# same tree:
#   catalog_bench.sh [N] [TYPEPROBE]
# builds N files (default 100000) as hard links of Debian's installed fonts
# in nested folders (100 per folder), then times a first scan, a rescan with
# nothing changed (one job), a rescan after touching 1% of the files, and a
# query by PostScript name (median of 20); and `typeprobe identify` over the
# same files, and fc-cache with a private configuration and cache for the
# first run, the unchanged rerun and the rerun after the touch.
set -euo pipefail
cd "$(dirname "$0")/.."
count=${1:-100000}
typeprobe=$(realpath "${2:-build/bin/typeprobe}")
work=$(mktemp -d "${TMPDIR:-/tmp}/catalog-bench-XXXXXX")
trap 'rm -rf "$work"' EXIT

python3 - "$work/tree" "$count" <<'EOF'
import os, shutil, sys
root, count = sys.argv[1], int(sys.argv[2])
# Distinct files only: some fonts are links to others, which a walk lists once.
fonts = sorted(set(os.path.realpath(os.path.join(d, f)) for top in ("/usr/share/fonts", "/usr/share/texmf/fonts")
               for d, _, names in os.walk(top) for f in names
               if f.lower().endswith((".ttf", ".otf", ".ttc", ".pfb", ".pfa", ".t1", ".otb"))))
for i in range(count):
    folder = os.path.join(root, "a%03d" % (i // 10000), "b%03d" % (i // 100 % 100))
    os.makedirs(folder, exist_ok=True)
    source = fonts[i % len(fonts)]
    target = os.path.join(folder, "%06d-%s" % (i, os.path.basename(source)))
    try:
        os.link(source, target)
    except OSError:
        shutil.copyfile(source, target)
EOF

# seconds COMMAND...: wall-clock seconds of one run, output discarded
# Bash's own clock: no process started around the timed one.
seconds() {
  local start end
  start=$EPOCHREALTIME
  "$@" >/dev/null 2>&1 || true
  end=$EPOCHREALTIME
  awk -v a="$end" -v b="$start" 'BEGIN { printf "%.3f", a - b }'
}

catalog="$work/catalog.sqlite"
tree="$work/tree"
mkdir -p "$work/fc-cache"
cat >"$work/fonts.conf" <<EOF
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig><dir>$tree</dir><cachedir>$work/fc-cache</cachedir></fontconfig>
EOF
export FONTCONFIG_FILE="$work/fonts.conf"

identify=$(seconds "$typeprobe" identify -q -f jsonl --no-progress "$tree")
first=$(seconds "$typeprobe" catalog scan -q --no-progress --catalog "$catalog" "$tree")
fc_first=$(seconds fc-cache "$tree")
unchanged=$(seconds "$typeprobe" catalog scan -q --no-progress -j1 --catalog "$catalog" "$tree")
unchanged_counts=$("$typeprobe" catalog scan --no-progress -j1 --catalog "$catalog" "$tree")
fc_unchanged=$(seconds fc-cache "$tree")
# A hard link cannot be touched alone (every link of the inode changes), so
# each of the 1% becomes a file of its own, a new inode and time.
find "$tree" -type f | awk 'NR % 100 == 0' | python3 -c '
import os, shutil, sys
for path in sys.stdin.read().split("\n")[:-1]:
    shutil.copyfile(path, path + ".new")
    os.replace(path + ".new", path)'
touched=$(seconds "$typeprobe" catalog scan -q --no-progress --catalog "$catalog" "$tree")
fc_touched=$(seconds fc-cache "$tree")

# The median of 20 runs of a query for a PostScript name, started directly
# (hyperfine -N): a shell's fork alone costs this machine about 6 ms.
query_median() {
  hyperfine -N --warmup 3 --runs 20 --style none --export-json "$work/query.json" \
    "$typeprobe catalog find -q --catalog $catalog --postscript-name $1" >/dev/null
  python3 -c 'import json, sys; print("%.4f" % json.load(open(sys.argv[1]))["results"][0]["median"])' \
    "$work/query.json"
}
query=$(query_median DejaVuSans)
miss=$(query_median NoSuchFontName)
# The look-up itself, as the tool makes it, without the process around it.
sql_query=$(printf '.timer on\nSELECT count(path) FROM faces WHERE postscript_name = %s COLLATE NOCASE AND postscript_name = %s;\n' "'DejaVuSans'" "'DejaVuSans'" |
  sqlite3 "$catalog" | awk '/^Run Time/ { print $4 }')
fc_query=$(seconds fc-list ":postscriptname=DejaVuSans" file)

cat <<EOF
files: $count ($(du -sh "$catalog" | cut -f1) catalog)
| step | typeprobe | fc-cache |
|---|---|---|
| identify (no catalog) | ${identify} s | |
| first scan | ${first} s | ${fc_first} s |
| rescan, nothing changed (-j1) | ${unchanged} s | ${fc_unchanged} s |
| rescan after touching 1% | ${touched} s | ${fc_touched} s |
| query by PostScript name, DejaVuSans, a name in many files (median of 20) | ${query} s | ${fc_query} s (fc-list) |
| query by PostScript name, a name in no file (median of 20) | ${miss} s | |
| of which: the SQL look-up (sqlite3 .timer) | ${sql_query} s | |
unchanged rescan: $unchanged_counts
first scan / identify: $(awk -v a="$first" -v b="$identify" 'BEGIN { printf "%.2f", a / b }') (target at most 1.5)
EOF
