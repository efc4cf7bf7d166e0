# Summary of read_bench's CSV output: the KTL reader's mean bytes per second over its
# repetitions (or their reported mean), as ratios to libxml2 and to a plain byte loop.
  END {
    ktl = mean(bytes, "BM_KtlRead")
    xml = mean(bytes, "BM_LibXml2ReadMemory")
    loop = mean(bytes, "BM_ByteLoopCountParens")
    printf "\nKTL reader            %9.1f MB/s\n", ktl / 1e6
    printf "libxml2 xmlReadMemory %9.1f MB/s   KTL reader / libxml2   = %.3f\n", xml / 1e6, ktl / xml
    printf "byte loop             %9.1f MB/s   KTL reader / byte loop = %.4f\n", loop / 1e6, ktl / loop
  }
