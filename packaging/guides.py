#!/usr/bin/env python3
"""The guides in docs/ as one HTML site and as the single page from which the PDF is made.

guides.py VERSION DATE DOCS_FOLDER CHANGELOG OUT_FOLDER PAGE

OUT_FOLDER gets a page for each guide, the pictures and index.html; PAGE is the whole for the printer.
Needs python3-markdown and python3-pygments.
"""

import base64
import html
import pathlib
import re
import shutil
import sys

import markdown
from pygments.formatters import HtmlFormatter

# In the order of reading; a guide that is not named comes last.
GROUPS = [
    ("For programmers of hosts", ["host_guide", "operations", "settings_file", "wire_protocol",
                                  "glossary"]),
    ("At the machine", ["users_guide", "k7host", "troubleshooting", "trace"]),
    ("How the driver does it", ["architecture", "behaviour", "performance", "reliability",
                                 "building"]),
]
HERE = pathlib.Path(__file__).resolve().parent


class Guide:
    def __init__(self, name, text):
        self.name, self.text = name, text
        self.title = re.search(r"^# (.*)$", text, re.M)[1]
        self.body = self.toc = ""


def groups(folder, changelog):
    """The guides that are there, by group."""
    left = {path.stem: Guide(path.stem, path.read_text()) for path in sorted(folder.glob("*.md"))}
    left["k7host"] = Guide("k7host", (folder.parent / "host" / "README.md").read_text())
    found = []
    for title, names in GROUPS:
        found.append((title, [left.pop(name) for name in names if name in left]))
    found.append(("More", list(left.values()) + [Guide("changelog", changelog.read_text())]))
    return found


def to_html(guide, names, one_page):
    """The guide as HTML. Links to other guides lead to their pages, or to their part of the one page;
    a link to a source, which is not there, becomes its text."""
    text = re.sub(r"^<!--.*?-->\n", "", guide.text, flags=re.M)
    converter = markdown.Markdown(
        extensions=["tables", "fenced_code", "codehilite", "sane_lists", "toc"],
        extension_configs={"codehilite": {"guess_lang": False},
                           "toc": {"slugify": lambda value, _: re.sub(
                               r"[^\w]+", "-", value.lower()).strip("-")}})
    body = converter.convert(text)

    def link(match):
        target, words = match[1], match[2]
        if re.match(r"https?:|mailto:", target):
            return match[0]
        path, _, anchor = target.partition("#")
        path = path.replace("host/README.md", "k7host.md")
        name = pathlib.PurePosixPath(path).stem.lower() if path else guide.name
        if name not in names or "src/" in path:
            return words
        if one_page:
            return f'<a href="#{name}{"--" + anchor if anchor else ""}">{words}</a>'
        return f'<a href="{name}.html{"#" + anchor if anchor else ""}">{words}</a>'

    body = re.sub(r'<a href="([^"]*)">(.*?)</a>', link, body, flags=re.S)
    if one_page:
        body = re.sub(r'<(h[1-6]) id="([^"]*)"', rf'<\1 id="{guide.name}--\2"', body)
        body = body.replace(f'<h1 id="{guide.name}--', f'<h1 class="guide" data-id="', 1)
        body = f'<section id="{guide.name}">{body}</section>'
    return body


def page(title, version, navigation, body):
    return f"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>{html.escape(title)} - K7 Driver {version}</title>
<meta name="viewport" content="width=device-width"><link rel="stylesheet" href="style.css"></head>
<body><nav><p class="name"><a href="index.html">K7 Driver {version}</a></p>{navigation}</nav>
<main>{body}</main></body></html>
"""


def navigation(found, current):
    parts = []
    for title, guides in found:
        items = "".join(f'<li{" class=here" if g.name == current else ""}>'
                        f'<a href="{g.name}.html">{html.escape(g.title)}</a></li>' for g in guides)
        parts.append(f"<p>{title}</p><ul>{items}</ul>")
    return "".join(parts) + '<p>Reference</p><ul><li><a href="../api/index.html">Interface</a></li></ul>'


def write_site(found, version, docs, out):
    out.mkdir(parents=True)
    shutil.copytree(docs / "images", out / "images")
    style = (HERE / "style.css").read_text() + HtmlFormatter(style="default").get_style_defs(".codehilite")
    (out / "style.css").write_text(style + "\n")
    names = {guide.name for _, guides in found for guide in guides}
    for _, guides in found:
        for guide in guides:
            body = to_html(guide, names, False)
            (out / f"{guide.name}.html").write_text(
                page(guide.title, version, navigation(found, guide.name), body))
    listing = "".join(
        f"<h2>{title}</h2><ul>" +
        "".join(f'<li><a href="{g.name}.html">{html.escape(g.title)}</a></li>' for g in guides) + "</ul>"
        for title, guides in found)
    (out / "index.html").write_text(page("Guides", version, navigation(found, ""),
                                         f"<h1>Guides to K7 Driver {version}</h1>{listing}"))


def embed(body, docs):
    """The pictures put into the page itself: their paths would get into the PDF."""
    kinds = {".png": "image/png", ".svg": "image/svg+xml"}

    def data(match):
        file = docs / match[1]
        return f'src="data:{kinds[file.suffix]};base64,{base64.b64encode(file.read_bytes()).decode()}"'
    return re.sub(r'src="([^":]+)"', data, body)


def write_page(found, version, date, docs, out):
    names = {guide.name for _, guides in found for guide in guides}
    contents, bodies = [], []
    for title, guides in found:
        contents.append(f"<p>{title}</p><ul>" + "".join(
            f'<li><a class="entry" href="#{g.name}">{html.escape(g.title)}</a></li>' for g in guides) + "</ul>")
        bodies += [to_html(guide, names, True) for guide in guides]
    style = ((HERE / "style.css").read_text() + (HERE / "print.css").read_text() +
             HtmlFormatter(style="default").get_style_defs(".codehilite"))
    out.write_text(embed(f"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>K7 Driver {version}: guides</title>
<meta name="dcterms.created" content="{date}"><meta name="dcterms.modified" content="{date}">
<style>{style}</style></head>
<body><section class="cover"><h1>K7 Driver {version}</h1><p>Guides</p>
<img src="images/settings-plain.png" alt=""></section>
<section class="contents"><h1>Contents</h1>{"".join(contents)}</section>{"".join(bodies)}</body></html>
""", docs))


def main():
    version, date, docs, changelog, out, one = sys.argv[1:]
    docs = pathlib.Path(docs)
    found = groups(docs, pathlib.Path(changelog))
    write_site(found, version, docs, pathlib.Path(out))
    write_page(found, version, date, docs, pathlib.Path(one))


if __name__ == "__main__":
    main()
