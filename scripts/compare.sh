#!/usr/bin/env bash
# Differential comparison of two builds of the library: proves that a change
# left every output and every message byte for byte as it was.
#
# Usage: scripts/compare.sh [--count N] [--seed S] [--keep DIR] BASE [NEW]
#
#   BASE, NEW   git revisions of this checkout. Without NEW the working tree
#               of this checkout is compared, uncommitted and untracked (not
#               ignored) files included; the checkout itself is only read.
#   --count N   number of generated inputs (default 120000)
#   --seed S    seed of the input generator (default 20240607)
#   --keep DIR  build and work in DIR and keep it afterwards (sources, build
#               trees, inputs.txt, base/out.txt, new/out.txt); otherwise a
#               temporary directory under ${TMPDIR:-/tmp} is used and removed
#
# For each side the library alone is built (Release, no tests, no tools) and
# installed into a private prefix; scripts/compare/driver.cpp is compiled
# against each install, from NEW's copy when NEW has one and otherwise from
# the copy beside this script, so both sides run the same driver source.
# scripts/compare/generate.py writes the inputs once; both drivers read the
# same file and their outputs are compared line by line.
#
# The library's outputs (texts, messages, verdicts) must not differ at all.
# The diagnostics (lines labelled "diag.": code, severity and place of each
# finding) are compared apart: their differences are listed by code with
# counts (base only, new only), for the note of a change that adds findings
# or corrects places, and do not fail the comparison.
#
# Exit status: 0 no difference in the library's outputs, 1 differences (the
# first 20 differing inputs are shown with both outputs), 2 usage, build or
# tool failure.
# Builds use at most 2 jobs and run under nice. LFP_COMPARE_TIMEOUT (seconds,
# default 3600) bounds one driver run.
set -euo pipefail

usage() {
  sed -n '4,14p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//' >&2
  exit 2
}

note() { echo "compare: $*" >&2; }
die() {
  echo "compare: error: $*" >&2
  exit 2
}

count=120000
seed=20240607
keep=""
while [[ $# -gt 0 ]]; do
  case "$1" in
    --count) [[ $# -ge 2 ]] || usage; count=$2; shift 2 ;;
    --count=*) count=${1#*=}; shift ;;
    --seed) [[ $# -ge 2 ]] || usage; seed=$2; shift 2 ;;
    --seed=*) seed=${1#*=}; shift ;;
    --keep) [[ $# -ge 2 ]] || usage; keep=$2; shift 2 ;;
    --keep=*) keep=${1#*=}; shift ;;
    -h|--help) usage ;;
    --) shift; break ;;
    -*) echo "compare: unknown option $1" >&2; usage ;;
    *) break ;;
  esac
done
[[ $# -ge 1 && $# -le 2 ]] || usage
[[ $count =~ ^[0-9]+$ && $count -gt 0 ]] || die "--count needs a positive number"
[[ $seed =~ ^[0-9]+$ ]] || die "--seed needs a number"
timeout_s=${LFP_COMPARE_TIMEOUT:-3600}

script_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
repo=$(git -C "$script_dir" rev-parse --show-toplevel) || die "$script_dir is not in a git checkout"

resolve() {
  git -C "$repo" rev-parse --verify --quiet "$1^{commit}" || die "not a revision of $repo: $1"
}
base_rev=$1
base_commit=$(resolve "$base_rev")
if [[ $# -eq 2 ]]; then
  new_rev=$2
  new_commit=$(resolve "$new_rev")
  new_label="$new_rev (${new_commit:0:12})"
else
  new_rev=""
  new_commit=""
  new_label="working tree of $repo"
fi

if [[ -n $keep ]]; then
  work=$(realpath -m -- "$keep")
  case "$work/" in
    "$(realpath -m -- "$repo")"/*) die "--keep DIR must lie outside the checkout ($repo)" ;;
  esac
  mkdir -p "$work"
else
  work=$(mktemp -d "${TMPDIR:-/tmp}/lfp-compare.XXXXXX")
fi

cleanup() {
  local status=$?
  local pids
  pids=$(jobs -p)
  [[ -n $pids ]] && kill $pids 2>/dev/null
  if [[ -z $keep ]]; then
    rm -rf "$work"
  else
    note "kept $work"
  fi
  exit $status
}
trap cleanup EXIT
trap 'exit 130' INT TERM

started=$SECONDS
stage_started=$SECONDS
stage() {
  note "$1 ($((SECONDS - stage_started)) s)"
  stage_started=$SECONDS
}

note "base: $base_rev (${base_commit:0:12})"
note "new:  $new_label"
note "work: $work"

# ---------------------------------------------------------------------------
# Sources: both sides exported without touching the checkout
# ---------------------------------------------------------------------------
export_revision() {
  local commit=$1 dest=$2
  rm -rf "$dest"
  mkdir -p "$dest"
  git -C "$repo" archive --format=tar "$commit" | tar -x -C "$dest"
}

export_working_tree() {
  local dest=$1
  rm -rf "$dest"
  mkdir -p "$dest"
  # Tracked and untracked-but-not-ignored files; files deleted in the
  # working tree are left out.
  (
    cd "$repo"
    git ls-files -z -c -o --exclude-standard |
      while IFS= read -r -d '' f; do
        if [[ -e $f || -L $f ]]; then printf '%s\0' "$f"; fi
      done |
      tar --null --no-recursion -T - -cf -
  ) | tar -x -C "$dest"
}

export_revision "$base_commit" "$work/base/src"
if [[ -n $new_commit ]]; then
  export_revision "$new_commit" "$work/new/src"
else
  export_working_tree "$work/new/src"
fi

# The driver and the generator: NEW's copy, the same for both sides.
tools="$work/tools"
rm -rf "$tools"
if [[ -f "$work/new/src/scripts/compare/driver.cpp" && -f "$work/new/src/scripts/compare/generate.py" &&
      -f "$work/new/src/scripts/compare/CMakeLists.txt" ]]; then
  cp -R "$work/new/src/scripts/compare" "$tools"
else
  note "NEW has no scripts/compare: using the driver beside this script ($script_dir/compare)"
  cp -R "$script_dir/compare" "$tools"
fi
stage "sources exported"

# ---------------------------------------------------------------------------
# Builds
# ---------------------------------------------------------------------------
generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi

build_side() {
  local side=$1
  local dir="$work/$side"
  local log="$dir/build.log"
  rm -rf "$dir/build" "$dir/prefix" "$dir/driver"
  : >"$log"
  if ! {
    nice -n 10 cmake -S "$dir/src" -B "$dir/build" "${generator[@]}" \
      -DCMAKE_BUILD_TYPE=Release -DLFP_BUILD_TESTS=OFF -DLFP_BUILD_TOOLS=OFF \
      -DLFP_BUILD_BENCH=OFF -DLFP_BUILD_FUZZ=OFF &&
      nice -n 10 cmake --build "$dir/build" -j 2 &&
      cmake --install "$dir/build" --prefix "$dir/prefix" &&
      nice -n 10 cmake -S "$tools" -B "$dir/driver" "${generator[@]}" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$dir/prefix" &&
      nice -n 10 cmake --build "$dir/driver" -j 2
  } >>"$log" 2>&1; then
    tail -n 40 "$log" >&2
    die "building the $side side failed (log: $log)"
  fi
}

build_side base
stage "base built"
build_side new
stage "new built"

# ---------------------------------------------------------------------------
# Inputs and runs
# ---------------------------------------------------------------------------
inputs="$work/inputs.txt"
python3 "$tools/generate.py" --count "$count" --seed "$seed" --output "$inputs" ||
  die "generate.py failed"
stage "$count inputs generated (seed $seed)"

# Runs one side's driver over all inputs. A driver that dies is restarted
# after the input it died on, which is recorded as an output of its own, so
# a crash shows up as a difference instead of ending the comparison.
run_side() {
  local side=$1
  local dir="$work/$side"
  local out="$dir/out.txt" log="$dir/driver.log"
  local from=1 restarts=0 rc last crashed
  : >"$out"
  : >"$log"
  while :; do
    rc=0
    # (the group keeps the shell's own note of a killed driver in the log)
    { nice -n 10 timeout "$timeout_s" "$dir/driver/lfp-compare-driver" "$inputs" --from "$from" >>"$out"; } \
      2>>"$log" || rc=$?
    [[ $rc -eq 0 ]] && return 0
    if [[ $rc -eq 124 ]]; then
      echo "driver timed out after ${timeout_s} s" >>"$log"
      return 1
    fi
    last=$(tail -n 1 "$out" | cut -f 1)
    [[ $last =~ ^[0-9]+$ ]] || last=$((from - 1))
    crashed=$((last + 1))
    printf '%d\tcrash\t<crashed> exit status %d\n' "$crashed" "$rc" >>"$out"
    echo "driver died on input $crashed with exit status $rc" >>"$log"
    restarts=$((restarts + 1))
    if [[ $restarts -gt 50 || $crashed -gt $count ]]; then
      [[ $crashed -gt $count ]] && return 0
      echo "driver died more than 50 times: giving up" >>"$log"
      return 1
    fi
    from=$((crashed + 1))
  done
}

run_side base &
base_pid=$!
run_side new &
new_pid=$!
failed=()
wait "$base_pid" || failed+=(base)
wait "$new_pid" || failed+=(new)
for side in "${failed[@]}"; do
  tail -n 5 "$work/$side/driver.log" >&2
done
[[ ${#failed[@]} -eq 0 ]] || die "the driver failed on: ${failed[*]}"
for side in base new; do
  grep -h '^driver died' "$work/$side/driver.log" | sed "s/^/compare: $side: /" >&2 || true
  stats=$(grep -h '^driver: ' "$work/$side/driver.log" | tail -n 1 || true)
  [[ -n $stats ]] && note "$side ${stats}"
done
stage "drivers run"

# ---------------------------------------------------------------------------
# Comparison
# ---------------------------------------------------------------------------
# The diagnostics apart from the library's outputs.
for side in base new; do
  grep -a -v -P '^[0-9]+\tdiag\.' "$work/$side/out.txt" >"$work/$side/library.txt" || true
  grep -a -P '^[0-9]+\tdiag\.' "$work/$side/out.txt" >"$work/$side/diagnostics.txt" || true
done
python3 - "$work/base/diagnostics.txt" "$work/new/diagnostics.txt" <<'PY' || die "comparing the diagnostics failed"
import collections
import re
import sys

FINDING = re.compile(r" ([a-z][a-z-]+) (warning|note) ([0-9]+)\+([0-9]+)")


def entries(path):
    """input number and label -> the findings of that line as a multiset of (kind, code, place)."""
    found = {}
    with open(path, "rb") as f:
        for raw in f:
            number, label, value = raw.decode("utf-8", "backslashreplace").rstrip("\n").split("\t", 2)
            items = collections.Counter(("finding", m.group(1), m.group(3) + "+" + m.group(4)) for m in FINDING.finditer(value))
            if label in ("diag.refusal",) or label.startswith("diag.validate") or label.startswith("diag.convert"):
                # the request and the refusal of a conversion, without its findings
                items[("line", label.split("(")[0], re.sub(r" \[[0-9]+\]( [a-z-]+ (warning|note) [0-9]+\+[0-9]+)*$", "", value))] += 1
            found[(number, label)] = items
    return found


base, new = entries(sys.argv[1]), entries(sys.argv[2])
lost, gained = collections.Counter(), collections.Counter()
changed_lines = 0
for key in set(base) | set(new):
    b, n = base.get(key, collections.Counter()), new.get(key, collections.Counter())
    if b == n:
        continue
    changed_lines += 1
    label = key[1].split("(")[0]
    for kind, code, _ in (b - n).elements():
        lost[(label, code)] += 1
    for kind, code, _ in (n - b).elements():
        gained[(label, code)] += 1
print("compare: diagnostics: %d of %d lines differ" % (changed_lines, len(set(base) | set(new))))
for (label, code) in sorted(set(lost) | set(gained)):
    print("compare:   %-16s %-24s base only %6d  new only %6d" % (label, code, lost[(label, code)], gained[(label, code)]))
PY

if cmp -s "$work/base/library.txt" "$work/new/library.txt"; then
  outputs=$(wc -l <"$work/new/library.txt")
  stage "outputs compared"
  note "total $((SECONDS - started)) s"
  echo "compare: $count inputs, $outputs outputs, 0 differences"
  exit 0
fi

status=0
python3 - "$inputs" "$work/base/library.txt" "$work/new/library.txt" "$count" <<'PY' || status=$?
import difflib
import sys

inputs_path, base_path, new_path, count = sys.argv[1], sys.argv[2], sys.argv[3], int(sys.argv[4])
SHOWN = 20
WIDTH = 600


def groups(path):
    """(input number, [lines]) in file order."""
    number, lines = None, []
    with open(path, "rb") as f:
        for line in f:
            line = line.rstrip(b"\n")
            head = line.split(b"\t", 1)[0]
            n = int(head) if head.isdigit() else -1
            if n != number and lines:
                yield number, lines
                lines = []
            number = n
            lines.append(line)
    if lines:
        yield number, lines


def show(line, other=None):
    """The line, cut to WIDTH bytes around its first difference from `other`."""
    text = line.decode("utf-8", "backslashreplace")
    if len(text) <= WIDTH:
        return text
    at = 0
    if other is not None:
        o = other.decode("utf-8", "backslashreplace")
        while at < min(len(text), len(o)) and text[at] == o[at]:
            at += 1
    start = max(0, at - WIDTH // 3)
    cut = text[start:start + WIDTH]
    return ("[%d chars] ..." % start if start else "") + cut + ("... [%d chars more]" % (len(text) - start - WIDTH)
                                                               if start + WIDTH < len(text) else "")


with open(inputs_path, "rb") as f:
    inputs = f.read().split(b"\n")

outputs = 0
differing_inputs = 0
differing_lines = 0
report = []
base_iter, new_iter = groups(base_path), groups(new_path)
b, n = next(base_iter, None), next(new_iter, None)
while b is not None or n is not None:
    if b is not None and n is not None and b[0] == n[0]:
        number, base_lines, new_lines = b[0], b[1], n[1]
        b, n = next(base_iter, None), next(new_iter, None)
    elif n is None or (b is not None and b[0] < n[0]):
        number, base_lines, new_lines = b[0], b[1], []
        b = next(base_iter, None)
    else:
        number, base_lines, new_lines = n[0], [], n[1]
        n = next(new_iter, None)
    outputs += len(new_lines)
    if base_lines == new_lines:
        continue
    differing_inputs += 1
    matcher = difflib.SequenceMatcher(None, base_lines, new_lines, autojunk=False)
    hunks = []
    for op, i1, i2, j1, j2 in matcher.get_opcodes():
        if op == "equal":
            continue
        differing_lines += max(i2 - i1, j2 - j1)
        if len(report) < SHOWN:
            for k in range(max(i2 - i1, j2 - j1)):
                old = base_lines[i1 + k] if i1 + k < i2 else None
                new = new_lines[j1 + k] if j1 + k < j2 else None
                if old is not None:
                    hunks.append("  - base: " + show(old, new))
                if new is not None:
                    hunks.append("  + new:  " + show(new, old))
    if len(report) < SHOWN:
        text = inputs[number - 1] if 1 <= number <= len(inputs) else b"<no such input>"
        report.append("input %d: %s\n%s" % (number, show(text), "\n".join(hunks)))

if report:
    print("first %d differing inputs (input: KIND<TAB>TEXT as in inputs.txt; lines: N<TAB>LABEL<TAB>VALUE):"
          % len(report))
    print("\n\n".join(report))
    print()
print("compare: %d inputs, %d outputs, %d differences in %d inputs"
      % (count, outputs, differing_lines, differing_inputs))
sys.exit(1 if differing_inputs else 0)
PY
stage "outputs compared"
note "total $((SECONDS - started)) s"
[[ $status -le 1 ]] || die "comparing the outputs failed"
exit "$status"
