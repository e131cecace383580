"""The pages: their Python runs and prints what they show, and the reference names everything."""

import importlib.util
import re
import subprocess
import sys
from pathlib import Path

import _native
import pytest

DOCS = Path(__file__).resolve().parents[2] / "docs"


def extension(name):
    source = importlib.util.spec_from_file_location(f"docs_{name}", DOCS / "extensions" / f"{name}.py")
    module = importlib.util.module_from_spec(source)
    sys.modules[source.name] = module  # dataclasses look their module up
    source.loader.exec_module(module)
    return module


snippets = extension("snippets")
reference = extension("reference")


@pytest.mark.parametrize("page", snippets.pages(), ids=lambda page: page.stem)
def test_the_snippets_of_a_page_print_what_it_shows_and_draw_what_it_uses(page, tmp_path):
    pytest.importorskip("matplotlib")
    assert snippets.differences(page, tmp_path) == []
    used = re.findall(r"\(pictures/([^)]+)\)", page.read_text(encoding="utf-8"))
    assert sorted(path.name for path in tmp_path.iterdir()) == sorted(used)


def test_names_in_prose_find_their_place_in_the_reference():
    pytest.importorskip("sphinx")
    kinds = {"function": ["vkmcore.sample_circle", "vkmcore.dynamics.simulation.simulate"], "class": ["vkmcore.a.Knot"]}
    kinds["method"] = ["vkmcore.a.Knot.tighten", "vkmcore.Body.relax", "vkmcore.Evaluator.relax"]
    objects = {name: kind for kind, names in kinds.items() for name in names}
    found_in = extension("names").found_in
    for text in ("simulate", "vkmcore.simulate(...)", "dynamics.simulation.simulate"):
        assert found_in(objects, text) == "vkmcore.dynamics.simulation.simulate"
    assert found_in(objects, "Knot") == "vkmcore.a.Knot"
    assert found_in(objects, "Knot.tighten()") == "vkmcore.a.Knot.tighten"
    for text in ("knot.tighten()", "tighten", "relax", "Body", "x.relax", "sample_circle = 3"):
        assert found_in(objects, text) is None


def test_a_snippet_that_prints_something_else_is_found(tmp_path):
    page = tmp_path / "page.md"
    page.write_text("```python\nx = 2\n```\n\nText.\n\n```python\nprint(x)\n```\n\n```text\n3\n```\n", encoding="utf-8")
    [difference] = snippets.differences(page, tmp_path)
    assert difference == "page.md:8: shown\n3\nprinted\n2\n"


def test_digits_of_the_catalogue_s_shapes_may_follow_it(tmp_path):
    page, mark = tmp_path / "page.md", f"{snippets.MARK}\n\n"
    text = '```python\nprint("L 12.48, 8 crossings")\n```\n\n{}```text\n{}\n```\n'
    for shown, alike in [("L 12.5, 9 crossings", True), ("L 15.0, 8 crossings", False), ("L 12.48, 8 knots", False)]:
        page.write_text(text.format(mark, shown), encoding="utf-8")
        found = snippets.run(page, tmp_path)
        assert (snippets.told(page, found) == []) == alike
        assert snippets.rewritten(page.read_text(encoding="utf-8"), found) == text.format(mark, "L 12.48, 8 crossings")
    page.write_text(text.format("", "L 12.5, 9 crossings"), encoding="utf-8")
    assert snippets.differences(page, tmp_path) != []


def test_the_landing_page_has_seven_things_each_with_code_output_and_a_picture():
    parts = re.split(r"^## ", (DOCS / "index.md").read_text(encoding="utf-8"), flags=re.MULTILINE)[1:]
    assert len(parts) == 7
    for part in parts:
        assert "```python\n" in part and "```text\n" in part and "(pictures/" in part, part[:40]


def test_the_reference_has_every_public_name_once_in_plain_words(tmp_path):
    had = hasattr(_native, "__all__")
    reference.write_pages(tmp_path)
    assert hasattr(_native, "__all__") == had
    text = "\n".join(path.read_text(encoding="utf-8") for path in sorted(tmp_path.glob("*.rst")))
    found = re.findall(r"^\.\. py:(?:class|function):: (\w+)", text, flags=re.MULTILINE)
    assert sorted(found) == sorted(name for name in dir(_native) if not name.startswith("_"))
    assert not re.findall(r"0x[0-9a-f]{6,}|typing\.|collections\.abc|_native\.|FixedSize|Supports\w+|::.*<", text)
    assert not (tmp_path / "module.rst").read_text(encoding="utf-8").count("Others\n")  # each stands in its room


def test_the_site_is_built_without_a_warning_and_asks_for_nothing_from_the_network(tmp_path):
    for tool in ("sphinx", "myst_nb", "sphinx_copybutton", "furo", "latex2mathml", "matplotlib", "xarray", "pandas"):
        pytest.importorskip(tool)
    command = [sys.executable, "-m", "sphinx", "-b", "html", "-q", "-W", "--keep-going", "-d", str(tmp_path / "trees")]
    run = subprocess.run([*command, str(DOCS), str(tmp_path / "site")], capture_output=True, text=True)
    assert run.returncode == 0, run.stderr
    site = tmp_path / "site"
    pages = {str(path.relative_to(site)): path.read_text(encoding="utf-8") for path in site.rglob("*.html")}
    asked = r"<(?:script|img|iframe)[^>]* src=\"(?:https?:)?//|<link[^>]* href=\"(?:https?:)?//"
    assert not [name for name, text in pages.items() if re.search(asked, text)]
    styles = "\n".join(path.read_text(encoding="utf-8") for path in (site / "_static").rglob("*.css"))
    assert not re.search(r"(?:url\(|@import)\s*[\"']?(?:https?:)?//", styles)
    prose = re.sub(r"<(pre|code).*?</\1>", "", pages["mass.html"], flags=re.DOTALL)
    assert "<math" in prose and "$" not in prose and "\\frac" not in prose
