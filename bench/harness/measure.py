"""Runs one program and tells what it cost."""
import dataclasses
import fcntl
import glob
import os
import resource
import signal
import struct
import subprocess
import tempfile
import threading
import time

LONGEST_RUN = 180
SAMPLE_SECONDS = 0.01


class Failed(Exception):
    """A program that is measured did not do its job."""


@dataclasses.dataclass(frozen=True)
class Usage:
    """One run. `own` is the most memory that no file stands behind, as sampled; `server` is what the Wine server took of
    the processor meanwhile, and part of `cpu`."""

    user: float = 0.0
    system: float = 0.0
    wall: float = 0.0
    server: float = 0.0
    peak: float = 0.0
    own: float = 0.0
    result: str = ""

    @property
    def cpu(self):
        return self.user + self.system + self.server

    def per_turn(self, start, turns):
        """What one of the turns cost beyond the start of the program."""
        costs = {name: max(0.0, getattr(self, name) - getattr(start, name)) / turns for name in ("user", "system", "wall", "server")}
        return dataclasses.replace(self, **costs)


def wine_server(prefix):
    """The process number of the Wine server that serves a prefix; None when none runs. It holds a lock."""
    status = os.stat(prefix)
    for lock in glob.glob(f"/tmp/*wine-*/server-{status.st_dev:x}-{status.st_ino:x}/lock") + glob.glob(
            f"/tmp/.wine-*/server-{status.st_dev:x}-{status.st_ino:x}/lock"):
        with open(lock, "r+b") as file:
            asked = struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0)
            kind, _, _, _, holder = struct.unpack("hhqqi4x", fcntl.fcntl(file, fcntl.F_GETLK, asked))
            if kind != fcntl.F_UNLCK and holder > 0:
                return holder
    return None


def processor_seconds(process):
    try:
        with open(f"/proc/{process}/schedstat", encoding="ascii") as file:
            return int(file.read().split()[0]) / 1e9
    except (OSError, ValueError):
        return 0.0


class Sampler(threading.Thread):
    """Looks at the memory of a process, and of one that it has started, until it has ended; in megabytes."""

    def __init__(self, process):
        super().__init__(daemon=True)
        self.process = process
        self.ended = threading.Event()
        self.own = 0.0
        self.peak = 0.0

    def run(self):
        while not self.ended.wait(SAMPLE_SECONDS):
            self.look(self.process)
            try:
                with open(f"/proc/{self.process}/task/{self.process}/children", encoding="ascii") as file:
                    for child in file.read().split():
                        self.look(child)
            except OSError:
                return

    def look(self, process):
        try:
            with open(f"/proc/{process}/status", encoding="ascii", errors="replace") as file:
                found = dict(line.split(":", 1) for line in file if line.startswith(("RssAnon:", "VmHWM:")))
        except OSError:
            return
        self.own = max(self.own, int(found.get("RssAnon", "0").split()[0]) / 1024)
        self.peak = max(self.peak, int(found.get("VmHWM", "0").split()[0]) / 1024)


def highest(usage, sampled):
    """A process that has not used much seems to have used what its parent had: what was sampled is right then, 0 when it ended
    before the first look."""
    counted = usage.ru_maxrss / 1024
    own_floor = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    return counted if counted > own_floor else sampled


def text_of(file):
    file.seek(0)
    return file.read().decode(errors="replace")


def measure(command, environment=None, prefix=None):
    """Runs a command to its end. The last word that it prints is its result."""
    words = [str(word) for word in command]
    server = wine_server(prefix) if prefix else None
    server_before = processor_seconds(server) if server else 0.0
    started = time.perf_counter()
    # Files, not pipes: what a program of Windows has started in passing keeps a pipe open beyond its end.
    with tempfile.TemporaryFile() as printed, tempfile.TemporaryFile() as complaints:
        process = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=printed, stderr=complaints, env=environment,
                                   start_new_session=True)
        sampler = Sampler(process.pid)
        sampler.start()
        stopper = threading.Timer(LONGEST_RUN, lambda: os.killpg(process.pid, signal.SIGKILL))
        stopper.start()
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.perf_counter() - started
        stopper.cancel()
        sampler.ended.set()
        sampler.join()
        process.returncode = status
        said, complained = (text_of(file) for file in (printed, complaints))
    if status != 0:
        raise Failed(f"{' '.join(words)} failed (status {status}): {complained.strip()[-400:]}")
    return Usage(usage.ru_utime, usage.ru_stime, wall, processor_seconds(server) - server_before if server else 0.0,
                 highest(usage, sampler.peak), sampler.own, said.split()[-1] if said.strip() else "")
