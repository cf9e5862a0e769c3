"""`boletos validar` on one document, against the general tools with the same schema and stylesheet."""

import documents
import positions
from rows.common import DATA, CATALOG, LAYOUT, SAMPLES, Row, alternate, application_folder, of_boleto, run


class Bench:
    def __init__(self, options, temporary):
        self.options = options
        self.temporary = temporary
        self.scale = 100_000 if options.small else 1_000_000
        self.both = application_folder(temporary / "both")
        self.first = application_folder(temporary / "first", formula=False)
        self.logged = application_folder(temporary / "logged", level="ALL")
        self.realistic = documents.Sample(SAMPLES / "valido_realista.xml")

    def boletos(self, folder, *files, jobs=1):
        return [self.options.bin / "boletos", "validar", "--pasta", folder, "--layout", LAYOUT, "--jobs", jobs, *files]

    @staticmethod
    def xmllint(file):
        return ["xmllint", "--noout", "--stream", "--schema", of_boleto("validador"), file]

    @staticmethod
    def xsltproc(file):
        return ["xsltproc", "-o", "/dev/null", of_boleto("formula"), file]

    def sax_count(self, file):
        """The parser's own sample counter. It takes the schema from the document, so it gets one that names it."""
        naming = file.with_suffix(".named.xml")
        if not naming.exists():
            place = (f'<{LAYOUT} xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" '
                     f'xsi:noNamespaceSchemaLocation="{of_boleto("validador")}">').encode()
            with open(file, "rb") as source, open(naming, "wb") as out:
                out.write(source.read(4096).replace(f"<{LAYOUT}>".encode(), place, 1))
                while chunk := source.read(1 << 20):
                    out.write(chunk)
        return ["SAX2Count", "-v=always", naming]

    def document(self, mb):
        file = self.temporary / f"position{mb}.xml"
        if not file.exists():
            documents.write(self.realistic, file, mb * self.scale, seed=1)
        return file

    def stages(self, mb):
        """Both stages of one size beside the general tools."""
        file, runs = self.document(mb), self.options.runs
        taken = alternate(runs, ours=lambda: run(self.boletos(self.first, file)), lint=lambda: run(self.xmllint(file)),
                          count=lambda: run(self.sax_count(file)))
        yield Row(f"First stage, {mb} MB", taken["ours"], "xmllint --stream", taken["lint"], 1.25)
        yield Row(f"First stage, {mb} MB", taken["ours"], "SAX2Count", taken["count"])
        taken = alternate(runs, ours=lambda: run(self.boletos(self.both, file)), lint=lambda: run(self.xmllint(file)),
                          xslt=lambda: run(self.xsltproc(file)))
        tools = (taken["lint"][0] + taken["xslt"][0], max(taken["lint"][1], taken["xslt"][1]))
        yield Row(f"Both stages, {mb} MB", taken["ours"], "xmllint + xsltproc", tools, 0.75)
        if mb == 50:
            yield self.logging(file)

    def logging(self, file):
        taken = alternate(self.options.runs, ours=lambda: self.log(file), off=lambda: run(self.boletos(self.both, file)))
        return Row("Both stages, 50 MB, text log at ALL", taken["ours"], "the same, log OFF", taken["off"], 6)

    def log(self, file):
        for old in self.logged.glob("log*"):
            old.unlink()
        return run(self.boletos(self.logged, file))

    def findings(self):
        """A document with about 100,000 findings."""
        file = self.temporary / "findings.xml"
        coded = documents.coded_fields(DATA / CATALOG, LAYOUT)
        documents.write(self.realistic, file, 50 * self.scale, 1, ("value", "table", "unknown", "misplaced"), 0.08, coded)
        found = (1, 3, 4)  # the statuses that tell of findings
        taken = alternate(self.options.runs,
                          ours=lambda: run(self.boletos(self.first, file), statuses=found),
                          lint=lambda: run(self.xmllint(file), statuses=found))
        yield Row("First stage, 50 MB with 100,000 faults", taken["ours"], "xmllint --stream", taken["lint"])

    def batch(self):
        """Many small files: the general tools start anew for each; both ways of ours with one job and with two."""
        count = 1_000 if self.options.small else 10_000
        sample = positions.Sample(SAMPLES / "valido_pequeno.xml")
        files = []
        for number in range(count):
            files.append(self.temporary / f"batch{number:05d}.xml")
            sample.write(files[-1], 20_000, first=number + 1)
        taken = alternate(self.options.runs, one=lambda: run(self.boletos(self.both, *files)),
                          two=lambda: run(self.boletos(self.both, *files, jobs=2)))
        tools = run(*(command for file in files for command in (self.xmllint(file), self.xsltproc(file))))
        yield Row(f"{count:,} files of 20 kB, both stages", taken["one"], "tools, for each file (one run)", tools, 0.125)
        yield Row(f"{count:,} files of 20 kB, 2 jobs", taken["two"], "boletos, 1 job", taken["one"], 1 / 1.7)

    def start(self):
        """The catalog read and its layouts told."""
        taken = alternate(3 * self.options.runs,
                          ours=lambda: run([self.options.bin / "boletos", "layouts", "--pasta", self.both]),
                          lint=lambda: run(["xmllint", "--noout", self.both / CATALOG]))
        yield Row("Start: boletos layouts", taken["ours"], "xmllint, the catalog read once", taken["lint"])


def rows(options, temporary):
    bench = Bench(options, temporary)
    yield from bench.start()
    for mb in (5, 50, 500):
        yield from bench.stages(mb)
    yield from bench.findings()
    yield from bench.batch()
