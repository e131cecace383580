#pragma once

/// What a test of the library needs: cases that run one after the other, and checks that go on after a failure.
///
///   int main() {
///     return run({{"what holds", [] { check_equal(1 + 1, 2); }}});
///   }
///
/// A failed check prints its line and both values; the program's exit code is 1 if any failed. Every test_<concept>.cpp
/// of this folder is a program and a test of CTest; none needs Python.

#include <bit>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <initializer_list>
#include <optional>
#include <source_location>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace vkm::test {

using Place = std::source_location;

inline int failures = 0;

inline void fail(const std::string& text, const Place& place) {
  if (++failures <= 20)
    std::printf("%s:%u: %s\n", place.file_name(), static_cast<unsigned>(place.line()), text.c_str());
}

/// A value as a failed check shows it; doubles as hexadecimals, which tell any two apart.
template <class Value>
std::string shown(const Value& value) {
  std::ostringstream out;
  if constexpr (std::is_floating_point_v<Value>) {
    out << value << " (" << std::hexfloat << value << ")";
  } else {
    out << value;
  }
  return out.str();
}

template <class Value>
std::string shown(const std::optional<Value>& value) {
  return value ? shown(*value) : "nothing";
}

/// Equality; of doubles that of their bits, but any NaN is as good as any other.
template <class Value>
bool same(const Value& a, const Value& b) {
  if constexpr (std::is_same_v<Value, double>) {
    return (a != a && b != b) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
  } else {
    return a == b;
  }
}

template <class Value>
bool same(const std::optional<Value>& a, const std::optional<Value>& b) {
  return a && b ? same(*a, *b) : a.has_value() == b.has_value();
}

inline void check(bool holds, std::string_view claim, const Place& place = Place::current()) {
  if (!holds) fail(std::string(claim), place);
}

/// `about` tells which of many like checks failed.
template <class Value>
void check_equal(const Value& actual, const std::type_identity_t<Value>& expected, std::string_view about = {},
                 const Place& place = Place::current()) {
  if (same(actual, expected)) return;
  fail((about.empty() ? "" : std::string(about) + ": ") + shown(actual) + " is not " + shown(expected), place);
}

/// The call throws just this kind of exception, or one derived from it.
template <class Exception>
void check_throws(const std::function<void()>& call, const Place& place = Place::current()) {
  try {
    call();
  } catch (const Exception&) {
    return;
  } catch (const std::exception& other) {
    fail(std::string("threw something else: ") + other.what(), place);
    return;
  }
  fail("did not throw", place);
}

struct Case {
  const char* name;
  std::function<void()> body;
};

/// The exit code of the program.
inline int run(std::initializer_list<Case> cases) {
  for (const Case& item : cases) {
    const int before = failures;
    try {
      item.body();
    } catch (const std::exception& error) {
      fail(std::string("threw: ") + error.what(), Place::current());
    }
    if (failures != before) std::printf("FAILED  %s: %d checks\n", item.name, failures - before);
  }
  return failures == 0 ? 0 : 1;
}

}  // namespace vkm::test
