#!/usr/bin/env python3
"""The tool's batch path against the library's own work on the same lines:
`lytreq check --file` on 200,000 typical requests (the benchmark corpus's,
in turn), with --no-warnings and with warnings, as a ratio to what the
library's reading, validation for peer 3 and oldest peer take for them in
one process (lytFilterParser_batch_times). The tool's time per line is the
fastest of 5 runs, less the fastest run on an empty file (the start of the
process), over the lines.

Usage: bench/tool_batch.py [--build-dir DIR] [--no-build] [--lines N]

Then the echo's scaling: check of one line with 5,000 and with 20,000
names, each name beyond the first 1,000 a duplicate-name note echoed under
the line; the time per note stays flat (at most 1.5x) when the tool's time
is linear in its input and its findings.

Builds DIR (default build/bench-tool: the bench preset's settings, Release
-O2, with the tools) and prints a Markdown table with the targets: at most
2x with --no-warnings, which skips the diagnostics, and at most 3x with them.
The exit status is 1 when a target is missed.
"""

import argparse
import json
import os
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TARGETS = [("check --no-warnings", ["--no-warnings"], 2.0), ("check", [], 3.0)]


def build(build_dir):
    # Two cores are shared with other builds, as in scripts/bench.sh.
    env = dict(os.environ, CMAKE_BUILD_PARALLEL_LEVEL=os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", "2"))
    subprocess.run(["cmake", "--preset", "bench", "-B", build_dir, "-DLFP_BUILD_TOOLS=ON"], cwd=ROOT, check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", build_dir, "--target", "lytreq", "lytFilterParser_batch_times"], cwd=ROOT,
                   check=True, stdout=subprocess.DEVNULL, env=env)


def fastest_run(command):
    best = float("inf")
    for _ in range(5):
        start = time.perf_counter_ns()
        subprocess.run(command, check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        best = min(best, time.perf_counter_ns() - start)
    return best


def main():
    options = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    options.add_argument("--build-dir", default=os.path.join(ROOT, "build", "bench-tool"))
    options.add_argument("--no-build", action="store_true")
    options.add_argument("--lines", type=int, default=200000)
    args = options.parse_args()
    build_dir = os.path.abspath(args.build_dir)
    if not args.no_build:
        build(build_dir)
    tool = os.path.join(build_dir, "tools", "lytreq")
    with tempfile.TemporaryDirectory() as work:
        lines = os.path.join(work, "requests.txt")
        empty = os.path.join(work, "empty.txt")
        open(empty, "w").close()
        library = json.loads(subprocess.run([os.path.join(build_dir, "bench", "lytFilterParser_batch_times"), lines,
                                             str(args.lines)], check=True, stdout=subprocess.PIPE).stdout)["ns"]
        print("| batch of %d typical lines | ns per line | ratio to the library | target |" % args.lines)
        print("|---|---:|---:|---|")
        print("| library: read, isValid(3), getMinimalValidVersion | %.0f | 1.00x | |" % library)
        missed = 0
        for label, extra, limit in TARGETS:
            start = fastest_run([tool, "check"] + extra + ["--file", empty])
            ns = (fastest_run([tool, "check"] + extra + ["--file", lines]) - start) / args.lines
            ratio = ns / library
            met = ratio <= limit
            missed += 0 if met else 1
            print("| lytreq %s --file | %.0f | %.2fx | <= %gx %s |" % (label, ns, ratio, limit,
                                                                     "met" if met else "**missed**"))
        missed += findings_scaling(tool, work)
    return 1 if missed else 0


def findings_scaling(tool, work):
    """check of one line with N duplicate names (N - 1,000 duplicate-name
    notes, each echoed under the line): the time per note at 20,000 names
    against 5,000, which stays flat when the echo costs its window and not
    the whole line for every note."""
    per_note = {}
    print("\n| one line, N names of 1,000 distinct | bytes | ms | us per note |")
    print("|---|---:|---:|---:|")
    for names in (5000, 20000):
        path = os.path.join(work, "names_%d.txt" % names)
        line = "-k src " + " ".join("n%d" % (i % 1000) for i in range(names)) + " -v wb\n"
        with open(path, "w") as f:
            f.write(line)
        ns = fastest_run([tool, "check", "--file", path])
        per_note[names] = ns / (names - 1000)
        print("| %d | %d | %.1f | %.2f |" % (names, len(line), ns / 1e6, per_note[names] / 1e3))
    ratio = per_note[20000] / per_note[5000]
    met = ratio <= 1.5
    print("\nPer note at 20,000 names against 5,000: %.2fx (target: at most 1.5x, linear) %s"
          % (ratio, "met" if met else "**missed**"))
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main())
