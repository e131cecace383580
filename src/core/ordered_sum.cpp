#include "core/ordered_sum.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "core/kernel.hpp"
#include "core/tasks.hpp"

namespace vkm {

namespace {

constexpr std::size_t lanes = 32;

/// The last place of a number, a power of two; 0 where there is none or it is too small to divide.
double last_place(double x) {
  const double size = std::abs(x);
  if (!(size >= 1e-250 && size <= 1e250)) return 0.0;
  const auto exponent = std::bit_cast<std::uint64_t>(size) & 0x7ff0000000000000U;
  return std::bit_cast<double>(exponent) * 0x1p-52;
}

/// Terms rounded to multiples of u: their sum, the sum of their magnitudes, and whether one lay between two.
struct Part {
  double unit;
  double sum = 0.0, size = 0.0;
  bool between = false;

  /// Adds all terms to s; false, and s as it was, where they are to be added one by one.
  bool add_to(double& s) const {
    if (unit == 0.0 || last_place(s) != unit) return false;
    const double low = unit * 0x1p52;  // |s| lies from here to the double of it
    const double room = std::min({std::abs(s) - low, (low - std::abs(s)) + low, 0.25 * low});
    if (between || !(size < room)) return false;
    s += sum;
    return true;
  }
};

VKM_KERNEL void add_terms(const double* terms, std::size_t count, Part& part) {
  // Adding and taking off 3 * 2^51 u rounds to a multiple of u what is below 2^51 u.
  const double shift = 6755399441055744.0 * part.unit, half = 0.5 * part.unit;
  double sum[lanes] = {}, size[lanes] = {}, most[lanes] = {};
  std::size_t first = 0;
  for (; first + lanes <= count; first += lanes) {
    for (std::size_t k = 0; k < lanes; ++k) {
      const double t = terms[first + k];
      const double rounded = (t + shift) - shift;
      const double missed = std::abs(t - rounded);
      sum[k] += rounded;
      size[k] += std::abs(rounded);
      most[k] = missed > most[k] ? missed : most[k];
    }
  }
  for (; first < count; ++first) {
    const double t = terms[first];
    const double rounded = (t + shift) - shift;
    const double missed = std::abs(t - rounded);
    sum[0] += rounded;
    size[0] += std::abs(rounded);
    most[0] = missed > most[0] ? missed : most[0];
  }
  for (std::size_t half_of = lanes / 2; half_of >= 4; half_of /= 2) {
    for (std::size_t k = 0; k < half_of; ++k) {
      sum[k] += sum[k + half_of];
      size[k] += size[k + half_of];
      most[k] = most[k + half_of] > most[k] ? most[k + half_of] : most[k];
    }
  }
  for (std::size_t k = 0; k < 4; ++k) {
    part.sum += sum[k];
    part.size += size[k];
    part.between |= !(most[k] < half);
  }
}

/// The terms of a task, by the last place that the sum will have there, which lies between two numbers.
struct Guess {
  std::array<Part, 2> parts;

  explicit Guess(double one = 0.0, double other = 0.0) : parts{Part{last_place(one)}, Part{last_place(other)}} {
    if (parts[0].unit == 0.0) std::swap(parts[0], parts[1]);
    if (parts[0].unit == parts[1].unit) parts[1].unit = 0.0;
  }

  bool any() const { return parts[0].unit != 0.0; }

  void add(std::span<const double> terms) {
    for (Part& part : parts) {
      if (part.unit != 0.0) add_terms(terms.data(), terms.size(), part);
    }
  }

  bool add_to(double& s) const { return parts[0].add_to(s) || parts[1].add_to(s); }
};

double added_one_by_one(double sum, std::span<const double> terms) {
  for (const double t : terms) sum += t;
  return sum;
}

}  // namespace

double add_in_order(double sum, std::span<const double> terms) {
  constexpr std::size_t short_run = 64, parts = 8;
  if (terms.size() <= short_run) return added_one_by_one(sum, terms);
  Part all{last_place(sum)};
  if (all.unit != 0.0) add_terms(terms.data(), terms.size(), all);
  if (all.add_to(sum)) return sum;
  const std::size_t run = (terms.size() + parts - 1) / parts;
  for (std::size_t first = 0; first < terms.size(); first += run) {
    sum = add_in_order(sum, terms.subspan(first, std::min(run, terms.size() - first)));
  }
  return sum;
}

double sum_in_order(std::size_t count, int threads, const Poll& poll,
                    const std::function<void(std::size_t, const TermSink&, Heartbeat&)>& produce) {
  double sum = 0.0;
  Heartbeat heartbeat(poll);
  const TermSink add = [&sum](std::span<const double> terms) { sum = add_in_order(sum, terms); };
  std::size_t done = 0;
  // The first few tell how the sum grows, and with that its last place at later tasks.
  const std::size_t alone = threads > 1 ? std::max<std::size_t>(1, count / 256) : count;
  for (; done < std::min(alone, count); ++done) produce(done, add, heartbeat);
  double before = 0.0;
  std::size_t since = 0;
  while (done < count) {
    const double growth = (sum - before) / static_cast<double>(done - since);
    const std::size_t most = std::max(done / 2, std::min<std::size_t>(count, 8));
    const std::size_t window = std::min({count - done, most, std::max<std::size_t>(count / 12, 8)});
    std::vector<Guess> guesses(window);
    run_tasks(window, threads, poll, [&](std::size_t task, Heartbeat& own) {
      Guess guess(sum, sum + 2.0 * growth * (static_cast<double>(task) + 0.5));
      if (guess.any()) {
        produce(done + task, [&guess](std::span<const double> terms) { guess.add(terms); }, own);
      }
      guesses[task] = guess;
    });
    before = sum;
    since = done;
    for (const Guess& guess : guesses) {
      if (!guess.add_to(sum)) produce(done, add, heartbeat);
      ++done;
    }
  }
  return sum;
}

double sum_over_pairs(std::size_t n, int threads, const Poll& poll, const PairTerms& fill) {
  constexpr std::size_t room = 4096, most_tasks = 8192;
  if (n < 2) return 0.0;
  // Rows get shorter: task t begins where a share t / tasks of the pairs is done. The few tasks in which the sum passes
  // a power of two are done again by one thread: small ones keep the others waiting less.
  const std::size_t tasks = threads > 1 ? std::min(most_tasks, (n + 1) / 2) : 1;
  const auto begin = [n, tasks](std::size_t task) {
    const double left = 1.0 - static_cast<double>(task) / static_cast<double>(tasks);
    return task == tasks ? n - 1 : static_cast<std::size_t>(static_cast<double>(n - 1) * (1.0 - std::sqrt(left)));
  };
  return sum_in_order(tasks, threads, poll, [&](std::size_t task, const TermSink& sink, Heartbeat& heartbeat) {
    const auto terms = std::make_unique_for_overwrite<double[]>(room + 8);
    std::size_t filled = 0;
    for (std::size_t i = begin(task); i < begin(task + 1); ++i) {
      for (std::size_t j = i + 1; j < n;) {
        const std::size_t count = std::min(n - j, room - filled);
        fill(i, j, count, terms.get() + filled);
        filled += count;
        j += count;
        if (filled < room) continue;
        sink({terms.get(), room});
        filled = 0;
        heartbeat.tick();
      }
    }
    sink({terms.get(), filled});
  });
}

}  // namespace vkm
