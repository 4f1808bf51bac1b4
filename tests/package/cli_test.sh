#!/usr/bin/env bash
# Every program answers --help and --version before anything else, and an
# unknown option with its usage and exit code 2. The desktop program does so
# without a display.
# $1: the folder of the built programs.
set -u
bin=$1
failed=0 passed=0
check() { # name expected-code command...
  local name=$1 want=$2
  shift 2
  local out code
  out=$("$@" 2>&1)
  code=$?
  if [ "$code" -eq "$want" ]; then
    passed=$((passed + 1))
  else
    echo "FAIL: $name: exit $code, expected $want"
    echo "$out" | head -5
    failed=$((failed + 1))
  fi
  LAST=$out
}
for p in qorvale qorvale-tool velmora-suite qorvale-demo controls-sample listpress; do
  exe="$bin/$p"
  if [ ! -x "$exe" ]; then
    [ "$p" = listpress ] && continue # built only with the print program
    echo "FAIL: $exe is missing"; failed=$((failed + 1)); continue
  fi
  # No display at all: help and version must not need one.
  check "$p --help" 0 env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb "$exe" --help
  case $LAST in usage:* | 使い方:*) ;; *) echo "FAIL: $p --help does not start with its usage"; failed=$((failed + 1)) ;; esac
  check "$p --version" 0 env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb "$exe" --version
  case $LAST in "$p "[0-9]*) ;; *) echo "FAIL: $p --version says: $LAST"; failed=$((failed + 1)) ;; esac
  check "$p --no-such-option" 2 env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb "$exe" --no-such-option
  case $LAST in *usage:* | *使い方:*) ;; *) echo "FAIL: $p: an unknown option gives no usage"; failed=$((failed + 1)) ;; esac
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
