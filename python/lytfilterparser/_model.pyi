# Types of the request model. The enums are made from the library's
# vocabulary at import; their members here are checked against it
# (python/tests/test_model.py).
import enum
from dataclasses import dataclass
from typing import Tuple, Union

class Word(str, enum.Enum):
    def __str__(self) -> str: ...

class ValueType(Word):
    SVC = 'svc'
    SRC = 'src'
    DST = 'dst'
    IP = 'ip'
    FWRULE = 'fwrule'
    QSRULE = 'qsrule'
    CONN_ID = 'connId'
    URL = 'url'
    TEL_NUMBER = 'telNumber'
    INTERFACE = 'interface'
    ORIENTATION = 'orientation'
    AB = 'ab'
    WB = 'wb'
    PKT = 'pkt'
    CONN = 'conn'
    SESSION = 'session'
    PKT_RANGE = 'pktRange'
    TUNNEL = 'tunnel'
    TUNNEL_TYPE = 'tunnelType'
    CITRIX = 'citrix'
    WD_ATTACK = 'wdAttack'

class Mode(Word):
    REPLACE = 'acc=replace'
    RATE = 'acc=rate'
    NEW = 'acc=new'
    SUM = 'acc=sum'
    CONCURRENT = 'acc=concurrent'
    MIN = 'acc=min'
    MAX = 'acc=max'
    LINE_UTIL = 'acc=lineUtil'

class Operator(Word):
    AND = 'and'
    OR = 'or'

class Direction(Word):
    OUT = 'dir=out'
    IN = 'dir=in'
    BOTH = 'dir=both'

class Encryption(Word):
    NO = 'enc=no'
    YES = 'enc=yes'
    BOTH = 'enc=both'

class Compression(Word):
    NO = 'comp=no'
    YES = 'comp=yes'
    BOTH = 'comp=both'

class Print(Word):
    NO = 'cprint=no'
    YES = 'cprint=yes'
    BOTH = 'cprint=both'

class UrlMode(Word):
    FULL = 'url_mod=full'
    HOST_PATH = 'url_mod=host_path'
    SCHEME_HOST = 'url_mod=scheme_host'
    HOST = 'url_mod=host'
    PATH = 'url_mod=path'
    SCHEME = 'url_mod=scheme'

class InterfaceDirection(Word):
    OUT = ',out'
    IN = ',in'
    NONE = ''

class SortType(Word):
    TOP = 'top'
    BOTTOM = 'bottom'
    NONE = 'none'

class DataType(Word):
    WIRE = 'wire'
    APPLICATION = 'application'

@dataclass(frozen=True)
class Name:
    name: str
    resolved: str = ...

@dataclass(frozen=True)
class Interface:
    name: str
    direction: InterfaceDirection = ...

@dataclass(frozen=True)
class ContentAtom:
    type: ValueType
    negated: bool = ...
    names: Tuple[Name, ...] = ...

@dataclass(frozen=True)
class InterfaceAtom:
    negated: bool = ...
    interfaces: Tuple[Interface, ...] = ...

@dataclass(frozen=True)
class Compound:
    operator: Operator
    children: Tuple[Union[Compound, ContentAtom, InterfaceAtom], ...] = ...

@dataclass(frozen=True)
class ColumnOptions:
    direction: Direction = ...
    encryption: Encryption = ...
    compression: Compression = ...
    print: Print = ...
    url: UrlMode = ...

@dataclass(frozen=True)
class Column:
    type: ValueType
    mode: Mode
    options: ColumnOptions = ...
    names: Tuple[Name, ...] = ...

@dataclass(frozen=True)
class Sort:
    type: SortType
    index: int
    updates: int

@dataclass(frozen=True)
class NetworkModel:
    filter: Compound
    keys: Tuple[Column, ...]
    values: Tuple[Column, ...]
    sort: Sort

@dataclass(frozen=True)
class E2EModel:
    link: str
    data_type: DataType

Model = Union[NetworkModel, E2EModel]
Node = Union[Compound, ContentAtom, InterfaceAtom]
