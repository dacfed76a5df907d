"""Makes the template database from the schema and the catalogue.

Call: make_template.py SCHEMA.sql TARGET TABLE.txt...

A table file is named after its table: UTF-8, first line the columns, tab-separated, empty is Null.
"""

import os
import pathlib
import sqlite3
import sys


def rows_of(path):
    """The columns, and the rows as tuples."""
    lines = path.read_text("utf-8").splitlines()
    columns = lines[0].split("\t")
    rows = []
    for number, line in enumerate(lines[1:], 2):
        values = line.split("\t")
        if len(values) != len(columns):
            raise ValueError(f"{path}:{number}: {len(columns)} columns expected")
        rows.append(tuple(value or None for value in values))
    return columns, rows


def fill(database, path):
    columns, rows = rows_of(path)
    marks = ", ".join("?" * len(columns))
    database.executemany(f"INSERT INTO {path.stem} ({', '.join(columns)}) VALUES ({marks})", rows)


def main(schema, target, *tables):
    target.parent.mkdir(parents=True, exist_ok=True)
    new = target.with_suffix(".new")
    new.unlink(missing_ok=True)
    database = sqlite3.connect(new)
    database.executescript(schema.read_text("utf-8"))
    with database:
        for table in tables:
            fill(database, table)
    if not database.execute("SELECT 1 FROM DCMANUFS WHERE DC_MANUF = 0").fetchone():
        raise ValueError("DCMANUFS lacks the maker 0")
    database.close()
    os.replace(new, target)


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:]))
