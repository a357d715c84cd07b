#!/usr/bin/env bash
# Runs the fuzz targets, two at a time, each for a given time, and prints the
# executions and findings of each. Builds the fuzz configuration (clang,
# AddressSanitizer, UndefinedBehaviorSanitizer, libFuzzer) when it is missing.
#
#   scripts/fuzz.sh [-t seconds] [-j parallel] [-b build-dir] [target ...]
#
# Targets are named without the fuzz_ prefix (sfnt_names, fond, ...); all by
# default. Each target's corpus grows in <build-dir>/fuzz-runs/<target>/corpus
# from the checked-in seeds; findings (crash-, leak-, timeout-, oom-, slow-unit-
# files) land in <build-dir>/fuzz-runs/<target>/artifacts, the log beside them.
# A finding stops its target; the script exits non-zero when any target found
# something.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=300
parallel=2
build=build-fuzz
while getopts "t:j:b:h" option; do
  case $option in
    t) seconds=$OPTARG ;;
    j) parallel=$OPTARG ;;
    b) build=$OPTARG ;;
    *) sed -n '2,15p' "$0"; exit 2 ;;
  esac
done
shift $((OPTIND - 1))

if [[ ! -f "$build/build.ninja" ]]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTYPEPROBE_SANITIZE=ON \
    -DTYPEPROBE_FUZZ=ON -DTYPEPROBE_BUILD_TESTS=OFF -DTYPEPROBE_WERROR=ON \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null
fi
cmake --build "$build" -j "$parallel" --target fuzzers

# The dictionary of each target (see fuzz/CMakeLists.txt).
declare -A dictionary=(
  [sfnt_names]=sfnt [sfnt_platform]=sfnt [collection]=sfnt [type1]=type1
  [resource_map]=resource [fond]=fond [apple_double]=containers [macbinary]=containers [woff]=containers [woff2]=containers
  [whole_file]=font [property_list]=plist [xml]=xml
)
targets=("$@")
if ((${#targets[@]} == 0)); then
  for binary in "$build"/bin/fuzz_*; do targets+=("$(basename "$binary" | sed 's/^fuzz_//')"); done
fi

# Targets that read whole files write them to a scratch folder: on tmpfs when
# there is one, as every execution rewrites it.
if [[ -z "${TMPDIR:-}" && -d /dev/shm && -w /dev/shm ]]; then export TMPDIR=/dev/shm; fi
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:detect_stack_use_after_return=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-halt_on_error=1:print_stacktrace=1}"

run_target() {
  local target=$1 seconds=$2 build=$3 dict=$4
  local work="$build/fuzz-runs/$target"
  rm -rf "$work/artifacts"
  mkdir -p "$work/corpus" "$work/artifacts"
  "$build/bin/fuzz_$target" -max_total_time="$seconds" -timeout=1 -rss_limit_mb=2048 \
    -malloc_limit_mb=64 -dict="fuzz/dict/$dict.dict" -artifact_prefix="$work/artifacts/" \
    -print_final_stats=1 "$work/corpus" "fuzz/corpus/$target" >"$work/log" 2>&1 || true
}
export -f run_target

for target in "${targets[@]}"; do
  [[ -x "$build/bin/fuzz_$target" ]] || { echo "no target fuzz_$target" >&2; exit 2; }
  echo "$target ${dictionary[$target]:-font}"
done | xargs -P "$parallel" -L 1 bash -c 'run_target "$1" '"$seconds"' '"$build"' "$2"' _

status=0
printf '%-18s %12s %9s %s\n' target executions findings artifacts
for target in "${targets[@]}"; do
  work="$build/fuzz-runs/$target"
  runs=$(grep -o 'stat::number_of_executed_units: [0-9]*' "$work/log" | awk '{print $2}' | tail -1)
  findings=$(find "$work/artifacts" -type f | wc -l)
  # A report that left no artifact (a leak at exit, a broken run) counts too.
  if grep -q -E 'ERROR: (AddressSanitizer|LeakSanitizer|libFuzzer)|runtime error:|check failed' "$work/log" &&
     ((findings == 0)); then
    findings=1
  fi
  ((findings == 0)) || status=1
  printf '%-18s %12s %9s %s\n' "$target" "${runs:-?}" "$findings" \
    "$( ((findings == 0)) && echo - || echo "$work/artifacts ($work/log)")"
done
exit $status
