"""The real program, started in a folder of its own, and the clients that call it."""
import glob
import os
import shutil
import subprocess
import tempfile
import time

import dbus
from dbus.bus import BusConnection
from dbus.lowlevel import MethodCallMessage, MethodReturnMessage

SERVICE = "com.ostrel.Tarnwick2x"
ROOT = "/com/ostrel/Tarnwick2x"
PART = ROOT + "/Part"
PROPERTIES = "org.freedesktop.DBus.Properties"


PATIENCE = 300   # Seconds for what takes a moment, on a machine that has others to do.


def wait_until(condition, what, seconds=PATIENCE):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("in vain waited for: " + what)
        time.sleep(0.01)


class Client:
    """A connection of its own to the bus, with the signatures of its calls in its own hands."""

    def __init__(self):
        self.bus = BusConnection(BusConnection.TYPE_SESSION)
        self.app = None

    def leave(self):
        self.bus.close()

    def raw(self, path, interface, member, signature="", *arguments, timeout=PATIENCE):
        call = MethodCallMessage(SERVICE, path, interface, member)
        call.append(*arguments, signature=signature)
        reply = self.bus.send_message_with_reply_and_block(call, timeout)
        assert isinstance(reply, MethodReturnMessage)
        results = reply.get_args_list()
        return results[0] if len(results) == 1 else results or None

    def create(self):
        self.app = self.raw(ROOT, SERVICE + ".Factory", "CreateApplication")
        return self.app

    def call(self, member, signature="", *arguments, **options):
        return self.raw(self.app, SERVICE + "._Application", member, signature, *arguments, **options)

    def part(self, member, signature="", *arguments):
        return self.raw(PART, SERVICE + ".Part", member, signature, *arguments)

    def get(self, path, interface, name):
        return self.raw(path, PROPERTIES, "Get", "ss", f"{SERVICE}.{interface}", name)

    def set(self, path, interface, name, value, signature):
        """The value goes as exactly that type."""
        kinds = {"d": dbus.Double, "s": dbus.String, "b": dbus.Boolean, "i": dbus.Int32, "n": dbus.Int16}
        value = kinds[signature](value, variant_level=1)
        self.raw(path, PROPERTIES, "Set", "ssv", f"{SERVICE}.{interface}", name, value)

    def release(self):
        self.raw(self.app, SERVICE + ".Object", "Release")

    def send(self, member, signature="", *arguments):
        """Sends a call of _Application and doesn't wait for the reply."""
        message = MethodCallMessage(SERVICE, self.app, SERVICE + "._Application", member)
        message.append(*arguments, signature=signature)
        self.bus.send_message(message)
        self.bus.flush()

    def served(self):
        return self.bus.name_has_owner(SERVICE)


class Program:
    """The program beside copies of the shipped part files, with the port log on. Ends with the test."""

    def __init__(self, executable, parts, environment=None, wait=True):
        self.folder = tempfile.mkdtemp(prefix="tarnwick-")
        shutil.copy(executable, self.folder)
        for file in os.listdir(parts):
            shutil.copy(os.path.join(parts, file), self.folder)
        settings = self.path("tarnwick.ini")
        with open(settings, encoding="utf-8", newline="") as file:
            text = file.read()
        with open(settings, "w", encoding="utf-8", newline="") as file:
            file.write(text.replace("LOG=", "LOG=port.log", 1))
        self.process = None
        if wait is not None:
            self.start(environment, wait)

    def start(self, environment=None, wait=True):
        self.process = subprocess.Popen([self.path("tarnwick")], cwd=self.folder, env=environment,
                                        stderr=subprocess.DEVNULL)
        if wait:
            watcher = Client()
            wait_until(watcher.served, "the service")
            watcher.leave()

    def path(self, name):
        return os.path.join(self.folder, name)

    def idle(self):
        """Whether it has done all that it had to do: each of its threads sleeps."""
        states = []
        for task in glob.glob(f"/proc/{self.process.pid}/task/*/stat"):
            try:
                with open(task, encoding="ascii", errors="replace") as stat:
                    states.append(stat.read().rpartition(")")[2].split()[0])
            except OSError:
                return False   # It has just ended, and something went on.
        return not self.running() or set(states) == {"S"}

    def writes(self):
        """The port writes so far, without their times. They are on disk when the program is idle again."""
        wait_until(self.idle, "the end of its work")
        return self.logged()

    def logged(self):
        """What of them is on disk."""
        with open(self.path("port.log"), encoding="ascii") as log:
            return [line.split()[1:] for line in log]

    def memory(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))

    def sanitized(self):
        """Whether a sanitizer watches its memory: it keeps what was freed, and finds leaks by itself."""
        with open(f"/proc/{self.process.pid}/maps", encoding="ascii", errors="replace") as maps:
            return "libasan" in maps.read()

    def running(self):
        return self.process.poll() is None

    def ended(self):
        """The exit code, once it has ended by itself."""
        return self.process.wait(PATIENCE)

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        if self.process and self.running():
            self.process.terminate()
            self.process.wait(PATIENCE)
        shutil.rmtree(self.folder)
