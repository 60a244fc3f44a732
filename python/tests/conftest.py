"""What the tests compare with: the lytreq tool built from the same tree,
which reads requests through the C++ library (LFP_LYTREQ names it)."""

import json
import os
import subprocess

import pytest

LYTREQ = os.environ.get("LFP_LYTREQ", "lytreq")


def lytreq(args, texts):
    """lytreq's JSON report of every text, run as one batch: {text: report}.
    Batch input skips blank lines and lines starting with "#": no such text
    may be given."""
    assert all(t.strip() and not t.startswith("#") and "\n" not in t for t in texts)
    proc = subprocess.run([LYTREQ] + args + ["--json"], input="\n".join(texts) + "\n",
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert proc.returncode in (0, 1), proc.stderr
    reports = {}
    for line in proc.stdout.splitlines():
        report = json.loads(line)
        reports[texts[report["line"] - 1]] = report
    assert len(reports) == len(set(texts))
    return reports


def write_map(path, mapping):
    """`mapping` as a map file for lytreq resolve at `path`."""
    path.write_text("".join("%s %s\n" % item for item in mapping.items()))
    return str(path)


@pytest.fixture(scope="session")
def source_dir():
    return os.environ["LFP_SOURCE_DIR"]
