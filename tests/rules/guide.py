"""Argument: the project's directory."""

import sys
from html.parser import HTMLParser
from pathlib import Path

RULE = "the guide is one page in each language, with the same sections, complete in itself and never from the network."
PAGES = ("index.html", "index.de.html", "index.es.html")
WITHOUT_END = {"meta"}


class Page(HTMLParser):
    def __init__(self, file):
        super().__init__()
        self.open, self.shape, self.links, self.faults = [], [], [], []
        self.feed(file.read_text(encoding="utf-8"))
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if tag not in WITHOUT_END:
            self.open.append(tag)
        if tag in ("section", "li", "tr", "p"):
            self.shape.append((tag, given.get("id")))
        if tag in ("script", "link", "img", "iframe", "object"):
            self.faults.append(f"<{tag}> loads something")
        if "href" in given:
            self.links.append(given["href"])

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.faults.append(f"line {self.getpos()[0]}: </{tag}> closes another")

    def handle_data(self, data):
        if "@import" in data or "url(" in data:
            self.faults.append("the style loads something")


def main():
    folder = Path(sys.argv[1]) / "resources" / "guide"
    found = []
    pages = {name: Page(folder / name) for name in PAGES}
    for name, page in pages.items():
        ids = {f"#{identifier}" for _, identifier in page.shape if identifier}
        found += [f"{name}: {fault}" for fault in page.faults]
        found += [f"{name}: {link} leads nowhere" for link in page.links if link not in ids and link not in PAGES]
        if page.shape != pages[PAGES[0]].shape:
            found.append(f"{name}: its sections, paragraphs or rows are not those of {PAGES[0]}")
    if found:
        sys.exit("\n".join(found) + f"\n\nThe rule: {RULE}")
    print(f"The rule is followed: {RULE}")


if __name__ == "__main__":
    main()
