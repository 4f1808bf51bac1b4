#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program.
set -euo pipefail
source "$(dirname "$0")/deps.sh"
qorvale_install_deps

build="$QORVALE_ROOT/build/run"
qorvale_build "$build"
exec "$build/src/app/qorvale-demo" "$@"
