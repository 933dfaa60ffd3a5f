"""Our side: tool_driver.exe under Wine."""
import subprocess
import tempfile
from dataclasses import dataclass
from urllib.parse import quote

from harness import Choice


def windows_path(path):
    """What a Linux path is called under Wine."""
    return "Z:" + str(path).replace("/", "\\")


def command_of(command, **values):
    """The command line. Keys have "-" for "_"; a value is text, bytes (as they stand), a number, or a list of these."""
    words = [str(Choice.driver), command]
    for key, given in values.items():
        for value in given if isinstance(given, (list, tuple)) else [given]:
            raw = value if isinstance(value, bytes) else str(value).encode()
            words.append(f"{key.replace('_', '-')}={quote(raw, safe='.,:@/')}")
    return ["wine", *words]


@dataclass
class Told:
    """What the driver printed: its lines, and the outcome behind "outcome: "."""
    lines: list
    outcome: str
    text: str


def run_wine(command, timeout):
    """Runs a command line that starts a program under Wine: its exit code and its output. A file takes the output: the
    first program of a prefix starts Wine's services, which would keep the other end of a pipe open for ever."""
    with tempfile.TemporaryFile() as output:
        done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                              timeout=timeout)
        output.seek(0)
        return done.returncode, output.read()


def told(output):
    lines = output.decode("latin-1").replace("\r\n", "\n").split("\n")
    if lines and lines[-1] == "":
        lines.pop()
    outcome = lines.pop()[len("outcome: "):] if lines and lines[-1].startswith("outcome: ") else None
    return Told(lines, outcome, output.decode("latin-1"))


def tool(command, timeout=120, **values):
    """Runs one command of the driver to its end. A crash has no outcome, and fails here."""
    code, output = run_wine(command_of(command, **values), timeout)
    result = told(output)
    if code or result.outcome is None:
        raise AssertionError(f"{command} ended with {code}: {result.text[-2000:]}")
    return result
