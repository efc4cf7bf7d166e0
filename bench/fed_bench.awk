# Summary of fed_bench's CSV output: files per second and MB/s of the two FED readers on the
# largest FED file of the corpus, as ratios to a plain read of the file and to DtcRead of the
# same bytes, measured in the same run.
  END {
    split("BM_FedReader13 BM_KtlFedReader BM_DtcReadSameBytes BM_PlainFileRead", names, " ")
    plain = mean(bytes, "BM_PlainFileRead")
    dtc = mean(bytes, "BM_DtcReadSameBytes")
    printf "\n%-22s %12s %10s %14s %14s\n", "", "files/s", "MB/s", "/ plain read", "/ DtcRead"
    for (k = 1; k <= 4; k++) {
      name = names[k]
      if (!n[name]) continue
      b = mean(bytes, name); f = mean(items, name)
      printf "%-22s %12.1f %10.2f %14.4f %14.3f\n", substr(name, 4), f, b / 1e6, b / plain, b / dtc
    }
  }
