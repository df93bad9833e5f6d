#!/usr/bin/python3
"""Holds an Application object of Tarnwick for command line tools, which leave the bus after each call.
Who only works on the device that is selected needs none: see register-dump.sh.

usage: hold-application.py

Prints the object's path and waits. At the end of its input, or when it is interrupted, the object ends, and with it
the program.
"""
import sys

import dbus

bus = dbus.SessionBus()
factory = bus.get_object("com.ostrel.Tarnwick2x", "/com/ostrel/Tarnwick2x")
print(factory.CreateApplication(dbus_interface="com.ostrel.Tarnwick2x.Factory"), flush=True)
try:
    sys.stdin.read()
except KeyboardInterrupt:
    pass
