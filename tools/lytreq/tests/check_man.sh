#!/usr/bin/env bash
# The man pages: lytreq-syntax(7) is in step with the Markdown it is made
# from, and groff formats every page without a warning.
#
# Usage: check_man.sh MARKDOWN SYNTAX-PAGE PAGE...
set -uo pipefail
here=$(dirname "$0")
markdown=$1
shift
failed=0
python3 "$here/../md2man.py" --check "$markdown" "$1" || failed=1
for page in "$@"; do
  warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1)
  if [[ -n $warnings ]]; then
    echo "FAIL $page:"
    echo "$warnings"
    failed=1
  fi
done
echo "$(( $# + 1 - failed )) passed, $failed failed"
exit $failed
