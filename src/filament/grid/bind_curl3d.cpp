#include <limits>

#include "filament/grid/periodic_box.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_curl3d(py::module_& m) {
  m.def(
      "curl3d_central",
      [](const ContiguousArray& vel, double spacing) {
        if (vel.ndim() != 4 || vel.shape(3) != 3) {
          throw std::invalid_argument("curl3d_central: vel must be (Nx,Ny,Nz,3)");
        }
        GridShape shape{};
        for (std::size_t d = 0; d < 3; ++d) {
          const py::ssize_t extent = vel.shape(static_cast<py::ssize_t>(d));
          if (extent > std::numeric_limits<int>::max()) throw std::invalid_argument("curl3d_central: vel is too large");
          shape[d] = static_cast<int>(extent);
        }
        std::vector<Vec3> field(static_cast<std::size_t>(vel.size()) / 3);
        const double* in = vel.data();
        for (Vec3& vector : field) vector = {in[0], in[1], in[2]}, in += 3;
        py::array_t<double> result(std::vector<py::ssize_t>(vel.shape(), vel.shape() + 4));
        double* out = result.mutable_data();
        for (const Vec3& vector : curl_central(field, shape, spacing))
          out = std::copy(vector.begin(), vector.end(), out);
        return result;
      },
      py::arg("vel"), py::arg("spacing"),
      R"(Curl of a vector field on a periodic grid, by central differences.

`vel` has shape (Nx, Ny, Nz, 3), x along the first axis; `spacing` is the distance of neighbouring cells. Returns a new
array of the same shape. ValueError for other shapes.)");
}

}  // namespace vkm
