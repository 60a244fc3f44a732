"""The exception of the package, kept apart so that the extension can raise
it while the package is still being imported."""

from typing import Iterable, List, Optional


class RequestError(ValueError):
    """The library refused a request or a legacy line, or could not do what
    was asked of a request.

    ``message`` is the library's message exactly (also ``str(error)``).
    ``start`` and ``length`` give the place that the message is about,
    counted in characters of the str it is in: the word the reader stopped
    on in the text passed to ``parse`` (``length`` 0 at the end of the text
    when a word is missing), the word of a legacy line that ``convert``
    refuses, the item of the text a request was parsed from that made
    ``NetworkRequest.validate`` fail. They are None where the library gives
    no place: for other faults of an operation on a request.
    ``suggestions`` lists up to three words of the syntax the faulty word
    may have meant, the closest first; empty where the library has none.
    """

    message: str
    start: Optional[int]
    length: Optional[int]
    suggestions: List[str]

    def __init__(self, message: str, start: Optional[int] = None, length: Optional[int] = None,
                 suggestions: Iterable[str] = ()) -> None:
        super().__init__(message)
        self.message = message
        self.start = start
        self.length = length
        self.suggestions = list(suggestions)
