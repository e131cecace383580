"""The Python blocks of the pages, and what they print and draw.

Each ```python block of a page is run, in order and in one namespace for the page; a ```text block right behind it is
what it prints. Files that a block writes, such as pictures, go to the folder it is run in: `pictures/` here.

A comment line `<!-- digits of the catalogue's shapes -->` between the two says that better shapes change the digits:
the site shows what this build prints, and the page's own text must agree in its words, in how many numbers it has, and
in those with a decimal point to a tenth.

At a build the pages that show pictures or such digits are run, and a block that prints something else is a warning. By
hand:

    python docs/extensions/snippets.py             compare what all pages show with what they print
    python docs/extensions/snippets.py --write     write what they print into the pages
"""

from __future__ import annotations

import contextlib
import io
import os
import re
import sys
from dataclasses import dataclass
from pathlib import Path

DOCS = Path(__file__).resolve().parents[1]
PICTURES = DOCS / "pictures"
MARK = "<!-- digits of the catalogue's shapes -->"
BLOCK = re.compile(
    rf"^```python\n(?P<code>.*?)^```$(?:\n\n(?P<mark>{re.escape(MARK)}\n\n)?^```text\n(?P<shown>.*?)^```$)?",
    re.MULTILINE | re.DOTALL,
)
NUMBER = re.compile(r"-?\d+(?:\.\d+)?(?:e[-+]?\d+)?")
LOOSE = 0.1  # relative deviation of digits that follow the catalogue


@dataclass
class Snippet:
    line: int
    code: str
    shown: str | None  # None where the page shows no output
    span: tuple[int, int]
    marked: bool
    printed: str = ""

    def agrees(self) -> bool:
        """Whether the page shows what is printed; where the digits follow the catalogue, nearly."""
        shown = self.shown or ""
        if not self.marked or self.printed == shown:
            return self.printed == shown
        if NUMBER.sub("#", shown) != NUMBER.sub("#", self.printed):
            return False
        pairs = zip(NUMBER.findall(shown), NUMBER.findall(self.printed), strict=True)
        return all(abs(float(a) - float(b)) <= LOOSE * abs(float(b)) for a, b in pairs if "." in b)

    def text(self) -> str:
        """The block and what it prints, as a page has them."""
        mark = f"{MARK}\n\n" if self.marked else ""
        output = f"\n\n{mark}```text\n{self.printed}```" if self.printed else ""
        return f"```python\n{self.code}```{output}"


def pages() -> list[Path]:
    return sorted(page for page in DOCS.glob("*.md") if "```python\n" in page.read_text(encoding="utf-8"))


def snippets_of(page: Path) -> list[Snippet]:
    text = page.read_text(encoding="utf-8")
    return [
        Snippet(
            text.count("\n", 0, match.start()) + 2, match["code"], match["shown"], match.span(), bool(match["mark"])
        )
        for match in BLOCK.finditer(text)
    ]


def run(page: Path, folder: Path) -> list[Snippet]:
    """Run the blocks of a page in `folder`; an exception in one passes through with the page's line numbers."""
    with contextlib.suppress(ImportError):
        import matplotlib

        matplotlib.use("Agg")
        matplotlib.rc_file_defaults()
        matplotlib.rc_file(str(DOCS / "extensions" / "pictures.rc"))
    folder.mkdir(parents=True, exist_ok=True)
    snippets = snippets_of(page)
    names: dict[str, object] = {"__name__": "__main__"}
    back = Path.cwd()
    os.chdir(folder)
    try:
        for snippet in snippets:
            printed = io.StringIO()
            with contextlib.redirect_stdout(printed):
                exec(compile("\n" * (snippet.line - 1) + snippet.code, str(page), "exec"), names)
            snippet.printed = printed.getvalue()
    finally:
        os.chdir(back)
    return snippets


def differences(page: Path, folder: Path) -> list[str]:
    """One text for each block that does not print what the page shows."""
    return told(page, run(page, folder))


def told(page: Path, snippets: list[Snippet]) -> list[str]:
    return [
        f"{page.name}:{snippet.line}: shown\n{snippet.shown or ''}printed\n{snippet.printed}"
        for snippet in snippets
        if not snippet.agrees()
    ]


def rewritten(text: str, snippets: list[Snippet]) -> str:
    """The text of a page with what its blocks print now."""
    for snippet in reversed(snippets):
        begin, end = snippet.span
        text = text[:begin] + snippet.text() + text[end:]
    return text


def write(page: Path) -> None:
    page.write_text(rewritten(page.read_text(encoding="utf-8"), run(page, PICTURES)), encoding="utf-8")


def setup(app: object) -> dict[str, bool]:
    from sphinx.util import logging

    ran: dict[str, list[Snippet]] = {}

    def draw(_: object) -> None:
        for page in pages():
            text = page.read_text(encoding="utf-8")
            if "(pictures/" in text or MARK in text:
                ran[page.stem] = run(page, PICTURES)
                for difference in told(page, ran[page.stem]):
                    logging.getLogger(__name__).warning("a snippet prints something else: %s", difference)

    def show(_: object, name: str, source: list[str]) -> None:
        source[0] = rewritten(source[0], [snippet for snippet in ran.get(name, []) if snippet.marked])

    app.connect("builder-inited", draw)  # type: ignore[attr-defined]
    app.connect("source-read", show)  # type: ignore[attr-defined]
    return {"parallel_read_safe": True, "parallel_write_safe": True}


def main() -> int:
    if "--write" in sys.argv[1:]:
        for page in pages():
            write(page)
        return 0
    found = [text for page in pages() for text in differences(page, PICTURES)]
    print("\n".join(found), end="")
    return bool(found)


if __name__ == "__main__":
    raise SystemExit(main())
