// Numbers out of text: the standard library's own readers are the oracle, on random runs of number letters.

#include <array>
#include <cmath>
#include <cstdio>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#include "check.hpp"
#include "core/text_numbers.hpp"

namespace {

using namespace vkm;
using namespace vkm::test;

constexpr int texts = 60'000;

/// A text that is nearly a number more often than not: fragments of numbers put together at random.
std::string random_text(std::mt19937_64& random) {
  static const std::array fragments = {"0",   "1",    "9",   "12",  "007", "2147483647", "2147483648", ".",  "+",  "-",
                                       "e",   "E",    "e+",  "e-3", "308", "309",        "-324",       "0x", "1p", "a",
                                       "inf", "infi", "nan", "N",   " ",   "\t",         "\n",         ",",  "x",  "%"};
  std::string text;
  for (auto count = 1 + random() % 7; count > 0; --count) text += fragments[random() % fragments.size()];
  return text;
}

template <class Reader>
auto or_nothing(const Reader& read, const std::string& text) -> std::optional<decltype(read(text))> {
  try {
    return read(text);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

void streams() {
  std::mt19937_64 random(1);
  for (int i = 0; i < texts; ++i) {
    const std::string text = random_text(random);
    std::istringstream stream(text);
    NumberStream ours(text);
    for (int k = 0; k < 4; ++k) {
      double value = 0.0;
      const auto expected = stream >> value ? std::optional(value) : std::nullopt;
      check_equal(ours.next(), expected, text);
    }
  }
}

void prefixes() {
  std::mt19937_64 random(2);
  for (int i = 0; i < texts; ++i) {
    const std::string text = random_text(random);
    check_equal(read_double_prefix(text), or_nothing([](const std::string& t) { return std::stod(t); }, text), text);
    check_equal(read_int_prefix(text), or_nothing([](const std::string& t) { return std::stoi(t); }, text), text);
  }
}

void triples() {
  std::mt19937_64 random(3);
  for (int i = 0; i < texts; ++i) {
    const std::string text = random_text(random) + "," + random_text(random) + "," + random_text(random);
    if (text.find("0x.") != std::string::npos) continue;  // zero for one C library, no number in the standard of C
    double x[3] = {}, y[3] = {};
    const bool scanned = std::sscanf(text.c_str(), "%lf,%lf,%lf", &y[0], &y[1], &y[2]) == 3;
    check_equal(scan_triple(text, x), scanned, text);
    for (int k = 0; scanned && k < 3; ++k) check_equal(x[k], y[k], text);
  }
}

void every_double_comes_back() {
  std::mt19937_64 random(4);
  char text[40];
  for (int i = 0; i < texts; ++i) {
    const double value = std::bit_cast<double>(random());
    if (!std::isnormal(value)) continue;  // stod refuses subnormal numbers
    std::snprintf(text, sizeof text, "%.17g", value);
    check_equal(read_double_prefix(text), value, text);
    check_equal(NumberStream(text).next(), value, text);
  }
}

void commas_and_ends() {
  NumberStream commas("1,2 ,\t3;4", NumberStream::Separators::white_space_and_commas);
  for (const double value : {1.0, 2.0, 3.0}) check_equal(commas.next(), value);
  for (int i = 0; i < 2; ++i) check_equal(commas.next(), std::nullopt, "after a failure the stream stays failed");

  check_equal(int_from_digits("2147483647"), 2147483647);
  check_throws<std::out_of_range>([] { int_from_digits("2147483648"); });
  check_equal(trim(" \t\r\n a b \n"), "a b");
  check_equal(trim(" \n"), "");
}

}  // namespace

int main() {
  return run({{"streams read as >> does", streams},
              {"prefixes read as stod and stoi do", prefixes},
              {"triples read as a scan does", triples},
              {"every double comes back", every_double_comes_back},
              {"commas and ends", commas_and_ends}});
}
