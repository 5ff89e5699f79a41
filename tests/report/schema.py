#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds results and the page on reports against the schema: schema.py SCHEMA PAGE FOLDER...

Stricter than the schema is for its readers: a field that it does not name is a fault."""
import json
import pathlib
import re
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: python3-jsonschema is not there")
    sys.exit(77)


def close(schema):
    """Forbids what an object's schema does not name."""
    if isinstance(schema, dict):
        if "properties" in schema:
            schema.setdefault("additionalProperties", False)
        for part in schema.values():
            close(part)
    elif isinstance(schema, list):
        for part in schema:
            close(part)


def refuse(word):
    raise ValueError(word + " is no JSON")


with open(sys.argv[1], encoding="utf-8") as file:
    SCHEMA = json.load(file)
jsonschema.Draft202012Validator.check_schema(SCHEMA)
close(SCHEMA)
VALIDATOR = jsonschema.Draft202012Validator(SCHEMA)
paths = [path for folder in sys.argv[3:] for path in pathlib.Path(folder).glob("*.json")]
failed = not paths
for path in paths:
    with open(path, encoding="utf-8") as file:
        result = json.load(file, parse_constant=refuse)
    for error in VALIDATOR.iter_errors(result):
        print(str(path) + ": " + error.json_path + ": " + error.message)
        failed = True


def fields(schema):
    """Names of all fields, at any depth."""
    parts = schema.values() if isinstance(schema, dict) else schema if isinstance(schema, list) else ()
    names = schema.get("properties", {}) if isinstance(schema, dict) else {}
    return set(names).union(*map(fields, parts))


# Of a row all names that stand in its first cell, and those in the second one that may be inner fields.
page = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8").partition("\n## result.json\n")[2]
rows = re.findall(r"^\| (`.*?) \| (.*) \|$", page, re.MULTILINE)
first, both = (set(re.findall(r"`([a-z0-9_]+)`", " ".join(cells)))
               for cells in ([row[0] for row in rows], [" ".join(row) for row in rows]))
for fault, names in ("not described", fields(SCHEMA) - both), ("no field", first - fields(SCHEMA)):
    for name in sorted(names):
        print(sys.argv[2] + ": " + fault + ": " + name)
        failed = True
sys.exit(failed)
