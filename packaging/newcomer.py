"""Someone who has just installed the program: `chapter` follows the guide's first chapter to the
letter, `files` opens shows as a file manager does. The program runs below /mnt, on a bare Debian;
the screen, the buses and this script are outside, so nothing of theirs is there to help it."""

import re
import sys
import time
from contextlib import ExitStack
from pathlib import Path

import processes
import shows
from person import MAIN, Person
from stage import Stage

DEBIAN, SOURCES, PICTURES = Path("/mnt"), Path("/srv"), Path("/media")
HOME = Path("/home/regie")
STAGE = "Tessivo — Affichage"
TITLES = ["Ouverture", "Les lumières du port", "Nuit blanche"]
KEYS = {"Entrée": "Return", "Espace": "space", "←": "Left"}  # others are called alike on X
#: What the chapter's steps have one do: a button, a key, or a thing that has no button.
NAMED = re.compile(r"\*\*(.+?)\*\*|`(.+?)`|\b(ligne|guests|durée|timecode)\b")


class Desk:
    """What a person of the end-to-end tests wants of a computer, and of a test."""

    programs = Path("/usr/bin")

    def __init__(self, stage, screen, stack):
        self.stage, self.screen, self.addCleanup = stage, screen, stack.callback
        self.environment = {name: value for name, value in stage.environment.items()
                            if not re.match("XDG_(CONFIG|DATA|CACHE)_", name)}
        self.environment |= {"HOME": str(HOME), "TMPDIR": "/tmp", "QT_QUICK_BACKEND": "software",
                             "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def command(self, *command):
        """In a user namespace of its own also an ordinary user may change the root."""
        return ["unshare", "--user", "--map-current-user", f"--root={DEBIAN}", f"--wd={HOME}",
                *map(str, command)]


def passed(what):
    print(f"passed: {what}", flush=True)


class Newcomer(Person):
    def __init__(self, desk):
        super().__init__(desk, desk)
        self._desktop, self._stage = desk.screen, desk.stage

    def follow_chapter(self):
        """Each deed is done once the chapter's next button or key is pressed, and expects what follows."""
        deeds = [self.see_no_shows, self.name_show, self.type_title, self.add_songs,
                 self.open_row, self.add_guest, self.set_length, self.type_timecode, self.see_timecode,
                 self.drag_stage, self.fill_screen, self.see_first, self.see_second, self.see_first]
        chapter = (SOURCES / "docs" / "guide" / "01-prise-en-main.md").read_text(encoding="utf-8")
        steps = re.search(r"^## Ton premier show.*?\n\n(.*?)\n\n", chapter, re.M | re.S).group(1)
        named = NAMED.findall(steps)
        if len(named) != len(deeds):
            raise AssertionError(f"other steps than those followed here: {[*map(''.join, named)]}")
        for number, ((button, key, thing), deed) in enumerate(zip(named, deeds), 1):
            if button:
                self.click(button, re.compile("push button|page tab"))
            elif key:
                self._desktop.key(KEYS.get(key, key))
            deed()
            self._stage.picture(PICTURES / f"{number:02}-{deed.__name__}.png")
            passed(f"the chapter's « {button or key or thing} »: {deed.__name__.replace('_', ' ')}")

    def leave(self):
        self.key("alt+F4")
        processes.wait_until(self.program.ended, "the program to end")
        said = [*self.program.lines(), self._stage.log("program").read_text(encoding="utf-8")]
        if self.program.stop() != 0 or said != [""]:
            raise AssertionError(f"the program ends with complaints: {said}")
        passed("the program ends without a complaint")

    def click(self, name, role="push button"):
        element = self.screen().find(role, name)
        time.sleep(0.6)  # what has just come under the pointer takes no press
        element.click()

    def type(self, *texts):
        for text in texts:
            self._desktop.type(text)
            self._desktop.key("Return")

    def see_field(self, name, text):
        processes.wait_until(lambda: any((element.role, element.name) == ("text", name) and
                                         element.text == text for element in self.screen().descendants()),
                             f"{name} to be {text}")

    # The deeds, in the chapter's order.

    def see_no_shows(self):
        self.see("Aucun show pour l'instant")

    def name_show(self):
        self.see("Nom du show")
        self.type("Mon premier show")
        self.see("Mon premier show", "push button")

    def type_title(self):
        self.see("Ajoute ton premier morceau ci-dessous ↓")
        self._desktop.type(TITLES[0])

    def add_songs(self):
        self.type(*TITLES[1:])
        for title in TITLES:
            self.see_field("Titre du morceau", title)

    def open_row(self):
        self.click("Déplier")

    def add_guest(self):
        self.click("Ajouter un guest")
        self.type("Léa")
        self.see_field("Nom de l'artiste", "Léa")

    def set_length(self):
        self.click("Durée", "text")
        self.type("3:45")
        self.see_field("Durée", "3:45")

    def type_timecode(self):
        self.click("Timecode LTC", "text")
        self._desktop.type("00143200")

    def see_timecode(self):
        self.see_field("Timecode LTC", "00:14:32:00")

    def drag_stage(self):
        window = self._desktop.window(STAGE)
        x, y, width, height = window.extents()
        frame = x + width // 2, y - 10
        self._desktop.mouse(*frame, "mousedown", "1")
        for step in range(1, 6):
            self._desktop.mouse(frame[0] + 40 * step, frame[1] + 20 * step)
        self._desktop.mouse(frame[0] + 200, frame[1] + 100, "mouseup", "1")
        processes.wait_until(lambda: window.extents() == (x + 200, y + 100, width, height), "it to follow")

    def fill_screen(self):
        """And back: there is only this screen, and the operator's window is on it, too."""
        whole, window = (0, 0, self._stage.width, self._stage.height), self._desktop.window(STAGE)
        processes.wait_until(lambda: window.extents() == whole, "F11 to fill the screen")
        self._stage.picture(PICTURES / "full-screen.png")
        self._desktop.key("F11")
        processes.wait_until(lambda: window.extents() != whole, "F11 to take it back")
        self.to_front()

    def see_first(self):
        self.see_song(TITLES[0])

    def see_second(self):
        self.see_song(TITLES[1])

    def see_song(self, title):
        self.see(title, "heading")
        self._desktop.window(STAGE).find("heading", title)


def open_files(desk):
    """The first file starts the program, the second goes to the one that runs."""
    for name in ("Été à l'Olympia", "Bis"):
        file = HOME / f"{name}.tessivo"
        shows.write(DEBIAN / file.relative_to("/"), shows.show(name, [f"{name} 1"]))
        kind = stage.run(*desk.command("gio", "info", "-a", "standard::content-type", file))
        if "application/vnd.tessivo.show+json" not in kind:
            raise AssertionError(f"a file manager takes {file} for {kind}")
        opening = processes.start(desk.command("gio", "open", file), stage.log("gio"), desk.environment)
        processes.wait_until(lambda: opening.poll() == 0, f"{file} to be opened")
        window = desk.screen.window(MAIN)
        if name != "Bis":
            window.find("push button", "OK").click()
            time.sleep(0.6)
            window.find("push button", "Admin").click()
        window.find("push button", name)
        window.find("text", "Titre du morceau")
        stage.picture(PICTURES / f"file {name}.png")
        passed(f"a file manager opens {file}")
    if len([window for program in desk.screen.children() for window in program.children()]) != 1:
        raise AssertionError("the second file has a window of its own")
    passed("the second show opens in the program that runs")


with Stage() as stage, ExitStack() as stack:
    from screen import Screen  # connects to the bus of the stage, so only now
    manager = stage.folder / "jwm.xml"
    manager.write_text('<JWM><Key mask="A" key="F4">close</Key></JWM>', encoding="utf-8")
    stage.start("jwm", ["jwm", "-f", str(manager)])
    stage.run("setxkbmap", "fr")
    desk = Desk(stage, Screen(stage), stack)
    try:
        if sys.argv[1] == "chapter":
            newcomer = Newcomer(desk)
            newcomer.follow_chapter()
            newcomer.leave()
        else:
            open_files(desk)
    except BaseException as error:
        stage.show_logs()
        stage.picture(PICTURES / "failed.png")
        sys.exit(f"{sys.argv[1]}: {error}")
