#!/usr/bin/env bash
# Lists the dynamic symbols that each library given defines, demangled, and fails on any that is
# not the library's interface: the namespace KORRti (its functions, data, vtables, type
# information and guard variables) and the global class DtFedReaderFactory.
set -euo pipefail
status=0
for library in "$@"; do
  count=0
  while IFS= read -r name; do
    count=$((count + 1))
    case $name in
      KORRti::* | "vtable for KORRti::"* | "VTT for KORRti::"* | "typeinfo for KORRti::"* | \
        "typeinfo name for KORRti::"* | "guard variable for KORRti::"* | DtFedReaderFactory::* | \
        "vtable for DtFedReaderFactory" | "typeinfo for DtFedReaderFactory" | \
        "typeinfo name for DtFedReaderFactory") ;;
      *)
        echo "$library: exported outside the interface: $name"
        status=1
        ;;
    esac
  done < <(nm -D --defined-only -C "$library" | cut -d' ' -f3-)
  echo "$library: $count dynamic symbols"
  if [ "$count" -eq 0 ]; then
    echo "$library: exports nothing"
    status=1
  fi
done
exit $status
