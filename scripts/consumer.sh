#!/usr/bin/env bash
# Installs a build tree into a temporary prefix and checks that a separate
# project can use the installed library through find_package() and through
# pkg-config, and that the Python package (when built) imports from there.
#
# Usage: scripts/consumer.sh <build-dir>
set -euo pipefail
if [[ $# -ne 1 ]]; then
  echo "usage: $0 <build-dir>" >&2
  exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"

echo "consumer: installing $build into $prefix"
cmake --install "$build" --prefix "$prefix"

echo "consumer: find_package build"
cmake -S "$root/tests/consumer" -B "$work/cmake-build" -G Ninja \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$work/cmake-build"
"$work/cmake-build/lfp_consumer"

echo "consumer: pkg-config build"
bash "$root/tests/consumer/pkgconfig.sh" "$prefix" "$work/pkgconfig-build"

python=$(sed -n 's/^LFP_PYTHON_INTERPRETER:INTERNAL=//p' "$build/CMakeCache.txt")
if [[ -n $python ]]; then
  echo "consumer: Python package in a fresh interpreter"
  (cd "$work" && "$python" -I "$root/python/tests/installed.py" "$prefix" "$prefix/bin/lytreq")
fi

echo "consumer: OK"
