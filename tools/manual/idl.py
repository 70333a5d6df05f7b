"""What idl/ says: interfaces, classes and libraries. Reads the part of the interface language that this project uses."""
import dataclasses
import functools
import pathlib
import re

FOLDER = pathlib.Path(__file__).resolve().parents[2] / "idl"

_ATTRIBUTES = r"\[((?:\"[^\"]*\"|[^\"\]])*)\]"
_STRING = re.compile(r'"([^"]*)"')


@dataclasses.dataclass
class Parameter:
    name: str
    type: str  # "BSTR", "VARIANT*", "ZuDataView**", "SAFEARRAY(VARIANT)*"
    attributes: list

    @property
    def optional(self):
        return "optional" in self.attributes

    @property
    def default(self):
        """The text of the default value, None when there is none."""
        for attribute in self.attributes:
            if attribute.startswith("defaultvalue("):
                return attribute[len("defaultvalue("):-1]
        return None


@dataclasses.dataclass
class Member:
    name: str
    kind: str  # "method", "propget", "propput", "propputref"
    help: str
    context: int
    hidden: bool
    parameters: list  # without the result
    result: str  # type of the result, "" when there is none


@dataclasses.dataclass
class Interface:
    name: str
    id: str
    help: str
    dispatch_only: bool
    members: list

    def member(self, name):
        return next(member for member in self.members if member.name == name)


@dataclasses.dataclass
class Enumeration:
    name: str
    help: str
    values: list  # (name, number)


@dataclasses.dataclass
class Class:
    name: str
    id: str
    help: str
    default: str  # name of its default interface


@dataclasses.dataclass
class Library:
    name: str
    id: str
    version: str
    help: str
    help_file: str
    interfaces: list
    classes: list


def _split(text):
    """The attributes or parameters between commas, those inside parentheses, brackets and quotes left whole."""
    parts, depth, quoted, start = [], 0, False, 0
    for place, sign in enumerate(text):
        if sign == '"':
            quoted = not quoted
        elif not quoted and sign in "([":
            depth += 1
        elif not quoted and sign in ")]":
            depth -= 1
        elif sign == "," and not depth and not quoted:
            parts.append(text[start:place].strip())
            start = place + 1
    last = text[start:].strip()
    return parts + [last] if last else parts


def _attribute(attributes, name, otherwise=""):
    for attribute in attributes:
        if attribute.startswith(name + "("):
            inner = attribute[len(name) + 1:-1].strip()
            # Adjacent literals are one text.
            return "".join(_STRING.findall(inner)) if inner.startswith('"') else inner
    return otherwise


def _parameter(text):
    match = re.match(_ATTRIBUTES + r"\s*(.+?)\s*(\w+)$", text, re.S)
    return Parameter(match.group(3), re.sub(r"\s+", " ", match.group(2)), _split(match.group(1)))


def _member(match):
    attributes = _split(match.group(1))
    parameters = [_parameter(part) for part in _split(match.group(3))]
    result = next((p.type[:-1] for p in parameters if "retval" in p.attributes), "")
    kind = next((a for a in attributes if a.startswith("prop")), "method")
    return Member(match.group(2), kind, _attribute(attributes, "helpstring"),
                  int(_attribute(attributes, "helpcontext", "0")), "hidden" in attributes,
                  [p for p in parameters if "retval" not in p.attributes], result)


_MEMBER = re.compile(_ATTRIBUTES + r"\s*(?:HRESULT|void)\s+(\w+)\((.*?)\);", re.S)


def _text(file):
    return re.sub(r"//[^\n]*", "", file.read_text())


@functools.cache
def interfaces():
    """{name: Interface} of all files, in their order."""
    found = {}
    for file in sorted(FOLDER.glob("*.idl")):
        for match in re.finditer(_ATTRIBUTES + r"\s*(interface|dispinterface) (\w+)[^{;]*\{(.*?)\n\s*\};?", _text(file), re.S):
            attributes = _split(match.group(1))
            found[match.group(3)] = Interface(
                match.group(3), _attribute(attributes, "uuid"), _attribute(attributes, "helpstring"),
                match.group(2) == "dispinterface", [_member(member) for member in _MEMBER.finditer(match.group(4))])
    return found


@functools.cache
def enumerations():
    found = []
    for file in sorted(FOLDER.glob("*.idl")):
        for match in re.finditer(_ATTRIBUTES + r"\s*typedef enum (\w+) \{(.*?)\}", _text(file), re.S):
            values = [(name, int(number)) for name, number in re.findall(r"(\w+) = (-?\d+)", match.group(3))]
            found.append(Enumeration(match.group(2), _attribute(_split(match.group(1)), "helpstring"), values))
    return found


@functools.cache
def libraries():
    """The type libraries, by name."""
    found = {}
    for file in sorted(FOLDER.glob("*.idl")):
        match = re.search(_ATTRIBUTES + r"\s*library (\w+) \{(.*)\}", _text(file), re.S)
        if not match:
            continue
        attributes, name, body = _split(match.group(1)), match.group(2), match.group(3)
        classes = [Class(c.group(2), _attribute(_split(c.group(1)), "uuid"), _attribute(_split(c.group(1)), "helpstring"),
                         re.search(r"\[default\]\s*(?:interface|dispinterface) (\w+)", c.group(3)).group(1))
                   for c in re.finditer(_ATTRIBUTES + r"\s*coclass (\w+) \{(.*?)\}", body, re.S)]
        named = re.findall(r"^\s*interface (\w+);", body, re.M) + re.findall(r"\bdispinterface (\w+)\s*\{", body)
        found[name] = Library(name, _attribute(attributes, "uuid"), _attribute(attributes, "version"),
                              _attribute(attributes, "helpstring"), _attribute(attributes, "helpfile"),
                              [interfaces()[n] for n in named], classes)
    return found
