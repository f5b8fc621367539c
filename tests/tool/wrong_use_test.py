#!/usr/bin/env python3
"""Tries every command as a new or unlucky user would, and holds what they all have in common.

    wrong_use_test.py STARTPLAN SOURCE_DIR

The commands and their arguments are taken from the help, so a new command is tried as soon as it is there. Each
one first runs well, then with wrong arguments, wrong files, and output that goes nowhere: exit status 2, one
"startplan: error:" on standard error that says what is wrong, and nothing on standard output.
"""
import fcntl
import os
import pathlib
import pty
import re
import signal
import struct
import subprocess
import sys
import tempfile
import termios

APPLICATIONS = """\
net: {bin_path: /opt/net}
web: {bin_path: /opt/web, depends: [net]}
"camera_<1-3>": {bin_path: /opt/camera, depends: [net]}
"""
# What stands for the words of a usage; "start|stop" stands for its first word.
WORDS = {"TOP": "config/top.yaml", "OLD": "config/top.yaml", "NEW": "config/top.yaml", "NAME": "web",
         "OTHER": "net", "PATTERN": "camera_<1-3>", "RULE": "unreadable-file"}
FILES = ("TOP", "OLD", "NEW")
# Options without which a command does nothing.
NEEDED = {"report": ["-o", "report.html"]}


class Command:
    def __init__(self, name, usage):
        self.name = name
        self.needs_arguments = bool(re.sub(r"\[[^]]*\](\.\.\.)?", "", usage).strip())
        self.takes_any_number = "..." in usage
        self.words = [word.strip("[]").split("...")[0].strip("[]") for word in usage.split()]

    def line(self, replaced=None, by=None):
        """Its usual arguments, one of them replaced."""
        line = [self.name]
        for word in self.words:
            usual = WORDS.get(word) or word.split("|")[0]
            line.append(by if word == replaced else usual)
        return line + NEEDED.get(self.name, [])


class Trial:
    def __init__(self, startplan):
        self.startplan = startplan
        self.wrong = []
        self.count = 0

    def run(self, line, prefix=(), **options):
        options.setdefault("stdout", subprocess.PIPE)
        self.count += 1
        return subprocess.run([*prefix, self.startplan, *line], stdin=subprocess.DEVNULL, stderr=subprocess.PIPE,
                              timeout=60, check=False, **options)

    def expect(self, line, condition, what):
        if not condition:
            self.wrong.append(f"{' '.join(line)}: {what}")

    def refuses(self, line, *mentions, result=None, status=2):
        """`check` reports wrong files as findings; everything else is an error message."""
        result = result or self.run(line)
        error = result.stderr.decode("utf-8", "replace")
        output = (result.stdout or b"").decode("utf-8", "replace")
        self.expect(line, result.returncode == status, f"exit status {result.returncode}, not {status}")
        if line[:1] == ["check"] and not error:
            error, output = output, ""
            self.expect(line, " error: " in error, "no finding")
        else:
            self.expect(line, error.startswith("startplan: error: "), f"says {error!r}")
        self.expect(line, not output, "prints something")
        for mention in mentions:
            self.expect(line, mention in error, f"does not mention {mention!r}: {error!r}")


def read_commands(trial):
    text = trial.run(["--help"]).stdout.decode()
    names = re.findall(r"^  ([a-z]+) +[A-Z]", text, re.MULTILINE)
    commands = []
    for name in names:
        usage = trial.run([name, "--help"]).stdout.decode().splitlines()[0]
        commands.append(Command(name, usage.split("[OPTION]...", 1)[1].strip()))
    return commands


def try_well(trial, command):
    line = command.line()
    result = trial.run(line)
    trial.expect(line, result.returncode in (0, 1), f"exit status {result.returncode}: {result.stderr!r}")
    trial.expect(line, b"error" not in result.stderr, f"says {result.stderr!r}")
    again = trial.run(line)
    trial.expect(line, again.stdout == result.stdout, "prints something else the second time")
    trial.expect(line, b"\x1b" not in result.stdout, "prints colours into a file")
    return bool(result.stdout)


def try_arguments(trial, command):
    name = command.name
    if command.needs_arguments:
        trial.refuses([name], f'Try "startplan {name} --help".')
    if not command.takes_any_number:
        trial.refuses(command.line() + ["more", "words"], '"more"')
    trial.refuses(command.line() + ["--formt", "json"], "--formt", 'did you mean "--format"')
    trial.refuses(command.line() + ["--format", "jsno"], '"jsno"')
    trial.refuses(command.line() + ["-c"], "-c", "needs a value")
    trial.refuses(command.line() + ["--color=pink"], "pink", "auto, always or never")
    trial.refuses([name[0] + name[2] + name[1] + name[3:]], f'did you mean "{name}"')


def try_files(trial, command):
    for word in (word for word in FILES if word in command.words):
        trial.refuses(command.line(word, "config/nowhere.yaml"), "config/nowhere.yaml", "No such file or directory")
        trial.refuses(command.line(word, "config"), "config", "directory")
        trial.refuses(command.line(word, "config/broken.yaml"), "config/broken.yaml:2:",
                      status=1 if command.name == "check" else 2)  # to find that is the work of check
        trial.refuses(command.line(word, "config/pipe"), "pipe")
        trial.refuses(command.line(word, "/dev/zero"), "/dev/zero", "device")
        try_unreadable(trial, command, word)
    if "TOP" in command.words:
        trial.refuses(command.line() + ["-r", "config/nowhere.yaml"], "config/nowhere.yaml")
        trial.refuses(command.line() + ["--root", "config/nowhere"], "config/nowhere", "No such file")
        trial.refuses(command.line() + ["--passwd", "config"], "config", "directory")


def try_unreadable(trial, command, word):
    """Nobody is refused a file as root, so root takes another user's place; not where that cannot run it."""
    prefix = []
    if os.geteuid() == 0:
        prefix = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        if trial.run(["--version"], prefix).returncode != 0:
            return
    line = command.line(word, "config/secret.yaml")
    trial.refuses(line, "config/secret.yaml", "Permission denied", result=trial.run(line, prefix))


def try_output(trial, command):
    line = command.line()
    with open("/dev/full", "wb") as full:
        trial.refuses(line, "cannot write standard output: No space left on device", result=trial.run(line, stdout=full))
    reader, writer = os.pipe()
    os.close(reader)
    result = trial.run(line, stdout=writer)
    os.close(writer)
    trial.expect(line, result.returncode == 2, f"exit status {result.returncode} for a closed pipe")
    trial.expect(line, not result.stderr, f"says {result.stderr!r} about a closed pipe")
    trial.refuses(line + ["-o", "/dev/full"], "/dev/full", "No space left on device")
    trial.refuses(line + ["-o", "nowhere/file"], "nowhere/file", "No such file or directory")
    trial.refuses(line + ["-o", "config"], "config", "Is a directory")


def on_terminal(trial, line, environment):
    """What the command prints on a terminal of 60 columns."""
    trial.count += 1
    pid, terminal = pty.fork()
    if pid == 0:
        fcntl.ioctl(1, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 60, 0, 0))
        os.execve(trial.startplan, [trial.startplan, *line], {**os.environ, "TERM": "xterm", **environment})
    output = b""
    signal.alarm(60)
    while True:
        try:
            piece = os.read(terminal, 4096)
        except OSError:
            piece = b""
        if not piece:
            break
        output += piece
    signal.alarm(0)
    os.close(terminal)
    status = os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])
    return output.decode().replace("\r", ""), status


def try_terminal(trial, command):
    line = command.line()
    plain, status = on_terminal(trial, line, {"NO_COLOR": "1"})
    trial.expect(line, status in (0, 1), f"exit status {status} on a terminal")
    trial.expect(line, "\x1b" not in plain, "prints colours in spite of NO_COLOR")
    coloured, _ = on_terminal(trial, line, {"NO_COLOR": ""})
    trial.expect(line, re.sub("\x1b\\[[0-9;]*m", "", coloured) == plain, "prints something else in colours")
    if command.name in ("list", "plan"):  # a finding stays one line, for programs that read it
        widest = max(len(text) for text in plain.splitlines())
        trial.expect(line, widest <= 60, f"is {widest} columns wide on a terminal of 60")


def prepare():
    pathlib.Path("config").mkdir()
    for name, text in (("apps", APPLICATIONS), ("top", "startup_path_list: [config/apps.yaml]\n"),
                       ("broken", "a: 1\nb: c: d\n"), ("secret", "startup_path_list: [config/apps.yaml]\n")):
        pathlib.Path(f"config/{name}.yaml").write_text(text)
    os.mkfifo("config/pipe")
    os.chmod("config/secret.yaml", 0)
    os.chmod(".", 0o755)


def main(startplan):
    for name in ("NO_COLOR", "COLUMNS", "TERM"):
        os.environ.pop(name, None)
    os.environ["LC_ALL"] = "C"
    trial = Trial(startplan)
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        prepare()
        commands = read_commands(trial)
        for command in commands:
            prints = try_well(trial, command)
            try_arguments(trial, command)
            try_files(trial, command)
            if prints:
                try_output(trial, command)
                try_terminal(trial, command)
        os.chdir("/")
    for text in trial.wrong:
        print("FAILED:", text)
    print(f"{trial.count} runs of {len(commands)} commands, {len(trial.wrong)} failed")
    return 1 if trial.wrong or len(commands) < 4 else 0


if __name__ == "__main__":
    sys.exit(main(str(pathlib.Path(sys.argv[1]).resolve())))
