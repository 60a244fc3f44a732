#!/usr/bin/env bash
# Builds the benchmarks (the `bench` preset: Release -O2) and runs them
# through bench/report.py, which prints every figure as a ratio to the floor
# measured in the same run and marks each target as met or missed.
#
# Usage:
#   scripts/bench.sh                          full run (5 repetitions, medians)
#   scripts/bench.sh --smoke                  CI smoke: each benchmark briefly, once; time not judged
#   scripts/bench.sh --results bench/RESULTS.md   also write the Markdown report
# Any other arguments go to bench/report.py (see bench/report.py --help).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh cmake ninja-build g++ libbenchmark-dev >&2

# Two cores are shared with other builds: keep the build to two jobs unless told otherwise.
export CMAKE_BUILD_PARALLEL_LEVEL="${CMAKE_BUILD_PARALLEL_LEVEL:-2}"
cmake --workflow --preset bench >&2

exec python3 bench/report.py --command-label "scripts/bench.sh $*" "$@"
