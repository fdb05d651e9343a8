#!/usr/bin/env python3
"""Reports every include of a folder that its library does not link, and Qt headers where they do not belong.

What a folder links is read from its CMakeLists.txt (add_floor), which is what CMake builds from. A folder whose library
is part of a shared one counts as linked by whoever links that.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent / "src"
QT_FOLDERS = ("platform/display", "player")
FLOOR = re.compile(r"add_floor\((\w+)(.*?)\)\n", re.S)
SHARED = re.compile(r"add_shared_library\((\w+)\s+FLOORS ([\w ]+?)(?: LINKS ([\w ]+?))?\)\n")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]')


def folder_of(path):
    return path.parent.relative_to(ROOT).as_posix()


def floors():
    """Each library with its folder (none for a shared library) and the libraries that it links."""
    found = {}
    for lists in sorted(ROOT.rglob("CMakeLists.txt")):
        text = lists.read_text(encoding="utf-8")
        for name, rest in FLOOR.findall(text):
            links = re.search(r"\bLINKS ([\w ]+)", rest)
            found[name] = (folder_of(lists), links.group(1).split() if links else [])
        for name, parts, links in SHARED.findall(text):
            found[name] = (None, parts.split() + links.split())
    return found


def reachable(name, found):
    """The folders of the library and of all that it links."""
    folder, links = found[name]
    below = set().union(*(reachable(link, found) for link in links))
    return below | ({folder} if folder else set())


def errors_of(path, allowed, folders):
    name = path.relative_to(ROOT).as_posix()
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        include = INCLUDE.match(line)
        if not include:
            continue
        bracket, header = include.groups()
        if bracket == "<" and header.startswith("Q") and not name.startswith(QT_FOLDERS):
            yield f"{name}:{number}: Qt belongs to platform/display and the player"
        folder = header.rpartition("/")[0]
        if bracket == '"' and folder in folders and folder not in allowed:
            yield f"{name}:{number}: includes {header}, which its library does not link"


def main():
    found = floors()
    allowed = {folder: reachable(name, found) for name, (folder, _) in found.items() if folder}
    sources = [path for path in sorted(ROOT.rglob("*")) if path.suffix in (".h", ".cpp")]
    errors = [f"{folder_of(path)} has no library of its own" for path in sources
              if folder_of(path) not in allowed and not path.parent.joinpath("CMakeLists.txt").exists()]
    for path in sources:
        errors += errors_of(path, allowed.get(folder_of(path), allowed.keys()), allowed.keys())
    print("\n".join(errors) if errors else f"{len(sources)} files in {len(allowed)} folders, each includes only what its library links")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
