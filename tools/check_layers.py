#!/usr/bin/env python3
"""Reads the #include lines under src/ and tests/ against the table of who may include whom.

Prints each include that breaks the rule and exits with 1 when there is one."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SESSION = {"base", "geodesy", "store", "textfile", "formats", "streetatlas", "serial", "garmin", "lowrance",
           "simulators", "session"}
ALLOWED = {
    "base": set(),
    "geodesy": {"base"},
    "store": {"base", "geodesy"},
    "textfile": {"base", "geodesy", "store"},
    "formats": {"base", "geodesy", "store"},
    "streetatlas": {"base", "geodesy", "store"},
    "serial": {"base"},
    "garmin": {"base", "serial", "store", "geodesy"},
    "lowrance": {"base", "serial", "store", "geodesy"},
    "simulators": {"base", "serial"},
    "session": SESSION,
    "ui": SESSION | {"ui"},
    "ui/console": SESSION | {"ui", "ui/console"},
    "ui/wx": SESSION | {"ui", "ui/wx"},
    "apps": SESSION | {"ui", "ui/console", "ui/wx", "apps"},
}
# simulators stand behind the same seam as real ports, and know nothing else of the serial layer.
ONLY_HEADERS = {("simulators", "serial"): {"serial/serial_device.h"}}
SYSTEM = re.compile(r"^(windows|winreg|conio|io|termios|unistd|fcntl|poll|pty|signal|sys/.*|linux/.*|dirent)(\.h)?$")
MAY_USE_SYSTEM = re.compile(r"(_device\.(cpp|h)|/(pty|termios|win32)_[a-z_0-9]*\.(cpp|h))$")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')


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
        if header.startswith("wx/") and folder != "ui/wx":
            yield where + f"only ui/wx may include <{header}>"
        if inside_src and not is_test and SYSTEM.match(header) and not MAY_USE_SYSTEM.search(relative) \
                and folder != "apps":
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
    sources = [path for top in ("src", "tests", "bench") for path in sorted((ROOT / top).rglob("*"))
               if path.suffix in (".h", ".cpp")]
    unknown = {path.parent for path in sources
               if path.is_relative_to(ROOT / "src")
               and path.parent.relative_to(ROOT / "src").as_posix() not in ALLOWED}
    faults = [f"{path}: a folder without a row in the table" for path in sorted(unknown)]
    if not faults:
        faults = [fault for path in sources for fault in faults_of(path)]
    print("\n".join(faults) or f"{len(sources)} files keep to the layers.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
