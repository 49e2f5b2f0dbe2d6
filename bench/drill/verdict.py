"""What is to be thought of the screens of a stage, from what they were seen to show.

A screen is wrong when it says nothing of it, but shows another song than the admin leads, a countdown
that is off by more than a second, or an admin of which nothing has been heard for three seconds. It
is dark when it shows no song at all. Times are those of the monotonic clock, in seconds.
"""

import bisect
import dataclasses
import enum
import re

#: What says that a picture isn't, or may not be, the present.
TOLD = re.compile("Sans nouvelles de la régie|Recherche d'un admin|Connecté à l'admin|"
                  "Horloge de ce poste|Un autre admin conduit aussi")
COUNTDOWN = re.compile(r"(\d+):(\d\d)")
#: How far two looks that are taken for one moment may lie apart.
ONE_MOMENT = 1.0
#: A picture tells its age from three seconds on; the rest is the second between two messages, and
#: the way from an admin's screen to the eye.
UNTOLD_AGE = 3.0 + 1.5
#: Both screens show whole seconds, each by a tick of its own.
TOLERANCE = 2.2
#: For how long a screen is taken to show what it was last seen to show.
LONGEST_GAP = 3.0


class State(enum.Enum):
    RIGHT = "right"
    BEHIND = "behind"  # shows what was right so shortly before that it needn't say so
    TOLD = "told"
    WRONG = "wrong"
    DARK = "dark"


@dataclasses.dataclass(frozen=True)
class Look:
    """What a screen was seen to show at a moment."""
    at: float
    song: str | None
    remaining: int | None
    tells: bool

    @staticmethod
    def of(line):
        """From a line of the watcher."""
        countdown = next(filter(None, map(COUNTDOWN.fullmatch, line["texts"])), None)
        remaining = countdown and 60 * int(countdown[1]) + int(countdown[2])
        return Look((line["begin"] + line["end"]) / 2, line["heading"], remaining,
                    any(TOLD.match(text) for text in line["texts"]))


class Truth:
    """What the admin leads, as its own screen says."""

    def __init__(self):
        self._looks = []

    def add(self, look):
        if look.song and look.remaining is not None:
            self._looks.append(look)

    def at(self, moment):
        """The song, the seconds left if the countdown went on, and for how long it wasn't seen."""
        look = self._looks[bisect.bisect(self._looks, moment, key=lambda each: each.at) - 1]
        age = moment - look.at
        return look.song, look.remaining - age, age

    def state_of(self, look):
        if look.song is None:
            return State.DARK
        if look.tells:
            return State.TOLD
        if self._holds(look, ONE_MOMENT):
            return State.RIGHT
        return State.BEHIND if self._holds(look, UNTOLD_AGE) else State.WRONG

    def _holds(self, look, age):
        """Whether the admin showed the same, at most so long before. A station may show what the
        admin, whose screen couldn't be read for a while, is only next seen to show: the countdown
        says that it has shown it since."""
        first = bisect.bisect(self._looks, look.at - age, key=lambda each: each.at)
        last = bisect.bisect(self._looks, look.at + ONE_MOMENT, key=lambda each: each.at) + 1
        return look.remaining is not None and any(
            each.song == look.song and
            abs(max(0.0, each.remaining - (look.at - each.at)) - look.remaining) < TOLERANCE
            for each in self._looks[first:last])


class Account:
    """Seconds in each state, summed over screens, and how long one was dark at a time."""

    def __init__(self):
        self.seconds = dict.fromkeys(State, 0.0)
        self.unseen = 0.0
        self.longest_dark = 0.0
        self.faults = []  # what was seen when a screen was wrong

    def add(self, other):
        for state, seconds in other.seconds.items():
            self.seconds[state] += seconds
        self.unseen += other.unseen
        self.longest_dark = max(self.longest_dark, other.longest_dark)

    def judge(self, looks, truth):
        """Adds what one screen showed. Darkness lasts from one look to the next, another state only
        between two looks that both have it: screens don't change at one moment."""
        states = [truth.state_of(look) for look in looks]
        dark = 0.0
        for before, after, state, following in zip(looks, looks[1:], states, states[1:]):
            length = after.at - before.at
            dark = dark + length if state is State.DARK else 0.0
            self.longest_dark = max(self.longest_dark, dark)
            if state is State.WRONG:
                self.faults.append(f"{before}, but the admin: {truth.at(before.at)}")
            if state in (State.DARK, following):
                if length > LONGEST_GAP and state is not State.DARK:
                    self.unseen += length
                else:
                    self.seconds[state] += length

    def __str__(self):
        return ", ".join(f"{state.value} {seconds:.1f}" for state, seconds in self.seconds.items())


def right_since(looks, truth):
    """From when on a screen is right up to its last look; None when it isn't."""
    since = None
    for look in reversed(looks):
        if truth.state_of(look) is not State.RIGHT:
            break
        since = look.at
    return since
