"""The examples of docs/python.md and the package's type stubs hold for the
module as built."""

import ast
import doctest
import os

import lytfilterparser as lfp
from lytfilterparser import _lytfilterparser


def test_examples_of_the_guide(source_dir):
    failures, tried = doctest.testfile(os.path.join(source_dir, "docs", "python.md"), module_relative=False,
                                       optionflags=doctest.ELLIPSIS)
    assert tried > 20 and failures == 0


def stub_names(tree):
    """{name: set of member names} for the classes, {name: None} for the rest."""
    names = {}
    for node in tree.body:
        if isinstance(node, ast.ClassDef):
            names[node.name] = {n.name if not isinstance(n, ast.AnnAssign) else n.target.id
                                for n in node.body if isinstance(n, (ast.FunctionDef, ast.AnnAssign))}
        elif isinstance(node, ast.FunctionDef):
            names[node.name] = None
        elif isinstance(node, ast.AnnAssign):
            names[node.target.id] = None
    return names


def test_stubs_name_what_the_extension_has():
    with open(os.path.join(os.path.dirname(lfp.__file__), "_lytfilterparser.pyi")) as stub:
        stubs = stub_names(ast.parse(stub.read()))
    runtime = {name for name in vars(_lytfilterparser) if not name.startswith("__")}
    assert set(stubs) == runtime
    for name, members in stubs.items():
        if members is None:
            continue
        cls = getattr(_lytfilterparser, name)
        own = {m for m in vars(cls) if not m.startswith("_") or m in ("__copy__", "__deepcopy__")}
        if name == "WordKind":
            own = set(cls.__members__)
        assert own <= members and all(hasattr(cls, m) for m in members), name
