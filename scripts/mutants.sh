#!/usr/bin/env bash
# Mutation check of the test suite: plants one realistic fault at a time
# (scripts/mutants.txt) into a copy of the checkout, rebuilds, and runs the
# unit and tool tests. A fault that no test notices is reported as MISSED.
#
# Not run by CI: it rebuilds and reruns the whole suite once per fault, which
# takes long (tens of minutes on two cores). Run it after changing tests, and
# add a fault to the list when a bug slipped through.
#
# Usage: scripts/mutants.sh [--only ID] [-j N] [--list FILE] [--keep]
#   --only ID   run that mutant only (may be given more than once)
#   -j N        build and test jobs (default 2)
#   --list FILE the mutants (default scripts/mutants.txt)
#   --keep      keep the temporary build directory
#
# A mutant is caught when a test fails, MISSED when all pass, stale when its
# fragment is not found exactly once (the source changed: update the list),
# invalid when the mutated source does not build. Exit status 0 when no
# mutant is missed or stale, 1 otherwise, 2 when the unmutated tree fails.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
list=$root/scripts/mutants.txt
jobs=2
keep=0
only=()
while [[ $# -gt 0 ]]; do
  case $1 in
    --only) only+=("$2"); shift 2 ;;
    -j) jobs=$2; shift 2 ;;
    -j*) jobs=${1#-j}; shift ;;
    --list) list=$(cd "$(dirname "$2")" && pwd)/$(basename "$2"); shift 2 ;;
    --keep) keep=1; shift ;;
    -h|--help) sed -n '2,/^set -euo/p' "$0" | sed '$d; s/^# \{0,1\}//'; exit 0 ;;
    *) echo "mutants: unknown argument: $1" >&2; exit 2 ;;
  esac
done

work=$(mktemp -d "${TMPDIR:-/tmp}/lfp-mutants.XXXXXX")
if [[ $keep -eq 0 ]]; then
  trap 'rm -rf "$work"' EXIT
else
  echo "mutants: working in $work"
fi
src=$work/src
build=$work/build
mkdir -p "$src"

# The list format, read by the helper below:
#   == ID: description
#   path/of/the/file
#   - exact fragment (one line, the text after "- ")
#   + its replacement (the text after "+ ", may be empty)
# Lines starting with "#" and blank lines between entries are ignored.
helper() {
  python3 - "$@" <<'PY'
import sys

def parse(path):
    result = []
    lines = open(path, encoding="utf-8").read().split("\n")
    i = 0
    while i < len(lines):
        line = lines[i]
        i += 1
        if not line.strip() or line.startswith("#"):
            continue
        if not line.startswith("== ") or ":" not in line:
            sys.exit("%s:%d: expected '== ID: description'" % (path, i))
        ident, desc = (s.strip() for s in line[3:].split(":", 1))
        if i + 2 >= len(lines) or not lines[i + 1].startswith("- ") or not (lines[i + 2] == "+" or lines[i + 2].startswith("+ ")):
            sys.exit("%s:%d: expected a file, '- fragment' and '+ replacement'" % (path, i))
        result.append((ident, desc, lines[i].strip(), lines[i + 1][2:], lines[i + 2][2:]))
        i += 3
    ids = [r[0] for r in result]
    if len(ids) != len(set(ids)):
        sys.exit("%s: duplicate mutant ids" % path)
    return result

command, path = sys.argv[1], sys.argv[2]
mutants = parse(path)
if command == "list":
    for ident, desc, file, _, _ in mutants:
        print("%s\t%s\t%s" % (ident, file, desc))
elif command == "apply":
    ident, srcdir = sys.argv[3], sys.argv[4]
    ident, desc, file, find, repl = next(m for m in mutants if m[0] == ident)
    target = srcdir + "/" + file
    try:
        text = open(target, encoding="utf-8").read()
    except OSError:
        sys.exit(3)
    if text.count(find) != 1:
        sys.exit(3)
    open(target, "w", encoding="utf-8").write(text.replace(find, repl))
PY
}

# The checkout as it stands, tracked and untracked files, without ignored ones.
(cd "$root" && git ls-files -co --exclude-standard -z) | while IFS= read -r -d '' file; do
  [[ -f $root/$file ]] || continue
  mkdir -p "$src/$(dirname "$file")"
  cp -p "$root/$file" "$src/$file"
done

helper list "$list" >/dev/null || exit 2  # a malformed list stops here
mapfile -t mutants < <(helper list "$list")
if [[ ${#only[@]} -gt 0 ]]; then
  selected=()
  for want in "${only[@]}"; do
    hit=0
    for m in "${mutants[@]}"; do
      if [[ ${m%%$'\t'*} == "$want" ]]; then selected+=("$m"); hit=1; fi
    done
    [[ $hit -eq 1 ]] || { echo "mutants: no mutant $want in $list" >&2; exit 2; }
  done
  mutants=("${selected[@]}")
fi

# One fast build: no sanitizers, no optimisation, no debug information.
echo "mutants: configuring and building the unmutated tree in $build"
nice cmake -S "$src" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
  -DCMAKE_C_FLAGS_DEBUG=-O0 -DLFP_BUILD_TESTS=ON -DLFP_BUILD_TOOLS=ON -DLFP_WARNINGS_AS_ERRORS=OFF \
  >"$work/configure.log" 2>&1 || { cat "$work/configure.log"; exit 2; }

build_tree() { nice ninja -C "$build" -j "$jobs" >"$work/build.log" 2>&1; }
# The unit and tool tests; stops at the first failure. Writes the names of
# failed tests to $work/failed.
run_tests() {
  local status=0
  # 100,000 levels already overflow the depth tests' small stack one frame
  # per level; the full 1,000,000 would only make every fault slower.
  LFP_TEST_DEPTH=100000 nice timeout 900 ctest --test-dir "$build" -j "$jobs" --timeout 180 --stop-on-failure --no-tests=error \
    >"$work/test.log" 2>&1 || status=$?
  sed -n 's/^[[:space:]]*[0-9]* - \(.*\) (.*/\1/p' "$work/test.log" | paste -sd ' ' >"$work/failed" || true
  return $status
}

build_tree || { cat "$work/build.log"; echo "mutants: the unmutated tree does not build" >&2; exit 2; }
run_tests || { cat "$work/test.log"; echo "mutants: the unmutated tree fails its tests" >&2; exit 2; }

caught=0 missed=0 stale=0 invalid=0
for m in "${mutants[@]}"; do
  IFS=$'\t' read -r id file desc <<<"$m"
  if [[ ! -f $src/$file ]]; then
    echo "stale    $id  $desc (no file $file)"
    stale=$((stale + 1))
    continue
  fi
  cp "$src/$file" "$work/original"
  if ! helper apply "$list" "$id" "$src"; then
    echo "stale    $id  $desc (fragment not found exactly once in $file)"
    stale=$((stale + 1))
    continue
  fi
  if ! build_tree; then
    echo "invalid  $id  $desc (does not build)"
    invalid=$((invalid + 1))
  elif run_tests; then
    echo "MISSED   $id  $desc"
    missed=$((missed + 1))
  else
    echo "caught   $id  $desc  [$(cat "$work/failed")]"
    caught=$((caught + 1))
  fi
  # Restore with a fresh modification time, so that the next build compiles
  # the file again.
  cat "$work/original" >"$src/$file"
done

echo "mutants: $caught caught, $missed missed, $stale stale, $invalid invalid"
[[ $missed -eq 0 && $stale -eq 0 ]]
