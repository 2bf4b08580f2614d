"""A private desktop for the tests: a virtual X server with a window manager and a session bus of its own, and the
program in an account that is fresh for each scenario."""

import contextlib
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback

TOOLS = ("Xvfb", "openbox", "xdotool", "dbus-daemon", "dbus-monitor", "gdbus", "xev", "xprop",
         "7z")
APPLICATION = "org.vantoro.vantoro"
OBJECT = "/org/vantoro/vantoro"
WINDOW = "Extractions"


def missing_tools():
    return [tool for tool in TOOLS if not shutil.which(tool)]


class Failure(AssertionError):
    pass


class Skip(Exception):
    """What a scenario needs is not to be had here."""


def check(condition, what):
    if not condition:
        raise Failure(what)


def wait_until(condition, what, timeout=20.0):
    end = time.monotonic() + timeout
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise Failure("waited in vain for " + what)


class Desktop:
    """The X server and the window manager, for all scenarios."""

    def __init__(self):
        self._children = []
        read, write = os.pipe()
        xvfb = ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x800x24", "-nolisten", "tcp"]
        self._start(xvfb, pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as number:
            self.display = ":" + number.readline().strip()
        self.environment = {key: value for key, value in os.environ.items()
                            if not key.startswith(("XDG_", "QT_", "DBUS_", "WAYLAND"))}
        self.environment.update(DISPLAY=self.display, LANG="C.UTF-8", NO_AT_BRIDGE="1")
        self._start_window_manager()

    def _start_window_manager(self):
        """Waited for, and started again: on a busy machine it may miss the server's first moments."""
        for _ in range(5):
            child = self._start(["openbox", "--sm-disable"], env=self.environment)
            with contextlib.suppress(Failure):
                wait_until(lambda: child.poll() is not None or self._is_managed(), "the window manager", 10)
            if child.poll() is None:
                return

    def _is_managed(self):
        seen = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        return "window id" in seen.stdout

    def _start(self, command, **options):
        child = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        self._children.append(child)
        return child

    def close(self):
        for child in reversed(self._children):
            child.terminate()
            child.wait()


class Account:
    """A home folder, a session bus and the program."""

    def __init__(self, desktop, program):
        self.program = program
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="vantoro-desktop-"))
        self.work = self.root / "work"
        self.work.mkdir()
        self._mounts = []
        self._started = []
        runtime = self.root / "run"
        runtime.mkdir(mode=0o700)
        self.environment = dict(desktop.environment, HOME=str(self.root), XDG_RUNTIME_DIR=str(runtime))
        bus = subprocess.run(["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
                             env=self.environment, stdout=subprocess.PIPE, check=True, text=True)
        address, pid = bus.stdout.split()
        self._bus = int(pid)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.settings = self.root / ".config/vantoro/vantoro.conf"
        # Archives are extracted beside themselves, without asking where to.
        self.write_settings("kExtractToCurrent=true")

    def write_settings(self, *lines):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text("[General]\n" + "".join(line + "\n" for line in lines))

    def setting(self, key):
        for line in self.settings.read_text().splitlines():
            name, _, value = line.partition("=")
            if name == key:
                return value
        return None

    def orphans(self):
        value = self.setting("orphanedTempDirectories")
        return [] if value in (None, "", "@Invalid()") else value.split(", ")

    def launch(self, *arguments, **more):
        """Starts the program and goes on."""
        log = open(self.root / "log", "ab")
        process = subprocess.Popen([self.program, *map(str, arguments)], cwd=self.work, stdout=log, stderr=log,
                                   env=dict(self.environment, **more))
        self._started.append(process)
        return process

    def run(self, *arguments):
        """Starts the program again; the running one takes over, so that this ends soon. Its exit code."""
        return subprocess.run([self.program, *map(str, arguments)], cwd=self.work, env=self.environment,
                              timeout=30, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode

    def call(self, method, *arguments):
        return subprocess.run(["gdbus", "call", "--session", "--timeout", "20", "--dest", APPLICATION,
                               "--object-path", OBJECT, "--method", method, *arguments], env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def is_running(self):
        reply = self.call("org.freedesktop.DBus.Properties.Get", "org.vantoro.Services", "isRunning")
        return "true" in reply.stdout

    def wait_until_done(self, timeout=30.0):
        wait_until(lambda: self.call("org.freedesktop.DBus.Peer.Ping").returncode == 0, "the program on the bus")
        wait_until(lambda: not self.is_running(), "the end of all extractions", timeout)

    def xdotool(self, *arguments):
        done = subprocess.run(["xdotool", *arguments], env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True)
        return done.stdout.split("\n")[:-1] if done.returncode == 0 else []

    def windows(self, name=WINDOW):
        return self.xdotool("search", "--onlyvisible", "--name", name)

    def wait_for_window(self, name=WINDOW):
        return wait_until(lambda: self.windows(name), "the window \"" + name + "\"")[0]

    def wait_for_focus(self, name=WINDOW):
        """The window is in front and takes the keys; a moment more for its panel."""
        wait_until(lambda: any(name in title for title in self.xdotool("getactivewindow", "getwindowname")),
                   "the focus on \"" + name + "\"")
        time.sleep(0.4)

    def keys(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "5", text)

    def keys_until(self, condition, what, *keys):
        """For questions that a busy machine may take its time to show: presses again until they have worked."""
        end = time.monotonic() + 30
        while not condition():
            if time.monotonic() > end:
                raise Failure("pressed in vain for " + what)
            self.keys(*keys)
            with contextlib.suppress(Failure):
                wait_until(condition, what, 2)

    def give_password(self, password, condition):
        """Types it until the condition holds; what was typed before is replaced."""
        end = time.monotonic() + 30
        while not condition():
            if time.monotonic() > end:
                raise Failure("the password did not help")
            self.keys("ctrl+a")
            self.type(password)
            self.keys("Return")
            with contextlib.suppress(Failure):
                wait_until(condition, "the result", 2)

    def mount(self, name, options):
        """A small file system of its own; nothing where that is not allowed."""
        folder = self.root / name
        folder.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", str(folder)],
                          stderr=subprocess.DEVNULL).returncode != 0:
            return None
        self._mounts.append(folder)
        return folder

    def names(self, folder=None):
        return sorted(item.name for item in pathlib.Path(folder or self.work).iterdir())

    def check_at_end(self):
        """What holds after every scenario."""

    def state(self):
        """For somebody who looks into a failure."""
        log = self.root / "log"
        return "in the folder: %s, settings: %s\n%s" % (self.names(), self.settings.read_text().split("\n"),
                                                       log.read_text(errors="replace") if log.exists() else "")

    def shot(self, name):
        """A picture of the screen, where VANTORO_SHOTS names a folder for them."""
        shots = os.environ.get("VANTORO_SHOTS")
        if shots:
            subprocess.run(["import", "-window", "root", os.path.join(shots, name + ".png")], env=self.environment)

    def close(self):
        for process in self._started:
            if process.poll() is None:
                process.terminate()
                with contextlib.suppress(subprocess.TimeoutExpired):
                    process.wait(5)
                if process.poll() is None:
                    process.kill()
                    process.wait()
        for folder in self._mounts:
            subprocess.run(["umount", "-l", str(folder)])
        os.kill(self._bus, signal.SIGTERM)
        shutil.rmtree(self.root, ignore_errors=True)


def run(scenario, account):
    started = time.monotonic()
    try:
        scenario(account)
        account.check_at_end()
        print("PASS", scenario.__name__, "%.1f s" % (time.monotonic() - started), flush=True)
        return True
    except Skip as reason:
        print("SKIP", scenario.__name__, reason, flush=True)
        return True
    except Exception:  # the others go on
        print("FAIL", scenario.__name__, flush=True)
        traceback.print_exc(file=sys.stdout)
        print(account.state(), flush=True)
        account.shot("failed-" + scenario.__name__)
        return False
    finally:
        account.close()


def run_all(scenarios, wanted, missing, make_account):
    """The scenarios, or those among them whose names are wanted, each with an account of its own: make_account(desktop).
    The exit code: 77 (skipped) where tools are missing."""
    if missing:
        print("SKIP: needs", ", ".join(missing))
        return 77
    desktop = Desktop()
    try:
        results = [run(scenario, make_account(desktop)) for scenario in scenarios
                   if not wanted or scenario.__name__ in wanted]
    finally:
        desktop.close()
    print(sum(results), "of", len(results), "scenarios passed")
    return 0 if all(results) else 1
