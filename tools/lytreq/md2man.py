#!/usr/bin/env python3
"""Writes docs/request-syntax.md as the man page lytreq-syntax(7).

The Markdown of that page is a small subset: headings, paragraphs, lists,
fenced code blocks and tables, with `code`, **bold**, *emphasis* and links
inline. Tables become aligned preformatted text; links their text.

Usage: md2man.py MARKDOWN [MANPAGE]      write MANPAGE (standard output without)
       md2man.py --check MARKDOWN MANPAGE fail when MANPAGE is not what MARKDOWN gives
"""
import re
import sys
import time

NAME = "lytreq\\-syntax \\- the request language of the lytFilterParser library"


def escape(text):
    """Roff text: backslashes, hyphens, and characters outside ASCII as \\[uXXXX]."""
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return "".join(c if ord(c) < 128 else "\\[u%04X]" % ord(c) for c in text)


def inline(text):
    """Markdown inline markup as roff fonts."""
    text = re.sub(r"\[([^\]]+)\]\([^)]*\)", r"\1", text)
    parts = re.split(r"(``? .*? ``?|`[^`]+`)", text)
    result = ""
    for i, part in enumerate(parts):
        if i % 2:
            result += "\\fB" + escape(part.strip("`").strip()) + "\\fR"
            continue
        part = escape(part)
        part = re.sub(r"\*\*(.+?)\*\*", r"\\fB\1\\fR", part)
        part = re.sub(r"(?<![\w*])\*([^*\s][^*]*?)\*(?![\w*])", r"\\fI\1\\fR", part)
        result += part
    return result


def line_out(text):
    """A text line that roff does not take for a request."""
    return "\\&" + text if text.startswith((".", "'")) else text


def table(rows):
    """Table rows as aligned preformatted lines."""
    cells = [[re.sub(r"`([^`]*)`", r"\1", c.strip()).replace("**", "") for c in row.strip().strip("|").split("|")]
             for row in rows if not re.match(r"^\|[-| :]+\|$", row.strip())]
    widths = [max(len(row[i]) for row in cells if i < len(row)) for i in range(max(len(r) for r in cells))]
    out = [".PP", ".RS 2", ".nf"]
    for n, row in enumerate(cells):
        out.append(line_out(escape("  ".join(c.ljust(widths[i]) for i, c in enumerate(row)).rstrip())))
        if n == 0:
            out.append(escape("  ".join("-" * w for w in widths)))
    return out + [".fi", ".RE"]


def convert(markdown, date):
    lines = markdown.split("\n")
    out = ['.TH LYTREQ\\-SYNTAX 7 %s "lytFilterParser" "Miscellaneous Information"' % date, ".SH NAME", NAME]
    i = 0
    while i < len(lines):
        line = lines[i]
        if line.startswith("```"):
            j = lines.index("```", i + 1) if line != "```" or "```" in lines[i + 1:] else len(lines)
            out += [".PP", ".RS 4", ".nf"] + [line_out(escape(l)) for l in lines[i + 1:j]] + [".fi", ".RE"]
            i = j + 1
        elif line.startswith("# "):
            out += [".SH DESCRIPTION"]
            i += 1
        elif line.startswith("## "):
            out.append('.SH "%s"' % escape(re.sub(r"`", "", line[3:])))
            i += 1
        elif line.startswith("|"):
            j = i
            while j < len(lines) and lines[j].startswith("|"):
                j += 1
            out += table(lines[i:j])
            i = j
        elif not line.strip():
            i += 1
        else:
            j = i
            while j < len(lines) and lines[j].strip() and not lines[j].startswith(("```", "#", "|")):
                j += 1
            out += paragraph(lines[i:j])
            i = j
    return "\n".join(out) + "\n"


def paragraph(lines):
    """A paragraph, or the items of a list; the list of contents is left out."""
    if lines[0].startswith("Contents:"):
        return []
    out = []
    for line in lines:
        item = re.match(r"^(- |\d+\. )(.*)$", line)
        if item:
            mark = "\\(bu" if item.group(1) == "- " else item.group(1).strip()
            out += ['.IP "%s" 4' % mark, line_out(inline(item.group(2)))]
        else:
            if not out:
                out.append(".PP")
            out.append(line_out(inline(line.strip())))
    return out


def main(argv):
    check = argv[:1] == ["--check"]
    args = argv[1:] if check else argv
    if not args or len(args) > 2 or (check and len(args) != 2):
        raise SystemExit(__doc__)
    with open(args[0], encoding="utf-8") as f:
        markdown = f.read()
    # A page written now carries today's date; a check keeps the page's own.
    date = time.strftime("%Y-%m-%d")
    if check:
        with open(args[1], encoding="utf-8") as f:
            found = re.match(r"\.TH \S+ 7 (\S+)", f.read())
        date = found.group(1) if found else date
    page = convert(markdown, date)
    if check:
        with open(args[1], encoding="utf-8") as f:
            if f.read() != page:
                print("%s is not in step with %s: run tools/lytreq/md2man.py %s %s" % (args[1], args[0], args[0], args[1]))
                return 1
        print("1 passed, 0 failed")
        return 0
    if len(args) == 2:
        with open(args[1], "w", encoding="utf-8") as f:
            f.write(page)
    else:
        sys.stdout.write(page)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
