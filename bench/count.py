"""count.py FOLDER RECORDS: zurun and sqlite3 count the same records by turns; prints medians and their ratio.

A program is timed with one count and with several; the difference is what a count costs without the program's start.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
ROUNDS = 5
COUNTS = 11
CONDITION = "COUNTRY = 'SE' AND AMOUNT > 15000"
QUERY = "SELECT count(*) FROM orders WHERE deleted = 0 AND country = 'SE' AND amount > 15000;"


def timed(command, text=""):
    """(wall seconds, processor seconds, what the program printed last)."""
    started = time.perf_counter()
    process = subprocess.Popen([str(word) for word in command], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    process.stdin.write(text)
    process.stdin.close()
    printed = process.stdout.read().split()
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - started
    if status != 0 or not printed:
        sys.exit(f"{command[0]} failed (status {status})")
    return wall, usage.ru_utime + usage.ru_stime, printed[-1]


def zurun(counts):
    return timed([ROOT / "tools" / "run", ROOT / "bench" / "count.vbs", folder / "orders", CONDITION, counts])


def sqlite(counts):
    return timed(["sqlite3", folder / "orders.sqlite"], QUERY * counts)


def per_count(program):
    """(wall, processor) seconds of one count, the result, and the wall time of a run with one count."""
    one, many = program(1), program(COUNTS)
    assert one[2] == many[2]
    return (many[0] - one[0]) / (COUNTS - 1), (many[1] - one[1]) / (COUNTS - 1), one[2], one[0]


folder, records = pathlib.Path(sys.argv[1]), int(sys.argv[2])
programs = {"zurun": zurun, "sqlite3": sqlite}
for program in programs.values():
    program(1)  # warms the file cache for both

runs = {name: [] for name in programs}
for _ in range(ROUNDS):
    for name, program in programs.items():
        runs[name].append(per_count(program))

results = {run[2] for measured in runs.values() for run in measured}
if len(results) != 1:
    sys.exit(f"the counts differ: {', '.join(sorted(results))}")

print(f"count of {records:,} records where {CONDITION}: {results.pop()} (median of {ROUNDS} rounds by turns)")
print(f"{'':10}{'wall s':>10}{'cpu s':>10}{'records/s':>16}{'whole program, wall s':>24}")
medians = {}
for name, measured in runs.items():
    wall, cpu, whole = (statistics.median(run[column] for run in measured) for column in (0, 1, 3))
    medians[name] = (wall, cpu)
    print(f"{name:10}{wall:10.4f}{cpu:10.4f}{records / wall:16,.0f}{whole:24.3f}")
print(f"sqlite3 / zurun: {medians['sqlite3'][0] / medians['zurun'][0]:.2f} wall, "
      f"{medians['sqlite3'][1] / medians['zurun'][1]:.2f} cpu")
