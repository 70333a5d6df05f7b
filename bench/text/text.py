"""text.py FOLDER RECORDS: exports and imports through zurun beside ogr2ogr, sqlite3 and a native single pass, by turns.

Prints processor seconds (user and system), wall seconds and the most memory of each program, as medians, and the ratios.
"""
import filecmp
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROUNDS = 3
folder, records = pathlib.Path(sys.argv[1]), int(sys.argv[2])
work = folder / "text"
table = folder / "orders.dbf"


def timed(command):
    """(processor seconds, wall seconds, most memory in megabytes)."""
    started = time.perf_counter()
    process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{command[0]} failed (status {status})")
    return usage.ru_utime + usage.ru_stime, time.perf_counter() - started, usage.ru_maxrss / 1024


def sqlite(statements):
    script = work / "script.sql"
    script.write_text(statements)
    return timed(["sqlite3", work / "copy.sqlite", f".read {script}"])


def zurun(job, file):
    for left in work.glob("imported.*"):
        left.unlink()
    return timed([ROOT / "tools" / "run", ROOT / "bench" / "text" / "text.vbs", job, folder / "orders", file])


def ogr(*arguments):
    target = work / "ogr"
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir()
    return timed(["ogr2ogr", *arguments])


def delimited_for_peers():
    """The same lines with a header line, as the peers want it."""
    names = "id,customer,country,ordered,amount,qty,paid,rate,note,code\n"
    with open(work / "orders.del", "rb") as source, open(work / "peer.csv", "wb") as target:
        target.write(names.encode())
        shutil.copyfileobj(source, target)


shutil.rmtree(work, ignore_errors=True)
work.mkdir()
native = ROOT / "build" / "native-pass"
subprocess.run(["g++", "-O2", "-std=c++20", ROOT / "bench" / "text" / "NativePass.cpp", "-o", native], check=True)
zurun("export-delimited", work / "orders.del")
timed([native, table, work / "native.del"])
if not filecmp.cmp(work / "orders.del", work / "native.del", shallow=False):
    sys.exit("the export and the native pass differ")
zurun("export-fixed", work / "orders.fix")
delimited_for_peers()
lines = sum(1 for _ in open(work / "orders.del", "rb"))
CREATE = "create table t(id integer,customer text,country text,ordered text,amount real,qty integer,paid text,rate real,note text,code text);"
sqlite(f".mode csv\n{CREATE}\n.import {work}/orders.del t\n")

JOBS = {
    "export delimited": {
        "zurun": lambda: zurun("export-delimited", work / "orders.del"),
        "native pass": lambda: timed([native, table, work / "native.del"]),
        "sqlite3": lambda: sqlite(f".mode csv\n.output {work}/sqlite.csv\nselect * from t;\n"),
        "ogr2ogr": lambda: ogr("-f", "CSV", work / "ogr" / "orders.csv", table),
    },
    "export fixed": {
        "zurun": lambda: zurun("export-fixed", work / "orders.fix"),
        "native pass": lambda: timed([native, table, work / "native.del"]),
        "sqlite3": lambda: sqlite(
            f".mode list\n.output {work}/sqlite.fix\nselect printf('%10d%-30s%-2s%8s%12.2f%6d%1s%10.4f%-60s%-8s',"
            "id,customer,country,ordered,amount,qty,paid,rate,note,code) from t;\n"),
    },
    "import delimited": {
        "zurun": lambda: zurun("import-delimited", work / "orders.del"),
        "sqlite3": lambda: sqlite(f".mode csv\ndrop table if exists u;\n{CREATE.replace('table t', 'table u')}\n.import {work}/orders.del u\n"),
        "ogr2ogr": lambda: ogr("-f", "ESRI Shapefile", work / "ogr" / "orders.dbf", work / "peer.csv"),
    },
    "import fixed": {
        "zurun": lambda: zurun("import-fixed", work / "orders.fix"),
    },
}

print(f"{lines:,} lines of ten fields from {records:,} records (median of {ROUNDS} rounds by turns)")
for job, programs in JOBS.items():
    runs = {name: [] for name in programs}
    for _ in range(ROUNDS):
        for name, program in programs.items():
            runs[name].append(program())
    medians = {name: tuple(statistics.median(run[i] for run in measured) for i in range(3)) for name, measured in runs.items()}
    print(f"\n{job:20}{'cpu s':>10}{'wall s':>10}{'memory MB':>12}{'its cpu / zurun cpu':>22}")
    for name, (cpu, wall, memory) in medians.items():
        print(f"{name:20}{cpu:10.2f}{wall:10.2f}{memory:12.0f}{cpu / medians['zurun'][0]:22.2f}")
