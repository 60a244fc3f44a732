"""Imports lytfilterparser from an install prefix in a fresh interpreter and
checks that the package, its extension and the library all come from there.
Run by scripts/consumer.sh as: python3 -I installed.py PREFIX LYTREQ
(-I: no build tree, current folder or PYTHONPATH on the path)."""

import glob
import os
import subprocess
import sys

prefix, tool = os.path.realpath(sys.argv[1]), sys.argv[2]
found = glob.glob(os.path.join(prefix, "lib", "**", "lytfilterparser", "__init__.py"), recursive=True)
assert len(found) == 1, "lytfilterparser under %s: %s" % (prefix, found)
sys.path.insert(0, os.path.dirname(os.path.dirname(found[0])))

import lytfilterparser  # noqa: E402
from lytfilterparser import _lytfilterparser  # noqa: E402

with open("/proc/self/maps") as maps:
    libraries = {line.split()[-1] for line in maps if "liblytFilterParser.so" in line}
for path in [lytfilterparser.__file__, _lytfilterparser.__file__] + sorted(libraries):
    assert os.path.realpath(path).startswith(prefix + os.sep), "%s is not under %s" % (path, prefix)
assert libraries and os.path.exists(os.path.join(os.path.dirname(found[0]), "py.typed"))

text = "-f src 10.0.0.1 -k svc -v wb acc=rate -s top"
expected = subprocess.run([tool, "parse", text], stdout=subprocess.PIPE, text=True, check=True).stdout
request = lytfilterparser.parse(text)
assert request is not None and request.dump() + "\n" == expected
print("installed lytfilterparser %s from %s" % (lytfilterparser.__version__, os.path.dirname(found[0])))
