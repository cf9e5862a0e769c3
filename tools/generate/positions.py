"""Makes valid position documents of any size from the rows of a sample.

The rows of the first block of the sample are repeated, and the header is made to agree with them: declared assets,
equity and number of quotas follow from the rows.
"""

import re
from decimal import Decimal

DECIMAL_PLACES = {"valorcota": 8, "quantidade": 8}


def _number(row, field):
    found = re.search(f"<{field}>([^<]*)</{field}>", row)
    return Decimal(found.group(1)) if found and found.group(1) else Decimal(0)


def _held(row):
    return _number(row, "valorfindisp") + _number(row, "valorfinemgar") - _number(row, "tributos")


def _net(field):
    return lambda row: _number(row, field) - _number(row, "tributos")


def _quotas(row):
    price = _number(row, "puposicao")
    return _number(row, "qtgarantia") * price + _number(row, "qtdisponivel") * price - _number(row, "tributos")


# Value of a row by section, and whether its class of operation applies.
VALUES = {
    "titpublico": (_held, True),
    "titprivado": (_held, True),
    "debenture": (_held, True),
    "acoes": (_held, True),
    "opcoesacoes": (_net("valorfinanceiro"), True),
    "opcoesderiv": (_net("valorfinanceiro"), True),
    "opcoesflx": (_net("valorfinanceiro"), True),
    "termorv": (_net("valorfinanceiro"), False),
    "termorf": (_net("valorfin"), False),
    "futuros": (_net("vlajuste"), False),
    "swap": (lambda row: _number(row, "vlmercadoativo") - _number(row, "vlmercadopassivo") - _number(row, "tributos"),
             False),
    "caixa": (lambda row: _number(row, "saldo"), False),
    "cotas": (_quotas, False),
    "imoveis": (lambda row: _number(row, "valorcontabil"), False),
    "opcoesmoedasotc": (_net("valorfinanceiro"), True),
    "forwardsmoedas": (_net("valorfinanceiro"), False),
    "participacoes": (lambda row: _number(row, "valorfinanceiro"), False),
    "fidc": (lambda row: _number(row, "valorfinanceiro"), False),
}


def _value(section, row):
    if section not in VALUES:
        return Decimal(0)
    rule, has_class = VALUES[section]
    value = rule(row)
    kind = re.search(r"<classeoperacao>\s*(\S*?)\s*</classeoperacao>", row)
    if has_class and kind:
        committed = "<compromisso>" in row
        if kind.group(1) == "T" or (kind.group(1) == "V" and committed):
            return Decimal(0)
        if kind.group(1) == "V":
            return -value
    return value


def _replace(header, field, value):
    places = Decimal(1).scaleb(-DECIMAL_PLACES.get(field, 2))
    return re.sub(f"<{field}>[^<]*</{field}>", f"<{field}>{value.quantize(places)}</{field}>", header)


class Sample:
    """The first block of a sample document, taken apart into its header and its rows by section."""

    def __init__(self, path):
        text = path.read_bytes().decode("iso-8859-1")
        self.root = re.search(r"<(arquivoposicao_\w+)>", text).group(1)
        block = re.search(r"\t<fundo>\r?\n(.*?)\t</fundo>\r?\n", text, re.S).group(1)
        rows = re.findall(r"(\t\t<(\w+)>\r?\n.*?\t\t</\2>\r?\n)", block, re.S)
        self.header = rows[0][0]
        self.sections = {}
        for row, section in rows[1:]:
            self.sections.setdefault(section, []).append(row)

    def _rows(self, repeats):
        total = Decimal(0)
        parts = []
        for section, rows in self.sections.items():
            times = 1 if section == "despesas" else repeats
            total += sum(_value(section, row) for row in rows) * times
            parts.append("".join(rows) * times)
        return "".join(parts), total

    def block(self, number, size):
        """A fund of about `size` bytes; `number` goes into its key."""
        one = sum(len(row) for rows in self.sections.values() for row in rows)
        rows, assets = self._rows(max(1, round(size / one)))
        assets = assets.quantize(Decimal("0.01"))
        equity = (assets + _number(self.header, "valorreceber") - _number(self.header, "valorpagar")
                  - _number(self.header, "vlcotasemitir") - _number(self.header, "vlcotasresgatar"))
        header = _replace(self.header, "valorativos", assets)
        header = _replace(header, "patliq", equity)
        header = _replace(header, "quantidade", equity / _number(self.header, "valorcota"))
        header = re.sub(r"<cnpj>[^<]*</cnpj>", f"<cnpj>{cnpj(number)}</cnpj>", header)
        return f"\t<fundo>\r\n{header}{rows}\t</fundo>\r\n"

    def write(self, path, size, block_size=4_000_000, first=1):
        """Writes a document of about `size` bytes in blocks of at most about `block_size`, or in one block (None)."""
        with open(path, "w", encoding="iso-8859-1", newline="") as out:
            out.write(f'<?xml version="1.0" encoding="ISO-8859-1"?>\r\n<{self.root}>\r\n')
            written, number = 0, first
            while written < size:
                block = self.block(number, min(block_size or size, size - written))
                out.write(block)
                written += size if block_size is None else len(block)
                number += 1
            out.write(f"</{self.root}>\r\n")


def cnpj(number):
    """A number of 14 digits with right check digits."""
    digits = f"{94000000 + number // 10000:08d}{number % 10000:04d}"
    for weights in ("543298765432", "6543298765432"):
        rest = sum(int(a) * int(b) for a, b in zip(digits, weights)) % 11
        digits += str(0 if rest < 2 else 11 - rest)
    return digits
