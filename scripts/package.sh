#!/usr/bin/env bash
# Builds a Release tree and writes qorvale_<version>_amd64.deb into the
# repository's folder, then checks the package with desktop-file-validate and
# lintian (errors fail the script, warnings are shown).
set -euo pipefail
source "$(dirname "$0")/deps.sh"
QORVALE_PACKAGES+=(dpkg-dev desktop-file-utils lintian)
qorvale_install_deps

build="$QORVALE_ROOT/build/release"
qorvale_build "$build" -DCMAKE_BUILD_TYPE=Release -DQORVALE_BUILD_TESTS=OFF \
  -DQORVALE_BUILD_BENCH=OFF
rm -f "$build"/package/qorvale_*.deb
(cd "$build" && cpack -G DEB >cpack.log 2>&1) || { tail -n 30 "$build/cpack.log"; exit 1; }
deb=$(ls "$build"/package/qorvale_*_amd64.deb)
cp "$deb" "$QORVALE_ROOT/"
deb="$QORVALE_ROOT/$(basename "$deb")"
echo "Wrote $deb"

desktop-file-validate "$QORVALE_ROOT/data/com.ostrel.Qorvale.desktop"
echo "desktop-file-validate: no errors"
# lintian warns when run as root; the package is checked all the same.
status=0
lintian --fail-on error "$deb" >"$build/lintian.log" 2>&1 || status=$?
grep -v 'running with root privileges' "$build/lintian.log" || true
if [ "$status" -ne 0 ]; then
  echo "lintian found errors in $deb" >&2
  exit 1
fi
echo "lintian: no errors"
echo "Install with: sudo apt install $deb"
