"""What all rows of bench/compare share: alternating runs, application folders, and the table."""

import dataclasses
import datetime
import os
import pathlib
import platform
import re
import shutil
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DATA = ROOT / "data"
LAYOUT = "arquivoposicao_4_01"
SAMPLES = DATA / "amostras" / LAYOUT
CATALOG = "TORVA_TramadorValidador.xml"
sys.path.insert(0, str(ROOT / "tools" / "generate"))


@dataclasses.dataclass
class Options:
    bin: pathlib.Path
    runs: int
    small: bool  # a tenth of every size, to try the rows out


@dataclasses.dataclass
class Row:
    """Medians: seconds and peak memory in MB, ours and the peer's. `limit` is the largest ratio that is right."""
    work: str
    ours: tuple
    peer: str
    theirs: tuple
    limit: float | None = None

    @property
    def ratio(self):
        return self.ours[0] / self.theirs[0]

    def cells(self):
        target = "" if self.limit is None else f"at most {self.limit:.2f}"
        return (f"| {self.work} | {self.ours[0]:.3f} s | {memory(self.ours)} | {self.peer} | {self.theirs[0]:.3f} s "
                f"| {memory(self.theirs)} | **{self.ratio:.2f}** | {target} |")


def memory(measured):
    return f"{measured[1]:.0f} MB" if measured[1] else ""


def process(command, statuses=(0,), printed=subprocess.DEVNULL):
    """Runs a command; gives seconds, peak memory in MB and what it printed."""
    start = time.perf_counter()
    running = subprocess.Popen([str(part) for part in command], stdout=printed, stderr=subprocess.DEVNULL)
    text = running.stdout.read().decode() if running.stdout else ""
    _, status, usage = os.wait4(running.pid, 0)
    running.returncode = os.waitstatus_to_exitcode(status)
    if running.returncode not in statuses:
        sys.exit(f"{' '.join(map(str, command[:8]))}: status {running.returncode}")
    return time.perf_counter() - start, usage.ru_maxrss / 1024, text


def run(*commands, statuses=(0,)):
    """Runs commands one after the other; gives their seconds and the peak memory in MB of the largest."""
    taken = [process(command, statuses) for command in commands]
    return sum(seconds for seconds, _, _ in taken), max(peak for _, peak, _ in taken)


def alternate(runs, **contenders):
    """Median seconds and peak memory of each contender. They take turns, so that a busy machine slows all alike."""
    results = {name: [] for name in contenders}
    for _ in range(runs):
        for name, call in contenders.items():
            results[name].append(call())
    return {name: (statistics.median(t for t, _ in taken), max(m for _, m in taken))
            for name, taken in results.items()}


def application_folder(folder, formula=True, level="OFF"):
    """An application folder as it ships; without the layout's formula it has the first stage alone."""
    folder.mkdir()
    shutil.copytree(DATA / "XSD", folder / "XSD")
    catalog = (DATA / CATALOG).read_bytes().decode("iso-8859-1")
    if not formula:
        boleto = re.search(rf'<BOLETO\b[^>]*\btag="{LAYOUT}"[^>]*>', catalog).group(0)
        catalog = catalog.replace(boleto, re.sub(r'formula="[^"]*"', 'formula=""', boleto))
    logger = re.search(r"<logger\b[^>]*>", catalog).group(0)
    catalog = catalog.replace(logger, re.sub(r'level="[^"]*"', f'level="{level}"',
                                             re.sub(r'type="[^"]*"', 'type="TXT"', logger)))
    (folder / CATALOG).write_bytes(catalog.encode("iso-8859-1"))
    return folder


def of_boleto(attribute):
    """A file of the folder XSD that the layout names in one of its attributes."""
    catalog = (DATA / CATALOG).read_bytes().decode("iso-8859-1")
    boleto = re.search(rf'<BOLETO\b[^>]*\btag="{LAYOUT}"[^>]*>', catalog).group(0)
    return DATA / "XSD" / re.search(rf'{attribute}="([^"]+)"', boleto).group(1)


def machine():
    model = next((line.split(":", 1)[1].strip() for line in open("/proc/cpuinfo", encoding="utf-8")
                  if line.startswith("model name")), platform.processor())
    gib = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    return f"{os.cpu_count()} cores ({model}), {gib:.0f} GiB, {platform.system()} {platform.release()}"


def table(rows, options):
    head = [
        f"Measured {datetime.date.today().isoformat()} on {machine()}; medians of {options.runs} alternating runs, "
        "log level OFF where nothing else is said.",
        "",
        "| Work | ours | peak | Peer | time | peak | Ratio | Target |",
        "|---|---:|---:|---|---:|---:|---:|---|",
    ]
    return "\n".join(head + [row.cells() for row in rows])
