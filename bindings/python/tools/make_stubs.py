"""Writes the type stub of the package from the tables of its compiled half: make_stubs.py OUTPUT"""

import inspect
import sys

import vendrelmodel
from vendrelmodel import _methods, _native, _records

HEAD = '''"""The object model of Visual Basic code. Made by make_stubs.py."""

import builtins
import os
from enum import IntEnum
from typing import Any, Callable, Generic, Iterator, NamedTuple, TypeVar, overload

T = TypeVar("T")
__version__: str
'''

COLLECTION = '''
class Collection(Generic[T]):
    """{doc}"""
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: int) -> T: ...
    @overload
    def __getitem__(self, index: slice) -> list[T]: ...
    @overload
    def __getitem__(self, name: str) -> T: ...
    def __iter__(self) -> Iterator[T]: ...
    def __contains__(self, item: object) -> bool: ...
    def get(self, name: str) -> T | None: ...
    def remove(self, element: T) -> None: ...

class Lines:
    """{lines}"""
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: int) -> str: ...
    @overload
    def __getitem__(self, index: slice) -> list[str]: ...
    def __setitem__(self, index: int, text: str) -> None: ...
    def __delitem__(self, index: int) -> None: ...
    def __iter__(self) -> Iterator[str]: ...
    def insert(self, index: int, text: str) -> None: ...
    def append(self, text: str) -> None: ...
    def record(self, index: int) -> CodeLine: ...
'''

LOAD_TYPES = {"define": "dict[str, object] | list[str]", "drive": "dict[str, str] | list[str]",
              "set": "dict[str, object] | list[str]"}


def signature(function):
    """The signature with the types as they are written."""
    text = str(inspect.signature(function))
    for long in ("typing.", "vendrelmodel._records.", "vendrelmodel._methods."):
        text = text.replace(long, "")
    return text + ": ..."


def quoted(doc, indent):
    return f'{indent}"""{inspect.cleandoc(doc)}"""'.replace("\\", "\\\\")


def enumerations():
    for name, values in _native.enumerations().items():
        yield f"\nclass {name}(IntEnum):"
        known = {}
        for number, member, _ in values:
            if known.setdefault(member, number) == number:
                yield f"    {member} = {number}"


def record(cls):
    yield f"\nclass {cls.__name__}(NamedTuple):"
    yield quoted(cls.__doc__, "    ")
    for field, kind in cls.__annotations__.items():
        name = kind if isinstance(kind, str) else getattr(kind, "__name__", str(kind))
        yield f"    {field}: {str(kind) if '[' in str(kind) else name}".replace("typing.", "")


def methods_of(name):
    for function, member, classes in _methods.METHODS:
        if name not in classes:
            continue
        if isinstance(function, property):
            yield "    @property"
            yield f"    def {member}{signature(function.fget)}"
        else:
            yield f"    def {member}{signature(function)}"


def classes():
    yield "\nclass Element:"
    yield quoted(vendrelmodel.Element.__doc__, "    ")
    yield from methods_of("Element")
    for name, (_, properties) in _native.classes().items():
        yield f"\nclass {name}(Element):"
        yield quoted(getattr(vendrelmodel, name).__doc__ or "", "    ")
        for own, snake, kind, _, writable in properties:
            for attribute in (own, snake):
                # Strings in quotes: a property may have the name of a class.
                yield "    @property"
                yield f'    def {attribute}(self) -> "{kind}": ...'
                if writable:
                    yield f"    @{attribute}.setter"
                    yield f'    def {attribute}(self, value: "{kind}") -> None: ...'
        yield from methods_of(name)


# Properties of a line, in either spelling, that are no yes or no.
LINE_TYPES = {"linetype": "LineTypeEnum", "eventindex": "int",
              **dict.fromkeys(("text", "statementpart", "commentpart", "remainder"), "str")}


def code_line():
    yield "\nclass CodeLine:"
    for name, member in vars(vendrelmodel.CodeLine).items():
        if isinstance(member, property):
            kind = LINE_TYPES.get(name.replace("_", "").lower(), "bool")
            yield "    @property"
            yield f"    def {name}(self) -> {kind}: ..."


def load():
    yield "\ndef load(path: str | os.PathLike[str] | None = None, *, modules: bool = True,"
    yield "         progress: Callable[[int, int], object] | None = None,"
    for name, flag, many, _ in _native.options_of_load():
        kind = "bool" if flag else LOAD_TYPES.get(name, "str | list[str]" if many else "str")
        yield f"         {name}: {kind} = ...,"
    yield "         ) -> Any:"
    yield quoted(vendrelmodel.load.__doc__, "    ")
    yield "def projects(folder: str | os.PathLike[str]) -> list[str]: ..."
    yield 'def run(*arguments: str, input: str = "") -> tuple[int, str, str]: ...'
    yield "def records(command: str, *arguments: str) -> Iterator[dict[str, Any]]: ..."


def errors():
    yield "\nclass VendrelError(builtins.Exception):"
    yield quoted(_records.VendrelError.__doc__, "    ")
    yield "    text: str\n    number: int\n    contexts: list[Context]"
    yield "    raised_in: str\n    raised_at: int"
    yield "class InputError(VendrelError): ..."
    yield "class UsageError(VendrelError, ValueError): ..."


def main(output):
    lines = [HEAD]
    lines += enumerations()
    for cls in (_records.Context, _records.Diagnostic, _records.Name, _records.Change):
        lines += record(cls)
    lines += errors()
    lines += code_line()
    lines.append(COLLECTION.format(doc=vendrelmodel.Collection.__doc__,
                                   lines=vendrelmodel.Lines.__doc__))
    lines += classes()
    lines += load()
    with open(output, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")


main(*sys.argv[1:])
