"""The user's hands: real keys and mouse buttons on the display."""
import contextlib
import subprocess
import threading

from Xlib import X, Xatom
from Xlib.display import Display
from Xlib.error import BadWindow
from Xlib.protocol.event import ClientMessage, SelectionNotify


def _do(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True, stdout=subprocess.DEVNULL, timeout=60)


def _window(display, title):
    found = subprocess.run(["xdotool", "search", "--name", f"^{title}$"], check=True, capture_output=True).stdout
    return display.create_resource_object("window", int(found))


@contextlib.contextmanager
def _connection():
    display = Display()
    try:
        yield display
    finally:
        display.close()


def _answer(event, place):
    """Tells a program that asked for a selection where it was put."""
    event.requestor.send_event(SelectionNotify(time=event.time, requestor=event.requestor, property=place,
                                               selection=event.selection, target=event.target))


def press(*keys):
    """Keys one after another, named as X names them: press("ctrl+s"), press("Down", "Return")."""
    _do("key", "--delay", 5, *keys)


def tap(key, times, held=0.06):
    """Presses a key that many times, holding it down for so many seconds."""
    for _ in range(times):
        _do("keydown", key, "sleep", held, "keyup", key)


def write(text):
    _do("type", "--delay", 5, "--", text)


def click(box, count=1, held=None, button=1):
    """Clicks into the middle of a box, with a key held down if one is named."""
    move(box)
    if held:
        _do("keydown", held)
    try:
        _do("click", "--repeat", count, "--delay", 40, button)
    finally:
        if held:
            _do("keyup", held)


def move(box):
    left, top, width, height = box
    _do("mousemove", left + width // 2, top + height // 2)


def drag(start, end):
    """From the middle of a box to the upper part of another one, with the mouse button held down."""
    move(start)
    _do("mousedown", 1)
    try:
        left, top, width, height = end
        _do("mousemove", left + width // 2, top + height // 2, "mousemove", left + width // 2, top + height // 4)
    finally:
        _do("mouseup", 1)


def drop_files(title, box, paths):
    """Drops files on a place of a window, as a file manager does."""
    display = Display()
    code = display.intern_atom
    target = _window(display, title)
    source = display.screen().root.create_window(0, 0, 1, 1, 0, display.screen().root_depth)
    source.set_selection_owner(code("XdndSelection"), X.CurrentTime)
    left, top, width, height = box
    place = (left + width // 2) << 16 | (top + height // 2)

    def tell(kind, *words):
        data = (32, [source.id, *words, *[0] * (4 - len(words))])
        target.send_event(ClientMessage(window=target, client_type=code(kind), data=data))
        display.sync()

    def serve_until(kind):
        while True:
            event = display.next_event()
            if event.type == X.ClientMessage and event.client_type == code(kind):
                return
            if event.type == X.SelectionRequest:
                files = "".join(f"file://{path}\r\n" for path in paths)
                event.requestor.change_property(event.property, event.target, 8, files.encode())
                _answer(event, event.property)

    tell("XdndEnter", 5 << 24, code("text/uri-list"))
    tell("XdndPosition", 0, place, X.CurrentTime, code("XdndActionCopy"))
    serve_until("XdndStatus")
    tell("XdndDrop", 0, X.CurrentTime)
    serve_until("XdndFinished")
    display.close()


class Clipboard:
    """Holds a text on the clipboard, as a browser does from which it was copied: with Clipboard("text"): ..."""

    def __init__(self, text):
        self.text = text.encode()
        self.display = Display()
        self.owner = self.display.screen().root.create_window(0, 0, 1, 1, 0, self.display.screen().root_depth)
        self.thread = threading.Thread(target=self._serve, daemon=True)

    def __enter__(self):
        self.owner.set_selection_owner(self.display.intern_atom("CLIPBOARD"), X.CurrentTime)
        self.display.sync()
        self.thread.start()
        return self

    def _serve(self):
        targets, text = self.display.intern_atom("TARGETS"), self.display.intern_atom("UTF8_STRING")
        while True:
            event = self.display.next_event()
            if event.type == X.SelectionClear:
                return
            if event.type != X.SelectionRequest:
                continue
            place = event.property
            if event.target == targets:
                event.requestor.change_property(place, Xatom.ATOM, 32, [targets, text])
            elif event.target == text:
                event.requestor.change_property(place, text, 8, self.text)
            else:
                place = X.NONE
            _answer(event, place)
            self.display.flush()

    def __exit__(self, *_):
        with _connection() as other:  # whoever owns it next ends the thread
            window = other.screen().root.create_window(0, 0, 1, 1, 0, other.screen().root_depth)
            window.set_selection_owner(other.intern_atom("CLIPBOARD"), X.CurrentTime)
            other.sync()
            self.thread.join(timeout=20)


def title_under(box):
    """Moves over a box; returns the title of the window that shows itself there."""
    move(box)
    where = subprocess.run(["xdotool", "getmouselocation", "--shell"], check=True, capture_output=True, text=True).stdout
    number = where.split("WINDOW=")[1].strip()
    return subprocess.run(["xdotool", "getwindowname", number], check=False, capture_output=True, text=True).stdout.strip()


def raise_window(title):
    _do("search", "--name", f"^{title}$", "windowraise")


def move_window(title, left, top):
    _do("search", "--name", f"^{title}$", "windowmove", left, top)


def place_window(title, left, top, width, height):
    """Without a window manager the size is exact, unless the program limits it."""
    _do("search", "--name", f"^{title}$", "windowmove", "--sync", left, top, "windowsize", width, height)


def has_window_manager():
    with _connection() as display:
        check = display.intern_atom("_NET_SUPPORTING_WM_CHECK")
        return display.screen().root.get_full_property(check, X.AnyPropertyType) is not None


def count_menus():
    """Of the program, that are open; tips are not counted."""
    display = Display()
    kind, tip = (display.intern_atom(f"_NET_WM_WINDOW_TYPE{name}") for name in ("", "_TOOLTIP"))
    found = 0
    for window in display.screen().root.query_tree().children:
        try:
            attributes = window.get_attributes()
            is_menu = attributes.override_redirect and attributes.map_state == X.IsViewable
            kinds = window.get_full_property(kind, Xatom.ATOM)
            is_tip = kinds is not None and tip in kinds.value
            found += bool(is_menu and not is_tip and "sonivo" in (window.get_wm_class() or ()))
        except BadWindow:  # gone meanwhile
            pass
    display.close()
    return found


def smallest_size(title):
    """Width and height below which a window manager would not go."""
    with _connection() as display:
        hints = _window(display, title).get_wm_normal_hints()
        return hints.min_width, hints.min_height


def send_to_desktop(title, number):
    """Writes on a window what a window manager writes when it takes the window to another desktop."""
    with _connection() as display:
        _window(display, title).change_property(display.intern_atom("_NET_WM_DESKTOP"), Xatom.CARDINAL, 32, [number])
        display.sync()


def close_window(title):
    """Sends what a window manager sends when its close box is clicked."""
    with _connection() as display:
        wanted, protocols = (display.intern_atom(name) for name in ("WM_DELETE_WINDOW", "WM_PROTOCOLS"))
        window = _window(display, title)
        window.send_event(ClientMessage(window=window, client_type=protocols, data=(32, [wanted, 0, 0, 0, 0])))
        display.sync()


def _pixels(box):
    """Of the screen: four bytes each, blue, green and red first."""
    with _connection() as display:
        return display.screen().root.get_image(*box, X.ZPixmap, 0xFFFFFFFF).data


def color_at(left, top):
    """Red, green and blue of a point of the screen."""
    return tuple(reversed(_pixels((left, top, 1, 1))[:3]))


def bright_points(box):
    """How many points of a box are light: light text on a dark ground."""
    return sum(green > 127 for green in _pixels(box)[1::4])
