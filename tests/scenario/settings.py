"""Writes settings records as docs/file-formats.md describes them."""
import struct


def _code(name):
    return int.from_bytes(name.encode(), "big")


def _field(kind, name, value):
    return struct.pack("<IH", _code(kind), len(name)) + name.encode() + struct.pack("<II", 1, len(value)) + value


def text(value):
    return "CSTR", value.encode() + b"\0"


def flag(value):
    return "BOOL", bytes([value])


def number(value):
    return "LONG", struct.pack("<i", value)


def write_record(path, fields):
    """fields: name to what text, flag or number gave."""
    body = struct.pack("<II", 0, len(fields))
    body += b"".join(_field(kind, name, value) for name, (kind, value) in fields.items())
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(b"VMSG" + struct.pack("<II", 1, 12 + len(body)) + body)


def values_of(data, name):
    """The flags or numbers of a field."""
    at = data.index(name.encode()) + len(name)
    count = struct.unpack_from("<I", data, at)[0]
    at += 4
    values = []
    for _ in range(count):
        size = struct.unpack_from("<I", data, at)[0]
        values.append(int.from_bytes(data[at + 4:at + 4 + size], "little"))
        at += 4 + size
    return values
