"""The manual as a compiled help file, zuRefbk.chm, which the type library names."""
import html
import pathlib
import shutil
import subprocess

from . import contents, idl, render, site, terms

NAME = "zuRefbk.chm"

# The viewer of help files knows little of today's HTML: no menu, plain colours, characters beyond ASCII as references.
_PAGE = """<html>
<head>
<meta http-equiv="Content-Type" content="text/html; charset=iso-8859-1">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="{up}help.css">
</head>
<body>
{body}
</body>
</html>
"""
_STYLE = """body { font: 10pt Verdana, sans-serif; margin: 12px; }
h1 { font-size: 16pt; } h2 { font-size: 12pt; border-bottom: 1px solid #c0c0c0; }
pre, code { font: 9pt Consolas, "Courier New", monospace; } pre { background: #f3f3f3; border: 1px solid #c0c0c0; padding: 6px; }
table { border-collapse: collapse; } th, td { border: 1px solid #c0c0c0; padding: 3px 6px; text-align: left; vertical-align: top; font-size: 9pt; }
"""
_LIST = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html>
<head><meta name="GENERATOR" content="ZuDBFFunctions"></head>
<body>
{}
</body>
</html>
"""


def contexts():
    """{help context of a function in the type library: its page}."""
    return {member.context: f"functions/{member.name}" for member in idl.interfaces()["_Functions"].members if member.context}


def _ascii(text):
    return text.encode("ascii", "xmlcharrefreplace").decode()


def _object(name, page=None):
    local = f'<param name="Local" value="{page}.html">' if page else ""
    return f'<li><object type="text/sitemap"><param name="Name" value="{html.escape(name)}">{local}</object>'


def _contents():
    lines = ["<ul>"]
    for title, names in contents.parts():
        lines += [_object(title), "<ul>", *(_object(contents.title(name), name) for name in names), "</ul>"]
    return _LIST.format("\n".join([*lines, "</ul>"]))


def _keywords():
    lines = [_object(term if len(places) == 1 else f"{term} ({title})", page) for term, places in terms.terms().items()
             for title, page in places]
    return _LIST.format("\n".join(["<ul>", *lines, "</ul>"]))


def _project(files):
    options = {"Compatibility": "1.1 or later", "Compiled file": NAME, "Contents file": "contents.hhc", "Index file": "terms.hhk",
               "Default topic": "index.html", "Title": "ZuDBFFunctions", "Full-text search": "Yes", "Binary TOC": "No",
               "Binary Index": "Yes", "Display compile progress": "No", "Language": "0x409 English (United States)"}
    lines = ["[OPTIONS]", *(f"{name}={value}" for name, value in options.items()), "", "[FILES]", *files, "", "[ALIAS]"]
    lines += [f"{page.split('/')[-1]}={page}.html" for page in contexts().values()]
    lines += ["", "[MAP]", *(f"#define {page.split('/')[-1]} {number}" for number, page in contexts().items()), ""]
    return "\n".join(lines)


def write_sources(folder):
    """The help project with its pages."""
    folder.mkdir(parents=True)
    files = []
    for page in [*contents.pages(), site.INDEX]:
        # The viewer shows no SVG; each such picture lies beside it as PNG.
        body = site.index_body() if page == site.INDEX else render.body(page).replace('.svg"', '.png"')
        title = "Index" if page == site.INDEX else contents.title(page)
        target = folder / f"{page}.html"
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(_ascii(_PAGE.format(title=html.escape(title), up=render.upwards(page), body=body)), encoding="ascii")
        files.append(f"{page}.html")
    (folder / "help.css").write_text(_STYLE)
    shutil.copytree(contents.DOCS / "pictures", folder / "pictures")
    files += ["help.css", *sorted(str(pathlib.PurePosixPath("pictures", file.name)) for file in (folder / "pictures").glob("*.png"))]
    (folder / "contents.hhc").write_text(_ascii(_contents()), encoding="ascii")
    (folder / "terms.hhk").write_text(_ascii(_keywords()), encoding="ascii")
    (folder / "help.hhp").write_text(_ascii(_project(files)), encoding="ascii")
    return files


def build(folder):
    """Compiles the help file in `folder` and answers its path. Throws when it was not made."""
    write_sources(folder)
    result = folder / NAME
    run = subprocess.run(["chmcmd", "help.hhp"], cwd=folder, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, check=False)
    if not result.exists():
        raise RuntimeError(f"chmcmd left no {NAME}:\n{run.stdout}")
    return result
