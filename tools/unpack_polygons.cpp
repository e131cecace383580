/// Writes the texts of packed polygons: a point a line, three numbers in exponent notation, as "%.6e" prints them.
///
///     unpack_polygons LIST
///
/// LIST has two lines a polygon, the path of the packed file and that of the text. A packed file holds little-endian
/// whole numbers of 1e-6: the first point and the first edge in four bytes each, then the changes from edge to edge in
/// two (python/vkmcore/ideal/packed_polygon.py writes them). All texts together are seventy megabytes, the packed files
/// nine.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

/// n * 1e-6 with six decimals of its mantissa, from the whole number: exact for |n| < 10^7.
std::string exponent_notation(std::int64_t n) {
  const std::string digits = std::to_string(std::llabs(n));
  if (digits.size() > 7) throw std::runtime_error("a coordinate of 10 or more");
  const int exponent = n == 0 ? 0 : 7 - static_cast<int>(digits.size());
  std::string text = n < 0 ? "-" : "";
  text += digits[0];
  text += '.';
  text += digits.substr(1);
  text.append(7 - digits.size(), '0');
  text += exponent > 0 ? "e-0" : "e+0";
  text += static_cast<char>('0' + exponent);
  return text;
}

std::int64_t whole(const std::string& data, std::size_t at, std::size_t bytes) {
  std::uint32_t value = 0;
  for (std::size_t k = 0; k < bytes; ++k) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(data[at + k])) << (8 * k);
  }
  return bytes == 2 ? std::int64_t{static_cast<std::int16_t>(value)} : std::int64_t{static_cast<std::int32_t>(value)};
}

std::string text_of(const std::string& data) {
  constexpr std::size_t head = 24, row = 6;
  if (data.size() < head || (data.size() - head) % row != 0) throw std::runtime_error("not a packed polygon");
  std::array<std::int64_t, 3> at{}, edge{};
  std::string text;
  const std::size_t points = 2 + (data.size() - head) / row;
  for (std::size_t point = 0; point < points; ++point) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (point == 0) {
        at[axis] = whole(data, 4 * axis, 4);
      } else {
        edge[axis] += point == 1 ? whole(data, 12 + 4 * axis, 4) : whole(data, head + row * (point - 2) + 2 * axis, 2);
        at[axis] += edge[axis];
      }
      text += exponent_notation(at[axis]);
      text += axis < 2 ? ' ' : '\n';
    }
  }
  return text;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  std::ifstream list(arguments[1]);
  std::string from;
  std::string to;
  while (std::getline(list, from) && std::getline(list, to)) {
    try {
      std::ifstream file(from, std::ios::binary);
      const std::string data{std::istreambuf_iterator<char>(file), {}};
      if (!file) throw std::runtime_error("cannot be read");
      std::filesystem::create_directories(std::filesystem::path(to).parent_path());
      std::ofstream output(to, std::ios::binary);
      output << text_of(data);
      output.close();
      if (!output) throw std::runtime_error("cannot write " + to);
    } catch (const std::exception& error) {
      std::cerr << from << ": " << error.what() << '\n';
      return 1;
    }
  }
  return 0;
}
