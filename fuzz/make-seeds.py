#!/usr/bin/env python3
"""Writes the texture reader's seed corpus: byte 0 picks the header form, then the file."""
import struct
import sys
import zlib
from pathlib import Path

out = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "corpus" / "texture_reader")
out.mkdir(parents=True, exist_ok=True)


def current(w, h, planes, payload):
    header = b"1tzq" + struct.pack("<IIIIIII", w, h, planes, 0, 3, 0, 0x12) + bytes(20)
    return b"\0" + header + payload


def legacy(w, h, planes, payload):
    return b"\1" + b"wash" + struct.pack(">III", w, h, planes) + payload


def pixels(n):
    return bytes((i * 37 + 11) & 0xFF for i in range(n))


seeds = {
    "grey_4x3": current(4, 3, 1, zlib.compress(pixels(12))),
    "colour_3x2": current(3, 2, 3, zlib.compress(pixels(18))),
    "planes4_2x2": current(2, 2, 4, zlib.compress(pixels(12), 9)),
    "legacy_grey_5x2": legacy(5, 2, 1, zlib.compress(pixels(10))),
    "legacy_colour_2x2": legacy(2, 2, 3, zlib.compress(pixels(12), 1)),
    "cut_stream": current(8, 8, 1, zlib.compress(pixels(64))[:20]),
    "long_stream": current(2, 2, 1, zlib.compress(pixels(40))),
    "stored_block": current(4, 4, 1, zlib.compress(pixels(16), 0)),
}
for name, data in seeds.items():
    (out / name).write_bytes(data)

# Bit 1 of byte 0: the target compresses the payload itself.
raw = {
    "raw_grey_4x4": b"\2" + current(4, 4, 1, pixels(16))[1:],
    "raw_long": b"\2" + current(3, 3, 1, pixels(30))[1:],
    "raw_legacy_colour": b"\3" + legacy(3, 2, 3, pixels(18))[1:],
}
for name, data in raw.items():
    (out / name).write_bytes(data)
