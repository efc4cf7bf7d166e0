#!/usr/bin/env bash
# Style and lint checks, each a failure:  scripts/lint.sh [BUILD_DIR]
#  - every C++ file git tracks is formatted as .clang-format says (clang-format --dry-run);
#  - the library's and the programs' sources pass the checks of .clang-tidy, read with the
#    compile commands of BUILD_DIR (default build-asan), which must be configured.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-asan}

status=0
mapfile -t sources < <(git ls-files '*.cpp' '*.h')
echo "lint: clang-format on ${#sources[@]} files"
if ! clang-format --dry-run -Werror "${sources[@]}"; then
  echo "lint: files above are not formatted; run clang-format -i on them" >&2
  status=1
fi

if [ ! -f "$build/compile_commands.json" ]; then
  echo "lint: no $build/compile_commands.json; configure $build first" >&2
  exit 1
fi
mapfile -t checked < <(git ls-files 'libsrc/*.cpp' 'tools/*.cpp')
echo "lint: clang-tidy on ${#checked[@]} files"
if ! run-clang-tidy -p "$build" -j "$(nproc)" -quiet "${checked[@]/#/$PWD/}" >"$build/clang-tidy.log" 2>&1
then
  sed "s/\x1b\[[0-9;]*m//g" "$build/clang-tidy.log" | grep -E "(error|warning): " | sort -u >&2 ||
    cat "$build/clang-tidy.log" >&2
  echo "lint: clang-tidy found the problems above (all of it in $build/clang-tidy.log)" >&2
  status=1
fi
exit $status
