#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds results against the schema: schema.py SCHEMA FOLDER...

Stricter than the schema is for its readers: a field that it does not name is a fault."""
import json
import pathlib
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
paths = [path for folder in sys.argv[2:] for path in pathlib.Path(folder).glob("*.json")]
failed = not paths
for path in paths:
    with open(path, encoding="utf-8") as file:
        result = json.load(file, parse_constant=refuse)
    for error in VALIDATOR.iter_errors(result):
        print(str(path) + ": " + error.json_path + ": " + error.message)
        failed = True
sys.exit(failed)
