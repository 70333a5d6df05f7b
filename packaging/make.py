#!/usr/bin/python3
"""Makes the packages out of programs that are built already.

make.py --bin FOLDER --bin32 FOLDER --headers FOLDER --work FOLDER [--version N] [--without-help-file]

Leaves ZuDBFFunctions-VERSION.msi and ZuDBFFunctions-VERSION.zip in the work folder.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import archive  # noqa: E402
import identity  # noqa: E402
import installer  # noqa: E402
import layout  # noqa: E402

_STRIP = {64: "x86_64-w64-mingw32-strip", 32: "i686-w64-mingw32-strip"}


def _stripped(programs, bits, target):
    """Copies of the programs without symbols."""
    target.mkdir(parents=True)
    # Otherwise the time of stripping would be in the file.
    environment = dict(os.environ, SOURCE_DATE_EPOCH="0")
    for program in sorted(programs.iterdir()):
        if program.name in layout.PROGRAMS:
            subprocess.run([_STRIP[bits], "-o", target / program.name, program], env=environment, check=True)
    return target


def collect(programs, programs32, headers, work, help_file=True):
    """The files of the packages; what has to be made for them is made in the folder `work`."""
    from manual import site
    from manual import chm
    web = work / "web"
    site.build(web)
    compiled = chm.build(work / "chm") if help_file else None
    return layout.items(_stripped(programs, 64, work / "bin"), _stripped(programs32, 32, work / "bin32"), headers, web, compiled)


def main():
    parser = argparse.ArgumentParser()
    for folder in ("--bin", "--bin32", "--headers", "--work"):
        parser.add_argument(folder, type=pathlib.Path, required=True)
    parser.add_argument("--version", default=identity.version())
    parser.add_argument("--without-help-file", action="store_true")
    options = parser.parse_args()
    shutil.rmtree(options.work, ignore_errors=True)
    options.work.mkdir(parents=True)
    items = collect(options.bin, options.bin32, options.headers, options.work, not options.without_help_file)
    for built in (installer.build(options.version, items, options.work), archive.build(options.version, items, options.work)):
        print(f"{built} ({built.stat().st_size / 1e6:.1f} MB)")


if __name__ == "__main__":
    sys.exit(main())
