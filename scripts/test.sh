#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests through ctest.
# Set QORVALE_SANITIZE=1, or pass --sanitize, to build and test under
# AddressSanitizer and UBSan (in build/sanitize).
set -euo pipefail
for arg in "$@"; do
  case "$arg" in
    --sanitize) QORVALE_SANITIZE=1 ;;
    *) echo "usage: $0 [--sanitize]" >&2; exit 2 ;;
  esac
done
source "$(dirname "$0")/deps.sh"
qorvale_install_deps

build="$QORVALE_ROOT/build/test"
extra=()
if [ "${QORVALE_SANITIZE:-0}" = "1" ]; then
  build="$QORVALE_ROOT/build/sanitize"
  extra+=(-DQORVALE_SANITIZE=ON)
fi
qorvale_build "$build" "${extra[@]}"
export QT_QPA_PLATFORM=offscreen
cd "$build"
ctest --output-on-failure -j "$(nproc)" --timeout 600
