"""reader.py JOB TIMES ARGUMENTS...: the same work with readers and writers of tables in Python; prints the number of records."""
import csv
import datetime
import sys

job, times, arguments = sys.argv[1], int(sys.argv[2]), sys.argv[3:]


def text_of(value):
    if isinstance(value, datetime.date):
        return value.strftime("%Y%m%d")
    return {True: "T", False: "F"}.get(value, value) if isinstance(value, bool) else value


def exported(table, file):
    import dbfread

    with open(file, "w", newline="", encoding="cp1252") as target:
        writer = csv.writer(target)
        lines = 0
        for record in dbfread.DBF(table):
            writer.writerow(text_of(value) for value in record.values())
            lines += 1
    return lines


def imported(model, file, table):
    import dbf

    target = dbf.Table(model).new(table)
    target.open(dbf.READ_WRITE)
    lines = 0
    with open(file, newline="", encoding="cp1252") as source, target:
        for row in csv.reader(source):
            number, customer, country, ordered, amount, quantity, paid, rate, note, code = row
            day = datetime.date(int(ordered[:4]), int(ordered[4:6]), int(ordered[6:]))
            target.append((int(number), customer, country, day, float(amount), int(quantity), paid == "T", float(rate), note, code))
            lines += 1
    return lines


jobs = {"export-delimited": exported, "import-delimited": imported}
result = 0
for turn in range(times):
    result = jobs[job](*(argument.replace("{}", str(turn)) for argument in arguments))
print(result)
