"""What one run of all tests has found: one line per suite, the output of what failed, the closing count."""
import sys


class Report:
    def __init__(self):
        self.passed = 0
        self.failed = 0
        self._lost = []

    def suite(self, group, name, passed, failed, seconds, output=""):
        """Counts one suite and prints its line; `output` is shown when something in it failed."""
        self.passed += passed
        self.failed += failed
        mark = "FAIL" if failed else "ok"
        count = f"{passed} passed" + (f", {failed} failed" if failed else "")
        print(f"{mark:4}  {group:8}  {name:34}  {count:24}  {seconds:7.1f} s")
        if failed:
            self._lost.append(f"{group}: {name}")
            if output.strip():
                print("\n".join("      " + line for line in output.rstrip().splitlines()[-200:]))
        sys.stdout.flush()

    def close(self):
        """Prints the closing lines; answers the exit code."""
        if self._lost:
            print("\nfailed: " + "; ".join(self._lost))
        print(f"{self.passed} passed, {self.failed} failed")
        return 1 if self.failed or not self.passed else 0
