#!/usr/bin/env python3
"""Holds that rules, cases and manual are the same set.

    rules_test.py STARTPLAN SOURCE_DIR [--update]

Each rule has a case rule-ID, whose expectations show it, and a case rule-ID-near-miss, whose expectations do
not; no such case belongs to anything else. docs/rules.md is what "startplan rules --format markdown" prints;
--update writes it.
"""
import json
import pathlib
import subprocess
import sys


def say(startplan, *arguments):
    return subprocess.run([startplan, *arguments], check=True, stdout=subprocess.PIPE, timeout=60).stdout


def check_cases(cases, rules):
    wrong = []
    wanted = {f"rule-{rule}{end}" for rule in rules for end in ("", "-near-miss")}
    there = {path.name for path in cases.glob("rule-*")}
    wrong += [f"there is no case {name}" for name in sorted(wanted - there)]
    wrong += [f"the case {name} is no rule's" for name in sorted(there - wanted)]
    for rule in rules:
        if f"[{rule}]" not in expectation(cases / f"rule-{rule}"):
            wrong.append(f"the case rule-{rule} does not show the rule")
        if f"[{rule}]" in expectation(cases / f"rule-{rule}-near-miss"):
            wrong.append(f"the case rule-{rule}-near-miss shows the rule")
    return wrong


def expectation(case):
    path = case / "expected.out"
    return path.read_text() if path.exists() else ""


def check_texts(rules):
    wrong = []
    for rule in rules:
        for key in ("summary", "text", "effect", "fix"):
            if not rule[key].strip():
                wrong.append(f"{rule['rule']} has no {key}")
        if rule["summary"][0].isupper() or rule["summary"].endswith("."):
            wrong.append(f"the summary of {rule['rule']} is no part of a sentence")
    return wrong


def main(startplan, source, is_update):
    rules = json.loads(say(startplan, "rules", "--format", "json"))["rules"]
    manual = source / "docs/rules.md"
    page = say(startplan, "rules", "--format", "markdown")
    if is_update:
        manual.write_bytes(page)
    wrong = check_texts(rules)
    wrong += check_cases(source / "tests/tool/cases", [rule["rule"] for rule in rules])
    if manual.read_bytes() != page:
        wrong.append("docs/rules.md is not what \"startplan rules --format markdown\" prints")
    for line in wrong:
        print("FAILED:", line)
    print(f"{len(rules)} rules")
    return 1 if wrong or len(rules) < 20 else 0


if __name__ == "__main__":
    sys.exit(main(str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(sys.argv[2]).resolve(),
                  "--update" in sys.argv[3:]))
