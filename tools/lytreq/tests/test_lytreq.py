#!/usr/bin/env python3
"""Runs the built lytreq over its subcommands and compares what it prints
with the exact text expected: standard output, standard error and the exit
status of every call.

Usage: test_lytreq.py PATH-TO-LYTREQ
"""
import json
import os
import subprocess
import sys
import tempfile

TOOL = sys.argv[1] if len(sys.argv) > 1 else "lytreq"

passed = 0
failed = []


def run(args, stdin=None, cwd=None):
    proc = subprocess.run([TOOL] + args, input=stdin, capture_output=True, text=True, cwd=cwd)
    return proc.returncode, proc.stdout, proc.stderr


def record(name, args, problems, err, stderr, code, status):
    """Adds the stderr and exit-status checks, then counts the call as passed or failed."""
    global passed
    if err != stderr:
        problems.append("stderr:\n  expected %r\n  actual   %r" % (stderr, err))
    if code != status:
        problems.append("exit status: expected %d, actual %d" % (status, code))
    if problems:
        failed.append(name)
        print("FAIL %s: lytreq %s\n%s" % (name, " ".join(args), "\n".join(problems)))
    else:
        passed += 1


def expect(name, args, stdout="", stderr="", status=0, stdin=None, cwd=None):
    """The call must print exactly `stdout` and `stderr` and exit with `status`."""
    code, out, err = run(args, stdin, cwd)
    problems = []
    if out != stdout:
        problems.append("stdout:\n  expected %r\n  actual   %r" % (stdout, out))
    record(name, args, problems, err, stderr, code, status)


def expect_json(name, args, objects, status=0, stdin=None, stderr=""):
    """The call must print one JSON object per line, equal to `objects`."""
    code, out, err = run(args, stdin)
    problems = []
    try:
        actual = [json.loads(line) for line in out.splitlines()]
    except ValueError as error:
        actual = None
        problems.append("not JSON lines (%s): %r" % (error, out))
    if actual is not None and actual != objects:
        problems.append("objects:\n  expected %r\n  actual   %r" % (objects, actual))
    record(name, args, problems, err, stderr, code, status)


def expect_true(name, condition, detail=""):
    global passed
    if condition:
        passed += 1
    else:
        failed.append(name)
        print("FAIL %s %s" % (name, detail))


def caret(text, start, length):
    """What lytreq writes to standard error under a rejected request."""
    return "  %s\n  %s^%s\n" % (text, " " * start, "~" * max(length - 1, 0))


# --- parse -----------------------------------------------------------------
REQ = "-f src 10.0.0.1 -k svc -v wb acc=rate -s top"
expect("parse.text", ["parse", REQ], "-f src  10.0.0.1    -k svc acc=replace -v wb acc=rate -s top \n")
expect("parse.compound",
       ["parse", "-f or [ -f src 10.0.0.1 -f dst 10.0.0.2 ] -k svc -v pkt -v wb sort=bottom"],
       "-f or [ -f src  10.0.0.1   -f dst  10.0.0.2   ] -k svc acc=replace -v pkt acc=rate "
       "-v wb acc=rate -s bottom index=2 \n")
expect("parse.peer2", ["parse", "--peer", "2", "-f src 10.0.0.1 -k src -v conn acc=new"],
       "-filter [ and [[src 0 [10.0.0.1 ]]]] -a a -y c -g topsrc \n")
expect("parse.peer0", ["parse", "--peer", "0", "-k src -v wb"], "4.1 and under is not supported\n")
expect("parse.peer3", ["parse", "--peer=3", "-k src -v wb"], " -k src acc=replace -v wb acc=rate \n")
expect("parse.vl", ["parse", "vl link7 -t application"], "vl link7 -t application\n")
expect("parse.vl.peer1", ["parse", "--peer", "1", "vl link7"], "\n")
expect("parse.words-after-separator", ["parse", "--", "-k", "src", "-v", "wb"],
       " -k src acc=replace -v wb acc=rate \n")
expect("parse.unquoted-words", ["parse", "-k", "src", "-v", "wb", "--peer", "1"],
       "-filter [ and []] -a a -y b -g topsrc \n")
expect("parse.mixed-words", ["parse", "vl", "link7", "-t", "app", "--json"], '{"input":"vl link7 -t app","request":"vl link7 -t application"}\n')
expect("parse.option-after-request", ["parse", "-k src -v wb", "--peer", "1"],
       "-filter [ and []] -a a -y b -g topsrc \n")
expect("parse.write-fault", ["parse", "-k telNumber -v wb"], "", "lytreq: Not a valid argument for type\n", 1)
expect("parse.empty", ["parse", "   "], "", "lytreq: empty request\n", 1)
expect_json("parse.json", ["parse", "--json", REQ],
            [{"input": REQ, "request": "-f src  10.0.0.1    -k svc acc=replace -v wb acc=rate -s top "}])
code, out, _ = run(["parse", "--json", REQ])
expect_true("parse.json.field-order", out.startswith('{"input":'), out)

# --- carets: where reading stopped -----------------------------------------
FAULTS = [
    # (name, request, message, start, length)
    ("invalid-option", "-f src 10.0.0.1 -x -k svc -v wb", "Invalid option: -x", 16, 2),
    ("invalid-type-in-filter", "-f srcip 10.0.0.1 -k svc -v wb", "Invalid type: srcip", 3, 5),
    ("invalid-type-in-column", "-f src 10.0.0.1 -k bar -v wb", "Invalid type: bar", 19, 3),
    ("bracket-expected-instead", "-f and [ -f src 10.0.0.1 -k svc -v wb", "`]` expected instead of: -k", 25, 2),
    ("bracket-expected-at-end", "-f src 1 -f or [ -f dst 2", "`]` expected", 25, 0),
    ("sort-type-at-end", "-k svc -v wb -s", "Sort type expected", 15, 0),
    ("invalid-sort-type", "-k svc -v wb -s up", "Invalid sort type: up", 16, 2),
    ("invalid-sort-option", "-k svc -v wb -s top foo", "Invalid option: foo", 20, 3),
    ("invalid-acc", "-k svc -v wb acc=rates", "Invalid accumulation mode: acc=rates", 13, 9),
    ("column-option", "-k svc -v wb dir=up", "Unexpected type of direction", 13, 6),
    ("type-at-end", "-k svc -v", "Expected type at this point but there is no data", 9, 0),
    ("stray-bracket", "-f and [ -f src 1 ]]", "Invalid option: ]", 19, 1),
    # The "]" the filter wrapping inserted has no place: the next token of the text is marked.
    ("inserted-bracket", "-f src 10.0.0.1 ] -k svc", "Invalid option: ]", 18, 2),
    ("vl-no-name", "vl", "No virtual link name after vl", 2, 0),
    ("vl-no-data-type", "vl link7 -t", "No data after direction argument", 11, 0),
    ("vl-bad-data-type", "vl link7 -t both", "Not a valid argument for dataType", 12, 4),
    ("blanks-kept", "-k  svc   -v wb   -q", "Invalid option: -q", 18, 2),
]
for name, text, message, start, length in FAULTS:
    expect("caret." + name, ["parse", text], "", "lytreq: %s\n%s" % (message, caret(text, start, length)), 1)
    expect_json("caret.json." + name, ["parse", "--json", text],
                [{"input": text, "error": message, "errorStart": start, "errorLength": length}], 1)

# Offsets count characters, and the marker lines up under them.
expect("caret.utf8", ["parse", "-f src café -k é -v wb"], "",
       "lytreq: Invalid type: é\n  -f src café -k é -v wb\n                 ^\n", 1)
expect_json("caret.utf8.json", ["parse", "--json", "-f src café -k é -v wb"],
            [{"input": "-f src café -k é -v wb", "error": "Invalid type: é", "errorStart": 15, "errorLength": 1}], 1)
# A tab in the request stays a tab in the marker line.
expect("caret.tab", ["parse", "-k\tsvc -v wb -x"], "",
       "lytreq: Invalid option: -k\tsvc\n  -k\tsvc -v wb -x\n  ^~~~~~\n", 1)

# --- check -----------------------------------------------------------------
expect("check.valid", ["check", "-k src -v wb"], "valid; minimal peer: 1\n")
expect("check.valid-peer3-only", ["check", "-k src -v wb -v pkt"], "valid; minimal peer: 3\n")
expect("check.invalid-peer1", ["check", "--peer", "1", "-k src -v wb -v pkt"],
       "invalid: Support only one value column; minimal peer: 3\n", "", 1)
expect("check.invalid-everywhere", ["check", "-k url -v wb"],
       "invalid: Can't use wdAttack or url with none session value: wb; minimal peer: none\n", "", 1)
expect("check.peer0", ["check", "--peer", "0", "-k src -v wb"],
       "invalid: This version is not supported; minimal peer: 1\n", "", 1)
expect("check.no-value", ["check", "-k src"], "invalid: At least one value is required; minimal peer: none\n", "", 1)
expect("check.vl", ["check", "vl link7"], "",
       "lytreq: this is a \"vl\" (end-to-end) request: only network requests can be checked\n", 1)
expect("check.unreadable", ["check", "-k src -v wb -x"], "", "lytreq: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2), 1)
expect_json("check.json", ["check", "--json", "-k src -v wb"],
            [{"input": "-k src -v wb", "peer": 3, "valid": True, "minimalPeer": 1}])
expect_json("check.json.invalid", ["check", "--json", "--peer", "2", "-k src -v wb -v pkt"],
            [{"input": "-k src -v wb -v pkt", "peer": 2, "valid": False,
              "message": "Support only one value column", "minimalPeer": 3}], 1)
expect_json("check.json.none", ["check", "--json", "-k url -v wb"],
            [{"input": "-k url -v wb", "peer": 3, "valid": False,
              "message": "Can't use wdAttack or url with none session value: wb", "minimalPeer": None}], 1)

# --- convert ---------------------------------------------------------------
expect("convert.text", ["convert", "-g topsrc -y b"], " -k src acc=replace -v wb acc=rate -s top \n")
expect("convert.filter", ["convert", "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y c -g topdst"],
       "-f src not 10.0.0.1    -k dst acc=replace -v conn acc=new -s top \n")
expect("convert.peer1", ["convert", "--peer", "1", "-y C -g topip"],
       " -k ip acc=replace -v conn acc=concurrent -s top \n")
LEGACY_FAULTS = [
    # (name, legacy command line, message, start, length)
    ("bad-value", "-g topsrc -y z -a i", "Invalid value type", 13, 1),
    # The reader takes a value by its first letter only, and refuses the letters it only writes.
    ("value-by-first-letter", "-y bogus -y z", "Invalid value type", 12, 1),
    ("written-only-value", "-g topsrc -y l", "Invalid value type", 13, 1),
    ("group-word-as-value", "-y topsrc -g src", "Invalid value type", 3, 6),
    ("bad-key", "-y b -g fw", "Invalid key type", 8, 2),
    ("key-longer-than-word", "-y b -g topsrcx", "Invalid key type", 8, 7),
    ("key-at-end", "-y b -g", "Invalid key type", 7, 0),
    ("passed-through", "-g src 10.0.0.1 -x", "Invalid option: -x", 16, 2),
    ("open-filter", "src 0 [ a b", "Invalid filter", 11, 0),
]
for name, text, message, start, length in LEGACY_FAULTS:
    expect("convert." + name, ["convert", text], "", "lytreq: %s\n%s" % (message, caret(text, start, length)), 1)
expect("convert.bad-peer", ["convert", "--peer", "3", "-g topsrc"], "",
       "--peer: Value 3 not in range 1 to 2\nRun with --help for more information.\n", 2)
expect_json("convert.json", ["convert", "--json", "-g topsrc -y b"],
            [{"input": "-g topsrc -y b", "request": " -k src acc=replace -v wb acc=rate -s top "}])
expect_json("convert.json.fault", ["convert", "--json", "-y b -g fw"],
            [{"input": "-y b -g fw", "error": "Invalid key type", "errorStart": 8, "errorLength": 2}], 1)

# --- columns ---------------------------------------------------------------
expect("columns.text", ["columns", "-k src -k svc -v wb -v pkt"],
       "23  STR_1                 key    src\n"
       "24  STR_2                 key    svc\n"
       "17  VAL64_1               value  wb\n"
       "18  VAL64_2               value  pkt\n")
expect("columns.int32", ["columns", "-k connId -k src -v conn"],
       "11  VAL32_1               key    connId\n"
       "23  STR_1                 key    src\n"
       "17  VAL64_1               value  conn\n")
expect("columns.peer2", ["columns", "--peer", "2", "-k src -v conn acc=new"],
       " 2  EntryName             key    src\n"
       " 7  connectionPerSecond   value  conn\n")
expect("columns.peer1-no-value", ["columns", "--peer", "1", "-k src"], " 2  EntryName             key    src\n")
expect("columns.unmappable", ["columns", "-k src -k svc -k dst -k ip -k url -k url -k fwrule -v wb"], "",
       "lytreq: failed to map kova columns\n", 1)
expect("columns.vl", ["columns", "vl link7"], "",
       "lytreq: this is a \"vl\" (end-to-end) request: only network requests have query-interface columns\n", 1)
expect_json("columns.json", ["columns", "--json", "--peer", "1", "-k src -v pkt"],
            [{"input": "-k src -v pkt", "columns": [
                {"number": 2, "name": "EntryName", "role": "key", "type": "src"},
                {"number": 5, "name": "bandwithPackets", "role": "value", "type": "pkt"}]}])

# --- names -----------------------------------------------------------------
NAMES_REQ = "-f src gw1 gw2 -f svc http -k dst web1 web2 -v wb"
expect("names.text", ["names", NAMES_REQ], "gw1\ngw2\nweb1\nweb2\n")
expect("names.vl", ["names", "vl link7"], "")
expect_json("names.json", ["names", "--json", NAMES_REQ], [{"input": NAMES_REQ, "names": ["gw1", "gw2", "web1", "web2"]}])

# --- resolve ---------------------------------------------------------------
with tempfile.TemporaryDirectory() as work:
    names_map = os.path.join(work, "names.map")
    with open(names_map, "w") as f:
        f.write("# gateways\ngw1 10.0.0.1\n\ngw2   10.0.0.2\nweb1\t10.1.0.1\nweb2 10.1.0.2\n")
    expect("resolve.text", ["resolve", "--map", names_map, NAMES_REQ],
           "-f and [ -f src  gw1<>10.0.0.1 gw2<>10.0.0.2   -f svc  http   ] "
           "-k dst acc=replace web1<>10.1.0.1 web2<>10.1.0.2 -v wb acc=rate \n")
    expect("resolve.missing", ["resolve", "--map", names_map, "-f src gw1 gw9 -k svc -v wb"], "",
           "lytreq: no resolved name in the map for: gw9\n" + caret("-f src gw1 gw9 -k svc -v wb", 11, 3), 1)
    expect_json("resolve.json", ["resolve", "--json", "--map", names_map, "-f src gw1 -k svc -v wb"],
                [{"input": "-f src gw1 -k svc -v wb",
                  "request": "-f src  gw1<>10.0.0.1    -k svc acc=replace -v wb acc=rate "}])
    bad_map = os.path.join(work, "bad.map")
    with open(bad_map, "w") as f:
        f.write("gw1 10.0.0.1\ngw2\n")
    expect("resolve.bad-map", ["resolve", "--map", bad_map, "-f src gw1 -k svc -v wb"], "",
           "lytreq: %s:2: expected \"name resolved\"\n" % bad_map, 2)
    twice_map = os.path.join(work, "twice.map")
    with open(twice_map, "w") as f:
        f.write("gw1 10.0.0.1\ngw1 10.0.0.9\n")
    expect("resolve.mapped-twice", ["resolve", "--map", twice_map, "-f src gw1 -k svc -v wb"], "",
           "lytreq: %s:2: gw1 is mapped twice\n" % twice_map, 2)
    expect("resolve.no-map-file", ["resolve", "--map", os.path.join(work, "none.map"), "-k svc -v wb"], "",
           "lytreq: cannot read %s\n" % os.path.join(work, "none.map"), 2)
    expect("resolve.map-required", ["resolve", "-k svc -v wb"], "",
           "--map is required\nRun with --help for more information.\n", 2)

    # --- batch input: a bad line in the middle ------------------------------
    batch = "-k src -v wb\n\n# a comment\n  # an indented comment\n-k src -v wb -x\r\n-k svc -v pkt\n"
    expect("batch.stdin", ["parse"], " -k src acc=replace -v wb acc=rate \n -k svc acc=replace -v pkt acc=rate \n",
           "line 5: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2), 1, stdin=batch)
    expect("batch.dash", ["parse", "-"], " -k src acc=replace -v wb acc=rate \n -k svc acc=replace -v pkt acc=rate \n",
           "line 5: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2), 1, stdin=batch)
    expect("batch.file-dash", ["parse", "--file", "-"],
           " -k src acc=replace -v wb acc=rate \n -k svc acc=replace -v pkt acc=rate \n",
           "line 5: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2), 1, stdin=batch)
    requests = os.path.join(work, "requests.txt")
    with open(requests, "w") as f:
        f.write(batch)
    expect("batch.file", ["check", "--file", requests],
           "valid; minimal peer: 1\nvalid; minimal peer: 1\n",
           "line 5: Invalid option: -x\n" + caret("-k src -v wb -x", 13, 2), 1)
    expect_json("batch.json", ["parse", "--json", "--file", requests], [
        {"input": "-k src -v wb", "line": 1, "request": " -k src acc=replace -v wb acc=rate "},
        {"input": "-k src -v wb -x", "line": 5, "error": "Invalid option: -x", "errorStart": 13, "errorLength": 2},
        {"input": "-k svc -v pkt", "line": 6, "request": " -k svc acc=replace -v pkt acc=rate "},
    ], 1, stderr="line 5: Invalid option: -x\n")
    expect("batch.all-good", ["parse"], " -k src acc=replace -v wb acc=rate \nvl a -t wire\n", stdin="-k src -v wb\nvl a\n")
    expect("batch.empty-input", ["names"], "", stdin="")
    expect("batch.check-rejects", ["check"], "valid; minimal peer: 1\ninvalid: At least one value is required; minimal peer: none\n",
           "", 1, stdin="-k src -v wb\n-k src\n")
    expect("batch.request-and-file", ["parse", "--file", requests, "-k src -v wb"], "",
           "lytreq: give either a request or --file, not both\n", 2)
    expect("batch.no-file", ["parse", "--file", os.path.join(work, "none.txt")], "",
           "lytreq: cannot read %s\n" % os.path.join(work, "none.txt"), 2)

# --- keywords --------------------------------------------------------------
code, out, err = run(["keywords"])
text_out = out
expect_true("keywords.status", code == 0 and err == "", "%d %r" % (code, err))
code, out, err = run(["keywords", "--json"])
try:
    keywords = json.loads(out)
except ValueError:
    keywords = {}
expect_true("keywords.json.status", code == 0 and err == "" and len(out.splitlines()) == 1)


def text_sections(text):
    """The headed sections of `lytreq keywords`: [(heading, [line, ...]), ...]."""
    sections = []
    for line in text.splitlines():
        if line.startswith("  "):
            sections[-1][1].append(line)
        else:
            sections.append((line, []))
    return sections


# The text lists the same words, in the same order, as the JSON; each word
# with its meaning, the meanings of a section in one column.
CATALOGUES = ["networkColumns", "vlColumns"]
word_keys = [key for key in keywords if key not in CATALOGUES]
sections = text_sections(text_out)
expect_true("keywords.sections", len(sections) == len(keywords) and list(keywords)[-2:] == CATALOGUES,
            "%r %r" % ([h for h, _ in sections], list(keywords)))
for (heading, lines), key in zip(sections, word_keys):
    words = keywords[key]
    well_formed = words and all(
        isinstance(w, dict) and set(w) <= {"text", "meaning", "peers", "code", "kovaType", "read", "written", "places",
                                           "takes"} and w.get("text")
        and w.get("meaning") and w.get("peers") and w["peers"] == sorted(set(w["peers"]))
        and set(w["peers"]) <= {1, 2, 3} and w.get("code", 0) >= 0 for w in words)
    expect_true("keywords.json.fields." + key, well_formed, repr(words))
    if well_formed:
        width = max(len(w["text"]) for w in words) + 2
        marks = lambda w: " (read only)" if not w["written"] else " (written only)" if not w["read"] else ""
        expected = ["  " + w["text"].ljust(width) + w["meaning"] + marks(w) for w in words]
        expect_true("keywords.text." + key, heading.endswith(":") and lines == expected,
                    "%s\n  expected %r\n  actual   %r" % (heading, expected, lines))

# Scripts read the words by these fields: one word each, with what a script relies on.
KEYWORD_FIELDS = [
    # (field, word, fields it must have; "code": None for none)
    ("options", "-f", {"peers": [1, 2, 3], "code": None}),
    ("valueTypes", "wb", {"code": 12, "kovaType": 30, "peers": [1, 2, 3]}),
    ("valueTypes", "telNumber", {"code": 8, "kovaType": 17, "peers": [3], "written": False, "places": ["key"]}),
    ("valueTypes", "ab", {"code": 11, "peers": [3]}),
    ("filterOperators", "or", {"code": 1}),
    ("negations", "NOT", {}),
    ("brackets", "[", {"code": None}),
    ("interfaceDirections", ",out", {}),
    ("accumulationModes", "acc=lineUtil", {}),
    ("columnOptions", "url_mod=scheme_host", {}),
    ("columnSorts", "sort=bottom", {}),
    ("sortTypes", "none", {}),
    ("sortOptions", "updates=", {}),
    ("vlWords", "vl", {"code": None}),
    ("vlWords", "application", {"peers": [3]}),
    ("legacyOptions", "-y", {"peers": [1, 2], "takes": "legacyValues"}),
    ("legacyOptions", "-filter", {"read": False}),
    ("legacyGroups", "topqsrule", {}),
    ("legacyValues", "C", {}),
    ("legacyAggregation", "i", {}),
]
for key, text, fields in KEYWORD_FIELDS:
    found = [w for w in keywords.get(key, []) if isinstance(w, dict) and w.get("text") == text]
    expect_true("keywords.json.%s.%s" % (key, text),
                len(found) == 1 and all(found[0].get(f) == v for f, v in fields.items()), repr(keywords.get(key)))

for line in ["   1  time                            16 time",
             "  28  STR_6                           17 string",
             "  14  RoundTripTime                   28 int32"]:
    expect_true("keywords.has " + line.strip(), line in text_out.splitlines(), line)
expect_true("keywords.json.network", len(keywords.get("networkColumns", [])) == 28 and keywords["networkColumns"][1] ==
            {"number": 2, "name": "EntryName", "type": 17, "typeName": "string", "flag": 1})
expect_true("keywords.json.vl", len(keywords.get("vlColumns", [])) == 15 and keywords["vlColumns"][-1]["name"] == "diffFromUTC")

# --- demo ------------------------------------------------------------------
code, out, err = run(["demo"])
expect_true("demo.status", code == 0 and err == "", "%d %r" % (code, err))
for text in ["== Read a request and write it back",
             "$ lytreq parse '-f src 10.0.0.1 -k svc -v wb acc=rate -s top'\n"
             "-f src  10.0.0.1    -k svc acc=replace -v wb acc=rate -s top \n",
             "$ lytreq check --peer 1 '-k src -v wb -v pkt'\ninvalid: Support only one value column; minimal peer: 3\n",
             "lytreq: Sort type expected\n" + caret("-k svc -v wb -s", 15, 0)]:
    expect_true("demo.shows " + text.splitlines()[0], text in out, text)
code, out, err = run(["demo", "--json"])
try:
    demo_objects = [json.loads(line) for line in out.splitlines()]
except ValueError:
    demo_objects = []
expect_true("demo.json", code == 0 and len(demo_objects) > 10 and all("input" in o for o in demo_objects))

# --- usage and help --------------------------------------------------------
expect("usage.no-subcommand", [], "", "A subcommand is required\nRun with --help for more information.\n", 2)
expect("usage.peer-range", ["parse", "--peer", "7", "-k src -v wb"], "",
       "--peer: Value 7 not in range 0 to 3\nRun with --help for more information.\n", 2)
expect("usage.negative-peer", ["check", "--peer", "-1", "-k src -v wb"], "",
       "--peer: Value -1 not in range 0 to 3\nRun with --help for more information.\n", 2)
code, out, err = run(["parse", "--bogus", "-k src -v wb"])
expect_true("usage.unknown-option", code == 2 and out == "" and "--bogus" in err, "%d %r" % (code, err))
expect("usage.keywords-extra", ["keywords", "-k src"], "",
       "The following argument was not expected: -k src\nRun with --help for more information.\n", 2)
for sub in ["parse", "check", "convert", "columns", "names", "resolve", "keywords", "demo"]:
    code, out, err = run([sub, "--help"])
    expect_true("help." + sub, code == 0 and err == "" and ("Usage: lytreq " + sub) in out and "Examples:" in out
                and ("  lytreq " + sub) in out, out)
code, out, err = run(["--help"])
expect_true("help.top", code == 0 and all(s in out for s in ["parse", "check", "convert", "columns", "names",
                                                             "resolve", "keywords", "demo", "Exit status"]))
code, out, err = run(["--version"])
expect_true("version", code == 0 and out.startswith("lytreq "), out)

print("%d passed, %d failed" % (passed, len(failed)))
sys.exit(1 if failed else 0)
