"""Running programs under the launcher of the tests."""
import os
import pathlib
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass

LAUNCHER = pathlib.Path(__file__).resolve().parents[3] / "tools" / "wine-run"


@dataclass
class Outcome:
    code: int
    out: str
    err: str
    timed_out: bool = False

    def describe(self):
        ending = "did not end in time" if self.timed_out else f"exit code {self.code}"
        return f"{ending}\n--- standard output\n{self.out}\n--- standard error\n{self.err}"


def windows_path(path):
    """A path of this machine as Windows programs find it."""
    return "Z:" + str(path).replace("/", "\\") if os.name != "nt" else str(path)


def run(program, *arguments, stdin=b"", seconds=120, folder=None, environment=None, interrupt=False, full=()):
    """Runs a Windows program to its end.

    The streams are files: background processes of an emulator may keep pipes open long after the program has
    ended. `interrupt` sends Ctrl+C as soon as the program has written something. The streams named in `full`, "out" or
    "err", take nothing.
    """
    with tempfile.TemporaryFile() as source, tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err, \
            open("/dev/full", "wb") as nowhere:
        source.write(stdin)
        source.seek(0)
        variables = dict(os.environ, **(environment or {}))
        process = subprocess.Popen([str(LAUNCHER), str(program), *arguments], stdin=source,
                                   stdout=nowhere if "out" in full else out, stderr=nowhere if "err" in full else err,
                                   cwd=folder, env=variables, start_new_session=True)
        timed_out = False
        try:
            if interrupt and wait_for_output(process, out, seconds):
                process.send_signal(signal.SIGINT)
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            timed_out = True
            process.kill()
            process.wait()
        out.seek(0)
        err.seek(0)
        return Outcome(process.returncode, out.read().decode("utf-8", "replace"),
                       err.read().decode("utf-8", "replace"), timed_out)


def wait_for_output(process, out, seconds):
    """True when the running program has written something, False when it has ended or the time is over."""
    deadline = time.monotonic() + seconds
    while os.fstat(out.fileno()).st_size == 0:
        if time.monotonic() > deadline:
            return False
        try:
            process.wait(0.05)
            return False
        except subprocess.TimeoutExpired:
            pass
    return True
