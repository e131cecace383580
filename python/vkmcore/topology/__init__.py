"""Knots and links as diagrams: projections, planar diagrams, polynomials, identification, certificates.

    from vkmcore.topology import diagram_of_curves, identify, jones

    diagram = diagram_of_curves(points)   # (N, 3), any unit; a list of arrays for a link
    print(diagram.pd_code(), jones(diagram), identify(diagram))

Diagrams are in the standard convention; chirality is that of KnotInfo, whose 3_1 has t + t^3 - t^4. The names load
their modules when they are first used.
"""

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from vkmcore.topology.bracket import coloured_jones as coloured_jones
    from vkmcore.topology.bracket import jones as jones
    from vkmcore.topology.bracket import kauffman_bracket as kauffman_bracket
    from vkmcore.topology.bracket import unoriented_jones as unoriented_jones
    from vkmcore.topology.certificate import Certificate as Certificate
    from vkmcore.topology.certificate import CertificateError as CertificateError
    from vkmcore.topology.certificate import certify as certify
    from vkmcore.topology.certificate import same_type as same_type
    from vkmcore.topology.complements import to_snappy as to_snappy
    from vkmcore.topology.diagram import DiagramError as DiagramError
    from vkmcore.topology.diagram import PlanarDiagram as PlanarDiagram
    from vkmcore.topology.diagram import diagram_of_code as diagram_of_code
    from vkmcore.topology.drawing import lattice_polygons as lattice_polygons
    from vkmcore.topology.fox_calculus import alexander as alexander
    from vkmcore.topology.fox_calculus import determinant as determinant
    from vkmcore.topology.goeritz import linking_form as linking_form
    from vkmcore.topology.goeritz import signature as signature
    from vkmcore.topology.identification import Identification as Identification
    from vkmcore.topology.identification import identify as identify
    from vkmcore.topology.laurent import Laurent as Laurent
    from vkmcore.topology.projection import diagram_of_curves as diagram_of_curves
    from vkmcore.topology.simplification import simplified as simplified

_MODULE_OF = {
    "alexander": "fox_calculus",
    "determinant": "fox_calculus",
    "coloured_jones": "bracket",
    "jones": "bracket",
    "kauffman_bracket": "bracket",
    "unoriented_jones": "bracket",
    "Certificate": "certificate",
    "CertificateError": "certificate",
    "certify": "certificate",
    "same_type": "certificate",
    "to_snappy": "complements",
    "DiagramError": "diagram",
    "PlanarDiagram": "diagram",
    "diagram_of_code": "diagram",
    "lattice_polygons": "drawing",
    "linking_form": "goeritz",
    "signature": "goeritz",
    "Identification": "identification",
    "identify": "identification",
    "Laurent": "laurent",
    "diagram_of_curves": "projection",
    "simplified": "simplification",
}
__all__ = list(_MODULE_OF)


def __getattr__(name: str) -> object:
    if name not in _MODULE_OF:
        raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
    from importlib import import_module

    value: object = getattr(import_module(f"vkmcore.topology.{_MODULE_OF[name]}"), name)
    globals()[name] = value
    return value
