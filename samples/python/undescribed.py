#!/usr/bin/env python3
"""All public functions that nothing describes, with their places: undescribed.py PROJECT..."""

import sys

import vendrelmodel
from vendrelmodel import BlockTypeEnum


def main(paths):
    for path in paths:
        for block in vendrelmodel.load(path).walk("procedure"):
            if (block.block_type == BlockTypeEnum.btFunction and block.access == "PUBLIC"
                    and not block.description):
                print(f"{block.file}:{block.line}: {block.qualified_name}")


main(sys.argv[1:])
