#!/usr/bin/env python3
"""The modules of projects as a table: inventory.py PROJECT..."""

import sys

import vendrelmodel


def rows(project):
    for module in project.components:
        procedures = [block for block in module.blocks if block.is_method or block.is_property]
        lines = sum(len(block.code_lines) for block in module.blocks)
        yield (project.project_name, module.name, module.file_type.name[2:].lower(), lines,
               len(procedures), len(module.declarations))


def table(lines):
    widths = [max(len(str(cell)) for cell in column) for column in zip(*lines)]
    for line in lines:
        cells = [str(cell).rjust(width) if isinstance(cell, int) else str(cell).ljust(width)
                 for cell, width in zip(line, widths)]
        yield "  ".join(cells).rstrip()


def main(paths):
    head = ("project", "module", "kind", "lines", "procedures", "declarations")
    lines = [head]
    for path in paths:
        lines += rows(vendrelmodel.load(path))
    print("\n".join(table(lines)))


main(sys.argv[1:])
