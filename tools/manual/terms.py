"""The words under which a page is found in the index."""
import re

from . import contents

_HEADING = re.compile(r"^##+ (.*)$", re.M)
_ROW = re.compile(r"^\| `([^`]+)`", re.M)


def _plain(text):
    return re.sub(r"[`*\[\]]|\([^)]*\)", "", text).strip()


def terms():
    """{term: [(title of the page, page)]}, sorted without regard to case."""
    found = {}

    def add(term, page):
        places = found.setdefault(term, [])
        if (contents.title(page), page) not in places:
            places.append((contents.title(page), page))

    for page in contents.pages():
        add(_plain(contents.title(page)), page)
        text = re.sub(r"^```.*?^```$", "", contents.source(page), flags=re.M | re.S)
        if page.startswith("classes/"):
            for row in _ROW.findall(text):
                add(row.split("(")[0], page)
        elif page in ("settings", "expressions", "zurun"):
            for row in _ROW.findall(text):
                if re.match(r"-*[A-Za-z][\w.]+", row):
                    add(row.split("(")[0].strip(), page)
        if not page.startswith(("functions/", "messages/", "classes/")):
            for heading in _HEADING.findall(text):
                add(_plain(heading), page)
    return dict(sorted(found.items(), key=lambda item: item[0].lower()))
