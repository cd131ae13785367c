"""Holds the sample files and a table of faults against the published JSON Schemas.

    check_schemas.py <schemas folder> <sample outputs folder>
"""

import copy
import json
import pathlib
import sys

import jsonschema

schemas, outputs = map(pathlib.Path, sys.argv[1:3])
failures = 0


def expect(valid, name, schema, document):
    global failures
    errors = list(jsonschema.Draft202012Validator(schema).iter_errors(document))
    if valid != (not errors):
        failures += 1
        print(f"{name}: expected {'no error' if valid else 'an error'}, got {errors}")


def changed(document, path, value):
    """A copy with the member at `path` set to `value`, or removed where there is no value."""
    result = copy.deepcopy(document)
    *way, last = path
    at = result
    for step in way:
        at = at[step]
    if value is None:
        del at[last]
    else:
        at[last] = value
    return result


def check(schema_name, file_name, accepted, refused):
    schema = json.loads((schemas / schema_name).read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    sample = json.loads((outputs / file_name).read_text(encoding="utf-8"))
    expect(True, file_name, schema, sample)
    for path, value in accepted:
        expect(True, f"{file_name} {path}", schema, changed(sample, path, value))
    for path, value in refused:
        expect(False, f"{file_name} {path}", schema, changed(sample, path, value))


check(
    "soc2-mesh.schema.json",
    "soc2-mesh-bondgraph.json",
    accepted=[(["nodes", 0, "w"], 3.0), (["nodes", 0, "g"], -1), (["nodes", 0, "more"], [])],
    refused=[
        (["nodes"], None),
        (["nodes", 0, "id"], None),
        (["nodes", 0, "g"], None),
        (["nodes", 0, "w"], None),
        (["nodes", 0, "evidence"], None),
        (["nodes", 0, "g"], True),
        (["nodes", 0, "w"], 1.5),
        (["nodes", 0, "w"], 2**63),
        (["nodes", 0], "CC1"),
    ],
)
check(
    "roles.schema.json",
    "roles-bondgraph.json",
    accepted=[(["roles", 1, "criteria"], []), (["roles", 1, "controls"], None)],
    refused=[
        (["roles", 0, "role"], None),
        (["roles", 0, "readonly"], None),
        (["roles", 0, "readonly"], 0),
        (["roles", 1, "controls", 0, "close"], None),
        (["roles", 2, "criteria", 0], 7),
    ],
)
sys.exit(1 if failures else 0)
