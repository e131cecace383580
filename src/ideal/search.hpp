#pragma once

/// The search for the tightest shape of a knot or link: many starts, contracted coarsely, hops between coarse shapes,
/// and the finer levels for the best of them. The coarse search decides the result; the levels take off the
/// discretisation, which goes with the square of the edge length.
///
/// Every task draws from its own stream of random numbers and phases end together, so that the result depends on the
/// starts, the options and the seed alone, and not on the number of threads.

#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "ideal/settle.hpp"

namespace vkm::ideal {

struct SearchOptions {
  double edge = 0.15;  ///< of the finest level, in tube radii
  double coarse_edge = 0.9;
  std::uint64_t seed = 1;
  int threads = 1;
  int starts = 16;           ///< contracted, each start polygon in its turn
  int start_programs = 150;  ///< at most, of each: one that slides on slowly is left to the hops
  double small_noise = 0.1;  ///< displacement of every other start, in tube radii
  double large_noise = 0.4;
  int first_chains = 8;  ///< of so many distinct best starts
  int first_hops = 8;
  int second_chains = 2;
  int second_hops = 40;
  bool small_hops = false;
  int refined = 4;       ///< to edges of 0.4
  int finished = 2;      ///< beyond
  bool adaptive = true;  ///< in two rounds, and no more where several starts lead to about one ropelength
};

/// A step of the search: the value of a start, of a chain of hops, or of a level.
struct SearchStep {
  std::string phase;  ///< "start", "hop", "level"
  int task;
  double edge;
  int hops;           ///< tried in the chain so far
  double ropelength;  ///< length / tube radius, as measured at this edge length
};

struct SearchResult {
  Settled best;
  double edge = 0.0;  ///< of the level at which it stands
  std::vector<SearchStep> history;
  bool stopped = false;
};

/// Told of each step; called by the calling thread, between tasks.
using SearchWatch = std::function<void(const SearchStep& step, double best)>;

/// The starts are ropes of any size and spacing. Where the poll throws, the exception goes to `stop` if there is a
/// shape to return already and `stop` is given; else it is thrown on.
SearchResult search(const std::vector<Rope>& starts, const SearchOptions& options, const Poll& poll,
                    const SearchWatch& watch = {}, std::exception_ptr* stop = nullptr);

}  // namespace vkm::ideal
