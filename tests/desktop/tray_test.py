#!/usr/bin/python3
"""The program's item in the desktop's tray. usage: tray_test.py PROGRAM DRAG_SOURCE [SCENARIO...]. Ends with 77 (skipped)
where something that it needs is missing."""

import contextlib
import json
import os
import select
import subprocess
import sys

from session import Failure, check, wait_until
from windows_test import main

HERE = os.path.dirname(os.path.abspath(__file__))
ACTIONS = ["Extract Archives…", "Open Main Window", "Settings", "How to Use", "Quit Vantoro"]


class Tray:
    """A tray of the account's desktop."""

    def __init__(self, account):
        self._process = subprocess.Popen(["/usr/bin/python3", os.path.join(HERE, "tray_host.py")], text=True,
                                         env=account.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        check(self.answer() == "ready", "the tray runs")

    def answer(self, seconds=30):
        readable, _, _ = select.select([self._process.stdout], [], [], seconds)
        if not readable:
            raise Failure("the tray heard nothing")
        return json.loads(self._process.stdout.readline())

    def tell(self, line):
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()
        return self.answer()

    def close(self):
        self._process.stdin.close()
        self._process.wait()
        self._process.stdout.close()


def tray(account):
    return contextlib.closing(Tray(account))


def click_item(a, host):
    """Beside the upper right corner, where the panel would be."""
    a.xdotool("mousemove", "1200", "5")
    host.tell("click 1200 5")


def item_and_menu(a):
    with tray(a) as host:
        a.start()
        item = host.answer()
        check(item["icon"] == "org.vantoro.vantoro-symbolic" or item["pixels"], "the item has a picture: %s" % item)
        check(item["item"].lower() == "vantoro", "and a name: %s" % item)
        check(host.tell("menu") == ACTIONS, "the menu's entries")
        host.tell("choose Settings")
        a.wait_for_focus("Settings")
        a.keys("Escape")
        host.tell("choose How to Use")
        a.wait_for_focus("How to Use")
        a.keys("ctrl+w")
        a.to_front()
        a.keys("ctrl+w")
        wait_until(lambda: not a.windows("Vantoro"), "all windows to go")
        host.tell("choose Open Main Window")
        a.find("Menu")


def menu_quits(a):
    with tray(a) as host:
        process = a.start()
        host.answer()
        host.tell("choose Quit Vantoro")
        wait_until(lambda: process.poll() is not None, "the end of the program")
        check(process.returncode == 0, "it ends well")


def click_opens_the_panel_and_a_second_closes_it(a):
    with tray(a) as host:
        a.start()
        host.answer()
        click_item(a, host)
        a.find(ACTIONS[0], "push button")
        click_item(a, host)
        wait_until(lambda: not a.shows(ACTIONS[0]), "the panel to go")
        wait_until(lambda: opens(a, host), "the panel to come again")
        a.press("Settings", "push button")
        a.wait_for_focus("Settings")
        check(not a.shows(ACTIONS[0]), "what was chosen closes it")


def opens(a, host):
    if not a.shows(ACTIONS[0]):
        click_item(a, host)
    return a.shows(ACTIONS[0])


def is_gone_after_click(a, place, button):
    """The panel takes hold of the pointer a moment after it is on the screen."""
    a.xdotool("mousemove", *place, "click", button)
    with contextlib.suppress(Failure):
        wait_until(lambda: not a.shows(ACTIONS[0]), "the end", 1)
    return not a.shows(ACTIONS[0])


def click_elsewhere_closes_the_panel(a):
    with tray(a) as host, a.drag_source([a.work]):  # which takes no focus
        a.launch("--dbus-service")
        host.answer()
        for place in (("16", "16"), ("200", "700")):
            for button in ("1", "3"):
                wait_until(lambda: opens(a, host), "the panel")
                a.wait_for_focus("Vantoro")
                wait_until(lambda: is_gone_after_click(a, place, button), "the panel to go by button %s" % button)
                a.keys("Escape")  # the desktop's own menu


def keyboard_works_in_the_panel(a):
    with tray(a) as host:
        a.launch("--dbus-service")
        host.answer()
        wait_until(lambda: opens(a, host), "the panel")
        a.wait_for_focus("Vantoro")
        a.keys("Escape")
        wait_until(lambda: not a.shows(ACTIONS[0]), "the panel to go")
        wait_until(lambda: opens(a, host), "the panel")
        a.wait_for_focus("Vantoro")
        a.keys("Down", "Return")  # from the first row
        a.find("Menu")
        check(a.windows("^Vantoro$"), "the main window")


def tray_comes_late_and_comes_again(a):
    a.start()
    a.find("Choose an Archive…")
    a.to_front()
    for _ in range(2):
        with tray(a) as host:
            host.answer()
            check(host.tell("menu") == ACTIONS, "the menu's entries")
    a.keys("ctrl+comma")
    a.wait_for_focus("Settings")  # nothing is missed without a tray


SCENARIOS = [item_and_menu, menu_quits, click_opens_the_panel_and_a_second_closes_it,
             click_elsewhere_closes_the_panel, keyboard_works_in_the_panel, tray_comes_late_and_comes_again]

if __name__ == "__main__":
    sys.exit(main(SCENARIOS))
