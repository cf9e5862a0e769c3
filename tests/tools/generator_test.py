"""The document generator: sound documents of every layout are valid, faults are found, a seed gives one document.

Usage: generator_test.py <project root> <boletos>
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT, BOLETOS = pathlib.Path(sys.argv[1]), sys.argv[2]
sys.path.insert(0, str(ROOT / "tools" / "generate"))
import documents  # noqa: E402

LAYOUTS = sorted(path.name for path in (ROOT / "data" / "amostras").iterdir() if path.is_dir())
# Faults that a check always finds; a field that is missing or out of place may be an optional one.
ALWAYS_FOUND = ("value", "unknown", "malformed", "table", "cnpj")


class GeneratorTest(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)

    def tearDown(self):
        self._folder.cleanup()

    def generate(self, name, layout, *options):
        file = self.folder / name
        command = [sys.executable, ROOT / "tools" / "generate" / "generate", "--layout", layout, *options, file]
        done = subprocess.run(list(map(str, command)), capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        return file

    def validate(self, layout, file):
        done = subprocess.run([BOLETOS, "validar", "--pasta", str(ROOT / "data"), "--layout", layout, str(file)],
                              capture_output=True, text=True, check=False)
        return done.returncode, done.stdout[:2000] + done.stderr

    def test_sound_documents_of_every_layout_are_valid(self):
        self.assertGreaterEqual(len(LAYOUTS), 2)
        for layout in LAYOUTS:
            with self.subTest(layout=layout):
                file = self.generate("sound.xml", layout, "--size", "600000")
                self.assertGreaterEqual(file.stat().st_size, 600000)
                status, output = self.validate(layout, file)
                self.assertEqual(status, 0, output)

    def test_every_kind_of_fault_is_found(self):
        for layout in LAYOUTS:
            for kind in ALWAYS_FOUND:
                with self.subTest(layout=layout, kind=kind):
                    file = self.generate("faulty.xml", layout, "--size", "100000", "--faults", kind, "--share", "0.2")
                    status, output = self.validate(layout, file)
                    self.assertEqual(status, 1, output)

    def test_a_seed_gives_one_document(self):
        options = ("--size", "100000", "--faults", ",".join(documents.Faults.KINDS[:8]), "--share", "0.05")
        one = self.generate("one.xml", LAYOUTS[0], *options, "--seed", "7").read_bytes()
        again = self.generate("again.xml", LAYOUTS[0], *options, "--seed", "7").read_bytes()
        other = self.generate("other.xml", LAYOUTS[0], *options, "--seed", "8").read_bytes()
        self.assertEqual(one, again)
        self.assertNotEqual(one, other)

    def test_one_large_fund_is_valid(self):
        file = self.generate("fund.xml", "arquivoposicao_4_01", "--size", "2000000", "--one-fund")
        status, output = self.validate("arquivoposicao_4_01", file)
        self.assertEqual(status, 0, output)
        self.assertEqual(file.read_bytes().count(b"<fundo>"), 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
