"""Results as checks, and checks as a report of this installation.

A check compares a residual with its tolerance and says what kind of claim it supports (`CheckKind`). None of the
self-checks here supports a claim about nature: identities follow from definitions, closures from fitted constants, and
convergence speaks of the arithmetic.

    from vkmcore.evidence.report import check, report_meta
    from vkmcore import CheckKind, EvidenceReportAPI

    checks = [check("length", abs(found - expected), 1e-9, CheckKind.NumericalConvergence)]
    EvidenceReportAPI.write_evidence_report("report.json", report_meta(), checks)
"""

from __future__ import annotations

import hashlib
import math
import platform
import subprocess
from collections.abc import Iterator
from pathlib import Path

import numpy as np
import numpy.typing as npt

import vkmcore
from vkmcore import CheckKind, CheckResult, EvidenceReportMeta

Curve = npt.NDArray[np.float64]

NUMERIC_PROFILE = "IEEE-754 double, no contraction, no reordering"
ROUNDING = 4 * 2.0**-52  # relative: a few roundings of a double


def check(
    name: str,
    residual: float,
    tolerance: float,
    kind: CheckKind = CheckKind.OpenResearchGate,
    message: str = "",
    supports_empirical_claim: bool = False,
) -> CheckResult:
    """A check that passes if the residual's size is at most the tolerance, in the same unit. A NaN fails.

    Only an independent prediction may support an empirical claim: ValueError for another kind that says it does.
    """
    if supports_empirical_claim and kind != CheckKind.IndependentPrediction:
        raise ValueError(f"{name}: a check of kind {kind.name} supports no empirical claim")
    result = CheckResult()
    result.name = name
    result.passed = bool(abs(residual) <= tolerance)
    result.kind = kind
    result.residual = abs(float(residual))
    result.tolerance = float(tolerance)
    result.supports_empirical_claim = supports_empirical_claim
    result.message = message
    return result


def check_record(result: CheckResult) -> dict[str, object]:
    """A check by name, for JSON."""
    names = ("name", "passed", "residual", "tolerance", "message")
    return {"kind": result.kind.name, **{name: getattr(result, name) for name in names}}


def report_meta() -> EvidenceReportMeta:
    """Where a report is made: version, commit of the sources if they run from a repository, compiler, platform."""
    from vkmcore.build import build_info

    build = build_info()
    meta = EvidenceReportMeta()
    meta.vkmcore_version = build.version
    meta.git_commit = git_commit()
    meta.numeric_profile = f"{NUMERIC_PROFILE}, {build.vector_bits} bit vectors"
    meta.compiler = build.compiler
    meta.platform = f"{platform.platform()}, CPython {platform.python_version()}"
    return meta


def git_commit(package: Path = Path(__file__).parent) -> str:
    """The commit that the package's sources are at, with "-dirty" where files differ from it; empty for an installed
    package, also inside somebody else's repository."""

    def git(*arguments: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run(["git", *arguments], cwd=package, capture_output=True, text=True)

    try:
        if git("ls-files", "--error-unmatch", Path(__file__).name).returncode:
            return ""
        commit = git("rev-parse", "HEAD")
        dirty = git("diff", "--quiet", "HEAD").returncode
    except OSError:  # no git on this machine
        return ""
    return "" if commit.returncode else commit.stdout.strip() + ("-dirty" if dirty else "")


def self_checks() -> list[CheckResult]:
    """The fixed checks of this installation, in order; they take a second or two."""
    groups = (constant_checks, closed_form_checks, convergence_checks, evaluator_checks, fingerprint_checks)
    return [result for group in groups for result in group()]


def constant_checks() -> Iterator[CheckResult]:
    """Identities between the constants, and what they were calibrated to."""
    k = vkmcore.VKMCanonicalConstants.values()
    identities = {
        "omega_c = m_e c^2 / hbar": (k.omega_c, k.m_e * k.c * k.c / k.hbar),
        "lambda_c = 2 pi lambda_bar_c": (k.lambda_c, 2 * math.pi * k.lambda_bar_c),
        "r_c = v_swirl / omega_c": (k.r_c, k.v_swirl / k.omega_c),
        "gamma_0 = 2 pi v_swirl^2 / omega_c": (k.gamma_0, 2 * math.pi * k.v_swirl**2 / k.omega_c),
        "geometric gate = 2 c / v_swirl": (k.geometric_gate, 2 * k.c / k.v_swirl),
        "F_swirl_max = hbar omega_c^2 / (2 v_swirl)": (k.F_swirl_max, k.hbar * k.omega_c**2 / (2 * k.v_swirl)),
        "R_infty = v_swirl^2 omega_c / (pi c^3)": (k.R_infty_vkm, k.v_swirl**2 * k.omega_c / (math.pi * k.c**3)),
    }
    for name, (found, expected) in identities.items():
        yield check(name, relative(found, expected), ROUNDING, CheckKind.AlgebraicIdentity)

    closures = {
        # The swirl speed is written with two decimals: half a unit of the last one.
        "v_swirl = alpha c / 2": (k.v_swirl, k.alpha * k.c / 2, 0.005 / k.v_swirl),
        "R_infty = alpha^2 / (4 pi lambda_bar_c)": (
            k.R_infty_vkm,
            k.alpha**2 / (4 * math.pi * k.lambda_bar_c),
            2 * 0.005 / k.v_swirl,
        ),
        # The snapshot is of an older set of constants.
        "F_swirl_max = its snapshot": (k.F_swirl_max, vkmcore.ValueOriginAPI.fmax_snapshot(), 1e-6),
    }
    for name, (found, expected, tolerance) in closures.items():
        message = "v_swirl is put in as a calibration"
        yield check(name, relative(found, expected), tolerance, CheckKind.CalibratedClosure, message)


def closed_form_checks() -> Iterator[CheckResult]:
    """Circles and linked rings, whose measures are known."""
    n = 240
    circle = ring(n)
    tube = vkmcore.ResolvedTubeGeometry.analyze(circle.tolist())
    gauss = vkmcore.compute_polygonal_gauss
    hopf = ring(n)[:, [0, 2, 1]] + np.array([1.0, 0.0, 0.0])
    link = gauss(circle, hopf, same_curve=False)["signed_integral"]
    tangents = (circle @ [[0.0, 1.0, 0.0], [-1.0, 0.0, 0.0], [0.0, 0.0, 0.0]]) * (2 * math.pi / n)
    velocity = vkmcore.biot_savart_velocity([0.0, 0.0, 0.0], circle.tolist(), tangents.tolist())
    forms = {
        "length of a polygon = 2 n sin(pi / n)": (tube.length, 2 * n * math.sin(math.pi / n), 1e-13),
        "vertex radius of a polygon = cos(pi / n)": (tube.minrad, math.cos(math.pi / n), 1e-10),
        # Each pair of coplanar edges takes arc sines at +-1, where half the digits are lost.
        "writhe of a plane curve = 0": (gauss(circle)["signed_integral"] + 1.0, 1.0, 1e-5),
        "linking number of a Hopf link = 1": (abs(link), 1.0, 1e-12),
        "speed at the centre of a vortex ring = Gamma / (2 R)": (velocity[2], 0.5, 1e-13),
    }
    for name, (found, expected, tolerance) in forms.items():
        yield check(name, relative(found, expected), tolerance, CheckKind.AlgebraicIdentity)


def convergence_checks() -> Iterator[CheckResult]:
    """Length and writhe of the catalogue's trefoil with 200, 400 and 800 samples: an error of second order shrinks to a
    quarter at each step, and extrapolation of the last two gives the limit to fourth order."""
    block = vkmcore.load_embedded_knot_block("3_1")

    def trefoil(n: int) -> Curve:
        return np.array(vkmcore.evaluate_fourier_block(block, (2 * np.pi * np.arange(n) / n).tolist()))

    curves = [trefoil(n) for n in (200, 400, 800)]
    lengths = [vkmcore.ResolvedTubeGeometry.length(curve.tolist()) for curve in curves]
    writhes = [vkmcore.compute_polygonal_gauss(curve)["signed_integral"] for curve in curves]
    kind = CheckKind.NumericalConvergence
    for name, values in (("length", lengths), ("writhe", writhes)):
        order = math.log2((values[1] - values[0]) / (values[2] - values[1]))
        yield check(f"{name} of a sampled trefoil: order 2", order - 2.0, 0.01, kind, f"order {order:.5f}")
    limit = lengths[2] + (lengths[2] - lengths[1]) / 3
    residual = relative(limit, vkmcore.length_exact(block))
    yield check("length of a sampled trefoil: its limit", residual, 1e-8, kind)
    spectral = relative(vkmcore.length_exact(block, 128), vkmcore.length_exact(block, 4096))
    yield check("length of a Fourier curve: 128 samples do", spectral, 1e-13, kind)


def evaluator_checks() -> Iterator[CheckResult]:
    """Scaling laws of the particle evaluator; they hold by construction and weigh nothing."""
    kind = CheckKind.AlgebraicIdentity
    tensions = []
    for knot_id in ("3:1:1", "4:1:1"):
        knot = vkmcore.ParticleEvaluator(knot_id, 200)
        knot.relax(20)
        ratio = knot.get_dimless_ropelength(1.0) / knot.get_dimless_ropelength(3.0)
        yield check(f"{knot_id}: ropelength falls with the square of the stretch", relative(ratio, 9.0), ROUNDING, kind)
        tensions.append(knot.get_core_mass_mev_only() / knot.get_physical_length_m())
    name = "mass is a line tension times the length"
    yield check(name, relative(tensions[0], tensions[1]), 2 * ROUNDING, kind)


def fingerprint_checks() -> Iterator[CheckResult]:
    """The library's SHA-256 against the interpreter's, on lengths around its blocks."""
    text = "vkmcore " * 40
    wrong = sum(
        vkmcore.PipelineProvenanceAPI.fingerprint_hex(text[:n]) != hashlib.sha256(text[:n].encode()).hexdigest()
        for n in range(200)
    )
    yield check("SHA-256 of 200 texts", wrong, 0, CheckKind.SyntheticDiagnostic, "number of digests that differ")


def relative(found: float, expected: float) -> float:
    """The deviation in units of what is expected, which is not 0."""
    return abs(found - expected) / abs(expected)


def ring(n: int) -> Curve:
    """A regular polygon on the unit circle of the plane z = 0."""
    angle = 2 * np.pi * np.arange(n) / n
    return np.stack([np.cos(angle), np.sin(angle), 0.0 * angle], axis=1)
