"""Where things are, and what is there: build folders, the Wine prefix, the programs of others."""
import os
import pathlib
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
BENCH = ROOT / "bench"
SCRIPTS = BENCH / "scripts"
DATA = ROOT / "build" / "bench"
MODULES = ROOT / "build" / "bench-npm"
WINDOWS = pathlib.Path(os.environ.get("ZU_BENCH_WINDOWS", ROOT / "build" / "x64")) / "bin"
NATIVE = pathlib.Path(os.environ.get("ZU_BENCH_NATIVE", ROOT / "build" / "native")) / "bin"


def windows_path(path):
    """A path of this system as a program of Windows finds it."""
    return "Z:" + str(path).replace("/", "\\")


def has_duckdb():
    return bool(shutil.which("node")) and (MODULES / "node_modules" / "@duckdb" / "node-api").is_dir()


class Wine:
    """Wine as tools/wine-env sets it up, with a server that is running."""

    def __init__(self):
        script = f"source {ROOT}/tools/wine-env; ZuPrefix >&2 || exit 70; ZuServer; env -0; printf 'ZU_WINE=%s\\0' \"$ZU_WINE\""
        printed = subprocess.run(["bash", "-c", script], check=True, stdout=subprocess.PIPE, text=True).stdout
        self.environment = dict(entry.split("=", 1) for entry in printed.split("\0") if "=" in entry)
        self.environment["ZURUN_EOL"] = "lf"
        self.loader = self.environment["ZU_WINE"]
        self.prefix = self.environment["WINEPREFIX"]


class Screen:
    """A screen that nobody sees, for as long as the object is used in a with statement."""

    def __enter__(self):
        script = f"source {ROOT}/tools/wine-env; source {ROOT}/tools/display; ZuFonts; ZuDisplay || exit 70; echo $DISPLAY; read -r || true"
        self.holder = subprocess.Popen(["bash", "-c", script], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.display = self.holder.stdout.readline().strip()
        return self

    def __exit__(self, *_):
        self.holder.stdin.close()
        self.holder.wait()
