"""What happens inside the emulated machine: the real program works its port, driven over D-Bus, with each driver in
turn; each state of the port is brought about and its text compared; the speed is measured.

Beside each case goes a mark to a register of the port that has no lines, so that the case can be found in what the
hardware saw. Leaves in /results what compare.py needs, and a report.
"""
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import time

SOURCE, BUILD = os.environ["source"], os.environ["build"]
sys.path.insert(0, os.path.join(SOURCE, "tests/automation"))
from program import PART, ROOT, Client, Program, wait_until   # noqa: E402

PORT_STATE = os.path.join(BUILD, "tests/hardware/port_state")
DEVICE = "/dev/parport0"
CLOCK = r"\d\d:\d\d:\d\d"
failures = 0
report = open("/results/report.txt", "w", encoding="utf-8", buffering=1)
ports = os.open("/dev/port", os.O_RDWR)


def say(text):
    print(text, file=report)


def fail(text):
    global failures
    failures += 1
    say("FAILED: " + text)


def mark(number):
    """Two bytes to the fourth register, which nobody else writes while the program runs."""
    for byte in (0xA5, number):
        os.pwrite(ports, bytes([byte]), 0x37B)


def modprobe(*arguments):
    subprocess.run(["busybox", "modprobe", *arguments], check=True)


# the program's loads

BURST = """[SETUP]
ADDRESS=888
CLOCK=1
DATA=2
LE=4
PART=QRV1150
[BURST]
COUNT=5
COMMAND00=0
REGISTER00=11184810
REGISTERNAME00=MAIN
PINS00=8
COMMAND01=2
REGISTER01=1000
COMMAND02=0
REGISTER02=800
REGISTERNAME02=REFERENCE
PINS02=0
COMMAND03=1
PINS03=8
COMMAND04=0
REGISTER04=16777215
REGISTERNAME04=FUNCTION
PINS04=8
"""


class Case:
    """One device and what is done with it. `words` is what must go out, as the registers stand at the moment."""

    def __init__(self, client, name, device, framing="plain"):
        self.client, self.words = client, []
        client.call("SelectPart", "s", device)
        self.facts = {"name": name, "framing": framing, "words": self.words, "trigger": 0}

    def set_line(self, name, weight):
        self.client.set(PART, "Part", name, weight, "n")

    def registers(self):
        names = self.client.get(PART, "Part", "RegisterNames")
        paths = [self.client.part("Registers", "s", name) for name in names]
        return {str(name): int(self.client.get(path, "Register", "Value")) for name, path in zip(names, paths)}

    def load_all(self):
        self.client.call("LoadPart")
        self.words += self.registers().values()

    def finish(self):
        get = lambda name: self.client.get(PART, "Part", name)   # noqa: E731
        lines = {name: int(get(name)) for name in ("ClockPosition", "DataPosition", "LEPosition", "RegisterLength")}
        return {**self.facts, **lines, "InvertClock": bool(get("InvertClock"))}


def plain(client):
    case = Case(client, "plain load", "QRV1150")
    case.load_all()
    for frequency in (1234.5, 1234.6):   # The first time all registers still stand marked as changed.
        client.call("SetVCOFrequency", "sd", "RF PLL", frequency)
        case.words += case.registers().values() if frequency == 1234.5 else [case.registers()["MAIN"]]
    return case


def inverted(client):
    case = Case(client, "inverted clock", "QRV0250")
    case.load_all()
    return case


def sbi(client):
    case = Case(client, "SBI", "QRV6180", "sbi")
    client.call("SetPrgmPins", "sb", "XRES", True)   # With it the lines go to their resting state.
    client.call("LoadPart")
    values = list(case.registers().values())
    case.words.append(values[0])
    for number, value in enumerate(values, 1):
        case.words += [number, value]
    return case


def pair(client):
    case = Case(client, "pair", "QRV7240", "pair")
    client.call("SetVCOFrequency", "sd", "PLL + VCO", 1600.0)
    values = list(case.registers().values())
    case.words += [high << 16 | low for high, low in zip(values[::2], values[1::2])]
    return case


def control_lines(client):
    case = Case(client, "control lines", "QRV2270")
    for name, weight in (("ClockPosition", 2048), ("DataPosition", 1024), ("LEPosition", 256)):
        case.set_line(name, weight)
    case.load_all()
    return case


def trigger(client):
    case = Case(client, "trigger pin", "QRV3320")
    client.call("SetPrgmPins", "sbb", "Trigger", True, False)
    case.load_all()
    case.facts["trigger"] = 16
    return case


def burst(client):
    case = Case(client, "burst", "QRV1150")
    client.call("RestoreSetup", "s", "burst.mac")
    client.send("RunBurstMode")   # Loops until it is stopped, between two passes.
    client.call("StopBurstMode")
    wait_until(lambda: not client.get(PART, "Part", "BurstRunning"), "the end of the burst")
    case.words += [11184810, 800, 16777215]
    case.facts["repeats"] = True
    return case


def work(driver, first_mark):
    """Starts the program with that driver and goes through the cases, a pair of marks round each."""
    program = Program(os.path.join(BUILD, "tarnwick"), os.path.join(SOURCE, "parts"), wait=None)
    settings = program.path("tarnwick.ini")
    with open(settings, encoding="utf-8", newline="") as file:
        text = file.read().replace("DRIVER=simulated", "DRIVER=" + driver)
    with open(settings, "w", encoding="utf-8", newline="") as file:
        file.write(text)
    with open(program.path("burst.mac"), "w", encoding="ascii") as file:
        file.write(BURST)
    begin = time.monotonic()
    with program:
        mark(first_mark)
        program.start()
        client = Client()
        client.create()
        client.call("SetSaveSettings", "b", False)
        cases = []
        for number, do in enumerate((plain, inverted, sbi, pair, control_lines, trigger, burst), 1):
            mark(first_mark + 2 * number)
            case = do(client)
            mark(first_mark + 2 * number + 1)
            cases.append({**case.finish(), "mark": first_mark + 2 * number})
        client.release()
        if program.ended() != 0:
            fail(f"the program ended with {program.ended()}")
        mark(first_mark + 1)
        shutil.copy(program.path("port.log"), f"/results/{driver}.log")
    with open(f"/results/{driver}.json", "w", encoding="ascii") as file:
        json.dump({"mark": first_mark, "cases": cases}, file)
    say(f"{driver}: the program worked {time.monotonic() - begin:.1f} s")


# the states of the port

class State:
    """port_state, running with a driver for so many rounds."""

    def __init__(self, driver, rounds, *device, user=None):
        command = [PORT_STATE, driver, str(rounds), *device]
        if user:
            command = ["setpriv", "--reuid=" + user, "--regid=" + user, "--clear-groups", *command]
        self.output = f"/tmp/state{time.monotonic_ns()}"
        with open(self.output, "wb") as output:
            self.process = subprocess.Popen(command, stdout=output, stderr=subprocess.STDOUT)

    def text(self):
        with open(self.output, encoding="utf-8") as file:
            return file.read()

    def says(self, pattern):
        wait_until(lambda: re.search(pattern, self.text()), f"'{pattern}' in\n{self.text()}")

    def end(self, with_signal=signal.SIGKILL):
        self.process.send_signal(with_signal)
        self.process.wait(300)

    def must_say(self, name, *patterns):
        """All its lines about the state, in order, and nothing else; then comes the story."""
        self.process.wait(300)
        text = self.text()
        lines = [line for line in text.splitlines() if line.startswith(("ready: ", "not ready: "))]
        say(f"-- {name}\n{text.rstrip()}")
        if len(lines) != len(patterns) or not all(re.match(p, line) for p, line in zip(patterns, lines)):
            fail(f"{name}: expected\n" + "\n".join(patterns))


PARPORT = "Parallel port " + DEVICE
FOREVER = 1_000_000


def states_without_modules():
    State("parport", 1).must_say("module not loaded", f"not ready: {PARPORT}: .*modprobe -a parport_pc ppdev")
    modprobe("parport_pc")
    State("parport", 1).must_say("one module not loaded", f"not ready: {PARPORT}: .*modprobe -a ppdev")


def states_of_ready_ports():
    State("parport", 20).must_say("ready", f"ready: {PARPORT}$")
    State("rawio", 20).must_say("ready, direct access", "ready: Direct port access to 0378$")
    State("parport", 1, "/dev/null").must_say("another device", "not ready: Parallel port /dev/null: .* no device of")


def states_of_held_port():
    holder = State("parport", FOREVER)
    holder.says("ready: ")
    waiting = State("parport", FOREVER)
    waiting.says("not ready")
    holder.end()
    waiting.says(r"there since.*\nready")
    waiting.end(signal.SIGTERM)
    waiting.must_say(
        "held by another process, which ends",
        rf"not ready: {PARPORT}: held by another program, end it: port_state \({holder.process.pid}\), 1 write failed",
        rf"ready: {PARPORT}, there since {CLOCK}: load the device again, \d+ writes? failed",
        rf"ready: {PARPORT}, \d+ writes? failed")
    modprobe("lp")
    State("parport", 1).must_say("shared with a printer driver", f"ready: {PARPORT}, shared with lp")
    holder = State("parport", FOREVER)
    holder.says("ready: ")
    claim = State("claim", DEVICE)
    claim.process.wait(300)
    say("-- waiting for a held port\n" + claim.text().rstrip())
    if claim.text() != "Interrupted system call\n":
        fail("the wait for a held port isn't given up")
    holder.end()
    subprocess.run(["busybox", "rmmod", "lp"], check=True)


def states_without_rights():
    def denied(name, cure):
        State("parport", 1, user="games").must_say(name, f"not ready: {PARPORT}: permission denied .*games: .*{cure}")

    # As Debian's udev rules leave it.
    shutil.chown(DEVICE, "root", "lp")
    os.chmod(DEVICE, 0o660)
    denied("no permission", "adduser games lp")
    with open("/etc/group", encoding="utf-8") as file:
        groups = file.read()
    with open("/etc/group", "w", encoding="utf-8") as file:
        file.write(re.sub("^(lp:.*:)$", r"\1games", groups, flags=re.MULTILINE))
    denied("no permission before the next login", "in the group lp by now")
    os.chmod(DEVICE, 0o600)
    denied("no permission for any group", "no group may write")
    State("rawio", 1, user="games").must_say("no right to direct access", "not ready: .* lacks the right CAP_SYS_RAWIO")


def states_of_removed_port():
    driver = "/sys/bus/pnp/drivers/parport_pc"
    port = next(name for name in os.listdir(driver) if ":" in name)

    def tell(file):
        with open(os.path.join(driver, file), "w", encoding="ascii") as control:
            control.write(port)

    leaving = State("parport", FOREVER)
    leaving.says("ready: ")
    tell("unbind")
    leaving.says("gone since.* found no parallel port")
    State("parport", 1).must_say("no port behind the modules", f"not ready: {PARPORT}: .*found no parallel port")
    tell("bind")
    leaving.says(r"there since.*\nready")
    leaving.end(signal.SIGTERM)
    leaving.must_say(
        "gone and back", f"ready: {PARPORT}$", rf"not ready: {PARPORT}: gone since {CLOCK}, plug it in again",
        rf"not ready: {PARPORT}: gone since {CLOCK}, the kernel found no parallel port: ",
        rf"ready: {PARPORT}, there since {CLOCK}: load the device again", f"ready: {PARPORT}")


def states_of_locked_kernel():
    subprocess.run(["mount", "-t", "securityfs", "security", "/sys/kernel/security"], check=True)
    with open("/sys/kernel/security/lockdown", "w", encoding="ascii") as file:
        file.write("integrity")
    State("rawio", 1).must_say("locked-down kernel", r"not ready: .*the kernel is locked down \(integrity\)")


def speed():
    """The median of several starts: how a process happens to lie in memory makes a difference of some percent here."""
    program = os.path.join(BUILD, "bench/parport_speed")
    output = "".join(subprocess.run([program], capture_output=True, text=True, check=True).stdout for _ in range(9))
    ratios = sorted(float(ratio) for ratio in re.findall("^ratio ([0-9.]+)", output, flags=re.MULTILINE))
    say(f"-- speed\n{output}median ratio {ratios[len(ratios) // 2]}")


def main():
    states_without_modules()
    modprobe("ppdev")
    work("parport", 0x10)
    work("rawio", 0x40)
    states_of_ready_ports()
    speed()
    states_of_held_port()
    states_without_rights()
    states_of_removed_port()
    states_of_locked_kernel()
    say(f"guest: {failures} failed")


try:
    main()
except BaseException as problem:   # Whatever it is, it must be seen outside.
    fail(f"{type(problem).__name__}: {problem}")
    raise
sys.exit(failures != 0)
