#!/usr/bin/env python3
"""start_time.py PELORIX [RUNS]: how long the window program takes until its window is on the screen.

Run by tests/window/with_display, for a Windows program by tests/windows/with_wine inside it; needs xdotool. Prints the seconds of each run and the memory used then."""
import os
import signal
import subprocess
import sys
import tempfile
import time


def window_is_there(pid):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid), "--name", "Pelorix --"],
                           capture_output=True, text=True, check=False)
    return bool(found.stdout.strip())


def main():
    program = os.path.abspath(sys.argv[1])
    command = [os.environ["WINE"], program] if program.endswith(".exe") else [program]
    for _ in range(int(sys.argv[2]) if len(sys.argv) > 2 else 5):
        with tempfile.TemporaryDirectory() as folder:
            start = time.monotonic()
            process = subprocess.Popen(command, cwd=folder, stderr=subprocess.DEVNULL)
            while not window_is_there(process.pid) and process.poll() is None and time.monotonic() - start < 30:
                time.sleep(0.005)
            seconds = time.monotonic() - start
            with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
                memory = next((line.split()[1] for line in status if line.startswith("VmRSS")), "0")
            print(f"{seconds:.3f} s, {int(memory) / 1024:.0f} MB")
            process.send_signal(signal.SIGTERM)
            process.wait()


if __name__ == "__main__":
    main()
