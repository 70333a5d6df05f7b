"""The tables that people read, and the file that programs read."""
import csv
import math
import statistics

COLUMNS = ["job", "program", "kind", "records", "items", "turns", "rounds", "cpu_s", "user_s", "system_s", "wine_server_s", "wall_s",
           "cpu_us_each", "peak_mb", "own_mb", "ours_by_its_cpu", "ours_by_its_wall", "growth"]


def medians(runs):
    """The median of each cost over the rounds."""
    names = ("cpu", "user", "system", "server", "wall", "peak", "own")
    return {name: statistics.median(getattr(run, name) for run in runs) for name in names}


def ratio(ours, its):
    return ours / its if its > 0 else None


def row_of(job, program, records, runs, ours):
    """One line of the results; without runs, one that says why there are none."""
    row = {"job": job.name, "program": program.name, "kind": program.kind, "records": records, "items": job.items, "turns": program.turns,
           "rounds": len(runs), "missing": program.missing}
    if not runs:
        return row
    cost = medians(runs)
    row |= {"cpu_s": cost["cpu"], "user_s": cost["user"], "system_s": cost["system"], "wine_server_s": cost["server"],
            "wall_s": cost["wall"], "cpu_us_each": cost["cpu"] / job.items * 1e6, "peak_mb": cost["peak"], "own_mb": cost["own"]}
    if ours:
        row["ours_by_its_cpu"] = ratio(ours["cpu_s"], cost["cpu"])
        row["ours_by_its_wall"] = ratio(ours["wall_s"], cost["wall"])
    return row


def add_growth(rows):
    """Between the smallest and the largest size at which a program ran: the power of the size with which its cost grows."""
    sizes = {}
    for row in rows:
        if row.get("cpu_s", 0) > 0:
            sizes.setdefault((row["job"], row["program"]), []).append(row)
    for measured in sizes.values():
        first, last = min(measured, key=lambda row: row["records"]), max(measured, key=lambda row: row["records"])
        if first is not last:
            last["growth"] = math.log(last["cpu_s"] / first["cpu_s"]) / math.log(last["records"] / first["records"])


def number(value):
    if value is None:
        return "-"
    return f"{value:.4f}" if value < 0.1 else f"{value:.2f}"


def megabytes(value):
    """Nothing is known of programs that ended at once."""
    return f"{value:.0f}" if value > 0 else "-"


def print_job(rows):
    """All sizes of one job."""
    titles = ("cpu s", "of it server", "wall s", "cpu us each", "peak MB", "own MB", "ours/its cpu", "ours/its wall", "growth")
    columns = ("cpu_s", "wine_server_s", "wall_s", "cpu_us_each", "peak_mb", "own_mb", "ours_by_its_cpu", "ours_by_its_wall", "growth")
    print(f"\n{rows[0]['job']}")
    print(f"  {'records':>9}  {'program':22}" + "".join(f"{title:>14}" for title in titles))
    last = None
    for row in rows:
        shown = f"{row['records']:>9,}" if row["records"] != last else " " * 9
        last = row["records"]
        if row["missing"]:
            print(f"  {shown}  {row['program']:22}{row['missing']:>14}")
            continue
        cells = (megabytes(row[column]) if column.endswith("mb") else number(row.get(column)) for column in columns)
        print(f"  {shown}  {row['program']:22}" + "".join(f"{cell:>14}" for cell in cells))


def write_csv(path, rows):
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.DictWriter(file, COLUMNS, extrasaction="ignore")
        writer.writeheader()
        for row in rows:
            writer.writerow({key: f"{value:.6g}" if isinstance(value, float) else value for key, value in row.items()})
