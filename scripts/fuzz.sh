#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang under AddressSanitizer and
# UBSan in build/fuzz, and runs each for SECONDS (default 60) on its seed
# corpus in fuzz/corpus/<target>/. New inputs go to build/fuzz/corpus/<target>/,
# findings to build/fuzz/findings/<target>/. Prints the executions per target;
# exits 1 when a target found something.
#   ./scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
source "$(dirname "$0")/deps.sh"
# Only here, never in the normal build: clang and its libFuzzer.
QORVALE_PACKAGES+=(clang libfuzzer-14-dev)
qorvale_install_deps

seconds=${1:-60}
shift || true
build="$QORVALE_ROOT/build/fuzz"
cmake -S "$QORVALE_ROOT" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DQORVALE_FUZZ=ON -DQORVALE_BUILD_TESTS=OFF -DQORVALE_BUILD_BENCH=OFF \
  ${CMAKE_CXX_COMPILER_LAUNCHER:+-DCMAKE_CXX_COMPILER_LAUNCHER=$CMAKE_CXX_COMPILER_LAUNCHER} >/dev/null
cmake --build "$build" -j "$(nproc)" --target fuzz_all >"$build/build.log" 2>&1 ||
  { tail -n 60 "$build/build.log"; exit 1; }

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for src in "$QORVALE_ROOT"/fuzz/fuzz_*.cpp; do
    targets+=("$(basename "$src" .cpp)")
  done
fi

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_QPA_PLATFORM=offscreen
# The file readers write their inputs to a temporary folder; in memory when
# the system has one, so that a save's flush to disk costs nothing.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
status=0
printf '%-18s %12s %10s %s\n' target executions exec/s result
for t in "${targets[@]}"; do
  corpus="$build/corpus/$t"
  findings="$build/findings/$t"
  mkdir -p "$corpus" "$findings"
  log="$build/$t.log"
  rc=0
  "$build/fuzz/$t" -max_total_time="$seconds" -print_final_stats=1 -timeout=10 \
    -rss_limit_mb=2048 -artifact_prefix="$findings/" \
    "$corpus" "$QORVALE_ROOT/fuzz/corpus/$t" >"$log" 2>&1 || rc=$?
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -n 1)
  result=ok
  if [ "$rc" -ne 0 ]; then
    result="FINDING (see $log and $findings)"
    status=1
  fi
  printf '%-18s %12s %10s %s\n' "$t" "${runs:-?}" "${rate:-?}" "$result"
done
exit "$status"
