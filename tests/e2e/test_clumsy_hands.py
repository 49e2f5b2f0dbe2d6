"""Two hundred things that nobody means to do, drawn from a seed: TESSIVO_SEED=7 plays others."""

import json
import os
import random
import time
import unittest

import processes
import shows
from case import EndToEndTest, explained

SIZES = ((720, 544), (1000, 600), (1180, 820), (1280, 680))
#: What is opened over the live screen, by key or by click, and what is pressed while it is open.
COVERS = {"Concert": "x Left Tab space", "Entrée audio": "Left x Up space",
          "F10": "Left x Right", "alt+d": "Right Left", "alt+n": "x Left"}


class ClumsyHands(EndToEndTest):
    @explained
    def test_nothing_surprises_the_operator(self):
        seed = int(os.environ.get("TESSIVO_SEED", "1"))
        self.random, done = random.Random(seed), []
        self.size, self.moves, self.removals, self.words = (1180, 820), 0, 0, []
        concert = shows.show("Concert", [f"Chanson {number}" for number in range(1, 15)])
        self.admin = self.start_admin()
        self.admin.open_show(shows.write(self.stage.folder / "1.tessivo", concert), "Chanson 1")
        self.admin.to_front()
        self.tabs = [self.admin.screen().find("page tab", name).centre()
                     for name in ("Setlist", "Micros & IEM", "Vue live")]
        actions = ([self.step, self.type] * 3 + [self.cover, self.drag, self.turn] * 2 +
                   [self.fidget] * 3 + [self.jump, self.remove, self.undo])
        try:
            for number in range(200):
                action = self.random.choice(actions)
                done.append(action.__name__)
                action()
                processes.wait_until(lambda: self.moved() >= self.moves, "the cursor to move")
                self.assertEqual(self.moved(), self.moves)
                if number % 20 == 0:
                    processes.wait_until(self.admin.screen().has_focus, "the keyboard to be there")
            self.take_all_back_and_make_it_again()
        except BaseException:
            self.note(f"with TESSIVO_SEED={seed}", done)
            raise
        self.assertEqual(self.admin.program.lines(), [])  # no warning either

    # What hands do, whatever the ones before have left.

    def turn(self, tab=None):
        self.click(self.random.choice(self.tabs) if tab is None else self.tabs[tab])

    def step(self):
        self.turn(2)
        key, cursor = self.random.choice(("space", "Left")), self.stored()["activeSongIndex"]
        self.moves += cursor < len(self.songs()) if key == "space" else cursor > 0
        self.screen.key(key)

    def jump(self):
        self.turn(2)
        self.moves += self.double_click("label", "Aller à ce morceau →", 160)

    def remove(self):
        before = len(self.songs())
        self.turn(0)
        if before > 6 and self.double_click("push button", "Supprimer le morceau"):
            processes.wait_until(lambda: len(self.songs()) < before, "the song to go")
            self.assertEqual(len(self.songs()), before - 1)
            self.removals += 1

    def cover(self):
        self.turn(2)
        opened = self.random.choice(list(COVERS))
        if opened in ("Concert", "Entrée audio"):
            self.click(self.admin.screen().find(None, opened).centre())
        else:
            self.screen.key(opened)
        self.screen.key(*COVERS[opened].split(), "Escape")

    def type(self):
        self.turn(0)
        entry = self.size[0] // 2, self.size[1] - 40
        title = self.in_view("text", "Titre du morceau")
        self.click(self.random.choice((entry, title.centre() if title else entry)))
        self.words.append(f"mot{len(self.words)}q")
        self.screen.type(self.words[-1])
        self.screen.key(self.random.choice(("Return", "Tab", "Escape", "space")))

    def drag(self):
        self.turn(0)
        if title := self.in_view("text", "Titre du morceau"):
            handle, y = title.extents()[0] - 14, title.centre()[1]
            for down, action in ((0, ["mousedown", "1"]), (20, []), (60, []), (140, [])):
                self.screen.mouse(handle, y + down, *action)
            self.screen.key("Escape")
            self.screen.mouse(handle, y + 90, "mouseup", "1")

    def fidget(self):
        self.click((300, self.size[1] // 2), "--repeat", "3", button=self.random.choice("45"))
        self.size = self.random.choice((self.size, *SIZES))
        self.screen.resize_program(self.admin.program.pid, "Tessivo", *self.size)

    def undo(self):
        self.turn(2)
        if self.removals > 2:
            self.removals -= 2
            self.screen.key("ctrl+z", "ctrl+z", *self.random.choice(([], ["ctrl+shift+z"])))

    def take_all_back_and_make_it_again(self):
        self.turn(2)
        self.screen.key(*["ctrl+shift+z"] * 40)
        self.turn(1)
        self.admin.see("🎧 IEM disponibles")  # so all that came before has been done
        self.turn(2)
        shown = self.stored()["shows"]
        text = json.dumps(shown)
        self.assertEqual([word for word in self.words if text.count(word) > 1], [])
        for key, wanted in ("ctrl+z", []), ("ctrl+shift+z", shown):
            processes.wait_until(lambda: self.screen.key(*[key] * 20) or
                                 self.stored()["shows"] == wanted, f"the end of {key}")
        self.admin.press("Concert")

    # How it is done, and what comes of it.

    def click(self, place, *options, button="1"):
        self.screen.mouse(*place, "click", "--delay", "5", *options, button)

    def double_click(self, *what):
        """False when there is none in view."""
        time.sleep(0.5)  # what has just come under the pointer takes no press
        if element := self.in_view(*what):
            self.click(element.centre(), "--repeat", "2", "--delay", "70")
        return element is not None

    def in_view(self, role, name, below=90):
        return next((element for element in self.admin.screen().descendants()
                     if (element.role, element.name) == (role, name)
                     and 140 < element.centre()[1] < self.size[1] - below), None)

    def moved(self):
        """How often the cursor was moved, as the journal tells it."""
        journal = self.desk.folder / ".local" / "state" / "tessivo" / "journal"
        text = "".join(day.read_text(encoding="utf-8") for day in journal.glob("*.txt"))
        return text.count(", par ")

    def songs(self):
        return self.stored()["shows"][0]["songs"]


if __name__ == "__main__":
    unittest.main()
