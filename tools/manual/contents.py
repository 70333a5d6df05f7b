"""The order of the manual: its parts and their pages, as the menu and the help file's contents show them."""
import functools
import pathlib
import re

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"

# Title of the part, its pages relative to docs/ without ".md"; a "*" stands for the rest of a folder in alphabetical order.
_PARTS = (
    ("First steps", ("index", "howto/first-script", "howto/powershell", "howto/excel-vba", "howto/python", "howto/cpp")),
    ("Functions", ("functions", "functions/*")),
    ("Classes", ("classes", "classes/*")),
    ("Language and files", ("expressions", "formats", "text-files", "grid", "settings", "zurun")),
    ("How to", ("howto/32-bit-drivers", "howto/tables-in-use", "howto/repairing")),
    ("Messages", ("messages", "messages/*")),
    ("For developers", ("architecture", "decisions", "performance", "writing-an-engine", "adding-a-technology")),
)


@functools.cache
def parts():
    """[(title, [page name])], all pages of docs/, each once."""
    found, seen = [], set()
    for title, names in _PARTS:
        pages = []
        for name in names:
            if name.endswith("/*"):
                folder = sorted((DOCS / name[:-2]).glob("*.md"), key=lambda page: page.stem.lower())
                pages += [f"{name[:-2]}/{page.stem}" for page in folder]
            elif (DOCS / f"{name}.md").exists():
                pages.append(name)
        pages = [page for page in pages if not (page in seen or seen.add(page))]
        found.append((title, pages))
    return found


def pages():
    return [page for _, names in parts() for page in names]


def source(page):
    return (DOCS / f"{page}.md").read_text(encoding="utf-8")


@functools.cache
def title(page):
    return re.search(r"^# (.*)$", source(page), re.M).group(1).replace("`", "")
