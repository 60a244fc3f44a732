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

# The README's lines, as printed: the program finds the library by its rpath,
# without LD_LIBRARY_PATH.
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
cd "$out"
cp "$here/main.cpp" app.cpp
# shellcheck disable=SC2046
g++ -std=c++17 app.cpp $(pkg-config --cflags --libs lytFilterParser) \
  -Wl,-rpath,"$(pkg-config --variable=libdir lytFilterParser)"
env -u LD_LIBRARY_PATH ./a.out
