# Types of the enums of the request model. They are made from the library's
# vocabulary at import; their members here are checked against it
# (python/tests/test_model.py).
import enum
from typing import Dict, Tuple

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

_VALUE_TYPES: Dict[int, ValueType]
_MODES: Dict[int, Mode]
_OPERATORS: Dict[int, Operator]
_DIRECTIONS: Dict[int, Direction]
_INTERFACE_DIRECTIONS: Dict[int, InterfaceDirection]
_ENCRYPTIONS: Dict[int, Encryption]
_COMPRESSIONS: Dict[int, Compression]
_PRINTS: Dict[int, Print]
_URL_MODES: Dict[int, UrlMode]
_SORT_TYPES: Dict[int, SortType]
_DATA_TYPE_MEMBERS: Dict[int, DataType]
_UNRESTRICTED_INTERFACE: InterfaceDirection
_UNRESTRICTED_OPTIONS: Tuple[Direction, Encryption, Compression, Print, UrlMode]
