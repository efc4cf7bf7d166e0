#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need (libxml2-utils
# brings xmllint, which the settings' tests validate saved files with; graphviz brings dot, which
# the fomdump tests draw its graphs with; dpkg-dev, fakeroot, file and lintian build and check the
# Debian packages; man-db and groff-base render the manual pages; doxygen makes the API
# reference).
# Run as root on a fresh Debian machine; a second run is quick.
set -euo pipefail
packages=(cmake g++ make ninja-build pkg-config git libxml2-dev libxml2-utils libtclap-dev libgtest-dev
  libgmock-dev libbenchmark-dev clang-format clang-tidy graphviz dpkg-dev fakeroot file lintian
  man-db groff-base doxygen)
if [ "${1:-}" = "--fuzz" ]; then
  packages+=(clang libclang-rt-dev)
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update
  apt-get install -y --no-install-recommends "${missing[@]}"
fi
