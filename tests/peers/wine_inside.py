"""Wine inside of a network namespace.

The server of a Wine prefix owns the sockets of all of its programs: one that was started outside would send what a
program inside sends into the outer network. So the prefix is a copy of its own, its server is started inside, and
nothing is sent before it has been seen which process serves the prefix and which namespace that one is in.

    wine_inside.py PREFIX    prints the process id of the server and its namespace, as "net:[...]"
"""
import fcntl
import os
import struct
import sys
from pathlib import Path

from driver import command_of, run_wine, told
from harness import Choice, as_root, run, wait_until


def folder_of_server(prefix):
    """Where the server of a prefix has its socket and its lock: below the user's run-time folder, or, as Debian
    builds Wine, below a temporary folder whose name the prefix keeps; below /tmp/.wine-USER elsewhere."""
    status = os.stat(prefix)
    places = [Path(f"/run/user/{status.st_uid}/wine"), Path(f"/tmp/.wine-{status.st_uid}")]
    kept = Path(prefix) / "wineserver"
    if kept.exists():
        places.append(Path(os.environ.get("TMPDIR", "/tmp")) / kept.read_text().strip("\0\n"))
    name = f"server-{status.st_dev:x}-{status.st_ino:x}"
    return next((place / name for place in places if (place / name / "lock").exists()), None)


def who_serves(prefix):
    """The process that holds the lock of the prefix, 0 when there is none."""
    folder = folder_of_server(prefix)
    if folder is None:
        return 0
    with open(folder / "lock", "rb") as lock:
        # struct flock of 64-bit Linux: type, from where, start, length, process id.
        answer = fcntl.fcntl(lock, fcntl.F_GETLK, struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0))
    kind, _, _, _, pid = struct.unpack("hhqqi4x", answer)
    return pid if kind != fcntl.F_UNLCK else 0


class WineInside:
    """`before` goes before the server's command: what takes rights away from it, for instance."""

    def __init__(self, network, node, folder, before=()):
        self._network = network
        self._node = node
        self._prefix = Path(folder) / "prefix"
        self._before = before
        self._server = None
        self._setting = ["env", f"WINEPREFIX={self._prefix}", "WINEDEBUG=-all", "WINEDLLOVERRIDES=mscoree,mshtml="]

    def __enter__(self):
        run(as_root(["cp", "-a", str(Choice.prefix_template), str(self._prefix)]), check=True)
        run(as_root(["chown", "-R", "root:root", str(self._prefix)]), check=True)  # Wine takes its owner's only
        self._server = self._network.start(self._node, [*self._setting, *self._before, "wineserver", "-f", "-p"],
                                           "wineserver")
        try:
            self._prove()
        except BaseException:
            self.__exit__()
            raise
        return self

    def _prove(self):
        def look():
            assert self._server.is_running(), self._server.output()
            return run(as_root([sys.executable, __file__, str(self._prefix)])).stdout.decode().split()
        pid, where = wait_until(lambda: (words if len(words := look()) == 2 else None), "the server of the prefix")
        inside = self._network.identity(self._node)
        outside = os.readlink("/proc/self/ns/net")
        assert where == inside != outside, f"the server {pid} of the prefix is in {where}, not in {inside}"

    def tool(self, command, timeout=120, **values):
        _, output = run_wine(as_root(self._network.command(
            self._node, [*self._setting, *command_of(command, **values)])), timeout)
        result = told(output)
        assert result.outcome is not None, result.text
        return result

    def __exit__(self, *unused):
        self._network.run(self._node, [*self._setting, "wineserver", "-k"])
        self._server.end()
        run(as_root(["rm", "-rf", str(self._prefix)]), check=True)


if __name__ == "__main__":
    served_by = who_serves(sys.argv[1])
    if served_by:
        print(served_by, os.readlink(f"/proc/{served_by}/ns/net"))
