"""What an installation carries: description files without a fault, catalogue and folders in step.

Call: shipped_data_test.py SOURCE_DATA_FOLDER STAGED_DATA_FOLDER
"""

import pathlib
import sys
import unittest

from dec_grammar import Checker

SOURCE = pathlib.Path(sys.argv.pop(1))
STAGED = pathlib.Path(sys.argv.pop(1))
FORBIDDEN = set("\"^°!§$%&/()=?\\`´+*#':.;,<>|~{[]}")


def rows(table):
    lines = (SOURCE / "catalogue" / f"{table}.txt").read_text("utf-8").splitlines()
    columns = lines[0].split("\t")
    return [dict(zip(columns, line.split("\t"), strict=True)) for line in lines[1:]]


def check(text):
    return Checker().check(text.replace("\n", "\r\n").encode("windows-1252"))


class Catalogue(unittest.TestCase):
    def setUp(self):
        self.makers = {row["DC_MANUF"]: row["DC_MANUF_TEXT"] for row in rows("DCMANUFS")}

    def test_maker_numbers_are_unique_and_0_exists(self):
        self.assertEqual(len(self.makers), len(rows("DCMANUFS")))
        self.assertIn("0", self.makers)
        self.assertTrue(all(0 <= int(number) <= 255 for number in self.makers))

    def test_names_serve_as_file_names(self):
        names = list(self.makers.values()) + [row["DC_DECODER"] for row in rows("DECODERS")]
        for name in names:
            self.assertTrue(1 <= len(name) <= 8 and not set(name) & FORBIDDEN, name)
        self.assertEqual(len(self.makers.values()), len(set(self.makers.values())))

    def test_each_decoder_row_has_its_file_and_each_file_its_row(self):
        listed = {f"{self.makers[row['DC_MANUF']]}/{row['DC_DECODER']}.dec"
                  for row in rows("DECODERS")}
        for root in (SOURCE / "dec", STAGED):
            found = {str(path.relative_to(root)) for path in root.glob("*/*.dec")}
            self.assertEqual(found, listed)
        self.assertNotIn("0", [row["DC_MANUF"] for row in rows("DECODERS")])

    def test_reference_lists_have_no_entry_twice(self):
        for table in ("FTYPES", "LINES", "ERAS", "MANUFS", "MOTORS"):
            texts = [list(row.values())[1] for row in rows(table)]
            self.assertTrue(texts)
            self.assertEqual(len(texts), len(set(texts)), table)


class Descriptions(unittest.TestCase):
    def test_no_shipped_file_has_a_fault(self):
        files = sorted((SOURCE / "dec").rglob("*.dec"))
        self.assertTrue(files)
        for path in files:
            with self.subTest(path.name):
                self.assertEqual(Checker().check(path.read_bytes()), [])

    def test_head_and_maker_number_agree_with_the_place(self):
        numbers = {row["DC_MANUF_TEXT"]: int(row["DC_MANUF"]) for row in rows("DCMANUFS")}
        for path in (SOURCE / "dec").glob("*/*.dec"):
            checker = Checker()
            checker.check(path.read_bytes())
            self.assertEqual(checker.header, path.stem)
            self.assertEqual(checker.values["MANUFACTURER"], numbers[path.parent.name])

    def test_the_sound_decoder_has_three_banks_and_45_function_rows(self):
        checker = Checker()
        checker.check((SOURCE / "dec/Adlerton/AT-SND16.dec").read_bytes())
        self.assertEqual(set(checker.banks), {2, 3, 4})
        self.assertEqual(checker.pages["3"], 45)
        self.assertGreater(checker.pages["4"], 20)
        self.assertGreater(checker.pages["6"], 20)

    def test_staged_files_are_the_sources_byte_for_byte(self):
        for path in (SOURCE / "dec").rglob("*.dec"):
            staged = STAGED / path.relative_to(SOURCE / "dec")
            self.assertEqual(staged.read_bytes(), path.read_bytes())


class Faults(unittest.TestCase):
    """The checker itself: a clean file passes, each fault is found on its line."""

    CLEAN = "[X]\nMAPCVA=31\nMAPVALA_2=16\nCV_3=Zeit,0-9,3\nCV_257_2=Ton,\"1,3\",1,6\n"

    def test_clean_file(self):
        self.assertEqual(check(self.CLEAN), [])

    def test_faults(self):
        cases = {
            "CV_40=Name,0-3,1,5\nFOO=bar\n": 3,
            "CV_29=Name,0-3,1\n": 2,
            "CV_70=Name,0-3,1\n": 2,
            "CV_40=Licht, vorne,0-255,0\n": 2,
            "CV_40=\"Licht,0-255,0\n": 2,
            "CV_40=Name,0-3,4\n": 2,
            "CV_40=Name,3-0,0\n": 2,
            "CV_300_2=Ohne Bank,0-3,1\n": 2,
            "CV_41=A,0-3,1\nCV_40=B,0-3,1\n": 3,
            "CV_40=Name,0-3,1,7\n": 2,
            "CV_40=Name,0-3,1,4,,\"1,Licht,Aus,Ein,Halb\"\n": 2,
            "CV_40=Name,0-3,1,4,,\"5,A|4,B\"\n": 2,
            "SPEEDSTEPS=127\n": 2,
            "RAILCOM=1\n": 2,
            "SPEEDTABVALUES=1,2,3\n": 2,
        }
        for text, line in cases.items():
            with self.subTest(text):
                self.assertEqual([number for number, _ in check("[X]\n" + text)][:1], [line])


if __name__ == "__main__":
    unittest.main()
