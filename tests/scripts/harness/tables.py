"""The tables that the script tests read, and facts about them from an independent reader."""
import fcntl
import json
import pathlib

from dbfread import DBF

from . import programs
from .typed_table import make_typed_table


def prepare(folder, generator):
    """Makes the sample tables and the faulty files once; answers the folder and the facts."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    with open(folder / "lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        ready = folder / "facts.json"
        newest = max(pathlib.Path(path).stat().st_mtime for path in (generator, __file__))
        if not ready.exists() or ready.stat().st_mtime < newest:
            outcome = programs.run(generator, programs.windows_path(folder), seconds=300)
            if outcome.code != 0:
                raise SystemExit("the sample tables could not be made\n" + outcome.describe())
            make_faulty_files(folder)
            make_table_of_single_keys(folder)
            make_typed_table(folder)
            ready.write_text(json.dumps(gather_facts(folder)))
        return json.loads(ready.read_text())


def make_faulty_files(folder):
    whole = (folder / "customers.dbf").read_bytes()
    (folder / "locked.dbf").write_bytes(whole)
    (folder / "empty.dbf").write_bytes(b"")
    (folder / "cut-header.dbf").write_bytes(whole[:40])
    (folder / "cut-records.dbf").write_bytes(whole[:5000])
    (folder / "text.dbf").write_bytes(b"This is no table but a text that somebody gave the wrong name.\r\n" * 20)
    lying = bytearray(whole[:5000])
    lying[4:8] = (4_000_000_000).to_bytes(4, "little")
    (folder / "lying.dbf").write_bytes(bytes(lying))


def make_table_of_single_keys(folder):
    """The customers with an index that takes no ID twice: a candidate key, which only FoxPro itself declares."""
    (folder / "single.dbf").write_bytes((folder / "customers.dbf").read_bytes())
    index = bytearray((folder / "customers.cdx").read_bytes())
    compact_tag, candidate = 0x60, 0x04
    header = next(page for page in range(0, len(index), 512)
                  if index[page + 14] == compact_tag and index[page + 512:page + 515] == b"ID\0")
    index[header + 14] |= candidate
    (folder / "single.cdx").write_bytes(bytes(index))


def gather_facts(folder):
    customers = list(DBF(folder / "customers.dbf", char_decode_errors="replace"))
    orders = list(DBF(folder / "orders.dbf", ignore_missing_memofile=True, char_decode_errors="replace"))
    swedish = [row for row in customers if row["COUNTRY"] == "SE"]
    unshipped = [row for row in orders if row["SHIPPED"] is None]
    first, last = customers[0], customers[-1]
    return {
        "tables": programs.windows_path(folder),
        "folder": str(folder),
        "customers": len(customers),
        "orders": len(orders),
        "swedish": len(swedish),
        "active": sum(1 for row in customers if row["ACTIVE"]),
        "unshipped": len(unshipped),
        "unshippedId": unshipped[0]["ID"],
        "firstId": first["ID"],
        "firstName": first["NAME"],
        "lastId": last["ID"],
        "richest": f"{max(row['CREDIT'] for row in customers):.2f}",
        "swedishIdSum": sum(row["ID"] for row in swedish),
        "discountNull": sum(1 for row in orders if row["DISCOUNT"] is None),
    }
