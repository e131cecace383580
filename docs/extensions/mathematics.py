"""Mathematics as MathML, made at build time from the pages' TeX: nothing is fetched or run when a page is read."""

from __future__ import annotations

import html
import re

from docutils import nodes
from latex2mathml.converter import convert
from sphinx.application import Sphinx
from sphinx.util import logging
from sphinx.writers.html5 import HTML5Translator

logger = logging.getLogger(__name__)


# First letters of the ranges of bold letters: browsers draw these, but not letters that are only marked as bold.
BOLD = {"bold": {"A": 0x1D400, "a": 0x1D41A}, "bold-italic": {"α": 0x1D736}}


def bold(match: re.Match[str]) -> str:
    letter = html.unescape(match["letter"])
    for first, code in BOLD[match["variant"]].items():
        if 0 <= ord(letter) - ord(first) < 26:
            return f"<mi>&#x{code + ord(letter) - ord(first):X};</mi>"
    return match[0]


def mended(mathml: str) -> str:
    """Bold letters as letters; bars of norms as high as the text, unless they were asked to grow."""
    mathml = re.sub(r'<mi mathvariant="(?P<variant>bold(?:-italic)?)">(?P<letter>.|&#x\w+;)</mi>', bold, mathml)
    return re.sub(r"<mo>(&#x02016;|&#x0007C;)</mo>", r'<mo stretchy="false" lspace="0" rspace="0">\1</mo>', mathml)


def spaced(tex: str) -> str:
    """A thin space between a function's name and an argument without brackets."""
    return re.sub(r"\\(ln|log|sin|cos|tan)\s*(?=[A-Za-z0-9]|\\(?!left|,))", r"\\\1\\,", tex)


def to_mathml(node: nodes.Element, display: str) -> str:
    try:
        return mended(convert(spaced(node.astext()), display=display))
    except Exception as error:
        logger.warning("cannot typeset %r: %s", node.astext(), error, location=node)
        return ""


def visit_inline(writer: HTML5Translator, node: nodes.math) -> None:
    writer.body.append(to_mathml(node, "inline"))
    raise nodes.SkipNode


def visit_block(writer: HTML5Translator, node: nodes.math_block) -> None:
    writer.body.append(f'<div class="formula">{to_mathml(node, "block")}</div>\n')
    raise nodes.SkipNode


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_html_math_renderer("mathml", (visit_inline, None), (visit_block, None))
    return {"parallel_read_safe": True, "parallel_write_safe": True}
