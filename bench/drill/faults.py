"""What strikes during an evening. Each fault strikes, lets the crew do what a crew does, and yields the
moment from which recovery counts: when the cause has gone, or when somebody has decided how to go on.
Afterwards it tidies up."""

import re
import signal
import sys
import time
from pathlib import Path

import processes
from evening import CHANGE_MODE, INPUT, SEARCHING

HERE = Path(__file__).resolve().parent
DEAD_INPUT = f"Plus de son reçu de « {INPUT} »."
TWO_LEAD = re.compile("Un autre admin conduit aussi.*")


def a_station(evening):
    return evening.random.choice(evening.stations)


def admin_killed(evening):
    evening.admin.kill()
    evening.reopen_admin()
    yield evening.admin.opened_at


def admin_killed_station_leads(evening):
    lost = evening.admin
    lost.kill()
    yield evening.take_over()
    evening.add_station(lost)


def admin_hangs(evening):
    evening.admin.person.program.signal(signal.SIGSTOP)
    time.sleep(12)  # nobody plays on
    evening.admin.person.program.signal(signal.SIGCONT)
    back = time.monotonic()
    # Stations show what it leads before its own screen can be read, and nobody could tell that they
    # are right if it were played on meanwhile.
    evening.next_step = max(evening.next_step, back + 3)
    yield back


def admin_loses_power(evening):
    lost = evening.admin
    lost.cut_power()
    yield evening.take_over()
    evening.play(8)
    lost.host.boot()
    evening.add_station(lost)


def station_killed(evening):
    station = a_station(evening)
    station.kill()
    evening.darken(station)
    killed = time.monotonic()
    evening.open_station(station)
    yield killed


def station_hangs(evening):
    station = a_station(evening)
    evening.ignore(station)
    station.person.program.signal(signal.SIGSTOP)
    evening.play(12)
    station.person.program.signal(signal.SIGCONT)
    evening.count(station)
    yield time.monotonic()


def station_loses_power(evening):
    station = a_station(evening)
    evening.ignore(station)
    station.cut_power()
    evening.play(12)
    station.host.boot()
    evening.open_station(station)
    yield station.opened_at


def cable(evening, computer):
    computer.host.plug(False)
    evening.play(evening.random.uniform(2, 20))
    computer.host.plug(True)
    yield time.monotonic()


def cable_of_admin(evening):
    yield from cable(evening, evening.admin)


def cable_of_station(evening):
    yield from cable(evening, a_station(evening))


def switch_without_power(evening):
    evening.switch.power(False)
    evening.play(15)
    evening.switch.power(True)
    yield time.monotonic()


def responder_killed(evening):
    computer = evening.random.choice([evening.admin, *evening.stations])
    processes.kill(computer.host.responder)
    evening.play(8)
    computer.host.start_responder()
    yield time.monotonic()


def responder_hangs(evening):
    computer = evening.random.choice([evening.admin, *evening.stations])
    computer.host.responder.send_signal(signal.SIGSTOP)
    evening.play(12)
    computer.host.responder.send_signal(signal.SIGCONT)
    yield time.monotonic()


def bus_restarted(evening):
    computer = evening.random.choice([evening.admin, *evening.stations])
    processes.kill(computer.host.bus)
    processes.kill(computer.host.responder)  # it can't live without
    evening.play(5)
    computer.host.boot()
    yield time.monotonic()


def clock_jumps(evening, computer):
    seconds = evening.random.choice((-600, -5, 5, 600))
    computer.set_clock(seconds)
    evening.play(20)
    computer.set_clock(0.0)
    yield time.monotonic()


def clock_of_admin_jumps(evening):
    yield from clock_jumps(evening, evening.admin)


def clock_of_station_jumps(evening):
    yield from clock_jumps(evening, a_station(evening))


def sound_server_dies(evening):
    admin = evening.admin
    admin.person.to_front()
    if admin.shows("Démarrer la capture", "push button"):
        admin.person.start_capture(INPUT)
    admin.person.see("Arrêter la capture", "push button")
    evening.sound.kill_server()
    admin.person.see(DEAD_INPUT)
    evening.play(5)
    evening.sound.start_server()
    back = time.monotonic()
    processes.wait_until(lambda: not admin.shows(DEAD_INPUT), "the sound to be back")
    yield back


def disk_full(evening):
    filler = evening.admin.host.inside / "config" / "filler"
    with open(filler, "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(4096))
        except OSError:
            pass
    evening.play(10)
    filler.unlink()
    yield time.monotonic()


def second_admin(evening):
    spare = evening.spare.person
    spare.press("Admin")
    spare.see("Un admin est déjà actif sur ce réseau")
    spare.press(CHANGE_MODE)
    spare.see("Affichage", "push button")
    yield time.monotonic()


def two_lead(evening):
    """The admin's side is cut off, a station leads on, and the two see each other again."""
    cut_off = evening.admin
    cut_off.host.plug(False)
    evening.take_over()
    evening.play(5)
    cut_off.host.plug(True)
    for each in (cut_off, evening.admin):
        each.person.see(TWO_LEAD)
    evening.play(3)
    yield time.monotonic()
    cut_off.stop()
    evening.add_station(cut_off)


def flood(evening):
    address, port = next((address, port) for name, address, port in evening.spare.host.services()
                         if name == evening.admin.name and "." in address)
    flood = evening.spare.host.start("flood", sys.executable, "-B", HERE / "flood.py", address,
                                     port, 1500, 10)
    evening.play(10)
    flood.wait()
    yield time.monotonic()


#: By the names that they have in the table.
FAULTS = {
    "admin killed, opened again": admin_killed,
    "admin killed, a station leads on": admin_killed_station_leads,
    "admin hangs 12 s": admin_hangs,
    "admin without power, a station leads on": admin_loses_power,
    "station killed, opened again": station_killed,
    "station hangs 12 s": station_hangs,
    "station without power": station_loses_power,
    "admin's cable out 2 to 20 s": cable_of_admin,
    "station's cable out 2 to 20 s": cable_of_station,
    "switch without power 15 s": switch_without_power,
    "responder killed, back after 8 s": responder_killed,
    "responder hangs 12 s": responder_hangs,
    "message bus dies, back after 5 s": bus_restarted,
    "admin's clock jumps by 5 s or 10 min": clock_of_admin_jumps,
    "station's clock jumps by 5 s or 10 min": clock_of_station_jumps,
    "sound server dies, back after 5 s": sound_server_dies,
    "admin's disk full 10 s": disk_full,
    "somebody else chooses Admin": second_admin,
    "network in two parts, two lead": two_lead,
    "1,500 connections that send for 10 s": flood,
}
