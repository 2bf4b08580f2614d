#!/usr/bin/env python3
"""From process start to the mapped task window, beside a bare window in the same run; and the memory then.
usage: startup.py VANTORO BARE_WINDOW [ROUNDS]. Fails when the program takes more than twice the bare window's time, or
more than 55 MiB."""

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


def start_and_time(account, command):
    """Milliseconds until a window is mapped, and the resident memory in KiB half a second later."""
    events = subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "substructure"], env=account.environment,
                              stdout=subprocess.PIPE, text=True)
    time.sleep(0.3)  # it has to be listening
    started = time.monotonic()
    process = subprocess.Popen(command, cwd=account.work, env=account.environment, stderr=subprocess.DEVNULL)
    for line in events.stdout:
        if line.startswith("MapNotify"):
            break
    elapsed = (time.monotonic() - started) * 1000
    time.sleep(0.5)
    status = pathlib.Path("/proc/%d/status" % process.pid).read_text()
    memory = next(int(line.split()[1]) for line in status.splitlines() if line.startswith("VmRSS"))
    for child in (process, events):
        child.kill()
        child.wait()
    return elapsed, memory


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
    times = {"vantoro": [], "bare window": []}
    memory = 0
    try:
        for _ in range(rounds + 1):  # the first of each only warms up
            times["bare window"].append(start_and_time(account, [bare])[0])
            elapsed, resident = start_and_time(account, [vantoro, "--extract-here", "a.zip"])
            times["vantoro"].append(elapsed)
            memory = max(memory, resident)
    finally:
        account.close()
        desktop.close()
    medians = {name: statistics.median(values[1:]) for name, values in times.items()}
    ratio = medians["vantoro"] / medians["bare window"]
    print("vantoro %.0f ms, bare window %.0f ms, %.2f times; memory %.1f MiB"
          % (medians["vantoro"], medians["bare window"], ratio, memory / 1024))
    return 0 if ratio <= MOST_TIMES and memory <= MOST_MEMORY else 1


if __name__ == "__main__":
    sys.exit(main())
