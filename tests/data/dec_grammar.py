"""Strict reading of a decoder description file: every fault with its line number.

The program's own loader is tolerant and silent; what is shipped has to be better than that.
"""

import re

NUMBER_KEYS = {
    "MAXADDRESS": range(1, 10240),
    "TYPE": range(0, 4),
    "PROGMODE": range(0, 3),
    "SPEEDSTEPS": (14, 28, 126, 128, 0),
    "FAMILY": range(0, 3),
    "INTERNALSTEPS": range(1, 256),
    "FUNCTIONS": range(1, 13),
    "FUNCSHIFT": range(1, 5),
    "FUNCCOUNT": range(1, 9),
    "MAXTABS": range(1, 29),
    "MAPCVA": range(1, 256),
    "MAPCVB": range(1, 256),
    "MANUFACTURER": range(1, 256),
}
FLAG_KEYS = {"DIRECTION", "ANALOGMODE", "SPEEDTABLE", "EXTADDRESS", "CONSADDRESS", "DETECTPULSE",
             "MANBIT", "RAILCOM", "PROGMAIN", "FUNCMAP"}
FIXED_CVS = {1, 7, 8, 17, 18, 19, 29}
MAX_NAME = 32  # what a row's label shows


def statements(text):
    """(line number, statement) with continuation lines joined."""
    lines = text.split("\r\n")
    index = 0
    while index < len(lines):
        line, number = lines[index], index + 1
        if line.endswith("-") and index + 1 < len(lines):
            index += 1
            line = line[:-1] + lines[index].lstrip(" ")
        yield number, line
        index += 1


def fields_of(value):
    fields, quoted, start = [""], False, 0
    for char in value[start:]:
        if char == '"':
            quoted = not quoted
        elif char == "," and not quoted:
            fields.append("")
        else:
            fields[-1] += char
    return [field.strip(" ") for field in fields], quoted


def range_numbers(text):
    """The (from, to) pairs of a range text, or None when it is none."""
    pairs = []
    for item in text.split(","):
        match = re.fullmatch(r"(\d+)(?:-(\d+))?", item)
        if not match:
            return None
        low = int(match[1])
        high = int(match[2] or match[1])
        if low > high or high > 255:
            return None
        pairs.append((low, high))
    return pairs


def bit_faults(bits):
    width_sum = 0
    for group in bits.split("|"):
        items = group.split(",")
        if items[0] == "#":
            if len(items) != 2 or not items[1]:
                yield f'Gruppe "{group}" braucht genau einen Titel'
            continue
        if not items[0].isdigit():
            yield f'Gruppe "{group}" beginnt mit keiner Breite'
            continue
        width = int(items[0])
        width_sum += width
        choices = items[2:]
        if len(choices) > min(16, 2 ** width):
            yield f'Gruppe "{group}" hat mehr Namen als {width} Bit fassen'
        if len(items) > 1 and any(not item for item in items[1:]):
            yield f'Gruppe "{group}" hat einen leeren Namen'
    if width_sum > 8:
        yield "mehr als 8 Bit beschrieben"


class Checker:
    def __init__(self):
        self.faults = []
        self.values = {}
        self.flags = {}
        self.header = None
        self.banks = {}       # bank -> set of MAPVALA/MAPVALB seen
        self.last_cv = {}     # bank -> last CV number
        self.pages = {}       # page -> rows
        self.seen_cv = False

    def fault(self, number, text):
        self.faults.append((number, text))

    def check(self, data):
        text = data.decode("windows-1252")
        if "\n" in text.replace("\r\n", ""):
            self.fault(0, "Zeilenende ohne CR LF")
        for number, line in statements(text):
            if "=" in line and not line.startswith(";"):
                key, value = line.split("=", 1)
                self.statement(number, key.strip(" ").upper(), value.lstrip(" "))
            elif "=" in line:
                self.fault(number, "Kommentar mit Gleichheitszeichen")
            elif line.startswith("["):
                self.header = line.strip("[]")
            elif line and not line.startswith(";"):
                self.fault(number, "Zeile ohne Gleichheitszeichen")
        if not self.header:
            self.fault(0, "Kopfzeile fehlt")
        return self.faults

    def statement(self, number, key, value):
        if key in NUMBER_KEYS:
            if not value.isdigit() or int(value) not in NUMBER_KEYS[key]:
                self.fault(number, f"{key}: Wert {value} nicht zulässig")
            else:
                self.values[key] = int(value)
        elif key in FLAG_KEYS:
            if value not in ("J", "N"):
                self.fault(number, f"{key}: J oder N erwartet")
            self.flags[key] = value == "J"
        elif key == "SPEEDTABVALUES":
            self.speed_table(number, value)
        elif match := re.fullmatch(r"MAPVAL([AB])_(\d+)", key):
            self.bank_line(number, match[1], int(match[2]), value)
        elif match := re.fullmatch(r"CV_(\d+)(?:_(\d+))?", key):
            self.seen_cv = True
            self.cv_line(number, int(match[1]), int(match[2] or 0), value)
            return
        else:
            self.fault(number, f"unbekannter Schlüssel {key}")
        if self.seen_cv:
            self.fault(number, f"{key} steht hinter einer CV-Zeile")

    def speed_table(self, number, value):
        pairs = range_numbers(value)
        points = 15 if self.values.get("FAMILY") == 1 else 28
        top = self.values.get("INTERNALSTEPS", 255)
        if pairs is None or len(pairs) != points:
            self.fault(number, f"SPEEDTABVALUES: {points} Werte erwartet")
        elif any(high > top for _, high in pairs):
            self.fault(number, "SPEEDTABVALUES: Wert über INTERNALSTEPS")

    def bank_line(self, number, register, bank, value):
        if f"MAPCV{register}" not in self.values:
            self.fault(number, f"MAPVAL{register} ohne MAPCV{register}")
        if not 1 <= bank <= 16 or not value.isdigit() or int(value) > 255:
            self.fault(number, "Bank oder Wert nicht zulässig")
        self.banks.setdefault(bank, set()).add(register)

    def cv_line(self, number, cv, bank, value):
        name = f"CV {cv}" + (f" ({bank})" if bank else "")
        if bank and bank not in self.banks:
            self.fault(number, f"{name}: Bank ohne MAPVAL")
        if cv <= self.last_cv.get(bank, 0):
            self.fault(number, f"{name}: nicht in steigender Folge")
        self.last_cv[bank] = cv
        table = self.flags.get("SPEEDTABLE", True) and self.values.get("TYPE", 1) != 3
        if not bank and (cv in FIXED_CVS or (table and 67 <= cv <= 94) or not 1 < cv < 1024):
            self.fault(number, f"{name}: hat einen festen Platz im Programm")
        fields, open_quote = fields_of(value)
        if open_quote:
            self.fault(number, f"{name}: Anführungszeichen nicht geschlossen")
        if len(fields) > 6:
            self.fault(number, f"{name}: mehr als sechs Felder")
        fields += [""] * (6 - len(fields))
        self.cv_fields(number, name, fields)

    def cv_fields(self, number, name, fields):
        title, span, default, page, _, bits = fields[:6]
        if not 1 <= len(title) <= MAX_NAME:
            self.fault(number, f"{name}: Bezeichnung leer oder länger als {MAX_NAME} Zeichen")
        pairs = range_numbers(span)
        if pairs is None:
            self.fault(number, f"{name}: Bereich {span} nicht lesbar")
        if not default.isdigit():
            self.fault(number, f"{name}: Vorgabe {default} nicht numerisch")
        elif pairs and int(default) != 256 and not any(a <= int(default) <= b for a, b in pairs):
            self.fault(number, f"{name}: Vorgabe {default} außerhalb von {span}")
        if page not in ("", "0", "1", "2", "3", "4", "5", "6"):
            self.fault(number, f"{name}: Seite {page} nicht zulässig")
        self.pages[page] = self.pages.get(page, 0) + 1
        for text in bit_faults(bits) if bits else ():
            self.fault(number, f"{name}: {text}")
