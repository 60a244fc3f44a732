"""Diagnostics and refusals from Python: the library's findings with their
places in characters of the str they are about (every text here has a
character of several bytes before the place), and the words it suggests."""

import os
import re
from typing import Any, Callable, List, Optional, Sequence, Tuple, Union

import pytest

import lytfilterparser as lfp
from conftest import network, request_of

SEVERITY = {c.code: c.severity for c in lfp.diagnostic_codes()}


def found(text: str, diagnostics: Sequence[lfp.Diagnostic]) -> List[Tuple[str, int, str]]:
    """(code, start, the characters at the place) of each diagnostic, with
    the severity its code has."""
    assert all(d.severity == SEVERITY[d.code] for d in diagnostics)
    return [(d.code, d.start, text[d.start:d.start + d.length]) for d in diagnostics]


def refusal(call: Callable[[], Any], text: str) -> Tuple[str, Optional[str], List[str]]:
    """(message, the characters at the place, suggestions) of the RequestError `call` raises."""
    with pytest.raises(lfp.RequestError) as raised:
        call()
    error = raised.value
    place = None if error.start is None or error.length is None else text[error.start:error.start + error.length]
    return error.message, place, error.suggestions


@pytest.mark.parametrize("text, expected", [
    ("-f src 名前 名前 -k svc -v wb", [("entity-duplicate", 10, "名前")]),
    ("-f src ünï\u00a0x -k svc -v wb", [("invisible-character", 10, "\u00a0")]),
    ("-k src é #c -v wb acc=rate acc=sum", [("inline-comment", 9, "#c"), ("option-repeated", 18, "acc=rate")]),
    ("-k src é -v wb", []),
])
def test_lint(text: str, expected: List[Tuple[str, int, str]]) -> None:
    assert found(text, lfp.lint(text)) == expected


def test_lint_places_many_findings() -> None:
    text = "-f src " + "名 " * 5000 + "-k svc -v wb"
    places = [(d.start, text[d.start:d.start + d.length]) for d in lfp.lint(text)]
    assert places == [(7 + 2 * i, "名") for i in range(1, 5000)]


@pytest.mark.parametrize("text, peer, expected", [
    ("-f or [ -f src 10.0.0.1 -f dst 10.0.0.2 ] -k src -v wb", 1, [("operator-changed", 3, "or")]),
    ("-f interface eth0 é,in -k src -v wb", 2, [("item-changed", 13, "eth0"), ("item-dropped", 18, "é,in")]),
    ("-f src é -k src -v wb acc=lineUtil", 1, [("mode-changed", 22, "acc=lineUtil")]),
    ("-f src é -k src -v wb acc=lineUtil", 3, []),
    ("vl é", 1, [("peer-unsupported", 0, "vl é")]),
])
def test_fidelity(text: str, peer: int, expected: List[Tuple[str, int, str]]) -> None:
    request = request_of(text)
    assert found(text, request.fidelity(peer)) == expected
    assert request.copy().fidelity(peer) == request.fidelity(peer)  # a copy keeps the text


@pytest.mark.parametrize("line, peer, expected", [
    ("garbage words here", 2, [("word-skipped", 0, "garbage words here"),
                               ("converted-refused", 0, "garbage words here")]),
    ("-g topsrc -yy b -filter [ or [[src 0 [é]][[dst 0 [b]]]]]", 1,
     [("word-misread", 10, "-yy"), ("operator-changed", 26, "or")]),
    ("-g topsrc -y b", 1, []),
])
def test_convert_with_diagnostics(line: str, peer: int, expected: List[Tuple[str, int, str]]) -> None:
    converted, diagnostics = lfp.convert_with_diagnostics(line, peer)
    assert converted == lfp.convert(line, peer)
    assert found(line, diagnostics) == expected


@pytest.mark.parametrize("call, text, expected", [
    (lfp.parse, "-k Src -v wb", ("Invalid type: Src", "Src", ["src"])),
    (lfp.parse, "-f src é -v wb acc=rates", ("Invalid accumulation mode: acc=rates", "acc=rates", ["acc=rate"])),
    (lfp.parse, "-f src é -k src -v", ("Expected type at this point but there is no data", "", [])),
    (lfp.convert, "-g é -y b", ("Invalid key type", "é", [])),
    (lfp.convert_with_diagnostics, "-g topsrc é -y q", ("Invalid value type", "q", [])),
])
def test_refusals(call: Callable[[str], Any], text: str, expected: Tuple[str, str, List[str]]) -> None:
    assert refusal(lambda: call(text), text) == expected


@pytest.mark.parametrize("text, peer, place", [
    ("-f src é -k src -v wb -v pkt", 1, "-v pkt"),
    ("-f src é -k src -v wb -v pkt", 3, None),
    ("-f src é -k src -k dst -k svc -k qsrule -k ip -v wb", 3, "-k ip"),
    ("-k telNumber -v session", 1, None),   # isValid throws: no place
])
def test_validate(text: str, peer: int, place: Optional[str]) -> None:
    request = network(text)
    try:
        valid, message = request.copy().check(peer)
    except lfp.RequestError as error:  # isValid throws: validate raises the same
        valid, message = False, error.message
    if valid:
        request.validate(peer)  # returns None
    else:
        assert refusal(lambda: request.validate(peer), text) == (message, place, [])


def test_codes_are_those_of_the_guide(source_dir: str) -> None:
    with open(os.path.join(source_dir, "docs", "diagnostics.md")) as guide:
        headings = [line for line in guide if line.startswith("### ")]
    assert [(c.code, c.severity) for c in lfp.diagnostic_codes()] == \
        [(code, "note" if "(note)" in line else "warning")
         for line in headings for code in re.findall(r"`([a-z-]+)`", line)]
