"""Routes from a knot to a mass: the library's own numbers, what is missing, where the neighbours come from."""

import json
import re
from pathlib import Path

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore import CheckKind
from vkmcore.cli import cli
from vkmcore.mass.invariants import knot_invariants
from vkmcore.mass.particles import PARTICLES
from vkmcore.mass.routes import FREE

TABLE = Path(__file__).parents[2] / "src" / "mass" / "standard_model.cpp"


@pytest.mark.parametrize("knot, samples", [("3:1:1", 2048), ("4_1", 700), ("8_19", 300)])
def test_the_ropelength_does_not_depend_on_the_samples(knot, samples):
    invariants, skip = knot_invariants(knot, samples)
    assert invariants.ropelength == pytest.approx(vkmcore.Knot(knot).ropelength / 2, rel=5e-3)
    assert skip > 4
    raw = vkmcore.build_invariants_from_fourier_block(vkmcore.Knot(knot).fourier, nsamples=samples)
    assert raw.ropelength > 2 * invariants.ropelength  # what the front end is for


def test_metadata_is_the_table_s():
    found, _ = knot_invariants("4_1")
    names = ("name", "crossing_number", "braid_index", "seifert_genus", "chirality", "hyperbolic")
    assert [getattr(found, name) for name in names] == ["4_1", 4, 3, 1, 0, True]
    assert found.hyperbolic_volume == pytest.approx(2.0298832128)
    trefoil, _ = knot_invariants("trefoil")
    assert (trefoil.seifert_genus, trefoil.braid_index, abs(trefoil.chirality), trefoil.hyperbolic) == (1, 2, 1, False)
    assert knot_invariants("8_19")[0].seifert_genus == 3
    assert knot_invariants("0_1")[0].ropelength == pytest.approx(np.pi, rel=1e-4)


@pytest.fixture(scope="module")
def bare():
    return vkmcore.mass_routes("3_1")


@pytest.fixture(scope="module")
def given():
    return vkmcore.mass_routes("3_1", alpha_C=2.0, a_k=0.5, a_wr=0.1, gate=1, golden_layer=2, chi_spin=0.5, R=1e-15)


def test_what_the_knot_does_not_give_is_missing(bare):
    missing = {route.name: route.needs for route in bare.routes if route.mass_kg is None}
    assert set(", ".join(missing.values()).split(", ")) == set(FREE)
    assert all(route.claim == CheckKind.OpenResearchGate for route in bare.routes if route.needs)
    assert all((route.mass_kg is None) == bool(route.needs) for route in bare.routes)
    assert not any(route.claim == CheckKind.IndependentPrediction for route in bare.routes)


def test_masses_are_the_library_s(given):
    by_name = {}
    for route in given.routes:
        by_name.setdefault(route.name, []).append(route.mass_kg)
    assert not any(route.mass_kg is None for route in given.routes)
    evaluator = vkmcore.ParticleEvaluator("3:1:1", 200)
    evaluator.relax(0)
    assert given.routes[0].mass_MeV == pytest.approx(evaluator.get_core_mass_mev_only(), rel=1e-14)
    invariants, _ = knot_invariants("3_1")
    functional = vkmcore.MassFunctional()
    canonical, model = vkmcore.VKMCanonicalXiModelParams(), vkmcore.KnotParticleModelParams()
    canonical.alpha_C, canonical.golden_layer = 2.0, 2
    model.a_k, model.a_wr = 0.5, 0.1
    expected = {
        "mass functional, baseline": functional.baseline_mass_from_ropelength(invariants.ropelength),
        "mass functional, canonical Xi": vkmcore.evaluate_single_knot_vkm_canonical(invariants, canonical).mass_kg,
        "particle model": vkmcore.KnotParticleModel(model).predict(invariants).mass_kg,
        "golden closure": vkmcore.GoldenNLSClosure().calculate_loop_mass(1e-15),
        "golden closure, inverted": 9.10938356e-31,
    }
    for name, mass in expected.items():
        assert by_name[name] == [pytest.approx(mass, rel=1e-10)], name
    phi, constants = (1 + 5**0.5) / 2, vkmcore.VKMCanonicalConstants.values()
    scale = constants.rho_m * 1.40897017e-15**3 * constants.geometric_gate / constants.swirl_clock**2
    assert by_name["master equation"] == [pytest.approx(scale * phi**-4 * 2.0 * 3, rel=1e-6)]
    dictionary = vkmcore.ZooEvaluator.get_entry_mass("Knot 3_1 (Trefoil)")
    assert [r.mass_MeV for r in given.routes if r.name == "dictionary"] == [pytest.approx(dictionary, rel=1e-13)]


def test_particles_are_the_library_s_table():
    rows = re.findall(r'\{("[^{}]+)\}', TABLE.read_text(encoding="utf-8"))
    parsed = [tuple(json.loads(f"[{row}]")) for row in rows]
    assert len(parsed) == 20 and parsed == [tuple(particle) for particle in PARTICLES]


def particle(*arguments):
    return CliRunner().invoke(cli, ["particle", *arguments])


def test_the_command():
    result = particle("3_1", "--give", "alpha_C=1")
    assert result.exit_code == 0, result.stderr
    for words in (
        "master equation",
        "needs",
        "proton",
        "938.272 MeV/c^2",
        "No route supports",
        "skipped as neighbours",
    ):
        assert words in result.stdout
    record = json.loads(particle("3_1", "--give", "alpha_C=1", "--json").stdout)
    assert record["given"] == {"alpha_C": 1.0} and len(record["particles"]) == 20
    assert {route["claim"] for route in record["routes"]} <= set(CheckKind.__members__)
    assert [route["mass_MeV"] is None for route in record["routes"]] == [bool(r["needs"]) for r in record["routes"]]


@pytest.mark.parametrize(
    ("arguments", "code", "words"),
    [
        (["nonsense"], 1, "nonsense"),
        (["Hopf"], 1, "Hopf"),
        (["3_1", "--give", "beta=1"], 1, "unknown input 'beta'; known are a_k"),
        (["3_1", "--give", "alpha_C"], 2, "expected NAME=VALUE"),
        (["3_1", "--give", "gate=0.5"], 1, "whole number"),
    ],
)
def test_bad_input(arguments, code, words):
    result = particle(*arguments)
    assert (result.exit_code, result.stdout) == (code, "") and words in result.stderr
