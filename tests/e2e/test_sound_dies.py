"""The sound server dies, comes back and hangs, or the program dies, and the show goes on."""

import re
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
STAGE = "Tessivo — Affichage"
SEARCHING = "Recherche d'un admin sur le réseau…"
OFFER = re.compile("Reprendre\u00a0: Concert, morceau 2, reste .*")
# Once nobody takes the attempts that wait at the server, the next ones find no device at once.
HANGS = re.compile(r"Échec de création de l'AUHAL \(status -110\)\."
                   r"|Échec assignation du périphérique \(status -9996\)\.")
DEAD = f"Plus de son reçu de « {INPUT} »."


class SoundDies(EndToEndTest):
    def setUp(self):
        self.sound = Sound(self.stage, [INPUT])
        self.addCleanup(lambda: processes.stop(self.sound.server))
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
        self.admin.see(HANGS)
        self.sound.server.send_signal(signal.SIGCONT)
        self.admin.press("Démarrer la capture")
        self.admin.see("Signal LTC présent")

    @explained
    def test_one_return_brings_everything_back_when_the_program_is_killed(self):
        station = self.start(self.switch.add_host("plateau"))
        station.press("Affichage")
        self.play("10:00:58:00")
        self.admin.see(TITLES[1], "heading")
        self.admin.press("Ouvrir l'affichage")
        self.screen.window(STAGE).find("heading", TITLES[1])
        crashed, self.admin = self.admin, self.start(self.desk)
        self.admin.see("Admin", "push button")
        self.assertIsNone(self.admin.screen().look(None, OFFER))  # as long as the other one runs
        ends = [self.end_of_song(person) for person in (station, crashed)]
        crashed.program.kill()
        station.see(SEARCHING)
        self.admin.see(OFFER)
        self.admin.program.kill()
        self.admin = self.start(self.desk)
        self.admin.see(OFFER)
        self.picture_of(self.admin, "sound-resume")
        self.admin.key("Return")
        pressed = time.monotonic()
        self.admin.see("Signal LTC présent")
        self.note("from Return to timecode", f"{time.monotonic() - pressed:.1f} s")
        processes.wait_until(lambda: not station.screen().look(None, SEARCHING), "the station")
        self.screen.window(STAGE).find("heading", TITLES[1])
        self.note("from Return to everything", f"{time.monotonic() - pressed:.1f} s")
        for person, end in zip((station, self.admin), ends):
            person.see(TITLES[1], "heading")
            # Each was read from whole seconds.
            self.assertAlmostEqual(self.end_of_song(person), end, delta=2)

    def end_of_song(self, person):
        """When the countdown that somebody sees will be over."""
        left = person.screen().find(None, "Temps restant").description
        minutes, seconds = map(int, left.split(":"))
        return time.monotonic() + 60 * minutes + seconds

    def play(self, start):
        self.sound.play(self.write_ltc(start, 40), INPUT)


if __name__ == "__main__":
    unittest.main()
