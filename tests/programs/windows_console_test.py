#!/usr/bin/env python3
"""The Windows console program under Wine, against the Linux one: ports, file names, consoles, line ends.

A simulated receiver of the Linux program serves a pseudo-terminal, which Wine calls COM1 or COM12.
Usage: windows_console_test.py PELORIX_CLI_EXE PELORIX_CLI [unittest arguments]"""
import os
import re
import subprocess
import sys
import tempfile
import termios
import time
import unittest

from in_folder import LIMIT, InFolder, items, read, without_date

EXE = os.path.abspath(sys.argv.pop(1))
InFolder.cli = os.path.abspath(sys.argv.pop(1))
# As Debian's wine64 has them; the commands of its package wine complain where 32-bit programs cannot run.
WINE, WINESERVER = "/usr/lib/wine/wine64", "/usr/lib/wine/wineserver64"
HOME = tempfile.TemporaryDirectory()  # of this machine of Wine's: its disk C:, and the links behind its ports
os.environ.update(WINEPREFIX=os.path.join(HOME.name, "prefix"), WINEARCH="win64", WINEDEBUG="-all", DISPLAY="",
                  LC_ALL="C.UTF-8", WINEDLLOVERRIDES="mscoree,mshtml=")
LATIN_NAME, ANY_NAME = "Größe.txt", "Größe-日本-😀.txt"


def link_of(port):
    return os.path.join(HOME.name, port)


def wine(*arguments, timeout=LIMIT, **options):
    return subprocess.run([WINE, *arguments], stdin=subprocess.DEVNULL, timeout=timeout, **options)


def end_wine():
    for option in ("-k", "-w"):
        subprocess.run([WINESERVER, option], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)


def setUpModule():
    unittest.addModuleCleanup(HOME.cleanup)
    unittest.addModuleCleanup(end_wine)
    print("Making a machine for Wine ...", file=sys.stderr)
    quiet = {"check": True, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    wine("wineboot", "-i", timeout=3 * LIMIT, **quiet)
    for port in ("com1", "com12"):
        wine("reg", "add", r"HKLM\Software\Wine\Ports", "/v", port.upper(), "/d", link_of(port), "/f", **quiet)
    end_wine()  # it takes up its ports when it starts


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


class OnWindows(InFolder):
    def run_exe(self, *arguments, **options):
        result = wine(EXE, *arguments, cwd=self.folder, capture_output=True, **options)
        # One CR before each LF, and no other.
        for output in (result.stdout, result.stderr):
            self.assertEqual(output.replace(b"\r\n", b"").count(b"\n") + output.replace(b"\r\n", b"").count(b"\r"), 0, output)
        result.stdout, result.stderr = (text.decode().replace("\r\n", "\n") for text in (result.stdout, result.stderr))
        return result

    def plug(self, port, *options, family="garmin"):
        """A simulated receiver on that port; returns its process."""
        return self.simulate("--link", link_of(port), *options, family=family)[0]

    def assert_same_file(self, linux, windows):
        """Line ends aside, where the format is a text."""
        theirs, ours = read(self.path(linux)), read(self.path(windows))
        self.assertNotEqual(theirs, "")
        if not linux.endswith((".png", ".bmp")):
            self.assertEqual(ours.count("\n"), ours.count("\r\n"), windows)
            self.assertNotIn("\r\r", ours)
            theirs, ours = (re.sub("<metadata><time>.*?</time>", "", without_date(text.replace("\r\n", "\n")))
                            for text in (theirs, ours))
        self.assertEqual(theirs, ours, windows)


class Conversations(OnWindows):
    KINDS = ["-o", "{}.txt", "-o", "{}.gpx", "-o", "{}.wpt", "-o", "{}.plt", "-o", "{}.rte", "-o", "{}.csv", "-o", "{}.kml"]

    def test_the_same_conversation_gives_the_same_files(self):
        for family, port, kinds in [("garmin", "COM1", ["all"]), ("lowrance", "COM12", ["waypoints", "routes"])]:
            results = []
            for who in ("linux", "windows"):
                process = self.plug(port.lower(), family=family)
                run, name = (self.run_cli, link_of(port.lower())) if who == "linux" else (self.run_exe, port)
                files = [word.format(who) for word in self.KINDS]
                results.append([run("--family", family, "--port", name, *arguments) for arguments in
                                (["identify"], ["--quiet", "download", *kinds, *files],
                                 ["--quiet", "screen", "-o", who + ".png"])])
                self.end(process)
            for linux, windows in zip(*results):
                self.assertEqual((windows.returncode, windows.stdout), (0, linux.stdout), windows.stderr)
            for word in self.KINDS[1::2] + ["{}.png"]:
                self.assert_same_file(word.format("linux"), word.format("windows"))
            print(f"\n{port}: {family} gave the same {len(self.KINDS) // 2 + 1} files.", file=sys.stderr)

    def test_uploads_arrive(self):
        text = ("Version 2\nD WGS-84\nM DDD\n"
                "W  HUT             N54.3250000 E010.1450000 Sun Dec 31 00:00:00 1989 Fuel and water      ^   18^Black ^S+N^0\n")
        self.write("new.txt", text.replace("\n", "\r\n"))
        process = self.plug("com1", "--save", "kept.txt")
        result = self.run_exe("--port", "COM1", "upload", "new.txt")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.end(process)
        self.assertTrue(any(line.startswith("W  HUT ") for line in items(read(self.path("kept.txt")))))

    def test_ports_and_find(self):
        self.plug("com12")
        ports = [line.split()[0] for line in self.run_exe("ports").stdout.splitlines()]
        self.assertEqual([port for port in ports if port in ("COM1", "COM12")], ["COM1", "COM12"])
        self.assertEqual(ports, sorted(ports, key=lambda port: int(port[3:])))
        result = self.run_exe("--port", "COM12", "find")
        self.assertEqual(result.stdout, "COM12  Garmin: Simulated GPS 128 Software Version 2.50\n")

    def test_a_port_that_cannot_be_opened_is_told_with_the_reason(self):
        # Wine itself lets everybody open a port; what may not be written to gives the error that Windows gives then.
        os.symlink("/sys/kernel/uevent_seqnum", link_of("com12"))
        self.addCleanup(os.remove, link_of("com12"))
        for port, error, advice in [
                ("COM77", "Comm error in AsyncInit 1: 2", "There is no port COM77. Ports of this machine: COM1, "),
                ("COM12", "Comm error in AsyncInit 1: 5", "COM12 is in use by another program."),
                ("NUL", "Comm error in AsyncInit GetCommState: ", "NUL is not a serial device.")]:
            result = self.run_exe("--port", port, "identify")
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertRegex(result.stderr, f"(?s)^Opening COM Port\n{error}.*\nAsyncInit Error\n{advice}")
            self.assertNotIn("AsyncStop", result.stderr)

    def test_a_port_that_vanishes_leaves_what_has_arrived(self):
        process = self.plug("com1", "--baud", "9600")
        with subprocess.Popen([WINE, EXE, "--port", "COM1", "download", "tracks", "-o", "part.txt"], cwd=self.folder,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as download:
            time.sleep(3)
            process.kill()
            _, said = download.communicate(timeout=LIMIT)
        self.assertEqual(download.returncode, 1)
        self.assertRegex(said.decode(), r"\d+ of 1002 received")
        self.assertIn("T  N54", read(self.path("part.txt")))


class FilesAndNames(OnWindows):
    def setUp(self):
        super().setUp()
        self.assertEqual(self.run_cli("--port", "sim:garmin", "--quiet", "download", "waypoints", "-o", "a.txt").returncode, 0)

    def test_names_beyond_the_code_page(self):
        for name in (LATIN_NAME, ANY_NAME, windows_path(self.path("full " + ANY_NAME)), "sub/" + ANY_NAME, "sub\\2" + ANY_NAME):
            os.makedirs(self.path("sub"), exist_ok=True)
            result = self.run_exe("convert", "a.txt", "-o", name)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertIn(f"File {name} saved\n", result.stderr)
            self.assertEqual(self.run_exe("info", name).stdout, self.run_cli("info", "a.txt").stdout)
        self.assertEqual(sorted(os.listdir(self.path("sub"))), sorted([ANY_NAME, "2" + ANY_NAME]))
        self.assert_same_file("a.txt", ANY_NAME)
        self.assertEqual(self.run_exe("info", "Ü" + ANY_NAME).stderr, f"do_input: Unable to open file: Ü{ANY_NAME}\n")

    def test_other_drives_and_long_paths(self):
        deep = os.path.join(HOME.name, "prefix", "drive_c", "x.txt")
        for name, path in [("C:\\x.txt", deep), ("C:/x.txt", deep), ("\\\\?\\Z:" + self.path("l" * 200).replace("/", "\\"),
                                                                  self.path("l" * 200))]:
            result = self.run_exe("convert", "a.txt", "-o", name)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(len(items(read(path))), 30)
            os.remove(path)

    def test_configuration_and_debug_log(self):
        name, log = "Einstellung-日.ini", "Protokoll-日.txt"
        for config in ([], ["--config", name]):
            self.assertEqual(self.run_exe(*config, "--set", "Pilot=Amelia", "--set", "DebugFileName=Größe-日", "--set",
                                          "EnableDebugFile=1", "--set", "DebugFileNameExtn=.log", "--set",
                                          "SaveDebugFileWorkingDirectory=" + windows_path(self.folder), "--port", "sim:garmin",
                                          "save-config").returncode, 0)
            ini = read(self.path(config[-1] if config else "pelorix.ini"))
            self.assertIn("Pilot=Amelia\r\n", ini)
            os.remove(self.path("Größe-日.log"))
            self.assertEqual(self.run_exe(*config, "identify").returncode, 0)
            self.assertIn("Sending: ", read(self.path("Größe-日.log")))
        self.assertEqual(self.run_exe("--debug-log", "Z:" + self.path(log), "identify").returncode, 0)
        self.assertIn("Program version: ", read(self.path(log)))

    def test_user_datums_here_along_the_path_and_beside_the_program(self):
        row = "{},-69.4,-0.37264639,-5,135,172\r\n"
        folders = {"HERE": self.folder, "ON_PATH": self.path("Größe-日"), "BESIDE": self.path("programs")}
        for name, folder in folders.items():
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "pelorixdatums.txt"), "w", newline="", encoding="ascii") as file:
                file.write(row.format(name))
        os.symlink(EXE, os.path.join(folders["BESIDE"], "pelorix-cli.exe"))
        program = windows_path(os.path.join(folders["BESIDE"], "pelorix-cli.exe"))
        # Wine keeps the PATH of Linux to itself.
        self.write("run.bat", f'@set PATH=%PATH%;%MORE%\r\n@"{program}" datums\r\n')
        for expected in ("HERE", "ON_PATH", "BESIDE"):
            more = windows_path(folders["ON_PATH"])
            result = wine("cmd", "/c", "run.bat", cwd=self.folder, capture_output=True, env={**os.environ, "MORE": more})
            self.assertEqual(result.stdout.decode("utf-8", "replace").split()[0], expected, result)
            os.remove(os.path.join(folders[expected], "pelorixdatums.txt"))

    def test_output_to_a_file_is_utf_8(self):
        with open(self.path("said"), "wb") as file:
            wine(EXE, "info", ANY_NAME, cwd=self.folder, stdout=subprocess.DEVNULL, stderr=file)
        with open(self.path("said"), "rb") as file:
            self.assertEqual(file.read(), f"do_input: Unable to open file: {ANY_NAME}\r\n".encode())


class OnConsole(OnWindows):
    """Wine draws a console of Windows on a pseudo-terminal, and hands it the keys."""

    def on_console(self, *arguments, keys, wanted, **options):
        # How the terminal is left is Wine's affair.
        return self.run_on_terminal([WINE, EXE, *arguments], keys, wanted, leaves_echo=False, **options)

    @staticmethod
    def wait_for_reading(terminal):
        """Until Wine's console has the keys to itself: what is typed before comes with Linux's line ends."""
        end = time.monotonic() + LIMIT
        while termios.tcgetattr(terminal)[3] & termios.ECHO and time.monotonic() < end:
            time.sleep(0.05)

    def test_a_console_shows_every_character(self):
        _, shown, _ = self.on_console("info", ANY_NAME, keys=b"", wanted="Größe-日本-".encode())
        self.assertIn(b"Unable to open file", shown)

    def test_the_question_before_turning_off_is_answered_by_a_line(self):
        for answer in (b"y\r", b"\r", b"n\r"):
            status, shown, _ = self.on_console("--port", "sim:garmin", "poweroff", keys=answer, wanted=rb"\[y/N\]",
                                               before_keys=self.wait_for_reading)
            self.assertEqual(status, 0 if answer == b"y\r" else 1, shown)
            self.assertEqual(b"The GPS receiver was not turned off." in shown, status == 1)

    # Not the ESC key: a lone ESC on the pseudo-terminal did not reach the program through Wine's console.
    def test_ctrl_c_ends_a_download_cleanly(self):
        self.plug("com1", "--baud", "9600")
        status, shown, took = self.on_console("--port", "COM1", "download", "tracks", "-o", ANY_NAME, keys=b"\x03",
                                              wanted=rb" [2-9]\d*/\d+")
        self.assertEqual(status, 1)
        self.assertLess(took, 20)
        self.assertIn(b"Operation Aborted", shown)
        self.assertIn("T  N54", read(self.path(ANY_NAME)))
        self.assertLess(len(items(read(self.path(ANY_NAME)))), 900)
        self.assertEqual(self.run_exe("--port", "COM1", "identify").returncode, 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
