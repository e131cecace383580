#include "module/binders.hpp"
#include "spectral/dense_matrix.hpp"
#include "spectral/grid.hpp"
#include "spectral/jacobi.hpp"
#include "spectral/operators.hpp"
#include "spectral/potentials.hpp"
#include "spectral/spectrum.hpp"

namespace vkm {

namespace {

/// Holds the static methods; has no instances.
struct TrefoilOperator {};

using Vector = py::array_t<double>;

std::vector<double> vector_from(const DoubleArray& array, const char* call_and_argument) {
  if (array.ndim() != 1) throw std::runtime_error(std::string(call_and_argument) + ": expected a 1D array");
  return values_from(array, "");
}

/// A square matrix; the text is that of any other shape.
SquareMatrix matrix_from(const ContiguousArray& array, const char* text) {
  if (array.ndim() != 2 || array.shape(0) != array.shape(1)) throw std::runtime_error(text);
  SquareMatrix matrix(static_cast<std::uint64_t>(array.shape(0)));
  std::copy_n(array.data(), matrix.values.size(), matrix.values.begin());
  return matrix;
}

py::array_t<double> square_array(std::span<const double> values, std::size_t n) {
  const auto side = static_cast<py::ssize_t>(n);
  return array_from(values, {side, side});
}

py::array_t<double> array_of(const SquareMatrix& matrix) { return square_array(matrix.values, matrix.n); }

py::dict dict_of(const SpectralSolveResult& result) {
  py::dict dict;
  dict["eigenvalues"] = array_from(result.eigenvalues);
  dict["eigenvectors"] = py::none();
  if (!result.eigenvectors.empty()) dict["eigenvectors"] = square_array(result.eigenvectors, result.n);
  dict["n"] = result.n;
  return dict;
}

/// A matrix and a vector of its dimension, for three operations that take them.
struct Pair {
  SquareMatrix matrix;
  std::vector<double> x;

  Pair(const std::string& name, const ContiguousArray& a, const DoubleArray& b)
      : matrix(matrix_from(a, (name + ": matrix must be square (n,n)").c_str())),
        x(vector_from(b, (name + "(x)").c_str())) {
    if (x.size() != matrix.n) throw std::runtime_error(name + ": x length must equal matrix dimension");
  }
};

void bind_records(py::module_& m) {
  bound_class<Grid1D>(m, "Grid1D", "A uniform grid of n points from u_min to u_max, both included.")
      .def(py::init<>())
      .def_readwrite("u_min", &Grid1D::u_min)
      .def_readwrite("u_max", &Grid1D::u_max)
      .def_readwrite("n", &Grid1D::n)
      .def_property_readonly("spacing", &Grid1D::spacing, "(u_max - u_min) / (n - 1), or 0 for n below 2.");
  bound_class<BoundaryOptions>(m, "BoundaryOptions",
                               "Boundary rows of an operator: mode 0 Dirichlet, 1 Dirichlet with a centre node, "
                               "2 reflecting ends.")
      .def(py::init<>())
      .def_readwrite("mode", &BoundaryOptions::mode)
      .def_readwrite("force_center_dirichlet", &BoundaryOptions::force_center_dirichlet);
  bound_class<PotentialGaussianWell>(m, "PotentialGaussianWell",
                                     "amplitude exp(-(u - center)^2 / (2 sigma^2)), a well for a negative amplitude.")
      .def(py::init<>())
      .def_readwrite("center", &PotentialGaussianWell::center)
      .def_readwrite("amplitude", &PotentialGaussianWell::amplitude)
      .def_readwrite("sigma", &PotentialGaussianWell::sigma);
  auto options = bound_class<PotentialOptions>(
      m, "PotentialOptions", "constant_shift + harmonic_coeff u^2 + quartic_coeff u^4 + the sum of the gaussians.");
  options.def(py::init<>())
      .def_readwrite("harmonic_coeff", &PotentialOptions::harmonic_coeff)
      .def_readwrite("quartic_coeff", &PotentialOptions::quartic_coeff)
      .def_readwrite("constant_shift", &PotentialOptions::constant_shift);
  def_list(options, "gaussians", &PotentialOptions::gaussians, "List of PotentialGaussianWell.");
}

void bind_potentials(py::class_<TrefoilOperator>& cls) {
  cls.def_static(
      "build_potential_from_options",
      [](double u_min, double u_max, std::uint64_t n, PotentialOptions opts) {
        return array_from(spectral::build_potential_from_options({u_min, u_max, n}, opts, python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("opts"),
      "Potential of a PotentialOptions at the n grid points, shape (n,). RuntimeError for n < 2.");
  cls.def_static(
      "build_potential_from_nodes",
      [](double u_min, double u_max, std::uint64_t n, const DoubleArray& target_nodes, double well_amplitude,
         double well_sigma, double harmonic_coeff, double quartic_coeff, double constant_shift) {
        const auto nodes = vector_from(target_nodes, "build_potential_from_nodes(target_nodes)");
        return array_from(spectral::build_potential_from_nodes({u_min, u_max, n}, nodes, well_amplitude, well_sigma,
                                                               {harmonic_coeff, quartic_coeff, constant_shift, {}},
                                                               python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("target_nodes"), py::arg("well_amplitude"),
      py::arg("well_sigma"), py::arg("harmonic_coeff") = 0.0, py::arg("quartic_coeff") = 0.0,
      py::arg("constant_shift") = 0.0,
      "Potential with an equal Gaussian well at each target node, over a polynomial, shape (n,).\n"
      "RuntimeError for n < 2.");
  cls.def_static(
      "build_potential_from_trace_density",
      [](const DoubleArray& trace_density, double scale, double constant_shift, double smooth_strength) {
        const auto density = vector_from(trace_density, "build_potential_from_trace_density(trace_density)");
        return array_from(
            spectral::build_potential_from_samples(density, scale, constant_shift, smooth_strength, python_poll()));
      },
      py::arg("trace_density"), py::arg("scale"), py::arg("constant_shift") = 0.0, py::arg("smooth_strength") = 0.0,
      "scale density + constant_shift, of the density's length. A smooth_strength above 0 takes the mean over the\n"
      "samples i - r .. i + r, r = max(round(smooth_strength), 1), cut at both ends.");
  cls.def_static(
      "build_potential_from_phi_abs",
      [](const DoubleArray& phi_abs, double scale, double smooth_strength, double constant_shift) {
        const auto density = vector_from(phi_abs, "build_potential_from_phi_abs(phi_abs)");
        return array_from(
            spectral::build_potential_from_samples(density, scale, constant_shift, smooth_strength, python_poll()));
      },
      py::arg("phi_abs"), py::arg("scale"), py::arg("smooth_strength") = 0.0, py::arg("constant_shift") = 0.0,
      "As build_potential_from_trace_density, with smooth_strength before constant_shift.");
}

void bind_matrices(py::class_<TrefoilOperator>& cls) {
  cls.def_static(
      "build_identity", [](std::uint64_t n) { return array_of(spectral::build_identity(n)); }, py::arg("n"),
      "Identity matrix, shape (n, n).");
  cls.def_static(
      "build_uniform_grid",
      [](double u_min, double u_max, std::uint64_t n) {
        return array_from(spectral::build_uniform_grid({u_min, u_max, n}, python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"),
      "The points u_min + i h, h = (u_max - u_min) / (n - 1), shape (n,). RuntimeError for n < 2.");
  cls.def_static(
      "build_second_difference",
      [](double u_min, double u_max, std::uint64_t n, std::int32_t boundary_mode, bool force_center_dirichlet) {
        return array_of(spectral::build_second_difference({u_min, u_max, n}, {boundary_mode, force_center_dirichlet}));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("boundary_mode") = 0,
      py::arg("force_center_dirichlet") = true,
      "Second-difference matrix, shape (n, n): rows (w, -2 w, w), w = 1 / h^2. Boundary modes 0 and 1 set identity\n"
      "rows at both ends, 2 reflects; mode 1 with force_center_dirichlet also sets an identity row at the point\n"
      "nearest u = 0 if that lies within h / 2. RuntimeError for n < 3 or another mode.");
  cls.def_static(
      "build_laplacian_schrodinger_kinetic",
      [](double u_min, double u_max, std::uint64_t n, std::int32_t boundary_mode, bool force_center_dirichlet,
         double kinetic_prefactor) {
        return array_of(spectral::build_laplacian_schrodinger_kinetic(
            {u_min, u_max, n}, {boundary_mode, force_center_dirichlet}, kinetic_prefactor));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("boundary_mode") = 0,
      py::arg("force_center_dirichlet") = true, py::arg("kinetic_prefactor") = 1.0,
      "-kinetic_prefactor times the second difference, boundary rows included, shape (n, n).");
  cls.def_static(
      "assemble_schrodinger_matrix",
      [](double u_min, double u_max, std::uint64_t n, std::int32_t boundary_mode, bool force_center_dirichlet,
         const DoubleArray& potential, double kinetic_prefactor) {
        const auto v = vector_from(potential, "assemble_schrodinger_matrix(potential)");
        if (v.size() != n) throw std::runtime_error("assemble_schrodinger_matrix: potential length must equal n");
        return array_of(spectral::assemble_schrodinger_matrix(
            {u_min, u_max, n}, {boundary_mode, force_center_dirichlet}, v, kinetic_prefactor));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("boundary_mode"), py::arg("force_center_dirichlet"),
      py::arg("potential"), py::arg("kinetic_prefactor") = 1.0,
      "Kinetic matrix with potential(i) added to the diagonal, boundary rows included, shape (n, n).\n"
      "RuntimeError for n < 3, another mode or a potential of another length.");
  cls.def_static(
      "apply_diagonal_shift",
      [](const ContiguousArray& matrix, double shift) {
        return array_of(spectral::apply_diagonal_shift(
            matrix_from(matrix, "apply_diagonal_shift: matrix must be square (n,n)"), shift));
      },
      py::arg("matrix"), py::arg("shift"), "A copy of the matrix with shift added to each diagonal element.");
  cls.def_static(
      "assemble_transfer_kernel",
      [](double u_min, double u_max, std::uint64_t n, const DoubleArray& potential, double diffusion_scale,
         double potential_scale, bool normalize_rows) {
        const auto v = vector_from(potential, "assemble_transfer_kernel(potential)");
        if (v.size() != n) throw std::runtime_error("assemble_transfer_kernel: potential length must equal n");
        return array_of(spectral::assemble_transfer_kernel({u_min, u_max, n}, v, diffusion_scale, potential_scale,
                                                           normalize_rows, python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("potential"), py::arg("diffusion_scale"),
      py::arg("potential_scale"), py::arg("normalize_rows") = true,
      "K(i, j) = exp(-(u(i) - u(j))^2 / (2 s^2) - potential_scale V(j)), s = max(diffusion_scale, 1e-15), shape\n"
      "(n, n); rows with a sum above 0 are divided by it if normalize_rows. RuntimeError for n < 2 or a potential of\n"
      "another length.");
  cls.def_static(
      "generator_from_transfer_kernel",
      [](const ContiguousArray& kernel, double dt, bool subtract_identity_first) {
        return array_of(spectral::generator_from_transfer_kernel(
            matrix_from(kernel, "generator_from_transfer_kernel: kernel must be square (n,n)"), dt,
            subtract_identity_first));
      },
      py::arg("kernel"), py::arg("dt"), py::arg("subtract_identity_first") = true,
      "(K - 1) / dt, or K / dt unless subtract_identity_first. RuntimeError for dt = 0.");
  cls.def_static(
      "matrix_vector_multiply",
      [](const ContiguousArray& matrix, const DoubleArray& x) {
        const Pair pair("matrix_vector_multiply", matrix, x);
        return array_from(spectral::matrix_vector_multiply(pair.matrix, pair.x));
      },
      py::arg("matrix"), py::arg("x"), "A x for a matrix (n, n) and a vector (n,).");
  cls.def_static(
      "rayleigh_quotient",
      [](const ContiguousArray& matrix, const DoubleArray& x) {
        const Pair pair("rayleigh_quotient", matrix, x);
        return spectral::rayleigh_quotient(pair.matrix, pair.x);
      },
      py::arg("matrix"), py::arg("x"), "(x . A x) / (x . x), NaN for x = 0.");
  cls.def_static(
      "normalize_vector",
      [](const DoubleArray& x) {
        return array_from(spectral::normalize_vector(vector_from(x, "normalize_vector(x)")));
      },
      py::arg("x"), "A copy divided by its Euclidean norm, unchanged where the norm is not above 0.");
  cls.def_static(
      "residual_norm",
      [](const ContiguousArray& matrix, const DoubleArray& x, double lambda) {
        const Pair pair("residual_norm", matrix, x);
        return spectral::residual_norm(pair.matrix, pair.x, lambda);
      },
      py::arg("matrix"), py::arg("x"), py::arg("lambda"), "|A x - lambda x|.");
  cls.def_static(
      "trace_from_diagonal",
      [](const ContiguousArray& matrix) {
        return spectral::trace_from_diagonal(matrix_from(matrix, "trace_from_diagonal: matrix must be square (n,n)"));
      },
      py::arg("matrix"), "The sum of the diagonal.");
}

void bind_spectra(py::class_<TrefoilOperator>& cls) {
  cls.def_static(
      "eigenvalues",
      [](const ContiguousArray& matrix, std::int64_t max_sweeps, double tol, bool sort_ascending) {
        return array_from(
            spectral::jacobi_eigensolve_symmetric(matrix_from(matrix, "eigenvalues: matrix must be square (n,n)"),
                                                  {false, max_sweeps, tol, sort_ascending}, python_poll())
                .eigenvalues);
      },
      py::arg("matrix"), py::arg("max_sweeps") = 100, py::arg("tol") = 1e-12, py::arg("sort_ascending") = true,
      "Eigenvalues of a symmetric matrix, shape (n,): jacobi_eigensolve_symmetric without eigenvectors. max_sweeps\n"
      "limits single rotations.");
  cls.def_static(
      "logdet_from_eigenvalues",
      [](const DoubleArray& eigenvalues, double regularization) {
        return spectral::logdet_from_eigenvalues(vector_from(eigenvalues, "logdet_from_eigenvalues(eigenvalues)"),
                                                 regularization, python_poll());
      },
      py::arg("eigenvalues"), py::arg("regularization") = 1e-15,
      "The sum of ln(|e| + regularization), a log-determinant of magnitudes.");
  cls.def_static(
      "spectral_density_histogram",
      [](const DoubleArray& eigenvalues, double x_min, double x_max, std::uint64_t n_bins) {
        return array_from(spectral::spectral_density_histogram(
            vector_from(eigenvalues, "spectral_density_histogram(eigenvalues)"), x_min, x_max, n_bins));
      },
      py::arg("eigenvalues"), py::arg("x_min"), py::arg("x_max"), py::arg("n_bins"),
      "Counts of the eigenvalues with x_min <= e < x_max in n_bins equal bins, as floats, shape (n_bins,).\n"
      "RuntimeError unless x_min < x_max and n_bins > 0.");
  cls.def_static(
      "jacobi_eigensolve_symmetric",
      [](const ContiguousArray& matrix, bool compute_eigenvectors, std::int64_t max_sweeps, double tol,
         bool sort_ascending) {
        return dict_of(spectral::jacobi_eigensolve_symmetric(
            matrix_from(matrix, "jacobi_eigensolve_symmetric: matrix must be square (n,n)"),
            {compute_eigenvectors, max_sweeps, tol, sort_ascending}, python_poll()));
      },
      py::arg("matrix"), py::arg("compute_eigenvectors") = true, py::arg("max_sweeps") = 100, py::arg("tol") = 1e-12,
      py::arg("sort_ascending") = true,
      "Classical Jacobi solve of a symmetric matrix (n, n). Dict with \"eigenvalues\" (n,), \"eigenvectors\" (n, n) "
      "with\n"
      "column k for eigenvalue k, or None, and \"n\". max_sweeps limits single rotations, not sweeps over all pairs: "
      "a\n"
      "dense matrix needs some 2 n^2 to 4 n^2 of them. The solve stops when no off-diagonal magnitude reaches tol.");
  cls.def_static(
      "build_and_solve_node_anchored_operator",
      [](double u_min, double u_max, std::uint64_t n, std::int32_t boundary_mode, bool force_center_dirichlet,
         const DoubleArray& target_nodes, double well_amplitude, double well_sigma, double harmonic_coeff,
         double quartic_coeff, double constant_shift, double kinetic_prefactor, std::int64_t max_sweeps, double tol,
         bool sort_ascending) {
        const auto nodes = vector_from(target_nodes, "build_and_solve_node_anchored_operator(target_nodes)");
        const Grid1D grid{u_min, u_max, n};
        const auto potential =
            spectral::build_potential_from_nodes(grid, nodes, well_amplitude, well_sigma,
                                                 {harmonic_coeff, quartic_coeff, constant_shift, {}}, python_poll());
        return dict_of(spectral::solve_with_potential(grid, {boundary_mode, force_center_dirichlet}, potential,
                                                      kinetic_prefactor, {true, max_sweeps, tol, sort_ascending},
                                                      python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("boundary_mode"), py::arg("force_center_dirichlet"),
      py::arg("target_nodes"), py::arg("well_amplitude"), py::arg("well_sigma"), py::arg("harmonic_coeff") = 0.0,
      py::arg("quartic_coeff") = 0.0, py::arg("constant_shift") = 0.0, py::arg("kinetic_prefactor") = 1.0,
      py::arg("max_sweeps") = 100, py::arg("tol") = 1e-12, py::arg("sort_ascending") = true,
      "Schroedinger matrix with Gaussian wells at the target nodes, solved with eigenvectors; the dict of\n"
      "jacobi_eigensolve_symmetric. RuntimeError for n < 3 or another boundary mode.");
  cls.def_static(
      "build_and_solve_trace_anchored_operator",
      [](double u_min, double u_max, std::uint64_t n, std::int32_t boundary_mode, bool force_center_dirichlet,
         const DoubleArray& trace_density, double trace_scale, double smooth_strength, double constant_shift,
         double kinetic_prefactor, std::int64_t max_sweeps, double tol, bool sort_ascending) {
        const auto density = vector_from(trace_density, "build_and_solve_trace_anchored_operator(trace_density)");
        if (density.size() != n) {
          throw std::runtime_error("TrefoilOperator::buildAndSolveTraceAnchoredOperator: n_trace must equal grid.n");
        }
        const auto potential = spectral::build_potential_from_samples(density, trace_scale, constant_shift,
                                                                      smooth_strength, python_poll());
        return dict_of(spectral::solve_with_potential({u_min, u_max, n}, {boundary_mode, force_center_dirichlet},
                                                      potential, kinetic_prefactor,
                                                      {true, max_sweeps, tol, sort_ascending}, python_poll()));
      },
      py::arg("u_min"), py::arg("u_max"), py::arg("n"), py::arg("boundary_mode"), py::arg("force_center_dirichlet"),
      py::arg("trace_density"), py::arg("trace_scale"), py::arg("smooth_strength") = 0.0,
      py::arg("constant_shift") = 0.0, py::arg("kinetic_prefactor") = 1.0, py::arg("max_sweeps") = 100,
      py::arg("tol") = 1e-12, py::arg("sort_ascending") = true,
      "Schroedinger matrix with the potential of a trace density (n,), solved with eigenvectors; the dict of\n"
      "jacobi_eigensolve_symmetric. RuntimeError for n < 3, another boundary mode or a density of another length.");
  cls.def_static(
      "nearest_eigenvalues_to_targets",
      [](const DoubleArray& eigenvalues, const DoubleArray& targets) {
        const auto spectrum = vector_from(eigenvalues, "nearest_eigenvalues_to_targets(eigenvalues)");
        return array_from(spectral::nearest_eigenvalues_to_targets(
            spectrum, vector_from(targets, "nearest_eigenvalues_to_targets(targets)"), python_poll()));
      },
      py::arg("eigenvalues"), py::arg("targets"),
      "The eigenvalue nearest to each target, the first on a tie, shape of targets. ValueError if there are targets\n"
      "and no eigenvalues.");
}

}  // namespace

void bind_spectral_operator(py::module_& m) {
  bind_records(m);
  auto cls = bound_class<TrefoilOperator>(
      m, "TrefoilOperator", "One-dimensional spectral operators on a uniform grid, their potentials and spectra.");
  bind_matrices(cls);
  bind_potentials(cls);
  bind_spectra(cls);
}

}  // namespace vkm
