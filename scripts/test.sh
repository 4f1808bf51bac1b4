#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests through ctest.
# Set QORVALE_SANITIZE=1, or pass --sanitize, to build and test under
# AddressSanitizer and UBSan (in build/sanitize). --tsan builds the test
# programs whose tests start threads under ThreadSanitizer (in build/tsan) and
# runs those tests.
set -euo pipefail
for arg in "$@"; do
  case "$arg" in
    --sanitize) QORVALE_SANITIZE=1 ;;
    --tsan) QORVALE_TSAN=1 ;;
    *) echo "usage: $0 [--sanitize | --tsan]" >&2; exit 2 ;;
  esac
done
source "$(dirname "$0")/deps.sh"
qorvale_install_deps

export QT_QPA_PLATFORM=offscreen
if [ "${QORVALE_TSAN:-0}" = "1" ]; then
  # The tests that start a thread: the group rewrite and the calls of a
  # worker into the GUI thread. Qt's own libraries are not instrumented; what
  # they synchronise inside is passed over by tsan.supp.
  build="$QORVALE_ROOT/build/tsan"
  qorvale_build "$build" -DQORVALE_TSAN=ON -DQORVALE_BUILD_BENCH=OFF \
    -- group_rewrite_tests workspace_tests platform_core_tests platform_gui_tests
  export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 suppressions=$QORVALE_ROOT/scripts/tsan.supp"
  cd "$build"
  ctest --output-on-failure -j "$(nproc)" --timeout 600 -R 'GroupRewrite\.|FromAnotherThread|OptionChangeRecalculates'
  exit $?
fi

build="$QORVALE_ROOT/build/test"
extra=()
if [ "${QORVALE_SANITIZE:-0}" = "1" ]; then
  build="$QORVALE_ROOT/build/sanitize"
  extra+=(-DQORVALE_SANITIZE=ON)
fi
qorvale_build "$build" "${extra[@]}"
cd "$build"
ctest --output-on-failure -j "$(nproc)" --timeout 600
