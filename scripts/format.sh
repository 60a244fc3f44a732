#!/usr/bin/env bash
# Keeps the C++ sources in the layout .clang-format describes.
#
# Usage: scripts/format.sh           reformat every tracked C++ file in place
#        scripts/format.sh --check   change nothing; list the files that differ
#                                    and exit 1 if there are any
# Debian's clang-format (scripts/deps.sh installs it) is the reference: other
# versions may lay out a few constructs differently.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [[ ${1:-} == --check ]]; then
  bad=()
  for f in "${files[@]}"; do
    clang-format "$f" | cmp -s - "$f" || bad+=("$f")
  done
  if ((${#bad[@]})); then
    printf 'format: not in the layout of .clang-format: %s\n' "${bad[@]}" >&2
    echo "format: scripts/format.sh reformats them" >&2
    exit 1
  fi
  echo "format: ${#files[@]} files in layout"
else
  clang-format -i "${files[@]}"
fi
