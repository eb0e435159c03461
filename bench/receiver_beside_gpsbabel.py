#!/usr/bin/env python3
"""The console program and gpsbabel at the same simulated receiver: seconds of each transfer, at 9600 bits per second.

Usage: bench/receiver_beside_gpsbabel.py PELORIX_CLI [NUMBER_OF_ITEMS [BAUD]]"""
import os
import signal
import subprocess
import sys
import tempfile
import time

KINDS = {"waypoints": "-w", "routes": "-r", "tracks": "-t"}


def write_items(number):
    """Waypoints, routes of 30 points of them, and one track, as native text."""
    with open("all.txt", "w", encoding="latin-1") as file:
        file.write("Version 2\nD WGS-84\nM DDD\nZ 0.000000\n")
        lines = [f"W  {f'WP{i:04}':<15} N{45 + i * 0.0137:010.7f} E{7 + i * 0.0071:011.7f} Sun Dec 31 00:00:00 1989 "
                 f"{f'COMMENT {i}':<20}^   18^Black ^S+N^0\n" for i in range(number)]
        file.writelines(lines)
        for route in range(number // 30):
            file.write(f"R  {route + 1:02} ROUTE {route + 1}\n")
            file.writelines(lines[route * 30:route * 30 + 30])
            file.write(f"E  {route + 1:02}\n")
        file.write("N  New Track Log Start - LOG,Red,0\n")
        for i in range(number):
            file.write(f"T  N{45 + i * 0.0001:010.7f} E{7 + i * 0.0001:011.7f} Sat Jun 15 08:{i // 60 % 60:02}:{i % 60:02} "
                       f"2002 ;{100 + i % 50};1e24;\n")


def seconds(command):
    start = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.monotonic() - start


def main():
    cli = os.path.abspath(sys.argv[1])
    number = sys.argv[2] if len(sys.argv) > 2 else "300"
    baud = sys.argv[3] if len(sys.argv) > 3 else "9600"
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        write_items(int(number))
        ours = [cli, "--quiet", "--set", "ForceExactDupeRemoval=1", "--port"]
        simulator = subprocess.Popen([cli, "--set", "ForceExactDupeRemoval=1", "simulate", "garmin", "--load", "all.txt",
                                      "--baud", baud], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        port = simulator.stdout.readline().strip()
        for kind, letter in KINDS.items():
            there = seconds(["gpsbabel", letter, "-i", "garmin", "-f", port, "-o", "gpx", "-F", f"{kind}.gpx"])
            here = seconds([*ours, port, "download", kind, "-o", f"{kind}.txt"])
            print(f"download {kind}: {here:.2f} s, gpsbabel {there:.2f} s")
            there = seconds(["gpsbabel", letter, "-i", "gpx", "-f", f"{kind}.gpx", "-o", "garmin", "-F", port])
            here = seconds([*ours, port, "upload", f"{kind}.gpx", "--kinds", kind])
            print(f"upload {kind}: {here:.2f} s, gpsbabel {there:.2f} s")
        simulator.send_signal(signal.SIGINT)
        simulator.wait()


if __name__ == "__main__":
    main()
