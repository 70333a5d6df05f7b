"""Single records added, changed and deleted; many deleted at once."""
from . import programs
from .job import Job


def one_by_one(setting, job, title, scripted):
    """A change through the vtable, and through VBScript, beside sqlite and single writes of the same bytes."""
    orders, records = setting.orders, setting.records
    number = 200 if setting.quick else 3_000
    table, base = orders.work / "{}" / "orders.dbf", orders.work / "{}.sqlite"
    tables = {"prepare": orders.copy_tables, "agrees": True}

    def theirs():
        return [
            programs.sqlite_in_process(job, 1, records, number, base, prepare=orders.copy_sqlite, agrees=True),
            # It meets deleted records as well, and counts them.
            programs.limit(job, 1, number, table, prepare=orders.copy_tables),
        ]

    jobs = [Job(f"{title}, vtable", job, number, [programs.client(setting.wine, job, 1, records, number, table, **tables), *theirs()])]
    if scripted:
        jobs.append(Job(f"{title}, VBScript", job, number, [
            programs.zurun(setting.wine, "work.vbs", 1, table, records, number, job=job, **tables), *theirs()]))
    return jobs


def add(setting):
    return one_by_one(setting, "add", "add records, each confirmed", True)


def update(setting):
    return one_by_one(setting, "update", "update by key", True)


def delete(setting):
    orders, records, turns = setting.orders, setting.records, setting.turns(0.02, 2)
    table, base = orders.work / "{}" / "orders.dbf", orders.work / "{}.sqlite"
    return one_by_one(setting, "delete", "delete by key", False) + [Job("delete by condition", "delete", records, [
        programs.client(setting.wine, "delete-many", turns, records, 0, table, prepare=orders.copy_tables, agrees=True),
        programs.sqlite_in_process("delete-many", turns, records, 0, base, prepare=orders.copy_sqlite, agrees=True),
        programs.limit("delete-many", turns, table, prepare=orders.copy_tables, agrees=True),
    ])]
