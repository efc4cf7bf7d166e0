# Summary of fed1516e_bench's CSV output: documents per second and MB/s of the 1516-2010 and
# 2025 readers on the NETN+RPR merged module and the held standard MIMs, each as a multiple of
# libxml2's xmlReadMemory of the same bytes, and the cost of reading the 14 RPR FOM 2.0 modules
# with schema validation as a multiple of the same reads without it, measured in the same run.
  END {
    printf "\n%-28s %12s %10s %20s\n", "", "docs/s", "MB/s", "cost / baseline"
    row("BM_NetnMerged", "BM_NetnMergedXmlReadMemory")
    row("BM_NetnMergedReused", "BM_NetnMergedXmlReadMemory")
    row("BM_Mim2010", "BM_Mim2010XmlReadMemory")
    row("BM_Mim2025", "BM_Mim2025XmlReadMemory")
    row("BM_NetnMergedXmlReadMemory", "")
    row("BM_Mim2010XmlReadMemory", "")
    row("BM_Mim2025XmlReadMemory", "")
    row("BM_RprModules", "")
    row("BM_RprModulesValidated", "BM_RprModules")
  }
  function row(name, base,    b) {
    if (!n[name]) return
    b = mean(bytes, name)
    if (base != "" && n[base]) {
      printf "%-28s %12.1f %10.2f %20.3f\n", substr(name, 4), mean(items, name), b / 1e6, mean(bytes, base) / b
    } else {
      printf "%-28s %12.1f %10.2f %20s\n", substr(name, 4), mean(items, name), b / 1e6, ""
    }
  }
