#include "far/tree_velocity.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

#include "core/lane_view.hpp"
#include "core/memory.hpp"
#include "core/tasks.hpp"
#include "far/cell_tree.hpp"
#include "far/interactions.hpp"
#include "far/near_sums.hpp"
#include "far/taylor.hpp"

namespace vkm::far {

namespace {

constexpr std::size_t leaf_size = 64;
constexpr std::size_t task_size = 2048;  // points or elements of a task, at most

/// The unit of length, a power of two in m in which all sides together are about 1: powers of lengths stay within the
/// range of numbers then, and no coordinate is rounded. Offsets of near points keep all of their digits so.
double unit_of(const Elements& elements, std::span<const Vec3> points) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Vec3 low{infinity, infinity, infinity}, high{-infinity, -infinity, -infinity};
  for (const std::span<const Vec3> list : {elements.at, points}) {
    for (const Vec3& at : list) {
      for (std::size_t a = 0; a < 3; ++a) {
        low[a] = std::min(low[a], at[a]);
        high[a] = std::max(high[a], at[a]);
      }
    }
  }
  const Vec3 sides = high - low;
  const double size = std::max({sides[0], sides[1], sides[2]});
  return size > 0.0 && std::isfinite(size) ? std::ldexp(1.0, std::clamp(std::ilogb(size), -1000, 1000)) : 1.0;
}

/// Lanes with room to read behind the last one.
Lanes with_margin(std::size_t size) { return Lanes(size + near_margin); }

/// Sources in the order of their tree.
struct Sources {
  CellTree tree;
  Lanes at, element;
  std::vector<double> number;    // the place in that order
  std::vector<double> strength;  // sum |e| by cell

  Sources(const Elements& elements, double unit, const std::vector<Vec3>& placed)
      : tree(cell_tree(placed, leaf_size)),
        at(with_margin(placed.size())),
        element(with_margin(placed.size())),
        number(placed.size()),
        strength(tree.cells.size()) {
    for (std::size_t i = 0; i < placed.size(); ++i) {
      at.set(i, placed[tree.order[i]]);
      element.set(i, elements.vector[tree.order[i]] / unit);
      number[i] = static_cast<double>(i);
    }
    for (std::size_t c = tree.cells.size(); c-- > 0;) {
      const Cell& cell = tree.cells[c];
      if (!cell.is_leaf()) {
        strength[c] = strength[c + 1] + strength[cell.right];
        continue;
      }
      for (std::size_t i = cell.begin; i < cell.end; ++i) strength[c] += norm(element[i]);
    }
  }
};

/// Points in the order of their tree, with their sums.
struct Points {
  CellTree tree;
  Lanes at, sums;
  std::vector<double> first_left_out, second_left_out;

  Points(const std::vector<Vec3>& placed, std::span<const LeftOut> left_out, const CellTree& sources)
      : tree(cell_tree(placed, leaf_size)),
        at(with_margin(placed.size())),
        sums(with_margin(placed.size())),
        first_left_out(placed.size() + near_margin, LeftOut::none),
        second_left_out(placed.size() + near_margin, LeftOut::none) {
    std::vector<double> place_of(left_out.empty() ? 0 : sources.order.size());  // in the order of the sources' tree
    for (std::size_t s = 0; s < place_of.size(); ++s) place_of[sources.order[s]] = static_cast<double>(s);
    const auto place = [&](double number) {
      const bool known = number >= 0.0 && number < static_cast<double>(place_of.size());
      return known ? place_of[static_cast<std::size_t>(number)] : LeftOut::none;
    };
    for (std::size_t i = 0; i < placed.size(); ++i) {
      at.set(i, placed[tree.order[i]]);
      if (left_out.empty()) continue;
      first_left_out[i] = place(left_out[tree.order[i]].first);
      second_left_out[i] = place(left_out[tree.order[i]].second);
    }
  }
};

/// The places of the sources that the points of a cell leave out lie from `least` to `most`.
struct Places {
  double least = std::numeric_limits<double>::infinity(), most = -1.0;

  void add(double place) {
    if (place == LeftOut::none) return;
    least = std::min(least, place);
    most = std::max(most, place);
  }
};

std::vector<Places> places_of(const Points& points) {
  std::vector<Places> places(points.tree.cells.size());
  for (std::size_t c = places.size(); c-- > 0;) {
    const Cell& cell = points.tree.cells[c];
    if (!cell.is_leaf()) {
      const Places &left = places[c + 1], &right = places[cell.right];
      places[c] = {std::min(left.least, right.least), std::max(left.most, right.most)};
      continue;
    }
    for (std::size_t i = cell.begin; i < cell.end; ++i) {
      places[c].add(points.first_left_out[i]);
      places[c].add(points.second_left_out[i]);
    }
  }
  return places;
}

/// Coefficients of all cells, so many each.
class Expansions {
 public:
  Expansions(std::size_t cells, std::size_t terms) : terms_(terms) {
    require_memory(cells, terms * sizeof(Vec3));
    values_.resize(cells * terms + margin);
  }
  Coefficients of(std::size_t cell) { return {values_.data() + cell * terms_, terms_}; }
  ConstCoefficients of(std::size_t cell) const { return {values_.data() + cell * terms_, terms_}; }

 private:
  std::size_t terms_;
  std::vector<Vec3> values_;
};

/// Moments of degrees up to `degree` of a cell from its children's, or from its elements.
void fill_moments(const Sources& sources, std::size_t c, int degree, ExpansionSpace& space, Expansions& moments) {
  const Cell& cell = sources.tree.cells[c];
  if (cell.is_leaf()) {
    add_moments(view(sources.at, cell.begin), view(sources.element, cell.begin), cell.size(), cell.centre, degree,
                space, moments.of(c));
    return;
  }
  for (const std::size_t child : {c + 1, static_cast<std::size_t>(cell.right)}) {
    const Cell& part = sources.tree.cells[child];
    add_shifted_moments(moments.of(child), part.centre - cell.centre, degree, space, moments.of(c));
  }
}

Expansions moments_of(const Sources& sources, int degree, const Poll& poll, int threads) {
  const std::vector<std::uint32_t> parts = cut(sources.tree, task_size);
  Expansions moments(sources.tree.cells.size(), index_count(degree));
  std::vector<bool> done(sources.tree.cells.size(), false);
  run_tasks(parts.size(), threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    ExpansionSpace space;
    for (std::size_t c = sources.tree.cells[parts[task]].after; c-- > parts[task];) {
      fill_moments(sources, c, degree, space, moments);
      heartbeat.tick();
    }
  });
  for (const std::uint32_t part : parts) {
    std::fill(done.begin() + part, done.begin() + sources.tree.cells[part].after, true);
  }
  ExpansionSpace space;
  Heartbeat heartbeat(poll);
  for (std::size_t c = sources.tree.cells.size(); c-- > 0;) {
    if (!done[c]) fill_moments(sources, c, degree, space, moments);
    heartbeat.tick();
  }
  return moments;
}

struct Sum {
  const Sources& sources;
  Points& points;
  NearRule rule;
  const std::vector<Places>& left_out;  // by cell of points
};

void add_one_by_one(const Sum& sum, const Cell& to, std::span<const NearRun> runs) {
  const NearSources sources{view(sum.sources.at), view(sum.sources.element), sum.sources.number.data()};
  const NearPoints points{view(sum.points.at), sum.points.first_left_out.data(), sum.points.second_left_out.data(),
                          space(sum.points.sums)};
  add_near(sources, runs, sum.rule, points, to.begin, to.end);
}

/// The sums at the points of a subtree.
void add_subtree(const Sum& sum, const std::vector<Interaction>& interactions, std::uint32_t root,
                 const Expansions& moments, Heartbeat& heartbeat) {
  const std::vector<Cell>& cells = sum.points.tree.cells;
  ExpansionSpace work;
  int most = 0;
  for (const Interaction& interaction : interactions) most = std::max(most, interaction.order);
  const std::size_t count = cells[root].after - root;
  Expansions local(count, most > 0 ? index_count(most - 1) : 0);
  std::vector<int> orders(count, 0);  // of the local coefficients
  std::vector<FarCell> far;
  std::vector<NearRun> near;
  auto next = interactions.begin();
  for (std::uint32_t p = root; p < cells[root].after; ++p) {
    const Cell& cell = cells[p];
    far.clear();
    near.clear();
    int& order = orders[p - root];
    for (; next != interactions.end() && next->points == p && next->order > 0; ++next) {
      far.push_back(
          {cell.centre - sum.sources.tree.cells[next->sources].centre, moments.of(next->sources), next->order});
      order = std::max(order, next->order);
    }
    add_local(far, sum.rule.soft2, work, local.of(p - root));
    for (; next != interactions.end() && next->points == p; ++next) {
      const Cell& from = sum.sources.tree.cells[next->sources];
      const Places& places = sum.left_out[p];
      near.push_back({from.begin, from.end, places.least < from.end && places.most >= from.begin});
    }
    if (!near.empty()) add_one_by_one(sum, cell, near);
    heartbeat.tick();
    if (order == 0) continue;
    if (cell.is_leaf()) {
      add_velocity(local.of(p - root), cell.centre, order - 1, view(sum.points.at, cell.begin), cell.size(), work,
                   space(sum.points.sums, cell.begin));
      continue;
    }
    for (const std::uint32_t child : {p + 1, cell.right}) {
      add_shifted_local(local.of(p - root), cells[child].centre - cell.centre, order - 1, work, local.of(child - root));
      orders[child - root] = order;
    }
  }
}

void check(const Elements& elements, std::span<const Vec3> points, std::span<const LeftOut> left_out) {
  if (elements.at.size() != elements.vector.size()) throw std::invalid_argument("one vector an element is needed");
  if (!left_out.empty() && left_out.size() != points.size()) throw std::invalid_argument("one entry a point is needed");
  if (std::max(elements.at.size(), points.size()) >= std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  require_memory(elements.at.size() + points.size(), 512);
}

std::vector<Vec3> placed(std::span<const Vec3> list, double unit) {
  std::vector<Vec3> all;
  all.reserve(list.size());
  for (const Vec3& at : list) all.push_back(at / unit);
  return all;
}

/// In the order of the caller, and in m/s.
std::vector<Vec3> result_of(const Points& points, double unit) {
  std::vector<Vec3> velocity(points.tree.order.size());
  for (std::size_t i = 0; i < velocity.size(); ++i) velocity[points.tree.order[i]] = points.sums[i] / unit;
  return velocity;
}

}  // namespace

struct TreeSum::Trees {
  double unit;
  Sources sources;
  Points points;
  std::vector<Places> places;

  Trees(const Elements& elements, std::span<const Vec3> list, std::span<const LeftOut> left_out)
      : unit(unit_of(elements, list)),
        sources(elements, unit, placed(elements.at, unit)),
        points(placed(list, unit), left_out, sources.tree),
        places(places_of(points)) {}
};

TreeSum::TreeSum(const Elements& elements, std::span<const Vec3> points, std::span<const LeftOut> left_out) {
  check(elements, points, left_out);
  trees_ = std::make_unique<Trees>(elements, points, left_out);
}

TreeSum::TreeSum(TreeSum&&) noexcept = default;
TreeSum::~TreeSum() = default;

std::vector<Vec3> TreeSum::velocity(const TreeRule& rule, const Poll& poll) {
  Points& targets = trees_->points;
  const Sources& sources = trees_->sources;
  if (sources.number.empty() || targets.tree.order.empty()) return std::vector<Vec3>(targets.tree.order.size());
  targets.sums = with_margin(targets.tree.order.size());
  const double unit = trees_->unit, soft = rule.soft / unit;
  const Criterion criterion{rule.allowance * unit, soft * soft, rule.limit};
  const Sum sum{sources, targets, {criterion.soft2, rule.steps}, trees_->places};
  const std::vector<std::uint32_t> parts = cut(targets.tree, task_size);
  std::vector<std::vector<Interaction>> interactions(parts.size());
  run_tasks(parts.size(), rule.threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    interactions[task] = interactions_of(targets.tree, parts[task], sources.tree, sources.strength, criterion);
    heartbeat.tick();
  });
  int order = 1;
  for (const auto& list : interactions) {
    for (const Interaction& interaction : list) order = std::max(order, interaction.order);
  }
  const Expansions moments = moments_of(sources, order - 1, poll, rule.threads);
  run_tasks(parts.size(), rule.threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    add_subtree(sum, interactions[task], parts[task], moments, heartbeat);
  });
  return result_of(targets, unit);
}

}  // namespace vkm::far
