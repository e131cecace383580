// The tightening of knots and links, for vkmcore.ideal.

#include <cmath>
#include <exception>
#include <optional>

#include "core/finite.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "engine/engine.hpp"
#include "ideal/balance.hpp"
#include "ideal/contract.hpp"
#include "ideal/interior_point.hpp"
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

py::array_t<double> table(const std::vector<double>& values, std::size_t columns) {
  return array_from(values, {static_cast<py::ssize_t>(values.size() / columns), static_cast<py::ssize_t>(columns)});
}

double number(Index index) { return static_cast<double>(index); }

/// Struts as rows (i, s, j, t, distance, force), kinks as rows (vertex, MinRad, force).
void add_balance(py::dict& result, const Balance& balance) {
  std::vector<double> struts;
  for (const auto& [i, s, j, t, distance, force] : balance.struts) {
    struts.insert(struts.end(), {number(i), s, number(j), t, distance, force});
  }
  std::vector<double> kinks;
  for (const auto& [at, radius, force] : balance.kinks) kinks.insert(kinks.end(), {number(at), radius, force});
  result["struts"] = table(struts, 6);
  result["kinks"] = table(kinks, 3);
  result["kkt_residual"] = balance.residual;
}

py::dict settled_result(const Settled& settled, const Balance& carried) {
  py::dict result = measures_of(settled.rope);
  result["points"] = polygons_of(settled.rope);
  result["violation"] = settled.violation;
  result["settled"] = settled.settled;
  result["programs"] = settled.programs;
  add_balance(result, carried);
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
                            int refined, int finished, bool adaptive, bool small_hops, int start_programs,
                            double coarse_edge, double small_noise, double large_noise,
                            std::optional<py::function> watch) {
  std::vector<Rope> ropes;
  for (const Polygons& start : starts) {
    ropes.push_back(checked_rope(start));
    require_size(ropes.back(), edge);
  }
  SearchOptions options;
  options.edge = edge;
  if (!(coarse_edge > 0.0 && small_noise >= 0.0 && large_noise >= 0.0)) {
    throw std::invalid_argument("the coarse edge length must be positive, and no noise negative");
  }
  options.coarse_edge = std::max(coarse_edge, edge);
  options.small_noise = small_noise;
  options.large_noise = large_noise;
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
  options.small_hops = small_hops;
  options.start_programs = start_programs;
  SearchWatch tell;
  if (watch) {
    tell = [&watch](const SearchStep& step, double best) {
      const py::gil_scoped_acquire lock;
      (*watch)(step.phase, step.task, step.edge, step.hops, step.ropelength, best);
    };
  }
  SearchResult found;
  Balance carried;
  std::exception_ptr stop;
  {
    const py::gil_scoped_release unlock;
    found = search(ropes, options, released_poll(), tell, &stop);
    carried = balance(found.best.rope);
  }
  if (stop) {
    try {
      std::rethrow_exception(stop);
    } catch (const py::error_already_set& error) {
      if (!error.matches(PyExc_KeyboardInterrupt)) throw;
    }
  }
  py::dict result = settled_result(found.best, carried);
  result["edge"] = found.edge;
  result["interrupted"] = found.stopped;
  py::list history;
  for (const SearchStep& step : found.history) {
    history.append(py::make_tuple(step.phase, step.task, step.edge, step.hops, step.ropelength));
  }
  result["history"] = history;
  return result;
};

/// A level or a contraction by itself.
template <class Work>
py::dict settled_by(const Polygons& polygons, double edge, bool to_tube, Work work) {
  Rope rope = checked_rope(polygons);
  require_size(rope, edge);
  if (to_tube) scale_to_tube(rope);
  Settled settled;
  Balance carried;
  {
    const py::gil_scoped_release unlock;
    Heartbeat heartbeat(released_poll());
    settled = work(rope, heartbeat);
    carried = balance(settled.rope);
  }
  return settled_result(settled, carried);
}

constexpr auto contract_once = [](const Polygons& polygons, double edge, int programs) {
  return settled_by(polygons, edge, true, [&](const Rope& rope, Heartbeat& heartbeat) {
    auto settled = contract(rope, edge, programs, heartbeat);
    if (settled) return std::move(*settled);
    throw std::invalid_argument("strands are too near to each other for edges of this length");
  });
};

constexpr auto refine_once = [](const Polygons& polygons, double edge) {
  return settled_by(polygons, edge, false,
                    [&](const Rope& rope, Heartbeat& heartbeat) { return refine(rope, edge, heartbeat); });
};

constexpr auto hop_once = [](const Polygons& polygons, std::uint64_t seed, bool small) {
  Random random(seed, 0, 0);
  const Rope rope = checked_rope(polygons);
  return polygons_of(small ? small_hop(rope, random) : hop(rope, random));
};

/// A program as arrays: edges as rows (u, l), kinks (vertex, gradient, slope, excess, demand), struts (i, j, s, t, w,
/// excess, demand).
constexpr auto program_arrays = [](const Polygons& polygons, double bound, double radius) {
  const Rope rope = checked_rope(polygons);
  const Cycle cycle(rope);
  auto h = lengths(rope, cycle);
  for (std::size_t c = 0; c < h.size(); ++c) h[c] /= rope.components[c].size();
  Demands demands;
  demands.bound = bound;
  demands.radius = radius;
  const Program program = program_of(rope, cycle, h, contacts(rope, cycle, 2.0 + 1.5 * bound + 0.01, pi), demands);
  std::vector<double> edges;
  for (const auto& [u, l] : program.edges) edges.insert(edges.end(), {u[0], u[1], u[2], l});
  std::vector<double> kinks;
  for (const auto& [at, g, slope, excess, demand] : program.kinks) {
    kinks.insert(kinks.end(), {number(at), g[0], g[1], g[2], slope, excess, demand});
  }
  std::vector<double> struts;
  for (const auto& [i, j, s, t, w, excess, demand] : program.struts) {
    struts.insert(struts.end(), {number(i), number(j), s, t, w[0], w[1], w[2], excess, demand});
  }
  std::vector<std::size_t> sizes;
  for (const Component& c : program.components) sizes.push_back(c.size());
  py::dict result;
  result["sizes"] = sizes;
  result["edges"] = table(edges, 4);
  result["kinks"] = table(kinks, 7);
  result["struts"] = table(struts, 9);
  result["bound"] = program.bound;
  result["rho"] = program.rho;
  result["stiffness"] = program.stiffness;
  return result;
};

using Table = ContiguousArray;

std::span<const double> row(const Table& table, py::ssize_t r) {
  return {table.data() + r * table.shape(1), static_cast<std::size_t>(table.shape(1))};
}

Index vertex(double value, std::size_t count) {
  if (!(value >= 0.0 && value < static_cast<double>(count))) throw std::invalid_argument("no such vertex");
  return static_cast<Index>(value);
}

constexpr auto solve_arrays = [](const std::vector<Index>& sizes, const Table& edges, const Table& kinks,
                                 const Table& struts, double bound, double rho, double stiffness, double tolerance) {
  const auto columns = [](const Table& t, py::ssize_t n) {
    if (t.ndim() != 2 || t.shape(1) != n) throw std::invalid_argument("a table of the program has a wrong shape");
  };
  columns(edges, 4);
  columns(kinks, 7);
  columns(struts, 9);
  Program program;
  Index begin = 0;
  for (const Index size : sizes) {
    program.components.push_back({begin, begin + size});
    begin += size;
  }
  if (begin < 6 || edges.shape(0) != static_cast<py::ssize_t>(begin)) {
    throw std::invalid_argument("a program needs one edge a vertex, and six vertices");
  }
  for (py::ssize_t r = 0; r < edges.shape(0); ++r) {
    const auto v = row(edges, r);
    program.edges.push_back({{v[0], v[1], v[2]}, v[3]});
  }
  for (py::ssize_t r = 0; r < kinks.shape(0); ++r) {
    const auto v = row(kinks, r);
    program.kinks.push_back({vertex(v[0], begin), {v[1], v[2], v[3]}, v[4], v[5], v[6]});
  }
  for (py::ssize_t r = 0; r < struts.shape(0); ++r) {
    const auto v = row(struts, r);
    program.struts.push_back({vertex(v[0], begin), vertex(v[1], begin), v[2], v[3], {v[4], v[5], v[6]}, v[7], v[8]});
  }
  program.bound = bound;
  program.rho = rho;
  program.stiffness = stiffness;
  Solution solution;
  {
    const py::gil_scoped_release unlock;
    solution = solve(program, tolerance);
  }
  py::dict result;
  result["moves"] = array_from(solution.moves);
  result["edge_lengths"] = array_from(solution.edge_lengths);
  result["edge_forces"] = array_from(solution.edge_forces);
  result["kink_forces"] = array_from(solution.kink_forces);
  result["strut_forces"] = array_from(solution.strut_forces);
  result["residual"] = solution.residual;
  result["iterations"] = solution.iterations;
  result["solved"] = solution.solved;
  return result;
};

}  // namespace

void bind_ideal(py::module_& m) {
  using namespace py::literals;
  m.def("tighten", tighten, "starts"_a, py::kw_only(), "edge"_a = 0.15, "seed"_a = 1, "threads"_a = 1,
        "start_count"_a = 16, "first_chains"_a = 8, "first_hops"_a = 8, "second_chains"_a = 2, "second_hops"_a = 40,
        "refined"_a = 4, "finished"_a = 2, "adaptive"_a = true, "small_hops"_a = false, "start_programs"_a = 150,
        "coarse_edge"_a = 0.9, "small_noise"_a = 0.1, "large_noise"_a = 0.4, "watch"_a = py::none(),
        "Search the tightest shape from start polygons: lists of (N, 3) arrays, one a component.");
  m.def("contract", contract_once, "polygons"_a, "edge"_a, "programs"_a = 200,
        "Scale to the tube, space at the edge length, and tighten.");
  m.def("refine", refine_once, "polygons"_a, "edge"_a, "Space at the edge length, and tighten.");
  m.def("hop", hop_once, "polygons"_a, "seed"_a, "small"_a = false,
        "Swell and displace smoothly at random; no strand passes another.");
  m.def("program", program_arrays, "polygons"_a, "bound"_a, "radius"_a = 1.0,
        "The quadratic program of a step from these polygons, as arrays.");
  m.def("solve_program", solve_arrays, py::kw_only(), "sizes"_a, "edges"_a, "kinks"_a, "struts"_a, "bound"_a, "rho"_a,
        "stiffness"_a = 0.0, "tolerance"_a = 1e-7, "Solve a program given as arrays.");
  m.def(
      "measure", [](const Polygons& polygons) { return measures_of(checked_rope(polygons)); }, "polygons"_a,
      "Length, MinRad, least distance of strangers, thickness and ropelength (radius convention).");
}

}  // namespace vkm
