#!/usr/bin/env bash
# Runs one libFuzzer target for a while:  scripts/fuzz.sh TARGET SECONDS
# TARGET names fuzz/TARGET_fuzz.cpp: read (the KTL reader), eval (the reader and the evaluator),
# and the others in fuzz/.
# e.g. `scripts/fuzz.sh read 60` runs build-fuzz/fuzz/read_fuzz for 60 seconds on a copy of
# fuzz/corpus/read/. A crash leaves its input as crash-* in the top directory of the
# repository. Further arguments go to libFuzzer.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -lt 2 ]; then
  echo "usage: $0 TARGET SECONDS [LIBFUZZER-OPTION...]" >&2
  exit 2
fi
target=$1
seconds=$2
shift 2

# Options of each target. The evaluator's prin1, format and describe write to standard output,
# and a define with the wrong number of arguments to standard error: close both in the target.
# libFuzzer and the sanitizers then report on a copy of standard error, which stays open.
# A leak report made only of "Indirect leak" entries is a reference cycle that outlived the
# root frame (a closure or frame bound in a frame it refers to), a known limit of the reference
# counting; to fuzz on past one, add -detect_leaks=0 (it also stops leak checks altogether).
case $target in
  eval) options=(-close_fd_mask=3) ;;
  # The tree's KTL reader reports elements it can't use on standard error.
  env_ktl) options=(-close_fd_mask=2) ;;
  # The settings' "not unique" lines go to standard output, the KTL form's reports to standard
  # error.
  settings) options=(-close_fd_mask=3) ;;
  *) options=() ;;
esac
if [ ! -f "fuzz/${target}_fuzz.cpp" ]; then
  echo "$0: unknown target '$target' (no fuzz/${target}_fuzz.cpp)" >&2
  exit 2
fi

bash scripts/install-deps.sh --fuzz

build=build-fuzz
generator=()
if [ ! -f "$build/CMakeCache.txt" ] && command -v ninja >/dev/null 2>&1; then
  generator=(-G Ninja)
fi
cmake -S . -B "$build" "${generator[@]}" -DCMAKE_CXX_COMPILER=clang++ -DKTL_FUZZ=ON \
  -DKTL_BUILD_TESTS=OFF -DKTL_BUILD_BENCH=OFF
cmake --build "$build" --target "${target}_fuzz" -j "$(nproc)"

work=$(mktemp -d "${TMPDIR:-/tmp}/ktl-fuzz-${target}-XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/corpus"
if [ -d "fuzz/corpus/$target" ]; then
  cp -R "fuzz/corpus/$target/." "$work/corpus/"
fi

set +e
"$build/fuzz/${target}_fuzz" -max_total_time="$seconds" -print_final_stats=1 "${options[@]}" "$@" \
  "$work/corpus" 2>&1 | tee "$work/fuzz.log"
status=${PIPESTATUS[0]}
set -e

executions=$(awk '/stat::number_of_executed_units:/ { print $2 }' "$work/fuzz.log" | tail -n 1)
echo "${target}_fuzz: ${executions:-unknown} executions in ${seconds} s, exit status $status"
exit "$status"
