#include "tube/nnls.hpp"

#include <algorithm>
#include <cmath>

#include "tube/block_solve.hpp"
#include "tube/normal_equations.hpp"

namespace vkm {

namespace {

constexpr double least_norm = 1e-14;

double used_tolerance(const NNLSOptions& options) {
  return options.tolerance > 0.0 ? options.tolerance : NNLSOptions{}.tolerance;
}

/// Where there is nothing to fit with: the residual is the target.
NNLSResult unfitted(const char* algorithm, std::size_t columns, std::span<const double> target, double tolerance) {
  NNLSResult result;
  result.algorithm = algorithm;
  result.multipliers.assign(columns, 0.0);
  result.residual_norm = euclidean_norm(target);
  result.relative_residual = result.residual_norm > 0.0 ? 1.0 : 0.0;
  result.objective = 0.5 * result.residual_norm * result.residual_norm;
  result.converged = result.residual_norm <= tolerance;  // as given, 0 included
  return result;
}

void finish(const NormalEquations& equations, std::vector<double>&& x, double tolerance, NNLSResult& result) {
  result.residual_norm = equations.residual_norm(x);
  result.relative_residual = result.residual_norm / std::max(equations.target_norm(), least_norm);
  result.objective = 0.5 * result.residual_norm * result.residual_norm;
  result.active_set_size =
      static_cast<std::uint64_t>(std::count_if(x.begin(), x.end(), [&](double value) { return value > tolerance; }));
  result.multipliers = std::move(x);
}

template <class Matrix>
NNLSResult coordinate_descent(const char* algorithm, const Matrix& matrix, std::span<const double> target,
                              const NNLSOptions& options, const Poll& poll) {
  const std::size_t n = matrix.columns.size();
  if (n == 0 || matrix.row_count == 0 || target.empty()) return unfitted(algorithm, n, target, options.tolerance);
  const double tolerance = used_tolerance(options);
  const std::uint64_t max_iterations = std::max<std::uint64_t>(options.max_iterations, 1);

  Heartbeat heartbeat(poll);
  const NormalEquations equations(matrix, target, heartbeat);
  const std::vector<double>& c = equations.c();
  const double target_norm = std::max(equations.target_norm(), least_norm);
  std::vector<double> x(n, 0.0);
  std::vector<double> gx;
  NNLSResult result;
  result.algorithm = algorithm;
  while (!result.converged && result.iterations < max_iterations) {
    heartbeat.tick();
    equations.gram_times(x, gx);
    double largest_change = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
      const double diagonal = equations.gram_row(i)[i];
      if (!(diagonal > 1e-14)) continue;
      const double z = std::max(x[i] - (gx[i] - c[i]) / diagonal, 0.0);
      const double delta = z - x[i];
      if (delta == 0.0) continue;
      x[i] = z;
      largest_change = std::max(std::fabs(delta), largest_change);
      add_multiple(gx, equations.gram_row(i), delta);
    }
    ++result.iterations;
    result.converged = largest_change <= (euclidean_norm(x) + 1.0) * tolerance ||
                       equations.residual_norm(x) / target_norm <= tolerance;
  }
  finish(equations, std::move(x), tolerance, result);
  return result;
}

class ActiveSet {
 public:
  ActiveSet(const NormalEquations& equations, double tolerance, double ridge, Heartbeat& heartbeat)
      : equations_(equations),
        tolerance_(tolerance),
        ridge_(ridge),
        heartbeat_(heartbeat),
        solver_(equations, heartbeat),
        x_(equations.size(), 0.0),
        z_(equations.size(), 0.0),
        is_passive_(equations.size(), 0) {}

  NNLSResult run(std::uint64_t max_iterations) {
    NNLSResult result;
    result.algorithm = "active_set";
    while (result.iterations < max_iterations) {
      heartbeat_.tick();
      ++result.iterations;
      const std::size_t chosen = steepest_column();
      if (chosen == equations_.size()) {
        result.converged = true;
        break;
      }
      is_passive_[chosen] = 1;
      changed_.push_back(chosen);
      if (!solve_passive()) {
        // Nothing has changed, so that each further iteration would fail in the same way, up to the limit.
        is_passive_[chosen] = 0;
        result.iterations = max_iterations;
        break;
      }
      if (!settle()) {
        is_passive_[chosen] = 0;
        is_current_ = false;
      }
    }
    finish(equations_, std::vector<double>(x_), tolerance_, result);
    if (!result.converged) {
      update_slope();
      double steepest = 0.0;
      for (std::size_t i = 0; i < x_.size(); ++i) {
        if (x_[i] <= tolerance_) steepest = std::max(steepest, w_[i]);
      }
      result.converged = steepest <= std::sqrt(tolerance_) || result.relative_residual <= tolerance_;
    }
    return result;
  }

 private:
  /// w = c - G x, the descent of half the squared residual along each multiplier.
  void update_slope() {
    equations_.gram_times(x_, w_);
    for (std::size_t i = 0; i < w_.size(); ++i) w_[i] = equations_.c()[i] - w_[i];
  }

  /// The column outside the passive set with the greatest slope above the tolerance; the size if there is none.
  std::size_t steepest_column() {
    update_slope();
    std::size_t chosen = w_.size();
    double greatest = tolerance_;
    for (std::size_t i = 0; i < w_.size(); ++i) {
      if (!is_passive_[i] && w_[i] > greatest) {
        greatest = w_[i];
        chosen = i;
      }
    }
    return chosen;
  }

  /// z: the least squares solution on the passive columns, 0 elsewhere. Blocks that no changed column is coupled to
  /// keep their part of it. The ridge climbs up to five times where a block is singular, for all of them. A solution
  /// that is not finite counts as a failure: no step can be taken towards it.
  bool solve_passive() {
    passive_.clear();
    for (std::size_t i = 0; i < is_passive_.size(); ++i) {
      if (is_passive_[i]) passive_.push_back(i);
    }
    const bool kept = is_current_;
    if (kept) {
      for (const std::size_t i : changed_) z_[i] = 0.0;
    } else {
      std::fill(z_.begin(), z_.end(), 0.0);
    }
    const bool solved = (kept && solve_changed()) || solve_whole(kept);
    changed_.clear();
    return solved && std::all_of(passive_.begin(), passive_.end(), [&](std::size_t i) { return std::isfinite(z_[i]); });
  }

  bool solve_changed() {
    const std::vector<std::size_t> columns = solver_.coupled(passive_, changed_);
    const bool entered = changed_.size() == 1 && is_passive_[changed_.front()];  // so that all hang together
    return entered ? solver_.solve_block(columns, equations_.c(), ridge_, z_)
                   : solver_.solve(columns, equations_.c(), ridge_, z_);
  }

  /// The whole passive set, with rising ridges; the first of them only if it has not failed before.
  bool solve_whole(bool first_failed) {
    double ridge = ridge_;
    for (int attempt = 0; attempt < 6; ++attempt) {
      is_current_ = attempt == 0;
      if (!(first_failed && attempt == 0) && solver_.solve(passive_, equations_.c(), ridge, z_)) return true;
      ridge = ridge > 0.0 ? 10.0 * ridge : 1e-14;
    }
    return false;
  }

  /// Walks from x towards z and frees the columns that reach zero on the way, until z itself is positive on the
  /// passive set; false if a subproblem fails.
  bool settle() {
    while (std::any_of(passive_.begin(), passive_.end(), [&](std::size_t i) { return !(z_[i] > tolerance_); })) {
      heartbeat_.tick();
      bool found = false;
      double alpha = 1.0;
      for (const std::size_t i : passive_) {
        if (!(z_[i] <= tolerance_)) continue;
        const double d = x_[i] - z_[i];
        if (!(d > 1e-14)) continue;
        const double ratio = x_[i] / d;
        if (!found || ratio < alpha) alpha = ratio;
        found = true;
      }
      alpha = std::clamp(alpha, 0.0, 1.0);
      for (std::size_t i = 0; i < x_.size(); ++i) x_[i] += alpha * (z_[i] - x_[i]);
      double length = euclidean_norm(x_);
      if (std::isnan(length)) return false;  // overflow: no column would ever be freed
      for (const std::size_t i : passive_) {
        if (x_[i] <= (length + 1.0) * tolerance_) {
          x_[i] = 0.0;
          is_passive_[i] = 0;
          changed_.push_back(i);
          length = euclidean_norm(x_);
        }
      }
      if (!solve_passive()) return false;
    }
    x_ = z_;
    return true;
  }

  const NormalEquations& equations_;
  double tolerance_;
  double ridge_;
  Heartbeat& heartbeat_;
  BlockSolver solver_;
  std::vector<double> x_;
  std::vector<double> z_;
  std::vector<double> w_;
  std::vector<char> is_passive_;
  std::vector<std::size_t> passive_;  ///< ascending
  std::vector<std::size_t> changed_;  ///< entered or left the passive set since z was found
  bool is_current_ = true;            ///< z solves the passive set, but for the changes, at the least ridge
};

template <class Matrix>
NNLSResult active_set(const Matrix& matrix, std::span<const double> target, const NNLSOptions& options,
                      const Poll& poll) {
  if (matrix.columns.empty()) return unfitted("active_set", 0, target, options.tolerance);
  const double ridge = options.ridge < 0.0 ? 0.0 : options.ridge;
  Heartbeat heartbeat(poll);
  const NormalEquations equations(matrix, target, heartbeat);
  return ActiveSet(equations, used_tolerance(options), ridge, heartbeat)
      .run(std::max<std::uint64_t>(options.max_iterations, 1));
}

}  // namespace

NNLSResult solve_by_coordinate_descent(const RigidityMatrix& matrix, std::span<const double> target,
                                       const NNLSOptions& options, const Poll& poll) {
  return coordinate_descent("coordinate_descent", matrix, target, options, poll);
}

NNLSResult solve_by_coordinate_descent(const SparseRigidityMatrix& matrix, std::span<const double> target,
                                       const NNLSOptions& options, const Poll& poll) {
  return coordinate_descent("coordinate_descent_sparse", matrix, target, options, poll);
}

NNLSResult solve_by_active_set(const RigidityMatrix& matrix, std::span<const double> target, const NNLSOptions& options,
                               const Poll& poll) {
  return active_set(matrix, target, options, poll);
}

NNLSResult solve_by_active_set(const SparseRigidityMatrix& matrix, std::span<const double> target,
                               const NNLSOptions& options, const Poll& poll) {
  return active_set(matrix, target, options, poll);
}

}  // namespace vkm
