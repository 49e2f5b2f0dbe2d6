"""A run sheet as a crew left it is imported right, by keyboard alone and by mouse alone."""

import os
import re
import time
import unittest

import processes
from case import ROOT, EndToEndTest, explained

SHEET = "Conducteur v7"
TITLES = ["Ouverture", "Les lumières du port", "Nuit blanche", "Carrousel", "Le train de 5 h 12",
          "Interlude", "À contre-jour / (version longue)", "Tempête sur la jetée"]
LENGTHS = [14, 16, 15, 18, 15, 12, 17, 16]
#: Each column's role, and how often the down key is pressed to come to it.
ROLES = {"B": ("Titre du morceau", 1), "C": ("Guests / micros", 2), "D": ("Durée", 3),
         "E": ("Timecode LTC", 4)}
NOTATION = re.compile("Lire aussi ces notations.*")
ROWS = (("Ligne des titres de colonnes", "Titres de colonnes à la ligne 3"),
        ("Première ligne de données", "Première ligne de données à la ligne 4"))


@unittest.skipUnless(os.geteuid() == 0, "only root can lay cables")
class RunSheets(EndToEndTest):
    @explained
    def test_by_keyboard_alone(self):
        self.begin()
        self.reach("Importer un conducteur")
        self.screen.key("Return")
        self.choose_file(lambda: (self.reach("Choisir un fichier…"), self.screen.key("Return")))
        self.reach(f"Passer à «\u00A0{SHEET}\u00A0»")
        self.screen.key("Return")
        for stepper, _ in ROWS:
            self.reach(f"{stepper} : augmenter")
            self.screen.key("Return", "Return")
        for column, (_, steps) in ROLES.items():
            self.reach(f"Colonne {column}")
            self.screen.key("space", *["Down"] * steps, "Return")
        self.take_notations(lambda: (self.reach(NOTATION), self.screen.key("Return")))
        self.admin.see("8 durées et 8 timecodes lus, 0 cellule illisible", "push button")
        self.picture_of(self.admin, "run-sheet-by-keyboard")
        self.reach("Importer")
        self.screen.key("Return")
        self.finish("keyboard")

    @explained
    def test_by_mouse_alone(self):
        self.begin()
        self.click("Importer un conducteur")
        self.choose_file(lambda: self.click("Choisir un fichier…"))
        self.click(f"Passer à «\u00A0{SHEET}\u00A0»")
        for _, mark in ROWS:
            self.click(mark)
        for column, (role, _) in ROLES.items():
            self.admin.choose_role(column, role)
        self.take_notations(lambda: self.click(NOTATION))
        self.admin.see("8 durées et 8 timecodes lus, 0 cellule illisible", "push button")
        self.click("Importer")
        self.finish("mouse")

    def begin(self):
        self.admin = self.start_admin()
        self.admin.to_front()
        self.start_time = time.monotonic()

    def choose_file(self, ask):
        ask()
        self.screen.answer_file_dialog("Importer un conducteur",
                                       ROOT / "examples" / "conducteur-brouillon.xlsx")
        self.admin.to_front()
        self.admin.see("Cette feuille est vide.")

    def take_notations(self, take_first):
        """Spreadsheet times, minutes in words and marked timecodes, a click each."""
        self.admin.see("8 morceaux seront créés")

        def offered():
            return sum(bool(NOTATION.fullmatch(element.name))
                       for element in self.admin.screen().descendants())

        for left in (2, 1, 0):
            take_first()
            processes.wait_until(lambda: offered() == left, f"{left} notations to be left")

    def reach(self, name):
        """Presses Tab until the control with that name has the keyboard."""
        control = self.admin.screen().find(None, name)
        for _ in range(80):
            if "focused" in control.states():
                return
            self.screen.key("Tab")
        self.fail(f"the keyboard never comes to {name}")

    def click(self, name, role=None):
        self.admin.screen().find(role, name).click()

    def finish(self, hand):
        def is_right():
            if not self.record.exists():
                return False
            songs = self.stored()["shows"][0]["songs"]
            return [song["title"] for song in songs] == TITLES and \
                [song.get("duration") for song in songs] == LENGTHS and \
                all(song.get("ltcTimecode") for song in songs) and \
                [guest["name"] for guest in songs[2]["guests"]] == ["Inès Caradec", "Malik Ferrand"]

        processes.wait_until(is_right, "the songs as the crew meant them")
        self.note(f"by {hand}", f"{time.monotonic() - self.start_time:.1f} s")


if __name__ == "__main__":
    unittest.main()
