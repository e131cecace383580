#include "evidence/evidence_report.hpp"

#include <charconv>
#include <cmath>
#include <string_view>

#include "core/output_file.hpp"

namespace vkm {

namespace {

constexpr std::string_view library_version = "0.8.36";

void append_escaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\b':
        out += "\\b";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\f':
        out += "\\f";
        break;
      case '\r':
        out += "\\r";
        break;
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        if (static_cast<unsigned char>(c) < 32) {
          constexpr char digits[] = "0123456789abcdef";
          out += "\\u00";
          out += digits[c >> 4];
          out += digits[c & 15];
        } else {
          out += c;
        }
    }
  }
}

void append_number(std::string& out, double x) {
  if (!std::isfinite(x)) {
    out += "null";
    return;
  }
  char text[32];  // sign, 17 digits, point, exponent: 24 at most
  const auto end = std::to_chars(text, text + sizeof text, x, std::chars_format::general, 17).ptr;
  out.append(text, end);
}

/// Opens a member of an object: the indentation, the key, a colon and a blank.
void append_key(std::string& out, std::string_view indent, std::string_view key) {
  out += indent;
  out += '"';
  out += key;
  out += "\": ";
}

void append_text_member(std::string& out, std::string_view indent, std::string_view key, std::string_view value) {
  append_key(out, indent, key);
  out += '"';
  append_escaped(out, value);
  out += "\",\n";
}

void append_check(std::string& out, const CheckResult& check) {
  constexpr std::string_view indent = "      ";
  const auto truth = [](bool value) { return value ? "true" : "false"; };
  out += "    {\n";
  append_text_member(out, indent, "kind", check_kind_export_string(check.kind));
  append_text_member(out, indent, "message", check.message);
  append_text_member(out, indent, "name", check.name);
  append_key(out, indent, "passed");
  out += truth(check.passed);
  out += ",\n";
  append_key(out, indent, "residual");
  append_number(out, check.residual);
  out += ",\n";
  append_key(out, indent, "supports_empirical_claim");
  out += truth(check.supports_empirical_claim);
  out += ",\n";
  append_key(out, indent, "tolerance");
  append_number(out, check.tolerance);
  out += "\n    }";
}

}  // namespace

std::string EvidenceReportAPI::build_report_json(const EvidenceReportMeta& meta, std::span<const CheckResult> checks) {
  const auto version = [](std::string_view given) { return given.empty() ? library_version : given; };
  std::string out = "{\n";
  append_text_member(out, "  ", "schema_version", "1.0");
  append_text_member(out, "  ", "vkmcore_version", version(meta.vkmcore_version));
  append_text_member(out, "  ", "canon_version", version(meta.canon_version));
  append_text_member(out, "  ", "git_commit", meta.git_commit);
  append_text_member(out, "  ", "numeric_profile", meta.numeric_profile);
  append_text_member(out, "  ", "compiler", meta.compiler);
  append_text_member(out, "  ", "platform", meta.platform);
  out += "  \"checks\": [\n";
  for (std::size_t i = 0; i < checks.size(); ++i) {
    append_check(out, checks[i]);
    out += i + 1 < checks.size() ? ",\n" : "\n";
  }
  out += "  ]\n}\n";
  return out;
}

bool EvidenceReportAPI::write_evidence_report(const std::string& path, const EvidenceReportMeta& meta,
                                              std::span<const CheckResult> checks, const Poll& poll) {
  OutputFile file(path, poll);
  file.write(build_report_json(meta, checks));
  return file.commit();
}

}  // namespace vkm
