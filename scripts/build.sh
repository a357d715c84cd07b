#!/usr/bin/env bash
# Installs the dependencies and builds the library and tools into build/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
# The tests are built by scripts/test.sh in a tree of their own.
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTYPEPROBE_BUILD_TESTS=OFF >/dev/null
cmake --build build
