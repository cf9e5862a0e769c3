"""The manual: links and pictures exist, its results are those of its sources, what it shows of `boletos` happens, its layout
and recipes work, and it explains every option, attribute and message.

Usage: manual_test.py <project root> <boletos>
"""

import html.parser
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT, BOLETOS = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
MANUAL = ROOT / "docs" / "manual"
CHAPTERS = {path.name: path.read_text(encoding="utf-8") for path in sorted((MANUAL / "fonte").glob("*.md"))}
TEXT = "\n".join(CHAPTERS.values())
SAMPLES = ROOT / "data" / "amostras"
ENVIRONMENT = {**os.environ, "PATH": f"{BOLETOS.parent}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}
BLOCK = re.compile(r"^```\{ \.\w+ data-(arquivo|executa)=\"([^\"]+)\" \}\n(.*?)^```$", re.M | re.S)
BLOCKS = BLOCK.findall(TEXT)
# Where the texts stand that reach people without a message box.
SPEAKING = [*(f"tools/boletos/{name}.cpp" for name in ("main", "planilhas", "Catalogo", "Saida", "Verificacao", "relatorioXml", "validar")),
            *(f"src/platform/{name}.cpp" for name in ("Workbook", "SchemaCache", "SchemaChecker", "XmlReader", "XmlLibrary",
                                                      "Files", "BiffGlobals", "BiffReader", "CompoundReader")),
            "src/validation/clsValidador.cpp", "src/composer/RegrasLinha.cpp", "src/common/windows/controleLibGrade.cpp",
            "src/app/PastaDaAplicacao.cpp", "src/app/PreparoDaPasta.cpp", "src/app/windows/preparo.cpp"]


def files_of(folder):
    """The files of that folder that the text shows, by name."""
    return {name.removeprefix(folder): body for kind, name, body in BLOCKS if kind == "arquivo" and name.startswith(folder)}


def write(folder, files):
    for name, body in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(body, encoding="utf-8")


class InFolder(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)

    def tearDown(self):
        self._folder.cleanup()


class Page(html.parser.HTMLParser):
    """What a page refers to, and what can be referred to in it."""

    def __init__(self, text):
        super().__init__()
        self.ids, self.links, self.pictures = [], [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if "id" in attributes:
            self.ids.append(attributes["id"])
        if tag == "a":
            self.links.append(attributes["href"])
        if tag == "img":
            self.pictures.append((attributes["src"], attributes.get("alt", "")))


class ResultsTest(unittest.TestCase):
    def setUp(self):
        self.page = Page((MANUAL / "manual.html").read_text(encoding="utf-8"))

    def test_links_lead_somewhere(self):
        self.assertGreater(len(self.page.links), 60)
        self.assertEqual(len(self.page.ids), len(set(self.page.ids)), "an anchor stands twice")
        for link in self.page.links:
            with self.subTest(link=link):
                self.assertTrue(link.startswith("#"), "the manual stands alone")
                self.assertIn(link[1:], self.page.ids)

    def test_pictures_exist_are_described_and_used(self):
        sources = {source for source, _ in self.page.pictures}
        self.assertEqual(sources, {f"imagens/{path.name}" for path in (MANUAL / "imagens").iterdir()})
        for source, description in self.page.pictures:
            with self.subTest(picture=source):
                self.assertTrue(description)

    def test_results_were_made_from_these_sources(self):
        done = subprocess.run([sys.executable, MANUAL / "make", "--impressao-digital"], capture_output=True, text=True, check=True)
        mark = f"fonte:{done.stdout.strip()}".encode()
        self.assertEqual(len(mark), 70)
        for name in ("manual.html", "manual.pdf"):
            with self.subTest(name=name):
                self.assertTrue(mark in (MANUAL / name).read_bytes(), "run docs/manual/make")


class ConsoleTest(InFolder):
    """Each block of a console is typed in, and shows what it says."""

    def fill(self, folder):
        if folder == "amostras":
            shutil.copytree(SAMPLES / "arquivoposicao_4_01", self.folder, dirs_exist_ok=True)
        elif folder == "planilhas":
            shutil.copy(SAMPLES / "movimento_1_00" / "valido_pequeno.xml", self.folder / "movimento.xml")
        else:
            write(self.folder, files_of(folder + "/"))

    def test_consoles_show_what_happens(self):
        consoles = [(name, body) for kind, name, body in BLOCKS if kind == "executa"]
        self.assertGreaterEqual(len(consoles), 5)
        for name, body in consoles:
            with self.subTest(console=body):
                self.fill(name)
                commands = [line[2:] for line in body.splitlines() if line.startswith("$ ")]
                script = "".join(f"printf '$ %s\\n' {self.quoted(c)}; (exit $was); {c}\nwas=$?\n" for c in commands)
                done = subprocess.run(["sh", "-c", "was=0\n" + script], cwd=self.folder, env=ENVIRONMENT, text=True,
                                      stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
                self.assertEqual(done.stdout, body)

    @staticmethod
    def quoted(command):
        return "'" + command.replace("'", "'\\''") + "'"


class LayoutTest(InFolder):
    def test_the_layout_from_nothing_is_sound(self):
        write(self.folder, files_of("caixa/"))
        done = subprocess.run([BOLETOS, "validar", "--pasta", self.folder, "--layout", "caixadiario_1_00",
                               self.folder / "caixa.xml"], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_every_attribute_of_the_catalog_is_explained(self):
        catalog = (ROOT / "data" / "TORVA_TramadorValidador.xml").read_text(encoding="iso-8859-1")
        catalog = re.sub(r"<!--.*?-->|<\?.*?\?>", "", catalog, flags=re.S)
        names = set(re.findall(r"<(\w+)", catalog)) | set(re.findall(r"\s(\w+)=\"", catalog))
        self.assertGreater(len(names), 35)
        chapter = CHAPTERS["06-catalogo.md"]
        for name in sorted(names):
            with self.subTest(name=name):
                self.assertTrue(re.search(rf"\b{name}\b", chapter))


class RecipesTest(InFolder):
    def setUp(self):
        super().setUp()
        recipes = files_of("receitas/")
        write(self.folder, {name: body.replace("/srv/boletos", str(self.folder)) for name, body in recipes.items()})
        (self.folder / "entrada").mkdir()

    def deliver(self, sample, name):
        """As the manual asks: under another name first."""
        unfinished = self.folder / "entrada" / "chegando.tmp"
        shutil.copy(SAMPLES / "arquivoposicao_4_01" / sample, unfinished)
        unfinished.rename(self.folder / "entrada" / name)

    def test_nightly_run(self):
        script = self.folder / "valida-da-noite"
        run = lambda: subprocess.run(["sh", script], capture_output=True, text=True, env=ENVIRONMENT, check=False)
        self.assertEqual(run().returncode, 0, "nothing there")
        self.deliver("valido_pequeno.xml", "certo.xml")
        done = run()
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.deliver("errado_tabela.xml", "errado.xml")
        done = run()
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stdout, r"\AINVÁLIDO  .*errado.xml .*\n2 arquivos: 1 válido, 1 inválido\n\Z")
        reports = sorted(path.name for path in self.folder.glob("relatorios/*/*"))
        self.assertEqual(reports, ["certo.html", "errado.html", "resumo.txt"])

    def test_watched_folder(self):
        watch = subprocess.Popen(["sh", self.folder / "vigia-entrada"], env=ENVIRONMENT, start_new_session=True,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            # What arrives before the watch has begun is not seen, so there is always another one.
            self.until(lambda n: self.deliver("valido_pequeno.xml", f"certo{n}.xml"), lambda: list(self.folder.glob("validos/*.xml")))
            self.deliver("errado_tabela.xml", "errado.xml")
            self.until(lambda n: None, (self.folder / "invalidos" / "errado.xml").exists)
            (self.folder / "entrada" / "nada.xml").mkdir()
            self.deliver("valido_pequeno.xml", "fim.xml")
            self.until(lambda n: None, (self.folder / "validos" / "fim.xml").exists)
            self.assertIn("Ocorr", (self.folder / "relatorios" / "errado.html").read_text(encoding="utf-8"))
        finally:
            os.killpg(watch.pid, signal.SIGTERM)
            watch.wait()

    def until(self, step, done):
        for n in range(300):
            step(n)
            time.sleep(0.2)
            if done():
                return
        self.fail("nothing happened")


class CompletenessTest(unittest.TestCase):
    def options(self, *command):
        done = subprocess.run([BOLETOS, *command, "--help"], capture_output=True, text=True, check=True)
        return set(re.findall(r"--[a-z]+", done.stdout)) - {"--help"}, done.stdout

    def test_every_option_of_boletos_is_explained_and_none_else(self):
        general, page = self.options()
        commands = re.findall(r"^  ([a-z]+) {3,}", page[page.index("Comandos:"):], re.M)
        self.assertEqual(set(commands), {"layouts", "validar", "exportar", "importar"})
        known = general | {"--help"}
        for command in commands:
            options, _ = self.options(command)
            known |= options
            section = re.search(rf"### `{command}` .*?(?=^##)", CHAPTERS["09-boletos.md"], re.M | re.S)[0]
            told = {row.split("`")[1].split()[0] for row in section.splitlines() if row.startswith("| `--")}
            self.assertEqual(told, options, command)
        of_boletos = re.findall(r"boletos[^\n]*", TEXT)
        named = {option for line in of_boletos for option in re.findall(r"(?<![\w-])--[a-z]+", line)}
        self.assertEqual(named - known, {"--saida"} - known)
        self.assertLessEqual(general, named)

    def test_every_layout_is_named(self):
        done = subprocess.run([BOLETOS, "layouts"], capture_output=True, text=True, check=True)
        for line in done.stdout.splitlines():
            tag, version, name = line.split("\t")[:3]
            with self.subTest(layout=tag):
                self.assertIn(f"| `{tag}` | {name} | {version} |", CHAPTERS["06-catalogo.md"])

    def test_every_message_is_explained(self):
        chapter = self.plain(CHAPTERS["10-mensagens.md"])
        messages = self.boxes() | self.of_the_parser() | self.of_sources()
        self.assertGreater(len(messages), 120)
        for message in sorted(messages):
            with self.subTest(message=message):
                self.assertTrue(self.plain(message) in chapter, "not in docs/manual/fonte/10-mensagens.md")

    @staticmethod
    def plain(text):
        return re.sub(r"\s+", " ", text).strip()

    @staticmethod
    def literals(code):
        """The texts in a piece of code, those that stand side by side as one, cut where a value goes in."""
        joined = re.sub(r'"\s*(?:\n\s*)?"', "", code)
        found = []
        for literal in re.findall(r'"((?:[^"\\]|\\.)*)"', joined):
            text = literal.replace("\\n", " ").replace('\\"', '"').replace("\\uFFFD", "\uFFFD").replace("\\t", " ")
            found += re.split(r"%\d|\{\d\}", text)
        return found

    def boxes(self):
        messages = set()
        for path in (ROOT / "src").rglob("*.cpp"):
            code = path.read_text(encoding="utf-8")
            for call in re.finditer(r"mensagem::(?:mostra|pergunta\w*)\(", code):
                depth, end = 1, call.end()
                while depth and end < len(code):
                    depth += {"(": 1, ")": -1}.get(code[end], 0) if code[end - 1:end + 2] not in ('"("', '")"') else 0
                    end += 1
                messages |= {text for text in self.literals(code[call.end():end]) if len(text.split()) > 1}
        return messages - {"Erro na configuração das Opções Regionais", "Tramador Veldor"}  # titles

    def of_the_parser(self):
        code = (ROOT / "src" / "platform" / "XercesSupport.cpp").read_text(encoding="utf-8")
        table = re.findall(r"\{XML(?:Valid|Errs)::\w+,\s*(\"(?:[^\"\\]|\\.)*\")", code)
        return {self.whole(literal) for literal in table}

    @staticmethod
    def whole(literal):
        return re.sub(r"\{\d\}", "...", literal.strip('"'))

    def of_sources(self):
        """The sentences of the sources that speak to people without a box; "..." where a value goes in."""
        messages = set()
        for name in SPEAKING:
            code = (ROOT / name).read_text(encoding="utf-8")
            code = re.sub(r"^\s*//.*", "", code, flags=re.M)
            if name.endswith("main.cpp"):
                code = code[code.index("std::string doQue"):code.index("void traduz")]  # behind it comes the help
            code = re.sub(r'"\s*\+\s*[^";]+?\s*\+\s*"', "...", code)
            messages |= {text.strip(" .:'(").replace("%zu", "...").removeprefix("boletos: ") for text in self.literals(code) if self.is_sentence(text)}
        return messages - {"Times New Roman"}

    @staticmethod
    def is_sentence(text):
        words = re.findall(r"[a-zà-ú]{2,}", text, re.I)
        return len(words) > 2 and " " in text.strip() and not re.search(r"[<>=*@_]|::", text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
