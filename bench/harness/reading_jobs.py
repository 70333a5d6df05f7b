"""Counting, selecting, looking up, processing, opening the grid."""
from . import programs
from .job import Job

CONDITION = "deleted = 0 AND country = 'SE' AND amount > 15000"


def count(setting):
    # So many that reading the file into the process's memory, which the first one does, is not what is measured: the others
    # have loaded theirs before.
    orders, turns = setting.orders, setting.turns(50, 800)
    query = f"SELECT count(*) FROM orders WHERE {CONDITION};"
    counting = [
        programs.zurun(setting.wine, "work.vbs", turns, orders.table, job="count", agrees=True),
        programs.sqlite_shell(orders.work, turns, orders.sqlite, query, agrees=True),
        programs.duckdb(turns, orders.load, query, agrees=True),
        programs.limit("count", turns, orders.table, agrees=True),
    ]
    return [Job("count by condition", "count", setting.records, counting),
            Job("count by condition, on one processor", "count", setting.records, [programs.on_one_processor(each) for each in counting])]


def select(setting):
    orders, turns = setting.orders, setting.turns(10, 200)
    return [Job("select by condition, read a field", "select", setting.records, [
        programs.client(setting.wine, "select", turns, setting.records, 0, orders.table, agrees=True),
        programs.sqlite_in_process("select", turns, setting.records, 0, orders.sqlite, agrees=True),
        programs.duckdb(turns, orders.load, f"SELECT qty FROM orders WHERE {CONDITION}", agrees=True),
        programs.limit("select", turns, orders.table, agrees=True),
    ])]


def lookup(setting):
    orders, records = setting.orders, setting.records
    quickly, slowly = (5_000, 2_000) if setting.quick else (100_000, 50_000)

    def theirs(number):
        return [programs.sqlite_in_process("lookup", 1, records, number, orders.sqlite, agrees=True),
                programs.limit("lookup", 1, number, orders.table, agrees=True)]

    alone = "script's calls alone"

    def script(name, file, number, *word, **more):
        return programs.zurun(setting.wine, file, 1, orders.table, records, number, *word, name=name, **more)

    return [
        Job("lookup by key, vtable", "lookup", quickly, [
            programs.client(setting.wine, "lookup", 1, records, quickly, orders.table, agrees=True), *theirs(quickly)]),
        Job("lookup by key, vtable, table kept open", "lookup", quickly, [
            programs.client(setting.wine, "lookup", 1, records, quickly, orders.table, "open", agrees=True), *theirs(quickly)]),
        Job("lookup by key, VBScript", "lookup", slowly, [
            script("zurun", "work.vbs", slowly, job="lookup", agrees=True), script(alone, "work.vbs", slowly, job="calls"), *theirs(slowly)]),
        Job("lookup by key, JScript", "lookup", slowly, [
            script("zurun", "lookup.js", slowly, agrees=True), script(alone, "lookup.js", slowly, "calls"), *theirs(slowly)]),
    ]


def process(setting):
    orders, turns = setting.orders, setting.turns(1, 20)
    jobs = []
    for language, title in (("vbscript", "VBScript"), ("jscript", "JScript"), ("native", "C++")):
        jobs.append(Job(f"process, routine in {title}", "process", setting.records, [
            programs.client(setting.wine, "process", turns, setting.records, 0, orders.table, language, name="DbfProcess", agrees=True),
            programs.client(setting.wine, "process", turns, setting.records, 0, orders.table, f"bare-{language}", name="bare calls",
                            kind=programs.PEER, agrees=True),
        ]))
    return jobs


def grid(setting):
    orders, turns = setting.orders, 1 if setting.quick else 5
    return [Job(f"open the grid, {title}", "grid", 1, [
        programs.client(setting.wine, "grid", turns, setting.records, 0, orders.table, condition, display=setting.display,
                        missing="" if setting.display else "no screen (xvfb)")])
        for title, condition in (("all records", ""), ("a selection", "QTY > 100"))]
