#include "formulas/swirl_field.hpp"

#include <cmath>
#include <cstdlib>

#include "core/elementary.hpp"
#include "core/memory.hpp"

namespace vkm {

namespace {

constexpr std::size_t bytes_of_a_pair = 160;  // as the pair here and as a Python list of two floats

}  // namespace

std::vector<std::array<float, 2>> swirl_field(std::int32_t res, float time, const Poll& poll) {
  const auto side = static_cast<std::size_t>(std::abs(static_cast<std::int64_t>(res)));
  require_memory(side * side, bytes_of_a_pair);
  std::vector<std::array<float, 2>> field(side * side);
  Heartbeat heartbeat(poll);
  const float T = time * 6.0F;
  const auto n = static_cast<float>(res);
  auto* out = field.data();
  std::vector<float> phase(side);  // of the modulation along a row, and its sine
  for (std::int32_t i = 0; i < res; ++i) {
    const float y = static_cast<float>(i) / n - 0.5F;
    const auto r2_at = [&](float x) { return x * x + y * y + 1e-5F; };
    for (std::size_t j = 0; j < side; ++j) {
      const float x = static_cast<float>(j) / n - 0.5F;
      phase[j] = 10.0F * std::sqrt(r2_at(x)) - T;
    }
    vkm::sin(phase, phase);
    for (std::size_t j = 0; j < side; ++j) {
      const float x = static_cast<float>(j) / n - 0.5F;
      const float r2 = r2_at(x);
      const float r = std::sqrt(r2);
      const float m = 1.0F + 0.03F * phase[j];
      const float A = 0.1F / r2;
      const float B = 0.25F / r;
      *out++ = {(-A * y - B * x) * m, (-A * x + B * y) * m};
    }
    heartbeat.tick();
  }
  return field;
}

}  // namespace vkm
