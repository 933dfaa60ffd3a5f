"""Trace route: the hops of traceroute -I, and what goes over the wire, in a network of five routers."""
import re

from harness import PeerCase, own_folder
from network import NODES, NOWHERE, PROHIBITED, TARGET, Network, address_of, traceroute
from wine_inside import WineInside

HOPS = [address_of(node) for node in NODES[1:]]


def shown(result):
    return [line[len("line: "):] for line in result.lines if line.startswith("line: ")]


def hops_of(lines):
    """The addresses of a trace, "*" for a time-out."""
    found = []
    for line in lines:
        hop = re.fullmatch(r"IP: (\S+) \[\S+\] reached in: (<10|\d+) ms\.", line)
        if hop:
            found.append(hop[1])
        elif line == "Request time out":
            found.append("*")
    return found


class TracePeers(PeerCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = cls.enterClassContext(own_folder())
        cls.network = cls.enterClassContext(Network(folder))
        cls.wine = cls.enterClassContext(WineInside(cls.network, "a", folder))

    def trace(self, host):
        """The lines that the user sees, and the echo requests that left: TTL, identifier, sequence, length, whether
        the checksum was good, and their bytes."""
        wire = self.network.wire("a", "sniff")
        result = self.wine.tool("trace", host=host)
        wire.end()
        probes = [line.split() for line in wire.output().splitlines()[1:]]
        return shown(result), probes

    def ttls(self, probes):
        return [int(probe[0]) for probe in probes]

    def test_five_routers(self):
        """five routers"""
        lines, probes = self.trace(TARGET)
        self.assertEqual(lines[0], f"Sending 32 bytes to {TARGET}")
        self.assertEqual(hops_of(lines), HOPS)
        self.assertEqual(hops_of(lines), traceroute(self.network, TARGET))
        self.assertEqual([re.search(r"\[(.*)\]", line)[1] for line in lines[1:]], [f"{node}.test" for node in NODES[1:]])
        self.assertEqual(self.ttls(probes), [1, 2, 3, 4, 5, 6])
        # Built once: every probe is the same 32 bytes. 0xDEADBEEF as a little-endian machine has it.
        self.assertEqual(len({probe[5] for probe in probes}), 1)
        _, _, sequence, length, checksum, content = probes[0]
        self.assertEqual((sequence, length, checksum), ("0", "32", "good"))
        self.assertEqual(content[:4], "0800")
        self.assertEqual(content[16:], "efbeadde" * 6)
        self.note("traceroute -I", f"the same hops; TTLs {self.ttls(probes)}")
        by_name, _ = self.trace("b.test")
        self.assertEqual((by_name[0], hops_of(by_name)), ("Sending 32 bytes to b.test", HOPS))

    def test_silent_router(self):
        """silent router: the next hop is left out"""
        with self.network.silence("r2"):
            lines, probes = self.trace(TARGET)
            self.assertEqual(hops_of(lines), [HOPS[0], "*", *HOPS[3:]])
            self.assertEqual(self.ttls(probes), [1, 2, 4, 5, 6])
            peer = traceroute(self.network, TARGET)
            self.assertEqual(peer, [HOPS[0], "*", *HOPS[2:]])
            self.note("traceroute -I", f"TTLs {self.ttls(probes)}; the peer goes on with 3")

    def test_silent_destination(self):
        """silent destination: the end is above 10"""
        with self.network.answering("--silent"):
            lines, probes = self.trace(TARGET)
            self.assertEqual(hops_of(lines), [*HOPS[:5], "*", "*", "*"])
            self.assertEqual(self.ttls(probes), [1, 2, 3, 4, 5, 6, 8, 10])
            self.note("wire", f"TTLs {self.ttls(probes)}")

    def test_slow_silence_everywhere(self):
        """everybody silent"""
        with self.network.answering("--silent"), self.network.silence(*NODES[1:6]):
            lines, probes = self.trace(TARGET)
            self.assertEqual(hops_of(lines), ["*"] * 6)
            self.assertEqual(self.ttls(probes), [1, 3, 5, 7, 9, 11])
            self.note("wire", f"TTLs {self.ttls(probes)}")

    def test_unreachable(self):
        """prohibited, and no road"""
        for target, before in ((PROHIBITED, HOPS[:3]), (NOWHERE, HOPS[:2])):
            with self.subTest(target=target):
                lines, _ = self.trace(target)
                self.assertEqual(hops_of(lines), before)
                self.assertEqual(lines[-1], "Destination unreachable")
                peer = traceroute(self.network, target)
                self.assertEqual(peer[:-1], before)
                self.note("traceroute -I", f"after {len(before)} hops: {lines[-1]}; the peer: {peer[-1]}")

    def test_foreign_echo(self):
        """an answer to somebody else's request"""
        with self.network.answering("--foreign"):
            lines, probes = self.trace(TARGET)
            self.assertEqual((hops_of(lines), len(lines)), (HOPS, 7))
            self.assertEqual(traceroute(self.network, TARGET), HOPS)
        self.note("traceroute -I", "both ignore it")

    def test_options_in_the_answer(self):
        """IP options in the answer of the destination"""
        with self.network.answering("--options", "4"):
            lines, _ = self.trace(TARGET)
            self.assertEqual(hops_of(lines), HOPS)
        for length in (8, 40):  # a header of 28 bytes or more: 32 count as received
            with self.subTest(length=length), self.network.answering("--options", str(length)):
                lines, _ = self.trace(TARGET)
                self.assertEqual(hops_of(lines), HOPS[:5])
                self.assertEqual(lines[-1], f"Too few bytes from {TARGET}")
                self.assertEqual(traceroute(self.network, TARGET), HOPS)
        self.note("traceroute -I", "header of 24 bytes: the same; 28 and more: Too few bytes, the peer takes it")

    def test_name_that_does_not_resolve(self):
        """a name that nobody knows"""
        lines, probes = self.trace("nobody.test")
        self.assertEqual(lines, ["Sending 32 bytes to nobody.test", "Failed to resolve nobody.test"])
        self.assertEqual(probes, [])
        self.note("ours", lines[-1])

    def test_without_the_right(self):
        """without the right to send"""
        with own_folder() as folder, \
                WineInside(self.network, "a", folder,
                           ["setpriv", "--bounding-set=-net_raw", "--inh-caps=-net_raw"]) as wine:
            lines = shown(wine.tool("trace", host=TARGET))
            self.assertEqual(len(lines), 3)
            self.assertEqual(lines[1], "Failed to create raw socket: 10013")
            self.note("ours", f"{lines[1]} / {lines[2]}")
