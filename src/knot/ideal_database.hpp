#pragma once

/// The ideal database: a text of knots and links, one AB, HT or TL element each, whose components are coefficient
/// rows. It looks like XML but is cut by substring search; nothing outside the known tags is looked at, and the order
/// of the attributes in a row matters.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "knot/ideal_component.hpp"

namespace vkm {

struct IdealABBlock {
  std::string id;                            // as "3:1:1", "K11a1", "L2a1"
  std::string conway;                        // Conway notation, may be empty
  double L = 0.0;                            // length in units of the curve; over D the ropelength
  double D = 0.0;                            // tube diameter
  int n = 1;                                 // number of components that the file states
  std::string source_tag;                    // the element's tag: "AB", "HT" or "TL"
  std::vector<IdealABComponent> components;  // in file order
  FourierBlock fourier;                      // a copy of the first component's
};

/// All blocks: first the AB, then the HT, then the TL elements.
std::vector<IdealABBlock> parse_ideal_halvard_from_string(std::string_view content, const Poll& poll = {});

/// The AB blocks.
std::vector<IdealABBlock> parse_ideal_txt_from_string(std::string_view content, const Poll& poll = {});

/// The AB blocks of a file; std::runtime_error if it cannot be opened.
std::vector<IdealABBlock> parse_ideal_txt_multi(const std::string& path, const Poll& poll = {});

/// One AB block, without parsing the others; std::runtime_error if there is none with this id.
IdealABBlock parse_ideal_ab_by_id_from_string(std::string_view content, const std::string& ab_id,
                                              const Poll& poll = {});

/// The AB block of a text that find_block_text gave for this id; std::runtime_error if that is empty.
IdealABBlock parse_only_ideal_ab(std::string_view block, const std::string& ab_id, const Poll& poll = {});

/// Text of the element `<tag ...>...</tag>` whose head holds Id="id", both tags included; empty if there is none.
std::string_view find_block_text(std::string_view content, std::string_view id, std::string_view tag);

/// Index of the first block with this id, or -1.
int index_of_ideal_id(std::span<const IdealABBlock> blocks, std::string_view id);

/// The head of a block as text: AB Id="..." Conway="..." L="..." D="..." n="...", lengths with six decimals.
std::string format_ideal_ab_header(const IdealABBlock& ab);

/// The points of every component, in order.
std::vector<std::vector<Vec3>> evaluate_ideal_ab_components(const IdealABBlock& ab, std::span<const double> s,
                                                            const Poll& poll = {});

}  // namespace vkm
