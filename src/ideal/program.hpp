#pragma once

/// The quadratic program of one step: moves d_k of the vertices and one edge length h_c a component,
///
///     minimise  sum_c n_c h_c + 1/2 sum_k |(I - u_k u_k^T)(d_next - d_k)|^2 / l_k
///               + stiffness / 2 sum_k |d_next - 2 d_k + d_previous|^2 / l_k^3 + rho / 2 |d|^2
///     edges     u_k . (d_next - d_k) + l_k = h_c
///     kinks     g_k . (d_next - 2 d_k + d_previous) - slope h_c >= demand
///     struts    w . ((1 - s) d_i + s d_next(i) - (1 - t) d_j - t d_next(j)) >= demand
///     box       |d| <= bound in every coordinate
///
/// for a tube of radius 1. u_k is the direction of edge k and l_k its length. The kink row is MinRad >= R for an
/// equilateral corner between the directions u and v, h |u + v| >= 2 h / sqrt(1 + h^2 / 4 R^2), linearised and
/// multiplied by 2 / h^3: then a unit of the row is a unit of squared curvature. By the edge rows its gradient is
/// (u - v) / |u + v| times the change of the bend; the chord |p_next - p_previous| would do for even edges, but an edge
/// longer by 5e-5 of itself hides 4 % of the curvature from it, and its row feels the rounding of the edge rows.
/// A row that is violated asks for no more than a pace's improvement in one step, and uneven edges get even no faster
/// than their vertices may slide, or the program would have no solution. The stiffness is that of a rod, of its moves
/// and not of its shape: without it a step bends fine corners at single contacts, which the kink rows feel by the
/// square of the change of curvature.

#include <vector>

#include "ideal/contacts.hpp"
#include "ideal/rope.hpp"

namespace vkm::ideal {

struct Edge {
  Vec3 direction;
  double length;  ///< l_k, or nearer to h where the edges are uneven
};

struct Kink {
  Index at;       ///< the vertex
  Vec3 gradient;  ///< g_k, with the row's factor
  double slope;   ///< coefficient of h, with the row's factor
  double excess;  ///< over the limit before the step; negative where violated
  double demand;
};

struct Strut {
  Index i;
  Index j;
  double s;
  double t;
  Vec3 normal;    ///< w, from j to i
  double excess;  ///< over the limit before the step; negative where violated
  double demand;
};

struct Program {
  std::vector<Component> components;
  std::vector<Edge> edges;  ///< one a vertex
  std::vector<Kink> kinks;
  std::vector<Strut> struts;
  double bound = 0.0;  ///< of the moves
  double rho = 1e-3;
  double stiffness = 0.0;
};

struct Demands {
  double radius = 1.0;    ///< R, the least MinRad asked for
  double distance = 2.0;  ///< of strangers
  double bound = 0.1;
  double pace =
      0.6;  ///< part of the bound by which a violated row is asked to improve; kink rows by 0.2 / h^3 times that
  double gap = 3.14159;  ///< between strangers, along the curve
  double stiffness = 0.0;
};

/// h |u + v| of a corner between these directions over its limit at this MinRad: negative where it is sharper.
double kink_excess(const Vec3& u, const Vec3& v, double h, double radius);

/// Factor of the kink rows.
double kink_factor(double h);

/// The quadratic part of the objective.
double quadratic(const Program& program, const Cycle& cycle, const std::vector<Vec3>& moves);

Program program_of(const Rope& rope, const Cycle& cycle, const std::vector<double>& edge_lengths,
                   const std::vector<Contact>& near, const Demands& demands);

}  // namespace vkm::ideal
