"""What keys make of a document: the set of all documents that it may have become."""
import re
from typing import NamedTuple

TAG = re.compile(r"\[(\d\d):(\d\d):(\d\d)\]")
# Takes the current line to the first one: the line after an undo depends on how the text control reported a change.
FIRST_LINE = {False: "Home", True: "ctrl+Home"}
TAG_KEYS = ["stamp"] * 6 + ["remove", "nudge", "up", "undo", "undo", "redo", "save", "to text"]
TEXT_KEYS = ["x", "y", "x", "y", "return", "back", "up", "down", "undo", "redo", "save", "to tags"]
NAMES = {"stamp": "space", "remove": "Delete", "nudge": "plus", "up": "Up", "down": "Down", "undo": "ctrl+z",
         "redo": "ctrl+shift+z", "save": "ctrl+s", "to text": "ctrl+e", "to tags": "ctrl+t", "return": "Return",
         "back": "BackSpace"}


class World(NamedTuple):
    lines: tuple
    is_text: bool = False
    line: int = 0
    undo: tuple = ()      # steps: lines before, lines after, whether it may have joined the step before it
    redo: tuple = ()
    joins: bool = False   # typing may join the last step: that depends on the time between two keys


def opened(lines):
    return World(tuple(lines) or ("",))


def presses(key, is_text):
    """The keys to press. Typing is done at the end of the line."""
    name = NAMES.get(key, key)
    if key in ("undo", "redo"):
        return [name, FIRST_LINE[is_text]]
    if key in ("to text", "to tags"):
        return [name, FIRST_LINE[not is_text]]
    return ["End", name] if key in ("x", "y", "return", "back") else [name]


def keys_for(worlds):
    """Keys whose effect is known in all of them: the empty line after the last one is never entered, no tag is cut."""
    if not any(world.is_text for world in worlds):
        return TAG_KEYS
    can_go_down = all(world.line + 1 < len(world.lines) for world in worlds)
    can_erase = not any(TAG.fullmatch(world.lines[world.line]) for world in worlds)
    return [key for key in TEXT_KEYS if (can_go_down or key != "down") and (can_erase or key != "back")]


def after_key(worlds, key, tags):
    """`tags`: what a stamp may write."""
    return {after for world in worlds for tag in (tags if key == "stamp" else tags[:1]) for after in _after(world, key, tag)}


def _after(world, key, tag):
    if key == "undo":
        return _undone(world)
    if key == "redo":
        return _redone(world)
    if key == "save":
        return [world._replace(joins=False)]
    if key in ("to text", "to tags"):
        return [world._replace(is_text=not world.is_text, line=0)]
    if key in ("up", "down"):
        line = world.line + (1 if key == "down" else -1)
        return [world._replace(line=min(max(line, 0), len(world.lines) - 1))]
    return [_typed(world, key) if world.is_text else _tagged(world, key, tag)]


def _step(world, first, removed, lines, line, joins=None):
    """`joins`: whether it may join the last step, for typing only."""
    after = world.lines[:first] + tuple(lines) + world.lines[first + removed:]
    is_typing = joins is not None
    if is_typing and after == world.lines:
        return world._replace(line=line)
    step = (world.lines, after, bool(joins and world.joins))
    return world._replace(lines=after, line=line, undo=world.undo + (step,), redo=(), joins=is_typing)


def _tagged(world, key, tag):
    line, text = world.line, world.lines[world.line]
    found = TAG.match(text)
    bare = text[found.end():] if found else text
    if key == "stamp":
        return _step(world, line, 1, [tag + bare], min(line + 1, len(world.lines) - 1))
    if key == "remove":
        return _step(world, line, 1, [bare], line)
    if not found:
        return world
    minutes, seconds, hundredths = map(int, found.groups())
    later = (minutes * 60 + seconds) * 100 + hundredths + 1
    return _step(world, line, 1, [f"[{later // 6000:02}:{later // 100 % 60:02}:{later % 100:02}]{bare}"], line)


def _typed(world, key):
    line, text = world.line, world.lines[world.line]
    if key == "return":
        return _step(world, line, 1, [text, ""], line + 1, joins=False)
    if key != "back":
        return _step(world, line, 1, [text + key], line, joins=True)
    if text:
        return _step(world, line, 1, [text[:-1]], line, joins=True)
    if line == 0:
        return world
    return _step(world, line - 1, 2, [world.lines[line - 1]], line - 1, joins=False)


def _undone(world):
    """Steps of typing are undone together if they have been joined."""
    worlds = []
    for count in range(1, len(world.undo) + 1):
        before, _, may_have_joined = world.undo[-count]
        redo = world.redo + ((before, world.lines, False),)
        worlds.append(world._replace(lines=before, line=0, undo=world.undo[:-count], redo=redo, joins=False))
        if not may_have_joined:
            break
    return worlds or [world._replace(line=0)]


def _redone(world):
    if not world.redo:
        return [world._replace(line=0)]
    step = world.redo[-1]
    return [world._replace(lines=step[1], line=0, undo=world.undo + (step,), redo=world.redo[:-1], joins=False)]
