"""The sound server dies, comes back and hangs, and the show goes on."""

import signal
import time
import unittest

import processes
import shows
from case import EndToEndTest, explained
from sound import Sound

INPUT = "Timecode LTC"
TITLES = ["Ouverture", "Nuit blanche", "Carrousel"]
STARTS = ["10:00:00:00", "10:01:00:00", "10:02:00:00"]
DEAD = f"Plus de son reçu de « {INPUT} »."


class SoundDies(EndToEndTest):
    def setUp(self):
        self.sound = Sound(self.stage, [INPUT])
        super().setUp()
        show = shows.show("Concert", TITLES)
        for song, start in zip(show["songs"], STARTS):
            song["ltcTimecode"] = start
        self.admin = self.start_admin()
        self.admin.open_show(shows.write(self.stage.folder / "concert.tessivo", show), TITLES[0])
        self.admin.start_capture(INPUT)

    @explained
    def test_the_next_song_starts_whatever_became_of_the_server(self):
        self.play("10:00:57:00")
        self.admin.see(TITLES[1], "heading")
        self.sound.kill_server()
        self.note("from the server's death to the sentence", self.admin.seconds_until(DEAD))
        self.admin.see("Pas de signal LTC")
        self.picture_of(self.admin, "sound-dead-input")
        time.sleep(5)
        self.sound.start_server()
        self.play("10:01:50:00")
        self.admin.see(TITLES[2], "heading")
        self.assertIsNone(self.admin.screen().look(None, DEAD))

        self.sound.server.send_signal(signal.SIGSTOP)
        self.note("from the server's standstill to the sentence", self.admin.seconds_until(DEAD))
        for button in ("Actualiser la liste des entrées audio", "Arrêter la capture",
                       "Démarrer la capture"):
            self.admin.press(button)
            for key, title in (("Left", TITLES[1]), ("space", TITLES[2])):
                self.admin.to_front()
                x, y, width, height = self.admin.screen().find("heading").extents()
                def picture():
                    return self.stage.screen_bytes(x, y + height // 2, width)  # noqa: B023
                before, begin = picture(), time.monotonic()
                self.screen.key(key)
                # A screen that waits for the server answers after a minute, or never.
                processes.wait_until(lambda: picture() != before, title, 10, 0.0005)  # noqa: B023
                answer = time.monotonic() - begin
                self.admin.screen().find("heading", title, 10)
                self.note(f"{button}, then {key}", f"{answer * 1000:.0f} ms, with xdotool's start")
        self.admin.see("Échec de création de l'AUHAL (status -110).")
        self.sound.server.send_signal(signal.SIGCONT)
        self.admin.press("Démarrer la capture")
        self.admin.see("Signal LTC présent")

    def play(self, start):
        self.sound.play(self.write_ltc(start, 40), INPUT)


if __name__ == "__main__":
    unittest.main()
