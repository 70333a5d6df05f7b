#!/usr/bin/python3
"""Runs the examples of the manual through zurun, each on its own copy of the sample tables, and compares what they show with
what the page says.

run_examples.py --bin FOLDER --work FOLDER --results FILE [--write] [PAGE...]

An example is a block in VBScript or JScript under the heading "Example" or "Examples"; a block "output" behind it is what it shows.
--write puts the actual output into the pages.
"""
import argparse
import concurrent.futures
import pathlib
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tests" / "scripts")]

from harness.programs import run, windows_path  # noqa: E402
from harness.results import Results  # noqa: E402

import pages  # noqa: E402

# These open windows that somebody must close: tests/windows runs them.
WINDOWS = ("DbfEdit.md", "DbfPick.md")
SUFFIX = {"vbscript": ".vbs", "js": ".js"}


def examples(text):
    """(block, block with its output or None) of a page."""
    found = pages.blocks(text)
    for index, block in enumerate(found):
        if block.section.startswith("Example") and block.language in SUFFIX:
            following = found[index + 1] if index + 1 < len(found) else None
            yield block, following if following is not None and following.language == "output" else None


class Runner:
    def __init__(self, binaries, work):
        binaries = binaries.resolve()
        self.program = binaries / "zurun.exe"
        self.work = work
        self.tables = work / "tables"
        self.tables.mkdir(parents=True)
        made = run(binaries / "zugenerate.exe", ".", folder=self.tables)
        if made.code:
            raise SystemExit(made.describe())

    def outcome(self, name, block):
        """Runs one example in a folder of its own that holds the tables in the folder sales."""
        folder = self.work / name
        shutil.copytree(self.tables, folder / "sales")
        script = folder / ("example" + SUFFIX[block.language])
        script.write_text(block.code, encoding="utf-8")
        result = run(self.program, windows_path(script), folder=folder, environment={"ZURUN_EOL": "lf"})
        shutil.rmtree(folder / "sales")
        return result


def main():
    parser = argparse.ArgumentParser()
    for folder in ("--bin", "--work", "--results"):
        parser.add_argument(folder, type=pathlib.Path, required=True)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("pages", nargs="*")
    options = parser.parse_args()
    shutil.rmtree(options.work, ignore_errors=True)
    runner = Runner(options.bin, options.work.resolve())
    results = Results("examples")
    chosen = [page for page in pages.all_pages() if not options.pages or page.name in options.pages]

    jobs = []
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for page in chosen:
            text = page.read_text(encoding="utf-8")
            for number, (block, output) in enumerate(examples(text), 1):
                if page.name not in WINDOWS:
                    name = f"{page.parent.name}-{page.stem}-{number}"
                    jobs.append((page, number, output, pool.submit(runner.outcome, name, block)))
    changes = {}
    for page, number, output, job in jobs:
        result = job.result()
        shown = "\n".join(line.rstrip() for line in result.out.replace("\r\n", "\n").strip("\n").split("\n")) + "\n"
        faults = []
        if result.code or result.timed_out:
            faults.append(result.describe())
        if output is not None and shown.strip() != output.code.strip():
            faults.append(f"the page says\n{output.code}\nthe example shows\n{shown}\n{result.err}")
            changes.setdefault(page, []).append((output, shown))
        results.add(str(page.relative_to(pages.DOCS)), f"example {number} shows what the page says", "\n".join(faults) or None)
    if options.write:
        for page, parts in changes.items():
            text = page.read_text(encoding="utf-8")
            for output, shown in sorted(parts, key=lambda part: -part[0].start):
                text = text[:output.start] + shown + text[output.end:]
            page.write_text(text, encoding="utf-8")
    return results.write(options.results)


if __name__ == "__main__":
    sys.exit(main())
