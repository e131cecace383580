#include "ideal/search.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <stdexcept>

#include "core/tasks.hpp"
#include "ideal/contract.hpp"
#include "ideal/random.hpp"

namespace vkm::ideal {

namespace {

constexpr std::size_t batch = 4;         // of starts, between looks at how many agree
constexpr double same_shape = 3e-4;      // relative difference of ropelengths that hop chains take for one shape
constexpr std::size_t agreeing = 4;      // starts about in one shape that make a small knot
constexpr double small_spread = 2e-3;    // that "about" allows
constexpr double small_ropelength = 46;  // below which the adaptive rule holds
constexpr int start_programs = 200;      // a start that slides on slowly is left to the hops
constexpr int hop_programs = 60;
constexpr int patience = 6;  // of the hops of a small knot

enum Phase : std::uint64_t { order_phase, start_phase, first_hop_phase, second_hop_phase };

struct Shape {
  Settled state;
  double value = INFINITY;  ///< estimate of the ropelength without discretisation, by which shapes are compared
  double ropelength = INFINITY;
};

/// The excess of a polygon's ropelength over that of the smooth shape is about 0.022 h^2.
Shape shape_of(Settled state) {
  Shape shape;
  const Cycle cycle(state.rope);
  const double total = length(state.rope, cycle);
  const double h = total / state.rope.size();
  shape.ropelength = total / (1.0 - std::min(0.5, state.violation));
  shape.value = shape.ropelength * (1.0 - 0.022 * h * h);
  shape.state = std::move(state);
  return shape;
}

bool better(const Shape& a, const Shape& b) { return a.value < b.value; }

/// The best of different values, at most so many; filled up with the best of the rest.
std::vector<Shape> distinct(std::vector<Shape> shapes, std::size_t count) {
  std::stable_sort(shapes.begin(), shapes.end(), better);
  std::vector<Shape> list;
  for (const Shape& shape : shapes) {
    if (list.size() == count || !std::isfinite(shape.value)) break;
    if (list.empty() || shape.value > list.back().value * (1.0 + same_shape)) list.push_back(shape);
  }
  return list;
}

class Search {
 public:
  Search(const std::vector<Rope>& starts, const SearchOptions& options, const Poll& poll, const SearchWatch& watch)
      : starts_(starts), options_(options), poll_(poll), watch_(watch) {}

  void run();

  SearchResult result;
  std::optional<Shape> best;

 private:
  void keep(const Shape& shape, const char* phase, std::size_t task, double edge, int hops);
  std::vector<Shape> contract_starts(bool& small);
  std::vector<Shape> hop_chains(const std::vector<Shape>& from, int hops, int most_failures, Phase phase);
  std::vector<Shape> level(const std::vector<Shape>& from, double h);

  const std::vector<Rope>& starts_;
  const SearchOptions& options_;
  const Poll& poll_;
  const SearchWatch& watch_;
};

void Search::keep(const Shape& shape, const char* phase, std::size_t task, double edge, int hops) {
  result.history.push_back({phase, static_cast<int>(task), edge, hops, shape.ropelength});
  if (!best || shape.value < best->value) {
    best = shape;
    result.edge = edge;
  }
  if (watch_) watch_(result.history.back(), best->ropelength);
}

std::vector<Shape> Search::contract_starts(bool& small) {
  const double h = options_.coarse_edge;
  std::vector<std::size_t> order(starts_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  Random shuffle(options_.seed, order_phase, 0);
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[shuffle.below(i)]);

  std::vector<Shape> shapes;
  const auto count = static_cast<std::size_t>(std::max(1, options_.starts));
  while (shapes.size() < count) {
    const std::size_t first = shapes.size();
    std::vector<Shape> more(std::min(batch, count - first));
    run_tasks(more.size(), options_.threads, poll_, [&](std::size_t k, Heartbeat& heartbeat) {
      const std::size_t task = first + k;
      Random random(options_.seed, start_phase, task);
      Rope rope = starts_[order[task % order.size()]];
      scale_to_tube(rope);
      displace(rope, task % 2 == 0 ? options_.small_noise : options_.large_noise, 8, random);
      more[k] = shape_of(contract(rope, h, start_programs, heartbeat));
    });
    for (std::size_t k = 0; k < more.size(); ++k) keep(more[k], "start", first + k, h, 0);
    shapes.insert(shapes.end(), more.begin(), more.end());
    if (!options_.adaptive || best->value > small_ropelength) continue;
    const auto same = std::count_if(shapes.begin(), shapes.end(), [&](const Shape& shape) {
      return shape.value < best->value * (1.0 + small_spread);
    });
    small = static_cast<std::size_t>(same) >= agreeing;
    if (small) break;
  }
  return shapes;
}

std::vector<Shape> Search::hop_chains(const std::vector<Shape>& from, int hops, int most_failures, Phase phase) {
  const double h = options_.coarse_edge;
  std::vector<Shape> ends = from;
  std::vector<int> tried(from.size(), 0);
  run_tasks(from.size(), options_.threads, poll_, [&](std::size_t task, Heartbeat& heartbeat) {
    Random random(options_.seed, phase, task);
    int failures = 0;
    while (tried[task] < hops && failures < most_failures) {
      ++tried[task];
      ++failures;
      Shape next = shape_of(contract(hop(ends[task].state.rope, random), h, hop_programs, heartbeat));
      if (next.value < ends[task].value * (1.0 - 2e-5)) {
        if (next.value < ends[task].value * (1.0 - same_shape)) failures = 0;
        ends[task] = std::move(next);
      }
    }
  });
  for (std::size_t task = 0; task < ends.size(); ++task) keep(ends[task], "hop", task, h, tried[task]);
  return ends;
}

std::vector<Shape> Search::level(const std::vector<Shape>& from, double h) {
  std::vector<Shape> ends(from.size());
  run_tasks(from.size(), options_.threads, poll_, [&](std::size_t task, Heartbeat& heartbeat) {
    ends[task] = shape_of(refine(from[task].state.rope, h, heartbeat));
  });
  // The finer level takes the place of the coarser, whatever its estimate.
  best.reset();
  for (std::size_t task = 0; task < ends.size(); ++task) keep(ends[task], "level", task, h, 0);
  std::stable_sort(ends.begin(), ends.end(), better);
  return ends;
}

void Search::run() {
  bool small = false;
  std::vector<Shape> shapes = contract_starts(small);
  if (small) {
    shapes = hop_chains(distinct(shapes, 1), options_.second_hops, patience, second_hop_phase);
  } else {
    const auto chain = [&](int count, int hops, Phase phase) {
      if (count <= 0 || hops <= 0) return;
      const auto more = hop_chains(distinct(shapes, static_cast<std::size_t>(count)), hops, hops, phase);
      shapes.insert(shapes.end(), more.begin(), more.end());
    };
    chain(options_.first_chains, options_.first_hops, first_hop_phase);
    chain(options_.second_chains, options_.second_hops, second_hop_phase);
  }
  shapes = distinct(shapes, static_cast<std::size_t>(std::max(1, small ? 1 : options_.refined)));

  std::vector<double> edges;
  for (const double h : {0.4, 0.25, 0.15, 0.10, 0.07}) {
    if (h < options_.coarse_edge && h > 1.2 * options_.edge) edges.push_back(h);
  }
  if (options_.edge < options_.coarse_edge) edges.push_back(options_.edge);
  for (std::size_t k = 0; k < edges.size(); ++k) {
    if (k > 0) shapes.resize(std::min(shapes.size(), static_cast<std::size_t>(std::max(1, options_.finished))));
    if (edges[k] < 0.12) shapes.resize(1);
    shapes = level(shapes, edges[k]);
  }
}

}  // namespace

SearchResult search(const std::vector<Rope>& starts, const SearchOptions& options, const Poll& poll,
                    const SearchWatch& watch, std::exception_ptr* stop) {
  if (starts.empty()) throw std::invalid_argument("the search needs at least one start");
  Search task(starts, options, poll, watch);
  try {
    task.run();
  } catch (const std::invalid_argument&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    if (stop == nullptr || !task.best) throw;
    *stop = std::current_exception();
    task.result.stopped = true;
  }
  task.result.best = std::move(task.best->state);
  return std::move(task.result);
}

}  // namespace vkm::ideal
