#!/usr/bin/env python3
"""Lists the functions of the library and tool sources longer than a limit.

A function is a brace block that follows a ")" (or "const", "override",
"noexcept", an initializer list or a trailing return type) at namespace or
class level; tables (a "{" after "=") are not functions. The count is the
lines from the signature's first line to the closing brace.

Usage: scripts/function_lengths.py [--limit N] [paths...]
(default: lytFilterParser and tools, limit 70); exit status 1 when one is over.
"""
import argparse
import pathlib
import re
import sys


def strip(text):
    """Blanks out comments and string and character literals, keeping lines."""
    out = []
    i, n = 0, len(text)
    while i < n:
        c = text[i]
        if text.startswith("//", i):
            j = text.find("\n", i)
            i = n if j < 0 else j
        elif text.startswith("/*", i):
            j = text.find("*/", i + 2)
            j = n if j < 0 else j + 2
            out.append(re.sub(r"[^\n]", " ", text[i:j]))
            i = j
        elif c in "\"'":
            j = i + 1
            while j < n and text[j] != c:
                j += 2 if text[j] == "\\" else 1
            out.append(c + " " * (min(j, n) - i - 1) + c)
            i = j + 1
        else:
            out.append(c)
            i += 1
    return "".join(out)


def functions(path):
    text = strip(path.read_text(encoding="utf-8", errors="replace"))
    depth_stack = []  # for each open brace: (is_function, start_line)
    line = 1
    last_code = ""
    statement_start = 1
    for i, c in enumerate(text):
        if c == "\n":
            line += 1
            continue
        if c == "{":
            inside_function = any(f for f, _ in depth_stack)
            head = last_code.rstrip()
            is_function = (not inside_function and not head.endswith("=") and
                           re.search(r"(\)|const|override|noexcept|final|\w+\s*\([^()]*\)\s*|->\s*[\w:<>&*]+)\s*$", head)
                           is not None and not re.search(r"\b(namespace|class|struct|enum|union)\b[^;{}]*$", head))
            depth_stack.append((is_function, statement_start))
            last_code = ""
            statement_start = line
        elif c == "}":
            if depth_stack:
                is_function, start = depth_stack.pop()
                if is_function:
                    yield start, line
            last_code = ""
            statement_start = line
        elif c == ";":
            last_code = ""
            statement_start = line
        else:
            if not last_code.strip() and not c.isspace():
                statement_start = line
            last_code += c


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--limit", type=int, default=70)
    parser.add_argument("paths", nargs="*", default=["lytFilterParser", "tools"])
    args = parser.parse_args()
    over = []
    for root in args.paths:
        for path in sorted(pathlib.Path(root).rglob("*")):
            if path.suffix not in (".cpp", ".h") or path.name.endswith("_test.cpp"):
                continue
            for start, end in functions(path):
                if end - start + 1 > args.limit:
                    over.append((end - start + 1, f"{path}:{start}"))
    for length, where in sorted(over, reverse=True):
        print(f"{length:4d} lines  {where}")
    print(f"function lengths: {len(over)} over {args.limit} lines")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
