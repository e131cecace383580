// Long loops stay interruptible: they poll, and what the poll throws abandons them without a trace.

#include <chrono>
#include <cmath>
#include <stdexcept>
#include <thread>
#include <vector>

#include "check.hpp"
#include "core/poll.hpp"
#include "filament/sums/biot_savart.hpp"
#include "mass/particle_evaluator.hpp"

namespace {

using namespace vkm;
using namespace vkm::test;

struct Stopped : std::runtime_error {
  Stopped() : std::runtime_error("stopped") {}
};

/// Throws at its call number `last`, and counts its calls.
Poll stop_at(int last, int& calls) {
  return [last, &calls] {
    if (++calls == last) throw Stopped();
  };
}

std::vector<Vec3> ellipse(std::size_t size) {
  std::vector<Vec3> points(size);
  for (std::size_t i = 0; i < size; ++i) {
    const double t = 6.28 * static_cast<double>(i) / static_cast<double>(size);
    points[i] = {std::cos(t), 2.0 * std::sin(t), 0.1 * std::sin(3.0 * t)};
  }
  return points;
}

void polls_after_a_pause_once() {
  int calls = 0;
  Heartbeat heartbeat([&calls] { ++calls; });
  const auto begin = std::chrono::steady_clock::now();
  for (int pause = 1; pause <= 3; ++pause) {
    std::this_thread::sleep_for(std::chrono::milliseconds(6));
    heartbeat.tick();
    check(calls >= pause, "no poll after a pause");
    for (int i = 0; i < 1000; ++i) heartbeat.tick();
  }
  const auto passed = std::chrono::steady_clock::now() - begin;
  check(calls <= passed / std::chrono::milliseconds(5), "more than one poll in five milliseconds");
}

void no_poll_is_no_work() {
  Heartbeat heartbeat({});
  std::this_thread::sleep_for(std::chrono::milliseconds(6));
  heartbeat.tick();
}

void kernels_poll_and_stop() {
  const std::vector<Vec3> curve = ellipse(4000);
  const Lanes field(60000);
  int calls = 0;
  check_throws<Stopped>([&] { closed_curve_velocity(curve, field, 1.0, stop_at(3, calls)); });
  check_equal(calls, 3, "calls of the poll");
}

void an_abandoned_relaxation_leaves_the_filaments() {
  ParticleEvaluator stopped({ellipse(600)}), untouched({ellipse(600)});
  const auto before = stopped.get_filaments();
  int calls = 0;
  check_throws<Stopped>([&] { stopped.relax(100000, 0.01, stop_at(4, calls)); });
  check(stopped.get_filaments() == before, "the filaments moved");
  stopped.relax(3);
  untouched.relax(3);
  check(stopped.get_filaments() == untouched.get_filaments(), "an abandoned call changed a later one");
  check(untouched.get_filaments() != before, "a whole relaxation moves nothing");
}

}  // namespace

int main() {
  return run({{"polls after a pause, once", polls_after_a_pause_once},
              {"no poll, no work", no_poll_is_no_work},
              {"kernels poll and stop", kernels_poll_and_stop},
              {"an abandoned relaxation leaves the filaments", an_abandoned_relaxation_leaves_the_filaments}});
}
