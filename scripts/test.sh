#!/usr/bin/env bash
# The whole suite, from scratch: installs what is missing, then builds and
# runs every test twice, once normally and once under AddressSanitizer and
# UndefinedBehaviorSanitizer (any sanitizer report fails the run), and
# finally runs each fuzz target briefly on its seed corpus.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

jobs=$(nproc)
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"

# run_suite <name> <folder of the tests in the build> <cmake options...>
run_suite() {
  local name=$1 tests=$2; shift 2
  local dir="build-test/$name"
  echo "=== $name build ==="
  rm -rf "$dir"
  cmake -S . -B "$dir" -G Ninja -DTYPEPROBE_WERROR=ON "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
  echo "=== $name tests ==="
  ctest --test-dir "$dir$tests" --output-on-failure -j "$jobs" --timeout 600
}

run_suite release "" -DCMAKE_BUILD_TYPE=RelWithDebInfo
echo "=== python tests ==="
TYPEPROBE_LIBRARY=build-test/release/lib/libtypeprobe.so.1 \
  TYPEPROBE_TOOL=build-test/release/bin/typeprobe /usr/bin/python3 -m pytest -q -p no:cacheprovider python/tests
# The sanitizer build uses clang, so both compilers see the code warning-free.
run_suite sanitize "" -DCMAKE_BUILD_TYPE=Debug -DTYPEPROBE_SANITIZE=ON \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
# The library and the fuzz targets only; scripts/fuzz.sh runs them longer.
run_suite fuzz /fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTYPEPROBE_SANITIZE=ON \
  -DTYPEPROBE_FUZZ=ON -DTYPEPROBE_BUILD_TESTS=OFF \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
echo "=== all tests passed ==="
