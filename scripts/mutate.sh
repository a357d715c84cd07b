#!/usr/bin/env bash
# Fault-finding: applies each mutant of scripts/mutants.txt to the source in
# turn, rebuilds in a folder of its own, runs the suite and reports whether
# the tests caught it. The source is restored after every mutant, also on
# Ctrl-C or a failure of this script.
#
#   scripts/mutate.sh [-k] [-f LIST] [--list] [PATTERN]
#     -k       reuse the build folder as it is configured (no fresh configure)
#     -f LIST  take the mutants from LIST (default scripts/mutants.txt;
#              scripts/kept-mutants.txt breaks the behaviour kept on purpose)
#     --list   print the mutants (those matching PATTERN) and stop
#     PATTERN  run only the mutants whose line in the list matches this
#              extended regular expression (an id, a file, a token...)
#   MUTATE_BUILD_DIR (default build-mutate), MUTATE_JOBS (default nproc)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
build=${MUTATE_BUILD_DIR:-build-mutate}
jobs=${MUTATE_JOBS:-$(nproc)}
list=scripts/mutants.txt
# Paths relative to the parent folder, so that work trees share the cache.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")}

keep=0 listonly=0 pattern=
while (($#)); do
  case $1 in
    -k) keep=1 ;;
    -f) list=${2:?-f needs a file}; shift ;;
    --list) listonly=1 ;;
    -h|--help) sed -n '2,14p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    -*) echo "unknown option $1" >&2; exit 2 ;;
    *) pattern=$1 ;;
  esac
  shift
done

mapfile -t mutants < <(grep -v -E '^(#|$)' "$list" | grep -E -- "${pattern:-.}" || true)
if ((${#mutants[@]} == 0)); then
  echo "no mutant matches '${pattern}'" >&2
  exit 2
fi

# id, file and mutation of one line of the list, for the report.
describe() {
  local id file occ original mutated what
  IFS=$'\t' read -r id file occ original mutated what <<<"$1"
  printf '%s %s: %s | %s' "$id" "$file" "$what" "$original"
}

if ((listonly)); then
  for m in "${mutants[@]}"; do describe "$m"; echo; done
  exit 0
fi

# The mutants are written into the work tree, so work in progress there
# would be at stake: refuse rather than risk it.
if [[ -n "$(git status --porcelain -- src tools include)" ]]; then
  echo "mutate.sh: uncommitted changes in src/, tools/ or include/; commit or stash them first" >&2
  git status --short -- src tools include >&2
  exit 2
fi

# Applies one mutant: exits 3 when its line is no longer in the file.
apply_mutant() {
  python3 - "$1" <<'PY'
import sys
_, file, occ, original, mutated, _ = sys.argv[1].split("\t")
with open(file, newline="") as f:
    lines = f.read().split("\n")
hits = [i for i, line in enumerate(lines) if line.strip() == original]
if len(hits) < int(occ):
    sys.exit(3)
i = hits[int(occ) - 1]
indent = lines[i][:len(lines[i]) - len(lines[i].lstrip())]
lines[i] = indent + mutated
with open(file, "w", newline="") as f:
    f.write("\n".join(lines))
PY
}

backup=$(mktemp -d)
current=
# Puts the pristine file back, with its own time stamp so that other build
# folders do not see a change, and drops the objects built from the mutant
# so that this folder does.
restore() {
  [[ -n "$current" ]] || return 0
  cp -p "$backup/file" "$current"
  local objects object
  objects=$(objects_of "$current") && [[ -n "$objects" ]] ||
    echo "mutate.sh: no object found for $current: delete $build before the next run" >&2
  for object in $objects; do rm -f "$build/$object"; done
  current=
}
objects_of() {
  python3 - "$build/compile_commands.json" "$root/$1" <<'PY'
import json, os, shlex, sys
for entry in json.load(open(sys.argv[1])):
    if os.path.realpath(os.path.join(entry["directory"], entry["file"])) == os.path.realpath(sys.argv[2]):
        words = shlex.split(entry["command"])
        output = os.path.join(entry["directory"], words[words.index("-o") + 1])
        print(os.path.relpath(output, os.path.dirname(sys.argv[1])))
PY
}
cleanup() {
  restore
  rm -rf "$backup"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

if ((!keep)) || [[ ! -f "$build/CMakeCache.txt" ]]; then
  options=()
  if command -v ccache >/dev/null; then
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
  fi
  # Every mutant relinks both libraries, the tool and each test program:
  # lld does that several times faster than the default linker.
  if command -v ld.lld >/dev/null; then
    options+=(-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld)
  fi
  rm -f "$build/CMakeCache.txt"
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTYPEPROBE_WERROR=ON \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "${options[@]}" >/dev/null
fi

run_suite() {
  ctest --test-dir "$build" --stop-on-failure -j "$jobs" --timeout 120 >"$backup/ctest.log" 2>&1
}

# The unmutated suite must pass, or every mutant would count as caught.
start=$SECONDS
if ! cmake --build "$build" -j "$jobs" >"$backup/build.log" 2>&1; then
  cat "$backup/build.log" >&2
  echo "mutate.sh: the unmutated tree does not build" >&2
  exit 1
fi
if ! run_suite; then
  cat "$backup/ctest.log" >&2
  echo "mutate.sh: the unmutated suite fails" >&2
  exit 1
fi
echo "baseline: built and passed in $((SECONDS - start)) s"

caught=0 survived=0 stale=0 nobuild=0
for m in "${mutants[@]}"; do
  start=$SECONDS
  IFS=$'\t' read -r _ file _ <<<"$m"
  cp -p "$file" "$backup/file"
  current=$file
  status=0 detail=
  apply_mutant "$m" || status=$?
  if ((status == 3)); then
    verdict=stale; ((++stale))
    current=
  elif ((status != 0)); then
    echo "mutate.sh: could not apply $(describe "$m")" >&2
    exit 1
  elif ! cmake --build "$build" -j "$jobs" >"$backup/build.log" 2>&1; then
    verdict=no-build; ((++nobuild))
  elif run_suite; then
    verdict=survived; ((++survived))
  else
    # The first test that failed or ran out of time.
    by=$(grep -m1 -E '\*\*\*(Failed|Timeout|Exception)|\(Failed\)|\(Timeout\)' "$backup/ctest.log" |
         sed -E 's/^.*Test +#[0-9]+: ([^ ]+) .*$/\1/' || true)
    verdict=caught detail=${by:+ [by $by]}; ((++caught))
  fi
  restore
  printf '%-9s %s%s (%d s)\n' "$verdict" "$(describe "$m")" "$detail" $((SECONDS - start))
done

# Nothing may stay behind in the work tree.
if [[ -n "$(git status --porcelain -- src tools include)" ]]; then
  echo "mutate.sh: the work tree differs after the run" >&2
  git status --short -- src tools include >&2
  exit 1
fi
echo "mutants: $caught caught by the tests, $survived survived, $stale stale, $nobuild did not build"
