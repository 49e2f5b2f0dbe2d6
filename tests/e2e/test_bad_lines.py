"""Timecode on the seventh of eight channels, with music on all of them, then with pauses full of
noise, then backwards, then from an output that is taken away: what the panel says, and which songs
start.

TESSIVO_RESTARTS says how often playback starts anew over the noise (10)."""

import math
import os
import random
import unittest
from array import array

import shows
from case import EndToEndTest, explained
from sound import RATE, Sound, read_wav, write_wav

INPUT, OTHER = "Interface 8×8", "Retour plateau"
CHANNELS, CHANNEL = 8, 7
#: Songs that are played through, and songs that playback starts at one by one.
PLAYED = ["10:00:58:00", "10:01:02:15", "10:01:06:29", "10:01:11:02"]
ASKED = [f"{11 + minute // 60}:{minute % 60:02}:00:02" for minute in range(0, 80, 4)]
RESTARTS = int(os.environ.get("TESSIVO_RESTARTS", "10"))
TITLES = [f"Morceau {number}" for number in range(1, len(PLAYED + ASKED) + 1)]
DEAD = f"Plus de son reçu de « {INPUT} »."


def music(seconds, level):
    """Notes in three voices that die away, at that effective level."""
    chance = random.Random(1)
    samples = [0.0] * (RATE * seconds)
    for _ in range(3 * 4 * seconds):
        pitch = 110 * 2 ** (chance.randrange(36) / 12) * 2 * math.pi / RATE
        start = chance.randrange(len(samples) - RATE // 2)
        for i in range(RATE // 2):
            samples[start + i] += math.exp(-i / 8000) * (math.sin(pitch * i)
                                                         + math.sin(2 * pitch * i) / 2)
    gain = level / math.sqrt(sum(sample * sample for sample in samples) / len(samples))
    return array("h", (int(max(-1, min(1, sample * gain)) * 32767) for sample in samples))


def effective(samples):
    return math.sqrt(sum(sample * sample for sample in samples) / len(samples)) / 32768


class BadLines(EndToEndTest):
    def setUp(self):
        self.sound = Sound(self.stage, [INPUT, OTHER], CHANNELS)
        super().setUp()
        show = shows.show("Concert", ["Avant", *TITLES])
        for song, start in zip(show["songs"][1:], PLAYED + ASKED):
            song["ltcTimecode"] = start
        self.admin = self.start_admin()
        self.admin.open_from_desktop(
            shows.write(self.stage.folder / "concert.tessivo", show), "Avant")
        self.admin.start_capture(INPUT)

    @explained
    def test_only_the_songs_asked_for_start_and_the_panel_says_what_comes(self):
        self.through_music()
        self.restart_over_noise()
        self.run_backwards()
        self.lose_the_output()

    def through_music(self):
        timecode = self.ltc("10:00:28:00", 45)
        beside = music(5, effective(timecode) / 4)  # 12 dB less
        beside = (beside * (len(timecode) // len(beside) + 1))[:len(timecode)]
        self.play(array("h", (max(-32768, min(32767, one + other))
                              for one, other in zip(timecode, beside))), beside)
        self.admin.press(f"Décoder le canal {CHANNEL}")
        self.admin.see_line(r"29,97 DF · 100 % · .* · en marche · .*")
        self.admin.press("Suivi prudent", "check box")
        self.admin.press("Compter à 29,97 DF")
        for title in TITLES[:len(PLAYED)]:
            self.admin.see(title, "heading")
        self.picture_of(self.admin, "line-through-music")
        self.admin.see_line(r".* · à l'arrêt · .*")
        self.assertEqual(self.moves(), list(range(1, len(PLAYED) + 1)))

    def restart_over_noise(self):
        """Playback starts anywhere within a frame, and the pauses are noise 50 dB below it."""
        chance = random.Random(2)
        before = self.moves()
        noise = [round(chance.gauss(0, 73)) for _ in range(RATE)]
        line, asked = array("h", noise), []
        while len(asked) < RESTARTS:
            song = chance.randrange(len(ASKED))
            if asked[-1:] == [song]:
                continue
            asked.append(song)
            line += self.ltc(ASKED[song], 0.7)[chance.randrange(1600):]
            line += array("h", noise[:chance.randrange(RATE // 4, RATE)])
        for i, sample in enumerate(line):
            line[i] = max(-32768, min(32767, sample + noise[i * 7 % RATE]))
        self.play(line).wait()
        asked = [song + len(PLAYED) + 1 for song in asked]
        self.admin.see(TITLES[asked[-1] - 1], "heading")
        self.assertEqual(self.moves(), before + asked)

    def run_backwards(self):
        before = self.moves()
        timecode = self.ltc(PLAYED[0], 5)
        timecode.reverse()
        self.play(timecode)
        self.admin.see_line(r"(.* · )?à l'envers, pas suivi · .*")
        self.picture_of(self.admin, "line-backwards")
        self.assertEqual(self.moves(), before)

    def lose_the_output(self):
        self.sound.remove_output(INPUT)
        self.note("from the output's end to the sentence", self.admin.seconds_until(DEAD))
        self.sound.add_output(INPUT)
        self.play(self.ltc("10:00:50:00", 20))
        self.admin.see(TITLES[0], "heading")
        self.assertIsNone(self.admin.screen().look(None, DEAD))

    def ltc(self, start, seconds):
        return read_wav(self.write_ltc(start, seconds, "29.97df"))

    def play(self, samples, beside=None):
        """On the decoded channel; `beside` on the others."""
        beside = beside or array("h", bytes(2 * len(samples)))
        channels = [samples if number == CHANNEL else beside for number in range(1, CHANNELS + 1)]
        path = self.stage.folder / "line.wav"
        write_wav(path, channels)
        return self.sound.play(path, INPUT)

    def moves(self):
        """Where timecode moved the cursor so far."""
        return [int(line.split()[5]) for line in self.admin.program.lines()
                if line.startswith("LTC:")]


if __name__ == "__main__":
    unittest.main()
