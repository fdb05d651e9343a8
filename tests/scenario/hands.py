"""The user's hands: real keys and mouse buttons on the display."""
import subprocess

from Xlib.display import Display
from Xlib.protocol.event import ClientMessage


def _do(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True, stdout=subprocess.DEVNULL, timeout=60)


def press(*keys):
    """Keys one after another, named as X names them: press("ctrl+s"), press("Down", "Return")."""
    _do("key", "--delay", 5, *keys)


def write(text):
    _do("type", "--delay", 5, "--", text)


def click(box, count=1, held=None):
    """Clicks into the middle of a box, with a key held down if one is named."""
    left, top, width, height = box
    _do("mousemove", left + width // 2, top + height // 2)
    if held:
        _do("keydown", held)
    try:
        _do("click", "--repeat", count, "--delay", 40, 1)
    finally:
        if held:
            _do("keyup", held)


def move(box):
    left, top, width, height = box
    _do("mousemove", left + width // 2, top + height // 2)


def move_window(title, left, top):
    _do("search", "--name", f"^{title}$", "windowmove", left, top)


def close_window(title):
    """Sends what a window manager sends when its close box is clicked."""
    display = Display()
    wanted, protocols = (display.intern_atom(name) for name in ("WM_DELETE_WINDOW", "WM_PROTOCOLS"))
    number = subprocess.run(["xdotool", "search", "--name", f"^{title}$"], check=True, capture_output=True).stdout
    window = display.create_resource_object("window", int(number))
    window.send_event(ClientMessage(window=window, client_type=protocols, data=(32, [wanted, 0, 0, 0, 0])))
    display.sync()
    display.close()
