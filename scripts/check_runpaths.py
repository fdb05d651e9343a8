#!/usr/bin/env python3
"""Checks where programs and libraries look for the libraries they need: check_runpaths.py FOLDER
Every entry of a RUNPATH must begin with $ORIGIN. An empty or relative entry means the folder the program is started in,
where anybody may have put a library; an absolute one means the machine it was built on."""
import pathlib
import re
import subprocess
import sys

ENTRIES = re.compile(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]")
ORIGIN = re.compile(r"\$ORIGIN(/|$)")


def is_elf(path):
    with path.open("rb") as file:
        return file.read(4) == b"\x7fELF"


def bad_entries(path):
    told = subprocess.run(["readelf", "--dynamic", path], capture_output=True, text=True, check=True).stdout
    return [entry for found in ENTRIES.findall(told) for entry in found.split(":") if not ORIGIN.match(entry)]


def main():
    folder = pathlib.Path(sys.argv[1])
    images = [path for path in sorted(folder.rglob("*")) if path.is_file() and not path.is_symlink() and is_elf(path)]
    if not images:
        sys.exit(f"check_runpaths.py: no program in {folder}")
    faults = [f"{path}: RUNPATH entry '{entry}'" for path in images for entry in bad_entries(path)]
    print("\n".join(faults) or f"RUNPATHs of {len(images)} images: good")
    sys.exit(1 if faults else 0)


main()
