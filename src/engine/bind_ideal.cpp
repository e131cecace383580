// The tightening of knots and links, for vkmcore.ideal.

#include <cmath>
#include <exception>
#include <optional>

#include "core/finite.hpp"
#include "core/memory.hpp"
#include "engine/engine.hpp"
#include "ideal/contract.hpp"
#include "ideal/respace.hpp"
#include "ideal/search.hpp"

namespace vkm {

namespace {

using namespace ideal;
using Polygons = std::vector<DoubleArray>;

/// Components that a rope can be of: at least six finite vertices, no edge of length zero.
Rope checked_rope(const Polygons& polygons) {
  if (polygons.empty()) throw std::invalid_argument("a curve needs at least one component");
  std::vector<std::vector<Vec3>> list;
  for (const auto& polygon : polygons) {
    auto points = points_from(polygon, "expected one array of shape (N, 3) a component");
    if (points.size() < 6) throw std::invalid_argument("a component needs at least six vertices");
    if (!all_finite(points)) throw std::invalid_argument("coordinates must be finite");
    for (std::size_t k = 0; k < points.size(); ++k) {
      const double edge = norm(points[(k + 1) % points.size()] - points[k]);
      if (!(edge > 0.0)) throw std::invalid_argument("consecutive vertices must differ");
      if (!std::isfinite(edge)) throw std::invalid_argument("coordinates are too large");
    }
    list.push_back(std::move(points));
  }
  return rope_of(list);
}

py::list polygons_of(const Rope& rope) {
  py::list list;
  for (const Component& c : rope.components) {
    list.append(array_from(std::span<const Vec3>(rope.points.data() + c.begin, c.size())));
  }
  return list;
}

py::dict measures_of(const Rope& rope) {
  const Measures m = measure(rope, Cycle(rope));
  py::dict result;
  result["length"] = m.length;
  result["min_radius"] = m.min_radius;
  result["strut_distance"] = m.strut_distance;
  result["thickness"] = m.thickness;
  result["ropelength"] = m.ropelength;
  return result;
}

void require_size(const Rope& rope, double edge) {
  if (!(edge > 0.0)) throw std::invalid_argument("the edge length must be positive");
  // A tight rope of c crossings is some 10 c long; starts are a few times that. Memory goes with vertices and contacts.
  Rope scaled = rope;
  scale_to_tube(scaled);
  const double vertices = length(scaled, Cycle(scaled)) / edge;
  if (!(vertices < 1e9)) throw std::bad_alloc();
  require_memory(static_cast<std::size_t>(vertices), 40000);
}

constexpr auto tighten = [](const std::vector<Polygons>& starts, double edge, std::uint64_t seed, int threads,
                            int start_count, int first_chains, int first_hops, int second_chains, int second_hops,
                            int refined, int finished, bool adaptive, std::optional<py::function> watch) {
  std::vector<Rope> ropes;
  for (const Polygons& start : starts) {
    ropes.push_back(checked_rope(start));
    require_size(ropes.back(), edge);
  }
  SearchOptions options;
  options.edge = edge;
  options.coarse_edge = std::max(options.coarse_edge, edge);
  options.seed = seed;
  options.threads = threads;
  options.starts = start_count;
  options.first_chains = first_chains;
  options.first_hops = first_hops;
  options.second_chains = second_chains;
  options.second_hops = second_hops;
  options.refined = refined;
  options.finished = finished;
  options.adaptive = adaptive;
  SearchWatch tell;
  if (watch) {
    tell = [&watch](const SearchStep& step, double best) {
      const py::gil_scoped_acquire lock;
      (*watch)(step.phase, step.task, step.edge, step.hops, step.ropelength, best);
    };
  }
  SearchResult found;
  std::exception_ptr stop;
  {
    const py::gil_scoped_release unlock;
    found = search(ropes, options, released_poll(), tell, &stop);
  }
  if (stop) {
    try {
      std::rethrow_exception(stop);
    } catch (const py::error_already_set& error) {
      if (!error.matches(PyExc_KeyboardInterrupt)) throw;
    }
  }
  py::dict result = measures_of(found.best.rope);
  result["points"] = polygons_of(found.best.rope);
  result["edge"] = found.edge;
  result["violation"] = found.best.violation;
  result["settled"] = found.best.settled;
  result["interrupted"] = found.stopped;
  py::list history;
  for (const SearchStep& step : found.history) {
    history.append(py::make_tuple(step.phase, step.task, step.edge, step.hops, step.ropelength));
  }
  result["history"] = history;
  return result;
};

}  // namespace

void bind_ideal(py::module_& m) {
  using namespace py::literals;
  m.def("tighten", tighten, "starts"_a, py::kw_only(), "edge"_a = 0.15, "seed"_a = 1, "threads"_a = 1,
        "start_count"_a = 20, "first_chains"_a = 8, "first_hops"_a = 10, "second_chains"_a = 3, "second_hops"_a = 40,
        "refined"_a = 4, "finished"_a = 2, "adaptive"_a = true, "watch"_a = py::none(),
        "Search the tightest shape from start polygons: lists of (N, 3) arrays, one a component.");
  m.def(
      "measure", [](const Polygons& polygons) { return measures_of(checked_rope(polygons)); }, "polygons"_a,
      "Length, MinRad, least distance of strangers, thickness and ropelength (radius convention).");
}

}  // namespace vkm
