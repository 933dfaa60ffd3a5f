"""What every case needs: free ports, folders, and programs that are started, waited for by a condition, and ended by
the process group that they were started in. Nothing here looks a process up by its name.

Everything that is started listens on loopback or in a network namespace of its own.
"""
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest
from contextlib import contextmanager
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
USER, PASSWORD = "fred", "s3cret"  # of every peer that wants a login
PATIENCE = 30.0  # seconds that a condition is waited for before the case fails

# Daemons are not in the path of an ordinary user.
os.environ["PATH"] += ":/usr/local/sbin:/usr/sbin:/sbin"


def as_root(command):
    """The command line that runs `command` with the rights of root."""
    return list(command) if os.geteuid() == 0 else ["sudo", "-n", *command]


def wait_until(condition, what, patience=PATIENCE):
    """Returns the first true value of `condition()`; fails with `what` when there is none for `patience` seconds."""
    end = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {patience:g} s for {what}")
        time.sleep(0.02)


def free_port():
    """A TCP port of 127.0.0.1 that nobody listens at now. Whoever binds it later must be ready to be too late."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def accepts(port, host="127.0.0.1"):
    try:
        socket.create_connection((host, port), timeout=1).close()
        return True
    except OSError:
        return False


class Program:
    """A program in a process group of its own; its output goes to a file. Ended with all of its children."""

    def __init__(self, command, log, root=False, **options):
        self.command = as_root(command) if root else [str(part) for part in command]
        self.log = Path(log)
        self._needs_root = root and os.geteuid() != 0
        with open(self.log, "wb") as output:
            options.setdefault("stdin", subprocess.DEVNULL)
            self.process = subprocess.Popen(self.command, stdout=output, stderr=subprocess.STDOUT,
                                            start_new_session=True, **options)

    @property
    def pid(self):
        return self.process.pid

    def is_running(self):
        return self.process.poll() is None

    def output(self):
        return self.log.read_text(errors="replace")

    def _signal_group(self, number):
        """False when the group is empty. The number of the group is that of the process that we started in it."""
        if self._needs_root:
            return subprocess.run(["sudo", "-n", "kill", f"-{number}", "--", f"-{self.pid}"],
                                  stderr=subprocess.DEVNULL).returncode == 0
        try:
            os.killpg(self.pid, number)
            return True
        except ProcessLookupError:
            return False

    def is_gone(self):
        self.process.poll()  # what has ended is a member of its group until it is waited for
        return not self._signal_group(0)

    def end(self):
        for number in (signal.SIGTERM, signal.SIGKILL):
            self._signal_group(int(number))
            try:
                wait_until(self.is_gone, f"the end of {self.command[0]}", 5)
                return
            except AssertionError:
                continue
        raise AssertionError(f"{' '.join(self.command)} cannot be ended")


class Daemon:
    """A peer that listens at a port of 127.0.0.1: a derived class writes its configuration in `prepare`. The port is
    chosen by us before the peer binds it, so a start that fails is tried again with another."""
    name = "?"
    root = False

    def __init__(self, folder, **options):
        self._place = Path(folder)
        self.folder = None  # a new one for each start
        self.options = options
        self.port = 0
        self.program = None

    def prepare(self):
        """Writes what the peer reads for `self.port` and returns its command line."""
        raise NotImplementedError

    def start(self):
        for attempt in range(3):
            self.folder = self._place / f"{self.name}-{attempt}"
            self.folder.mkdir(parents=True)
            self.port = free_port()
            self.program = Program(self.prepare(), self.folder / "output.txt", root=self.root)
            try:
                wait_until(lambda: not self.program.is_running() or accepts(self.port), f"{self.name} to listen")
            except AssertionError:
                self.stop()
                raise
            if self.program.is_running():
                return self
            failure = self.program.output()
            self.stop()
        raise AssertionError(f"{self.name} did not start: {failure}")

    def stop(self):
        if self.program:
            self.program.end()
            self.program = None

    def __enter__(self):
        return self.start()

    def __exit__(self, *unused):
        self.stop()


class Script:
    """A peer that is a function of this process: `serve(connection, number)` is called on a thread of its own for
    each connection, number counting from 0. The connection is closed when it returns. What `serve` raises other than
    a broken connection fails the case when it ends."""

    def __init__(self, serve):
        self._serve = serve
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]
        self._connections = []
        self._threads = []
        self._failures = []
        self.stopping = threading.Event()
        self._acceptor = threading.Thread(target=self._accept, daemon=True)
        self._acceptor.start()

    def _accept(self):
        while True:
            try:
                connection, _ = self._listener.accept()
            except OSError:
                return
            connection.settimeout(PATIENCE)
            self._connections.append(connection)
            thread = threading.Thread(target=self._run, args=(connection, len(self._connections) - 1), daemon=True)
            self._threads.append(thread)
            thread.start()

    def _run(self, connection, number):
        try:
            self._serve(connection, number)
        except OSError:
            pass  # the client has gone, which is for the case to judge
        except Exception as failure:  # pylint: disable=broad-except
            self._failures.append(failure)
        finally:
            # Closing with unread input would reset the connection and could take our last words with it.
            try:
                connection.shutdown(socket.SHUT_WR)
                connection.settimeout(1)
                while connection.recv(65536):
                    pass
            except OSError:
                pass
            connection.close()

    @property
    def connections(self):
        """How many there have been."""
        return len(self._connections)

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self.stopping.set()
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        for connection in self._connections:
            try:
                connection.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
        for thread in [self._acceptor, *self._threads]:
            thread.join(PATIENCE)
        if self._failures:
            raise self._failures[0]


def read_line(connection):
    """Bytes up to and with the line feed; what there is when the client closes earlier."""
    line = b""
    while not line.endswith(b"\n"):
        piece = connection.recv(1)
        if not piece:
            break
        line += piece
    return line


def hold(server, connection):
    """Keeps a connection open and silent until the client goes or the case ends."""
    connection.settimeout(0.05)
    while not server.stopping.is_set():
        try:
            if not connection.recv(65536):
                return
        except TimeoutError:
            continue


class Table:
    """The closing table: case, peer, outcome."""
    rows = []

    @classmethod
    def add(cls, case, peer, outcome):
        cls.rows.append((case, peer, " ".join(str(outcome).split())))

    @classmethod
    def text(cls):
        if not cls.rows:
            return ""
        widths = [max(len(row[column]) for row in cls.rows) for column in (0, 1)]
        return "".join(f"{case:<{widths[0]}}  {peer:<{widths[1]}}  {outcome}\n" for case, peer, outcome in cls.rows)


def end_in_order():
    """Whoever ends this process wants the peers ended, too: the ordinary way out does that."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))


@contextmanager
def own_folder():
    """A folder that every user can look into: some peers give up the rights of root."""
    folder = Path(tempfile.mkdtemp(prefix="brennvar-peers-"))
    folder.chmod(0o755)
    try:
        yield folder
    finally:
        shutil.rmtree(folder, ignore_errors=True)
        if folder.exists():  # files of a peer that ran as root
            subprocess.run(as_root(["rm", "-rf", str(folder)]), check=True)


class PeerCase(unittest.TestCase):
    """A case with a folder of its own."""
    maxDiff = None

    def setUp(self):
        self.folder = self.enterContext(own_folder())

    def note(self, peer, outcome, case=None):
        """A row of the closing table; the case is the first line of the test's own description."""
        Table.add(case or self.shortDescription() or self.id().rsplit(".", 1)[-1], peer, outcome)


def run(command, **options):
    """Runs a peer's client to its end and returns the CompletedProcess; standard input is empty unless given."""
    options.setdefault("timeout", PATIENCE * 2)
    if "input" not in options:
        options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)


class Choice:
    """What the runner was asked for."""
    driver = None  # path of tool_driver.exe
    prefix_template = None  # a Wine prefix to be copied
