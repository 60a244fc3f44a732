#!/usr/bin/env bash
# Builds the library and runs the unit tests under AddressSanitizer and
# UndefinedBehaviorSanitizer (the `dev` preset, fresh configure).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --workflow --preset dev --fresh
