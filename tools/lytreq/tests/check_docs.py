#!/usr/bin/env python3
"""Runs the examples of a Markdown document through lytreq and compares the
output with the text the document shows, so that the examples cannot go
stale.

An example is a fenced block opened with ```console. In it, a line starting
with "$ " is a command (run by bash, with the directory of the lytreq under
test first on PATH); the lines after it, up to the next command or the end
of the block, are exactly what the command prints, standard output and
standard error together in the order they are written. Blanks at the end of
a line are not visible in a document and are not compared. All commands of
a document run one after another in one temporary directory, so a file one
example writes can be read by a later one. A command may exit with 0 or 1
(a rejected request); any other status is a failure.

A man page (a file ending in ".1") is checked the same way: its EXAMPLES
section holds the commands and their output between .RS and .RE.

Usage: check_docs.py PATH-TO-LYTREQ DOCUMENT...
"""
import os
import subprocess
import sys
import tempfile


def unescape_roff(line):
    """The text of a line of a man page's example block."""
    for escape, text in (("\\-", "-"), ("\\(aq", "'"), ("\\e", "\\"), ("\\&", "")):
        line = line.replace(escape, text)
    return line


def man_page_lines(lines):
    """The EXAMPLES section of a man page (.RS ... .RE) as a console block."""
    result = []
    in_section = False
    in_block = False
    for line in lines:
        if line.startswith(".SH "):
            in_section = line.strip() == ".SH EXAMPLES"
        elif in_section and line.strip() == ".RS":
            in_block = True
            result.append("```console")
        elif in_block and line.strip() == ".RE":
            in_block = False
            result.append("```")
        elif in_block and not line.startswith("."):
            result.append(unescape_roff(line))
        else:
            result.append("")
    return result


def examples(path):
    """Yields (line number, command, expected output lines) for every command."""
    with open(path, encoding="utf-8") as f:
        lines = f.read().split("\n")
    if path.endswith(".1"):
        lines = man_page_lines(lines)
    in_block = False
    command = None
    for number, line in enumerate(lines, 1):
        if not in_block:
            if line.strip() == "```console":
                in_block = True
            continue
        if line.strip() == "```":
            if command is not None:
                yield command
            in_block = False
            command = None
            continue
        if line.startswith("$ "):
            if command is not None:
                yield command
            command = (number, line[2:], [])
        elif command is None:
            raise SystemExit("%s:%d: output before the first command of a console block" % (path, number))
        else:
            command[2].append(line)
    if in_block:
        raise SystemExit("%s: a console block is not closed" % path)


def normalise(lines):
    lines = [line.rstrip() for line in lines]
    while lines and lines[-1] == "":
        lines.pop()
    return lines


def main():
    if len(sys.argv) < 3:
        raise SystemExit(__doc__)
    tool = os.path.abspath(sys.argv[1])
    env = dict(os.environ)
    env["PATH"] = os.path.dirname(tool) + os.pathsep + env.get("PATH", "")
    passed = 0
    failed = 0
    with tempfile.TemporaryDirectory() as work:
        for document in sys.argv[2:]:
            found = 0
            for number, command, expected in examples(document):
                found += 1
                proc = subprocess.run(["bash", "-c", command], cwd=work, env=env, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, text=True)
                actual = normalise(proc.stdout.split("\n"))
                want = normalise(expected)
                if actual == want and proc.returncode in (0, 1):
                    passed += 1
                    continue
                failed += 1
                print("FAIL %s:%d: $ %s (exit status %d)" % (document, number, command, proc.returncode))
                print("  expected:")
                print("".join("    | %s\n" % line for line in want), end="")
                print("  actual:")
                print("".join("    | %s\n" % line for line in actual), end="")
            if found == 0:
                failed += 1
                print("FAIL %s: no examples found" % document)
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
