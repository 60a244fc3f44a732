"""Files of requests, one a line, read as lytreq reads them."""

import os
from typing import IO, Iterator, Tuple, Union

from . import _lytfilterparser as _ext
from ._error import RequestError

# What lytreq drops from the start of a file's first line.
_BYTE_ORDER_MARK = b"\xef\xbb\xbf"


def read_requests(source: Union[str, "os.PathLike[str]", IO[bytes], IO[str]]
                  ) -> Iterator[Tuple[int, Union["_ext.Request", RequestError]]]:
    """Yields (line number, request) for every request line of a file, or
    (line number, RequestError) for a line the library refuses; the numbers
    count from 1.

    `source` is a path or a file opened in binary or text mode. Lines are read
    as lytreq reads them: each without its line end ("\\n", and one "\\r"
    before it), the first without a byte order mark; lines that are blank
    (blanks and tabs only) or whose first other character is "#" are
    skipped. Bytes that are not UTF-8 go to the library unchanged, as lytreq
    passes them (from a path or a binary file); they stand in the request's
    texts as lone surrogates (the "surrogateescape" error handler)."""
    if isinstance(source, (str, os.PathLike)):
        with open(source, "rb") as file:
            yield from _lines(file)
    else:
        yield from _lines(source)


def _lines(file: Union[IO[bytes], IO[str]]) -> Iterator[Tuple[int, Union["_ext.Request", RequestError]]]:
    for number, raw in enumerate(file, 1):
        line = raw.decode("utf-8", "surrogateescape") if isinstance(raw, bytes) else str(raw)
        if number == 1 and line.startswith(_BYTE_ORDER_MARK.decode()):
            line = line[1:]
        if line.endswith("\n"):
            line = line[:-1]
        if line.endswith("\r"):
            line = line[:-1]
        if not line.strip(" \t") or line.lstrip(" \t").startswith("#"):
            continue
        try:
            request = _ext.parse(line)
        except RequestError as error:
            yield number, error
            continue
        if request is not None:
            yield number, request
