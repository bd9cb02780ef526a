#!/usr/bin/env python3
"""The help file for Windows, read with another library for such files: every function's page opens by the number with
which the function is registered, every entry of contents and index leads to a page, and all pages are listed.

    chm_test.py SOURCE_FOLDER PROGRAM
"""
import csv
import ctypes
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

TRACE_TOPIC = 10008  # which the help button of the trace asks for


class Unit(ctypes.Structure):
    _fields_ = [("start", ctypes.c_uint64), ("length", ctypes.c_uint64), ("space", ctypes.c_int),
                ("flags", ctypes.c_int), ("path", ctypes.c_char * 513)]


class HelpFile:
    """Looks up a name in the directory as a viewer does, and reads what it finds."""

    def __init__(self, path):
        self.library = ctypes.CDLL("libchm.so.1")
        self.library.chm_open.restype = ctypes.c_void_p
        self.library.chm_close.argtypes = [ctypes.c_void_p]
        self.library.chm_resolve_object.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_void_p]
        self.library.chm_retrieve_object.restype = ctypes.c_int64
        self.library.chm_retrieve_object.argtypes = [ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p,
                                                     ctypes.c_uint64, ctypes.c_int64]
        self.file = self.library.chm_open(str(path).encode())
        if not self.file:
            raise RuntimeError(f"{path} does not open")

    def read(self, name):
        unit = Unit()
        if self.library.chm_resolve_object(self.file, ("/" + name).encode(), ctypes.byref(unit)) != 0:
            return None
        data = ctypes.create_string_buffer(max(unit.length, 1))
        if self.library.chm_retrieve_object(self.file, ctypes.byref(unit), data, 0, unit.length) != unit.length:
            raise RuntimeError(f"{name} cannot be read")
        return data.raw[:unit.length]

    def pages_by_number(self):
        numbers, strings = self.read("#IVB"), self.read("#STRINGS")
        pages = {}
        for at in range(4, len(numbers), 8):
            number, text = struct.unpack_from("<II", numbers, at)
            pages[number] = strings[text:strings.index(b"\0", text)].decode()
        return pages

    def close(self):
        self.library.chm_close(self.file)


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        holder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(holder.cleanup)
        cls.folder = pathlib.Path(holder.name)
        subprocess.run([source / "scripts/chm", program, cls.folder / "Quexel.chm"], check=True)
        cls.help = HelpFile(cls.folder / "Quexel.chm")
        cls.addClassCleanup(cls.help.close)

    def test_every_registered_topic_opens_its_page(self):
        with open(source / "tests/golden/registration.tsv", newline="") as file:
            rows = [row for row in csv.reader(file, delimiter="\t", quoting=csv.QUOTE_NONE) if row[7]]
        self.assertGreater(len(rows), 700)
        pages = self.help.pages_by_number()
        for row in rows:
            page = self.help.read(pages[int(row[7].removeprefix("!"))])
            self.assertIn(f"<h1>{row[2]}</h1>".encode(), page)
        self.assertIn(b"With the trace on", self.help.read(pages[TRACE_TOPIC]))
        self.assertEqual(list(pages), sorted(pages))  # viewers may search them by halves

    def test_contents_index_and_pages_lead_to_pages(self):
        def places(name):
            return re.findall(r'<param name="Local" value="([^"]*)">', self.help.read(name).decode())

        contents, index = places("Quexel.hhc"), places("Quexel.hhk")
        self.assertGreater(len(contents), 734)
        self.assertGreater(len(index), len(contents))
        pages = set()
        waiting = [place.partition("#")[0] for place in contents + index]
        while waiting:
            page = waiting.pop()
            if page in pages:
                continue
            pages.add(page)
            text = self.help.read(page)
            self.assertIsNotNone(text, page)
            self.assertNotIn(b"<script", text)  # the window has a search of its own
            waiting += [link.partition("#")[0] or page for link in re.findall(r'href="([^"]+)"', text.decode())]
        listing = subprocess.run(["enum_chmLib", self.folder / "Quexel.chm"], capture_output=True, text=True, check=True)
        self.assertEqual({name for name in re.findall(r"\t/(\S+\.html)$", listing.stdout, re.M)}, pages)

    def test_opens_at_its_first_page_and_shows_no_path_of_its_making(self):
        system, entries, at = self.help.read("#SYSTEM"), {}, 4
        while at < len(system):
            code, length = struct.unpack_from("<HH", system, at)
            entries[code] = system[at + 4:at + 4 + length]
            at += 4 + length
        self.assertEqual(entries[2].rstrip(b"\0"), b"index.html")
        self.assertEqual(entries[3].rstrip(b"\0"), b"Quexel help")
        for stream in ("#STRINGS", "#URLSTR", "#TOPICS", "#SYSTEM"):
            self.assertNotIn(tempfile.gettempdir().encode(), self.help.read(stream))


if __name__ == "__main__":
    source, program = pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1))
    unittest.main()
