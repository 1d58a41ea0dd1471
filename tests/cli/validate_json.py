"""Holds JSON that the tool wrote against the schema that it prints.

usage: validate_json.py FOLDER; each NAME.json there is held against NAME.schema.json. A file is one
document, or an object a line. Names every value that does not fit; the exit code is 1 if there is one.
"""
import json
import pathlib
import sys

import jsonschema


def values(text):
    try:
        return [json.loads(text)]
    except ValueError:
        return [json.loads(line) for line in text.splitlines()]


def narrowed(schema, value):
    """The schema of the value's own class, where it tells one: that gives a message to the point."""
    name = value.get("Class") if isinstance(value, dict) else None
    if name in schema["$defs"] and "properties" in schema["$defs"][name]:
        return {"$schema": schema["$schema"], "$ref": "#/$defs/" + name, "$defs": schema["$defs"]}
    return schema


def main(folder):
    bad = 0
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        if path.name.endswith(".schema.json"):
            continue
        schema = json.loads(path.with_suffix(".schema.json").read_text("utf-8"))
        jsonschema.Draft202012Validator.check_schema(schema)
        found = values(path.read_text("utf-8"))
        if not found:
            print(path.name, "is empty")
            bad += 1
        for value in found:
            validator = jsonschema.Draft202012Validator(narrowed(schema, value))
            for error in validator.iter_errors(value):
                print(path.name, error.json_path, error.message[:300])
                bad += 1
    return bad > 0


sys.exit(main(sys.argv[1]))
