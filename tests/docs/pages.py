"""The pages of docs/: their code blocks, tables and links."""
import dataclasses
import pathlib
import re

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"

_FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.M | re.S)


@dataclasses.dataclass
class Block:
    language: str
    code: str
    section: str  # heading above it
    start: int  # place of the code in the page
    end: int


def all_pages():
    return sorted(DOCS.rglob("*.md"))


def blocks(text):
    found = []
    for match in _FENCE.finditer(text):
        headings = re.findall(r"^#+ (.*)$", _FENCE.sub("", text[:match.start()]), re.M)
        found.append(Block(match.group(1), match.group(2), headings[-1] if headings else "", match.start(2), match.end(2)))
    return found


def without_code(text):
    return re.sub(r"`[^`\n]*`", "", _FENCE.sub("", text))


def table(text, heading):
    """The rows of the first table under a heading, as lists of cells."""
    section = re.search(rf"^## {re.escape(heading)}\n(.*?)(?=^## |\Z)", text, re.M | re.S)
    if not section:
        return []
    rows = [line for line in section.group(1).splitlines() if line.startswith("|")]
    return [[cell.strip() for cell in re.split(r"(?<!\\)\|", row.strip().strip("|"))] for row in rows[2:]]


def slug(heading):
    """The anchor of a heading, as readers of Markdown make it."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r"[^\w\- ]", "", text).strip().replace(" ", "-")


def anchors(text):
    return {slug(heading) for heading in re.findall(r"^#+ (.*)$", _FENCE.sub("", text), re.M)}
