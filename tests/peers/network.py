"""A network of five routers in namespaces of its own:

    a --- r1 --- r2 --- r3 --- r4 --- r5 --- b

Link n (1 to 6) is 10.77.n.0/24, with .1 on its left and .2 on its right end. No namespace has a way out. All of them
carry the number of this process in their names and go when the network is left. Needs root.
"""
import os
import sys
from contextlib import contextmanager
from pathlib import Path

from harness import Program, as_root, run, wait_until

NODES = ("a", "r1", "r2", "r3", "r4", "r5", "b")
NOWHERE = "10.99.0.1"     # no router knows a road from r3 on: "network unreachable"
PROHIBITED = "10.98.0.1"  # r4 says "communication prohibited"
TARGET = "10.77.6.2"      # b
LAST = len(NODES) - 1


def address_of(node):
    """The address that a node shows towards a: that of its left end."""
    index = NODES.index(node)
    return f"10.77.{index}.2" if index else "10.77.1.1"


class Network:
    _count = 0

    def __init__(self, folder):
        self.folder = Path(folder)
        Network._count += 1
        self._prefix = f"brennvar{os.getpid()}n{Network._count}"
        self._programs = []

    def space(self, node):
        return f"{self._prefix}{node}"

    def _ip(self, *arguments):
        done = run(as_root(["ip", *arguments]))
        if done.returncode:
            raise AssertionError(f"ip {' '.join(arguments)}: {done.stdout.decode()}")
        return done.stdout.decode()

    def _batch(self, node, lines):
        script = self.folder / f"{node}.batch"
        script.write_text("\n".join(lines) + "\n")
        self._ip("-n", self.space(node), "-batch", str(script))

    def __enter__(self):
        try:
            self._build()
        except BaseException:
            self.__exit__()
            raise
        return self

    def _build(self):
        hosts = "".join(f"{address_of(node)} {node}.test\n" for node in NODES) + "127.0.0.1 localhost\n"
        for node in NODES:
            self._ip("netns", "add", self.space(node))
            place = f"/etc/netns/{self.space(node)}"
            # Nobody answers at the name server, so that a name that is missing here is seen to be missing.
            for name, text in (("hosts", hosts), ("resolv.conf", "nameserver 127.0.0.1\noptions timeout:1 attempts:1\n")):
                source = self.folder / name
                source.write_text(text)
                run(as_root(["install", "-D", "-m", "644", str(source), f"{place}/{name}"]), check=True)
        for link in range(1, LAST + 1):
            left, right = NODES[link - 1], NODES[link]
            self._ip("-n", self.space(left), "link", "add", f"to{right}", "type", "veth", "peer", "name", f"to{left}",
                     "netns", self.space(right))
        for index, node in enumerate(NODES):
            lines = ["link set lo up"]
            if index > 0:
                lines += [f"addr add 10.77.{index}.2/24 dev to{NODES[index - 1]}", f"link set to{NODES[index - 1]} up"]
            if index < LAST:
                lines += [f"addr add 10.77.{index + 1}.1/24 dev to{NODES[index + 1]}",
                          f"link set to{NODES[index + 1]} up"]
            self._batch(node, lines)
        for index, node in enumerate(NODES):
            lines = [f"route add 10.77.{link}.0/24 via 10.77.{index}.1" for link in range(1, index)]
            lines += [f"route add 10.77.{link}.0/24 via 10.77.{index + 1}.2" for link in range(index + 2, LAST + 1)]
            if node in ("a", "r1", "r2"):
                lines += [f"route add 10.99.0.0/16 via 10.77.{index + 1}.2"]
            if node in ("a", "r1", "r2", "r3"):
                lines += [f"route add 10.98.0.0/16 via 10.77.{index + 1}.2"]
            if node == "r4":
                lines += ["route add prohibit 10.98.0.0/16"]
            self._batch(node, lines)
            # Error messages are limited to one a second for each destination. A mask of 0 exempts all of them; a limit
            # of 0 would do so, too, but takes the tokens away that "unreachable" and "prohibited" are counted by.
            self.run(node, ["sysctl", "-qw", "net.ipv4.ip_forward=1", "net.ipv4.icmp_ratemask=0"], check=True)
        # The first packet of a link waits for the answer to the question for its neighbour; ask before anybody counts.
        wait_until(lambda: self.run("a", ["traceroute", "-I", "-n", "-q", "1", "-w", "1", TARGET]).returncode == 0 and
                   self.answers_all(), "the network to carry packets")

    def answers_all(self):
        return traceroute(self, TARGET) == [address_of(node) for node in NODES[1:]]

    @contextmanager
    def silence(self, *nodes):
        """Meanwhile these routers forward and send nothing of their own."""
        rule = ["iif", "lo", "to", "10.77.0.0/16", "blackhole"]
        for node in nodes:
            self._ip("-n", self.space(node), "rule", "add", *rule)
        try:
            yield
        finally:
            for node in nodes:
                self._ip("-n", self.space(node), "rule", "del", *rule)

    @contextmanager
    def answering(self, *options):
        """Meanwhile wire.py answers b's echo requests, with these options, and not its system."""
        def ignore(flag):
            self.run("b", ["sysctl", "-qw", f"net.ipv4.icmp_echo_ignore_all={flag}"], check=True)
        ignore(1)
        program = self.wire("b", "answer", *options)
        try:
            yield
        finally:
            program.end()
            ignore(0)

    def command(self, node, command):
        """The command line that runs `command` inside of a node; with the rights of root already where we have them."""
        return ["ip", "netns", "exec", self.space(node), *[str(part) for part in command]]

    def run(self, node, command, **options):
        return run(as_root(self.command(node, command)), **options)

    def start(self, node, command, name):
        program = Program(self.command(node, command), self.folder / f"{name}.txt", root=True)
        self._programs.append(program)
        return program

    def wire(self, node, *arguments):
        """Starts wire.py inside of a node and waits until it listens."""
        program = self.start(node, [sys.executable, "-u", Path(__file__).with_name("wire.py"), *arguments],
                             f"wire-{len(self._programs)}")
        wait_until(lambda: program.output().startswith("ready\n") or not program.is_running(), "wire.py to listen")
        if not program.is_running():
            raise AssertionError(program.output())
        return program

    def identity(self, node):
        """What /proc/PID/ns/net of a process inside says: "net:[...]"."""
        return self.run(node, ["readlink", "/proc/self/ns/net"], check=True).stdout.decode().strip()

    def __exit__(self, *unused):
        for program in reversed(self._programs):
            program.end()
        known = self._ip("netns", "list").split()
        for node in NODES:
            if self.space(node) in known:
                self._ip("netns", "del", self.space(node))
            run(as_root(["rm", "-rf", f"/etc/netns/{self.space(node)}"]), check=True)


def traceroute(network, target, wait="1"):
    """The hops as traceroute -I has them, in order: an address, "*" for none, and its mark behind it, as "!N"."""
    done = network.run("a", ["traceroute", "-I", "-n", "-q", "1", "-w", wait, "-m", "12", target])
    hops = []
    for line in done.stdout.decode().splitlines():
        words = line.split()
        if words and words[0].isdigit():
            mark = next((word for word in words if word.startswith("!")), "")
            hops.append(" ".join(filter(None, (words[1], mark))))
    return hops
