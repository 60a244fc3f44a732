#!/usr/bin/env bash
# Builds the libFuzzer targets, replays the committed corpus of each, then
# fuzzes each for a bounded time (default 60 s, first argument to change).
# New inputs go to a scratch directory; crashers land in build/fuzz/artifacts.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}

scripts/deps.sh
cmake --workflow --preset fuzz --fresh

mkdir -p build/fuzz/artifacts
for target in request convert tokenizer; do
  binary=build/fuzz/fuzz/${target}_fuzzer
  echo "=== fuzz: $target: replaying fuzz/corpus/$target"
  "$binary" -runs=0 "fuzz/corpus/$target"
  scratch=$(mktemp -d)
  echo "=== fuzz: $target: ${seconds}s"
  "$binary" -max_total_time="$seconds" -dict=fuzz/request.dict -timeout=10 -rss_limit_mb=4096 \
    -max_len=4096 -print_final_stats=1 -artifact_prefix="build/fuzz/artifacts/${target}-" \
    "$scratch" "fuzz/corpus/$target"
  rm -rf "$scratch"
done
echo "=== fuzz: all targets ran without a finding"
