#!/usr/bin/env bash
# Builds tests/consumer/main.cpp against an installed lytFilterParser using
# pkg-config, then runs it.
#
# Usage: tests/consumer/pkgconfig.sh <install-prefix> [<out-dir>]
set -euo pipefail
if [[ $# -lt 1 ]]; then
  echo "usage: $0 <install-prefix> [<out-dir>]" >&2
  exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
prefix=$(cd "$1" && pwd)
out=${2:-$(mktemp -d)}
mkdir -p "$out"

libdir=$(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --variable=libdir lytFilterParser)
# shellcheck disable=SC2046
g++ -std=c++17 -o "$out/lfp_consumer_pc" "$here/main.cpp" \
  $(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs lytFilterParser)
LD_LIBRARY_PATH="$libdir${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}" "$out/lfp_consumer_pc"
