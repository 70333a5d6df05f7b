"""profile.py COMMAND...: where a program under Wine spends its time, function by function: perf with the names of our programs and DLLs.

COMMAND is that of a program in ZU_BENCH_WINDOWS (build/x64), for example
    python3 bench/profile.py zurun bench/scripts/work.vbs export-delimited 1 build/bench/1000000/orders.dbf build/out.txt
perf (Debian: linux-perf) knows nothing of PE files; the addresses are looked up in their symbol tables here. DLLs stand at the
address that they were linked for, which Wine keeps where it is free.
"""
import bisect
import collections
import pathlib
import subprocess
import sys

from harness.surroundings import WINDOWS, Wine, windows_path

SHOWN = 45
SYMBOLS = "x86_64-w64-mingw32-nm"


def functions():
    """(addresses, names) of all functions of our files."""
    found = []
    for file in [*WINDOWS.glob("*.dll"), *WINDOWS.glob("z*.exe")]:
        printed = subprocess.run([SYMBOLS, "-C", file], check=True, stdout=subprocess.PIPE, text=True).stdout
        for line in printed.splitlines():
            address, kind, name = (line.split(" ", 2) + ["", ""])[:3]
            if address and kind in ("t", "T") and not name.startswith(".") and int(address, 16) > 0x10000:
                found.append((int(address, 16), name, file.name))
    found.sort()
    return [entry[0] for entry in found], [f"{entry[2]:18} {entry[1]}" for entry in found]


def main():
    wine = Wine()
    program, arguments = sys.argv[1], sys.argv[2:]
    words = [windows_path(pathlib.Path(word).absolute()) if "/" in word else word for word in arguments]
    data = WINDOWS / "perf.data"
    subprocess.run(["perf", "record", "-q", "-F", "1999", "-e", "cpu-clock", "-o", data, wine.loader, WINDOWS / f"{program}.exe", *words],
                   env=wine.environment, check=True)
    samples = subprocess.run(["perf", "script", "-i", data, "-F", "ip,sym,dso"], check=True, stdout=subprocess.PIPE, text=True).stdout
    data.unlink()
    addresses, names = functions()
    counts = collections.Counter()
    for sample in samples.splitlines():
        address, _, rest = sample.strip().partition(" ")
        place = int(address, 16)
        near = bisect.bisect(addresses, place) - 1
        known = not rest.startswith("[unknown]")
        kernel = place >> 63
        if kernel:
            counts["kernel             " + rest.split(" (")[0].split("+")[0]] += 1
        elif not known and 0 <= near and place - addresses[near] < 0x8000:
            counts[names[near]] += 1
        else:
            counts["other              " + rest.replace("[unknown] ", "")] += 1
    total = sum(counts.values())
    groups = collections.Counter()
    for name, number in counts.items():
        groups[name.split(" ", 1)[0]] += number
    print(f"{total} samples: " + ", ".join(f"{group} {number / total:.0%}" for group, number in groups.most_common()))
    for name, number in counts.most_common(SHOWN):
        print(f"{number / total:7.1%}  {name[:150]}")


main()
