#include "tube/contact_stress.hpp"
#include "tube/matrix_market.hpp"
#include "tube/rigidity.hpp"
#include "tube/tube_registrars.hpp"

namespace vkm {

namespace {

using Points = std::vector<Vec3>;

constexpr const char* build_doc = R"(Rigidity matrix of a tube: one column per active contact, struts before kinks.

Args:
    points: vertices, N lists of three floats or an (N, 3) array.
    tube: the ResolvedTubeMetrics of these points; another's gives columns without meaning.
    include_struts, include_kinks (bool): which contacts to take.
    kink_finite_difference_step (float): relative step where a kink's gradient is found by differences.
    use_analytic_kink_gradient (bool): False takes differences for all kinks.

Contacts whose gradient has a norm up to 1e-14 give no column.)";

constexpr const char* sparse_doc =
    R"(Sparse rigidity matrix of a tube: entries above 1e-15 in magnitude, rows ascending.

Arguments as for the dense form, which holds the same numbers.)";

constexpr const char* diagnose_doc =
    R"(How far the length gradient of a tube lies from the cone of its contacts' gradients.

Args:
    points: vertices, N lists of three floats or an (N, 3) array.
    tube: the ResolvedTubeMetrics of these points.
    solve_nnls (bool): False reports the counts and norms alone.
    max_iterations, tolerance: of the non-negative fit.
    use_sparse_solver, use_active_set_solver (bool): which of the four solvers.
    use_analytic_kink_gradient (bool): False takes differences for all kinks.

Returns: ContactStressDiagnostics; a contact_residual of 0 is a length-critical polygon.)";

template <class Column>
void bind_column_head(py::class_<Column>& cls) {
  cls.def(py::init<>())
      .def_readwrite("kind", &Column::kind, "'strut' or 'kink'.")
      .def_readwrite("strut_index", &Column::strut_index, "Position in the tube's struts; 0 for a kink.")
      .def_readwrite("kink_index", &Column::kink_index, "Position in the tube's kinks; 0 for a strut.")
      .def_readwrite("vertex", &Column::vertex, "Vertex of a kink; 0 for a strut.")
      .def_readwrite("norm", &Column::norm, "Euclidean norm of the gradient.");
}

}  // namespace

void register_rigidity_records(py::module_& m) {
  bound_class<SparseEntry>(m, "SparseEntry", "One stored entry of a sparse column.")
      .def(py::init<>())
      .def_readwrite("row", &SparseEntry::row, "Row, zero-based.")
      .def_readwrite("value", &SparseEntry::value, "Value.");

  auto column = bound_class<RigidityColumn>(m, "RigidityColumn", "The flat gradient of one active contact.");
  bind_column_head(column);
  def_list(column, "values", &RigidityColumn::values, "Flat gradient, 3 N floats.");

  auto matrix = bound_class<RigidityMatrix>(m, "RigidityMatrix", "Dense rigidity matrix, by columns.");
  matrix.def(py::init<>())
      .def_readwrite("row_count", &RigidityMatrix::row_count, "3 N.")
      .def_readwrite("column_count", &RigidityMatrix::column_count, "Number of columns.");
  def_list(matrix, "columns", &RigidityMatrix::columns, "List of RigidityColumn.");

  auto sparse_column =
      bound_class<SparseRigidityColumn>(m, "SparseRigidityColumn", "The stored entries of one gradient.");
  bind_column_head(sparse_column);
  def_list(sparse_column, "entries", &SparseRigidityColumn::entries, "List of SparseEntry, rows ascending.");

  auto sparse = bound_class<SparseRigidityMatrix>(m, "SparseRigidityMatrix", "Sparse rigidity matrix, by columns.");
  sparse.def(py::init<>())
      .def_readwrite("row_count", &SparseRigidityMatrix::row_count, "3 N.")
      .def_readwrite("column_count", &SparseRigidityMatrix::column_count, "Number of columns.")
      .def_readwrite("nonzero_count", &SparseRigidityMatrix::nonzero_count, "Number of stored entries.");
  def_list(sparse, "columns", &SparseRigidityMatrix::columns, "List of SparseRigidityColumn.");
}

void register_contact_stress_record(py::module_& m) {
  using Record = ContactStressDiagnostics;
  auto cls =
      bound_class<Record>(m, "ContactStressDiagnostics", "The fit of a length gradient by the gradients of contacts.");
  cls.def(py::init<>())
      .def_readwrite("contact_residual", &Record::contact_residual, "Relative residual of the fit.")
      .def_readwrite("strut_weight_sum", &Record::strut_weight_sum, "Sum of positive multipliers on struts.")
      .def_readwrite("kink_weight_sum", &Record::kink_weight_sum, "Sum of positive multipliers on kinks.")
      .def_readwrite("contact_entropy", &Record::contact_entropy, "Shannon entropy of the multipliers, nats.")
      .def_readwrite("gradient_norm", &Record::gradient_norm, "Norm of the length gradient.")
      .def_readwrite("residual_norm", &Record::residual_norm, "Norm of the residual.")
      .def_readwrite("nnls_objective", &Record::nnls_objective, "Half the squared residual norm.")
      .def_readwrite("strut_count", &Record::strut_count, "Struts of the tube.")
      .def_readwrite("kink_count", &Record::kink_count, "Kinks of the tube.")
      .def_readwrite("rigidity_rows", &Record::rigidity_rows, "3 N.")
      .def_readwrite("rigidity_columns", &Record::rigidity_columns, "Columns of the matrix.")
      .def_readwrite("nnls_iterations", &Record::nnls_iterations, "Iterations of the fit.")
      .def_readwrite("nnls_active_set_size", &Record::nnls_active_set_size, "Multipliers above the tolerance.")
      .def_readwrite("nnls_algorithm", &Record::nnls_algorithm, "Method of the fit.")
      .def_readwrite("solved_nnls", &Record::solved_nnls, "A fit was run.")
      .def_readwrite("nnls_converged", &Record::nnls_converged, "The fit converged.");
  def_list(cls, "multipliers", &Record::multipliers, "One float per column.");
}

void register_contact_stress_map(py::module_& m) {
  const auto build = [](const Points& points, ResolvedTubeMetrics tube, bool include_struts, bool include_kinks,
                        double kink_finite_difference_step, bool use_analytic_kink_gradient) {
    return build_rigidity_matrix(
        points, tube, {include_struts, include_kinks, {use_analytic_kink_gradient, kink_finite_difference_step}},
        python_poll());
  };
  const auto build_sparse = [](const Points& points, ResolvedTubeMetrics tube, bool include_struts, bool include_kinks,
                               double kink_finite_difference_step, bool use_analytic_kink_gradient) {
    return build_sparse_rigidity_matrix(
        points, tube, {include_struts, include_kinks, {use_analytic_kink_gradient, kink_finite_difference_step}},
        python_poll());
  };
  const auto write_matrix = [](SparseRigidityMatrix sparse, const std::string& path, bool one_based_indices) {
    write_sparse_matrix_market(sparse, path, one_based_indices, python_poll());
  };
  const auto write_market = [](const std::vector<double>& vector, const std::string& path) {
    write_vector_market(vector, path, python_poll());
  };
  const auto write_csv = [](const std::vector<double>& vector, const std::string& path) {
    write_vector_csv(vector, path, python_poll());
  };
  constexpr const char* matrix_market_doc =
      "Write the matrix as a Matrix Market coordinate file, 17 significant digits, and replace the file by it as a\n"
      "whole. Raises RuntimeError if the file cannot be opened or written; the old one stays then.";
  constexpr const char* vector_market_doc =
      "Write the floats as a Matrix Market array file, 17 significant digits, and replace the file by it as a whole.\n"
      "Raises RuntimeError if the file cannot be opened or written; the old one stays then.";

  auto map = bound_class<ContactStressMap>(m, "ContactStressMap",
                                           "Rigidity matrices of resolved tubes and the stress that contacts carry.");

  // Each of these stands on the class and, under another name, in the module.
  const auto both = [&](const char* member, const char* function, const auto& call, const auto&... extra) {
    map.def_static(member, call, extra...);
    m.def(function, call, extra...);
  };
  const auto both_builders = [&](const char* member, const char* function, const auto& call, const char* doc) {
    both(member, function, call, py::arg("points"), py::arg("tube"), py::arg("include_struts") = true,
         py::arg("include_kinks") = true, py::arg("kink_finite_difference_step") = 1e-6,
         py::arg("use_analytic_kink_gradient") = true, doc);
  };
  both_builders("build_rigidity_matrix", "resolved_tube_build_rigidity_matrix", build, build_doc);
  both_builders("build_sparse_rigidity_matrix", "resolved_tube_build_sparse_rigidity_matrix", build_sparse, sparse_doc);
  map.def_static("sparse_to_dense", &sparse_to_dense, py::arg("sparse"),
                 "The dense matrix of the same columns; entries at or beyond row_count are ignored.");
  both("write_sparse_matrix_market", "resolved_tube_write_matrix_market", write_matrix, py::arg("sparse"),
       py::arg("path"), py::arg("one_based_indices") = true, matrix_market_doc);
  both("write_vector_market", "resolved_tube_write_vector_market", write_market, py::arg("vector"), py::arg("path"),
       vector_market_doc);
  map.def_static(
      "write_vector_csv", write_csv, py::arg("vector"), py::arg("path"),
      "Write the floats as CSV with the header row,value, 17 significant digits, and replace the file by it as a\n"
      "whole. Raises RuntimeError if the file cannot be opened or written; the old one stays then.");
}

void register_contact_diagnosis(py::module_& m) {
  const auto diagnose = [](const Points& points, ResolvedTubeMetrics tube, bool solve_nnls,
                           std::uint64_t max_iterations, double tolerance, bool use_sparse_solver,
                           bool use_analytic_kink_gradient, bool use_active_set_solver) {
    const ContactFit fit{
        use_sparse_solver, use_active_set_solver, use_analytic_kink_gradient, {max_iterations, tolerance}};
    return diagnose_length_criticality(points, tube, solve_nnls, fit, python_poll());
  };
  const auto define = [&](auto&& def) {
    def(diagnose, py::arg("points"), py::arg("tube"), py::arg("solve_nnls") = true, py::arg("max_iterations") = 5000,
        py::arg("tolerance") = 1e-10, py::arg("use_sparse_solver") = true, py::arg("use_analytic_kink_gradient") = true,
        py::arg("use_active_set_solver") = true, diagnose_doc);
  };
  auto map = py::reinterpret_borrow<py::class_<ContactStressMap>>(m.attr("ContactStressMap"));
  define([&](const auto&... all) { map.def_static("diagnose_length_criticality", all...); });
  define([&](const auto&... all) { m.def("resolved_tube_kkt_diagnostics", all...); });
}

}  // namespace vkm
