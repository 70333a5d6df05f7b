"""The machine's registry as Wine keeps it between two runs of its server: a text file that can be compared."""
import re

_VALUE = re.compile(r'^(@|"(?:[^"\\]|\\.)*")=(.*)$')
_ESCAPE = re.compile(r'\\(?:x([0-9a-fA-F]{1,4})|(.))')


def _plain(text):
    """The text behind Wine's escapes."""
    return _ESCAPE.sub(lambda m: chr(int(m.group(1), 16)) if m.group(1) else m.group(2), text)


def read(file):
    """{key: {value name: text as it stands in the file}}, in the case of the file; "" is a key's default value."""
    keys = {}
    current = None
    for line in file.read_text(encoding="latin-1").replace("\\\n  ", "").splitlines():
        if line.startswith("["):
            current = keys.setdefault(_plain(line[1:line.rindex("]")]), {})
        elif current is not None:
            match = _VALUE.match(line)
            if match:
                name = "" if match.group(1) == "@" else _plain(match.group(1)[1:-1])
                current[name] = _plain(match.group(2))
    return keys


def lines(keys):
    """One comparable entry for each key and each value, without regard to the case of names."""
    entries = {}
    for key, values in keys.items():
        entries[key.lower() + "\\"] = key
        for name, value in values.items():
            entries[f"{key.lower()}\\|{name.lower()}"] = value.strip('"')
    return entries


def added(before, after):
    """The entries of `after` that `before` does not have, or has with another content."""
    old = lines(before)
    return {entry: value for entry, value in lines(after).items() if old.get(entry) != value}
