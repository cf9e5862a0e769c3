"""Makes documents of any layout and any size from the layout's realistic sample.

A document is a root with blocks below it (a fund or a wallet each). Every block of a sound sample is sound by itself,
so a large document is many blocks under keys of their own. Faults are put into single fields afterwards. The same seed
gives the same document.
"""

import random
import re

from positions import cnpj

LEAF = re.compile(r"^(\t+)<(\w+)>([^<]*)</\2>\r\n$")
EMPTY = re.compile(r"^(\t+)<(\w+)/>\r\n$")


class Sample:
    """A sample document, taken apart into its blocks."""

    def __init__(self, path):
        lines = path.read_bytes().decode("iso-8859-1").splitlines(keepends=True)
        self.root = re.match(r"<(\w+)>", lines[1]).group(1)
        self.blocks = []
        block = []
        for line in lines[2:]:
            block.append(line)
            if re.match(r"^\t</\w+>\r?\n$", line):
                self.blocks.append([part.rstrip("\r\n") + "\r\n" for part in block])
                block = []

    @staticmethod
    def key(block):
        """The element and text of a block's key: the first child of its header."""
        header = next(i for i, line in enumerate(block) if line.strip() == "<header>")
        found = LEAF.match(block[header + 1])
        return found.group(2), found.group(3)


def new_key(element, number):
    """A key that no other block has."""
    return cnpj(number) if element == "cnpj" else f"CART{number:08d}"


class Faults:
    """Puts faults of chosen kinds into a share of the fields of a block.

    `coded` are the tags of fields with a table of values.
    """

    def __init__(self, kinds, share, coded, rng):
        self._kinds = kinds
        self._share = share
        self._coded = coded
        self._rng = rng
        self.made = 0

    def spoil(self, block):
        if not self._kinds:
            return block
        result = []
        pending = list(block)
        while pending:
            line = pending.pop(0)
            leaf = LEAF.match(line)
            if leaf and leaf.group(3) and self._rng.random() < self._share:
                kind = self._rng.choice(self._kinds)
                spoilt = getattr(self, "_" + kind)(line, leaf, pending)
                if spoilt is not None:
                    self.made += 1
                    result.extend(spoilt)
                    continue
            result.append(line)
        return result

    @staticmethod
    def _put(leaf, value):
        return [f"{leaf.group(1)}<{leaf.group(2)}>{value}</{leaf.group(2)}>\r\n"]

    def _value(self, _line, leaf, _pending):
        """A text that the field's type in the schema refuses."""
        return self._put(leaf, "?" * 200)

    def _table(self, _line, leaf, _pending):
        """A code that is in no table."""
        return self._put(leaf, "??") if leaf.group(2) in self._coded else None

    def _date(self, _line, leaf, _pending):
        """A date of the right form that no calendar has."""
        return self._put(leaf, leaf.group(3)[:4] + "0231") if re.fullmatch(r"dt\w+", leaf.group(2)) else None

    def _cnpj(self, _line, leaf, _pending):
        """A wrong check digit."""
        value = leaf.group(3)
        if not (leaf.group(2).startswith("cnpj") and re.fullmatch(r"\d{14}", value)):
            return None
        return self._put(leaf, value[:13] + str((int(value[13]) + 1) % 10))

    @staticmethod
    def _unknown(line, leaf, _pending):
        """An element that the layout does not know."""
        return [line, f"{leaf.group(1)}<campodesconhecido>1</campodesconhecido>\r\n"]

    @staticmethod
    def _missing(_line, _leaf, _pending):
        """A field that is not there; optional ones may be missed."""
        return []

    @staticmethod
    def _misplaced(line, _leaf, pending):
        """A field that comes before the one it belongs behind."""
        if not pending or not (LEAF.match(pending[0]) or EMPTY.match(pending[0])):
            return None
        return [pending.pop(0), line]

    def _total(self, _line, leaf, _pending):
        """A declared value far from what it sums up."""
        return self._put(leaf, "1.23") if leaf.group(2) in ("valorativos", "patliq") else None

    def _malformed(self, _line, leaf, _pending):
        """A missing end tag, once in a document."""
        self._kinds = [kind for kind in self._kinds if kind != "malformed"] or ["value"]
        return [f"{leaf.group(1)}<{leaf.group(2)}>{leaf.group(3)}\r\n"]

    KINDS = ("value", "table", "date", "cnpj", "unknown", "missing", "misplaced", "total", "malformed")


def coded_fields(catalog, layout):
    """Tags of the layout's fields that have a table of values."""
    text = catalog.read_bytes().decode("iso-8859-1")
    boleto = re.search(rf'<BOLETO\b[^>]*\btag="{layout}".*?</BOLETO>', text, re.S).group(0)
    return {tag for tag, table in re.findall(r'<CAMPO tag="(\w+)".*?\btabela="(\w*)"', boleto, re.S) if table}


def write(sample, path, size, seed, kinds=(), share=0.01, coded=frozenset()):
    """Writes a document of at least `size` bytes; gives the number of faults put in."""
    rng = random.Random(seed)
    faults = Faults(list(kinds), share, coded, rng)
    with open(path, "w", encoding="iso-8859-1", newline="") as out:
        out.write(f'<?xml version="1.0" encoding="ISO-8859-1"?>\r\n<{sample.root}>\r\n')
        written, number = 0, 0
        while written < size or number == 0:
            block = rng.choice(sample.blocks)
            number += 1
            element, old = sample.key(block)
            key = new_key(element, number)
            renamed = [line.replace(f">{old}<", f">{key}<") for line in block]
            text = "".join(faults.spoil(renamed))
            out.write(text)
            written += len(text)
        out.write(f"</{sample.root}>\r\n")
    return faults.made
