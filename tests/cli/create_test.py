#!/usr/bin/env python3
"""What `vantoro-cli create` writes is read back by other tools and by ourselves. usage: create_test.py PATH_TO/vantoro-cli"""
import filecmp
import os
import resource
import shutil
import signal
import stat
import subprocess
import sys
import tarfile
import tempfile
import time
import unittest
import zipfile

CLI = os.path.abspath(sys.argv.pop(1))
PASSWORD = "pässwörd"


def have(program):
    return shutil.which(program) is not None


class Create(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.dir = os.path.realpath(cls.folder.name)
        cls.src = os.path.join(cls.dir, "src")
        os.makedirs(os.path.join(cls.src, "empty folder"))
        deep = os.path.join(cls.src, *["deep"] * 30)
        os.makedirs(deep)
        files = {"text.txt": b"some text\n" * 5000, "zero": b"", "noise": os.urandom(200_000), ".hidden": b"h",
                 "näme 日本 Ж.txt": b"names", "n" * 255: b"long", "big.bin": os.urandom(1 << 20) * 3 + b"A" * (3 << 20)}
        for name, data in files.items():
            with open(os.path.join(cls.src, name), "wb") as f:
                f.write(data)
        with open(os.path.join(deep, "bottom"), "wb") as f:
            f.write(b"bottom")
        os.chmod(os.path.join(cls.src, "text.txt"), 0o640)
        os.chmod(os.path.join(cls.src, "zero"), 0o755)
        os.utime(os.path.join(cls.src, "text.txt"), (1_000_000_000, 1_000_000_000))
        os.symlink("text.txt", os.path.join(cls.src, "link"))
        cls.password_file = os.path.join(cls.dir, "password")
        with open(cls.password_file, "w") as f:
            f.write(PASSWORD)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def setUp(self):
        self.out = tempfile.mkdtemp(dir=self.dir)
        self.addCleanup(shutil.rmtree, self.out, True)

    def cli(self, *words, **options):
        return subprocess.run([CLI, *words], stdin=subprocess.DEVNULL, capture_output=True, timeout=300, **options)

    def create(self, name, *words, source=None):
        archive = os.path.join(self.out, name)
        p = self.cli("create", "-o", archive, *words, source or self.src)
        self.assertEqual(p.returncode, 0, p.stderr)
        return archive

    def same(self, other, times=True):
        """Names, kinds, contents, link targets, modes and dates of the whole tree."""
        def look(top):
            found = {}
            for folder, folders, files in os.walk(top):
                for name in folders + files:
                    path = os.path.join(folder, name)
                    st = os.lstat(path)
                    is_link = stat.S_ISLNK(st.st_mode)
                    is_file = stat.S_ISREG(st.st_mode)
                    found[os.path.relpath(path, top)] = (
                        stat.S_IFMT(st.st_mode), os.readlink(path) if is_link else "", st.st_size if is_file else 0,
                        stat.S_IMODE(st.st_mode) if is_file else 0, int(st.st_mtime) if is_file and times else 0)
            return found
        self.assertEqual(look(other), look(self.src))
        for folder, _, files in os.walk(self.src):
            for name in files:
                path = os.path.join(folder, name)
                if not os.path.islink(path):
                    self.assertTrue(filecmp.cmp(path, os.path.join(other, os.path.relpath(path, self.src)), False), name)

    def extracted(self, *command):
        target = tempfile.mkdtemp(dir=self.out)
        p = subprocess.run([part.replace("@", target) for part in command], stdin=subprocess.DEVNULL, capture_output=True, cwd=target, timeout=300)
        self.assertEqual(p.returncode, 0, (command, p.stderr))
        return os.path.join(target, "src")

    def test_every_kind_comes_back_through_our_own_reader(self):
        for kind in ("zip", "7z", "tar", "tar.gz", "tar.xz", "tar.zst", "tar.bz2", "tar.lz4", "tgz", "cpio"):
            with self.subTest(kind):
                archive = self.create("a." + kind, "--level", "3")
                self.same(self.extracted(CLI, "extract", "--folder", "never", "-o", "@", archive))

    def test_zip_is_read_by_others(self):
        archive = self.create("a.zip")
        with zipfile.ZipFile(archive) as z:
            self.assertIsNone(z.testzip())
            self.assertIn("src/näme 日本 Ж.txt", z.namelist())
            self.assertEqual(z.getinfo("src/noise").compress_type, zipfile.ZIP_STORED)
            self.assertEqual(z.getinfo("src/text.txt").compress_type, zipfile.ZIP_DEFLATED)
        if have("unzip"):
            self.same(self.extracted("unzip", "-q", archive, "-d", "@"))
        if have("7zz"):
            self.same(self.extracted("7zz", "x", "-y", "-bd", "-o@", archive))
        if have("bsdtar"):
            self.same(self.extracted("bsdtar", "-xf", archive, "-C", "@"))

    def test_tar_is_read_by_others(self):
        for kind in ("tar", "tar.gz", "tar.xz", "tar.bz2"):
            archive = self.create("a." + kind, "--level", "1")
            self.same(self.extracted("tar", "-xf", archive, "-C", "@"))
            with tarfile.open(archive) as t:
                self.assertIn("src/" + "n" * 255, t.getnames())

    @unittest.skipUnless(have("7zz"), "7zz is not installed")
    def test_7z_and_encryption_are_read_by_7zz(self):
        self.same(self.extracted("7zz", "x", "-y", "-bd", "-o@", self.create("a.7z", "--level", "1")))
        for name, words in (("e.zip", []), ("e.7z", ["--encrypt-names", "--level", "1"])):
            archive = self.create(name, "--password-file", self.password_file, *words)
            self.same(self.extracted("7zz", "x", "-y", "-bd", "-p" + PASSWORD, "-o@", archive))
            self.same(self.extracted(CLI, "extract", "--password-file", self.password_file, "--folder", "never", "-o", "@", archive))
            self.assertEqual(self.cli("test", archive, start_new_session=True).returncode, 3)
        listing = subprocess.run(["7zz", "l", "-pwrong", os.path.join(self.out, "e.7z")], capture_output=True, stdin=subprocess.DEVNULL)
        self.assertNotIn(b"text.txt", listing.stdout)

    @unittest.skipUnless(have("unzip"), "unzip is not installed")
    def test_classic_encryption_is_read_by_unzip(self):
        with open(os.path.join(self.out, "pw"), "w") as f:
            f.write("plain")
        archive = self.create("c.zip", "--classic-encryption", "--password-file", os.path.join(self.out, "pw"))
        self.same(self.extracted("unzip", "-q", "-P", "plain", archive, "-d", "@"))

    def test_one_plain_file_compressed(self):
        for kind, program in (("gz", "gzip"), ("bz2", "bzip2"), ("xz", "xz"), ("zst", "zstd"), ("lz4", "lz4")):
            for name in ("big.bin", "zero"):
                archive = self.create(f"{name}.{kind}", "--level", "1", source=os.path.join(self.src, name))
                if have(program):
                    plain = subprocess.run([program, "-dc", archive], capture_output=True).stdout
                    with open(os.path.join(self.src, name), "rb") as f:
                        self.assertEqual(plain, f.read(), (kind, name))
        self.assertEqual(self.cli("create", "-o", os.path.join(self.out, "folder.gz"), self.src).returncode, 4)

    def test_identical_input_gives_identical_archives(self):
        copy = os.path.join(self.out, "copy", "src")
        shutil.copytree(self.src, copy, symlinks=True)
        for root, _, files in os.walk(copy):
            for f in files:
                os.utime(os.path.join(root, f), (5, 5), follow_symlinks=False)
        for kind in ("zip", "tar.gz", "7z"):
            first = self.create("one." + kind, "--reproducible", "--level", "1")
            second = self.create("two." + kind, "--reproducible", "--level", "1", source=copy)
            self.assertTrue(filecmp.cmp(first, second, False), kind)

    def test_leaves_out_what_is_excluded_special_or_itself(self):
        top = os.path.join(self.out, "top")
        os.makedirs(os.path.join(top, "build"))
        for name in ("keep.txt", "drop.o", "build/x"):
            open(os.path.join(top, name), "w").close()
        os.mkfifo(os.path.join(top, "pipe"))
        os.symlink(".", os.path.join(top, "build", "loop"))
        archive = os.path.join(top, "self.zip")
        p = self.cli("create", "-o", archive, "--exclude", "*.o", "--exclude", "top/build", top)
        self.assertEqual(p.returncode, 1)
        self.assertIn(b"pipe", p.stderr)
        p = self.cli("create", "-o", archive, "--exclude", "*.o", "--exclude", "build", top)
        with zipfile.ZipFile(archive) as z:
            self.assertEqual(sorted(z.namelist()), ["top/", "top/keep.txt"])

    def test_a_vanished_source_is_named_and_the_rest_is_whole(self):
        archive = os.path.join(self.out, "a.zip")
        p = self.cli("create", "-o", archive, os.path.join(self.src, "text.txt"), os.path.join(self.src, "absent"))
        self.assertEqual(p.returncode, 1)
        self.assertIn(b"absent", p.stderr)
        self.assertEqual(self.cli("test", archive).returncode, 0)
        p = self.cli("create", "-o", os.path.join(self.out, "b.zip"), os.path.join(self.src, "absent"))
        self.assertEqual((p.returncode, os.path.exists(os.path.join(self.out, "b.zip"))), (2, False))

    def test_what_stood_there_stays_until_the_new_one_is_whole(self):
        archive = os.path.join(self.out, "old.zip")
        with open(archive, "w") as f:
            f.write("old")

        def small_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))
        for kind in ("zip", "7z", "tar.gz"):
            p = self.cli("create", "-o", archive, "--kind", kind, "--level", "1", self.src, preexec_fn=small_files)
            self.assertEqual(p.returncode, 2, p.stderr)
            self.assertIn(b"old.zip", p.stderr)
            self.assertEqual(os.listdir(self.out), ["old.zip"])
            with open(archive) as f:
                self.assertEqual(f.read(), "old")
        self.create("old.zip")
        self.assertEqual(self.cli("test", archive).returncode, 0)

    def test_a_signal_stops_it_and_nothing_is_left(self):
        big = os.path.join(self.out, "big")
        with open(big, "wb") as f:
            for _ in range(40):
                f.write(os.urandom(1 << 20))
        for kind in ("7z", "tar.xz"):
            p = subprocess.Popen([CLI, "create", "-o", os.path.join(self.out, "a." + kind), big], stderr=subprocess.PIPE)
            time.sleep(0.3)
            p.send_signal(signal.SIGINT)
            p.communicate(timeout=20)
            self.assertEqual(p.returncode, 130, kind)
            self.assertEqual(os.listdir(self.out), ["big"])

    def test_wrong_usage(self):
        for words in (["-o", "x.foo", self.src], [self.src], ["-o", "x.zip"], ["-o", "x.tar", "--password-file", self.password_file, self.src],
                      ["-o", "x.zip", "--level", "10", self.src], ["-o", "x.zip", "--encrypt-names", self.src]):
            self.assertEqual(self.cli("create", *words, cwd=self.out).returncode, 4, words)

    def test_more_than_four_gigabytes_and_many_entries(self):
        many = os.path.join(self.out, "many")
        os.mkdir(many)
        for i in range(70_000):
            open(os.path.join(many, str(i)), "w").close()
        with open(os.path.join(many, "huge"), "wb") as f:
            f.truncate((4 << 30) + 12345)
        archive = self.create("a.zip", "--level", "1", source=many)
        with zipfile.ZipFile(archive) as z:
            self.assertEqual(len(z.namelist()), 70_002)
            self.assertEqual(z.getinfo("many/huge").file_size, (4 << 30) + 12345)
        p = self.cli("test", archive)
        self.assertEqual(p.returncode, 0, p.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=1)
