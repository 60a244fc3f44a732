#!/usr/bin/env python3
"""Writes the inputs of the comparison driver (scripts/compare.sh).

One input per line, "KIND<TAB>TEXT", TEXT escaped (\\\\, \\t, \\n, \\r, \\xNN
for the other control bytes; other bytes, UTF-8 or not, as they are):

  R  a request in the current syntax: about 70 % of the inputs, and about
     5 % more that are "vl" end-to-end lines;
  L  a legacy command line: about 25 %.

The inputs are meant to reach every rule of the readers, the validation, the
writers and the converter: well-formed requests shaped to trip one check of
the validation at a time, near misses (one token dropped, doubled, swapped,
misspelt, recased; a bracket too many or too few; truncated lines), word
salads from the request vocabulary, bracket noise, blank and odd texts
(tabs, "#", control bytes, non-ASCII, invalid UTF-8), very long entity lists
and filters nested up to 60 levels (the readers take any depth; the unit
tests nest a million levels).

The output depends only on --count and --seed.
"""

import argparse
import random
import sys

# ---------------------------------------------------------------------------
# Vocabulary
# ---------------------------------------------------------------------------

TYPES = ["svc", "src", "dst", "ip", "fwrule", "qsrule", "connId", "url", "telNumber", "interface",
         "orientation", "ab", "wb", "pkt", "conn", "session", "pktRange", "tunnel", "tunnelType",
         "citrix", "wdAttack"]
FILTER_TYPES = ["svc", "src", "dst", "ip", "fwrule", "qsrule", "connId", "url", "orientation", "tunnel",
                "tunnelType", "wdAttack"]
NAMED_TYPES = ["src", "dst", "ip", "tunnel"]  # the ones whose entities are module names
KEY_TYPES = ["svc", "src", "dst", "ip", "fwrule", "qsrule", "connId", "url", "telNumber", "interface",
             "orientation", "pktRange", "tunnel", "tunnelType", "citrix", "wdAttack"]
VALUE_TYPES = ["ab", "wb", "pkt", "conn", "session"]
TYPE_NEAR = ["Src", "SRC", "svc,", "Interface", "INTERFACE", "wbx", "w", "sr", "ipv4", "tel", "Ab",
             "connid", "pktrange", "WDattack", "foo", "0", "1", "type", "-", "=", "src=", "srcsvc"]

ACCS = ["acc=replace", "acc=rate", "acc=new", "acc=sum", "acc=concurrent", "acc=min", "acc=max",
        "acc=lineUtil"]
ACC_NEAR = ["acc=rates", "acc=Rate", "xacc=rate", "acc=", "acc", "accumulate", "acc=concurrent2",
            "acc=sum,", "ACC=rate", "acc=line", "acc=lineutil", "acc==rate", "acc=rate=", "dir=acc",
            "acc=replacesort=top", "sort=acc"]
SORT_OPTS = ["sort=top", "sort=bottom", "sort=none"]
SORT_NEAR = ["sort=Top", "xsort=top", "sort=topx", "sort", "sort=", "SORT=top", "sort=bottomx",
             "dir=insort=top", "sort=top=", "mysort"]

COLUMN_FILTER_VALUES = {
    "dir=": ["in", "out", "both"],
    "enc=": ["no", "yes", "both"],
    "comp=": ["no", "yes", "both"],
    "cprint=": ["no", "yes", "both"],
    "url_mod=": ["full", "host_path", "scheme_host", "host", "path", "scheme"],
}
COLUMN_FILTER_NEAR = ["dir=outbound", "xdir=iny", "dir=IN", "dir=", "dir=x", "enc=maybe", "comp=yess",
                      "cprint=nope", "url_mod=hostpath", "url_mod=bad", "url_mod=", "foo=1", "=", "a=b",
                      "dir=inenc=yes", "enc=dir=out", "xxdir=in", "dir=bothin", "cprint=yesno",
                      "url_mod=path_host", "url_mod=scheme_host_path", "comp=inno", "dirr=in",
                      "Dir=in", "dir:in", "enc=no=yes", "url_mod=FULL", "dir=ni", "dir=o", "comp==no",
                      "enc=ye", "index=3", "updates=7", "dir=in,out", "comp=x", "comp=", "cprint=maybe",
                      "cprint=", "comp=Yes", "cprint=NO"]

ENTITIES = ["10.0.0.1", "10.0.0.2", "192.168.1.0/24", "host1", "host2", "Host1", "any", "gw", "web",
            "mail-srv", "a<>b", "h2<>10.9.9.9", "a<>b<>c", "<>x", "x<>", "<>", "<><>", "Not", "NOT_a",
            "1", "0", "42", "*", "h#1", "#", "net_A", "r1", "rule7", "http", "ssh", "tcp/80",
            "udp:53", "x.y.z", "and", "or", "vl", "interface", "eth0", "src", "top", "acc", "dir",
            "caf\u00e9", "\u540d\u524d", "\u00fcber<>\u00fcberall", "a\tb", "tab\t", "\udcff\udcfe",
            "semi;colon", "quote\"d", "back\\slash", "comma,in", "eq=x"]
NEGATIONS = ["not", "NOT"]
NEGATION_NEAR = ["Not", "nOt", "no", "not!", "!"]

INTERFACE_ITEMS = ["eth0", "eth0,in", "eth0,out", "eth1,out", "eth1", "eth0,Inbound", "eth0,O", "eth0,",
                   ",in", "eth0,,in", "eth0,x", "any,i", "lan0,b", "wan,OUT", "eth2,In", "bond0,o",
                   "a,in", "b,out", "\u00e9th0,in", "x,y,z", ",", ",,", "eth0,inbound,out",
                   "not", "NOT", "interface", "and"]
OPERATORS = ["and", "or", "AND", "OR"]
OPERATOR_NEAR = ["And", "Or", "xor", "&&", "||", "andd", "not", "[", "anD"]

SORT_TYPES = ["top", "bottom", "none"]
SORT_TYPE_NEAR = ["Top", "TOP", "bottomx", "best", "sort=top", "none,", "0"]
OPTIONS = ["-f", "-k", "-v", "-s"]
OPTION_NEAR = ["-c", "-filter", "-K", "-x", "-", "--", "-F", "-kk", "-t", "-g", "-y", "-a", "k", "f",
               "-\u00e9", "-1"]

VL_NAMES = ["branch-link", "link1", "hq<>branch", "x", "-t", "vl", "a b", "42", "\u00e9t\u00e9", "[", "]"]
VL_TYPES = ["wire", "application", "apps", "w", "a", "x", "Wire", "Application", "-t", "", "wx"]

LEGACY_GROUPS = ["topfw", "topsrc", "topdst", "topip", "topqsrule", "topsvc", "src", "dst", "svc",
                 "qsrule", "ip"]
LEGACY_GROUP_NEAR = ["fw", "topFw", "top", "topsrcx", "Src", "topconn", "conn", "topwb", "tops", ""]
LEGACY_VALUES = ["b", "C", "c", "p"]
LEGACY_VALUE_NEAR = ["l", "x", "bytes", "Conn", "packets", "B", "P", "1", "-b"]
LEGACY_FILTER_TYPES = ["src", "dst", "svc", "ip"]
LEGACY_FILTER_NEAR = ["fwrule", "qsrule", "tunnel", "url", "Src", "SRC"]

ALL_WORDS = (TYPES + TYPE_NEAR + ACCS + ACC_NEAR + SORT_OPTS + SORT_NEAR + COLUMN_FILTER_NEAR
             + ENTITIES + NEGATIONS + NEGATION_NEAR + INTERFACE_ITEMS + OPERATORS + OPERATOR_NEAR
             + SORT_TYPES + SORT_TYPE_NEAR + OPTIONS + OPTION_NEAR + LEGACY_GROUPS + LEGACY_VALUES
             + ["[", "]", "[", "]", "-f", "-k", "-v", "-s", "index=2", "updates=5", "vl", "-t", "wire",
                "-filter", "-g", "-y", "-a", "i", "a", "0", "1", "in", "out"])

ODD_TEXTS = ["", " ", "   ", "\t", "\t \t", "#", "# comment", "#-k src", "\r", "\n", " \n ", "\x00",
             "\x01\x02", "\x7f", "[", "]", "[]", "][", "[ ]", "[[[", "]]]", "-", "--", "vl", " vl",
             "vl ", "VL x", "vl2 x", "\u00e9", "\u2028", "\ufeff-k src -v wb", "\udcff", "-k", "-v",
             "-f", "-s", "-f [", "-f ]", "-f and", "-f and [", "-f and ]", "-f or [ ]", "-k src -v",
             "-s", "-s top index=", "-k\tsrc -v wb", "-k src\t-v wb", "-k src -v wb\t", "-k src#1 -v wb",
             "\t-k src -v wb", "-k src -v wb #", "-k src -v wb \r"]


def pick(r, items, weights=None):
    if weights is None:
        return items[r.randrange(len(items))]
    return r.choices(items, weights)[0]


def chance(r, p):
    return r.random() < p


# ---------------------------------------------------------------------------
# Current syntax
# ---------------------------------------------------------------------------

def entity(r):
    roll = r.random()
    if roll < 0.55:
        return pick(r, ["10.0.%d.%d" % (r.randrange(4), r.randrange(256)), "host%d" % r.randrange(20),
                        "net%d" % r.randrange(10), "svc%d" % r.randrange(8)])
    if roll < 0.7:
        return "%s<>%s" % (pick(r, ["h", "host1", "gw", ""]), pick(r, ["10.1.1.1", "x", "", "a<>b"]))
    return pick(r, ENTITIES)


def entities(r, count=None):
    if count is None:
        count = pick(r, [0, 1, 2, 3, 4, 6], [20, 40, 20, 10, 6, 4])
    return [entity(r) for _ in range(count)]


def content_atom(r):
    roll = r.random()
    if roll < 0.8:
        kind = pick(r, FILTER_TYPES)
    elif roll < 0.93:
        kind = pick(r, TYPES)  # also the types the filter check refuses
    else:
        kind = pick(r, TYPE_NEAR)
    out = [kind]
    roll = r.random()
    if roll < 0.25:
        out.append(pick(r, NEGATIONS))
    elif roll < 0.3:
        out.append(pick(r, NEGATION_NEAR))
    out += entities(r)
    return out


def interface_atom(r):
    out = ["interface"]
    roll = r.random()
    if roll < 0.3:
        out.append(pick(r, NEGATIONS))
    elif roll < 0.35:
        out.append(pick(r, NEGATION_NEAR))
    out += [pick(r, INTERFACE_ITEMS) for _ in range(pick(r, [0, 1, 2, 3, 5], [10, 45, 25, 12, 8]))]
    return out


def atom(r):
    return interface_atom(r) if chance(r, 0.2) else content_atom(r)


def compound(r, depth, max_depth):
    op = pick(r, OPERATORS) if chance(r, 0.97) else pick(r, OPERATOR_NEAR)
    bracketed = chance(r, 0.85)
    out = [op] + (["["] if bracketed else [])
    children = pick(r, [0, 1, 2, 3, 4], [6, 24, 40, 20, 10])
    for _ in range(children):
        out.append("-f")
        if depth < max_depth and chance(r, 0.3 if max_depth < 8 else 0.9):
            out += compound(r, depth + 1, max_depth)
        else:
            out += atom(r)
    if bracketed and chance(r, 0.97):
        out.append("]")
    return out


def filter_option(r):
    roll = r.random()
    if roll < 0.45:
        out = ["-f"] + atom(r)
        while chance(r, 0.3):  # further "-f" atoms join the same conjunction
            out += ["-f"] + atom(r)
        return out
    return ["-f"] + compound(r, 1, pick(r, [1, 2, 3, 4]))


def deep_filter(r):
    """A chain of compound filters 10 to 60 levels deep."""
    depth = r.randrange(10, 61)
    out = ["-f"]
    closers = []
    for _ in range(depth):
        out.append(pick(r, OPERATORS))
        if chance(r, 0.8):
            out.append("[")
            closers.append("]")
        else:
            closers.append(None)
        if chance(r, 0.3):
            out += ["-f"] + atom(r)
        out.append("-f")
    out += atom(r)
    for closer in reversed(closers):
        if closer:
            out.append("]")
            if chance(r, 0.2):
                out += ["-f"] + atom(r)
    roll = r.random()
    if roll < 0.1 and "]" in out:
        del out[len(out) - 1 - out[::-1].index("]")]  # one closing bracket short
    elif roll < 0.15:
        out.append("]")  # one too many
    return out


def column_filters(r):
    out = []
    for _ in range(pick(r, [0, 1, 2, 3], [55, 30, 10, 5])):
        if chance(r, 0.8):
            name = pick(r, list(COLUMN_FILTER_VALUES))
            out.append(name + pick(r, COLUMN_FILTER_VALUES[name]))
        else:
            out.append(pick(r, COLUMN_FILTER_NEAR))
    return out


def column(r, option, kind=None, acc=None, ents=0, filters=None, sort=None):
    out = [option]
    if kind is None:
        roll = r.random()
        if roll < 0.85:
            kind = pick(r, KEY_TYPES if option == "-k" else VALUE_TYPES)
        elif roll < 0.95:
            kind = pick(r, TYPES)
        else:
            kind = pick(r, TYPE_NEAR)
    out.append(kind)
    opts = []
    if acc is None:
        roll = r.random()
        if roll < (0.15 if option == "-k" else 0.55):
            opts.append(pick(r, ACCS))
        elif roll < (0.18 if option == "-k" else 0.6):
            opts.append(pick(r, ACC_NEAR))
    elif acc:
        opts.append(acc)
    opts += column_filters(r) if filters is None else filters
    if sort is None:
        roll = r.random()
        if roll < (0.03 if option == "-k" else 0.15):
            opts.append(pick(r, SORT_OPTS))
        elif roll < (0.05 if option == "-k" else 0.18):
            opts.append(pick(r, SORT_NEAR))
    elif sort:
        opts.append(sort)
    r.shuffle(opts)
    out += opts
    ent = entities(r, ents)
    if ent:
        roll = r.random()
        if roll < 0.1:
            ent = ["["] + ent + ["]"]  # a bracket is an entity of a column
        elif roll < 0.13:
            ent = ent + ["]"]
        elif roll < 0.16:
            ent = ent + [pick(r, ACCS + COLUMN_FILTER_NEAR)]  # options after the entities
    out += ent
    return out


def index_word(r, values):
    roll = r.random()
    if roll < 0.7:
        return "index=%d" % r.randrange(-1, values + 3)
    return pick(r, ["index=", "index=x", "xindex=3", "index=3abc", "index=+2", "index=-0", "index=007",
                    "INDEX=2", "index=99999999999", "index= 2", "aindex=2", "index=2updates=5",
                    "updates=index=3"])


def updates_word(r):
    roll = r.random()
    if roll < 0.6:
        return "updates=%d" % pick(r, [0, -5, 1, 7, 50, 199, 200, 201, 1000])
    return pick(r, ["updates=", "updates=x", "xupdates=9", "updates=12abc", "updates=+3", "UPDATES=3",
                    "updates=99999999999", "updates=-99999999999", "update=3"])


def sort_option(r, values=2):
    roll = r.random()
    out = ["-s", pick(r, SORT_TYPES) if roll < 0.9 else pick(r, SORT_TYPE_NEAR)]
    for _ in range(pick(r, [0, 1, 2, 3], [40, 35, 20, 5])):
        roll = r.random()
        if roll < 0.5:
            out.append(index_word(r, values))
        elif roll < 0.9:
            out.append(updates_word(r))
        else:
            out.append(pick(r, ["foo", "top", "1", "dir=in", "sort=top", "index"]))
    if chance(r, 0.03):
        out = out[:1]  # "-s" with nothing after it
    return out


def free_request(r):
    """Any mix of options, in any order."""
    options = []
    for _ in range(pick(r, [0, 1, 2], [30, 60, 10])):
        options.append(filter_option(r))
    keys = pick(r, [0, 1, 2, 3, 4, 5], [8, 45, 25, 12, 7, 3])
    shared = pick(r, [0, 1, 2, 3], [60, 25, 10, 5])
    for _ in range(keys):
        options.append(column(r, "-k", ents=shared if chance(r, 0.9) else r.randrange(4)))
    values = pick(r, [0, 1, 2, 3, 4, 5, 6, 7], [8, 50, 20, 8, 5, 4, 3, 2])
    for _ in range(values):
        options.append(column(r, "-v", ents=0 if chance(r, 0.95) else r.randrange(1, 3)))
    for _ in range(pick(r, [0, 1, 2], [45, 50, 5])):
        options.append(sort_option(r, values))
    if chance(r, 0.6):
        # mostly in the usual order: filter, keys, values, sort
        order = {"-f": 0, "-k": 1, "-v": 2, "-s": 3}
        options.sort(key=lambda o: order.get(o[0], 4))
    else:
        r.shuffle(options)
    if chance(r, 0.05):
        options.insert(r.randrange(len(options) + 1), [pick(r, OPTION_NEAR)] + entities(r, r.randrange(3)))
    return [t for o in options for t in o]


def validation_request(r):
    """A request that reads, shaped to meet or miss one rule of validation."""
    keys = pick(r, [1, 1, 1, 2, 2, 3, 4, 5, 0], [30, 20, 10, 15, 5, 8, 6, 3, 3])
    count = pick(r, [0, 0, 0, 1, 2, 3, 100, 101], [40, 10, 10, 15, 10, 5, 3, 2])
    key_types = []
    for i in range(keys):
        roll = r.random()
        if i == 0 and roll < 0.2:
            key_types.append(pick(r, ["ip", "tunnel", "wdAttack"]))
        elif i == 1 and roll < 0.25:
            key_types.append("connId")
        elif roll < 0.6:
            key_types.append(pick(r, ["svc", "src", "dst", "fwrule", "qsrule"]))
        else:
            key_types.append(pick(r, KEY_TYPES + ["ab", "wb"]))
    tokens = []
    if chance(r, 0.4):
        tokens += filter_option(r)
    for kind in key_types:
        ents = count if chance(r, 0.93) else count + pick(r, [-1, 1])
        tokens += column(r, "-k", kind=kind, acc=False if chance(r, 0.9) else None, ents=max(0, ents),
                         filters=[] if chance(r, 0.8) else None, sort=False)
    values = pick(r, [1, 1, 2, 3, 6, 7, 0], [40, 15, 20, 10, 5, 3, 3])
    for _ in range(values):
        kind = pick(r, VALUE_TYPES) if chance(r, 0.93) else pick(r, TYPES)
        allowed = {"ab": ["acc=rate", "acc=lineUtil", "acc=sum"], "wb": ["acc=rate", "acc=lineUtil", "acc=sum"],
                   "pkt": ["acc=rate", "acc=sum"], "conn": ["acc=concurrent", "acc=new", "acc=rate"],
                   "session": ["acc=new", "acc=rate"]}.get(kind, ACCS)
        roll = r.random()
        acc = pick(r, allowed) if roll < 0.6 else (False if roll < 0.85 else pick(r, ACCS))
        filters = []
        if chance(r, 0.15):
            name = pick(r, list(COLUMN_FILTER_VALUES))
            filters = [name + pick(r, COLUMN_FILTER_VALUES[name])]
        tokens += column(r, "-v", kind=kind, acc=acc, ents=0 if chance(r, 0.97) else 1, filters=filters,
                         sort=False if chance(r, 0.85) else pick(r, SORT_OPTS))
    if chance(r, 0.6):
        tokens += ["-s", pick(r, SORT_TYPES)]
        if chance(r, 0.6):
            tokens.append("index=%d" % r.randrange(0, values + 2))
        if chance(r, 0.3):
            tokens.append("updates=%d" % pick(r, [1, 50, 100, 200, 201, 0]))
    return tokens


def long_request(r):
    """Long entity lists: around the limit of 100 per key, or thousands."""
    roll = r.random()
    if roll < 0.5:
        n = pick(r, [99, 100, 101, 150])
        keys = pick(r, [1, 2, 3])
        tokens = []
        for kind in ["src", "dst", "svc"][:keys]:
            tokens += ["-k", kind] + ["%s%d" % (kind, i) for i in range(n)]
        return tokens + ["-v", pick(r, ["wb", "pkt", "conn"])]
    if roll < 0.8:
        n = r.randrange(200, 1500)
        kind = pick(r, NAMED_TYPES + ["svc"])
        ents = ["%s-%d<>%d" % (kind, i, i) if i % 7 == 0 else "%s-%d" % (kind, i) for i in range(n)]
        return ["-f", kind] + ents + ["-k", "svc", "-v", "wb"]
    n = r.randrange(100, 800)
    items = ["if%d%s" % (i, pick(r, ["", ",in", ",out", ",x"])) for i in range(n)]
    return ["-f", "interface"] + items + ["-k", "src", "-v", "wb", "-s", "top"]


def mutate(r, tokens):
    """One to three small faults: the near misses."""
    tokens = list(tokens)
    for _ in range(pick(r, [1, 2, 3], [60, 30, 10])):
        op = r.randrange(10)
        i = r.randrange(len(tokens)) if tokens else 0
        if not tokens:
            tokens.append(pick(r, ALL_WORDS))
        elif op == 0:
            del tokens[i]
        elif op == 1:
            tokens.insert(i, tokens[i])
        elif op == 2 and i + 1 < len(tokens):
            tokens[i], tokens[i + 1] = tokens[i + 1], tokens[i]
        elif op == 3:
            tokens[i] = pick(r, ALL_WORDS)
        elif op == 4:
            tokens.insert(i, pick(r, ALL_WORDS))
        elif op == 5:
            del tokens[i:]
        elif op == 6:
            tokens[i] = tokens[i].upper() if chance(r, 0.5) else tokens[i].capitalize()
        elif op == 7 and tokens[i]:
            j = r.randrange(len(tokens[i]))
            t = tokens[i]
            tokens[i] = t[:j] + t[j + 1:] if chance(r, 0.5) else t[:j] + pick(r, "x=-,<>[]#\t") + t[j:]
        elif op == 8:
            tokens.insert(i, pick(r, ["[", "]"]))
        else:
            tokens.append(pick(r, ["-f", "-k", "-v", "-s", "and", "or", "not", "[", "]", "-t"]))
    return [t for t in tokens if t != ""]


def word_salad(r):
    return [pick(r, ALL_WORDS) for _ in range(r.randrange(1, 30))]


def bracket_noise(r):
    out = []
    for _ in range(r.randrange(1, 25)):
        roll = r.random()
        out.append(pick(r, ["[", "]"]) if roll < 0.5 else pick(r, ["-f", "and", "or", "src", "a", "interface",
                                                                   "-k", "svc", "-v", "wb", "not"]))
    return out


def render(r, tokens):
    """Joins tokens into text, with varied but equivalent blanks and brackets
    written against their neighbours."""
    if not tokens:
        return pick(r, ["", " ", "  "])
    style = r.random()
    if style < 0.6:
        text = " ".join(tokens)
    else:
        parts = []
        for i, t in enumerate(tokens):
            if i:
                glued = t in ("[", "]") or tokens[i - 1] in ("[", "]")
                parts.append("" if glued and chance(r, 0.5) else " " * pick(r, [1, 1, 2, 3]))
            parts.append(t)
        text = "".join(parts)
    if chance(r, 0.1):
        text = " " * r.randrange(1, 3) + text
    if chance(r, 0.15):
        text += " " * r.randrange(1, 3)
    return text


def odd_text(r):
    roll = r.random()
    if roll < 0.5:
        return pick(r, ODD_TEXTS)
    text = render(r, free_request(r))
    # an odd byte or character somewhere in an otherwise ordinary request
    odd = pick(r, ["\t", "#", "\x01", "\x00", "\r", "\n", "\u00e9", "\u4e2d", "\udcff", "\x7f", "\u00a0",
                   "\u3000"])
    i = r.randrange(len(text) + 1)
    return text[:i] + odd + text[i:]


def current_request(r):
    roll = r.random()
    if roll < 0.30:
        return render(r, free_request(r))
    if roll < 0.55:
        return render(r, validation_request(r))
    if roll < 0.80:
        base = free_request(r) if chance(r, 0.5) else validation_request(r)
        return render(r, mutate(r, base))
    if roll < 0.86:
        return render(r, word_salad(r))
    if roll < 0.90:
        return render(r, bracket_noise(r))
    if roll < 0.95:
        return odd_text(r)
    if roll < 0.98:
        tokens = deep_filter(r) + (column(r, "-k") + column(r, "-v") if chance(r, 0.8) else [])
        return render(r, tokens if chance(r, 0.8) else mutate(r, tokens))
    return render(r, long_request(r))


def virtual_link(r):
    roll = r.random()
    if roll < 0.05:
        return pick(r, ["vl", "vl ", " vl", "VL link", "vl2 link", "Vl x", "vl\tx", "vl[x]", "vl [ x ]",
                        "vl -t", "vl x -t", "vl x -t wire -t"])
    tokens = ["vl", pick(r, VL_NAMES) if chance(r, 0.4) else "link%d" % r.randrange(50)]
    for _ in range(pick(r, [0, 1, 2, 3], [20, 55, 15, 10])):
        roll = r.random()
        if roll < 0.6:
            tokens += ["-t", pick(r, VL_TYPES)]
        elif roll < 0.7:
            tokens += [pick(r, ["x-t", "--t", "a-tb", "-tt", "-T"]), pick(r, VL_TYPES)]
        else:
            tokens.append(pick(r, ["-x", "42", "-", "a-", "-k", "src", "[", "]", "-f", "and", "x-", "--"]))
    tokens = [t for t in tokens if t != ""]
    if chance(r, 0.2):
        tokens = mutate(r, tokens)
    return render(r, tokens)


# ---------------------------------------------------------------------------
# Legacy syntax
# ---------------------------------------------------------------------------

def legacy_atom(r):
    roll = r.random()
    if roll < 0.25:
        neg = pick(r, ["0", "1"]) if chance(r, 0.9) else pick(r, ["2", "x"])
        items = []
        for _ in range(pick(r, [0, 1, 2, 3], [5, 60, 25, 10])):
            items += ["[", pick(r, ["eth0", "eth1", "lan", "any", "\u00e9th0"]),
                      pick(r, ["in", "out", "both", "inbound", "x"]), "]"]
        return ["[", "interface", neg, "["] + items + ["]", "]"]
    kind = pick(r, LEGACY_FILTER_TYPES) if roll < 0.9 else pick(r, LEGACY_FILTER_NEAR)
    neg = pick(r, ["0", "1"]) if chance(r, 0.9) else pick(r, ["2", "not"])
    return ["[", kind, neg, "["] + entities(r) + ["]", "]"]


def legacy_filter(r):
    out = ["-filter", "[", pick(r, ["and", "or", "AND"]), "["]
    for _ in range(pick(r, [0, 1, 2, 3], [15, 50, 25, 10])):
        out += legacy_atom(r)
    return out + ["]", "]"]


def legacy_line(r):
    roll = r.random()
    if roll < 0.08:
        return render(r, mutate(r, free_request(r)) if chance(r, 0.3) else free_request(r))
    if roll < 0.13:
        return odd_text(r) if chance(r, 0.5) else render(r, word_salad(r))
    if roll < 0.2:
        # bare filter words as the reader meets them, often cut short
        tokens = []
        for _ in range(r.randrange(1, 3)):
            if chance(r, 0.5):
                tokens += [pick(r, LEGACY_FILTER_TYPES), pick(r, ["0", "1"]), "["] + entities(r) + ["]"]
            else:
                tokens += ["interface", pick(r, ["0", "1"]), "[", "[", pick(r, ["eth0", "eth1"]),
                           pick(r, ["in", "out"]), "]", "]"]
        if chance(r, 0.6):
            del tokens[r.randrange(1, len(tokens) + 1):]
        return render(r, tokens)
    parts = []
    if chance(r, 0.7):
        parts.append(legacy_filter(r))
    if chance(r, 0.7):
        roll = r.random()
        if roll < 0.5:
            parts.append(["-a", "a"])
        elif roll < 0.8:
            parts.append(["-a", pick(r, ["i", "interface", "individual"])])
        elif roll < 0.9:
            parts.append(["-a"] + pick(r, [["src", "0", "[", "h1", "]"], ["interface", "0", "[", "[", "eth0", "in"],
                                          ["x"], ["-y", "b"]]))
        else:
            parts.append([pick(r, ["-ai", "-aa", "-a"])])
    for _ in range(pick(r, [0, 1, 2], [15, 75, 10])):
        roll = r.random()
        if roll < 0.85:
            parts.append([pick(r, ["-y", "-y", "-y", "-ybx", "-yy"]), pick(r, LEGACY_VALUES)])
        elif roll < 0.97:
            parts.append(["-y", pick(r, LEGACY_VALUE_NEAR)])
        else:
            parts.append(["-y"])
    for _ in range(pick(r, [0, 1, 2], [15, 75, 10])):
        roll = r.random()
        if roll < 0.85:
            group = pick(r, LEGACY_GROUPS)
            part = [pick(r, ["-g", "-g", "-gx"]), group]
            if not group.startswith("top"):
                # the rest of the line after a plain group is taken as it stands
                part += entities(r, pick(r, [0, 1, 2, 3]))
                if chance(r, 0.3):
                    part += pick(r, [["-y", "b"], ["-v", "wb", "acc=sum"], ["-s", "top", "index=2"],
                                     ["-k", "svc"], ["-f", "dst", "h1"], ["[", "]"]])
            parts.append(part)
        elif roll < 0.97:
            parts.append(["-g", pick(r, LEGACY_GROUP_NEAR)])
        else:
            parts.append(["-g"])
    if chance(r, 0.7):
        order = {"-filter": 0, "-a": 1, "-ai": 1, "-aa": 1, "-y": 2, "-ybx": 2, "-yy": 2, "-g": 3, "-gx": 3}
        parts.sort(key=lambda p: order.get(p[0], 1))
    else:
        r.shuffle(parts)
    tokens = [t for p in parts for t in p if t != ""]
    if chance(r, 0.25):
        tokens = mutate(r, tokens)
    if chance(r, 0.35):
        # written as the legacy writer writes: "[[src 0 [10.0.0.1 ]]]]"
        text = " ".join(tokens)
        while "[ [" in text or "] ]" in text:
            text = text.replace("[ [", "[[").replace("] ]", "]]")
        return text
    return render(r, tokens)


# ---------------------------------------------------------------------------
# Output
# ---------------------------------------------------------------------------

def escape(text):
    data = text.encode("utf-8", "surrogateescape")
    out = bytearray()
    for b in data:
        if b == 0x5c:
            out += b"\\\\"
        elif b == 0x09:
            out += b"\\t"
        elif b == 0x0a:
            out += b"\\n"
        elif b == 0x0d:
            out += b"\\r"
        elif b < 0x20 or b == 0x7f:
            out += b"\\x%02x" % b
        else:
            out.append(b)
    return bytes(out)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=120000, help="number of inputs (default 120000)")
    parser.add_argument("--seed", type=int, default=20240607, help="random seed (default 20240607)")
    parser.add_argument("--output", "-o", help="file to write (default: standard output)")
    args = parser.parse_args()

    r = random.Random(args.seed)
    requests = round(args.count * 0.70)
    links = round(args.count * 0.05)
    kinds = ["R"] * requests + ["V"] * links + ["L"] * (args.count - requests - links)
    r.shuffle(kinds)

    out = open(args.output, "wb") if args.output else sys.stdout.buffer
    lines = []
    for kind in kinds:
        if kind == "R":
            lines.append(b"R\t" + escape(current_request(r)))
        elif kind == "V":
            lines.append(b"R\t" + escape(virtual_link(r)))
        else:
            lines.append(b"L\t" + escape(legacy_line(r)))
    out.write(b"\n".join(lines) + (b"\n" if lines else b""))
    if args.output:
        out.close()


if __name__ == "__main__":
    main()
