// A column is found as the few entries of its contact's gradient; the dense form
// spreads them, so both hold the same numbers.

#include "tube/rigidity.hpp"

#include <cmath>
#include <utility>

#include "core/memory.hpp"

namespace vkm {

namespace {

constexpr double least_norm = 1e-14;
constexpr double least_entry = 1e-15;

/// Hands the head of each column to keep and its gradient to `take`, in column order; `Column` is either form.
template <class Column, class Take>
void for_each_column(std::span<const Vec3> points, const ResolvedTubeMetrics& tube, const RigidityChoice& choice,
                     const Poll& poll, const Take& take) {
  if (points.empty()) return;
  Heartbeat heartbeat(poll);
  const auto offer = [&](Column&& column, const ContactGradient& gradient, std::size_t count) {
    if (count % 64 == 0) heartbeat.tick();
    column.norm = gradient.norm();
    if (column.norm > least_norm) take(std::move(column), gradient);
  };
  if (choice.struts) {
    for (std::size_t k = 0; k < tube.struts.size(); ++k) {
      Column column;
      column.kind = "strut";
      column.strut_index = k;
      offer(std::move(column), strut_gradient(points, tube.struts[k]), k);
    }
  }
  if (choice.kinks) {
    for (std::size_t k = 0; k < tube.kinks.size(); ++k) {
      Column column;
      column.kind = "kink";
      column.kink_index = k;
      column.vertex = tube.kinks[k].vertex;
      offer(std::move(column), kink_minrad_gradient(points, tube.kinks[k], choice.kink_gradient), k);
    }
  }
}

}  // namespace

RigidityMatrix build_rigidity_matrix(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                     const RigidityChoice& choice, const Poll& poll) {
  RigidityMatrix matrix;
  matrix.row_count = 3 * points.size();
  for_each_column<RigidityColumn>(points, tube, choice, poll,
                                  [&](RigidityColumn&& column, const ContactGradient& gradient) {
                                    require_memory(matrix.columns.size() + 1, 8 * matrix.row_count);
                                    column.values = gradient.flat(points.size());
                                    matrix.columns.push_back(std::move(column));
                                  });
  matrix.column_count = matrix.columns.size();
  return matrix;
}

SparseRigidityMatrix build_sparse_rigidity_matrix(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                                  const RigidityChoice& choice, const Poll& poll) {
  SparseRigidityMatrix matrix;
  matrix.row_count = 3 * points.size();
  for_each_column<SparseRigidityColumn>(points, tube, choice, poll,
                                        [&](SparseRigidityColumn&& column, const ContactGradient& gradient) {
                                          for (const auto& part : gradient.parts()) {
                                            for (std::size_t axis = 0; axis < 3; ++axis) {
                                              if (std::fabs(part.value[axis]) > least_entry) {
                                                column.entries.push_back({3 * part.vertex + axis, part.value[axis]});
                                              }
                                            }
                                          }
                                          if (column.entries.empty()) return;
                                          matrix.nonzero_count += column.entries.size();
                                          matrix.columns.push_back(std::move(column));
                                        });
  matrix.column_count = matrix.columns.size();
  return matrix;
}

RigidityMatrix sparse_to_dense(const SparseRigidityMatrix& sparse) {
  if (!sparse.columns.empty()) require_memory(sparse.row_count, 8 * sparse.columns.size());
  RigidityMatrix dense;
  dense.row_count = sparse.row_count;
  dense.column_count = sparse.column_count;
  dense.columns.reserve(sparse.columns.size());
  for (const SparseRigidityColumn& column : sparse.columns) {
    RigidityColumn spread;
    spread.kind = column.kind;
    spread.strut_index = column.strut_index;
    spread.kink_index = column.kink_index;
    spread.vertex = column.vertex;
    spread.norm = column.norm;
    spread.values.assign(sparse.row_count, 0.0);
    for (const SparseEntry& entry : column.entries) {
      if (entry.row < sparse.row_count) spread.values[entry.row] = entry.value;
    }
    dense.columns.push_back(std::move(spread));
  }
  return dense;
}

}  // namespace vkm
