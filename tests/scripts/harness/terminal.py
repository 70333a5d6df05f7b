"""Running a program on a terminal, with somebody who reads it and presses keys."""
import fcntl
import os
import pty
import re
import select
import struct
import termios
import time

from .programs import LAUNCHER

CONTROL = re.compile(rb"\x1b\[[0-9;?]*[A-Za-z]|\x1b\][^\x07]*\x07")


def run_on_terminal(program, *arguments, keys=(), rows=12, columns=70, folder=None, environment=None, seconds=60):
    """Answers the exit code (None: it did not end in time) and what the terminal received, as bytes.

    `keys` are pairs: a text to wait for, and the key to press then.
    """
    process, terminal = pty.fork()
    if process == 0:
        try:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
            os.chdir(folder or ".")
            os.execve(str(LAUNCHER), [str(LAUNCHER), str(program), *arguments],
                      dict(os.environ, TERM="xterm", **(environment or {})))
        finally:
            os._exit(127)
    received, begin, waiting = b"", 0, list(keys)
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        ready, _, _ = select.select([terminal], [], [], 0.1)
        if ready:
            try:
                piece = os.read(terminal, 65536)
            except OSError:
                piece = b""
            if not piece:
                break
            received += piece
        if waiting and waiting[0][0].encode() in received[begin:]:
            begin = len(received)
            os.write(terminal, waiting.pop(0)[1].encode())
    else:
        os.kill(process, 9)
    _, status = os.waitpid(process, 0)
    os.close(terminal)
    code = os.waitstatus_to_exitcode(status)
    return (None if code < 0 else code), received


def without_controls(received):
    """The text alone, without colours and movements of the cursor."""
    return CONTROL.sub(b"", received).decode("utf-8", "replace").replace("\r\n", "\n")
