# Summary of env_bench's CSV output: nodes and bytes per second of each reader and writer of
# the 10,000-node tree, over its repetitions (or their reported mean), as ratios to libxml2
# parsing (for the readers) and saving (for the writers) the XML form of the same tree.
function rate(name) { return mean(items, name) }
function show(label, name, base) {
  if (!n[name] || !rate(base)) return
  printf "%-28s %8.3f M nodes/s %8.1f MB/s   / %-22s = %.3f\n", label, rate(name) / 1e6,
         mean(bytes, name) / 1e6, base, rate(name) / rate(base)
}
END {
  show("libxml2 xmlReadMemory", "BM_LibXml2ReadMemory", "BM_LibXml2ReadMemory")
  show("DtEnvXMLReader::readMemory", "BM_EnvXmlReadMemory", "BM_LibXml2ReadMemory")
  show("DtEnvKTLReader::readFile", "BM_EnvKtlReadFile", "BM_LibXml2ReadMemory")
  show("libxml2 xmlDocDumpMemory", "BM_LibXml2DumpMemory", "BM_LibXml2DumpMemory")
  show("DtEnvXMLWriter::writeString", "BM_EnvXmlWriteString", "BM_LibXml2DumpMemory")
  show("DtEnvKTLWriter::writeFile", "BM_EnvKtlWriteFile", "BM_LibXml2DumpMemory")
}
