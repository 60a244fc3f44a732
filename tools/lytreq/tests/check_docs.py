#!/usr/bin/env python3
"""Runs the ```console examples of Markdown documents (and the EXAMPLES
section of a man page, between .RS and .RE) through lytreq: a "$ " line is
a command run by bash with lytreq first on PATH, the lines after it are its
standard output and error as printed, compared byte for byte. A line that
ends in a blank shows it with the marker MARK after it; a line of the
document that ends in a blank without the marker is a fault of the
document. All commands run in one temporary directory; exit status 0, 1 or 2
is accepted (an example may show a refusal or a usage error).

Usage: check_docs.py PATH-TO-LYTREQ DOCUMENT...
"""
import os
import subprocess
import sys
import tempfile

MARK = "\u23ce"  # ⏎
ROFF = (("\\-", "-"), ("\\(aq", "'"), ("\\(ga", "`"), ("\\e", "\\"), ("\\&", ""), ("\\[u23CE]", MARK))


def man_page_lines(lines):
    """The EXAMPLES section of a man page (.RS ... .RE) as console blocks."""
    result, section, block = [], False, False
    for line in lines:  # one line out for every line in, so that line numbers hold
        if line.startswith(".SH "):
            section = line.strip() == ".SH EXAMPLES"
        if section and line.strip() in (".RS", ".RE"):
            block = line.strip() == ".RS"
            line = "```console" if block else "```"
        elif block and not line.startswith("."):
            for escape, text in ROFF:
                line = line.replace(escape, text)
        else:
            line = ""
        result.append(line)
    return result


def examples(path):
    """Yields (line number, command, expected output lines) for every command."""
    with open(path, encoding="utf-8") as f:
        lines = f.read().split("\n")
    if path.endswith(".1"):
        lines = man_page_lines(lines)
    block, command = False, None
    for number, line in enumerate(lines, 1):
        if not block:
            block = line.strip() == "```console"
        elif line.strip() == "```" or line.startswith("$ "):
            if command is not None:
                yield command
            block = line.startswith("$ ")
            command = (number, line[2:], []) if block else None
        elif command is None:
            raise SystemExit("%s:%d: output before the first command of a console block" % (path, number))
        else:
            command[2].append(line)
    if block:
        raise SystemExit("%s: a console block is not closed" % path)


def expected_text(lines):
    """The output the lines of a document show, or None when a line hides a blank."""
    text = ""
    for line in lines:
        if line != line.rstrip():
            return None
        if line.endswith(MARK):
            line = line[:-len(MARK)]
            if not line.endswith(" "):
                return None
        text += line + "\n"
    return text


def shown(text):
    """Output as the document would show it: trailing blanks marked."""
    return "".join("    | %s\n" % (line + MARK if line != line.rstrip() else line) for line in text.split("\n"))


def main():
    if len(sys.argv) < 3:
        raise SystemExit(__doc__)
    env = dict(os.environ)
    env["PATH"] = os.path.dirname(os.path.abspath(sys.argv[1])) + os.pathsep + env.get("PATH", "")
    passed = failed = 0
    with tempfile.TemporaryDirectory() as work:
        for document in sys.argv[2:]:
            found = list(examples(document))
            if not found:
                failed += 1
                print("FAIL %s: no examples found" % document)
            for number, command, expected in found:
                proc = subprocess.run(["bash", "-c", command], cwd=work, env=env, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, text=True)
                want = expected_text(expected)
                if want == proc.stdout and proc.returncode in (0, 1, 2):
                    passed += 1
                    continue
                failed += 1
                print("FAIL %s:%d: $ %s (exit status %d)" % (document, number, command, proc.returncode))
                if want is None:
                    print("  a line ends in a blank without %s or %s follows no blank" % (MARK, MARK))
                    continue
                print("  expected:\n%s  actual:\n%s" % (shown(want), shown(proc.stdout)), end="")
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
