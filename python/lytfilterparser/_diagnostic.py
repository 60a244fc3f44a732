"""The diagnostic values of the package, kept apart so that the extension
can make them while the package is still being imported."""

from typing import NamedTuple


class Diagnostic(NamedTuple):
    """A finding about a text that the library reads: something it may not
    mean what it says.

    ``code`` is stable (match on it; diagnostic_codes() lists them all),
    ``severity`` is "warning" (the request may not do what was meant) or
    "note" (harmless, probably not meant), ``message`` is for people.
    ``start`` and ``length`` are the place in the text the diagnostic is
    about (the request text, or the legacy line of a conversion), counted in
    characters of that str, as ``text[start:start + length]``; a length of 0
    marks the place just before ``start``, the end of the text when
    ``start`` is its length.
    """
    code: str
    severity: str
    message: str
    start: int
    length: int


class DiagnosticCode(NamedTuple):
    """A code a Diagnostic may carry, with its severity and one line for
    people on what it means."""
    code: str
    severity: str
    meaning: str
