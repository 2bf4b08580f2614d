#!/usr/bin/env python3
"""From process start to the first painted window, beside a bare window of the same size in the same run; and the memory
at rest. The main window and the task window are each started in turn with theirs.
usage: startup.py VANTORO BARE_WINDOW [ROUNDS]. Fails when the program takes more than twice the bare window's time, or
more than 55 MiB."""

import ctypes
import os
import pathlib
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/desktop"))
from session import Account, Desktop, missing_tools  # noqa: E402

MOST_TIMES = 2.0
MOST_MEMORY = 55 * 1024  # KiB
AT_REST = 1.5  # seconds
ALL_PLANES = 0xFFFFFFFF
Z_PIXMAP = 2


class Screen:
    """Reads the pixel in the middle of the screen, where the window manager puts each window. A window has no ground of
    its own until the program paints it, so the pixel stays the root's until then."""

    def __init__(self, display, width=1280, height=800):
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self._x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self._x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + [ctypes.c_int] * 2 + [ctypes.c_uint] * 2 + [
            ctypes.c_ulong, ctypes.c_int]
        self._x11.XGetImage.restype = ctypes.c_void_p
        self._x11.XGetPixel.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int]
        self._x11.XGetPixel.restype = ctypes.c_ulong
        self._x11.XDestroyImage.argtypes = [ctypes.c_void_p]
        self._display = self._x11.XOpenDisplay(display.encode())
        self._root = self._x11.XDefaultRootWindow(self._display)
        self._middle = (width // 2, height // 2)

    def pixel(self):
        image = self._x11.XGetImage(self._display, self._root, *self._middle, 1, 1, ALL_PLANES, Z_PIXMAP)
        value = self._x11.XGetPixel(image, 0, 0)
        self._x11.XDestroyImage(image)
        return value


def start_and_time(account, screen, command):
    """Milliseconds until the middle of the screen is painted, and the resident memory in KiB at rest."""
    before = screen.pixel()
    started = time.monotonic()
    process = subprocess.Popen(command, cwd=account.work, env=account.environment, stderr=subprocess.DEVNULL)
    while screen.pixel() == before:
        if process.poll() is not None:
            raise SystemExit("%s ended before it showed a window" % command[0])
        time.sleep(0.0005)
    elapsed = (time.monotonic() - started) * 1000
    time.sleep(AT_REST)
    status = pathlib.Path("/proc/%d/status" % process.pid).read_text()
    memory = next(int(line.split()[1]) for line in status.splitlines() if line.startswith("VmRSS"))
    process.kill()
    process.wait()
    while screen.pixel() != before:
        time.sleep(0.01)
    return elapsed, memory


def compare(account, screen, name, command, bare, rounds):
    """Whether one window keeps within its limits."""
    own, plain, memory = [], [], 0
    for _ in range(rounds + 1):  # the first of each only warms up
        plain.append(start_and_time(account, screen, bare)[0])
        elapsed, resident = start_and_time(account, screen, command)
        own.append(elapsed)
        memory = max(memory, resident)
    times = statistics.median(own[1:]) / statistics.median(plain[1:])
    print("%s %.0f ms, bare window %.0f ms, %.2f times; memory %.1f MiB"
          % (name, statistics.median(own[1:]), statistics.median(plain[1:]), times, memory / 1024), flush=True)
    return times <= MOST_TIMES and memory <= MOST_MEMORY


def main():
    vantoro, bare = map(os.path.abspath, sys.argv[1:3])
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
    missing = missing_tools()
    if missing:
        print("SKIP: needs the tools", ", ".join(missing))
        return 77
    desktop = Desktop()
    account = Account(desktop, vantoro)
    (account.work / "a.txt").write_text("a")
    subprocess.run(["7z", "a", "-psesame", "a.zip", "a.txt"], cwd=account.work, check=True, stdout=subprocess.DEVNULL)
    try:
        time.sleep(1)  # the window manager has to stand first
        screen = Screen(desktop.display)
        results = [compare(account, screen, "main window", [vantoro], [bare, "760", "560"], rounds),
                   compare(account, screen, "task window", [vantoro, "--extract-here", "a.zip"],
                           [bare, "520", "160"], rounds)]
    finally:
        account.close()
        desktop.close()
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
