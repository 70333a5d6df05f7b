"""python3 -m harness [--quick] [--records N,...] [--rounds N] [JOB...]: measures ours and theirs by turns in one run."""
import argparse
import shutil
import sys

from . import changing_jobs, data, reading_jobs, report, table_jobs, text_jobs
from .job import ALIASES, Setting
from .measure import Failed
from .surroundings import DATA, Screen, Wine

GROUPS = {
    "count": reading_jobs.count, "select": reading_jobs.select, "lookup": reading_jobs.lookup, "process": reading_jobs.process,
    "add": changing_jobs.add, "update": changing_jobs.update, "delete": changing_jobs.delete, "pack": table_jobs.pack,
    "index": table_jobs.index, "copy": table_jobs.copy, "export": text_jobs.export, "import": text_jobs.bring_in, "grid": reading_jobs.grid,
}
# A peer whose one turn would take longer than this at the next size is left out there.
PATIENCE = 45.0
QUICK_PATIENCE = 4.0


def arguments():
    parser = argparse.ArgumentParser(prog="./zu bench", description="Measures this product beside other programs, by turns in one run.",
                                     epilog=f"jobs: {', '.join(GROUPS)}, write ({', '.join(ALIASES['write'])}), "
                                            f"text ({', '.join(ALIASES['text'])}); all when none is named")
    parser.add_argument("--quick", action="store_true", help="10,000 and 100,000 records, one round: under two minutes")
    parser.add_argument("--records", type=lambda text: [int(word) for word in text.split(",")], help="sizes, separated by commas")
    parser.add_argument("--rounds", type=int, help="how often each program is run (3; 1 with --quick)")
    parser.add_argument("jobs", nargs="*", metavar="JOB", choices=[*GROUPS, *ALIASES, []])
    options = parser.parse_args()
    options.records = options.records or ([10_000, 100_000] if options.quick else [10_000, 100_000, 1_000_000])
    if min(options.records) < 1_000 or max(options.records) > 9_999_999:
        parser.error("between 1,000 and 9,999,999 records")
    options.rounds = options.rounds or (1 if options.quick else 3)
    names = [name for word in options.jobs or GROUPS for name in ALIASES.get(word, [word])]
    options.groups = list(dict.fromkeys(names))
    return options


class Bench:
    """Measures jobs and keeps the results."""

    def __init__(self, rounds, patience):
        self.rounds = rounds
        self.patience = patience
        self.rows = []
        self.longest = {}  # items and wall seconds of a turn by job and program, at the size before

    def leave_out(self, job, program):
        """Programs that would take too long are not waited for; ours always are."""
        before = self.longest.get((job.name, program.name))
        if before and program.kind == "peer" and before[1] * job.items / before[0] > self.patience:
            program.missing = "too slow at this size"

    def measure(self, job, records):
        runs = {program.name: [] for program in job.programs}
        for program in job.programs:
            if not program.missing:
                self.leave_out(job, program)
        for _ in range(self.rounds):
            for program in job.programs:
                if program.missing:
                    continue
                if program.prepare:
                    program.prepare(program.turns)
                start = program.run(0)
                whole = program.run(program.turns)
                runs[program.name].append(whole.per_turn(start, program.turns))
                self.longest[job.name, program.name] = (job.items, whole.wall / program.turns)
        self.require_agreement(job, runs)
        ours = None
        for program in job.programs:
            row = report.row_of(job, program, records, runs[program.name], ours)
            ours = ours or (row if program is job.programs[0] and runs[program.name] else None)
            self.rows.append(row)

    @staticmethod
    def require_agreement(job, runs):
        results = {run.result for program in job.programs if program.agrees for run in runs[program.name]}
        if len(results) > 1:
            each = ", ".join(f"{program.name} {runs[program.name][0].result}" for program in job.programs if program.agrees and runs[program.name])
            raise Failed(f"{job.name}: the programs do not agree: {each}")


def main():
    options = arguments()
    wine = Wine()
    bench = Bench(options.rounds, QUICK_PATIENCE if options.quick else PATIENCE)
    failures = []
    sizes = [data.make(records, wine) for records in sorted(options.records)]
    print(f"median of {options.rounds} round(s) by turns; a program's start is taken off; cpu is user and system time, of ours with "
          "the Wine server's;\npeak MB counts mapped files, own MB only memory without a file behind it", flush=True)
    with Screen() as screen:
        for group in options.groups:
            names = []
            for orders in sizes:
                shutil.rmtree(orders.work, ignore_errors=True)
                orders.work.mkdir()
                for job in GROUPS[group](Setting(wine, orders, options.quick, screen.display)):
                    names.append(job.name)
                    try:
                        bench.measure(job, orders.records)
                    except Failed as failure:
                        failures.append(str(failure))
                shutil.rmtree(orders.work, ignore_errors=True)
            report.add_growth(bench.rows)
            for name in dict.fromkeys(names):
                if rows := [row for row in bench.rows if row["job"] == name]:
                    report.print_job(rows)
            sys.stdout.flush()
            report.write_csv(DATA / "results.csv", bench.rows)
    print(f"\nall of it as a table: {DATA / 'results.csv'}")
    for failure in failures:
        print(f"NOT MEASURED: {failure}", file=sys.stderr)
    return 1 if failures else 0


sys.exit(main())
