#pragma once

/// Writers of rigidity matrices and vectors for outside solvers: Matrix Market coordinate and array files (R. F.
/// Boisvert, R. Pozo, K. Remington, The Matrix Market exchange formats, NISTIR 5935, 1996) and two-column CSV. Numbers
/// have 17 significant digits, whatever the locale of the process. std::runtime_error if the file cannot be opened or
/// written; the old one stays then.

#include <span>
#include <string>

#include "core/poll.hpp"
#include "tube/rigidity_matrix.hpp"

namespace vkm {

void write_sparse_matrix_market(const SparseRigidityMatrix& sparse, const std::string& path,
                                bool one_based_indices = true, const Poll& poll = {});
void write_vector_market(std::span<const double> vector, const std::string& path, const Poll& poll = {});
void write_vector_csv(std::span<const double> vector, const std::string& path, const Poll& poll = {});

}  // namespace vkm
