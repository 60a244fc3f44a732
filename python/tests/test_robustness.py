"""Bad input from Python gets an exception or a result, never a crash; large
and deep requests and many threads give what the library gives."""

import threading

import pytest

import lytfilterparser as lfp
from conftest import lytreq

REQUEST = lfp.parse("-f src a -k svc -v wb")

BAD_CALLS = [
    (TypeError, lambda: lfp.parse(None)),
    (TypeError, lambda: lfp.parse(b"-k src -v wb")),
    (TypeError, lambda: lfp.parse(42)),
    (TypeError, lambda: lfp.convert(["-g", "topsrc"])),
    (TypeError, lambda: lfp.convert("-g topsrc -y b", peer="2")),
    (TypeError, lambda: lfp.convert("-g topsrc -y b", peer=2 ** 70)),
    (TypeError, lambda: lfp.tokenize(None)),
    (TypeError, lambda: lfp.lint(None)),
    (TypeError, lambda: lfp.convert_with_diagnostics(b"-g topsrc -y b")),
    (TypeError, lambda: lfp.find_words(1)),
    (TypeError, lambda: REQUEST.dump("3")),
    (TypeError, lambda: REQUEST.check(None)),
    (TypeError, lambda: REQUEST.validate("3")),
    (TypeError, lambda: REQUEST.fidelity(None)),
    (TypeError, lambda: REQUEST.columns(3.0)),
    (TypeError, lambda: REQUEST.resolve(None)),
    (TypeError, lambda: REQUEST.resolve({"a": 1})),
    (UnicodeEncodeError, lambda: lfp.parse("-f src \ud800")),
]


@pytest.mark.parametrize("error, call", BAD_CALLS)
def test_bad_arguments_raise(error, call):
    with pytest.raises(error):
        call()
    assert REQUEST.dump() == lfp.parse("-f src a -k svc -v wb").dump()


def nested(levels):
    """`levels` compound filters, each holding an atom and the next level."""
    return "-f and [ -f src a " * levels + "-f dst b " + "] " * levels + "-k svc -v wb"


SIXTEEN_MIB = 16 << 20
LARGE = [
    "-f src " + "n" * SIXTEEN_MIB + " -k svc -v wb",   # one name of 16 MiB
    "-k src -v wb" + " " * SIXTEEN_MIB,                # 16 MiB of blanks
    "-x" + "y" * SIXTEEN_MIB,                          # refused: the message holds the word
    nested(1000000),
]


def test_large_and_deep_texts():
    reports = lytreq(["parse"], LARGE)
    for text in LARGE:
        report = reports[text]
        assert lfp.lint(text) == []
        try:
            request = lfp.parse(text)
        except lfp.RequestError as error:
            assert (error.message, error.start, error.length) == \
                (report["error"], report["errorStart"], report["errorLength"])
            continue
        assert request.dump() == report["request"]
        assert request.copy().check() == (True, "")


def test_threads_share_requests_and_make_their_own():
    texts = ["-f src a%d b -k svc -v conn -s top index=%d" % (i, i) for i in range(8)]
    shared = lfp.parse(texts[0] + " " * 5000)  # large enough to be worked on without the GIL
    expected = {}
    for text in texts:
        request = lfp.parse(text)
        request.check(1)  # completes the request
        expected[text] = request.dump(1)
    failures = []

    def work(text):
        try:
            for _ in range(200):
                own = lfp.parse(text)
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
