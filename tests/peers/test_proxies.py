"""The peers themselves, with curl as the client: what a case later says about our own program is worth nothing where
the proxy does not do this. curl asks by gopher, whose request is that of whois: a line, and all until the end."""
from pathlib import Path

from harness import PASSWORD, USER, PeerCase, own_folder, run, wait_until
from proxies import PROXIES
from whois_server import WhoisServer

ANSWER = b"NetRange: 10.0.0.0 - 10.255.255.255\r\nOrgName: Nobody\r\n"


def ask_with_curl(server, proxy=None, login=None, limit=10):
    """curl's exit code and what it printed, errors included."""
    command = ["curl", "-sS", "-q", "--noproxy", "", "--max-time", limit, "-p"]
    if proxy:
        kind = "http" if proxy.kind == "http" else "socks5h"
        who = f"{login[0]}:{login[1]}@" if login else ""
        command += ["-x", f"{kind}://{who}127.0.0.1:{proxy.port}"]
    done = run([*command, f"gopher://127.0.0.1:{server.port}/0+%2010.1.2.3"])
    return done.returncode, done.stdout


def descendants(pid):
    """A process and those that it has started, by their numbers."""
    family = [pid]
    for thread in Path(f"/proc/{pid}/task").iterdir():
        for child in (thread / "children").read_text().split():
            family += descendants(int(child))
    return family


class ProxyPeers(PeerCase):
    def test_take_right_logins_and_refuse_wrong_ones(self):
        """curl asks through the proxy"""
        for login in (False, True):
            for kind in PROXIES:
                with self.subTest(proxy=kind.name, login=login), own_folder() as folder, \
                        kind(folder, login=login) as proxy, WhoisServer(ANSWER) as server:
                    good = ask_with_curl(server, proxy, (USER, PASSWORD) if login else None)
                    self.assertEqual(good, (0, ANSWER))
                    self.assertEqual(server.queries, [b"+ 10.1.2.3\r\n"])
                    if not login:
                        self.note(proxy.name, "tunnels without a login")
                        continue
                    for wrong in (None, (USER, "wrong")):
                        code, said = ask_with_curl(server, proxy, wrong)
                        self.assertNotEqual(code, 0, said)
                    self.assertEqual(server.connections, 1)
                    self.note(proxy.name, "tunnels with the login only")

    def test_leave_nothing_behind(self):
        """a proxy that is ended takes its children with it"""
        for kind in PROXIES:
            with self.subTest(proxy=kind.name), own_folder() as folder:
                proxy = kind(folder, login=True).start()
                family = descendants(proxy.program.pid)
                proxy.stop()
                # A helper that is told by the end of its parent needs a moment.
                wait_until(lambda: not any(Path(f"/proc/{pid}").exists() for pid in family),
                           f"the children of {proxy.name} to end")
