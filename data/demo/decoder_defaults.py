"""The values a new decoder of a described type holds."""

import csv
import re

SIZE = 4865  # bytes of a stored CV set; byte k is the CV of internal index k + 1


class Description:
    """What the demonstration needs of a description file: banks, defaults and a few keys."""

    def __init__(self, path):
        self.keys = {}
        self.banks = {}     # bank -> (first internal index, lowest CV number)
        self.defaults = {}  # internal index -> value
        text = path.read_bytes().decode("windows-1252").replace("-\r\n", "")
        for line in text.split("\r\n"):
            key, equals, value = line.partition("=")
            if not equals:
                continue
            if match := re.fullmatch(r"MAPVALA_(\d+)", key):
                self.banks[int(match[1])] = (int(match[1]) - 2) * 256 + 1024, None
            elif match := re.fullmatch(r"CV_(\d+)(?:_(\d+))?", key):
                self.cv_line(int(match[1]), int(match[2] or 0), value)
            else:
                self.keys[key] = value

    def cv_line(self, cv, bank, value):
        if bank and self.banks[bank][1] is None:
            self.banks[bank] = self.banks[bank][0], cv
        default = int(next(csv.reader([value], skipinitialspace=True))[2])
        self.defaults[self.index(cv, bank)] = default if default < 256 else 0

    def index(self, cv, bank=0):
        """The internal index of CV `cv` of `bank`; both as a file names them."""
        if not bank:
            return cv
        base, first = self.banks[bank]
        return cv - first + base

    def has_table(self):
        return self.keys.get("SPEEDTABLE", "J") == "J" and self.keys.get("TYPE", "1") != "3"

    def speed_table(self):
        """Values of CV 67 upwards."""
        if not self.has_table():
            return []
        if "SPEEDTABVALUES" in self.keys:
            return [int(item) for item in self.keys["SPEEDTABVALUES"].split(",")]
        points = 15 if self.keys.get("FAMILY") == "1" else 28
        top = int(self.keys.get("INTERNALSTEPS", "255"))
        return [round(top / points * i) for i in range(1, points + 1)]


def cv_set(description, address, maker, changes):
    """A full CV set. `changes` are (cv, bank, value) that differ from a new decoder's."""
    values = bytearray(SIZE)

    def put(index, value):
        if not 0 <= value <= 255:
            raise ValueError(f"value {value} of CV {index}")
        values[index - 1] = value

    for index, value in description.defaults.items():
        put(index, value)
    for point, value in enumerate(description.speed_table()):
        put(67 + point, value)
    config = 2 if description.keys.get("SPEEDSTEPS", "28") != "14" else 0
    if description.keys.get("RAILCOM") == "J":
        config |= 8
    if address > 127:
        put(17, address >> 8 | 192)
        put(18, address & 255)
        config |= 32
    else:
        put(1, address)
    put(7, 1)
    put(8, maker)
    put(29, config)
    for cv, bank, value in changes:
        put(description.index(cv, bank), value)
    return bytes(values)
