# Summary of eval_bench's CSV output: mean procedure calls per second of each benchmark, over
# its repetitions (or their reported mean), KTL against C++.
  function show(label, ktl, base) {
    if (!ktl || !base) return
    printf "%-14s KTL %9.3f M calls/s   C++ %9.1f M calls/s   KTL / C++ = %.5f (C++ %.0fx faster)\n",
           label, ktl / 1e6, base / 1e6, ktl / base, base / ktl
  }
  END {
    printf "\n"
    show("fib 25", mean(calls, "BM_KtlFib"), mean(calls, "BM_CppFib"))
    show("loop 1000000", mean(calls, "BM_KtlLoop"), mean(calls, "BM_CppLoopFunction"))
  }
