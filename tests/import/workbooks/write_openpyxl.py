"""openpyxl names the parts of its sheets by absolute paths. It stores no result for a formula."""
import datetime
from openpyxl import Workbook

cells = {
    "A1": "Fête de l’été 🎭",
    "A3": "Titre", "C3": "Invités", "D3": "Durée", "E3": "Timecode", "F3": "Jour", "G3": "Heure",
    "H3": "Total", "AD3": "Trente",
    "A4": "Été 🌞", "C4": "Inès Caradec + Malik Ferrand", "D4": "0:03:34", "E4": "10:00:14:00",
    "F4": datetime.date(2026, 6, 21), "G4": datetime.time(18, 0), "H4": "=1+2", "AD4": "bout",
    "A5": "Chanson <douce>", "C5": "Chœur d'Arvel / Léa", "D5": 225,
    "A6": "deux\nlignes", "D6": "3 min", "E6": "10:00",
    "A7": "  ", "C7": "personne",
}
book = Workbook()
sheet = book.active
sheet.title = "Soirée & bal"
for reference, value in cells.items():
    sheet[reference] = value
sheet.merge_cells("A1:E1")
hidden = book.create_sheet("Cachée")
hidden["A1"] = "caché"
hidden.sheet_state = "hidden"
book.save("openpyxl.xlsx")
