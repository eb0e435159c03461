#!/usr/bin/env python3
"""The console program as its users run it: files, pseudo-terminals, keys, exit status.

Usage: console_program_test.py PELORIX_CLI [unittest arguments]"""
import csv
import os
import pty
import re
import select
import shutil
import signal
import subprocess
import sys
import termios
import time
import tty
import unittest
import xml.etree.ElementTree as ElementTree

from in_folder import LIMIT, InFolder, items, read, without_date

CLI = os.path.abspath(sys.argv.pop(1))
InFolder.cli = CLI


class Usage(InFolder):
    def test_wrong_usage_ends_with_2(self):
        for arguments in [[], ["fly"], ["download"], ["download", "waypoints"], ["download", "melons", "-o", "x"],
                          ["--set", "NoSuchKey=1", "datums"], ["--set", "COM=nine", "datums"], ["--set", "COM", "datums"],
                          ["shift", "1", "2"], ["convert", "a", "-o", "b", "--notation", "xyz"], ["list", "melons", "a"]]:
            result = self.run_cli(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(result.stdout, "", arguments)
            self.assertNotEqual(result.stderr, "", arguments)
        self.assertIn("teleport", self.run_cli("teleport").stderr)

    def test_help_and_version_go_to_standard_output(self):
        self.assertRegex(self.run_cli("--version").stdout, r"^Pelorix \d+\.\d+\.\d+\n$")
        self.assertIn("download", self.run_cli("--help").stdout)

    def test_results_that_do_not_get_out_are_a_failure(self):
        result = self.shell(f"'{CLI}' datums > /dev/full")
        self.assertEqual((result.returncode, result.stderr), (1, "Standard output could not be written.\n"))

    def test_messages_do_not_land_in_files_when_standard_error_is_closed(self):
        self.assertEqual(self.shell(f"exec '{CLI}' --port sim:garmin --debug-log log identify 2>&-").returncode, 0)
        self.assertNotIn("Opening COM Port", read(self.path("log")))

    def test_positions(self):
        for arguments, expected in [
                (["shift", "40.0", "-100.0", "--from", "NAD27_CONUS", "--to", "WGS-84"], "40.000009465 -100.000417607"),
                (["shift", "40.0", "-100.0", "--from", "WGS-84", "--to", "NAD27_CONUS"], "39.999990503 -99.999582382"),
                (["format", "12.9999999", "-7.25", "--set", "DMSMode=DMS"], "N12 59 60.00 W007 15 00.00"),
                (["format", "-5.5", "-7.25", "--notation", "ddd"], "S05.5000000 W007.2500000"),
                (["parse", "S05", "30.0000", "W007", "15.0000"], "-5.500000000 -7.250000000"),
                (["parse", "S0", "W0"], "0.000000000 0.000000000"),
                (["parse", "-33.5", "151.25"], "-33.500000000 151.250000000"),
                (["distance", "0", "0", "0", "1", "--set", "DistValues=NAUTICAL"], "60.007473 nm")]:
            result = self.run_cli(*arguments)
            self.assertEqual((result.stdout, result.returncode), (expected + "\n", 0), arguments)

    def test_what_is_no_position_or_datum_is_refused_with_the_reason(self):
        result = self.run_cli("parse", "N91", "30", "E7", "15")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn("is no position", result.stderr)
        result = self.run_cli("shift", "1", "2", "--from", "Atlantis", "--to", "WGS-84")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Error: 'from' datum 'Atlantis' not found.  Defaulting to WGS-84", result.stderr)

    def test_datums_of_the_user_stand_first_and_replace_built_in_ones(self):
        self.write("pelorixdatums.txt", ";comment,,,,,\nLocal_Grid,-69.4,-0.37264639,-5,135,172\n")
        names = self.run_cli("datums").stdout.splitlines()
        self.assertEqual((len(names), names[0]), (164, "Local_Grid"))
        same = self.run_cli("shift", "40", "-100", "--from", "Local_Grid", "--to", "Alaska_(NAD-27)")
        self.assertEqual(same.stdout, "40.000000000 -100.000000000\n")
        self.assertEqual(self.run_cli("datums", "--save", "list.dtm").returncode, 0)
        self.assertIn("ARC-1950_mean, ----------------------   -112.145, -0.547507140, -143,  -90, -294",
                      read(self.path("list.dtm")))

    def test_the_configuration_is_written_only_when_asked_for(self):
        self.run_cli("--set", "SaveConfigurationAtExit=1", "datums")
        self.assertEqual(os.listdir(self.folder), [])
        result = self.run_cli("--family", "garmin", "--port", "/dev/ttyUSB0", "--set", "Pilot=Amelia", "save-config")
        self.assertEqual(result.returncode, 0)
        text = read(self.path("pelorix.ini"))
        self.assertTrue(text.startswith("GPS=Garmin\nCOM=1\n"))
        self.assertIn("\nPilot=Amelia\n", text)
        self.assertIn("\nPortName=/dev/ttyUSB0\n", text)
        result = self.run_cli("save-config", "--config", self.path("pelorix.ini"))
        self.assertEqual(result.stderr, "pelorix.ini saved.\n")
        self.assertEqual(read(self.path("pelorix.ini")), text)


class Files(InFolder):
    TEXT = ("Version 2\n#Mon Jan 01 00:00:00 2001 GMT\nD WGS-84\nM DMM\nZ 0.000000\n"
            "W  HUT             N47 15.1234 E011 30.5000 Sat Jun 02 08:30:00 2001 M\xfcller              ^   18^Black ^S+N^3\n"
            "T  N47 15.1234 E011 30.5000 Sat Jun 02 08:30:00 2001 ;   1234.50;      1e25;\n")

    def test_a_file_is_read_listed_and_written_again_byte_for_byte(self):
        self.write("a.txt", self.TEXT)
        for source, target in [("a.txt", "b.txt"), ("b.txt", "c.txt")]:
            self.assertEqual(self.run_cli("convert", source, "-o", target).returncode, 0)
        self.assertEqual(without_date(read(self.path("b.txt"))), without_date(read(self.path("c.txt"))))
        for result in (self.run_cli("info", "a.txt"), self.shell(f"cat a.txt | '{CLI}' info /dev/stdin")):
            self.assertEqual(result.stdout, "W:1 T:1 (TP:1) P:0 R:0 E:0\n")
        self.assertEqual(self.run_cli("list", "waypoints", "a.txt").stdout, self.TEXT.splitlines()[5] + "\n")

    def test_a_datum_and_notation_of_the_output(self):
        self.write("a.txt", self.TEXT)
        result = self.run_cli("convert", "a.txt", "-o", "utm.txt", "--datum", "Potsdam_Rauenberg_DHDN", "--notation",
                              "utm", "--kinds", "waypoints", "--time-offset", "2")
        self.assertEqual(result.returncode, 0)
        text = read(self.path("utm.txt"))
        self.assertIn("\nD Potsdam_Rauenberg_DHDN\nM UTM\nZ 2.000000\nW  HUT", text)
        self.assertIn(" 32T ", text)
        self.assertIn("Sat Jun 02 10:30:00 2001", text)
        self.assertNotIn("\nT  ", text)
        self.run_cli("convert", "utm.txt", "-o", "back.txt")
        self.assertIn("N47 15.123", read(self.path("back.txt")))

    def test_what_has_no_reader_or_writer_is_refused_in_one_sentence_and_nothing_is_written(self):
        self.write("a.txt", self.TEXT)
        self.write("a.clg", "OziExplorer Track Point File Version 2.1\n")
        for arguments, sentence in [
                (["convert", "a.txt", "-o", "x.SA5"], "open_output: x.SA5 would be a Street Atlas map of version 5: "
                                                      "this type of file cannot be written (maps are only read).\n"),
                (["convert", "a.clg", "-o", "x.txt"], "do_input: a.clg is a Navigate route file: this type of file "
                                                      "cannot be read (its layout is not public).\n"),
                (["info", "a.gpl"], "do_input: a.gpl is a Street Atlas exchange file: this type of file cannot be read.\n"),
                (["convert", "none.txt", "-o", "x.txt"], "do_input: Unable to open file: none.txt\n")]:
            result = self.run_cli(*arguments)
            self.assertEqual(result.returncode, 1, arguments)
            self.assertIn(sentence, result.stderr)
            self.assertEqual(result.stderr.count(": this type of file"), sentence.count(": this type of file"))
        self.assertEqual(sorted(os.listdir(self.folder)), ["a.clg", "a.txt"])

    def test_standard_output_under_its_name_is_written_to_and_not_replaced(self):
        self.write("a.txt", self.TEXT)
        os.symlink("/proc/self/fd/1", self.path("out"))
        done = self.shell(f"(echo HEAD; '{CLI}' --quiet convert a.txt -o out; echo TAIL) > all.txt")
        self.assertEqual(done.returncode, 0)
        lines = read(self.path("all.txt")).splitlines()
        self.assertEqual([lines[0], lines[1], lines[-1]], ["HEAD", "Version 2", "TAIL"])
        self.assertTrue(os.path.islink(self.path("out")))

    def test_a_reading_that_is_stopped_replaces_no_file(self):
        line = "W  %05d           N47 15.1230 E011 23.4560 Sat Jun 02 08:30:00 2001 %s"
        self.write("a.txt", "\n".join(line % (i, "x" * 40) for i in range(100000)))
        before = os.path.getsize(self.path("a.txt"))
        process = self.start("convert", "a.txt", "-o", "a.txt")
        process.stderr.readline()  # it reads
        process.send_signal(signal.SIGINT)
        said = process.communicate(timeout=LIMIT)[1]
        self.assertEqual(process.returncode, 1, said)
        self.assertIn("Operation Aborted\nNothing was written.\n", said)
        self.assertEqual(os.path.getsize(self.path("a.txt")), before)

    def test_a_save_to_a_full_disk_or_a_lacking_folder_leaves_the_old_file(self):
        self.write("a.txt", self.TEXT)
        self.write("old.txt", "precious")
        result = self.shell(f"ulimit -f 0; exec '{CLI}' convert a.txt -o old.txt")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Can't open output file old.txt", result.stderr)
        self.assertIn("File too large", result.stderr)
        self.assertEqual(read(self.path("old.txt")), "precious")
        self.assertEqual(sorted(os.listdir(self.folder)), ["a.txt", "old.txt"])
        self.assertEqual(self.run_cli("convert", "a.txt", "-o", "no/such/folder.txt").returncode, 1)

    def test_quiet_is_silent_when_all_goes_well_and_loud_when_not(self):
        self.write("a.txt", self.TEXT)
        self.assertEqual(self.run_cli("--quiet", "convert", "a.txt", "-o", "b.txt").stderr, "")
        self.assertNotEqual(self.run_cli("--quiet", "convert", "none.txt", "-o", "b.txt").stderr, "")


class Receiver(InFolder):
    def test_identify_and_protocols_answer_on_standard_output(self):
        result = self.run_cli("--port", "sim:garmin", "identify")
        self.assertRegex(result.stdout, r"^.+         ID: \d+\n")
        result = self.run_cli("--port", "sim:garmin", "protocols")
        self.assertEqual(len(result.stdout.splitlines()), 10)
        self.assertEqual(result.stderr, "Opening COM Port\n")

    def test_the_single_commands_answer_on_standard_output(self):
        for arguments, expected in [
                (["voltage"], r"Int:  5\.87,  Ext:  0\.00\n"),
                (["time"], r"\w{3} \w{3} \d\d \d\d:\d\d:\d\d \d{4} UTC\n"),
                (["position"], r"N54 22\.1460 W003 04\.5420 \w{3} \w{3} \d\d \d\d:\d\d:\d\d \d{4}\n"),
                (["poweroff", "--yes"], r"The GPS receiver was told to turn off\.\n")]:
            result = self.run_cli("--port", "sim:garmin", *arguments)
            self.assertRegex(result.stdout, "^" + expected + "$", arguments)
            self.assertEqual((result.stderr, result.returncode), ("Opening COM Port\n", 0), arguments)

    def test_position_velocity_time_data_goes_on_until_ctrl_c_or_the_reader_ends(self):
        record = r"^(-?\d+\.\d{6},){4}3,\d+\.\d{6},54\.369\d{3},-3\.075\d{3},(-?\d+\.\d{6},){4}18,\d+\n$"
        _, path = self.simulate()
        process = self.start("--port", path, "--debug-log", "log", "position", "--follow")
        for _ in range(2):
            self.assertRegex(process.stdout.readline(), record)  # as it comes
        process.send_signal(signal.SIGINT)
        self.assertNotIn("answer", process.communicate(timeout=LIMIT)[1])
        self.assertEqual(process.returncode, 0)
        self.assertRegex(read(self.path("log")), r"Sending: Stop PVT data\n 10   0a   02   322  00   c2   10   03  \n")
        self.assertRegex(self.shell(f"'{CLI}' --port '{path}' position --follow | head -n 1").stdout, record)

    def test_a_receiver_without_position_velocity_time_data_is_not_asked_for_it(self):
        _, path = self.simulate("--product", "77", "--software", "3.61", "--protocols", "none")
        result = self.run_cli("--port", path, "--debug-log", "log", "position", "--follow")
        self.assertEqual((result.stdout, result.returncode), ("", 1))
        self.assertTrue(result.stderr.endswith("This receiver has no position-velocity-time data.\n"), result.stderr)
        self.assertNotIn("PVT", read(self.path("log")))

    def test_where_nobody_can_be_asked_a_receiver_is_not_turned_off(self):
        _, path = self.simulate()
        result = self.run_cli("--port", path, "--debug-log", "log", "poweroff")
        self.assertEqual((result.stdout, result.returncode), ("", 1))
        self.assertTrue(result.stderr.endswith("The GPS receiver was not turned off.\n"), result.stderr)
        self.assertNotIn("Sending", read(self.path("log")))
        self.assertEqual(self.run_cli("--port", path, "poweroff", "--yes").returncode, 0)

    def test_the_trace_shows_every_display_call(self):
        result = self.run_cli("--port", "sim:garmin", "--trace", "download", "waypoints", "-o", "w.txt")
        for line in ["[status 3] Opening COM Port", "[status 1] Downloading Waypoints", "[progress 0/30]",
                     "[line 4] W00030 of 30", "[progress 30/30]", "[progress 0/0]",
                     "[line 3] Waypoint download completed", "[status 3] ESC key to abort",
                     "[title] Pelorix -- GPS Garmin - sim:garmin - 9600 -- W:30 T:0 (TP:0) P:0 R:0 [E:0]"]:
            self.assertIn(line + "\n", result.stderr)

    def test_at_9600_bits_per_second_over_a_pseudo_terminal_all_arrives_and_the_port_is_as_it_was(self):
        _, path = self.simulate("--baud", "9600")
        port = os.open(path, os.O_RDWR | os.O_NOCTTY)
        before = termios.tcgetattr(port)
        result = self.run_cli("--port", path, "download", "routes", "waypoints", "-o", "wire.txt", "--debug-log", "log")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(termios.tcgetattr(port), before)
        os.close(port)
        self.run_cli("--port", "sim:garmin", "download", "routes", "waypoints", "-o", "direct.txt")
        self.assertEqual(without_date(read(self.path("wire.txt"))), without_date(read(self.path("direct.txt"))))
        self.assertIn("\nSending: GetGPSstart from  getWaypoints\n 10   0a   02   07   00   ed   10   03  \n",
                      read(self.path("log")))
        self.assertIn("\nReceived:\n 10   0c   02   07   00   eb   10   03  \n"
                      "Sending: ACK\n 10   06   02   0c   00   ec   10   03  \nPid_Xfer_Cmplt record\n",
                      read(self.path("log")))

    def test_the_screen_is_saved_as_a_picture_and_old_files_stay_when_it_is_not(self):
        for name in ("screen.bmp", "screen.png"):
            self.write(name, "old")
        refused = self.run_cli("--port", "sim:garmin", "screen", "-o", "screen.bmp", "-o", "screen.txt")
        self.assertEqual(refused.returncode, 2)
        self.assertIn("screen.txt", refused.stderr)
        self.assertNotIn("Opening", refused.stderr)
        _, path = self.simulate("--product", "130")
        refused = self.run_cli("--port", path, "screen", "-o", "screen.bmp")
        self.assertEqual((refused.returncode, read(self.path("screen.bmp"))), (1, "old"))
        self.assertIn("The eTrex is not supported at this time.", refused.stderr)
        saved = self.run_cli("--port", "sim:garmin", "screen", "--rotate-left", "-o", "screen.bmp", "-o", "screen.png")
        self.assertEqual(saved.returncode, 0, saved.stderr)
        converted = self.run_cli("convert", "screen.bmp", "-o", "again.bmp", "-o", "again.png")
        self.assertEqual(converted.returncode, 0, converted.stderr)
        for kind, beginning in (("bmp", "BM"), ("png", "\x89PNG")):
            self.assertTrue(read(self.path("screen." + kind)).startswith(beginning))
            self.assertEqual(read(self.path("screen." + kind)), read(self.path("again." + kind)))

    def test_a_port_that_does_not_exist_or_is_no_port_is_explained(self):
        result = self.run_cli("--port", "/dev/nosuchport", "identify")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Comm error in AsyncInit 1: 2\nAsyncInit Error\n", result.stderr)
        self.write("file", "")
        result = self.run_cli("--port", self.path("file"), "download", "all", "-o", "x.txt")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Failed to open COM port!", result.stderr)
        self.assertFalse(os.path.exists(self.path("x.txt")))

    def test_a_receiver_that_talks_nmea_is_recognised(self):
        master, slave = pty.openpty()
        tty.setraw(slave)
        process = self.start("--port", os.ttyname(slave), "identify")
        deadline = time.monotonic() + LIMIT
        while process.poll() is None and time.monotonic() < deadline:
            os.write(master, b"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n")
            while select.select([master], [], [], 0.2)[0]:
                os.read(master, 1000)
        _, errors = process.communicate(timeout=LIMIT)
        os.close(slave)
        os.close(master)
        self.assertEqual(process.returncode, 1)
        self.assertIn("GARMIN", errors)

    def test_an_unplugged_adapter_ends_the_transfer_and_what_arrived_is_saved(self):
        _, path = self.simulate("--fault", "unplug@20")
        started = time.monotonic()
        result = self.run_cli("--port", path, "download", "waypoints", "-o", "part.txt")
        self.assertEqual(result.returncode, 1)
        self.assertLess(time.monotonic() - started, 10)
        self.assertIn("vanished", result.stderr)
        self.assertGreater(len(items(read(self.path("part.txt")))), 10)

    def test_a_failed_download_does_not_replace_an_old_file_by_nothing(self):
        self.write("old.txt", "precious")
        _, path = self.simulate("--fault", "unplug@1")
        self.assertEqual(self.run_cli("--port", path, "download", "all", "-o", "old.txt").returncode, 1)
        self.assertEqual(read(self.path("old.txt")), "precious")

    def test_the_simulated_receiver_keeps_what_was_loaded(self):
        self.write("a.txt", Files.TEXT)
        process, path = self.simulate("--load", "a.txt", "--product", "72", "--software", "2.05", "--protocols", "none",
                                      "--save", "kept.txt", "--link", "port")
        self.assertEqual(os.path.realpath(self.path("port")), path)
        self.assertIn("ID: 72", self.run_cli("--port", self.path("port"), "identify").stdout)
        self.run_cli("--port", path, "download", "all", "-o", "b.txt")
        self.end(process)
        self.assertFalse(os.path.lexists(self.path("port")))
        self.assertIn("W  HUT             N47 15.1234 E011 30.5000", read(self.path("b.txt")))
        self.assertEqual(items(read(self.path("kept.txt"))), items(read(self.path("b.txt"))))

    def test_the_simulated_receiver_saves_what_was_loaded_and_what_was_uploaded_the_almanac_too(self):
        self.write("a.txt", Files.TEXT)
        self.write("new.txt", Files.TEXT.replace("HUT", "TOP"))
        self.run_cli("--port", "sim:garmin", "download", "almanac", "-o", "built_in.alm")
        process, path = self.simulate("--load", "a.txt", "built_in.alm", "--save", "kept.gpx")
        result = self.run_cli("--port", path, "upload", "new.txt", "--kinds", "waypoints")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.end(process)
        self.assertIn("<name>HUT</name>", read(self.path("kept.gpx")))
        self.assertIn("<name>TOP</name>", read(self.path("kept.gpx")))
        process, _ = self.simulate("--load", "built_in.alm", "--save", "kept.alm")
        self.end(process)
        self.assertEqual(read(self.path("kept.alm")), read(self.path("built_in.alm")))

    def test_what_the_simulated_receiver_saves_is_what_was_loaded_whatever_the_settings_and_how_often_ctrl_c_is_pressed(self):
        self.write("a.txt", """Version 2
D WGS-84
M DDD
W  HUT             N47.0000000 E011.0000000 Sun Dec 31 00:00:00 1989                     ^   18^Blue  ^S+N^3
W  OLD             N48.0000000 E011.0000000 Sun Dec 31 00:00:00 1989                     ^    3^Red   ^S+N^2
W  JETTY           S12.0000000 E000.0000000 Sun Dec 31 00:00:00 1989                     ^    0^Yellow^S+C^3
c4 Jetty Field;Lagos;NY;US;5;152;
R  01 ROUND
W  OLD             N48.0000000 E011.0000000 Sun Dec 31 00:00:00 1989                     ^    3^Red   ^S+N^2
W  HUT             N47.0000000 E011.0000000 Sun Dec 31 00:00:00 1989                     ^   18^Blue  ^S+N^3
E  01
""")
        process, _ = self.simulate("--load", "a.txt", "--save", "kept.txt", "--save", "kept.gpx")
        for _ in range(3):
            process.send_signal(signal.SIGINT)
        self.end(process)
        self.assertEqual(process.returncode, 0)
        waypoints = items(read(self.path("kept.txt")).split("R  ")[0])
        self.assertEqual([line[3:18].rstrip() + line[line.index("^"):][1:12].replace(" ", "") for line in waypoints],
                         ["HUT18^Blue", "JETTY0^Yello", "OLD170^Red"])  # symbol 3 of the 16 is 170
        self.assertIn("c6 JETTY;Jetty Field;Lagos", read(self.path("kept.txt")))
        self.assertEqual(read(self.path("kept.gpx")).count("<wpt "), 3)

        process, _ = self.simulate("--load", "a.txt", "--save", "aviation.txt", "--protocols",
                                   "L001 A010 A100 D155 A200 D201 D155")
        self.end(process)
        self.assertIn("c4 Jetty Field;Lagos;NY;US;5;155;", read(self.path("aviation.txt")))  # locked

    def test_kinds_that_cannot_be_saved_are_named(self):
        process, _ = self.simulate("--product", "20", "--save", "kept.txt")
        process.send_signal(signal.SIGINT)
        _, said = process.communicate(timeout=LIMIT)
        self.assertEqual(process.returncode, 0)
        self.assertIn("Not saved, for they cannot be downloaded from this receiver: proximity waypoints.", said)
        self.assertNotIn("almanac", said)
        self.assertGreater(len(items(read(self.path("kept.txt")))), 30)

    def test_bad_options_of_the_simulated_receiver_are_refused(self):
        for options in [["--fault", "lightning@3"], ["--fault", "silent@0"], ["--software", "two"],
                        ["--protocols", "L001 melons"], ["--load", "none.txt"], ["--link", "/no/such/folder/x"],
                        ["--link", self.folder], ["--save", "no/such/folder.txt"], ["--save", "kept.clg"]]:
            result = self.run_cli("simulate", "garmin", *options)
            self.assertIn(result.returncode, (1, 2), options)
            self.assertNotEqual(result.stderr, "", options)


class LowranceUnit(InFolder):
    """The simulated Lowrance/Eagle unit, in process and on a pseudo-terminal."""

    TEXT = ("Version 2\nD WGS-84\nM DDD\n"
            "W  HUT             N47.0000000 E011.0000000 Sat Jun 02 08:30:00 2001                     ^   18^Black ^S+N^3\n"
            "P  SHOAL           N47.5000000 E011.0000000 Sat Jun 02 08:30:00 2001                     ^   18^Black ^S+N^3^ 100.0\n")

    def lowrance(self, *arguments, port="sim:lowrance"):
        return self.run_cli("--family", "lowrance", "--port", port, *arguments)

    def test_it_is_identified_and_moves_every_kind_and_its_screen(self):
        result = self.lowrance("identify")
        self.assertRegex(result.stdout, r"^GPS Is a Lowrance GlobalMap 100\nProtocolVersion       :   2 ")
        self.assertEqual((len(result.stdout.splitlines()), result.returncode), (8, 0))
        result = self.lowrance("--quiet", "download", "all", "-o", "all.txt")
        self.assertEqual((result.stderr, result.returncode), ("", 0))
        self.assertRegex(self.run_cli("info", "all.txt").stdout, r"^W:\d+ T:2 \(TP:600\) P:0 R:4 E:12\n$")
        for kinds, count in [(["waypoints", "--range", "1-5"], "W:5 T:0 (TP:0) P:0 R:0 E:0"),
                             (["waypoints", "--range", "41-end"], "W:2 T:0 (TP:0) P:0 R:0 E:0"),
                             (["events", "trail2"], "W:0 T:1 (TP:300) P:0 R:0 E:12"),
                             (["tracks"], "W:0 T:2 (TP:600) P:0 R:0 E:0"),
                             (["trails", "--kinds", "trails"], "W:0 T:2 (TP:600) P:0 R:0 E:0")]:
            result = self.lowrance("download", *kinds, "-o", "some.txt")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(self.run_cli("info", "some.txt").stdout, count + "\n", kinds)
        self.assertEqual(self.lowrance("screen", "--rotate-left", "-o", "screen.png").returncode, 0)
        self.assertTrue(read(self.path("screen.png")).startswith("\x89PNG"))

    def test_a_second_process_finds_its_speed_and_what_was_loaded_and_uploaded_is_saved(self):
        self.run_cli("--quiet", "--port", "sim:lowrance", "download", "routes", "trails", "-o", "built_in.txt")
        process, path = self.simulate("--baud", "19200", "--echo", "--noise", "--load", "built_in.txt", "--save",
                                      "kept.txt", "--link", "port", family="lowrance")
        result = self.lowrance("identify", port=self.path("port"))
        self.assertIn("Trying 115200 baud\nTrying 19200 baud\n", result.stderr)
        self.assertEqual(result.returncode, 0)
        self.write("new.txt", "".join(self.TEXT.splitlines(keepends=True)[:4]))
        result = self.lowrance("--speed", "19200", "upload", "new.txt", "--start", "200", port=path)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotIn("115200", result.stderr)
        result = self.lowrance("--speed", "19200", "download", "waypoints", "--range", "199-201", "-o", "back.txt",
                               port=path)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([line[:9] for line in items(read(self.path("back.txt")))], ["W  HUT   "])
        self.end(process)
        loaded, kept = items(read(self.path("built_in.txt"))), items(read(self.path("kept.txt")))
        # Trails have the time of their download.
        for kind, columns in (("R", 60), ("T", 27)):
            self.assertEqual([line[:columns] for line in loaded if line[0] == kind],
                             [line[:columns] for line in kept if line[0] == kind])
        self.assertTrue(any(line.startswith("W  HUT ") for line in kept))
        process, _ = self.simulate("--load", "kept.txt", "--save", "again.txt", family="lowrance")
        self.end(process)
        self.assertEqual([line for line in items(read(self.path("again.txt"))) if line[0] != "T"],
                         [line for line in kept if line[0] != "T"])

    def test_find_names_the_receiver_of_each_port(self):
        _, garmin = self.simulate()
        _, lowrance = self.simulate("--baud", "19200", family="lowrance")
        for port, options, line in [(garmin, [], "Garmin: Simulated GPS 128 Software Version 2.50"),
                                    (lowrance, [], "Lowrance/Eagle: GlobalMap 100 at 19200 bits per second"),
                                    ("/dev/nosuchport", ["--quiet"], "no such port")]:
            result = self.run_cli("--port", port, "find", *options)
            found = line != "no such port"
            self.assertEqual((result.stdout, result.returncode), (f"{port}  {line}\n", 0 if found else 1))
            self.assertEqual(result.stderr, f"Trying {port} ...\n" if found else "No receiver was found.\n")

    def test_ctrl_c_ends_a_search(self):
        _, path = self.simulate("--fault", "silent@1", family="lowrance")
        process = self.start("--port", path, "find")
        said = process.stderr.readline()
        process.send_signal(signal.SIGINT)
        output, rest = process.communicate(timeout=LIMIT)
        self.assertEqual((output, said + rest, process.returncode),
                         ("", f"Trying {path} ...\nThe search was stopped.\n", 1))

    def test_what_a_family_does_not_have_is_refused_before_anything_is_sent(self):
        for family, arguments, reason in [
                ("lowrance", ["voltage"], "Lowrance/Eagle units cannot be asked for this."),
                ("lowrance", ["position", "--follow"], "Lowrance/Eagle units cannot be asked for this."),
                ("lowrance", ["poweroff"], "Lowrance/Eagle units cannot be asked for this."),
                ("lowrance", ["download", "waypoints", "proximity", "-o", "x.txt"],
                 "Lowrance/Eagle units have no proximity waypoints."),
                ("lowrance", ["upload", "x.txt", "--kinds", "almanac"], "Lowrance/Eagle units have no almanac."),
                ("garmin", ["download", "waypoints", "trail1", "-o", "x.txt"], "Garmin receivers have no plot trails."),
                ("garmin", ["upload", "x.txt", "--kinds", "trails,waypoints"], "Garmin receivers have no plot trails."),
                ("garmin", ["download", "events", "-o", "x.txt"], "Garmin receivers have no events.")]:
            result = self.run_cli("--family", family, "--port", "sim:" + family, *arguments)
            self.assertEqual((result.stdout, result.stderr, result.returncode), ("", reason + "\n", 1), arguments)
        self.assertEqual(os.listdir(self.folder), [])

    def test_kinds_that_the_family_lacks_are_named_when_all_is_uploaded_or_loaded(self):
        self.write("both.txt", self.TEXT)
        self.run_cli("--port", "sim:garmin", "download", "almanac", "-o", "only.alm")
        no_proximity = "Lowrance/Eagle units have no proximity waypoints."
        no_almanac = "Lowrance/Eagle units have no almanac."
        result = self.lowrance("upload", "both.txt", "only.alm")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(f"\nNot all that the files hold is uploaded. {no_proximity} {no_almanac}\n", result.stderr)
        result = self.lowrance("--quiet", "upload", "only.alm")
        self.assertEqual((result.stderr, result.returncode), (f"Nothing was uploaded. {no_almanac}\n", 1))
        process, _ = self.simulate("--load", "both.txt", family="lowrance")
        process.send_signal(signal.SIGINT)
        self.assertIn("The simulated receiver has no room for these: 1 proximity waypoints.\n",
                      process.communicate(timeout=LIMIT)[1])

    def test_wrong_usage_ends_with_2(self):
        for arguments in [["simulate", "lowrance", "--unit", "Melon 7"], ["simulate", "lowrance", "--product", "7"],
                          ["simulate", "garmin", "--unit", "GlobalMap 100"], ["simulate", "garmin", "--noise"],
                          ["--port", "sim:garmin", "upload", "x.txt", "--inactives"],
                          *(["--port", "sim:lowrance", "download", "all", "-o", "x.txt", "--range", text]
                            for text in ("5", "0-5", "9-5", "end", "1-melons", "1-65536", "-5")),
                          ["--port", "sim:lowrance", "upload", "x.txt", "--start", "0"]]:
            result = self.run_cli(*arguments)
            self.assertEqual((result.stdout, result.returncode), ("", 2), arguments)
            self.assertNotEqual(result.stderr, "", arguments)
        self.assertIn("GlobalMap 100, ", self.run_cli("simulate", "lowrance", "--unit", "Melon 7").stderr)


class Keys(InFolder):
    """Commands on a terminal, ended or answered by keys."""

    def on_terminal(self, *arguments, keys, wanted):
        return self.run_on_terminal([CLI, *arguments], keys, wanted)

    def test_the_question_before_turning_off_is_answered_by_a_line(self):
        for answer in (b"y\n", b"\n", b"n\n", b"\x03"):
            status, shown, _ = self.on_terminal("--port", "sim:garmin", "poweroff", keys=answer, wanted=rb"\[y/N\] ")
            self.assertEqual(status, 0 if answer == b"y\n" else 1)
            self.assertIn(b"Turn off the GPS receiver? [y/N] ", shown)
            self.assertEqual(b"The GPS receiver was not turned off." in shown, status == 1)

    def test_esc_ends_position_velocity_time_data(self):
        _, path = self.simulate()
        status, _, _ = self.on_terminal("--port", path, "position", "--follow", keys=b"\x1b", wanted=b",18,")
        self.assertEqual(status, 0)

    def test_esc_and_ctrl_c_end_a_download_cleanly(self):
        _, path = self.simulate("--baud", "9600")
        for key in (b"\x1b", b"\x03"):
            status, shown, took = self.on_terminal("--port", path, "download", "tracks", "-o", "part.txt", keys=key,
                                                   wanted=rb" [2-9]\d*/\d+")
            self.assertEqual(status, 1)
            self.assertLess(took, 5)
            self.assertIn(b"Operation Aborted", shown)
            self.assertIn(b"Downloading Tracks [", shown)  # the progress bar
            self.assertIn("T  N54", read(self.path("part.txt")))
            self.assertLess(len(items(read(self.path("part.txt")))), 900)
            # The receiver was told to stop: it answers the next one at once.
            self.assertEqual(self.run_cli("--port", path, "identify").returncode, 0)


@unittest.skipUnless(shutil.which("gpsbabel"), "gpsbabel is not installed")
class GpsbabelAsWitness(InFolder):
    """Another program's client sees the same receiver."""

    def gpsbabel(self, kind, path, form, output):
        subprocess.run(["gpsbabel", kind, "-i", "garmin", "-f", path, "-o", form, "-F", self.path(output)], check=True,
                       timeout=LIMIT, capture_output=True)

    def rows(self, name):
        with open(self.path(name), newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))

    def ours(self, kind, path):
        result = self.run_cli("--port", path, "--set", "SA_SortAfterInput=0", "--set", "SA_SortBeforeOutput=0", "download",
                              kind, "-o", kind + ".txt", "--notation", "ddd")
        self.assertEqual(result.returncode, 0, result.stderr)
        return read(self.path(kind + ".txt")).splitlines()

    @staticmethod
    def position(line, column):
        """Of an item line with decimal degrees whose latitude letter stands in this column (from 0)."""
        match = re.match(r"([NS])(\d+\.\d+) ([EW])(\d+\.\d+)", line[column:])
        return (float(match[2]) * (1 if match[1] == "N" else -1), float(match[4]) * (1 if match[3] == "E" else -1))

    def assert_same_place(self, theirs, ours):
        self.assertAlmostEqual(theirs[0], ours[0], delta=1e-6)  # it prints six decimals
        self.assertAlmostEqual(theirs[1], ours[1], delta=1e-6)

    def compare(self, *options):
        _, path = self.simulate(*options)
        self.gpsbabel("-w", path, "unicsv,utc=0", "w.csv")
        theirs = self.rows("w.csv")
        lines = self.ours("waypoints", path)
        ours = [line for line in lines if line.startswith("W  ")]
        heights = [float(line[3:].split(",")[0]) for line in lines if line.startswith("c5")]
        self.assertEqual(len(theirs), 30)
        self.assertEqual(len(ours), 30)
        for row, line in zip(theirs, ours):
            self.assertEqual(row["Name"], line[3:18].rstrip())
            self.assertEqual(row.get("Description") or row["Name"], line[69:line.index("^")].rstrip() or row["Name"])
            self.assert_same_place((float(row["Latitude"]), float(row["Longitude"])), self.position(line, 19))
        if heights:
            self.assertEqual([float(row["Altitude"]) for row in theirs if row["Altitude"]],
                             [height for height in heights if height < 1e24])

        self.gpsbabel("-t", path, "unicsv,utc=0", "t.csv")
        theirs = self.rows("t.csv")
        ours = [line for line in self.ours("tracks", path) if line.startswith("T  ")]
        self.assertEqual(len(theirs), 1000)
        self.assertEqual(len(ours), 1000)
        for row, line in zip(theirs, ours):
            self.assert_same_place((float(row["Latitude"]), float(row["Longitude"])), self.position(line, 3))
            when = time.strptime(line[28:52], "%a %b %d %H:%M:%S %Y")
            self.assertEqual((row["Date"], row["Time"]),
                             (time.strftime("%Y/%m/%d", when), time.strftime("%H:%M:%S", when)))

        self.gpsbabel("-r", path, "gpx", "r.gpx")
        space = "{http://www.topografix.com/GPX/1/0}"
        theirs = [[point.find(space + "name").text.rstrip() for point in route.iter(space + "rtept")]
                  for route in ElementTree.parse(self.path("r.gpx")).iter(space + "rte")]
        ours = []
        for line in self.ours("routes", path):
            if line.startswith("R  "):
                ours.append([])
            elif line.startswith("W  ") and ours:
                ours[-1].append(line[3:18].rstrip())
            elif line.startswith("E  "):
                continue
        self.assertEqual(len(theirs), 3)
        self.assertEqual(theirs, ours)

    def compare_uploads(self, kinds, *options):
        """The same files, sent by gpsbabel and by us to two receivers of the same kind."""
        self.write("keep.txt", "Version 2\nD WGS-84\nM DDD\nW  KEEP            N45.0000000 E007.0000000\n")
        self.assertEqual(self.run_cli("--port", "sim:garmin", "--set", "ForceExactDupeRemoval=1", "download", "all", "-o",
                                      "all.gpx", "--kinds", "waypoints,routes,tracks").returncode, 0)
        held = {}
        for who in ("theirs", "ours"):
            process, path = self.simulate("--load", "keep.txt", "--save", who + ".txt", *options)
            for kind in kinds:
                if who == "theirs":
                    subprocess.run(["gpsbabel", "-" + kind[0], "-i", "gpx", "-f", self.path("all.gpx"), "-o", "garmin", "-F", path],
                                   check=True, timeout=LIMIT, capture_output=True)
                else:
                    result = self.run_cli("--port", path, "upload", "all.gpx", "--kinds", kind)
                    self.assertEqual(result.returncode, 0, result.stderr)
            self.end(process)
            held[who] = items(read(self.path(who + ".txt")))
        columns = {"waypoints": 43, "routes": 20, "tracks": 27}  # idents and places
        for kind in kinds:
            letter = kind[0].upper() + "  "
            theirs, ours = ([line[:columns[kind]] for line in held[who] if line.startswith(letter)]
                            for who in ("theirs", "ours"))
            self.assertGreater(len(ours), 2, kind)
            self.assertEqual(theirs, ours)

    def test_uploads_to_a_receiver_with_a_capability_array(self):
        self.compare_uploads(["waypoints", "routes", "tracks"])

    def test_uploads_to_an_old_receiver_without_one(self):
        # Of routes and tracks gpsbabel sends records that such a receiver does not know.
        self.compare_uploads(["waypoints"], "--product", "31", "--protocols", "none")

    def test_a_receiver_with_a_capability_array(self):
        self.compare()

    def test_an_old_receiver_without_one(self):
        self.compare("--product", "77", "--software", "3.61", "--protocols", "none")


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
