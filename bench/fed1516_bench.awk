# Summary of fed1516_bench's CSV output: documents per second and MB/s of the 1516-2000 reader
# on the RPR FOM 2.0 document, and the cost of a whole read as a multiple of libxml2's
# xmlReadMemory of the same bytes, measured in the same run.
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
    split("BM_FedReader1516 BM_FedReader1516Reused BM_FedReader1516WithTeardown BM_XmlReadMemory", names, " ")
    base = bytes["BM_XmlReadMemory"] / n["BM_XmlReadMemory"]
    printf "\n%-30s %12s %10s %24s\n", "", "docs/s", "MB/s", "cost / xmlReadMemory"
    for (k = 1; k <= 4; k++) {
      name = names[k]
      if (!n[name]) continue
      b = bytes[name] / n[name]; f = items[name] / n[name]
      printf "%-30s %12.1f %10.2f %24.3f\n", substr(name, 4), f, b / 1e6, base / b
    }
  }
