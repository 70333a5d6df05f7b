"""The registry entries of the DLLs, as the installer writes them by its own tables.

The DLLs write the same ones when they register themselves (com/Registration.cpp); tests/packaging compares the two.
"""
import dataclasses
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tools"))
from manual import idl  # noqa: E402

# The automation marshaller, for interfaces with a vtable and for event interfaces.
_DUAL_MARSHALLER = "{00020424-0000-0000-C000-000000000046}"
_DISPATCH_MARSHALLER = "{00020420-0000-0000-C000-000000000046}"
# The library has an image on disk.
_LIBRARY_FLAGS = "8"

COMPONENT = "ZuDBFFunctions.dll"
ENGINE = "Zuengine.dll"

# Class of the type library: program identifier, description, file.
_CLASSES = {
    "Functions": ("ZuDBFFunctions.Functions", "Table functions for scripts", COMPONENT),
    "ZuDbRef": ("ZuDBFFunctions.ZuDbRef", "Reference to an open table", COMPONENT),
    "ZuDbfControl": ("ZuDBFFunctions.ZuDbfControl", "Import and export formats", COMPONENT),
    "ZuImportFormats": ("ZuDBFFunctions.ZuImportFormats", "Collection of import formats", COMPONENT),
    "ZuImportFormat": ("ZuDBFFunctions.ZuImportFormat", "Import format", COMPONENT),
    "ZuExportFormats": ("ZuDBFFunctions.ZuExportFormats", "Collection of export formats", COMPONENT),
    "ZuExportFormat": ("ZuDBFFunctions.ZuExportFormat", "Export format", COMPONENT),
    "Project": ("Zuengine.Zuproject", "Table engine for scripts", ENGINE),
    "Parser": ("ZuParser.Parser", "Expression of the table engine", ENGINE),
}
# Libraries of a file, in the order of their resources.
_LIBRARIES = {COMPONENT: ["ZuDBFFunctions"], ENGINE: ["Zuengine", "ZuDataViewInterface", "ZuParser"]}


@dataclasses.dataclass(frozen=True)
class Entry:
    """One value below HKEY_LOCAL_MACHINE. In `value` stand {file} and {folder} for the DLL and for its folder."""
    key: str
    name: str
    value: str


def _braced(text):
    return "{" + text.upper() + "}"


def _class_entries(library, item, file):
    identifier, description, owner = _CLASSES[item.name]
    if owner != file:
        return
    versioned, root = identifier + ".1", "Software\\Classes\\"
    for name in (versioned, identifier):
        yield Entry(root + name, "", description)
        yield Entry(f"{root}{name}\\CLSID", "", _braced(item.id))
    yield Entry(f"{root}{identifier}\\CurVer", "", versioned)
    key = f"{root}CLSID\\{_braced(item.id)}"
    yield Entry(key, "", description)
    yield Entry(key + "\\InprocServer32", "", "{file}")
    yield Entry(key + "\\InprocServer32", "ThreadingModel", "Apartment")
    yield Entry(key + "\\ProgID", "", versioned)
    yield Entry(key + "\\VersionIndependentProgID", "", identifier)
    yield Entry(key + "\\Version", "", library.version)
    yield Entry(key + "\\TypeLib", "", _braced(library.id))


def _library_entries(library, number, bits):
    key = f"Software\\Classes\\TypeLib\\{_braced(library.id)}\\{library.version}"
    yield Entry(key, "", library.help)
    yield Entry(f"{key}\\0\\win{bits}", "", "{file}" if number == 1 else "{file}\\" + str(number))
    yield Entry(key + "\\FLAGS", "", _LIBRARY_FLAGS)
    yield Entry(key + "\\HELPDIR", "", "{folder}")
    for interface in library.interfaces:
        key = "Software\\Classes\\Interface\\" + _braced(interface.id)
        marshaller = _DISPATCH_MARSHALLER if interface.dispatch_only else _DUAL_MARSHALLER
        yield Entry(key, "", interface.name)
        yield Entry(key + "\\ProxyStubClsid", "", marshaller)
        yield Entry(key + "\\ProxyStubClsid32", "", marshaller)
        yield Entry(key + "\\TypeLib", "", _braced(library.id))
        yield Entry(key + "\\TypeLib", "Version", library.version)


def _is_shared(entry):
    """True for a key that 64-bit and 32-bit programs see alike: names of classes, and libraries but for the place of their file."""
    inner = entry.key.removeprefix("Software\\Classes\\")
    return not inner.startswith(("CLSID\\", "Interface\\")) and not inner.endswith("\\0\\win32")


def entries(file, bits):
    """All entries of a DLL that is built for 64 or 32 bits.

    What both kinds of programs share belongs to the 64-bit DLL, which is always installed: otherwise it would go when only the
    part for 32-bit programs is removed.
    """
    found = []
    for number, name in enumerate(_LIBRARIES[file], 1):
        library = idl.libraries()[name]
        found += _library_entries(library, number, bits)
        for item in library.classes:
            found += _class_entries(library, item, file)
    return [entry for entry in found if bits == 64 or not _is_shared(entry)]
