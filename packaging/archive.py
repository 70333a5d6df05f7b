"""The zip for those who do not install: the same files, and the two scripts that register them."""
import zipfile

from layout import ROOT

_SCRIPTS = ("register.cmd", "unregister.cmd")
# Every file gets the same time, so that the same files make the same archive.
_TIME = (2026, 1, 1, 0, 0, 0)


def build(number, items, work):
    """Makes the zip in the folder `work` and answers its path."""
    result = work / f"ZuDBFFunctions-{number}.zip"
    files = {item.place: item.content for item in items}
    for name in _SCRIPTS:
        files[name] = (ROOT / "packaging" / name).read_bytes().replace(b"\n", b"\r\n")
    with zipfile.ZipFile(result, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for place in sorted(files):
            entry = zipfile.ZipInfo(f"ZuDBFFunctions-{number}/{place}", _TIME)
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, files[place])
    return result
