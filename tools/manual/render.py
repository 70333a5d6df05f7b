"""From the Markdown of docs/ to HTML."""
import posixpath
import re

import markdown

from . import contents

_LINK = re.compile(r'<a href="([^":#]+)(#[^"]*)?">(.*?)</a>', re.S)
_SHIPPED = "../samples/"


def _slug(text, separator):
    """The anchors that other readers of Markdown make, so that links work there and here."""
    return re.sub(r"[^\w\- ]", "", text.lower()).strip().replace(" ", separator)


def _link(page, match):
    """A link as it is right in the installed folder: to the HTML of a page, or to a sample; what is not there is text."""
    target, anchor, text = match.group(1), match.group(2) or "", match.group(3)
    place = posixpath.normpath(posixpath.join(posixpath.dirname(page), target))
    if place.endswith(".md") and place[:-3] in contents.pages():
        return f'<a href="{target[:-3]}.html{anchor}">{text}</a>'
    if place.startswith(_SHIPPED):
        return match.group(0)
    return text


def body(page):
    """The HTML of a page."""
    converter = markdown.Markdown(extensions=["tables", "fenced_code", "toc", "sane_lists"],
                                  extension_configs={"toc": {"slugify": _slug}})
    html = converter.convert(contents.source(page)).replace('class="language-output"', 'class="output"')
    return _LINK.sub(lambda match: _link(page, match), html)


def upwards(page):
    """The way from a page to the top of the pages: "" or "../"."""
    return "../" * page.count("/")
