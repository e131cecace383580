// Repair of legacy `.fseries` files, which begin with a row of three columns.

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/output_file.hpp"
#include "core/text_file.hpp"
#include "core/text_numbers.hpp"
#include "knot/workbench.hpp"

namespace vkm::workbench {

namespace {

constexpr std::string_view zeros_row = "    0.000000    0.000000    0.000000    0.000000    0.000000    0.000000";

/// Without their line ends.
std::vector<std::string_view> lines_of(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

/// 3 or 6 for a row of that many numbers, 0 for any other line. Blanks may stand before a comment here.
int columns_of(std::string_view line) {
  line = trim(line);
  if (line.empty() || line.front() == '%') return 0;
  NumberStream numbers(line);
  int count = 0;
  while (numbers.next() && count < 7) ++count;
  return count == 3 || count == 6 ? count : 0;
}

void write_lines(const std::string& path, const std::vector<std::string_view>& lines, const Poll& poll) {
  OutputFile file(path, poll);
  if (!file.is_open()) throw std::runtime_error("cannot write file: " + path);
  for (const std::string_view line : lines) {
    file.write(line);
    file.write("\n");
  }
  if (!file.commit()) throw std::runtime_error("cannot write file: " + path + ": " + file.failure());
}

}  // namespace

CanonicalizeResult canonicalize_fseries_file_inplace(const std::string& path, const Poll& poll) {
  const auto text = read_file(path, poll);
  if (!text) throw std::runtime_error("cannot open file: " + path);
  std::vector<std::string_view> lines = lines_of(*text);
  CanonicalizeResult result;
  result.path = path;
  std::size_t first_row = 0;
  int first_columns = 0;
  int second_columns = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const int columns = columns_of(lines[i]);
    if (columns == 0) continue;
    ++result.found_numeric_rows;
    if (result.found_numeric_rows == 1) {
      first_row = i;
      first_columns = columns;
    } else if (result.found_numeric_rows == 2) {
      second_columns = columns;
    }
  }
  if (result.found_numeric_rows == 0) {
    result.reason = "no numeric rows found";
  } else if (first_columns == 6) {
    result.reason = "already has 6-column j=0 row";
  } else if (result.found_numeric_rows == 1) {
    result.reason = "no second numeric row";
  } else if (second_columns == 3) {
    result.reason = "file appears to be 3-column legacy throughout; not auto-converted";
  } else {
    lines[first_row] = zeros_row;
    write_lines(path, lines, poll);
    result.changed = true;
    result.reason = "upgraded leading 3-col zeros row to 6-col j=0 row";
  }
  return result;
}

}  // namespace vkm::workbench
