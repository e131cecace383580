#include "filament/sums/magnetostatics.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

using Components = std::tuple<py::array_t<double>, py::array_t<double>, py::array_t<double>>;

ContiguousArray converted(const py::object& value) {
  py::detail::make_caster<ContiguousArray> caster;
  if (!caster.load(value, true)) throw std::invalid_argument("Inputs must be convertible to float64 arrays");
  return py::detail::cast_op<ContiguousArray>(std::move(caster));
}

/// Field points as three arrays of one shape, in row-major order.
struct FieldPoints {
  std::vector<py::ssize_t> shape;
  Lanes lanes;
};

FieldPoints field_points(const ContiguousArray& X, const ContiguousArray& Y, const ContiguousArray& Z) {
  if (X.ndim() != Y.ndim() || X.ndim() != Z.ndim()) {
    throw std::invalid_argument("X, Y, Z must share the same number of dimensions");
  }
  for (py::ssize_t d = 0; d < X.ndim(); ++d) {
    if (X.shape(d) != Y.shape(d) || X.shape(d) != Z.shape(d)) {
      throw std::invalid_argument("X, Y, Z must have identical shapes");
    }
  }
  if (X.ndim() == 0) throw std::invalid_argument("invalid axis");
  FieldPoints points{{X.shape(), X.shape() + X.ndim()}, Lanes(static_cast<std::size_t>(X.size()))};
  const ContiguousArray* axes[] = {&X, &Y, &Z};
  for (std::size_t a = 0; a < 3; ++a) std::copy_n(axes[a]->data(), points.lanes.size(), points.lanes.axis(a));
  return points;
}

std::vector<Vec3> sources(const ContiguousArray& array, const std::string& name) {
  std::vector<Vec3> points = points_from(array, (name + " must have shape [N,3]").c_str());
  if (points.empty()) throw std::invalid_argument(name + " must have at least 1 row");
  return points;
}

Components components(const Lanes& field, const std::vector<py::ssize_t>& shape) {
  const auto axis = [&](std::size_t a) {
    py::array_t<double> array(shape);
    std::copy_n(field.axis(a), field.size(), array.mutable_data());
    return array;
  };
  return {axis(0), axis(1), axis(2)};
}

}  // namespace

void bind_field_grids(py::module_& m) {
  m.def("dipole_field_at_point", &dipole_field, py::arg("r"), py::arg("m"),
        R"(Analytical point dipole field (mu0=1).

(3 (m.r) / |r|^3 r - m) / (4 pi |r|^3): the radial term is one power of |r| weaker than the textbook's. Zero where
|r| < 1e-12.)");

  m.def(
      "biot_savart_wire_grid",
      [](const py::object& X, const py::object& Y, const py::object& Z, const py::object& wire_points, double current) {
        const ContiguousArray x = converted(X), y = converted(Y), z = converted(Z), wire = converted(wire_points);
        const FieldPoints points = field_points(x, y, z);
        return components(wire_field(sources(wire, "wire_points"), points.lanes, current, python_poll()), points.shape);
      },
      py::arg("X"), py::arg("Y"), py::arg("Z"), py::arg("wire_points"), py::arg("current") = 1.0,
      R"(Field of an open wire by the Biot-Savart law (mu0=1).

`X`, `Y`, `Z` are arrays of one shape, `wire_points` has shape (N, 3) and N - 1 segments. Returns (Bx, By, Bz), new
arrays of the shape of X. Segments nearer than 1e-12 to a field point are left out. ValueError for shapes that do not
fit.)");

  m.def(
      "dipole_ring_field_grid",
      [](const py::object& X, const py::object& Y, const py::object& Z, const py::object& positions,
         const py::object& moments) {
        const ContiguousArray x = converted(X), y = converted(Y), z = converted(Z);
        const ContiguousArray at = converted(positions), m_array = converted(moments);
        const FieldPoints points = field_points(x, y, z);
        const std::vector<Vec3> p = sources(at, "positions");
        const std::vector<Vec3> dipoles = sources(m_array, "moments");
        if (p.size() != dipoles.size()) {
          throw std::invalid_argument("positions and moments must have the same number of rows");
        }
        return components(dipole_field_sum(p, dipoles, points.lanes, python_poll()), points.shape);
      },
      py::arg("X"), py::arg("Y"), py::arg("Z"), py::arg("positions"), py::arg("moments"),
      R"(Sum of the fields of point dipoles (mu0=1), each as in dipole_field_at_point.

`X`, `Y`, `Z` are arrays of one shape, `positions` and `moments` have shape (N, 3). Returns (Bx, By, Bz), new arrays of
the shape of X. ValueError for shapes that do not fit.)");

  m.def(
      "biot_savart_vector_potential_grid",
      [](const DoubleArray& polyline, const DoubleArray& grid, double current) {
        const std::vector<Vec3> curve = points_from(polyline, "polyline must have shape [N,3]");
        const Lanes points = lanes_from(grid, "grid must have shape [M,3]");
        return components(vector_potential(curve, points, current, python_poll()),
                          {static_cast<py::ssize_t>(points.size())});
      },
      py::arg("polyline"), py::arg("grid"), py::arg("current") = 1.0,
      R"(Vector potential of an open polyline (mu0=1): current / (4 pi) sum dl / |R|, R from each segment's midpoint.

`polyline` has shape (N, 3) and N - 1 segments, `grid` (M, 3). Returns (Ax, Ay, Az), three new arrays of shape (M,).
Segments nearer than 1e-12 to a grid point are left out. ValueError for other shapes.)");
}

}  // namespace vkm
