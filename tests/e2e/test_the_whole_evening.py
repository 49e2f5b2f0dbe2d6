"""An evening with everything: a run sheet is imported, a station follows, keyboard and timecode lead."""

import os
import re
import unittest
from pathlib import Path

import processes
from case import EndToEndTest, explained
from hosts import Switch
from person import MAIN, Person
from sound import Sound

INPUT = "Timecode LTC"
RUN_SHEET = Path(__file__).resolve().parents[2] / "examples" / "conducteur.xlsx"
TITLES = ["Ouverture", "Les lumières du port", "Nuit blanche", "Carrousel", "Le train de 5 h 12"]
SONGS = 12


@unittest.skipUnless(os.geteuid() == 0, "only root can lay cables")
class TheWholeEvening(EndToEndTest):
    @explained
    def test_from_the_run_sheet_to_the_next_day(self):
        sound = self.begin()
        self.admin.press("Vue live", "page tab")
        self.expect_song(0)
        self.picture_of(self.admin, "evening-1-live")
        self.admin.key("space")
        self.expect_song(1)
        self.run_by_timecode(sound)
        self.finish()
        self.find_it_the_next_day()

    def begin(self):
        """Up to the imported show, with a station that waits for it; gives what can be played on."""
        sound = Sound(self.stage, [INPUT])
        switch = Switch(self.stage)
        self.addCleanup(switch.remove)
        self.desk = switch.add_host("regie")
        self.station = Person(self, switch.add_host("plateau"))
        self.station.press("Affichage")
        self.admin = self.start_admin()
        self.import_run_sheet()
        return sound

    def start_admin(self):
        admin = Person(self, self.desk)
        admin.press("Admin")
        admin.see("Nouveau show", "push button")
        return admin

    def import_run_sheet(self):
        admin = self.admin
        admin.to_front()
        admin.press("Importer un conducteur")
        admin.press("Choisir un fichier…")
        self.screen.answer_file_dialog("Importer un conducteur", RUN_SHEET)
        for stepper in ("Ligne des titres de colonnes", "Première ligne de données"):
            for _ in range(2):
                admin.press(f"{stepper} : augmenter")
        for column, role in (("B", "Titre du morceau"), ("C", "Guests / micros"), ("D", "Durée"),
                             ("E", "Timecode LTC")):
            admin.screen().find("combo box", f"Colonne {column}").click()
            admin.screen().find("list item", role).click()
        admin.see(f"{SONGS} morceaux seront créés")
        admin.press("Importer")

    def run_by_timecode(self, sound):
        """A step back keeps the fourth song's timecode, 15 seconds after the third's, from acting."""
        admin = self.admin
        self.start_capture()
        player = sound.play(self.write_ltc("10:00:28:00", 38), INPUT)
        self.expect_song(2)
        admin.screen().find(None, re.compile(r"10:00:3[3-9]:\d\d"))
        admin.key("Left")
        self.expect_song(1)
        self.picture_of(admin, "evening-2-held")
        self.expect_song(4)
        self.assertEqual(player.wait(60), 0)
        moves = [line for line in admin.program.lines() if line.startswith("LTC:")]
        self.assertEqual(moves, [f"LTC: ✅ avance vers morceau {index} '{TITLES[index]}'"
                                 for index in (2, 4)])
        admin.press("Arrêter la capture")

    def start_capture(self):
        self.admin.press("Actualiser la liste des entrées audio")
        self.admin.screen().find("combo box", "Entrée audio").click()
        self.admin.screen().find("list item", INPUT).click()
        self.admin.press("Démarrer la capture")

    def finish(self):
        for _ in range(4, SONGS):
            self.admin.key("space")
        self.admin.see("Fin de la setlist")
        self.station.see("Merci !")
        self.picture_of(self.station, "evening-3-finished")

    def find_it_the_next_day(self):
        self.admin.program.stop()
        self.station.see("Recherche d'un admin sur le réseau…")
        processes.wait_until(lambda: not self.desk.services(), "yesterday's admin to be forgotten")
        self.admin = self.start_admin()
        self.admin.press("conducteur")
        self.admin.press("Vue live", "page tab")
        self.admin.see("Fin de la setlist")
        self.station.see("Merci !")

    def expect_song(self, index):
        self.admin.see(TITLES[index], "heading")
        self.station.see(TITLES[index], "heading")

    def picture_of(self, person, name):
        person.to_front()
        self.picture(MAIN, name)


if __name__ == "__main__":
    unittest.main()
