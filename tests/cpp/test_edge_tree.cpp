// The tree over the edges of a polygon against a walk over all of its leaves.

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "check.hpp"
#include "filament/reach/edge_tree.hpp"

namespace {

using namespace vkm;
using namespace vkm::test;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A closed walk of small random steps, so that leaves are compact and far leaves are pruned.
std::vector<Vec3> random_polygon(std::size_t size, std::mt19937_64& random) {
  std::normal_distribution<double> step;
  std::vector<Vec3> points(size);
  Vec3 here = {};
  for (Vec3& point : points) point = here += Vec3{step(random), step(random), step(random)};
  return points;
}

Box random_box(std::mt19937_64& random) {
  std::normal_distribution<double> place(0.0, 10.0);
  Box box;
  for (std::size_t c = 0; c < 3; ++c) {
    const double a = place(random), b = place(random);
    box.low[c] = std::min(a, b);
    box.high[c] = std::max(a, b);
  }
  return box;
}

Vec3 corner(const Box& box, unsigned which) {
  return {(which & 1 ? box.high : box.low)[0], (which & 2 ? box.high : box.low)[1],
          (which & 4 ? box.high : box.low)[2]};
}

void finds_what_a_walk_finds() {
  std::mt19937_64 random(1);
  for (const std::size_t size : {1, 7, 8, 9, 64, 65, 500, 1031}) {
    const EdgeTree tree(random_polygon(size, random));
    check_equal(tree.size(), size);
    check_equal(tree.leaves(), (size + 7) / 8);
    std::size_t found_in_all = 0;
    for (int query = 0; query < 300; ++query) {
      const Box box = random_box(random);
      const std::size_t first = random() % (tree.leaves() + 1);
      const double best = query % 10 == 0 ? infinity : std::exp(0.02 * static_cast<double>(random() % 400));
      const double slack = query % 2 == 0 ? 0.0 : 0.5;
      std::vector<std::size_t> expected;
      for (std::size_t leaf = first; leaf < tree.leaves(); ++leaf) {
        if (box_distance2(box, tree.leaf_box(leaf), slack) < best) expected.push_back(leaf);
      }
      std::vector<std::size_t> found;
      tree.near_leaves(box, first, best, slack, found);
      check(found == expected, "near_leaves differs from the walk at size " + std::to_string(size));
      found_in_all += found.size();
    }
    check(found_in_all > 0, "no query found a leaf");
  }
}

void boxes_hold_their_edges() {
  std::mt19937_64 random(2);
  const std::vector<Vec3> points = random_polygon(333, random);
  const EdgeTree tree(points);
  double length = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 &p = points[i], &q = points[(i + 1) % points.size()];
    length += norm(q - p);
    check_equal(tree.length()[i], norm(q - p));
    for (std::size_t c = 0; c < 3; ++c) {
      check_equal(tree.start(c)[i], p[c]);
      check_equal(tree.vector(c)[i], q[c] - p[c]);
      for (const Box& box : {tree.leaf_box(i / EdgeTree::leaf_size), tree.box()}) {
        check(box.low[c] <= std::min(p[c], q[c]) && std::max(p[c], q[c]) <= box.high[c], "an edge outside its box");
      }
    }
  }
  check_equal(tree.closed_length(), length);
}

void distance_is_a_lower_bound() {
  std::mt19937_64 random(3);
  for (int i = 0; i < 2000; ++i) {
    const Box a = random_box(random), b = random_box(random);
    const double bound = box_distance2(a, b, 0.0);
    double nearest = infinity;
    for (unsigned k = 0; k < 64; ++k) nearest = std::min(nearest, norm2(corner(a, k % 8) - corner(b, k / 8)));
    check(bound <= nearest, "two corners are nearer than the boxes");
    check(box_distance2(a, b, 0.25) <= bound, "slack makes the bound larger");
    check_equal(box_distance2(a, a, 0.0), 0.0);
  }
  const Box low = {{0, 0, 0}, {1, 1, 1}}, high = {{4, 5, 0}, {6, 6, 1}};  // gaps of 3 and 4
  check_equal(box_distance2(low, high, 0.0), 25.0);
  check_equal(box_distance2(high, low, 1.0), 4.0 + 9.0);
}

void points_that_are_not_finite_are_outside_all_boxes() {
  std::mt19937_64 random(4);
  for (const double bad : {nan, infinity}) {
    std::vector<Vec3> points = random_polygon(40, random);
    for (std::size_t i = 15; i < 24; ++i) points[i][1] = bad;  // the third leaf, edges 16 to 23, has no finite edge
    const EdgeTree tree(points);
    std::vector<std::size_t> found;
    tree.near_leaves({{-1e3, -1e3, -1e3}, {1e3, 1e3, 1e3}}, 0, infinity, 0.0, found);
    check(found == std::vector<std::size_t>{0, 1, 3, 4}, "a leaf without a finite edge was found");
    check(std::isfinite(tree.box().low[1]) && std::isfinite(tree.box().high[1]), "the root's box is not finite");
  }
}

}  // namespace

int main() {
  return run({{"finds what a walk finds", finds_what_a_walk_finds},
              {"boxes hold their edges", boxes_hold_their_edges},
              {"the distance of boxes is a lower bound", distance_is_a_lower_bound},
              {"points that are not finite", points_that_are_not_finite_are_outside_all_boxes}});
}
