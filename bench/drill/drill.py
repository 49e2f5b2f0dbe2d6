"""Plays an evening on five computers while a fault strikes every two minutes, and tells how long a
screen was wrong without saying so, or dark.

    /usr/bin/python3 bench/drill/drill.py [--minutes 60] [--every 120] [--seed 1] [--only FAULT]

What it prints is Markdown; docs/reliability.md holds it. It takes root, for the namespaces that the
computers are.
"""

import argparse
import random
import statistics
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

from evening import TITLES, Evening  # noqa: E402
from faults import FAULTS  # noqa: E402
from verdict import Account, State  # noqa: E402

#: From the end of a fault on, in seconds, all screens have time to be right again.
PATIENCE = 60


class Record:
    """What became of each stroke of a fault."""

    def __init__(self):
        self.accounts, self.recoveries, self.lost = [], [], []


def strike(evening, fault, record):
    course = fault(evening)
    mended = next(course)
    if evening.wait_until_right(PATIENCE):
        record.recoveries.append(max(0.0, evening.right_since() - mended))
    else:
        record.lost.append("the stations")
    list(course)
    evening.wait_until_right(PATIENCE)
    record.lost += evening.losses()
    evening.play(2)
    record.accounts.append(evening.account())


def plan(seed, names):
    """Every fault once in each round, in an order of its own."""
    order = random.Random(seed)
    while True:
        yield from order.sample(names, len(names))


def drill(options):
    begin = time.monotonic()
    records = {name: Record() for name in FAULTS}
    calm = Account()
    with Evening(options.seed) as evening:
        for name in plan(options.seed, options.only or list(FAULTS)):
            if time.monotonic() - begin > 60 * options.minutes:
                break
            next_stroke = time.monotonic() + options.every
            calm.add(evening.account())
            log(begin, name)
            try:
                strike(evening, FAULTS[name], records[name])
            except AssertionError:  # the crew waited in vain
                evening.explain()
                report(options, time.monotonic() - begin, records, calm)
                raise
            account = records[name].accounts[-1]
            log(begin, f"  {account} {records[name].recoveries[-1:]} {records[name].lost}")
            for seen in account.faults:
                log(begin, f"  {seen}")
            evening.play(max(5.0, next_stroke - time.monotonic()))
        calm.add(evening.account())
    report(options, time.monotonic() - begin, records, calm)


def log(begin, text):
    print(f"{time.monotonic() - begin:7.1f} {text}", file=sys.stderr, flush=True)


def report(options, seconds, records, calm):
    total = Account()
    total.add(calm)
    for record in records.values():
        for account in record.accounts:
            total.add(account)
    strokes = sum(len(record.accounts) for record in records.values())
    wrong, dark = total.seconds[State.WRONG], total.seconds[State.DARK]
    print(f"**{wrong + dark:.1f} s** during which a screen was wrong without saying so "
          f"({wrong:.1f} s) or dark ({dark:.1f} s), in {seconds / 60:.0f} minutes with "
          f"{strokes} faults, seed {options.seed}.\n")
    print(f"Besides, summed over the three screens: {total.seconds[State.RIGHT]:.0f} s right, "
          f"{total.seconds[State.BEHIND]:.1f} s behind the admin before a picture tells its age, "
          f"{total.seconds[State.TOLD]:.0f} s old and saying so, {total.unseen:.1f} s unseen.\n")
    print("| fault | times | wrong, s | dark, longest s | told as old, s | right again after s: "
          "median | longest | lost |")
    print("|---|---|---|---|---|---|---|---|")
    for name, record in records.items():
        if not record.accounts:
            continue
        own = Account()
        for account in record.accounts:
            own.add(account)
        median, longest = ("", "")
        if record.recoveries:
            median = f"{statistics.median(record.recoveries):.1f}"
            longest = f"{max(record.recoveries):.1f}"
        print(f"| {name} | {len(record.accounts)} | {own.seconds[State.WRONG]:.1f} | "
              f"{own.longest_dark:.1f} | {own.seconds[State.TOLD]:.1f} | {median} | {longest} | {', '.join(record.lost) or 'nothing'} |")


def parsed_options():
    parser = argparse.ArgumentParser()
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--every", type=float, default=120, help="seconds from fault to fault")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", action="append", choices=FAULTS)
    return parser.parse_args()


if __name__ == "__main__":
    drill(parsed_options())
