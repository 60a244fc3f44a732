#!/usr/bin/env bash
# The self-test program's built-in sample uses option words the current
# syntax refuses; it must say so and fail instead of crashing.
set -u
program=$1
out=$(mktemp) err=$(mktemp)
trap 'rm -f "$out" "$err"' EXIT
"$program" >"$out" 2>"$err"
status=$?
fail=0
if [ "$status" -ne 1 ]; then echo "exit status $status, expected 1"; fail=1; fi
if [ "$(cat "$out")" != "Hello World!" ]; then echo "stdout:"; cat "$out"; fail=1; fi
expected_err="lytFilterParser-selftest: no request read: Invalid option: -filter"
if [ "$(cat "$err")" != "$expected_err" ]; then echo "stderr:"; cat "$err"; fail=1; fi
exit $fail
