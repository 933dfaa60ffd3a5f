"""How fast mail is beside other programs, in turn with them: "NAME RATIO" for each measure, for scripts/bench.sh.

    speed.py DRIVER REPETITIONS

mail_attachment   the time of a mail with 25 MB attached to aiosmtpd, as a multiple of curl's with the same file, start
                  of the program included
encode_...        the speed of an encoder, as a part of that of coreutils' base64
"""
import random
import statistics
import subprocess
import sys
import time
from pathlib import Path

from driver import tool, windows_path
from harness import Choice, end_in_order, own_folder
from mail_servers import AioServer

ATTACHED = 25 * 1024 * 1024  # bytes
ENCODED = 64 * 1024 * 1024


class Forgetful:
    """Counts messages and keeps nothing of them."""

    def __init__(self):
        self.sizes = []
        self.envelopes = []

    async def handle_DATA(self, server, session, envelope):
        self.sizes.append(len(envelope.content))
        return "250 OK"


def seconds_of(action):
    begin = time.perf_counter()
    action()
    return time.perf_counter() - begin


def mail_attachment(folder, repetitions):
    path = folder / "attached.bin"
    path.write_bytes(random.Random(25).randbytes(ATTACHED))
    with AioServer(handler=Forgetful()) as server:
        def ours():
            result = tool("mail", timeout=900, server="127.0.0.1", port=server.port, to="b@peer.test",
                          subject="speed", text="text", attach=windows_path(path), name="attached.bin",
                          type="application/octet-stream", **{"from": "a@peer.test"})
            assert result.outcome == "done", result.text

        def curls():
            subprocess.run(["curl", "-sS", "-q", f"smtp://127.0.0.1:{server.port}/client.test", "--mail-from",
                            "a@peer.test", "--mail-rcpt", "b@peer.test", "-H", "Subject: speed", "-F", "=text", "-F",
                            f"file=@{path};encoder=base64"], check=True)
        times = [(seconds_of(ours), seconds_of(curls)) for _ in range(repetitions)]
        sizes = server.handler.sizes
        assert len(sizes) == 2 * repetitions and max(sizes) < 1.02 * min(sizes), sizes
    return statistics.median(a for a, _ in times) / statistics.median(b for _, b in times)


def encoding(folder, name, content, repetitions):
    path = folder / name
    path.write_bytes(content)
    ratios = []
    for _ in range(repetitions):
        result = tool("encode", file=windows_path(path), encoding=name, times=1)
        ours = float(next(line for line in result.lines if line.startswith("seconds: "))[len("seconds: "):])
        with open(path, "rb") as source:
            theirs = seconds_of(lambda: subprocess.run(["base64"], stdin=source, stdout=subprocess.DEVNULL, check=True))
        ratios.append(theirs / ours)
    return statistics.median(ratios)


def main():
    end_in_order()
    Choice.driver = Path(sys.argv[1]).resolve()
    repetitions = int(sys.argv[2])
    with own_folder() as folder:
        data = random.Random(64).randbytes(ENCODED)
        print(f"encode_base64 {encoding(folder, 'base64', data, repetitions):.3f}", flush=True)
        # Text as mail has it: lines, and a letter in thirty that is not ASCII.
        text = ("Die Regel für das Programm wurde geändert = von \"erlaubt\" auf \"gesperrt\".\r\n").encode("cp1252")
        print(f"encode_quoted_printable "
              f"{encoding(folder, 'quoted-printable', text * (ENCODED // len(text)), repetitions):.3f}", flush=True)
        print(f"mail_attachment {mail_attachment(folder, repetitions):.3f}", flush=True)


if __name__ == "__main__":
    main()
