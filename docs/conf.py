"""The documentation site: `make docs` builds it into build/docs, with no network, and fails on any warning.

The pages are the Markdown files of this folder. What is computed is made anew at each build: the reference from the
module's docstrings, the pictures from the pages' snippets, the mathematics as MathML inside the pages.
"""

import sys
from pathlib import Path

import vkmcore

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE / "extensions"), str(HERE.parent / "tools")]

project = "VKMcore"
author = "the VKMcore authors"
copyright = "MIT licence"
version = release = vkmcore.__version__

extensions = [
    "myst_nb",
    "sphinx.ext.autodoc",
    "sphinx.ext.napoleon",
    "sphinx_codeautolink",
    "sphinx_copybutton",
    "gallery",
    "mathematics",
    "names",
    "records",
    "reference",
    "snippets",
    "studies",
]
exclude_patterns = ["extensions", "benchmarks.md", "ideal_table.md"]  # tables that other pages include
source_suffix = {".md": "myst-nb", ".rst": "restructuredtext"}

# The tutorials are notebooks in text form, run at each build.
nb_execution_mode = "force"
nb_execution_in_temp = True
nb_execution_timeout = 300
nb_execution_raise_on_error = True
nb_output_stderr = "remove"
nb_merge_streams = True

autodoc_member_order = "bysource"
autodoc_typehints = "signature"
autodoc_class_signature = "separated"
codeautolink_concat_default = True  # the blocks of a page are one program
copybutton_exclude = ".linenos, .gp, .go"
myst_enable_extensions = ["dollarmath", "deflist"]
myst_heading_anchors = 3
html_math_renderer = "mathml"

add_module_names = False
toc_object_entries = False
python_maximum_signature_line_length = 90
highlight_language = "text"

html_theme = "furo"
html_title = f"VKMcore {release}"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_show_sphinx = False
html_show_copyright = False
html_copy_source = False
html_show_sourcelink = False
html_theme_options = {"navigation_with_keys": True}
pygments_style = "friendly"
pygments_dark_style = "native"
