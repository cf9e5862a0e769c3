"""`boletos exportar` and `boletos importar` on many records, beside LibreOffice on the same workbook.

The peer reads the workbook and saves it anew, without a screen and with a profile of its own that a first run has made.
A sheet holds 65,535 records, so 100,000 of them make two sections. A quarter of the records shows that time grows with
their count and no faster.
"""

import re
import shutil
import subprocess

from rows.common import DATA, LAYOUT, SAMPLES, Row, alternate, process

SECTIONS = (b"titpublico", b"titprivado")


def elements(text, name):
    return re.findall(rb"<" + name + rb">.*?</" + name + rb">", text, re.S)


def document(path, records):
    """One fund with that many records in two sections: those of the realistic sample, with amounts of their own."""
    sample = (SAMPLES / "valido_realista.xml").read_bytes()
    fund = max(elements(sample, b"fundo"), key=lambda one: min(len(elements(one, section)) for section in SECTIONS))
    with open(path, "wb") as out:
        out.write(b"<?xml version='1.0' encoding='ISO-8859-1'?>\r\n<" + LAYOUT.encode() + b">\r\n<fundo>\r\n")
        out.write(elements(fund, b"header")[0] + b"\r\n")
        for section in SECTIONS:
            models = elements(fund, section)
            fields = re.findall(rb"<(\w+)>", models[0])
            models = [model for model in models if re.findall(rb"<(\w+)>", model) == fields]
            for number in range(records // len(SECTIONS)):
                text = re.sub(rb"(\d+)\.(\d\d)<",
                              lambda found, number=number: b"%d.%s<" % (int(found.group(1)) + number, found.group(2)),
                              models[number % len(models)])
                out.write(text + b"\r\n")
        out.write(b"</fundo>\r\n</" + LAYOUT.encode() + b">\r\n")


class Contenders:
    def __init__(self, binary, temporary, records):
        self.binary = binary
        self.folder = temporary / f"records{records}"
        self.folder.mkdir()
        self.file = self.folder / "doc.xml"
        self.profile = temporary / "profile"
        document(self.file, records)
        self.export()  # what the others work on
        shutil.copy(next(self.folder.glob("doc__*.xls")), self.folder / "fundo.xls")

    def boletos(self, command, file):
        return process([self.binary / "boletos", command, "--pasta", DATA, "--layout", LAYOUT, file],
                       printed=subprocess.PIPE)[:2]

    def export(self):
        for old in self.folder.glob("doc__*.xls"):
            old.unlink()
        return self.boletos("exportar", self.file)

    def reimport(self):
        (self.folder / "fundo.xml").unlink(missing_ok=True)
        return self.boletos("importar", self.folder / "fundo.xls")

    def office(self):
        return process(["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{self.profile}",
                        "--convert-to", "xls:MS Excel 97", "--outdir", self.folder / "office",
                        self.folder / "fundo.xls"])[:2]


def rows(options, temporary):
    records = 10_000 if options.small else 100_000
    full = Contenders(options.bin, temporary, records)
    quarter = Contenders(options.bin, temporary, records // 4)
    full.office()  # makes the profile
    taken = alternate(options.runs, export=full.export, back=full.reimport, office=full.office,
                      export_quarter=quarter.export, back_quarter=quarter.reimport)
    for name, key in (("Export", "export"), ("Import", "back")):
        work = f"{name} of {records:,} rows"
        yield Row(work, taken[key], "LibreOffice, read and saved", taken["office"])
        yield Row(work, taken[key], "a quarter of the rows", taken[key + "_quarter"], 4.4)
