"""Requests as model objects: the models against lytreq's own account of the
same requests (explain --json), the round trip parse -> model -> build ->
dump over generated inputs, and what build refuses."""

import ast
import dataclasses
import os
import random
import runpy
import sys
import types
from typing import Any, Dict, Iterator, List, Optional, Tuple, cast

import pytest

import lytfilterparser as lfp
from lytfilterparser import _lytfilterparser as _ext
from conftest import lytreq, network, request_of
from test_requests import NETWORK, VIRTUAL_LINK

ENUMS: List[Any] = [lfp.ValueType, lfp.Mode, lfp.Operator, lfp.Direction, lfp.InterfaceDirection, lfp.Encryption,
                    lfp.Compression, lfp.Print, lfp.UrlMode, lfp.SortType, lfp.DataType]


def generator(source_dir: str) -> Any:
    """scripts/compare/generate.py as a module: its request, link and legacy
    line makers."""
    path = os.path.join(source_dir, "scripts", "compare", "generate.py")
    module = types.SimpleNamespace(**runpy.run_path(path, run_name="generate"))
    return module


def generated(source_dir: str, count: int, seed: int) -> Iterator[str]:
    """`count` texts in the current syntax: generated requests and links,
    and generated legacy lines as the library converts them."""
    make = generator(source_dir)
    r = random.Random(seed)
    for i in range(count):
        kind = r.random()
        if kind < 0.70:
            yield make.current_request(r)
        elif kind < 0.75:
            yield make.virtual_link(r)
        else:
            try:
                yield lfp.convert(make.legacy_line(r))
            except lfp.RequestError:
                yield make.legacy_line(r)


def dumped(request: Any) -> Tuple[str, Optional[str]]:
    """("text", written text) or ("raised", message) of request.dump()."""
    try:
        return ("text", request.dump())
    except lfp.RequestError as error:
        return ("raised", error.message)


def test_round_trip_over_generated_inputs(source_dir: str) -> None:
    requests = 0
    for text in generated(source_dir, 42000, 20261124):
        try:
            request = lfp.parse(text)
        except lfp.RequestError:
            continue
        if request is None:
            continue
        requests += 1
        model = request.model()
        built = lfp.build(model)
        assert type(built) is type(request), text
        assert dumped(built) == dumped(request), text
        assert built.model() == model, text
        assert built == request
    assert requests >= 20000


def explained_direction(direction: lfp.InterfaceDirection) -> str:
    """An interface item's direction as lytreq explain --json spells it: the
    direction column option's value ("in" for ",in"), that of the option
    that restricts nothing ("both") for an item without a direction."""
    name = OPTION_NAMES[0]
    option = lfp.Direction(name + direction.value[1:]) if direction.value else lfp.ColumnOptions().direction
    return option.value[len(name):]


def explained(model: Any) -> Dict[str, Any]:
    """A model in the shape of lytreq explain --json: the filter a list of
    nodes with their depth (none without a filter), names as their tokens,
    an interface item's direction as explained_direction spells it."""
    if isinstance(model, lfp.E2EModel):
        link_word = next(w.text for w in lfp.vocabulary() if w.kind == lfp.WordKind.VirtualLink)
        return {"kind": link_word, "name": model.link, "dataType": model.data_type.value}
    nodes: List[Dict[str, Any]] = []
    # A request without a filter (a root without children) has no nodes.
    stack: List[Tuple[Any, int]] = [(model.filter, 0)] if model.filter.children else []
    while stack:
        node, depth = stack.pop()
        entry: Dict[str, Any] = {"depth": depth}
        if isinstance(node, lfp.Compound):
            entry["operator"] = node.operator.value
            stack.extend((child, depth + 1) for child in reversed(node.children))
        elif isinstance(node, lfp.InterfaceAtom):
            entry.update(type=lfp.ValueType.INTERFACE.value, negated=node.negated,
                         interfaces=[{"name": i.name, "direction": explained_direction(i.direction)}
                                     for i in node.interfaces])
        else:
            entry.update(type=node.type.value, negated=node.negated, names=names(node.names))
        nodes.append(entry)

    def column(c: Any) -> Dict[str, Any]:
        return {"type": c.type.value, "mode": c.mode.value, "names": names(c.names),
                "options": [getattr(c.options, f.name).value for f in dataclasses.fields(c.options)]}
    return {"kind": "network", "filter": nodes, "keys": [column(c) for c in model.keys],
            "values": [column(c) for c in model.values],
            "sort": {"type": model.sort.type.value, "index": model.sort.index, "updates": model.sort.updates}}


# The names of the column options, in the vocabulary's order (that of ColumnOptions' fields).
OPTION_NAMES = list(dict.fromkeys(w.text[:w.text.index("=") + 1] for w in lfp.vocabulary()
                                  if w.kind == lfp.WordKind.ColumnOption))


def names(list: Any) -> List[str]:
    return [_ext._entity_text(n.name, n.resolved) for n in list]


def lytreq_can_read(text: str) -> bool:
    """Whether lytreq's batch input carries `text` as one line unchanged."""
    try:
        text.encode()
    except UnicodeEncodeError:
        return False
    return bool(text.strip()) and not text.lstrip(" \t").startswith("#") and not set(text) & set("\n\r\x0b\x0c\x1c\x1d\x1e\x85\u2028\u2029") \
        and not text.startswith("\ufeff")


def test_models_as_lytreq_explains_them(source_dir: str) -> None:
    texts = NETWORK + VIRTUAL_LINK + [t for t in generated(source_dir, 3000, 7) if lytreq_can_read(t)]
    texts = list(dict.fromkeys(texts))
    reports = lytreq(["explain"], texts)
    compared = 0
    for text in texts:
        report = reports[text]
        if "error" in report:
            with pytest.raises(lfp.RequestError):
                lfp.parse(text)
            continue
        expected = {key: report[key] for key in ("kind", "filter", "keys", "values", "sort", "name", "dataType")
                    if key in report}
        for column in expected.get("keys", []) + expected.get("values", []):
            del column["column"]
        assert explained(request_of(text).model()) == expected, text
        compared += 1
    assert compared > 1000


def test_parts_of_a_request() -> None:
    request = network(NETWORK[1])
    model = request.model()
    assert (request.filter, request.keys, request.values, request.sort) == \
        (model.filter, model.keys, model.values, model.sort)
    first, second = model.filter.children
    assert isinstance(first, lfp.ContentAtom) and isinstance(second, lfp.ContentAtom) and second.negated
    link = lfp.parse(VIRTUAL_LINK[0])
    assert isinstance(link, lfp.E2ERequest)
    assert (link.link, link.data_type) == (link.model().link, link.model().data_type) == \
        (link.name, lfp.DataType.APPLICATION)
    empty = network(network("-k src").dump()).filter
    assert empty.children == ()


def test_enums_are_the_vocabulary() -> None:
    """Each enum has a member for every code of its set of words, valued as
    the writers write the word."""
    written = {(w.kind, w.code): w.text for w in reversed(lfp.vocabulary()) if w.code >= 0}
    written.update({(w.kind, w.code): w.text for w in reversed(lfp.vocabulary()) if w.code >= 0 and w.written})
    kinds: Dict[Any, lfp.WordKind] = {lfp.ValueType: lfp.WordKind.ValueType, lfp.Mode: lfp.WordKind.AccumulationMode,
             lfp.Operator: lfp.WordKind.FilterOperator, lfp.SortType: lfp.WordKind.SortType,
             lfp.DataType: lfp.WordKind.VirtualLink}
    for enum, kind in kinds.items():
        words = sorted({text for (k, _code), text in written.items() if k == kind})
        assert sorted(m.value for m in enum) == words, enum
    options = [w.text for w in lfp.vocabulary() if w.kind == lfp.WordKind.ColumnOption]
    option_enums: List[Any] = [lfp.Direction, lfp.Encryption, lfp.Compression, lfp.Print, lfp.UrlMode]
    for name, enum in zip(OPTION_NAMES, option_enums):
        assert [m.value for m in enum] == [w for w in options if w.startswith(name)], enum
    interface = [w.text for w in lfp.vocabulary() if w.kind == lfp.WordKind.InterfaceDirection]
    assert [m.value for m in lfp.InterfaceDirection] == interface + [""]
    assert lfp.Interface("eth0").direction is lfp.InterfaceDirection.NONE
    for enum in ENUMS:
        for member in enum:
            assert member == member.value and str(member) == member.value and enum(member.value) is member


def test_stubs_list_the_enums(source_dir: str) -> None:
    with open(os.path.join(os.path.dirname(lfp.__file__), "_words.pyi")) as stub:
        tree = ast.parse(stub.read())
    stubs = {node.name: [(ast.unparse(n.targets[0]), ast.literal_eval(n.value))
                         for n in node.body if isinstance(n, ast.Assign)]
             for node in tree.body if isinstance(node, ast.ClassDef)}
    for enum in ENUMS:
        assert stubs[enum.__name__] == [(m.name, m.value) for m in enum], enum


def ANY(value: Any) -> Any:
    """`value` typed Any: what breaks the types on purpose."""
    return value


def sample() -> Any:
    return network(NETWORK[4]).model()


@pytest.mark.parametrize("change, error, message", [
    (lambda m: "text", TypeError, "the model must be a NetworkModel, not str"),
    (lambda m: dataclasses.replace(m, keys=None), TypeError, "NetworkModel.keys must be a tuple"),
    (lambda m: dataclasses.replace(m, keys=(1,)), TypeError, "NetworkModel.keys must be a Column, not int"),
    (lambda m: dataclasses.replace(m, sort=dataclasses.replace(m.sort, type="up")), ValueError,
     "Sort.type: 'up' is no such word"),
    (lambda m: dataclasses.replace(m, sort=dataclasses.replace(m.sort, index=2 ** 40)), ValueError,
     "Sort.index is out of range"),
    (lambda m: dataclasses.replace(m, sort=dataclasses.replace(m.sort, updates="7")), TypeError,
     "Sort.updates must be an int"),
    (lambda m: dataclasses.replace(m, filter=lfp.Compound(lfp.Operator.AND, (ANY(lfp.Name("x")),))), TypeError,
     "a filter child must be a ContentAtom, not Name"),
    (lambda m: dataclasses.replace(m, filter=lfp.Compound(lfp.Operator.AND, (
        lfp.ContentAtom(lfp.ValueType.INTERFACE, False, ()),))), ValueError,
     "ContentAtom.type: an interface filter is an InterfaceAtom"),
    (lambda m: dataclasses.replace(m, filter=lfp.Compound(ANY(lfp.Mode.RATE), ())), ValueError,
     "Compound.operator: Mode.RATE is no such word"),
    (lambda m: dataclasses.replace(m, keys=(dataclasses.replace(m.keys[0], names=(lfp.Name(b"x"),)),)),  # type: ignore
     TypeError, "Name.name must be a str"),
    (lambda m: dataclasses.replace(m, filter=lfp.Compound(lfp.Operator.OR, (lfp.InterfaceAtom(1, ()),))),  # type: ignore
     TypeError, "InterfaceAtom.negated must be a bool"),
    (lambda m: lfp.E2EModel("x", ANY(lfp.SortType.TOP)), ValueError, "E2EModel.data_type: SortType.TOP is no such word"),
    (lambda m: dataclasses.replace(m, filter=lfp.Compound(lfp.Operator.OR, (
        lfp.InterfaceAtom(False, (lfp.Interface("eth0", ANY(lfp.Direction.IN)),)),))), ValueError,
     "Interface.direction: Direction.IN is no such word"),
    (lambda m: dataclasses.replace(m, keys=(dataclasses.replace(m.keys[0], options=lfp.ColumnOptions(ANY("in"))),)),
     ValueError, "ColumnOptions.direction: 'in' is no such word"),
])
def test_build_refuses_what_is_no_model(change: Any, error: Any, message: str) -> None:
    with pytest.raises(error) as raised:
        lfp.build(change(sample()))
    assert str(raised.value) == message


def test_build_takes_words_and_lists() -> None:
    model = sample()
    words = dataclasses.replace(model, keys=list(model.keys),
                                sort=dataclasses.replace(model.sort, type=model.sort.type.value))
    assert lfp.build(words).dump() == lfp.build(model).dump()
    text = "-f interface eth0,in eth1 eth2,out -k src dir=out enc=yes comp=no cprint=yes url_mod=host -v wb"
    model = network(text).model()
    atom = model.filter.children[0]
    assert isinstance(atom, lfp.InterfaceAtom)
    assert [i.direction for i in atom.interfaces] == \
        [lfp.InterfaceDirection.IN, lfp.InterfaceDirection.NONE, lfp.InterfaceDirection.OUT]
    items = tuple(lfp.Interface(i.name, ANY(i.direction.value)) for i in atom.interfaces)
    options = lfp.ColumnOptions(*(ANY(getattr(model.keys[0].options, f.name).value)
                                  for f in dataclasses.fields(lfp.ColumnOptions)))
    words = dataclasses.replace(model, filter=lfp.Compound(model.filter.operator, (lfp.InterfaceAtom(False, items),)),
                                keys=(dataclasses.replace(model.keys[0], options=options),))
    assert all(type(i.direction) is str for i in items) and type(options.url) is str
    assert lfp.build(words).dump() == network(text).dump()
    assert lfp.build(words).model() == model


LEAF = lfp.ContentAtom(lfp.ValueType.SRC, False, (lfp.Name("a"),))


def nested(depth: int) -> Any:
    """A filter of `depth` compounds one inside the other, each beside an atom."""
    node: Any = LEAF
    for level in range(depth):
        node = lfp.Compound(lfp.Operator.OR if level % 2 else lfp.Operator.AND, (node, LEAF))
    return node


def test_any_depth_builds_and_reads_back() -> None:
    """build() and model() walk without recursion: a filter deeper than
    Python's recursion limit works both ways. Python's own comparisons and
    reprs of such a model raise RecursionError, as for any nested data."""
    depth = sys.getrecursionlimit() + 500
    model = lfp.NetworkModel(nested(depth), (), (lfp.Column(lfp.ValueType.WB, lfp.Mode.RATE),),
                             lfp.Sort(lfp.SortType.NONE, 1, 50))
    request = lfp.build(model)
    text = request.dump()
    assert text.count("[") == depth
    again = request.model()
    node: lfp.Node = again.filter
    for _ in range(depth):
        assert isinstance(node, lfp.Compound) and node.children[1] == LEAF
        node = node.children[0]
    assert node == LEAF
    with pytest.raises(RecursionError):
        again == model
    assert repr(request).startswith("<lytfilterparser.NetworkRequest '-f ")


def test_model_types_are_set_once() -> None:
    with pytest.raises(ValueError, match="already set"):
        _ext._set_model_types((), ())
    assert network(NETWORK[0]).model().keys[0].type == lfp.ValueType.SVC


def test_options_that_restrict_nothing_are_the_defaults() -> None:
    model = network("-k src -v wb dir=both -v ab enc=yes").model()
    assert model.keys[0].options == model.values[0].options == lfp.ColumnOptions()
    assert model.values[1].options == lfp.ColumnOptions(encryption=lfp.Encryption.YES)
