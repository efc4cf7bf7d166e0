# Summary of fomdump_bench's CSV output: the RPR FOM 2.0 federation (14 modules and the MIM)
# loaded, sorted and merged by fomdump's code, as a multiple of libxml2's xmlReadMemory of the
# same 15 documents, measured in the same run; and the shares of it that tell the formats and
# that merge.
  END {
    base = mean(bytes, "BM_RprXmlReadMemory")
    printf "\n%-24s %12s %10s %24s\n", "", "loads/s", "MB/s", "cost / xmlReadMemory"
    split("BM_RprFederation BM_RprFormatDetection BM_RprMergeOnly BM_RprXmlReadMemory", names, " ")
    for (k = 1; k <= 4; k++) {
      name = names[k]
      if (!n[name]) continue
      b = mean(bytes, name)
      printf "%-24s %12.1f %10.2f %24.3f\n", substr(name, 4), mean(items, name), b / 1e6, base / b
    }
  }
