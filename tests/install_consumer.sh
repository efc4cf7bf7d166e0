#!/usr/bin/env bash
# Installs a build tree into a temporary prefix, then builds and runs the host project of
# tests/consumer against it twice: through find_package(ktl) and through pkg-config.
#
#   install_consumer.sh BUILD_DIR CONSUMER_DIR CXX [COMPILE_AND_LINK_FLAGS]
#
# The flags (the sanitizer flags of a sanitized build) go to both consumer builds, since a
# program that links sanitized libraries must itself be built with the same sanitizers.
set -euo pipefail

build_dir=$1
consumer_dir=$2
cxx=$3
flags=${4:-}

work=$(mktemp -d "${TMPDIR:-/tmp}/ktl-consumer-XXXXXX")
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

echo "== installing $build_dir into $prefix"
cmake --install "$build_dir" --prefix "$prefix" >"$work/install.log" || {
  cat "$work/install.log"
  exit 1
}

libdir=$(find "$prefix" -name 'libktl.so' -printf '%h\n' | head -n 1)
[ -n "$libdir" ] || { echo "libktl.so was not installed"; exit 1; }
[ -f "$prefix/include/ktl/ktl.h" ] || { echo "include/ktl/ktl.h was not installed"; exit 1; }
[ -f "$libdir/pkgconfig/ktl.pc" ] || { echo "ktl.pc was not installed"; exit 1; }
[ -f "$libdir/cmake/ktl/ktlConfig.cmake" ] || { echo "ktlConfig.cmake was not installed"; exit 1; }
[ -f "$libdir/cmake/ktl/ktlConfigVersion.cmake" ] || { echo "ktlConfigVersion.cmake missing"; exit 1; }

generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi

echo "== find_package(ktl)"
cmake -S "$consumer_dir" -B "$work/cmake-build" "${generator[@]}" \
  -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$flags" \
  -DCMAKE_EXE_LINKER_FLAGS="$flags"
cmake --build "$work/cmake-build"
# Only the installed copies of the libraries may be found.
LD_LIBRARY_PATH="$libdir" "$work/cmake-build/consumer" >"$work/cmake.out"
cat "$work/cmake.out"

echo "== pkg-config ktl"
export PKG_CONFIG_PATH="$libdir/pkgconfig"
pkg-config --exists ktl
echo "ktl.pc: $(pkg-config --modversion ktl): $(pkg-config --cflags --libs ktl)"
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++17 $flags "$consumer_dir/main.cpp" -o "$work/consumer-pc" \
  $(pkg-config --cflags --libs ktl)
LD_LIBRARY_PATH="$libdir" "$work/consumer-pc" >"$work/pc.out"
cat "$work/pc.out"

grep -q 'consumer' "$work/cmake.out" || { echo "unexpected output of the consumer"; exit 1; }
cmp "$work/cmake.out" "$work/pc.out" || { echo "the two consumers disagree"; exit 1; }
echo "== ok"
