"""The installer: its source in the language of wixl, and what wixl leaves out."""
import os
import pathlib
import re
import subprocess
import xml.etree.ElementTree as xml

import identity
import registration

_NAME = "ZuDBFFunctions"
_MAKER = "ZuDBFFunctions"
_ENGLISH = "1033"
# Menu entries: file or folder in the package, name, what it says.
_SHORTCUTS = (
    ("zuRefbk.chm", "ZuDBFFunctions Help", "The manual"),
    ("docs/index.html", "ZuDBFFunctions Manual", "The manual as web pages"),
    ("console.cmd", "ZuDBFFunctions Console", "A command prompt with zurun at hand"),
    ("samples", "ZuDBFFunctions Samples", "Scripts to start from"),
)


def _identifier(*parts):
    """A name for a row of the installer's tables: letters, digits, underscores and points, not longer than 72 signs."""
    text = re.sub(r"[^A-Za-z0-9_.]", "_", "_".join(parts))
    return text if len(text) <= 64 else text[:40] + identity.code(*parts)[1:24].replace("-", "")


def _child(parent, name, **attributes):
    return xml.SubElement(parent, name, {key.rstrip("_"): str(value) for key, value in attributes.items()})


class _Folders:
    """The folders of the installation, each once."""

    def __init__(self, root, main, main32):
        self._known = {(64, ""): main, (32, ""): main32}
        self.root = root

    def at(self, bits, place):
        if (bits, place) not in self._known:
            parent, _, name = place.rpartition("/")
            self._known[bits, place] = _child(self.at(bits, parent), "Directory", Id=_identifier("dir", str(bits), place), Name=name)
        return self._known[bits, place]


def _register(component, file, bits):
    """The registry rows of a DLL; references into the installer's tables become its paths there."""
    key = f"[#{_identifier('file', str(bits), file)}]"
    # The help file lies beside the 64-bit DLLs alone.
    for entry in registration.entries(file, bits):
        value = entry.value.replace("{file}", key).replace("\\{folder}", "").replace("{folder}", "[INSTALLDIR]")
        row = _child(component, "RegistryValue", Root="HKLM", Key=entry.key, Type="string", Value=value)
        if entry.name:
            row.set("Name", entry.name)


def _component(folder, features, bits, *names):
    name = _identifier("c", str(bits), *names)
    component = _child(folder, "Component", Id=name, Guid=identity.code("component", str(bits), *names))
    component.set("Win64", "yes" if bits == 64 else "no")
    _child(features[bits], "ComponentRef", Id=name)
    return component


def source(number, items):
    """The installer's source, for files that lie below the folder `staged` beside it under their places."""
    root = xml.Element("Wix", xmlns="http://schemas.microsoft.com/wix/2006/wi")
    product = _child(root, "Product", Id=identity.code("product", number), Name=_NAME, Version=number, Language=_ENGLISH,
                     Codepage="1252", Manufacturer=_MAKER, UpgradeCode=identity.UPGRADE_CODE)
    _child(product, "Package", InstallerVersion=200, Compressed="yes", InstallScope="perMachine", Description="Table functions for scripts",
           Comments=f"{_NAME} {number}", Manufacturer=_MAKER)
    _child(product, "MajorUpgrade", DowngradeErrorMessage=f"A newer version of {_NAME} is installed already.")
    _child(product, "Media", Id=1, Cabinet="files.cab", EmbedCab="yes")
    _child(product, "Property", Id="ARPCOMMENTS", Value="Table functions for scripts")
    # A folder that was chosen once is the folder of later versions too.
    place = _child(product, "Property", Id="INSTALLDIR")
    _child(place, "RegistrySearch", Id="chosen_folder", Root="HKLM", Key=f"Software\\{_NAME}", Name="Folder", Type="raw", Win64="yes")

    target = _child(product, "Directory", Id="TARGETDIR", Name="SourceDir")
    main = _child(_child(target, "Directory", Id="ProgramFiles64Folder"), "Directory", Id="INSTALLDIR", Name=_NAME)
    main32 = _child(_child(target, "Directory", Id="ProgramFilesFolder"), "Directory", Id="INSTALLDIR32", Name=_NAME)
    menu = _child(_child(target, "Directory", Id="ProgramMenuFolder"), "Directory", Id="MENU", Name=_NAME)
    folders = _Folders(target, main, main32)

    feature = _child(product, "Feature", Id="Main", Title=_NAME, Level=1, Absent="disallow", Description="Component, engine, zurun, manual, samples")
    feature32 = _child(product, "Feature", Id="For32Bit", Title="For 32-bit programs", Level=1,
                       Description="The same DLLs for 32-bit programs, such as older Office versions")
    features = {64: feature, 32: feature32}

    menu_component = _component(menu, features, 64, "menu")
    _child(menu_component, "RegistryValue", Root="HKLM", Key=f"Software\\{_NAME}", Name="Folder", Type="string", Value="[INSTALLDIR]", KeyPath="yes")
    _child(menu_component, "RegistryValue", Root="HKLM", Key=f"Software\\{_NAME}", Name="Version", Type="string", Value=number)
    _child(menu_component, "RemoveFolder", Id="remove_menu", On="uninstall")

    places = {item.place for item in items}
    for place, title, description in _SHORTCUTS:
        if place in places:
            leads_to = f"[#{_identifier('file', '64', place)}]"
        elif any(item.startswith(place + "/") for item in places):
            leads_to = f"[{_identifier('dir', '64', place)}]"
        else:
            continue
        _child(menu_component, "Shortcut", Id=_identifier("menu", place), Directory="MENU", Name=title, Description=description,
               Target=leads_to, WorkingDirectory="INSTALLDIR")

    for item in items:
        # The zip keeps the 32-bit files in a folder of the same tree, Windows keeps them in the other tree of programs.
        inner = item.place.removeprefix("x86/") if item.bits == 32 else item.place
        folder, _, name = inner.rpartition("/")
        component = _component(folders.at(item.bits, folder), features, item.bits, inner)
        _child(component, "File", Id=_identifier("file", str(item.bits), inner), Name=name, Source="staged/" + item.place, KeyPath="yes")
        if name in (registration.COMPONENT, registration.ENGINE):
            _register(component, name, item.bits)
    xml.indent(root)
    return xml.tostring(root, encoding="unicode", xml_declaration=True)


def build(number, items, work):
    """Makes the installer in the folder `work` and answers its path."""
    staged = work / "staged"
    for item in items:
        file = staged / item.place
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(item.content)
        os.utime(file, (0, 0))
    script = work / "installer.wxs"
    script.write_text(source(number, items))
    result = work / f"{_NAME}-{number}.msi"
    result.unlink(missing_ok=True)
    # wixl looks for files below its current folder.
    subprocess.run(["wixl", "--arch", "x64", "-o", result.name, script.name], cwd=work, check=True)
    # wixl draws a package code, and keeps no versions of programs, which Windows compares when files are there already.
    subprocess.run(["msibuild", result, "-s", _NAME, _MAKER, "x64;1033", identity.package_code(number, items)], check=True)
    for item in items:
        if pathlib.PurePath(item.place).suffix in (".dll", ".exe"):
            key = _identifier("file", str(item.bits), item.place.removeprefix("x86/") if item.bits == 32 else item.place)
            statement = f"UPDATE `File` SET `Version`='{number}.0', `Language`='{_ENGLISH}' WHERE `File`='{key}'"
            subprocess.run(["msibuild", result, "-q", statement], check=True)
    return result
