#include "core/text_numbers.hpp"

#include <locale.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vkm {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_hex_digit(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// `strtod` with a decimal point in every locale.
double to_double(const char* text, char** end) {
#if defined(_WIN32)
  static const _locale_t classic = _create_locale(LC_ALL, "C");
  return _strtod_l(text, end, classic);
#else
  static const locale_t classic = newlocale(LC_ALL_MASK, "C", locale_t{});
  return strtod_l(text, end, classic);
#endif
}

/// Length of the letters that a stream takes for one number: sign, digits, one point, one exponent with its sign.
std::size_t stream_token_length(std::string_view text) {
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  bool digits = false;
  bool point = false;
  bool exponent = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (is_digit(c)) {
      digits = true;
    } else if (c == '.' && !point && !exponent) {
      point = true;
    } else if ((c == 'e' || c == 'E') && digits && !exponent) {
      exponent = true;
      if (i + 1 < text.size() && (text[i + 1] == '+' || text[i + 1] == '-')) ++i;
    } else {
      break;
    }
  }
  return i;
}

/// Length of the letters that a scan for %lf takes: as for a stream, and hexadecimal, "inf", "infinity" and "nan".
/// Zero where the scan fails.
std::size_t scan_token_length(std::string_view text) {
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  const std::string_view body = text.substr(i);
  const auto begins_with = [body](std::string_view word) {
    if (body.size() < word.size()) return false;
    for (std::size_t k = 0; k < word.size(); ++k) {
      if (lower(body[k]) != word[k]) return false;
    }
    return true;
  };
  if (begins_with("nan")) return i + 3;
  if (begins_with("inf")) {
    // "inf" and one letter more of "infinity" bind the scan to the whole word.
    if (body.size() > 3 && lower(body[3]) == 'i') return begins_with("infinity") ? i + 8 : 0;
    return i + 3;
  }
  const bool hex = begins_with("0x");
  const char exponent_letter = hex ? 'p' : 'e';
  if (hex) i += 2;
  bool digits = false;
  bool point = false;
  bool exponent = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (is_digit(c) || (hex && !exponent && is_hex_digit(c))) {
      digits = true;
    } else if (c == '.' && !point && !exponent) {
      point = true;
    } else if (lower(c) == exponent_letter && digits && !exponent) {
      exponent = true;
      if (i + 1 < text.size() && (text[i + 1] == '+' || text[i + 1] == '-')) ++i;
    } else {
      break;
    }
  }
  return digits ? i : 0;
}

}  // namespace

std::optional<double> NumberStream::next() {
  std::size_t skip = 0;
  while (skip < rest_.size() && (is_space(rest_[skip]) || (commas_ && rest_[skip] == ','))) ++skip;
  rest_.remove_prefix(skip);
  const std::string_view token = rest_.substr(0, stream_token_length(rest_));
  rest_.remove_prefix(token.size());

  const auto fail = [this]() -> std::optional<double> {
    rest_ = {};
    return std::nullopt;
  };
  const char* begin = token.data();
  const char* const end = begin + token.size();
  if (begin != end && *begin == '+') ++begin;  // from_chars knows no plus sign
  double value = 0.0;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error == std::errc::invalid_argument || stop != end) return fail();
  if (error == std::errc::result_out_of_range) {
    value = to_double(std::string(begin, end).c_str(), nullptr);  // too small is a number, too large is none
    if (std::isinf(value)) return fail();
  }
  return value;
}

std::optional<double> read_double_prefix(std::string_view text) {
  const std::string copy(text);
  char* end = nullptr;
  errno = 0;
  const double value = to_double(copy.c_str(), &end);
  if (end == copy.c_str() || errno == ERANGE) return std::nullopt;
  return value;
}

std::optional<int> read_int_prefix(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  if (text.size() > 1 && text[0] == '+' && is_digit(text[1])) text.remove_prefix(1);
  int value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc{}) return std::nullopt;
  return value;
}

int int_from_digits(std::string_view digits) {
  int value = 0;
  if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc{}) {
    throw std::out_of_range("stoi argument out of range");
  }
  return value;
}

bool scan_triple(std::string_view text, double* x) {
  for (int i = 0; i < 3; ++i) {
    if (i > 0) {
      if (text.empty() || text.front() != ',') return false;
      text.remove_prefix(1);
    }
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    const std::size_t length = scan_token_length(text);
    if (length == 0) return false;
    const std::string token(text.substr(0, length));
    char* end = nullptr;
    x[i] = to_double(token.c_str(), &end);
    if (end == token.c_str()) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view trim(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace vkm
