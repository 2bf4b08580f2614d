#!/usr/bin/env python3
"""The installed tree: everything is in its place, what validators say of it, and that it runs from there.
usage: packaging_test.py CMAKE BUILD-FOLDER SOURCE-FOLDER"""

import ast
import configparser
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile

CMAKE, BUILD, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
ID = "org.vantoro.vantoro"
LANGUAGES = ("de", "es", "fr", "ja", "zh_CN")
# Known by contents only: their extensions have too many other meanings.
NO_PATTERN = {"bin", "app", "dd", "pp", "now", "sea"}


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          **options)
    assert done.returncode == 0, "%s: %s" % (command, done.stdout)
    return done.stdout


def needs(tool):
    return unittest.skipUnless(shutil.which(tool), tool + " is not installed (scripts/setup)")


def entry(path):
    """A file of desktop entry syntax."""
    parser = configparser.RawConfigParser(strict=True, delimiters=("=",), comment_prefixes=("#",))
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return parser


def extensions():
    text = (SOURCE / "files/FileFormats.cpp").read_text()
    return " ".join(re.findall(r'"([a-z0-9 -]+)"', text)).split()


class InstalledTree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = pathlib.Path(tempfile.mkdtemp(prefix="vantoro-install-"))
        run(CMAKE, "--install", BUILD, "--prefix", "/usr", env=dict(os.environ, DESTDIR=str(cls.root)))
        cls.usr = cls.root / "usr"
        cls.share = cls.usr / "share"

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.root)

    def test_programs_run_from_there_and_archives_are_read_by_the_installed_worker(self):
        program = self.usr / "bin/vantoro-cli"
        self.assertTrue(run(program, "--version").startswith("vantoro"))
        self.assertIn("--extract-here", run(self.usr / "bin/vantoro", "--help"))
        worker = self.usr / "libexec/vantoro/vantoro-worker"
        environment = {key: value for key, value in os.environ.items() if not key.startswith("VANTORO_")}
        # The program finds the worker where it was installed, and nowhere else.
        away = worker.rename(worker.with_suffix(".away"))
        try:
            self.assertIn("unconfined: no worker", run(program, "--version", env=environment))
        finally:
            away.rename(worker)
        self.assertNotIn("unconfined: no worker", run(program, "--version", env=environment))
        archive = self.root / "a.zip"
        with zipfile.ZipFile(archive, "w") as made:
            made.writestr("inside.txt", "hello")
        run(program, "extract", archive, env=environment)
        self.assertEqual((self.root / "inside.txt").read_text(), "hello")

    def test_bus_service_starts_the_installed_program(self):
        service = entry(self.share / ("dbus-1/services/%s.service" % ID))["D-BUS Service"]
        self.assertEqual((service["Name"], service["Exec"]), (ID, "/usr/bin/vantoro --dbus-service"))

    @needs("desktop-file-validate")
    def test_desktop_entry(self):
        path = self.share / ("applications/%s.desktop" % ID)
        self.assertEqual(run("desktop-file-validate", path), "")
        main = entry(path)["Desktop Entry"]
        types = main["MimeType"].split(";")[:-1]
        self.assertEqual(len(types), len(set(types)))
        for document in ("application/pdf", "application/vnd.adobe.flash.movie", "text/x-fortran"):
            self.assertNotIn(document, types)
        self.assertFalse([name for name in types if "officedocument" in name])

    def test_menus_speak_every_language_and_use_options_that_exist(self):
        options = set(re.findall(r'"(--[a-z-]+)"', (SOURCE / "app/CommandLine.cpp").read_text()))
        menus = [*self.share.glob("kio/servicemenus/*.desktop"), *self.share.glob("nemo/actions/*.nemo_action"),
                 self.share / ("applications/%s.desktop" % ID)]
        self.assertEqual(len(menus), 7)
        for path in menus:
            for name, section in entry(path).items():
                if "Exec" in section:
                    command = section["Exec"].split()
                    self.assertEqual(command[0], "vantoro", path)
                    for word in command[1:]:
                        self.assertTrue(word in options or word.startswith("%"), (path, word))
                if "Name" in section and section["Name"] != "Vantoro":
                    for language in LANGUAGES:
                        self.assertTrue(section.get("Name[%s]" % language), (path, name, language))
        for path in self.share.glob("kio/servicemenus/*"):
            self.assertTrue(os.access(path, os.X_OK), "KDE starts only executable ones")

    def test_menu_extensions_ask_for_what_was_selected(self):
        for name in ("nautilus", "caja"):
            path = self.share / (name + "-python/extensions/vantoro_menu.py")
            source = path.read_text()
            ast.parse(source)
            labels = fake_file_manager(source, [("file", "application/zip", "file:///a%20b.zip")])
            self.assertEqual([option for _, option, _ in labels],
                             ["--extract-here", "--extract-to-desktop", "--extract-ask", "--compress"])
            self.assertTrue(all(uris == ["file:///a%20b.zip"] for _, _, uris in labels))
            labels = fake_file_manager(source, [("file", "application/zip", "file:///a.zip"),
                                                ("file", "image/png", "file:///b.png")])
            self.assertEqual([option for _, option, _ in labels], ["--compress"])
            self.assertEqual(fake_file_manager(source, [("sftp", "application/zip", "sftp://host/a.zip")]), [])

    @needs("update-mime-database")
    def test_every_extension_has_a_type(self):
        data = self.root / "mime-test"
        (data / "packages").mkdir(parents=True)
        shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", data / "packages")
        shutil.copy(self.share / ("mime/packages/%s.xml" % ID), data / "packages")
        told = run("update-mime-database", data)
        self.assertNotIn(ID, told)
        patterns = {line.split(":")[2] for line in (data / "globs2").read_text().splitlines() if line[0] != "#"}
        patterns = {pattern.lower() for pattern in patterns}
        missing = {name for name in extensions() if "*." + name not in patterns}
        self.assertEqual(missing, NO_PATTERN)
        known = set((data / "types").read_text().split()) | {
            line.split()[0] for line in (data / "aliases").read_text().splitlines()}
        types = entry(self.share / ("applications/%s.desktop" % ID))["Desktop Entry"]["MimeType"].split(";")[:-1]
        newer = {"application/x-bzip2-compressed-tar"}  # of later databases
        self.assertEqual(set(types) - known - newer, set())
        own = ElementTree.parse(self.share / ("mime/packages/%s.xml" % ID)).getroot()
        self.assertEqual({node.get("type") for node in own} - set(types), set())

    @needs("appstreamcli")
    def test_metainfo(self):
        run("appstreamcli", "validate", "--no-net", "--pedantic", self.share / ("metainfo/%s.metainfo.xml" % ID))

        root = ElementTree.parse(self.share / ("metainfo/%s.metainfo.xml" % ID)).getroot()
        pictures = [image.text.rsplit("/", 1)[1] for image in root.iter("image")]
        self.assertTrue(pictures)
        for picture in pictures:
            self.assertTrue((SOURCE / "docs/screenshots" / picture).exists(), picture)

    @needs("man")
    def test_manual_pages_are_whole_and_name_every_option(self):
        for page, source in (("vantoro.1", "app/CommandLine.cpp"), ("vantoro-cli.1", "cli/arguments.cpp")):
            path = self.share / "man/man1" / page
            done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(path)],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                                  env=dict(os.environ, LC_ALL="C.UTF-8", MANROFFSEQ="", MANWIDTH="80"))
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            text = path.read_text().replace("\\-", "-")
            for option in set(re.findall(r'"(--[a-z0-9-]+)"', (SOURCE / source).read_text())):
                self.assertIn(option, text, page)

    def test_completions_know_every_option(self):
        shells = {"bash": ("bash-completion/completions/%s", ["bash", "-n"]),
                  "zsh": ("zsh/vendor-completions/_%s", ["zsh", "-n"]),
                  "fish": ("fish/vendor_completions.d/%s.fish", ["fish", "-n"])}
        for program, source in (("vantoro", "app/CommandLine.cpp"), ("vantoro-cli", "cli/arguments.cpp")):
            options = set(re.findall(r'"--([a-z0-9-]+)"', (SOURCE / source).read_text()))
            for shell, (place, check) in shells.items():
                path = self.share / (place % program)
                if shutil.which(shell):
                    self.assertEqual(run(*check, path), "")
                words = set(re.findall(r"[a-z0-9-]+", path.read_text().replace("--", " ")))
                hidden = {option for option in options if option.startswith("service-")}  # for the desktop entry
                self.assertEqual(options - words - hidden, set(), path)

    @needs("bash")
    def test_bash_completes_the_options_of_a_command(self):
        script = 'source "%s"; COMP_WORDS=(vantoro-cli create --enc); COMP_CWORD=2; _vantoro_cli; echo "${COMPREPLY[*]}"'
        told = run("bash", "-c", script % (self.share / "bash-completion/completions/vantoro-cli"))
        self.assertEqual(told.split(), ["--encrypt-names"])

    def test_archive_plug_in_of_thunar_hands_files_over(self):
        tap = self.usr / ("libexec/thunar-archive-plugin/%s.tap" % ID)
        bin_folder = self.root / "fake-bin"
        bin_folder.mkdir()
        (bin_folder / "vantoro").write_text('#!/bin/sh\npwd\nprintf "%s\\n" "$@"\n')
        (bin_folder / "vantoro").chmod(0o755)
        environment = dict(os.environ, PATH="%s:%s" % (bin_folder, os.environ["PATH"]))
        for action, option in (("create", "--compress"), ("extract-here", "--extract-here"),
                               ("extract-to", "--extract-ask")):
            told = run(tap, action, "/tmp", "a b.zip", "-c.zip", env=environment)
            self.assertEqual(told.splitlines(), ["/tmp", option, "--", "a b.zip", "-c.zip"])

    @needs("xmllint")
    def test_drawings_and_other_xml_are_well_formed(self):
        files = [*self.share.rglob("*.svg"), *self.share.rglob("*.xml")]
        self.assertGreater(len(files), 40)
        run("xmllint", "--noout", *files)

    def test_flatpak_manifest_names_what_is_installed(self):
        try:
            import yaml
        except ImportError:
            self.skipTest("python3-yaml is not installed (scripts/setup)")
        manifest = yaml.safe_load((SOURCE / ("packaging/flatpak/%s.yml" % ID)).read_text())
        self.assertEqual((manifest["id"], manifest["command"]), (ID, "vantoro"))
        self.assertEqual(manifest["modules"][-1]["name"], "vantoro")
        for module in manifest["modules"][:-1]:
            for source in module["sources"]:
                self.assertTrue(source["tag"], module["name"])  # never a branch, which moves


def fake_file_manager(source, selection):
    """The menu that an extension makes for the selection: label, option and URIs of each entry."""
    entries = []

    class MenuItem:
        def __init__(self, name, label, tip, icon):
            self.label = label

        def connect(self, _signal, _function, option, uris):
            entries.append((self.label, option, uris))

    class File:
        def __init__(self, scheme, mime, uri):
            self.scheme, self.mime, self.uri = scheme, mime, uri

        def get_uri_scheme(self):
            return self.scheme

        def get_mime_type(self):
            return self.mime

        def get_uri(self):
            return self.uri

        def is_directory(self):
            return self.mime == "inode/directory"

    source = re.sub(r"^from gi\.repository.*$", "", source, flags=re.M)
    gobject = type("GObject", (), {"GObject": type("Object", (), {})})
    manager = type("FileManager", (), {"MenuItem": MenuItem, "MenuProvider": type("MenuProvider", (), {})})
    space = {"GObject": gobject, "FileManager": manager, "__name__": "extension"}
    exec(source, space)
    made = space["VantoroMenu"]().get_file_items("window", [File(*row) for row in selection])
    assert len(made) == len(entries)
    return entries


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
