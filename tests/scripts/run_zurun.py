#!/usr/bin/python3
"""Tests the program zurun itself: command line, exit codes, streams, error positions, finding the DLLs.

run_zurun.py --bin FOLDER --work FOLDER --results FILE
"""
import argparse
import pathlib
import shutil
import sys

sys.dont_write_bytecode = True

from harness.checks import Checks  # noqa: E402
from harness.programs import windows_path  # noqa: E402
from harness.script_files import scripts_of  # noqa: E402
from harness.tables import prepare  # noqa: E402

DLLS = ("Zuengine.dll", "ZuDBFFunctions.dll")


def command_line(check):
    check.expect("--version names the program and its version", check.run("--version"), out_has=["zurun "])
    check.expect("--help shows the options", check.run("--help"), out_has=["-e CODE", "--data DIR", "Exit codes"], err="")
    check.expect("no script is wrong usage", check.run(), 64, out="", err_has=["no script is named", "--help"])
    check.expect("an unknown option is wrong usage", check.run("--nonsense", "a.vbs"), 64, err_has=["--nonsense"])
    check.expect("an unknown language is wrong usage", check.run("--language", "perl", "-e", "1"), 64, err_has=["perl"])
    check.expect("a missing script has a code of its own", check.run("no such file.vbs"), 66, out="",
                 err_has=["no such file.vbs"])
    check.expect("a file without a known extension needs a language", check.run(check.file("x.txt", "Echo 1")), 64,
                 err_has=["--language"])
    check.expect("a stated language does", check.run("--language", "vbscript", check.file("x.txt", "Echo 1")), out="1\n")
    check.expect("the options of cscript are passed over",
                 check.run("//nologo", "//T:9", check.file("o.vbs", "Echo Args.Count, Args(0)"), "//B", "x"), out="1 x\n")
    check.expect("//E states a language", check.run("//E:jscript", check.file("x.txt", "Echo(1 + 1);")), out="2\n")
    check.expect("a file that is no text is refused", check.run(check.file("zero.vbs", b"Echo 1\r\nEcho\x00 2")), 66,
                 out="", err_has=["line 2"])
    check.expect("a data folder that does not exist is refused", check.run("--data", "no such folder", "-e", "Echo 1"), 66,
                 out="", err_has=["no such folder"])


def exit_codes(check):
    check.expect("a script that ends ends with 0", check.run("-e", "x = 1"), out="", err="")
    for code in (0, 1, 5, 125):
        check.expect(f"Quit {code} ends with {code}", check.run("-e", f"Quit {code}"), code, err="")
    check.expect("Quit alone ends with 0", check.run("-e", "Quit"), err="")
    check.expect("WScript.Quit does the same", check.run("-e", "WScript.Quit 9"), 9, err="")
    check.expect("in JScript too", check.run("--language", "js", "-e", "WScript.Quit(9)"), 9, err="")
    check.expect("nothing runs after Quit", check.run("-e", "Echo 1\nQuit 3\nEcho 2"), 3, out="1\n", err="")
    check.expect("not even when errors are passed over",
                 check.run("-e", "On Error Resume Next\nQuit 4\nEcho 2\nQuit 5"), 4, out="", err="")
    check.expect("nor when they are caught",
                 check.run("--language", "js", "-e", "try { Quit(4); } catch (e) { Echo(e.message); } Quit(5);"), 4,
                 out="", err="")
    check.expect("Quit works in a routine", check.run("-e", "Leave\nEcho 1\nSub Leave\nQuit 6\nEnd Sub"), 6, out="", err="")
    check.expect("an error ends with 1", check.run("-e", "Err.Raise 5"), 1)
    check.expect("an error that is handled does not", check.run("-e", "On Error Resume Next\nErr.Raise 5\nEcho Err.Number"),
                 out="5\n", err="")


def error_positions(check):
    path = check.file("broken.vbs", "Echo 1\r\n\tx = 1\r\n    Err.Raise 513, \"me\", \"it broke\"\r\nEcho 2\r\n")
    check.expect("a VBScript error has file, line, column, message, line and mark", check.run(path), 1, out="1\n",
                 err=f"{path}:3:5: it broke (0x800A0201)\n    Err.Raise 513, \"me\", \"it broke\"\n    ^\n")
    path = check.file("syntax.vbs", "Echo 1\r\nx = (1 +\r\n")
    check.expect("a VBScript syntax error too, and nothing runs", check.run(path), 1, out="",
                 err_has=[f"{path}:2:", "x = (1 +\n", "^\n"])
    path = check.file("broken.js", "Echo(1);\r\n\tvar y = noSuchThing.member;\r\n")
    check.expect("a JScript error has line, column and mark behind the tab", check.run(path), 1, out="1\n",
                 err_has=[f"{path}:2:", "\tvar y = noSuchThing.member;\n\t", "^\n"])
    path = check.file("syntax.js", "Echo(1);\r\nvar x = = 2;\r\n")
    check.expect("a JScript syntax error too, and nothing runs", check.run(path), 1, out="", err_has=[f"{path}:2:9: "])
    path = check.file("thrown.js", "throw new Error('thrown on purpose');")
    check.expect("an exception shows its message", check.run(path), 1, err_has=[f"{path}:1:", "thrown on purpose"])
    path = check.file("umlaut.vbs", "x = \"ä€\" : Err.Raise 513, \"me\", \"Größe €\"")
    check.expect("messages and lines beyond ASCII are UTF-8", check.run(path), 1, err_has=["Größe €", "x = \"ä€\""])
    check.expect("code on the command line is called -e", check.run("-e", "Echo 1\nErr.Raise 513, \"me\", \"no\""), 1,
                 err_has=["-e:2:1: no"])
    check.expect("a script on standard input is called stdin", check.run("-", stdin=b"Err.Raise 513, \"me\", \"no\""), 1,
                 err_has=["stdin:1:1: no"])
    check.expect("an error of a component shows its text", check.run("-e", "CreateObject(\"No.Such.Class\")"), 1,
                 err_has=["-e:1:1: "])


def streams(check):
    check.expect("Echo joins values by blanks and shows them as VBScript does",
                 check.run("-e", "Echo 1, \"two\", 2.5, True, Null, Empty, Nothing, Array(1, \"a\"), CCur(1.25)"),
                 out="1 two 2.5 True Null  Nothing (1, a) 1.25\n")
    check.expect("Echo without values is an empty line", check.run("-e", "Echo"), out="\n")
    check.expect("Echo of JScript values",
                 check.run("--language", "js", "-e", "Echo(1, 'two', true, null, [1, 2])"), out="1 two True Null 1,2\n")
    outcome = check.run("-e", "Echo 1\nWScript.StdOut.WriteLine 2")
    check.results.add("streams", "lines end with CR LF",
                      None if outcome.out == "1\r\n2\r\n" else outcome.describe())
    outcome = check.run("-e", "Echo 1\nWScript.StdOut.WriteLine 2", environment={"ZURUN_EOL": "lf"})
    check.results.add("streams", "or with LF alone when the environment says so",
                      None if outcome.out == "1\n2\n" else outcome.describe())
    check.expect("StdOut writes pieces and lines",
                 check.run("-e", "With WScript.StdOut\n.Write \"a\"\n.Write 1\n.WriteLine \"b\"\n.WriteBlankLines 2\n"
                           ".WriteLine\nEnd With"), out="a1b\n\n\n\n")
    check.expect("an error that standard error does not take is told on standard output",
                 check.run("-e", "Echo 1 : x = 1 / 0", full=("err",)), 1, out_has=["1\n", "-e:1:10: ", "x = 1 / 0"])
    check.expect("an error that can be told nowhere has an exit code of its own",
                 check.run("-e", "x = 1 / 0", full=("out", "err")), 74, out="", err="")
    check.expect("StdErr is apart", check.run("-e", "WScript.StdErr.WriteLine \"e\"\nEcho 1"), out="1\n", err="e\n")
    check.expect("StdIn reads lines to the end",
                 check.run("-e", "Do Until WScript.StdIn.AtEndOfStream\nEcho \"[\" & WScript.StdIn.ReadLine & \"]\"\nLoop",
                           stdin="one\r\nzwei ä\n\nlast".encode()), out="[one]\n[zwei ä]\n[]\n[last]\n")
    check.expect("StdIn reads characters and the rest",
                 check.run("-e", "Echo WScript.StdIn.Read(2)\nWScript.StdIn.Skip 1\nEcho WScript.StdIn.AtEndOfLine\n"
                           "WScript.StdIn.SkipLine\nEcho WScript.StdIn.ReadAll", stdin="äöü\nrest\nend".encode()),
                 out="äö\nTrue\nrest\nend\n")
    check.expect("reading past the end is error 62",
                 check.run("-e", "On Error Resume Next\nx = WScript.StdIn.ReadLine\nEcho Err.Number"), out="62\n")
    check.expect("a script comes from standard input", check.run("-", "a", stdin="Echo \"ä\", Args(0)".encode()), out="ä a\n")
    check.expect("in JScript when it looks like it", check.run("-", stdin=b"var x = [1, 2]; Echo(x.length);"), out="2\n")
    for name, content in {
            "UTF-8": "Echo \"ä€\"".encode(), "UTF-8 with mark": "\ufeffEcho \"ä€\"".encode(),
            "UTF-16": "\ufeffEcho \"ä€\"".encode("utf-16-le"), "UTF-16, other byte order": "\ufeffEcho \"ä€\"".encode("utf-16-be"),
            "the ANSI code page": "Echo \"ä€\"".encode("cp1252")}.items():
        check.expect(f"a script file may be {name}", check.run(check.file("encoded.vbs", content)), out="ä€\n")
    check.expect("characters beyond the basic plane pass", check.run(check.file("plane.vbs", "Echo \"😀\"")), out="😀\n")


def arguments(check):
    path = check.file("arguments.vbs", "For Each a In Args\nEcho \"[\" & a & \"]\"\nNext\nEcho Args.Count")
    check.expect("arguments arrive whole: blanks, quotes, backslashes, nothing, beyond ASCII",
                 check.run(path, "two words", "a\"b", "c:\\x\\", "", "ä€", "-e", "--trace"),
                 out="[two words]\n[a\"b]\n[c:\\x\\]\n[]\n[ä€]\n[-e]\n[--trace]\n7\n")
    check.expect("no arguments", check.run(path), out="0\n")
    check.expect("an argument that is not there is an error", check.run("-e", "Echo Args(0)"), 1,
                 err_has=["-e:1:1: there is no argument 0"])
    check.expect("named arguments are sorted out",
                 check.run("-e", "With WScript.Arguments\nEcho .Named(\"n\"), .Named.Count, .Unnamed(0), .Unnamed.Count\n"
                           "Echo .Named.Exists(\"flag\"), .Named.Exists(\"other\")\nEnd With", "/n:v", "plain", "/flag"),
                 out="v 2 plain 1\nTrue False\n")


def tables(check, facts):
    folder = facts["tables"]
    check.expect("--data is where databases without a path are found",
                 check.run("--data", str(pathlib.PureWindowsPath(folder).parent), "-e", "Echo DbfCount(\"tables>customers\")"),
                 out=f"{facts['customers']}\n", err="")
    check.expect("a faulty condition answers -1 and its reason goes to standard error",
                 check.run("-e", f"Echo DbfCount(\"{folder}>customers\", \"CREDIT >\")"), out="-1\n", err_has=["0x80041017"])
    check.expect("an unknown field is named",
                 check.run("-e", f"Echo DbfCount(\"{folder}>customers\", \"NOSUCHFIELD = 1\")"), out="-1\n",
                 err_has=["NOSUCHFIELD"])
    for name in ("nosuch", "empty", "cut-header", "text"):
        check.expect(f"the reason why {name} cannot be opened goes to standard error",
                     check.run("-e", f"Echo DbfCount(\"{folder}>{name}\")"), out="-1\n", err_has=[name])
    check.expect("an unknown index is reported",
                 check.run("-e", f"Echo DbfOpen(\"{folder}>customers\").OpenIndex(\"NOSUCH\")"), out="False\n")
    path = check.file("routine.vbs", f"Echo DbfOpen(\"{folder}>customers\").Process(\"Count\", \"\", , 5)\r\n"
                      "Function Count()\r\n  Err.Raise 513, \"me\", \"the routine broke\"\r\nEnd Function\r\n")
    check.expect("a routine that fails is reported at its own line, and the run ends with 1", check.run(path), 1, out="0\n",
                 err_has=[f"{path}:3:3: the routine broke", "Record 1 of those selected from table \"customers\", routine Count"])
    changed = check.work / "changed"
    shutil.rmtree(changed, ignore_errors=True)
    changed.mkdir()
    for suffix in (".dbf", ".cdx"):
        shutil.copyfile(pathlib.Path(facts["folder"]) / f"customers{suffix}", changed / f"customers{suffix}")
    table = windows_path(changed) + ">customers"
    check.expect("a script that changes a table again and again",
                 check.run("-e", f"For i = 1 To 3\nEcho DbfUpdate(\"{table}\", i, Array(\"ID\", 90000 + i))\nNext"),
                 out="True\nTrue\nTrue\n", err="")
    left = sorted(file.name for file in changed.iterdir())
    check.results.add(check.group, "leaves no journal behind", None if left == ["customers.cdx", "customers.dbf"] else str(left))
    copies = check.work / "failing"
    shutil.rmtree(copies, ignore_errors=True)
    copies.mkdir()
    for table in pathlib.Path(facts["folder"]).glob("customers.*"):
        shutil.copyfile(table, copies / table.name)
    path = check.file("failing.vbs", f"Dim table, calls\r\ntable = \"{windows_path(copies)}>customers\"\r\n"
                      "Echo DbfProcess(table, \"Work\", \"ID < 11\")\r\nEcho calls\r\n"
                      "Echo DbfCount(table, \"CITY = 'Before'\")\r\nFunction Work()\r\n  calls = calls + 1\r\n"
                      "  If calls = 3 Then Err.Raise 513, \"me\", \"enough\"\r\n"
                      "  Work = DbfReplace(\"CITY\", \"Before\")\r\nEnd Function\r\n")
    check.expect("a routine that fails ends DbfProcess with the count reached, and what was replaced stays",
                 check.run(path), 1, out="2\n3\n2\n", err_has=[f"{path}:8:21: enough"])
    check.expect("--trace shows the engine's log", check.run("--trace", "-e", "Engine.Engine.Trace \"a note\""),
                 err_has=["a note"])
    check.expect("without it the log stays away", check.run("-e", "Engine.Engine.Trace \"a note\""), err="")
    check.expect("Quit leaves an open table and its view in peace",
                 check.run("-e", f"Set t = DbfOpen(\"{folder}>customers\")\nSet v = t.Filter(\"\")\nQuit 3"), 3, err="")


def interruption(check, facts):
    for name, code in {"VBScript": "Echo 1\nDo\nLoop", "JScript": "Echo(1); for (;;) { var x = 1; }"}.items():
        check.expect(f"Ctrl+C ends a {name} that never ends",
                     check.run("--language", name, "-e", code, interrupt=True), 130, out="1\n")
    check.expect("Ctrl+C ends a script that sleeps",
                 check.run("-e", "Echo 1\nWScript.Sleep 600000\nEcho 2", interrupt=True), 130, out="1\n")
    # The routine speaks when the job is old enough to be watched.
    path = check.file("watched.vbs", f"Dim started, said\r\nstarted = Timer\r\n"
                      f"DbfProcess \"{facts['tables']}>customers\", \"Work\"\r\nFunction Work()\r\n"
                      "  WScript.Sleep 20\r\n  If Timer - started > 1 And Not said Then\r\n    Echo 1\r\n"
                      "    said = True\r\n  End If\r\n  Work = True\r\nEnd Function\r\n")
    check.expect("Ctrl+C ends a long job, which says how far it came", check.run(path, interrupt=True), 130, out="1\n",
                 err_has=["process: ended after ", " records"])
    # Numbers alone, doubled until a job on them takes seconds: it shall be watched, and ended in the middle. An export
    # is the fastest of all and writes them many times.
    folder = check.work / "long-jobs"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    table = windows_path(folder) + ">numbers"
    outcome = check.run("-e", f"DbfToDbf \"{facts['tables']}>orders\", \"{table}\", , \"ID\"\nFor i = 1 To 7\n"
                        f"  DbfFromDbf \"{table}\", \"{table}\"\nNext\nEcho DbfCount(\"{table}\")")
    check.expect("the table for long jobs is made", outcome, out=f"{facts['orders'] * 128}\n")
    text = windows_path(folder / "numbers.txt")
    fields = ", ".join(['"ID"'] * 20)
    for job, code in {"copy": f"DbfToDbf \"{table}\", \"{table}2\"",
                      "export": f"DbfToDel \"{table}\", \"{text}\", , Array({fields})",
                      "index": f"DbfIndex \"{table}\", Array(\"STR(ID, 10) + STR(-ID, 10)\")"}.items():
        check.expect(f"Ctrl+C ends a job of many records: {job}", check.run("-e", f"Echo 1\n{code}\nEcho 2", interrupt=True), 130,
                     out="1\n", err_has=[" ended after ", " records"])
    whole = facts["orders"] * 128
    check.expect("the table is still sound", check.run("-e", f"Echo DbfCount(\"{table}\")"), out=f"{whole}\n")
    interrupted_marking(check, folder / "numbers.dbf", table, whole)
    shutil.rmtree(folder)


def interrupted_marking(check, file, table, whole):
    """Deletes and undeletes all records, and stops that in the middle."""
    jobs = {"delete": (" ", f"DbfDelete(\"{table}\", \"ID > 0\", True, 0)"), "undelete": ("*", f"DbfUndelete(\"{table}\")")}
    for job, (mark, code) in jobs.items():
        records = bytearray(file.read_bytes())
        begin, length = int.from_bytes(records[8:10], "little"), int.from_bytes(records[10:12], "little")
        records[begin:begin + whole * length:length] = mark.encode() * whole
        file.write_bytes(records)
        check.expect(f"Ctrl+C ends marking many records: {job}", check.run("-e", f"Echo 1\nEcho {code}", interrupt=True), 130,
                     out="1\n", err_has=[f"{job}: ended after ", " records"])
        left = check.run("-e", f"Echo DbfCount(\"{table}\")").out.strip()
        check.results.add(check.group, f"what was marked until then stays: {job}",
                          None if left.isdigit() and 0 < int(left) < whole else f"{left} records are left of {whole}")


def registration(check, facts):
    code = f"Echo DbfCount(\"{facts['tables']}>customers\")"
    alone = check.work / "alone"
    alone.mkdir(exist_ok=True)
    copy = shutil.copy(check.program, alone / "zurun.exe")
    for name in reversed(DLLS):
        check.run("/u", "/s", windows_path(check.binaries / name), program="regsvr32")
    check.expect("the DLLs beside the program work unregistered", check.run("-e", code), out=f"{facts['customers']}\n")
    check.expect("without DLLs and registration a function says what is missing", check.run("-e", code, program=copy), 1,
                 out="", err_has=["ZuDBFFunctions.Functions", "beside zurun.exe or be registered"])
    check.expect("so does Engine", check.run("-e", "Echo Engine.Version", program=copy), 1, err_has=["Zuengine.Zuproject"])
    check.expect("scripts that need neither run all the same", check.run("-e", "Echo 1 + 1", program=copy), out="2\n", err="")
    for name in DLLS:
        check.expect(f"{name} can be registered", check.run("/s", windows_path(check.binaries / name), program="regsvr32"))
    check.expect("without DLLs beside the program the registered ones are used", check.run("-e", code, program=copy),
                 out=f"{facts['customers']}\n")
    check.expect("registered DLLs beside the program work", check.run("-e", code), out=f"{facts['customers']}\n")


def compatibility(check):
    for script in scripts_of("compatible"):
        words = [windows_path(script), "one", "two words"]
        ours, theirs = check.run("//nologo", *words), check.run("//nologo", *words, program="cscript")
        same = (ours.out, ours.code) == (theirs.out, theirs.code) and ours.out
        check.results.add(check.group, f"{script.name} writes and ends the same under cscript",
                          None if same else f"zurun: {ours.describe()}\ncscript: {theirs.describe()}")


def samples(check, facts):
    folder = check.work / "samples"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for table in pathlib.Path(facts["folder"]).glob("*.*"):
        if table.stem in ("customers", "orders"):
            shutil.copyfile(table, folder / table.name)
    script = pathlib.Path(__file__).resolve().parents[2] / "samples" / "text-files.vbs"
    count = facts["customers"]
    check.expect("text-files.vbs shows text files in every format",
                 check.run(windows_path(script), windows_path(folder)),
                 out_has=[f"{count} lines read, {count} records added", "tabs:      1 | ", "2 of 3 rows added", "row 2 failed"])
    tables, scripts = windows_path(folder), script.parent
    check.expect("prices.vbs corrects prices record by record",
                 check.run(windows_path(scripts / "prices.vbs"), tables, "5"), out_has=[" orders, ", " before, ", " after"])
    merge = windows_path(scripts / "merge.vbs")
    check.expect("merge.vbs makes the table the first time",
                 check.run(merge, tables + ">customers", tables + ">archive", "ID <= 100"), out_has=[" rows added"])
    check.expect("merge.vbs adds to it from then on, and lists the rows that were not taken",
                 check.run(merge, tables + ">customers", tables + ">archive", "ID > 100 AND ID <= 200"), out_has=[" rows added"])
    check.expect("tidy.js deletes, cleans up and indexes",
                 check.run(windows_path(scripts / "tidy.js"), tables + "\\archive", "ID <= 50", "NAME"),
                 out_has=[" records deleted", " records left, in order of NAME"])
    first, second = (check.run(windows_path(scripts / "demo.vbs"), tables) for _ in range(2))
    check.expect("demo.vbs reads, changes a copy, takes a text file in, indexes, looks up and exports", first, err="",
                 out_has=[f"{facts['orders']} orders copied", " large orders got a discount", f"{facts['orders']} lines read, "
                          f"{facts['orders']} records added", "  customer ", " unpaid orders from Sweden", "This was samples/demo.vbs"])
    steps = [[line for line in outcome.out.splitlines() if not line.startswith("  [")] for outcome in (first, second)]
    check.results.add(check.group, "demo.vbs prints the same each time, but for the times",
                      None if steps[0] == steps[1] else second.describe())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--results", required=True)
    parser.add_argument("--only", help="run only the group with this name")
    options = parser.parse_args()

    facts = prepare(options.work / "tables", options.bin / "zugenerate.exe")
    work = options.work / "zurun program"
    work.mkdir(parents=True, exist_ok=True)
    check = Checks("zurun_program", options.bin, work)
    groups = {
        "command line": lambda: command_line(check),
        "exit codes": lambda: exit_codes(check),
        "error positions": lambda: error_positions(check),
        "streams": lambda: streams(check),
        "arguments": lambda: arguments(check),
        "tables": lambda: tables(check, facts),
        "samples": lambda: samples(check, facts),
        "interruption": lambda: interruption(check, facts),
        "registration": lambda: registration(check, facts),
        "compatibility": lambda: compatibility(check),
    }
    for name, group in groups.items():
        if options.only in (None, name):
            check.group = name
            group()
    return check.results.write(options.results)


if __name__ == "__main__":
    sys.exit(main())
