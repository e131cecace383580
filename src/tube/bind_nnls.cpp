#include "tube/nnls.hpp"
#include "tube/tube_registrars.hpp"

namespace vkm {

namespace {

using Vector = std::vector<double>;

constexpr const char* coordinate_descent_doc =
    R"(Multipliers x >= 0 that minimise |A x - target|, by coordinate descent.

Args:
    matrix: rigidity matrix A, one column per contact.
    target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
    max_iterations (int): limit of sweeps; 0 counts as 1.
    tolerance (float): ends the sweeps when no multiplier moves by more than (|x| + 1) tolerance or the relative
        residual is within it; 1e-10 if not positive.

Returns: NNLSResult; never raises for bad sizes, see `converged`.)";

constexpr const char* active_set_doc =
    R"(Multipliers x >= 0 that minimise |A x - target|, by Lawson and Hanson's active set.

Args:
    matrix: rigidity matrix A, one column per contact.
    target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
    max_iterations (int): limit of outer iterations; 0 counts as 1.
    tolerance (float): multipliers and dual slopes up to this count as zero; 1e-10 if not positive.
    ridge (float): added to the diagonal of each subproblem; climbs by factors of 10 where it is singular.

Returns: NNLSResult; never raises for bad sizes, see `converged`.)";

constexpr auto coordinate_descent = [](RigidityMatrix matrix, const Vector& target, std::uint64_t max_iterations,
                                       double tolerance) {
  return solve_by_coordinate_descent(matrix, target, {max_iterations, tolerance}, python_poll());
};
constexpr auto coordinate_descent_sparse = [](SparseRigidityMatrix matrix, const Vector& target,
                                              std::uint64_t max_iterations, double tolerance) {
  return solve_by_coordinate_descent(matrix, target, {max_iterations, tolerance}, python_poll());
};
constexpr auto active_set = [](RigidityMatrix matrix, const Vector& target, std::uint64_t max_iterations,
                               double tolerance, double ridge) {
  return solve_by_active_set(matrix, target, {max_iterations, tolerance, ridge}, python_poll());
};
constexpr auto active_set_sparse = [](SparseRigidityMatrix matrix, const Vector& target, std::uint64_t max_iterations,
                                      double tolerance, double ridge) {
  return solve_by_active_set(matrix, target, {max_iterations, tolerance, ridge}, python_poll());
};

}  // namespace

void register_nnls_record(py::module_& m) {
  auto result = bound_class<NNLSResult>(m, "NNLSResult", "A non-negative least squares fit of A x to b.");
  result.def(py::init<>());
  def_list(result, "multipliers", &NNLSResult::multipliers, "x, one float per column.");
  result.def_readwrite("residual_norm", &NNLSResult::residual_norm, "|A x - b|.")
      .def_readwrite("relative_residual", &NNLSResult::relative_residual, "residual_norm / max(|b|, 1e-14).")
      .def_readwrite("objective", &NNLSResult::objective, "Half the squared residual_norm.")
      .def_readwrite("iterations", &NNLSResult::iterations, "Sweeps or outer iterations used.")
      .def_readwrite("converged", &NNLSResult::converged, "The method's test was met.")
      .def_readwrite("algorithm", &NNLSResult::algorithm,
                     "'coordinate_descent', 'coordinate_descent_sparse' or 'active_set'.")
      .def_readwrite("active_set_size", &NNLSResult::active_set_size, "Multipliers above the tolerance.");
}

void register_nnls(py::module_& m) {
  auto map = py::reinterpret_borrow<py::class_<ContactStressMap>>(m.attr("ContactStressMap"));
  map.def_static("solve_nonnegative_least_squares", coordinate_descent, py::arg("matrix"), py::arg("target"),
                 py::arg("max_iterations") = 5000, py::arg("tolerance") = 1e-10, coordinate_descent_doc)
      .def_static("solve_nonnegative_least_squares_sparse", coordinate_descent_sparse, py::arg("matrix"),
                  py::arg("target"), py::arg("max_iterations") = 5000, py::arg("tolerance") = 1e-10,
                  coordinate_descent_doc)
      .def_static("solve_nonnegative_least_squares_active_set", active_set, py::arg("matrix"), py::arg("target"),
                  py::arg("max_iterations") = 2000, py::arg("tolerance") = 1e-10, py::arg("ridge") = 1e-12,
                  active_set_doc)
      .def_static("solve_nonnegative_least_squares_sparse_active_set", active_set_sparse, py::arg("matrix"),
                  py::arg("target"), py::arg("max_iterations") = 2000, py::arg("tolerance") = 1e-10,
                  py::arg("ridge") = 1e-12, active_set_doc);
  m.def("resolved_tube_solve_active_set", active_set_sparse, py::arg("matrix"), py::arg("target"),
        py::arg("max_iterations") = 2000, py::arg("tolerance") = 1e-10, py::arg("ridge") = 1e-12, active_set_doc);
}

}  // namespace vkm
