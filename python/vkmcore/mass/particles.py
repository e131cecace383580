"""The library's table of particles (src/mass/standard_model.cpp): rounded measured masses, which no formula reads."""

from __future__ import annotations

from typing import NamedTuple


class Particle(NamedTuple):
    """A row of the table, as texts."""

    category: str
    generation: str  # I, II, III, or - where there is none
    symbol: str
    name: str
    mass: str  # with its unit; 0 for massless, < for an upper limit
    charge: str  # elementary charges; pm1 is both signs
    spin: float  # hbar


PARTICLES = (
    Particle("quark", "I", "u", "up", "2.4 MeV/c^2", "2/3", 0.5),
    Particle("quark", "II", "c", "charm", "1.27 GeV/c^2", "2/3", 0.5),
    Particle("quark", "III", "t", "top", "171.2 GeV/c^2", "2/3", 0.5),
    Particle("quark", "I", "d", "down", "4.8 MeV/c^2", "-1/3", 0.5),
    Particle("quark", "II", "s", "strange", "104 MeV/c^2", "-1/3", 0.5),
    Particle("quark", "III", "b", "bottom", "4.2 GeV/c^2", "-1/3", 0.5),
    Particle("lepton", "I", "nu_e", "electron neutrino", "<2.2 eV/c^2", "0", 0.5),
    Particle("lepton", "II", "nu_mu", "muon neutrino", "<0.17 MeV/c^2", "0", 0.5),
    Particle("lepton", "III", "nu_tau", "tau neutrino", "<15.5 MeV/c^2", "0", 0.5),
    Particle("lepton", "I", "e", "electron", "0.511 MeV/c^2", "-1", 0.5),
    Particle("lepton", "II", "mu", "muon", "105.7 MeV/c^2", "-1", 0.5),
    Particle("lepton", "III", "tau", "tau", "1.777 GeV/c^2", "-1", 0.5),
    Particle("gauge boson", "-", "gamma", "photon", "0", "0", 1.0),
    Particle("gauge boson", "-", "g", "gluon", "0", "0", 1.0),
    Particle("gauge boson", "-", "Z0", "Z boson", "91.2 GeV/c^2", "0", 1.0),
    Particle("gauge boson", "-", "Wpm", "W boson", "80.4 GeV/c^2", "pm1", 1.0),
    Particle("scalar boson", "-", "H", "Higgs boson", "125.1 GeV/c^2", "0", 0.0),
    Particle("meson", "-", "pi0", "pion (pi0)", "134.97 MeV/c^2", "0", 0.0),
    Particle("baryon", "-", "p+", "proton", "938.272 MeV/c^2", "1", 0.5),
    Particle("baryon", "-", "n", "neutron", "939.565 MeV/c^2", "0", 0.5),
)
