"""From the Markdown of docs/ to HTML."""
import re

import markdown

from . import contents

# A page that is linked but not made into HTML, such as a sample, lies where it lies in the installed folder.
_LINK = re.compile(r'(href=")([^":#]*)\.md((?:#[^"]*)?")')


def _slug(text, separator):
    """The anchors that other readers of Markdown make, so that links work there and here."""
    return re.sub(r"[^\w\- ]", "", text.lower()).strip().replace(" ", separator)


def body(page):
    """The HTML of a page, with links to other pages as links to their HTML."""
    converter = markdown.Markdown(extensions=["tables", "fenced_code", "toc", "sane_lists"],
                                  extension_configs={"toc": {"slugify": _slug}})
    html = converter.convert(contents.source(page))
    html = html.replace('class="language-output"', 'class="output"')
    return _LINK.sub(r"\1\2.html\3", html)


def upwards(page):
    """The way from a page to the top of the pages: "" or "../"."""
    return "../" * page.count("/")
