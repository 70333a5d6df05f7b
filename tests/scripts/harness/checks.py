"""Checks of the program zurun as a whole."""
from .programs import run, windows_path
from .results import Results


class Checks:
    """Runs the program and compares; each check is one test with a statement for a name."""

    def __init__(self, suite, binaries, work):
        self.results = Results(suite)
        self.binaries = binaries
        self.program = binaries / "zurun.exe"
        self.work = work
        self.group = ""

    def run(self, *arguments, **options):
        return run(options.pop("program", self.program), *arguments, **options)

    def file(self, name, content):
        path = self.work / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return windows_path(path)

    def expect(self, statement, outcome, code=0, out=None, err=None, out_has=(), err_has=(), out_lacks=()):
        """`out` and `err` are the whole texts (with LF), `..._has` pieces of them."""
        faults = []
        actual_out, actual_err = outcome.out.replace("\r\n", "\n"), outcome.err.replace("\r\n", "\n")
        if outcome.timed_out or outcome.code != code:
            faults.append(f"exit code {code} was expected")
        if out is not None and actual_out != out:
            faults.append(f"expected on standard output: {out!r}")
        if err is not None and actual_err != err:
            faults.append(f"expected on standard error: {err!r}")
        faults += [f"standard output lacks {piece!r}" for piece in out_has if piece not in actual_out]
        faults += [f"standard error lacks {piece!r}" for piece in err_has if piece not in actual_err]
        faults += [f"standard output has {piece!r}" for piece in out_lacks if piece in actual_out]
        self.results.add(self.group, statement, "\n".join(faults + [outcome.describe()]) if faults else None)
