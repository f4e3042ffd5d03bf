#!/usr/bin/env python3
"""Holds the page of --html against the JSON document of the same run, and looks at it in Chromium.

usage: page_test.py BXVBWIZ      Exit code 77: there is no Chromium to look at it with; the rest is well.
"""
import html.parser
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

repository = pathlib.Path(__file__).resolve().parents[2]
bxvbwiz = pathlib.Path(sys.argv[1]).resolve()
labels = {"fileLinkPath": "Source", "destination": "Destination", "symbol": " = ", "selfRegisterName": "Registration",
          "fileGroup": "File group", "component": "Component"}


class Page(html.parser.HTMLParser):
    """The elements of a page in their order, each with its attributes, what it is in, and its text."""

    def __init__(self, text):
        super().__init__()
        self.elements, self.open = [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        self.elements.append({"tag": tag, "outer": list(self.open), "text": "", "class": "", **dict(attributes)})
        if tag not in ("meta", "br", "input"):
            self.open.append(self.elements[-1])

    def handle_endtag(self, tag):
        assert self.open.pop()["tag"] == tag, f"</{tag}> ends nothing"

    def handle_data(self, data):
        for element in self.open:
            element["text"] += data

    def all(self, name):
        return [element for element in self.elements if name in (element["tag"], *element["class"].split())]


def is_shown(element):
    around = [*element["outer"], element]
    folded = [inner for outer, inner in zip(around, around[1:]) if outer["tag"] == "details" and "open" not in outer]
    return all("hidden" not in outer for outer in around) and all(inner["tag"] == "summary" for inner in folded)


def names(nodes):
    return [name for node in nodes for name in (node["text"], *names(node["children"]))]


def run(project, machine, *options):
    return subprocess.run([bxvbwiz, "analyse", project, "--machine", machine, "--yes", *options], capture_output=True)


def check_page(project, machine, file):
    document = json.loads(run(project, machine, "--json", "--html", file).stdout)
    assert run(project, machine, "--html", "-").stdout == file.read_bytes(), "standard output has another page"
    page = Page(file.read_text(encoding="utf-8"))
    nodes = [node["text"] for node in page.all("name") if not any(outer["class"] == "file" for outer in node["outer"])]
    assert nodes == names(document["projectView"] + document["fileGroupView"]), "the trees are not the document's"
    found = [item for item in page.all("li") if item["outer"][-1].get("id") == "findings"]
    for kind, elements in (("findings", found), ("files", page.all("file"))):
        assert len(document[kind]) == len(elements), f"{kind} are missing, or there are too many"
        for entry, element in zip(document[kind], elements):
            for name, part in ((name, part) for name, part in entry.items() if not isinstance(part, bool)):
                texts = part if isinstance(part, list) else [labels.get(name, "") + str(part)]
                assert all(text in element["text"] for text in texts), f"{kind}: {texts} is missing"
    ids = [element["id"] for element in page.elements if "id" in element]
    links = page.all("a")
    assert len(ids) == len(set(ids)) and all(link["href"][1:] in ids for link in links), "a link leads nowhere"
    assert all(link["outer"][-1] in found for link in links[:len(found)]), "a finding leads nowhere"
    assert not page.all("i") + page.all("img") and len(page.all("script")) == 1, "a name became an element"


def look(file, place):
    command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={file}.profile",
               "--enable-logging=stderr", "--dump-dom", f"{file.as_uri()}#{place}"]
    browser = subprocess.run(command, capture_output=True, text=True, timeout=120)
    assert browser.returncode == 0 and "CONSOLE" not in browser.stderr, browser.stderr
    return Page(browser.stdout)


with tempfile.TemporaryDirectory() as folder:
    work = pathlib.Path(folder)
    japanese, demo, file = work / "japanese", work / "demo", work / "page.html"
    subprocess.run([repository / "tests/golden/run.sh", "--lay-out", "code-page-932", japanese], check=True)
    check_page("C:\\Src\\受注表\\受注表.vbp", japanese, file)
    subprocess.run([repository / "demo/lay_out.sh", demo, bxvbwiz.parent], check=True, stdout=subprocess.DEVNULL)
    project = demo / "drive_c/Projects/OrderDesk/OrderDesk.vbp"
    odd = "Object={1}#1.0#0; Größe's<img src=x onerror=alert(1)>&amp;\"<i>.ocx\r\n"
    project.write_bytes(project.read_bytes().replace(b"Module=", odd.encode("cp1252") + b"Module="))
    before = sorted((path, path.stat().st_mtime_ns) for path in demo.rglob("*"))
    check_page(project, demo, file)
    os.mkfifo(work / "pipe")
    for place in (work, work / "none/page.html", work / "pipe"):
        assert run(project, demo, "--html", place).returncode == 1, f"a page was written to {place}"
    refused = run("none.vbp", demo, "--html", "-")
    assert refused.returncode == 3 and b"no file none.vbp" in refused.stdout, "what could not be begun has no page"
    assert before == sorted((path, path.stat().st_mtime_ns) for path in demo.rglob("*")), "the machine was changed"

    if not shutil.which("chromium"):
        sys.exit(77)
    page = look(file, "q=CHART")
    hits = page.all("hit")
    assert all(map(is_shown, hits)), "a hit is left out or folded"
    assert hits and page.all("output")[0]["text"] == f"{len(hits)} hits", "hits are not counted"
    leaves = [name for name in page.all("name") if name["text"].endswith((".ocx", ".dll"))]
    assert all(is_shown(leaf) == ("chart" in leaf["text"].lower()) for leaf in leaves), "not the hits are shown"
    assert [card["id"] for card in look(file, "f3").all("file") if "open" in card] == ["f3"], "a link opens its file"
