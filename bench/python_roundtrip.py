#!/usr/bin/env python3
"""parse + dump from Python on the benchmark corpus, as a ratio to the same
round trip in C++ (getLYTKovaRequest, dump, delete), both timed the same
way: the fastest of 9 batches of at least 20 ms, per round trip. The two
sides take turns case by case for three rounds, and each keeps its fastest,
so that load from elsewhere on the machine touches both alike. Then
request.model() of each request against its parse, both from Python, timed
the same way.

Usage: bench/python_roundtrip.py [--build-dir DIR] [--no-build]

Builds DIR (default build/bench-python: the bench preset's settings, Release
-O2, with the Python binding) and prints a Markdown table with the median
and worst ratio of the typical requests. Runs itself with the interpreter
the binding was built for.
"""

import argparse
import json
import os
import statistics
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def build(build_dir):
    # Two cores are shared with other builds, as in scripts/bench.sh.
    env = dict(os.environ, CMAKE_BUILD_PARALLEL_LEVEL=os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", "2"))
    subprocess.run(["cmake", "--preset", "bench", "-B", build_dir, "-DLFP_BUILD_PYTHON=ON"], cwd=ROOT, check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", build_dir, "--target", "_lytfilterparser", "lytFilterParser_roundtrip_times"],
                   cwd=ROOT, check=True, stdout=subprocess.DEVNULL, env=env)


def cpp_cases(build_dir, *args):
    program = os.path.join(build_dir, "bench", "lytFilterParser_roundtrip_times")
    out = subprocess.run([program] + list(args), check=True, stdout=subprocess.PIPE, text=True).stdout
    return [json.loads(line) for line in out.splitlines()]


def interpreter(build_dir):
    with open(os.path.join(build_dir, "CMakeCache.txt")) as cache:
        for line in cache:
            if line.startswith("LFP_PYTHON_INTERPRETER:INTERNAL="):
                return line.split("=", 1)[1].strip()
    sys.exit("%s has no Python binding (LFP_BUILD_PYTHON)" % build_dir)


def time_ns(parse, text):
    return fastest_ns(lambda: parse(text).dump())


def fastest_ns(call):
    """The fastest of 9 batches of at least 20 ms of call(), per call."""
    def batch(count):
        start = time.perf_counter_ns()
        for _ in range(count):
            call()
        return time.perf_counter_ns() - start

    count = 1
    while batch(count) < 20e6:
        count *= 2
    return min(batch(count) / count for _ in range(9))


def main():
    options = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    options.add_argument("--build-dir", default=os.path.join(ROOT, "build", "bench-python"))
    options.add_argument("--no-build", action="store_true")
    args = options.parse_args()
    build_dir = os.path.abspath(args.build_dir)
    if not args.no_build:
        build(build_dir)
    python = interpreter(build_dir)
    if os.path.realpath(sys.executable) != os.path.realpath(python):
        os.execv(python, [python, os.path.abspath(__file__), "--build-dir", build_dir, "--no-build"])

    sys.path.insert(0, os.path.join(build_dir, "python"))
    import lytfilterparser

    cases = cpp_cases(build_dir, "--list")
    cpp = {case["name"]: float("inf") for case in cases}
    python = dict(cpp)
    for _ in range(3):
        for case in cases:
            cpp[case["name"]] = min(cpp[case["name"]], cpp_cases(build_dir, case["name"])[0]["ns"])
            python[case["name"]] = min(python[case["name"]], time_ns(lytfilterparser.parse, case["text"]))
    print("| case | C++ round trip (ns) | Python parse + dump (ns) | ratio |")
    print("|---|---:|---:|---:|")
    typical = []
    for case in cases:
        name = case["name"]
        ratio = python[name] / cpp[name]
        if case["kind"] == "typical":
            typical.append(ratio)
        print("| %s | %.0f | %.0f | %.2fx |" % (name, cpp[name], python[name], ratio))
    print("\nTypical requests: median %.2fx, worst %.2fx (target: a median of at most 2.5x)"
          % (statistics.median(typical), max(typical)))

    parse = lytfilterparser.parse
    parsed = {case["name"]: float("inf") for case in cases}
    modelled = dict(parsed)
    for _ in range(3):
        for case in cases:
            request = parse(case["text"])
            parsed[case["name"]] = min(parsed[case["name"]], fastest_ns(lambda: parse(case["text"])))
            modelled[case["name"]] = min(modelled[case["name"]], fastest_ns(request.model))
    print("\n| case | Python parse (ns) | Python model() (ns) | ratio |")
    print("|---|---:|---:|---:|")
    typical = []
    for case in cases:
        name = case["name"]
        ratio = modelled[name] / parsed[name]
        if case["kind"] == "typical":
            typical.append(ratio)
        print("| %s | %.0f | %.0f | %.2fx |" % (name, parsed[name], modelled[name], ratio))
    print("\nmodel() of typical requests: median %.2fx, worst %.2fx of their parse (target: at most 4x)"
          % (statistics.median(typical), max(typical)))


if __name__ == "__main__":
    main()
