#!/usr/bin/env bash
# Installs the dependencies, builds the library and ktlprint in release mode in build/, and
# prints what the KTL reader makes of examples/hello.ktl.
# KTL_BUILD_DIR chooses another build directory.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build=${KTL_BUILD_DIR:-build}
generator=()
# An existing build directory keeps the generator it was made with.
if [ ! -f "$build/CMakeCache.txt" ] && command -v ninja >/dev/null 2>&1; then
  generator=(-G Ninja)
fi
cmake -S . -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=Release
cmake --build "$build" --target ktlprint -j "$(nproc)"

echo "== $build/tools/ktlprint examples/hello.ktl"
"$build/tools/ktlprint" examples/hello.ktl
