"""Calls the real program over the bus, from outside, with what scripts use: python3-dbus, gdbus and busctl.

usage: dbus-run-session -- test_program.py EXECUTABLE SOURCE_FOLDER [unittest options]
"""
import itertools
import os
import re
import subprocess
import sys
import time
import unittest
import xml.etree.ElementTree as ElementTree

import dbus
from program import PART, PATIENCE, PROPERTIES, ROOT, SERVICE, Client, Program, wait_until

EXECUTABLE, SOURCE = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
PARTS = os.path.join(SOURCE, "parts")
DESCRIPTION = os.path.join(SOURCE, "src/automation/com.ostrel.Tarnwick2x.xml")
EXAMPLES = os.path.join(SOURCE, "examples")
NAN, INFINITE, MEGABYTE = float("nan"), float("inf"), "N" * (1 << 20)


def start(**options):
    return Program(EXECUTABLE, PARTS, **options)


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, timeout=PATIENCE, **options)


def interfaces(node):
    """What a description says of each interface of ours, in a form that can be compared."""
    def details(element):
        arguments = [tuple(sorted(argument.attrib.items())) for argument in element.findall("arg")]
        notes = sorted(tuple(sorted(note.attrib.items())) for note in element.findall("annotation"))
        return element.tag, tuple(sorted(element.attrib.items())), tuple(arguments), tuple(notes)
    return {interface.get("name"): sorted(details(member) for member in interface)
            for interface in node.findall("interface") if interface.get("name").startswith(SERVICE)}


class OneProgram(unittest.TestCase):
    """Tests that share a program, each with a client of its own; another one holds it meanwhile."""

    @classmethod
    def setUpClass(cls):
        cls.program = start()
        cls.holder = Client()
        cls.holder.create()
        cls.holder.call("SetSaveSettings", "b", False)   # Each test finds the devices as they ship.

    @classmethod
    def tearDownClass(cls):
        cls.holder.leave()
        code = cls.program.ended()
        cls.program.__exit__()
        assert code == 0, f"the program ended with {code}"

    def setUp(self):
        self.client = Client()
        self.client.app = self.holder.app
        self.client.call("SelectPart", "s", "QRV3320")

    def tearDown(self):
        self.client.leave()

    def refused(self, name, text, function, *arguments):
        with self.assertRaises(dbus.DBusException) as caught:
            function(*arguments)
        self.assertEqual(caught.exception.get_dbus_name(), f"{SERVICE}.Error.{name}", caught.exception)
        self.assertIn(text, caught.exception.get_dbus_message())

    def test_introspection_equals_the_description(self):
        described = interfaces(ElementTree.parse(DESCRIPTION).getroot())
        self.client.part("AddBurstCommand", "sn", "INT", 0)
        shown = {}
        paths = [ROOT]
        while paths:
            path = paths.pop()
            text = self.client.raw(path, "org.freedesktop.DBus.Introspectable", "Introspect")
            node = ElementTree.fromstring(text)
            shown.update(interfaces(node))
            paths += [f"{path}/{child.get('name')}" for child in node.findall("node")]
        for name, members in described.items():
            self.assertEqual(shown.pop(name), members, name)
        self.assertEqual(shown, {})

    def test_every_property_can_be_read_and_written_back(self):
        self.client.part("AddBurstCommand", "sn", "INT", 0)
        before = self.client.call("GetVCOFrequency", "s", "RF PLL")
        paths = {"Part": PART, "Register": "Registers/1", "PrgmBits": "PrgmBits/4", "PrgmPin": "PrgmPins/1",
                 "PLL": "PLLs/1", "BurstCommand": "BurstCmds/1"}
        for interface in ElementTree.parse(DESCRIPTION).getroot().findall("interface"):
            name = interface.get("name").rpartition(".")[2]
            path = PART + "/" + paths[name] if name in paths and name != "Part" else paths.get(name)
            readable = {p.get("name"): p.get("type") for p in interface.findall("property") if p.get("access") != "write"}
            if path:
                every = self.client.raw(path, PROPERTIES, "GetAll", "s", interface.get("name"))
                self.assertEqual(set(every), set(readable), name)
            for member in interface.findall("property") if path else []:
                if member.get("access") == "readwrite":
                    value, kind = self.client.get(path, name, member.get("name")), member.get("type")
                    self.client.set(path, name, member.get("name"), value, kind)
                    self.assertEqual(self.client.get(path, name, member.get("name")), value, member.get("name"))
        self.assertEqual(self.client.call("GetVCOFrequency", "s", "RF PLL"), before)

    def test_the_device_object_reaches_what_no_member_does(self):
        client, pll = self.client, self.client.part("PLLs", "s", "RF PLL")
        self.assertEqual(pll, self.client.part("PLLAt", "i", 1))
        client.set(pll, "PLL", "VCOFixed", True, "b")
        client.set(pll, "PLL", "XtalFrequency", 10, "d")
        self.assertAlmostEqual(client.get(pll, "PLL", "VCOFrequency"), 1900.5)
        client.part("SetupFraction", "ss", "DITHER", "ORDER")
        self.assertEqual(client.get(pll, "PLL", "NumeratorName"), "DITHER")
        field = client.part("PrgmBits", "s", "R")
        client.set(field, "PrgmBits", "FormatString", "0.00", "s")
        self.assertEqual(client.get(field, "PrgmBits", "Text"), "10.00")
        client.raw(field, SERVICE + ".PrgmBits", "SetValueArray", "ad", [5.0, 7.5, 12.0])
        client.set(field, "PrgmBits", "Value", 8, "d")
        self.assertEqual(client.get(field, "PrgmBits", "BitValue"), 1)
        register = client.part("RegisterAt", "i", 1)
        client.part("LoadAll")
        client.part("LoadChanges")
        changed = [client.raw(register, SERVICE + ".Register", "Change")]
        client.raw(register, SERVICE + ".Register", "SetBits", "dnn", 5.0, 8, 3)
        self.assertEqual(client.raw(register, SERVICE + ".Register", "GetBits", "nnb", 8, 3, True), 5)
        changed += [client.raw(register, SERVICE + ".Register", "Change") for _ in range(2)]
        self.assertEqual(changed, [False, True, False])
        client.part("AddBurstCommand", "sn", "REF", 0)
        client.part("AddBurstCommand", "snn", "500", 2, 1)
        description = client.get(client.part("BurstCmds", "i", 1), "BurstCommand", "Description")
        self.assertEqual(description, "Delay of 500")
        self.assertEqual(client.part("ConvertBinaryToHex", "s", "101"), ["5", "0101"])
        self.assertEqual(client.part("BinaryStringNot", "si", "101", 5), "11010")

    def test_garbage_gets_an_error_and_changes_nothing(self):
        c = self.client
        pll, register = PART + "/PLLs/1", PART + "/Registers/1"
        c.part("LoadChanges")
        written = len(self.program.writes())

        def state():
            return [c.raw(PART, PROPERTIES, "GetAll", "s", SERVICE + ".Part")] + [
                c.get(f"{PART}/Registers/{i}", "Register", "Value") for i in range(1, 6)]
        before = state()
        app = SERVICE + "._Application"
        cases = [
            ("Lookup", "no PLL called 'RF PL': did you mean 'RF PLL'?", c.call, "GetVCOFrequency", "s", "RF PL"),
            ("Lookup", "no pin called ''", c.call, "SetPrgmPins", "sb", "", True),
            ("Lookup", "mode number -1", c.call, "SetMode", "n", -1),
            ("Lookup", "no burst command exists", c.part, "BurstCmds", "i", 1),
            ("Lookup", "1 to 1 exist", c.get, PART + "/PLLs/2", "PLL", "ID"),
            ("Arguments", "argument 1 (sPLL) is missing", c.call, "GetVCOFrequency"),
            ("Arguments", "argument 2 (iValue) is a string (s): a double", c.call, "SetPrgmBits", "ss", "N", "1"),
            ("Arguments", "3 arguments were given, 1", c.call, "SelectTab", "sss", "a", "b", "c"),
            ("Arguments", "argument 1 (Index) is of the type a{sv}", c.call, "SetMode", "a{sv}", {}),
            ("Arguments", "a string (s) was given", c.set, pll, "PLL", "VCOFrequency", "1900", "s"),
            ("Conversion", "argument 2 (dFreq) is NaN", c.call, "SetVCOFrequency", "sd", "RF PLL", NAN),
            ("Conversion", "is Infinity", c.set, register, "Register", "Value", INFINITE, "d"),
            ("Conversion", "an entry of", c.raw, PART + "/PrgmBits/4", SERVICE + ".PrgmBits", "SetValueArray", "ad",
             [1.0, NAN]),
            ("Conversion", "no reference frequency", c.call, "SetOSCinFrequency", "sd", "RF PLL", 1e305),
            ("Conversion", "argument 1 (Index) is 32767", c.call, "LoadReg", "n", 32767),
            ("Conversion", "1 to 53 are possible", c.set, PART, "Part", "RegisterLength", 54, "n"),
            ("Conversion", "the lines are 0 to 7", c.set, PART + "/PrgmPins/1", "PrgmPin", "Position", 15, "n"),
            ("Refused", "can't compare at 0 kHz", c.call, "SetPDFrequency", "sd", "RF PLL", 0.0),
            ("Refused", "R would not fit", c.call, "SetPDFrequency", "sd", "RF PLL", 1e-9),
            ("Refused", "built for the QRV. Select", c.call, "RestoreSetup", "s", "missing.mac"),
            ("UnknownMethod", "did you mean 'LoadPart'?", c.call, "Loadpart"),
            ("UnknownInterface", "no interface called", c.raw, ROOT, app, "LoadPart"),
            ("UnknownObject", "no object at", c.raw, ROOT + "/Application/01", app, "LoadPart"),
            ("UnknownObject", "no object at", c.raw, PART + "/Lines", "org.freedesktop.DBus.Introspectable", "Introspect"),
            ("UnknownProperty", "did you mean 'NValue'?", c.get, pll, "PLL", "Nvalue"),
            ("Conversion", "has 1048576 characters", c.call, "SelectPart", "s", MEGABYTE),
            ("PropertyReadOnly", "can only be read", c.set, PART, "Part", "BurstRunning", True, "b"),
            ("PropertyWriteOnly", "the method of that name reads it", c.get, register, "Register", "Change"),
        ]
        for case in cases:
            with self.subTest(str(case[3:])[:80]):
                self.refused(*case)
                self.assertEqual(state(), before)
        self.assertEqual(len(self.program.writes()), written, "something went to the port")

    def test_values_at_the_edges_of_32_bits(self):
        c, field = self.client, PART + "/PrgmBits/4"
        c.set(PART, "Part", "RegisterLength", 53, "n")
        c.set(field, "PrgmBits", "Length", 33, "n")
        for value, answer in ((2147483647, 2147483647), (2147483647.4, 2147483647), (2147483648, None), (2.0**33 - 1, None)):
            c.set(PART + "/PrgmBits/4", "PrgmBits", "BitValue", value, "d")
            for member in ("GetPrgmBits", "GetPrgmBitValue"):
                if answer is None:
                    self.refused("Conversion", "bit field 'R': ", c.call, member, "s", "R")
                else:
                    self.assertEqual(c.call(member, "s", "R"), answer)
        for steps, rounded in ((1, 0), (3, 2), (5, 2), (7, 4)):   # Halves go to the even neighbour.
            c.set(field, "PrgmBits", "BitValue", steps, "d")
            c.set(field, "PrgmBits", "StepValue", 0.5, "d")
            self.assertEqual(c.call("GetPrgmBitValue", "s", "R"), rounded)

    def test_edges_everywhere_leave_the_program_up(self):
        """Every property and method of the device's objects, with the edges of each type in all arguments."""
        c = self.client
        edges = {"s": ["", "N", "\u00e4;[=\n", "N" * 4096], "b": [True, False], "as": [[], ["1", "x"]],
                 "ad": [[], [-1.0, 1e308]], "n": [0, 1, -1, 32767, -32768], "i": [0, 1, -1, 2**31 - 1, -2**31],
                 "d": [0.0, -1.0, 0.5, 2.0**31, -2.0**31, 2.0**53, -1e308, 5e-324]}
        paths = {"Register": "/Registers/1", "PrgmBits": "/PrgmBits/1", "PrgmPin": "/PrgmPins/1", "PLL": "/PLLs/1",
                 "BurstCommand": "/BurstCmds/1", "Part": ""}
        endless = {"RunBurstCommands", "Delay"}
        for interface in ElementTree.parse(DESCRIPTION).getroot().findall("interface"):
            name = interface.get("name").rpartition(".")[2]
            for member in interface if name in paths else []:
                types = [member.get("type")] if member.tag == "property" else [
                    argument.get("type") for argument in member.findall("arg[@direction='in']")]
                if member.tag == "annotation" or member.get("access") == "read" or member.get("name") in endless:
                    continue
                for values in itertools.zip_longest(*(edges[kind] for kind in types)) if types else [()]:
                    values = [value if value is not None else edges[kind][0] for kind, value in zip(types, values)]
                    if c.get(PART, "Part", "ID") != "QRV3320" or not c.get(PART, "Part", "RegisterNames"):
                        c.call("SelectPart", "s", "QRV3320")
                    if c.get(PART, "Part", "BurstCmdsCount") == 0:
                        c.part("AddBurstCommand", "sn", "", 1)
                    try:
                        if member.tag == "property":
                            c.set(PART + paths[name], name, member.get("name"), values[0], types[0])
                        else:
                            c.raw(PART + paths[name], interface.get("name"), member.get("name"), "".join(types), *values)
                        c.part("UpdateDisplays")
                        c.part("LoadAll")
                    except dbus.DBusException as error:
                        self.assertTrue(error.get_dbus_name().startswith(SERVICE + ".Error."), f"{member.attrib} {error}")
                        self.assertNotIn("Failed", error.get_dbus_name(), f"{member.attrib} {error}")
                c.call("SelectPart", "s", "QRV3320")

    def test_the_tools_of_the_shell(self):
        gdbus = ["gdbus", "call", "--session", "--dest", SERVICE, "--object-path", self.client.app, "--method"]
        for arguments, answer in (
                (["GetPrgmBitValue", "R"], "(10,)"),
                (["SetPrgmPins", "CE", "false"], "()"), (["SetPrgmPins", "CE", "true", "true"], "()"),
                (["LoadReg", "0"], "()"), (["SetVCOFrequency", "RF PLL", "1901"], "()"),
                (["GetVCOFrequency", "RF PLL"], "(1901.0,)"), (["SetAutoReload", "true"], "(<''>,)")):
            called = run(*gdbus, f"{SERVICE}._Application.{arguments[0]}", *arguments[1:])
            self.assertEqual(called.stdout.strip(), answer, called.stderr)
        failed = run(*gdbus, f"{SERVICE}._Application.GetVCOFrequency", "RF PL")
        self.assertIn("did you mean 'RF PLL'?", failed.stderr)
        got = run("busctl", "--user", "get-property", SERVICE, PART + "/PLLs/1", SERVICE + ".PLL", "NumValue")
        self.assertEqual(got.stdout, "i 500\n", got.stderr)
        run("busctl", "--user", "set-property", SERVICE, PART + "/PLLs/1", SERVICE + ".PLL", "NumValue", "i", "750")
        self.assertEqual(self.client.call("GetPrgmBits", "s", "NUM"), 750)
        proxy = dbus.Interface(dbus.SessionBus().get_object(SERVICE, self.client.app), SERVICE + "._Application")
        proxy.SetPrgmPins("CE", True)
        proxy.SetPrgmPins("CE", False, False, signature="sbb")
        self.assertFalse(proxy.GetPrgmPins("CE"))
        proxy.SetPrgmBitValue("R", 12)   # A whole number goes as the double that introspection asks for.
        self.assertEqual(proxy.GetPrgmBits("R"), 12)

    def test_the_register_dump(self):
        dumped = run(os.path.join(EXAMPLES, "register-dump.sh"))
        lines = dumped.stdout.splitlines()
        self.assertEqual(lines[0], "device QRV3320", dumped.stderr)
        self.assertEqual(lines[4].split(), ["4", "REF", "122963", "1E053", "00000000011110000001010011"])
        self.assertEqual(len(lines), 6)

    def test_the_examples_of_the_manual(self):
        with open(os.path.join(SOURCE, "docs/automation.md"), encoding="utf-8") as file:
            manual = file.read()
        with open(self.program.path("QRV3320.ini"), "a", encoding="utf-8") as part:
            names = [f"NAME000{i}={name}" for i, name in enumerate(self.client.get(PART, "Part", "RegisterNames"))]
            part.write("\r\n".join(["[MODES]", "COUNT=1", *names, ""]))
        with open(self.program.path("setup.mac"), "w", encoding="utf-8") as setup:
            setup.write("[SETUP]\nPART=QRV3320\n[BURST]\nCOUNT=0\n")
        self.client.call("SetSaveSettings", "b", True)
        definitions = re.search(r"```sh\n(call\(\).*?)```", manual, re.S)[1]
        examples = re.findall(r"\| `(\w+)` \|.*\| `((?:call|gdbus) [^`]+)` → `([^`]*)` \|", manual)
        described = ElementTree.parse(DESCRIPTION).getroot().find(f"interface[@name='{SERVICE}._Application']")
        self.assertEqual({member for member, _, _ in examples},
                         {member.get("name") for member in described if member.tag != "annotation"})
        for member, command, answer in examples:
            called = run("bash", "-c", f"{definitions}\napp={self.client.app}\n{command}")
            self.assertEqual(called.stdout.strip(), answer.replace("/opt/tarnwick", self.program.folder), called.stderr)

    def test_what_a_pin_without_update_leaves_alone(self):
        before = len(self.program.writes())
        self.client.call("SetPrgmPins", "sbb", "CE", False, False)
        self.assertEqual(len(self.program.writes()), before)
        self.client.call("SetPrgmPins", "sb", "CE", False)
        self.assertEqual(self.program.writes()[before:], [["0378", "00"], ["037A", "0B"]])

    def test_the_burst_soak_leaves_the_list_and_the_window_as_they_were(self):
        soaked = run(os.path.join(EXAMPLES, "burst-soak.py"), "3", "0.05")
        self.assertIn("3 runs of 5 commands", soaked.stdout, soaked.stderr)
        self.assertEqual(self.client.get(PART, "Part", "BurstCmdsCount"), 0)
        self.assertTrue(self.program.running())


class Lives(unittest.TestCase):
    """How the program begins, lasts and ends with its clients."""

    def test_the_memory_after_a_hundred_devices_is_that_after_ten(self):
        devices = sorted(name[:-4] for name in os.listdir(PARTS) if name.startswith("QRV"))
        self.assertEqual(len(devices), 10)
        with start() as program:
            client = Client()
            client.create()
            memory = {}
            for change in range(1, 101):
                client.call("SelectPart", "s", devices[change % len(devices)])
                for page in "Registers", "Bits/Pins":
                    client.call("SelectTab", "s", page)
                memory[change] = program.memory()
            print(f"device changes: {memory[10]} kB after ten, {memory[100]} kB after a hundred", file=sys.stderr)
            if not program.sanitized():
                self.assertLess(memory[100], 1.02 * memory[10])
            client.release()
            self.assertEqual(program.ended(), 0)
            client.leave()

    def test_the_first_of_two_clients_to_release_ends_the_program(self):
        with start() as program:
            one, two = Client(), Client()
            self.assertNotEqual(one.create(), two.create())
            one.call("SelectPart", "s", "QRV3320")
            two.call("SetPrgmBitValue", "sd", "R", 25.0)
            self.assertEqual(one.call("GetPrgmBitValue", "s", "R"), 25)
            two.release()
            self.assertEqual(program.ended(), 0)
            with open(program.path("QRV3320.ini"), encoding="utf-8") as saved:
                self.assertIn(f"VALUE03={122963 + (15 << 3)}", saved.read().split())
            one.leave()
            two.leave()

    def test_a_client_that_never_releases_releases_by_its_end(self):
        with start() as program:
            script = ("import dbus, os; f = dbus.SessionBus().get_object('com.ostrel.Tarnwick2x', "
                      "'/com/ostrel/Tarnwick2x')\nfor i in range(50): f.CreateApplication()\nos._exit(0)")
            self.assertEqual(run("/usr/bin/python3", "-c", script).returncode, 0)
            self.assertEqual(program.ended(), 0)

    def test_a_looping_burst_is_stopped_by_a_second_client_which_is_served_meanwhile(self):
        with start() as program:
            one, two = Client(), Client()
            two.app = one.create()
            one.call("SelectPart", "s", "QRV3320")
            one.part("AddBurstCommand", "sn", "INT", 0)
            one.send("RunBurstMode")
            wait_until(lambda: two.get(PART, "Part", "BurstRunning"), "the run")
            self.assertEqual(two.call("GetPrgmBitValue", "s", "R"), 10)
            two.call("RunBurstMode")   # A second run returns at once.
            two.call("SetPrgmBitValue", "sd", "R", 30.0)
            two.call("SelectPart", "s", "QRV6180")   # Empties the list; the run goes on with it.
            self.assertEqual(two.get(PART, "Part", "BurstCmdsCount"), 0)
            self.assertTrue(two.get(PART, "Part", "BurstRunning"))
            two.call("StopBurstMode")
            wait_until(lambda: not two.get(PART, "Part", "BurstRunning"), "the end of the run")
            two.part("AddBurstCommand", "sn", "", 5)
            one.send("RunBurstMode")
            wait_until(lambda: two.get(PART, "Part", "BurstRunning"), "the second run")
            one.leave()   # Stops its run instead of closing the window.
            wait_until(lambda: not two.get(PART, "Part", "BurstRunning"), "the end of the second run")
            self.assertEqual(two.get(PART, "Part", "ID"), "QRV6180")
            two.create()
            two.release()
            self.assertEqual(program.ended(), 0)
            two.leave()

    def test_a_second_program_and_one_without_a_bus_work_without_the_service(self):
        lonely = {name: value for name, value in os.environ.items() if name != "DBUS_SESSION_BUS_ADDRESS"}
        with start() as first, start(wait=False) as second, start(environment=lonely, wait=False) as alone:
            client = Client()
            client.create()
            for program in (second, alone):
                wait_until(lambda p=program: os.path.exists(p.path("port.log")), "the start")
            client.call("SelectPart", "s", "QRV3320")
            self.assertEqual(client.call("SelectPart", "s", "QRV3320"), first.path("QRV3320.ini"))
            client.release()
            self.assertEqual(first.ended(), 0)
            self.assertTrue(second.idle() and second.running())
            self.assertTrue(alone.running())
            client.leave()

    def test_the_end_of_the_bus_ends_all_clients_and_what_they_hold(self):
        for held in (True, False):
            daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                      stdout=subprocess.PIPE, text=True)
            environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=daemon.stdout.readline().strip())
            with start(environment=environment, wait=False) as program:
                wait_until(lambda: run("gdbus", "call", "--session", "-d", SERVICE, "-o", PART, "-m", SERVICE +
                                       ".Part.BinaryToDecimal", "1", env=environment).returncode == 0, "the service")
                if held:
                    holder = subprocess.Popen([os.path.join(EXAMPLES, "hold-application.py")], env=environment,
                                              stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
                    holder.stdout.readline()
                daemon.terminate()
                daemon.wait()
                daemon.stdout.close()
                if held:
                    self.assertEqual(program.ended(), 0)
                    holder.communicate()
                else:
                    time.sleep(0.5)
                    self.assertTrue(program.running())

    def test_the_bus_starts_the_program(self):
        with start(wait=None) as program:
            services = program.path("share/dbus-1/services")
            os.makedirs(services)
            with open(os.path.join(SOURCE, "packaging/com.ostrel.Tarnwick2x.service.in"), encoding="utf-8") as template:
                text = template.read().replace("@CMAKE_INSTALL_FULL_BINDIR@", program.folder)
            with open(os.path.join(services, SERVICE + ".service"), "w", encoding="utf-8") as file:
                file.write(text)
            environment = dict(os.environ, XDG_DATA_DIRS=program.path("share"))
            sweep = os.path.join(EXAMPLES, "frequency-sweep.py")
            script = (f"import dbus, subprocess; get = dbus.SessionBus().get_object\n"
                      f"get('{SERVICE}', get('{SERVICE}', '{ROOT}').CreateApplication()).SelectPart('QRV3320')\n"
                      f"subprocess.run(['{sweep}', 'RF PLL', '1900', '1901', '0.5'])")
            swept = run("dbus-run-session", "--", "/usr/bin/python3", "-c", script, env=environment)
            self.assertEqual(swept.stdout.split()[-6:], ["1900.500000", "1900.500000", "0.0", "1901.000000",
                                                         "1901.000000", "0.0"], swept.stderr)
            wait_until(lambda: len(program.logged()) > 1000, "the writes")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
