"""A show file is opened, timecode is heard, and the songs advance on every screen by themselves."""

import json
import re
import time
import unittest
import uuid

from case import EndToEndTest, explained
from sound import Sound

MAIN = "Tessivo"
STAGE = "Tessivo — Affichage"
INPUT = "Timecode LTC"
UNREADABLE = b'{"shows": [\xff'
TITLES = ["Ouverture", "Chœur d'été", "L'« Adieu »"]


def show_record():
    """The JSON of a show whose songs start ten seconds of timecode apart."""
    def new_id():
        return str(uuid.uuid4()).upper()

    songs = [{"id": new_id(), "title": title, "ltcTimecode": f"10:00:{10 * index:02}:00",
              "duration": 10,
              "guests": [{"id": new_id(), "name": "Léa", "mic": "HF 2", "iem": "Mix 3"}]}
             for index, title in enumerate(TITLES)]
    return {"id": new_id(), "name": "Concert d'été", "mics": ["HF 2"], "iems": ["Mix 3"],
            "songs": songs}


class TimecodeRunsTheShow(EndToEndTest):
    @explained
    def test_from_the_show_file_to_the_last_song(self):
        sound = Sound(self.stage, [INPUT])
        self.leave_unreadable_record()
        self.start_program()
        self.open_show_file()
        self.expect_unreadable_record_kept()
        self.open_stage_display()
        self.start_listening()
        self.play_and_watch(sound)
        self.step_by_hand()
        self.survive_a_kill()

    def leave_unreadable_record(self):
        self.record_path().parent.mkdir(parents=True)
        self.record_path().write_bytes(UNREADABLE)

    def expect_unreadable_record_kept(self):
        """The program has said nothing, and kept the bytes beside the record that it wrote."""
        kept = self.record_path().with_name("pavona_data_v1.illisible-1")
        self.assertEqual(kept.read_bytes(), UNREADABLE)
        self.assertEqual(len(self.stored_record()["shows"]), 1)

    def choose_admin(self):
        self.screen.find("push button", "Admin").press()
        self.screen.find("push button", "Nouveau show", 60)

    def open_show_file(self):
        path = self.stage.folder / "home" / "Concert.tessivo"
        path.write_text(json.dumps(show_record()), encoding="utf-8")
        self.choose_admin()
        self.screen.find(re.compile("menu.*"), "Fichier").click()
        self.screen.find("menu item", "Open...").click()
        self.screen.answer_file_dialog("Ouvrir un show", path)
        self.screen.find(None, "Concert d'été")
        self.screen.find("page tab", "Vue live").press()
        self.picture(MAIN, "1-opened")

    def open_stage_display(self):
        self.screen.find("push button", "Ouvrir l'affichage").press()
        _, _, width, _ = self.screen.window(MAIN).extents()
        self.screen.move_window(STAGE, width, 0)
        self.expect_current(0)
        self.picture(STAGE, "2-stage")

    def start_listening(self):
        chooser = self.screen.find("combo box", "Entrée audio")
        self.screen.find("push button", re.compile("Actualiser.*")).press()
        chooser.click()
        self.screen.find("list item", INPUT).click()
        self.screen.find("push button", "Démarrer la capture").press()
        self.screen.find("push button", "Arrêter la capture")
        self.expect_current(0)
        self.picture(MAIN, "3-listening")

    def play_and_watch(self, sound):
        """The first song is current from the start, so timecode moves the cursor twice."""
        player = sound.play(self.write_ltc("09:59:58:00", 25), INPUT)
        self.screen.find(None, re.compile(r"(09:59|10:00):\d\d:\d\d"))
        begin, used = time.monotonic(), self.program.cpu_seconds()
        for index in (1, 2):
            self.program.wait_for_line(self.advance_line(index))
            self.expect_current(index)
            self.picture(MAIN, f"4-song-{index + 1}")
            self.picture(STAGE, f"4-song-{index + 1}-stage")
        share = (self.program.cpu_seconds() - used) / (time.monotonic() - begin)
        self.note("processor while capturing", f"{100 * share:.1f} % of a core")
        self.note("resident", f"{self.program.resident_bytes() / 1e6:.0f} MB")
        self.assertEqual(player.wait(60), 0)
        moves = [line for line in self.program.lines() if line.startswith("LTC:")]
        self.assertEqual(moves, [self.advance_line(1), self.advance_line(2)])

    def step_by_hand(self):
        self.screen.focus_window(MAIN)
        self.screen.key("space")
        self.screen.window(MAIN).find(None, "Fin de la setlist")
        self.screen.window(STAGE).find(None, "Merci !")
        self.picture(MAIN, "5-finished")
        self.picture(STAGE, "5-finished-stage")
        # However long a key is held, it is one press: a hand that rests on it loses no song.
        self.screen.hold_key("Left", 3.0)
        self.expect_current(2)
        self.screen.key("Left")
        self.expect_current(1)
        self.screen.hold_key("space", 3.0)
        self.expect_current(2)

    def survive_a_kill(self):
        """Everything up to the last key press is still there after the program was killed."""
        before = self.stored_record()
        self.assertEqual(before["activeSongIndex"], 2)
        self.program.kill()
        self.start_program()
        self.choose_admin()
        self.screen.find("push button", "Concert d'été")
        self.assertEqual(self.stored_record(), before)

    def record_path(self):
        return self.stage.folder / "home" / ".config" / "tessivo" / "pavona_data_v1"

    def stored_record(self):
        """The record, once the store has brought the newest one to its place."""
        deadline = time.monotonic() + 20
        while list(self.record_path().parent.glob("*.recent-*")) and time.monotonic() < deadline:
            time.sleep(0.05)
        return json.loads(self.record_path().read_text(encoding="utf-8"))

    def expect_current(self, index):
        """Waits until the song is the current one on the live screen and on the stage."""
        for title in (STAGE, MAIN):
            self.screen.window(title).find("heading", TITLES[index])
        self.screen.window(MAIN).find(None, f"● En cours — morceau {index + 1}/{len(TITLES)}")

    @staticmethod
    def advance_line(index):
        return f"LTC: ✅ avance vers morceau {index} '{TITLES[index]}'"


if __name__ == "__main__":
    unittest.main()
