#include "knot/resource_search.hpp"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <vector>

#include "core/text_file.hpp"
#include "knot/block_index.hpp"
#include "knot/catalogue.hpp"
#include "knot/ideal_database.hpp"

namespace vkm {

namespace {

/// File names of the ideal databases, in the order of the search.
constexpr std::string_view standard_names[] = {"ideal.txt",         "ideal_short.txt", "ideal_11a.txt",
                                               "ideal_11n.txt",     "idealLinks.txt",  "idealLinks_10a.txt",
                                               "idealLinks_10n.txt"};

/// Places of the database's legacy file.
constexpr const char* legacy_paths[] = {"ideal_database.txt", "Front-End/knot_fseries/ideal_database.txt",
                                        "../Front-End/knot_fseries/ideal_database.txt",
                                        "../../Front-End/knot_fseries/ideal_database.txt"};

using Tags = std::span<const std::string_view>;

std::string environment(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? std::string() : std::string(value);
}

std::string_view find_in_text(std::string_view text, std::string_view id, Tags tags) {
  for (const std::string_view tag : tags) {
    if (const std::string_view block = find_block_text(text, id, tag); !block.empty()) return block;
  }
  return {};
}

std::string find_in_file(const std::string& path, std::string_view id, Tags tags, const Poll& poll) {
  return path.empty() ? std::string() : std::string(find_in_text(read_text_file(path, poll), id, tags));
}

/// The few embedded texts that hold ideal blocks, in key order, chosen once: a lookup does not walk thousands of keys.
std::span<const EmbeddedText* const> canonical_texts() {
  static const std::vector<const EmbeddedText*> texts = [] {
    std::vector<const EmbeddedText*> chosen;
    for (const EmbeddedText& entry : embedded_ideal_files()) {
      if (is_canonical_ideal_name(entry.key)) chosen.push_back(&entry);
    }
    return chosen;
  }();
  return texts;
}

std::string_view find_in_embedded(std::string_view name, std::string_view id, Tags tags) {
  for (const std::string_view tag : tags) {
    for (const EmbeddedText* entry : canonical_texts()) {
      if (base_name(entry->key) != name) continue;
      if (const std::string_view block = find_embedded_block(*entry, id, tag); !block.empty()) return block;
    }
  }
  return {};
}

std::string first_readable(std::span<const std::string> paths) {
  const auto found = std::find_if(paths.begin(), paths.end(), is_readable_file);
  return found == paths.end() ? std::string() : *found;
}

/// Path of an ideal database on disk, or an empty text.
std::string resolve_ideal_file(std::string_view name) {
  std::vector<std::string> directories;
  if (const std::string resources = environment("VKM_RESOURCE_DIR"); !resources.empty()) {
    directories.push_back(resources);
    directories.push_back(resources + "/resources");
  }
  if (const std::string knots = environment("VKM_KNOT_DATA_DIR"); !knots.empty()) directories.push_back(knots + "/..");
  for (const char* place :
       {"resources", "../resources", "share/vkmcore/resources", "share/thread_knot_core/resources"}) {
    directories.emplace_back(place);
  }
  std::vector<std::string> paths;
  for (const std::string& directory : directories) {
    paths.push_back(directory + "/ideal/" + std::string(name));
    paths.push_back(directory + "/" + std::string(name));
  }
  return first_readable(paths);
}

/// The sources that both searches share: the embedded databases, then those on disk.
std::string find_in_databases(std::string_view id, Tags tags, const Poll& poll) {
  for (const std::string_view name : standard_names) {
    if (const std::string_view block = find_in_embedded(name, id, tags); !block.empty()) return std::string(block);
  }
  for (const std::string_view name : standard_names) {
    if (std::string block = find_in_file(resolve_ideal_file(name), id, tags, poll); !block.empty()) return block;
  }
  return {};
}

std::string find_in_legacy_sources(std::string_view id, Tags tags, const Poll& poll) {
  for (const EmbeddedText& entry : embedded_knot_files()) {
    if (entry.key.find("ideal_database.txt") == std::string_view::npos) continue;
    if (const std::string_view block = find_in_text(entry.text, id, tags); !block.empty()) return std::string(block);
  }
  if (std::string block = find_in_file(environment("VKM_IDEAL_DATABASE"), id, tags, poll); !block.empty()) return block;
  for (const char* path : legacy_paths) {
    if (std::string block = find_in_file(path, id, tags, poll); !block.empty()) return block;
  }
  return {};
}

}  // namespace

bool is_canonical_ideal_name(std::string_view name) {
  std::string lowered(name);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (lowered.find("knotplot") != std::string::npos) return false;
  const std::string_view base = base_name(lowered);
  if (base.find("_ideal.txt") != std::string_view::npos) return false;
  return base.starts_with("ideal") && base.ends_with(".txt");
}

std::string find_ideal_ab_block_by_id(const std::string& ab_id, const Poll& poll) {
  if (ab_id.empty()) return {};
  constexpr std::string_view tags[] = {"AB"};
  if (std::string block = find_in_databases(ab_id, tags, poll); !block.empty()) return block;
  if (std::string block = find_in_legacy_sources(ab_id, tags, poll); !block.empty()) return block;
  return find_in_file(environment("VKM_IDEAL_TXT"), ab_id, tags, poll);
}

std::string find_ideal_block_by_id(const std::string& block_id, const std::string& tag, const Poll& poll) {
  if (block_id.empty()) return {};
  std::vector<std::string_view> tags{"AB", "HT", "TL"};
  if (!tag.empty()) tags = {tag};
  if (std::string block = find_in_databases(block_id, tags, poll); !block.empty()) return block;
  return find_in_file(environment("VKM_IDEAL_TXT"), block_id, tags, poll);
}

std::string resolve_knot_fseries_path(const std::string& knot_id, const std::string& base_dir) {
  const std::string file = "/knot." + knot_id + ".fseries";
  std::vector<std::string> paths;
  if (!base_dir.empty()) {
    paths.push_back(base_dir + file);
    paths.push_back(base_dir + "/knot_fseries" + file);
  }
  if (const std::string knots = environment("VKM_KNOT_DATA_DIR"); !knots.empty()) paths.push_back(knots + file);
  if (const std::string resources = environment("VKM_RESOURCE_DIR"); !resources.empty()) {
    paths.push_back(resources + "/resources/knot_fseries" + file);
    paths.push_back(resources + "/knot_fseries" + file);
  }
  for (const char* place :
       {"src/knot_fseries", "src/Knots_FourierSeries", "../src/knot_fseries", "../src/Knots_FourierSeries",
        "../../src/knot_fseries", "../../src/Knots_FourierSeries", "knot_fseries", "../knot_fseries",
        "share/vkmcore/knot_fseries", "../../share/vkmcore/knot_fseries", "share/thread_knot_core/knot_fseries",
        "../../share/thread_knot_core/knot_fseries"}) {
    paths.push_back(place + file);
  }
  return first_readable(paths);
}

std::string read_text_file(const std::string& path, const Poll& poll) {
  return read_file(path, poll).value_or(std::string());
}

}  // namespace vkm
