#include "spectral/pivot_search.hpp"

#include <algorithm>

namespace vkm::spectral {

namespace {

VKM_KERNEL std::int64_t greatest_key(const double* values, std::size_t count) {
  std::int64_t greatest = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t key = magnitude_key(values[i]);
    greatest = key > greatest ? key : greatest;
  }
  return greatest;
}

VKM_KERNEL std::int64_t greatest_of(const std::int64_t* keys, std::size_t count) {
  std::int64_t greatest = 0;
  for (std::size_t i = 0; i < count; ++i) greatest = keys[i] > greatest ? keys[i] : greatest;
  return greatest;
}

/// Marks the rows whose greatest magnitude stood in column p or q, or does not exceed what stands there now.
VKM_KERNEL void mark_touched(const double* at_p, const double* at_q, const std::int64_t* keys,
                             const std::int64_t* columns, std::size_t count, std::int64_t p, std::int64_t q,
                             std::int64_t* touched) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool held = (columns[i] == p) | (columns[i] == q);
    const bool reached = (magnitude_key(at_p[i]) >= keys[i]) | (magnitude_key(at_q[i]) >= keys[i]);
    touched[i] = static_cast<std::int64_t>(held | reached);
  }
}

}  // namespace

PivotSearch::PivotSearch(const std::vector<double>& transposed, std::size_t n)
    : transposed_(transposed), n_(n), mirrored_(n), keys_(n, 0), columns_(n), touched_(n) {
  for (std::size_t row = 0; row < n; ++row) {
    mirrored_[row] = is_mirrored(row);
    scan(row);
  }
}

bool PivotSearch::is_mirrored(std::size_t row) const {
  for (std::size_t j = row + 1; j < n_; ++j) {
    if (!(transposed_[row * n_ + j] == transposed_[j * n_ + row])) return false;
  }
  return true;
}

PivotSearch::Pivot PivotSearch::greatest() const {
  const std::int64_t greatest = greatest_of(keys_.data(), n_);
  if (greatest == 0) return {0, 1, 0.0};
  const auto row = static_cast<std::size_t>(std::find(keys_.begin(), keys_.end(), greatest) - keys_.begin());
  return {row, static_cast<std::size_t>(columns_[row]), std::bit_cast<double>(greatest)};
}

void PivotSearch::update(std::size_t p, std::size_t q) {
  const double* at_p = transposed_.data() + p * n_;  // column p, or its mirror in row p
  const double* at_q = transposed_.data() + q * n_;
  mark_touched(at_p, at_q, keys_.data(), columns_.data(), q, static_cast<std::int64_t>(p), static_cast<std::int64_t>(q),
               touched_.data());
  for (std::size_t i = 0; i < q; ++i) {
    if (touched_[i] == 0 || i == p) continue;
    // Above row p both columns have changed, between p and q the latter alone.
    const std::int64_t key_p = i < p ? magnitude_key(at_p[i]) : -1;
    const std::int64_t key_q = magnitude_key(at_q[i]);
    const bool first = key_p >= key_q;
    const std::int64_t key = first ? key_p : key_q;
    const auto column = static_cast<std::int64_t>(first ? p : q);
    const bool held = columns_[i] == static_cast<std::int64_t>(q) || columns_[i] == static_cast<std::int64_t>(p);
    if (key > keys_[i]) {
      keys_[i] = key;
      columns_[i] = column;
    } else if (held) {
      scan(i);
    } else if (key == keys_[i] && key > 0) {
      columns_[i] = std::min(columns_[i], column);
    }
  }
  mirrored_[p] = true;
  mirrored_[q] = true;
  scan(p);
  scan(q);
}

void PivotSearch::scan(std::size_t row) {
  const std::size_t first = row + 1;
  const std::size_t count = n_ - first;
  std::size_t place = count;
  std::int64_t greatest = 0;
  if (mirrored_[row]) {
    const double* values = transposed_.data() + row * n_ + first;
    greatest = greatest_key(values, count);
    if (greatest > 0) {
      for (place = 0; magnitude_key(values[place]) != greatest;) ++place;
    }
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      const std::int64_t key = magnitude_key(transposed_[(first + i) * n_ + row]);
      if (key > greatest) {
        greatest = key;
        place = i;
      }
    }
  }
  keys_[row] = greatest;
  columns_[row] = static_cast<std::int64_t>(first + place);
}

}  // namespace vkm::spectral
