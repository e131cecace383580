#include "formulas/thermodynamics.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_thermo(py::module_& m) {
  m.def("potential_temperature", &potential_temperature, py::arg("T"), py::arg("p0"), py::arg("p"), py::arg("R"),
        py::arg("cp"),
        R"(Compute potential temperature θ = T (p0/p)^k

with k = R / cp: the temperature in K of a parcel brought adiabatically from the pressure p to p0 (Poisson).)");
  m.def("entropy_from_theta", &entropy_from_theta, py::arg("cp"), py::arg("theta"), py::arg("dtheta"),
        R"(Entropy differential ds = cp * dθ / θ

in the unit of cp, J/(kg K).)");
  m.def("entropy_from_pv", &entropy_from_pv, py::arg("N"), py::arg("R"), py::arg("p"), py::arg("V"), py::arg("gamma"),
        R"(Entropy from pressure and volume ds = NR/(γ-1) * (ln(p)+ln(V))

in the unit of N R. Both logarithms have the weight 1, where the entropy of an ideal gas has γ ln(V). An infinity
or NaN for gamma = 1.)");
  m.def("enthalpy", &enthalpy, py::arg("internal_energy"), py::arg("p"), py::arg("V"),
        R"(Enthalpy H = E + pV

in J, for E in J, p in Pa and V in m^3.)");
}

}  // namespace vkm
