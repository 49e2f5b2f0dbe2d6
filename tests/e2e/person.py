"""Someone at one of several computers."""

import re
import time

import processes
from program import Program

MAIN = "Tessivo"


class Person:
    """Someone at one of the computers."""

    def __init__(self, test, host, **environment):
        self._test = test
        self._host = host
        self.program = Program(test.stage, test.programs / "tessivo", host, **environment)
        test.addCleanup(self.program.stop)
        self._screen = test.screen.program(self.program)

    def screen(self):
        return self._screen

    def see(self, text, role=None):
        self._screen.find(role, text, 60)

    def seconds_until(self, text):
        begin = time.monotonic()
        self.see(text)
        return f"{time.monotonic() - begin:.1f} s"

    def see_line(self, pattern):
        """What the live screen says of the timecode line."""
        def says():
            line = self._screen.look(None, "État de la ligne")
            return line and re.fullmatch(pattern, line.description)
        processes.wait_until(says, f"the line to say {pattern}", 60)

    def press(self, name, role="push button"):
        self._screen.find(role, name).press()

    def to_front(self):
        self._test.screen.focus_program(self.program.pid, MAIN)

    def key(self, name):
        self.to_front()
        self._test.screen.key(name)

    def choose_role(self, column, role):
        """On the import screen, by mouse: the wheel brings the column's row above the table."""
        box = self._screen.find("combo box", f"Colonne {column}")
        table = self._screen.find("table")
        places = []

        def stands_in_view():
            x, y, _, height = box.extents()
            below = table.extents()[1] - 60  # where the table's head and the room over it begin
            places.append(y)
            if y + height > below:
                self._test.screen.mouse(x, below - 20, "click", "5")
            return y + height <= below and places[-2:] == [y, y]

        processes.wait_until(stands_in_view, f"column {column} to be in view")
        box.click()
        self._screen.find("list item", role).click()

    def start_capture(self, name):
        """On the live screen, from the input of that name."""
        self.press("Actualiser la liste des entrées audio")
        self._screen.find("combo box", "Entrée audio").click()
        self._screen.find("list item", name).click()
        self.press("Démarrer la capture")

    def open_show(self, path, first_title):
        self.key("ctrl+o")
        self._test.screen.answer_file_dialog("Ouvrir un show", path)
        self._see_live(first_title)

    def open_from_desktop(self, path, first_title):
        """By a double click on the file, which starts the program once more with its name."""
        self._host.run(self._test.programs / "tessivo", path)
        self._see_live(first_title)

    def _see_live(self, first_title):
        self._screen.find("page tab", "Vue live").press()
        self.see(first_title, "heading")
