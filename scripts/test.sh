#!/usr/bin/env bash
# Builds the library and runs the unit tests under AddressSanitizer and
# UndefinedBehaviorSanitizer (the `dev` preset, fresh configure), after
# checking the C++ layout (scripts/format.sh); then builds
# the WebAssembly package and the editor page (scripts/web.sh) and runs their
# tests against the dev build's lytreq.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
scripts/format.sh --check
cmake --workflow --preset dev --fresh

web_start=$(date +%s)
scripts/web.sh
(cd web && LFP_LYTREQ="$PWD/../build/dev/tools/lytreq" node --test --test-reporter=dot test/*.test.js)
echo "test: the web part took $(( $(date +%s) - web_start )) s"
