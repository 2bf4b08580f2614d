#!/usr/bin/env python3
"""Every text of the program is there, finished, in every language, with its placeholders and plural forms.
usage: translations_test.py SOURCE-FOLDER. Ends with 77 (skipped) without Qt's lupdate."""

import collections
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

SOURCE = pathlib.Path(sys.argv[1])
ROOMS = ("app", "browse", "compress", "extraction", "files", "platform", "widgets")
PLURAL_FORMS = {"en": 2, "de": 2, "fr": 2, "es": 2, "ja": 1, "zh_CN": 1}
Message = collections.namedtuple("Message", "context source forms finished plural")


def messages(path):
    for context in ElementTree.parse(path).getroot().findall("context"):
        for node in context.findall("message"):
            translation = node.find("translation")
            plural = node.get("numerus") == "yes"
            forms = [form.text or "" for form in translation.findall("numerusform")] if plural else [
                translation.text or ""]
            yield Message(context.findtext("name"), node.findtext("source"), forms,
                          translation.get("type") is None, plural)


def placeholders(text):
    return sorted(re.findall(r"%L?\d|%L?n", text))


class Translations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantoro-translations-"))
        for path in SOURCE.glob("resources/i18n/vantoro_*.ts"):
            shutil.copy(path, cls.folder)
        subprocess.run([SOURCE / "scripts/translations", cls.folder], check=True)
        cls.languages = {path.stem.split("_", 1)[1]: list(messages(path)) for path in cls.folder.glob("*.ts")}

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    def test_languages_are_there(self):
        self.assertEqual(set(self.languages), set(PLURAL_FORMS))
        self.assertGreater(len(self.languages["de"]), 100)

    def test_no_text_is_missing_or_unfinished(self):
        for language, texts in self.languages.items():
            left = [(text.context, text.source) for text in texts
                    if not text.finished or not all(form.strip() for form in text.forms)]
            self.assertEqual(left, [], language + ": run scripts/translations and translate these")

    def test_texts_that_no_longer_exist_are_gone(self):
        for path in self.folder.glob("*.ts"):
            kept = {(text.context, text.source) for text in messages(SOURCE / "resources/i18n" / path.name)}
            current = {(text.context, text.source) for text in messages(path)}
            self.assertEqual(kept - current, set(), path.name)

    def test_contexts_are_those_that_the_program_looks_up(self):
        """An alias of a class gives its texts to a context that nobody asks for."""
        sources = [path.read_text() for room in ROOMS for ending in ("*.h", "*.cpp")
                   for path in (SOURCE / room).rglob(ending)]
        code = "\n".join(sources)
        named = set(re.findall(r'(?:translate|QT_TRANSLATE_NOOP)\(\s*"(\w+)"', code))
        named |= set(re.findall(r"Q_DECLARE_TR_FUNCTIONS\((\w+)\)", code))
        named |= {"vantoro::" + name for name in re.findall(r"class (\w+)(?: final)?\s*:", code)} | {"QFileDialog"}
        self.assertEqual({text.context for text in self.languages["de"]} - named, set())

    def test_plural_forms_are_complete(self):
        for language, texts in self.languages.items():
            for text in texts:
                if text.plural:
                    self.assertEqual(len(text.forms), PLURAL_FORMS[language], (language, text.source))

    def test_placeholders_and_shortcuts_are_kept(self):
        for language, texts in self.languages.items():
            for text in texts:
                for form in text.forms:
                    self.assertEqual(placeholders(form), placeholders(text.source), (language, text.source))
                    self.assertEqual(form.count("&"), text.source.count("&"), (language, text.source))


if __name__ == "__main__":
    if not (shutil.which("lupdate6") or shutil.which("lupdate") or os.access("/usr/lib/qt6/bin/lupdate", os.X_OK)):
        print("SKIP: Qt's lupdate is not installed (scripts/setup)")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
