// Non-negative fits and tightening as plain scalar loops: every analysis over all pairs, every one of them made where
// the steps name it, Gram matrices from merged columns, eliminations on rows of vectors.

#include <utility>

#include "plain_tube.hpp"

using namespace plain;

namespace {

using Row = std::vector<double>;
using Matrix = std::vector<Row>;
using Column = std::vector<std::pair<std::size_t, double>>;  // rows ascending

struct Kink {
  std::size_t vertex;
  double minus, plus, minrad, theta;
};

struct Tube {
  double length = 0.0, thickness = 0.0, ropelength = 0.0;
  std::vector<Pair> struts;
  std::vector<Kink> kinks;
};

double norm_of(const Row& x) {
  double sum = 0.0;
  for (double v : x) sum += v * v;
  return std::sqrt(sum);
}

Tube analyze(const std::vector<V>& points, std::int64_t skip, double tol) {
  std::vector<V> p = points;
  p.push_back(p.front());
  const std::size_t n = points.size();
  Tube tube;
  std::vector<Kink> corners;
  double minrad = std::numeric_limits<double>::infinity();
  for (std::size_t v = 0; v < n; ++v) {
    const V u = p[v] - p[v == 0 ? n - 1 : v - 1], w = p[v + 1] - p[v];
    const double theta = std::acos(std::clamp(dot(u, w) / (norm(u) * norm(w)), -1.0, 1.0));
    const double d = 2.0 * std::tan(theta / 2.0);
    corners.push_back({v, norm(u) / d, norm(w) / d, std::min(norm(u), norm(w)) / d, theta});
    minrad = std::min(minrad, corners.back().minrad);
    tube.length += norm(p[v] - p[v + 1]);
  }
  double least, unused;
  candidates(p, skip, 0.0, least);
  tube.thickness = std::min(minrad, 0.5 * least);
  tube.ropelength = tube.length / tube.thickness;
  const double contact = (tol + 1.0) * tube.thickness + tol;
  for (const Pair& pair : candidates(p, skip, tol, unused)) {
    if (0.5 * pair.distance <= contact) tube.struts.push_back(pair);
  }
  for (const Kink& kink : corners) {
    if (kink.minrad <= contact) tube.kinks.push_back(kink);
  }
  return tube;
}

V cross(V a, V b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }

Column column_of(std::vector<std::pair<std::size_t, V>> parts) {
  std::sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  Column column;
  for (const auto& [v, g] : parts) {
    const double value[3] = {g.x, g.y, g.z};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (std::fabs(value[axis]) > 1e-15) column.push_back({3 * v + axis, value[axis]});
    }
  }
  return column;
}

std::vector<Column> rigidity(const std::vector<V>& p, const Tube& tube) {
  const std::size_t n = p.size();
  std::vector<Column> columns;
  for (const Pair& pair : tube.struts) {
    const std::size_t i1 = (pair.i + 1) % n, j1 = (pair.j + 1) % n;
    const V w = (p[pair.i] + pair.s * (p[i1] - p[pair.i])) - (p[pair.j] + pair.t * (p[j1] - p[pair.j]));
    const V g = 1.0 / (2.0 * norm(w)) * w;
    columns.push_back(
        column_of({{pair.i, (1.0 - pair.s) * g}, {i1, pair.s * g}, {pair.j, -(1.0 - pair.t) * g}, {j1, -pair.t * g}}));
  }
  for (const Kink& kink : tube.kinks) {
    std::size_t prev = (kink.vertex + n - 1) % n, next = (kink.vertex + 1) % n;
    if (kink.plus + 1e-12 * std::max(kink.minrad, 1.0) >= kink.minus) std::swap(prev, next);
    const V a = p[prev] - p[kink.vertex], b = p[next] - p[kink.vertex], N = cross(b, a);
    const V nh = 1.0 / norm(N) * N;
    const double lb = norm(b), dtheta = lb / (2.0 * std::cos(kink.theta) - 2.0);
    const V gl = 1.0 / (2.0 * std::tan(kink.theta / 2.0) * lb) * b;
    const V gp = dtheta / dot(a, a) * cross(a, nh), gx = dtheta / dot(b, b) * cross(nh, b);
    columns.push_back(column_of({{prev, gp}, {kink.vertex, -1.0 * (gp + gx) - gl}, {next, gx + gl}}));
  }
  return columns;
}

Matrix gram(const std::vector<Column>& a) {
  Matrix g(a.size(), Row(a.size(), 0.0));
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) {
      double sum = 0.0;
      for (auto p = a[i].begin(), q = a[j].begin(); p != a[i].end() && q != a[j].end();) {
        if (p->first < q->first) {
          ++p;
        } else if (q->first < p->first) {
          ++q;
        } else {
          sum += p++->second * q++->second;
        }
      }
      g[i][j] = g[j][i] = sum;
    }
  }
  return g;
}

bool gauss_jordan(Matrix m, Row b, double ridge, Row& x) {
  const std::size_t k = b.size();
  for (std::size_t i = 0; i < k; ++i) m[i][i] += ridge;
  for (std::size_t q = 0; q < k; ++q) {
    std::size_t best = q;
    for (std::size_t i = q + 1; i < k; ++i) {
      if (std::fabs(m[i][q]) > std::fabs(m[best][q])) best = i;
    }
    if (std::fabs(m[best][q]) <= 1e-18) return false;
    std::swap(m[q], m[best]);
    std::swap(b[q], b[best]);
    const double pivot = m[q][q];
    for (std::size_t j = q; j < k; ++j) m[q][j] /= pivot;
    b[q] /= pivot;
    for (std::size_t i = 0; i < k; ++i) {
      const double f = m[i][q];
      if (i == q || f == 0.0) continue;
      for (std::size_t j = q; j < k; ++j) m[i][j] -= f * m[q][j];
      b[i] -= f * b[q];
    }
  }
  x = b;
  return true;
}

/// Columns of G times x.
Row times(const Matrix& g, const Row& x) {
  Row y(x.size(), 0.0);
  for (std::size_t k = 0; k < x.size(); ++k) {
    if (x[k] == 0.0) continue;
    for (std::size_t i = 0; i < x.size(); ++i) y[i] += x[k] * g[i][k];
  }
  return y;
}

Row right_side(const std::vector<Column>& a, const Row& b) {
  Row c;
  for (const Column& column : a) {
    double sum = 0.0;
    for (const auto& [row, value] : column) sum += value * b[row];
    c.push_back(sum);
  }
  return c;
}

bool subproblem(const Matrix& g, const Row& c, const std::vector<char>& passive, Row& z) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < c.size(); ++i) {
    if (passive[i]) order.push_back(i);
  }
  z.assign(c.size(), 0.0);
  Matrix m;
  Row rhs, x;
  for (std::size_t i : order) {
    Row row;
    for (std::size_t j : order) row.push_back(g[i][j]);
    m.push_back(row);
    rhs.push_back(c[i]);
  }
  double ridge = 1e-12;
  for (int attempt = 0; attempt < 6; ++attempt, ridge *= 10.0) {
    if (!gauss_jordan(m, rhs, ridge, x)) continue;
    for (std::size_t i = 0; i < order.size(); ++i) z[order[i]] = x[i];
    return true;
  }
  return false;
}

Row active_set(const std::vector<Column>& a, const Row& b, double tol = 1e-10) {
  const Matrix g = gram(a);
  const Row c = right_side(a, b);
  const std::size_t n = c.size();
  Row x(n, 0.0), z;
  std::vector<char> passive(n, 0);
  for (int iteration = 0; iteration < 2000; ++iteration) {
    const Row gx = times(g, x);
    std::size_t chosen = n;
    double greatest = tol;
    for (std::size_t i = 0; i < n; ++i) {
      if (!passive[i] && c[i] - gx[i] > greatest) greatest = c[i] - gx[i], chosen = i;
    }
    if (chosen == n) break;
    passive[chosen] = 1;
    bool solved = subproblem(g, c, passive, z);
    while (solved) {
      double alpha = 1.0;
      bool found = false, all = true;
      for (std::size_t i = 0; i < n; ++i) {
        if (!passive[i] || z[i] > tol) continue;
        all = false;
        const double d = x[i] - z[i];
        if (d > 1e-14 && (!found || x[i] / d < alpha)) alpha = x[i] / d, found = true;
      }
      if (all) break;
      alpha = std::clamp(alpha, 0.0, 1.0);
      for (std::size_t i = 0; i < n; ++i) x[i] += alpha * (z[i] - x[i]);
      for (std::size_t i = 0; i < n; ++i) {
        if (passive[i] && x[i] <= (norm_of(x) + 1.0) * tol) x[i] = 0.0, passive[i] = 0;
      }
      solved = subproblem(g, c, passive, z);
    }
    if (solved) {
      x = z;
    } else {
      passive[chosen] = 0;
    }
  }
  return x;
}

Row coordinate_descent(const std::vector<Column>& a, const Row& b, std::int64_t sweeps, double tol = 1e-10) {
  const Matrix g = gram(a);
  const Row c = right_side(a, b);
  const double scale = norm_of(b);
  Row x(c.size(), 0.0);
  for (std::int64_t sweep = 0; sweep < sweeps; ++sweep) {
    Row gx = times(g, x);
    double change = 0.0;
    for (std::size_t i = 0; i < c.size(); ++i) {
      if (!(g[i][i] > 1e-14)) continue;
      const double delta = std::max(x[i] - (gx[i] - c[i]) / g[i][i], 0.0) - x[i];
      x[i] += delta;
      change = std::max(change, std::fabs(delta));
      for (std::size_t k = 0; k < c.size(); ++k) gx[k] += delta * g[k][i];
    }
    Row r(b.size(), 0.0);
    for (std::size_t k = 0; k < a.size(); ++k) {
      for (const auto& [row, value] : a[k]) r[row] += value * x[k];
    }
    for (std::size_t row = 0; row < b.size(); ++row) r[row] -= b[row];
    if (change <= (norm_of(x) + 1.0) * tol || norm_of(r) / scale <= tol) break;
  }
  return x;
}

Row length_gradient(const std::vector<V>& p) {
  const std::size_t n = p.size();
  Row g;
  for (std::size_t v = 0; v < n; ++v) {
    const V a = p[v] - p[(v + n - 1) % n], b = p[v] - p[(v + 1) % n];
    const V sum = 1.0 / norm(a) * a + 1.0 / norm(b) * b;
    g.insert(g.end(), {sum.x, sum.y, sum.z});
  }
  return g;
}

void move(std::vector<V>& p, const Row& d, double alpha) {
  for (std::size_t v = 0; v < p.size(); ++v) p[v] = p[v] + alpha * V{d[3 * v], d[3 * v + 1], d[3 * v + 2]};
}

std::vector<V> correct(std::vector<V> p, double target, std::int64_t skip, double tol) {
  if (target <= analyze(p, skip, tol).thickness) return p;
  for (int round = 0; round < 3; ++round) {
    const Tube tube = analyze(p, skip, tol);
    if (target <= tube.thickness) return p;
    const std::vector<Column> a = rigidity(p, tube);
    Row deficit, y, delta(3 * p.size(), 0.0);
    for (const Pair& pair : tube.struts) deficit.push_back(std::max(target - 0.5 * pair.distance, 0.0));
    for (const Kink& kink : tube.kinks) deficit.push_back(std::max(target - kink.minrad, 0.0));
    if (norm_of(deficit) == 0.0 || !gauss_jordan(gram(a), deficit, 1e-10, y)) break;
    for (std::size_t k = 0; k < a.size(); ++k) {
      for (const auto& [row, value] : a[k]) delta[row] += value * y[k];
    }
    move(p, delta, 1.0);
  }
  if (!(analyze(p, skip, tol).thickness < target)) return p;
  const double t = analyze(p, skip, tol).thickness;
  V centroid = {0, 0, 0};
  for (V v : p) centroid = centroid + v;
  centroid = 1.0 / static_cast<double>(p.size()) * centroid;
  for (V& v : p) v = centroid + target / t * 1.000000000001 * (v - centroid);
  return p;
}

std::vector<Column> read_columns(const double* a, std::int64_t rows, std::int64_t count) {
  std::vector<Column> columns(static_cast<std::size_t>(count));
  for (std::size_t k = 0; k < columns.size(); ++k) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(rows); ++row) {
      const double value = a[k * static_cast<std::size_t>(rows) + row];
      if (value != 0.0) columns[k].push_back({row, value});
    }
  }
  return columns;
}

}  // namespace

extern "C" {

/// `a` holds the columns one after the other. Both return the sum of the multipliers.
double plain_nnls_active_set(const double* a, const double* b, std::int64_t rows, std::int64_t count) {
  double sum = 0.0;
  for (double x : active_set(read_columns(a, rows, count), Row(b, b + rows))) sum += x;
  return sum;
}

double plain_nnls_coordinate_descent(const double* a, const double* b, std::int64_t rows, std::int64_t count,
                                     std::int64_t sweeps) {
  double sum = 0.0;
  for (double x : coordinate_descent(read_columns(a, rows, count), Row(b, b + rows), sweeps)) sum += x;
  return sum;
}

/// Default options but for these. Returns the ropelength reached.
double plain_tighten(const double* points, std::int64_t n, std::int64_t skip, double tol, double max_step_size,
                     std::int64_t steps) {
  std::vector<V> p = read(points, n);
  p.pop_back();
  Tube tube = analyze(p, skip, tol);
  const double hold = tube.thickness;
  for (std::int64_t step = 0; step < steps; ++step) {
    const Row g = length_gradient(p);
    const std::vector<Column> a = rigidity(p, tube);
    const Row x = active_set(a, g);
    Row direction(g.size(), 0.0);
    for (std::size_t k = 0; k < a.size(); ++k) {
      for (const auto& [row, value] : a[k]) direction[row] += value * x[k];
    }
    for (std::size_t row = 0; row < g.size(); ++row) direction[row] -= g[row];
    if (norm_of(direction) / norm_of(g) <= 1e-4) break;
    double largest = 0.0;
    for (std::size_t v = 0; v < p.size(); ++v) {
      largest = std::max(largest, norm({direction[3 * v], direction[3 * v + 1], direction[3 * v + 2]}));
    }
    for (double& d : direction) d /= largest;
    const double floor = 0.999 * tube.thickness;
    bool accepted = false;
    double alpha = max_step_size;
    for (int trial = 0; trial < 24 && alpha >= 1e-8 && !accepted; ++trial, alpha *= 0.5) {
      std::vector<V> candidate = p;
      move(candidate, direction, alpha);
      Tube tried = analyze(candidate, skip, tol);
      if (tried.thickness < floor || tried.thickness < hold) {
        candidate = correct(candidate, hold, skip, tol);
        tried = analyze(candidate, skip, tol);
      }
      if (tried.thickness + 1e-12 < std::max(floor, 0.999 * hold)) continue;
      if (!(tried.ropelength <= tube.ropelength + std::max(tube.ropelength, 1.0) * 1e-10 || tried.length < tube.length))
        continue;
      accepted = true;
      p = candidate;
      tube = tried;
    }
    if (!accepted) break;
  }
  return tube.ropelength;
}
}
