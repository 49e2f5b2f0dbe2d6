"""Someone at one of several computers."""

from program import Program

MAIN = "Tessivo"


class Person:
    """Someone at one of the computers."""

    def __init__(self, test, host):
        self._test = test
        self.program = Program(test.stage, test.programs / "tessivo", host)
        test.addCleanup(self.program.stop)
        self._screen = test.screen.program(self.program.pid)

    def screen(self):
        return self._screen

    def see(self, text, role=None):
        self._screen.find(role, text, 60)

    def press(self, name, role="push button"):
        self._screen.find(role, name).press()

    def to_front(self):
        self._test.screen.focus_program(self.program.pid, MAIN)

    def key(self, name):
        self.to_front()
        self._test.screen.key(name)

    def open_show(self, path, first_title):
        self.key("ctrl+o")
        self._test.screen.answer_file_dialog("Ouvrir un show", path)
        self._screen.find("page tab", "Vue live").press()
        self.see(first_title, "heading")
