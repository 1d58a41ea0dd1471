#!/usr/bin/env python3
"""Copies src/ and takes out the catch clauses that only add a context to a failure.

    without_contexts.py SOURCE TARGET

What is left of a procedure is its body; a clause that does anything else stays. The benchmark is
built a second time from the copy, so that the price of the contexts can be measured. Files that
would not change are not written again. Fails when it finds no clause, or one whose `try` it cannot
tell.
"""
import pathlib
import re
import sys

# The clause of a function-try-block: its words are those of diagnostics/Context.h.
CLAUSE = re.compile(r"VENDREL_CONTEXT(?:_AT)?\(")
# The `try` between the head of a function and its body or its initialisers.
TRY = re.compile(r"(\)(?: const)?(?: -> [^\n{;]*)?) try(?= [:{])")


def behind_arguments(text, at):
    """Where the parenthesis that was opened before `at` is closed; strings are stepped over."""
    depth = 1
    for token in re.finditer(r'"(?:[^"\\]|\\.)*"|[()]', text[at:]):
        depth += {"(": 1, ")": -1}.get(token.group(), 0)
        if depth == 0:
            return at + token.end()
    return None


def without_contexts(text, name):
    """The text without such clauses, and how many there were."""
    count = 0
    while clause := CLAUSE.search(text):
        heads = list(TRY.finditer(text, 0, clause.start()))
        end = behind_arguments(text, clause.end())
        if not heads or end is None:
            sys.exit(f"{name}: the clause at character {clause.start()} belongs to no function")
        head = heads[-1]
        text = text[:head.start()] + head.group(1) + text[head.end():clause.start()] + text[end:]
        count += 1
    return text, count


def main():
    source, target = map(pathlib.Path, sys.argv[1:3])
    count = 0
    for path in sorted(source.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        text, found = path.read_text(), 0
        if path.name != "Context.h":
            text, found = without_contexts(text, path)
        count += found
        copy = target / path.relative_to(source)
        copy.parent.mkdir(parents=True, exist_ok=True)
        if not copy.exists() or copy.read_text() != text:
            copy.write_text(text)
    if count == 0:
        sys.exit(f"no catch clause found below {source}: nothing to compare")
    print(f"{count} catch clauses taken out")


if __name__ == "__main__":
    main()
