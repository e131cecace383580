#include "knot/ideal_database.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <utility>

#include "core/text_file.hpp"
#include "core/text_numbers.hpp"
#include "knot/block_walk.hpp"

namespace vkm {

namespace {

constexpr auto npos = std::string_view::npos;

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces) text += piece;
  return text;
}

/// First match of  NAME="([^"]+)"  or, with an empty value allowed,  NAME="([^"]*)". `opening` is NAME with the
/// quote. The name may be the tail of a longer one: `L="` is found in `XL="` too.
std::optional<std::string_view> match_attribute(std::string_view head, std::string_view opening, bool may_be_empty) {
  for (std::size_t at = head.find(opening); at != npos; at = head.find(opening, at + 1)) {
    const std::size_t begin = at + opening.size();
    const std::size_t end = head.find('"', begin);
    if (end == npos) return std::nullopt;
    if (end > begin || may_be_empty) return head.substr(begin, end - begin);
  }
  return std::nullopt;
}

double read_length(std::string_view head, std::string_view opening) {
  const auto text = match_attribute(head, opening, false);
  return text ? read_double_prefix(trim(*text)).value_or(0.0) : 0.0;
}

/// Every match of  <Component\b([^>]*)>([\s\S]*?)</Component>
std::vector<IdealABComponent> parse_component_elements(std::string_view body, std::size_t& harmonics,
                                                       Heartbeat& heartbeat) {
  constexpr std::string_view opening = "<Component";
  constexpr std::string_view closing = "</Component>";
  const auto is_word = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
  };
  std::vector<IdealABComponent> components;
  std::size_t at = body.find(opening);
  while (at != npos) {
    heartbeat.tick();
    const std::size_t after = at + opening.size();
    if (after < body.size() && is_word(body[after])) {
      at = body.find(opening, after);
      continue;
    }
    const std::size_t tag_end = body.find('>', after);
    if (tag_end == npos) break;
    const std::size_t end = body.find(closing, tag_end + 1);
    if (end == npos) break;
    components.push_back(parse_ideal_component(body.substr(at, tag_end + 1 - at),
                                               body.substr(tag_end + 1, end - tag_end - 1), harmonics));
    at = body.find(opening, end + closing.size());
  }
  return components;
}

/// Every "<STRING" begins a component, which ends at the next "</STRING>" or "<STRING", whichever comes first.
std::vector<IdealABComponent> parse_string_elements(std::string_view body, std::size_t& harmonics,
                                                    Heartbeat& heartbeat) {
  constexpr std::string_view opening = "<STRING";
  std::vector<IdealABComponent> components;
  for (std::size_t at = body.find(opening); at != npos;) {
    heartbeat.tick();
    const std::size_t tag_end = body.find('>', at);
    if (tag_end == npos) break;
    const std::size_t next = body.find(opening, tag_end + 1);
    std::string_view text = body.substr(tag_end + 1, next == npos ? npos : next - tag_end - 1);
    text = text.substr(0, text.find("</STRING>"));
    components.push_back(parse_ideal_component(body.substr(at, tag_end + 1 - at), text, harmonics));
    at = next;
  }
  return components;
}

IdealABBlock parse_block(std::string_view head, std::string_view body, std::string_view tag, std::size_t& harmonics,
                         Heartbeat& heartbeat) {
  IdealABBlock block;
  block.source_tag = tag;
  block.id = match_attribute(head, "Id=\"", false).value_or("");
  block.conway = match_attribute(head, "Conway=\"", true).value_or("");
  block.L = read_length(head, "L=\"");
  block.D = read_length(head, "D=\"");
  if (const auto text = match_attribute(head, "n=\"", false)) {
    block.n = std::max(1, read_int_prefix(trim(*text)).value_or(1));
  }
  block.components = parse_component_elements(body, harmonics, heartbeat);
  if (block.components.empty()) block.components = parse_string_elements(body, harmonics, heartbeat);
  if (block.components.empty()) {
    block.components.push_back(parse_ideal_component("<Component I=\"1\">", body, harmonics));
  }
  block.fourier = block.components.front().fourier;
  return block;
}

void parse_blocks(std::string_view content, std::string_view tag, std::vector<IdealABBlock>& blocks,
                  std::size_t& harmonics, Heartbeat& heartbeat) {
  const std::string opening = joined({"<", tag});
  const std::string closing = joined({"</", tag, ">"});
  for (std::size_t at = 0; (at = content.find(opening, at)) != npos;) {
    heartbeat.tick();
    const std::size_t head_end = content.find('>', at);
    if (head_end == npos) return;
    const std::size_t body_end = content.find(closing, head_end);
    if (body_end == npos) return;
    blocks.push_back(parse_block(content.substr(at, head_end + 1 - at),
                                 content.substr(head_end + 1, body_end - head_end - 1), tag, harmonics, heartbeat));
    at = body_end + closing.size();
  }
}

std::string fixed_text(double value) {
  std::array<char, 400> buffer{};  // the greatest double has 309 digits before the point
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
  return {buffer.data(), result.ptr};
}

}  // namespace

std::vector<IdealABBlock> parse_ideal_halvard_from_string(std::string_view content, const Poll& poll) {
  Heartbeat heartbeat(poll);
  std::vector<IdealABBlock> blocks;
  std::size_t harmonics = 0;
  for (const std::string_view tag : {"AB", "HT", "TL"}) parse_blocks(content, tag, blocks, harmonics, heartbeat);
  return blocks;
}

std::vector<IdealABBlock> parse_ideal_txt_from_string(std::string_view content, const Poll& poll) {
  std::vector<IdealABBlock> blocks = parse_ideal_halvard_from_string(content, poll);
  std::erase_if(blocks, [](const IdealABBlock& block) { return block.source_tag != "AB"; });
  return blocks;
}

std::vector<IdealABBlock> parse_ideal_txt_multi(const std::string& path, const Poll& poll) {
  const auto text = read_file(path, poll);
  if (!text) throw std::runtime_error("parse_ideal_txt_multi: cannot open file: " + path);
  return parse_ideal_txt_from_string(*text, poll);
}

std::string_view find_block_text(std::string_view content, std::string_view id, std::string_view tag) {
  const std::string needle = joined({"Id=\"", id, "\""});
  std::string_view block;
  walk_heads(content, tag, [&](std::size_t begin, std::string_view head) {
    if (head.find(needle) == npos) return false;
    block = element_of_head(content, tag, begin, head);
    return true;
  });
  return block;
}

IdealABBlock parse_only_ideal_ab(std::string_view block, const std::string& ab_id, const Poll& poll) {
  std::vector<IdealABBlock> blocks = parse_ideal_txt_from_string(block, poll);
  if (blocks.empty()) throw std::runtime_error("parse_ideal_ab_by_id_from_string: AB Id not found: " + ab_id);
  return std::move(blocks.front());
}

IdealABBlock parse_ideal_ab_by_id_from_string(std::string_view content, const std::string& ab_id, const Poll& poll) {
  return parse_only_ideal_ab(find_block_text(content, ab_id, "AB"), ab_id, poll);
}

int index_of_ideal_id(std::span<const IdealABBlock> blocks, std::string_view id) {
  const auto found = std::find_if(blocks.begin(), blocks.end(), [id](const auto& block) { return block.id == id; });
  return found == blocks.end() ? -1 : static_cast<int>(found - blocks.begin());
}

std::string format_ideal_ab_header(const IdealABBlock& ab) {
  return "AB Id=\"" + ab.id + "\" Conway=\"" + ab.conway + "\" L=\"" + fixed_text(ab.L) + "\" D=\"" + fixed_text(ab.D) +
         "\" n=\"" + std::to_string(ab.n) + "\"";
}

std::vector<std::vector<Vec3>> evaluate_ideal_ab_components(const IdealABBlock& ab, std::span<const double> s,
                                                            const Poll& poll) {
  std::vector<std::vector<Vec3>> curves;
  curves.reserve(ab.components.size());
  for (const auto& component : ab.components) curves.push_back(evaluate_ideal_component(component, s, poll));
  return curves;
}

}  // namespace vkm
