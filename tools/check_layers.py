#!/usr/bin/env python3
"""Reads the #include lines under src/ and tests/ against the table of who may include whom.

Prints each include that breaks the rule and exits with 1 when there is one."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BELOW_SESSION = {"base", "geodesy", "picture", "store", "textfile", "formats", "streetatlas", "serial", "garmin",
                 "lowrance", "simulators"}
ALLOWED = {
    "base": set(),
    "geodesy": {"base"},
    "picture": {"base"},
    "store": {"base", "geodesy", "picture"},
    "textfile": {"base", "geodesy", "store"},
    "formats": {"base", "geodesy", "picture", "store"},
    "streetatlas": {"base", "geodesy", "store"},
    "serial": {"base"},
    "garmin": {"base", "serial", "store", "geodesy", "picture"},
    "lowrance": {"base", "serial", "store", "geodesy", "picture"},
    "simulators": {"base", "serial"},
    "session": BELOW_SESSION,
    "ui": {"base", "session"},
    "ui/console": {"base", "session", "ui"},
    "ui/lists": {"base", "session", "ui"},
    "ui/editing": {"base", "session", "ui"},
    "ui/options": {"base", "session", "ui"},
    "ui/map": {"base", "session", "ui"},
    "ui/wx": {"base", "session", "ui", "ui/lists", "ui/editing", "ui/options", "ui/map"},
    "apps": {"base", "session", "ui", "ui/console", "ui/wx"},
}
# simulators stand behind the same seam as real ports, and know nothing else of the serial layer.
ONLY_HEADERS = {("simulators", "serial"): {"serial/serial_device.h"}}
# Anything in angle brackets that is neither of the C++ library nor in this list is the operating system's.
LIBRARIES = {"CLI/": {"ui/console"}, "pugixml.hpp": {"formats"}, "zlib.h": {"picture"}, "wx/": {"ui/wx"}}
STANDARD = re.compile(r"^[a-z_0-9]+$")
MAY_USE_SYSTEM = re.compile(r"(_device\.(cpp|h)|/(pty|termios|posix|win32)_[a-z_0-9]*\.(cpp|h))$")
INCLUDE = re.compile(r'^\s*(?:/\*.*?\*/\s*)*#\s*include\s*(["<])([^">]+)[">]')


def folder_of(header):
    """The folder of src/ that an include names, or None for a header of the system or a library."""
    folder = str(pathlib.PurePosixPath(header).parent)
    return folder if folder in ALLOWED else None


def faults_of(path):
    relative = path.relative_to(ROOT).as_posix()
    inside_src = relative.startswith("src/")
    folder = str(pathlib.PurePosixPath(relative).parent).removeprefix("src/")
    is_test = not inside_src or relative.endswith("_test.cpp")
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        quoted, header = match.group(1) == '"', match.group(2)
        where = f"{relative}:{number}: "
        if not quoted and folder_of(header):
            yield where + f'<{header}> is ours: name it in double quotes'
        library = next((name for name in LIBRARIES if header.startswith(name)), None)
        if inside_src and library and folder not in LIBRARIES[library]:
            yield where + f"only {sorted(LIBRARIES[library])} may include <{header}>"
        if inside_src and not quoted and not library and not is_test and not STANDARD.match(header) \
                and not MAY_USE_SYSTEM.search(relative) and folder != "apps":
            yield where + f"<{header}> belongs into a *_device.cpp"
        if quoted and "/" not in header:
            yield where + f'"{header}" is not named from src/'
        if not inside_src or not quoted:
            continue
        if header.startswith("tests/"):
            if not is_test:
                yield where + "only tests may include test support"
            continue
        target = folder_of(header)
        if target is None:
            yield where + f'"{header}" is in no folder of src/'
        elif target != folder and target not in ALLOWED[folder]:
            yield where + f"{folder} may not include {target}"
        elif header not in ONLY_HEADERS.get((folder, target), {header}):
            yield where + f"{folder} may include only {sorted(ONLY_HEADERS[(folder, target)])} of {target}"


def main():
    files = [path for top in ("src", "tests", "bench", "fuzz") for path in sorted((ROOT / top).rglob("*")) if path.is_file()]
    sources = [path for path in files if path.suffix in (".h", ".cpp")]
    unknown = {path.parent for path in sources
               if path.is_relative_to(ROOT / "src")
               and path.parent.relative_to(ROOT / "src").as_posix() not in ALLOWED}
    faults = [f"{path}: a folder without a row in the table" for path in sorted(unknown)]
    faults += [f"{path}: sources end in .h or .cpp" for path in files
               if path.is_relative_to(ROOT / "src") and path.suffix not in (".h", ".cpp")]
    if not faults:
        faults = [fault for path in sources for fault in faults_of(path)]
    print("\n".join(faults) or f"{len(sources)} files keep to the layers.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
