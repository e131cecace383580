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

constexpr std::size_t batch = 4;            // of starts, between looks at how many agree
constexpr double same_shape = 3e-4;         // relative difference of ropelengths that hop chains take for one shape
constexpr std::size_t agreeing_starts = 4;  // at about one value, that end the search
constexpr std::size_t agreeing_chains = 3;  // that do so after hops
constexpr double spread = 1e-3;             // that "about" allows
constexpr double small_spread = 2e-3;       // of knots below
constexpr double small_ropelength = 46;
constexpr int first_programs = 50;    // of a start; those that lead to something good mostly settle in so many
constexpr double catching_up = 1.03;  // ropelength over the best at which a start or a hop is worth more programs
constexpr int first_hop_programs = 25;
constexpr int hop_programs = 60;
constexpr double level_spread = 2.5e-3;  // relative difference of shapes that finer levels may turn round, times h
constexpr int small_patience = 6;        // hops without gain after which what starts of a small knot agree in is left
constexpr int large_patience = 10;       // and of others
constexpr int second_patience = 10;

enum Phase : std::uint64_t { order_phase, start_phase, hop_phase };

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

/// A contracted rope; of infinite value where its strands lie too near to each other for such edges.
Shape contracted(const Rope& rope, double h, int programs, Heartbeat& heartbeat) {
  auto state = contract(rope, h, programs, heartbeat);
  return state ? shape_of(std::move(*state)) : Shape{};
}

/// The shape after so many more programs.
Shape continued(const Shape& shape, double h, int programs, Heartbeat& heartbeat) {
  Shape next = contracted(shape.state.rope, h, programs, heartbeat);
  return std::isfinite(next.value) ? next : shape;
}

bool better(const Shape& a, const Shape& b) { return a.value < b.value; }

/// A start and the best that came of it. Lines of descent never mix: where several end alike, that says something.
struct Line {
  Shape shape;
  bool hopped = false;
};

/// Places of the best lines of different values, at most so many.
std::vector<std::size_t> distinct(const std::vector<Line>& lines, std::size_t count, bool hopped_too) {
  std::vector<std::size_t> order(lines.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return better(lines[a].shape, lines[b].shape); });
  std::vector<std::size_t> list;
  double last = 0.0;
  for (const std::size_t k : order) {
    const double value = lines[k].shape.value;
    if (list.size() == count || !std::isfinite(value)) break;
    if (!(value > last * (1.0 + same_shape))) continue;
    last = value;
    if (hopped_too || !lines[k].hopped) list.push_back(k);
  }
  return list;
}

class Search {
 public:
  Search(const std::vector<Rope>& starts, const SearchOptions& options, const Poll& poll, const SearchWatch& watch)
      : scaled_(starts), options_(options), poll_(poll), watch_(watch) {
    for (Rope& rope : scaled_) scale_to_tube(rope);
  }

  void run();

  SearchResult result;
  std::optional<Shape> best;

 private:
  void keep(const Shape& shape, const char* phase, std::size_t task, double edge, int hops);
  bool small() const;
  std::size_t agreement() const;
  bool contract_starts(std::size_t count);
  void hop_chains(const std::vector<std::size_t>& which, int hops, int patience);
  bool settled_by_agreement(std::size_t needed);
  bool first_round(double part);
  std::vector<Shape> level(const std::vector<Shape>& from, double h);

  std::vector<Line> lines_;
  std::vector<std::size_t> order_;  ///< in which the start polygons are taken
  std::size_t chains_ = 0;          ///< of hops so far, for their streams of random numbers
  std::vector<Rope> scaled_;        ///< the starts
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

bool Search::small() const { return best && best->value < small_ropelength; }

/// Lines that stand about where the best of them does.
std::size_t Search::agreement() const {
  double least = INFINITY;
  for (const Line& line : lines_) least = std::min(least, line.shape.value);
  const double most = least * (1.0 + (small() ? small_spread : spread));
  return static_cast<std::size_t>(
      std::count_if(lines_.begin(), lines_.end(), [&](const Line& line) { return line.shape.value < most; }));
}

/// Contracts so many more starts, or fewer where they agree; says whether they do.
bool Search::contract_starts(std::size_t count) {
  const double h = options_.coarse_edge;
  const std::size_t all = lines_.size() + count;
  const int programs = options_.adaptive ? first_programs : options_.start_programs;
  while (lines_.size() < all) {
    const std::size_t first = lines_.size();
    std::vector<Shape> more(std::min(batch, all - first));
    run_tasks(more.size(), options_.threads, poll_, [&](std::size_t k, Heartbeat& heartbeat) {
      const std::size_t task = first + k;
      Random random(options_.seed, start_phase, task);
      Rope rope = scaled_[order_[task % order_.size()]];
      displace(rope, task % 2 == 0 ? options_.small_noise : options_.large_noise, 8, random);
      more[k] = contracted(rope, h, std::min(programs, options_.start_programs), heartbeat);
    });
    double least = best ? best->value : INFINITY;
    for (const Shape& shape : more) least = std::min(least, shape.value);
    run_tasks(more.size(), options_.threads, poll_, [&](std::size_t k, Heartbeat& heartbeat) {
      if (more[k].state.settled || !(more[k].value < catching_up * least)) return;
      more[k] = continued(more[k], h, options_.start_programs - programs, heartbeat);
    });
    for (std::size_t k = 0; k < more.size(); ++k) {
      if (std::isfinite(more[k].value)) keep(more[k], "start", first + k, h, 0);
      lines_.push_back({std::move(more[k])});
    }
    if (settled_by_agreement(agreeing_starts)) return true;
  }
  if (!best) throw std::invalid_argument("strands are too near to each other for edges of this length");
  return false;
}

void Search::hop_chains(const std::vector<std::size_t>& which, int hops, int patience) {
  if (which.empty() || hops <= 0) return;
  const double h = options_.coarse_edge;
  const std::size_t first = chains_;
  chains_ += which.size();
  std::vector<Shape> ends;
  for (const std::size_t k : which) ends.push_back(lines_[k].shape);
  std::vector<int> tried(which.size(), 0);
  run_tasks(which.size(), options_.threads, poll_, [&](std::size_t task, Heartbeat& heartbeat) {
    Random random(options_.seed, hop_phase, first + task);
    int failures = 0;
    while (tried[task] < hops && failures < patience) {
      ++tried[task];
      ++failures;
      const Rope& from = ends[task].state.rope;
      const Rope moved = options_.small_hops ? small_hop(from, random) : hop(from, random);
      Shape next = contracted(moved, h, first_hop_programs, heartbeat);
      if (!next.state.settled && next.value < catching_up * ends[task].value) {
        next = continued(next, h, hop_programs - first_hop_programs, heartbeat);
      }
      if (next.value < ends[task].value * (1.0 - 2e-5)) {
        if (next.value < ends[task].value * (1.0 - same_shape)) failures = 0;
        ends[task] = std::move(next);
      }
    }
  });
  for (std::size_t task = 0; task < which.size(); ++task) {
    keep(ends[task], "hop", first + task, h, tried[task]);
    lines_[which[task]].shape = std::move(ends[task]);
    lines_[which[task]].hopped = true;
  }
}

/// Whether enough lines agree and a chain of hops from the best of them finds nothing that is much better.
bool Search::settled_by_agreement(std::size_t needed) {
  if (!options_.adaptive || agreement() < needed) return false;
  hop_chains(distinct(lines_, 1, true), options_.second_hops, small() ? small_patience : large_patience);
  return agreement() >= needed;
}

/// A part of the starts, and of the first chains on what is best of them; says whether the search is settled.
bool Search::first_round(double part) {
  const auto share = [part](int count) { return static_cast<std::size_t>(std::ceil(part * std::max(0, count))); };
  if (contract_starts(std::max<std::size_t>(1, share(options_.starts)))) return true;
  hop_chains(distinct(lines_, share(options_.first_chains), false), options_.first_hops, large_patience);
  return settled_by_agreement(agreeing_chains);
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
  order_.resize(scaled_.size());
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  Random shuffle(options_.seed, order_phase, 0);
  for (std::size_t i = order_.size(); i > 1; --i) std::swap(order_[i - 1], order_[shuffle.below(i)]);

  const bool settled = options_.adaptive ? first_round(0.4) || first_round(0.6) : first_round(1.0);
  if (!settled) {
    hop_chains(distinct(lines_, static_cast<std::size_t>(std::max(0, options_.second_chains)), true),
               options_.second_hops, options_.adaptive ? second_patience : options_.second_hops);
  }
  std::vector<Shape> shapes;
  const int refined = settled ? std::min(2, options_.refined) : options_.refined;
  const int finished = settled && small() ? 1 : options_.finished;
  for (const std::size_t k : distinct(lines_, static_cast<std::size_t>(std::max(1, refined)), true)) {
    shapes.push_back(lines_[k].shape);
  }

  std::vector<double> edges;
  for (const double h : {0.4, 0.25, 0.15, 0.10, 0.07}) {
    if (h < options_.coarse_edge && h > 1.2 * options_.edge) edges.push_back(h);
  }
  if (options_.edge < options_.coarse_edge) edges.push_back(options_.edge);
  for (std::size_t k = 0; k < edges.size(); ++k) {
    if (k > 0) shapes.resize(std::min(shapes.size(), static_cast<std::size_t>(std::max(1, finished))));
    if (edges[k] < 0.12) shapes.resize(1);
    while (k > 0 && shapes.back().value > shapes.front().value * (1.0 + level_spread * edges[k - 1])) shapes.pop_back();
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
