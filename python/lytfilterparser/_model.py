"""The object model of a request: frozen dataclasses in the shape of the
request (a network request's filter tree, key and value columns and sort;
an end-to-end request's link and data type), and enums of the closed sets
of words in it.

Every enum is made from the library's vocabulary at import: a member's value
is the whole word as the writers write it ("acc=rate", "dir=in", ",in",
"top"), its name that word's last part in capitals (Mode.RATE, Direction.IN,
InterfaceDirection.IN, SortType.TOP). The direction of an interface item
has its own enum, whose member NONE ("") is an item without a direction.
The type stubs (_model.pyi) list the same members; a test holds them to the
vocabulary.
"""

import enum
import re
from dataclasses import dataclass, field
from typing import Dict, Iterable, List, Tuple, Union

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


@dataclass(frozen=True)
class Name:
    """A name a filter or a column carries, and its resolved name ("" when
    it has none); written "name<>resolved"."""
    name: str
    resolved: str = ""


@dataclass(frozen=True)
class Interface:
    """One item of an interface filter: an interface and the direction of
    the traffic on it."""
    name: str
    direction: InterfaceDirection = _INTERFACE_DIRECTIONS[_UNRESTRICTED[0]]


@dataclass(frozen=True)
class ContentAtom:
    """A filter on one value type: the traffic whose value is (or, negated,
    is not) one of the names."""
    type: ValueType
    negated: bool = False
    names: Tuple[Name, ...] = ()


@dataclass(frozen=True)
class InterfaceAtom:
    """A filter on interfaces: the traffic on (or, negated, not on) one of
    them."""
    negated: bool = False
    interfaces: Tuple[Interface, ...] = ()


@dataclass(frozen=True)
class Compound:
    """A filter joining its children, in order, with an operator. A
    network request's filter is one; without children it selects all
    traffic."""
    operator: Operator
    children: Tuple[Union["Compound", ContentAtom, InterfaceAtom], ...] = ()


@dataclass(frozen=True)
class ColumnOptions:
    """The options of a column; the defaults restrict nothing."""
    direction: Direction = _DIRECTIONS[_UNRESTRICTED[0]]
    encryption: Encryption = _ENCRYPTIONS[_UNRESTRICTED[1]]
    compression: Compression = _COMPRESSIONS[_UNRESTRICTED[2]]
    print: Print = _PRINTS[_UNRESTRICTED[3]]
    url: UrlMode = _URL_MODES[_UNRESTRICTED[4]]


@dataclass(frozen=True)
class Column:
    """A key column (what the view groups by) or a value column (what it
    measures): its type, accumulation mode, options and names."""
    type: ValueType
    mode: Mode
    options: ColumnOptions = field(default_factory=ColumnOptions)
    names: Tuple[Name, ...] = ()


@dataclass(frozen=True)
class Sort:
    """How the view is sorted: the type, the value column it sorts by
    (from 1) and how many updates the view sends."""
    type: SortType
    index: int
    updates: int


@dataclass(frozen=True)
class NetworkModel:
    """A request for a traffic view of the network."""
    filter: Compound
    keys: Tuple[Column, ...]
    values: Tuple[Column, ...]
    sort: Sort


@dataclass(frozen=True)
class E2EModel:
    """An end-to-end request: the counters of one virtual link."""
    link: str
    data_type: DataType


Model = Union[NetworkModel, E2EModel]
Node = Union[Compound, ContentAtom, InterfaceAtom]


def _table(members: Dict[int, Word]) -> List[Tuple[int, Word]]:
    return sorted(members.items(), key=lambda item: item[0])


def _mode_table() -> List[Tuple[int, Word]]:
    """The modes by code, the code the readers keep apart for a second kind
    of concurrent counting (written as concurrent) included."""
    table = _table(_MODES)
    known = {code for code, _member in table}
    concurrent = _ext._concurrent_codes()
    if concurrent[0] in known and concurrent[1] not in known:
        table.append((concurrent[1], _MODES[concurrent[0]]))
    return table


_ext._set_model_types(
    (Name, Interface, ContentAtom, InterfaceAtom, Compound, ColumnOptions, Column, Sort, NetworkModel, E2EModel),
    (_table(_VALUE_TYPES), _mode_table(), _table(_OPERATORS), _table(_DIRECTIONS), _table(_INTERFACE_DIRECTIONS),
     _table(_ENCRYPTIONS), _table(_COMPRESSIONS), _table(_PRINTS), _table(_URL_MODES), _table(_SORT_TYPES),
     _table(_DATA_TYPE_MEMBERS)))
