#!/usr/bin/env python3
"""Holds the SARIF of "startplan check" against the parts of the format that it uses, for every case's tree.

    sarif_test.py STARTPLAN SOURCE_DIR

The schema beside this file allows nothing that the format does not have. What a schema cannot say is checked
here: numbers of rules, order of results, URIs, and that the JSON format tells the same. Ends with 77 where the
validator is not installed.
"""
import json
import pathlib
import re
import subprocess
import sys

try:
    import jsonschema
except ImportError as missing:
    print("skipped:", missing)
    sys.exit(77)

URI = re.compile(r"(file://)?([A-Za-z0-9._~/-]|%[0-9A-F]{2})*")


def run(startplan, top, output_format):
    done = subprocess.run([startplan, "check", "-f", output_format, "config/" + top.name],
                          cwd=top.parent.parent, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
    assert done.stderr == b"", done.stderr
    return done.returncode, json.loads(done.stdout.decode("utf-8", "strict"))


def place(location):
    physical = location["physicalLocation"]
    assert URI.fullmatch(physical["artifactLocation"]["uri"]), physical
    region = physical.get("region", {})
    assert region.get("endColumn", 2**32) > region.get("startColumn", 0), region
    return physical["artifactLocation"]["uri"], region.get("startLine", 0), region.get("startColumn", 0)


def check(validator, startplan, top):
    """How many results there are."""
    code, sarif = run(startplan, top, "sarif")
    validator.validate(sarif)
    (log,) = sarif["runs"]
    rules = log["tool"]["driver"]["rules"]
    assert log["invocations"][0]["executionSuccessful"] == (code != 2)
    for result in log["results"]:
        assert rules[result["ruleIndex"]]["id"] == result["ruleId"]
        assert len(result["locations"]) == 1
        numbers = [related["id"] for related in result.get("relatedLocations", [])]
        assert numbers == list(range(len(numbers))), numbers
        for location in result["locations"] + result.get("relatedLocations", []):
            place(location)

    json_code, plain = run(startplan, top, "json")
    assert json_code == code
    both = [[(result["ruleId"], result["level"], *place(result["locations"][0])[1:]) for result in log["results"]],
            [(one["rule"], one["level"], one["position"]["line"], one["position"]["column"])
             for one in plain["findings"]]]
    assert both[0] == both[1], both
    order = [(one["position"]["file"].encode(), one["position"]["line"], one["position"]["column"], one["rule"])
             for one in plain["findings"]]
    assert order == sorted(order), order
    return len(log["results"])


def main(startplan, source):
    schema = json.loads((source / "tests/tool/sarif.schema.json").read_text())
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)
    tops = sorted((source / "tests/tool/cases").glob("*/config/top.yaml"))
    results = 0
    for top in tops:
        try:
            results += check(validator, startplan, top)
        except Exception:
            print("FAILED:", top)
            raise
    print(f"{results} results of {len(tops)} trees")
    assert results > len(tops) // 4 and len(tops) > 50


if __name__ == "__main__":
    main(str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(sys.argv[2]).resolve())
