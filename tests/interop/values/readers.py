"""Other programs that read DBF tables, each behind the same face, with what each of them is known not to do.

A reader answers the records of a table in file order as (deleted, [value of each field]); a value in the reader's own Python type.
`hides_deleted` readers leave deleted records out.
"""
import json
import subprocess
import warnings

# What a reader is known to leave out or get wrong. Everything else must agree.
#   types        field types of the file that it does not know
#   nulls        False: it does not know VFP's null bits, so values that are null are passed over
#   memo tails   tables whose memos it hands out with bytes behind their end
#   trims        what it takes off texts beyond the NULs and blanks at their end
#   files        tables that it cannot read at all, with the words of its refusal
LIMITS = {
    "ogr2ogr": {
        # The driver is made for the tables of shape files: III types only, everything else is handed out as raw text.
        "types": set("IBTYMGPVQW0@+O"),
        "nulls": False,
        "memo tails": set(),
        "trims": str.strip,  # leading blanks too
        "files": {},
    },
    "dbfread": {
        "types": set("VQW0"),
        "nulls": False,
        "memo tails": {"public/dbase_8b.dbf"},  # reads IV memos up to the first 0x1F instead of their length
        "trims": str.rstrip,
        "files": {
            "xbase/vfp.dbf": "Memo index is not an integer",  # takes 4-byte block numbers only from version 0x30 on
        },
    },
    "python3-dbf": {
        "types": set("0"),
        "nulls": True,
        "memo tails": set(),
        "trims": str.rstrip,
        "files": {
            "public/dbase_03.dbf": "Duplicate field name",
            "public/dbase_31.dbf": "bits of the second byte",
            "public/orders.dbf": "bits of the second byte",
            "generated/orders.dbf": "bits of the second byte",
            "public/dbase_32.dbf": "bits of the second byte",
            "public/dbase_8b.dbf": "not supported",
            "xbase/vfp.dbf": "Unknown field type",
        },
    },
}


class Refused(Exception):
    """The reader cannot read the table; the text is its own."""


class Ogr2ogr:
    name = "ogr2ogr"
    hides_deleted = True

    def read(self, path, encoding, names):
        command = ["ogr2ogr", "-f", "GeoJSONSeq", "/vsistdout/", path]
        if encoding:
            command += ["-oo", f"ENCODING={encoding.upper()}"]
        run = subprocess.run(command, capture_output=True, stdin=subprocess.DEVNULL, check=False)
        if run.returncode != 0:
            raise Refused(run.stderr.decode(errors="replace"))
        # A name that occurs again gets a number behind it; a field without a value is left out of its feature.
        keys = []
        for name in names:
            keys.append(name if name not in keys else name + "2")
        records = []
        for line in run.stdout.decode("utf-8", errors="replace").split("\n"):
            if line.strip():
                properties = json.loads(line, strict=False)["properties"]
                records.append((False, [properties.get(key) for key in keys]))
        return records


class Dbfread:
    name = "dbfread"
    hides_deleted = False

    def read(self, path, encoding, names):
        import dbfread

        class Record(list):
            def __init__(self, pairs):
                super().__init__(value for _, value in pairs)

        class Table(dbfread.DBF):
            def both(self):
                """Records in file order, the deleted ones marked."""
                live, dead = list(self._iter_records(b" ")), list(self._iter_records(b"*"))
                with open(self.filename, "rb") as file:
                    marks = file.read()[self.header.headerlen::self.header.recordlen]
                for mark in marks[:self.header.numrecords]:
                    yield (True, dead.pop(0)) if mark == 0x2A else (False, live.pop(0))

        try:
            return list(Table(path, recfactory=Record, encoding=encoding, char_decode_errors="strict").both())
        except (ValueError, TypeError, LookupError) as refusal:
            raise Refused(repr(refusal)) from refusal


class PythonDbf:
    name = "python3-dbf"
    hides_deleted = False

    def read(self, path, encoding, names):
        warnings.simplefilter("ignore")
        import dbf

        if "_NullFlags" in names:
            raise Refused("it looks for the bits of the second byte in the first")

        try:
            with dbf.Table(path, codepage=encoding).open(mode=dbf.READ_ONLY) as table:
                return [(dbf.is_deleted(record), [record[index] for index in range(len(table.field_names))])
                        for record in table]
        except (dbf.DbfError, ValueError, LookupError, AttributeError, TypeError) as refusal:
            raise Refused(repr(refusal)) from refusal


READERS = [Ogr2ogr(), Dbfread(), PythonDbf()]
