"""A Wine prefix of its own in which packages are installed, and what can be seen of it: registry and files."""
import os
import pathlib
import shutil
import subprocess

import wine_registry

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"

# Wine's own bookkeeping, which changes with every start, and what it leaves of a product that is gone.
_RESTLESS = ("software\\microsoft\\windows\\currentversion\\installer\\userdata\\", "system\\currentcontrolset\\",
             "software\\microsoft\\windows nt\\currentversion\\profilelist", "hardware\\", "software\\wine\\",
             "software\\microsoft\\windows nt\\currentversion\\time zones", "software\\microsoft\\windows\\currentversion\\runonce")


# Keys that stay when what was below them is gone.
_CONTAINERS = {"software\\classes\\installer", "software\\classes\\installer\\features", "software\\classes\\installer\\products",
               "software\\classes\\installer\\upgradecodes", "software\\classes\\wow6432node\\interface", "software\\classes\\wow6432node\\clsid",
               "software\\microsoft\\windows\\currentversion\\installer\\upgradecodes"}


class Prefix:
    """Programs run in it through tools/wine-run, which reads ZU_WINEPREFIX. It is kept for the next time unless something
    went wrong in it."""

    def __init__(self, folder):
        self.folder = folder
        self._in_use = folder / "in use"
        if self._in_use.exists():
            shutil.rmtree(folder)
        os.environ["ZU_WINEPREFIX"] = str(folder)
        self._quietly("source tools/wine-env; ZuPrefix")
        self._in_use.touch()

    def _quietly(self, script):
        subprocess.run(["bash", "-c", script], cwd=TOOLS.parent, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=400, check=False)

    def keep(self):
        """Says that the prefix is as clean as it was."""
        self._in_use.unlink()

    def close(self):
        """Ends the Wine server of this prefix alone, which writes the registry."""
        self._quietly("source tools/wine-env; wineserver -k; wineserver -w")

    def registry(self):
        """The machine's registry, without what changes by itself."""
        self.close()
        keys = wine_registry.read(self.folder / "system.reg")
        return {key: values for key, values in keys.items() if not key.lower().startswith(_RESTLESS) and key.lower() not in _CONTAINERS}

    def files(self):
        """All files of the programs' folders, the menu and the installer's store, relative to the drive."""
        drive = self.folder / "drive_c"
        found = set()
        for top in ("Program Files", "Program Files (x86)", "ProgramData", "windows/Installer", "users"):
            if (drive / top).exists():
                found |= {str(path.relative_to(drive)) for path in (drive / top).rglob("*") if "Temp" not in path.parts}
        return found
