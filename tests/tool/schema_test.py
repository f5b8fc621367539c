#!/usr/bin/env python3
"""Holds the schemas of "startplan schema" against real files, with a real validator.

    schema_test.py STARTPLAN SOURCE_DIR

The schemas must be schemas. Every file of the sample tree must be valid, and of the files below schema/KIND/
each must be refused for exactly the reasons that stand in its head, one a line:

    # refused: PATH KEYWORD [part of the message]

A file without such a line must be valid. The schemas of our own JSON must hold for the outputs that the cases
expect, and refuse them when a member is missing. Ends with 77 where the validator is not installed.
"""
import json
import pathlib
import re
import subprocess
import sys

try:
    import jsonschema
    import yaml
except ImportError as missing:
    print("skipped:", missing)
    sys.exit(77)


class CoreLoader(yaml.SafeLoader):
    """Reads scalars as YAML 1.2 does, like editors: "yes" is a text, and "<<" is a key."""


def integer(loader, node):
    text = loader.construct_scalar(node)
    return int(text, 0) if re.match("0[xo]", text) else int(text)


CoreLoader.yaml_implicit_resolvers = {}
for tag, pattern in (("null", "|~|null|Null|NULL"),
                     ("bool", "true|True|TRUE|false|False|FALSE"),
                     ("int", "[-+]?[0-9]+|0o[0-7]+|0x[0-9a-fA-F]+"),
                     ("float", r"[-+]?(\.[0-9]+|[0-9]+(\.[0-9]*)?)([eE][-+]?[0-9]+)?")):
    CoreLoader.add_implicit_resolver("tag:yaml.org,2002:" + tag, re.compile(f"^({pattern})$"), None)
CoreLoader.add_constructor("tag:yaml.org,2002:int", integer)


def reasons(schema, path):
    """(path, keyword, message) of everything that is wrong with a file."""
    document = yaml.load(path.read_text(), CoreLoader)
    return sorted(("/" + "/".join(map(str, error.absolute_path)), error.validator, error.message)
                  for error in jsonschema.Draft7Validator(schema).iter_errors(document))


def expected(path):
    """[path, keyword, part of the message] of each line that says so."""
    lines = re.findall("^# refused: (.*)$", path.read_text(), re.M)
    return sorted((line.split(" ", 2) + [""])[:3] for line in lines)


def check(schema, path):
    """True if the file is refused for the expected reasons, and for no other."""
    found = reasons(schema, path)
    wanted = expected(path)
    if len(found) == len(wanted) and all(
            f[:2] == tuple(w[:2]) and w[2] in f[2] for f, w in zip(found, wanted)):
        return True
    print(f"FAILED: {path}\n  expected {wanted}\n  found    {found}")
    return False


def schema_of(startplan, kind):
    text = subprocess.run([startplan, "schema", kind], check=True, stdout=subprocess.PIPE).stdout
    schema = json.loads(text)
    jsonschema.Draft7Validator.check_schema(schema)
    return schema


def check_output(validator, name, text):
    """True if the output is valid, and no longer is with any of its members gone, at whatever depth."""
    document = json.loads(text)
    wrong = [f"{list(error.absolute_path)}: {error.message}" for error in validator.iter_errors(document)]
    pending = [document]
    while pending and not wrong:
        node = pending.pop()
        pending += [child for child in (node.values() if isinstance(node, dict) else node)
                    if isinstance(child, (dict, list))]
        for key in list(node) if isinstance(node, dict) else []:
            value = node.pop(key)
            if validator.is_valid(document):
                wrong.append(f"nobody would miss {key}")
            node[key] = value
    for line in wrong:
        print(f"FAILED: {name}: {line}")
    return not wrong


def check_outputs(startplan, source):
    """The expected JSON of the cases against the schemas of our own output."""
    good = True
    for kind, command, least in (("diagnostics", "check", 2), ("plan", "plan", 3)):
        validator = jsonschema.Draft7Validator(schema_of(startplan, kind))
        outputs = [path for path in sorted((source / "tests/tool/cases").glob("*/expected.out"))
                   if path.read_text().startswith(f'{{\n  "format": "startplan-{command}"')]
        good = all([check_output(validator, path.parent.name, path.read_text()) for path in outputs]) and good
        good = len(outputs) >= least and good
        print(f"{kind}: {len(outputs)} outputs")
    return good


def main(startplan, source):
    tree = source / "examples" / "vehicle"
    samples = {"startup": sorted(tree.glob("startup/*.yaml")),
               "top": [tree / "top.yaml"] + sorted(tree.glob("groups/*.yaml")),
               "replace": [tree / "replace.yaml"]}
    good = check_outputs(startplan, source)
    for kind, files in samples.items():
        schema = schema_of(startplan, kind)
        broken = sorted((source / "tests" / "tool" / "schema" / kind).glob("*.yaml"))
        good = all([check(schema, path) for path in files + broken]) and bool(files and broken) and good
        print(f"{kind}: {len(files)} sample files, {len(broken)} files of this test")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], pathlib.Path(sys.argv[2])))
