#!/usr/bin/python3
"""Sweeps the VCO of a PLL and prints what it reached.

usage: frequency-sweep.py PLL FIRST LAST STEP [SECONDS]
       frequency-sweep.py "RF PLL" 1900 1910 2.5

Works on the device that is selected in the window. Frequencies are in MHz. Each is loaded into the device and stands
for SECONDS, by default 0.
"""
import sys
import time

import dbus

SERVICE = "com.ostrel.Tarnwick2x"
PLL = SERVICE + ".PLL"


def main(name, first, last, step, seconds=0):
    bus = dbus.SessionBus()
    part = dbus.Interface(bus.get_object(SERVICE, "/com/ostrel/Tarnwick2x/Part"), SERVICE + ".Part")
    pll = dbus.Interface(bus.get_object(SERVICE, part.PLLs(name)), "org.freedesktop.DBus.Properties")
    part.LoadAll()
    print("wanted MHz\treached MHz\toff by Hz")
    for i in range(int((float(last) - float(first)) / float(step) + 1e-9) + 1):
        wanted = float(first) + i * float(step)
        pll.Set(PLL, "VCOFrequency", wanted)
        part.UpdateDisplays()
        part.LoadChanges()
        reached = pll.Get(PLL, "VCOFrequency")
        print(f"{wanted:.6f}\t{reached:.6f}\t{(reached - wanted) * 1e6:.1f}")
        time.sleep(float(seconds))


if __name__ == "__main__":
    if not 5 <= len(sys.argv) <= 6:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except dbus.DBusException as error:
        sys.exit(error.get_dbus_message())
