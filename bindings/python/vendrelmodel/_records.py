"""Plain records and the exceptions of the package."""

from typing import Any, NamedTuple


class Context(NamedTuple):
    """What one procedure of the library knew when a failure passed through it. Values are shown as
    error reports show them."""

    procedure: str
    module: str
    line: int
    parameters: dict[str, str]
    locals: dict[str, str]
    fields: dict[str, str]


class VendrelError(Exception):
    """A failure of the library: its number, its text, and the contexts of the procedures that it
    passed, the innermost first."""

    def __init__(self, text: str, number: int = 0, contexts: list[Context] | None = None,
                 raised_in: str = "", raised_at: int = 0) -> None:
        super().__init__(text)
        self.text = text
        self.number = number
        self.contexts = contexts or []
        self.raised_in = raised_in
        self.raised_at = raised_at


class InputError(VendrelError):
    """An input that cannot be read, or is not what it is named as; an output that cannot be
    written."""


class UsageError(VendrelError, ValueError):
    """An option or a request that makes no sense; the text says what to write instead."""


class Diagnostic(NamedTuple):
    """One thing that was stepped over, missing or not understood. `file` is a path of this machine,
    `line` counts from 1 on; 0 is the file as a whole."""

    code: str
    severity: str
    file: str
    line: int
    text: str


class Name(NamedTuple):
    """A qualified name with its element. `leads_back` is False where the name finds another one."""

    qualified_name: str
    kind: str
    element: Any
    leads_back: bool


class Change(NamedTuple):
    """One difference between two trees: "added", "gone", "moved", "changed" or "text". Places are a
    path of this machine and a line, ("", 0) where the element is not in that tree."""

    change: str
    kind: str
    element: str
    property: str
    before: str
    after: str
    place_before: tuple[str, int]
    place_after: tuple[str, int]
