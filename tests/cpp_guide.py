#!/usr/bin/env python3
"""The programs of docs/cpp.md as tests.

  cpp_guide.py extract GUIDE DIR   writes every ```cpp block that holds a main()
                                   as DIR/guide_N.cpp, and the ```text block
                                   right after it as DIR/guide_N.out (what the
                                   program must print); stale ones are removed
  cpp_guide.py run PROGRAM EXPECTED   runs PROGRAM and compares its standard
                                   output with EXPECTED, its exit status with 0
"""
import os
import re
import subprocess
import sys

BLOCK = re.compile(r"^```(\w*)\n(.*?)^```\n", re.S | re.M)


def examples(text):
    """(program, expected output or None) for every program of the guide."""
    blocks = [(m.group(1), m.group(2), m.start(), m.end()) for m in BLOCK.finditer(text)]
    found = []
    for i, (kind, body, _, end) in enumerate(blocks):
        if kind != "cpp" or "int main(" not in body:
            continue
        expected = None
        if i + 1 < len(blocks) and blocks[i + 1][0] == "text" and text[end:blocks[i + 1][2]].strip() == "":
            expected = blocks[i + 1][1]
        found.append((body, expected))
    return found


def write_if_changed(path, text):
    if os.path.exists(path):
        with open(path) as f:
            if f.read() == text:
                return
    with open(path, "w") as f:
        f.write(text)


def extract(guide, directory):
    with open(guide, encoding="utf-8") as f:
        found = examples(f.read())
    os.makedirs(directory, exist_ok=True)
    names = set()
    for number, (program, expected) in enumerate(found, 1):
        name = "guide_%d" % number
        names.update({name + ".cpp", name + ".out"})
        write_if_changed(os.path.join(directory, name + ".cpp"), program)
        write_if_changed(os.path.join(directory, name + ".out"), expected if expected is not None else "")
    for stale in set(os.listdir(directory)) - names:
        os.remove(os.path.join(directory, stale))
    return 0


def run(program, expected_path):
    with open(expected_path, encoding="utf-8") as f:
        expected = f.read()
    proc = subprocess.run([program], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=120)
    if (proc.returncode, proc.stdout) == (0, expected):
        print("ok")
        return 0
    print("FAIL %s (exit status %d)\n  expected:\n%s\n  actual:\n%s\n  stderr:\n%s" % (
        program, proc.returncode, expected, proc.stdout, proc.stderr))
    return 1


if __name__ == "__main__":
    if len(sys.argv) == 4 and sys.argv[1] == "extract":
        sys.exit(extract(sys.argv[2], sys.argv[3]))
    if len(sys.argv) == 4 and sys.argv[1] == "run":
        sys.exit(run(sys.argv[2], sys.argv[3]))
    sys.exit(__doc__)
