#!/usr/bin/env python3
"""Reports every include that climbs a floor, and Qt or player headers where they do not belong.

A folder stands on a floor; a file may include what stands on its own floor or below. Single files that stand lower
than their folder are named in FILES.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent / "src"
FOLDERS = {
    "platform/support": 0.0, "platform/kernel": 0.1, "platform/storage": 0.2, "platform/app": 0.3,
    "platform/interface": 0.4, "platform/display": 0.4,
    "common": 1, "language": 1, "lyrics": 1,
    "toolkit": 2,
    "interapp": 3,
    "editviews": 4,
    "window": 5,
    "plugin": 6, "companion": 6,
    "player": 7, "tools": 7,
}
FILES = {
    "plugin/pref": 1, "plugin/exit_state": 1, "plugin/app_privacy": 1, "plugin/kept_record": 1, "plugin/general_plugin": 0,
    "plugin/host_link": 3, "plugin/host_protocol": 3, "plugin/front_end_receiver": 3, "plugin/sn_thread": 3,
    "plugin/sonivo_window": 3, "plugin/current_song_finder": 3, "plugin/message_filters": 3, "plugin/show_help": 3, "plugin/plugin_image": 3,
    "language/language_watch": 3,
    "lyrics/editor": 4, "lyrics/document_teller": 4,
}
QT_FOLDERS = ("platform/display", "player")


def floor_of(path):
    """The floor of the longest entry that names the file or one of the folders it lies in; None outside the house."""
    entries = {**{folder + "/": floor for folder, floor in FOLDERS.items()}, **FILES}
    matching = [entry for entry in entries if path.startswith(entry)]
    return entries[max(matching, key=len)] if matching else None


def faults_of(path):
    name = path.relative_to(ROOT).as_posix()
    own = floor_of(name)
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if re.match(r"\s*#\s*include\s*<Q", line) and not name.startswith(QT_FOLDERS):
            yield f"{name}:{number}: Qt belongs to platform/display and the player"
        found = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
        other = floor_of(found.group(1)) if found else None
        if own is not None and other is not None and other > own:
            yield f"{name}:{number}: includes {found.group(1)}, which stands on a floor above"


def main():
    sources = [p for folder in sorted({f.split("/")[0] for f in FOLDERS}) for p in sorted((ROOT / folder).rglob("*"))
               if p.suffix in (".h", ".cpp")]
    faults = [fault for path in sources for fault in faults_of(path)]
    print("\n".join(faults) if faults else f"{len(sources)} files, no include climbs a floor")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
