#!/usr/bin/env bash
# Installs the Debian packages needed to build, test, benchmark and fuzz
# lytFilterParser. Idempotent: only missing packages are installed, and
# `apt-get update` runs only when something is missing.
#
# Usage: scripts/deps.sh [--tool | package ...]
#   With no arguments the full default set is checked; --tool checks only
#   what building the library and lytreq needs (scripts/demo.sh).
set -euo pipefail

TOOL_PACKAGES=(
  cmake ninja-build g++
  libcli11-dev nlohmann-json3-dev
)

DEFAULT_PACKAGES=(
  "${TOOL_PACKAGES[@]}"
  pkg-config
  libgtest-dev googletest
  libbenchmark-dev
  python3
  python3-dev pybind11-dev python3-pytest  # the Python binding and its tests
  python3-mypy                             # the binding's tests type-check the tests and docs/python.md
  clang libclang-rt-14-dev
  clang-format     # scripts/format.sh --check, run by scripts/test.sh
  valgrind
  g++-multilib
  bash-completion  # the test of lytreq's bash completion runs it
  groff-base       # the test of the man pages formats them
  emscripten       # the WebAssembly package (scripts/web.sh)
  chromium         # the editor page's test in a real browser
)

if [[ ${1:-} == --tool ]]; then
  packages=("${TOOL_PACKAGES[@]}")
elif [[ $# -gt 0 ]]; then
  packages=("$@")
else
  packages=("${DEFAULT_PACKAGES[@]}")
fi

# The WebAssembly package's build and tests (playwright-core, the bundler,
# node:test) need node 20 or later, which Debian 12's nodejs (18) is
# not: the machine brings its own.
check_node() {
  local version
  if ! version=$(node --version 2>/dev/null); then
    echo "deps: node 20 or later is needed for the WebAssembly package and its tests, and there is no node on the PATH" >&2
    exit 1
  fi
  if [[ ! $version =~ ^v([0-9]+)\. ]] || (( BASH_REMATCH[1] < 20 )); then
    echo "deps: node 20 or later is needed for the WebAssembly package and its tests; $(command -v node) is $version" >&2
    exit 1
  fi
}

missing=()
for p in "${packages[@]}"; do
  if ! dpkg -s "$p" >/dev/null 2>&1; then
    missing+=("$p")
  fi
done

if [[ ${#missing[@]} -eq 0 ]]; then
  echo "deps: all ${#packages[@]} packages present"
  [[ $# -eq 0 ]] && check_node
  exit 0
fi

echo "deps: installing ${missing[*]}"
SUDO=()
if [[ $(id -u) -ne 0 ]]; then
  SUDO=(sudo)
fi
"${SUDO[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${SUDO[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
[[ $# -eq 0 ]] && check_node
exit 0
