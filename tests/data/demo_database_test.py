"""The demonstration's database agrees with the catalogue, the lists and the simulated decoder.

Call: demo_database_test.py STAGED_DATA_FOLDER STAGED_DEMO_FOLDER
"""

import pathlib
import re
import sqlite3
import sys
import unittest

DATA = pathlib.Path(sys.argv.pop(1))
DEMO = pathlib.Path(sys.argv.pop(1))
CV_COLUMNS = [f"DC_CV{suffix}{end}" for suffix in ("", "_1", "_2", "_3", "_4") for end in ("", "_ST")]


def simulated_vehicles(path):
    """Name -> list of (bank selection or "", key, value)."""
    vehicles, bank = {}, ""
    for line in path.read_text("utf-8").splitlines():
        if line.startswith("["):
            current = vehicles.setdefault(line.strip("[]"), [])
            bank = ""
        elif "=" in line and not line.startswith("#"):
            key, _, value = line.partition("=")
            if key == "bank":
                bank = value
            else:
                current.append((bank, key, value))
    return vehicles


class DemoDatabase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.database = sqlite3.connect(f"file:{DEMO}/DB/LOKARIV3.MDB?mode=ro", uri=True)
        cls.database.row_factory = sqlite3.Row
        cls.vehicles = cls.database.execute("SELECT * FROM LOCO_DAT").fetchall()

    @classmethod
    def tearDownClass(cls):
        cls.database.close()

    def column(self, table, name):
        return {row[0] for row in self.database.execute(f"SELECT {name} FROM {table}")}

    def test_is_sound(self):
        self.assertEqual(self.database.execute("PRAGMA integrity_check").fetchone()[0], "ok")

    def test_at_least_25_vehicles_of_several_collections_types_and_eras(self):
        self.assertGreaterEqual(len(self.vehicles), 25)
        self.assertGreaterEqual(len(self.column("LOCO_DAT", "DC_COLL")), 4)
        self.assertEqual(self.column("LOCO_DAT", "DC_TYPE"), {1, 2, 3})
        self.assertGreaterEqual(len(self.column("LOCO_DAT", "FZ_ERA")), 5)

    def test_each_record_can_be_saved_by_the_form(self):
        for row in self.vehicles:
            with self.subTest(row["ST_SNAME"]):
                self.assertTrue(1 <= row["DC_ADR"] <= 10239)
                self.assertTrue(1 <= len(row["ST_SNAME"]) <= 6)

    def test_optional_data_is_missing_somewhere(self):
        for column in ("DC_MANUF", "DC_CV", "MD_PIC", "FZ_ERA", "MD_PRICE", "MD_INFO", "DC_COLL"):
            self.assertIn(None, self.column("LOCO_DAT", column), column)

    def test_decoders_are_in_the_catalogue_and_have_their_file(self):
        types = {tuple(row) for row in self.database.execute("SELECT DC_MANUF, DC_DECODER FROM DECODERS")}
        makers = dict(self.database.execute("SELECT DC_MANUF, DC_MANUF_TEXT FROM DCMANUFS").fetchall())
        for row in self.vehicles:
            if row["DC_DECODER"] is not None:
                self.assertIn((row["DC_MANUF"], row["DC_DECODER"]), types)
                file = DATA / makers[row["DC_MANUF"]] / f"{row['DC_DECODER']}.dec"
                self.assertTrue(file.is_file(), file)

    def test_texts_of_drop_downs_are_in_their_lists(self):
        for column, table in (("FZ_FTYPE", "FTYPES"), ("FZ_LINE", "LINES"), ("FZ_ERA", "ERAS"),
                              ("MD_MANUF", "MANUFS"), ("MD_MOTOR", "MOTORS")):
            used = self.column("LOCO_DAT", column) - {None}
            self.assertLessEqual(used, self.column(table, column), column)

    def test_stored_arrays_have_full_size_and_marks_are_known(self):
        filled = 0
        for row in self.vehicles:
            for column in CV_COLUMNS:
                if row[column] is not None:
                    self.assertEqual(len(row[column]), 4865)
                    filled += 1
                if column.endswith("_ST") and row[column] is not None:
                    self.assertLessEqual(set(row[column]), {0, ord("1"), ord("2")})
        self.assertGreater(filled, 20)

    def test_sets_are_named_and_the_current_one_exists(self):
        for row in self.vehicles:
            names = [row[f"DC_CV_NAME{suffix}"] for suffix in ("", "_1", "_2", "_3", "_4")]
            self.assertTrue(all(name is None or len(name) <= 8 for name in names))
            if row["DC_DEC_VER"] is not None:
                self.assertIn(row["DC_DEC_VER"], names)

    def test_pictures_are_bitmaps_or_jpegs(self):
        kinds = {bytes(row["MD_PIC"][:2]) for row in self.vehicles if row["MD_PIC"] is not None}
        self.assertEqual(kinds, {b"BM", b"\xff\xd8"})

    def test_the_decoder_on_the_programming_track_is_that_of_address_64(self):
        name, lines = next(iter(simulated_vehicles(DEMO / "sim/decoder.txt").items()))
        keys = {key: value for bank, key, value in lines if not bank}
        row = self.database.execute(
            "SELECT * FROM LOCO_DAT WHERE DC_COLL = 'Anlage' AND DC_ADR = 64").fetchone()
        self.assertEqual(int(keys["address"]), row["DC_ADR"])
        self.assertEqual(int(keys["manufacturer"]), row["DC_MANUF"])
        self.assertIn(row["DC_DECODER"], name)
        readonly = {7, 8, 250, 251, 252, 253}
        compared = 0
        for bank, key, value in lines:
            match = re.fullmatch(r"CV(\d+)", key)
            if not match or int(match[1]) in readonly:
                continue
            base, first = {"": (0, 0), "16,0": (1024, 257), "16,1": (1280, 257),
                           "17,0": (1536, 300)}[bank]
            self.assertEqual(row["DC_CV"][int(match[1]) - first + base - 1], int(value), f"{bank} {key}")
            compared += 1
        self.assertGreater(compared, 100)

    def test_the_foreign_decoder_differs_from_every_vehicle_of_the_layout(self):
        (lines,) = simulated_vehicles(DEMO / "sim/fremd.txt").values()
        keys = {key: int(value) for _, key, value in lines if key in ("address", "manufacturer")}
        rows = self.database.execute("SELECT DC_ADR, DC_MANUF FROM LOCO_DAT WHERE DC_COLL = 'Anlage'"
                                     " AND DC_CV IS NOT NULL AND DC_DECODER <> 'FW-F8'")
        for address, maker in rows:
            self.assertNotEqual(address, keys["address"])
            self.assertNotEqual(maker, keys["manufacturer"])


if __name__ == "__main__":
    unittest.main()
