"""What the tests compare with: the lytreq tool built from the same tree,
which reads requests through the C++ library (LFP_LYTREQ names it)."""

import json
import os
import pathlib
import subprocess
from typing import Any, Dict, List, Mapping

import pytest

import lytfilterparser as lfp

LYTREQ = os.environ.get("LFP_LYTREQ", "lytreq")


def lytreq(args: List[str], texts: List[str]) -> Dict[str, Any]:
    """lytreq's JSON report of every text, run as one batch: {text: report}.
    Batch input skips blank lines and lines starting with "#": no such text
    may be given."""
    assert all(t.strip() and not t.startswith("#") and "\n" not in t for t in texts)
    proc = subprocess.run([LYTREQ] + args + ["--json"], input="\n".join(texts) + "\n",
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert proc.returncode in (0, 1), proc.stderr
    reports: Dict[str, Any] = {}
    for line in proc.stdout.splitlines():
        report = json.loads(line)
        reports[texts[report["line"] - 1]] = report
    assert len(reports) == len(set(texts))
    return reports


def write_map(path: pathlib.Path, mapping: Mapping[str, str]) -> str:
    """`mapping` as a map file for lytreq resolve at `path`."""
    path.write_text("".join("%s %s\n" % item for item in mapping.items()))
    return str(path)


@pytest.fixture(scope="session")
def source_dir() -> str:
    return os.environ["LFP_SOURCE_DIR"]


def network(text: str) -> lfp.NetworkRequest:
    """The network request of `text`, which must be one."""
    request = lfp.parse(text)
    assert isinstance(request, lfp.NetworkRequest), text
    return request


def request_of(text: str) -> lfp.Request:
    """The request of `text`, which must have one."""
    request = lfp.parse(text)
    assert request is not None, text
    return request
