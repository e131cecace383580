"""Write `python/vkmcore/_native.pyi` from the built extension, or check that it is current.

    python tools/make_stubs.py            write
    python tools/make_stubs.py --check    print what differs and exit with 1 if the file is stale

The extension is the `_native` that this interpreter imports (say PYTHONPATH=build/dev). Needs pybind11-stubgen. The
text depends on the extension's interface alone: neither on the build's options nor on the machine.
"""

from __future__ import annotations

import argparse
import ast
import copy
import difflib
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from signatures import split_arguments

STUB = Path(__file__).resolve().parents[1] / "python" / "vkmcore" / "_native.pyi"
HEADING = "# Types of the extension module. Made by tools/make_stubs.py from the built module; do not edit.\n"

# Stands as the default of an argument that has none.
REQUIRED = "_required_"

# Functions whose result is a dict: its type in `vkmcore.results`.
RESULTS = {
    "analyze_resolved_tube_clearance": "Clearance",
    "analyze_smooth_resolved_tube": "SmoothTube",
    "build_and_solve_node_anchored_operator": "SpectralSolve",
    "build_and_solve_trace_anchored_operator": "SpectralSolve",
    "compare_fseries_files": "CurveComparison",
    "compute_continuous_reach": "ContinuousReach",
    "compute_filament_velocity": "FilamentVelocity",
    "compute_intrinsic_frame": "IntrinsicFrame",
    "compute_polygonal_gauss": "PolygonalGauss",
    "compute_regularized_mutual_velocity": "FilamentVelocity",
    "compute_rigid_motion": "RigidMotion",
    "compute_topology_clearance": "Clearance",
    "guard_topology_step": "TopologyGuard",
    "jacobi_eigensolve_symmetric": "SpectralSolve",
    "list_bindings": "Bindings",
    "objective_suppressed_breakdown": "SuppressedObjective",
    "phase_invariants": "PhaseInvariants",
    "rk4_step": "FilamentStep",
}


class Normaliser(ast.NodeTransformer):
    """Say what the generator leaves open."""

    def visit_FunctionDef(self, node: ast.FunctionDef) -> ast.FunctionDef | list[ast.stmt]:
        """Arguments bound without a name (arg0, arg1, ...) are positional only; a dict that is returned has keys."""
        self.generic_visit(node)
        if node.name in RESULTS and node.returns is not None and ast.unparse(node.returns).startswith("dict["):
            node.returns = ast.parse(f"results.{RESULTS[node.name]}", mode="eval").body
        arguments = node.args.args
        unnamed = [place for place, argument in enumerate(arguments) if re.fullmatch(r"arg\d+", argument.arg)]
        if unnamed:
            node.args.posonlyargs = arguments[: unnamed[-1] + 1]
            node.args.args = arguments[unnamed[-1] + 1 :]
        return in_two_forms(node) if any(is_required(default) for default in node.args.defaults) else node

    def visit_Subscript(self, node: ast.Subscript) -> ast.Subscript:
        node.slice = self.visit(node.slice)
        return node

    def visit_Attribute(self, node: ast.Attribute) -> ast.expr:
        """So do arrays."""
        bare = ast.unparse(node) == "numpy.ndarray"
        return ast.parse("numpy.ndarray[typing.Any, typing.Any]", mode="eval").body if bare else node

    def visit_Name(self, node: ast.Name) -> ast.expr:
        """Containers of anything say so."""
        items = {"list": "typing.Any", "dict": "typing.Any, typing.Any", "tuple": "typing.Any, ..."}.get(node.id)
        return ast.parse(f"{node.id}[{items}]", mode="eval").body if items else node


def is_required(default: ast.expr) -> bool:
    """Whether mend_signatures has put it in the place of no default."""
    return isinstance(default, ast.Name) and default.id == REQUIRED


def in_two_forms(node: ast.FunctionDef) -> list[ast.stmt]:
    """Overloads of a function that requires arguments behind optional ones: with the optional ones before them given,
    or with the required ones by keyword."""
    arguments, defaults = node.args.args, node.args.defaults
    offset = len(arguments) - len(defaults)
    required = [offset + place for place, default in enumerate(defaults) if is_required(default)]
    by_position, by_keyword = copy.deepcopy(node), copy.deepcopy(node)
    by_position.args.defaults = defaults[required[-1] + 1 - offset :]
    by_keyword.args.args = arguments[: required[0]]
    by_keyword.args.defaults = defaults[: required[0] - offset]
    by_keyword.args.kwonlyargs = arguments[required[0] :]
    by_keyword.args.kw_defaults = [
        None if is_required(default) else default for default in defaults[required[0] - offset :]
    ]
    overload = ast.parse("typing.overload", mode="eval").body
    for form in (by_position, by_keyword):
        if not any(ast.unparse(decorator) == "typing.overload" for decorator in form.decorator_list):
            form.decorator_list = [overload, *form.decorator_list]
    return [by_position, by_keyword]


def mend_signatures(text: str) -> str:
    """Mark arguments without a default behind one with a default, and give another name to one called lambda: an
    extension may have such arguments, Python's own syntax has not."""

    def mend(match: re.Match[str]) -> str:
        head, arguments, tail = match.groups()
        parts = split_arguments(arguments)
        optional = False
        for place, part in enumerate(parts):
            optional = optional or "=" in part
            if optional and "=" not in part and not part.startswith("*"):
                parts[place] = f"{part} = {REQUIRED}"
        return head + ", ".join(parts) + tail

    text = re.sub(r"\blambda: ", "lambda_: ", text)
    return re.sub(r"^(\s*def \w+\()(.*)(\) -> .*:.*)$", mend, text, flags=re.MULTILINE)


def generate() -> str:
    """The stub of the extension that this interpreter imports."""
    with tempfile.TemporaryDirectory() as folder:
        command = [sys.executable, "-m", "pybind11_stubgen", "_native", "--output-dir", folder]
        run = subprocess.run(command, capture_output=True, text=True)
        if run.returncode:
            raise SystemExit(run.stderr)
        # Defaults that are objects have no expression and come out as `...`; a C++ name is a signature gone wrong,
        # made before the type it names was registered.
        wrong = [line for line in run.stderr.splitlines() if "Invalid expression" in line and "::" in line]
        if wrong:
            raise SystemExit("\n".join(wrong))
        text = (Path(folder) / "_native.pyi").read_text(encoding="utf-8")
    tree = Normaliser().visit(ast.parse(mend_signatures(text)))
    imports = [place for place, node in enumerate(tree.body) if isinstance(node, ast.Import | ast.ImportFrom)]
    tree.body.insert(imports[-1] + 1, ast.parse("from vkmcore import results").body[0])
    text = ast.unparse(ast.fix_missing_locations(tree))
    return HEADING + re.sub(r"[ \t]+$", "", text, flags=re.MULTILINE).strip() + "\n"


def main() -> int:
    parser = argparse.ArgumentParser(description="Write or check the types of the extension.")
    parser.add_argument("--check", action="store_true", help="compare only; exit with 1 if stale")
    arguments = parser.parse_args()
    wanted = generate()
    if not arguments.check:
        STUB.write_text(wanted, encoding="utf-8")
        return 0
    present = STUB.read_text(encoding="utf-8") if STUB.exists() else ""
    if present == wanted:
        return 0
    lines = difflib.unified_diff(
        present.splitlines(True), wanted.splitlines(True), f"{STUB.name} as it is", f"{STUB.name} as built"
    )
    sys.stdout.writelines(lines)
    print("the stubs are stale: run tools/make_stubs.py", file=sys.stderr)
    return 1


if __name__ == "__main__":
    raise SystemExit(main())
