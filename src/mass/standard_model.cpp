#include "mass/standard_model.hpp"

namespace vkm {

// clang-format off
constexpr std::array<ParticleRecord, 20> standard_model = {{
    {"quark", "I", "u", "up", "2.4 MeV/c^2", "2/3", 0.5},
    {"quark", "II", "c", "charm", "1.27 GeV/c^2", "2/3", 0.5},
    {"quark", "III", "t", "top", "171.2 GeV/c^2", "2/3", 0.5},
    {"quark", "I", "d", "down", "4.8 MeV/c^2", "-1/3", 0.5},
    {"quark", "II", "s", "strange", "104 MeV/c^2", "-1/3", 0.5},
    {"quark", "III", "b", "bottom", "4.2 GeV/c^2", "-1/3", 0.5},
    {"lepton", "I", "nu_e", "electron neutrino", "<2.2 eV/c^2", "0", 0.5},
    {"lepton", "II", "nu_mu", "muon neutrino", "<0.17 MeV/c^2", "0", 0.5},
    {"lepton", "III", "nu_tau", "tau neutrino", "<15.5 MeV/c^2", "0", 0.5},
    {"lepton", "I", "e", "electron", "0.511 MeV/c^2", "-1", 0.5},
    {"lepton", "II", "mu", "muon", "105.7 MeV/c^2", "-1", 0.5},
    {"lepton", "III", "tau", "tau", "1.777 GeV/c^2", "-1", 0.5},
    {"gauge boson", "-", "gamma", "photon", "0", "0", 1.0},
    {"gauge boson", "-", "g", "gluon", "0", "0", 1.0},
    {"gauge boson", "-", "Z0", "Z boson", "91.2 GeV/c^2", "0", 1.0},
    {"gauge boson", "-", "Wpm", "W boson", "80.4 GeV/c^2", "pm1", 1.0},
    {"scalar boson", "-", "H", "Higgs boson", "125.1 GeV/c^2", "0", 0.0},
    {"meson", "-", "pi0", "pion (pi0)", "134.97 MeV/c^2", "0", 0.0},
    {"baryon", "-", "p+", "proton", "938.272 MeV/c^2", "1", 0.5},
    {"baryon", "-", "n", "neutron", "939.565 MeV/c^2", "0", 0.5},
}};
// clang-format on
static_assert(standard_model.back().name != nullptr, "a row is missing");

}  // namespace vkm
