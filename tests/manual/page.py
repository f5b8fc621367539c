"""Reads a page of the manual, as mandoc shows it, and the command's help, each by its own layout."""
import re
import subprocess

BODY = 7  # columns before the text of a page; its subsections have less, its items' texts twice as many


def plain(text):
    """Without markup and in one line."""
    lines = text if isinstance(text, str) else " ".join(text)
    return " ".join(lines.replace("`", "").replace("**", "").split())


def indent_of(line):
    return len(line) - len(line.lstrip())


class Page:
    """The sections of a page; each is a list of lines."""

    def __init__(self, path):
        run = subprocess.run(["mandoc", "-Tutf8", "-Owidth=1000", path], stdout=subprocess.PIPE, timeout=60, check=True)
        text = re.sub(".\b", "", run.stdout.decode())
        text = text.replace("\u2010", "-").replace("\u2019", "'")
        self.lines = text.splitlines()[1:-1]
        self.sections = {}
        title = None
        for line in self.lines:
            if line and not line.startswith(" "):
                title = line
                self.sections[title] = []
            elif title:
                self.sections[title].append(line)

    def titles(self):
        return list(self.sections)

    def section(self, title):
        return self.sections.get(title, ["no such section"])

    def items(self, title, subsection="any"):
        """Terms and texts of a section: before its first subsection for None, else of that subsection."""
        found = []
        inside = None
        lines = self.section(title)
        for line, following in zip(lines, lines[1:] + [""]):
            if line and indent_of(line) < BODY:
                inside = line.strip()
            elif line and subsection in ("any", inside):
                self._take(found, line, indent_of(following) > BODY)
        return [(term, plain(text)) for term, text in found if term]

    @staticmethod
    def _take(found, line, has_text_below):
        term = line[BODY:2 * BODY].strip()
        if indent_of(line) > BODY:
            if found:
                found[-1][1].append(line)
        elif has_text_below:
            found.append((line.strip(), []))
        elif len(term) < BODY and " " not in term:
            # A short term has its text in the same line.
            found.append((term, [line[2 * BODY:]]))
        else:
            found.append((None, []))  # a paragraph, of which no item is made

    def code(self, title):
        """The lines of a section that are shown as they are."""
        return [line.strip() for line in self.section(title) if indent_of(line) > BODY]

    def references(self):
        return set(re.findall(r"[a-z-]+\([1-9]\)", " ".join(self.lines)))


class Help:
    """What --help prints."""

    def __init__(self, text):
        blocks = text.split("\n\n")
        self.usage = blocks[0].replace("Usage: ", "").strip()
        self.summary = blocks[1].rstrip(".").strip()
        self.options = {}
        self.commands = {}
        self.text = []
        for block in blocks[2:]:
            title, _, rest = block.partition(":\n")
            if re.match(r"  +-", rest):
                self.options[title] = self._options(rest)
            elif re.match(r"  [a-z]+  +", rest):
                self.commands[title] = [tuple(re.split("  +", line.strip(), maxsplit=1)) for line in rest.splitlines()]
                self.commands[title] = [(name, summary + ".") for name, summary in self.commands[title]]
            elif block.startswith("Exit status: "):
                exits, _, self.example = block.strip().partition("\nExample: ")
                self.exits = plain(exits.replace("Exit status: ", ""))
            else:
                self.text.append(block)

    @staticmethod
    def _options(text):
        found = []
        for line in text.splitlines():
            if not line.lstrip().startswith("-"):
                found[-1][1] = line.strip()
                continue
            term, _, description = line.strip().partition("  ")
            found.append([term, description.strip()])
        return [(term, description + ".") for term, description in found]


def markdown_rows(text):
    """The rows of each table, without its head, as cells without markup."""
    tables = []
    for block in text.strip().split("\n\n"):
        rows = [[plain(cell) for cell in line.strip("|").split("|")] for line in block.splitlines()]
        tables.append(rows[2:])
    return tables
