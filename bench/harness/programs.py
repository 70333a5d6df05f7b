"""The programs that are measured: how each is told to do a job a number of times, and how it is told to do nothing."""
import dataclasses
import os
from typing import Callable, Optional

from .measure import measure
from .surroundings import MODULES, NATIVE, SCRIPTS, WINDOWS, has_duckdb, windows_path

OURS, PEER, LIMIT = "ours", "peer", "limit"


@dataclasses.dataclass
class Program:
    """`command(turns)` is the command line; with 0 turns the program starts and ends. `prepare(turns)` runs before
    each measured run. Programs of one job with the same `agrees` must print the same result."""

    name: str
    kind: str
    command: Callable[[int], list]
    turns: int
    prepare: Optional[Callable[[int], None]] = None
    environment: Optional[dict] = None
    prefix: Optional[str] = None
    missing: str = ""
    agrees: bool = False

    def run(self, turns):
        return measure(self.command(turns), self.environment, self.prefix)


def on_one_processor(program):
    """The same program, whose threads have one processor among them: what its work costs without the price of sharing it out."""
    first = str(min(os.sched_getaffinity(0)))
    return dataclasses.replace(program, command=lambda times: ["taskset", "-c", first, *program.command(times)])


def words(arguments):
    """Absolute paths of this system, also in front of a ">", become those of Windows."""
    return [windows_path(argument) if str(argument).startswith("/") else str(argument) for argument in arguments]


def zurun(wine, script, turns, *arguments, name="zurun", job=None, **more):
    before = [job] if job else []
    return Program(
        name, OURS, lambda times: [wine.loader, WINDOWS / "zurun.exe", windows_path(SCRIPTS / script), *before, times, *words(arguments)],
        turns, environment=wine.environment, prefix=wine.prefix, **more)


def client(wine, job, turns, records, count, table, variant="", name="C++ client", kind=OURS, display="", **more):
    environment = {**wine.environment, "DISPLAY": display} if display else wine.environment
    return Program(
        name, kind, lambda times: [wine.loader, WINDOWS / "zubenchclient.exe", job, times, records, count, *words([table]), variant],
        turns, environment=environment, prefix=wine.prefix, **more)


def limit(job, turns, *arguments, name="native limit", **more):
    return Program(name, LIMIT, lambda times: [NATIVE / "zubenchlimit", job, times, *arguments], turns, **more)


def sqlite_in_process(job, turns, records, count, file, **more):
    tool = NATIVE / "zubenchsqlite"
    return Program("sqlite3, in process", PEER, lambda times: [tool, job, times, records, count, file], turns,
                   missing="" if tool.exists() else "not built (libsqlite3-dev)", **more)


def sqlite_shell(work, turns, file, statements, before="", **more):
    """`before` runs once; "{}" in the statements stands for the number of the turn."""

    def command(times):
        script = work / "sqlite.sql"
        script.write_text(before + "\n" + "".join(statements.replace("{}", str(turn)) + "\n" for turn in range(times)))
        return ["sqlite3", file, f".read {script}"]

    return Program("sqlite3", PEER, command, turns, **more)


def duckdb(turns, load, *statements, threads=1, name="DuckDB, one thread", **more):
    return Program(
        name, PEER, lambda times: ["node", SCRIPTS / "duckdb.mjs", "", threads, load, times, *statements], turns,
        environment={**os.environ, "ZU_BENCH_MODULES": str(MODULES)},
        missing="" if has_duckdb() else "not installed", **more)


def ogr2ogr(turns, command, **more):
    """It does one thing a run: the turns are runs of their own, through a shell, and few are enough."""
    turns = min(turns, 2)

    def run(times):
        if times == 0:
            return ["bash", "-c", "ogr2ogr --version"]
        quoted = [" ".join(f"'{word}'" for word in command(turn)) for turn in range(times)]
        return ["bash", "-c", " && ".join(f"ogr2ogr {line}" for line in quoted)]

    return Program("ogr2ogr", PEER, run, turns, **more)


# Debian's, which has the libraries.
def reader(job, *arguments, name="Python", **more):
    return Program(name, PEER, lambda times: ["/usr/bin/python3", SCRIPTS / "reader.py", job, times, *arguments], 1, **more)
