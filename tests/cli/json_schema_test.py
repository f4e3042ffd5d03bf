#!/usr/bin/env python3
"""Holds the schema of the JSON documents against every one that a golden case expects.

usage: json_schema_test.py SCHEMA CASES
"""
import json
import pathlib
import sys

import jsonschema

schema = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
failures = []
commands = set()
kinds = set()


def objects(value):
    """Yields every object in a document, itself included."""
    if isinstance(value, dict):
        yield value
    for part in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        yield from objects(part)


for path in sorted(pathlib.Path(sys.argv[2]).glob("*/expected/output")):
    text = path.read_text(encoding="utf-8")
    if not text.startswith(("{", "[")):
        continue
    document = json.loads(text)
    for error in validator.iter_errors(document):
        details = "; ".join(inner.message[:200] for inner in error.context) or error.message
        failures.append(f"{path.parent.parent.name}: {details}")
    commands.add(document["command"])
    # A schema that lets anything pass would not notice a part that it does not name, or one that is gone. Each kind of
    # object is tried once.
    for part in list(objects(document)):
        kind = (document["command"], *part)
        if kind in kinds:
            continue
        kinds.add(kind)
        part["unknown"] = 1
        if validator.is_valid(document):
            failures.append(f"{path.parent.parent.name}: the schema accepts an unknown part beside {', '.join(kind)}")
        del part["unknown"]
    for part in document:
        if validator.is_valid({name: document[name] for name in document if name != part}):
            failures.append(f"{path.parent.parent.name}: the schema does not miss {part}")

for command in {"analyse", "generate", "explain", "check", "inspect", "machine check"} - commands:
    failures.append(f"no golden case has a document of {command}")
print("\n".join(failures))
sys.exit(bool(failures))
