"""Text files in and out."""
from . import programs
from .data import COLUMNS, DUCKDB_TYPES, SQLITE_COLUMNS
from .job import Job

FIXED = "'%10d%-30s%-2s%8s%12.2f%6d%1s%10.4f%-60s%-8s'"
WIDTHS = (10, 30, 2, 8, 12, 6, 1, 10, 60, 8)


def pieces():
    """The columns cut out of a line."""
    place, texts = 1, []
    for width in WIDTHS:
        texts.append(f"trim(substr(line, {place}, {width}))")
        place += width
    return ", ".join(texts)


def export(setting):
    orders, turns = setting.orders, setting.turns(0.2, 10)
    work = orders.work

    def fresh(_):
        orders.fresh_work()

    def ours(form):
        return programs.zurun(setting.wine, "work.vbs", turns, orders.table, work / "{}.txt", job=f"export-{form}", prepare=fresh)

    living = f"SELECT {COLUMNS} FROM orders WHERE deleted = 0"
    duck = "id::INT, customer, country, strftime(ordered, '%Y%m%d'), amount::DOUBLE, qty, if(paid, 'T', 'F'), rate::DOUBLE, note, code"
    return [
        Job("export delimited", "export", setting.records, [
            ours("delimited"),
            programs.ogr2ogr(turns, lambda turn: ["-f", "CSV", work / f"{turn}.csv", orders.table], prepare=fresh),
            programs.sqlite_shell(work, turns, orders.sqlite, f".mode csv\n.output {work}/{{}}.txt\n{living};", prepare=fresh),
            programs.duckdb(turns, orders.load, f"COPY ({living}) TO '{work}/{{}}.txt' (FORMAT csv, HEADER false)", prepare=fresh),
            programs.reader("export-delimited", orders.table, work / "{}.txt", name="Python, dbfread", prepare=fresh),
            programs.limit("export-delimited", turns, orders.table, work / "{}.txt", prepare=fresh),
        ]),
        Job("export fixed", "export", setting.records, [
            ours("fixed"),
            programs.sqlite_shell(work, turns, orders.sqlite, f".mode list\n.output {work}/{{}}.txt\nSELECT printf({FIXED}, {COLUMNS}) "
                                  "FROM orders WHERE deleted = 0;", prepare=fresh),
            programs.duckdb(turns, orders.load, f"COPY (SELECT printf({FIXED}, {duck}) FROM orders WHERE deleted = 0) TO "
                            f"'{work}/{{}}.txt' (FORMAT csv, HEADER false, QUOTE '', DELIMITER '\t')", prepare=fresh),
            programs.limit("export-fixed", turns, orders.table, work / "{}.txt", prepare=fresh),
        ]),
    ]


def bring_in(setting):
    orders, turns = setting.orders, setting.turns(0.2, 10)
    work = orders.work

    def folders(turns):
        orders.fresh_work()
        for turn in range(turns):
            (work / str(turn)).mkdir()

    def ours(form, file):
        return programs.zurun(setting.wine, "work.vbs", turns, orders.plain, file, work / "{}" / "orders", job=f"import-{form}",
                              prepare=folders, agrees=True)

    def sqlite(statements):
        # The file of orders is not read; a database of its own is begun in each turn.
        return programs.sqlite_shell(work, turns, ":memory:", f".open {work}/{{}}/orders.sqlite\nPRAGMA synchronous=OFF;\n{statements}",
                                     prepare=folders, agrees=True)

    def limit(form, file):
        return programs.limit(f"import-{form}", turns, orders.plain, file, work / "{}" / "orders.dbf", prepare=folders, agrees=True)

    columns = "{" + ",".join(f"'{name}':'{kind}'" for name, kind in DUCKDB_TYPES) + "}"
    return [
        Job("import delimited", "import", setting.records, [
            ours("delimited", orders.delimited),
            programs.ogr2ogr(turns, lambda turn: ["-f", "ESRI Shapefile", work / f"{turn}" / "orders.dbf", orders.headed], prepare=folders),
            sqlite(f"CREATE TABLE t ({SQLITE_COLUMNS});\n.mode csv\n.import {orders.unicode_delimited} t\nSELECT count(*) FROM t;"),
            programs.duckdb(turns, "", f"CREATE OR REPLACE TABLE t AS FROM read_csv('{orders.unicode_delimited}', header=false, "
                            f"dateformat='%Y%m%d', columns={columns})", "SELECT count(*) FROM t", prepare=folders, agrees=True),
            programs.reader("import-delimited", orders.plain, orders.delimited, work / "{}" / "orders.dbf", name="Python, dbf",
                            prepare=folders, agrees=True),
            limit("delimited", orders.delimited),
        ]),
        Job("import fixed", "import", setting.records, [
            ours("fixed", orders.fixed),
            sqlite(f"CREATE TABLE lines (line TEXT);\n.mode ascii\n.separator \"\\001\" \"\\n\"\n.import {orders.unicode_fixed} lines\n"
                   f"CREATE TABLE t ({SQLITE_COLUMNS});\nINSERT INTO t SELECT {pieces()} FROM lines;\nSELECT count(*) FROM t;"),
            programs.duckdb(turns, "", f"CREATE OR REPLACE TABLE t AS SELECT {typed_pieces()} FROM read_csv('{orders.unicode_fixed}', "
                            "header=false, delim='\x01', quote='', escape='', columns={'line':'VARCHAR'})", "SELECT count(*) FROM t",
                            prepare=folders, agrees=True),
            limit("fixed", orders.fixed),
        ]),
    ]


def typed_pieces():
    """The columns cut out of a line and turned into DuckDB's types."""
    place, texts = 1, []
    for (_, kind), width in zip(DUCKDB_TYPES, WIDTHS):
        piece = f"trim(substr(line, {place}, {width}))"
        texts.append(f"strptime({piece}, '%Y%m%d')::DATE" if kind == "DATE" else f"{piece}::{kind}")
        place += width
    return ", ".join(texts)
