#!/usr/bin/env bash
# The Debian package made from this build, unpacked into a temporary root,
# runs from there with the libraries of the system.
# $1: the build folder (with CPackConfig.cmake).
set -u
build=$1
if ! command -v dpkg-deb >/dev/null 2>&1; then
  echo "SKIPPED: dpkg-deb is not installed, the package cannot be unpacked"
  exit 77
fi
if ! command -v dpkg-shlibdeps >/dev/null 2>&1; then
  echo "SKIPPED: dpkg-shlibdeps (package dpkg-dev) is not installed, no package can be made"
  exit 77
fi
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
failed=0 passed=0
ok() { passed=$((passed + 1)); }
fail() { echo "FAIL: $*"; failed=$((failed + 1)); }

if ! cpack --config "$build/CPackConfig.cmake" -G DEB -B "$tmp/pkg" >"$tmp/cpack.log" 2>&1; then
  tail -n 20 "$tmp/cpack.log"
  echo "0 passed, 1 failed"
  exit 1
fi
deb=$(ls "$tmp"/pkg/qorvale_*_amd64.deb 2>/dev/null | head -1)
[ -n "$deb" ] && ok || fail "no qorvale_*_amd64.deb made"
dpkg-deb -x "$deb" "$tmp/root" && ok || fail "dpkg-deb -x"
root=$tmp/root

# What an installed program needs, where it needs it.
for f in usr/bin/qorvale usr/bin/qorvale-tool usr/bin/velmora-suite \
  usr/lib/qorvale/Application.ico usr/share/applications/com.ostrel.Qorvale.desktop \
  usr/share/icons/hicolor/48x48/apps/com.ostrel.Qorvale.png usr/share/doc/qorvale/copyright; do
  [ -e "$root/$f" ] && ok || fail "$f is not in the package"
done
if dpkg-deb -I "$deb" | grep -q '^ Depends:.*libqt6widgets6'; then ok; else fail "no Qt dependency declared"; fi
if command -v desktop-file-validate >/dev/null 2>&1; then
  desktop-file-validate "$root/usr/share/applications/com.ostrel.Qorvale.desktop" && ok ||
    fail "desktop-file-validate"
fi

# The unpacked programs, with the system's libraries only.
export QORVALE_COMMON_DATA="$tmp/data" QORVALE_LIBRARY_DIR="$tmp/library"
unset LD_LIBRARY_PATH
out=$("$root/usr/bin/qorvale-tool" --version 2>&1) && ok || fail "qorvale-tool --version: $out"
case $out in "qorvale-tool "[0-9]*) ok ;; *) fail "qorvale-tool --version says: $out" ;; esac
out=$("$root/usr/bin/velmora-suite" init --demo 2>&1) && ok || fail "velmora-suite init --demo: $out"
[ -f "$tmp/data/ostrel/database/velmoraMainEX.db3" ] && ok || fail "no demo database made"
out=$("$root/usr/bin/qorvale-tool" show --group 1 --kan 1 2>&1) && ok || fail "qorvale-tool show: $out"
case $out in *15A*) ok ;; *) fail "qorvale-tool show prints no sizes" ;; esac
if [ -e "$root/usr/bin/listpress" ]; then
  out=$("$root/usr/bin/listpress" --help 2>&1) && ok || fail "listpress --help: $out"
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
