#include <cstdint>
#include <string>

#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/motion/curve_sampling.hpp"

namespace vkm {

namespace {

/// The rows of a curve to sample: another rank is told from another width.
std::vector<Vec3> polyline_from(const DoubleArray& array) {
  if (array.ndim() != 2) {
    throw std::invalid_argument("array has incorrect number of dimensions: " + std::to_string(array.ndim()) +
                                "; expected 2");
  }
  return points_from(array, shape_text);
}

py::array_t<double> resample(const DoubleArray& points, std::uint32_t n) {
  return array_from(resample_closed_curve(polyline_from(points), n, python_poll()));
}

py::array_t<double> sample_circle_array(std::uint32_t n, double R, double z) {
  return array_from(sample_circle(n, R, z, python_poll()));
}

py::array_t<double> sampled(const DoubleArray& array, std::uint32_t n, bool arclength_uniform) {
  const std::vector<Vec3> points = polyline_from(array);
  return array_from(arclength_uniform && points.size() != n ? resample_closed_curve(points, n, python_poll()) : points);
}

}  // namespace

void register_curve_sampling(py::module_& m) {
  m.def("resample_closed_curve", &resample, py::arg("points"), py::arg("n"),
        R"(Resample a closed polygon at n equal steps of its length, by linear interpolation.

points: array (N, 3), closing vertex not repeated; the closing edge counts. Returns an array (n, 3) that begins at
points[0] and ends one step short of it; zeros if there are fewer than two points or the length is 0.

Raises ValueError "Expected (N,3) array" for another width, and for another rank.)");

  m.def("sample_curve", &sampled, py::arg("points"), py::arg("n"), py::arg("arclength_uniform") = true,
        R"(Sample a closed polygon: n points at equal steps of its length, as resample_closed_curve does.

With arclength_uniform=False, or when points has n rows already, the points come back as they are.)");

  m.def("sample_circle", &sample_circle_array, py::arg("n"), py::arg("R") = 1.0, py::arg("z") = 0.0,
        R"(Sample a circle of radius R about the z axis, at height z: array (n, 3), counterclockwise from (R, 0, z).)");
}

}  // namespace vkm
