#!/usr/bin/env bash
# Reads the workspace as a screen reader does. Starts the program on the demo
# data (in a temporary folder) under Xvfb with the accessibility bus on, and
# with scripts/accessibility.py lists the two grids of the sheet as the
# accessibility bus gives them (name, size, column headers, first lines) and
# the toggle of the factor columns with its state; then clicks the fittings'
# factor cell of the first line, types a figure and Enter, and reads the
# cells again. Writes a screenshot of the screen to the file named (default
# build/accessibility.png).
#   ./scripts/accessibility.sh [OUT.png] [--scale 2]
set -euo pipefail
source "$(dirname "$0")/deps.sh"
QORVALE_PACKAGES+=("${QORVALE_ACCESSIBILITY_PACKAGES[@]}")
qorvale_install_deps

out="$QORVALE_ROOT/build/accessibility.png"
scale=1
while [ $# -gt 0 ]; do
  case "$1" in
    --scale) scale=$2; shift 2 ;;
    *) out=$1; shift ;;
  esac
done
build="$QORVALE_ROOT/build/test"
qorvale_build "$build" -- qorvale velmora-suite

work=$(mktemp -d)
display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 "$((1366 * scale))x$((768 * scale))x24" >/dev/null 2>&1 &
xvfb=$!
cleanup() {
  kill "${app:-}" "$xvfb" "${DBUS_SESSION_BUS_PID:-}" 2>/dev/null || true
  pkill -f "at-spi-bus-launcher" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
export DISPLAY=$display
sleep 1
eval "$(dbus-launch --sh-syntax)"
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
sleep 1

export QORVALE_COMMON_DATA="$work/data" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
unset QT_QPA_PLATFORM
"$build/src/app/velmora-suite" init --demo >/dev/null
QT_SCALE_FACTOR=$scale "$build/src/app/qorvale" >"$work/qorvale.log" 2>&1 &
app=$!
sleep 4
/usr/bin/python3 "$QORVALE_ROOT/scripts/accessibility.py"
xwd -root -silent | xwdtopnm 2>/dev/null | pnmtopng >"$out"
echo "Screenshot: $out"
