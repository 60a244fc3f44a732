"""The object model of a request: frozen dataclasses in the shape of the
request (a network request's filter tree, key and value columns and sort;
an end-to-end request's link and data type). The closed sets of words in it
are the enums of _words.py.
"""

from dataclasses import dataclass, field
from typing import Dict, List, Tuple, Union

from . import _lytfilterparser as _ext
from ._words import (DataType, Direction, Compression, Encryption, InterfaceDirection, Mode, Operator, Print,
                     SortType, UrlMode, ValueType, Word, _COMPRESSIONS, _DATA_TYPE_MEMBERS, _DIRECTIONS,
                     _ENCRYPTIONS, _INTERFACE_DIRECTIONS, _MODES, _OPERATORS, _PRINTS, _SORT_TYPES,
                     _UNRESTRICTED_INTERFACE, _UNRESTRICTED_OPTIONS, _URL_MODES, _VALUE_TYPES)


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
    direction: InterfaceDirection = _UNRESTRICTED_INTERFACE


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
    direction: Direction = _UNRESTRICTED_OPTIONS[0]
    encryption: Encryption = _UNRESTRICTED_OPTIONS[1]
    compression: Compression = _UNRESTRICTED_OPTIONS[2]
    print: Print = _UNRESTRICTED_OPTIONS[3]
    url: UrlMode = _UNRESTRICTED_OPTIONS[4]


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
