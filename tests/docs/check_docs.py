#!/usr/bin/python3
"""Checks that the manual is whole: every function, class, member and message has its page, the pages agree with the type
libraries, no link leads nowhere, and the pages become HTML and a help project.

check_docs.py --work FOLDER --results FILE
"""
import argparse
import html.parser
import pathlib
import re
import shutil
import sys
import urllib.parse

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tests" / "scripts"), str(ROOT / "tools")]

from harness.results import Results  # noqa: E402
from manual import chm, contents, idl, site, terms  # noqa: E402

import pages  # noqa: E402

DOCS = pages.DOCS
TYPES = {"VARIANT": "any", "BSTR": "text", "LONG": "number", "VARIANT_BOOL": "True or False", "ZuDataView": "view", "ZuDataField": "field",
         "_ZuDbfControl": "ZuDbfControl", "SAFEARRAY(VARIANT)": "array"}
# Interfaces that a page of another name describes.
PAGE_OF = {"_ZuParserEvents": "ZuParser"}


def default_on_page(parameter):
    """What the column of defaults says for a parameter."""
    if not parameter.optional:
        return "required"
    if parameter.default is None:
        return "-"
    if parameter.type == "VARIANT_BOOL":
        return {"0": "`False`", "-1": "`True`"}[parameter.default]
    return f"`{parameter.default}`"


def messages():
    """{code: text} of the engine's catalogue."""
    header = (ROOT / "host/engine/MessageCatalogue.h").read_text()
    codes = dict(re.findall(r"(\w+) = 0x([0-9A-F]{8})", header))
    body = (ROOT / "host/engine/MessageCatalogue.cpp").read_text()
    texts = re.findall(r'\{MessageCode::(\w+),\s*L"((?:[^"\\]|\\.)*)"\}', body)
    return {codes[name]: text.replace('\\"', '"') for name, text in texts}, set(codes.values())


def functions(check):
    members = idl.interfaces()["_Functions"].members
    overview = (DOCS / "functions.md").read_text()
    check("there are 32 functions", [] if len(members) == 32 else [len(members)])
    present = {page.stem for page in (DOCS / "functions").glob("*.md")}
    check("every function has a page, and every page a function", {m.name for m in members} ^ present)
    for member in members:
        page = DOCS / "functions" / f"{member.name}.md"
        text = page.read_text() if page.exists() else ""
        rows = pages.table(text, "Parameters")
        expected = [[f"`{p.name}`", TYPES[p.type.replace("*", "").strip()], default_on_page(p)] for p in member.parameters]
        check(f"{member.name}: parameters and defaults are those of the type library",
              [f"the page has {row[:3]}, the type library {want}" for row, want in zip(rows, expected) if row[:3] != want] +
              ([] if len(rows) == len(expected) else [f"{len(rows)} rows for {len(expected)} parameters"]))
        headings = set(re.findall(r"^## (.*)$", text, re.M))
        languages = {block.language for block in pages.blocks(text) if block.section == "Syntax"}
        check(f"{member.name}: purpose, syntax in both languages, result, failure and example are there",
              ({"Syntax", "Parameters", "Result", "Failure", "Example"} - headings) | ({"vbscript", "js"} - languages))
        check(f"{member.name} is in the overview", [] if f"(functions/{member.name}.md)" in overview else ["not there"])


def classes(check):
    for interface in idl.interfaces().values():
        name = PAGE_OF.get(interface.name, interface.name.lstrip("_"))
        page = DOCS / "classes" / f"{name}.md"
        text = page.read_text() if page.exists() else ""
        members = {member.name for member in interface.members if not member.hidden}
        listed = {re.match(r"\[?`(\w+)", row).group(1) for row in re.findall(r"^\| (\[?`\w+[^|]*)", text, re.M) if re.match(r"\[?`(\w+)", row)}
        check(f"the page of {interface.name} has all its members", members - listed if text else ["there is no page"])
    for enumeration in idl.enumerations():
        page = DOCS / "classes" / f"{enumeration.name}.md"
        rows = {(row[0].strip("`"), int(row[1])) for row in pages.table(page.read_text() if page.exists() else "", "Members")}
        check(f"the page of {enumeration.name} has its numbers", set(enumeration.values) ^ rows)
    linked = set(re.findall(r"\(classes/(\w+)\.md\)", (DOCS / "classes.md").read_text()))
    check("every page of a class is in the overview", linked ^ {page.stem for page in (DOCS / "classes").glob("*.md")})


def catalogue(check):
    texts, codes = messages()
    check("every code of the catalogue was found", codes ^ set(texts))
    overview = (DOCS / "messages.md").read_text()
    check("every message has a page, and every page a message", codes ^ {page.stem for page in (DOCS / "messages").glob("*.md")})
    for code, text in texts.items():
        page = DOCS / "messages" / f"{code}.md"
        check(f"the page of 0x{code} has its text", [] if page.exists() and f"> {text}\n" in page.read_text() else [text])
        check(f"0x{code} is in the overview", [] if f"| {text} |" in overview else [text])


def numbers(check):
    """Every number under which an error can come is explained on the overview of the messages."""
    system = {"E_INVALIDARG": "80070057", "E_ACCESSDENIED": "80070005", "E_NOTIMPL": "80004001", "E_ABORT": "80004004",
              "E_UNEXPECTED": "8000FFFF", "E_FAIL": "80004005", "E_OUTOFMEMORY": "8007000E", "STG_E_FILENOTFOUND": "80030002",
              "STG_E_FILEALREADYEXISTS": "80030050", "STG_E_LOCKVIOLATION": "80030021", "STG_E_MEDIUMFULL": "80030070",
              "STG_E_READFAULT": "8003001E", "STG_E_DOCFILECORRUPT": "80030109", "STG_E_NOTCURRENT": "80030101",
              "DISP_E_UNKNOWNNAME": "80020006"}
    own = {}
    for file in ("com/ComError.h", "com/ComError.cpp", "idl/FailureReasons.h"):
        own |= dict(re.findall(r"(k\w+) = static_cast<HRESULT>\(0x([0-9A-F]{8})\)", (ROOT / file).read_text()))
    del own["kInvalidFriendCall"]  # no function of scripts leads there
    returned = re.findall(r"return (?:PublishUtf8\()?([EDS]\w+|k\w+)\b", (ROOT / "com/ComError.cpp").read_text())
    faults = {name for name in returned if name not in own and name not in system and name not in ("S_OK",)}
    check("every number of an error has its meaning in the list", faults)
    listed = {row[0] for row in pages.table((DOCS / "messages.md").read_text(), "Numbers of other errors")}
    listed = set(re.findall(r"0x([0-9A-F]{8})", " ".join(listed)))
    check("every number of an error is on the page of the messages, and none that is not there",
          (set(own.values()) | set(system.values())) ^ listed)


def settings(check):
    source = (ROOT / "host/engine/Settings.cpp").read_text() + (ROOT / "host/engine/Settings.h").read_text()
    known = set(re.findall(r'"((?:Data|Numbers|Log)\.\w+)"', source))
    listed = set(re.findall(r"^\| `((?:Data|Numbers|Log)\.\w+)` \|", (DOCS / "settings.md").read_text(), re.M))
    check("every setting is in the manual, and none that is not there", known ^ listed if known else ["no setting was found in the sources"])


def links(check):
    for page in [*pages.all_pages(), ROOT / "README.md", ROOT / "CONTRIBUTING.md", ROOT / "samples" / "README.md"]:
        faults = []
        for target in re.findall(r"\]\(([^)\s]+)\)", pages.without_code(page.read_text(encoding="utf-8"))):
            if re.match(r"[a-z]+:", target):
                continue
            name, _, anchor = target.partition("#")
            file = (page.parent / urllib.parse.unquote(name)).resolve() if name else page
            if not file.exists():
                faults.append(f"{target} is not there")
            elif anchor and anchor not in pages.anchors(file.read_text(encoding="utf-8")):
                faults.append(f"{target}: no such heading")
        check(f"the links of {page.relative_to(ROOT)} lead somewhere", faults)


class _Links(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.targets, self.anchors = [], set()

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.targets += [values[name] for name in ("href", "src") if name in values]
        self.anchors |= {values["id"]} if "id" in values else set()


def web(check, work):
    site.build(work / "web")
    listed = set(contents.pages())
    check("every page is in the menu", {str(p.relative_to(DOCS).with_suffix("")) for p in pages.all_pages()} ^ listed)
    read = {}
    for file in sorted((work / "web").rglob("*.html")):
        read[file] = _Links()
        read[file].feed(file.read_text(encoding="utf-8"))
    faults = []
    for file, content in read.items():
        for target in content.targets:
            name, _, anchor = target.partition("#")
            if re.match(r"[a-z]+:", target):
                continue
            place = (file.parent / name).resolve() if name else file
            outside = (work / "web") not in place.parents and place != work / "web"
            # The samples lie beside the pages in the installed folder.
            if outside and (ROOT / place.relative_to(work)).exists():
                continue
            if not place.exists():
                faults.append(f"{file.relative_to(work)}: {target}")
            elif anchor and place in read and anchor not in read[place].anchors:
                faults.append(f"{file.relative_to(work)}: {target} (no such place)")
    check("the links of the web pages lead somewhere", faults)
    check("the index has every function and every class",
          {m.name for m in idl.interfaces()["_Functions"].members} | {p.stem for p in (DOCS / "classes").glob("*.md") if p.stem not in ("ZuProject", "ZuParser")}
          if not terms.terms() else
          {m.name for m in idl.interfaces()["_Functions"].members} - set(terms.terms()))


def help_project(check, work):
    files = chm.write_sources(work / "chm")
    project = (work / "chm" / "help.hhp").read_text()
    check("every file of the help project is there", [file for file in files if not (work / "chm" / file).exists()])
    mapped = {name: int(number) for name, number in re.findall(r"#define (\w+) (\d+)", project)}
    expected = {m.name: m.context for m in idl.interfaces()["_Functions"].members}
    check("the help contexts of the type library lead to the pages of the functions",
          set(mapped.items()) ^ set(expected.items()) |
          {name for name in expected if f"{name}=functions/{name}.html" not in project})
    check("the help file has the name in the type library", [] if idl.libraries()["ZuDBFFunctions"].help_file == chm.NAME else [chm.NAME])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--results", type=pathlib.Path, required=True)
    options = parser.parse_args()
    work = options.work.resolve()
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    results = Results("docs")

    def checker(group):
        return lambda statement, faults: results.add(group, statement, "\n".join(sorted(map(str, faults))) or None)

    functions(checker("functions"))
    classes(checker("classes"))
    catalogue(checker("messages"))
    numbers(checker("messages"))
    settings(checker("settings"))
    links(checker("links"))
    web(checker("web"), work)
    help_project(checker("help"), work)
    return results.write(options.results)


if __name__ == "__main__":
    sys.exit(main())
