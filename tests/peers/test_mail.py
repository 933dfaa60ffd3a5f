"""Mail: what others read of ours, and what we make of the answers of odd servers."""
import email
import email.header
import email.policy
import random

from driver import tool, windows_path
from harness import PASSWORD, USER, PeerCase, hold, own_folder
from mail_servers import AioServer, Exim, Pieces, ScriptedServer
from proxies import PROXIES, OddHttpProxy

ADDRESSES = {"from": "watch@peer.test", "to": "one@peer.test"}


def send(server, **values):
    values = {**ADDRESSES, "subject": "hello", "text": "one line\r\n", **values}
    return tool("mail", server="127.0.0.1", port=server.port, **values)


def said(server):
    return [line.decode("latin-1").rstrip("\r\n") for line in server.commands]


def header(message, name):
    """The text of a header with its encoded words, as a mail program shows it."""
    return str(email.header.make_header(email.header.decode_header(message[name])))


class WholeMessages(PeerCase):
    """A message with everything in it: what was given to the driver is what others read out of it."""

    def setUp(self):
        super().setUp()
        sizes = (0, 1, 56, 57, 58, 57 * 1024, 57 * 1024 + 1, 300_000)
        self.files = {f"data {size}.bin": random.Random(size).randbytes(size) for size in sizes}
        self.text = "First line\r\n.\r\n..two dots\r\nFrom me\r\n" + "long " * 400 + "\r\nCafé à la carte = 100 %\r\n"

    def values(self, page, text, subject, who):
        attached = []
        # A name that has letters of the page: that of the sender.
        self.files = {**{name: content for name, content in self.files.items() if name.startswith("data")},
                      f"{who}.csv": b"a;b\r\n.\r\n..\r\nFrom x\r\n"}
        for name, content in self.files.items():
            path = self.folder / f"{len(attached)}.bin"
            path.write_bytes(content)
            attached.append(windows_path(path))
        return {"from": "watch@peer.test", "from_name": who.encode(page),
                "to": f'"{who}" <one@peer.test>'.encode(page), "cc": "two@peer.test", "bcc": "hidden@peer.test",
                "subject": subject.encode(page), "text": text.encode(page), "charset": f"windows-{page[2:]}",
                "page": page[2:], "attach": attached, "type": ["application/octet-stream"] * len(attached),
                "name": [name.encode(page) for name in self.files]}

    def check(self, raw, page, text, subject, who):
        message = email.message_from_bytes(raw, policy=email.policy.compat32)
        self.assertEqual(header(message, "Subject"), subject)
        self.assertIn(who, header(message, "From"))
        self.assertIn("<watch@peer.test>", header(message, "From"))
        self.assertIn(who, header(message, "To"))
        self.assertNotIn(b"hidden@peer.test", raw)
        body, *files = list(message.walk())[1:]
        self.assertEqual(body.get_payload(decode=True).decode(body.get_content_charset()).replace("\r\n", "\n"),
                         text.replace("\r\n", "\n"))
        self.assertEqual([str(email.header.make_header(email.header.decode_header(part.get_filename())))
                          for part in files], list(self.files))
        for part, content in zip(files, self.files.values()):
            self.assertEqual(part.get_payload(decode=True), content, part.get_filename())
        for line in raw.replace(b"\r\n", b"\n").split(b"\n"):
            self.assertLessEqual(len(line), 998)
        self.assertEqual(raw.count(b"\nMIME-Version:"), 1)

    def test_are_read_by_python(self):
        """message with attachments, three character sets"""
        for page, text, subject, who in (
                ("cp1252", self.text, "Café: €5 für Übungen, " * 8, "Jörg Müller"),
                ("cp1250", self.text.replace("à", "š"), "Správa o žltých koňoch", "Ľuboš Šťastný"),
                ("cp1251", "Первая строка\r\n.\r\n", "Отчёт о правилах", "Иван Петров"),
                ("cp1252", "plain\r\n", "plain", "Plain, Name")):
            with self.subTest(page=page, subject=subject), AioServer(login=True) as server:
                result = send(server, user=USER, password=PASSWORD, **self.values(page, text, subject, who))
                self.assertEqual(result.outcome, "done", result.text)
                envelope, = server.envelopes
                self.assertEqual(envelope.mail_from, "watch@peer.test")
                self.assertEqual(envelope.rcpt_tos, ["one@peer.test", "two@peer.test", "hidden@peer.test"])
                self.check(envelope.content, page, text, subject, who)
        self.note("aiosmtpd, email", "text, nine attachments, names identical; blind copy in no header")

    def test_are_kept_by_exim(self):
        """message with attachments, from the queue"""
        server = self.enterContext(Exim(self.folder / "exim", login=True))
        what = ("cp1252", self.text, "Café: €5", "Jörg Müller")
        refused = send(server, **ADDRESSES)
        self.assertIn("550", refused.outcome)
        result = send(server, user=USER, password=PASSWORD, **self.values(*what))
        self.assertEqual(result.outcome, "done", result.text)
        (identifier, raw), = server.queue()
        self.assertEqual(sorted(server.recipients(identifier)),
                         ["hidden@peer.test", "one@peer.test", "two@peer.test"])
        self.check(raw, *what)
        self.note("exim, email", f"identical; without a login: {refused.outcome}")

    def test_line_ends_begin_no_header_and_no_command(self):
        """line ends in every field"""
        evil = "x\r\nBcc: evil@peer.test\r\n\r\nbody"
        values = {"subject": evil, "from_name": evil, "cc": f'"{evil}" <two@peer.test>', "name": evil + '".bin',
                  "type": evil, "computer": "a\r\nMAIL FROM:<evil@peer.test>"}
        path = self.folder / "one.bin"
        path.write_bytes(b"1")
        with ScriptedServer() as server:
            result = send(server, attach=windows_path(path), **values)
            self.assertEqual(result.outcome, "done", result.text)
            verbs = [line.split(" ")[0] for line in said(server)]
            self.assertEqual(verbs, ["EHLO", "MAIL", "RCPT", "RCPT", "DATA", "QUIT"])
            message = email.message_from_bytes(server.messages[0])
            self.assertNotIn("Bcc", message)
            self.assertEqual(len(list(message.walk())), 3)
        for key in ("from", "to", "cc", "bcc"):
            with self.subTest(key=key), ScriptedServer() as server:
                result = send(server, **{**ADDRESSES, key: "a@b.test>\r\nRCPT TO:<evil@peer.test"})
                self.assertNotEqual(result.outcome, "done")
                self.assertNotIn("evil", "".join(said(server)))
        self.note("email", "none begins a header or a command")


class MailDialogues(PeerCase):
    """Odd servers. `note` keeps the sentence that the user reads."""

    def tell(self, result, case):
        sentence = next((line for line in result.lines if line.startswith("sentence: ")), "sentence: sent")
        self.note("scripted server", sentence[len("sentence: "):], case)

    def test_logins(self):
        """login"""
        login = {"user": USER, "password": PASSWORD}
        wanted = b"530 5.7.0 Authentication required\r\n"
        refused = b"535 5.7.8 wrong\r\n"
        good = (b"334 UGFzc3dvcmQ6\r\n", b"235 welcome\r\n")
        rows = (
            ("530, then AUTH", {"AUTH": (b"504 later\r\n", b"334 VXNlcm5hbWU6\r\n"), "auth": good,
                                "MAIL": (wanted, b"250 OK\r\n")}, login, "done"),
            ("530 without a login", {"MAIL": wanted}, {}, "530"),
            ("530 for ever", {"MAIL": wanted, "auth": good * 100}, login, "530"),
            ("535 without a retry", {"auth": (good[0], refused), "MAIL": wanted}, login, "5"),
            ("535 with a retry", {"auth": (good[0], refused, *good)}, {**login, "retries": 1}, "done"),
            ("535 for ever", {"auth": (good[0], refused) * 100, "MAIL": wanted}, {**login, "retries": 10**6}, "5"),
            ("STARTTLS wanted", {"MAIL": b"530 5.7.0 Must issue a STARTTLS command first\r\n"}, {}, "530"),
        )
        for case, table, values, outcome in rows:
            with self.subTest(case=case), ScriptedServer(**table) as server:
                result = send(server, **values)
                self.assertTrue(result.outcome.startswith(outcome), result.text)
                self.assertNotIn(PASSWORD, result.text)
                if outcome == "done":
                    self.assertEqual(len(server.messages), 1)
                    self.assertEqual(said(server)[-1], "QUIT")
                    self.assertIn("czNjcmV0", said(server))  # the password in base64
                self.tell(result, case)

    def test_own_words_of_a_server(self):
        """a server that asks for the User Name instead of the Username"""
        with AioServer(login=True, own_words=True) as server:
            result = send(server, user=USER, password=PASSWORD)
            # A question that is none of the two ends the login, and the server is told so. It wants one all the same.
            self.assertTrue(result.outcome.startswith("530"), result.text)
            self.assertEqual(server.envelopes, [])
            self.note("aiosmtpd", f"not logged in, not sent: {result.lines[-1]}")

    def test_greetings(self):
        """greeting"""
        with ScriptedServer(EHLO=b"502 unknown\r\n") as server:
            self.assertEqual(send(server, user=USER, password=PASSWORD).outcome, "done")
            self.assertEqual([line.split(" ")[0] for line in said(server)],
                             ["EHLO", "HELO", "MAIL", "RCPT", "DATA", "QUIT"])
            self.assertEqual(said(server)[0][4:], said(server)[1][4:])
        for case, table in (("greeting 554", {"": b"554 no\r\n"}), ("greeting of another kind", {"": b"HTTP/1.1 400\r\n"}),
                            ("EHLO and HELO refused", {"EHLO": b"502 no\r\n", "HELO": b"502 no\r\n"}),
                            ("closed at once", {"": None}), ("empty greeting", {"": b"\r\n"})):
            with self.subTest(case=case), ScriptedServer(**table) as server:
                result = send(server)
                self.assertNotEqual(result.outcome, "done")
                self.assertEqual(server.messages, [])
                self.tell(result, case)

    def test_replies_split_anywhere(self):
        """replies split anywhere"""
        whole = b"250-peer.test greets you\r\n250-SIZE\r\n250 AUTH LOGIN\r\n"
        first = whole.index(b"\n") + 1
        for cut in (1, 3, 4, 10, first - 2, first - 1):
            with self.subTest(cut=cut), ScriptedServer(EHLO=Pieces([whole[:cut], whole[cut:]])) as server:
                result = send(server)
                self.assertEqual(result.outcome, "done", result.text)
        single = Pieces([bytes([byte]) for byte in b"250 OK\r\n"])
        with ScriptedServer(MAIL=single) as server:
            self.assertEqual(send(server).outcome, "done")
        self.note("scripted server", "within the first line: sent")
        # From the first line feed on a reply is complete. The rest of it is waited for before the next command, but not
        # for long: what comes later is taken for the answer to that.
        with ScriptedServer(EHLO=Pieces([whole[:first], whole[first:first + 5], whole[first + 5:]])) as server:
            self.assertEqual(send(server).outcome, "done")
            self.note("scripted server", "pauses between and within lines: sent")

    def test_recipients(self):
        """recipients"""
        several = {"to": "one@peer.test", "cc": "two@peer.test", "bcc": "three@peer.test"}
        no = b"550 5.1.1 no such user\r\n"
        with ScriptedServer(RCPT=(b"251 forwarded\r\n", no, no)) as server:
            result = send(server, **several)
            self.assertEqual(result.outcome, "done", result.text)
            self.assertEqual(said(server)[2:5], [f"RCPT TO: <{name}@peer.test>" for name in ("one", "two", "three")])
            self.tell(result, "251, two refused")
        for case, reply in (("all refused", no), ("relay denied", b"554 5.7.1 relay access denied\r\n"),
                            ("greylisted", b"450 4.2.0 try again later\r\n")):
            with self.subTest(case=case), ScriptedServer(RCPT=reply) as server:
                result = send(server, **several)
                self.assertTrue(result.outcome.startswith(reply[:3].decode()), result.text)
                self.assertEqual(said(server)[2:], [*(f"RCPT TO: <{name}@peer.test>" for name in
                                                      ("one", "two", "three")), "QUIT"])
                self.tell(result, case)

    def test_ends_in_the_middle(self):
        """421 and broken connections in the middle"""
        bye = b"421 shutting down\r\n"
        for verb in ("MAIL", "RCPT", "DATA", "."):
            for case, replies in (("421", (bye, None)), ("closed", None)):
                with self.subTest(verb=verb, case=case), ScriptedServer(**{verb: replies}) as server:
                    result = send(server)
                    self.assertTrue(result.outcome.startswith("421" if replies else "-1"), result.text)
                    self.tell(result, f"{case} after {verb}")
        with ScriptedServer(**{".": b"552 too large\r\n"}) as server:
            self.tell(send(server), "552 to the message")

    def test_silence_ends_with_the_time_limit(self):
        """a server that never answers"""
        for verb in ("", "EHLO", "RCPT", "."):
            with self.subTest(verb=verb):
                server = ScriptedServer(**{verb: lambda connection: hold(server, connection)})
                with server:
                    result = send(server, limit=1, timeout=30)
                    self.assertEqual(result.outcome, "-1 (10060)", result.text)
                    self.tell(result, f"no answer to {verb or 'the connection'}")

    def test_floods(self):
        """10 MB of reply"""
        def flood(piece):
            def pour(connection):
                for _ in range(10 * 1024):
                    connection.sendall(piece)
            return pour
        for case, piece in (("without a line feed", b"2" * 1024), ("of lines", b"250-and so on\r\n" * 64),
                            ("of zeros", bytes(1024)), ("of line feeds", b"\n" * 1024)):
            with self.subTest(case=case), ScriptedServer(EHLO=flood(piece)) as server:
                result = send(server, limit=5, timeout=60)
                self.tell(result, f"10 MB {case}")

    def test_attachment_that_has_gone(self):
        """an attachment that is not there, and a send that is stopped"""
        with ScriptedServer() as server:
            result = send(server, attach=windows_path(self.folder / "gone"), name="gone", type="text/plain")
            self.assertTrue(result.outcome.startswith("-1"), result.text)
            self.assertEqual(server.messages, [])
            self.tell(result, "attachment gone")
        large = self.folder / "large"
        large.write_bytes(bytes(3_000_000))
        with ScriptedServer() as server:
            result = send(server, attach=windows_path(large), name="large", type="text/plain", cancel_at=100_000)
            self.assertTrue(result.outcome.startswith("-1"), result.text)
            self.assertEqual(server.messages, [])
            self.tell(result, "stopped while sending")

    def test_through_proxies(self):
        """through a proxy"""
        for kind in PROXIES:
            with self.subTest(proxy=kind.name), own_folder() as folder, kind(folder, login=True) as proxy, \
                    AioServer() as server:
                through = {"proxy": "127.0.0.1", "proxy_port": proxy.port, "proxy_kind": proxy.kind,
                           "proxy_user": USER}
                result = send(server, proxy_password=PASSWORD, **through)
                self.assertEqual((result.outcome, len(server.envelopes)), ("done", 1), result.text)
                wrong = send(server, proxy_password="wrong", **through)
                self.assertTrue(wrong.outcome.startswith("-1"), wrong.text)
                self.assertIn("The proxy refused the login.", wrong.text)
                self.note(kind.name, f"sent; wrong password: {wrong.lines[-1]}")

    def test_spelling_of_connect(self):
        """CONNECT of mail"""
        with ScriptedServer() as server, OddHttpProxy(b"HTTP/1.1 200 fine\r\n\r\n", server.port) as proxy:
            result = send(server, proxy="127.0.0.1", proxy_port=proxy.port, proxy_user=USER, proxy_password=PASSWORD)
            self.assertEqual(result.outcome, "done", result.text)
            where = f"127.0.0.1:{server.port}".encode()
            self.assertEqual(proxy.heads, [b"CONNECT " + where + b" HTTP/1.1\r\nHost: " + where +
                                           b"\r\nProxy-Authorization: Basic ZnJlZDpzM2NyZXQ=\r\n\r\n"])
        self.note("scripted proxy", "HTTP/1.1, Host, Basic")
