#!/usr/bin/python3
"""Runs the test scripts of one host and writes the results as XML.

run_scripts.py zurun|cscript|dispatch --bin FOLDER --work FOLDER --results FILE
"""
import argparse
import pathlib
import sys

sys.dont_write_bytecode = True

from harness.programs import run, windows_path  # noqa: E402
from harness.results import Results  # noqa: E402
from harness.script_files import run_script, scripts_of  # noqa: E402
from harness.tables import prepare  # noqa: E402


def register(binaries):
    """Scripts under cscript find only what is registered."""
    for name in ("Zuengine.dll", "ZuDBFFunctions.dll"):
        outcome = run("regsvr32", "/s", windows_path(binaries / name))
        if outcome.code != 0:
            raise SystemExit(f"{name} cannot be registered\n" + outcome.describe())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("host", choices=("zurun", "cscript", "dispatch"))
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--results", required=True)
    parser.add_argument("--only", help="run only the script with this name")
    options = parser.parse_args()

    facts = prepare(options.work / "tables", options.bin / "zugenerate.exe")
    hosts = {
        "zurun": ([options.bin / "zurun.exe"], ("shared", "zurun", "writing", "textio", "records", "records-zurun")),
        "cscript": (["cscript", "//nologo"], ("shared", "writing", "textio", "records")),
        "dispatch": ([options.bin / "dispatch_host.exe"], ("dispatch",)),
    }
    program, folders = hosts[options.host]
    if options.host == "cscript":
        register(options.bin)
    results = Results("scripts_" + options.host)
    for folder in folders:
        for script in scripts_of(folder):
            if options.only in (None, script.name):
                run_script(results, program, script, options.work / options.host / folder, facts)
    return results.write(options.results)


if __name__ == "__main__":
    sys.exit(main())
