#!/usr/bin/env python3
"""Archives of the kinds that have crashed decoders or held them for ever: cab, rar 5, iso, xar. Each is made here and
must end soon, with a sentence when it is not whole, and leave nothing behind. usage: hostile_formats_test.py PATH_TO/vantoro-cli"""
import hashlib
import os
import random
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

CLI = os.path.abspath(sys.argv.pop(1))
SECONDS = 60  # far above what any of them takes; the worker's own limit is 10 s of its processor's time
MOST = 64 << 20  # bytes that may come out of any of them


def cab(blocks, kind=0, size=None, files=1, folder=0, offset=0, data_at=None, folders=1):
    """blocks: (packed bytes, declared unpacked size) each. What else is given is a lie about them."""
    names = b"".join(
        struct.pack("<IIHHHH", size if size is not None else sum(s for _, s in blocks), offset, folder, 0x5421, 0x6000, 0x20)
        + b"file%d.txt\0" % n for n in range(files))
    at = 36 + 8 * folders
    start = at + len(names) if data_at is None else data_at
    data = b"".join(struct.pack("<IHH", 0, len(p) & 0xFFFF, s) + p for p, s in blocks)
    head = struct.pack("<4sIIIIIBBHHHHH", b"MSCF", 0, at + len(names) + len(data), 0, at, 0, 3, 1, folders, files, 0, 1, 0)
    return head + struct.pack("<IHH", start, len(blocks), kind) * folders + names + data


def hostile_cabs():
    noise = random.Random(7)
    mszip = zlib.compressobj(9, zlib.DEFLATED, -15)
    good = b"CK" + mszip.compress(b"x" * 1000) + mszip.flush()
    yield "cut-deflate", cab([(good[:-3], 1000)], 1)
    yield "far-distance", cab([(b"CK\x4b\x04\x7f\xff\xff\x00", 32768)], 1)
    yield "no-signature", cab([(b"XX" + good[2:], 1000)], 1)
    yield "block-claims-64k", cab([(good, 0xFFFF)] * 3, 1)
    yield "empty-blocks", cab([(b"", 0)] * 200, 1, size=0x7FFFFFFF)
    yield "zero-blocks", cab([], 1, size=0x7FFFFFFF)
    yield "file-past-folder", cab([(good, 1000)], 1, offset=0xFFFFFFF0, size=0x20)
    yield "folder-that-is-not", cab([(good, 1000)], 1, folder=99)
    yield "continued-from-nowhere", cab([(good, 1000)], 1, folder=0xFFFD)
    yield "data-in-header", cab([(good, 1000)], 1, data_at=0)
    yield "many-folders-one-block", cab([(good, 1000)], 1, folders=4000)
    yield "many-names", cab([(good, 1000)], 1, files=2000)
    for window in (0, 14, 15, 18, 21, 22, 31):
        for round in range(4):
            packed = bytes(noise.getrandbits(8) for _ in range(2000))
            yield "lzx-%d-%d" % (window, round), cab([(packed, 32768)] * 3, 3 | window << 8)
    for level, memory in ((1, 10), (7, 21), (0, 0), (15, 31)):
        packed = bytes(noise.getrandbits(8) for _ in range(3000))
        yield "quantum-%d" % memory, cab([(packed, 32768)] * 2, 2 | level << 4 | memory << 8)


def vint(value):
    out = b""
    while value >= 0x80:
        out += bytes([value & 0x7F | 0x80])
        value >>= 7
    return out + bytes([value])


def block(body):
    size = vint(len(body))
    return struct.pack("<I", zlib.crc32(size + body)) + size + body


def rar_file(name=b"a.txt", data=b"", flags=0, file_flags=4, size=None, packed=None, compression=0, extra=b"", name_size=None):
    body = vint(2) + vint(flags | 2 | (1 if extra else 0)) + (vint(len(extra)) if extra else b"")
    body += vint(len(data) if packed is None else packed) + vint(file_flags) + vint(len(data) if size is None else size)
    body += vint(0o100644) + struct.pack("<I", zlib.crc32(data)) + vint(compression) + vint(1)
    return block(body + vint(len(name) if name_size is None else name_size) + name + extra) + data


def hostile_rars():
    noise = random.Random(11)
    main = b"Rar!\x1a\x07\x01\x00" + block(vint(1) + vint(0) + vint(0))
    end = block(vint(5) + vint(0) + vint(0))
    one = rar_file(data=b"hello")
    yield "leads-back-to-itself", main + rar_file(packed=(1 << 64) - len(rar_file())) + end
    yield "leads-back-to-the-start", main + one + rar_file(packed=(1 << 63) - 1) + end
    yield "nameless-without-end", main + rar_file(name=b"") * 5000
    yield "headers-of-nothing", main + (struct.pack("<I", zlib.crc32(b"\0")) + b"\0") * 5000
    yield "header-of-endless-length", main + b"\0\0\0\0" + b"\xff" * 200
    yield "name-past-header", main + rar_file(name_size=1 << 40) + end
    yield "continued-in-no-volume", main + rar_file(data=b"hello", flags=0x10, size=1 << 50) + end
    yield "continues-itself", main + rar_file(data=b"hello", flags=0x18) * 500 + end
    yield "service-headers", main + block(vint(3) + vint(0) + vint(0)) * 5000 + end
    yield "extra-of-endless-records", main + rar_file(extra=vint(1) * 3000) + end
    yield "extra-record-past-its-area", main + rar_file(extra=vint(1 << 60) + vint(1)) + end
    for way in (0x80, 0xC80, 0x7C80, 0x7FFF, 0xFFF80):
        packed = bytes(noise.getrandbits(8) for _ in range(3000))
        yield "noise-%x" % way, main + rar_file(data=packed, size=1 << 40, compression=way) + end


def made_by_us(folder, name):
    source = os.path.join(folder, "source")
    os.makedirs(os.path.join(source, "sub", "deeper"), exist_ok=True)
    for file in ("a file with a rather long name.txt", "sub/b.txt", "sub/deeper/c.txt"):
        with open(os.path.join(source, file), "w", encoding="utf-8") as f:
            f.write(file * 300)
    path = os.path.join(folder, name)
    subprocess.run([CLI, "create", "-o", path, source], check=True, capture_output=True, timeout=60)
    with open(path, "rb") as f:
        return f.read()


def both_orders(value):
    return struct.pack("<I", value) + struct.pack(">I", value)


def hostile_isos(folder):
    image = made_by_us(folder, "good.iso")
    records = []  # (offset of the record, extent, length, is a folder) of all directory records
    for at in range(17 * 2048, len(image) - 34):
        little, big = struct.unpack_from("<I", image, at + 2)[0], struct.unpack_from(">I", image, at + 6)[0]
        if image[at] >= 34 and little == big and 16 < little < len(image) // 2048 and image[at + 10:at + 14] == image[at + 14:at + 18][::-1]:
            records.append((at, little, struct.unpack_from("<I", image, at + 10)[0], bool(image[at + 25] & 2)))
    folders = [r for r in records if r[3]]
    files = [r for r in records if not r[3]]

    def with_extents(which, extent, length=None):
        changed = bytearray(image)
        for at, _, size, _ in which:
            changed[at + 2:at + 10] = both_orders(extent)
            changed[at + 10:at + 18] = both_orders(size if length is None else length)
        return bytes(changed)
    for n, (_, extent, _, _) in enumerate(folders[:6]):
        yield "folders-hold-each-other-%d" % n, with_extents(folders[2:], extent)
    yield "folder-without-end", with_extents(folders[1:], folders[0][1], 0xFFFFFFFF)
    yield "file-without-end", with_extents(files, files[0][1], 0xFFFFFFFF)
    yield "extents-outside", with_extents(records, 0x7FFFFFFF)
    yield "folder-of-nothing", with_extents(folders[1:], folders[0][1], 0)
    endless = bytearray(image)
    for at, _, _, _ in files:
        endless[at + 25] |= 0x80  # another extent follows, and another
    yield "extents-without-end", bytes(endless)
    area = image.find(b"CE\x1c\x01")
    looping = bytearray(image)
    for at, extent, _, _ in records:
        name_end = at + 33 + image[at + 32] + (1 - image[at + 32] % 2)
        if name_end + 28 <= at + image[at]:
            sector, offset = divmod(name_end, 2048)
            looping[name_end:name_end + 28] = b"CE\x1c\x01" + both_orders(sector) + both_orders(offset) + both_orders(28)
    yield "continuation-of-itself", bytes(looping)
    if area >= 0:
        yield "continuation-outside", image[:area + 4] + both_orders(0x7FFFFFFF) + image[area + 12:]
    yield "cut", image[:len(image) * 2 // 3]


def xar(toc, heap=b"", unpacked=None, packed=None):
    body = zlib.compress(toc)
    head = struct.pack(">4sHHQQI", b"xar!", 28, 1, len(body) if packed is None else packed, len(toc) if unpacked is None else unpacked, 1)
    return head + body + hashlib.sha1(body).digest() + heap


def hostile_xars():
    def toc(files):
        return ('<?xml version="1.0" encoding="UTF-8"?><xar><toc><checksum style="sha1"><size>20</size><offset>0</offset>'
                "</checksum>%s</toc></xar>" % files).encode()

    def file(n, data="", kind="file", inner=""):
        return '<file id="%d"><name>f%d</name><type>%s</type>%s%s</file>' % (n, n, kind, data, inner)

    def data(length, size, offset=20, style="application/octet-stream"):
        return ('<data><length>%s</length><offset>%s</offset><size>%s</size><encoding style="%s"/></data>'
                % (length, offset, size, style))
    gzip, bzip2, lzma = "application/x-gzip", "application/x-bzip2", "application/x-lzma"
    yield "nothing-of-much", xar(toc(file(1, data(0, 1 << 40, style=gzip))))
    yield "nothing-of-much-bzip2", xar(toc(file(1, data(0, 1 << 40, style=bzip2))), b"BZh9")
    yield "noise-lzma", xar(toc(file(1, data(5000, 1 << 40, style=lzma))), random.Random(3).randbytes(5000))
    yield "past-the-end", xar(toc(file(1, data(1 << 60, 1 << 60, (1 << 63) - 1))), b"x" * 100)
    yield "less-than-nothing", xar(toc(file(1, data(-1, -1, -1))), b"x" * 100)
    yield "numbers-without-end", xar(toc(file(1, data("9" * 500, "9" * 500))), b"x" * 100)
    yield "link-to-itself", xar(toc('<file id="1"><name>a</name><type link="1">hardlink</type></file>'))
    yield "links-in-a-ring", xar(toc('<file id="1"><name>a</name><type link="2">hardlink</type></file>'
                                     '<file id="2"><name>b</name><type link="1">hardlink</type></file>'))
    yield "one-id-for-all", xar(toc(file(1, data(10, 10)) * 3000), b"x" * 100)
    nested = ""
    for n in range(3000):
        nested = file(n, kind="directory", inner=nested)
    yield "folders-without-end", xar(toc(nested))
    yield "toc-of-much", xar(toc(file(1)), unpacked=1 << 62)
    yield "toc-past-the-end", xar(toc(file(1)), packed=1 << 62)
    yield "toc-of-zeros", xar(b"\0" * (8 << 20))
    yield "toc-cut", xar(toc(file(1))[:-20])
    yield "entities", xar(b'<?xml version="1.0"?><!DOCTYPE x [<!ENTITY a "aaaaaaaaaa">' + b"".join(
        b'<!ENTITY %c "%s">' % (98 + n, b"&%c;" % (97 + n) * 10) for n in range(9)) + b"]><xar><toc>&j;</toc></xar>")


class HostileFormats(unittest.TestCase):
    def hold(self, archives, extension):
        with tempfile.TemporaryDirectory() as folder:
            for name, content in archives(folder):
                path = os.path.join(folder, name + extension)
                with open(path, "wb") as f:
                    f.write(content)
                with self.subTest(archive=os.path.basename(path)):
                    self.hold_one(path)
                os.unlink(path)

    def hold_one(self, path):
        out = tempfile.mkdtemp(dir=os.path.dirname(path))
        for words in (["list"], ["test"], ["extract", "--folder", "never", "-o", out]):
            p = subprocess.run([CLI, *words, path], stdin=subprocess.DEVNULL, capture_output=True, timeout=SECONDS)
            self.assertIn(p.returncode, (0, 1, 2, 3), p.stderr)
            self.assertTrue(p.returncode == 0 or os.path.basename(path).encode() in p.stderr, (words, p.returncode, p.stderr[-300:]))
            self.assertLess(len(p.stdout), 8 << 20)
        left = [os.path.join(top, n) for top, _, names in os.walk(out) for n in names]
        self.assertLess(sum(os.lstat(n).st_size for n in left), MOST)
        self.assertEqual([n for n in os.listdir(out) if n.startswith(".Vantoro")], [])

    def test_cabinets(self):
        self.hold(lambda _: hostile_cabs(), ".cab")

    def test_rar_5(self):
        self.hold(lambda _: hostile_rars(), ".rar")

    def test_a_large_dictionary_is_refused_with_its_size_unless_allowed(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "large.rar")
            with open(path, "wb") as f:
                f.write(b"Rar!\x1a\x07\x01\x00" + block(vint(1) + vint(0) + vint(0))
                        + rar_file(data=b"not packed by anybody", size=1 << 40, compression=0x7C80))
            p = subprocess.run([CLI, "test", path], capture_output=True, timeout=SECONDS)
            self.assertEqual(p.returncode, 1)
            self.assertIn(b"4.29 GB of memory", p.stderr)
            p = subprocess.run([CLI, "test", "--max-dictionary", "4096", path], capture_output=True, timeout=SECONDS)
            self.assertEqual(p.returncode, 1)
            self.assertNotIn(b"of memory", p.stderr)

    def test_images(self):
        self.hold(hostile_isos, ".iso")

    def test_xar(self):
        self.hold(lambda _: hostile_xars(), ".xar")

    def test_the_files_that_the_lies_are_made_of_are_whole(self):
        mszip = zlib.compressobj(9, zlib.DEFLATED, -15)
        good = b"CK" + mszip.compress(b"x" * 1000) + mszip.flush()
        main = b"Rar!\x1a\x07\x01\x00" + block(vint(1) + vint(0) + vint(0))
        plain = ('<xar><toc><checksum style="sha1"><size>20</size><offset>0</offset></checksum><file id="1"><name>a</name>'
                 "<type>file</type><data><length>5</length><offset>20</offset><size>5</size>"
                 '<encoding style="application/octet-stream"/></data></file></toc></xar>').encode()
        with tempfile.TemporaryDirectory() as folder:
            for name, content in (("a.cab", cab([(good, 1000)], 1)), ("a.rar", main + rar_file(data=b"hello") + block(vint(5) + vint(0) + vint(0))),
                                  ("a.xar", xar(plain, b"hello"))):
                path = os.path.join(folder, name)
                with open(path, "wb") as f:
                    f.write(content)
                p = subprocess.run([CLI, "test", path], capture_output=True, timeout=SECONDS)
                self.assertEqual(p.returncode, 0, (name, p.stderr))


if __name__ == "__main__":
    unittest.main()
