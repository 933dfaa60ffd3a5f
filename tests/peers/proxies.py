"""The proxies: tinyproxy and squid (HTTP CONNECT), microsocks and dante (SOCKS 5), and odd ones of our own making."""
import os
import shutil
import subprocess
import time

from harness import PASSWORD, USER, Daemon, Script, hold, read_line


class Tinyproxy(Daemon):
    name, kind = "tinyproxy", "http"

    def prepare(self):
        login = f"BasicAuth {USER} {PASSWORD}\n" if self.options.get("login") else ""
        config = self.folder / "tinyproxy.conf"
        config.write_text(f"Port {self.port}\nListen 127.0.0.1\nTimeout 60\nAllow 127.0.0.1\nMaxClients 20\n{login}")
        return ["tinyproxy", "-d", "-c", config]


class Squid(Daemon):
    name, kind = "squid", "http"

    def prepare(self):
        hashed = subprocess.run(["openssl", "passwd", "-apr1", PASSWORD], check=True, capture_output=True, text=True)
        users = self.folder / "users"
        users.write_text(f"{USER}:{hashed.stdout}")
        config = self.folder / "squid.conf"
        login = ""
        if self.options.get("login"):
            login = (f"auth_param basic program /usr/lib/squid/basic_ncsa_auth {users}\n"
                     "auth_param basic children 1 startup=1\n"
                     "acl known proxy_auth REQUIRED\nhttp_access deny !known\n")
        config.write_text(f"http_port 127.0.0.1:{self.port}\npid_filename {self.folder}/pid\n"
                          f"cache_log {self.folder}/cache.log\naccess_log none\ncache deny all\n"
                          "visible_hostname peer.test\ndns_nameservers 127.0.0.1\nshutdown_lifetime 0 seconds\n"
                          f"coredump_dir {self.folder}\nacl loop dst 127.0.0.0/8\n{login}"
                          "http_access allow loop\nhttp_access deny all\n")
        if os.geteuid() == 0:  # as root it becomes this user, who must be able to write its files
            for path in (self.folder, users, config):
                shutil.chown(path, "proxy", "proxy")
        return ["squid", "-N", "-f", config]


class Microsocks(Daemon):
    name, kind = "microsocks", "socks5"

    def prepare(self):
        login = ["-u", USER, "-P", PASSWORD] if self.options.get("login") else []
        return ["microsocks", "-i", "127.0.0.1", "-p", str(self.port), *login]


class Dante(Daemon):
    """Asks the accounts of the system; it is given a mount namespace of its own in which there is one more."""
    name, kind, root = "dante", "socks5", True

    def prepare(self):
        method = "username" if self.options.get("login") else "none"
        config = self.folder / "danted.conf"
        config.write_text(f"logoutput: {self.folder}/danted.log\ninternal: 127.0.0.1 port = {self.port}\n"
                          f"external: 127.0.0.1\nsocksmethod: {method}\nclientmethod: none\n"
                          "user.privileged: root\nuser.unprivileged: nobody\n"
                          "client pass { from: 127.0.0.0/8 to: 0.0.0.0/0 }\n"
                          "socks pass { from: 127.0.0.0/8 to: 127.0.0.0/8 }\n")
        hashed = subprocess.run(["openssl", "passwd", "-6", PASSWORD], check=True, capture_output=True, text=True)
        accounts = self.folder / "passwd"
        with open("/etc/passwd", encoding="utf-8") as system:
            accounts.write_text(system.read() + f"{USER}:x:65533:65534::/nonexistent:/usr/sbin/nologin\n")
        secrets = self.folder / "shadow"
        secrets.write_text(f"root:*:19000:0:99999:7:::\nnobody:*:19000:0:99999:7:::\n"
                           f"{USER}:{hashed.stdout.strip()}:19000:0:99999:7:::\n")
        return ["unshare", "--mount", "sh", "-c",
                'mount --bind "$1" /etc/passwd && mount --bind "$2" /etc/shadow && exec danted -f "$3"',
                "danted", str(accounts), str(secrets), str(config)]


PROXIES = (Tinyproxy, Squid, Microsocks, Dante)


def _relay(connection, target_port, gap=0.0):
    """Carries the bytes of a tunnel between the client and a port of 127.0.0.1 until either side ends."""
    import selectors
    import socket
    with socket.create_connection(("127.0.0.1", target_port)) as target, selectors.DefaultSelector() as ready:
        ready.register(connection, selectors.EVENT_READ, target)
        ready.register(target, selectors.EVENT_READ, connection)
        while True:
            for key, _ in ready.select():
                data = key.fileobj.recv(65536)
                if not data:
                    return
                time.sleep(gap)
                key.data.sendall(data)


def _read_connect(connection):
    """The head of a CONNECT request, with its empty line."""
    head = b""
    while not head.endswith(b"\r\n\r\n"):
        line = read_line(connection)
        if not line:
            break
        head += line
    return head


class OddHttpProxy(Script):
    """Answers CONNECT with `reply`, in pieces of a byte with `gap` seconds between them when there is one; the tunnel
    is open afterwards when `target_port` is given, else the connection is closed, or held when `holds`. What clients
    asked is kept in `heads`."""

    def __init__(self, reply, target_port=None, gap=0.0, holds=False):
        self.heads = []

        def serve(connection, _number):
            self.heads.append(_read_connect(connection))
            drip(connection, reply, gap)
            if target_port:
                _relay(connection, target_port)
            elif holds:
                hold(self, connection)
        super().__init__(serve)


class OddSocksProxy(Script):
    """Sends `answers` one after another, each when the client has said the next thing."""

    def __init__(self, answers, target_port=None, gap=0.0, holds=False):
        self.heard = []

        def serve(connection, _number):
            for answer in answers:
                said = connection.recv(65536)
                if not said:
                    return
                self.heard.append(said)
                drip(connection, answer, gap)
            if target_port:
                _relay(connection, target_port)
            elif holds:
                hold(self, connection)
        super().__init__(serve)


def drip(connection, data, gap):
    """Sends data; a byte at a time with `gap` seconds before each when the gap is not 0."""
    if not gap:
        connection.sendall(data)
        return
    for index in range(len(data)):
        time.sleep(gap)
        connection.sendall(data[index:index + 1])
