#!/usr/bin/env bash
# Builds the Debian packages from the source tree and checks them:
#
#   deb_packages.sh SOURCE_DIR CONSUMER_DIR WORK_DIR
#
# A release build of the libraries and programs, configured for /usr, is packaged with
# `cpack -G DEB` into libktl0, libktl-dev and ktl-tools. lintian must find no error in them (its
# warnings are listed). The packages are unpacked with `dpkg-deb -x` into one root, and the host
# project of tests/consumer is built against that root through find_package(ktl) and through
# pkg-config, and run; so are the packaged programs and their manual pages.
set -euo pipefail

source_dir=$1
consumer_dir=$2
work=$3
rm -rf "$work"
mkdir -p "$work"
build=$work/build
root=$work/root

generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi

echo "== release build for /usr"
cmake -S "$source_dir" -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_INSTALL_PREFIX=/usr -DKTL_BUILD_TESTS=OFF -DKTL_BUILD_BENCH=OFF -DKTL_SANITIZE=OFF \
  >"$work/configure.log" || { cat "$work/configure.log"; exit 1; }
cmake --build "$build" >"$work/build.log" || { tail -50 "$work/build.log"; exit 1; }

echo "== cpack -G DEB"
(cd "$build" && cpack -G DEB >"$work/cpack.log") || { cat "$work/cpack.log"; exit 1; }
packages=()
for name in libktl0 libktl-dev ktl-tools; do
  deb=$(find "$build" -maxdepth 1 -name "${name}_*.deb" | head -n 1)
  [ -n "$deb" ] || { echo "no package $name"; ls "$build"; exit 1; }
  packages+=("$deb")
  echo "$(basename "$deb"): $(dpkg-deb -f "$deb" Depends)"
done
# The development package needs TCLAP and libxml2's headers, which the public headers include.
dpkg-deb -f "${packages[1]}" Depends | grep -q 'libtclap-dev' || { echo "libktl-dev lacks libtclap-dev"; exit 1; }
dpkg-deb -f "${packages[1]}" Depends | grep -q 'libxml2-dev' || { echo "libktl-dev lacks libxml2-dev"; exit 1; }
dpkg-deb -f "${packages[0]}" Depends | grep -q 'libxml2' || { echo "libktl0 lacks libxml2"; exit 1; }
dpkg-deb -c "${packages[0]}" >"$work/libktl0.contents"
grep -q 'usr/lib/.*/libktl\.so\.0' "$work/libktl0.contents" || { echo "libktl0 lacks libktl.so.0"; exit 1; }
if grep -q 'libktl\.so$' "$work/libktl0.contents"; then echo "libktl0 holds the .so link"; exit 1; fi

echo "== lintian"
if command -v lintian >/dev/null 2>&1; then
  status=0
  for deb in "${packages[@]}"; do
    lintian --tag-display-limit 0 "$deb" >"$work/lintian.out" 2>&1 || true
    sed 's/^/  /' "$work/lintian.out"
    if grep -q '^E:' "$work/lintian.out"; then status=1; fi
  done
  [ "$status" -eq 0 ] || { echo "lintian found errors"; exit 1; }
else
  echo "lintian is not installed (scripts/install-deps.sh installs it)"
  exit 1
fi

echo "== unpacked into $root"
for deb in "${packages[@]}"; do dpkg-deb -x "$deb" "$root"; done
libdir=$(find "$root" -name 'libktl.so' -printf '%h\n' | head -n 1)
[ -n "$libdir" ] || { echo "libktl.so is in no package"; exit 1; }

echo "== find_package(ktl) against the root"
cmake -S "$consumer_dir" -B "$work/cmake-build" "${generator[@]}" -DCMAKE_PREFIX_PATH="$root/usr" \
  >"$work/consumer-configure.log" || { cat "$work/consumer-configure.log"; exit 1; }
cmake --build "$work/cmake-build" >"$work/consumer-build.log" || { cat "$work/consumer-build.log"; exit 1; }
LD_LIBRARY_PATH="$libdir" "$work/cmake-build/consumer" >"$work/cmake.out"
cat "$work/cmake.out"

echo "== pkg-config ktl against the root"
export PKG_CONFIG_SYSROOT_DIR=$root
export PKG_CONFIG_PATH=$libdir/pkgconfig
echo "ktl.pc: $(pkg-config --modversion ktl): $(pkg-config --cflags --libs ktl)"
# shellcheck disable=SC2046
c++ -std=c++17 "$consumer_dir/main.cpp" -o "$work/consumer-pc" $(pkg-config --cflags --libs ktl)
LD_LIBRARY_PATH="$libdir" "$work/consumer-pc" >"$work/pc.out"
cmp "$work/cmake.out" "$work/pc.out" || { echo "the two consumers disagree"; exit 1; }
grep -q 'consumer' "$work/cmake.out" || { echo "unexpected output of the consumer"; exit 1; }

echo "== the packaged programs"
for program in fomdump envconv ktl ktlprint settingsdemo; do
  [ -x "$root/usr/bin/$program" ] || { echo "ktl-tools lacks $program"; exit 1; }
  LD_LIBRARY_PATH="$libdir" "$root/usr/bin/$program" --help >/dev/null ||
    { echo "$program --help fails"; exit 1; }
  page=$root/usr/share/man/man1/$program.1.gz
  [ -f "$page" ] || { echo "ktl-tools lacks the manual page of $program"; exit 1; }
  man -l "$page" >/dev/null 2>&1 || zcat "$page" | groff -man -Tutf8 -z ||
    { echo "the manual page of $program does not render"; exit 1; }
done
echo "== ok"
