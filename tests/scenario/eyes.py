"""What a screen reader gets of the windows: names, roles, states and texts, without a cache."""
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Atspi.init()
# A machine that is busy with other work may be slow to answer; only then is this long.
Atspi.set_timeout(10000, 30000)

PATIENCE = 60


def wait_until(look, what):
    """Looks until there is something to see, and returns it. What goes away while it is looked at is seen later."""
    deadline = time.monotonic() + PATIENCE
    while True:
        seen, trouble = None, None
        try:
            seen = look()
        except (GLib.Error, AttributeError, StopIteration, IndexError) as fault:
            trouble = fault
        if seen:
            return seen
        if time.monotonic() > deadline:
            raise AssertionError(f"never seen: {what}") from trouble
        time.sleep(0.02)


def application(pid):
    """The application of this process, or None as long as it has not shown itself."""
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child and child.get_process_id() == pid:
            child.set_cache_mask(Atspi.Cache.NONE)
            return child
    return None


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def below(node):
    """Everything below a node, from top to bottom."""
    for child in children(node):
        yield child
        yield from below(child)


def role(node):
    return node.get_role_name()


def name(node):
    return node.get_name()


def description(node):
    return node.get_description()


def states(node):
    return {state.value_nick for state in node.get_state_set().get_states()}


def find(node, wanted_role, wanted_name=None):
    """The first node below of this role (and name), or None."""
    for child in below(node):
        if role(child) == wanted_role and (wanted_name is None or name(child) == wanted_name):
            return child
    return None


def find_all(node, wanted_role):
    return [child for child in below(node) if role(child) == wanted_role]


def labelled(node, label):
    """The control below that this label belongs to, or None."""
    for child in below(node):
        for relation in child.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY and name(relation.get_target(0)) == label:
                return child
    return None


def focused(node):
    """The node below that has the keyboard, or None. (The current row of a list counts as focused in any case.)"""
    return next((n for n in below(node) if "focused" in states(n) and role(n) not in ("list item", "menu item")), None)


def text_of(node):
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


def place(node):
    """Left, top, width and height on the screen."""
    box = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
    return box.x, box.y, box.width, box.height
