"""The Pythonic face of the extension's request classes: equality, pickling,
reprs, the parts of the model, and the checks of arguments. The extension
binds the library's operations (dump, check, columns ...) straight onto
its classes, so that they cost no Python frame; what is written here in
Python is added onto the same classes at import (see _install)."""

from typing import Any, Callable, Dict, List, Mapping, Tuple, overload

from . import _lytfilterparser as _ext
from ._error import RequestError
from ._model import E2EModel, Model, NetworkModel

Request = _ext.Request
NetworkRequest = _ext.NetworkRequest
E2ERequest = _ext.E2ERequest


@overload
def build(model: NetworkModel) -> "_ext.NetworkRequest": ...
@overload
def build(model: E2EModel) -> "_ext.E2ERequest": ...


def build(model: Model) -> "_ext.Request":
    """The request that `model` describes, a NetworkRequest for a
    NetworkModel and an E2ERequest for an E2EModel: the inverse of
    Request.model(), so that build(r.model()).dump() == r.dump().

    Each field takes its class, its enum member (or the word it stands for)
    and, for the lists, a tuple or a list; anything else raises TypeError,
    a word of the wrong set ValueError. A filter may nest to any depth. The
    built request's text, where fidelity() and validate() place what they
    find, is what it writes."""
    return _ext.build(model)


def _eq(self: Any, other: object) -> Any:
    """Requests are equal when their models are: the same kind, and the same
    filter tree, columns, names and sort, in the same order."""
    if not isinstance(other, Request):
        return NotImplemented
    return type(self) is type(other) and self.model() == other.model()


def _ne(self: Any, other: object) -> Any:
    equal = _eq(self, other)
    return equal if equal is NotImplemented else not equal


def _repr(self: Any) -> str:
    """<lytfilterparser.NetworkRequest '...'> with the text the request
    writes; a request that the library cannot write says why."""
    try:
        text = repr(self.dump())
    except RequestError as error:
        text = "(not written: %s)" % error.message
    return "<lytfilterparser.%s %s>" % (type(self).__name__, text)


def _str(self: Any) -> str:
    """The text the request writes (dump()), or its repr where the library
    cannot write it."""
    try:
        return str(self.dump())
    except RequestError:
        return _repr(self)


def _reduce(self: Any) -> Tuple[Callable[..., "_ext.Request"], Tuple[Model]]:
    """Pickled as its model, unpickled by build()."""
    return (build, (self.model(),))


def _model_part(name: str, doc: str) -> property:
    def get(self: Any) -> Any:
        return getattr(self.model(), name)
    return property(get, doc=doc)


def _carried(name: str, resolved: str) -> bool:
    """Whether a request can carry `resolved` as the resolved name of `name`:
    the pair reads back as the one token it is written as."""
    token = _ext._entity_text(name, resolved)
    return _ext.tokenize(token) == [token]


def _resolve(self: Any, mapping: Mapping[str, str]) -> None:
    """Sets the resolved name of every module name from `mapping`, in place.

    Raises RequestError, changing nothing, when the mapping lacks a name;
    TypeError when a resolved name is not a str; ValueError when the request
    could not carry it (a blank or a bracket in it would read back as more
    words, as lytreq resolve refuses such names in its map file)."""
    names: List[str] = self.module_names()
    resolved: List[str] = []
    for name in names:
        try:
            value = mapping[name]
        except KeyError:
            raise RequestError("no resolved name in the mapping for: " + name) from None
        if not isinstance(value, str):
            raise TypeError("the resolved name of %s is not a str" % name)
        if value and not _carried(name, value):
            raise ValueError("the resolved name %r of %s cannot be carried by a request: it would read back as "
                             "more than one word" % (value, name))
        resolved.append(value)
    if not self._set_module_names(names, resolved):
        raise RequestError("the request did not take the resolved names")


def _install() -> None:
    added: Dict[type, Dict[str, Any]] = {
        Request: {"__eq__": _eq, "__ne__": _ne, "__repr__": _repr, "__str__": _str, "__reduce__": _reduce,
                  "resolve": _resolve,
                  "__hash__": None},  # mutable: check(), validate() and resolve() change a request in place
        NetworkRequest: {
            "filter": _model_part("filter", "The filter tree, a Compound (model().filter)."),
            "keys": _model_part("keys", "The key columns, a tuple of Column (model().keys)."),
            "values": _model_part("values", "The value columns, a tuple of Column (model().values)."),
            "sort": _model_part("sort", "The sort, a Sort (model().sort)."),
        },
        E2ERequest: {
            "link": _model_part("link", "The name of the virtual link (model().link)."),
            "data_type": _model_part("data_type", "The data type of its counters, a DataType (model().data_type)."),
        },
    }
    for cls, members in added.items():
        for name, member in members.items():
            setattr(cls, name, member)


_install()
