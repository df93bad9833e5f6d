#!/usr/bin/python3
"""Plays all registers of a device as a burst, again and again, and checks that each run ends when it is told to.

usage: burst-soak.py DEVICE [RUNS [SECONDS]]
       burst-soak.py QRV3320 100 0.5

A run is stopped after SECONDS, by default 0.2, by a second connection: the first one waits for the end of the run.
Prints how long the runs took to end.
"""
import sys
import threading
import time

import dbus
from dbus.bus import BusConnection

SERVICE = "com.ostrel.Tarnwick2x"
PART = "/com/ostrel/Tarnwick2x/Part"


def main(device, runs=10, seconds=0.2):
    bus = dbus.SessionBus()
    other = BusConnection(BusConnection.TYPE_SESSION)   # Not shared with the first.
    factory = bus.get_object(SERVICE, "/com/ostrel/Tarnwick2x")
    path = factory.CreateApplication(dbus_interface=SERVICE + ".Factory")
    application = dbus.Interface(bus.get_object(SERVICE, path), SERVICE + "._Application")
    stopping = dbus.Interface(other.get_object(SERVICE, path), SERVICE + "._Application")
    application.SelectPart(device)

    part = bus.get_object(SERVICE, PART)
    names = part.Get(SERVICE + ".Part", "RegisterNames", dbus_interface="org.freedesktop.DBus.Properties")
    for name in names:
        part.AddBurstCommand(name, 0, dbus_interface=SERVICE + ".Part")
    part.UpdateBurstDisplay(dbus_interface=SERVICE + ".Part")

    def stop(ended):
        time.sleep(float(seconds))
        ended.told = time.monotonic()
        stopping.StopBurstMode()
        while not ended.wait(1):   # The run may have begun only after that.
            stopping.StopBurstMode()

    late = []
    for _ in range(int(runs)):
        ended = threading.Event()
        stopper = threading.Thread(target=stop, args=[ended])
        stopper.start()
        application.RunBurstMode(timeout=float(seconds) + 60)
        late.append(time.monotonic() - ended.told)
        ended.set()
        stopper.join()
    print(f"{len(late)} runs of {len(names)} registers, ended after {max(late) * 1000:.1f} ms at most")
    bus.get_object(SERVICE, path).Release(dbus_interface=SERVICE + ".Object")


if __name__ == "__main__":
    if not 2 <= len(sys.argv) <= 4:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except dbus.DBusException as error:
        sys.exit(error.get_dbus_message())
