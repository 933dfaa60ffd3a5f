"""Mail servers: aiosmtpd in this process, exim in its own, and one that answers whatever a case wants it to."""
import logging
import re
import time
import warnings

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import SMTP, AuthResult

from harness import PASSWORD, USER, Daemon, Script, as_root, read_line, run


# A login without TLS is what is tested here.
warnings.filterwarnings("ignore", module="aiosmtpd")
logging.getLogger("mail.log").setLevel(logging.CRITICAL)


class Kept:
    """What aiosmtpd took: an envelope for each message, with `mail_from`, `rcpt_tos` and `content` (bytes)."""

    def __init__(self):
        self.envelopes = []

    async def handle_DATA(self, server, session, envelope):
        self.envelopes.append(envelope)
        return "250 OK"


class AioServer:
    """aiosmtpd on a thread of this process. Its own words for the two questions of AUTH LOGIN differ from everybody
    else's, so it is given those of the RFC draft unless `own_words`."""
    name = "aiosmtpd"

    def __init__(self, login=False, own_words=False, handler=None):
        self.handler = handler or Kept()

        class Server(SMTP):
            if not own_words:
                AuthLoginUsernameChallenge = "Username:"
                AuthLoginPasswordChallenge = "Password:"

        def check(_server, _session, _envelope, mechanism, given):
            good = mechanism == "LOGIN" and (given.login, given.password) == (USER.encode(), PASSWORD.encode())
            # "handled" is whether an answer has been given already; a refusal is left to the server: 535.
            return AuthResult(success=good, handled=False)

        class Own(Controller):
            def factory(self):
                return Server(self.handler, data_size_limit=0, enable_SMTPUTF8=False, hostname="peer.test",
                              authenticator=check if login else None, auth_required=login, auth_require_tls=False)

        self._controller = Own(self.handler, hostname="127.0.0.1", port=0)

    @property
    def envelopes(self):
        return self.handler.envelopes

    def __enter__(self):
        # The system chooses the port; what the controller asks to see whether it is up needs to know which.
        controller = self._controller
        make = controller._create_server

        async def create():
            server = await make()
            controller.port = server.sockets[0].getsockname()[1]
            return server
        controller._create_server = create
        controller.start()
        self.port = controller.port
        return self

    def __exit__(self, *unused):
        self._controller.stop()


class Exim(Daemon):
    """exim, which keeps what it takes in its queue; with `login` it relays for nobody without one. Needs root."""
    name, root = "exim", True

    def prepare(self):
        place = self.folder
        self.config = place / "exim.conf"
        rule = "accept authenticated = *\n  deny message = relay not permitted\n" if self.options.get("login") else \
            "accept\n"
        self.config.write_text(f"""
spool_directory = {place}/spool
log_file_path = {place}/log-%slog
pid_file_path = {place}/exim.pid
primary_hostname = peer.test
tls_advertise_hosts =
auth_advertise_hosts = *
host_lookup =
rfc1413_hosts =
queue_only = true
message_size_limit = 100M
acl_smtp_rcpt = rcpt
acl_smtp_data = accept
begin acl
rcpt:
  {rule}
begin routers
everybody:
  driver = accept
  transport = box
begin transports
box:
  driver = appendfile
  file = {place}/inbox
  user = Debian-exim
begin authenticators
login:
  driver = plaintext
  public_name = LOGIN
  server_prompts = Username:: : Password::
  server_condition = ${{if and{{{{eq{{$auth1}}{{{USER}}}}}{{eq{{$auth2}}{{{PASSWORD}}}}}}}}}
  server_set_id = $auth1
""")
        run(as_root(["chown", "Debian-exim:Debian-exim", str(place)]), check=True)
        run(as_root(["chown", "root:root", str(self.config)]), check=True)  # it trusts no other
        return ["exim4", "-C", str(self.config), "-bdf", "-oX", f"127.0.0.1.{self.port}"]

    def _ask(self, *arguments):
        return run(as_root(["exim4", "-C", str(self.config), *arguments]), check=True).stdout

    def queue(self):
        """The messages in the queue, oldest first: identifier, and the text as exim itself shows it."""
        found = []
        for line in self._ask("-bp").decode().splitlines():
            words = line.split()
            if len(words) > 2 and re.fullmatch(r"\w{6}-\w{6}-\w{2}", words[2]):
                found.append((words[2], self._ask("-Mvc", words[2])))
        return found

    def recipients(self, identifier):
        """Of one message of the queue."""
        return re.findall(r"^\s+(\S+@\S+)$", self._ask("-bp", identifier).decode(), re.M)


class Pieces(list):
    """A reply that goes over the line in these pieces, with a pause between them so that they are read one by one."""


class ScriptedServer(Script):
    """An SMTP server that answers by a table: a verb (in capitals, "" for the greeting of a connection, "." for the
    end of a message, "auth" for a line of a login) and its replies, one each time it comes, the last for good. A reply
    is bytes, Pieces, or a function of the connection; None closes the connection. What is not in the table is
    answered as a friendly server would. Commands are kept in `commands`, messages in `messages`."""
    friendly = {"": b"220 peer.test ready\r\n", "EHLO": b"250-peer.test\r\n250 AUTH LOGIN\r\n",
                "HELO": b"250 peer.test\r\n", "MAIL": b"250 OK\r\n", "RCPT": b"250 OK\r\n", "DATA": b"354 go on\r\n",
                ".": b"250 taken\r\n", "QUIT": b"221 bye\r\n", "AUTH": b"334 VXNlcm5hbWU6\r\n"}

    def __init__(self, **table):
        self.commands = []
        self.messages = []
        self._table = {verb: list(replies) if isinstance(replies, tuple) else [replies]
                       for verb, replies in table.items()}
        super().__init__(self._talk)

    def _reply(self, connection, verb):
        """Whether the connection goes on, and what was said."""
        replies = self._table.get(verb)
        reply = self.friendly.get(verb, b"500 unknown\r\n")
        if replies:
            reply = replies.pop(0) if len(replies) > 1 else replies[0]
        if reply is None:
            return None
        if callable(reply):
            reply(connection)
            return b""
        if isinstance(reply, Pieces):
            for piece in reply:
                connection.sendall(piece)
                time.sleep(0.15)
            return b"".join(reply)
        connection.sendall(reply)
        return reply

    def _talk(self, connection, _number):
        said = self._reply(connection, "")
        while said is not None:
            line = read_line(connection)
            if not line:
                return
            self.commands.append(line)
            if said.startswith(b"334"):  # a line of a login
                said = self._reply(connection, "auth")
                continue
            verb = line.split(b" ")[0].strip().decode("latin-1").upper()
            said = self._reply(connection, verb)
            if said is not None and said.startswith(b"354"):
                message = b""
                while not message.endswith(b"\r\n.\r\n"):
                    piece = connection.recv(65536)
                    if not piece:
                        return
                    message += piece
                self.messages.append(message)
                said = self._reply(connection, ".")
            if verb == "QUIT":
                return
