"""What tests of programs share: a folder of their own, simulated receivers, terminals."""
import os
import pty
import re
import select
import signal
import subprocess
import tempfile
import termios
import time
import unittest

LIMIT = 60  # seconds that no command of these tests may take


def without_date(text):
    return re.sub(r"^#.* GMT$", "#", text, flags=re.M)


def read(path):
    with open(path, encoding="latin-1", newline="") as file:
        return file.read()


def items(text):
    return [line for line in text.splitlines() if line[:3] in ("W  ", "T  ", "R  ", "P  ", "E  ", "N  ")]


class InFolder(unittest.TestCase):
    """Runs the console program in a folder of each test's own."""
    cli = None  # the program, set once

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="latin-1") as file:
            file.write(text)
        return self.path(name)

    def run_cli(self, *arguments):
        return subprocess.run([self.cli, *arguments], cwd=self.folder, capture_output=True, text=True, timeout=LIMIT,
                              stdin=subprocess.DEVNULL)

    def start(self, *arguments):
        """The running program, whose output and messages can be read."""
        return subprocess.Popen([self.cli, *arguments], cwd=self.folder, text=True, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def shell(self, command):
        return subprocess.run(["bash", "-c", command], cwd=self.folder, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, timeout=LIMIT)

    def simulate(self, *options, family="garmin"):
        """Starts a simulated receiver; returns its process and the path of its pseudo-terminal."""
        process = self.start("simulate", family, *options)
        self.addCleanup(self.end, process)
        return process, process.stdout.readline().strip()

    @staticmethod
    def end(process):
        if process.poll() is None:
            process.send_signal(signal.SIGINT)
        process.communicate(timeout=LIMIT)

    def run_on_terminal(self, command, keys, wanted, leaves_echo=True, before_keys=lambda terminal: None):
        """The exit status, what was shown, and the seconds from the keys, pressed once this pattern is shown, to the end."""
        pid, terminal = pty.fork()
        if pid == 0:
            os.chdir(self.folder)
            os.execvp(command[0], command)
        shown = b""
        pressed_at = None
        try:
            while select.select([terminal], [], [], LIMIT)[0]:
                shown += os.read(terminal, 1000)
                if pressed_at is None and re.search(wanted, shown):
                    before_keys(terminal)
                    pressed_at = time.monotonic()
                    os.write(terminal, keys)
        except OSError:  # the program has ended
            pass
        if leaves_echo:  # as it was
            self.assertTrue(termios.tcgetattr(terminal)[3] & termios.ECHO)
        os.close(terminal)
        self.assertIsNotNone(pressed_at, shown)
        return os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]), shown, time.monotonic() - pressed_at
