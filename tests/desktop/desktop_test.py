#!/usr/bin/env python3
"""The program as a user meets it: started with real archives on a private desktop. usage: desktop_test.py PROGRAM
[SCENARIO...]. Ends with 77 (skipped) where the desktop's tools are missing."""

import functools
import io
import json
import os
import signal
import subprocess
import sys
import tarfile
import tempfile
import time
import zipfile

from session import Account, Skip, check, missing_tools, run_all, wait_until

SHIFT_JIS = "日本.txt"


def make_tar(path, files):
    with tarfile.open(path, "w:gz") as archive:
        for name, data in files.items():
            info = tarfile.TarInfo(name)
            info.size = len(data)
            archive.addfile(info, io.BytesIO(data))
    return path


def make_encrypted(account, name="secret.zip", data=b"the secret\n"):
    (account.work / "secret.txt").write_bytes(data)
    subprocess.run(["7z", "a", "-psesame", name, "secret.txt"], cwd=account.work, check=True,
                   stdout=subprocess.DEVNULL)
    (account.work / "secret.txt").unlink()
    return account.work / name


class RawName(zipfile.ZipInfo):
    """An entry whose name is not marked as UTF-8."""

    raw = b""

    def _encodeFilenameFlags(self):
        return self.raw, 0


def make_shift_jis(path):
    with zipfile.ZipFile(path, "w") as archive:
        info = RawName("placeholder")
        info.raw = SHIFT_JIS.encode("shift_jis")
        archive.writestr(info, "names\n")
    return path


# Scenarios. Each has an account of its own.

def extracts_beside_the_archive(a):
    make_tar(a.work / "trip.tar.gz", {"trip/a.txt": b"a", "trip/b.txt": b"b"})
    a.launch("trip.tar.gz")
    wait_until(lambda: (a.work / "trip/b.txt").exists(), "the result")
    a.wait_until_done()
    check(a.names() == ["trip", "trip.tar.gz"], "exactly the result stands beside the archive")
    check(a.orphans() == [], "no hidden folder is listed any more")
    wait_until(lambda: not a.windows(), "the task window to go")


def asks_where_to_when_the_settings_say_so(a):
    a.write_settings("kExtractToCurrent=false")
    (a.root / "target").mkdir()
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    a.launch("one.tar.gz")
    a.wait_for_focus("Please select the extracted destination")
    a.type(str(a.root / "target"))
    a.keys("Return")
    wait_until(lambda: (a.root / "target/one.txt").exists(), "the result in the chosen folder")
    a.wait_until_done()
    check(a.setting("kLastDestinationMAX") == str(a.root / "target"), "the choice is kept")


def later_launch_hands_its_file_over(a):
    make_encrypted(a)
    make_tar(a.work / "later.tar.gz", {"later.txt": b"l"})
    first = a.launch("secret.zip")
    a.wait_for_window()
    check(a.run("later.tar.gz") == 0, "the second launch ends well")
    check(first.poll() is None and a.is_running(), "the first still runs")
    a.wait_for_focus()
    a.give_password("sesame", (a.work / "secret.txt").exists)
    wait_until(lambda: (a.work / "later.txt").exists(), "the second launch's archive")
    a.wait_until_done()
    check((a.work / "secret.txt").exists(), "the first launch's archive came out too")


def wrong_password_asks_again(a):
    make_encrypted(a)
    a.launch("secret.zip")
    a.wait_for_focus()
    a.type("wrong")
    a.keys("Return")
    time.sleep(1)
    check(a.is_running() and not (a.work / "secret.txt").exists(), "a wrong password extracts nothing")
    a.wait_for_focus()
    a.give_password("sesame", (a.work / "secret.txt").exists)
    a.wait_until_done()
    check((a.work / "secret.txt").read_bytes() == b"the secret\n", "the data are right")


def cancelled_password_leaves_nothing(a):
    make_encrypted(a)
    a.launch("secret.zip")
    a.wait_for_focus()
    a.keys_until(lambda: not a.is_running(), "the end of the job", "Escape")
    a.wait_until_done()
    check(a.names() == ["secret.zip"] and a.orphans() == [], "only the archive is there")


def encrypted_names_ask_without_blocking_the_start(a):
    (a.work / "hidden.txt").write_text("h")
    subprocess.run(["7z", "a", "-psesame", "-mhe=on", "names.7z", "hidden.txt"], cwd=a.work, check=True,
                   stdout=subprocess.DEVNULL)
    (a.work / "hidden.txt").unlink()
    a.launch("names.7z")
    a.wait_for_focus()
    a.give_password("sesame", (a.work / "hidden.txt").exists)


def unclear_names_ask_for_the_encoding(a):
    make_shift_jis(a.work / "names.zip")
    a.launch("names.zip")
    a.wait_for_window()
    wait_until(a.is_running, "the job")
    # So short a name cannot be told for sure; the guess is preselected.
    a.wait_for_focus()
    check(not (a.work / SHIFT_JIS).exists() and a.is_running(), "the encoding is asked for")
    a.keys_until(lambda: not a.is_running(), "the end of the job", "Return")
    a.wait_until_done()
    check(len(a.names()) == 2, "the entry came out")


def stopped_encoding_question_leaves_nothing(a):
    make_shift_jis(a.work / "names.zip")
    a.launch("names.zip")
    a.wait_for_focus()
    a.keys_until(lambda: not a.is_running(), "the end of the job", "Escape")
    a.wait_until_done()
    check(a.names() == ["names.zip"], "only the archive is there")


def read_only_folder(a):
    folder = a.mount("closed", "ro,size=1m")
    if folder is None:
        folder = a.root / "closed"
        folder.chmod(0o500)
        if os.access(folder, os.W_OK):
            raise Skip("a folder cannot be made read-only for this user")
    return folder


def to_the_not_writable_panel(a):
    folder = read_only_folder(a)
    a.write_settings("kExtractToCurrent=false")
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    a.launch("one.tar.gz")
    a.wait_for_focus("Please select the extracted destination")
    a.type(str(folder))
    a.keys("Return")
    wait_until(lambda: not a.windows("Please select"), "the panel to go")
    a.wait_for_focus()


def read_only_destination_can_be_stopped(a):
    to_the_not_writable_panel(a)
    a.keys_until(lambda: not a.is_running(), "the end of the job", "Escape")
    a.wait_until_done()
    check(a.names() == ["one.tar.gz"], "nothing came out")


def read_only_destination_can_give_way_to_the_desktop(a):
    to_the_not_writable_panel(a)
    # From the default button to the one before it; a busy machine may show the question late.
    a.keys_until(lambda: (a.root / "Desktop/one.txt").exists(), "the result on the Desktop", "shift+Tab", "space")
    a.wait_until_done()


def read_only_destination_can_be_chosen_again(a):
    to_the_not_writable_panel(a)
    (a.root / "target").mkdir()
    a.keys_until(lambda: a.windows("Please select"), "the panel", "Return")
    a.wait_for_focus("Please select the extracted destination")
    a.type(str(a.root / "target"))
    a.keys("Return")
    wait_until(lambda: (a.root / "target/one.txt").exists(), "the result in the second choice")
    a.wait_until_done()


def remove_archive_takes_all_volumes(a):
    (a.work / "big.bin").write_bytes(os.urandom(250_000))
    subprocess.run(["7z", "a", "-v100k", "-mx0", "set.7z", "big.bin"], cwd=a.work, check=True,
                   stdout=subprocess.DEVNULL)
    (a.work / "big.bin").unlink()
    a.launch("--dbus-service")
    wait_until(lambda: a.call("org.freedesktop.DBus.Peer.Ping").returncode == 0, "the program on the bus")
    wait_until(lambda: a.setting("kRemoveArchive") is not None, "the launch's settings")
    settings = a.settings.read_text().replace("kRemoveArchive=false", "kRemoveArchive=true")
    a.settings.write_text(settings)  # as another program would
    a.run("set.7z.001")
    wait_until(lambda: (a.work / "big.bin").exists(), "the result")
    a.wait_until_done()
    check(a.names() == ["big.bin"], "no volume is left")
    trash = a.root / ".local/share/Trash/files"
    check(a.names(trash) == ["set.7z.001", "set.7z.002", "set.7z.003"], "all volumes are in the Trash")


def killed_program_is_cleaned_up_after(a):
    make_encrypted(a)
    program = a.launch("secret.zip")
    hidden = a.work / ".Vantoro0"
    wait_until(hidden.exists, "the hidden folder")
    check(a.orphans() == [str(hidden)], "it is on the list")
    program.send_signal(signal.SIGKILL)
    program.wait()
    check(hidden.exists(), "it is left behind")
    a.launch("--dbus-service")
    wait_until(lambda: not hidden.exists(), "it to be removed")
    wait_until(lambda: a.orphans() == [], "the list to be empty")
    check(a.names() == ["secret.zip"], "nothing else is left")


def ended_program_leaves_nothing(a):
    hidden = a.work / ".Vantoro0"
    for number, ready in ((signal.SIGTERM, lambda: a.launch(make_encrypted(a).name)),
                          (signal.SIGINT, lambda: make_large(a)), (signal.SIGHUP, lambda: make_large(a))):
        program = ready()
        wait_until(hidden.exists, "the extraction to begin")
        program.send_signal(number)
        status = program.wait(timeout=10)
        check(status == 128 + number, "status %d after signal %d" % (status, number))
        check(not hidden.exists() and a.orphans() == [], "the hidden folder is gone")
    check(a.names() == ["large.7z", "secret.zip"], "nothing else is left")


def queued_archives_all_come_out(a):
    names = ["a%02d" % i for i in range(10)]
    for name in names:
        make_tar(a.work / (name + ".tar.gz"), {name + ".txt": name.encode()})
    a.launch(*[name + ".tar.gz" for name in names])
    wait_until(lambda: all((a.work / (name + ".txt")).exists() for name in names), "all results")
    a.wait_until_done()
    times = [(a.work / (name + ".txt")).stat().st_ctime_ns for name in names]
    check(times == sorted(times), "they came out in their order")


@functools.cache
def slow_archive():
    """What decodes slowly, and little of it: takes some seconds on any disk, here and wherever it is extracted."""
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "large.bin"), "wb") as noise:
            noise.write(os.urandom(8 << 20))
        subprocess.run(["7z", "a", "-mx=9", "-m0=PPMd:o=32:mem=64m", "large.7z", "large.bin"], cwd=folder,
                       check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(folder, "large.7z"), "rb") as made:
            return made.read()


def make_large(a):
    (a.work / "large.7z").write_bytes(slow_archive())
    program = a.launch("large.7z")
    wait_until((a.work / ".Vantoro0").exists, "the extraction to begin")
    return program


def running_extraction_is_cancelled_by_keyboard(a):
    make_large(a)
    a.wait_for_focus()
    a.keys("Tab", "Tab", "space")  # past the choice of encodings to the row
    started = time.monotonic()
    a.wait_until_done()
    check(time.monotonic() - started < 5, "it stops soon")
    check(a.names() == ["large.7z"] and a.orphans() == [], "nothing is left")


def finished_batch_is_notified_when_nobody_looks(a):
    monitor = subprocess.Popen(["dbus-monitor", "--session", "interface='org.freedesktop.Notifications'"],
                               env=a.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    other = subprocess.Popen(["xev", "-name", "another program"], env=a.environment, stdout=subprocess.DEVNULL)
    try:
        make_large(a)
        a.wait_for_focus()
        a.xdotool("windowactivate", "--sync", a.wait_for_window("another program"))
        a.wait_until_done(60)
        check(not any("Vantoro" in title for title in a.xdotool("getactivewindow", "getwindowname")),
              "the end takes no focus")
        time.sleep(0.5)
    finally:
        monitor.terminate()
        other.kill()
        other.wait()
    told = monitor.communicate()[0]
    check(told.count("member=Notify") == 1 and "large.7z" in told and str(a.work) in told,
          "one notification names what was extracted where")


def make_hurt(a):
    path = a.work / "hurt.zip"
    with zipfile.ZipFile(path, "w") as archive:
        archive.writestr("bad.txt", "0123456789")
        archive.writestr("good.txt", "good")
    path.write_bytes(path.read_bytes().replace(b"0123456789", b"0123X56789"))


def damaged_entry_asks_and_the_rest_comes_out(a):
    make_hurt(a)
    a.launch("hurt.zip")
    a.wait_for_focus()
    check(a.is_running(), "the damage is asked about")
    a.keys_until(lambda: not a.is_running(), "the end of the job", "Return")
    a.wait_until_done()
    check(a.names() == ["good.txt", "hurt.zip"], "the good entry and the archive are there")


def report_opens_from_the_notification(a):
    make_hurt(a)
    server = subprocess.Popen(["/usr/bin/python3", os.path.join(os.path.dirname(__file__), "notification_server.py")],
                              env=a.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    other = subprocess.Popen(["xev", "-name", "another program"], env=a.environment, stdout=subprocess.DEVNULL)
    try:
        check(json.loads(server.stdout.readline()) == "ready", "the notification service runs")
        a.launch("hurt.zip")
        a.wait_for_focus()
        make_large(a)
        a.keys_until((a.work / ".Vantoro1").exists, "the next job", "Return")
        a.xdotool("windowactivate", "--sync", a.wait_for_window("another program"))
        a.wait_until_done(60)
        told = json.loads(server.stdout.readline())
        check("report" in told["actions"], "the notification offers the report")
        server.stdin.write("%d report\n" % told["id"])
        server.stdin.flush()
        a.wait_for_window("Report")
    finally:
        other.kill()
        other.wait()
        server.stdin.close()
        server.wait()


def full_disk_says_so_and_leaves_nothing(a):
    folder = a.mount("small", "size=1m")
    if folder is None:
        raise Skip("no file system of its own can be mounted")
    make_tar(folder / "large.tar.gz", {"large.bin": os.urandom(700_000)})
    a.launch("--extract-here", folder / "large.tar.gz")
    a.wait_for_focus()  # the question, or the error: both take Return or Escape
    check(a.is_running(), "the row waits with its sentence")
    for _ in range(5):
        a.keys("Escape")
        time.sleep(0.5)
        if not a.is_running():
            break
    a.wait_until_done()
    check(a.names(folder) == ["large.tar.gz"], "nothing is left on the full disk")


def services_take_files_over_the_bus(a):
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    make_tar(a.work / "two.tar.gz", {"two.txt": b"2"})
    a.launch("--dbus-service")
    wait_until(lambda: a.call("org.freedesktop.DBus.Peer.Ping").returncode == 0, "the program on the bus")
    check(not a.windows("Vantoro"), "a service shows no window by itself")
    reply = a.call("org.vantoro.Services.ExtractToDesktop", "['file://%s']" % (a.work / "one.tar.gz"), "{}")
    check(reply.returncode == 0, "the service answers: " + reply.stderr)
    reply = a.call("org.freedesktop.Application.Open", "['file://%s']" % (a.work / "two.tar.gz"), "{}")
    check(reply.returncode == 0, "Open answers: " + reply.stderr)
    wait_until(lambda: (a.work / "one.txt").exists() and (a.work / "two.txt").exists(), "the results")


def file_manager_menus_extract_where_they_say(a):
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    make_tar(a.work / "two.tar.gz", {"two.txt": b"2"})
    (a.root / "Desktop").mkdir()
    (a.root / "target").mkdir()
    a.launch("--extract-to-desktop", "one.tar.gz")
    wait_until(lambda: (a.root / "Desktop/one.txt").exists(), "the result on the Desktop")
    a.run("--extract-ask", "--", "file://%s" % (a.work / "two.tar.gz"))
    a.wait_for_focus("Please select the extracted destination")
    a.type(str(a.root / "target"))
    a.keys("Return")
    wait_until(lambda: (a.root / "target/two.txt").exists(), "the result in the chosen folder")
    check(a.names() == ["one.tar.gz", "two.tar.gz"], "nothing stands beside the archives")


def desktop_action_has_the_user_choose(a):
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    a.launch("--service-desktop")
    a.wait_for_focus("Select archives to extract")
    a.type(str(a.work / "one.tar.gz"))
    a.keys("Return")
    wait_until(lambda: (a.work / "one.txt").exists(), "the result beside the archive")


def runs_without_a_session_bus(a):
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    a.launch("one.tar.gz", DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
    wait_until(lambda: (a.work / "one.txt").exists(), "the result")


def damaged_settings_are_set_aside(a):
    a.settings.write_bytes(b"\x00\x01 no settings\n[broken\nline\n")
    make_tar(a.work / "one.tar.gz", {"one.txt": b"1"})
    a.launch("--extract-here", "one.tar.gz")
    wait_until(lambda: (a.work / "one.txt").exists(), "the result")
    check(any(name.startswith("vantoro.conf.damaged") for name in a.names(a.settings.parent)), "kept for the user")


def help_needs_no_display(a):
    for option, text in (("--help", "--extract-here"), ("--version", "vantoro ")):
        done = subprocess.run([a.program, option], env={"HOME": str(a.root)}, stdout=subprocess.PIPE, text=True)
        check(done.returncode == 0 and text in done.stdout, option)
    check(subprocess.run([a.program, "--nonsense"], env={"HOME": str(a.root)},
                         stderr=subprocess.DEVNULL).returncode == 2, "a mistake ends with 2")


SCENARIOS = [value for value in list(globals().values())
             if callable(value) and getattr(value, "__module__", "") == __name__
             and getattr(value, "__code__", None) and value.__code__.co_varnames[:1] == ("a",)
             and value.__name__ not in ("read_only_folder", "to_the_not_writable_panel", "make_large", "make_hurt")]


if __name__ == "__main__":
    program = os.path.abspath(sys.argv[1])
    sys.exit(run_all(SCENARIOS, sys.argv[2:], missing_tools(), lambda desktop: Account(desktop, program)))
