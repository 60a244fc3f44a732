"""Requests as Python objects (equality, hashing, pickling, copies, reprs)
and the arguments the binding takes: the peers lytreq serves for the same
operation, the resolved names lytreq's map file takes, files of requests
read as lytreq reads them."""

import copy
import pickle
import subprocess
from typing import Any, Callable, List, Tuple, Union

import pytest

import lytfilterparser as lfp
from conftest import LYTREQ, write_map
from test_requests import LEGACY, NETWORK, VIRTUAL_LINK

REQUESTS = NETWORK + VIRTUAL_LINK
UNWRITABLE = "-k telNumber -v wb"  # the library has no text for a telNumber key


def outcome(call: Callable[[], Any]) -> Tuple[str, Any]:
    try:
        return ("value", call())
    except lfp.RequestError as error:
        return ("raised", error.message)


def parsed(text: str) -> Any:
    request = lfp.parse(text)
    assert request is not None
    return request


@pytest.mark.parametrize("text", REQUESTS + [UNWRITABLE])
def test_equal_by_model_and_not_hashable(text: str) -> None:
    request = parsed(text)
    assert request == parsed(text) and not request != parsed(text)
    assert request != request.model() and request.model() == parsed(text).model()
    with pytest.raises(TypeError):
        hash(request)
    for other in REQUESTS:
        if other != text:
            assert (parsed(other) == request) == (parsed(other).model() == request.model())


def test_requests_change_in_place() -> None:
    request = parsed(NETWORK[0])
    before = parsed(NETWORK[0])
    request.check(1)  # completes the request: conn counts concurrent connections
    assert request != before and request == lfp.build(request.model())


@pytest.mark.parametrize("text", REQUESTS + [UNWRITABLE])
def test_pickle_and_copies_keep_the_model(text: str) -> None:
    request = parsed(text)
    for other in (pickle.loads(pickle.dumps(request)), copy.copy(request), copy.deepcopy(request), request.copy()):
        assert type(other) is type(request) and other == request and other is not request
        assert outcome(other.dump) == outcome(request.dump)
    assert pickle.loads(pickle.dumps(request.model())) == request.model()


@pytest.mark.parametrize("text", REQUESTS + [UNWRITABLE])
def test_repr_and_str_never_raise(text: str) -> None:
    request = parsed(text)
    kind, written = outcome(request.dump)
    name = type(request).__name__
    if kind == "value":
        assert repr(request) == "<lytfilterparser.%s %r>" % (name, written) and str(request) == written
    else:
        assert repr(request) == "<lytfilterparser.%s (not written: %s)>" % (name, written) == str(request)
    assert repr([request]) == "[%s]" % repr(request)


def described(name: str, value: Any) -> bool:
    """Whether `value` has a docstring that says more than its signature."""
    doc = (value.__doc__ or "").strip()
    if doc.startswith(name + "("):
        doc = doc.partition("\n\n")[2]
    return bool(doc)


def test_public_names_have_docstrings() -> None:
    for name in lfp.__all__:
        value = getattr(lfp, name)
        if getattr(value, "__origin__", None) is Union:  # Model, Node: aliases of types
            continue
        if callable(value) or isinstance(value, type):
            assert described(name, value), name
    for cls in (lfp.Request, lfp.NetworkRequest, lfp.E2ERequest):
        for member, value in vars(cls).items():
            if not member.startswith("_") and (callable(value) or isinstance(value, property)):
                assert described(member, value), (cls, member)


def lytreq_serves(command: str, peer: int) -> bool:
    """Whether lytreq takes --peer `peer` for `command` (a usage error is exit 2)."""
    proc = subprocess.run([LYTREQ, command, "--peer", str(peer), "-k src -v wb" if command != "convert" else
                           LEGACY[0]], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return proc.returncode != 2


PEER_CALLS: List[Tuple[str, str, Callable[[int], Any]]] = [
    ("parse", "dump", lambda peer: parsed(NETWORK[0]).dump(peer)),
    ("parse", "dump of a link", lambda peer: parsed(VIRTUAL_LINK[0]).dump(peer)),
    ("parse", "fidelity", lambda peer: parsed(NETWORK[0]).fidelity(peer)),
    ("check", "check", lambda peer: parsed(NETWORK[0]).check(peer)),
    ("check", "validate", lambda peer: parsed(NETWORK[1]).validate(peer)),
    ("columns", "columns", lambda peer: parsed(NETWORK[0]).columns(peer)),
    ("convert", "convert", lambda peer: lfp.convert(LEGACY[0], peer)),
    ("convert", "convert_with_diagnostics", lambda peer: lfp.convert_with_diagnostics(LEGACY[0], peer)),
]


@pytest.mark.parametrize("command, name, call", PEER_CALLS, ids=[c[1] for c in PEER_CALLS])
def test_peers_as_lytreq_serves_them(command: str, name: str, call: Callable[[int], Any]) -> None:
    for peer in range(-1, 6):
        if lytreq_serves(command, peer):
            try:
                call(peer)
            except lfp.RequestError:
                pass  # the library's verdict for the peer
        else:
            with pytest.raises(ValueError, match="^peer must be "):
                call(peer)


@pytest.mark.parametrize("resolved, carried", [
    ("10.0.0.1", True), ("host-one.example", True), ("", True), ("a<>b", True), ("é", True),
    ("a\tb", True), ("a -v pkt", False), ("x]", False), ("[x", False), (" a", False),
])
def test_resolve_takes_what_lytreq_takes(tmp_path: Any, resolved: str, carried: bool) -> None:
    text = "-k src gw1 -v wb"
    request = parsed(text)
    proc = subprocess.run([LYTREQ, "resolve", "--map", write_map(tmp_path / "names.map", {"gw1": "x"}), text],
                          stdout=subprocess.PIPE, text=True)
    assert proc.returncode == 0
    if "\t" not in resolved and " " not in resolved and resolved:  # what a map file can hold
        path = tmp_path / "asked.map"
        path.write_text("gw1 %s\n" % resolved)
        proc = subprocess.run([LYTREQ, "resolve", "--map", str(path), text], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True)
        assert (proc.returncode == 0) == carried, proc.stderr
    if carried:
        request.resolve({"gw1": resolved})
        assert request.model().keys[0].names == (lfp.Name("gw1", resolved),)
        assert parsed(request.dump()) == request
    else:
        with pytest.raises(ValueError, match="cannot be carried"):
            request.resolve({"gw1": resolved})
        assert request == parsed(text)  # nothing set


def test_resolve_arguments() -> None:
    request = parsed("-f src web1 -k src db1 -v wb")
    with pytest.raises(lfp.RequestError, match="for: db1$"):
        request.resolve({"web1": "a"})
    with pytest.raises(TypeError):
        request.resolve({"web1": "a", "db1": 7})
    assert request == parsed("-f src web1 -k src db1 -v wb")


FILE = (b"\xef\xbb\xbf-k src -v wb\r\n\n  # a comment\n-k src\xff -v wb\n-q\n\t\n"
        b"-f src a\xffb -k svc -v wb\n#\n-k svc -v wb")


def lytreq_file(path: str) -> List[Tuple[int, str, str]]:
    """(line, "request" or "error", text) of lytreq parse --file; lytreq
    writes bytes that are no UTF-8 as U+FFFD."""
    import json
    proc = subprocess.run([LYTREQ, "parse", "--file", path, "--json"], stdout=subprocess.PIPE, check=False)
    reports = [json.loads(line) for line in proc.stdout.decode().splitlines()]
    return [(r["line"], "request" if "request" in r else "error", r.get("request", r.get("error"))) for r in reports]


def as_lytreq_writes(text: str) -> str:
    return text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


@pytest.mark.parametrize("opened", ["path", "binary", "text"])
def test_read_requests_as_lytreq_reads_a_file(tmp_path: Any, opened: str) -> None:
    path = tmp_path / "requests.txt"
    path.write_bytes(FILE)
    expected = lytreq_file(str(path))
    if opened == "path":
        lines = list(lfp.read_requests(str(path)))
    elif opened == "binary":
        with open(path, "rb") as binary:
            lines = list(lfp.read_requests(binary))
    else:
        with open(path, encoding="utf-8", errors="surrogateescape", newline="") as text:
            lines = list(lfp.read_requests(text))
    got = [(n, "error", as_lytreq_writes(r.message)) if isinstance(r, lfp.RequestError)
           else (n, "request", as_lytreq_writes(r.dump())) for n, r in lines]
    assert got == expected and len(got) == 5
    assert lines[3][1].model().filter.children[0].names[0].name == "a\udcffb"  # type: ignore[union-attr]


def test_places_in_texts_with_bytes_that_are_no_utf8(tmp_path: Any) -> None:
    """A refusal's place counts the characters of the str the bytes decode
    to with "surrogateescape", where every byte of an ill-formed sequence is
    one character; lytreq places it in bytes of the input it holds, where
    every such byte is one U+FFFD."""
    import random
    r = random.Random(5)
    pieces = [b"\x80", b"\xbf", b"\xc2", b"\xc3\xa9", b"\xe2\x82", b"\xe2\x82\xac", b"\xed\xa0\x80", b"\xe0\x80\x80",
              b"\xf0\x9f\x98\x80", b"\xf0\x9f\x98", b"\xf4\x90\x80\x80", b"\xff", b"a", b"-"]
    lines = [b"-k src\x80 -v wb", b"-k \xe2\x82 src -v wb acc=x"] + \
        [b"-k " + b"".join(r.choice(pieces) for _ in range(r.randint(1, 6))) + b" -v wb " +
         r.choice([b"", b"acc=x", b"acc=r\xe2\x82"]) for _ in range(300)]
    path = tmp_path / "bytes.txt"
    path.write_bytes(b"\n".join(lines) + b"\n")
    import json
    proc = subprocess.run([LYTREQ, "parse", "--file", str(path), "--json"], stdout=subprocess.PIPE)
    reports = {json.loads(line)["line"]: json.loads(line) for line in proc.stdout.decode().splitlines()}
    compared = 0
    for number, read in lfp.read_requests(str(path)):
        report = reports[number]
        raw = lines[number - 1]
        if not isinstance(read, lfp.RequestError):
            assert "request" in report
            continue
        start, end = report["errorStart"], report["errorStart"] + report["errorLength"]
        held = report["input"].encode()
        assert len(held.decode()) == len(raw.decode("utf-8", "surrogateescape")), raw
        assert (read.start, read.length) == (len(held[:start].decode()), len(held[start:end].decode())), raw
        compared += 1
    assert compared > 200


@pytest.mark.parametrize("text, noted", [
    ("-k src -v wb\n", True), ("-k src -v wb\r\n", True), ("-k src -v wb\r", True), ("-k src -v wbx", False),
    ("-k src\n-v wb", False),
])
def test_a_line_end_is_noted(text: str, noted: bool) -> None:
    with pytest.raises(lfp.RequestError) as raised:
        lfp.parse(text)
    notes = getattr(raised.value, "__notes__", [])
    assert bool(notes) == noted and all("line end" in note for note in notes)
    assert str(raised.value) == raised.value.message  # the message stays the library's
