#pragma once

/// The rigidity matrix of a resolved tube: 3n rows, one column per active contact, each the flat gradient of the
/// contact's radius (half a strut's distance, a kink's minrad) with respect to the vertices. Struts precede kinks.

#include <cstdint>
#include <string>
#include <vector>

namespace vkm {

/// One active constraint.
struct RigidityColumn {
  std::string kind;               ///< "strut" or "kink"
  std::uint64_t strut_index = 0;  ///< position in the tube's struts; 0 for a kink
  std::uint64_t kink_index = 0;   ///< position in the tube's kinks; 0 for a strut
  std::uint64_t vertex = 0;       ///< vertex of a kink; 0 for a strut
  double norm = 0.0;              ///< Euclidean norm of the gradient
  std::vector<double> values;     ///< flat gradient
};

struct RigidityMatrix {
  std::uint64_t row_count = 0;
  std::uint64_t column_count = 0;
  std::vector<RigidityColumn> columns;
};

struct SparseEntry {
  std::uint64_t row = 0;
  double value = 0.0;
};

struct SparseRigidityColumn {
  std::string kind;
  std::uint64_t strut_index = 0;
  std::uint64_t kink_index = 0;
  std::uint64_t vertex = 0;
  double norm = 0.0;                 ///< of the full gradient, entries too small to be stored included
  std::vector<SparseEntry> entries;  ///< rows ascending
};

struct SparseRigidityMatrix {
  std::uint64_t row_count = 0;
  std::uint64_t column_count = 0;
  std::uint64_t nonzero_count = 0;
  std::vector<SparseRigidityColumn> columns;
};

}  // namespace vkm
