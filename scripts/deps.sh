#!/usr/bin/env bash
# Installs the Debian packages needed to build, test, benchmark and fuzz
# lytFilterParser. Idempotent: only missing packages are installed, and
# `apt-get update` runs only when something is missing.
#
# Usage: scripts/deps.sh [package ...]
#   With no arguments the full default set is checked.
set -euo pipefail

DEFAULT_PACKAGES=(
  cmake ninja-build g++ pkg-config
  libgtest-dev googletest
  libbenchmark-dev
  libcli11-dev nlohmann-json3-dev python3
  clang libclang-rt-14-dev
  valgrind
  g++-multilib
)

if [[ $# -gt 0 ]]; then
  packages=("$@")
else
  packages=("${DEFAULT_PACKAGES[@]}")
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg -s "$p" >/dev/null 2>&1; then
    missing+=("$p")
  fi
done

if [[ ${#missing[@]} -eq 0 ]]; then
  echo "deps: all ${#packages[@]} packages present"
  exit 0
fi

echo "deps: installing ${missing[*]}"
SUDO=()
if [[ $(id -u) -ne 0 ]]; then
  SUDO=(sudo)
fi
"${SUDO[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${SUDO[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
