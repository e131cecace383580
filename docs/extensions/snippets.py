"""The Python blocks of the pages, and what they print and draw.

Each ```python block of a page is run, in order and in one namespace for the page; a ```text block right behind it is
what it prints. Files that a block writes, such as pictures, go to the folder it is run in: `pictures/` here.

At a build the pages that show pictures are run, and a block that prints something else is a warning. By hand:

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
BLOCK = re.compile(r"^```python\n(?P<code>.*?)^```$(?:\n\n^```text\n(?P<shown>.*?)^```$)?", re.MULTILINE | re.DOTALL)


@dataclass
class Snippet:
    line: int
    code: str
    shown: str | None  # None where the page shows no output
    span: tuple[int, int]
    printed: str = ""


def pages() -> list[Path]:
    return sorted(page for page in DOCS.glob("*.md") if "```python\n" in page.read_text(encoding="utf-8"))


def snippets_of(page: Path) -> list[Snippet]:
    text = page.read_text(encoding="utf-8")
    return [
        Snippet(text.count("\n", 0, match.start()) + 2, match["code"], match["shown"], match.span())
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
    found = []
    for snippet in run(page, folder):
        shown = snippet.shown or ""
        if snippet.printed != shown:
            found.append(f"{page.name}:{snippet.line}: shown\n{shown}printed\n{snippet.printed}")
    return found


def write(page: Path) -> None:
    text = page.read_text(encoding="utf-8")
    for snippet in reversed(run(page, PICTURES)):
        begin, end = snippet.span
        output = f"\n\n```text\n{snippet.printed}```" if snippet.printed else ""
        text = f"{text[:begin]}```python\n{snippet.code}```{output}{text[end:]}"
    page.write_text(text, encoding="utf-8")


def setup(app: object) -> dict[str, bool]:
    from sphinx.util import logging

    def draw(_: object) -> None:
        for page in pages():
            if "(pictures/" in page.read_text(encoding="utf-8"):
                for text in differences(page, PICTURES):
                    logging.getLogger(__name__).warning("a snippet prints something else: %s", text)

    app.connect("builder-inited", draw)  # type: ignore[attr-defined]
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
