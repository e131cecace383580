#include "filament/filament_registrars.hpp"
#include "filament/topology/topology_measures.hpp"

namespace vkm {

void register_topology_measures(py::module_& m) {
  m.def(
      "compute_writhe", [](const std::vector<Vec3>& X) { return compute_writhe(X, python_poll()); },
      R"(Compute the writhe of a closed filament.

The vertices X (list of N points) are read as an open list: the sum runs over the N - 1 edges X[i+1] - X[i], so repeat
the first point at the end for the whole closed curve. Gauss sum over pairs of edges i < j, taken at the edge starts,
over 2 pi; pairs nearer than 1e-6 are left out. Dimensionless; 0 for fewer than two edges.)");
  m.def(
      "compute_linking_number",
      [](const std::vector<Vec3>& A, const std::vector<Vec3>& B) {
        return compute_linking_number(A, B, python_poll());
      },
      R"(Compute the Gauss linking number of two filaments.

A and B are lists of points, read as open: repeat the first point at the end to close a curve. Gauss sum over pairs of
edges, taken at the edge starts, over 4 pi, rounded to the nearest integer (halves away from zero). Pairs nearer than
1e-6 are left out. A NaN sum gives 0, a sum beyond 32 bits the nearest 32-bit integer.)");
  m.def(
      "compute_twist", [](const std::vector<Vec3>& T, const std::vector<Vec3>& N) { return compute_twist(T, N); },
      R"(Compute the twist of a frame along a filament.

T: M unit tangents; N: at least M unit normals. Sum over the inner entries of (T x dN) . N with central differences,
over 2 pi: turns of the normal about the curve, a right-handed turn counting -1. 0 for M below 3.
Raises ValueError when N is shorter than T.)");
  m.def(
      "compute_centerline_helicity",
      [](const std::vector<Vec3>& X, const std::vector<Vec3>&) {
        return compute_centerline_helicity(X, python_poll());
      },
      R"(Compute the centerline helicity as the sum of writhe and twist.

The second list is not read and there is no twist term: the result equals compute_writhe(X).)");
  m.def(
      "detect_reconnection_candidates",
      [](const std::vector<Vec3>& X, double threshold) {
        return detect_reconnection_candidates(X, threshold, python_poll());
      },
      R"(Detect pairs of vertices close enough to reconnect.

X: list of points; threshold: distance in the units of X. Returns the pairs (i, j), j >= i + 5, whose distance is
strictly below the threshold, in lexicographic order; the neighbour exclusion does not wrap around the end.
Raises MemoryError when the list of pairs would not fit.)");
}

}  // namespace vkm
