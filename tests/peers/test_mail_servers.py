"""The mail servers themselves, with curl and smtplib as the clients."""
import email
import smtplib

from harness import PASSWORD, USER, PeerCase, run
from mail_servers import AioServer, Exim

MESSAGE = b"Subject: hello\r\nFrom: a@peer.test\r\nTo: b@peer.test\r\n\r\none\r\n..two\r\n"


def send_with_curl(port, source, login=None, options=()):
    command = ["curl", "-sS", "-q", f"smtp://127.0.0.1:{port}/client.test", "--mail-from", "a@peer.test",
               "--mail-rcpt", "b@peer.test", "-T", source, *options]
    if login:
        command += ["--user", f"{login[0]}:{login[1]}", "--login-options", "AUTH=LOGIN"]
    return run(command)


class MailPeers(PeerCase):
    def test_aiosmtpd_takes_mail_with_the_login_only(self):
        """curl sends a message"""
        source = self.folder / "message.txt"
        source.write_bytes(MESSAGE)
        with AioServer(login=True) as server:
            self.assertEqual(send_with_curl(server.port, source).returncode, 55)  # 530 to MAIL FROM
            self.assertEqual(send_with_curl(server.port, source, (USER, "wrong")).returncode, 67)  # login denied
            self.assertEqual(send_with_curl(server.port, source, (USER, PASSWORD)).returncode, 0)
            self.assertEqual([kept.rcpt_tos for kept in server.envelopes], [["b@peer.test"]])
            self.assertIn(b"\r\n..two\r\n", server.envelopes[0].content)
        self.note("aiosmtpd", "taken with the login only; curl's exit codes 55 without, 67 with a wrong one")

    def test_exim_keeps_mail_in_its_queue(self):
        """smtplib sends a message"""
        server = self.enterContext(Exim(self.folder / "exim", login=True))
        with smtplib.SMTP("127.0.0.1", server.port, timeout=30) as client:
            with self.assertRaises(smtplib.SMTPRecipientsRefused):
                client.sendmail("a@peer.test", ["b@peer.test"], MESSAGE)
            client.login(USER, PASSWORD)
            client.sendmail("a@peer.test", ["b@peer.test", "c@peer.test"], MESSAGE)
        (identifier, text), = server.queue()
        self.assertEqual(server.recipients(identifier), ["b@peer.test", "c@peer.test"])
        kept = email.message_from_bytes(text)
        self.assertEqual(kept["Subject"], "hello")
        self.assertEqual(kept.get_payload().splitlines(), ["one", "..two"])
        self.note("exim", "kept in the queue, for the recipients of the envelope")
