"""The object model of Visual Basic code.

    import vendrelmodel

    project = vendrelmodel.load("Ledger.vbp")
    for module in project.components:
        for block in module.blocks:
            print(module.name, block.name, block.file, block.line)

Every property of an element has its documented name (`ProjectName`) and one in snake case
(`project_name`). An element keeps the tree that it stands in alive. Each load has a workspace of its
own: two threads load and read at once; one tree is used by one thread at a time, and the others wait
for it by themselves.
"""

import collections.abc as _abc
import enum as _enum
import json as _json
from typing import Any, Iterator

from . import _native
from ._methods import METHODS as _METHODS
from ._native import CodeLine, Collection, Lines
from ._records import (Change, Context, Diagnostic, InputError, Name, UsageError,
                       VendrelError)

try:
    from ._docs import DOCS as _DOCS
except ImportError:  # the build has not read the headers
    _DOCS = {}

__version__ = _native.version.split()[-1]


class _Words(_enum.IntEnum):
    """A value of an enumeration: a number with its name."""

    __str__ = int.__repr__


def _enumeration(name: str, values: list[tuple[int, str, str]]) -> type:
    members = {}
    for number, member, _ in values:
        members.setdefault(member, number)
    return _Words(name, members, module=__name__)


_enumerations = {name: _enumeration(name, values)
                 for name, values in _native.enumerations().items()}
_types = _native.make_types(_DOCS, _enumerations)
globals().update(_types)
for _function, _name, _classes in _METHODS:
    for _class in _classes:
        setattr(_types[_class], _name, _function)
_abc.Sequence.register(Collection)
_abc.MutableSequence.register(Lines)


def load(path: Any = None, *, modules: bool = True, progress: Any = None, **options: Any) -> Any:
    """Loads a project, a group or solution, a module, a folder of modules, a type library or an
    assembly; gives a VBProject or a VBProjectGroup. `modules` False reads the project file alone.
    `progress(done, all)` is called behind modules, some twenty times a second at most; what it
    raises stops the load. Raises InputError for what cannot be read, UsageError for an option that
    makes no sense.

    The options are those of the tool, with underscores; `custom` stands in place of the path:

"""
    return _native.load(path, modules=modules, progress=progress, **options)


load.__doc__ += "\n".join(f"    {name}: {text}" for name, _, _, text in _native.options_of_load())


def projects(folder: Any) -> list[str]:
    """The project files in and below a folder, in the order of their paths."""
    return _native.projects(folder)


def run(*arguments: str, input: str = "") -> tuple[int, str, str]:
    """Runs the tool on a command line, in this process; gives its exit code, its result and what it
    told on the way."""
    return _native.run([str(argument) for argument in arguments], input)


def records(command: str, *arguments: str) -> Iterator[dict[str, Any]]:
    """The records that a command of the tool writes under --json, a dict each, without the line
    that heads the list. Raises InputError where the command fails; one that finds nothing gives
    none."""
    code, out, told = run(command, *arguments, "--json")
    if code == 2:
        raise UsageError(told.strip())
    if code == 1 and not out:
        raise InputError(told.strip())
    for line in out.splitlines():
        record = _json.loads(line)
        if not ("Command" in record and "FormatVersion" in record):
            yield record


__all__ = ["load", "projects", "run", "records", "CodeLine", "Collection", "Lines", "Change",
           "Context", "Diagnostic", "InputError", "Name", "UsageError", "VendrelError",
           *(name for name in _types if name != "Exception")]  # which would hide the one of Python
