"""Checks what the packages carry: desktop entry, metainfo, manual pages, completion and the list of shipped files.

Usage: package_test.py <project root> <boletos> <folder of the list of shipped files>
"""

import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

ROOT, BOLETOS, READY = sys.argv[1:4]
FILES = os.path.join(ROOT, "tools/package/arquivos")
ID = "example.tramador_validador.programa"


def path(*names):
    return os.path.join(FILES, *names)


def text(*names):
    with open(path(*names), encoding="utf-8") as file:
        return file.read()


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def tool(name):
    return unittest.skipUnless(shutil.which(name), name + " is not installed")


def help_of(command):
    return run(BOLETOS, command, "--help").stdout


COMMANDS = ["validar", "exportar", "importar", "layouts"]


class DesktopTest(unittest.TestCase):
    @tool("desktop-file-validate")
    def test_desktop_entry(self):
        done = run("desktop-file-validate", path(ID + ".desktop"))
        self.assertEqual((done.returncode, done.stdout), (0, ""))

    @tool("appstreamcli")
    def test_metainfo(self):
        done = run("appstreamcli", "validate", "--no-net", path(ID + ".metainfo.xml"))
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_names_agree(self):
        self.assertIn("\nIcon=%s\n" % ID, text(ID + ".desktop"))
        component = ElementTree.fromstring(text(ID + ".metainfo.xml"))
        self.assertEqual(component.findtext("id"), ID)
        self.assertEqual(component.findtext("launchable"), ID + ".desktop")
        with open(os.path.join(ROOT, "src/app/windows/biblioteca.cpp"), encoding="utf-8") as file:
            self.assertIn('"%s"' % ID, file.read())

    def test_icons_have_their_sizes(self):
        for side in (16, 22, 24, 32, 48, 64, 96, 128, 256):
            with open(os.path.join(READY, "hicolor/%dx%d/apps/%s.png" % (side, side, ID)), "rb") as file:
                head = file.read(24)
            self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual((int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")), (side, side))


class VersionTest(unittest.TestCase):
    def test_all_places_tell_the_version_of_the_program(self):
        version = run(BOLETOS, "--version").stdout.split()[1]
        self.assertIn("tramador-validador (%s-1) " % version, text("changelog"))
        release = ElementTree.fromstring(text(ID + ".metainfo.xml")).find("releases/release")
        self.assertEqual(release.get("version"), version)
        for page in ("boletos.1", "tramador-validador.1", "pt_BR/boletos.1", "pt_BR/tramador-validador.1"):
            self.assertIn('"Tramador e Validador %s"' % version, text(page).splitlines()[0], page)


class ManualPageTest(unittest.TestCase):
    @tool("man")
    def test_pages_are_clean(self):
        for page in ("boletos.1", "tramador-validador.1", "pt_BR/boletos.1", "pt_BR/tramador-validador.1"):
            done = run("man", "--warnings", "-l", path(page), env={"LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"]})
            self.assertEqual((done.returncode, done.stderr), (0, ""), page)
            self.assertIn("SH", text(page))

    def test_every_option_and_command_is_told(self):
        page = text("pt_BR", "boletos.1").replace("\\-", "-")
        for command in COMMANDS:
            self.assertIn("\n.B %s\n" % command, page)
            for option in re.findall(r"--[a-z]+", help_of(command)):
                self.assertIn(option, page)


class CompletionTest(unittest.TestCase):
    """Asks bash's completion as the shell does."""

    def complete(self, *words, folder=None):
        script = """
            source "$1"; shift
            compopt() { :; }
            COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
            _boletos
            printf '%s\\n' "${COMPREPLY[@]}"
        """
        with_program = os.path.dirname(BOLETOS) + ":" + os.environ["PATH"]
        done = run("bash", "-c", script, "-", path("boletos.bash"), "boletos", *words, cwd=folder,
                   env=dict(os.environ, PATH=with_program, HOME="/nonexistent"))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return [line for line in done.stdout.split("\n") if line]

    def test_commands(self):
        self.assertEqual(self.complete(""), COMMANDS + ["--help", "--version"])
        self.assertEqual(self.complete("ex"), ["exportar"])

    def test_options_are_those_of_the_command(self):
        for command in COMMANDS:
            self.assertEqual(set(self.complete(command, "--")), set(re.findall(r"--[a-z]+", re.sub(
                r"'boletos [^']*'", "", help_of(command)))), command)

    def test_values(self):
        self.assertEqual(self.complete("validar", "--formato", "j"), ["json", "junit"])
        layouts = [line.split("\t")[0] for line in run(BOLETOS, "layouts").stdout.splitlines()]
        self.assertGreater(len(layouts), 3)
        self.assertEqual(self.complete("validar", "--layout", ""), layouts)

    def test_layouts_are_those_of_the_folder_that_is_named(self):
        self.assertEqual(self.complete("validar", "--pasta", "/nonexistent", "--layout", ""), [])

    def test_files_are_those_that_the_command_takes(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ("a.xml", "b.XML", "c.xls", "d.txt"):
                open(os.path.join(folder, name), "w", encoding="utf-8").close()
            self.assertEqual(sorted(self.complete("validar", "", folder=folder)), ["a.xml", "b.XML"])
            self.assertEqual(self.complete("importar", "", folder=folder), ["c.xls"])
            self.assertEqual(self.complete("layouts", "", folder=folder), [])

    @tool("zsh")
    def test_zsh_reads_its_completion(self):
        self.assertEqual(run("zsh", "-n", path("_boletos")).returncode, 0)

    @tool("fish")
    def test_fish_reads_its_completion(self):
        self.assertEqual(run("fish", "-n", path("boletos.fish")).returncode, 0)


class ShippedFilesTest(unittest.TestCase):
    def test_the_list_names_every_file_with_its_checksum(self):
        expected = {}
        data = os.path.join(ROOT, "data")
        for folder, _, names in os.walk(data):
            for name in names:
                if name.startswith("."):
                    continue
                file = os.path.join(folder, name)
                with open(file, "rb") as stream:
                    expected[os.path.relpath(file, data)] = hashlib.sha256(stream.read()).hexdigest()
        with open(os.path.join(READY, "manifesto.sha256"), encoding="utf-8") as stream:
            told = dict(reversed(line.rstrip("\n").split("  ", 1)) for line in stream)
        self.assertEqual(told, expected)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
