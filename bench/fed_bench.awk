# Summary of fed_bench's CSV output: files per second and MB/s of the two FED readers on the
# largest FED file of the corpus, as ratios to a plain read of the file and to DtcRead of the
# same bytes, measured in the same run.
  /^name,/ {
    for (i = 1; i <= NF; i++) {
      if ($i == "bytes_per_second") bcol = i
      if ($i == "items_per_second") icol = i
    }
    next
  }
  bcol && NF >= bcol && $bcol != "" {
    name = $1; gsub(/"/, "", name)
    if (name ~ /_(median|stddev|cv)$/) next
    sub(/_mean$/, "", name)
    sub(/\/.*/, "", name)
    bytes[name] += $bcol; items[name] += $icol; n[name]++
  }
  END {
    split("BM_FedReader13 BM_KtlFedReader BM_DtcReadSameBytes BM_PlainFileRead", names, " ")
    plain = bytes["BM_PlainFileRead"] / n["BM_PlainFileRead"]
    dtc = bytes["BM_DtcReadSameBytes"] / n["BM_DtcReadSameBytes"]
    printf "\n%-22s %12s %10s %14s %14s\n", "", "files/s", "MB/s", "/ plain read", "/ DtcRead"
    for (k = 1; k <= 4; k++) {
      name = names[k]
      if (!n[name]) continue
      b = bytes[name] / n[name]; f = items[name] / n[name]
      printf "%-22s %12.1f %10.2f %14.4f %14.3f\n", substr(name, 4), f, b / 1e6, b / plain, b / dtc
    }
  }
