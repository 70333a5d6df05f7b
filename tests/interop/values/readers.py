"""Other programs that read DBF tables, each behind the same face, with what each of them is known not to do.

A reader answers the records of a table in file order as (deleted, [value of each field]); a value in the reader's own Python type.
`hides_deleted` readers leave deleted records out.
"""
import datetime
import json
import subprocess
import warnings

# What a reader is known to leave out or get wrong. Everything else must agree.
#   types     field types of the file that it does not know
#   nulls     False: it does not know VFP's null bits, so values that are null are passed over
#   files     tables that it cannot read at all, with the words of its refusal
LIMITS = {
    "ogr2ogr": {
        # The driver is made for the tables of shape files: III types only, everything else is handed out as raw text.
        "types": set("IBTYMGPVQW0@+O"),
        "nulls": False,
        "files": {},
    },
    "dbfread": {
        "types": set("VQW0"),
        "nulls": False,
        "files": {
            "xbase/vfp.dbf": "Memo index is not an integer",  # takes 4-byte block numbers only from version 0x30 on
        },
    },
    "python3-dbf": {
        "types": set("0"),
        "nulls": True,
        "files": {
            "public/dbase_03.dbf": "Duplicate field name",
            "public/dbase_31.dbf": "array index out of range",  # null bits beyond the first byte
            "public/dbase_32.dbf": "not supported",
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

    def read(self, path, encoding):
        command = ["ogr2ogr", "-f", "GeoJSONSeq", "/vsistdout/", path]
        if encoding:
            command += ["-oo", f"ENCODING={encoding.upper()}"]
        run = subprocess.run(command, capture_output=True, stdin=subprocess.DEVNULL, check=False)
        if run.returncode != 0:
            raise Refused(run.stderr.decode(errors="replace"))
        records = []
        for line in run.stdout.decode("utf-8", errors="replace").split("\n"):
            if line.strip():
                # As pairs, because field names need not be unique.
                feature = dict(json.loads(line, object_pairs_hook=list, strict=False))
                records.append((False, [value for _, value in feature["properties"]]))
        return records


class Dbfread:
    name = "dbfread"
    hides_deleted = False

    def read(self, path, encoding):
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

    def read(self, path, encoding):
        warnings.simplefilter("ignore")
        import dbf

        def plain(value):
            if isinstance(value, (dbf.NullDate, dbf.NullDateTime)) or value is dbf.Null:
                return None
            if isinstance(value, dbf.Logical):
                return None if value == dbf.Unknown else bool(value)
            if isinstance(value, dbf.DateTime):
                return datetime.datetime(value.year, value.month, value.day, value.hour, value.minute, value.second,
                                         value.microsecond) if value else None
            if isinstance(value, dbf.Date):
                return datetime.date(value.year, value.month, value.day) if value else None
            return value

        try:
            with dbf.Table(path, codepage=encoding).open(mode=dbf.READ_ONLY) as table:
                return [(dbf.is_deleted(record), [plain(record[index]) for index in range(len(table.field_names))])
                        for record in table]
        except (dbf.DbfError, ValueError, LookupError, AttributeError, TypeError) as refusal:
            raise Refused(repr(refusal)) from refusal


READERS = [Ogr2ogr(), Dbfread(), PythonDbf()]
