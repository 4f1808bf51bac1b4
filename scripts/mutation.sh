#!/usr/bin/env bash
# Mutation testing: ./scripts/mutation.sh [N] [--seed S] [--timeout T] [--list]
# Makes N single-point mutants of src/engine, store, edit, output, sheet and
# print (default 60, seed 1), builds each in build/mutation, runs the tests
# and reports what the tests caught. See "Mutation testing" in the README.
set -euo pipefail
source "$(dirname "$0")/deps.sh"
qorvale_install_deps
exec python3 "$QORVALE_ROOT/scripts/mutation.py" "$@"
