"""Reads what the headers say of each property: make_docs.py OUTPUT HEADER...

A property is a member of its class, or of a union in it; the comment of three slashes above it, or
that of the nearest class above it, is its documentation."""

import pprint
import re
import sys

CLASS = re.compile(r"^(?:class|struct) (\w+)(?: final)?( :.*)? \{")
MEMBER = re.compile(r"^  (?:  )?(?!return|using|friend|explicit|template|virtual ~)"
                    r"[\w:<>,*&\[\]\s]*?[\s&*](\w+)(?:\(| =|;|\{)")


def docs_of(path, bases):
    found, own, comment = {}, None, []
    for line in open(path, encoding="utf-8"):
        start = CLASS.match(line)
        member = MEMBER.match(line)
        said = re.match(r"^ {0,4}/// ?(.*)", line)
        if said:
            comment.append(said.group(1).rstrip())
            continue
        if start:
            own = found.setdefault(start.group(1), {})
            bases[start.group(1)] = set(re.findall(r"\w+", start.group(2) or "")) - {start.group(1)}
            if comment:
                own[""] = "\n".join(comment)
        elif own is not None and member and comment:
            own.setdefault(member.group(1), "\n".join(comment))
        elif own is not None and line.startswith("};"):
            own = None
        comment = []
    return found


def main(output, *headers):
    docs, bases = {}, {}
    for header in headers:
        for name, own in docs_of(header, bases).items():
            docs.setdefault(name, {}).update(own)
    for name, parents in bases.items():
        for parent in parents:
            docs[name] = {k: v for k, v in docs.get(parent, {}).items() if k} | docs[name]
    with open(output, "w", encoding="utf-8") as file:
        file.write('"""What the headers of the library say of each class and property."""\n\n')
        file.write("DOCS = " + pprint.pformat({k: v for k, v in docs.items() if v}, width=100) + "\n")


main(*sys.argv[1:])
