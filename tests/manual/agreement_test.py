#!/usr/bin/env python3
"""Holds that the manual says what the command says.

    agreement_test.py STARTPLAN FOLDER SOURCE_DIR

The pages below FOLDER are shown by mandoc and read again: usage, text, options with their values, exit statuses and
example of each command as its --help prints them, the keys of "startplan schema -f markdown", the rules of
"startplan rules -f json", in all cases the same set and nothing more. Pages that a page names are there, and what
stands below EXAMPLES can be run. 77, a skipped test, if mandoc is missing.
"""
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

from page import Help, Page, markdown_rows, plain

wrong = []


def expect(what, found, expected):
    if found != expected:
        wrong.append(f"{what}:\n  page: {found}\n  command: {expected}")


def say(startplan, *arguments):
    run = subprocess.run([startplan, *arguments], stdout=subprocess.PIPE, timeout=60, text=True, check=True)
    return run.stdout


def check_command(name, text, page):
    shown = Help(text)
    where = f"startplan-{name}(1)"
    expect(f"{where} SYNOPSIS", plain(page.section("SYNOPSIS")), shown.usage)
    expect(f"{where} NAME", plain(page.section("NAME")).lower(), f"startplan-{name} - {shown.summary}".lower())
    expect(f"{where} DESCRIPTION", plain(page.section("DESCRIPTION")), plain(shown.text))
    expect(f"{where} options", page.items("OPTIONS", None), shown.options.get("Options", []))
    expect(f"{where} common options", page.items("OPTIONS", "Common options"), shown.options["Common options"])
    exits = ", ".join(f"{status} {text.rstrip('.')}" for status, text in page.items("EXIT STATUS", None))
    expect(f"{where} EXIT STATUS", exits.lower(), shown.exits.rstrip(".").lower())
    expect(f"{where} first example", page.code("EXAMPLES")[0], shown.example)
    return shown


def check_main(text, page, commands):
    shown = Help(text)
    listed = [item for section in shown.commands for item in shown.commands[section]]
    expect("startplan(1) COMMANDS", [(name.replace("startplan-", "").replace("(1)", ""), summary)
                                     for section in shown.commands
                                     for name, summary in page.items("COMMANDS", section)], listed)
    expect("commands with a page", sorted(commands), sorted(name for name, _ in listed))
    expect("startplan(1) OPTIONS", page.items("OPTIONS", None), shown.options["Options of every command"])
    exits = ", ".join(f"{status} {text.rstrip('.')}" for status, text in page.items("EXIT STATUS", None))
    expect("startplan(1) EXIT STATUS", exits.lower(), shown.exits.rstrip(".").lower())


def check_keys(startplan, page):
    sections = {"top": "TOP-LEVEL FILES", "startup": "STARTUP FILES", "replace": "REPLACE-DATA FILES"}
    for kind, section in sections.items():
        tables = markdown_rows(say(startplan, "schema", kind, "-f", "markdown"))
        outcomes = {row[0]: row[1:] for row in tables[1]} if len(tables) > 1 else {}
        shown = dict(page.items(section))
        expect(f"startplan(5) keys of {section}", sorted(term.split()[0] for term in shown),
               sorted(row[0] for row in tables[0]))
        for key, form, default, span, meaning in tables[0]:
            text = shown.get(f"{key} ({form}: {span})", "no such key")
            parts = [f"{meaning}.", f"Default: {default}."]
            if key in outcomes:
                _, empty, misfit, beyond = outcomes[key]
                parts += [f"mpty: {empty}; wrong kind: {misfit}" if empty != misfit else
                          f"mpty or wrong kind: {empty}", beyond]
            for part in parts:
                if part.lower() not in text.lower():
                    wrong.append(f'startplan(5) {key}: "{part}" is not in "{text}"')


def check_rules(startplan, page):
    rules = json.loads(say(startplan, "rules", "-f", "json"))["rules"]
    shown = {}
    for title in page.titles():
        if title not in ("NAME", "DESCRIPTION", "SEE ALSO"):
            shown[title] = page.items(title)
    expect("startplan-rules(7) groups", list(shown), list(dict.fromkeys(rule["group"].upper() for rule in rules)))
    expected = {group: [] for group in shown}
    for rule in rules:
        text = " ".join([rule["summary"][:1].upper() + rule["summary"][1:] + ".", rule["text"], rule["example"],
                         "On the device:", rule["effect"], "To mend it:", rule["fix"]])
        expected[rule["group"].upper()].append((f"{rule['rule']} ({rule['level']})", plain(text)))
    expect("startplan-rules(7)", shown, expected)


def check_references(pages):
    for name, page in pages.items():
        for reference in page.references():
            if reference not in pages and "startplan" in reference:
                wrong.append(f"{name} names {reference}, which is not there")


def check_examples(startplan, source, pages):
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        (folder / "bin").mkdir()
        (folder / "bin" / "startplan").symlink_to(pathlib.Path(startplan).resolve())
        for place in (".", "old", "new"):
            shutil.copytree(source / "examples" / "vehicle", folder / place, dirs_exist_ok=True)
        (folder / "examples").symlink_to(source / "examples")
        shutil.copy(source / "docs" / "examples" / "times.yaml", folder)
        (folder / "build").mkdir()
        (folder / "build" / "image").symlink_to(source / "docs" / "examples" / "image")
        (folder / ".config" / "fish" / "completions").mkdir(parents=True)
        environment = {"HOME": scratch, "PATH": f"{scratch}/bin:/usr/bin:/bin"}
        count = 0
        for name, page in pages.items():
            for line in page.code("EXAMPLES"):
                if not line.startswith(("startplan ", "source <(startplan ")):
                    continue
                count += 1
                run = subprocess.run(["bash", "-o", "pipefail", "-c", line], cwd=folder, env=environment, timeout=120,
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
                if run.returncode not in (0, 1) or "Traceback" in run.stderr:
                    wrong.append(f"{name}: {line}\n  status {run.returncode}: {run.stderr}")
        expect("examples that were run, more than twenty", count > 20, True)


def main(startplan, folder, source):
    if shutil.which("mandoc") is None:
        print("mandoc is not installed")
        return 77
    pages = {}
    for path in sorted(pathlib.Path(folder).glob("man?/*")):
        pages[f"{path.stem}({path.suffix[1:]})"] = Page(path)
    commands = [name[len("startplan-"):-len("(1)")] for name in pages
                if name.startswith("startplan-") and name.endswith("(1)")]
    for command in commands:
        check_command(command, say(startplan, command, "--help"), pages[f"startplan-{command}(1)"])
    check_main(say(startplan, "--help"), pages["startplan(1)"], commands)
    check_keys(startplan, pages["startplan(5)"])
    check_rules(startplan, pages["startplan-rules(7)"])
    check_references(pages)
    check_examples(startplan, pathlib.Path(source).resolve(), pages)
    print("\n".join(wrong))
    print(f"{len(pages)} pages, {len(wrong)} differences")
    return 1 if wrong or len(pages) < 5 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]))
