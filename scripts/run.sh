#!/usr/bin/env bash
# Installs what is missing, builds, creates the demo data with the suite
# stand-in when there is none, and starts the program.
#   QORVALE_COMMON_DATA=/some/folder ./scripts/run.sh   keeps the data there
#   (default: the user's data folder, ~/.local/share).
set -euo pipefail
source "$(dirname "$0")/deps.sh"
qorvale_install_deps

build="$QORVALE_ROOT/build/run"
qorvale_build "$build"

# The suite stand-in leaves an existing database alone.
"$build/src/app/velmora-suite" init --demo

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "No display: set DISPLAY (or run under xvfb-run) to see the window." >&2
  exit 1
fi
exec "$build/src/app/qorvale" "$@"
