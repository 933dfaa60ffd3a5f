"""Whois: straight and through every proxy, with what curl makes of the same case noted beside ours."""
import time

from driver import tool
from harness import PASSWORD, USER, PeerCase, Script, free_port, own_folder, read_line
from proxies import PROXIES, OddHttpProxy, OddSocksProxy, drip
from test_proxies import ask_with_curl
from whois_server import WhoisServer

QUERY = "10.1.2.3"
ANSWER = b"NetRange: 10.0.0.0 - 10.255.255.255\r\n\r\n  OrgName:  Nobody \r\nlast line without an end"
SHOWN = ["NetRange: 10.0.0.0 - 10.255.255.255", "OrgName:  Nobody", "last line without an end"]
EUROPE = b"This block belongs to the RIPE Network Coordination Centre.\r\n"


def ask(server, query=QUERY, **values):
    values.setdefault("referral", "127.0.0.1")
    values.setdefault("referral_port", 9)
    return tool("whois", query=query, server="127.0.0.1", port=getattr(server, "port", server), **values)


def through(proxy, user=None, password=""):
    values = {"proxy": "127.0.0.1", "proxy_port": proxy.port, "proxy_kind": proxy.kind}
    return {**values, "proxy_user": user, "proxy_password": password} if user is not None else values


def shown(result):
    return [line[len("line: "):] for line in result.lines if line.startswith("line: ")]


def verdict(told):
    code, said = told
    return "answers" if code == 0 else f"{code}: {said.decode(errors='replace').strip().splitlines()[-1]}"


class WhoisPeers(PeerCase):
    def test_asks_and_is_referred(self):
        """a query, and one that another registry answers"""
        with WhoisServer(ANSWER) as server:
            result = ask(server)
            self.assertEqual((result.outcome, shown(result)), ("done", SHOWN))
            self.assertEqual(server.queries, [b"+ 10.1.2.3\r\n"])
        with WhoisServer(EUROPE) as server, WhoisServer(ANSWER) as other:
            result = ask(server, referral_port=other.port)
            self.assertEqual((result.outcome, shown(result)), ("done", SHOWN))
            self.assertEqual((server.queries, other.queries), ([b"+ 10.1.2.3\r\n"], [b"10.1.2.3\r\n"]))
        with WhoisServer(ANSWER) as server:
            self.assertEqual(ask(server, query="localhost").outcome, "done")
            self.assertEqual(server.queries, [b"+ 127.0.0.1\r\n"])
        self.note("scripted server", "asked with \"+ \", the referral without")

    def test_answers_of_any_kind(self):
        """answers"""
        large = b"".join(b"line %06d\r\n" % number for number in range(75_000))  # 0.98 MB, nearly the most
        rows = {
            "empty": (b"", []), "blank lines only": (b"\r\n \r\n\n", []), "NUL bytes": (b"a\0b\r\nc\r\n", None),
            "control characters": (b"\x1b[2J\x07beep\r\n", None), "one line of 200,000": (b"x" * 200_000 + b"\r\nend\r\n", None),
        }
        for case, (answer, expected) in rows.items():
            with self.subTest(case=case), WhoisServer(answer) as server:
                result = ask(server)
                self.assertEqual(result.outcome, "done", result.text[-300:])
                if expected is not None:
                    self.assertEqual(shown(result), expected)
                self.note("scripted server", f"{case}: {len(shown(result))} lines shown")
        with WhoisServer(large) as server:
            self.assertEqual(shown(ask(server)), large.decode().splitlines())

    def test_through_proxies(self):
        """through a proxy"""
        for kind in PROXIES:
            for login in (False, True):
                with self.subTest(proxy=kind.name, login=login), own_folder() as folder, \
                        kind(folder, login=login) as proxy, WhoisServer(ANSWER) as server:
                    result = ask(server, **through(proxy, USER if login else None, PASSWORD))
                    self.assertEqual((result.outcome, shown(result)), ("done", SHOWN))
                    curl = ask_with_curl(server, proxy, (USER, PASSWORD) if login else None)
                    self.assertEqual(curl, (0, ANSWER))
                    self.note(kind.name, f"{'with' if login else 'without'} login: answers; curl {verdict(curl)}")
                    if login:
                        self.refused(kind, proxy, server)

    def refused(self, kind, proxy, server):
        """A proxy that wants a login gets none, or a wrong one."""
        asked = server.connections
        for case, user, password in (("login missing", None, ""), ("wrong password", USER, "wrong"),
                                     ("user of 255 bytes", "u" * 255, "p")):
            result = ask(server, **through(proxy, user, password))
            self.assertNotEqual(result.outcome, "done", case)
            self.assertNotIn(PASSWORD, result.text)
            curl = ask_with_curl(server, proxy, (user, password) if user else None)
            self.assertNotEqual(curl[0], 0)
            self.note(kind.name, f"{case}: {result.outcome}; curl {verdict(curl)}")
        self.assertEqual(server.connections, asked)

    def test_proxy_that_cannot_reach_the_server(self):
        """through a proxy to a closed port"""
        for kind in PROXIES:
            with self.subTest(proxy=kind.name), own_folder() as folder, kind(folder) as proxy:
                result = ask(free_port(), **through(proxy))
                self.assertNotEqual(result.outcome, "done")
                self.note(kind.name, result.outcome)

    def test_spelling_of_connect(self):
        """CONNECT of whois"""
        with WhoisServer(ANSWER) as server, OddHttpProxy(b"HTTP/1.0 200 OK\r\nX: y\r\n\r\n", server.port) as proxy:
            result = ask(server, proxy="127.0.0.1", proxy_port=proxy.port, proxy_user=USER, proxy_password=PASSWORD)
            self.assertEqual((result.outcome, shown(result)), ("done", SHOWN))
            where = f"127.0.0.1:{server.port}".encode()
            self.assertEqual(proxy.heads, [b"CONNECT " + where + b" HTTP/1.0\r\nProxy-authorization: Basic "
                                           b"ZnJlZDpzM2NyZXQ=\r\nUser-Agent: Harrowlyn Update\r\n\r\n"])
        self.note("scripted proxy", "HTTP/1.0, Basic, User-Agent")

    def test_odd_http_proxies(self):
        """HTTP proxies of our own making"""
        good = b"HTTP/1.1 200 OK\r\n\r\n"
        with WhoisServer(ANSWER) as server:
            rows = (
                ("closes", {"reply": b""}, False),
                ("closes in the middle", {"reply": good[:10]}, False),
                ("closes after the reply", {"reply": good}, None),
                ("drips", {"reply": good, "gap": 0.1, "target_port": server.port}, True),
                ("answers garbage", {"reply": bytes(range(256)) * 4 + b"\r\n\r\n"}, False),
                ("greets like a mail server", {"reply": b"220 peer.test\r\n\r\n"}, False),
                ("answers 204", {"reply": b"HTTP/1.1 204 No Content\r\n\r\n", "target_port": server.port}, True),
                ("answers 301", {"reply": b"HTTP/1.1 301 Moved\r\nLocation: http://evil/\r\n\r\n"}, False),
                ("answers 407", {"reply": b"HTTP/1.1 407 Login\r\nProxy-Authenticate: Basic\r\n\r\n"}, False),
                ("answers 503", {"reply": b"HTTP/1.1 503 No\r\n\r\n"}, False),
                ("never ends its head", {"reply": b"HTTP/1.1 200 OK\r\n" + b"X: y\r\n" * 100_000}, False),
                ("one endless line", {"reply": b"HTTP/1.1 200 OK\r\nX: " + b"y" * 10**6}, False),
                ("head of nearly 16 KB", {"reply": b"HTTP/1.1 200 OK\r\nX: " + b"y" * 16000 + b"\r\n\r\n",
                                          "target_port": server.port}, True),
            )
            self.hold_all(rows, OddHttpProxy, server, "http")

    def test_odd_socks_proxies(self):
        """SOCKS proxies of our own making"""
        none, open_ = b"\5\0", b"\5\0\0\1\x7f\0\0\1\0\x50"
        with WhoisServer(ANSWER) as server:
            rows = (
                ("closes", {"answers": ()}, False),
                ("drips", {"answers": (none, open_), "gap": 0.1, "target_port": server.port}, True),
                ("names itself", {"answers": (none, b"\5\0\0\3\x0bproxy.local\0\x50"), "target_port": server.port}, True),
                ("is at an IPv6 address", {"answers": (none, b"\5\0\0\4" + bytes(16) + b"\0\x50"),
                                           "target_port": server.port}, True),
                ("answers garbage", {"answers": (b"HTTP/1.0 400 Bad\r\n\r\n",)}, False),
                ("is of version 4", {"answers": (b"\0\x5a\0\0\0\0\0\0",)}, False),
                ("takes no method", {"answers": (b"\5\xff",)}, False),
                ("wants a login that is not there", {"answers": (b"\5\2",)}, False),
                ("forbids", {"answers": (none, b"\5\2\0\1\0\0\0\0\0\0")}, False),
                ("host unreachable", {"answers": (none, b"\5\4\0\1\0\0\0\0\0\0")}, False),
                ("kind of address unknown", {"answers": (none, b"\5\0\0\x09\0\0\0\0\0\0")}, False),
                ("stops in the middle", {"answers": (none, open_[:5])}, False),
            )
            self.hold_all(rows, OddSocksProxy, server, "socks5")

    def hold_all(self, rows, make, server, kind):
        for case, options, answers in rows:
            with self.subTest(case=case), make(**options) as proxy:
                proxy.kind = kind
                result = ask(server, **through(proxy))
                if answers is not None:
                    self.assertEqual(shown(result) == SHOWN, answers, result.text[-500:])
                    self.assertEqual(result.outcome == "done", answers, result.text[-500:])
                curl = ask_with_curl(server, proxy)
                self.note("scripted proxy", f"{case}: {result.outcome}; curl {verdict(curl)}")

    def test_lengths(self):
        """host names, users and ports out of range"""
        with WhoisServer(ANSWER) as server:
            for case, values in (("host of 300 characters", {"server": "a" * 300}), ("port 0", {"port": 0}),
                                 ("query of 2,000 characters", {"query": "1.2.3." + "4" * 2000}),
                                 ("query with a line end", {"query": "1.2.3.4\r\nevil"})):
                with self.subTest(case=case):
                    result = tool("whois", **{"query": QUERY, "server": "127.0.0.1", "port": server.port,
                                              "referral": "127.0.0.1", "referral_port": 9, **values})
                    self.note("ours", f"{case}: {result.outcome}")
                    self.assertNotIn("evil", b"".join(server.queries[1:]).decode())
        with OddSocksProxy((b"\5\2", b"\1\0")) as proxy:
            proxy.kind = "socks5"
            result = ask(9, **through(proxy, "u" * 256, "p"))
            self.assertTrue(result.outcome.startswith("Invalid parameters"), result.outcome)
            self.assertEqual(len(proxy.heard), 1)  # the greeting at most
            self.note("scripted proxy", f"user of 256 bytes: {result.outcome}")

    def test_slow_silence_ends_with_the_time_limit(self):
        """a server and a proxy that say nothing"""
        with WhoisServer(b"half an answer\r\nwithout", stalls=True) as server:
            result = ask(server)
            self.assertIn("did not answer in time", result.outcome)
            self.assertEqual(shown(result), ["half an answer", "without"])
            self.note("scripted server", f"stalls in the middle: {result.outcome}")
        for make, kind, options in ((OddHttpProxy, "http", {"reply": b"HTTP/1.0 200"}),
                                    (OddSocksProxy, "socks5", {"answers": (b"\5\0", b"\5\0\0")})):
            with make(**options, holds=True) as proxy:
                proxy.kind = kind
                result = ask(9, **through(proxy))
                self.assertIn("did not answer in time", result.outcome)
                self.note("scripted proxy", f"{kind} stalls: {result.outcome}")

    def test_slow_drip(self):
        """a byte a second"""
        def serve(connection, _number):
            read_line(connection)
            drip(connection, b"An answer.\r\n", 1)
        with Script(serve) as server, OddHttpProxy(b"HTTP/1.0 200 OK\r\n\r\n", server.port, gap=1) as proxy:
            proxy.kind = "http"
            result = ask(server, **through(proxy))
            self.assertEqual((result.outcome, shown(result)), ("done", ["An answer."]))
            curl = ask_with_curl(server, proxy, limit=120)
            self.note("scripted proxy", f"answers; curl {verdict(curl)}")
        # The whole of what is said with a proxy has an end, which a drip cannot put off.
        with OddHttpProxy(b"HTTP/1.0 200 OK\r\n" + b"X: y\r\n" * 100, gap=1) as proxy:
            proxy.kind = "http"
            begin = time.monotonic()
            result = ask(9, **through(proxy))
            self.assertIn("did not answer in time", result.outcome)
            self.note("scripted proxy", f"never ends its head: {result.outcome} ({time.monotonic() - begin:.0f} s)")
