#!/usr/bin/env python3
"""The command line's contract: statuses, streams, questions. usage: cli_test.py PATH_TO/vantoro-cli"""
import base64
import gzip
import json
import os
import pty
import signal
import struct
import subprocess
import sys
import tarfile
import tempfile
import time
import unittest
import zipfile
import zlib

CLI = os.path.abspath(sys.argv.pop(1))
# A wave file of one sample as WavPack packs it.
WAVPACK = base64.b64decode(
    "d3Zwa34AAAAQBAAAAQAAAAAAAAABAAAABRmcFFoAAABoAndhdgAhFlJJRkYmAAAAV0FWRWZtdCAQAAAAAQABAESsAACIWAEA"
    "AgAQAGRhdGECAAAAQgNXV0dWSAADAAQCHghXCAUDhwsWBQAACQIAAQAAZQIAAAAAKgCKAQAA4/8vAvbYiAo=")
WAVE = b"RIFF&\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x44\xac\0\0\x88\x58\x01\0\x02\0\x10\0data\x02\0\0\0\xba\x00"


class Cli(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.dir = self.folder.name

    def path(self, *parts):
        return os.path.join(self.dir, *parts)

    def put(self, name, data):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "wb") as f:
            f.write(data)
        return self.path(name)

    def run_cli(self, *words, **options):
        return subprocess.run([CLI, *words], stdin=subprocess.DEVNULL, capture_output=True, timeout=60, cwd=self.dir, **options)

    def zip(self, name, files):
        with zipfile.ZipFile(self.path(name), "w", zipfile.ZIP_DEFLATED) as z:
            for entry, data in files.items():
                z.writestr(entry, data)
        return self.path(name)

    def tree(self, top):
        found = {}
        for folder, _, files in os.walk(top):
            for f in files:
                with open(os.path.join(folder, f), "rb") as stream:
                    found[os.path.relpath(os.path.join(folder, f), top)] = stream.read()
        return found

    def test_a_set_of_many_volumes_is_read_whole(self):
        archive = self.zip("many.zip", {"random.bin": os.urandom(150_000)})
        with open(archive, "rb") as f:
            content = f.read()
        step = len(content) // 149
        for number in range(150):
            self.put("many.zip.%03d" % (number + 1), content[number * step:(number + 1) * step if number < 149 else None])
        os.unlink(archive)
        p = self.run_cli("test", self.path("many.zip.001"))
        self.assertEqual(p.returncode, 0, p.stderr)
        self.assertIn(b"all whole", p.stdout)

    def test_lists_an_entry_a_line_as_json_with_digests(self):
        archive = self.zip("a.zip", {"one.txt": b"one", "two/zwei ä.txt": b"2" * 5000})
        p = self.run_cli("list", "--json", "--sha256", archive)
        self.assertEqual(p.returncode, 0, p.stderr)
        rows = {row["name"]: row for row in map(json.loads, p.stdout.decode().splitlines())}
        self.assertEqual(rows["one.txt"]["sha256"], "7692c3ad3540bb803c020b3aee66cd8887123234ea0c6e7143c0add73ff431ed")
        self.assertEqual(rows["two/zwei ä.txt"]["size"], 5000)
        self.assertEqual(set(rows["one.txt"]), {"index", "name", "kind", "size", "packed", "mtime", "mode", "link",
                                                "encrypted", "method", "crc", "sha256"})
        self.assertEqual(os.listdir(self.dir), ["a.zip"])

    def test_finds_in_a_compressed_file_what_only_a_large_library_reads(self):
        member = b"%-16s%-12d%-6d%-6d%-8o%-10d`\n" % (b"a.txt/", 0, 0, 0, 0o644, 4) + b"data"
        with gzip.open(self.path("x.a.gz"), "wb") as packed:
            packed.write(b"!<arch>\n" + member)
        result = self.run_cli("list", "--json", self.path("x.a.gz"))
        self.assertEqual([json.loads(line)["name"] for line in result.stdout.splitlines()], ["a.txt"], result.stderr)

    def test_a_worker_without_the_library_for_a_zip_makes_room_for_one_that_has_it(self):
        fields = struct.pack("<HHHHHIIIHH", 20, 0, 97, 0, 33, zlib.crc32(WAVE), len(WAVPACK), len(WAVE), 5, 0)
        local = b"PK\3\4" + fields + b"a.wav" + WAVPACK
        entry = b"PK\1\2" + struct.pack("<H", 20) + fields + struct.pack("<HHHII", 0, 0, 0, 0, 0) + b"a.wav"
        end = b"PK\5\6" + struct.pack("<HHHHIIH", 0, 0, 1, 1, len(entry), len(local), 0)
        archive = self.put("w.zipx", local + entry + end)
        for setting in ("", "off"):
            p = self.run_cli("extract", "-o", self.dir, archive, env={**os.environ, "VANTORO_CAGE": setting})
            self.assertEqual(p.returncode, 0, p.stderr)
        self.assertEqual(self.tree(self.dir), {"w.zipx": local + entry + end, "a.wav": WAVE, "a 1.wav": WAVE})

    def test_extracts_beside_the_archive_with_a_folder_only_where_it_is_needed(self):
        self.zip("single.zip", {"only.txt": b"x"})
        self.zip("several.tar.zip", {"a": b"1", "b": b"2"})
        p = self.run_cli("extract", self.path("single.zip"), self.path("several.tar.zip"))
        self.assertEqual((p.returncode, p.stderr), (0, b""))
        os.remove(self.path("single.zip")), os.remove(self.path("several.tar.zip"))
        self.assertEqual(self.tree(self.dir), {"only.txt": b"x", "several/a": b"1", "several/b": b"2"})

    def test_never_overwrites(self):
        archive = self.zip("a.zip", {"file.txt": b"new"})
        self.put("out/file.txt", b"old")
        self.assertEqual(self.run_cli("extract", "-o", self.path("out"), archive).returncode, 0)
        self.assertEqual(self.tree(self.path("out")), {"file.txt": b"old", "file 1.txt": b"new"})

    def test_folder_modes(self):
        archive = self.zip("a.zip", {"file.txt": b"x"})
        os.mkdir(self.path("always")), os.mkdir(self.path("never"))
        self.assertEqual(self.run_cli("extract", "-o", self.path("always"), "--folder", "always", archive).returncode, 0)
        self.assertEqual(self.run_cli("extract", "-o", self.path("never"), "--folder=never", archive).returncode, 0)
        self.assertEqual(self.tree(self.path("always")), {"a/file.txt": b"x"})
        self.assertEqual(self.tree(self.path("never")), {"file.txt": b"x"})

    def test_extracts_only_what_is_named(self):
        archive = self.zip("a.zip", {"d/one": b"1", "d/two": b"2", "e": b"3"})
        os.mkdir(self.path("out"))
        p = self.run_cli("extract", "-o", self.path("out"), "--folder", "never", "--only", "d", archive)
        self.assertEqual(p.returncode, 0, p.stderr)
        self.assertEqual(self.tree(self.path("out")), {"d/one": b"1", "d/two": b"2"})
        p = self.run_cli("extract", "-o", self.path("out"), "--only", "missing", archive)
        self.assertEqual(p.returncode, 2)
        self.assertIn(b"missing", p.stderr)

    def test_names_the_damaged_entry_and_keeps_the_others(self):
        archive = self.zip("a.zip", {"good.txt": b"g" * 100, "bad.txt": os.urandom(3000)})
        data = bytearray(open(archive, "rb").read())
        data[data.index(b"bad.txt") + 1500] ^= 0xFF
        self.put("a.zip", bytes(data))
        os.mkdir(self.path("out"))
        p = self.run_cli("extract", "-o", self.path("out"), "--folder", "never", archive)
        self.assertEqual(p.returncode, 1)
        self.assertIn(b"bad.txt", p.stderr)
        self.assertEqual(self.tree(self.path("out")), {"good.txt": b"g" * 100})
        self.assertEqual(self.run_cli("test", archive).returncode, 1)
        p = self.run_cli("extract", "-o", self.path("out"), "--folder", "never", "--keep-broken", "--only", "bad.txt", archive)
        self.assertIn("bad.txt.damaged", os.listdir(self.path("out")))

    def test_what_follows_compressed_data_is_told_and_what_came_before_is_kept(self):
        with tarfile.open(self.path("tree.tar.gz"), "w:gz") as tar:
            for name in ("a", "b"):
                tar.add(self.put(name, name.encode() * 3000), arcname=name)
        with open(self.path("tree.tar.gz"), "ab") as f:
            f.write(b"something else")
        self.put("notes.gz", gzip.compress(b"dear diary\n") + b"something else")
        os.mkdir(self.path("out"))
        p = self.run_cli("extract", "-o", self.path("out"), "--folder", "never", "notes.gz", "tree.tar.gz")
        self.assertEqual(p.returncode, 1, p.stderr)
        self.assertEqual(p.stderr.count(b"something unknown follows the end of the compressed data"), 2)
        self.assertEqual(self.tree(self.path("out")),
                         {"notes": b"dear diary\n", "a": b"a" * 3000, "b": b"b" * 3000})

    def test_what_is_no_archive_is_told_and_leaves_nothing(self):
        os.mkdir(self.path("out"))
        os.mkfifo(self.path("fifo.zip"))
        cases = [self.put("noise.zip", os.urandom(5000)), self.put("empty.7z", b""), self.path("absent.rar"), self.dir,
                 self.path("fifo.zip"), "/dev/null", self.put("text.txt", b"plain text\n" * 50),
                 self.put("zeros.img", bytes(100000)), CLI]
        for archive in cases:
            for command in (["extract", "-o", self.path("out")], ["list"], ["test"]):
                p = self.run_cli(*command, archive)
                self.assertEqual(p.returncode, 2, (command, archive, p.stderr))
                self.assertIn(os.path.basename(archive).encode(), p.stderr)
                self.assertEqual(len(p.stderr.splitlines()), 1, p.stderr)
        self.assertEqual(os.listdir(self.path("out")), [])

    def test_wrong_usage(self):
        for words in ([], ["frobnicate"], ["list"], ["extract", "--folder", "perhaps", "x"], ["list", "--quiet", "x"],
                      ["test", "--password-fd", "x", "y"], ["list", "--encoding", "none", "x"], ["extract", "-o"]):
            self.assertEqual(self.run_cli(*words).returncode, 4, words)
        self.assertEqual(self.run_cli("--help").returncode, 0)
        self.assertIn(b"--keep-broken", self.run_cli("extract", "--help").stdout)

    def test_password_comes_from_file_descriptor_or_terminal(self):
        self.put("secret.txt", b"secret " * 100)
        made = subprocess.run(["7zz", "a", "-pcörrect", "-mhe=on", self.path("a.7z"), self.path("secret.txt")],
                              capture_output=True) if have("7zz") else None
        if not made or made.returncode:
            self.skipTest("7zz is not installed")
        right, wrong = self.put("right", "cörrect\n".encode()), self.put("wrong", b"nope\n")
        self.assertEqual(self.run_cli("test", "--password-file", right, self.path("a.7z")).returncode, 0)
        self.assertEqual(self.run_cli("test", "--password-file", wrong, self.path("a.7z")).returncode, 3)
        p = self.run_cli("test", self.path("a.7z"), start_new_session=True)
        self.assertEqual(p.returncode, 3, p.stderr)
        read, write = os.pipe()
        os.write(write, "cörrect".encode()), os.close(write)
        p = self.run_cli("test", "--password-fd", str(read), self.path("a.7z"), pass_fds=[read])
        self.assertEqual(p.returncode, 0, p.stderr)
        os.close(read)
        self.assertEqual(self.ask_on_terminal([b"nope\n", "cörrect\n".encode()]), 0)

    def ask_on_terminal(self, answers):
        pid, terminal = pty.fork()
        if pid == 0:
            os.execv(CLI, [CLI, "test", self.path("a.7z")])
        shown = b""
        for answer in answers:
            while b"assword" not in shown:
                shown += os.read(terminal, 1000)
            os.write(terminal, answer)
            shown = b""
        try:
            while chunk := os.read(terminal, 1000):
                shown += chunk
        except OSError:
            pass
        self.assertNotIn("cörrect".encode(), shown)
        return os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])

    def test_a_signal_stops_it_and_nothing_is_left(self):
        with tarfile.open(self.path("big.tar.bz2"), "w:bz2") as tar:
            self.put("noise", os.urandom(30_000_000))
            tar.add(self.path("noise"), "a/noise")
        os.remove(self.path("noise"))
        os.mkdir(self.path("out"))
        for number in (signal.SIGINT, signal.SIGTERM):
            p = subprocess.Popen([CLI, "extract", "-o", self.path("out"), self.path("big.tar.bz2")], stderr=subprocess.PIPE)
            while not os.listdir(self.path("out")):
                self.assertIsNone(p.poll(), "ended before it was stopped")
                time.sleep(0.005)
            p.send_signal(number)
            began = time.monotonic()
            p.communicate(timeout=10)
            self.assertEqual(p.returncode, 128 + number)
            self.assertLess(time.monotonic() - began, 3)
            self.assertEqual(os.listdir(self.path("out")), [])

    def test_a_reader_that_goes_away_is_not_a_crash(self):
        archive = self.zip("many.zip", {f"file {i}": b"" for i in range(20000)})
        p = subprocess.Popen([CLI, "list", archive], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        p.stdout.readline()
        p.stdout.close()
        self.assertIn(p.wait(timeout=20), (0, 2))

    def test_formats_names_extensions(self):
        p = self.run_cli("formats", "--json")
        rows = [json.loads(line) for line in p.stdout.decode().splitlines()]
        known = {e for row in rows for e in row["extensions"]}
        self.assertLessEqual({"zip", "7z", "rar", "tar", "gz", "xz", "iso", "cab", "rpm", "deb", "lzh"}, known)


def have(program):
    return any(os.access(os.path.join(p, program), os.X_OK) for p in os.environ["PATH"].split(":"))


if __name__ == "__main__":
    unittest.main(verbosity=1)
