#!/usr/bin/env python3
"""Fails when a library file includes a folder above its own.

The folders of lytFilterParser/ are layers, lowest first: the root headers
(Export.h, Internals.h, the generated LibraryVersion.h), base, detail, then
vocab and version, entity, then filter and column (which never include each
other), then request, then diagnostics. A file may include its own folder
and the layers below it. Tests may include anything.
"""
import pathlib
import re
import sys

LAYERS = {"base": 0, "detail": 1, "vocab": 2, "version": 2, "entity": 3, "filter": 4, "column": 4, "request": 5, "diagnostics": 6}
ROOT_HEADERS = {"Export.h": -1, "Internals.h": -1, "LibraryVersion.h": -1}
INCLUDE = re.compile(r'^\s*#\s*include\s+[<"]lytFilterParser/([^">]+)[">]', re.M)


def layer_of(path):
    """The layer of a path below lytFilterParser/, None for the umbrella header."""
    parts = pathlib.PurePosixPath(path).parts
    if len(parts) == 1:
        return ROOT_HEADERS.get(parts[0])
    return LAYERS.get(parts[0])


def main(source_dir):
    tree = pathlib.Path(source_dir) / "lytFilterParser"
    faults = []
    for file in sorted(tree.rglob("*")):
        if file.suffix not in (".h", ".cpp") or file.name.endswith("_test.cpp"):
            continue
        relative = file.relative_to(tree).as_posix()
        if "/" not in relative:
            continue  # the umbrella and the root headers
        folder = relative.split("/")[0]
        own = LAYERS.get(folder)
        if own is None:
            faults.append(f"{relative}: folder {folder}/ has no layer")
            continue
        for included in INCLUDE.findall(file.read_text(encoding="utf-8")):
            target = layer_of(included)
            same_folder = included.split("/")[0] == folder
            if target is None or not (same_folder or target < own):
                faults.append(f"{relative}: includes lytFilterParser/{included}, which is not below {folder}/")
    for fault in faults:
        print(fault)
    print(f"include layers: {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else "."))
