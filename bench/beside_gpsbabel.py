#!/usr/bin/env python3
"""Conversions of 100,000 items beside gpsbabel's, in one run: seconds of processor time and megabytes of memory.

Usage: beside_gpsbabel.py PELORIX_CLI"""
import os
import subprocess
import sys
import tempfile

ITEMS = 100000
CLI = os.path.abspath(sys.argv[1])


def write_waypoints(path):
    with open(path, "w", encoding="ascii") as file:
        file.write("OziExplorer Waypoint File Version 1.0\nWGS 84\nReserved 2\nReserved 3\n")
        for i in range(ITEMS):
            file.write("%4d,%-14s,%11.6f,%11.6f,%11.7f,%2d, 1, 4,         0,    65535,%-40s, 0,0,0, -777\n"
                       % (i + 1, "WPT%05d" % i, 45 + i * 1e-5, -7 - i * 1e-5, 36844.5 + i / 86400, 70, "A COMMENT"))


def write_track(path):
    with open(path, "w", encoding="ascii") as file:
        file.write("OziExplorer Track Point File Version 2.0\nWGS 84\nAltitude is in Feet\nReserved 3\n"
                   "0,2,255,Track,0\n%d\n" % ITEMS)
        for i in range(ITEMS):
            file.write("%11.6f,%11.6f,%d,-777,%11.7f\n"
                       % (45 + i * 1e-5, -7 - i * 1e-5, i % 1000 == 0, 36844.5 + i * 5 / 86400))


def cost_of(command):
    """Processor seconds and peak megabytes of the best of three runs."""
    best = None
    for _ in range(3):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        if status != 0:
            sys.exit("failed: " + " ".join(command))
        seconds = usage.ru_utime + usage.ru_stime
        megabytes = usage.ru_maxrss / 1024
        best = (seconds, megabytes) if best is None else (min(best[0], seconds), max(best[1], megabytes))
    return best


def main():
    with tempfile.TemporaryDirectory() as folder:
        def path(name):
            return os.path.join(folder, name)
        write_waypoints(path("w.wpt"))
        write_track(path("t.plt"))
        print("%-14s %22s %22s %14s" % ("", "gpsbabel", "pelorix-cli", "ratio"))
        for source, target, output_format in (("w.wpt", "out.wpt", "ozi"), ("w.wpt", "out.gpx", "gpx"),
                                              ("t.plt", "out.gpx", "gpx")):
            theirs = cost_of(["gpsbabel", "-i", "ozi", "-f", path(source), "-o", output_format, "-F", path("b-" + target)])
            ours = cost_of([CLI, "--quiet", "convert", path(source), "-o", path(target)])
            print("%-14s %10.2f s %6.1f MB %10.3f s %6.1f MB   1:%.1f  1:%.1f"
                  % (source[1:] + " to " + target[3:], *theirs, *ours, theirs[0] / ours[0], theirs[1] / ours[1]))


if __name__ == "__main__":
    main()
