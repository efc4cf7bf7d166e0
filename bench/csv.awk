# The CSV reading that every bench/<name>.awk summary shares; run-bench.sh loads it first.
# For each benchmark, over its repetitions (or their reported mean; median, stddev and cv rows
# are passed over), it sums the columns bytes_per_second into bytes[name], items_per_second
# into items[name] and the user counter calls into calls[name], and counts the rows in n[name].
# The name is the benchmark's, without its arguments. mean(table, name) is the average.
/^name,/ {
  for (i = 1; i <= NF; i++) {
    column = $i; gsub(/"/, "", column)
    if (column == "bytes_per_second") bcol = i
    if (column == "items_per_second") icol = i
    if (column == "calls") ccol = i
  }
  next
}
NF > 1 && (bcol || icol || ccol) {
  name = $1; gsub(/"/, "", name)
  if (name ~ /_(median|stddev|cv)$/) next
  sub(/_mean$/, "", name)
  sub(/\/.*/, "", name)
  if (bcol) bytes[name] += $bcol
  if (icol) items[name] += $icol
  if (ccol) calls[name] += $ccol
  n[name]++
}
function mean(table, name) { return n[name] ? table[name] / n[name] : 0 }
