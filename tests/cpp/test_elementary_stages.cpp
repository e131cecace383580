// The pairs of doubles of the elementary functions against the same functions with 256 bits: the stated bounds on their
// relative errors hold, with some room.

#include <cmath>
#include <random>

#include "check.hpp"
#include "core/elementary/arctangent.hpp"
#include "core/elementary/exponential.hpp"
#include "core/elementary/logarithm.hpp"
#include "core/elementary/sine.hpp"

namespace {

using namespace vkm::elementary;
using namespace vkm::test;

constexpr int tries = 4000;

/// |pair / exact - 1|, to a few digits.
double error_of(const Pair& pair, const LongFloat& exact) {
  return std::fabs(to_double((long_float(pair) - exact) / exact));
}

void check_below(double error, double bound, const Place& place = Place::current()) {
  if (!(error < bound)) fail(shown(error) + " is not below " + shown(bound), place);
}

/// The greatest error over random numbers between two bounds.
template <class Error>
double greatest_error(double from, double to, Error error) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> number(from, to);
  double greatest = 0.0;
  for (int i = 0; i < tries; ++i) greatest = std::fmax(greatest, error(number(random)));
  return greatest;
}

/// The greatest error of a sine or cosine, in units of its bound; the reduction errs by 2^-111 |x|.
double greatest_share(double size, SinCosPair (*function)(double), double bound, Pair SinCosPair::* part,
                      LongFloat LongSinCos::* exact) {
  return greatest_error(-size, size, [&](double x) {
    const Pair found = function(x).*part;
    return error_of(found, long_sin_cos(x).*exact) / (bound + std::fabs(x / found.high) * 0x1p-111);
  });
}

void sines() {
  for (const double size : {0.7, 3.2, 30.0}) {
    check_below(greatest_share(size, finer_sin_cos, finer_sine_error, &SinCosPair::sin, &LongSinCos::sin), 0.5);
    check_below(greatest_share(size, finer_sin_cos, finer_sine_error, &SinCosPair::cos, &LongSinCos::cos), 0.5);
    check_below(greatest_share(size, fast_sin_cos, sine_error, &SinCosPair::sin, &LongSinCos::sin), 1.0);
  }
}

void angles() {
  for (const double slope : {1e-6, 0.1, 1.0, 20.0}) {
    for (const double x : {1.0, -1.0}) {
      const auto errors = [&](bool finer) {
        return greatest_error(-slope, slope, [&](double y) {
          const Pair fast = fast_argument({y, 0.0}, {x, 0.0});
          const LongFloat exact = long_argument(long_float(y), long_float(x));
          return error_of(finer ? finer_argument({y, 0.0}, {x, 0.0}, fast.high) : fast, exact);
        });
      };
      check_below(errors(false), argument_error);
      check_below(errors(true), 0.5 * finer_argument_error);
    }
  }
  // sqrt(1 - x^2) must be as exact, for the inverse sine and cosine
  const double root_error = greatest_error(-1.0, 1.0, [](double x) {
    const LongFloat square = (long_float(1.0) - long_float(x)) * (long_float(1.0) + long_float(x));
    return error_of(complement(x), square_root(square));
  });
  check_below(root_error, 0.5 * finer_argument_error);
}

void exponentials() {
  const auto error = [](const ScaledPair& found, double x) {
    return error_of(found.fraction, scaled(long_exp(long_float(x)), -found.signed_exponent()));
  };
  for (const double size : {0.002, 1.0, 700.0}) {
    check_below(greatest_error(-size, size, [&](double x) { return error(fast_exp({x, 0.0}), x); }), exp_error);
    check_below(greatest_error(-size, size, [&](double x) { return error(finer_exp({x, 0.0}), x); }),
                0.5 * finer_exp_error);
  }
}

void logarithms() {
  const auto error = [](const Pair& found, double x) { return error_of(found, long_log(long_float(x), found)); };
  for (const double size : {2.0, 1e9}) {
    check_below(greatest_error(1.0 / size, size, [&](double x) { return error(fast_log(x), x); }), log_error);
    check_below(greatest_error(1.0 / size, size, [&](double x) { return error(finer_log(x), x); }), finer_log_error);
  }
}

}  // namespace

int main() {
  return run({{"sine and cosine", sines},
              {"angle of a point", angles},
              {"exponential", exponentials},
              {"logarithm", logarithms}});
}
