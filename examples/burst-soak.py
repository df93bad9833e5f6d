#!/usr/bin/python3
"""Plays the burst list again and again, and checks that each run ends when it is told to.

usage: burst-soak.py [RUNS [SECONDS]]
       burst-soak.py 100 0.5

Works on the device that is selected in the window. An empty list is filled with all registers of the device for the
time of the soak. A run is stopped after SECONDS, by default 0.2, by a second connection: the first one waits for the
end of the run. Prints how long the runs took to end.
"""
import sys
import threading
import time

import dbus
from dbus.bus import BusConnection

SERVICE = "com.ostrel.Tarnwick2x"


def connect(bus):
    return dbus.Interface(bus.get_object(SERVICE, "/com/ostrel/Tarnwick2x/Part"), SERVICE + ".Part")


def value(part, name):
    return part.Get(SERVICE + ".Part", name, dbus_interface="org.freedesktop.DBus.Properties")


def soak(part, runs, seconds):
    stopping = connect(BusConnection(BusConnection.TYPE_SESSION))   # Not shared with the first.

    def stop(ended):
        time.sleep(seconds)
        ended.told = time.monotonic()
        stopping.StopBurstCommands()
        while not ended.wait(1):   # The run may have begun only after that.
            stopping.StopBurstCommands()

    late = []
    for _ in range(runs):
        ended = threading.Event()
        stopper = threading.Thread(target=stop, args=[ended])
        stopper.start()
        part.RunBurstCommands(timeout=seconds + 60)
        late.append(time.monotonic() - ended.told)
        ended.set()
        stopper.join()
    print(f"{runs} runs of {value(part, 'BurstCmdsCount')} commands, ended after {max(late) * 1000:.1f} ms at most")


def main(runs=10, seconds=0.2):
    part = connect(dbus.SessionBus())
    empty = value(part, "BurstCmdsCount") == 0
    for name in value(part, "RegisterNames") if empty else []:
        part.AddBurstCommand(name, 0)
    if value(part, "BurstCmdsCount") == 0:
        sys.exit("There is nothing to play: select a device in the window.")
    part.UpdateBurstDisplay()
    try:
        soak(part, int(runs), float(seconds))
    finally:
        if empty:
            part.DeleteBurstCommands()


if __name__ == "__main__":
    if len(sys.argv) > 3:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except dbus.DBusException as error:
        sys.exit(error.get_dbus_message())
