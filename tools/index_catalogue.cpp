/// Writes the table behind vkm::embedded_block_indices: the place of every block of the embedded texts.
///
///     index_catalogue LIST OUTPUT
///
/// LIST has two lines a text, its key and its path. A tool of the build: it shares the walk of the search.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>

#include "knot/block_walk.hpp"

namespace {

struct Place {
  std::size_t begin;
  std::size_t size;
};

/// Every id of the heads of a tag; where one head names several, each leads to its element.
std::map<std::string, Place> places(const std::string& text, const char* tag) {
  constexpr std::string_view opening = "Id=\"";
  std::map<std::string, Place> found;
  vkm::walk_heads(text, tag, [&](std::size_t begin, std::string_view head) {
    for (std::size_t at = head.find(opening); at != head.npos; at = head.find(opening, at + 1)) {
      const std::size_t id = at + opening.size();
      const std::size_t end = head.find('"', id);
      if (end == head.npos) break;
      const std::size_t size = vkm::element_of_head(text, tag, begin, head).size();
      found.try_emplace(std::string(head.substr(id, end - id)), Place{begin, size});
    }
    return false;
  });
  return found;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  std::ifstream list(arguments[1]);
  std::string tables;
  std::string indices;
  std::string key;
  std::string path;
  int number = 0;
  while (std::getline(list, key) && std::getline(list, path)) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
      std::cerr << "cannot read " << path << '\n';
      return 1;
    }
    for (const char* tag : {"AB", "HT", "TL"}) {
      const auto found = places(text, tag);
      if (found.empty()) continue;
      const std::string name = "places_" + std::to_string(number++);
      tables += "constexpr BlockPlace " + name + "[] = {\n";
      for (const auto& [id, place] : found) {
        tables += "    {R\"~(" + id + ")~\", " + std::to_string(place.begin) + "u, " + std::to_string(place.size) + "u},\n";
      }
      tables += "};\n";
      indices += "    {R\"~(" + key + ")~\", \"" + tag + "\", " + name + "},\n";
    }
  }
  std::ofstream output(arguments[2]);
  output << "// Written by tools/index_catalogue.cpp; edits are lost.\n#include \"knot/block_index.hpp\"\n\n"
         << "namespace vkm {\n\nnamespace {\n\n"
         << tables << "constexpr BlockIndex indices[] = {\n"
         << indices << "    {},\n};\n\n}  // namespace\n\n"
         << "std::span<const BlockIndex> embedded_block_indices() { return {indices, std::size(indices) - 1}; }\n\n"
         << "}  // namespace vkm\n";
  return output.good() ? 0 : 1;
}
