"""Mathematics as MathML, made at build time from the pages' TeX: nothing is fetched or run when a page is read."""

from __future__ import annotations

from docutils import nodes
from latex2mathml.converter import convert
from sphinx.application import Sphinx
from sphinx.util import logging
from sphinx.writers.html5 import HTML5Translator

logger = logging.getLogger(__name__)


def to_mathml(node: nodes.Element, display: str) -> str:
    try:
        return convert(node.astext(), display=display)
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
