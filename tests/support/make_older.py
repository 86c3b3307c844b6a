#!/usr/bin/env python3
"""Gives DLLs and programs the version 4.4.1.0 in their properties, in place.

    make_older.py FILE...
"""
import pathlib
import struct
import sys

for name in sys.argv[1:]:
    path = pathlib.Path(name)
    data = bytearray(path.read_bytes())
    struct.pack_into('<II', data, data.index(struct.pack('<II', 0xFEEF04BD, 0x10000)) + 8, 4 << 16 | 4, 1 << 16)
    path.write_bytes(data)
