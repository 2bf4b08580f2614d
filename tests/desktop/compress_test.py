#!/usr/bin/env python3
"""Compressing as a user does it: files dropped or chosen, a kind, a password; the archives are checked with other tools.
The program is driven through its accessibility tree and by mouse and keyboard. usage: compress_test.py PROGRAM
DRAG_SOURCE [SCENARIO...]. Ends with 77 (skipped) where the desktop's tools are missing."""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys

from session import Account, check, missing_tools, run_all, wait_until

HERE = pathlib.Path(__file__).parent
PYTHON = "/usr/bin/python3"  # the system's own, which has the bindings
KINDS = ("zip", "7z", "tar.gz", "tar.xz", "tar.zst", "tar.bz2", "tar", "tar.lz4", "cpio", "iso", "xar", "jar")
SOURCE = (20, 20)  # where files are dragged from


class User(Account):
    """Somebody in front of the compression page."""

    def __init__(self, desktop, program):
        super().__init__(desktop, program)
        self.out = self.root / "out"
        self.out.mkdir()
        self.write_settings("kOpenFolder=false")
        subprocess.run(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                        "--method", "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>"],
                       env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def make(self, *names, data=b"some text\n" * 100):
        for name in names:
            path = self.work / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data)
        return [self.work / name for name in names]

    def start(self, *files):
        program = self.launch("--compress", *files, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.wait_for_window("Vantoro")
        self.wait_for("push button", "Compress" if files else "Add Files…")
        return program

    def _accessible(self, *words):
        return subprocess.run([PYTHON, str(HERE / "accessible.py"), *words], env=self.environment, timeout=30,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)

    def tree(self):
        done = self._accessible("tree")
        return [node for node in json.loads(done.stdout or "[]") if node["showing"]]

    def find(self, role, name):
        return next((node for node in self.tree() if node["role"] == role and node["name"] == name), None)

    def wait_for(self, role, name):
        return wait_until(lambda: self.find(role, name), f"the {role} \"{name}\"")

    def press(self, role, name):
        wait_until(lambda: self._accessible("press", role, name).returncode == 0, f"\"{name}\" to press")

    def choose_kind(self, kind):
        self.keys("alt+f")
        self.xdotool("type", "--delay", "1", kind)
        self.wait_for("combo box", kind)  # is named after what it shows

    def answer_panel(self, title, path):
        self.wait_for_focus(title)
        self.keys("ctrl+a")
        self.type(str(path))
        self.keys("Return")
        wait_until(lambda: not self.windows(title), "the panel to go")

    def compress(self):
        self.press("push button", "Compress")
        self.answer_panel("Please select the destination", self.out)

    def written(self, *names):
        """Waits for exactly these archives."""
        wait_until(lambda: self.names(self.out) == sorted(names), "the archives " + ", ".join(names), 40)
        wait_until(lambda: not self.find("push button", "Cancel"), "the end of the writing")
        return [self.out / name for name in names]

    def drop(self, target, *files):
        """Drags the files from a window of another program; the last one is new to the list."""
        source = subprocess.Popen([DRAG_SOURCE, *map(str, SOURCE), *map(str, files)], env=self.environment,
                                  stderr=subprocess.DEVNULL)
        try:
            wait_until(lambda: self.windows("drag source"), "the window to drag from")
            left, top, width, height = target["box"]
            x, y = left + width // 2, top + height // 2
            self.xdotool("mousemove", "60", "60", "mousedown", "1")
            for step in range(0, 11):
                self.xdotool("mousemove", str(60 + (x - 60) * step // 10), str(60 + (y - 60) * step // 10), "sleep", "0.05")
            self.xdotool("sleep", "0.2", "mouseup", "1")
            self.wait_for("push button", "Remove " + files[-1].name)  # until then the other program is asked for them
        finally:
            source.terminate()
            source.wait()


def listing(archive):
    done = subprocess.run(["bsdtar", "-tf", str(archive)], stdout=subprocess.PIPE, text=True, check=True)
    return sorted(name.rstrip("/") for name in done.stdout.splitlines() if name not in (".", "./"))


def opens(archive, password):
    return subprocess.run(["7z", "t", "-p" + password, str(archive)], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL).returncode == 0


# Scenarios. Each has an account of its own.

def dropped_files_and_folders_become_zip_archives(u):
    u.make("A/in a", "B/in b", "c.txt", "d.txt")
    u.start()
    area = u.wait_for("filler", "Drop files and folders here to compress them")
    u.drop(area, u.work / "A", u.work / "c.txt")
    table = u.wait_for("filler", "Files to compress")
    u.drop(table, u.work / "B", u.work / "A", u.work / "d.txt")  # A is there already
    check(u.find("label", "4 items"), "four items are listed")
    u.compress()
    archives = u.written("A.zip", "B.zip", "c.zip")
    check([listing(a) for a in archives] == [["A", "A/in a"], ["B", "B/in b"], ["c.txt", "d.txt"]], "all is in them")
    check(subprocess.run(["unzip", "-tq", str(archives[0])], stdout=subprocess.DEVNULL).returncode == 0, "unzip agrees")
    check(u.find("push button", "Remove c.txt"), "the list stays")


def chosen_file_becomes_an_encrypted_7z(u):
    files = u.make("diary.txt")
    u.start()
    u.press("push button", "Add Files…")
    u.answer_panel("Please select the files", files[0])
    u.wait_for("push button", "Remove diary.txt")
    u.choose_kind("7z")
    u.keys("alt+p")
    u.type("sesame")
    u.compress()
    archive, = u.written("diary.7z")
    check(opens(archive, "sesame") and not opens(archive, "wrong"), "the password is needed")
    hidden = subprocess.run(["7z", "l", "-pwrong", str(archive)], stdout=subprocess.PIPE, text=True).stdout
    check("diary.txt" not in hidden, "the names are hidden, too")
    check(u.setting("kLastDestinationMAX") == str(u.out), "the destination is kept")


def each_kind_holds_the_same_files(u):
    u.make("src/x/y.c", "src/.hidden", "loose")
    u.start("src", "loose")
    for kind in KINDS:
        u.choose_kind(kind)
        check(bool(u.find("password text", "Password")) == (kind in ("zip", "7z")), "the password's field for " + kind)
        u.compress()
        if kind == "zip":
            archives = u.written("loose.zip", "src.zip")
            names = sorted(name for archive in archives for name in listing(archive))
        else:
            names = listing(u.written("src." + kind)[0])
        check(names == ["loose", "src", "src/.hidden", "src/x", "src/x/y.c"], f"{kind} holds {names}")
        for archive in u.out.iterdir():
            archive.unlink()


def options_ask_for_the_password_twice(u):
    u.make("a.txt")
    u.start("a.txt")
    u.press("push button", "Options…")
    u.wait_for_focus("Compression Options")
    u.type("sesame")
    u.keys("Tab", "Tab")
    u.type("sesane")
    u.press("push button", "Start")
    u.wait_for("label", "The two passwords differ.")
    u.keys("ctrl+a")
    u.type("sesame")
    u.keys("Return")
    u.answer_panel("Please select the destination", u.out)
    archive, = u.written("a.zip")
    check(opens(archive, "sesame") and not opens(archive, "sesane"), "the password that was meant")


def cancelling_leaves_nothing(u):
    u.make("noise", data=os.urandom(96 << 20))
    (u.out / "noise.7z").write_bytes(b"the one before")
    u.start("noise")
    u.choose_kind("7z")
    u.compress()
    u.press("push button", "Cancel")
    wait_until(lambda: not u.find("push button", "Cancel"), "the overlay to go")
    check(u.names(u.out) == ["noise.7z"], "no half archive is left")
    check((u.out / "noise.7z").read_bytes() == b"the one before", "the archive before is untouched")
    check(u.find("push button", "Remove noise"), "the list stays")


def ended_program_leaves_no_half_archive(u):
    u.make("noise", data=os.urandom(96 << 20))
    program = u.start("noise")
    u.choose_kind("7z")
    u.compress()
    wait_until(lambda: u.find("push button", "Cancel"), "the archive to be written")
    program.terminate()
    check(program.wait(timeout=10) == 128 + signal.SIGTERM, "the program ends by itself")
    check(os.listdir(u.out) == [], "no half archive is left, hidden or not")


SCENARIOS = [
    dropped_files_and_folders_become_zip_archives,
    chosen_file_becomes_an_encrypted_7z,
    each_kind_holds_the_same_files,
    options_ask_for_the_password_twice,
    cancelling_leaves_nothing,
    ended_program_leaves_no_half_archive,
]


def missing():
    tools = missing_tools() + [tool for tool in ("bsdtar", "unzip") if not shutil.which(tool)]
    if subprocess.run([PYTHON, "-c", "import pyatspi"], stderr=subprocess.DEVNULL).returncode != 0:
        tools.append("pyatspi")
    return tools


def main():
    global DRAG_SOURCE
    program, DRAG_SOURCE = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    return run_all(SCENARIOS, sys.argv[3:], missing(), lambda desktop: User(desktop, program))


if __name__ == "__main__":
    sys.exit(main())
