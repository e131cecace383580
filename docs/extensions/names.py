"""Names in the pages' prose, as `Knot.plot` or `idealize(...)`, link to the reference where they are plainly of it."""

from __future__ import annotations

import re

from docutils import nodes
from sphinx.addnodes import desc
from sphinx.application import Sphinx
from sphinx.transforms.post_transforms import SphinxPostTransform
from sphinx.util.nodes import make_refnode

NAME = re.compile(r"(?:vkmcore\.|vkm\.)?(?P<path>[A-Za-z_]\w*(?:\.\w+)*)(?:\([^()]*\))?")
LEAST = 5  # letters: a shorter one in small letters may be a variable
OWN = ("function", "class", "exception")  # what a name without a dot may be
INSIDE = (nodes.reference, nodes.title, nodes.pending, desc)


def found_in(objects: dict[str, str], text: str) -> str | None:
    """The one object that a text names by the end of its full name; `objects` has their kinds by full name."""
    match = NAME.fullmatch(text)
    if match is None:
        return None
    path = match["path"]
    if "." in path:
        ends = [full for full in objects if full.endswith(f".{path}")]
    else:
        ends = [full for full, kind in objects.items() if kind in OWN and full.rpartition(".")[2] == path]
    return ends[0] if len(ends) == 1 and (len(path) >= LEAST or path[0].isupper()) else None


class LinkNames(SphinxPostTransform):
    default_priority = 400

    def run(self, **_: object) -> None:
        entries = self.env.domains["py"].objects
        objects = {name: entry.objtype for name, entry in entries.items()}
        for node in list(self.document.findall(nodes.literal)):
            parent = node.parent
            while parent is not None and not isinstance(parent, INSIDE):
                parent = parent.parent
            full = None if parent is not None else found_in(objects, node.astext())
            if full is None:
                continue
            entry = entries[full]
            link = make_refnode(self.app.builder, self.env.docname, entry.docname, entry.node_id, node.deepcopy(), full)
            node.replace_self(link)


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_post_transform(LinkNames)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
