# Summary of eval_bench's CSV output: mean procedure calls per second of each benchmark, over
# its repetitions (or their reported mean), KTL against C++.
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
  }
