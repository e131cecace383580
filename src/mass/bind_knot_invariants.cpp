#include "mass/knot_invariants.hpp"
#include "mass/knot_metadata_arguments.hpp"
#include "mass/mass_registrars.hpp"
#include "mass/xi_model.hpp"

namespace vkm {

namespace {

constexpr const char* block_doc = R"(Build KnotInvariants from Fourier coefficients plus optional catalog metadata.

Args:
    block: the curve; lengths come out in the units of its coefficients.
    knot_name, crossing_number, braid_index, seifert_genus: taken as given.
    chirality: clamped to -1 .. 1.
    hyperbolic, hyperbolic_volume: the volume counts for a hyperbolic knot only, and is at least 0.
    nsamples: vertices of the polygon that is measured, at least 64.
    exclude_window: vertices to either side that count as neighbours, at least 1.

Raises ValueError when a coefficient vector is shorter than a_x, MemoryError for absurd sample counts.)";

constexpr const char* file_doc =
    R"(Load a .fseries file, build KnotInvariants from its largest block, and return the payload.

Arguments from knot_name on as for build_invariants_from_fourier_block; an empty name becomes the file's. Raises
RuntimeError when the file cannot be read or holds no block.)";

}  // namespace

void register_knot_invariants(py::module_& m) {
  py::enum_<SectorGate>(m, "SectorGate", "Whether the gate lambda_c / (pi r_c) multiplies a knot's mass.")
      .value("Shielded", SectorGate::Shielded)
      .value("Exposed", SectorGate::Exposed)
      .value("Unknown", SectorGate::Unknown);

  using K = KnotInvariants;
  bound_class<K>(m, "KnotInvariants", "Catalogue metadata, curve descriptors and tube measures of a knot.")
      .def(py::init<>())
      .def_readwrite("name", &K::name, "Knot name.")
      .def_readwrite("crossing_number", &K::crossing_number, "Crossing number k.")
      .def_readwrite("braid_index", &K::braid_index, "Braid index b.")
      .def_readwrite("seifert_genus", &K::seifert_genus, "Seifert genus g.")
      .def_readwrite("chirality", &K::chirality, "-1, 0 or 1.")
      .def_readwrite("hyperbolic", &K::hyperbolic, "Whether the knot is hyperbolic.")
      .def_readwrite("hyperbolic_volume", &K::hyperbolic_volume, "Volume, 0 when not hyperbolic.")
      .def_readwrite("ropelength_like", &K::ropelength_like, "The ropelength measure that is always there.")
      .def_readwrite("hyperbolic_volume_opt", &K::hyperbolic_volume_opt,
                     "Set for a hyperbolic knot only; goes before hyperbolic_volume.")
      .def_readwrite("ropelength", &K::ropelength, "Goes before ropelength_like where it is set.")
      .def_readwrite("writhe", &K::writhe, "Writhe of the curve.")
      .def_readwrite("min_self_distance", &K::min_self_distance, "Least distance of vertices that are not neighbours.")
      .def_readwrite("bending_energy", &K::bending_energy, "Integral of curvature squared, 1 / length.")
      .def_readwrite("thickness_rad", &K::thickness_rad, "Tube radius.")
      .def_readwrite("ropelength_rad", &K::ropelength_rad, "Length over tube radius.")
      .def_readwrite("ropelength_diam", &K::ropelength_diam, "Length over tube diameter.")
      .def_readwrite("minrad_min", &K::minrad_min, "Least discrete curvature radius.")
      .def_readwrite("dcsd_min", &K::dcsd_min, "Least doubly critical self-distance.")
      .def_readwrite("strut_count", &K::strut_count, "Active edge contacts.")
      .def_readwrite("kink_count", &K::kink_count, "Active curvature contacts.")
      .def_readwrite("contact_residual", &K::contact_residual, "Relative residual of the contact stress.")
      .def_readwrite("contact_entropy", &K::contact_entropy, "Entropy of the contact multipliers, nats.")
      .def_readwrite("ropelength_lower_bound_ok", &K::ropelength_lower_bound_ok,
                     "Whether the ropelength is one that a non-trivial knot can have.");
}

void register_invariant_builders(py::module_& m) {
  def_with_metadata<FourierBlock>(
      m, "build_invariants_from_fourier_block",
      [](const FourierBlock& block, const KnotMetadata& metadata) {
        return build_invariants_from_fourier_block(block, metadata, python_poll());
      },
      block_doc, py::arg("block"));
  def_with_metadata<std::string>(
      m, "build_invariants_from_fseries",
      [](const std::string& path, const KnotMetadata& metadata) {
        return build_invariants_from_fseries(path, metadata, python_poll());
      },
      file_doc, py::arg("path"));
}

}  // namespace vkm
