"""Rule archives: ours read by other archivers, theirs read by us, and hostile ones read or refused."""
import io
import random
import struct
import zipfile
import zlib

from driver import tool, windows_path
from harness import PeerCase, run

# Half of it can be compressed, as with rules; no line ends that a tool might change.
RULES = bytes(random.Random(11).randbytes(20_000)) + b"C:\\Program Files\\Program\\program.exe\0" * 600
OTHER = b"advanced" * 100


class ArchiveCase(PeerCase):
    def setUp(self):
        super().setUp()
        self.rules = self.folder / "rules.conf"
        self.rules.write_bytes(RULES)
        self.archive = self.folder / "rules.fxz"

    def take(self):
        """Imports the archive into a folder that has rules already. What the driver says, and the files that have
        come: name below the folder, bytes. Whatever was refused has changed nothing and left nothing behind."""
        data = self.folder / f"data-{random.randrange(10**9)}"
        rules = data / "Rules"
        rules.mkdir(parents=True)
        before = {"old.conf": b"stays", "rules.conf": b"the rules so far"}
        for name, content in before.items():
            (rules / name).write_bytes(content)
        result = tool("import", archive=windows_path(self.archive), data=windows_path(data))
        after = {str(path.relative_to(rules)): path.read_bytes() for path in rules.rglob("*") if path.is_file()}
        beside = [path.name for path in data.rglob("*") if path.is_file() and rules not in path.parents]
        if result.outcome != "done":
            self.assertEqual((after, [name for name in beside if name != "lock"]), (before, []), result.text)
            return result, {}
        self.assertEqual(after["old.conf"], before["old.conf"])
        return result, {name: content for name, content in after.items() if before.get(name) != content}


class OwnArchives(ArchiveCase):
    def test_are_read_by_others(self):
        """ours: listed, tested, unpacked, identical"""
        advanced = self.folder / "rules_advanced.conf"
        advanced.write_bytes(OTHER)
        expected = {"rules.conf": RULES, "rules_advanced.conf": OTHER}
        for options in ({}, {"stored": 1}, {"comment": "Brennvar: PK, a comment"}):
            made = tool("pack", archive=windows_path(self.archive), name=list(expected),
                        file=[windows_path(self.rules), windows_path(advanced)], **options)
            self.assertEqual(made.outcome, "done")
            archive = str(self.archive)
            for peer, listing, testing, unpacking in (
                    ("unzip", ["unzip", "-l", archive], ["unzip", "-t", archive], ["unzip", "-q", archive, "-d"]),
                    ("7z", ["7z", "l", archive], ["7z", "t", archive], ["7z", "x", "-y", archive, "-o"]),
                    ("bsdtar", ["bsdtar", "-tf", archive], ["bsdtar", "-xOf", archive],
                     ["bsdtar", "-xf", archive, "-C"])):
                with self.subTest(peer=peer, options=options):
                    place = self.folder / f"{peer}{len(options)}{'stored' in options}"
                    place.mkdir()
                    listed = run(listing)
                    self.assertEqual(listed.returncode, 0, listed.stdout)
                    for name in expected:
                        self.assertIn(name.encode(), listed.stdout)
                    self.assertEqual(run(testing).returncode, 0)
                    where = [*unpacking[:-1], unpacking[-1] + str(place)] if peer == "7z" else [*unpacking, place]
                    done = run(where)
                    self.assertEqual(done.returncode, 0, done.stdout)
                    self.assertEqual({path.name: path.read_bytes() for path in place.iterdir()}, expected)
            with self.subTest(peer="python", options=options), zipfile.ZipFile(self.archive) as opened:
                self.assertIsNone(opened.testzip())
                self.assertEqual({name: opened.read(name) for name in opened.namelist()}, expected)
                wanted = zipfile.ZIP_STORED if "stored" in options else zipfile.ZIP_DEFLATED
                self.assertEqual({entry.compress_type for entry in opened.infolist()}, {wanted})
                self.assertEqual(opened.comment.decode(), options.get("comment", ""))
            tested = run(["zip", "-T", archive])
            self.assertEqual(tested.returncode, 0, tested.stdout)
        for peer in ("Info-ZIP", "7z", "bsdtar", "python zipfile"):
            self.note(peer, "deflated, stored, with a comment")


class Unseekable(io.RawIOBase):
    """A pipe, to a writer: sizes and checksums follow the data of an entry."""

    def __init__(self, file):
        super().__init__()
        self._file = file

    def writable(self):
        return True

    def write(self, data):
        return self._file.write(data)


# What libzip's check for consistency makes of a local header that says how long the content is unpacked and leaves its
# checksum and its packed length to the data descriptor: it wants all three there, or none.
HALF_A_DESCRIPTOR = "damaged"


class ForeignArchives(ArchiveCase):
    def hold(self, peer, how, fault=None):
        """The archive at hand is read, or refused with the fault. It is taken away, so that the next is a new one."""
        try:
            result, files = self.take()
        finally:
            self.archive.unlink()
        self.assertEqual(result.outcome, fault or "done", f"{peer} {how}: {result.text}")
        if not fault:
            self.assertEqual(list(files.values()), [RULES], f"{peer} {how}: {result.text}")
        self.note(peer, f"{how}: {'refused, ' + fault if fault else 'read'}")

    def by(self, command, **options):
        done = run(command, cwd=self.folder, **options)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_of_info_zip(self):
        """theirs, with each tool's options"""
        name = self.archive.name
        for how in (["-0"], ["-1"], ["-6"], ["-9"], ["-X"], ["-fd"], ["-fz"], ["-fz-"], ["-fd", "-fz"]):
            with self.subTest(how=how):
                self.by(["zip", "-q", *how, name, "rules.conf"])
                self.hold("zip", " ".join(how), HALF_A_DESCRIPTOR if "-fd" in how else None)
        self.by(["zip", "-q", name, "-"], input=RULES)
        self.hold("zip", "from a pipe")
        self.by(["zip", "-q", "-z", name, "rules.conf"], input=b"A comment\nof two lines\n.\n")
        self.assertIn("comment: A comment%0D%0Aof two lines", self.take()[0].text)
        self.hold("zip", "with a comment")
        self.by(["zip", "-q", "-P", "secret", name, "rules.conf"])
        self.hold("zip", "with a password", "enciphered")
        self.by(["zip", "-q", "-Z", "bzip2", name, "rules.conf"])
        self.hold("zip", "bzip2", "unknown method")

    def test_of_7z(self):
        """theirs, with each tool's options"""
        for how, fault in (
                (["-mx=0"], None), (["-mx=1"], None), (["-mx=9"], None),
                (["-mcu=on"], None), (["-mtc=on"], None),
                (["-mm=Deflate64"], "unknown method"), (["-mm=LZMA"], "unknown method"),
                (["-mm=BZip2"], "unknown method"), (["-mm=PPMd"], "unknown method"),
                (["-psecret", "-mem=ZipCrypto"], "enciphered"),
                (["-psecret", "-mem=AES256"], "enciphered")):
            with self.subTest(how=how):
                self.by(["7z", "a", "-tzip", "-y", *how, self.archive, "rules.conf"])
                self.hold("7z", " ".join(how), fault)

    def test_of_bsdtar(self):
        """theirs, with each tool's options"""
        for how in ("compression=store", "compression=deflate", "zip64", "!zip64", "experimental",
                    "encryption=zipcrypt", "encryption=aes256"):
            with self.subTest(how=how):
                self.by(["bsdtar", "-cf", self.archive, "--format", "zip", "--passphrase", "secret",
                         "--options", f"zip:{how}", "rules.conf"])
                self.hold("bsdtar", how, HALF_A_DESCRIPTOR)
        done = run(["sh", "-c", "bsdtar -c --format zip -f - rules.conf | cat > rules.fxz"], cwd=self.folder)
        self.assertEqual(done.returncode, 0, done.stdout)
        self.hold("bsdtar", "to a pipe", HALF_A_DESCRIPTOR)

    def test_of_python(self):
        """theirs, with each tool's options"""
        for how, method, fault in (
                ("stored", zipfile.ZIP_STORED, None), ("deflated", zipfile.ZIP_DEFLATED, None),
                ("bzip2", zipfile.ZIP_BZIP2, "unknown method"),
                ("lzma", zipfile.ZIP_LZMA, "unknown method")):
            for streamed in (False, True):
                with self.subTest(how=how, streamed=streamed):
                    with open(self.archive, "wb") as file, \
                            zipfile.ZipFile(Unseekable(file) if streamed else file, "w", method) as made, \
                            made.open("rules.conf", "w", force_zip64=True) as entry:
                        entry.write(RULES)
                    self.hold("python zipfile", f"{how}{', streamed' if streamed else ''}, zip64", fault)


LOCAL, CENTRAL, END = 0x04034B50, 0x02014B50, 0x06054B50  # signatures


class Entry:
    """An entry whose two headers can be told different things."""

    def __init__(self, name, data, **lies):
        self.name = name
        self.data = data
        self.lies = lies

    def fields(self, where):
        """Of "local" or "central": name, method, CRC, packed and unpacked size, and what is said of them instead."""
        true = {"name": self.name, "method": 0, "crc": zlib.crc32(self.data), "packed": len(self.data),
                "size": len(self.data), "flags": 0}
        true.update({key: value for key, value in self.lies.items() if key in true})
        prefix = where + "_"
        true.update({key[len(prefix):]: value for key, value in self.lies.items() if key.startswith(prefix)})
        return true

    def local(self):
        field = self.fields("local")
        return struct.pack("<IHHHHHIIIHH", LOCAL, 20, field["flags"], field["method"], 0, 0x21, field["crc"],
                           field["packed"], field["size"], len(field["name"]), 0) + field["name"] + self.data

    def central(self, offset):
        field = self.fields("central")
        return struct.pack("<IHHHHHHIIIHHHHHII", CENTRAL, 20, 20, field["flags"], field["method"], 0, 0x21,
                           field["crc"], field["packed"], field["size"], len(field["name"]), 0, 0, 0, 0, 0,
                           offset) + field["name"]


def archive_of(*entries, offsets=None, comment=b"", count=None):
    """The bytes of an archive. `offsets` takes the place of where the entries really are, `count` of their number."""
    body, places = b"", []
    for entry in entries:
        places.append(len(body))
        body += entry.local()
    directory = b"".join(entry.central(place) for entry, place in zip(entries, offsets or places))
    number = len(entries) if count is None else count
    return body + directory + struct.pack("<IHHHHIIH", END, 0, 0, number, number, len(directory), len(body),
                                          len(comment)) + comment


def deflated(data):
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    return packer.compress(data) + packer.flush()


def bomb(size):
    """An entry of a megabyte or more that says what it is: zeros."""
    data = bytes(size)
    packed = deflated(data)
    return Entry(b"rules.conf", packed, method=8, crc=zlib.crc32(data), size=size)


class HostileArchives(ArchiveCase):
    def peers_say(self):
        """How the others take the archive at hand: "reads" or "refuses", in their order."""
        said = []
        for peer, command in (("unzip", ["unzip", "-tqq", self.archive]), ("7z", ["7z", "t", "-y", self.archive]),
                              ("bsdtar", ["bsdtar", "-xOf", self.archive])):
            said.append(f"{peer} {'reads' if run(command).returncode == 0 else 'refuses'}")
        try:
            with zipfile.ZipFile(self.archive) as opened:
                bad = opened.testzip()
            said.append(f"python {'reads' if bad is None else 'refuses'}")
        except (zipfile.BadZipFile, EOFError, NotImplementedError, RuntimeError):
            said.append("python refuses")
        return ", ".join(said)

    def test_are_refused(self):
        """hostile and inconsistent archives"""
        one, two = Entry(b"rules.conf", OTHER), Entry(b"rules_advanced.conf", RULES)
        good = archive_of(one, two)
        rows = (
            ("overlapping entries", archive_of(one, Entry(b"rules.conf", OTHER), offsets=[0, 0])),
            ("wrong CRC in both headers", archive_of(Entry(b"rules.conf", OTHER, crc=1))),
            ("wrong CRC in one header", archive_of(Entry(b"rules.conf", OTHER, local_crc=1))),
            ("unpacked size too large", archive_of(Entry(b"rules.conf", OTHER, size=len(OTHER) + 1))),
            ("unpacked size too small", archive_of(Entry(b"rules.conf", deflated(OTHER), method=8,
                                                         crc=zlib.crc32(OTHER), size=7))),
            ("packed size beyond the end", archive_of(Entry(b"rules.conf", OTHER, packed=10**6, size=10**6))),
            ("size in one header only", archive_of(Entry(b"rules.conf", OTHER, local_size=3))),
            ("name in the local header only", archive_of(Entry(b"rules.conf", OTHER, central_name=b""))),
            ("name in the directory only", archive_of(Entry(b"rules.conf", OTHER, local_name=b""))),
            ("two names for one entry", archive_of(Entry(b"rules.conf", OTHER, local_name=b"other.conf"))),
            ("directory promises one more", archive_of(one, two, count=3)),
            ("directory promises one less", archive_of(one, two, count=1)),
            ("entry behind the end", archive_of(one, offsets=[10**6])),
            ("half of it", good[:len(good) // 2]),
            ("a byte is missing", good[:-1]),
            ("no archive at all", b"MZ" + bytes(1000)),
            ("an empty file", b""),
            ("two megabytes out of two thousand bytes", archive_of(bomb(2 << 20))),
            ("65 MB in all", archive_of(*[Entry(b"%d" % number, random.Random(1).randbytes(13 << 20))
                                          for number in range(5)])),
        )
        for what, content in rows:
            with self.subTest(what=what):
                self.archive.write_bytes(content)
                result, files = self.take()
                self.assertNotEqual(result.outcome, "done", result.text)
                peers = self.peers_say() if content else ""
                self.note("ours", f"{what}: {result.outcome}; {peers}")

    def test_with_65536_entries(self):
        """65,536 entries"""
        with zipfile.ZipFile(self.archive, "w") as made:
            for number in range(65536):
                made.writestr(f"{number}.conf", b"")
        result, files = self.take()
        self.assertEqual((result.outcome, files), ("too large", {}))
        self.note("python zipfile", "refused: too large")

    def test_comment_with_a_signature(self):
        """a comment that holds an end of another directory"""
        inner = archive_of(Entry(b"evil.conf", b"evil"))
        self.archive.write_bytes(archive_of(Entry(b"rules.conf", RULES), comment=inner))
        result, files = self.take()
        self.assertNotIn("evil.conf", files)
        self.assertIn(result.outcome, ("done", "damaged"))
        if result.outcome == "done":
            self.assertEqual(files, {"rules.conf": RULES})
        self.note("ours", f"{result.outcome}; {self.peers_say()}")

    def test_names_cannot_leave_the_folder(self):
        """names that want to be elsewhere"""
        rows = {
            b"/rules.conf": "rules.conf", b"\\rules.conf": "rules.conf", b"C:\\x\\..\\rules.conf": "rules.conf",
            b"c:/windows/../rules.conf": "rules.conf", b"\\\\server\\share\\rules.conf": "server/share/rules.conf",
            b"..\\..\\rules.conf": "rules.conf", b"../rules.conf": "rules.conf", b"a/../../rules.conf": "rules.conf",
            b"rules.conf. ": "rules.conf", b"rules.conf...": "rules.conf",
            b"..": None, b"a\\..": None, b"NUL": None, b"nul.txt": None, b"COM1": None, b"a/CON/b": None,
            b"rules.conf:stream": None, b"C:": None, b"": None,
        }
        for stored, expected in rows.items():
            with self.subTest(stored=stored):
                self.archive.write_bytes(archive_of(Entry(stored, OTHER), Entry(b"plain.conf", b"plain")))
                result, files = self.take()
                wanted = {"plain.conf": b"plain"}
                if expected:
                    wanted[expected] = OTHER
                if result.outcome == "done":
                    self.assertEqual(files, wanted, result.text)
                else:
                    self.assertEqual(expected, None, result.text)
                self.note("ours", f"{stored.decode()!r}: {'written as ' + expected if expected else 'not written'}")
