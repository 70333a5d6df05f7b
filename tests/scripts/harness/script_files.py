"""Test scripts: made whole with the assertions, run, and their lines read."""
import pathlib
import re
import shutil

from .programs import run, windows_path

HERE = pathlib.Path(__file__).resolve().parents[1]
CLOSING = re.compile(r"^(\d+) passed, (\d+) failed$")


def scripts_of(folder):
    return sorted(path for path in (HERE / folder).iterdir() if path.suffix in (".vbs", ".js"))


def made_whole(script, folder):
    """The script with the assertions behind it, in a folder of the build."""
    folder.mkdir(parents=True, exist_ok=True)
    target = folder / f"{script.stem}{script.suffix}"
    assertions = (HERE / "assertions" / f"assertions{script.suffix}").read_text(encoding="utf-8")
    target.write_text(script.read_text(encoding="utf-8") + assertions, encoding="utf-8", newline="\r\n")
    return target


def scratch_folder(script, folder, facts):
    """A folder with copies of the sample tables, for a script that changes them."""
    scratch = folder / (script.name.replace(".", "-") + "-tables")
    shutil.rmtree(scratch, ignore_errors=True)
    scratch.mkdir(parents=True)
    for table in ("customers", "single"):
        for file in pathlib.Path(facts["folder"]).glob(f"{table}.*"):
            shutil.copyfile(file, scratch / file.name)
    return windows_path(scratch)


def run_script(results, host, script, folder, facts):
    """Runs a test script with a host (program and options) and adds each of its statements to the results."""
    whole = made_whole(script, folder)
    arguments = [f"{name}={value}" for name, value in facts.items()]
    if "scratch" in whole.read_text(encoding="utf-8"):
        arguments.append(f"scratch={scratch_folder(script, folder, facts)}")
    outcome = run(*host, windows_path(whole), *arguments)
    group = script.name
    lines = outcome.out.splitlines()
    stated = [line for line in lines if line.startswith(("ok ", "not ok "))]
    for line in stated:
        failed = line.startswith("not ok ")
        results.add(group, line.removeprefix("not ").removeprefix("ok "), "the statement does not hold" if failed else None)
    closing = CLOSING.match(lines[-1]) if lines else None
    failure = None
    if not closing or int(closing[1]) + int(closing[2]) != len(stated) or outcome.code != 0 or not stated:
        failure = "the script did not run to its end\n" + outcome.describe()
    results.add(group, "runs to its end", failure)
