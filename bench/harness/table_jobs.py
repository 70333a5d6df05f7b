"""Whole tables: packed, indexed, copied."""
from . import programs
from .job import Job

FASTEST = "PRAGMA synchronous=OFF;"


def pack(setting):
    orders, turns = setting.orders, setting.turns(0.2, 10)
    return [Job("pack", "pack", setting.records, [
        programs.zurun(setting.wine, "work.vbs", turns, orders.work / "{}" / "orders.dbf", job="pack", prepare=orders.copy_tables,
                       agrees=True),
        programs.sqlite_shell(orders.work, turns, orders.sqlite, f".open {orders.work}/{{}}.sqlite\n{FASTEST}"
                              "DELETE FROM orders WHERE deleted = 1; VACUUM; SELECT count(*) FROM orders;",
                              prepare=orders.copy_sqlite, agrees=True),
        programs.limit("pack", turns, orders.table, orders.work / "{}.dbf", prepare=lambda _: orders.fresh_work(), agrees=True),
    ])]


def index(setting):
    orders, turns = setting.orders, setting.turns(0.2, 10)
    return [Job("build an index on 30 characters", "index", setting.records, [
        programs.zurun(setting.wine, "work.vbs", turns, orders.work / "{}" / "orders.dbf", job="index",
                       prepare=lambda turns: orders.copy_tables(turns, indexed=False)),
        programs.sqlite_shell(orders.work, turns, orders.sqlite, f".open {orders.work}/{{}}.sqlite\n{FASTEST}"
                              "CREATE INDEX by_customer ON orders (customer); SELECT 0;", prepare=orders.copy_sqlite),
        programs.duckdb(turns, orders.load, "DROP INDEX IF EXISTS by_customer", "CREATE INDEX by_customer ON orders (customer)"),
        programs.limit("index", turns, orders.table, orders.work / "{}.keys", name="native sort", prepare=lambda _: orders.fresh_work()),
    ])]


def copy(setting):
    orders, turns = setting.orders, setting.turns(0.2, 10)

    def fresh(_):
        orders.fresh_work()

    def folders(turns):
        orders.fresh_work()
        for turn in range(turns):
            (orders.work / str(turn)).mkdir()

    def theirs(indexed):
        make = ("CREATE TABLE copy.orders (deleted INTEGER, id INTEGER, customer TEXT, country TEXT, ordered TEXT, amount REAL, "
                "qty INTEGER, paid INTEGER, rate REAL, note TEXT, code TEXT);")
        if indexed:
            make += "CREATE INDEX copy.by_id ON orders (id);"
        target = f"{orders.work}/{{}}"
        return [
            programs.sqlite_shell(
                orders.work, turns, orders.sqlite,
                f"ATTACH '{target}.sqlite' AS copy; PRAGMA copy.synchronous=OFF; {make} INSERT INTO copy.orders SELECT * FROM orders "
                "WHERE deleted = 0; SELECT changes(); DETACH copy;", prepare=fresh, agrees=True),
            programs.duckdb(turns, orders.load, f"ATTACH '{target}.duckdb' AS copy",
                            "CREATE TABLE copy.orders AS FROM orders WHERE deleted = 0",
                            *(["CREATE INDEX by_id ON copy.orders (id)"] if indexed else []), "DETACH copy", prepare=fresh),
            programs.ogr2ogr(turns, lambda turn: ["-f", "ESRI Shapefile", orders.work / f"{turn}" / "orders.dbf", orders.table],
                             prepare=folders),
            programs.limit("copy", turns, orders.table, f"{target}.dbf", name="the same bytes", prepare=fresh),
        ]

    def ours(job):
        return programs.zurun(setting.wine, "work.vbs", turns, orders.table, orders.work / "{}" / "copy", job=job, prepare=folders, agrees=True)

    return [
        Job("copy a table with its index (DbfToDbf)", "copy", setting.records, [ours("copy"), *theirs(True)]),
        Job("append a table to an empty one (DbfFromDbf)", "copy", setting.records, [ours("append"), *theirs(False)]),
    ]
