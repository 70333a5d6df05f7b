"""Results of single tests, written as XML in the JUnit form."""
import pathlib
import xml.etree.ElementTree as xml


class Results:
    def __init__(self, suite):
        self.suite = suite
        self.cases = []

    def add(self, group, name, failure=None):
        """One test; `failure` says what went wrong, None that nothing did."""
        self.cases.append((group, name, failure))
        if failure is not None:
            print(f"not ok {group}: {name}\n    " + failure.replace("\n", "\n    "))

    @property
    def failed(self):
        return sum(1 for case in self.cases if case[2] is not None)

    def write(self, path):
        root = xml.Element("testsuites", tests=str(len(self.cases)), failures=str(self.failed))
        suite = xml.SubElement(root, "testsuite", name=self.suite, tests=str(len(self.cases)),
                               failures=str(self.failed))
        for group, name, failure in self.cases:
            case = xml.SubElement(suite, "testcase", classname=f"{self.suite}.{group}", name=printable(name))
            if failure is not None:
                xml.SubElement(case, "failure", message=printable(failure.splitlines()[0] if failure else "failed"),
                               ).text = printable(failure)
        pathlib.Path(path).parent.mkdir(parents=True, exist_ok=True)
        xml.ElementTree(root).write(path, encoding="utf-8", xml_declaration=True)
        print(f"{len(self.cases) - self.failed} passed, {self.failed} failed")
        return 1 if self.failed or not self.cases else 0


def printable(text):
    """XML knows no control characters."""
    return "".join(character if character >= " " or character in "\n\t" else "?" for character in text)
