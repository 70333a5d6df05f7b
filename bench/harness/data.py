"""The data, the same in every run: orders as a table with an index, as text, and as the files of others."""
import os
import shutil
import subprocess

from .measure import Failed
from .surroundings import DATA, MODULES, SCRIPTS, WINDOWS, has_duckdb, windows_path

COLUMNS = "id,customer,country,ordered,amount,qty,paid,rate,note,code"
SQLITE_COLUMNS = ("id INTEGER, customer TEXT, country TEXT, ordered TEXT, amount REAL, qty INTEGER, paid INTEGER, rate REAL, "
                  "note TEXT, code TEXT")
DUCKDB_TYPES = (("id", "INTEGER"), ("customer", "VARCHAR"), ("country", "VARCHAR"), ("ordered", "DATE"), ("amount", "DECIMAL(12,2)"),
                ("qty", "INTEGER"), ("paid", "BOOLEAN"), ("rate", "DECIMAL(10,4)"), ("note", "VARCHAR"), ("code", "VARCHAR"))
FORM = 3  # counted up when what is made changes


class Orders:
    """The files of one size."""

    def __init__(self, records):
        self.records = records
        self.folder = DATA / str(records)
        self.table = self.folder / "orders.dbf"
        self.index = self.folder / "orders.cdx"
        self.plain = self.folder / "plain" / "orders.dbf"
        self.csv = self.folder / "orders.csv"
        self.sqlite = self.folder / "orders.sqlite"
        self.duckdb = self.folder / "orders.duckdb"
        self.delimited = self.folder / "orders.del"
        self.fixed = self.folder / "orders.fix"
        self.headed = self.folder / "headed.csv"
        self.unicode_delimited = self.folder / "unicode.del"
        self.unicode_fixed = self.folder / "unicode.fix"
        self.work = self.folder / "work"

    @property
    def load(self):
        """Brings the orders into a DuckDB database in memory."""
        return f"ATTACH '{self.duckdb}' AS kept (READ_ONLY); CREATE TABLE orders AS FROM kept.orders; DETACH kept"

    def fresh_work(self):
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir(parents=True)

    def copy_tables(self, turns, indexed=True):
        """work/0/orders.dbf and so on, and their index."""
        self.fresh_work()
        for turn in range(turns):
            folder = self.work / str(turn)
            folder.mkdir()
            shutil.copyfile(self.table if indexed else self.plain, folder / "orders.dbf")
            if indexed:
                shutil.copyfile(self.index, folder / "orders.cdx")

    def copy_sqlite(self, turns):
        """work/0.sqlite and so on."""
        self.fresh_work()
        for turn in range(turns):
            shutil.copyfile(self.sqlite, self.work / f"{turn}.sqlite")


def run(command, environment=None, folder=None):
    done = subprocess.run([str(word) for word in command], env=environment, cwd=folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
    if done.returncode != 0:
        raise Failed(f"{' '.join(str(word) for word in command)} failed: {done.stdout.strip()[-400:]}")


def script(wine, *words):
    run([wine.loader, WINDOWS / "zurun.exe", windows_path(SCRIPTS / "work.vbs"), *words], wine.environment)


def make_sqlite(orders):
    statements = (f"PRAGMA synchronous=OFF;\nCREATE TABLE orders (deleted INTEGER, {SQLITE_COLUMNS});\n"
                  f".mode csv\n.import {orders.csv} orders\nCREATE INDEX by_id ON orders (id);\n")
    load = orders.folder / "load.sql"
    load.write_text(statements)
    run(["sqlite3", orders.sqlite, f".read {load}"])


def make_duckdb(orders):
    columns = "{'deleted':'INTEGER'," + ",".join(f"'{name}':'{kind}'" for name, kind in DUCKDB_TYPES) + "}"
    create = f"CREATE TABLE orders AS FROM read_csv('{orders.csv}', header=false, columns={columns})"
    run(["node", SCRIPTS / "duckdb.mjs", orders.duckdb, 1, "", 1, create], {**os.environ, "ZU_BENCH_MODULES": str(MODULES)})


def in_unicode(source, target, head=""):
    """A text file of ours as the others want it, piece by piece: what this process needs counts as used by those it starts."""
    with open(source, encoding="cp1252", newline="") as read, open(target, "w", encoding="utf-8", newline="") as written:
        written.write(head)
        shutil.copyfileobj(read, written, 1 << 20)


def make(records, wine):
    """The orders of this size, made when they are not there, or when the generator or this file has changed."""
    orders = Orders(records)
    ready = orders.folder / "ready"
    generator = WINDOWS / "zugenerate.exe"
    form = str(FORM)
    if ready.exists() and ready.read_text() == form and ready.stat().st_mtime > generator.stat().st_mtime:
        if has_duckdb() and not orders.duckdb.exists():
            make_duckdb(orders)
        return orders
    print(f"making {records:,} orders in {orders.folder}", flush=True)
    shutil.rmtree(orders.folder, ignore_errors=True)
    (orders.folder / "plain").mkdir(parents=True)
    run([wine.loader, generator, "--orders", records, "--text", "."], wine.environment, orders.folder)
    shutil.copyfile(orders.table, orders.plain)
    run([wine.loader, WINDOWS / "zurun.exe", "-e", 'If Not DbfIndex(Args(0), Array("ID")) Then Quit 1', windows_path(orders.table)],
        wine.environment)
    script(wine, "export-delimited", 1, windows_path(orders.table), windows_path(orders.delimited))
    script(wine, "export-fixed", 1, windows_path(orders.table), windows_path(orders.fixed))
    make_sqlite(orders)
    if has_duckdb():
        make_duckdb(orders)
    in_unicode(orders.delimited, orders.unicode_delimited)
    in_unicode(orders.delimited, orders.headed, COLUMNS + "\r\n")
    in_unicode(orders.fixed, orders.unicode_fixed)
    ready.write_text(form)
    return orders
