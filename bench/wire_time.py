#!/usr/bin/env python3
"""Downloads waypoints from the simulated receiver of a family (Garmin at 9600 bits per second, Lowrance/Eagle at 19200),
uploads them to it, and compares the times with the wire's.

Usage: bench/wire_time.py PELORIX_CLI [NUMBER_OF_WAYPOINTS [garmin|lowrance]]"""
import os
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

HEADER = "Version 2\nD WGS-84\nM DDD\nZ 0.000000\n"
LINE = "W  {:<15} N{:010.7f} E{:011.7f} Sun Dec 31 00:00:00 1989 {:<20}^   18^Black ^S+N^0\n"


def wire_bytes(log):
    """All bytes of the debug log, the stuffing of received packets put back."""
    sent = received = 0
    packet = None

    def count():
        return len(packet) + sum(byte == 0x10 for byte in packet[2:-2]) if packet else 0
    for line in open(log, encoding="latin-1"):
        if line.startswith(("Sending:", "Received:")):
            received += count()
            packet = [] if line.startswith("Received:") else None
        elif re.match(r" [0-9a-f]{2}", line):
            values = [int(line[at:at + 3], 16) for at in range(0, len(line.rstrip("\n")) - 2, 5)]
            if packet is None:
                sent += len(values)
            else:
                packet += values
    return sent + received + count()


def lowrance_wire_bytes(log):
    """All bytes of the debug log: nothing is stuffed."""
    lines = [line.rstrip("\n") for line in open(log, encoding="latin-1") if re.match(r" [0-9a-f]{2}", line)]
    return sum(len(range(0, len(line) - 2, 5)) for line in lines)


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


FAMILIES = {"garmin": (9600, wire_bytes), "lowrance": (19200, lowrance_wire_bytes)}


def measure(cli, what, family, port, number, command):
    speed, bytes_of = FAMILIES[family]
    busy, start = processor_seconds(), time.monotonic()
    subprocess.run([cli, "--quiet", "--family", family, "--port", port, "--speed", str(speed), "--debug-log", "log",
                    *command], check=True)
    took, busy = time.monotonic() - start, processor_seconds() - busy
    wire = bytes_of("log") / (speed / 10)
    print(f"{what} of {number} waypoints at {speed}: {took:.2f} s, wire time {wire:.2f} s, ratio {took / wire:.4f}, "
          f"processor {100 * busy / took:.2f} % of one core")


def main():
    cli, number = os.path.abspath(sys.argv[1]), int(sys.argv[2]) if len(sys.argv) > 2 else 500
    family = sys.argv[3] if len(sys.argv) > 3 else "garmin"
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        with open("load.txt", "w", encoding="latin-1") as file:
            file.write(HEADER)
            for i in range(number):
                file.write(LINE.format(f"WP{i:04}", 45 + i * 0.0137, 7 + i * 0.0071, f"COMMENT {i}"))
        simulator = subprocess.Popen([cli, "simulate", family, "--load", "load.txt", "--baud", str(FAMILIES[family][0])],
                                     stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        port = simulator.stdout.readline().strip()
        measure(cli, "download", family, port, number, ["download", "waypoints", "-o", "out.txt"])
        measure(cli, "upload", family, port, number, ["upload", "out.txt", "--kinds", "waypoints"])
        simulator.send_signal(signal.SIGINT)
        simulator.wait()


if __name__ == "__main__":
    main()
