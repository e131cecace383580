#pragma once

/// The rigidity matrix of a resolved tube (rigidity_matrix.hpp), built in its dense and in its sparse form.

#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/contact_gradient.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/rigidity_matrix.hpp"

namespace vkm {

/// Which contacts get a column, and how.
struct RigidityChoice {
  bool struts = true;
  bool kinks = true;
  KinkGradient kink_gradient = {};
};

/// `tube` is the analysis of `points`; contacts whose gradient vanishes (norm up to 1e-14) give no column.
RigidityMatrix build_rigidity_matrix(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                     const RigidityChoice& choice = {}, const Poll& poll = {});

/// The same, of entries above 1e-15 in magnitude.
SparseRigidityMatrix build_sparse_rigidity_matrix(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                                  const RigidityChoice& choice = {}, const Poll& poll = {});

/// Entries at or beyond row_count are ignored.
RigidityMatrix sparse_to_dense(const SparseRigidityMatrix& sparse);

}  // namespace vkm
