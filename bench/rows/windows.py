"""What users wait for in windows, beside `boletos` on the same files: programs of bench/windows, which stand in the
folder of the executables when TV_BENCH is on. They run without a screen (QT_QPA_PLATFORM=offscreen)."""

import os
import statistics
import subprocess
import sys

import documents
import positions
from rows.common import LAYOUT, SAMPLES, Row, application_folder, process, run


def program(options, name, *arguments):
    """Numbers that a program of bench/windows prints, with its peak memory in MB."""
    _, peak, text = process([options.bin / name, *arguments], printed=subprocess.PIPE)
    return [float(word) for word in text.split()], peak


def median(values):
    return statistics.median(values)


def composer(options, temporary, data):
    """A document opened in the composer with its validation, and saved again."""
    mb = 7 if options.small else 68
    file, saved = temporary / "composed.xml", temporary / "saved.xml"
    documents.write(documents.Sample(SAMPLES / "valido_realista.xml"), file, mb * 1_000_000, seed=1)
    validate = [options.bin / "boletos", "validar", "--pasta", data, "--layout", LAYOUT]
    boletos, opened, stored, peaks, count = [], [], [], [], 0
    for _ in range(options.runs):
        boletos.append(run([*validate, file]))
        told, peak = program(options, "documento_na_tela", LAYOUT, data, file, saved)
        opened.append(told[0])
        stored.append(told[1])
        peaks.append(peak)
        count = int(told[2])
        run([*validate, saved])  # proves that it was saved, and well
        saved.unlink()
    theirs = (median([seconds for seconds, _ in boletos]), max(peak for _, peak in boletos))
    yield Row(f"Composer: {count:,} rows opened and validated", (median(opened), max(peaks)), "boletos validar", theirs, 4)
    yield Row(f"Composer: {count:,} rows saved and validated", (median(stored), max(peaks)), "boletos validar", theirs, 6)


def batch(options, temporary, data):
    """A batch of files in the validator's window, from the press of its button to the last file."""
    count = 200 if options.small else 2_000
    sample = positions.Sample(SAMPLES / "valido_pequeno.xml")
    files = []
    for number in range(count):
        files.append(temporary / f"window{number:05d}.xml")
        sample.write(files[-1], 50_000, first=number + 1)
    boletos, window = [], []
    for _ in range(options.runs):
        boletos.append(run([options.bin / "boletos", "validar", "--pasta", data, "--layout", LAYOUT, *files]))
        told, peak = program(options, "lote_na_tela", LAYOUT, data, *files)
        if int(told[4]) != count:
            sys.exit(f"{told[4]} of {count} files passed")
        window.append((told[0], peak, told[2]))
    theirs = (median([seconds for seconds, _ in boletos]), max(peak for _, peak in boletos))
    yield Row(f"Validator's window: {count:,} files of 50 kB",
              (median([one[0] for one in window]), max(one[1] for one in window)), "boletos validar", theirs, 1.25)
    print(f"clicks during the batch waited {max(one[2] for one in window):.0f} ms at most (target: 100)")


def rows(options, temporary):
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    os.environ.setdefault("LC_ALL", "C.UTF-8")
    data = application_folder(temporary / "window")  # of its own, for the log that the programs write
    yield from composer(options, temporary, data)
    yield from batch(options, temporary, data)
