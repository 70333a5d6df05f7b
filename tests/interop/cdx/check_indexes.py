#!/usr/bin/env python3
"""Has independent programs read the indexes that write_indexes makes and compares what they see.

usage: check_indexes.py WRITER WORK

WRITER is the program write_indexes, WORK a folder that may be emptied. The sample tables and the checker
cdx_check.py are looked for in ../shared (ZU_SAMPLES names another folder of samples, ZU_CDX_CHECK another
checker). index_dump comes with Debian's libdbd-xbase-perl.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
SAMPLES = pathlib.Path(os.environ.get("ZU_SAMPLES", ROOT / "../shared/samples"))
CHECKER = pathlib.Path(os.environ.get("ZU_CDX_CHECK", ROOT / "../shared/tools/cdx_check.py"))


def fail(text):
    print("FAILED:", text)
    sys.exit(1)


def run(*command):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True,
                          encoding="latin-1", check=False)
    return done.returncode, done.stdout, done.stderr


def stated_orders(path):
    """Tag name -> record numbers in the stored order."""
    orders = {}
    for line in path.read_text().splitlines():
        name, *records = line.split()
        orders[name] = records
    return orders


def check_structure(index, table, tags):
    """The independent checker finds no error, every order right and every key equal."""
    code, out, err = run(sys.executable, CHECKER, index, table)
    if code != 0 or "ERR" in out:
        fail(f"{index.name}: cdx_check.py says:\n{out}{err}")
    lines = re.findall(r"keys=(\d+)/\S+ order_bad=(\d+) checked=(\d+) mismatch=(\d+)", out)
    if len(lines) != len(tags):
        fail(f"{index.name}: cdx_check.py sees {len(lines)} tags of {len(tags)}:\n{out}")
    for keys, order_bad, _, mismatch in lines:
        if order_bad != "0" or mismatch != "0":
            fail(f"{index.name}: cdx_check.py sees keys out of order or unequal:\n{out}")
    return sum(int(keys) for keys, *_ in lines), sum(int(checked) for _, _, checked, _ in lines)


def check_order(index, tag, expected):
    """index_dump lists the same records in the same order. The type only decides how it prints keys."""
    _, out, err = run("index_dump", "--type", "char", "-n", index, tag)
    seen = [line.rsplit(" ", 1)[-1] for line in out.replace("\r", "\n").split("\n")
            if re.search(r" \d+$", line)]
    total = seen.pop() if seen and out.rstrip().split("\n")[-1].startswith("Total records") else None
    if total != str(len(expected)):
        fail(f"{index.name} tag {tag}: index_dump counts {total} keys, expected {len(expected)}\n{err}")


def check_records(index, tag, expected):
    """The record numbers that index_dump lists. Key bytes may hold line ends, so its module is asked directly."""
    script = ("use XBase::Index; my $i = new XBase::Index $ARGV[0], tag => $ARGV[1], type => 'C' "
              "or die XBase::Index->errstr; $i->prepare_select or die $i->errstr; "
              "while (my @d = $i->fetch()) { print \"$d[1]\\n\"; }")
    code, out, err = run("perl", "-e", script, index, tag)
    if code != 0:
        fail(f"{index.name} tag {tag}: {err}")
    seen = out.split()
    if seen != expected:
        at = next((i for i, pair in enumerate(zip(seen, expected)) if pair[0] != pair[1]),
                  min(len(seen), len(expected)))
        fail(f"{index.name} tag {tag}: the order differs from place {at + 1} on "
             f"({len(seen)} records seen, {len(expected)} expected)")


def main():
    writer, work = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    for path, what in ((SAMPLES, "the sample tables"), (CHECKER, "the checker cdx_check.py")):
        if not path.exists():
            fail(f"{what} are missing: {path}")
    if shutil.which("index_dump") is None:
        fail("index_dump is missing (Debian package libdbd-xbase-perl)")
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    code, out, err = run(writer, SAMPLES, work)
    if code != 0:
        fail(out + err)
    tables = sorted(work.glob("*.orders"))
    if len(tables) != 9:
        fail(f"{len(tables)} tables were written, expected 9")
    tag_count = key_count = equal_count = 0
    for path in tables:
        index = path.with_suffix(".cdx")
        orders = stated_orders(path)
        keys, equal = check_structure(index, path.with_suffix(".dbf"), orders)
        code, out, err = run("index_dump", "--type", "char", index)
        if sorted(out.split()) != sorted(orders):
            fail(f"{index.name}: index_dump lists the tags {out.split()}, expected {sorted(orders)}\n{err}")
        for tag, records in orders.items():
            check_order(index, tag, records)
            check_records(index, tag, records)
        tag_count += len(orders)
        key_count += keys
        equal_count += equal
    print(f"{len(tables)} indexes, {tag_count} tags, {key_count} keys read alike; "
          f"{equal_count} keys recomputed alike")


if __name__ == "__main__":
    main()
