"""Cuts networks for as long as told to, and tells how long a station takes to show the admin's song
once they are whole again.

    /usr/bin/python3 bench/drill/cuts.py [SECONDS ...]

Each story has a network of its own, so that all are cut at once. It takes root, for the namespaces
that the computers are.
"""

import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

import processes  # noqa: E402
import shows  # noqa: E402
from person import Person  # noqa: E402
from scene import Scene  # noqa: E402

TITLES = ["Ouverture", "Nuit blanche", "Carrousel"]
SEARCHING = "Recherche d'un admin sur le réseau…"
#: For so long a station has time to be found again, in seconds: Avahi asks once an hour at least.
PATIENCE = 3700


class Story:
    """An admin, a station that follows it, and a network that is cut and made whole again."""

    def __init__(self, scene):
        self.scene = scene
        self.switch = scene.add_switch()
        self.desk = self.switch.add_host("regie")
        self.stage = self.switch.add_host("plateau")
        self.station = Person(scene, self.stage)
        self.station.press("Affichage")
        self.begin()

    def begin(self):
        self.admin = self.lead(self.desk)
        self.station.see(TITLES[0], "heading")

    def lead(self, host):
        admin = Person(self.scene, host)
        admin.press("Admin")
        admin.see("Nouveau show", "push button")
        path = self.scene.stage.folder / "Concert.tessivo"
        admin.open_show(shows.write(path, shows.show("Concert", TITLES)), TITLES[0])
        return admin

    def cut(self):
        self.switch.power(False)

    def meanwhile(self):
        """What happens during the cut, so that the station has something new to show."""
        self.admin.key("space")

    def mend(self):
        self.switch.power(True)

    def end(self):
        for person in (self.admin, self.station):
            person.program.stop()
        self.switch.remove()

    def shows_it(self, look):
        return look.song == TITLES[1] and not look.tells


class OwnCable(Story):
    """the station's own cable"""

    def cut(self):
        self.stage.plug(False)

    def mend(self):
        self.stage.plug(True)


class AdminsCable(Story):
    """the admin's cable"""

    def cut(self):
        self.desk.plug(False)

    def mend(self):
        self.desk.plug(True)


class BehindTheSwitch(Story):
    """the switch between them"""


class Restarted(Story):
    """the switch, and the admin is killed and opened again meanwhile"""

    def meanwhile(self):
        self.admin.program.kill()
        time.sleep(2)
        self.admin = self.lead(self.desk)
        self.admin.key("space")


class Replaced(Story):
    """the switch, and another computer leads on meanwhile"""

    def meanwhile(self):
        self.admin.program.stop()
        self.admin = self.lead(self.switch.add_host("secours"))
        self.admin.key("space")


class Searching(Story):
    """the switch, while the station searches; the admin starts meanwhile"""

    def begin(self):
        self.station.see(SEARCHING)

    def meanwhile(self):
        self.admin = self.lead(self.desk)
        self.admin.key("space")


STORIES = (OwnCable, AdminsCable, BehindTheSwitch, Restarted, Replaced, Searching)


def seconds_until_shown(scene, stories):
    """From now on, of each story."""
    whole = time.monotonic()
    for name, story in stories.items():
        scene.watcher.watch(name, story.station.program.pid)
    result = {}

    def all_shown():
        for name, look in scene.watcher.take():
            if name not in result and stories[name].shows_it(look):
                result[name] = look.at - whole
                scene.watcher.forget(name)
        return len(result) == len(stories)

    processes.wait_until(all_shown, "the stations", PATIENCE)
    return result


def cut_for(scene, seconds):
    stories = {kind.__name__: kind(scene) for kind in STORIES}
    for story in stories.values():
        story.cut()
    end = time.monotonic() + seconds
    for story in stories.values():
        story.meanwhile()
    time.sleep(max(0.0, end - time.monotonic()))
    for story in stories.values():
        story.mend()
    result = seconds_until_shown(scene, stories)
    for story in stories.values():
        story.end()
    return result


def main():
    durations = [int(word) for word in sys.argv[1:]] or [60, 200, 300, 900]
    with Scene() as scene:
        columns = [cut_for(scene, seconds) for seconds in durations]
    print("| what is cut | " + " | ".join(f"{seconds} s" for seconds in durations) + " |")
    print("|---" * (1 + len(durations)) + "|")
    for kind in STORIES:
        figures = " | ".join(f"{column[kind.__name__]:.1f}" for column in columns)
        print(f"| {kind.__doc__} | {figures} |")


if __name__ == "__main__":
    main()
