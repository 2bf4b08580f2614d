#!/usr/bin/python3
"""The program's windows as a user meets them: driven through the accessibility tree, drag and drop, and calls on the bus.
usage: windows_test.py PROGRAM DRAG_SOURCE [SCENARIO...]. Ends with 77 (skipped) where something that it needs is
missing."""

import contextlib
import os
import re
import shutil
import subprocess
import sys
import time
import zipfile

from session import Account, check, missing_tools, run_all, wait_until

try:
    import accessibility
except (ImportError, ValueError):
    accessibility = None

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
SIDE_PANEL = "Main window with a side panel"
# What the toolkit says when it is used wrongly.
COMPLAINT = re.compile(r"\b(Q[A-Z]\w+::|QLayout|QObject|QFont|QPainter|QAction|Ambiguous|qt\.)")


class WindowsAccount(Account):
    """An account whose program can be read and pressed as assistive technology does."""

    def __init__(self, desktop, program, drag_source):
        super().__init__(desktop, program)
        self._drag_source = drag_source
        self.environment.pop("NO_AT_BRIDGE", None)
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self._started.append(subprocess.Popen([LAUNCHER, "--launch-immediately"], env=self.environment,
                                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def also_ends(self, process):
        """With the account."""
        self._started.append(process)

    def tree(self):
        return accessibility.program(self.environment["DBUS_SESSION_BUS_ADDRESS"])

    def find(self, name, role=None, timeout=30.0):
        def look():
            tree = self.tree()
            return tree and tree.find(name, role)
        return wait_until(look, "\"%s\" on the screen" % name, timeout)

    def shows(self, name, role=None):
        tree = self.tree()
        return bool(tree and tree.find(name, role))

    def press(self, name, role=None):
        self.find(name, role).perform()

    @contextlib.contextmanager
    def drag_source(self, paths):
        """A window of another program in the upper left corner."""
        source = subprocess.Popen([self._drag_source, "8", "8", *map(str, paths)], env=self.environment,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until(lambda: self.windows("drag source"), "the window to drag from")
            yield
        finally:
            source.kill()
            source.wait()

    def drag(self, paths, onto):
        """From a window of another program onto the middle of a node."""
        with self.drag_source(paths):
            x, y = onto.middle()
            time.sleep(0.3)
            self.xdotool("mousemove", "16", "16", "mousedown", "1")
            for step in range(1, 11):
                self.xdotool("mousemove", str(16 + (x - 16) * step // 10), str(16 + (y - 16) * step // 10))
                time.sleep(0.04)
            time.sleep(0.3)
            self.xdotool("mouseup", "1")
            time.sleep(0.3)

    def use_side_panel(self):
        """To the single-page window, as a user would."""
        self.toggle_side_panel("true")
        self.find("Pages")
        time.sleep(0.5)  # the new window comes to the front

    def toggle_side_panel(self, wanted):
        self.call("org.freedesktop.Application.ActivateAction", "preferences", "[]", "{}")
        self.press(SIDE_PANEL, "check box")
        wait_until(lambda: self.setting("kChangeViewMode") == wanted, "the setting")

    def to_front(self):
        """The main window takes the keys."""
        self.xdotool("windowactivate", "--sync", self.wait_for_window("^Vantoro$"))
        self.wait_for_focus("Vantoro")

    def zip(self, name, files):
        with zipfile.ZipFile(self.work / name, "w") as archive:
            for entry, data in files.items():
                archive.writestr(entry, data)
        return self.work / name

    def start(self, side_panel=False):
        process = self.launch()
        self.find("Menu")
        if side_panel:
            self.use_side_panel()
        return process

    def complaints(self):
        return [line for line in (self.root / "log").read_text(errors="replace").splitlines()
                if COMPLAINT.search(line)]

    def check_at_end(self):
        check(not self.complaints(), "the toolkit complained: %s" % self.complaints())


def preview_shows_and_extracts_what_was_chosen(a):
    a.write_settings("kExtractToCurrent=true", "quicklookarchives=true")
    a.zip("trip.zip", {"trip/a.txt": "a", "trip/b.txt": "b"})
    a.launch("trip.zip")
    a.find("Contents of trip.zip")
    check(a.names() == ["trip.zip"], "nothing was extracted by opening")
    a.to_front()
    a.keys("ctrl+e")
    def is_out():
        return (a.root / "target/trip/b.txt").exists() or (a.work / "trip/b.txt").exists()
    choose_destination(a, is_out)
    wait_until(is_out, "the result")


def choose_destination(a, is_done):
    """Answers the panel, unless the work is done without one."""
    target = a.root / "target"
    target.mkdir(exist_ok=True)
    wait_until(lambda: a.windows("select the") or is_done(), "a panel or the result", 30)
    if is_done():
        return
    a.wait_for_focus("select the")
    a.type(str(target))
    a.keys("Return")


def preview_is_for_the_window_with_tabs(a):
    a.write_settings("kExtractToCurrent=true", "quicklookarchives=true")
    a.zip("trip.zip", {"a.txt": "a"})
    a.start(side_panel=True)
    a.run("trip.zip")
    wait_until(lambda: (a.work / "a.txt").exists(), "the result")


def dropped_archive_comes_out(a):
    drop_and_extract(a, False)


def dropped_archive_comes_out_of_the_single_page(a):
    drop_and_extract(a, True)


def drop_and_extract(a, side_panel):
    archive = a.zip("one.zip", {"one.txt": "1"})
    other = a.zip("two.zip", {"two.txt": "2"})
    a.start(side_panel)
    a.drag([archive], a.find("Choose an Archive…", "push button"))
    wait_until(lambda: (a.work / "one.txt").exists(), "the result of the drop on the page")
    a.wait_until_done()
    a.drag([other], a.find("Menu"))  # beside the page
    wait_until(lambda: (a.work / "two.txt").exists(), "the result of the drop on the window")


def two_archives_are_answered(a):
    archives = [a.zip(name, {name + ".txt": "x"}) for name in ("one.zip", "two.zip")]
    a.start()
    a.drag(archives, a.find("Choose an Archive…", "push button"))
    a.press("OK")
    check(a.names() == ["one.zip", "two.zip"], "nothing was opened")


def services_extract(a):
    service(a, False)


def services_extract_beside_the_single_page(a):
    service(a, True)


def service(a, side_panel):
    archive = a.zip("one.zip", {"one.txt": "1"})
    a.start(side_panel)
    reply = a.call("org.vantoro.Services.ExtractToOthers", "['file://%s']" % archive, "{}")
    check(reply.returncode == 0, "the service answers: " + reply.stderr)
    wait_until(lambda: (a.work / "one.txt").exists(), "the result")


def files_become_an_archive(a):
    compress(a, False)


def files_become_an_archive_in_the_single_page(a):
    compress(a, True)


def compress(a, side_panel):
    (a.work / "paper.txt").write_text("words " * 100)
    a.start(side_panel)
    a.to_front()
    a.keys("ctrl+2")
    a.drag([a.work / "paper.txt"], a.find("Add Files…", "push button"))
    a.find("paper.txt")
    wait_until(lambda: len([n for n in a.tree().walk() if n.name == "Compress" and n.role == "push button"]) > 0,
               "the prominent button")
    a.press("Compress", "push button")
    def is_written():
        return bool(list((a.root / "target").glob("paper.*")))
    choose_destination(a, is_written)
    wait_until(is_written, "the archive")


def closing_keeps_running_and_a_launch_reopens(a):
    process = a.start()
    a.to_front()
    a.keys("ctrl+w")
    wait_until(lambda: not a.windows("Vantoro"), "the window to go")
    check(process.poll() is None, "the program goes on")
    check(a.run() == 0, "a second launch ends well")
    a.wait_for_window("Vantoro")
    a.to_front()
    a.keys("ctrl+q")
    wait_until(lambda: process.poll() is not None, "the end of the program")
    check(process.returncode == 0, "it ends well")


def windows_switch_and_keep_their_pages(a):
    (a.work / "paper.txt").write_text("words")
    a.start()
    a.to_front()
    a.keys("ctrl+2")
    a.drag([a.work / "paper.txt"], a.find("Add Files…", "push button"))
    a.find("paper.txt")
    a.toggle_side_panel("true")
    a.find("Pages")
    check(not a.shows("paper.txt"), "the other window has pages of its own")
    a.toggle_side_panel("false")
    a.press("Compress", "check box")
    a.find("paper.txt")


def every_window_opens_by_its_key_and_names_its_controls(a):
    a.start()
    a.to_front()
    for keys, title in (("ctrl+comma", "Settings"), ("F1", "How to Use"), ("ctrl+F1", "Keyboard Shortcuts")):
        a.keys(keys)
        a.wait_for_focus(title)
    for node in a.tree().walk():
        if node.has_state(accessibility.FOCUSABLE) and node.has_state(accessibility.SHOWING):
            check(node.name or node.role in ("list item", "scroll pane", "frame", "filler", "unknown"),
                  "a %s without a name can have the keyboard" % node.role)
    for title in ("Keyboard Shortcuts", "How to Use", "Settings"):
        a.wait_for_focus(title)
        a.keys("Escape")
        wait_until(lambda: not a.windows("^" + title + "$"), title + " to go")


def a_late_wish_for_dark_windows_is_followed(a):
    """The desktop's settings answer long after the first window is shown."""
    if not shutil.which("import"):
        print("  skipped: needs import to look at the window")
        return
    portal = subprocess.Popen([sys.executable, os.path.join(os.path.dirname(__file__), "dark_portal.py"), "1"],
                              env=a.environment, stdout=subprocess.PIPE)
    a.also_ends(portal)
    check(portal.stdout.readline().strip() == b"ready", "the portal starts")
    a.start()
    window = a.wait_for_window("^Vantoro$")

    def brightness():
        shown = subprocess.run(["import", "-window", window, "-crop", "1x1+4+4", "-depth", "8", "gray:-"],
                               env=a.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return shown.stdout[0] if shown.stdout else 255
    wait_until(lambda: brightness() < 64, "the dark window")


SCENARIOS = [preview_shows_and_extracts_what_was_chosen, preview_is_for_the_window_with_tabs,
             dropped_archive_comes_out, dropped_archive_comes_out_of_the_single_page, two_archives_are_answered,
             services_extract, services_extract_beside_the_single_page, files_become_an_archive,
             files_become_an_archive_in_the_single_page, closing_keeps_running_and_a_launch_reopens,
             windows_switch_and_keep_their_pages, a_late_wish_for_dark_windows_is_followed,
             every_window_opens_by_its_key_and_names_its_controls]


def main(scenarios):
    program, drag_source, wanted = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]), sys.argv[3:]
    missing = missing_tools() + ([] if accessibility else ["python3-gi"])
    missing += [] if os.path.exists(LAUNCHER) else ["at-spi2-core"]
    return run_all(scenarios, wanted, missing, lambda desktop: WindowsAccount(desktop, program, drag_source))


if __name__ == "__main__":
    sys.exit(main(SCENARIOS))
