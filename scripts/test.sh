#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests through ctest.
# Set QORVALE_SANITIZE=1 to build and test under AddressSanitizer and UBSan.
set -euo pipefail
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
