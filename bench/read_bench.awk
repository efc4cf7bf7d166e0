# Summary of read_bench's CSV output: the KTL reader's mean bytes per second over its
# repetitions (or their reported mean), as ratios to libxml2 and to a plain byte loop.
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
  }
