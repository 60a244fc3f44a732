#!/usr/bin/env bash
# Installs what the library and lytreq need, builds the two alone (release
# settings, no tests) in build/demo, and runs the tool's demo.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh --tool
build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLFP_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target lytreq
tool=$build/tools/lytreq
if [[ ! -x "$tool" ]]; then
  echo "demo: $tool was not built (is the lytreq tool defined in tools/CMakeLists.txt?)" >&2
  exit 1
fi
"$tool" demo
echo
echo "demo: the tool is $tool; README.md (Quick start) says how to install it on your PATH."
