#!/usr/bin/python3
"""Tests the commands of zurun: info, show, check, repair, pack, reindex, export, import, edit, pick and help.

run_commands.py --bin FOLDER --work FOLDER --results FILE
"""
import argparse
import csv
import datetime
import decimal
import io
import json
import pathlib
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True

from dbfread import DBF  # noqa: E402

from harness.checks import Checks  # noqa: E402
from harness.programs import LAUNCHER, windows_path  # noqa: E402
from harness.tables import prepare  # noqa: E402
from harness.terminal import run_on_terminal, without_controls  # noqa: E402

PROMPT = "-- Space"


class Tables:
    """A folder of its own for a group of checks, with copies of the sample tables."""

    def __init__(self, check, facts, name, tables=("customers", "orders")):
        self.source = pathlib.Path(facts["folder"])
        self.path = check.work / name
        shutil.rmtree(self.path, ignore_errors=True)
        self.path.mkdir(parents=True)
        for table in tables:
            self.take(table)

    def take(self, table, name=None):
        for file in self.source.glob(f"{table}.*"):
            shutil.copyfile(file, self.path / f"{name or table}{file.suffix}")

    def damage_index(self, table):
        index = self.path / f"{table}.cdx"
        content = bytearray(index.read_bytes())
        content[3000:3400] = b"\xff" * 400
        index.write_bytes(content)

    def forbid_writing(self, table):
        """An index of another kind that we do not maintain: the table can only be read."""
        (self.path / f"{table}.cdx").unlink()
        (self.path / f"{table}.mdx").write_bytes(b"\x02" * 2048)


class Holder:
    """Another program that has a table open until it is let go."""

    def __init__(self, check, folder, table):
        script = check.work / "hold.vbs"
        script.write_text(f'Set table = DbfOpen("{windows_path(folder)}>{table}")\nEcho "ready"\n'
                          "line = WScript.StdIn.ReadLine\n")
        self.process = subprocess.Popen([str(LAUNCHER), str(check.program), windows_path(script)],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.process.stdout.readline()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.communicate(b"go\n", timeout=60)


def plain(value):
    """A value of the independent reader as the commands write it."""
    if value is None:
        return None
    if isinstance(value, bool):
        return value
    if isinstance(value, datetime.datetime):
        return value.isoformat()
    if isinstance(value, datetime.date):
        return value.isoformat()
    if isinstance(value, (int, float, decimal.Decimal)):
        return decimal.Decimal(str(value))
    return value.rstrip(" ")


def records_of(folder, table):
    return [{name: plain(value) for name, value in record.items() if name != "_NullFlags"}
            for record in DBF(pathlib.Path(folder) / f"{table}.dbf", char_decode_errors="replace")]


def parsed(outcome):
    """The output as JSON, numbers without loss; the reason when it is none."""
    try:
        return json.loads(outcome.out, parse_float=decimal.Decimal, parse_int=decimal.Decimal)
    except ValueError as error:
        return f"no JSON: {error}\n{outcome.describe()}"


def equal(check, statement, actual, expected):
    same = actual == expected
    check.results.add(check.group, statement, None if same else f"expected {expected!r}\nbut it is {actual!r}"[:2000])


def lines(outcome):
    return outcome.out.replace("\r\n", "\n").splitlines()


def usage(check, facts):
    tables = Tables(check, facts, "usage", ("customers",))

    def run(*words):
        return check.run(*words, folder=tables.path)

    commands = ("info", "show", "check", "repair", "pack", "reindex", "export", "import", "edit", "pick")
    general = run("help")
    check.expect("help shows all commands", general, err="", out_has=[f"zurun {name} " for name in commands])
    equal(check, "--help shows the same", run("--help").out, general.out)
    for name in commands:
        outcome = run("help", name)
        check.expect(f"help {name} shows the command's options", outcome, err="", out_has=[f"zurun {name} ", "--help"])
        equal(check, f"{name} --help shows the same", run(name, "--help").out, outcome.out)
        check.expect(f"{name} without a table is wrong usage", run(name), 64, out="",
                     err_has=["too few words", f"zurun help {name}"])
        check.expect(f"{name} refuses unknown options", run(name, "customers", "--nonsense"), 64, out="",
                     err_has=["--nonsense", f"zurun help {name}"])
    check.expect("a mistyped command is asked about", run("inof", "customers"), 64, out="", err_has=['did you mean "info"?'])
    check.expect("so it is behind help", run("help", "shwo"), 64, out="", err_has=['did you mean "show"?'])
    check.expect("a missing script that is like no command stays a missing script", run("quarterly"), 66,
                 err_has=["quarterly"])
    check.expect("words too many are refused", run("show", "customers", "ID", ">", "5"), 64, out="",
                 err_has=['from ">" on', "in quotes"])
    check.expect("--json and --csv exclude each other", run("info", "customers", "--json", "--csv"), 64, out="",
                 err_has=["exclude each other"])
    for command in ("show", "edit", "pick"):
        check.expect(f"{command} takes no wildcards", run(command, "*"), 64, out="", err_has=["takes one"])
        check.expect(f"{command} takes no folder", run(command, "."), 64, out="", err_has=["is a folder"])
    (tables.path / "show.vbs").write_text('Echo "the script", Args(0)')
    (tables.path / "show").write_text('Echo "the script", Args(0)')
    for name, options in (("show.vbs", ()), ("./show", ("--language", "vbscript"))):
        check.expect(f"a script named like a command runs as {name}", run(*options, name, "x"), out="the script x\n", err="")
    check.expect("a missing data folder is refused", run("--data", "no such folder", "info", "customers"), 66, out="",
                 err_has=["no such folder"])
    check.expect("--data in front of a command is where its tables are",
                 check.run("--data", windows_path(tables.path), "info", "customers"), out_has=["customers"], err="")
    check.expect("--data behind it too", check.run("info", "customers", "--data", windows_path(tables.path)),
                 out_has=["customers"], err="")
    check.expect("--trace shows the log", run("info", "customers", "--trace"), out_has=["customers"])
    check.expect("options in front of a script still work beside commands", run("-e", "Echo 1"), out="1\n", err="")


def info(check, facts):
    tables = Tables(check, facts, "info")

    def run(*words):
        return check.run("info", *words, folder=tables.path)

    whole, deleted = (sum(1 for _ in DBF(tables.path / "orders.dbf", ignore_missing_memofile=True)),
                      len(DBF(tables.path / "orders.dbf", ignore_missing_memofile=True).deleted))
    check.expect("info shows format, code page, files, records, health, fields and tags", run("orders"), err="",
                 out_has=["Format      Visual FoxPro\n", "Code page   1252\n", "orders.dbf (", "orders.fpt (", "orders.cdx (",
                          f"({whole:,} live, {deleted:,} deleted)", "Health      looks sound\n", "  DISCOUNT  Decimal ",
                          "can be null", "Long text", "Date and time", "  OPEN ", "for .NOT. PAID", "descending"])
    answer = parsed(run("orders", "--json"))
    table = answer[0] if isinstance(answer, list) else {}
    equal(check, "in JSON: counts and files",
          [table.get(name) for name in ("table", "format", "codePage", "records", "deleted", "sound", "memoSize", "writable")],
          ["orders", "Visual FoxPro", "1252", whole + deleted, deleted, True, (tables.path / "orders.fpt").stat().st_size, True])
    equal(check, "in JSON: the fields are those of another reader",
          [field["name"] for field in table.get("fields", [])], 
          [name for name in DBF(tables.path / "orders.dbf", load=False).field_names if name != "_NullFlags"])
    tags = {tag["name"]: tag for tag in table.get("tags", [])}
    equal(check, "in JSON: tags with key, condition and direction",
          [tags.get("OPEN", {}).get("for"), tags.get("LATEST", {}).get("descending"), tags.get("ID", {}).get("key")],
          [".NOT. PAID", True, "ID"])
    rows = list(csv.DictReader(io.StringIO(run("*", "--csv").out)))
    equal(check, "as CSV: a line a table", [(row["table"], row["format"], row["health"], row["tags"]) for row in rows],
          [("customers", "dBASE III", "sound", "5"), ("orders", "Visual FoxPro", "sound", "7")])
    equal(check, "a folder stands for its tables", run(".", "--csv").out, run("*", "--csv").out)
    check.expect("the extension may be there", run("ORDERS.DBF"), out_has=["Table       ORDERS"], err="")
    check.expect("the form of the functions works", check.run("info", facts["tables"] + ">orders"), out_has=["Visual FoxPro"], err="")
    check.expect("so do wildcards in it", check.run("info", "--csv", facts["tables"] + ">ord*"), out_has=["\norders,"], err="")
    check.expect("a missing table is named, and the others are shown", run("customers", "nosuch", "orders"), 1,
                 out_has=["Table       customers", "Table       orders"], err_has=["nosuch", "does not exist"])
    check.expect("a pattern that matches nothing is a failure", run("x*"), 1, out="", err_has=["no table matches x*"])
    check.expect("so it is in JSON, which stays valid", run("nosuch", "--json"), 1, out="[]\n", err_has=["nosuch"])
    tables.damage_index("customers")
    check.expect("a damaged index is told with what mends it", run("customers"),
                 out_has=["Health      index", "zurun reindex customers", "not usable"], err="")
    for name in ("empty", "text", "cut-header"):
        tables.take(name)
        check.expect(f"{name} is no table, and the reason is told", run(name), 1, out="", err_has=[name])
    tables.take("cut-records")
    check.expect("a cut table is told with what mends it", run("cut-records"), out_has=["it was cut", "zurun repair"], err="")
    tables.take("customers", "foreign")
    tables.forbid_writing("foreign")
    check.expect("a table that can only be read says so", run("foreign"), out_has=["Access      read-only", ".mdx"], err="")


def show(check, facts):
    tables = Tables(check, facts, "show")
    customers, orders = records_of(tables.path, "customers"), records_of(tables.path, "orders")

    def run(*words):
        return check.run("show", *words, folder=tables.path)

    equal(check, "all records in JSON are those of another reader", parsed(run("customers", "--json")), customers)
    answer = parsed(run("orders", "--json", "--limit", "3000"))
    wrong = [(ours, theirs) for ours, theirs in zip(answer, orders)
             if any(ours[name] != value and not (name in ("NOTE", "SHIPPED") and not ours[name] and not value)
                    for name, value in theirs.items() if name != "CHANGED")][:2]
    equal(check, "with Null as null, decimals unrounded and memos whole", (wrong, len(answer)), ([], 3000))
    rows = list(csv.DictReader(io.StringIO(run("customers", "--csv").out, newline="")))
    equal(check, "all records as CSV",
          [(row["ID"], row["NAME"], row["SINCE"], row["ACTIVE"]) for row in rows],
          [(str(row["ID"]), row["NAME"], row["SINCE"] or "", "true" if row["ACTIVE"] else "false") for row in customers])
    memo = next(row for row in orders if row["NOTE"] and "\r\n" in row["NOTE"])
    outcome = run("orders", f"ID = {memo['ID']}", "--csv", "--fields", "NOTE")
    equal(check, "a value with line ends keeps them in CSV",
          list(csv.reader(io.StringIO(outcome.out, newline="")))[1], [memo["NOTE"]])
    equal(check, "in columns a memo is its first line", lines(run("orders", f"ID = {memo['ID']}", "--fields", "NOTE"))[2],
          memo["NOTE"].split("\r\n")[0].rstrip())
    first = customers[0]
    check.expect("columns: numbers at the right with their places, dates as they sort", run("customers", "--limit", "3"), err="",
                 out_has=["ID  NAME", "  CREDIT  ", "--  ---", f"  {first['SINCE']}  ", f" {first['CREDIT']:.2f}  true\n"])
    weight = next(row for row in orders if row["WEIGHT"] * 100 == int(row["WEIGHT"] * 100))
    check.expect("floating-point numbers too have the places of their field", run("orders", f"ID = {weight['ID']}", "--fields", "WEIGHT"),
                 out_has=[f"{weight['WEIGHT']:.3f}\n"], err="")
    equal(check, "a condition selects", parsed(run("customers", "COUNTRY = 'SE'", "--json")),
          [row for row in customers if row["COUNTRY"] == "SE"])
    equal(check, "--where says the same", run("customers", "--where", "COUNTRY = 'SE'").out, run("customers", "COUNTRY = 'SE'").out)
    equal(check, "--fields chooses fields and their order", lines(run("customers", "--fields", "city,ID", "--limit", "1", "--csv")),
          ["CITY,ID", f"{first['CITY']},{first['ID']}"])
    equal(check, "--order takes a tag", [row["CREDIT"] for row in parsed(run("customers", "--order", "credit", "--json"))],
          sorted((row["CREDIT"] for row in customers), reverse=True))
    equal(check, "--limit ends early", len(lines(run("customers", "--limit", "7", "--csv"))), 8)
    gone = len(DBF(tables.path / "customers.dbf").deleted)
    answer = parsed(run("customers", "--deleted", "--numbers", "--json", "--fields", "ID"))
    equal(check, "--deleted adds the deleted records, --numbers their numbers",
          (len(answer), sum(1 for row in answer if row["deleted?"]), answer[-1]["#"]),
          (len(customers) + gone, gone, len(customers) + gone))
    marked = [line for line in lines(run("customers", "--deleted", "--fields", "ID"))[2:] if line.startswith("*")]
    equal(check, "in columns a star marks them", len(marked), gone)
    narrow = lines(run("customers", "--limit", "20", "--width", "60"))
    equal(check, "--width fits the lines", (max(map(len, narrow)) <= 80 and all(len(line) <= 60 for line in narrow[:-1]),
                                            "…" in "".join(narrow), "no room for" in narrow[-1]), (True, True, True))
    equal(check, "without a terminal nothing is cut", "…" in run("customers").out, False)
    check.expect("no record is no failure", run("customers", "ID < 0"), out_has=["ID"], err="")
    check.expect("in JSON that is an empty list", run("customers", "ID < 0", "--json"), out="[]\n", err="")
    check.expect("a faulty condition is told with its place", run("customers", "CREDIT >"), 1, out="", err_has=["position 9"])
    check.expect("an unknown field in it is named", run("customers", "NOSUCH = 1"), 1, out="", err_has=["NOSUCH"])
    check.expect("an unknown field in --fields too", run("customers", "--fields", "NOSUCH"), 1, out="", err_has=["NOSUCH"])
    check.expect("and an unknown tag", run("customers", "--order", "NOSUCH"), 1, out="", err_has=["NOSUCH"])
    check.expect("a missing table is named", run("nosuch"), 1, out="", err_has=["nosuch", "does not exist"])
    for limit in ("0", "-3", "many"):
        check.expect(f"--limit {limit} is wrong usage", run("customers", "--limit", limit), 64, out="", err_has=["--limit"])
    tables.damage_index("customers")
    check.expect("a damaged tag cannot give the order", run("customers", "--order", "ID"), 1, out="", err_has=["ID"])
    equal(check, "but the records can be read", parsed(run("customers", "--json")), customers)
    with Holder(check, tables.path, "orders"):
        check.expect("a table that others have open can be read", run("orders", "--limit", "1", "--fields", "ID"), out_has=["ID"], err="")


def terminal(check, facts):
    tables = Tables(check, facts, "terminal", ("customers",))

    def run(*words, keys=(), environment=None):
        code, received = run_on_terminal(check.program, *words, keys=keys, folder=tables.path, environment=environment)
        return code, received, without_controls(received)

    code, received, text = run("show", "customers", keys=[(PROMPT, " "), (PROMPT, "\r"), (PROMPT, "q")])
    first, last = (text.find(name) for name in ("Harbour", "Nordlic"))
    equal(check, "a page ends with a question; space, Enter and Q answer it",
          (code, text.count(PROMPT), text.count("COUNTRY") + text.count("ID  NAME") >= 2, 0 < first < last), (0, 3, True, True))
    equal(check, "headings are coloured", b"\x1b[97m" in received, True)
    code, received, text = run("show", "customers", "--no-pager", "--limit", "20", environment={"NO_COLOR": "1"})
    equal(check, "--no-pager asks nothing", (code, PROMPT in text, "(20 records)" in text), (0, False, True))
    equal(check, "NO_COLOR leaves colours out", b"\x1b[97m" in received or b"\x1b[36m" in received, False)
    code, received, text = run("show", "customers", "--limit", "3")
    equal(check, "what fits on a page is shown without a question", (code, PROMPT in text, "(3 records)" in text),
          (0, False, True))
    equal(check, "lines fit the terminal, texts are cut",
          ("…" in text, all(len(line) <= 70 for line in text.splitlines() if not line.startswith("("))), (True, True))
    code, received, text = run("check", *["customers"] * 15)
    equal(check, "work does not wait for somebody to turn the page", (code, PROMPT in text, text.count("sound")), (0, False, 15))
    code, received, text = run("show", "customers", "--json", "--limit", "30")
    equal(check, "JSON is shown without a question", (code, PROMPT in text, text.count('"ID"')), (0, False, 30))


def upkeep(check, facts):
    tables = Tables(check, facts, "upkeep")

    def run(*words, **options):
        return check.run(*words, folder=tables.path, **options)

    check.expect("sound tables are told, and the exit code is 0", run("check", "*"), out="customers: sound\norders: sound\n", err="")
    before = len(DBF(tables.path / "customers.dbf"))
    gone = len(DBF(tables.path / "customers.dbf").deleted)
    check.expect("pack removes what is marked deleted", run("pack", "customers"), err="",
                 out=f"customers: {gone} deleted records removed, {before:,} records left\n")
    check.expect("a second time there is nothing to remove", run("pack", "customers"),
                 out=f"customers: 0 deleted records removed, {before:,} records left\n", err="")
    check.expect("reindex builds all tags", run("reindex", "*"), out="customers: 5 tags built\norders: 7 tags built\n", err="")
    check.expect("the tables are sound afterwards", run("check", "."), out_has=["customers: sound", "orders: sound"], err="")

    tables.damage_index("customers")
    found = run("check", "*")
    check.expect("check finds a damaged index, leaves it alone and ends with 2", found, 2, err="",
                 out_has=["customers: ", " faults\n", "customers.cdx: tag ID", "more, which --all shows", "orders: sound"])
    answer = parsed(run("check", "*", "--json"))
    equal(check, "in JSON all faults are there", [(table["table"], table["sound"], len(table["faults"]) > 10) for table in answer],
          [("customers", False, True), ("orders", True, False)])
    rows = list(csv.DictReader(io.StringIO(run("check", "*", "--csv").out)))
    equal(check, "as CSV too", (rows[-1], sum(1 for row in rows if row["state"] == "faulty")),
          ({"table": "orders", "state": "sound", "fault": ""}, len(answer[0]["faults"])))
    check.expect("a failure counts more than faults", run("check", "customers", "nosuch"), 1, out_has=["customers: "],
                 err_has=["nosuch"])
    check.expect("--all shows them to people", run("check", "customers", "--all"), 2, out_lacks=["--all"])
    check.expect("reindex mends an index", run("reindex", "customers"), out="customers: 5 tags built\n", err="")
    check.expect("as check confirms", run("check", "customers"), out="customers: sound\n", err="")
    tables.damage_index("customers")
    check.expect("repair mends it too, says so, and keeps the old files", run("repair", "customers", "orders"), err="",
                 out_has=["customers: repaired\n", "  The index was built anew.", "customers.cdx.bak", "orders: nothing to mend\n"])
    equal(check, "the old files are there", (tables.path / "customers.cdx.bak").exists(), True)
    check.expect("and the table is sound", run("check", "customers"), out="customers: sound\n", err="")
    tables.take("cut-records")
    check.expect("a cut table is repaired", run("repair", "cut-records"), out_has=["cut-records: repaired", "The header counted"], err="")
    tables.take("customers", "letters")
    table = tables.path / "letters.dbf"
    bad = bytearray(table.read_bytes())
    start = int.from_bytes(bad[8:10], "little")
    bad[start + 1:start + 9] = b"notanum!"
    table.write_bytes(bad)
    check.expect("what a repair must leave as it is is told, with 2", run("repair", "letters"), 2, err="",
                 out_has=["left as it is:", "record 1"])

    for command in ("check", "repair", "pack", "reindex"):
        check.expect(f"{command}: a missing table is named, the others are done", run(command, "nosuch", "orders"), 1,
                     out_has=["orders: "], err_has=["nosuch", "does not exist"])
    tables.take("text")
    check.expect("a file that is no table is a fault for check", run("check", "text", "orders"), 2, err="",
                 out_has=["text: 1 fault", "is no DBF file", "orders: sound"])
    for command in ("repair", "pack", "reindex"):
        check.expect(f"{command}: a wildcard with one bad table does the others", run(command, "[ot]*", "orders", "text"), 1,
                     out_has=["orders: "], err_has=["text.dbf", "no table matches"])
    with Holder(check, tables.path, "orders"):
        for command in ("check", "repair", "pack", "reindex"):
            check.expect(f"{command}: a table that another program has open is told, the others are done",
                         run(command, "orders", "customers"), 1, out_has=["customers: "],
                         err_has=["orders", "another program has it open"])
    tables.take("customers", "foreign")
    tables.forbid_writing("foreign")
    for command in ("pack", "reindex"):
        check.expect(f"{command}: a table that can only be read is refused with the reason", run(command, "foreign"), 1, out="",
                     err_has=["foreign", "can only be read"])
    check.expect("Ctrl+C ends a command over many tables with 130",
                 run("check", *["orders", "customers"] * 200, interrupt=True), 130)


def text_files(check, facts):
    tables = Tables(check, facts, "text files")
    customers = records_of(tables.path, "customers")

    def run(*words, **options):
        return check.run(*words, folder=tables.path, **options)

    def content(name):
        return (tables.path / name).read_bytes().decode("cp1252")

    swedish = [row for row in customers if row["COUNTRY"] == "SE"]
    check.expect("export writes a delimited file", run("export", "customers", "out.txt", "COUNTRY = 'SE'", "--fields", "ID,NAME,SINCE"),
                 out=f"customers: {len(swedish):,} records written to out.txt\n", err="")
    equal(check, "with a line a record", content("out.txt").splitlines(),
          [f"{row['ID']},\"{row['NAME']}\",{(row['SINCE'] or '').replace('-', '')}" for row in swedish])
    run("export", "customers", "out.txt", "--limit", "1", "--fields", "ID,NAME,SINCE,ACTIVE", "--header", "--separator", "tab",
        "--quote", "'", "--dates", "dd.mm.yyyy", "--set", "TrueValue=yes", "--set", "FalseValue=no")
    row = customers[0]
    day = "{2}.{1}.{0}".format(*row["SINCE"].split("-"))
    equal(check, "separator, quote, dates, header and properties of the format", content("out.txt"),
          f"'ID'\t'NAME'\t'SINCE'\t'ACTIVE'\r\n{row['ID']}\t'{row['NAME']}'\t{day}\t{'yes' if row['ACTIVE'] else 'no'}\r\n")
    run("export", "customers", "out.txt", "--limit", "1", "--fields", "NAME,CITY", "--quote=", "--header")
    equal(check, "texts without quotes", content("out.txt"), f"NAME,CITY\r\n{row['NAME']},{row['CITY']}\r\n")
    run("export", "customers", "out.txt", "--limit", "1", "--fields", "ID,NAME", "--set", "StringsQuoted=no", "--set", "NumbersQuoted=yes")
    equal(check, "truth values of the format are yes and no", content("out.txt"), f"\"{row['ID']}\",{row['NAME']}\r\n")
    run("export", "customers", "out.txt", "--limit", "2", "--fields", "ID,CITY", "--format", "fixed")
    equal(check, "lines of fixed length", content("out.txt"),
          "".join(f"{row['ID']:>8}{row['CITY']:<24}\r\n" for row in customers[:2]))
    umlaut = next(row for row in customers if "ü" in row["NAME"])
    check.expect("- is standard output, in UTF-8", run("export", "customers", "-", f"ID = {umlaut['ID']}", "--fields", "NAME", "--header"),
                 out=f"\"NAME\"\n\"{umlaut['NAME']}\"\n", err="")
    (tables.path / "folder").mkdir()
    check.expect("several tables go into a folder",
                 run("export", "*", "folder", "--limit", "2", "--fields", "ID,COUNTRY"), err="",
                 out_has=["customers: 2 records written to folder\\customers.txt", "orders: 2 records written to folder\\orders.txt"])
    equal(check, "a file each", sorted(path.name for path in (tables.path / "folder").iterdir()), ["customers.txt", "orders.txt"])
    check.expect("but not into one file", run("export", "*", "out.txt"), 64, out="", err_has=["folder that exists"])
    check.expect("a record that cannot be written is told", run("export", "orders", "out.txt"), 1, out="",
                 err_has=["orders", "Record ", "DISCOUNT", "Null"])
    check.expect("a wildcard with one bad table exports the others", run("export", "*", "folder"), 1,
                 out_has=["customers: "], err_has=["DISCOUNT"])
    check.expect("a missing table is named", run("export", "nosuch", "never.txt"), 1, out="", err_has=["nosuch"])
    check.expect("a faulty condition is told with its place", run("export", "customers", "never.txt", "ID >"), 1, out="",
                 err_has=["position 5"])
    check.expect("an unknown field is named", run("export", "customers", "never.txt", "--fields", "NOSUCH"), 1, out="", err_has=["NOSUCH"])
    equal(check, "and no file is touched", (tables.path / "never.txt").exists(), False)
    check.expect("a file that cannot be made is named", run("export", "customers", "no/such/folder/x.txt", "--limit", "1"), 1, out="",
                 err_has=["x.txt"])
    table = (tables.path / "orders.dbf").read_bytes()
    for name in ("orders.dbf", "ORDERS.FPT", "x.cdx"):
        check.expect(f"export does not write over {name}", run("export", "customers", name), 64, out="", err_has=["table's file"])
    equal(check, "the table stays as it was", (tables.path / "orders.dbf").read_bytes() == table, True)
    check.expect("import takes no table for a text file", run("import", "orders.dbf", "customers"), 64, out="",
                 err_has=["table's file"])
    for words in (("--format", "xml"), ("--set", "Nope=1"), ("--set", "x"), ("--set", "NumbersQuoted=perhaps"),
                  ("--format", "fixed", "--header")):
        check.expect(f"wrong usage: {' '.join(words)}", run("export", "customers", "never.txt", *words), 64, out="",
                     err_has=["zurun help export"])

    run("export", "customers", "all.txt", "ID <= 50", "--header", "--separator", ";", "--dates", "yyyy-mm-dd")
    few = [row for row in customers if row["ID"] <= 50]
    shutil.copyfile(tables.path / "customers.dbf", tables.path / "copy.dbf")
    shutil.copyfile(tables.path / "customers.cdx", tables.path / "copy.cdx")
    check.expect("import reads what export wrote", run("import", "all.txt", "copy", "--header", "--separator", ";", "--dates", "yyyy-mm-dd"),
                 out=f"all.txt: {len(few)} lines read, {len(few)} records added to copy\n", err="")
    equal(check, "and the values are the same", parsed(run("show", "copy", f"RECNO() > {len(customers) + len(DBF(tables.path / 'customers.dbf').deleted)}", "--json")), few)
    check.expect("the indexes are right afterwards", run("check", "copy"), out="copy: sound\n", err="")
    check.expect("a condition leaves lines out",
                 run("import", "all.txt", "copy", "COUNTRY = 'DE'", "--header", "--separator", ";", "--dates", "yyyy-mm-dd"), err="",
                 out_has=[f"{sum(1 for row in few if row['COUNTRY'] == 'DE')} records added", "left out by the condition"])
    check.expect("- is standard input", run("import", "-", "copy", "--fields", "ID,NAME", stdin=b'77777,"from a pipe"\r\n'),
                 out="standard input: 1 line read, 1 record added to copy\n", err="")
    (tables.path / "fixed.txt").write_bytes(b"   88888fixed     \r\n")
    check.expect("lines of fixed length are read", run("import", "fixed.txt", "copy", "--format", "fixed", "--fields", "ID,CITY"),
                 out_has=["1 record added"], err="")
    equal(check, "to the letter", parsed(run("show", "copy", "ID > 70000", "--json", "--fields", "ID,NAME,CITY")),
          [{"ID": 77777, "NAME": "from a pipe", "CITY": ""}, {"ID": 88888, "NAME": "", "CITY": "fixed"}])
    (tables.path / "bad.txt").write_bytes(b'ID,NAME\r\n1,"x"\r\n99999999999,"too great"\r\n2,"y"\r\n')
    check.expect("a line that cannot be added is told with its number and reason, the others are added",
                 run("import", "bad.txt", "copy", "--header"), 1, out="bad.txt: 3 lines read, 2 records added to copy\n",
                 err_has=["line 3", "bad.txt", "field ID", "99999999999", "1 line of bad.txt could not be added"])
    (tables.path / "wrong.txt").write_bytes(b"ID,NOPE\r\n1,2\r\n")
    count = len(DBF(tables.path / "copy.dbf"))
    check.expect("a header with an unknown field is refused", run("import", "wrong.txt", "copy", "--header"), 1, out="", err_has=["NOPE"])
    check.expect("a missing file is named", run("import", "nosuch.txt", "copy"), 1, out="", err_has=["nosuch.txt"])
    check.expect("a missing table is named", run("import", "bad.txt", "nosuch"), 1, out="", err_has=["nosuch", "does not exist"])
    check.expect("a faulty condition is told", run("import", "bad.txt", "copy", "NAME >"), 1, out="", err_has=["position 7"])
    check.expect("--header and fixed exclude each other", run("import", "bad.txt", "copy", "--header", "--format", "fixed"), 64, out="")
    tables.take("customers", "foreign")
    tables.forbid_writing("foreign")
    check.expect("a table that can only be read is refused", run("import", "bad.txt", "foreign", "--header"), 1, out="",
                 err_has=["foreign", "can only be read"])
    equal(check, "none of them changed the table", len(DBF(tables.path / "copy.dbf")), count)


def streams(check, facts):
    tables = Tables(check, facts, "streams", ("customers",))
    outcome = check.run("show", "customers", "--limit", "1", "--fields", "ID", folder=tables.path)
    equal(check, "lines end with CR LF", outcome.out.count("\r\n"), 3)
    outcome = check.run("show", "customers", "--limit", "1", "--fields", "ID", folder=tables.path, environment={"ZURUN_EOL": "lf"})
    equal(check, "or with LF alone when the environment says so", (outcome.out.count("\r"), outcome.out.count("\n")), (0, 3))
    process = subprocess.Popen([str(LAUNCHER), str(check.program), "show", "customers", "--json"], cwd=tables.path,
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    process.stdout.readline()
    process.stdout.close()
    error = process.stderr.read()
    process.stderr.close()
    equal(check, "a reader who has seen enough is no failure", (process.wait(60), error), (0, b""))


def windows(check, facts):
    tables = Tables(check, facts, "windows", ("customers",))

    def run(*words):
        return check.run(*words, folder=tables.path)

    for command in ("edit", "pick"):
        check.expect(f"{command}: a missing table is named", run(command, "nosuch"), 1, out="", err_has=["nosuch", "does not exist"])
        check.expect(f"{command}: a faulty condition is told with its place", run(command, "customers", "ID >"), 1, out="",
                     err_has=["position 5"])
        check.expect(f"{command}: an unknown field is named", run(command, "customers", "--fields", "NOSUCH"), 1, out="", err_has=["NOSUCH"])
        check.expect(f"{command}: without a display it ends with a reason", run(command, "customers"), 1, out="",
                     err_has=["zurun: Cannot ", "customers", "window could not be opened", "no screen"])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--results", required=True)
    parser.add_argument("--only", help="run only the group with this name")
    options = parser.parse_args()

    facts = prepare(options.work / "tables", options.bin / "zugenerate.exe")
    work = options.work / "zurun commands"
    work.mkdir(parents=True, exist_ok=True)
    check = Checks("zurun_commands", options.bin, work)
    groups = {"usage": usage, "info": info, "show": show, "terminal": terminal, "upkeep": upkeep, "text files": text_files,
              "streams": streams, "windows": windows}
    for name, group in groups.items():
        if options.only in (None, name):
            check.group = name
            group(check, facts)
    return check.results.write(options.results)


if __name__ == "__main__":
    sys.exit(main())
