"""The installed program, its user's folder on a disk that gets full or read-only or loses it.
What the user is told meanwhile stands in the window, which the other test of this folder looks at.

usage: small-disk.sh dbus-run-session -- real_disks.py EXECUTABLE SOURCE_FOLDER
"""
import glob
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

EXECUTABLE, SOURCE = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
sys.path.insert(0, os.path.join(SOURCE, "tests/automation"))
from program import PART, PATIENCE, Client, Program, wait_until  # noqa: E402

# How a disk goes bad and good again, below a folder with the user's data in home.
FAULTS = {
    "full": ("! dd if=/dev/zero of=filler bs=4k 2>/dev/null", "rm filler"),
    "read-only": ("mount --bind home home && mount -o remount,bind,ro home", "umount home"),
    "removed": ("mv home/tarnwick kept", "mv kept home/tarnwick"),
}


class Installed(Program):
    """The program in an installed tree."""

    def __init__(self):   # pylint: disable=super-init-not-called
        self.place = tempfile.mkdtemp()
        assert shutil.disk_usage(self.place).total < 2e6, "this fills the disk: start it by small-disk.sh"
        self.folder, self.process = os.path.join(self.place, "home/tarnwick"), None
        shutil.copytree(os.path.join(SOURCE, "parts"), os.path.join(self.place, "share/tarnwick"))
        self.shell("mkdir bin home && touch bin/tarnwick && mount --bind " + EXECUTABLE + " bin/tarnwick && "
                   "sed -i s/LOG=/LOG=port.log/ share/tarnwick/tarnwick.ini && "
                   "sed -i 's/^ADDRESS=.*/ADDRESS=632/' share/tarnwick/QRV1150.ini")   # Not the default.

    def shell(self, command):
        subprocess.run(command, shell=True, cwd=self.place, check=True)

    def open(self):
        """Starts the program and gives the client that holds it."""
        self.process = subprocess.Popen([os.path.join(self.place, "bin/tarnwick")], stderr=subprocess.DEVNULL,
                                        env=dict(os.environ, QT_QPA_PLATFORM="offscreen",
                                                 XDG_DATA_HOME=os.path.join(self.place, "home")))
        client = Client()
        wait_until(client.served, "the service")
        client.create()
        return client

    def close(self, client):
        client.release()
        client.leave()
        assert self.ended() == 0

    def files(self, folder="home/tarnwick"):
        found = {}
        for path in glob.glob(os.path.join(self.place, folder, "*"), include_hidden=True):
            with open(path, "rb") as file:
                found[os.path.basename(path)] = file.read()
        return found

    def __exit__(self, *unused):
        if self.running():
            self.process.kill()
            self.process.wait(PATIENCE)
        self.shell("umount home 2>/dev/null; umount bin/tarnwick && rm -r $PWD")


def change(client, value):
    client.call("SelectPart", "s", "QRV3320")
    client.call("SetPrgmBitValue", "sd", "R", float(value))


def save(client, value):
    """Changes the device and leaves it."""
    change(client, value)
    client.call("SelectPart", "s", "QRV6180")


class RealDisks(unittest.TestCase):
    def setUp(self):
        self.program = Installed()
        self.addCleanup(self.program.__exit__)

    def test_a_first_start_on_a_bad_disk_is_made_up_for_by_the_next(self):
        shipped = self.program.files("share/tarnwick")
        for fault in ("full", "read-only"):
            with self.subTest(fault):
                begin, end = FAULTS[fault]
                self.program.shell(begin + (" && truncate -s -100k filler" if fault == "full" else ""))   # Room for some.
                self.program.close(self.program.open())
                whole = {name: data for name, data in self.program.files().items() if shipped.get(name) == data}
                self.assertEqual(set(self.program.files()) - set(whole) - {".shipped"}, set())
                self.assertEqual(len(whole) > 0, fault == "full")
                self.assertLess(len(whole), len(shipped))
                self.program.shell(end)
                self.program.close(self.program.open())
                own = self.program.files()
                self.assertEqual({name: own[name] for name in shipped}, shipped)
                shutil.rmtree(self.program.folder)

    def test_saves_on_a_bad_disk_leave_every_file_whole_and_work_again_later(self):
        client = self.program.open()
        for fault, (begin, end) in FAULTS.items():
            with self.subTest(fault):
                save(client, 40)
                change(client, 41)
                self.program.writes()   # The log is complete then.
                before = self.program.files()
                self.program.shell(begin)
                client.call("SelectPart", "s", "QRV1150")
                told = "".join(client.get(PART, "Part", "FileProblems"))
                self.assertEqual("can't be read: No such file" in told, fault == "removed")
                self.program.shell(end)
                self.assertEqual(self.program.files(), before)
                client.call("SelectPart", "s", "QRV3320")
                self.assertEqual(client.call("GetPrgmBitValue", "s", "R"), 40)
                if fault == "removed":
                    self.assertEqual(self.program.files()["QRV1150.ini"], before["QRV1150.ini"])
                save(client, 42)
                self.assertNotEqual(self.program.files()["QRV3320.ini"], before["QRV3320.ini"])
        self.program.close(client)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
