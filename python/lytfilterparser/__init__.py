"""Monitoring-view requests of a network traffic monitor: read, check, write
and convert them with the lytFilterParser library.

    >>> import lytfilterparser
    >>> request = lytfilterparser.parse("-f src 10.0.0.1 -k svc -v conn")
    >>> request.dump()
    '-f src  10.0.0.1    -k svc acc=replace -v conn acc=rate '

Texts are passed to the library and back unchanged; what it refuses raises
RequestError with its message. lint, Request.fidelity and
convert_with_diagnostics report what the library notices beyond that, as
Diagnostic values placed in characters of the text. docs/python.md
describes the module.
"""

import enum
from typing import FrozenSet, NamedTuple, Optional, Tuple

from ._diagnostic import Diagnostic, DiagnosticCode
from ._error import RequestError
from . import _lytfilterparser as _ext
from ._lytfilterparser import (CURRENT_PEER, E2ERequest, NetworkRequest, Request, WordKind, convert,
                               convert_with_diagnostics, diagnostic_codes, lint, parse, tokenize, word_kind_name)
from ._model import (Column, ColumnOptions, Compound, ContentAtom, E2EModel, Interface, InterfaceAtom, Model, Name,
                     NetworkModel, Node, Sort)
from ._words import (Compression, DataType, Direction, Encryption, InterfaceDirection, Mode, Operator, Print, SortType,
                     UrlMode, ValueType)
from ._request import build
from ._lines import read_requests

__all__ = [
    "CURRENT_PEER", "Column", "ColumnOptions", "Compound", "Compression", "ContentAtom", "DataType", "Diagnostic",
    "DiagnosticCode", "Direction", "E2EModel", "E2ERequest", "Encryption", "Interface", "InterfaceAtom",
    "InterfaceDirection", "Mode", "Model", "Name", "NetworkModel", "NetworkRequest", "Node", "Operator", "Place",
    "Print", "Request",
    "RequestError", "Sort", "SortType", "UrlMode", "ValueType", "Word", "WordKind", "build", "convert",
    "convert_with_diagnostics", "diagnostic_codes", "find_words", "lint", "parse", "read_requests", "tokenize",
    "vocabulary", "word_kind_name", "__version__",
]

__version__ = "%d.%d.%d" % _ext._version

for _public in (Diagnostic, DiagnosticCode, E2ERequest, NetworkRequest, Request, RequestError, WordKind, Column,
                ColumnOptions, Compound, ContentAtom, E2EModel, Interface, InterfaceAtom, Name, NetworkModel, Sort,
                Compression, DataType, Direction, Encryption, InterfaceDirection, Mode, Operator, Print, SortType,
                UrlMode, ValueType, build, read_requests):
    _public.__module__ = __name__  # lytfilterparser.RequestError in tracebacks, not its private home


class Place(enum.IntFlag):
    """Where a value type may stand in a request."""
    FILTER = _ext.PLACE_FILTER
    KEY = _ext.PLACE_KEY
    VALUE = _ext.PLACE_VALUE


class Word(NamedTuple):
    """A word of the request syntax."""
    text: str                # as it stands in a request
    kind: WordKind
    code: int                # the library's enumerator it stands for; -1 for none
    meaning: str             # one line for people
    peers: FrozenSet[int]    # the peer versions (1 to 3) that take it
    places: Place            # value types: where validation takes them; options: the place of their type
    readable: bool           # the readers take it
    written: bool            # the writers write it


_vocabulary: Optional[Tuple[Word, ...]] = None


def vocabulary() -> Tuple[Word, ...]:
    """Every word of the request syntax, grouped by kind in the order of
    WordKind; the readers and writers use the same tables."""
    global _vocabulary
    if _vocabulary is None:
        _vocabulary = tuple(Word(text, kind, code, meaning, frozenset(peers), Place(places), readable, written)
                            for text, kind, code, meaning, peers, places, readable, written in _ext._words())
    return _vocabulary


def find_words(text: str) -> Tuple[Word, ...]:
    """The words exactly equal to `text`, in the order of vocabulary()
    ("src" is a value type and a legacy group)."""
    words = vocabulary()
    return tuple(words[i] for i in _ext._find_words(text))
