#!/usr/bin/python3 -W ignore
"""compare.py ZUDUMP ZUGENERATE BUILD: other readers agree with ours on every value of every table.

The tables are those of ../shared/samples (ZU_SAMPLES names another place) and the two that zugenerate makes. Each reader and
table is one test in BUILD/test-results/interop_values.xml.
"""
import datetime
import decimal
import json
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import time
import xml.etree.ElementTree as xml

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from readers import LIMITS, READERS, Refused  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[3]
SECOND = datetime.timedelta(seconds=1)


class Disagreement(Exception):
    pass


class Field:
    """A field descriptor of the file, read here so that a mistake of ours in the header would show."""

    def __init__(self, raw):
        self.name = raw[:11].split(b"\0")[0].decode("latin-1")
        self.type = chr(raw[11])
        self.nullable = bool(raw[18] & 2)


def file_fields(path):
    header = path.read_bytes()
    length = struct.unpack_from("<H", header, 8)[0]
    fields = []
    for offset in range(32, length - 1, 32):
        if header[offset] in (0x0D, 0x00):
            break
        fields.append(Field(header[offset:offset + 32]))
    return fields, header[29]


def our_records(zudump, path):
    run = subprocess.run([zudump, path.parent, path.name], capture_output=True, check=False, stdin=subprocess.DEVNULL)
    if run.returncode != 0:
        raise Disagreement("zudump failed: " + run.stderr.decode(errors="replace"))
    lines = run.stdout.decode("utf-8").split("\n")
    records = [json.loads(line) for line in lines[1:] if line]
    for number, record in enumerate(records, 1):
        if record["record"] != number:
            raise Disagreement(f"zudump: record {record['record']} stands at place {number}")
    return json.loads(lines[0])["fields"], records


def moment(text):
    return datetime.datetime.strptime(text, "%Y-%m-%d %H:%M:%S.%f")


def same(kind, ours, theirs, trim):
    """Whether a value of ours (from JSON) and one of another reader (Python) are the same value of a field of that type."""
    if isinstance(ours, dict):
        return bytes.fromhex(ours["hex"]) == (theirs if isinstance(theirs, bytes) else b"")
    if kind in "CMV":
        # No memo, an empty memo and blanks are one thing; so are the blanks and NULs behind a text.
        return trim((ours or "").rstrip(" \0"), " ") == trim((theirs or "").rstrip(" \0"), " ")
    if ours is None or theirs is None or theirs == "":
        return ours is None and theirs in (None, "")
    if kind in "NFBIY":
        if isinstance(theirs, float):
            return float(ours) == theirs
        return decimal.Decimal(ours) == theirs
    if kind == "D":
        day = theirs.replace("/", "-") if isinstance(theirs, str) else theirs.strftime("%Y-%m-%d")
        return ours[:10] == day
    if kind in "T@":
        # Writers store whole seconds a millisecond off; readers round or do not.
        return abs(moment(ours) - theirs) < SECOND / 500
    if kind == "L":
        return ours is ({"T": True, "Y": True, "F": False, "N": False}[theirs] if isinstance(theirs, str) else theirs)
    raise Disagreement(f"a field type that the comparison does not know: {kind}")


def compare(reader, limits, name, path, fields, ours, encoding):
    """The number of values compared; a `Disagreement` names the first that differs."""
    refusal = limits["files"].get(name)
    try:
        theirs = reader.read(str(path), encoding, [field.name for field in fields])
    except Refused as refused:
        if refusal and refusal in str(refused):
            return 0
        raise Disagreement(f"{reader.name} refuses the table: {refused}") from refused
    if refusal:
        raise Disagreement(f"{reader.name} reads the table after all: take it out of the table of limits")

    if reader.hides_deleted:
        ours = [record for record in ours if not record["deleted"]]
    if len(ours) != len(theirs):
        raise Disagreement(f"{len(ours)} records for us, {len(theirs)} for {reader.name}")

    shown = [index for index, field in enumerate(fields) if field.type != "0"]
    compared = 0
    for record, (deleted, values) in zip(ours, theirs):
        if record["deleted"] != deleted and not reader.hides_deleted:
            raise Disagreement(f"record {record['record']}: deleted mark {record['deleted']} for us, {deleted}")
        for column, index in enumerate(shown):
            field, mine = fields[index], record["values"][column]
            if field.type in limits["types"] or (mine is None and not limits["nulls"] and field.nullable):
                continue
            if field.type == "M" and name in limits["memo tails"] and values[index]:
                values[index] = values[index].split("\x1f")[0][:max(len(mine), 1)]
            if index >= len(values) or not same(field.type, mine, values[index], limits["trims"]):
                other = values[index] if index < len(values) else "no value"
                raise Disagreement(f"record {record['record']}, field {field.name} ({field.type}): "
                                   f"{mine!r} for us, {other!r} for {reader.name}")
            compared += 1
    return compared


def tables(zugenerate, build):
    """(name, path of a private copy with lower-case file names, because not every reader looks for x.FPT beside x.dbf)."""
    samples = pathlib.Path(os.environ.get("ZU_SAMPLES") or ROOT.parent / "shared" / "samples")
    found = sorted(samples.glob("*/*.dbf"))
    if not found:
        sys.exit(f"no sample tables in {samples} (ZU_SAMPLES names the folder)")
    scratch = build / "interop-values"
    shutil.rmtree(scratch, ignore_errors=True)
    for table in found:
        folder = scratch / table.parent.name
        folder.mkdir(parents=True, exist_ok=True)
        for file in table.parent.glob("*"):
            if file.stem.lower() == table.stem.lower():
                (folder / file.name.lower()).write_bytes(file.read_bytes())
        yield f"{table.parent.name}/{table.name}", folder / table.name.lower()
    generated = scratch / "generated"
    generated.mkdir(parents=True)
    subprocess.run([zugenerate, generated], check=True, stdin=subprocess.DEVNULL)
    for table in sorted(generated.glob("*.dbf")):
        yield f"generated/{table.name}", table


def main():
    zudump, zugenerate, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    suite = xml.Element("testsuite", name="interop_values")
    failed = 0

    def note(name, reader, started, trouble):
        nonlocal failed
        case = xml.SubElement(suite, "testcase", classname=name, name=f"{reader}Agrees", status="run",
                              time=f"{time.monotonic() - started:.3f}")
        if trouble:
            failed += 1
            xml.SubElement(case, "failure").text = trouble
            print(f"{name}: {trouble}")

    for name, path in tables(zugenerate, build):
        started = time.monotonic()
        fields, mark = file_fields(path)
        # A table without a mark of its code page is taken as Windows-1252, by us and so by the others.
        encoding = None if mark else "cp1252"
        try:
            our_fields, ours = our_records(zudump, path)
            # Names that occur again carry a number, so that each field can be named.
            visible = [field.name for field in fields if field.type != "0"]
            shown = [field["name"] for field in our_fields]
            if len(shown) != len(visible) or not all(map(str.startswith, shown, visible)):
                raise Disagreement(f"our field names {shown} are not the file's: {visible}")
        except Disagreement as trouble:
            note(name, "Ours", started, str(trouble))
            continue
        for reader in READERS:
            started = time.monotonic()
            try:
                limits = LIMITS[reader.name]
                compared = compare(reader, limits, name, path, fields, ours, encoding)
                trouble = ""
                known = {field.type for field in fields} - limits["types"]
                if not compared and known and name not in limits["files"]:
                    trouble = "not one value was compared"
                else:
                    print(f"{name}: {reader.name}: {compared} values agree")
            except Disagreement as disagreement:
                trouble = str(disagreement)
            note(name, reader.name, started, trouble)

    results = build / "test-results"
    results.mkdir(exist_ok=True)
    xml.ElementTree(suite).write(results / "interop_values.xml", encoding="utf-8", xml_declaration=True)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
