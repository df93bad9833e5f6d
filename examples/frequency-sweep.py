#!/usr/bin/python3
"""Sweeps the VCO of a PLL and prints what it reached.

usage: frequency-sweep.py DEVICE PLL FIRST LAST STEP [SECONDS]
       frequency-sweep.py QRV3320 "RF PLL" 1900 1910 2.5

Frequencies are in MHz. Each is loaded into the device and stands for SECONDS, by default 0.
"""
import sys
import time

import dbus

SERVICE = "com.ostrel.Tarnwick2x"


def main(device, pll, first, last, step, seconds=0):
    bus = dbus.SessionBus()
    factory = bus.get_object(SERVICE, "/com/ostrel/Tarnwick2x")
    path = factory.CreateApplication(dbus_interface=SERVICE + ".Factory")
    held = bus.get_object(SERVICE, path)
    application = dbus.Interface(held, SERVICE + "._Application")
    application.SelectPart(device)
    application.LoadPart()
    print("wanted MHz\treached MHz\toff by Hz")
    for i in range(int((float(last) - float(first)) / float(step) + 1e-9) + 1):
        wanted = float(first) + i * float(step)
        application.SetVCOFrequency(pll, wanted)
        reached = application.GetVCOFrequency(pll)
        print(f"{wanted:.6f}\t{reached:.6f}\t{(reached - wanted) * 1e6:.1f}")
        time.sleep(float(seconds))
    held.Release(dbus_interface=SERVICE + ".Object")


if __name__ == "__main__":
    if not 6 <= len(sys.argv) <= 7:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except dbus.DBusException as error:
        sys.exit(error.get_dbus_message())
