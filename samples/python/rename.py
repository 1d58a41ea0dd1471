#!/usr/bin/env python3
"""Renames a procedure and writes the project elsewhere: rename.py PROJECT MODULE~NAME NEW FOLDER

Replaces the name as a whole word in the code of every module, not in texts and comments. Of two
procedures of one name both are renamed: look at the differences that it prints."""

import re
import sys

import vendrelmodel

# A text in quotation marks, a comment, or a word.
PIECE = re.compile(r'"(?:[^"]|"")*"?|\'.*|\b\w+\b')


def renamed(line, old, new):
    def piece(match):
        return new if match.group().lower() == old.lower() else match.group()

    return PIECE.sub(piece, line)


def main(path, name, new, folder):
    project = vendrelmodel.load(path)
    found = project.find(f"{project.project_name}~{name}")
    if not found:
        sys.exit(f"{path}: nothing is called {name}")
    old = found[0].name
    for module in project.components:
        for block in module.blocks:
            lines = block.code_lines
            for i, line in enumerate(lines):
                if (text := renamed(line, old, new)) != line:
                    print(f"- {line.strip()}\n+ {text.strip()}")
                    lines[i] = text
    found[0].name = new
    print(project.write(folder, yes=True), end="")


main(*sys.argv[1:])
