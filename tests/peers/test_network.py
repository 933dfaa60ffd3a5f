"""The network itself, with traceroute as the client."""
from harness import PeerCase
from network import NODES, NOWHERE, PROHIBITED, TARGET, Network, address_of, traceroute


class NetworkPeers(PeerCase):
    def test_show_silence_prohibition_and_dead_ends(self):
        """the routers, as traceroute -I sees them"""
        network = self.enterContext(Network(self.folder))
        hops = [address_of(node) for node in NODES[1:]]
        self.assertEqual(traceroute(network, NOWHERE), [*hops[:2], f"{hops[2]} !N"])
        self.assertEqual(traceroute(network, PROHIBITED), [*hops[:3], f"{hops[3]} !X"])
        with network.silence("r2"):
            self.assertEqual(traceroute(network, TARGET), [hops[0], "*", *hops[2:]])
        with network.answering("--options", "8"):
            self.assertEqual(traceroute(network, TARGET), hops)
        with network.answering("--silent"):
            self.assertEqual(traceroute(network, TARGET)[:6], [*hops[:5], "*"])
        self.assertEqual(traceroute(network, TARGET), hops)
        self.note("traceroute", "five routers, one silent, one prohibiting, one without a road")
