"""The binding against the C++ library (through lytreq) on the same texts:
every operation gives the library's text or message, exactly."""

import json
import os
import subprocess

from pathlib import Path
from typing import Any, Callable, Dict, Optional, Tuple

import pytest

import lytfilterparser as lfp
from conftest import LYTREQ, lytreq, network, request_of, write_map

NETWORK = [
    "-f src 10.0.0.1 -k svc -v conn",
    "-f and [ -f src a b -f dst not c ] -k src -v wb acc=rate -s top",
    "-f or [ -f src 10.1.1.1 -f and [ -f dst 10.2.2.2 -f svc http https ] ] -k src -k dst -v pkt acc=sum -s bottom",
    "-f interface not eth0,in eth1,out eth2,both -k interface -v pkt acc=sum -v wb acc=rate -s top index=2",
    "-f src 10.0.0.0/8 -k src h1<>host-one h2<>host-two -k connId 1 2 -v conn acc=new",
    "-f svc http https -f src not 10.9.9.9 -k url -v session acc=new url_mod=scheme_host sort=top",
    "-k src h1 h2 h3 -k svc http smtp dns -v wb dir=in enc=yes comp=no cprint=yes -v conn acc=concurrent -s top "
    "updates=20",
    "-k src -k dst -k svc -k qsrule -k ip -v wb",   # too many keys
    "-k src -v wb -v pkt",                           # one value column only for old peers
    "-k telNumber -v session",                       # validation throws for old peers
    "-k src -v wb acc=lineUtil",
    "-f src hôte ünï -k svc 名前 -v wb",               # names beyond ASCII
    "-f src a\x00b -k svc -v wb",                    # an embedded NUL is part of a name
]
VIRTUAL_LINK = ["vl link-7 -t application", "vl backbone-01 -x 42 -t wire -y z", "vl x"]
REFUSED = [
    "-k src -v wb acc=rates", "-q src", "vl x -t q", "vl", "-f", "-f and [ -f src a", "-f src a -s topx",
    "-f src é -k qq", "-k src\x00 -v wb", "-f src a -k svc -v wb -s top index=1 x", "-k src -v",
]
TEXTS = NETWORK + VIRTUAL_LINK + REFUSED


def attempt(call: Callable[[str], Any], text: str) -> Tuple[Any, Optional[Tuple[str, Optional[int], Optional[int]]]]:
    """(result, None) or (None, (message, start, length)) of call(text)."""
    try:
        return call(text), None
    except lfp.RequestError as error:
        assert str(error) == error.message
        return None, (error.message, error.start, error.length)


def reported(report: Dict[str, Any], result: str, text: str
             ) -> Tuple[Any, Optional[Tuple[str, Optional[int], Optional[int]]]]:
    """What attempt() gives when the binding does what lytreq reports; lytreq
    places faults in bytes, the binding in characters of the str."""
    if "error" not in report:
        return report[result], None
    if "errorStart" not in report:
        return None, (report["error"], None, None)
    data = text.encode()
    start, end = report["errorStart"], report["errorStart"] + report["errorLength"]
    return None, (report["error"], len(data[:start].decode()), len(data[start:end].decode()))


def outcome(call: Callable[[], Any]) -> Any:
    """What `call` returns, or the message it raises."""
    try:
        return call()
    except lfp.RequestError as error:
        assert error.start is None and error.length is None
        return ("raised", error.message)


def written(peer: Optional[int]) -> Callable[[str], str]:
    """parse, then as lytreq parse --peer: validate for the peer, refuse what
    the peer has no text for, then dump."""
    def call(text: str) -> str:
        request = request_of(text)
        if peer is not None and isinstance(request, lfp.NetworkRequest):
            request.validate(peer)
        for lost in request.fidelity(peer) if peer is not None else ():
            if lost.code == "peer-unsupported":
                raise lfp.RequestError(lost.message, lost.start, lost.length)
        return request.dump(peer)
    return call


@pytest.mark.parametrize("peer", [None, 1, 2, 3])
def test_parse_and_dump(peer: Optional[int]) -> None:
    reports = lytreq(["parse"] + ([] if peer is None else ["--peer", str(peer)]), TEXTS)
    for text in TEXTS:
        assert attempt(written(peer), text) == reported(reports[text], "request", text), text
    assert all(isinstance(lfp.parse(text), lfp.E2ERequest) for text in VIRTUAL_LINK)


@pytest.mark.parametrize("peer", [1, 2, 3])
def test_check(peer: int) -> None:
    reports = lytreq(["check", "--peer", str(peer)], NETWORK)
    for text in NETWORK:
        report = reports[text]
        result = outcome(lambda: network(text).check(peer))
        if result[0] == "raised":  # lytreq reports a thrown message as the verdict's
            assert (False, result[1]) == (report["valid"], report["message"]), text
        else:
            assert result == (report["valid"], report.get("message", "")), text
        minimal = outcome(network(text).minimal_peer)
        # lytreq asks peer by peer where the library's own answer throws.
        assert minimal == report["minimalPeer"] or isinstance(minimal, tuple), text


def test_check_completes_the_request_in_place() -> None:
    request = network(NETWORK[0])
    before = request.dump()
    copy = request.copy()
    assert request.check(1)[0]
    assert request.dump() == lytreq(["parse"], [request.dump()])[request.dump()]["request"]
    assert request.dump() != before and copy.dump() == before


@pytest.mark.parametrize("peer", [1, 2, 3])
def test_columns_and_names(peer: int) -> None:
    columns = lytreq(["columns", "--peer", str(peer)], NETWORK)
    names = lytreq(["names"], NETWORK + VIRTUAL_LINK)
    for text in NETWORK:
        numbers = outcome(lambda: network(text).columns(peer))
        report = columns[text]
        expected = [c["number"] for c in report["columns"]] if "columns" in report else ("raised", report["error"])
        assert numbers == expected, text
    for text in NETWORK + VIRTUAL_LINK:
        assert request_of(text).module_names() == names[text]["names"], text


def test_resolve(tmp_path: Path) -> None:
    texts = [t for t in NETWORK + VIRTUAL_LINK if "\x00" not in t]
    names = {n for t in texts for n in request_of(t).module_names()}
    mapping = {name: "r-%d" % i for i, name in enumerate(sorted(names))}
    reports = lytreq(["resolve", "--map", write_map(tmp_path / "names.map", mapping)], texts)
    for text in texts:
        request = request_of(text)
        request.resolve(mapping)
        report = reports[text]
        assert outcome(request.dump) == report.get("request", ("raised", report.get("error"))), text
    request = request_of(NETWORK[4])
    with pytest.raises(lfp.RequestError, match="h2$"):
        request.resolve({"10.0.0.0/8": "a", "h1": "b"})
    assert request.dump() == request_of(NETWORK[4]).dump()  # nothing set


LEGACY = [
    "-g topsrc -y c src 1 [ 10.0.0.1 ]",
    "-filter [ and [[interface 0 [[eth0 in][eth1 out]]]]] -a i -y C -g topfw",
    "-g topqsrule -y C dst 0 [ a b ] svc 1 [ http ]",
    "-y b -g src h1 h2 h3",
    "-g topfoo -y b", "-g topsrc -y q", "-g", "-g topsrc -y b [[src 1 [ a", "-g topsrc -y b garbage é",
]


@pytest.mark.parametrize("peer", [1, 2])
def test_convert(peer: int) -> None:
    reports = lytreq(["convert", "--peer", str(peer)], LEGACY)
    for text in LEGACY:
        assert attempt(lambda line: lfp.convert(line, peer), text) == reported(reports[text], "request", text), text


def test_text_without_words() -> None:
    for text in ["", "   "]:
        assert lfp.parse(text) is None
        assert lfp.convert(text) == ""
        assert lfp.tokenize(text) == []


@pytest.mark.parametrize("text", TEXTS + LEGACY + [" [x]]y [ "])
def test_tokenize(text: str) -> None:
    tokens = lfp.tokenize(text)
    assert "".join(tokens) == text.replace(" ", "")
    assert all(t and " " not in t and (t in "[]" or not set(t) & set("[]")) for t in tokens)


def test_vocabulary_and_version() -> None:
    keywords = json.loads(subprocess.run([LYTREQ, "keywords", "--json"], stdout=subprocess.PIPE, check=True).stdout)
    groups = list(keywords.values())[:len(lfp.WordKind.__members__)]  # one group per kind, in order
    words = lfp.vocabulary()
    assert [(w.kind.value, w.text, w.meaning, sorted(w.peers), w.readable, w.written) for w in words] == \
        [(kind, g["text"], g["meaning"], g["peers"], g["read"], g["written"])
         for kind, group in enumerate(groups) for g in group]
    assert lfp.find_words("src") == tuple(w for w in words if w.text == "src") and len(lfp.find_words("src")) == 2
    version = subprocess.run([LYTREQ, "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    assert lfp.__version__ == os.environ["LFP_VERSION"] and lfp.__version__ in version
