"""A show is prepared from nothing with keyboard and mouse, run, kept and deleted."""

import json
import unittest

import processes
from case import EndToEndTest, explained

MAIN = "Tessivo"
TITLES = [f"Morceau {number}" for number in range(1, 11)]
TITLE_FIELD = "Titre du morceau, puis Entrée…"


class PrepareAndRun(EndToEndTest):
    @explained
    def test_from_nothing_to_the_last_song(self):
        self.start_as_admin()
        self.screen.find(None, "Aucun show pour l'instant")
        self.picture(MAIN, "prepare-1-nothing")
        self.create_show()
        self.type_the_setlist()
        self.fill_in_the_first_song()
        self.add_a_microphone()
        self.reorder()
        self.run_by_keyboard()
        self.find_it_all_again()
        self.delete_it()

    def start_as_admin(self):
        self.start_program()
        self.screen.find("push button", "Admin").press()
        self.screen.find("push button", "Nouveau show")
        self.screen.focus_window(MAIN)

    def create_show(self):
        self.screen.find("push button", "Nouveau show").press()
        self.wait_for_keyboard(self.screen.find("text", "Nom du show"))
        self.screen.type("Concert de mai")
        self.screen.key("Return")
        self.screen.find("page tab", "Setlist")

    def type_the_setlist(self):
        self.screen.find("text", TITLE_FIELD).click()
        for title in TITLES:
            self.screen.type(title)
            self.screen.key("Return")
        self.expect_stored(lambda show: [song["title"] for song in show["songs"]] == TITLES)
        self.picture(MAIN, "prepare-2-setlist")

    def fill_in_the_first_song(self):
        self.screen.find("push button", "Déplier").press()
        for field, typed in (("Timecode LTC", "10000000"), ("Durée", "3:75")):
            self.screen.find("text", field).click()
            self.screen.type(typed)
            self.screen.key("Return")
        self.screen.find("push button", "Ajouter un guest").press()
        self.screen.find("text", "Nom de l'artiste").click()
        self.screen.type("Léa")
        self.screen.find("text", "Volume").click()
        self.screen.type(" -3 ")
        self.screen.key("Return")

        def is_filled_in(show):
            song = show["songs"][0]
            guest = {name: value for name, value in song["guests"][0].items() if name != "id"}
            return (song["ltcTimecode"], song["duration"]) == ("10:00:00:00", 255) and \
                guest == {"name": "Léa", "mic": "Guest 1", "iem": "Générique", "volume": "-3"}
        self.expect_stored(is_filled_in)
        self.picture(MAIN, "prepare-3-song")
        self.screen.find("push button", "Replier").press()

    def add_a_microphone(self):
        self.screen.find("page tab", "Micros & IEM").press()
        self.screen.find("text", "Ex: HF 5, Guest 5…").click()
        self.screen.type("  HF 5 ")
        self.screen.key("Return")
        self.expect_stored(lambda show: show["mics"][-1] == "HF 5")
        self.picture(MAIN, "prepare-4-labels")
        self.screen.find("page tab", "Setlist").press()

    def reorder(self):
        """The first song goes below the third by mouse, then back by keyboard."""
        rows = [self.title_at(index) for index in range(3)]
        x, y = rows[0].centre()
        left = rows[0].extents()[0] - 20
        self.stage.run("xdotool", "mousemove", str(left), str(y), "mousedown", "1")
        target = rows[2].centre()[1] + 8
        for step in range(1, 11):
            self.stage.run("xdotool", "mousemove", str(left), str(y + (target - y) * step // 10))
        self.picture(MAIN, "prepare-5-dragging")
        self.stage.run("xdotool", "mouseup", "1")
        moved = [TITLES[1], TITLES[2], TITLES[0], *TITLES[3:]]
        self.expect_stored(lambda show: [song["title"] for song in show["songs"]] == moved)
        self.title_at(2).click()
        self.screen.key("alt+Up")
        self.screen.key("alt+Up")
        self.expect_stored(lambda show: [song["title"] for song in show["songs"]] == TITLES)
        # The keyboard is still where it was, in the title of the moved song.
        self.screen.key("End")
        self.screen.type(" bis")
        self.expect_stored(lambda show: show["songs"][0]["title"] == TITLES[0] + " bis")

    def run_by_keyboard(self):
        self.screen.find("page tab", "Vue live").press()
        self.screen.find("heading", TITLES[0] + " bis")
        self.picture(MAIN, "prepare-6-live")
        for title in TITLES[1:]:
            self.screen.key("space")
            self.screen.find("heading", title)
        self.screen.key("Left")
        self.screen.find("heading", TITLES[-2])
        self.screen.key("space", "space")
        self.screen.find(None, "Fin de la setlist")

    def find_it_all_again(self):
        self.program.stop()
        self.start_as_admin()
        self.screen.find("push button", "Concert de mai").press()
        self.title_at(0)
        self.assertEqual([self.title_at(index).text for index in range(5)],
                         [TITLES[0] + " bis", *TITLES[1:5]])

    def delete_it(self):
        self.screen.find("push button", "Retour à tous les shows").press()
        self.screen.find("push button", "Supprimer ce show").press()
        self.screen.find(None, "Cette action supprimera le show et toute sa setlist.")
        self.picture(MAIN, "prepare-7-delete")
        self.screen.find("push button", "Supprimer").press()
        self.screen.find(None, "Aucun show pour l'instant")
        processes.wait_until(lambda: self.stored_shows() == [], "the empty record")

    def title_at(self, index):
        """The field of that song's title, counted from the top."""
        def look():
            fields = [element for element in self.screen.descendants()
                      if element.role == "text" and element.name == "Titre du morceau"]
            return fields[index] if len(fields) > index else None
        return processes.wait_until(look, f"title {index}")

    def wait_for_keyboard(self, element):
        processes.wait_until(lambda: "focused" in element.states(), f"the keyboard in {element}")

    def stored_shows(self):
        path = self.stage.folder / "home" / ".config" / "tessivo" / "pavona_data_v1"
        return json.loads(path.read_text(encoding="utf-8"))["shows"] if path.exists() else None

    def expect_stored(self, condition):
        def holds():
            shows = self.stored_shows()
            try:
                return bool(shows) and condition(shows[0])
            except (IndexError, KeyError):
                return False
        processes.wait_until(holds, "the record to hold what was done")


if __name__ == "__main__":
    unittest.main()
