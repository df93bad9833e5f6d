#!/usr/bin/python3
"""Measures calls of the automation against a ping of the same service, in one run on one bus.

usage: dbus-run-session -- bench/automation.py [EXECUTABLE]     by default build/release/tarnwick

Prints the table that the benchmark program prints; ends with 1 if a goal is missed.
"""
import os
import statistics
import sys
import time

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(SOURCE, "tests/automation"))
from program import ROOT, SERVICE, Client, Program   # noqa: E402

ROUNDS, CALLS = 21, 200
REGISTERS, FIELDS = 6, 40


def part_file():
    lines = ["[SETUP]", "REGISTER_LENGTH=32", "[REGISTERS]", f"COUNT={REGISTERS}"]
    for i in range(REGISTERS):
        lines += [f"NAME{i:02}=R{i}", f"MASK{i:02}=7", f"VALUE{i:02}={i}"]
    lines += ["[BITS]", f"COUNT={FIELDS}"]
    for i in range(FIELDS):
        lines += [f"REG{i:02}=R{i % REGISTERS}", f"NAME{i:02}=F{i}", f"POS{i:02}={3 + 4 * (i // REGISTERS)}",
                  f"LEN{i:02}=4", f"TYPE{i:02}={('Counter', 'Bit')[i % 2]}", f"DISPLAY{i:02}=TRUE",
                  f"FRAME{i:02}=Frame {i % 4}"]
    lines += ["[PLLS]", "COUNT=1", "NAME00=PLL", "N00=F0", "R00=F2", "OSCIN00=10"]
    return "\n".join(lines) + "\n"


def median_time(call):
    times = []
    for _ in range(CALLS):
        begin = time.perf_counter()
        call()
        times.append(time.perf_counter() - begin)
    return statistics.median(times)


def main(executable):
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    met = True
    with Program(executable, os.path.join(SOURCE, "parts"), wait=None) as program:
        with open(program.path("BENCH.ini"), "w", encoding="ascii") as file:
            file.write(part_file())
        program.start()
        client = Client()
        client.create()
        client.call("SelectPart", "s", "BENCH")
        client.call("SelectTab", "s", "Registers")   # Each change is painted.
        written = iter(range(1, 1 << 30))
        figures = (
            ("GetPrgmBitValue", 2, lambda: client.call("GetPrgmBitValue", "s", "F7")),
            (f"SetPrgmBitValue, redraw, load; {REGISTERS} registers, {FIELDS} fields", 6,
             lambda: client.call("SetPrgmBitValue", "sd", "F8", float(next(written) % 16))),
        )
        print(f"{'figure':58} {'yardstick':46} {'ratio':>8} {'goal':>8} {'ours':>12}")
        for name, goal, ours in figures:
            rounds = [(median_time(ours), median_time(lambda: client.raw(ROOT, "org.freedesktop.DBus.Peer", "Ping")))
                      for _ in range(ROUNDS)]
            ratio = statistics.median(our / ping for our, ping in rounds)
            took = f"{statistics.median(our for our, _ in rounds) * 1e6:.3g} us"
            met = met and ratio <= goal
            print(f"{name:58} {'Peer.Ping of the service':46} {ratio:8.2f} {goal:8.2f} {took:>12}"
                  + ("" if ratio <= goal else "  MISSED"))
        client.call("SetSaveSettings", "b", False)
        client.raw(client.app, SERVICE + ".Object", "Release")
        program.ended()
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else os.path.join(SOURCE, "build/release/tarnwick")))
