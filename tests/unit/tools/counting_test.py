#!/usr/bin/python3
"""How ./zu test counts: tools/testing/ctest.py against suites that pass, fail, crash, vanish or lie.

Usage: counting_test.py RESULT.xml
"""
import contextlib
import io
import pathlib
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "tools"))
from testing import ctest  # noqa: E402
from testing.report import Report  # noqa: E402

PASSED = '<testcase name="A" status="run" result="completed" classname="S"/>'
FAILED = '<testcase name="B" status="run" result="completed" classname="S"><failure message="1 is not 2"/></testcase>'
SKIPPED = '<testcase name="C" status="run" result="skipped" classname="S"><skipped/></testcase>'
DISABLED = '<testcase name="D" status="notrun" result="suppressed" classname="S"/>'


class Counting(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name) / "with a blank"
        self.folder.mkdir()
        self.suites = []

    def suite(self, name, script, promises=False):
        """A suite that runs a shell script; one that promises a result file has its path as $1, like GoogleTest programs."""
        result = f"--gtest_output=xml:{self.folder}/test-results/{name}.xml" if promises else ""
        (self.folder / f"{name}.sh").write_text(f'result="${{1#--gtest_output=xml:}}"\n{script}\n')
        self.suites.append(f'add_test({name} "/bin/sh" "{self.folder}/{name}.sh" "{result}")')

    def count(self):
        """(passed, failed, what was printed) of a run of the suites."""
        (self.folder / "CTestTestfile.cmake").write_text("\n".join(self.suites) + "\n")
        report, printed = Report(), io.StringIO()
        with contextlib.redirect_stdout(printed):
            ctest.run(report, "group", self.folder, 1)
        return report.passed, report.failed, printed.getvalue()

    def counted(self, cases, exit_code=0):
        self.suite("S", f"echo '<testsuites>{cases}</testsuites>' > \"$result\"; exit {exit_code}", promises=True)
        return self.count()[:2]

    def test_EachTestOfAResultFileCounts(self):
        self.assertEqual(self.counted(PASSED + PASSED), (2, 0))

    def test_AFailedTestCountsOnceAndShowsItsText(self):
        self.suite("S", f"echo '<testsuites>{PASSED}{FAILED}</testsuites>' > \"$result\"; exit 1", promises=True)
        passed, failed, printed = self.count()
        self.assertEqual((passed, failed), (1, 1))
        self.assertIn("1 is not 2", printed)

    def test_ASkippedTestIsAFailure(self):
        self.assertEqual(self.counted(PASSED + SKIPPED), (1, 1))

    def test_ADisabledTestIsAFailure(self):
        self.assertEqual(self.counted(PASSED + DISABLED), (1, 1))

    def test_AResultFileWithoutTestsIsAFailure(self):
        self.assertEqual(self.counted(""), (0, 1))

    def test_AResultFileThatWasPromisedAndNotWrittenIsAFailure(self):
        self.suite("S", "exit 0", promises=True)
        self.assertEqual(self.count()[:2], (0, 1))

    def test_AResultFileThatIsCutShortIsAFailure(self):
        self.suite("S", "echo '<testsuites><testcase' > \"$result\"", promises=True)
        self.assertEqual(self.count()[:2], (0, 1))

    def test_AProgramThatFailsAfterItsTestsPassedIsAFailure(self):
        self.assertEqual(self.counted(PASSED, exit_code=3), (1, 1))

    def test_AResultFileOfAnEarlierRunDoesNotCount(self):
        (self.folder / "test-results").mkdir()
        (self.folder / "test-results" / "S.xml").write_text(f"<testsuites>{PASSED}</testsuites>")
        self.suite("S", "exit 0", promises=True)
        self.assertEqual(self.count()[:2], (0, 1))

    def test_ASuiteWithoutAResultFileIsOneTest(self):
        self.suite("Good", "exit 0")
        self.suite("Bad", "echo this is why; exit 1")
        passed, failed, printed = self.count()
        self.assertEqual((passed, failed), (1, 1))
        self.assertIn("this is why", printed)

    def test_AProgramThatDoesNotExistIsAFailure(self):
        self.suites.append('add_test(Gone "/nowhere/gone.exe")')
        self.assertEqual(self.count()[:2], (0, 1))

    def test_ASuiteThatIsSwitchedOffIsAFailure(self):
        self.suite("Off", "exit 0")
        self.suites.append("set_tests_properties(Off PROPERTIES DISABLED TRUE)")
        self.assertEqual(self.count()[:2], (0, 1))

    def test_ABuildWithoutSuitesIsAFailure(self):
        self.assertEqual(self.count()[:2], (0, 1))

    def test_ABuildThatWasNotConfiguredIsAFailure(self):
        report = Report()
        with contextlib.redirect_stdout(io.StringIO()):
            ctest.run(report, "group", self.folder / "never", 1)
        self.assertEqual((report.passed, report.failed), (0, 1))

    def test_TheClosingLineCountsBothAndTheExitCodeFollows(self):
        for failed, code in ((0, 0), (1, 1)):
            report, printed = Report(), io.StringIO()
            with contextlib.redirect_stdout(printed):
                report.suite("group", "S", 2, failed, 0.1)
                self.assertEqual(report.close(), code)
            self.assertEqual(printed.getvalue().splitlines()[-1], f"2 passed, {failed} failed")

    def test_ARunOfNothingFails(self):
        with contextlib.redirect_stdout(io.StringIO()):
            self.assertEqual(Report().close(), 1)


class Recorder(unittest.TextTestResult):
    """Keeps every test as a testcase element."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.suite = xml.Element("testsuite", name="tools_counting")

    def addSuccess(self, test):
        super().addSuccess(test)
        self._case(test)

    def addFailure(self, test, fault):
        super().addFailure(test, fault)
        xml.SubElement(self._case(test), "failure").text = str(fault[1])

    def addError(self, test, fault):
        super().addError(test, fault)
        xml.SubElement(self._case(test), "failure").text = repr(fault[1])

    def _case(self, test):
        return xml.SubElement(self.suite, "testcase", classname="Counting", name=test._testMethodName, status="run")


if __name__ == "__main__":
    runner = unittest.TextTestRunner(resultclass=Recorder)
    outcome = runner.run(unittest.defaultTestLoader.loadTestsFromTestCase(Counting))
    result = pathlib.Path(sys.argv[1])
    result.parent.mkdir(exist_ok=True)
    xml.ElementTree(outcome.suite).write(result, encoding="utf-8", xml_declaration=True)
    sys.exit(0 if outcome.wasSuccessful() else 1)
