"""Runs the suites that CTest knows of one build and counts the single tests inside them.

What counts is what was to run, not what happened to run: a suite without a result, a suite that promised a result file and
left none or an empty one, a test that was skipped or disabled: each is a failure.
"""
import json
import pathlib
import re
import shutil
import subprocess
import xml.etree.ElementTree as xml


def expected_suites(folder):
    """Name -> path of its own result file (a path whether it exists or not), and whether it promised one."""
    command = ["ctest", "--test-dir", folder, "--show-only=json-v1"]
    listing = subprocess.run(command, check=True, text=True, capture_output=True, stdin=subprocess.DEVNULL).stdout
    suites = {}
    for test in json.loads(listing)["tests"]:
        # Windows programs name the file with the drive under which Wine shows the whole file system.
        promised = re.search(r"--gtest_output=xml:(?:Z:)?(.*)", "\n".join(test.get("command", [])))
        default = folder / "test-results" / (test["name"] + ".xml")
        suites[test["name"]] = (pathlib.Path(promised.group(1)) if promised else default, bool(promised))
    return suites


def count_single_tests(path):
    """(passed, texts about the failed ones) from a result file in JUnit form."""
    passed, failures = 0, []
    for case in xml.parse(path).getroot().iter("testcase"):
        name = f"{case.get('classname', '')}.{case.get('name', '')}".strip(".")
        trouble = [child for child in case if child.tag in ("failure", "error")]
        skipped = [child for child in case if child.tag == "skipped"]
        not_run = case.get("status") == "notrun" or case.get("result") in ("skipped", "suppressed")
        if trouble:
            text = "\n".join((child.text or child.get("message") or "").strip() for child in trouble)
            failures.append(f"{name}\n{text}")
        elif skipped or not_run:
            failures.append(f"{name}\nwas not run")
        else:
            passed += 1
    return passed, failures


def run(report, group, folder, jobs):
    """Runs every suite of a build folder and adds them to the report."""
    results = folder / "test-results"
    shutil.rmtree(results, ignore_errors=True)
    results.mkdir(parents=True)
    suites = expected_suites(folder) if (folder / "CTestTestfile.cmake").exists() else {}
    if not suites:
        report.suite(group, "(no suite is registered)", 0, 1, 0.0)
        return

    summary = results / "all.ctest"
    command = ["ctest", "--test-dir", folder, "-j", str(jobs), "--timeout", "600", "--output-junit", summary]
    subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    ran = {case.get("name"): case for case in xml.parse(summary).getroot().iter("testcase")} if summary.exists() else {}

    for name, (path, promised) in sorted(suites.items()):
        case = ran.get(name)
        if case is None:
            report.suite(group, name, 0, 1, 0.0, "did not run")
            continue
        output = case.findtext("system-out") or ""
        seconds = float(case.get("time") or 0)
        whole_passed = case.get("status") == "run"
        passed, failures = 0, []
        try:
            if path.exists():
                passed, failures = count_single_tests(path)
                if not passed and not failures:
                    failures.append(f"{path.name} holds no test")
            elif promised:
                failures.append(f"{path.name} was not written")
            elif whole_passed:
                passed = 1
        except xml.ParseError as fault:
            failures.append(f"{path.name} cannot be read: {fault}")
        if not whole_passed and not failures:
            failures.append(f"the program failed (CTest: {case.get('status')})")
        if failures:
            output = "\n".join(failures) + ("\n" + output if not whole_passed else "")
        report.suite(group, name, passed, len(failures), seconds, output)
