#include "far/cell_tree.hpp"

#include <algorithm>
#include <limits>

namespace vkm::far {

namespace {

struct Item {
  Vec3 at;
  std::uint32_t index;
};

struct Box {
  Vec3 low, high;
};

Box box_of(std::span<const Item> items) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Box box{{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
  for (const Item& item : items) {
    for (std::size_t a = 0; a < 3; ++a) {
      box.low[a] = std::min(box.low[a], item.at[a]);
      box.high[a] = std::max(box.high[a], item.at[a]);
    }
  }
  return box;
}

/// Where the items are cut after they have been put in order; at neither end.
std::size_t split(std::span<Item> items, const Box& box) {
  const Vec3 sides = box.high - box.low;
  const auto axis = static_cast<std::size_t>(std::max_element(sides.begin(), sides.end()) - sides.begin());
  const double middle = 0.5 * (box.low[axis] + box.high[axis]);
  const auto cut = std::stable_partition(items.begin(), items.end(),
                                         [=](const Item& item) { return item.at[axis] < middle; });
  const auto low = static_cast<std::size_t>(cut - items.begin());
  const std::size_t least = items.size() / 16;
  if (low > least && items.size() - low > least) return low;
  const std::size_t half = items.size() / 2;
  std::sort(items.begin(), items.end(), [=](const Item& a, const Item& b) {
    return a.at[axis] < b.at[axis] || (a.at[axis] == b.at[axis] && a.index < b.index);
  });
  return half;
}

void add_cell(CellTree& tree, std::span<Item> all, std::size_t begin, std::size_t end, std::size_t leaf) {
  const std::span<Item> items = all.subspan(begin, end - begin);
  const Box box = box_of(items);
  const Vec3 centre = 0.5 * (box.low + box.high);
  double radius2 = 0.0;
  for (const Item& item : items) radius2 = std::max(radius2, norm2(item.at - centre));
  const std::size_t cell = tree.cells.size();
  tree.cells.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), 0, 0, centre,
                        std::sqrt(radius2) * (1.0 + 1e-15)});
  if (items.size() > leaf) {
    const std::size_t middle = begin + split(items, box);
    add_cell(tree, all, begin, middle, leaf);
    tree.cells[cell].right = static_cast<std::uint32_t>(tree.cells.size());
    add_cell(tree, all, middle, end, leaf);
  }
  tree.cells[cell].after = static_cast<std::uint32_t>(tree.cells.size());
}

}  // namespace

CellTree cell_tree(std::span<const Vec3> points, std::size_t leaf) {
  CellTree tree;
  if (points.empty()) return tree;
  std::vector<Item> items(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) items[i] = {points[i], static_cast<std::uint32_t>(i)};
  add_cell(tree, items, 0, items.size(), leaf);
  for (const Item& item : items) tree.order.push_back(item.index);
  return tree;
}

std::vector<std::uint32_t> cut(const CellTree& tree, std::size_t size) {
  std::vector<std::uint32_t> found;
  for (std::uint32_t c = 0; c < tree.cells.size();) {
    const Cell& cell = tree.cells[c];
    if (cell.size() <= size || cell.is_leaf()) {
      found.push_back(c);
      c = cell.after;
    } else {
      ++c;
    }
  }
  return found;
}

}  // namespace vkm::far
