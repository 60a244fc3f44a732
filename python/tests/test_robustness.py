"""Bad input from Python gets an exception or a result, never a crash; large
and deep requests and many threads give what the library gives."""

import threading
from typing import Any, Callable, Dict, List

import pytest

import lytfilterparser as lfp
from conftest import lytreq, network

REQUEST = network("-f src a -k svc -v wb")

# Calls that break the types on purpose: typed Any so that mypy lets them be.
ANY: Any = lfp
ANY_REQUEST: Any = REQUEST

BAD_CALLS: List[Any] = [
    (TypeError, lambda: ANY.parse(None)),
    (TypeError, lambda: ANY.parse(b"-k src -v wb")),
    (TypeError, lambda: ANY.parse(42)),
    (TypeError, lambda: ANY.convert(["-g", "topsrc"])),
    (TypeError, lambda: ANY.convert("-g topsrc -y b", peer="2")),
    (TypeError, lambda: ANY.convert("-g topsrc -y b", peer=2 ** 70)),
    (TypeError, lambda: ANY.tokenize(None)),
    (TypeError, lambda: ANY.lint(None)),
    (TypeError, lambda: ANY.convert_with_diagnostics(b"-g topsrc -y b")),
    (TypeError, lambda: ANY.find_words(1)),
    (TypeError, lambda: ANY_REQUEST.dump("3")),
    (TypeError, lambda: ANY_REQUEST.check(None)),
    (TypeError, lambda: ANY_REQUEST.validate("3")),
    (TypeError, lambda: ANY_REQUEST.fidelity(None)),
    (TypeError, lambda: ANY_REQUEST.columns(3.0)),
    (TypeError, lambda: ANY_REQUEST.resolve(None)),
    (TypeError, lambda: ANY_REQUEST.resolve({"a": 1})),
    (UnicodeEncodeError, lambda: ANY.parse("-f src \ud800")),
]


@pytest.mark.parametrize("error, call", BAD_CALLS)
def test_bad_arguments_raise(error: Any, call: Callable[[], Any]) -> None:
    with pytest.raises(error):
        call()
    assert REQUEST.dump() == network("-f src a -k svc -v wb").dump()


def nested(levels: int) -> str:
    """`levels` compound filters, each holding an atom and the next level."""
    return "-f and [ -f src a " * levels + "-f dst b " + "] " * levels + "-k svc -v wb"


SIXTEEN_MIB = 16 << 20
LARGE = [
    "-f src " + "n" * SIXTEEN_MIB + " -k svc -v wb",   # one name of 16 MiB
    "-k src -v wb" + " " * SIXTEEN_MIB,                # 16 MiB of blanks
    "-x" + "y" * SIXTEEN_MIB,                          # refused: the message holds the word
    nested(1000000),
]


def test_large_and_deep_texts() -> None:
    reports = lytreq(["parse"], LARGE)
    for text in LARGE:
        report = reports[text]
        assert lfp.lint(text) == []
        try:
            request = network(text)
        except lfp.RequestError as error:
            assert (error.message, error.start, error.length) == \
                (report["error"], report["errorStart"], report["errorLength"])
            continue
        assert request.dump() == report["request"]
        assert request.copy().check() == (True, "")


def test_threads_share_requests_and_make_their_own() -> None:
    texts = ["-f src a%d b -k svc -v conn -s top index=%d" % (i, i) for i in range(8)]
    shared = network(texts[0] + " " * 5000)  # large enough to be worked on without the GIL
    expected: Dict[str, str] = {}
    for text in texts:
        request = network(text)
        request.check(1)  # completes the request
        expected[text] = request.dump(1)
    failures: List[str] = []

    def work(text: str) -> None:
        try:
            for _ in range(200):
                own = network(text)
                own.check(1)
                shared.check(1)
                shared.resolve({"a0": "x", "b": "y"})
                if own.dump(1) != expected[text] or shared.module_names() != ["a0", "b"]:
                    failures.append(text)
        except Exception as error:  # reported below; a thread's exception would be lost
            failures.append(repr(error))

    threads = [threading.Thread(target=work, args=(t,)) for t in texts]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert failures == []
