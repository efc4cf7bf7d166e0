#!/usr/bin/env bash
# Builds the benchmarks in release mode in build-bench/ and runs them. Arguments go to Google
# Benchmark, for every program (for instance --benchmark_repetitions=5). KTL_BENCH names the
# programs to run (for instance KTL_BENCH="read_bench eval_bench"); by default every
# bench/*_bench.cpp runs. A program with a bench/<name>.awk ends with the summary that script
# makes of its CSV output: speeds as ratios to a baseline measured in the same run.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

programs=${KTL_BENCH:-$(cd bench && ls ./*_bench.cpp | sed 's|^\./||; s|\.cpp$||' | tr '\n' ' ')}

build=build-bench
generator=()
if [ ! -f "$build/CMakeCache.txt" ] && command -v ninja >/dev/null 2>&1; then
  generator=(-G Ninja)
fi
cmake -S . -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=Release \
  -DKTL_BUILD_BENCH=ON -DKTL_BUILD_TESTS=OFF -DKTL_SANITIZE=OFF
# shellcheck disable=SC2086
cmake --build "$build" --target $programs -j "$(nproc)"

summaries=()
for program in $programs; do
  csv=$build/$program.csv
  "$build/bench/$program" --benchmark_out="$csv" --benchmark_out_format=csv "$@"
  if [ -f "bench/$program.awk" ]; then
    summaries+=("$program")
  fi
done

for program in "${summaries[@]}"; do
  echo
  echo "== $program"
  awk -F, -f bench/csv.awk -f "bench/$program.awk" "$build/$program.csv"
done
