#include "ideal/contract.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/numbers.hpp"
#include "ideal/respace.hpp"
#include "spectral/lane_functions.hpp"

namespace vkm::ideal {

namespace {

constexpr int programs_between_spacings = 14;
constexpr double length_between_spacings = 0.88;

/// The rope at edges of h, or at finer ones where its strands are so crowded that longer ones might pass through them:
/// programs at these give it room.
std::optional<Rope> first_spaced(const Rope& rope, double h) {
  for (const double part : {1.0, 0.75, 0.5}) {
    if (auto spaced = respaced(rope, part * h)) return spaced;
  }
  return {};
}

}  // namespace

void scale_to_tube(Rope& rope) {
  const Cycle cycle(rope);
  const double total = length(rope, cycle);
  double distance = total;
  double gap = 0.1 * total;
  for (int turn = 0; turn < 4; ++turn) {
    distance = least_distance(rope, cycle, 0.25 * total, gap);
    gap = 0.5 * pi * distance;
  }
  if (!(distance > 1e-6 * total)) throw std::invalid_argument("the curve touches or crosses itself");
  scale(rope, 2.0 / distance);
}

SettleOptions level_options(double h) {
  SettleOptions options;
  if (h > 0.5) {
    options.tolerance = 1e-2;  // finer ones end in the same shapes, a fifth later
    return options;
  }
  options.bound = 0.25 * h;
  options.fine = true;
  options.stiffness = 0.015;
  options.programs = 60;
  if (h < 0.2) {
    options.radius = 1.0001;
    options.programs = 100;
    options.bound = 0.1 * h;
    options.tolerance = 1e-6;
    options.violation = 5e-5;
    options.decrease = 2e-6;
  } else {
    options.violation = 2e-3;
    options.decrease = 2e-5;
  }
  return options;
}

std::optional<Settled> contract(const Rope& rope, double h, int most_programs, Heartbeat& heartbeat) {
  SettleOptions options = level_options(h);
  options.programs = programs_between_spacings;
  options.shortening = length_between_spacings;
  Settled state;
  state.rope = rope;
  int programs = 0;
  for (int turn = 0; programs < most_programs; ++turn) {
    auto spaced = turn == 0 ? first_spaced(state.rope, h) : respaced(state.rope, h);
    if (!spaced && turn == 0) return std::nullopt;
    if (spaced) state.rope = std::move(*spaced);
    state = settle(std::move(state.rope), options, heartbeat);
    programs += state.programs + 1;
    options.bound = std::max(state.bound, 0.02);
    if (!state.settled) continue;
    const Cycle cycle(state.rope);
    const double actual = length(state.rope, cycle) / state.rope.size();
    if (std::abs(actual / h - 1.0) < 0.03) break;
  }
  state.programs = programs;
  return state;
}

Settled refine(const Rope& rope, double h, Heartbeat& heartbeat) {
  const auto spaced = respaced(rope, h);
  return settle(spaced ? *spaced : rope, level_options(h), heartbeat);
}

void displace(Rope& rope, double amplitude, int modes, Random& random) {
  const Cycle cycle(rope);
  std::vector<Vec3> field(rope.size(), Vec3{0.0, 0.0, 0.0});
  for (const auto& [begin, end] : rope.components) {
    for (int m = 0; m <= modes; ++m) {
      Vec3 cosine{};
      Vec3 sine{};
      for (std::size_t a = 0; a < 3; ++a) {
        cosine[a] = random.normal();
        sine[a] = random.normal();
      }
      for (Index k = begin; k < end; ++k) {
        const auto wave = lane::sin_cos(two_pi * m * (k - begin) / (end - begin));
        field[k] += wave.cos * cosine + wave.sin * sine;
      }
    }
  }
  double largest = 0.0;
  double stretch = 0.0;
  for (Index k = 0; k < rope.size(); ++k) {
    const Index next = cycle.next[k];
    largest = std::max(largest, norm(field[k]));
    stretch = std::max(stretch, norm(field[next] - field[k]) / norm(rope.points[next] - rope.points[k]));
  }
  const double room = least_distance(rope, cycle, 8.0, pi);
  const double factor = std::min({amplitude / largest, 0.49 * room / largest, 0.6 / stretch});
  for (Index k = 0; k < rope.size(); ++k) rope.points[k] += factor * field[k];
}

Rope hop(const Rope& rope, Random& random) {
  Rope moved = rope;
  scale(moved, 1.0 + 0.5 * random.uniform(0.0, 0.6));
  const int modes = 1 + static_cast<int>(random.below(6));
  displace(moved, random.uniform(0.5, 1.3), modes, random);
  return moved;
}

Rope small_hop(const Rope& rope, Random& random) {
  Rope moved = rope;
  const int modes = 2 + static_cast<int>(random.below(7));
  displace(moved, random.uniform(0.1, 0.5), modes, random);
  scale_to_tube(moved);
  return moved;
}

}  // namespace vkm::ideal
