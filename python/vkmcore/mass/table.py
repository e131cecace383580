"""From catalogue ids to masses: relax each knot and take every measure of it once."""

from __future__ import annotations

from collections.abc import Callable, Iterable
from dataclasses import dataclass

from vkmcore import ParticleEvaluator, TailApproxConfig, parallel

JOULE_PER_MEV = 1.602176634e-13


@dataclass(frozen=True)
class RelaxSettings:
    """How a knot is sampled, relaxed and measured."""

    resolution: int = 4000  # points of a filament
    iterations: int = 1000  # sweeps of the relaxation
    timestep: float = 0.01  # of a sweep, dimensionless
    stretch: float = 1.0  # lambda; the dimensionless ropelength is divided by its square


@dataclass(frozen=True)
class Weight:
    """The measures of one relaxed knot. The tail is None where it was not asked for."""

    id: str
    filaments: int
    points: int  # of all filaments together
    ropelength: float  # dimensionless, at the settings' stretch
    length_m: float  # unstretched
    core_energy_J: float
    tail_energy_J: float | None
    core_mass_MeV: float
    mass_with_tail_MeV: float | None
    helicity_m_per_s2: float  # mean of velocity . vorticity over the first filament
    core_time_dilation: float  # mean over the first filament

    def record(self) -> dict[str, object]:
        """The measures by name, in order."""
        return dict(vars(self))


def weigh(
    ids: Iterable[str],
    settings: RelaxSettings | None = None,
    tail: TailApproxConfig | None = None,
    progress: Callable[[str, str], None] | None = None,
) -> list[tuple[Weight, list[list[list[float]]]]]:
    """Relax and weigh the knots of these ids.

    Args:
        ids: ideal-catalogue ids, as "3:1:1".
        settings: sampling and relaxation; the library's defaults if None.
        tail: the surrogate for the flow outside the core, used as it stands (`enabled` included); no tail if None.
        progress: told the id and the stage before each stage.

    Returns:
        For each id the measures and the relaxed filaments, points in metres.

    Raises:
        RuntimeError: an id is malformed or unknown. All ids are looked up before the first is relaxed.
    """
    settings = settings or RelaxSettings()
    tell = progress or (lambda knot_id, stage: None)
    evaluators = []
    for knot_id in ids:
        tell(knot_id, "reading")
        evaluators.append((knot_id, ParticleEvaluator(knot_id, settings.resolution)))

    weighed = []
    for knot_id, evaluator in evaluators:
        tell(knot_id, "relaxing")
        evaluator.relax(settings.iterations, settings.timestep)
        tail_energy = None
        if tail is not None:
            tell(knot_id, "tail")
            evaluator.set_tail_approx_config(tail)
            tail_energy = parallel.tail_energy(evaluator.get_filaments(), tail)
        tell(knot_id, "measuring")
        weighed.append(measure(knot_id, evaluator, settings, tail_energy))
    return weighed


def measure(
    knot_id: str, evaluator: ParticleEvaluator, settings: RelaxSettings, tail_energy: float | None
) -> tuple[Weight, list[list[list[float]]]]:
    """The measures of an evaluator as it stands, and its filaments."""
    filaments = evaluator.get_filaments()
    metrics = evaluator.compute_relativistic_metrics()
    core_energy = evaluator.compute_core_energy_J()
    weight = Weight(
        id=knot_id,
        filaments=len(filaments),
        points=sum(len(filament) for filament in filaments),
        ropelength=evaluator.get_dimless_ropelength(settings.stretch),
        length_m=evaluator.get_physical_length_m(),
        core_energy_J=core_energy,
        tail_energy_J=tail_energy,
        core_mass_MeV=evaluator.get_core_mass_mev_only(),
        # The sum that get_mass_mev_ab_initio(True) takes, without integrating the tail a second time.
        mass_with_tail_MeV=None if tail_energy is None else (tail_energy + core_energy) / JOULE_PER_MEV,
        helicity_m_per_s2=metrics.helicity,
        core_time_dilation=metrics.core_time_dilation,
    )
    return weight, filaments
