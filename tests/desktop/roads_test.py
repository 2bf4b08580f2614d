#!/usr/bin/python3
"""The ways of an archive through the program, each in both kinds of main window. usage: roads_test.py PROGRAM
DRAG_SOURCE [SCENARIO...]. Ends with 77 (skipped) where something that it needs is missing."""

import subprocess
import sys
import zipfile

from session import check, wait_until
from windows_test import choose_destination, main

DROP = ("Choose an Archive…", "push button")


def opened_archive_comes_out(a, side_panel):
    archive = a.zip("one.zip", {"one.txt": "1"})
    a.start(side_panel)
    check(a.run(archive) == 0, "the launch for the file ends well")
    wait_until((a.work / "one.txt").exists, "the result")
    a.wait_until_done()
    (a.work / "one.txt").unlink()
    a.run(archive)  # the same again
    wait_until((a.work / "one.txt").exists, "the result once more")


def browsed_archive_goes_to_a_job(a, side_panel):
    """Dropped on the window when entries are to be seen first, then extracted as a whole."""
    a.write_settings("kExtractToCurrent=true", "quicklookarchives=true")
    archive = a.zip("trip.zip", {"trip/a.txt": "a", "trip/b.txt": "b"})
    a.start(side_panel)
    a.drag([archive], a.find(*DROP))
    a.find("Contents of trip.zip")
    check(a.names() == ["trip.zip"], "nothing was extracted by looking")
    a.to_front()
    a.keys("ctrl+e")
    wait_until((a.work / "trip/b.txt").exists, "the result")
    a.wait_until_done()
    a.find("Contents of trip.zip")
    a.press("Clear", "push button")
    a.find(*DROP)


def every_service_takes_what_it_is_given(a, side_panel):
    a.start(side_panel)
    for number, service in enumerate(("ExtractToCurrentFolder", "ExtractToDesktop", "ExtractToOthers")):
        archive = a.zip("%d.zip" % number, {"%d.txt" % number: "x"})
        reply = a.call("org.vantoro.Services." + service, "['file://%s']" % archive, "{}")
        check(reply.returncode == 0, "the service answers: " + reply.stderr)
        wait_until((a.work / ("%d.txt" % number)).exists, "the result of " + service)


def dropped_folder_is_left_alone_or_compressed(a, side_panel):
    folder = a.work / "folder"
    folder.mkdir()
    (folder / "a.txt").write_text("a")
    a.start(side_panel)
    a.drag([folder], a.find(*DROP))
    check(a.names() == ["folder"] and not a.is_running(), "a folder is no archive")
    a.to_front()
    a.keys("ctrl+2")
    a.drag([folder], a.find("Add Files…", "push button"))
    a.find("folder")
    a.press("Compress", "push button")
    choose_destination(a, lambda: bool(list(a.root.glob("*/folder.7z"))))
    wait_until(lambda: list(a.root.glob("*/folder.*[7zip]")), "the archive")


def closed_window_comes_back_and_quits(a, side_panel):
    process = a.start(side_panel)
    for _ in range(2):
        a.to_front()
        a.keys("ctrl+w")
        wait_until(lambda: not a.windows("Vantoro"), "all windows to go")
        check(process.poll() is None, "the program goes on")
        check(a.run() == 0, "a second launch ends well")
        a.wait_for_window("^Vantoro$")
        check(bool(a.find("Menu")) and a.shows("Pages") == side_panel, "the same kind of window")
    a.to_front()
    a.keys("ctrl+q")
    wait_until(lambda: process.poll() is not None, "the end of the program")
    check(process.returncode == 0, "it ends well")


def file_that_is_gone_leaves_nothing_behind(a, side_panel):
    a.start(side_panel)
    a.run(a.work / "gone.zip")
    archive = a.zip("one.zip", {"one.txt": "1"})
    a.run(archive)
    a.keys_until((a.work / "one.txt").exists, "the next archive", "Escape")
    a.wait_until_done()
    check(a.names() == ["one.txt", "one.zip"] and a.orphans() == [], "nothing else")


def drops_while_it_works_wait_their_turn(a, side_panel):
    a.start(side_panel)
    with zipfile.ZipFile(a.work / "large.zip", "w") as archive:
        for i in range(20_000):
            archive.writestr("d%d/f%d.txt" % (i % 100, i), b"tiny")
    small = a.zip("one.zip", {"one.txt": "1"})
    a.run(a.work / "large.zip")
    a.run(a.work / "large.zip")  # no second job
    a.drag([small], a.find("Menu"))
    wait_until((a.work / "one.txt").exists, "the dropped archive", 60)
    a.wait_until_done(60)
    check(a.names() == ["large", "large.zip", "one.txt", "one.zip"], "each once: %s" % a.names())


def question_that_was_closed_comes_back(a, side_panel):
    (a.work / "s.txt").write_text("secret")
    subprocess.run(["7z", "a", "-psesame", "secret.zip", "s.txt"], cwd=a.work, check=True, stdout=subprocess.DEVNULL)
    (a.work / "s.txt").unlink()
    a.start(side_panel)
    for again in ([a.work / "secret.zip"], []):  # opened once more, or the program's icon clicked
        a.run(a.work / "secret.zip")
        a.wait_for_focus("Extractions")
        a.keys("ctrl+w")
        wait_until(lambda: not a.windows("Extractions"), "the window to go")
        check(a.is_running(), "the job waits")
        a.run(*again)
        a.wait_for_window("Extractions")
    a.xdotool("windowactivate", "--sync", a.wait_for_window("Extractions"))
    a.wait_for_focus("Extractions")
    a.give_password("sesame", (a.work / "s.txt").exists)


def quitting_asks_before_it_stops_a_job(a, side_panel):
    process = a.start(side_panel)
    with zipfile.ZipFile(a.work / "large.zip", "w") as archive:
        for i in range(30_000):
            archive.writestr("d%d/f%d.txt" % (i % 100, i), b"tiny")
    (a.work / "s.txt").write_text("secret")
    subprocess.run(["7z", "a", "-psesame", "secret.zip", "s.txt"], cwd=a.work, check=True, stdout=subprocess.DEVNULL)
    (a.work / "s.txt").unlink()
    a.run(a.work / "secret.zip")  # waits for its password
    a.run(a.work / "large.zip")
    wait_until((a.work / ".Vantoro0").exists, "the job to begin")
    a.to_front()
    a.keys("ctrl+q")
    a.press("Go On", "push button")
    check(process.poll() is None and a.is_running(), "the job goes on")
    a.to_front()
    a.keys("ctrl+q")
    a.press("Quit", "push button")
    wait_until(lambda: process.poll() is not None, "the end of the program")
    check(process.returncode == 0, "it ends well")
    check(a.names() == ["large.zip", "secret.zip"] and a.orphans() == [], "nothing is left: %s" % a.names())


def twice(road):
    """With tabs and with the side panel."""
    def with_tabs(a):
        road(a, False)

    def with_panel(a):
        road(a, True)

    with_tabs.__name__, with_panel.__name__ = road.__name__, road.__name__ + "_with_side_panel"
    return [with_tabs, with_panel]


ROADS = [opened_archive_comes_out, browsed_archive_goes_to_a_job, every_service_takes_what_it_is_given,
         dropped_folder_is_left_alone_or_compressed, closed_window_comes_back_and_quits,
         file_that_is_gone_leaves_nothing_behind, question_that_was_closed_comes_back,
         drops_while_it_works_wait_their_turn, quitting_asks_before_it_stops_a_job]
SCENARIOS = [scenario for road in ROADS for scenario in twice(road)]

if __name__ == "__main__":
    sys.exit(main(SCENARIOS))
