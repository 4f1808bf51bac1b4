#!/usr/bin/env bash
# Installs the Debian packages the project needs, only those that are missing.
# Sourced by run.sh and test.sh; safe to run on its own.
set -euo pipefail

QORVALE_PACKAGES=(
  build-essential cmake pkg-config git ccache
  qt6-base-dev libgl-dev
  libsqlite3-dev sqlite3
  libxlsxwriter-dev
  python3-openpyxl
  libgtest-dev libgmock-dev libbenchmark-dev
  fonts-noto-cjk qt6-translations-l10n
  desktop-file-utils
  xvfb xauth
  poppler-utils
)

# Only for scripts/camelcase.sh, which adds them to the list above: clang-tidy
# with clang-apply-replacements, clang-format, and libclang for Python.
QORVALE_RENAME_PACKAGES=(
  clang-tidy-14 clang-tools-14 clang-format-14
  python3-clang-14 python3-yaml
)

# Only for scripts/accessibility.sh: a session bus, the accessibility bus and
# the screen readers' library for Python, and a screenshot.
QORVALE_ACCESSIBILITY_PACKAGES=(
  dbus-x11 at-spi2-core python3-pyatspi x11-apps netpbm
)

qorvale_missing_packages() {
  local p missing=()
  for p in "${QORVALE_PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
      missing+=("$p")
    fi
  done
  echo "${missing[@]:-}"
}

qorvale_install_deps() {
  local missing
  missing=$(qorvale_missing_packages)
  [ -z "$missing" ] && return 0
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
      echo "These packages are missing: $missing" >&2
      echo "Run this script as root, or install sudo, to install them." >&2
      return 1
    fi
    sudo=(sudo)
  fi
  echo "Installing missing packages: $missing"
  "${sudo[@]}" apt-get update -qq
  # shellcheck disable=SC2086
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $missing
}

qorvale_build() {
  # $1: build directory, further arguments go to cmake configure; those after
  # a "--" name the targets to build (all when none).
  local dir=$1
  shift
  local configure=() targets=()
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do configure+=("$1"); shift; done
  [ $# -gt 0 ] && shift
  for t in "$@"; do targets+=(--target "$t"); done
  local launcher=()
  # ccache keeps the objects of earlier builds, also those of other clones:
  # paths below the source folder are hashed relative to it.
  if command -v ccache >/dev/null 2>&1; then
    export CCACHE_BASEDIR="$QORVALE_ROOT" CCACHE_NOHASHDIR=1
    launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  cmake -S "$QORVALE_ROOT" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" \
    "${configure[@]}" >/dev/null
  cmake --build "$dir" -j "$(nproc)" "${targets[@]}" >"$dir/build.log" 2>&1 ||
    { tail -n 60 "$dir/build.log"; return 1; }
  echo "Built in $dir"
}

QORVALE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export QORVALE_ROOT

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
  qorvale_install_deps
fi
