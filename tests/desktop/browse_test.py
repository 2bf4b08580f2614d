#!/usr/bin/env python3
"""Browsing as a user does it: archives opened, unfolded, previewed, unlocked, and extracted in part. The program is
driven by mouse and keyboard and looked at through its accessibility tree. usage: browse_test.py PROGRAM [SCENARIO...].
Ends with 77 (skipped) where the desktop's tools are missing. VANTORO_SHOTS=FOLDER keeps a picture of each state;
VANTORO_SCHEME=dark asks for dark ones."""

import json
import os
import pathlib
import struct
import subprocess
import sys
import tarfile
import time
import zipfile
import zlib

from session import Account, check, missing_tools, run_all, wait_until

HERE = pathlib.Path(__file__).parent
PYTHON = "/usr/bin/python3"  # the system's own, which has the bindings
SHOTS = os.environ.get("VANTORO_SHOTS")
SCHEME = os.environ.get("VANTORO_SCHEME", "light")


def png(width, height):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = b"".join(b"\0" + b"".join(bytes((40 + x * 200 // width, 90 + y * 120 // height, 160)) for x in range(width))
                    for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def pdf(lines):
    text = b"BT /F1 24 Tf 60 740 Td " + b" ".join(b"(%s) Tj 0 -32 Td" % line.encode() for line in lines) + b" ET"
    objects = [b"<< /Type /Catalog /Pages 2 0 R >>", b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
               b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R"
               b" /Resources << /Font << /F1 5 0 R >> >> >>",
               b"<< /Length %d >>\nstream\n%s\nendstream" % (len(text), text),
               b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"]
    data, places = b"%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        places.append(len(data))
        data += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = b"".join(b"%010d 00000 n \n" % place for place in places)
    return (data + b"xref\n0 6\n0000000000 65535 f \n" + table
            + b"trailer << /Size 6 /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % len(data))


FILES = {
    "Documents/itinerary.pdf": pdf(["Itinerary", "Day 1: arrival in Lisbon", "Day 2: the old town"]),
    "Documents/budget.ods": b"PK\3\4" + bytes(range(256)) * 40,
    "Notes/latin1.txt": "Grüße aus Köln\n".encode("latin-1"),
    "Notes/readme.txt": ("Grüße aus Lissabon\n\n" + "".join(f"- item {i}\n" for i in range(40))).encode(),
    "Photos/2024/sunset.png": png(480, 320),
    "Photos/cover.png": png(60, 80),
}


class User(Account):
    """Somebody in front of the contents browser."""

    def __init__(self, desktop, program):
        super().__init__(desktop, program)
        self.write_settings("kExtractToCurrent=true", "quicklookarchives=true", "kOpenFolder=false")
        self.xdotool("mousemove", "1270", "790")
        subprocess.run(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                        "--method", "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>"],
                       env=self.environment, check=True, stdout=subprocess.DEVNULL)
        if SCHEME == "dark":
            portal = subprocess.Popen([PYTHON, str(HERE / "dark_portal.py")], env=self.environment,
                                      stdout=subprocess.PIPE, text=True)
            self._started.append(portal)
            portal.stdout.readline()

    def make(self, name, files=None, options=()):
        """An archive of the files by 7-Zip, which takes its format from the name."""
        folder = self.root / "sources" / name
        for path, data in (files or FILES).items():
            (folder / path).parent.mkdir(parents=True, exist_ok=True)
            (folder / path).write_bytes(data)
        subprocess.run(["7z", "a", *options, str(self.work / name), "."], cwd=folder, check=True,
                       stdout=subprocess.DEVNULL)
        return self.work / name

    def open(self, archive):
        self.launch(archive, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.wait_for("tree", "Contents of " + archive.name)
        self.to_front("Vantoro")

    def to_front(self, name):
        """A window manager gives no focus to what appears out of the blue."""
        self.xdotool("windowactivate", "--sync", self.wait_for_window(name))
        self.wait_for_focus(name)

    def tree(self):
        done = subprocess.run([PYTHON, str(HERE / "accessible.py"), "tree"], env=self.environment, timeout=30,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        return [node for node in json.loads(done.stdout or "[]") if node["showing"]]

    def find(self, role, name):
        return next((node for node in self.tree() if node["role"] == role and node["name"] == name), None)

    def wait_for(self, role, name):
        return wait_until(lambda: self.find(role, name), f"the {role} \"{name}\"")

    def wait_for_label(self, part):
        return wait_until(lambda: next((node["name"] for node in self.tree()
                                        if node["role"] == "label" and part in node["name"]), None),
                          f"a label with \"{part}\"")

    def rows(self):
        return [node["name"] for node in self.tree() if node["role"] == "table cell" and node["name"]]

    def press(self, role, name):
        wait_until(lambda: subprocess.run([PYTHON, str(HERE / "accessible.py"), "press", role, name], timeout=30,
                                          env=self.environment, stderr=subprocess.DEVNULL).returncode == 0,
                   f"\"{name}\" to press")

    def click_row(self, name):
        left, top, width, height = self.wait_for("table cell", name)["box"]
        self.xdotool("mousemove", str(left + min(60, width // 2)), str(top + height // 2), "click", "1")
        time.sleep(0.2)
        self.xdotool("mousemove", "1270", "790")

    def unfold(self, *names):
        for name in names:
            self.click_row(name)
            self.keys("Return")

    def preview(self, name):
        self.click_row(name)
        self.keys("space")
        self.wait_for("push button", "Close Preview")
        self.wait_for("label", name)

    def close_preview(self):
        self.keys("Escape")
        wait_until(lambda: not self.find("push button", "Close Preview"), "the end of the preview")
        self.wait_for_focus("Vantoro")

    def preview_fails(self, name):
        self.click_row(name)
        self.keys("space")
        self.wait_for("label", name)
        check(not self.find("text", "Text"), "nothing is shown")
        self.keys("Escape")
        wait_until(lambda: not self.find("push button", "Close Preview"), "the end of the preview")

    def state(self):
        return str([(node["role"], node["name"]) for node in self.tree()]) + "\n" + super().state()

    def shot(self, name):
        if SHOTS:
            time.sleep(0.6)
            subprocess.run(["import", "-window", "root", "-strip", "-trim", "+repage", os.path.join(SHOTS, f"{name}-{SCHEME}.png")],
                           env=self.environment)


# Scenarios. Each has an account of its own.

def nothing_is_open(a):
    a.launch(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    a.wait_for("push button", "Choose an Archive…")
    check(not any(node["name"].startswith("Extract All") for node in a.tree()), "nothing to extract yet")
    a.shot("browse-empty")


def an_archive_is_unfolded_and_filtered(a):
    a.open(a.make("Trip.zip"))
    check(a.rows()[0] == "Trip.zip" and "Documents" in a.rows(), "the root row stands open")
    check("sunset.png" not in a.rows(), "folders stand closed")
    a.wait_for_label("Zip")
    a.shot("browse-open")
    a.unfold("Photos", "2024")
    a.wait_for("table cell", "sunset.png")
    a.shot("browse-expanded")
    a.keys("ctrl+f")
    a.type("readme")
    wait_until(lambda: "readme.txt" in a.rows() and "Photos" not in a.rows(), "the filtered rows")
    a.shot("browse-filtered")
    a.keys("Down", "Down", "space")  # from the field to the folder and the file
    a.wait_for("text", "Text")
    a.close_preview()
    a.keys("ctrl+f", "Escape")
    wait_until(lambda: "Photos" in a.rows(), "all rows again")
    a.click_row("Photos")
    a.keys("Right")
    a.wait_for("table cell", "cover.png")


def pictures_and_documents_are_previewed(a):
    a.open(a.make("Trip.zip"))
    a.unfold("Photos", "2024")
    a.preview("sunset.png")
    a.wait_for_label("480 × 320 pixels")
    check(a.find("filler", "Picture"), "a picture")
    a.shot("preview-image")
    a.close_preview()
    a.unfold("Documents")
    a.preview("itinerary.pdf")
    a.wait_for_label("1 page")
    a.shot("preview-pdf")
    a.close_preview()


def texts_are_previewed_when_they_are_utf8(a):
    a.open(a.make("Trip.zip"))
    a.unfold("Notes")
    a.preview("readme.txt")
    check("Grüße aus Lissabon" in a.wait_for("text", "Text")["text"], "the text itself")
    a.shot("preview-text")
    a.close_preview()
    a.preview("latin1.txt")
    a.wait_for_label("There is no preview")
    check(not a.find("text", "Text"), "the icon stands for another encoding")
    a.shot("preview-other")
    a.keys("Escape")
    check(not (a.root / "Köln").exists() and a.names() == ["Trip.zip"], "no preview writes a file")


def a_wrong_password_and_the_right_one(a):
    a.open(a.make("secret.zip", options=("-psesame",)))
    a.wait_for_label("encrypted")
    a.unfold("Notes")
    a.click_row("readme.txt")
    a.keys("space")
    a.wait_for_focus("Password")
    a.shot("browse-password")
    a.type("wrong")
    a.keys("Return")
    a.wait_for_label("Wrong Password!")
    a.shot("browse-wrong-password")
    wait_until(lambda: not a.find("label", "Wrong Password!"), "the message to go")
    a.keys("space")
    a.wait_for_focus("Password")
    a.type("sesame")
    a.keys("Return")
    check("Lissabon" in a.wait_for("text", "Text")["text"], "the right one opens")


def encrypted_names_are_asked_for(a):
    archive = a.make("hidden.7z", options=("-psesame", "-mhe=on"))
    a.launch(archive, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    a.to_front("Password")
    a.type("sesame")
    a.keys("Return")
    a.wait_for("table cell", "Documents")
    a.wait_for_label("names too")


def a_folder_of_a_7z_is_extracted(a):
    a.open(a.make("Trip.7z"))
    a.click_row("Notes")
    a.keys("ctrl+e")
    wait_until(lambda: len(a.names()) > 1, "the result")
    a.wait_until_done()
    found = sorted(path.name for path in a.work.rglob("*") if path.is_file())
    check(found == ["Trip.7z", "latin1.txt", "readme.txt"], f"the folder's files and no others: {found}")


def a_file_of_a_zip_is_extracted(a):
    a.open(a.make("Trip.zip"))
    a.unfold("Notes")
    a.click_row("readme.txt")
    a.press("push button", "Extract to \"work\"")
    a.wait_for_label("1 entry extracted")
    check((a.work / "Notes/readme.txt").read_bytes() == FILES["Notes/readme.txt"], "whole")
    check(a.names(a.work / "Notes") == ["readme.txt"] and a.names() == ["Notes", "Trip.zip"], "and nothing else")
    a.shot("browse-extracted")


def a_row_is_dragged_out(a):
    a.open(a.make("Trip.zip"))
    a.unfold("Notes")
    left, top, width, height = a.wait_for("table cell", "readme.txt")["box"]
    x, y = left + 60, top + height // 2
    a.xdotool("mousemove", str(x), str(y), "mousedown", "1")
    for step in range(1, 11):
        a.xdotool("mousemove", str(x + (1250 - x) * step // 10), str(y + (780 - y) * step // 10))
        time.sleep(0.04)
    check(a.names() == ["Trip.zip"], "nothing happens before the row is let go")
    a.xdotool("mouseup", "1")
    wait_until((a.work / "Notes/readme.txt").exists, "the dragged file beside the archive")
    a.wait_for_label("1 entry extracted")
    check(a.names(a.work / "Notes") == ["readme.txt"], "and nothing else")


def the_menu_of_a_row_does_what_it_says(a):
    """By its place: menus are not in the tree of what can be reached by assistive technology without the keyboard."""
    a.open(a.make("Trip.zip"))
    a.click_row("Notes")
    a.keys_until(lambda: a.find("table cell", "readme.txt"), "the folder to open", "Menu", "Down", "Return")
    a.click_row("readme.txt")
    a.keys_until(lambda: a.find("text", "Text"), "the preview", "Menu", "Down", "Return")
    a.close_preview()
    a.keys_until((a.work / "Notes/readme.txt").exists, "the result", "shift+F10", "Down", "Down", "Return")
    a.wait_for_label("1 entry extracted")
    left, top, width, height = a.wait_for("table cell", "Notes")["box"]
    a.xdotool("mousemove", str(left + 60), str(top + height // 2), "click", "3")
    time.sleep(0.5)
    a.keys_until(lambda: "readme.txt" not in a.rows(), "the folder to close", "Down", "Return")


def the_preview_follows_the_arrow_keys(a):
    a.open(a.make("Trip.zip"))
    a.unfold("Photos", "Notes")
    a.preview("latin1.txt")
    a.keys("Down")  # the preview has the keyboard
    check("Lissabon" in a.wait_for("text", "Text")["text"], "the next file is shown")
    a.keys("Up")
    a.wait_for_label("There is no preview")
    a.keys("space")
    wait_until(lambda: not a.find("push button", "Close Preview"), "the same key to close it")
    a.wait_for_focus("Vantoro")
    a.keys("Down", "space")
    a.wait_for("text", "Text")
    a.xdotool("windowactivate", "--sync", a.wait_for_window("^Vantoro$"))
    a.keys("Up")  # now the tree has it
    a.wait_for_label("There is no preview")


def a_long_archive_answers_at_once(a):
    with zipfile.ZipFile(a.work / "long.zip", "w") as archive:
        for number in range(100_000):
            archive.writestr("d%02d/file-%06d.txt" % (number % 50, number), b"")
    a.open(a.work / "long.zip")
    a.wait_for_label("100")
    a.click_row("long.zip")
    a.keys("End")
    a.wait_for("table cell", "d49")
    a.keys("Return", "Down")
    started = time.monotonic()
    a.keys("ctrl+f")
    a.type("file-099999")
    wait_until(lambda: "file-099999.txt" in a.rows() and "d00" not in a.rows(), "the one row")
    print("  found after %.1f s" % (time.monotonic() - started))


def an_archive_that_changes_is_told(a):
    """Whatever happens to the file meanwhile, there is a sentence and no crash."""
    archive = a.make("Trip.zip")
    a.open(archive)
    a.unfold("Notes")
    archive.write_bytes(b"something else" * 100)
    a.preview_fails("readme.txt")
    archive.unlink()
    a.preview_fails("latin1.txt")
    a.keys("ctrl+e")
    time.sleep(1)
    check(a.names() == [], "nothing comes of an archive that is gone")
    a.wait_for("table cell", "readme.txt")


def the_same_archive_is_opened_twice(a):
    archive = a.make("Trip.zip")
    a.open(archive)
    a.unfold("Notes")
    a.run(archive)
    wait_until(lambda: "readme.txt" not in a.rows(), "it to be opened afresh")
    a.wait_for("table cell", "Notes")
    check(len(a.windows("^Vantoro$")) == 1, "in the one window")


def long_names_are_cut_and_told(a):
    name = "n" * 200 + ".txt"
    a.open(a.make("Trip.zip", {"d/" + name: b"words", "e/" + "f" * 200 + "/g.txt": b""}))
    a.unfold("d")
    a.preview(name)
    a.wait_for("text", "Text")
    width = int(subprocess.run(["xdotool", "getwindowgeometry", "--shell", a.wait_for_window("^Vantoro$")],
                               env=a.environment, stdout=subprocess.PIPE, text=True).stdout.split("WIDTH=")[1].split()[0])
    check(width < 900, "the window keeps its width: %d" % width)


def what_is_no_archive_is_named(a):
    (a.work / "broken.zip").write_bytes(b"not an archive" * 50)
    a.launch(a.work / "broken.zip", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    a.wait_for_label("broken.zip: ")
    a.shot("browse-refused")
    a.press("push button", "OK")
    wait_until(lambda: a.windows("Settings|Preferences"), "the settings")


def opening_is_cancelled(a):
    name = "entry-with-a-name-of-some-length-%07d"
    with tarfile.open(a.work / "million.tar", "w") as archive:
        info = tarfile.TarInfo(name % 0)
        for number in range(1_200_000):  # long enough to be stopped
            info.name = name % number
            archive.fileobj.write(info.tobuf())
    a.launch(a.work / "million.tar", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    a.to_front("Vantoro")
    wait_until(lambda: a.find("push button", "Cancel"), "the overlay")
    a.shot("browse-opening")
    a.keys("Escape")
    # The drop area stands behind the overlay all the time: only what comes after the overlay tells.
    wait_until(lambda: not a.find("push button", "Cancel"), "the overlay's end")
    time.sleep(2)
    check(a.find("push button", "Choose an Archive…") and not a.find("tree", "Contents of million.tar"), "nothing is shown after a cancel")


SCENARIOS = [value for value in list(globals().values())
             if callable(value) and getattr(value, "__code__", None) and value.__module__ == __name__
             and value.__code__.co_varnames[:1] == ("a",)]


def main():
    program = os.path.abspath(sys.argv[1])
    missing = missing_tools()
    if not missing and subprocess.run([PYTHON, "-c", "import pyatspi"], stderr=subprocess.DEVNULL).returncode != 0:
        missing = ["python3-pyatspi"]
    return run_all(SCENARIOS, sys.argv[2:], missing, lambda desktop: User(desktop, program))


if __name__ == "__main__":
    sys.exit(main())
