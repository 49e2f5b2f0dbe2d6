#!/usr/bin/env python3
"""Writes examples/conducteur-brouillon.xlsx: the concert's run sheet as it looks the night before.

Three sheets, a merged title, notes between sets, lengths as numbers and in words, timecodes with a
mark before them, guests merged over two songs, a hidden row. Needs Debian's python3-xlsxwriter.
"""

import datetime
from pathlib import Path

import xlsxwriter

HEADINGS = ["N°", "Morceau", "Avec qui", "Durée", "Timecode", "Lumière"]
SONGS = [
    ("SET 1", None, None, None, None),
    (1, "Ouverture", None, 14, "TC 10:00:00:00"),
    (2, "Les lumières du port", "Inès Caradec", "0 min 16", "TC 10:00:14:00"),
    (3, "Nuit blanche", "Inès Caradec + Malik Ferrand", 15, "TC 10:00:30:00"),
    (4, "Carrousel", "Chœur d'Arvel", "0 min 18", "TC 10:00:45:00"),
    (None, None, None, None, None),
    ("ENTRACTE — rideau fermé, 20 minutes", None, None, None, None),
    ("SET 2", None, None, None, None),
    (5, "Le train de 5 h 12", "Basile Ndour", 15, "TC 10:01:03:00"),
    (6, "Interlude", None, "0 min 12", "TC 10:01:18:00"),
    (7, "À contre-jour\n(version longue)", "Soline Vasquez", 17, "TC 10:01:30:00"),
    (8, "Tempête sur la jetée", "Malik Ferrand / Basile Ndour", "0 min 16", "TC 10:01:47:00"),
    ("Total", None, None, "1'58", None),
]
MERGED_GUESTS = ("Soline Vasquez", 2)  # and the song below
HIDDEN_SONG = "Interlude"
FIRST_ROW = 4  # from 0, as the writer counts


def write_songs(book, sheet):
    bold = book.add_format({"bold": True})
    time = book.add_format({"num_format": "mm:ss"})
    sheet.merge_range(0, 0, 0, 5, "CONCERT DES QUAIS · conducteur v7 (définitif ?)", bold)
    sheet.write_row(2, 0, HEADINGS, bold)
    sheet.set_column(1, 2, 30)
    for offset, (number, title, guests, length, timecode) in enumerate(SONGS):
        row = FIRST_ROW - 1 + offset
        for column, text in ((0, number), (1, title), (4, timecode)):
            sheet.write(row, column, text)
        if isinstance(length, int):
            sheet.write_number(row, 3, length / 86400, time)
        else:
            sheet.write(row, 3, length)
        if guests == MERGED_GUESTS[0]:
            sheet.merge_range(row, 2, row + MERGED_GUESTS[1] - 1, 2, guests)
        elif guests and SONGS[offset - 1][2] != MERGED_GUESTS[0]:
            sheet.write(row, 2, guests)
        if title == HIDDEN_SONG:
            sheet.set_row(row, None, None, {"hidden": True})


def main():
    with xlsxwriter.Workbook(Path(__file__).with_name("conducteur-brouillon.xlsx")) as book:
        book.set_properties({"created": datetime.datetime(2026, 1, 1)})
        book.add_worksheet("Planning")
        write_songs(book, book.add_worksheet("Conducteur v7"))
        book.add_worksheet("Contacts").write_row(0, 0, ["Régie son", "canal 1"])


if __name__ == "__main__":
    main()
