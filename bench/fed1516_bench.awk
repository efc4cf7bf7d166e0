# Summary of fed1516_bench's CSV output: documents per second and MB/s of the 1516-2000 reader
# on the RPR FOM 2.0 document, and the cost of a whole read as a multiple of libxml2's
# xmlReadMemory of the same bytes, measured in the same run.
  END {
    split("BM_FedReader1516 BM_FedReader1516Reused BM_FedReader1516WithTeardown BM_XmlReadMemory", names, " ")
    base = mean(bytes, "BM_XmlReadMemory")
    printf "\n%-30s %12s %10s %24s\n", "", "docs/s", "MB/s", "cost / xmlReadMemory"
    for (k = 1; k <= 4; k++) {
      name = names[k]
      if (!n[name]) continue
      b = mean(bytes, name); f = mean(items, name)
      printf "%-30s %12.1f %10.2f %24.3f\n", substr(name, 4), f, b / 1e6, base / b
    }
  }
