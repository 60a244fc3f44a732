#!/usr/bin/env bash
# Drives the bash completion of lytreq (`lytreq completion bash`) in bash
# with the bash-completion package, as a shell completes a command line
# whose cursor is at its end, and compares the words offered.
#
# Usage: test_completion.sh PATH-TO-LYTREQ
set -uo pipefail
tool=$1
library=/usr/share/bash-completion/bash_completion
if [[ ! -r $library ]]; then
  echo "test_completion: $library is missing (scripts/deps.sh installs bash-completion)" >&2
  exit 1
fi
# shellcheck source=/dev/null
source "$library"
# shellcheck source=/dev/null
source <("$tool" completion bash) || exit 1

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" && touch names.map requests.txt || exit 1

passed=0 failed=0
# expect LINE WORDS: completing LINE offers exactly WORDS (sorted, blank-separated).
expect() {
  local line=$1 want=$2
  # Readline cuts the line at blanks and at the word breaks "=" and ":".
  local spaced=${line//=/ = }
  spaced=${spaced//:/ : }
  read -ra COMP_WORDS <<<"$spaced"
  [[ $line == *" " ]] && COMP_WORDS+=("")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMP_LINE=$line COMP_POINT=${#line}
  COMPREPLY=()
  _lytreq
  local got
  got=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd' ')
  if [[ $got == "$want" ]]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf 'FAIL %q\n  expected: %s\n  actual:   %s\n' "$line" "$want" "$got"
  fi
}

expect "lytreq pa" "parse"
expect "lytreq --json c" "check columns completion convert"
expect "lytreq parse --j" "--json"
expect "lytreq names --p" ""
expect "lytreq check --no" "--no-warnings"
expect "lytreq ex" "explain"
expect "lytreq explain --s" "--strict"
expect "lytreq resolve --map " "names.map requests.txt"
expect "lytreq parse --peer 2 -k s" "src svc"
expect "lytreq check -k src -v s" "session"
expect "lytreq parse -k src -v wb acc=ra" "rate"
expect "lytreq parse -k src -v wb sort=" "bottom top"
expect "lytreq parse -k src sort=" ""
expect "lytreq parse -k src -v wb -s " "bottom none top"
expect "lytreq parse -k src -v wb -s top u" "updates="
expect "lytreq parse -f src " "-f -k -s -v NOT not"
expect "lytreq parse -f or " "-f -k -s -v ["
expect "lytreq parse vl link7 -t a" "application"
expect "lytreq parse v" "vl"
expect "lytreq convert -g topd" "topdst"
expect "lytreq convert -y " "C b c p"
expect "lytreq completion " "bash zsh"

echo "$passed passed, $failed failed"
[[ $failed -eq 0 ]]
