#!/usr/bin/env bash
# Runs the unit tests of a build tree under valgrind memcheck.
# Usage: scripts/memcheck.sh <build-dir>
set -euo pipefail
build=$1
# Death tests fork a fresh copy of the binary, and the size tests only take
# longer under valgrind; both run under the sanitizers instead.
# The depth tests take 100,000 levels here instead of 1,000,000.
LFP_TEST_DEPTH=${LFP_TEST_DEPTH:-100000} valgrind --quiet --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite,indirect \
  "$build/lytFilterParser_tests" --gtest_brief=1 --gtest_filter='-*DeathTest*:*Death*:LargeInput.*'
