"""The identifiers of the installer. They follow from names, so that the same product always gets the same ones."""
import hashlib
import re
import uuid

from layout import ROOT

_FAMILY = uuid.UUID("5a1d7f0e-4c53-4a0b-9a64-0d2b6f3c8e17")

# What all versions share: by it a newer one finds and replaces an older one. Never changes.
UPGRADE_CODE = "{3E4B7A52-8C1D-4F96-A0E7-6D52C9F1B384}"


def version():
    """The version of the project, from its one place."""
    return re.search(r"project\(ZuDBFFunctions VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text()).group(1)


def code(*parts):
    """The identifier that belongs to these names."""
    return "{" + str(uuid.uuid5(_FAMILY, "/".join(parts))).upper() + "}"


def package_code(number, items):
    """An identifier of exactly these files in this version."""
    digest = hashlib.sha256(number.encode())
    for item in items:
        digest.update(f"{item.place} {item.bits} {len(item.content)}\n".encode() + item.content)
    return code("package", digest.hexdigest())
