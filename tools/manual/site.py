"""The manual as web pages: plain files that need no server and no script."""
import html
import shutil

from . import contents, render, terms

_PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title} - ZuDBFFunctions</title>
<link rel="stylesheet" href="{up}style.css">
</head>
<body>
<nav aria-label="Contents">
<p class="home"><a href="{up}index.html">ZuDBFFunctions</a></p>
{menu}
</nav>
<main>
{body}
<footer>{around}</footer>
</main>
</body>
</html>
"""

_STYLE = """:root { color-scheme: light dark; --ink: #1d2430; --paper: #fff; --soft: #f2f4f7; --line: #d5dae2; --link: #0b57a8; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #dde3ec; --paper: #14181f; --soft: #1e242e; --line: #363f4d; --link: #7db7f5; }
}
* { box-sizing: border-box; }
body { margin: 0; display: grid; grid-template-columns: 17rem minmax(0, 1fr); color: var(--ink); background: var(--paper);
  font: 16px/1.55 "Segoe UI", system-ui, sans-serif; }
a { color: var(--link); }
nav { height: 100vh; overflow-y: auto; position: sticky; top: 0; padding: 1rem 1.25rem; background: var(--soft);
  border-right: 1px solid var(--line); font-size: 14px; }
nav .home { font-weight: 600; margin: 0 0 .75rem; }
nav ul { list-style: none; margin: 0 0 .25rem; padding: 0 0 0 .75rem; }
nav summary { cursor: pointer; font-weight: 600; padding: .15rem 0; }
nav a { text-decoration: none; display: block; padding: .1rem 0; overflow-wrap: anywhere; }
nav a[aria-current] { font-weight: 600; color: var(--ink); }
main { padding: 1.5rem 2.5rem 3rem; max-width: 62rem; }
h1 { margin-top: 0; line-height: 1.2; }
h2 { margin-top: 2rem; border-bottom: 1px solid var(--line); padding-bottom: .2rem; }
code, pre { font: 14px/1.5 Consolas, "DejaVu Sans Mono", monospace; }
code { background: var(--soft); padding: .1em .25em; border-radius: 3px; }
pre { background: var(--soft); border: 1px solid var(--line); border-radius: 4px; padding: .75rem 1rem; overflow-x: auto; }
pre code { background: none; padding: 0; }
pre:has(code.output) { background: none; border-style: dashed; margin-top: -.5rem; }
table { border-collapse: collapse; display: block; overflow-x: auto; }
th, td { border: 1px solid var(--line); padding: .35rem .6rem; text-align: left; vertical-align: top; }
th { background: var(--soft); }
th:empty { padding: 0; }
img { max-width: 100%; height: auto; }
footer { margin-top: 3rem; padding-top: .75rem; border-top: 1px solid var(--line); display: flex; justify-content: space-between; gap: 1rem; }
@media (max-width: 50rem) {
  body { display: block; }
  nav { height: auto; max-height: 40vh; position: static; border-right: 0; border-bottom: 1px solid var(--line); }
  main { padding: 1rem; }
}
@media print { nav, footer { display: none; } body { display: block; } }
"""

INDEX = "terms"


def _menu(current):
    up, lines = render.upwards(current), []
    for title, names in contents.parts():
        opened = " open" if current in names else ""
        lines.append(f"<details{opened}><summary>{html.escape(title)}</summary><ul>")
        for name in names:
            mark = ' aria-current="page"' if name == current else ""
            lines.append(f'<li><a href="{up}{name}.html"{mark}>{html.escape(contents.title(name))}</a></li>')
        lines.append("</ul></details>")
    lines.append(f'<p><a href="{up}{INDEX}.html">Index</a></p>')
    return "\n".join(lines)


def _around(page):
    """Links to the pages before and behind."""
    order = contents.pages()
    if page not in order:
        return ""
    at, up = order.index(page), render.upwards(page)
    link = lambda name, text: f'<a href="{up}{name}.html">{text.format(html.escape(contents.title(name)))}</a>'  # noqa: E731
    before = link(order[at - 1], "&larr; {}") if at else "<span></span>"
    behind = link(order[at + 1], "{} &rarr;") if at + 1 < len(order) else "<span></span>"
    return before + behind


def index_body():
    """The index: all terms, each with the pages that hold it."""
    lines, letter = ["<h1>Index</h1>"], None
    for term, places in terms.terms().items():
        if term[:1].upper() != letter:
            if letter is not None:
                lines.append("</ul>")
            letter = term[:1].upper()
            lines.append(f"<h2>{html.escape(letter)}</h2>\n<ul>")
        links = ", ".join(f'<a href="{page}.html">{html.escape(title)}</a>' for title, page in places)
        lines.append(f"<li>{html.escape(term)}: {links}</li>" if len(places) > 1 or places[0][0] != term else f"<li>{links}</li>")
    return "\n".join(lines + ["</ul>"])


def build(folder):
    """Writes all pages below `folder`."""
    for page in [*contents.pages(), INDEX]:
        body = index_body() if page == INDEX else render.body(page)
        title = "Index" if page == INDEX else contents.title(page)
        target = folder / f"{page}.html"
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(_PAGE.format(title=html.escape(title), up=render.upwards(page), menu=_menu(page), body=body,
                                       around=_around(page)), encoding="utf-8")
    (folder / "style.css").write_text(_STYLE, encoding="utf-8")
    shutil.copytree(contents.DOCS / "pictures", folder / "pictures", dirs_exist_ok=True)
