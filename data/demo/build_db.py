"""Makes the database of the demonstration from the empty template.

Call: build_db.py EMPTY.MDB VEHICLES.txt DEC_FOLDER CATALOGUE_FOLDER PICTURE_FOLDER TARGET.MDB
"""

import os
import pathlib
import re
import shutil
import sqlite3
import sys

from decoder_defaults import SIZE, Description, cv_set

LIMITS = {"ST_SNAME": 6, "FZ_LNAME": 40, "FZ_CODE": 12, "FZ_OPCODE": 8, "MD_CATNO": 16,
          "MD_INFO": 240, "MD_USER_1": 40, "MD_USER_2": 40, "MD_USER_3": 40, "DC_COLL": 16,
          "DC_DECODER": 8}
NUMBERS = {"DC_ADR": int, "DC_TYPE": int, "DC_MANUF": int, "ST_GROUP": int, "FZ_MAXSPEED": int,
           "MD_PRICE": float}
MARKS = {"read": ord("1"), "failed": ord("2")}


def blocks(path):
    """One dictionary a vehicle."""
    record = None
    for line in path.read_text("utf-8").splitlines():
        if line.startswith("["):
            if record:
                yield record
            name = line.strip("[]")
            record = {} if name == "-" else {"DC_COLL": name}
        elif "=" in line and not line.startswith("#"):
            key, _, value = line.partition("=")
            record[key] = value.replace("\\n", "\r\n")
    yield record


def numbers_of(text):
    for item in text.split(","):
        first, _, last = item.partition("-")
        yield from range(int(first), int(last or first) + 1)


def marks_of(text):
    marks = bytearray(SIZE)
    for part in text.split(";"):
        kind, _, cvs = part.strip().partition(" ")
        for cv in numbers_of(cvs):
            marks[cv - 1] = MARKS[kind]
    if marks[16]:
        marks[0] = marks[16]  # byte 0 is the mark of the address, whichever CVs carry it
    return bytes(marks)


def suffix(number):
    return "" if number == 1 else f"_{number - 1}"


class Builder:
    def __init__(self, dec, catalogue, pictures):
        self.dec, self.pictures = dec, pictures
        lines = (catalogue / "DCMANUFS.txt").read_text("utf-8").splitlines()[1:]
        self.makers = {int(row[1]): row[2] for row in (line.split("\t") for line in lines)}

    def set_columns(self, record, number, text):
        name, _, values = text.partition(";")
        changes = [(int(m[1]), int(m[2] or 0), int(m[3]))
                   for m in re.finditer(r"(\d+)(?:/(\d+))?=(\d+)", values)]
        maker = int(record["DC_MANUF"])
        description = Description(self.dec / self.makers[maker] / f"{record['DC_DECODER']}.dec")
        end = suffix(number)
        return {
            f"DC_CV{end}": cv_set(description, int(record["DC_ADR"]), maker, changes),
            f"DC_CV{end}_ST": marks_of(record[f"marks{number}"]) if f"marks{number}" in record
            else bytes(SIZE),
            f"DC_CV_NAME{end}": name or f"Set {number}",
        }

    def columns(self, record):
        row = {}
        for key, value in record.items():
            if match := re.fullmatch(r"set(\d)", key):
                row |= self.set_columns(record, int(match[1]), value)
            elif key == "picture":
                row["MD_PIC"] = (self.pictures / value).read_bytes()
            elif not key.startswith("marks"):
                if len(value) > LIMITS.get(key, 255):
                    raise ValueError(f"{key} too long: {value}")
                row[key] = NUMBERS.get(key, str)(value)
        return row


def main(template, vehicles, dec, catalogue, pictures, target):
    builder = Builder(dec, catalogue, pictures)
    target.parent.mkdir(parents=True, exist_ok=True)
    new = target.with_suffix(".new")
    shutil.copyfile(template, new)
    database = sqlite3.connect(new)
    with database:
        for record in blocks(vehicles):
            row = builder.columns(record)
            marks = ", ".join("?" * len(row))
            database.execute(f"INSERT INTO LOCO_DAT ({', '.join(row)}) VALUES ({marks})",
                             tuple(row.values()))
    database.close()
    os.replace(new, target)


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:]))
