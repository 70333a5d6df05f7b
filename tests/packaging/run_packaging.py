#!/usr/bin/python3
"""Makes the packages and tries them as a user would, in a Wine prefix of their own.

run_packaging.py --bin FOLDER --bin32 FOLDER --headers FOLDER --work FOLDER --results FILE [--help-file]
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import zipfile

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "packaging"), str(ROOT / "tests" / "scripts"), str(ROOT / "tests" / "docs"), str(ROOT / "tools")]

from harness.programs import run, windows_path  # noqa: E402
from harness.results import Results  # noqa: E402

import archive  # noqa: E402
import identity  # noqa: E402
import installer  # noqa: E402
import layout  # noqa: E402
import make  # noqa: E402
import pages  # noqa: E402
import registration  # noqa: E402
import wine_registry  # noqa: E402
from manual import chm, contents  # noqa: E402
from installed import Prefix  # noqa: E402

UNINSTALL = "software\\microsoft\\windows\\currentversion\\uninstall\\"
HOME = "C:\\Program Files\\ZuDBFFunctions"
HOME32 = "C:\\Program Files (x86)\\ZuDBFFunctions"
OLDER, NEWER = "0.0.9", identity.version()
# Name, arguments; {} is the folder of the sample tables.
SAMPLES = (
    ("first.vbs", "{}"), ("demo.vbs", "{}"), ("count.vbs", "{}\\orders", "PAID AND AMOUNT > 100"), ("fields.vbs", "{}\\customers"),
    ("lookup.js", "{}", "4711"), ("prices.vbs", "{}"), ("merge.vbs", "{}>customers", "{}>archive", "NOT ACTIVE"),
    ("tidy.js", "{}\\customers", "NOT ACTIVE AND CREDIT = 0", "ID"), ("text-files.vbs", "{}"))
# Those that open windows (tests/windows), need cscript (run apart), Excel, PowerShell, Python for Windows or a compiler; texts.
NOT_RUN = {"edit.vbs", "pick.vbs", "with-cscript.vbs", "UnpaidOrders.bas", "report.ps1", "report.py", "cpp/report.cpp", "README.md"}


class Packages:
    def __init__(self, options):
        self.options = options
        self.results = Results("packaging")
        self.group = ""

    def check(self, statement, faults):
        """`faults`: texts about what is wrong; none when the statement holds."""
        self.results.add(self.group, statement, "\n".join(map(str, list(faults)[:20])) or None)

    def msiexec(self, *arguments):
        outcome = run("msiexec", *arguments, "/qn", seconds=120)
        return [] if outcome.code == 0 and not outcome.timed_out else [f"msiexec {arguments}: {outcome.describe()}"]

    # --- the files themselves

    def make(self):
        self.group = "making"
        work = self.options.work
        self.items = make.collect(self.options.bin, self.options.bin32, self.options.headers, work, self.options.help_file)
        self.msi = installer.build(NEWER, self.items, work)
        self.zip = archive.build(NEWER, self.items, work)
        with zipfile.ZipFile(self.zip) as content:
            names = {name.split("/", 1)[1] for name in content.namelist()}
        self.check("the zip holds every file and the two scripts", names ^ ({i.place for i in self.items} | {"register.cmd", "unregister.cmd"}))
        before = self.zip.read_bytes()
        again = make.collect(self.options.bin, self.options.bin32, self.options.headers, self._fresh("again"), False)
        self.check("made twice, the packages hold the same bytes",
                   [i.place for i in again if i not in self.items] +
                   ([] if archive.build(NEWER, self.items, work).read_bytes() == before else ["another zip"]))
        if self.options.help_file:
            self.help_file()
        older = [item for item in self.items if not item.place.startswith("docs/")]
        older.append(layout.Item("docs/dropped later.txt", 64, b"was part of an older version"))
        self.older = installer.build(OLDER, older, self._fresh("older"))
        self.check("each version is a product of its own, of one family",
                   [] if identity.code("product", OLDER) != identity.code("product", NEWER) else ["the same product code"])
        for item in self.items:
            if item.place.endswith((".dll", ".exe")):
                self.check(f"{item.place} tells its version", self._version_faults(item))
        self.check("text files for Windows end their lines with CR LF",
                   [i.place for i in self.items if i.place.endswith((".vbs", ".cmd")) and i.content.count(b"\n") != i.content.count(b"\r\n")])

    def help_file(self):
        """What the compiled help file holds."""
        listing = subprocess.run(["chmls", "list", self.options.work / "chm" / chm.NAME], text=True, capture_output=True, check=True).stdout
        inside = set(re.findall(r"^\s*\d+\s+\d+\s+\d+\s+(\S+)$", listing, re.M))
        self.check("the help file has every page", {f"/{page}.html" for page in contents.pages()} - inside)
        self.check("and contents, index, full text search and help contexts",
                   {"/contents.hhc", "/terms.hhk", "/$FIftiMain", "/#IVB"} - inside)

    def _fresh(self, name):
        folder = self.options.work / name
        folder.mkdir(parents=True)
        return folder

    @staticmethod
    def _version_faults(item):
        name = item.place.rsplit("/", 1)[-1]
        for title, value in (("FileVersion", NEWER), ("ProductVersion", NEWER), ("ProductName", "ZuDBFFunctions"), ("OriginalFilename", name)):
            wide = (title + "\0").encode("utf-16-le")
            at = item.content.find(wide)
            text = item.content[at + len(wide):at + len(wide) + 80].decode("utf-16-le", "replace").lstrip("\0") if at >= 0 else ""
            if not text.startswith(value + "\0"):
                yield f"{title} is {text.split(chr(0))[0]!r}, expected {value!r}"

    # --- the DLLs' own registration, to compare with

    def register(self):
        self.group = "regsvr32"
        # Registers classes of its own when it is used first.
        run("cscript", "//nologo", windows_path(ROOT / "samples" / "with-cscript.vbs"))
        clean = self.prefix.registry()
        folder = self._fresh("self registered")
        for name in ("Zuengine.dll", "ZuDBFFunctions.dll"):
            shutil.copy(self.options.work / "bin" / name, folder / name)
        outcomes = [run("regsvr32", "/s", windows_path(folder / name)) for name in ("Zuengine.dll", "ZuDBFFunctions.dll")]
        self.check("the DLLs register themselves", [o.describe() for o in outcomes if o.code])
        own = wine_registry.added(clean, self.prefix.registry())
        self.own = {entry: value.replace(windows_path(folder), "<home>") for entry, value in own.items()}
        outcomes = [run("regsvr32", "/s", "/u", windows_path(folder / name)) for name in ("ZuDBFFunctions.dll", "Zuengine.dll")]
        self.check("and unregister", [o.describe() for o in outcomes if o.code])
        self.clean = self.prefix.registry()
        self.check("without a trace", wine_registry.added(clean, self.clean))
        self.clean_files = self.prefix.files()

    # --- the installer

    def install(self):
        self.group = "installer"
        self.check("an older version installs without questions", self.msiexec("/i", windows_path(self.older)))
        self.check("its files are there", [] if "Program Files/ZuDBFFunctions/docs/dropped later.txt" in self.prefix.files() else ["not there"])
        self.check("a newer version installs over it", self.msiexec("/i", windows_path(self.msi)))
        files = self.prefix.files() - self.clean_files
        expected = {f"Program Files (x86)/ZuDBFFunctions/{i.place[4:]}" if i.bits == 32 else f"Program Files/ZuDBFFunctions/{i.place}" for i in self.items}
        self.check("every file is in its place", sorted(expected - files))
        drive = self.prefix.folder / "drive_c"
        present = {file for file in files if (drive / file).is_file() and file.startswith("Program Files")}
        self.check("nothing of the older version is left", sorted(present - expected))
        self.check("the menu has the console, the manual and the samples",
                   {f"ZuDBFFunctions {name}.lnk" for name in ("Console", "Manual", "Samples")} - {os.path.basename(file) for file in files})
        added = wine_registry.added(self.clean, self.prefix.registry())
        entries = {key.split("\\")[0] for key in (e[len(UNINSTALL):] for e in added if e.startswith(UNINSTALL))}
        self.check("one product is listed", [] if len(entries) == 1 else [entries])
        self.check("with the newer version", [] if any(e.endswith("|displayversion") and v == NEWER for e, v in added.items()) else [added])
        self.compare(added)
        self.check("an older version does not replace a newer one", [] if self.msiexec("/i", windows_path(self.older)) else ["it was installed"])

    def compare(self, added):
        """The installer's rows beside what the DLLs write themselves."""
        rows = {e: v.replace(HOME32, "<home32>").replace(HOME, "<home>") for e, v in added.items() if e.startswith("software\\classes\\")}
        rows = {e: "<home>" if e.endswith("\\helpdir\\|") else v for e, v in rows.items()
                if not e.startswith("software\\classes\\installer\\")}
        # A key's own spelling is of no matter; values are compared to the letter.
        keys = lambda table: {e: "" if e.endswith("\\") else v for e, v in table.items()}  # noqa: E731
        rows, own = keys(rows), keys(self.own)
        self.check("the installer writes what the DLLs write themselves",
                   [f"{e} = {v!r}, the installer has {rows.get(e)!r}" for e, v in sorted(own.items()) if rows.get(e) != v])
        rest = {e: v for e, v in rows.items() if e not in own}
        twins = {}
        for entry, value in rest.items():
            twin = entry.replace("wow6432node\\", "").replace("\\win32\\", "\\win64\\")
            twins[entry] = own.get(twin) if twin != entry else None
        self.check("and beyond that only the same for 32-bit programs",
                   [f"{e} = {v!r} beside {twins[e]!r}" for e, v in sorted(rest.items()) if twins[e] is None or v.replace("<home32>", "<home>") != twins[e]])
        self.check("what both kinds of programs share is not taken away with the 32-bit part",
                   [entry for file in (registration.COMPONENT, registration.ENGINE) for entry in registration.entries(file, 32)
                    if not re.match(r"Software\\Classes\\((CLSID|Interface)\\|TypeLib\\\{.*\\0\\win32$)", entry.key)])
        self.check("32-bit programs find the 32-bit DLLs",
                   [] if rows.get("software\\classes\\wow6432node\\clsid\\{fd0150d8-e920-43cf-94bb-1e9a622f397a}\\inprocserver32\\|")
                   == "<home32>\\ZuDBFFunctions.dll" else sorted(e for e in rows if "wow6432node\\clsid" in e)[:5] or ["no such class"])

    def use(self, home):
        """What a user does first, from the given folder."""
        tables = self._fresh("tables of " + self.group)
        outcome = run(home + "\\zugenerate.exe", windows_path(tables))
        self.check("the sample tables can be made", [] if (tables / "orders.dbf").exists() else [outcome.describe()])
        outcome = run("cscript", "//nologo", home + "\\samples\\with-cscript.vbs", windows_path(tables / "orders.dbf"))
        self.check("a sample runs under cscript", [] if re.match(r"\d{5} records in ", outcome.out) else [outcome.describe()])
        outcome = run(home + "\\zurun.exe", home + "\\samples\\first.vbs", windows_path(tables))
        self.check("the first script runs with zurun", [] if outcome.code == 0 and re.match(r"\d{5} orders, \d{4} of them not paid", outcome.out) else [outcome.describe()])
        if home == HOME:
            self.samples(home, tables)
        outcome = run("cmd", "/c", home + "\\console.cmd", "once")
        self.check("the console says what can be done", [] if "zugenerate demo" in outcome.out else [outcome.describe()])

    def samples(self, home, tables):
        """Every sample that needs neither a user nor another program; those that change the tables last."""
        folder = windows_path(tables)
        self.first_script(home)
        known = {sample[0] for sample in SAMPLES} | NOT_RUN
        present = {item.place.removeprefix("samples/") for item in self.items if item.place.startswith("samples/")}
        self.check("every sample is run, or known not to be", known ^ present)
        installed = self.prefix.folder / "drive_c" / "Program Files" / "ZuDBFFunctions"
        program = self.options.work / "report.exe"
        compiled = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-std=c++17", "-municode", "-Wall", "-Wextra", "-isystem",
                                   installed / "include", installed / "samples" / "cpp" / "report.cpp", "-o", program, "-lole32",
                                   "-loleaut32", "-luuid", "-static"], text=True, capture_output=True, check=False)
        self.check("the C++ sample compiles without a warning against the installed headers", [compiled.stderr] if compiled.stderr else [])
        outcome = run(program, folder)
        lines = outcome.out.splitlines()
        self.check("and lists the orders", [] if outcome.code == 0 and lines and lines[0] == f"{len(lines) - 1} orders" and len(lines) > 1
                   else [outcome.describe()])
        outcome = run(program, folder + "\\nowhere")
        self.check("and says why it cannot", [] if outcome.code == 1 and "nowhere" in outcome.err else [outcome.describe()])
        for name, *arguments in SAMPLES:
            arguments = [argument.replace("{}", folder) for argument in arguments]
            outcome = run(home + "\\zurun.exe", f"{home}\\samples\\{name}", *arguments)
            self.check(f"the sample {name} runs", [] if outcome.code == 0 and outcome.out else [outcome.describe()])
        checked = subprocess.run([sys.executable, "-c", "import ast, sys; ast.parse(open(sys.argv[1]).read())", installed / "samples" / "report.py"],
                                 text=True, capture_output=True, check=False)
        self.check("the Python sample is well-formed", [checked.stderr] if checked.returncode else [])

    def first_script(self, home):
        """The page about the first script, word for word."""
        folder = self._fresh("first script")
        first, second = [block.code for block in pages.blocks((pages.DOCS / "howto" / "first-script.md").read_text()) if block.language == "vbscript"]
        outcome = run(home + "\\zugenerate.exe", "demo", folder=folder)
        page = (pages.DOCS / "howto" / "first-script.md").read_text()
        self.check("the page's first command makes the tables, and says so as the page does",
                   [] if outcome.code == 0 and outcome.out.strip() and outcome.out.strip() in page else [outcome.describe()])
        for name, script, expected in (("first.vbs", first, r"\d{5} orders, \d{4} of them not paid\s+\d+ \w+"),
                                       ("second.vbs", second, r"True, the customer has moved\s+\d+ orders get a note")):
            (folder / name).write_text(script)
            outcome = run(home + "\\zurun.exe", name, folder=folder)
            self.check(f"the page's script {name} does what the page says",
                       [] if outcome.code == 0 and not outcome.err and re.match(expected, outcome.out) else [outcome.describe()])
        outcome = run(home + "\\zurun.exe", "-e", 'Echo DbfCount("demo>orders", "AMONT > 9900")', folder=folder)
        self.check("a misspelt field is told as the page says", [] if outcome.err.strip() and outcome.err.strip() in page else [outcome.describe()])

    def uninstall(self):
        self.group = "uninstalling"
        self.check("it goes without questions", self.msiexec("/x", windows_path(self.msi)))
        now = self.prefix.registry()
        self.check("the registry is as before", list(wine_registry.added(self.clean, now).items()) + list(wine_registry.added(now, self.clean).items()))
        self.check("the files are as before", sorted(self.clean_files ^ self.prefix.files()))

    # --- the zip

    def unpack(self):
        self.group = "zip"
        folder = self._fresh("unpacked")
        with zipfile.ZipFile(self.zip) as content:
            content.extractall(folder)
        home = folder / f"ZuDBFFunctions-{NEWER}"
        outcome = run("cmd", "/c", windows_path(home / "register.cmd"))
        self.check("register.cmd registers both DLLs", [] if outcome.code == 0 and outcome.out.count("registered: ") == 2 else [outcome.describe()])
        self.use(windows_path(home))
        outcome = run("cmd", "/c", windows_path(home / "unregister.cmd"))
        self.check("unregister.cmd takes it back", [] if outcome.code == 0 and outcome.out.count("unregistered: ") == 2 else [outcome.describe()])
        self.check("the registry is as before", wine_registry.added(self.clean, self.prefix.registry()).items())
        (home / "Zuengine.dll").unlink()
        outcome = run("cmd", "/c", windows_path(home / "register.cmd"))
        self.check("register.cmd says which DLL it could not register",
                   [] if outcome.code == 1 and re.search(r"not registered: .*Zuengine\.dll", outcome.out) else [outcome.describe()])
        # The other one was, and the prefix serves the next run as well.
        run("cmd", "/c", windows_path(home / "unregister.cmd"))
        self.check("unregister.cmd takes back what there is", wine_registry.added(self.clean, self.prefix.registry()).items())

    def all(self):
        self.make()
        self.prefix = Prefix(self.options.work.parent / "packaging-prefix")
        try:
            self.register()
            self.install()
            self.use(HOME)
            self.uninstall()
            self.unpack()
        finally:
            run("cmd", "/c", "rem")
            self.prefix.close()
        if not self.results.failed:
            self.prefix.keep()
        return self.results.write(self.options.results)


def main():
    parser = argparse.ArgumentParser()
    for folder in ("--bin", "--bin32", "--headers", "--work", "--results"):
        parser.add_argument(folder, type=pathlib.Path, required=True)
    parser.add_argument("--help-file", action="store_true", help="compile the help file too")
    options = parser.parse_args()
    shutil.rmtree(options.work, ignore_errors=True)
    options.work.mkdir(parents=True)
    return Packages(options).all()


if __name__ == "__main__":
    sys.exit(main())
