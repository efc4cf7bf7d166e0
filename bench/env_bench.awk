# Summary of env_bench's CSV output: nodes and bytes per second of each reader and writer of
# the 10,000-node tree, over its repetitions (or their reported mean), as ratios to libxml2
# parsing (for the readers) and saving (for the writers) the XML form of the same tree.
/^name,/ {
  for (i = 1; i <= NF; i++) {
    if ($i == "bytes_per_second") bcol = i
    if ($i == "items_per_second") icol = i
  }
  next
}
icol && NF >= icol && $icol != "" {
  name = $1; gsub(/"/, "", name)
  if (name ~ /_(median|stddev|cv)$/) next
  sub(/_mean$/, "", name)
  sub(/\/.*/, "", name)
  items[name] += $icol; bytes[name] += $bcol; n[name]++
}
function rate(name) { return n[name] ? items[name] / n[name] : 0 }
function show(label, name, base) {
  if (!n[name] || !rate(base)) return
  printf "%-28s %8.3f M nodes/s %8.1f MB/s   / %-22s = %.3f\n", label, rate(name) / 1e6,
         bytes[name] / n[name] / 1e6, base, rate(name) / rate(base)
}
END {
  show("libxml2 xmlReadMemory", "BM_LibXml2ReadMemory", "BM_LibXml2ReadMemory")
  show("DtEnvXMLReader::readMemory", "BM_EnvXmlReadMemory", "BM_LibXml2ReadMemory")
  show("DtEnvKTLReader::readFile", "BM_EnvKtlReadFile", "BM_LibXml2ReadMemory")
  show("libxml2 xmlDocDumpMemory", "BM_LibXml2DumpMemory", "BM_LibXml2DumpMemory")
  show("DtEnvXMLWriter::writeString", "BM_EnvXmlWriteString", "BM_LibXml2DumpMemory")
  show("DtEnvKTLWriter::writeFile", "BM_EnvKtlWriteFile", "BM_LibXml2DumpMemory")
}
