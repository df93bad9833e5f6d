"""Compares what the emulated hardware saw with the port log of the same run, and decodes the lines into words.

usage: compare.py TRACE RESULTS_FOLDER DRIVER...
"""
import json
import os
import re
import sys

DATA, CONTROL, MARKS = 0, 2, 3
CONTROL_LINES, INVERTED = 0x0F, 0x0B


class Mismatch(Exception):
    pass


def read_trace(path):
    """All writes to the port as (register, byte)."""
    with open(path, encoding="ascii") as trace:
        found = re.findall(r"parallel_ioport_write .*addr 0x([0-9a-f]+) val 0x([0-9a-f]+)", trace.read())
    return [(int(register, 16), int(byte, 16)) for register, byte in found]


def read_log(path):
    with open(path, encoding="ascii") as log:
        lines = [line.split() for line in log]
    return [(int(port, 16) - 0x378, int(byte, 16)) for _, port, byte in lines]


def find_mark(writes, number):
    for place in range(len(writes) - 1):
        if writes[place] == (MARKS, 0xA5) and writes[place + 1] == (MARKS, number):
            return place
    raise Mismatch(f"the mark {number:#x} isn't in the trace")


def between(writes, first, last):
    return writes[find_mark(writes, first) + 2:find_mark(writes, last)]


def lines_only(writes):
    """The kernel's driver adds the control register's interrupt bit; only bits 0 to 3 are lines."""
    return [(register, byte & CONTROL_LINES if register == CONTROL else byte) for register, byte in writes]


def require_same(seen, logged):
    for place, (one, other) in enumerate(zip(seen, logged)):
        if one != other:
            raise Mismatch(f"write {place}: the hardware saw {one[1]:02X} at +{one[0]}, the log has {other[1]:02X} at "
                           f"+{other[0]}")
    if len(seen) != len(logged):
        raise Mismatch(f"the hardware saw {len(seen)} writes, the log has {len(logged)}")


class Receiver:
    """A board on the connector: follows the levels, write by write, and takes in what its framing says."""

    def __init__(self, case):
        self.case, self.level, self.bits, self.words = case, None, [], []
        self.length, self.framing = case["RegisterLength"], case["framing"]

    def write(self, register, byte):
        before = self.level
        if register == DATA:
            self.level = (before or 0) & 0xF00 | byte
        else:
            self.level = (before or 0) & 0x0FF | ((byte ^ INVERTED) & CONTROL_LINES) << 8
        if before is not None:
            self.edges(before, self.level)

    def rose(self, line, before, now):
        return not before & self.case[line] and now & self.case[line]

    def edges(self, before, now):
        if self.rose("ClockPosition", *((now, before) if self.case["InvertClock"] else (before, now))):
            self.bits.append(bool(now & self.case["DataPosition"]))
        if self.rose("LEPosition", before, now):
            self.latch()
        if self.framing == "sbi" and self.rose("LEPosition", now, before):
            self.bits = []
        if self.case["trigger"] and bool(now & self.case["trigger"]) != bool(now & self.case["LEPosition"]):
            raise Mismatch("the trigger pin doesn't go with LE")

    def latch(self):
        bits, self.bits = self.bits, []
        if self.framing == "sbi":
            if bits:
                self.words += self.frame(bits)
            return
        length = 2 * self.length if self.framing == "pair" else self.length
        if len(bits) != length:
            raise Mismatch(f"LE rises after {len(bits)} bits and not after {length}")
        self.words.append(number(bits))

    def frame(self, bits):
        """Words with one more clock each, Data high; the stop sequence raises the clock once more."""
        size = self.length + 1
        words = [bits[place:place + size] for place in range(0, len(bits) - 1, size)]
        if len(bits) % size != 1 or not all(word[-1] for word in words) or not bits[-1]:
            raise Mismatch(f"{len(bits)} clocks are no frame of words of {self.length} bits")
        return [number(word[:-1]) for word in words]


def number(bits):
    return int("".join("01"[bit] for bit in bits), 2)


def check_case(case, writes):
    receiver = Receiver(case)
    for register, byte in writes:
        receiver.write(register, byte)
    times = max(1, len(receiver.words) // len(case["words"])) if case.get("repeats") else 1
    if receiver.words != times * case["words"]:
        raise Mismatch(f"decoded {receiver.words}, expected {times} times {case['words']}")
    return f"{len(writes)} writes, {len(receiver.words)} words as the registers"


def check_end(writes, run):
    """The lines stay as the last load left them: neither the program nor the kernel's driver writes any more."""
    after = between(writes, run["cases"][-1]["mark"] + 1, run["mark"] + 1)
    if after:
        raise Mismatch(f"{len(after)} writes at the end of the program, the first {after[0][1]:02X} at +{after[0][0]}")
    return "none"


def compare(trace, folder, driver):
    with open(os.path.join(folder, driver + ".json"), encoding="ascii") as file:
        run = json.load(file)
    log = read_log(os.path.join(folder, driver + ".log"))
    seen, failures = [], 0

    def attempt(name, check, *arguments):
        nonlocal failures
        try:
            print(f"{driver}: {name}: {check(*arguments)}")
        except Mismatch as mismatch:
            failures += 1
            print(f"FAILED: {driver}: {name}: {mismatch}")

    def check_log():
        if driver == "rawio":
            require_same(seen, log)
        require_same(lines_only(seen), lines_only(log))
        upper = sorted({f"{byte & ~CONTROL_LINES:02X}" for register, byte in seen if register == CONTROL})
        return f"{len(log)} writes as the hardware saw them; control bits 4 to 7: {', '.join(upper)}"

    for case in run["cases"]:
        writes = between(trace, case["mark"], case["mark"] + 1)
        seen += writes
        attempt(case["name"], check_case, case, writes)
    attempt("port log", check_log)
    attempt("writes at the end", check_end, trace, run)
    return failures


def main():
    trace = read_trace(sys.argv[1])
    failures = sum(compare(trace, sys.argv[2], driver) for driver in sys.argv[3:])
    sys.exit(failures != 0)


main()
