"""A small reader of CDX files, from a description of the format: it shares nothing with the code under test.

It walks every page of every tag and raises `Broken` where anything contradicts anything else.
"""
import struct

PAGE = 512
NOWHERE = 0xFFFFFFFF
INTERIOR_PAGE, LEAF = 0, 2
FREE_SPACE_START = 24


class Broken(Exception):
    pass


def require(holds, text):
    if not holds:
        raise Broken(text)


class Tag:
    def __init__(self, data, offset, name):
        self.data, self.name = data, name
        self.root, = struct.unpack_from("<I", data, offset)
        self.width, self.options = struct.unpack_from("<HB", data, offset + 12)
        self.descending, = struct.unpack_from("<H", data, offset + 502)
        key_length, = struct.unpack_from("<H", data, offset + 510)
        self.expression = data[offset + 512:offset + 512 + key_length].split(b"\0")[0].decode("latin-1")
        self.pages = set()

    def entries(self, blank):
        """(key, record number) in the stored order. `blank` fills the bytes that a leaf leaves out at the ends."""
        found = []
        self.leaves = []
        self.walk(self.root, blank, found)
        for place, page in enumerate(self.leaves):
            left, right = struct.unpack_from("<II", self.data, page + 4)
            require(left == (self.leaves[place - 1] if place else NOWHERE), f"{self.name}: page {page:x}: left neighbour")
            require(right == (self.leaves[place + 1] if place + 1 < len(self.leaves) else NOWHERE),
                    f"{self.name}: page {page:x}: right neighbour")
        for before, after in zip(found, found[1:]):
            require(before < after, f"{self.name}: {before} stands before {after}")
        require(len({record for _, record in found}) == len(found), f"{self.name}: a record stands twice")
        return found

    def walk(self, page, blank, found):
        require(page % PAGE == 0 and page + PAGE <= len(self.data), f"{self.name}: page {page:x} is outside the file")
        require(page not in self.pages, f"{self.name}: page {page:x} is used twice")
        self.pages.add(page)
        kind, count = struct.unpack_from("<HH", self.data, page)
        if kind & LEAF:
            self.leaves.append(page)
            self.read_leaf(page, count, blank, found)
            return
        width = self.width
        require(12 + count * (width + 8) <= PAGE and count > 0, f"{self.name}: page {page:x} counts {count} keys")
        for place in range(count):
            at = page + 12 + place * (width + 8)
            key = self.data[at:at + width]
            record, child = struct.unpack_from(">II", self.data, at + width)
            self.walk(child, blank, found)
            require(found and found[-1] == (key, record), f"{self.name}: page {page:x}: entry {place} is not the last below it")

    def read_leaf(self, page, count, blank, found):
        data = self.data
        free, record_mask, duplicate_mask, trail_mask = struct.unpack_from("<HIBB", data, page + 12)
        record_bits, duplicate_bits, trail_bits, size = struct.unpack_from("<BBBB", data, page + 20)
        require(count == 0 or record_bits + duplicate_bits + trail_bits == size * 8, f"{self.name}: page {page:x}: bits")
        content, key = PAGE, b""
        for place in range(count):
            at = page + FREE_SPACE_START + place * size
            packed = int.from_bytes(data[at:at + size], "little")
            record = packed & record_mask
            duplicate = packed >> record_bits & duplicate_mask
            trail = packed >> (record_bits + duplicate_bits) & trail_mask
            fresh = self.width - duplicate - trail
            require(fresh >= 0 and duplicate <= len(key), f"{self.name}: page {page:x}: entry {place}")
            content -= fresh
            require(content >= FREE_SPACE_START + count * size, f"{self.name}: page {page:x} overflows")
            key = key[:duplicate] + data[page + content:page + content + fresh] + blank * trail
            found.append((key, record))
        require(free == content - FREE_SPACE_START - count * size, f"{self.name}: page {page:x}: free space {free}")


def tags_of(path):
    """The tags of an index file by their names."""
    data = path.read_bytes()
    directory = Tag(data, 0, "directory")
    return {name.rstrip(b" \0").decode("latin-1"): Tag(data, header, name.decode("latin-1").strip())
            for name, header in directory.entries(b" ")}
