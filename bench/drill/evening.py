"""An evening on five computers: an admin, three stations and a spare, with a crew that plays a show
and helps itself as crews do, and a watcher of all screens."""

import json
import random
import re
import struct
import sys
import time

import processes
import shows
from person import Person
from scene import HERE, Scene
from sound import Sound
from verdict import Account, Look, Truth, right_since

INPUT = "Timecode LTC"
SEARCHING = "Recherche d'un admin sur le réseau…"
TAKE_OVER = "Reprendre la conduite ici"
CHANGE_MODE = "Changer de mode"
TITLES = [f"Chanson {number}" for number in range(1, 13)]
#: A record that couldn't be written is tried again; so long it may take, in seconds.
STORED_AFTER = 10.0
SONG_SECONDS = 1500  # long enough that no countdown ends


class Computer:
    """One of the five, with whoever sits there."""

    def __init__(self, evening, name):
        self.name = name
        self.host = evening.switch.add_host(name)
        self._evening = evening
        self._clock = self.host.folder / "clock"
        self.person = None
        self.set_clock(0.0)
        # A disk of its own, so that it can be full.
        config = self.host.folder / "config"
        config.mkdir()
        self.host.run("mount", "-t", "tmpfs", "-o", "size=4m", "tmpfs", config)

    def set_clock(self, seconds_ahead):
        with open(self._clock, "r+b" if self._clock.exists() else "wb") as file:
            file.write(struct.pack("d", seconds_ahead))

    def open(self):
        """Starts the program."""
        self.opened_at = time.monotonic()
        environment = {"LD_PRELOAD": str(self._evening.clock_library), "DRILL_CLOCK": str(self._clock)}
        self.person = Person(self._evening, self.host, **environment)
        self._evening.watcher.watch(self.name, self.person.program.pid)

    def stop(self):
        self._evening.watcher.forget(self.name)
        self.person.program.stop()

    def kill(self):
        self._evening.watcher.forget(self.name)
        self.person.program.kill()

    def cut_power(self):
        self.host.cut_power()
        self.kill()

    def shows(self, text, role=None):
        return self.person.screen().look(role, text)

    def stored_position(self):
        """The current song in the record, as a program that starts now would read it."""
        folder = self.host.inside / "config" / "tessivo"
        record = folder / "pavona_data_v1"
        newest = max(folder.glob(record.name + ".recent-*"), default=record)
        try:
            return json.loads(newest.read_text(encoding="utf-8"))["activeSongIndex"]
        except (FileNotFoundError, json.JSONDecodeError):
            return None


class Evening(Scene):
    def __init__(self, seed):
        super().__init__()
        self.random = random.Random(seed)

    def __enter__(self):
        super().__enter__()
        self.sound = Sound(self.stage, [INPUT])
        self.clock_library = self.stage.folder / "clock.so"
        self.stage.run("gcc", "-O1", "-shared", "-fPIC", "-o", self.clock_library, HERE / "clock.c",
                       "-lm")
        self.switch = self.add_switch()
        self.computers = [Computer(self, name)
                          for name in ("regie", "cour", "jardin", "face", "secours")]
        self.admin, *self.stations, self.spare = self.computers
        self.index, self.stepped_at, self.next_step = 0, 0.0, 0.0
        self.truth, self._looks = Truth(), {}
        self._begin()
        return self

    # What the crew does

    def _begin(self):
        show = shows.write(self.stage.folder / "Concert.tessivo",
                           shows.show("Concert", TITLES, SONG_SECONDS))
        self.admin.open()
        self.admin.person.press("Admin")
        self.admin.person.see("Nouveau show", "push button")
        self.admin.person.open_show(show, TITLES[0])
        for station in self.stations:
            self.open_station(station)
        self.spare.open()
        self.spare.person.see("Admin", "push button")
        self.play(3)
        self.account()  # nobody plays to screens that are being put up

    def open_station(self, computer):
        computer.open()
        computer.person.press("Affichage")
        self.count(computer)

    def add_station(self, computer):
        """One that was something else before."""
        self.stations.append(computer)
        self.open_station(computer)

    def reopen_admin(self):
        """What one does whose admin has vanished: the offered way back, or the long one."""
        self.admin.open()
        offer = self.admin.shows(re.compile(r"Reprendre\s:.*", re.DOTALL), "push button")
        if offer:
            self.admin.person.key("Return")
        else:
            self.become_admin(self.admin)
            self.admin.person.press("Concert")
            self.admin.person.press("Vue live", "page tab")
        self.admin.person.see(TITLES[self.index], "heading")

    def become_admin(self, computer):
        """As often as it takes."""
        while True:
            computer.person.press("Admin")
            processes.wait_until(lambda: computer.shows("Nouveau show", "push button") or
                                 computer.shows(CHANGE_MODE, "push button"), "an answer")
            if not computer.shows(CHANGE_MODE, "push button"):
                return
            computer.person.press(CHANGE_MODE)

    def take_over(self):
        """A station leads on in place of the admin. Gives back when that was decided."""
        successor = self.random.choice(self.stations)
        processes.wait_until(lambda: successor.shows(TAKE_OVER, "push button"), TAKE_OVER)
        self.ignore(successor)
        button = successor.person.screen().find("push button", TAKE_OVER)
        decided = time.monotonic()  # it may take a second to find a button by the accessibility bus
        button.press()
        self.stations.remove(successor)
        self.collect()
        self.admin = successor
        successor.person.see(TITLES[self.index], "heading")
        return decided

    def play(self, seconds):
        """Plays the show for a while: now and then the next song, or the one before."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            time.sleep(0.1)
            if time.monotonic() >= self.next_step:
                self.step()
                self.next_step = time.monotonic() + self.random.uniform(8, 20)

    def step(self):
        way = self.random.choice([way for way in (-1, 1)
                                  if 0 <= self.index + way < len(TITLES)])
        self.index += way
        self.stepped_at = time.monotonic()
        self.admin.person.key("space" if way > 0 else "Left")
        self.admin.person.screen().find("heading", TITLES[self.index], 10)

    def explain(self):
        """What every screen shows, for the reader of a drill that could not go on."""
        for computer in self.computers:
            shown = [str(element) for element in computer.person.screen().descendants()]
            print(computer.name, *shown, sep="\n  ", file=sys.stderr)

    # What is seen of it

    def count(self, computer):
        """From now on what its screen shows counts."""
        stretches = self._looks.setdefault(computer.name, [])
        if not stretches or stretches[-1] is None:
            stretches.append([])

    def ignore(self, computer):
        """Until it is counted again: it has no power, hangs, or leads."""
        self.collect()
        self._looks.setdefault(computer.name, []).append(None)

    def darken(self, computer):
        """Its program has ended, which nobody can see who asks programs."""
        self.collect()
        self._looks[computer.name][-1].append(Look(time.monotonic(), None, None, False))

    def collect(self):
        for name, look in self.watcher.take():
            if name == self.admin.name:
                self.truth.add(look)  # nothing is seen of one that hangs
            elif (self._looks.get(name) or [None])[-1] is not None:
                self._looks[name][-1].append(look)

    def account(self):
        """What the screens showed since the last account."""
        self.collect()
        result = Account()
        for name, stretches in self._looks.items():
            for looks in filter(None, stretches):
                result.judge(looks, self.truth)
            last = stretches[-1]
            self._looks[name] = [last[-1:] if last is not None else None]
        return result

    def losses(self):
        """What isn't as it would be without the fault."""
        self.collect()
        now = time.monotonic()
        song, remaining, _ = self.truth.at(now)
        countdown_fault = remaining - (SONG_SECONDS - (now - self.stepped_at))
        self.stepped_at += countdown_fault  # one fault is told once
        lost = []
        if song != TITLES[self.index]:
            lost.append("the song")
        if abs(countdown_fault) > 2.5:
            lost.append("the countdown")
        deadline = now + STORED_AFTER
        while self.admin.stored_position() != self.index and time.monotonic() < deadline:
            time.sleep(0.2)
        if self.admin.stored_position() != self.index:
            lost.append("the record")
        return lost

    def wait_until_right(self, seconds):
        """Plays on until all stations are; says whether they were in time."""
        deadline = time.monotonic() + seconds
        while self.right_since() is None and time.monotonic() < deadline:
            self.play(0.5)
        return self.right_since() is not None

    def right_since(self):
        """From when on all stations show what the admin leads; None when one doesn't."""
        self.collect()
        since = []
        for station in self.stations:
            looks = self._looks[station.name][-1] or []
            fresh = looks and looks[-1].at > time.monotonic() - 3
            since.append(right_since(looks, self.truth) if fresh else None)
        return None if None in since else max(since)
