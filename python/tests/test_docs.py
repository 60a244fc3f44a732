"""The examples of docs/python.md and the package's type stubs hold for the
module as built, and mypy --strict takes the tests and the examples."""

import ast
import doctest
import os
import re
import subprocess
import sys
from typing import Any, Dict, Optional, Set

import lytfilterparser as lfp
from lytfilterparser import _lytfilterparser


def test_examples_of_the_guide(source_dir: str) -> None:
    failures, tried = doctest.testfile(os.path.join(source_dir, "docs", "python.md"), module_relative=False,
                                       optionflags=doctest.ELLIPSIS)
    assert tried > 20 and failures == 0


def target(node: ast.AnnAssign) -> str:
    assert isinstance(node.target, ast.Name)
    return node.target.id


def stub_names(tree: ast.Module) -> Dict[str, Optional[Set[str]]]:
    """{name: set of member names} for the classes, {name: None} for the rest."""
    names: Dict[str, Optional[Set[str]]] = {}
    for node in tree.body:
        if isinstance(node, ast.ClassDef):
            names[node.name] = {n.name if isinstance(n, ast.FunctionDef) else target(n)
                                for n in node.body if isinstance(n, (ast.FunctionDef, ast.AnnAssign))}
        elif isinstance(node, ast.FunctionDef):
            names[node.name] = None
        elif isinstance(node, ast.AnnAssign):
            names[target(node)] = None
    return names


def test_stubs_name_what_the_extension_has() -> None:
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


def examples(guide: str) -> str:
    """The code of the guide's examples as one module: every line after ">>> "
    or "... "."""
    lines = [m.group(1) for m in re.finditer(r"^(?:>>>|\.\.\.) ?(.*)$", guide, re.MULTILINE)]
    return "\n".join(lines) + "\n"


def test_mypy_strict_on_the_tests_and_the_guide(source_dir: str, tmp_path: Any) -> None:
    with open(os.path.join(source_dir, "docs", "python.md")) as guide:
        code = examples(guide.read())
    assert "lfp.parse(" in code
    (tmp_path / "guide_examples.py").write_text(code)
    package = os.path.dirname(os.path.dirname(lfp.__file__))
    env = dict(os.environ, MYPYPATH=package)
    env.pop("LD_PRELOAD", None)  # mypy is no test of the extension
    proc = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--no-incremental", "--cache-dir", os.devnull,
                           "--no-error-summary", os.path.join(source_dir, "python", "tests"),
                           str(tmp_path / "guide_examples.py")],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env=env, cwd=str(tmp_path))
    assert proc.returncode == 0, proc.stdout
