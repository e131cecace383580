"""Every way of the library from one knot to a mass, side by side, with what each takes and what it assumes.

Nothing is fitted: a route that needs a number which the knot does not give, as the weights of a Xi model, has no mass
until the caller gives that number. None of the routes supports a claim about nature, as
`CheckKind.IndependentPrediction` would.
"""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import asdict, dataclass
from typing import TYPE_CHECKING, Any

import numpy as np

import vkmcore
from vkmcore import CheckKind
from vkmcore.mass.assessment import DEFAULTS, Assessment, assess
from vkmcore.mass.invariants import SAMPLES, knot_invariants
from vkmcore.mass.names import ideal_id
from vkmcore.mass.table import JOULE_PER_MEV, RelaxSettings
from vkmcore.parallel import vkm_mass

if TYPE_CHECKING:
    from vkmcore import KnotInvariants, TailApproxConfig

LIGHT = 299792458.0  # m/s
CLOSURE_CORE = 1.40897017e-15  # m, r_c of the golden closure

# The free inputs: numbers that a knot does not give. Those of one name in two routes are one number.
SIMPLE_XI = ("a_k", "a_b", "a_g", "a_vol", "a_L", "a_chi")
PARTICLE_XI = ("a_k", "a_b", "a_g", "a_vol", "a_L", "a_wr", "a_sep")
CANONICAL_XI = ("alpha_C", "beta_L", "gamma_H", "delta_V", "golden_layer")
MASTER = ("alpha_C", "beta_L", "gamma_H", "golden_layer", "gate")
CHI_SPIN, LOOP_RADIUS = "chi_spin", "R"
WHOLE = ("golden_layer", "gate")
FREE = tuple(dict.fromkeys((*SIMPLE_XI, *PARTICLE_XI, *CANONICAL_XI, *MASTER, CHI_SPIN, LOOP_RADIUS)))


@dataclass(frozen=True)
class Route:
    """One way to a mass."""

    name: str
    mass_kg: float | None  # None where it needs an input
    inputs: str  # what of the knot, and of the caller, entered
    needs: str  # free inputs that are not given; "" where there are none
    formula: str
    assumes: str
    claim: CheckKind  # the kind of claim that the mass supports

    @property
    def mass_MeV(self) -> float | None:
        return None if self.mass_kg is None else in_MeV(self.mass_kg)

    def record(self) -> dict[str, object]:
        return {**asdict(self), "mass_MeV": self.mass_MeV, "claim": self.claim.name}


@dataclass(frozen=True)
class Routes:
    """The routes of a knot, and what they rest on."""

    id: str
    name: str
    skipped_neighbours: int  # samples to either side, of `samples`
    samples: int
    given: dict[str, float]  # the caller's free inputs
    routes: tuple[Route, ...]
    assessment: Assessment

    def record(self) -> dict[str, object]:
        head = {name: getattr(self, name) for name in ("id", "name", "skipped_neighbours", "samples", "given")}
        judged = {name: getattr(self.assessment, name) for name in ("motion", "knot_type", "verdict")}
        return {**head, "relaxation": judged, "routes": [route.record() for route in self.routes]}


def in_MeV(mass_kg: float) -> float:
    """Rest energy, with the evaluator's 1.602176634e-13 J per MeV."""
    return mass_kg * LIGHT**2 / JOULE_PER_MEV


def mass_routes(
    knot: str,
    *,
    settings: RelaxSettings | None = None,
    tail: TailApproxConfig | None = None,
    **given: float,
) -> Routes:
    """Every route from a knot to a mass.

    Args:
        knot: a name ("3_1", "trefoil") or an id of the ideal table ("3:1:1"); a knot, not a link.
        settings: of the evaluator: resolution, iterations, timestep; those of `vkmcore mass` if None.
        tail: the evaluator's surrogate for the flow outside the core; the library's defaults, enabled, if None.
        given: free inputs by name. Weights: a_k, a_b, a_g, a_vol, a_L, a_chi of `SimpleInvariantXiModel`; the same
            without a_chi and with a_wr, a_sep of `KnotParticleModel`; alpha_C, beta_L, gamma_H, delta_V and
            golden_layer of `VKMCanonicalXiModel`; alpha_C, beta_L, gamma_H, golden_layer and the exponent gate of the
            master equation; chi_spin of the polyline's fluid; R, the radius in m of the golden closure's loop. Of a
            route that has one of its weights the others are 0.

    Returns:
        `Routes`: a mass in kg and MeV a route, or what it needs.

    Raises:
        ValueError: no such knot, or a free input of another name.
        RuntimeError: the id is malformed or unknown.
    """
    if unknown := sorted(set(given) - set(FREE)):
        raise ValueError(f"mass_routes: unknown input {unknown[0]!r}; known are {', '.join(FREE)}")
    for name in WHOLE:
        if name in given and given[name] != int(given[name]):
            raise ValueError(f"mass_routes: {name} is a whole number")
    knot_id = ideal_id(knot)
    if tail is None:
        tail = vkmcore.TailApproxConfig()
        tail.enabled = True
    invariants, skip = knot_invariants(knot_id)
    assessed = assess(knot_id, settings or DEFAULTS, tail)
    routes = (
        *_evaluator(assessed),
        *_ropelength(invariants),
        *_xi(invariants, given),
        _master(invariants, given),
        *_polyline(assessed, given),
        _dictionary(invariants),
        *_closure(given),
    )
    return Routes(knot_id, invariants.name, skip, SAMPLES, dict(given), routes, assessed)


def _evaluator(assessed: Assessment) -> list[Route]:
    assumes = "the body's radius is that of the electron, 2.81794034e-15 m; line tension F_max / 2 = 14.5267535 J/m"
    assumes += ", which rests on the electron's mass and on v_swirl = alpha c / 2"
    routes = []
    for name, shape in (("catalogued shape", assessed.catalogued), ("relaxed shape", assessed.relaxed)):
        weight = shape.weight
        inputs = f"L / r_e = {weight.ropelength:.6g}, {weight.points} points"
        extra = "" if shape is assessed.catalogued else f"; relaxation {assessed.motion}: no known limit"
        for what, energy in (("", weight.core_energy_J), (" with tail", weight.tail_energy_J)):
            if energy is None:
                continue
            total = energy + (weight.core_energy_J if what else 0.0)
            formula = "L x line tension / c^2" + (" + (1/2) rho_f <u^2> over shells" if what else "")
            kind = CheckKind.ConditionalBridge
            routes.append(
                Route(f"evaluator, {name}{what}", total / LIGHT**2, inputs, "", formula, assumes + extra, kind)
            )
    return routes


def _ropelength(invariants: KnotInvariants) -> list[Route]:
    functional, L = vkmcore.MassFunctional(), invariants.ropelength or 0.0
    inputs = f"L = {L:.6g} tube diameters"
    rho = vkmcore.CanonicalConstants()
    bridge = CheckKind.ConditionalBridge
    electron = vkmcore.VKMCanonicalConstants.electron_mass()
    quarter = vkmcore.ValueOriginAPI.bare_mass_from_dimensionless_length(L, electron)
    formula = "2 pi^3 rho r_c^5 L / lambda_c^2"
    return [
        Route(
            "mass functional, baseline",
            functional.baseline_mass_from_ropelength(L),
            inputs,
            "",
            formula,
            f"density rho_m = {rho.rho_m:.6g} kg/m^3 of the effective fluid",
            bridge,
        ),
        Route(
            "mass functional, horn baseline",
            functional.baseline_mass_from_horn_ropelength(L),
            inputs,
            "",
            formula,
            f"density rho_horn = {rho.rho_horn:.6g} kg/m^3, set by the electron's mass",
            CheckKind.CalibratedClosure,
        ),
        Route(
            "bare mass of a dimensionless length",
            quarter,
            inputs,
            "",
            "L m_e / 4",
            "the electron's mass is put in",
            CheckKind.CalibratedClosure,
        ),
    ]


def _xi(invariants: KnotInvariants, given: Mapping[str, float]) -> list[Route]:
    functional = vkmcore.MassFunctional()
    numbers = (
        f"k = {invariants.crossing_number}, b = {invariants.braid_index}, g = {invariants.seifert_genus}, "
        f"V = {invariants.hyperbolic_volume:.6g}, L = {invariants.ropelength or 0.0:.6g}"
    )
    simple_numbers = f"{numbers}, chi = {invariants.chirality}"
    canonical_numbers = (
        f"C = {invariants.crossing_number}, L = {invariants.ropelength or 0.0:.6g}, H = writhe "
        f"{invariants.writhe:.6g}, V = {invariants.hyperbolic_volume:.6g}"
    )
    curve = f"{numbers}, writhe = {invariants.writhe:.6g}, s = {invariants.min_self_distance:.6g}"
    simple = vkmcore.SimpleInvariantXiModel(_filled(vkmcore.SimpleInvariantXiModelParams(), SIMPLE_XI, given))
    canonical = vkmcore.VKMCanonicalXiModel(_filled(vkmcore.VKMCanonicalXiModelParams(), CANONICAL_XI, given))
    estimate = vkmcore.KnotParticleModel(_filled(vkmcore.KnotParticleModelParams(), PARTICLE_XI, given))
    bare, electron = "rho_m r_c^3 gate Xi / S^2", "m_e gate Xi"
    fluid = "Xi is a weighted sum of invariants; density of the effective fluid"
    anchored = "Xi is the mass over the electron's, which is put in"
    unit = "; thresholds of its sector are in the unit of the series"
    rows: tuple[tuple[str, Any, str, tuple[str, ...], str, str], ...] = (
        ("mass functional, simple Xi", functional.evaluate(invariants, simple), simple_numbers, SIMPLE_XI, bare, fluid),
        (
            "the same over the electron",
            functional.evaluate_electron_normalized(invariants, simple),
            simple_numbers,
            SIMPLE_XI,
            electron,
            anchored,
        ),
        (
            "mass functional, canonical Xi",
            functional.evaluate(invariants, canonical),
            canonical_numbers,
            CANONICAL_XI,
            bare,
            fluid,
        ),
        (
            "the same over the electron",
            functional.evaluate_electron_normalized(invariants, canonical),
            canonical_numbers,
            CANONICAL_XI,
            electron,
            anchored,
        ),
        ("particle model", estimate.predict(invariants), curve, PARTICLE_XI, electron, anchored + unit),
    )
    routes = []
    for name, found, inputs, names, formula, assumes in rows:
        sector = f"{inputs}; {found.gate.name}, gate {found.gate_factor:.6g}"
        routes.append(_weighted(name, found.mass_kg, sector, names, given, formula, assumes))
    return routes


def _master(invariants: KnotInvariants, given: Mapping[str, float]) -> Route:
    equation = vkmcore.VKMMasterEquationInput()
    equation.gate = int(given.get("gate", 0))
    kernel = _filled(vkmcore.VKMTopologyKernelInput(), MASTER[:-1], given)
    kernel.crossing, kernel.ropelength = invariants.crossing_number, invariants.ropelength or 0.0
    kernel.helicity = invariants.writhe
    equation.topology = kernel
    inputs = f"C = {invariants.crossing_number}, L = {kernel.ropelength:.6g}, H = writhe {invariants.writhe:.6g}"
    return _weighted(
        "master equation",
        vkmcore.VKMMasterEquation.evaluate(equation).mass_kg,
        inputs,
        MASTER,
        given,
        "rho_m r_c^3 (lambda_c / (pi r_c))^gate phi^(-2k) (alpha_C C + beta_L L + gamma_H H) / S^2",
        "the helicity measure is the writhe; default density, speed and core radius",
    )


def _polyline(assessed: Assessment, given: Mapping[str, float]) -> list[Route]:
    chi = given.get(CHI_SPIN)
    core = fluid = 0.0
    for points in assessed.filaments:
        own_core, own_fluid = vkm_mass(points, 0.0 if chi is None else chi)
        core, fluid = core + own_core, fluid + own_fluid
    length = sum(float(np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum()) for p in assessed.filaments)
    scale = "the body's radius is that of the electron, as in the evaluator"
    inputs = f"length {length:.6g} m"
    bridge = CheckKind.ConditionalBridge
    horn = f"core density set by the electron's mass; {scale}"
    return [
        Route("polyline, core", core, inputs, "", "rho_core pi r_c^2 L", horn, CheckKind.CalibratedClosure),
        Route(
            "polyline, fluid",
            None if chi is None else fluid,
            inputs if chi is None else f"{inputs}, chi_spin = {chi:g}",
            CHI_SPIN if chi is None else "",
            "chi^2 rho_f Gamma^2 / (8 pi c^2) sum dl . dl' / sqrt(d^2 + r_c^2)",
            scale,
            CheckKind.OpenResearchGate if chi is None else bridge,
        ),
    ]


def _dictionary(invariants: KnotInvariants) -> Route:
    wanted = "Unknot" if invariants.name == "0_1" else f"Knot {invariants.name}"
    formula, assumes = "b m_0 phi^(-2g)", "bridge number and genus as the dictionary has them; m_0 = 1.02904e-54 kg"
    for entry in vkmcore.ZooEvaluator.evaluate_all_golden_nls():
        if entry.identifier.partition(" (")[0] == wanted:
            inputs = f"{entry.identifier}: b = {entry.bridge_b:g}, g = {entry.genus_g}"
            mass = entry.mass_mev * JOULE_PER_MEV / LIGHT**2
            return Route("dictionary", mass, inputs, "", formula, assumes, CheckKind.ConditionalBridge)
    return Route("dictionary", None, "-", "an entry of the dictionary", formula, assumes, CheckKind.OpenResearchGate)


def _closure(given: Mapping[str, float]) -> list[Route]:
    closure, radius = vkmcore.GoldenNLSClosure(), given.get(LOOP_RADIUS)
    formula = "rho Gamma^2 R (ln(8 R / r_c) - phi) / (2 c^2)"
    assumes = "a loop in the core-dominated fluid; nothing of the knot enters"
    x = closure.infer_geometric_ratio()
    fitted = closure.calculate_loop_mass(x * CLOSURE_CORE)
    return [
        Route(
            "golden closure",
            None if radius is None else closure.calculate_loop_mass(radius),
            "-" if radius is None else f"R = {radius:g} m",
            LOOP_RADIUS if radius is None else "",
            formula,
            assumes,
            CheckKind.OpenResearchGate if radius is None else CheckKind.ConditionalBridge,
        ),
        Route(
            "golden closure, inverted",
            fitted,
            f"the electron's mass, which gives R / r_c = {x:.6g}",
            "",
            formula,
            f"{assumes}; the mass that comes out was put in",
            CheckKind.CalibratedClosure,
        ),
    ]


def _weighted(
    name: str,
    mass_kg: float,
    inputs: str,
    names: tuple[str, ...],
    given: Mapping[str, float],
    formula: str,
    assumes: str,
) -> Route:
    """A route whose mass stands for something only if one of its weights is given."""
    own = {key: given[key] for key in names if key in given}
    if not any(key not in WHOLE for key in own):
        return Route(name, None, inputs, ", ".join(names), formula, assumes, CheckKind.OpenResearchGate)
    told = ", ".join(f"{key} = {value:g}" for key, value in own.items())
    return Route(name, mass_kg, f"{inputs}; {told}", "", formula, assumes, CheckKind.CalibratedClosure)


def _filled(record: Any, names: tuple[str, ...], given: Mapping[str, float]) -> Any:
    for name in names:
        if name in given:
            setattr(record, name, int(given[name]) if name in WHOLE else given[name])
    return record
