#!/usr/bin/python3 -W ignore
"""check_tables.py WRITE_TABLES BUILD: other programs read what we wrote, with the values that were meant.

The readers are those of ../values, shapelib's dbfdump, Debian's XBase module and the reader of index files beside this file.
"""
import datetime
import json
import pathlib
import shutil
import struct
import subprocess
import sys
import xml.etree.ElementTree as xml

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "values")]
from cdx_reader import Broken, tags_of  # noqa: E402
from compare import Disagreement, compare, file_fields  # noqa: E402
from readers import LIMITS, READERS  # noqa: E402

TAGS = {"ID", "DAY", "NAMEDOWN", "LIVING"}


def number_key(number):
    """The bytes of a number in the order of numbers."""
    raw = struct.pack(">d", number + 0.0)
    return bytes([raw[0] ^ 0x80]) + raw[1:] if number >= 0 else bytes(byte ^ 0xFF for byte in raw)


def julian(text):
    return datetime.date.fromisoformat(text[:10]).toordinal() + 1721425


def expected_keys(tag, columns, records):
    """What a tag holds: (key, record number), in the order of the keys."""
    if tag in ("ID", "LIVING"):
        keys = [(number_key(float(record["values"][columns["ID"]])), record) for record in records]
    elif tag == "DAY":
        keys = [(number_key(float(julian(record["values"][columns["DAY"]]))), record) for record in records]
    else:
        keys = [(record["values"][columns["NAME"]].encode("cp1252").ljust(24), record) for record in records]
    return sorted((key, record["record"]) for key, record in keys if tag != "LIVING" or not record["deleted"])


def check_index(path, columns, records):
    """Every tag holds the right keys; we and another reader go through them in that order."""
    orders = {line.split()[0]: [int(word) for word in line.split()[1:]]
              for line in path.with_suffix(".orders").read_text().splitlines()}
    tags = tags_of(path.with_suffix(".cdx"))
    default = path.stem.upper()
    if set(orders) != TAGS | {default} or set(tags) != set(orders):
        raise Disagreement(f"the tags are {sorted(tags)}, we see {sorted(orders)}")
    for name, tag in tags.items():
        texts = name in (default, "NAMEDOWN")
        entries = tag.entries(b" " if texts else b"\0")
        wanted = expected_keys(name, columns, records)
        if entries != wanted:
            different = next((pair for pair in zip(entries, wanted) if pair[0] != pair[1]), (len(entries), len(wanted)))
            raise Disagreement(f"tag {name}: {different}")
        stored = [record for _, record in entries]
        if stored != (orders[name][::-1] if tag.descending else orders[name]):
            raise Disagreement(f"tag {name}: our order is another one")
        if stored != xbase_order(path.with_suffix(".cdx"), name):
            raise Disagreement(f"tag {name}: the order of index_dump's module is another one")
    return len(tags)


def xbase_order(index, tag):
    script = ("use XBase::Index; my $i = new XBase::Index $ARGV[0], tag => $ARGV[1], type => 'C' "
              "or die XBase::Index->errstr; $i->prepare_select or die $i->errstr; "
              "while (my @d = $i->fetch()) { print \"$d[1]\\n\"; }")
    run = subprocess.run(["perl", "-e", script, index, tag], capture_output=True, check=False, stdin=subprocess.DEVNULL)
    if run.returncode != 0:
        raise Disagreement(f"tag {tag}: {run.stderr.decode(errors='replace')}")
    return [int(word) for word in run.stdout.split()]


def check_dbfdump(path, fields, records):
    """shapelib's program prints the bytes of each field; it knows the plain types only."""
    run = subprocess.run(["dbfdump", "-r", "-m", path], capture_output=True, check=False, stdin=subprocess.DEVNULL)
    if run.returncode != 0:
        raise Disagreement(f"dbfdump: {run.stdout.decode('latin-1')}")
    blocks = run.stdout.decode("cp1252", errors="replace").split("Record: ")[1:]
    if len(blocks) != len(records):
        raise Disagreement(f"dbfdump sees {len(blocks)} records of {len(records)}")
    compared = 0
    for block, record in zip(blocks, records):
        lines = dict(line.split(": ", 1) for line in block.split("\n")[1:] if ": " in line)
        for field, value in zip(fields, record["values"]):
            if field.type not in "CNDL":
                continue
            seen = lines[field.name].strip()
            if field.type == "D":
                value = value[:10].replace("-", "")
            if field.type == "L":
                value = "T" if value else "F"
            if value is not None and seen != str(value):
                raise Disagreement(f"record {record['record']}, field {field.name}: {value!r} was meant, dbfdump: {seen!r}")
            compared += 1
    return compared


def checks_of(path):
    """(who, what it does and how much it compared) for a table."""
    fields = [field for field in file_fields(path)[0] if field.type != "0"]
    records = [json.loads(line) for line in path.with_suffix(".json").read_text().splitlines()]
    columns = {field.name: place for place, field in enumerate(fields)}
    name = "written/" + path.name
    for reader in READERS:
        def read(reader=reader):
            limits = dict(LIMITS[reader.name], files=KNOWN_REFUSALS.get(reader.name, {}))
            return compare(reader, limits, name, path, file_fields(path)[0], records, None)
        yield reader.name, read
    yield "dbfdump", lambda: check_dbfdump(path, fields, records)
    yield "indexes", lambda: check_index(path, columns, records)


# This reader looks for the bits of nulls in the wrong place.
KNOWN_REFUSALS = {"python3-dbf": {"written/visual.dbf": "bits of the second byte"}}


def main():
    writer, build = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    if shutil.which("dbfdump") is None:
        sys.exit("dbfdump is missing (Debian package shapelib)")
    folder = build / "interop-written"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    subprocess.run([writer, folder], check=True, stdin=subprocess.DEVNULL)
    suite = xml.Element("testsuite", name="interop_written")
    failed = 0
    for path in sorted(folder.glob("*.dbf")):
        for who, check in checks_of(path):
            case = xml.SubElement(suite, "testcase", classname=path.stem, name=f"{who}Agrees", status="run")
            try:
                print(f"{path.name}: {who}: {check()} agree")
            except (Disagreement, Broken) as trouble:
                failed += 1
                xml.SubElement(case, "failure").text = str(trouble)
                print(f"{path.name}: {who}: {trouble}")
    if len(suite) != 20:
        failed += 1
        print(f"{len(suite)} checks were made instead of 20")
    results = build / "test-results"
    results.mkdir(exist_ok=True)
    xml.ElementTree(suite).write(results / "interop_written.xml", encoding="utf-8", xml_declaration=True)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
