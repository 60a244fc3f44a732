"""The closed sets of words of a request model, as enums made from the
library's vocabulary at import: a member's value is the whole word as the
writers write it ("acc=rate", "dir=in", ",in", "top"), its name that word's
last part in capitals (Mode.RATE, Direction.IN, InterfaceDirection.IN,
SortType.TOP). The direction of an interface item has its own enum, whose
member NONE ("") is an item without a direction. The type stubs
(_words.pyi) list the same members; a test holds them to the vocabulary.
"""

import enum
import re
from typing import Dict, Iterable, List, Tuple

from . import _lytfilterparser as _ext

_KINDS = {kind.value: kind for kind in _ext.WordKind.__members__.values()}


class Word(str, enum.Enum):
    """A word of the request syntax as a value of the model: equal to its
    text, and written as it."""

    def __str__(self) -> str:
        return str(self.value)

    def __repr__(self) -> str:
        return "%s.%s" % (type(self).__name__, self.name)


def _member_name(text: str) -> str:
    """The enum name of a word: the part after "=" or "," in capitals, words of
    a camel-case name joined by "_" (telNumber: TEL_NUMBER)."""
    last = re.split(r"[=,]", text.rstrip("="))[-1]
    return re.sub(r"(?<=[a-z])(?=[A-Z])", "_", last).upper()


# (text, kind, code, written) of every word of the vocabulary.
_WORDS = [(text, _KINDS[int(kind)], code, written)
          for text, kind, code, _meaning, _peers, _places, _readable, written in _ext._words()]


def _codes_of(kind: "_ext.WordKind", prefix: str = "") -> List[Tuple[str, int]]:
    """(word, code) of every code of `kind` (words beginning with `prefix`),
    the written word where a code has several."""
    chosen: Dict[int, Tuple[str, bool]] = {}
    for text, word_kind, code, written in _WORDS:
        if word_kind != kind or code < 0 or not text.startswith(prefix):
            continue
        if code not in chosen or (written and not chosen[code][1]):
            chosen[code] = (text, written)
    return [(text, code) for code, (text, _written) in chosen.items()]


def _option_values(option: int) -> List[Tuple[str, int]]:
    """(word, code) of the column option `option` (0 direction ... 4 url):
    the whole words, the option's name included ("dir=in")."""
    return _codes_of(_ext.WordKind.ColumnOption, _OPTIONS[option])


def _column_option_names() -> List[str]:
    """The names of the column options ("dir=" ...), in the vocabulary's order:
    direction, encryption, compression, print, url."""
    names: List[str] = []
    for text, kind, _code, _written in _WORDS:
        if kind == _ext.WordKind.ColumnOption:
            name = text[:text.index("=") + 1]
            if name not in names:
                names.append(name)
    return names


def _words_enum(name: str, doc: str, pairs: Iterable[Tuple[str, int]]) -> Tuple["enum.EnumMeta", Dict[int, Word]]:
    """An enum of Word named `name` with a member per (word, code), and its
    members by code."""
    pairs = list(pairs)
    made = Word(name, [(_member_name(text) or _NO_WORD, text) for text, _code in pairs],  # type: ignore
                module=__name__)
    made.__doc__ = doc
    made.__qualname__ = name
    return made, {code: made(text) for text, code in pairs}


# The name of the member whose word is "" (an interface item without a direction).
_NO_WORD = "NONE"

_OPTIONS = _column_option_names()
_DATA_TYPES = [(text, code) for text, code in _codes_of(_ext.WordKind.VirtualLink)]

ValueType, _VALUE_TYPES = _words_enum(
    "ValueType", "What a filter tests, a key column groups by or a value column measures.",
    _codes_of(_ext.WordKind.ValueType))
Mode, _MODES = _words_enum("Mode", "The accumulation mode of a column.", _codes_of(_ext.WordKind.AccumulationMode))
Operator, _OPERATORS = _words_enum("Operator", "How a compound filter joins its children.",
                                   _codes_of(_ext.WordKind.FilterOperator))
Direction, _DIRECTIONS = _words_enum(
    "Direction", "The traffic direction a column counts (both: no restriction).", _option_values(0))
Encryption, _ENCRYPTIONS = _words_enum("Encryption", "Whether a column counts encrypted traffic.",
                                       _option_values(1))
Compression, _COMPRESSIONS = _words_enum("Compression", "Whether a column counts compressed traffic.",
                                         _option_values(2))
Print, _PRINTS = _words_enum("Print", "Whether a column counts citrix print traffic.",
                             _option_values(3))
UrlMode, _URL_MODES = _words_enum("UrlMode", "The part of a URL that a column counts.",
                                  _option_values(4))
SortType, _SORT_TYPES = _words_enum("SortType", "How the view is sorted.", _codes_of(_ext.WordKind.SortType))
DataType, _DATA_TYPE_MEMBERS = _words_enum("DataType", "The counters of a virtual link.", _DATA_TYPES)


# The defaults of a column's options restrict nothing: the code the readers
# start from, which the writers leave out.
_UNRESTRICTED = [code for text, kind, code, written in _WORDS if kind == _ext.WordKind.ColumnOption and not written]

# An interface item without a direction ("") carries traffic both ways: the
# direction code that restricts nothing.
InterfaceDirection, _INTERFACE_DIRECTIONS = _words_enum(
    "InterfaceDirection", "The traffic direction of an interface item (NONE, \"\": no direction given, both ways).",
    _codes_of(_ext.WordKind.InterfaceDirection) + [("", _UNRESTRICTED[0])])

# The values of an interface item's direction and of the column options
# (direction, encryption, compression, print, url) that restrict nothing:
# the model's defaults.
_UNRESTRICTED_INTERFACE = _INTERFACE_DIRECTIONS[_UNRESTRICTED[0]]
_UNRESTRICTED_OPTIONS = (_DIRECTIONS[_UNRESTRICTED[0]], _ENCRYPTIONS[_UNRESTRICTED[1]],
                         _COMPRESSIONS[_UNRESTRICTED[2]], _PRINTS[_UNRESTRICTED[3]], _URL_MODES[_UNRESTRICTED[4]])
