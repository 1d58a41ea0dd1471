"""What elements can do beside their properties. Each function becomes a method of the classes that
its entry in METHODS names."""

import json
import os
from typing import Any, Iterator

from . import _native
from ._records import Change, Diagnostic, Name


def to_dict(self, *, lines: bool = False, empty: bool = True, identity: bool = True) -> dict[str, Any]:
    """The element with everything below it, as the command `dump` shows it. `lines` takes the code
    lines too, `empty` properties that say nothing, `identity` what differs from load to load."""
    return json.loads(_native.dump(self, lines, empty, identity))


def _file(self) -> str:
    """The file in which the element stands, a path of this machine; empty for none."""
    return _native.place(self)[0]


def _line(self) -> int:
    """The line on which the element stands, from 1 on; 0 is the file as a whole."""
    return _native.place(self)[1]


def _kind(self) -> str:
    """What the element is called in lists: "procedure", "local-variable", "module"."""
    return _native.kind(self)


def names(self, kind: str = "") -> list[Name]:
    """Every qualified name of the project or group, with its element."""
    return _native.names(self, kind)


def walk(self, kind: str = "") -> Iterator[Any]:
    """Every element that has a qualified name, in the order of the tree; only those of `kind` if
    that is given."""
    return iter(_native.find(self, "*", kind))


def find(self, name: str, kind: str = "") -> list[Any]:
    """The elements of a qualified name ("Ledger~modMain~Main"), a bare name, or a pattern with *, ?,
    # and [a-z]; letter case is ignored. An empty list if there are none."""
    return _native.find(self, name, kind)


def resolve(self, type_name: str, from_module: Any = None) -> tuple[Any, int]:
    """The module, enumeration or structure that a type name means, seen from a module if one is
    given, and where it was found (a TypeClassEnum). The element is None for intrinsic types and for
    those that are declared nowhere (tcUnresolved)."""
    from . import TypeClassEnum

    element, where = _native.resolve(self, type_name, from_module)
    return element, TypeClassEnum(where)


def _diagnostics(self) -> list[Diagnostic]:
    """What was stepped over, missing or not understood, in the order in which it was told."""
    return _native.diagnostics(self)


def diff(self, other: Any, *, lines: bool = True, places: bool = False, paths: bool = True) -> list[Change]:
    """What differs in `other`, an element of the same class, which may be of another load. `lines`
    compares code lines, `places` where elements stand, `paths` where files do."""
    return _native.diff(self, other, lines, places, paths)


def write(self, to: Any = "", *, yes: bool = False, dry_run: bool = False,
          only_project_file: bool = False, line_numbers: str = "") -> str:
    """Writes the project or group: in place with backups, or as a copy to the folder `to`. Gives
    what the command `write` tells. Nothing that was read is written over by a copy; files there that
    hold other bytes are only with `yes`. `dry_run` writes nothing and gives the differences."""
    return _native.write(self, os.fspath(to), yes, dry_run, only_project_file, line_numbers)


def new_module(self, name: str, file_type: int = 0, file_name: str = "") -> Any:
    """Adds a module of a kind (a FileTypeEnum; ftModule unless given) with its header lines."""
    from . import FileTypeEnum

    return _native.new_module(self, int(file_type or FileTypeEnum.ftModule), name, file_name)


def add_code(self, text: str) -> None:
    """Takes a line or a text of lines in, as if it had stood in the file."""
    _native.add_code(self, text)


_ROOTS = ("VBProject", "VBProjectGroup")

# Function or property, its name, and the classes that get it.
METHODS = [
    (to_dict, "to_dict", ("Element",)),
    (property(_file), "file", ("Element",)),
    (property(_line), "line", ("Element",)),
    (property(_kind), "kind", ("Element",)),
    (diff, "diff", ("Element",)),
    (names, "names", _ROOTS),
    (walk, "walk", _ROOTS),
    (find, "find", _ROOTS),
    (property(_diagnostics), "diagnostics", _ROOTS),
    (write, "write", _ROOTS),
    (resolve, "resolve", ("VBProject",)),
    (new_module, "new_module", ("VBProject",)),
    (add_code, "add_code", ("Component",)),
]
