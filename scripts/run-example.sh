#!/usr/bin/env bash
# Installs the dependencies, builds the library and fomdump in release mode in build/, prints
# the model that the HLA 1.3 reader delivers from examples/harbour.fed, and loads the four
# restaurant modules of examples/restaurant/ as a federation on the library's own MIM: their
# order, how each dependency resolved, and the merged model's summary from a clean --check.
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
cmake --build "$build" --target fomdump -j "$(nproc)"

echo "== $build/tools/fomdump examples/harbour.fed"
"$build/tools/fomdump" examples/harbour.fed

echo
echo "== $build/tools/fomdump --check examples/restaurant/*.xml (the merged model left out)"
federation=$(mktemp)
trap 'rm -f "$federation"' EXIT
"$build/tools/fomdump" --check examples/restaurant/*.xml > "$federation"
sed -n '/^FOM file: federation/q;p' "$federation"
tail -n 1 "$federation"
