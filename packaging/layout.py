"""What a user gets, and where each file lies in the installed folder and in the zip."""
import dataclasses
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[1]

PROGRAMS = ("ZuDBFFunctions.dll", "Zuengine.dll", "zurun.exe", "zugenerate.exe")
# For 32-bit programs: the DLLs, and a runner that shows them at work.
PROGRAMS_32 = ("ZuDBFFunctions.dll", "Zuengine.dll", "zurun.exe")
# Windows' own editors and its command interpreter want these lines to end with CR LF.
_TEXT = {".cmd", ".vbs", ".js", ".ps1", ".bas", ".py", ".cpp", ".txt", ".md", ".h", ".wsf"}


@dataclasses.dataclass(frozen=True)
class Item:
    """A file of the package: its place relative to the installed folder, whether it is for 32-bit programs, and its bytes."""
    place: str  # with "/"
    bits: int
    content: bytes


def _bytes(file):
    content = file.read_bytes()
    if file.suffix in _TEXT:
        content = content.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")
    return content


def _header(file):
    """A header as the interface compiler made it, without the folder in which it did."""
    first, _, rest = _bytes(file).partition(b"\r\n")
    return re.sub(rb"from \S*?([^/\s]+\.idl)", rb"from \1", first) + b"\r\n" + rest


def _tree(folder, place):
    for file in sorted(path for path in folder.rglob("*") if path.is_file() and "__pycache__" not in path.parts):
        yield Item(f"{place}/{file.relative_to(folder).as_posix()}", 64, _bytes(file))


def items(programs, programs32, headers, web, help_file):
    """The files of both packages, sorted by place.

    programs, programs32: folders of the stripped programs; headers: folder of the C++ headers; web: folder of the web pages;
    help_file: the compiled help file, or None where it was not built.
    """
    found = [Item(name, 64, _bytes(programs / name)) for name in PROGRAMS]
    found += [Item(f"x86/{name}", 32, _bytes(programs32 / name)) for name in PROGRAMS_32]
    found += [Item(name, 64, _bytes(ROOT / "packaging" / name)) for name in ("console.cmd", "README.txt")]
    found += _tree(web, "docs")
    for file in sorted(path for path in (ROOT / "samples").rglob("*") if path.is_file()):
        inner = file.relative_to(ROOT / "samples")
        if inner.parts[0] != "generator" and inner.name != "CMakeLists.txt" and "__pycache__" not in inner.parts:
            found.append(Item(f"samples/{inner.as_posix()}", 64, _bytes(file)))
    found += [Item(f"include/{file.name}", 64, _header(file)) for file in sorted(headers.glob("*.h"))]
    if help_file:
        found.append(Item("zuRefbk.chm", 64, help_file.read_bytes()))
    return sorted(found, key=lambda item: item.place)
