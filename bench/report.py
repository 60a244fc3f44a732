#!/usr/bin/env python3
"""Runs the lytFilterParser benchmarks and prints every figure as a ratio to
floor (a), the plain split of the same text into a std::list<std::string>,
measured in the same run.

    bench/report.py                      # full run: repetitions, medians, targets judged
    bench/report.py --smoke              # each benchmark briefly, once; nothing judged
    bench/report.py --results FILE       # also write a Markdown report with the machine's description
    bench/report.py --from-json FILE     # tables from a JSON file of an earlier run

Times are thread CPU time per operation in nanoseconds (median of the
repetitions in a full run). Each benchmark times floor (a) on its own text
in batches that alternate with its operation, so every ratio compares
figures taken at the same moments of the run; "floor(a) ns" is that
alongside measurement, and "ratio" the median of the repetitions' ratios.
A target is met when the median of its rows is within the limit; rows over
the limit are counted beside it. The exit status is 1 when a benchmark
failed, or with --strict when a target is missed.
"""

import argparse
import json
import os
import platform
import re
import shlex
import statistics
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DEFAULT_BINARY = os.path.join(ROOT, "build", "bench", "bench", "lytFilterParser_bench")

HAND_MARK = "<!-- written by hand: report.py keeps everything from this line on -->"

UNIT_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}

# (label, selects a row, limit on the ratio to floor (a), marks the rows' target column)
TIME_TARGETS = [
    ("tokenizing <= 1.2x", lambda r: r.op == "tokenize", 1.2, True),
    ("tokenizing <= 1.2x, texts that floor (a) cuts into as many tokens",
     lambda r: r.op == "tokenize" and r.blank_tokens == r.tokens, 1.2, False),
    ("typical round trip <= 2.5x", lambda r: r.op == "roundtrip" and r.case.startswith("typical_"), 2.5, True),
    ("round trip, 1,000 entities in one key column <= 2.5x",
     lambda r: r.op == "roundtrip" and r.case == "keys_1000", 2.5, True),
    ("round trip, 100,000 entities in one key column <= 2.5x",
     lambda r: r.op == "roundtrip" and r.case == "keys_100000", 2.5, True),
    ("round trip, filters nested 50 deep <= 2.5x",
     lambda r: r.op == "roundtrip" and r.case.startswith("deep_50"), 2.5, True),
    ("convert of a legacy line, refused ones included <= 3x", lambda r: r.op == "convert", 3.0, True),
    ("refused request <= 2x reading an accepted one of the same length", lambda r: r.op == "refused", 2.0, True),
    ("convert refusing a legacy line <= 2x converting an accepted one of the same length",
     lambda r: r.op == "refused_convert", 2.0, True),
    ("getMinimalValidVersion on a typical request <= 0.5x",
     lambda r: r.op == "minversion" and r.case.startswith("typical_"), 0.5, True),
]
# Linting a typical request costs at most one more round trip of the same text.
LINT_TARGET = ("lint of a typical request <= 1x its round trip", 1.0)
# Linear in depth: time per level of the deepest round trip against time per level at 1,000.
DEPTH_TARGET = ("round trip per nesting level at 1,000,000 <= 1.5x per level at 1,000", "depth_1000",
                "depth_1000000", 1.5)
ALLOC_TARGET = ("allocations per typical round trip <= 2x tokens",
                lambda r: r.op == "roundtrip" and r.case.startswith("typical_"), 2.0)


def source_revision():
    """The library sources the run measures: the commit, and whether files under
    lytFilterParser/ differ from it (read-only git queries)."""
    try:
        rev = subprocess.run(["git", "-C", ROOT, "rev-parse", "--short", "HEAD"],
                             capture_output=True, text=True).stdout.strip()
        dirty = subprocess.run(["git", "-C", ROOT, "status", "--porcelain", "--", "lytFilterParser"],
                               capture_output=True, text=True).stdout.strip()
    except OSError:
        return "?"
    if not rev:
        return "?"
    return rev + (" with uncommitted changes under lytFilterParser/" if dirty else " (lytFilterParser/ as committed)")


def run_benchmarks(args):
    revision = source_revision()
    fd, out_path = tempfile.mkstemp(prefix="lfp-bench-", suffix=".json")
    os.close(fd)
    cmd = [args.binary, "--benchmark_out=" + out_path, "--benchmark_out_format=json"]
    if args.smoke:
        cmd.append("--benchmark_min_time=0.01")
    else:
        cmd += ["--benchmark_min_time=%g" % args.min_time,
                "--benchmark_repetitions=%d" % args.repetitions,
                "--benchmark_report_aggregates_only=true",
                "--benchmark_enable_random_interleaving=true"]
    if args.filter:
        cmd.append("--benchmark_filter=" + args.filter)
    print("report: running " + " ".join(shlex.quote(c) for c in cmd), file=sys.stderr)
    # The console output is the progress display; the JSON file is what counts.
    proc = subprocess.run(cmd, stdout=sys.stderr if args.verbose else subprocess.DEVNULL)
    if proc.returncode != 0:
        sys.exit("report: the benchmark binary exited with %d" % proc.returncode)
    with open(out_path) as f:
        data = json.load(f)
    data.setdefault("context", {})["lfp_source"] = revision
    if args.json_out:
        with open(args.json_out, "w") as f:
            json.dump(data, f, indent=1)
    os.unlink(out_path)
    return data, cmd


class Row:
    def __init__(self, name, entry, samples):
        self.name = name
        self.op, _, self.case = name.partition("/")
        # Figures per operation from the paired loop; the plain time as a fallback.
        self.ns = entry.get("op_ns", entry["cpu_time"] * UNIT_NS[entry.get("time_unit", "ns")])
        self.paired_floor_ns = entry.get("floor_ns")
        self.paired_ratio = entry.get("ratio")
        # Refusals are paired with the accepted text of the same length instead of floor (a).
        if "vs_accepted" in entry:
            self.paired_floor_ns = entry.get("accepted_ns")
            self.paired_ratio = entry.get("vs_accepted")
        self.samples = samples
        self.allocs = entry.get("allocs")
        self.tokens = entry.get("tokens")
        self.blank_tokens = entry.get("blank_tokens")
        self.family = entry.get("family_index", 0)
        self.entities = entry.get("entities")
        self.levels = entry.get("levels")
        self.error = entry.get("error_message") if entry.get("error_occurred") else None


def collect_rows(data):
    """One row per benchmark: the median aggregate when there is one, else the
    median of the plain runs."""
    by_name = {}
    order = []
    for entry in data["benchmarks"]:
        name = entry.get("run_name", entry["name"])
        name = re.sub(r"/manual_time$", "", name)
        if name not in by_name:
            by_name[name] = {"median": None, "runs": []}
            order.append(name)
        if entry.get("run_type") == "aggregate":
            if entry.get("aggregate_name") == "median":
                by_name[name]["median"] = entry
        else:
            by_name[name]["runs"].append(entry)
    rows = []
    for name in order:
        item = by_name[name]
        runs = item["runs"]
        if item["median"] is not None:
            entry = item["median"]
            samples = entry.get("repetitions", len(runs))
        elif runs:
            entry = dict(runs[0])
            good = [r for r in runs if not r.get("error_occurred")]
            for key in ("cpu_time", "op_ns", "floor_ns", "ratio", "accepted_ns", "vs_accepted"):
                values = [r[key] for r in good if key in r]
                if values:
                    entry[key] = statistics.median(values)
            samples = len(runs)
        else:
            # Errors are reported as plain runs even when only aggregates are asked for.
            continue
        rows.append(Row(name, entry, samples))
    # Errored benchmarks have no aggregates: pick them from the plain entries.
    seen = {r.name for r in rows}
    for name in order:
        if name not in seen and by_name[name]["runs"]:
            rows.append(Row(name, by_name[name]["runs"][0], 1))
    # Random interleaving shuffles the runs: put the rows back in registration order.
    rows.sort(key=lambda r: r.family)
    return rows


def fmt_ns(ns):
    if ns is None:
        return "-"
    if ns >= 1e6:
        return "{:,.0f}".format(ns)
    if ns >= 100:
        return "{:,.0f}".format(ns)
    return "{:.1f}".format(ns)


def fmt_ratio(value):
    if value is None:
        return "-"
    return "%.3f" % value if value < 1 else "%.2f" % value


def fmt_num(value):
    if value is None:
        return "-"
    return "{:,.0f}".format(value) if float(value).is_integer() else "{:.2f}".format(value)


def judge(rows, judge_time, judge_allocs):
    """Adds to each row its ratio and its target verdicts; returns the summary."""
    floors = {r.case: r for r in rows if r.op == "floor_split" and r.error is None}
    summary = []
    for row in rows:
        row.verdicts = []
        if row.error is not None:
            row.floor_ns = row.ratio = None
        elif row.paired_ratio is not None:
            # Floor (a) timed alongside this operation: median of the repetitions' ratios.
            row.floor_ns = row.paired_floor_ns
            row.ratio = row.paired_ratio
        else:
            floor = floors.get(row.case)
            row.floor_ns = floor.ns if floor else None
            row.ratio = row.ns / floor.ns if floor else None
    for label, selects, limit, marks in TIME_TARGETS:
        picked = [r for r in rows if selects(r) and r.ratio is not None]
        for r in (picked if marks else []):
            if judge_time:
                verdict = "<= %gx: %s" % (limit, "met" if r.ratio <= limit else "**MISSED**")
            else:
                verdict = "<= %gx: not judged" % limit
            if r.op == "tokenize" and r.blank_tokens is not None and r.blank_tokens != r.tokens:
                verdict += " (floor (a) cuts %d tokens, the tokenizer %d)" % (r.blank_tokens, r.tokens)
            r.verdicts.append(verdict)
        unit = "x accepted" if picked and picked[0].op in PAIRED_WITH_ACCEPTED else "x floor (a)"
        summary.append(target_summary(label, [r.ratio for r in picked], unit, limit, judge_time))
    summary.append(depth_target(rows, judge_time))
    summary.append(lint_target(rows, judge_time))
    label, selects, limit = ALLOC_TARGET
    picked = [r for r in rows if selects(r) and r.allocs is not None and r.tokens]
    per_token = []
    for r in picked:
        ratio = r.allocs / r.tokens
        per_token.append(ratio)
        if judge_allocs:
            r.verdicts.append("allocs <= 2x tokens (%.2fx): %s" % (ratio, "met" if ratio <= limit else "**MISSED**"))
    summary.append({
        "target": label,
        "rows": len(picked),
        "met": sum(1 for x in per_token if x <= limit),
        "median": statistics.median(per_token) if per_token else None,
        "worst": max(per_token) if per_token else None,
        "unit": "allocs per token",
        "limit": limit,
        "judged": judge_allocs,
    })
    return summary


def target_summary(label, ratios, unit, limit, judged):
    """One line of the targets table: how many rows meet `limit`, their median and worst."""
    return {
        "target": label,
        "rows": len(ratios),
        "met": sum(1 for x in ratios if x <= limit),
        "median": statistics.median(ratios) if ratios else None,
        "worst": max(ratios) if ratios else None,
        "unit": unit,
        "limit": limit,
        "judged": judged,
    }


def depth_target(rows, judge_time):
    label, shallow_case, deep_case, limit = DEPTH_TARGET
    trips = {r.case: r for r in rows if r.op == "roundtrip" and r.error is None and r.levels}
    shallow, deep = trips.get(shallow_case), trips.get(deep_case)
    ratios = []
    if shallow and deep:
        ratio = (deep.ns / deep.levels) / (shallow.ns / shallow.levels)
        ratios.append(ratio)
        if judge_time:
            deep.verdicts.append("per level <= %gx per level at %s (%.2fx): %s" % (
                limit, "{:,}".format(int(shallow.levels)), ratio, "met" if ratio <= limit else "**MISSED**"))
    return target_summary(label, ratios, "x per level at 1,000", limit, judge_time)


def lint_target(rows, judge_time):
    """Lint of a typical text against the round trip of the same text, each
    divided by floor (a) timed alongside it, so load cancels out."""
    label, limit = LINT_TARGET
    trips = {r.case: r for r in rows if r.op == "roundtrip" and r.ratio}
    ratios = []
    for r in rows:
        trip = trips.get(r.case)
        if r.op != "lint" or r.ratio is None or trip is None:
            continue
        ratio = r.ratio / trip.ratio
        ratios.append(ratio)
        if judge_time:
            r.verdicts.append("<= %gx the round trip (%.2fx): %s" % (limit, ratio, "met" if ratio <= limit else "**MISSED**"))
    return target_summary(label, ratios, "x round trip", limit, judge_time)


def median_met(s):
    """The targets are medians; a row over the limit is reported but does not fail one."""
    return s["median"] is not None and s["median"] <= s["limit"]


def summary_table(summary):
    lines = ["| target | rows | met | median | worst | verdict |", "|---|---:|---:|---:|---:|---|"]
    for s in summary:
        if not s["judged"]:
            verdict = "not judged"
        elif s["rows"] == 0:
            verdict = "no data"
        elif s["met"] == s["rows"]:
            verdict = "met, every row"
        elif median_met(s):
            verdict = "met by the median; %d of %d rows over" % (s["rows"] - s["met"], s["rows"])
        else:
            verdict = "**MISSED** (%d of %d rows over)" % (s["rows"] - s["met"], s["rows"])
        lines.append("| %s | %d | %d | %s | %s | %s |" % (
            s["target"], s["rows"], s["met"],
            "-" if s["median"] is None else "%s %s" % (fmt_ratio(s["median"]), s["unit"]),
            fmt_ratio(s["worst"]), verdict))
    return lines


OP_ORDER = ["floor_split", "floor_copy", "tokenize", "roundtrip", "lint", "explain", "convert", "refused", "refused_convert",
            "isvalid", "minversion", "dump_v1", "kova_columns", "module_names", "error"]
PAIRED_WITH_ACCEPTED = ("refused", "refused_convert")
OP_TITLE = {
    "floor_split": "Floor (a): split on blanks into std::list<std::string>",
    "floor_copy": "Floor (b): copy of the text",
    "tokenize": "Tokenizing: LYTKovaRequest::fillFilterList",
    "roundtrip": "Round trip: getLYTKovaRequest + dump() + delete",
    "lint": "Lint: lytFilterParser::lint(text) (target: at most the round trip of the same text)",
    "explain": "Explain's work: one RecordedRequest, its lint, fidelity and validation for peers 1 to 3 (reads once)",
    "convert": "Convert of a legacy line: LYTKovaRequest::convert(text, error)",
    "refused": "Refused request: getLYTKovaRequest on a text spoilt at one token, against the accepted text",
    "refused_convert": "Refused legacy line: convert on a line spoilt at one token, against the accepted line",
    "isvalid": "isValid(error) on a parsed request",
    "minversion": "getMinimalValidVersion(error) on a parsed request",
    "dump_v1": "dump(TavVersion(1)) on a parsed request",
    "kova_columns": "getKovaColumns() on a parsed request",
    "module_names": "getModuleNames() + setModuleNames() on a parsed request",
    "error": "Cases that could not be benchmarked",
}


def main_tables(rows):
    lines = []
    ops = sorted({r.op for r in rows}, key=lambda op: OP_ORDER.index(op) if op in OP_ORDER else 99)
    for op in ops:
        partner = "accepted ns" if op in PAIRED_WITH_ACCEPTED else "floor(a) ns"
        lines += ["", "### " + OP_TITLE.get(op, op), "",
                  "| case | ns | %s | ratio | allocs | tokens | target |" % partner,
                  "|---|---:|---:|---:|---:|---:|---|"]
        for r in (r for r in rows if r.op == op):
            if r.error is not None:
                lines.append("| %s | error: %s | | | | | |" % (r.name, r.error))
                continue
            lines.append("| %s | %s | %s | %s | %s | %s | %s |" % (
                r.name, fmt_ns(r.ns), fmt_ns(r.floor_ns), fmt_ratio(r.ratio),
                fmt_num(r.allocs), fmt_num(r.tokens), "; ".join(r.verdicts)))
    return lines


def scaling_tables(rows):
    lines = []
    trips = {r.case: r for r in rows if r.op == "roundtrip" and r.error is None}
    for prefix, attr, unit in (("keys_", "entities", "entity"), ("depth_", "levels", "level")):
        series = sorted((r for c, r in trips.items() if c.startswith(prefix) and getattr(r, attr)),
                        key=lambda r: getattr(r, attr))
        if not series:
            continue
        title = ("Scaling: round trip with N entities in one key column" if attr == "entities"
                 else "Scaling: round trip with filters nested N levels")
        lines += ["", "### " + title, "",
                  "| N | ns | ns/%s | marginal ns/%s | floor(a) ns/%s | ratio | allocs | allocs/%s |" % (
                      unit, unit, unit, unit),
                  "|---:|---:|---:|---:|---:|---:|---:|---:|"]
        previous = None
        for r in series:
            n = getattr(r, attr)
            marginal = "-"
            if previous is not None and n != getattr(previous, attr):
                marginal = "%.1f" % ((r.ns - previous.ns) / (n - getattr(previous, attr)))
            lines.append("| {:,} | {} | {:.1f} | {} | {} | {} | {} | {:.2f} |".format(
                int(n), fmt_ns(r.ns), r.ns / n, marginal,
                "-" if r.floor_ns is None else "%.1f" % (r.floor_ns / n),
                fmt_ratio(r.ratio), fmt_num(r.allocs), (r.allocs or 0) / n))
            previous = r
    return lines


def benchmark_version(ctx):
    if ctx.get("library_version"):
        return ctx["library_version"]
    try:
        out = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", "libbenchmark-dev"],
                             capture_output=True, text=True)
        if out.returncode == 0 and out.stdout:
            return "libbenchmark-dev " + out.stdout
    except OSError:
        pass
    return "?"


def machine_description(data, binary):
    ctx = data.get("context", {})
    model = "unknown"
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    model = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    compiler = "unknown"
    cache = os.path.join(os.path.dirname(os.path.dirname(binary)), "CMakeCache.txt")
    cxx = "c++"
    try:
        with open(cache) as f:
            for line in f:
                m = re.match(r"CMAKE_CXX_COMPILER:\w+=(.*)", line)
                if m:
                    cxx = m.group(1).strip()
    except OSError:
        pass
    try:
        compiler = subprocess.run([cxx, "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    except (OSError, IndexError):
        pass
    caches = ", ".join("L%d %s %d KiB" % (c["level"], c["type"], c["size"] // 1024) for c in ctx.get("caches", []))
    load = ctx.get("load_avg")
    return [
        "- nproc: %s" % len(os.sched_getaffinity(0)),
        "- CPU: %s (%s MHz as the benchmark library reads it; caches: %s)" % (model, ctx.get("mhz_per_cpu", "?"),
                                                                              caches or "?"),
        "- compiler: %s, flags of the `bench` preset (Release, `-O2 -DNDEBUG`)" % compiler,
        "- OS: %s %s" % (platform.system(), platform.release()),
        "- Google Benchmark library: %s; it reports its own build type as \"%s\" (Debian's package prints "
        "\"Library was built as DEBUG\"; the timed loops are inline in the benchmark binary, built -O2 -DNDEBUG)"
        % (benchmark_version(ctx), ctx.get("library_build_type", "?")),
        "- library sources: git %s" % ctx.get("lfp_source", "?"),
        "- load average at start: %s" % (", ".join("%.2f" % x for x in load) if load else "?"),
        "- run date: %s" % ctx.get("date", "?"),
    ]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--binary", default=DEFAULT_BINARY)
    parser.add_argument("--smoke", action="store_true", help="run each benchmark briefly, once; judge nothing")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--min-time", type=float, default=0.05,
                        help="seconds of the measured operation per repetition (floor (a) runs as long again)")
    parser.add_argument("--filter", help="--benchmark_filter regex")
    parser.add_argument("--from-json", help="read an earlier run's JSON instead of running")
    parser.add_argument("--json-out", help="keep the run's JSON in this file")
    parser.add_argument("--results", help="write a Markdown report (machine, command, tables) to this file")
    parser.add_argument("--command-label", help="command line to name in --results (default: this one)")
    parser.add_argument("--strict", action="store_true", help="exit 1 when a target is missed")
    parser.add_argument("--verbose", action="store_true", help="show the benchmark binary's console output")
    args = parser.parse_args()

    if args.from_json:
        with open(args.from_json) as f:
            data = json.load(f)
    else:
        if not os.path.exists(args.binary):
            sys.exit("report: %s not found; build it with `cmake --workflow --preset bench`" % args.binary)
        data, _ = run_benchmarks(args)

    rows = collect_rows(data)
    summary = judge(rows, judge_time=not args.smoke, judge_allocs=not args.smoke)
    errors = [r for r in rows if r.error is not None or r.op == "error"]

    samples = max((r.samples for r in rows), default=1)
    mode = ("smoke run: one short run per benchmark, nothing judged" if args.smoke
            else "thread CPU time per operation, median of %d repetitions" % samples)
    lines = ["## Targets (%s)" % mode, ""] + summary_table(summary)
    judged = [x for x in summary if x["judged"] and x["rows"]]
    if judged:
        met = [x["target"] + ("" if x["met"] == x["rows"] else " (by the median)") for x in judged if median_met(x)]
        missed = [x["target"] for x in judged if not median_met(x)]
        lines += ["", "Met: %d of %d targets%s." % (len(met), len(judged), (": " + "; ".join(met)) if met else ""),
                  "Missed: %s." % ("; ".join(missed) if missed else "none")]
    lines += ["", "Notes:",
              "- Every ratio divides by floor (a) on the same text, timed by the same benchmark in batches of "
              "about 100 us that alternate with the operation, so both figures see the same load. Floor (a) cuts on "
              "blanks only, so on legacy lines (\"[[src\", \"]]]]\") it makes fewer tokens than the tokenizer, "
              "which also cuts at every bracket; the tokenizing rows say so where the counts differ.",
              "- Refusals (\"refused/\", \"refused_convert/\") divide instead by the same operation on the "
              "accepted text of the same length, timed the same way.",
              "- allocs counts calls of the global operator new during one operation (replaced in the benchmark "
              "binary; the shared library's allocations bind to it). Strings of up to 15 characters live inside "
              "std::string and allocate nothing.",
              "- The machine is shared: other builds may run at the same time. The paired timing keeps the "
              "ratios steadier than the absolute times, which can move by 10 to 20 percent between runs."]
    lines += ["", "## Every figure", "", "ns = %s; floor(a) ns = floor (a) on the same text, timed in batches "
              "alternating with the operation; ratio = ns / floor(a) ns (median of the repetitions' ratios); "
              "allocs = heap allocations of one operation; tokens = tokens of the text as fillFilterList cuts it."
              % mode]
    lines += main_tables(rows)
    lines += ["", "## Scaling"] + scaling_tables(rows)
    text = "\n".join(lines) + "\n"
    print(text)

    if args.results:
        command = args.command_label or " ".join(shlex.quote(a) for a in [os.path.relpath(sys.argv[0], ROOT)] +
                                                  sys.argv[1:])
        header = ["# Benchmark results", "", "Produced by:", "", "```sh", command, "```", "",
                  "## Machine", ""] + machine_description(data, args.binary) + [""]
        # A section a person wrote below HAND_MARK survives regeneration.
        kept = ""
        if os.path.exists(args.results):
            with open(args.results) as f:
                previous = f.read()
            at = previous.find(HAND_MARK)
            if at >= 0:
                kept = "\n" + previous[at:]
        with open(args.results, "w") as f:
            f.write("\n".join(header) + "\n" + text + kept)
        print("report: wrote " + args.results, file=sys.stderr)

    if errors:
        print("report: %d benchmark(s) failed: %s" % (len(errors), ", ".join(r.name for r in errors)),
              file=sys.stderr)
        return 1
    if args.strict and any(s["judged"] and s["rows"] and not median_met(s) for s in summary):
        print("report: targets missed", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
