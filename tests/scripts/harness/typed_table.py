"""An empty table with a field of every type, written byte by byte here and not by the code under test."""
import struct

# Name, type, width, decimals, flags (2: can be null, 4: binary).
FIELDS = [
    ("TXT", "C", 10, 0, 0), ("NUM", "N", 8, 2, 0), ("WHOLE", "N", 4, 0, 0), ("FLO", "F", 10, 3, 0),
    ("FLAG", "L", 1, 0, 0), ("DAY", "D", 8, 0, 0), ("MOMENT", "T", 8, 0, 0), ("INT", "I", 4, 0, 0),
    ("DBL", "B", 8, 4, 0), ("MONEY", "Y", 8, 0, 0), ("NOTE", "M", 4, 0, 0), ("NTXT", "C", 5, 0, 2),
    ("NNUM", "N", 5, 1, 2),
]
NULL_FLAGS = ("_NullFlags", "0", 1, 0, 5)
CODE_PAGE_MARK = 3  # Windows-1252


def make_typed_table(folder):
    fields = FIELDS + [NULL_FLAGS]
    length = 32 + 32 * len(fields) + 1 + 263
    width = 1 + sum(field[2] for field in fields)
    header = bytearray(struct.pack("<BBBBIHH", 0x30, 126, 11, 21, 0, length, width) + bytes(20))
    header[28] = 2  # there is a memo file
    header[29] = CODE_PAGE_MARK
    offset = 1
    for name, kind, size, decimals, flags in fields:
        header += struct.pack("<11scIBBB13x", name.encode(), kind.encode(), offset, size, decimals, flags)
        offset += size
    header += b"\x0d" + bytes(263)
    (folder / "typed.dbf").write_bytes(bytes(header) + b"\x1a")
    (folder / "typed.fpt").write_bytes(struct.pack(">IHH", 8, 0, 64).ljust(512, b"\0"))
