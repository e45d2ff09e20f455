#include "workspace_store/link_markdown/front_matter_parser.h"

#include <charconv>
#include <cmath>
#include <exception>
#include <utility>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_decoder.h"
#include "foundation/text.h"
#include "workspace_store/link_markdown/codec_error.h"

namespace zorvik {

namespace {

constexpr std::string_view kDelimiter = "---";

// Drops one leading '+' so that from_chars, which takes only '-', reads the rest; a sign followed
// by another sign stays invalid.
std::string_view withoutPlusSign(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-' && text[1] != '+') {
    return text.substr(1);
  }
  return text;
}

// The text trimmed of white space, when the field holds a string value.
std::optional<std::string> trimmedStringValue(const FrontMatterParser::ParsedField* field) {
  auto value = FrontMatterParser::parseStringValue(field);
  if (!value) return std::nullopt;
  return trimWhitespaceAndNewlines(*value);
}

}  // namespace

std::string_view FrontMatterParser::trimSpacesAndTabs(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

FrontMatterParser::SplitText FrontMatterParser::splitFrontMatter(std::string_view text) {
  std::string normalized;
  normalized.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    normalized += text[i];
  }

  SplitText split;
  std::string_view rest = normalized;
  bool first = true;
  while (true) {
    const size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    if (first) {
      if (line != kDelimiter) throw CodecError::missingFrontMatter();
      first = false;
    } else if (line == kDelimiter) {
      if (end != std::string_view::npos) split.body = std::string(rest.substr(end + 1));
      return split;
    } else {
      split.frontMatterLines.emplace_back(line);
    }
    if (end == std::string_view::npos) throw CodecError::missingFrontMatter();
    rest.remove_prefix(end + 1);
  }
}

FrontMatterParser::ParsedFields FrontMatterParser::parseFields(
    const std::vector<std::string>& lines) {
  ParsedFields fields;
  size_t index = 0;
  while (index < lines.size()) {
    const std::string& line = lines[index++];
    if (isBlank(line)) continue;
    const size_t colon = line.find(':');
    if (line.front() == ' ' || colon == std::string::npos) {
      throw CodecError::invalidFrontMatterLine(line);
    }
    const std::string_view key = trimSpacesAndTabs(std::string_view(line).substr(0, colon));
    if (key.empty()) throw CodecError::invalidFrontMatterLine(line);
    const std::string_view value = trimSpacesAndTabs(std::string_view(line).substr(colon + 1));

    ParsedField parsed;
    if (value == "|" || value.empty()) {
      std::vector<std::string> collected;
      for (; index < lines.size(); ++index) {
        const std::string& next = lines[index];
        if (next.starts_with("  ")) {
          collected.push_back(next.substr(2));
        } else if (isBlank(next)) {
          collected.emplace_back();
        } else {
          break;
        }
      }
      if (value.empty()) {
        parsed.nestedLines = std::move(collected);
      } else {
        std::string joined;
        for (size_t i = 0; i < collected.size(); ++i) {
          if (i > 0) joined += '\n';
          joined += collected[i];
        }
        parsed.scalar = std::move(joined);
      }
    } else {
      parsed.scalar = std::string(value);
    }
    fields.insert_or_assign(std::string(key), std::move(parsed));
  }
  return fields;
}

const FrontMatterParser::ParsedField* FrontMatterParser::field(const ParsedFields& fields,
                                                               std::string_view key) {
  const auto found = fields.find(key);
  return found == fields.end() ? nullptr : &found->second;
}

std::optional<std::string> FrontMatterParser::parseStringValue(const ParsedField* field) {
  if (!field || !field->scalar) return std::nullopt;
  const std::string& scalar = *field->scalar;
  if (scalar.empty() || scalar == "null") return std::nullopt;
  if (scalar.size() >= 2 && scalar.front() == '"' && scalar.back() == '"') {
    try {
      const AnyCodableValue decoded = AnyCodableValue::parse(scalar);
      if (const std::string* text = decoded.asString()) return *text;
    } catch (const std::exception&) {
      // Not a JSON string after all: the raw text stands.
    }
  }
  return scalar;
}

std::optional<bool> FrontMatterParser::parseBoolValue(const ParsedField* field) {
  const auto text = trimmedStringValue(field);
  if (!text) return std::nullopt;
  const std::string word = lowercased(*text);
  if (word == "true") return true;
  if (word == "false") return false;
  return std::nullopt;
}

std::optional<int64_t> FrontMatterParser::parseIntValue(const ParsedField* field) {
  const auto text = trimmedStringValue(field);
  if (!text) return std::nullopt;
  const std::string_view digits = withoutPlusSign(*text);
  int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

std::optional<double> FrontMatterParser::parseDoubleValue(const ParsedField* field) {
  const auto text = trimmedStringValue(field);
  if (!text) return std::nullopt;
  const std::string_view number = withoutPlusSign(*text);
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error != std::errc() || end != number.data() + number.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::vector<std::string> FrontMatterParser::parseStringArray(const ParsedField* field,
                                                             std::string_view errorKey) {
  if (!field) return {};
  if (field->scalar) {
    const std::string_view trimmed = trimSpacesAndTabs(*field->scalar);
    if (trimmed.starts_with('[')) {
      try {
        return decodeValue<std::vector<std::string>>(AnyCodableValue::parse(*field->scalar));
      } catch (const std::exception&) {
        // Not a JSON array of strings: read as a single value below.
      }
    }
    if (isBlank(*field->scalar)) return {};
    auto value = parseStringValue(field);
    if (!value) return {};
    return {std::move(*value)};
  }
  std::vector<std::string> elements;
  if (!field->nestedLines) return elements;
  for (const std::string& line : *field->nestedLines) {
    if (isBlank(line)) continue;
    if (!line.starts_with("- ")) throw CodecError::invalidStringArray(std::string(errorKey));
    elements.push_back(line.substr(2));
  }
  return elements;
}

}  // namespace zorvik
