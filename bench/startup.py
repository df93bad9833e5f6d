#!/usr/bin/python3
"""Measures start and memory of the program against an empty window of the same size and the same toolkit.

usage: dbus-run-session -- bench/startup.py [BUILD]     by default build/release

Needs Xvfb, and the targets tarnwick and tarnwick_empty_window. Prints the table that the benchmark program prints; ends
with 1 if a goal is missed.

Both programs are started in turn on a virtual screen that is black. A window is shown when the middle of the screen,
which it covers, isn't black any more: it is mapped and painted then. Memory is what is resident (VmRSS) when the
program has been idle for a while; ours has the largest shipped device by then, and each page has been looked at.
"""
import ctypes
import os
import statistics
import subprocess
import sys
import time

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(SOURCE, "tests/automation"))
from program import Client, Program, wait_until   # noqa: E402

PAIRS = 15
WIDTH, HEIGHT = 1280, 800
DEVICE = "QRV8320"
PAGES = "Port Setup", "Registers", "Bits/Pins", "BurstMode", "RF PLL"


class Screen:
    """A virtual screen, and a look at its middle."""

    def __init__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
                                        "-nolisten", "tcp"], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        self.x11 = ctypes.CDLL("libX11.so.6")
        for name, result in ("XOpenDisplay", ctypes.c_void_p), ("XGetImage", ctypes.c_void_p), \
                            ("XDefaultRootWindow", ctypes.c_ulong), ("XGetPixel", ctypes.c_ulong):
            getattr(self.x11, name).restype = result
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def is_black(self):
        all_planes, z_pixmap = ctypes.c_ulong(0xFFFFFF), 2
        image = ctypes.c_void_p(self.x11.XGetImage(self.display, self.root, WIDTH // 2, HEIGHT // 2, 1, 1,
                                                   all_planes, z_pixmap))
        black = self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF == 0
        self.x11.XDestroyImage(image)
        return black

    def close(self):
        self.x11.XCloseDisplay(self.display)
        self.server.terminate()
        self.server.wait()


def seconds_until_shown(screen, start):
    """Starts a program and gives the time until its window can be seen."""
    wait_until(screen.is_black, "the window before to go")
    begin = time.perf_counter()
    start()
    while screen.is_black():
        assert time.perf_counter() - begin < 20, "no window came"
        time.sleep(0.0005)
    return time.perf_counter() - begin


def idle_memory(process):
    time.sleep(0.5)
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))


def measure_ours(screen, executable):
    with Program(executable, os.path.join(SOURCE, "parts"), wait=None) as program:
        shown = seconds_until_shown(screen, lambda: program.start(wait=False))
        client = Client()
        wait_until(client.served, "the service")
        client.create()
        client.call("SelectPart", "s", DEVICE)
        for page in PAGES:
            client.call("SelectTab", "s", page)
            time.sleep(0.05)
        memory = idle_memory(program.process)
        client.leave()   # Closes the window.
        program.ended()
    return shown, memory


def measure_empty(screen, executable):
    started = []
    shown = seconds_until_shown(screen, lambda: started.append(subprocess.Popen([executable])))
    memory = idle_memory(started[0])
    started[0].terminate()
    started[0].wait()
    return shown, memory


def main(build):
    os.environ["QT_QPA_PLATFORM"] = "xcb"
    screen = Screen()
    try:
        def pair():
            return (measure_ours(screen, os.path.join(build, "tarnwick")),
                    measure_empty(screen, os.path.join(build, "bench/tarnwick_empty_window")))
        pair()   # Reads both from the disk.
        pairs = [pair() for _ in range(PAIRS)]
    finally:
        screen.close()
    print(f"{'figure':58} {'yardstick':46} {'ratio':>8} {'goal':>8} {'ours':>12}")
    met = True
    for which, goal, name, scale, unit in ((0, 2, "Start, from exec to the window shown", 1e3, "ms"),
                                           (1, 1.5, f"Resident memory with {DEVICE}, all pages seen", 1e-3, "MB")):
        ratio = statistics.median(ours[which] / empty[which] for ours, empty in pairs)
        took = f"{statistics.median(ours[which] for ours, _ in pairs) * scale:.3g} {unit}"
        met = met and ratio <= goal
        print(f"{name:58} {'the same of an empty window of that size':46} {ratio:8.2f} {goal:8.2f} {took:>12}"
              + ("" if ratio <= goal else "  MISSED"))
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else os.path.join(SOURCE, "build/release")))
