"""Tells how long the screen keeps anybody waiting while it reads and shows workbooks made to hurt.

    /usr/bin/python3 bench/e2e/import_answers.py

Something small is asked over the accessibility bus again and again: the main thread answers it in turn
with keys, so the longest answer is the longest that a key can wait for. Memory is what the program
takes at most, beside what it takes before.
"""

import sys
import time
import unittest
import zipfile
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

from case import EndToEndTest, explained  # noqa: E402

RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
ROWS = 20_000


def shared(index, reference):
    return f'<c r="{reference}" t="s"><v>{index}</v></c>'


def rows_of(count, cells):
    return "".join(f'<row r="{row}">{cells(row)}</row>' for row in range(1, count + 1))


#: The cells of a sheet and the texts that they share.
WORKBOOKS = {
    "a text of 20 MiB in 300 cells":
        (rows_of(150, lambda row: shared(0, f"A{row}") + shared(0, f"B{row}")), ["m" * (20 << 20)]),
    "a text of 1 MiB in 100,000 cells":
        (rows_of(50_000, lambda row: shared(0, f"A{row}") + shared(0, f"B{row}")), ["m" * (1 << 20)]),
    "100 titles of 32,767 characters":
        (rows_of(100, lambda row: shared(row - 1, f"A{row}") + shared(row - 1, f"B{row}")),
         [f"{row} {'é' * 32_700}" for row in range(100)]),
    "20,000 rows of 30 texts":
        (rows_of(ROWS, lambda row: "".join(
            shared(row % 500, f"{letters}{row}") for letters in
            [chr(65 + column) if column < 26 else f"A{chr(39 + column)}" for column in range(30)])),
         [f"Chanson {number}" for number in range(500)]),
    "1,048,576 rows of four texts":
        (rows_of(1_048_576, lambda row: "".join(shared(row % 500, f"{letter}{row}") for letter in "ABCD")),
         [f"Chanson {number}" for number in range(500)]),
}


def write(path, cells, texts):
    strings = "".join(f"<si><t>{text}</t></si>" for text in texts)
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("xl/workbook.xml", f'<workbook xmlns:r="{RELATIONSHIPS}"><sheets>'
                         '<sheet name="Conducteur" sheetId="1" r:id="rId1"/></sheets></workbook>')
        archive.writestr("xl/_rels/workbook.xml.rels", '<Relationships><Relationship Id="rId1" '
                         'Target="worksheets/sheet1.xml"/></Relationships>')
        archive.writestr("xl/sharedStrings.xml", f"<sst>{strings}</sst>")
        archive.writestr("xl/worksheets/sheet1.xml", f"<worksheet><sheetData>{cells}</sheetData></worksheet>")


class ImportAnswers(EndToEndTest):
    @explained
    def test_answers(self):
        for what, (cells, texts) in WORKBOOKS.items():
            path = self.stage.folder / "Conducteur.xlsx"
            write(path, cells, texts)
            admin = self.start_admin()
            admin.to_front()
            admin.press("Importer un conducteur")
            admin.see("Choisir un fichier…")
            self.before = admin.program.resident_bytes()
            self.ask("nothing to do", admin)
            admin.press("Choisir un fichier…")
            self.screen.answer_file_dialog("Importer un conducteur", path)
            self.ask(f"{what} ({path.stat().st_size / 1024:.0f} KB), opened", admin)
            admin.see("Colonne B")
            admin.choose_role("A", "Titre du morceau")
            self.ask("column A as title", admin)
            admin.choose_role("B", "Durée")
            self.ask("column B as length", admin)
            admin.program.stop()
            self.people.remove(admin)

    def ask(self, what, admin, seconds=6):
        """Asks something small again and again, and tells the longest answer and the most memory."""
        longest = most = 0
        end = time.monotonic() + seconds
        while (begin := time.monotonic()) < end:
            self.assertTrue(admin.screen().role)
            longest = max(longest, time.monotonic() - begin)
            most = max(most, admin.program.resident_bytes())
            time.sleep(0.004)
        self.note(what, f"longest answer {longest * 1000:.0f} ms, "
                  f"at most {(most - self.before) / (1 << 20):.0f} MiB more")


if __name__ == "__main__":
    unittest.main()
