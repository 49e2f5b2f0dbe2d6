"""An evening with everything: a run sheet is imported and put in order, a station follows, keyboard
and timecode lead, and nothing is lost when the program is killed."""

import re
import unittest

import processes
from case import ROOT, EndToEndTest, explained
from sound import Sound

INPUT = "Timecode LTC"
STAGE = "Tessivo — Affichage"
UNREADABLE = b'{"shows": [\xff'
TITLES = ["Ouverture", "Les lumières du port", "Nuit blanche", "Carrousel", "Le train de 5 h 12"]
SONGS = 12


class TheWholeEvening(EndToEndTest):
    def setUp(self):
        self.sound = Sound(self.stage, [INPUT])  # so that programs see the input from the start on
        super().setUp()

    @explained
    def test_from_the_run_sheet_to_the_next_day(self):
        self.record.parent.mkdir(parents=True)
        self.record.write_bytes(UNREADABLE)
        self.begin()
        self.put_in_order()
        self.open_live_tab()
        self.expect_song(0)
        self.picture_of(self.admin, "evening-1-live")
        self.admin.key("space")
        self.expect_song(1)
        self.run_by_timecode()
        self.hold_keys_down()
        self.survive_a_kill()
        self.finish()
        self.find_it_the_next_day()

    def begin(self):
        """Up to the imported show, with a station that waits for it."""
        self.station = self.start(self.switch.add_host("plateau"))
        self.station.press("Affichage")
        self.admin = self.start_admin()
        self.import_run_sheet()

    def import_run_sheet(self):
        admin = self.admin
        admin.to_front()
        admin.press("Importer un conducteur")
        admin.press("Choisir un fichier…")
        self.screen.answer_file_dialog("Importer un conducteur",
                                       ROOT / "examples" / "conducteur.xlsx")
        for stepper in ("Ligne des titres de colonnes", "Première ligne de données"):
            for _ in range(2):
                admin.press(f"{stepper} : augmenter")
        for column, role in (("B", "Titre du morceau"), ("C", "Guests / micros"), ("D", "Durée"),
                             ("E", "Timecode LTC")):
            admin.choose_role(column, role)
        admin.see(f"{SONGS} morceaux seront créés")
        admin.press("Importer")

    def put_in_order(self):
        """The first song goes below the third by mouse, then back by keyboard, which stays on it."""
        def title_at(index):
            fields = [element for element in self.admin.screen().descendants()
                      if element.role == "text" and element.name == "Titre du morceau"]
            return fields[index] if len(fields) > index else None

        processes.wait_until(lambda: title_at(2), "three songs")
        y, target = title_at(0).centre()[1], title_at(2).centre()[1] + 8
        left = title_at(0).extents()[0] - 20
        self.admin.to_front()
        self.screen.mouse(left, y, "mousedown", "1")
        for step in range(1, 11):
            self.screen.mouse(left, y + (target - y) * step // 10)
        self.picture_of(self.admin, "evening-2-dragging")
        self.screen.mouse(left, target, "mouseup", "1")
        self.expect_stored([*TITLES[1:3], TITLES[0], *TITLES[3:]])
        title_at(2).click()
        for name in ("alt+Up", "alt+Up", "End"):
            self.screen.key(name)
        self.screen.type(" bis")
        self.expect_stored([TITLES[0] + " bis", *TITLES[1:]])
        for _ in " bis":
            self.screen.key("BackSpace")
        self.expect_stored(TITLES)
        # What couldn't be read at the start was kept.
        kept = self.record.with_name(self.record.name + ".illisible-1")
        self.assertEqual(kept.read_bytes(), UNREADABLE)

    def run_by_timecode(self):
        """A step back keeps the fourth song's timecode, 15 seconds after the third's, from acting."""
        admin = self.admin
        self.admin.start_capture(INPUT)
        player = self.sound.play(self.write_ltc("10:00:28:00", 38), INPUT)
        self.expect_song(2)
        timecode = admin.screen().find(None, "Timecode")
        processes.wait_until(lambda: re.fullmatch(r"10:00:3[3-9]:\d\d", timecode.description),
                             "the timecode after the song's start")
        admin.key("Left")
        self.expect_song(1)
        self.picture_of(admin, "evening-3-held")
        self.expect_song(4)
        self.assertEqual(player.wait(60), 0)
        moves = [line for line in admin.program.lines() if line.startswith("LTC:")]
        self.assertEqual(moves, [f"LTC: ✅ avance vers morceau {index} '{TITLES[index]}'"
                                 for index in (2, 4)])
        admin.press("Arrêter la capture")

    def hold_keys_down(self):
        """However long a key is held, it is one press: a hand that rests on it loses no song."""
        self.admin.to_front()
        self.screen.hold_key("Left", 3.0)
        self.expect_song(3)
        self.screen.hold_key("space", 3.0)
        self.expect_song(4)

    def survive_a_kill(self):
        """Everything up to the last key press is still there, also on a stage of this computer."""
        before = self.stored()
        self.assertEqual(before["activeSongIndex"], 4)
        self.admin.program.kill()
        processes.wait_until(lambda: not self.desk.services(), "the dead admin to be forgotten")
        self.admin = self.start_admin()
        self.assertEqual(dict(self.stored(), activeShowId=None), dict(before, activeShowId=None))
        self.open_yesterdays_show()
        self.expect_song(4)
        self.admin.press("Ouvrir l'affichage")
        self.screen.find("frame", STAGE).find("heading", TITLES[4])

    def finish(self):
        for _ in range(4, SONGS):
            self.admin.key("space")
        self.admin.see("Fin de la setlist")
        self.screen.find("frame", STAGE).find(None, "Merci !")
        self.station.see("Merci !")
        self.picture_of(self.station, "evening-4-finished")

    def find_it_the_next_day(self):
        self.admin.program.stop()
        self.station.see("Recherche d'un admin sur le réseau…")
        processes.wait_until(lambda: not self.desk.services(), "yesterday's admin to be forgotten")
        self.admin = self.start_admin()
        self.open_yesterdays_show()
        self.admin.see("Fin de la setlist")
        self.station.see("Merci !")

    def open_yesterdays_show(self):
        self.admin.press("conducteur")
        self.open_live_tab()

    def open_live_tab(self):
        self.admin.press("Vue live", "page tab")

    def expect_song(self, index):
        for person in (self.admin, self.station):
            person.see(TITLES[index], "heading")

    def expect_stored(self, titles):
        """Waits for a show whose first songs these are."""
        processes.wait_until(lambda: [song["title"] for song in self.stored()["shows"][0]["songs"]]
                             [:len(titles)] == titles, "the record to hold what was done")


if __name__ == "__main__":
    unittest.main()
