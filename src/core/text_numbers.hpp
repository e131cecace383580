#pragma once

/// Numbers out of text, whatever the process's locale is.
///
/// The catalogue's formats are defined by the readers of the standard library, each with its own idea of where a
/// number ends and what counts as one. The forms that the formats need are here, with those readers' answers:
///
///   form          accepts                                      overflow        tiny numbers
///   stream `>>`   decimal; the longest run of number letters   fails           the nearest double
///                 must be a number as a whole ("1e" fails)
///   `stod`        decimal, hexadecimal, inf, nan; a prefix     fails           fail when inexact
///   `stoi`        decimal; a prefix                            fails           -
///   `scanf` %lf   as stod                                      infinity        the nearest double

#include <optional>
#include <string_view>

namespace vkm {

/// Blank, tab, line feed, vertical tab, form feed or carriage return.
inline constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Reads doubles one after the other, as `stream >> x` does in the classic locale.
class NumberStream {
 public:
  enum class Separators { white_space, white_space_and_commas };

  explicit NumberStream(std::string_view text, Separators separators = Separators::white_space)
      : rest_(text), commas_(separators == Separators::white_space_and_commas) {}

  /// The next number; nothing if the text is at its end or goes on with something else. After a failure the stream
  /// stays failed.
  std::optional<double> next();

 private:
  std::string_view rest_;
  bool commas_;
};

/// The number that the text begins with, by the rules of `stod`; nothing where `stod` throws.
std::optional<double> read_double_prefix(std::string_view text);

/// The integer that the text begins with, by the rules of `stoi`; nothing where `stoi` throws.
std::optional<int> read_int_prefix(std::string_view text);

/// The value of a run of decimal digits. Throws std::out_of_range("stoi argument out of range") if it is no int.
int int_from_digits(std::string_view digits);

/// Three numbers by the scan format "%lf,%lf,%lf" into x[0 .. 2]; false unless all three are there. White space may
/// stand before a number, not before a comma.
bool scan_triple(std::string_view text, double* x);

/// Without the blanks, tabs, carriage returns and line feeds at both ends.
std::string_view trim(std::string_view text);

}  // namespace vkm
