#!/usr/bin/env bash
# Builds the release configuration and runs the lytreq tool's demo.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --workflow --preset release
tool=build/release/tools/lytreq
if [[ ! -x "$tool" ]]; then
  echo "demo: $tool was not built (is the lytreq tool defined in tools/CMakeLists.txt?)" >&2
  exit 1
fi
exec "$tool" demo
