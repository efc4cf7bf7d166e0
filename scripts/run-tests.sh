#!/usr/bin/env bash
# Installs the dependencies, builds everything from scratch in build-asan/ with
# AddressSanitizer and UndefinedBehaviorSanitizer, checks format and lint (scripts/lint.sh),
# and runs every suite through CTest.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build=build-asan
rm -rf "$build"
generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi
cmake -S . -B "$build" "${generator[@]}" -DKTL_SANITIZE=ON
bash scripts/lint.sh "$build"
cmake --build "$build" -j "$(nproc)"

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
cd "$build"
ctest --output-on-failure -j "$(nproc)"
