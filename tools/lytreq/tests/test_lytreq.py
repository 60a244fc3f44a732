#!/usr/bin/env python3
"""Runs the built lytreq over its subcommands and compares what it prints
with the exact text expected: standard output, standard error and the exit
status of every call.

Usage: test_lytreq.py PATH-TO-LYTREQ
"""
import json
import os
import pty
import subprocess
import sys
import tempfile

TOOL = sys.argv[1] if len(sys.argv) > 1 else "lytreq"
results = []


def run(args, stdin=None, stdout=subprocess.PIPE):
    proc = subprocess.run([TOOL] + args, input=stdin, stdout=stdout, stderr=subprocess.PIPE, text=True)
    return proc.returncode, proc.stdout, proc.stderr


def check(name, ok, detail=""):
    results.append(ok)
    if not ok:
        print("FAIL %s\n%s" % (name, detail))


def expect(name, args, stdout="", stderr="", status=0, stdin=None):
    """The call must print exactly `stdout` and `stderr` and exit with `status`;
    a list as `stdout` holds the JSON objects of its lines."""
    code, out, err = run(args, stdin)
    if isinstance(stdout, list):
        try:
            out = [json.loads(line) for line in out.splitlines()]
        except ValueError:
            pass
    check(name, (code, out, err) == (status, stdout, stderr),
          "  lytreq %r\n  expected %r\n  actual   %r" % (args, (status, stdout, stderr), (code, out, err)))


def caret(text, start, length):
    """What lytreq writes to standard error under a rejected request."""
    return "  %s\n  %s^%s\n" % (text, " " * start, "~" * max(length - 1, 0))


def report(**fields):
    """A JSON report: every one carries its warnings, every error its suggestions."""
    fields.setdefault("warnings", [])
    if "error" in fields:
        fields.setdefault("suggestions", [])
    return fields


def usage(message, command="", hints=""):
    return "lytreq: %s\n%sTry 'lytreq %s--help' for more information.\n" % (message, hints, command + " " if command else "")


# The examples of docs/request-syntax.md and lytreq.1 run too (check_docs.py);
# what they show is not repeated here.

# --- parse: request words, peers, and where reading stopped -----------------
WB = " -k src acc=replace -v wb acc=rate \n"
# Writing for a peer checks the request first, which completes it.
expect("parse.peer-equals", ["parse", "--peer=3", "-k src -v wb"], " -k src acc=replace -v wb acc=rate -s top \n")
expect("parse.vl-peer1", ["parse", "--peer", "1", "vl link7"], "",
       "lytreq: peer 1 has no text for this request: it is written as an empty line\n" + caret("vl link7", 0, 8), 1)
expect("parse.separator", ["parse", "--", "-k", "src", "-v", "wb"], WB)
expect("parse.words-then-option", ["parse", "-k", "src", "-v", "wb", "--peer", "1"],
       "-filter [ and []] -a a -y b -g topsrc \n")
expect("parse.json", ["parse", "vl", "link7", "-t", "app", "--json"],
       [report(input="vl link7 -t app", request="vl link7 -t application")])
check("parse.json.input-first", run(["parse", "--json", "vl x"])[1].startswith('{"input":'))
expect("parse.write-fault", ["parse", "-k telNumber -v wb"], "", "lytreq: Not a valid argument for type\n", 1)
expect("parse.empty", ["parse", "   "], "", "lytreq: empty request\n", 1)
# Without --peer the text written is the current peer's, and what it leaves out is told.
expect("parse.current-loses", ["parse", "-k src -v wb -s top index=2"], " -k src acc=replace -v wb acc=rate -s top \n",
       "lytreq: warning: `index=2` reads back as `index=1` for peer 3, which accepts the text although it refuses the "
       "request: Invalid Sort index [sort-changed]\n" + caret("-k src -v wb -s top index=2", 20, 7))
expect("parse.current-loses-nothing", ["parse", "-k src -v wb -v pkt -s bottom index=2 updates=20"],
       " -k src acc=replace -v wb acc=rate -v pkt acc=rate -s bottom index=2 updates=20 \n")

FAULTS = [
    # (request, message, start, length, suggestions): the marked token, or a single ^ past the end
    ("-k svc -v wb -s top foo", "Invalid option: foo", 20, 3, []),
    ("-f and [ -f src 1 ]]", "Invalid option: ]", 19, 1, []),
    # The "]" the filter wrapping inserted stands where the next word starts.
    ("-f src 10.0.0.1 ] -k svc", "Invalid option: ]", 18, 0, []),
    ("-k  svc   -v wb   -Q", "Invalid option: -Q", 18, 2, ["-f", "-k", "-v"]),
]
for text, message, start, length, words in FAULTS:
    hint = "Did you mean: %s\n" % ", ".join(words) if words else ""
    expect("caret " + text, ["parse", text], "", "lytreq: %s\n%s%s" % (message, caret(text, start, length), hint), 1)
    expect("caret.json " + text, ["parse", "--json", text],
           [report(input=text, error=message, errorStart=start, errorLength=length, suggestions=words)], status=1)
# Offsets in JSON count bytes, the marker lines up under characters.
expect("caret.utf8", ["parse", "--json", "-f src café -k Src -v wb"],
       [report(input="-f src café -k Src -v wb", error="Invalid type: Src", errorStart=16, errorLength=3,
               suggestions=["src"])], status=1)
expect("caret.utf8.text", ["parse", "-f src café -k é"], "",
       "lytreq: Invalid type: é\n" + caret("-f src café -k é", 15, 1), 1)
# What does not show is escaped in the echo, and the marker counts columns.
NBSP = "-k svc\u00a0 -v wb"
expect("echo.no-break-space", ["parse", NBSP], "",
       "lytreq: Invalid type: svc\u00a0\n  -k svc\\u{00A0} -v wb\n     ^~~~~~~~~~~\nDid you mean: svc\n"
       "lytreq: warning: U+00A0 (no-break space) inside `svc\u00a0`: it is part of the word; only a blank separates"
       " words [invisible-character]\n  -k svc\\u{00A0} -v wb\n        ^~~~~~~~\n", 1)
for name, text, message, echo, marker in [
        ("tab", "-k\tsvc -v wb -x", "Invalid option: -k\\tsvc", "-k\\tsvc -v wb -x", "^~~~~~~"),
        ("zero-width", "-k \u200bsvc -v wb", "Invalid type: \u200bsvc", "-k \\u{200B}svc -v wb", "   ^~~~~~~~~~~"),
        ("wide", "-f src 日本 -k é -v wb", "Invalid type: é", "-f src 日本 -k é -v wb", "               ^"),
        ("long", "-k src -v wb " + "x" * 100 + " -Q " + "y" * 200, "Invalid option: -Q",
         "…" + "x" * 18 + " -Q " + "y" * 54 + "…", " " * 20 + "^~")]:
    hint = "Did you mean: svc\n" if name == "zero-width" else "Did you mean: -f, -k, -v\n" if name == "long" else ""
    expect("echo." + name, ["parse", "--no-warnings", text], "",
           "lytreq: %s\n  %s\n  %s\n%s" % (message, echo, marker, hint), 1)
code, out, err = run(["parse"], stdin="-k src -v " + "w" * 1000000 + "\n")
check("echo.megabyte", code == 1 and len(err) < 1001000, len(err))

# Words are joined into one request; two arguments that are whole requests are not.
expect("joined.words", ["parse", "-k", "src", "-v", "wb"], WB)
for args in (["-k src -v wb", "-k dst"], ["-k", "src -v wb"]):
    expect("joined.requests " + repr(args), ["parse"] + args, "", "lytreq: several requests given: quote one request "
           "as one argument, or give them one per line with --file\n", 2)
# Places in JSON index the "input" JSON holds, where bytes that are not UTF-8 are U+FFFD.
for name, text in [("bytes", b"-f src \xff\xfe -k Src -v wb\n"), ("cut-sequence", b"-f src \xe2\x82 -k Src -v wb\n"),
                   ("surrogate", b"-f src \xed\xa0\x80 -k Src -v wb\n")]:
    proc = subprocess.run([TOOL, "parse", "--json"], input=text, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    got = json.loads(proc.stdout) if proc.returncode == 1 else {}
    raw = got.get("input", "").encode("utf-8")
    check("json.not-utf8." + name, raw[got.get("errorStart", 0):][:got.get("errorLength", 0)] == b"Src"
          and "\ufffd" in got.get("input", ""), proc.stdout)
proc = subprocess.run([TOOL, "names", "--json"], input=b"-f src \xff -f or\n", stdout=subprocess.PIPE)
got = json.loads(proc.stdout)
check("json.not-utf8.warning", got["input"].encode("utf-8")[got["warnings"][0]["start"]:][:5] == b"-f or", proc.stdout)
# Control characters never reach the terminal: messages, warnings and
# verdicts escape them as the echo does; the result text stays exact.
ESC = "-k \x1bc -v wb"
expect("control.message", ["parse", ESC], "", "lytreq: Invalid type: \\x1Bc\n  -k \\x1Bc -v wb\n     ^~~~~\n"
       "lytreq: warning: U+001B (control character) inside `\\x1Bc`: it is part of the word; only a blank separates"
       " words [invisible-character]\n  -k \\x1Bc -v wb\n     ^~~~\n", 1)
expect("control.verdict", ["check", "-n", "--no-warnings"], "1:error: Invalid type: \\x1Bc\n",
       "<stdin>:1:4: error: Invalid type: \\x1Bc\n  -k \\x1Bc -v wb\n     ^~~~~\n", 1, stdin=ESC + "\n")
expect("control.result-exact", ["parse", "--no-warnings", "-f src a\x1bb -k src -v wb"],
       "-f src  a\x1bb    -k src acc=replace -v wb acc=rate \n")
expect("control.explain", ["explain", "--no-warnings", "vl a\x07b"], "vl request\n  name: a\\x07b\n  data type: wire\n" + "".join(
    "peer %d: invalid: peer %d has no text for this request: it is written as an empty line\n" % (peer, peer)
    for peer in (1, 2)) + "peer 3: valid\n")
# A closed standard input is an error, not an empty success.
proc = subprocess.run(["bash", "-c", 'exec "$0" check <&-', TOOL], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                      text=True)
check("closed-stdin", (proc.returncode, proc.stdout, proc.stderr) ==
      (2, "", "lytreq: cannot read standard input: Bad file descriptor\n"), proc.stderr)
proc = subprocess.run(["bash", "-c", 'exec "$0" check "-k src -v wb" <&-', TOOL], stdout=subprocess.PIPE, text=True)
check("closed-stdin.unread", (proc.returncode, proc.stdout) == (0, "valid; minimal peer: 1\n"), proc.stdout)
# -n numbers a request given as argument as line 1.
expect("numbered.argument", ["names", "-n", "-f src a b"], "1:a\n1:b\n")
expect("numbered.argument-parse", ["parse", "-n", "-k src -v wb"], "1:" + WB)
# The legacy syntax has no line utilisation: written as -y b, with a warning.
expect("legacy.line-utilisation", ["parse", "--peer", "2", "-k src -v wb acc=lineUtil"],
       "-filter [ and []] -a a -y b -g topsrc \n",
       "lytreq: warning: `acc=lineUtil` reads back as `acc=rate` for peer 2 [mode-changed]\n"
       + caret("-k src -v wb acc=lineUtil", 13, 12))

# --- check, convert, columns, names -----------------------------------------
expect("check.current-only", ["check", "-k telNumber -v wb"], "valid; minimal peer: 3\n")
expect("check.peer0", ["check", "--peer", "0", "-k src -v wb"],
       "invalid: This version is not supported; minimal peer: 1\n", "", 1)
expect("check.json", ["check", "--json", "--peer", "2", "-k url -v wb"],
       [report(input="-k url -v wb", peer=2, valid=False, message="Can't use wdAttack or url with none session value: wb",
               errorStart=10, errorLength=2, minimalPeer=None)], status=1)
expect("convert.peer1", ["convert", "--peer", "1", "-y C -g topip"],
       " -k ip acc=replace -v conn acc=concurrent -s top \n")
for name, text, message, start, length in [
        # The reader takes a value by its first letter and refuses the letters it only writes.
        ("value-by-first-letter", "-y bogus -y z", "Invalid value type", 12, 1),
        ("written-only-value", "-g topsrc -y l", "Invalid value type", 13, 1),
        ("key-at-end", "-y b -g", "Invalid key type", 7, 0),
        ("open-filter", "src 0 [ a b", "Invalid filter", 11, 0)]:
    expect("convert." + name, ["convert", text], "", "lytreq: %s\n%s" % (message, caret(text, start, length)), 1)
for name, text, message, start, length, hint in [
        ("key-longer-than-word", "-y b -g topsrcx", "Invalid key type", 8, 7, "topsrc"),
        ("passed-through", "-g src 10.0.0.1 -x", "Invalid option: -x", 16, 2, "-f, -k, -v")]:
    expect("convert." + name, ["convert", text], "",
           "lytreq: %s\n%sDid you mean: %s\n" % (message, caret(text, start, length), hint), 1)
expect("convert.json", ["convert", "--json", "-y b -g fw"],
       [report(input="-y b -g fw", error="Invalid key type", errorStart=8, errorLength=2)], status=1)
# What the translation skips is warned about under the legacy line.
expect("convert.skipped", ["convert", "garbage words here"], " -v wb acc=rate \n",
       "lytreq: warning: `garbage words here` are no legacy syntax and the conversion skips them [word-skipped]\n"
       + caret("garbage words here", 0, 18)
       + "lytreq: warning: the converted request is refused for the current peer: At least one key is required "
       "[converted-refused]\n" + caret("garbage words here", 0, 18))
expect("convert.bad-peer", ["convert", "--peer", "3", "-g topsrc"], "",
       usage("--peer: Value 3 not in range 1 to 2", "convert"), 2)
expect("columns.peer1-no-value", ["columns", "--peer", "1", "-k src"], " 2  EntryName             key    src\n")
expect("columns.unmappable", ["columns", "-k src -k svc -k dst -k ip -k url -k url -k fwrule -v wb"], "",
       "lytreq: failed to map kova columns\n", 1)
expect("columns.vl", ["columns", "vl link7"], "",
       "lytreq: this is a \"vl\" (end-to-end) request: only network requests have query-interface columns\n", 1)
expect("columns.json", ["columns", "--json", "--peer", "1", "-k src -v pkt"],
       [report(input="-k src -v pkt", columns=[
           {"number": 2, "name": "EntryName", "role": "key", "type": "src"},
           {"number": 5, "name": "bandwithPackets", "role": "value", "type": "pkt"}])])
NAMES = "-f src gw1 gw2 -f svc http -k dst web1 web2 -v wb"
expect("names.json", ["names", "--json", NAMES], [report(input=NAMES, names=["gw1", "gw2", "web1", "web2"])])

# --- warnings, peers and explain --------------------------------------------
IGNORED = "-f src a -f or -k svc -v wb"
IGNORED_OUT = "-f and [ -f src  a     ] -k svc acc=replace -v wb acc=rate \n"
IGNORED_WARNING = "warning: `or` has no filter in it and is ignored [operator-ignored]\n" + caret(IGNORED, 9, 5)
expect("warning.text", ["parse", IGNORED], IGNORED_OUT, "lytreq: " + IGNORED_WARNING)
expect("warning.strict", ["parse", "--strict", IGNORED], IGNORED_OUT, "lytreq: " + IGNORED_WARNING, 1)
expect("warning.hidden", ["check", "--strict", "--no-warnings", IGNORED], "valid; minimal peer: 1\n")
NOTED = "-k src a a -v wb"  # a note is no warning: --strict lets it pass
expect("warning.note", ["parse", "--strict", NOTED], " -k src acc=replace a a -v wb acc=rate \n",
       "lytreq: note: `a` is named twice here (first at byte 7) [entity-duplicate]\n" + caret(NOTED, 9, 1))
expect("warning.batch", ["parse", "-n"], "1:" + WB + "2:" + IGNORED_OUT, "<stdin>:2:10: " + IGNORED_WARNING,
       stdin="-k src -v wb\n" + IGNORED + "\n")
# Places in JSON are bytes of the input.
expect("warning.json", ["names", "--json", "-f src café -f or"], [report(
    input="-f src café -f or", names=["café"], warnings=[{"code": "operator-ignored", "severity": "warning",
                                                        "message": "`or` has no filter in it and is ignored",
                                                        "start": 13, "length": 5}])])
# For a peer, parse checks the request and warns about what its text loses.
TWO_VALUES = "-k src -v wb -v pkt"
expect("parse.peer-refused", ["parse", "--peer", "1", TWO_VALUES], "",
       "lytreq: Support only one value column\n" + caret(TWO_VALUES, 13, 6), 1)
IFACE = "-f interface eth0 -k src -v wb"
LOSS = "warning: `eth0` reads back as `eth0,out` for peer %d [item-changed]\n" + caret(IFACE, 13, 4)
expect("parse.peer-losses", ["parse", "--peer", "1", IFACE],
       "-filter [ and [[interface 0 [[eth0 out]]]]] -a a -y b -g topsrc \n", "lytreq: " + LOSS % 1)
expect("check.all", ["check", "--peer", "all", IFACE], "peer 1: valid\npeer 2: valid\npeer 3: valid\n",
       "lytreq: " + LOSS % 1 + "lytreq: " + LOSS % 2)
refused = {"valid": False, "message": "Support only one value column", "errorStart": 13, "errorLength": 6,
           "warnings": []}
expect("check.all.json", ["check", "--peer=all", "--json", TWO_VALUES], [report(input=TWO_VALUES, peers=[
    dict(refused, peer=1), dict(refused, peer=2), {"peer": 3, "valid": True, "warnings": []}], minimalPeer=3)])
expect("check.all.none", ["check", "--peer", "all", "-k src"], "".join(
    "peer %d: invalid: At least one value is required\n" % peer for peer in (1, 2, 3)), "", 1)
EXPLAINED = "-f and [ -f interface eth0 -f src not a b ] -k dst web1<>10.1.0.1 -v pkt dir=in -s bottom"
OPTIONS = " dir=both enc=both comp=both cprint=both url_mod=full"
expect("explain.network", ["explain", EXPLAINED],
       "network request\n  filter: and\n    interface eth0 (both)\n    src not a b\n"
       "  key: dst acc=replace" + OPTIONS + "\n    names: web1<>10.1.0.1\n    query column: 23 STR_1\n"
       "  value: pkt acc=rate" + OPTIONS.replace("=both", "=in", 1) + "\n    query column: 17 VAL64_1\n"
       "  sort: bottom index=1 updates=50\n" + "".join(
           "peer %d: valid\n  warning: `eth0` reads back as `eth0,out` for peer %d [item-changed]\n"
           "  warning: `dir=in` reads back as `dir=both` for peer %d [option-changed]\n"
           "  warning: `-s bottom` reads back as no sort for peer %d [sort-changed]\n" % ((peer,) * 4)
           for peer in (1, 2)) + "peer 3: valid\n")
code, out, err = run(["explain", "--json", "-f or [ -f svc http -f and [ -f dst x ] ] -k svc -v conn"])
tree = json.loads(out) if code == 0 else {}
check("explain.network.json", (tree.get("filter"), tree.get("values", [{}])[0].get("column"), tree.get("sort")) == (
    [{"depth": 0, "operator": "or"}, {"depth": 1, "type": "svc", "negated": False, "names": ["http"]},
     {"depth": 1, "operator": "and"}, {"depth": 2, "type": "dst", "negated": False, "names": ["x"]}],
    {"number": 17, "name": "VAL64_1"}, {"type": "none", "index": 1, "updates": 50}), out)
NO_TEXT = "peer %d has no text for this request: it is written as an empty line"
expect("explain.no-filter", ["explain", "--no-warnings", "-k src -v wb"],
       "network request\n  filter: none\n  key: src acc=replace" + OPTIONS + "\n    query column: 23 STR_1\n"
       "  value: wb acc=rate" + OPTIONS + "\n    query column: 17 VAL64_1\n  sort: none index=1 updates=50\n"
       "peer 1: valid\npeer 2: valid\npeer 3: valid\n")
code, out, err = run(["explain", "--json", "-k src -v wb"])
check("explain.no-filter.json", code == 0 and json.loads(out).get("filter") == [], out)
expect("explain.vl", ["explain", "vl link7"], "vl request\n  name: link7\n  data type: wire\n"
       + "".join("peer %d: invalid: %s\n" % (peer, NO_TEXT % peer) for peer in (1, 2)) + "peer 3: valid\n")
expect("explain.vl.json", ["explain", "--json", "vl link7 -t app"], [report(
    input="vl link7 -t app", kind="vl", name="link7", dataType="application", minimalPeer=3, peers=[
        {"peer": 1, "valid": False, "message": NO_TEXT % 1, "errorStart": 0, "errorLength": 15, "warnings": []},
        {"peer": 2, "valid": False, "message": NO_TEXT % 2, "errorStart": 0, "errorLength": 15, "warnings": []},
        {"peer": 3, "valid": True, "warnings": []}])])

with tempfile.TemporaryDirectory() as work:
    def write(name, text):
        path = os.path.join(work, name)
        with open(path, "w") as f:
            f.write(text)
        return path

    # --- resolve and its map file -------------------------------------------
    names_map = write("names.map", "# gateways\ngw1 10.0.0.1\n\ngw2   10.0.0.2\nweb1\t10.1.0.1\nweb2 10.1.0.2\n")
    expect("resolve.text", ["resolve", "--map", names_map, NAMES],
           "-f and [ -f src  gw1<>10.0.0.1 gw2<>10.0.0.2   -f svc  http   ] "
           "-k dst acc=replace web1<>10.1.0.1 web2<>10.1.0.2 -v wb acc=rate \n")
    for name, text, message in [("bad.map", "gw1 10.0.0.1\ngw2\n", ":2: expected \"name resolved\""),
                                ("twice.map", "gw1 10.0.0.1\ngw1 10.0.0.9\n", ":2: gw1 is mapped twice"),
                                ("bracket.map", "gw1 x]\n",
                                 ":1: the resolved name x] holds \"]\", which a request cannot carry")]:
        path = write(name, text)
        expect("resolve." + name, ["resolve", "--map", path, "-k svc -v wb"], "", "lytreq: %s%s\n" % (path, message), 2)
    missing = os.path.join(work, "none.map")
    for name, path, reason in [("no-map-file", missing, "No such file or directory"),
                               ("map-directory", work, "Is a directory")]:
        expect("resolve." + name, ["resolve", "--map", path, "-k svc -v wb"], "",
               "lytreq: cannot read %s: %s\n" % (path, reason), 2)
        expect("batch." + name, ["parse", "--file", path], "", "lytreq: cannot read %s: %s\n" % (path, reason), 2)
    expect("resolve.map-required", ["resolve", "-k svc -v wb"], "", usage("--map is required", "resolve"), 2)
    bom = write("bom.map", "\ufeffgw1 10.0.0.1\n")
    expect("resolve.bom", ["resolve", "--map", bom, "-f src gw1"], "-f src  gw1<>10.0.0.1    \n")
    expect("batch.bom", ["parse", "--file", write("bom.txt", "\ufeff-f src a\n")], "-f src  a    \n")

    # --- batch input: comments, blank lines, CR, a bad line in the middle ---
    batch = "-k src -v wb\n\n# a comment\n  # an indented comment\n-k src -v wb -x\r\n-k svc -v pkt\n"
    # Messages about a line say where it is as compilers do: FILE:LINE:COLUMN
    # (COLUMN in bytes from 1), the file as given, <stdin> for standard input.
    bad_line = ":5:14: error: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2) + "Did you mean: -f, -k, -v\n"
    two = WB + " -k svc acc=replace -v pkt acc=rate \n"
    requests = write("requests.txt", batch)
    # Without -n, a refused line leaves an empty line: one output line per request line.
    for args in (["parse"], ["parse", "-"], ["parse", "--file", "-"]):
        expect("batch " + " ".join(args), args, WB + "\n" + two.split("\n")[1] + "\n", "<stdin>" + bad_line, 1,
               stdin=batch)
    expect("batch.file-name", ["parse", "--file", requests], WB + "\n" + two.split("\n")[1] + "\n",
           requests + bad_line, 1)
    expect("batch.json", ["parse", "--json", "--file", requests], [
        report(input="-k src -v wb", line=1, request=WB.strip("\n")),
        report(input="-k src -v wb -x", line=5, error="Invalid option: -x", errorStart=13, errorLength=2,
               suggestions=["-f", "-k", "-v"]),
        report(input="-k svc -v pkt", line=6, request=" -k svc acc=replace -v pkt acc=rate "),
    ], requests + ":5:14: error: Invalid option: -x\n", 1)
    expect("batch.empty-input", ["names"], "", stdin="")
    # Every input line can be matched to its output: -n numbers the lines of
    # a result, check gives a verdict for each request, and the lists of
    # several requests are set apart.
    expect("batch.numbered", ["parse", "-n"], "1:" + WB + "6:" + two.split("\n")[1] + "\n", "<stdin>" + bad_line, 1,
           stdin=batch)
    expect("batch.check-every-line", ["check", "--line-number", "--file", requests],
           "1:valid; minimal peer: 1\n5:error: Invalid option: -x\n6:valid; minimal peer: 1\n", requests + bad_line, 1)
    expect("batch.unplaced", ["parse"], "\n", "<stdin>:1: error: Not a valid argument for type\n",
           1, stdin="-k telNumber -v wb\n")
    LEGACY = "-g topsrc -y b\n# skipped\n\n-g bogus\n-g topdst -y c\n"
    expect("batch.convert-line-per-line", ["convert"],
           " -k src acc=replace -v wb acc=rate -s top \n\n -k dst acc=replace -v conn acc=new -s top \n",
           "<stdin>:4:4: error: Invalid key type\n" + caret("-g bogus", 3, 5), 1, stdin=LEGACY)
    # The lists of several requests are set apart by an empty line between
    # two that are not empty; with -n every line carries its number instead.
    NAMED = "-k src -v wb\n-f src gw1\n-k dst web1\n"
    expect("batch.names-apart", ["names"], "gw1\n\nweb1\n", stdin=NAMED)
    expect("batch.names-numbered", ["names", "-n"], "2:gw1\n3:web1\n", stdin=NAMED)
    expect("batch.columns-numbered", ["columns", "-n"], "1:23  STR_1                 key    src\n"
           "2:23  STR_1                 key    svc\n", stdin="-k src\n-k svc\n")
    expect("batch.explain-apart", ["explain"], "vl request\n  name: a\n  data type: wire\n" + "".join(
        "peer %d: invalid: %s\n" % (peer, NO_TEXT % peer) for peer in (1, 2)) + "peer 3: valid\n\nvl request\n"
           "  name: b\n  data type: wire\n" + "".join(
        "peer %d: invalid: %s\n" % (peer, NO_TEXT % peer) for peer in (1, 2)) + "peer 3: valid\n",
           stdin="vl a\nvl b\n")
    expect("batch.file-twice", ["parse", "--file", requests, "--file", requests], "",
           usage("--file is taken once: give one file (cat several into standard input)", "parse"), 2)
    expect("batch.request-and-file", ["parse", "--file", requests, "-k src -v wb"], "",
           "lytreq: give either a request or --file, not both\n", 2)

# --- keywords, demo, usage and help -----------------------------------------
code, out, err = run(["keywords"])
text_out = out
code_json, out, err_json = run(["keywords", "--json"])
keywords = json.loads(out) if code_json == 0 else {}
check("keywords.status", code == 0 and err == "" and code_json == 0 and err_json == "")
# The text lists the words of the JSON in the same order, each with its meaning
# and its direction mark, the meanings of a section in one column.
sections = []
for line in text_out.splitlines():
    if line.startswith("  "):
        sections[-1][1].append(line)
    else:
        sections.append((line, []))
CATALOGUES = ["networkColumns", "vlColumns"]
check("keywords.sections", len(sections) == len(keywords) and list(keywords)[-2:] == CATALOGUES)
for (heading, lines), key in zip(sections, [k for k in keywords if k not in CATALOGUES]):
    words = keywords[key]
    marks = lambda w: " (read only)" if not w["written"] else " (written only)" if not w["read"] else ""
    width = max(len(w["text"]) for w in words) + 2
    check("keywords.text." + key, heading.endswith(":") and
          lines == ["  " + w["text"].ljust(width) + w["meaning"] + marks(w) for w in words], repr(lines))
# What scripts rely on, one word per field.
for key, text, fields in [
        ("valueTypes", "wb", {"code": 12, "kovaType": 30, "peers": [1, 2, 3]}),
        ("valueTypes", "telNumber", {"code": 8, "peers": [3], "written": False, "places": ["key"]}),
        ("options", "-f", {"code": None}),
        ("legacyOptions", "-y", {"peers": [1, 2], "takes": "legacyValues"}),
        ("legacyOptions", "-filter", {"read": False})]:
    found = [w for w in keywords.get(key, []) if w.get("text") == text]
    check("keywords.json.%s.%s" % (key, text), len(found) == 1 and all(found[0].get(f) == v for f, v in fields.items()),
          repr(found))
check("keywords.catalogues", "   1  time                            16 time" in text_out.splitlines()
      and len(keywords.get("networkColumns", [])) == 28 and len(keywords.get("vlColumns", [])) == 15)
code, out, err = run(["demo"])
check("demo", code == 0 and err == "" and "lytreq: Sort type expected\n" + caret("-k svc -v wb -s", 15, 0) in out
      and out.endswith(text_out[:len(out.split(" | head -n 12\n")[-1])]), out)
code, out, err = run(["demo", "--json"])
check("demo.json", code == 0 and len(out.splitlines()) > 10 and all("input" in json.loads(l) for l in out.splitlines()))
SUBCOMMANDS = "Subcommands: parse check explain convert columns names resolve keywords demo completion\n"
for name, args, message, command, hints in [
        ("no-subcommand", [], "a subcommand is required", "", SUBCOMMANDS),
        ("unknown-subcommand", ["bogus"], "unknown subcommand: bogus", "", SUBCOMMANDS),
        ("help-word", ["help"], "unknown subcommand: help", "", "Did you mean: --help\n" + SUBCOMMANDS),
        ("subcommand-case", ["Parse", "-k src"], "unknown subcommand: Parse", "", "Did you mean: parse\n" + SUBCOMMANDS),
        ("unknown-option", ["parse", "--jsn", "-k src -v wb"], "unknown option: --jsn", "parse", "Did you mean: --json\n"),
        ("other-subcommand-option", ["parse", "-k", "src", "-v", "wb", "--map", "x"], "parse takes no --map (resolve does)",
         "parse", ""),
        ("keywords-peer", ["keywords", "--peer", "2"], "keywords takes no --peer (parse, check, convert, columns do)",
         "keywords", ""),
        ("peer-not-a-number", ["check", "--peer", "two", "-k src"], "--peer: two is not a number nor all", "check", ""),
        ("parse-peer-all", ["parse", "--peer", "all", "-k src"], "--peer: all is not a number", "parse", ""),
        ("parse-peer0", ["parse", "--json", "--peer", "0", "-k src -v wb"], "--peer: Value 0 not in range 1 to 3",
         "parse", ""),
        ("negative-peer", ["check", "--peer", "-1", "-k src -v wb"], "--peer: Value -1 not in range 0 to 3", "check", ""),
        ("keywords-extra", ["keywords", "-k src"], "keywords takes no request, not: -k src", "keywords", ""),
        ("completion-shell", ["completion"], "completion needs its SHELL", "completion", "")]:
    expect("usage." + name, args, "", usage(message, command, hints), 2)
expect("usage.global-before-subcommand", ["--json", "parse", "vl", "x"],
       [report(input="vl x", request="vl x -t wire")])
# On a terminal, a subcommand waiting for requests says so (Ctrl-D ends the input).
master, slave = pty.openpty()
proc = subprocess.Popen([TOOL, "check"], stdin=slave, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
os.close(slave)
os.write(master, b"\x04")
out, err = proc.communicate(timeout=60)
os.close(master)
check("terminal-input", (proc.returncode, out, err) ==
      (0, "", "lytreq: reading requests from standard input, one per line (end with Ctrl-D)\n"), err)
with open("/dev/full", "w") as full:
    code, out, err = run(["parse", "-k src -v wb"], stdout=full)
check("write-failure", code == 2 and err == "lytreq: cannot write standard output: No space left on device\n", err)
for sub in ["parse", "check", "explain", "convert", "columns", "names", "resolve", "keywords", "demo", "completion"]:
    code, out, err = run([sub, "--help"])
    check("help." + sub, code == 0 and err == "" and ("Usage: lytreq " + sub) in out and "Examples:" in out, out)
code, out, err = run(["--version"])
check("version", code == 0 and out.startswith("lytreq "), out)

print("%d passed, %d failed" % (results.count(True), results.count(False)))
sys.exit(0 if all(results) else 1)
