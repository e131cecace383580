#pragma once

/// Long sums of numbers that are added one by one, in their order, with the bits of that: without waiting for each
/// addition, and on any number of threads.
///
/// While a running sum s stays between two powers of two, all its values are multiples of one unit u, its last place.
/// Adding t then adds the multiple of u that is nearest to t, whatever s is, unless t lies just between two of them.
/// So the terms can be rounded to multiples of u side by side, and those added in any order, as such additions are
/// exact. It is known afterwards whether s could have left its powers of two on the way, as it moved by no more than
/// the sum of all magnitudes; if so, or if some t lay between, the terms are added one by one.

#include <cstddef>
#include <functional>
#include <span>

#include "core/poll.hpp"

namespace vkm {

/// Adds the terms to the sum, from the first to the last.
double add_in_order(double sum, std::span<const double> terms);

/// Takes terms; those of a later call come behind those of an earlier one.
using TermSink = std::function<void(std::span<const double> terms)>;

/// The sum, from 0.0, of all terms that produce(task, sink, heartbeat) gives to the sink for the tasks 0 .. count - 1,
/// in this order. A task may be run twice and must give the same terms. Tasks should be alike in work.
double sum_in_order(std::size_t count, int threads, const Poll& poll,
                    const std::function<void(std::size_t task, const TermSink& sink, Heartbeat& heartbeat)>& produce);

/// fill(i, first, count, terms) writes the terms of the pairs of i with first .. first + count - 1; it may write, and
/// read, up to a whole number of eights.
using PairTerms = std::function<void(std::size_t i, std::size_t first, std::size_t count, double* terms)>;

/// The sum, from 0.0, of the terms of all pairs i < j of n things, by i, then j.
double sum_over_pairs(std::size_t n, int threads, const Poll& poll, const PairTerms& fill);

}  // namespace vkm
