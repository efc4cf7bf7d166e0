#!/usr/bin/env bash
# Builds the benchmarks in release mode in build-bench/ and runs them. Arguments go to Google
# Benchmark, for both programs (for instance --benchmark_repetitions=5). Ends with the KTL
# reader's speed and the KTL evaluator's calls per second as ratios to their baselines.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build=build-bench
generator=()
if [ ! -f "$build/CMakeCache.txt" ] && command -v ninja >/dev/null 2>&1; then
  generator=(-G Ninja)
fi
cmake -S . -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=Release \
  -DKTL_BUILD_BENCH=ON -DKTL_BUILD_TESTS=OFF -DKTL_SANITIZE=OFF
cmake --build "$build" --target read_bench eval_bench -j "$(nproc)"

read_csv=$build/read_bench.csv
eval_csv=$build/eval_bench.csv
"$build/bench/read_bench" --benchmark_out="$read_csv" --benchmark_out_format=csv "$@"
"$build/bench/eval_bench" --benchmark_out="$eval_csv" --benchmark_out_format=csv "$@"

# Mean bytes per second of each benchmark, over its repetitions (or their reported mean).
awk -F, '
  /^name,/ { for (i = 1; i <= NF; i++) if ($i == "bytes_per_second") col = i; next }
  col && NF >= col && $col != "" {
    name = $1; gsub(/"/, "", name)
    if (name ~ /_(median|stddev|cv)$/) next
    sub(/_mean$/, "", name)
    sub(/\/.*/, "", name)
    sum[name] += $col; n[name]++
  }
  END {
    ktl = sum["BM_KtlRead"] / n["BM_KtlRead"]
    xml = sum["BM_LibXml2ReadMemory"] / n["BM_LibXml2ReadMemory"]
    loop = sum["BM_ByteLoopCountParens"] / n["BM_ByteLoopCountParens"]
    printf "\nKTL reader            %9.1f MB/s\n", ktl / 1e6
    printf "libxml2 xmlReadMemory %9.1f MB/s   KTL reader / libxml2   = %.3f\n", xml / 1e6, ktl / xml
    printf "byte loop             %9.1f MB/s   KTL reader / byte loop = %.4f\n", loop / 1e6, ktl / loop
  }' "$read_csv"

# Mean procedure calls per second of each benchmark, over its repetitions (or their reported
# mean).
awk -F, '
  /^name,/ { for (i = 1; i <= NF; i++) if ($i == "calls" || $i == "\"calls\"") col = i; next }
  col && NF >= col && $col != "" {
    name = $1; gsub(/"/, "", name)
    if (name ~ /_(median|stddev|cv)$/) next
    sub(/_mean$/, "", name)
    sub(/\/.*/, "", name)
    sum[name] += $col; n[name]++
  }
  function rate(name) { return n[name] ? sum[name] / n[name] : 0 }
  function show(label, ktl, base) {
    if (!ktl || !base) return
    printf "%-14s KTL %9.3f M calls/s   C++ %9.1f M calls/s   KTL / C++ = %.5f (C++ %.0fx faster)\n",
           label, ktl / 1e6, base / 1e6, ktl / base, base / ktl
  }
  END {
    printf "\n"
    show("fib 25", rate("BM_KtlFib"), rate("BM_CppFib"))
    show("loop 1000000", rate("BM_KtlLoop"), rate("BM_CppLoopFunction"))
  }' "$eval_csv"
