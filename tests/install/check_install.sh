#!/usr/bin/env bash
# Installs the build into a scratch prefix and builds a C consumer against
# it twice: through pkg-config and through the CMake package.
set -euo pipefail
build=$1 source=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(ls -d "$prefix"/lib*/ | head -n1)
for f in include/typeprobe/typeprobe.h share/typeprobe share/man/man1/typeprobe.1; do
  [[ -e "$prefix/$f" ]] || { echo "missing $f"; exit 1; }
done
ls "$libdir"/libtypeprobe.so.1 >/dev/null
ls "$libdir"/pkgconfig/typeprobe.pc "$libdir"/cmake/typeprobe/typeprobeConfig.cmake >/dev/null

# The installed tool runs from its prefix as it is.
face=$("$prefix/bin/typeprobe" identify -f jsonl "$source/tests/data/mac/dfont/DejaVuSans.dfont" 2>/dev/null)
[[ $face == *'"postScriptName":"DejaVuSans"'* ]] || { echo "the installed tool does not identify: $face"; exit 1; }

export PKG_CONFIG_PATH="$libdir/pkgconfig"
cc -std=c99 -pedantic -Werror "$source/tests/c/c_consumer.c" $(pkg-config --cflags --libs typeprobe) \
  -o "$prefix/consumer"
LD_LIBRARY_PATH="$libdir" "$prefix/consumer"

mkdir -p "$prefix/cmake-consumer"
cat > "$prefix/cmake-consumer/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.20)
project(consumer C)
find_package(typeprobe REQUIRED)
add_executable(consumer "$source/tests/c/c_consumer.c")
target_link_libraries(consumer PRIVATE typeprobe::typeprobe)
CMAKE
cmake -S "$prefix/cmake-consumer" -B "$prefix/cmake-consumer/build" -G Ninja \
  -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$prefix/cmake-consumer/build" >/dev/null
"$prefix/cmake-consumer/build/consumer"
