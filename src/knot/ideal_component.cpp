#include "knot/ideal_component.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "core/memory.hpp"
#include "core/text_numbers.hpp"

namespace vkm {

namespace {

/// Walks a text by the pieces of a regular expression whose alternatives exclude each other, so that no step back is
/// ever needed. Unlike the expression engines at hand it takes texts of any length.
class Matcher {
 public:
  explicit Matcher(std::string_view text) : rest_(text) {}

  bool literal(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  /// \s* : the number of letters skipped.
  std::size_t spaces() { return run(is_space).size(); }

  /// [0-9]*
  std::string_view digits() {
    return run([](char c) { return c >= '0' && c <= '9'; });
  }

  /// [^"]*
  std::string_view up_to_quote() { return take(std::min(rest_.find('"'), rest_.size())); }

  std::string_view rest() const { return rest_; }

 private:
  template <class Predicate>
  std::string_view run(Predicate predicate) {
    return take(static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), predicate) - rest_.begin()));
  }

  std::string_view take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest_;
};

/// The digits of the first match of  I="\s*([0-9]+)"
std::string_view match_component_number(std::string_view tag) {
  for (std::size_t at = tag.find("I=\""); at != std::string_view::npos; at = tag.find("I=\"", at + 1)) {
    Matcher matcher(tag.substr(at + 3));
    matcher.spaces();
    const std::string_view digits = matcher.digits();
    if (!digits.empty() && matcher.literal("\"")) return digits;
  }
  return {};
}

struct RowMatch {
  std::string_view digits;
  std::string_view a;
  std::string_view b;
  std::string_view rest;  // the text behind the match
};

/// The first match of  <Coeff\s+I="\s*([0-9]+)"\s+A="([^"]+)"\s+B="([^"]+)"\s*/?>
std::optional<RowMatch> match_row(std::string_view text) {
  for (std::size_t at = text.find("<Coeff"); at != std::string_view::npos; at = text.find("<Coeff", at + 1)) {
    Matcher matcher(text.substr(at + 6));
    RowMatch row;
    if (matcher.spaces() == 0 || !matcher.literal("I=\"")) continue;
    matcher.spaces();
    row.digits = matcher.digits();
    if (row.digits.empty() || !matcher.literal("\"")) continue;
    if (matcher.spaces() == 0 || !matcher.literal("A=\"")) continue;
    row.a = matcher.up_to_quote();
    if (row.a.empty() || !matcher.literal("\"")) continue;
    if (matcher.spaces() == 0 || !matcher.literal("B=\"")) continue;
    row.b = matcher.up_to_quote();
    if (row.b.empty() || !matcher.literal("\"")) continue;
    matcher.spaces();
    matcher.literal("/");
    if (!matcher.literal(">")) continue;
    row.rest = matcher.rest();
    return row;
  }
  return std::nullopt;
}

std::optional<Vec3> read_triple(std::string_view text) {
  NumberStream numbers(text, NumberStream::Separators::white_space_and_commas);
  Vec3 triple{};
  for (double& coordinate : triple) {
    const auto number = numbers.next();
    if (!number) return std::nullopt;
    coordinate = *number;
  }
  return triple;
}

}  // namespace

IdealABComponent parse_ideal_component(std::string_view opening_tag, std::string_view text, std::size_t& harmonics) {
  IdealABComponent component;
  if (const auto digits = match_component_number(opening_tag); !digits.empty()) {
    component.component_index = int_from_digits(digits);
  }

  std::map<int, std::pair<Vec3, Vec3>> rows;
  while (const auto match = match_row(text)) {
    text = match->rest;
    const int harmonic = int_from_digits(match->digits);  // before the triples: an absurd one is an error in any row
    const auto a = read_triple(match->a);
    const auto b = read_triple(match->b);
    if (a && b) rows[harmonic] = {*a, *b};
  }

  if (const auto offset = rows.find(0); offset != rows.end()) {
    component.A0 = offset->second.first;
    component.B0 = offset->second.second;
    rows.erase(offset);
  }
  FourierBlock& fourier = component.fourier;
  fourier.header = "% ideal component";
  const std::size_t n = rows.empty() ? 0 : static_cast<std::size_t>(rows.rbegin()->first);
  harmonics += n;
  require_memory(harmonics, 2 * 6 * sizeof(double));  // a block holds its first component's series twice
  for (auto* vector : {&fourier.a_x, &fourier.b_x, &fourier.a_y, &fourier.b_y, &fourier.a_z, &fourier.b_z}) {
    vector->assign(n, 0.0);
  }
  for (const auto& [harmonic, row] : rows) {
    const auto i = static_cast<std::size_t>(harmonic - 1);
    fourier.a_x[i] = row.first[0];
    fourier.a_y[i] = row.first[1];
    fourier.a_z[i] = row.first[2];
    fourier.b_x[i] = row.second[0];
    fourier.b_y[i] = row.second[1];
    fourier.b_z[i] = row.second[2];
  }
  return component;
}

std::vector<Vec3> evaluate_ideal_component(const IdealABComponent& component, std::span<const double> s,
                                           const Poll& poll) {
  std::vector<Vec3> points = evaluate_fourier_block(component.fourier, s, poll);
  const Vec3 offset = component.A0 + component.B0;
  for (Vec3& point : points) point += offset;
  return points;
}

}  // namespace vkm
