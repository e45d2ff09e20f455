// FrontMatterParser: the forgiving reader of a Markdown file's front matter, the small YAML subset
// that FrontMatterWriter writes plus the JSON forms people type by hand (a quoted string, a
// `[...]` array).
//
// A front matter is the text between a first line `---` and the next line `---`. Each line there
// is `key: value`; the value `|` opens a block of lines indented by two spaces, and an empty value
// opens nested lines collected the same way. Failures throw CodecError. Stateless and thread-safe.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvik {

class FrontMatterParser {
 public:
  // The reader's value for one key: a scalar (a plain value, or a block's lines joined with LF), or
  // the nested lines after a key with an empty value, each less its first two spaces.
  struct ParsedField {
    std::optional<std::string> scalar;
    std::optional<std::vector<std::string>> nestedLines;

    bool operator==(const ParsedField&) const = default;
  };
  // By key; a key given twice keeps its last value.
  using ParsedFields = std::map<std::string, ParsedField, std::less<>>;

  struct SplitText {
    std::vector<std::string> frontMatterLines;
    // Everything after the closing `---` line.
    std::string body;
  };

  // Replaces CR LF by LF and splits off the front matter. Throws CodecError::missingFrontMatter
  // when the first line is not exactly `---` or no later line is.
  static SplitText splitFrontMatter(std::string_view text);

  // Reads `key: value` lines. Blank lines are skipped; a line that begins with a space, has no
  // colon or has an empty key throws CodecError::invalidFrontMatterLine.
  static ParsedFields parseFields(const std::vector<std::string>& lines);

  // The field under `key`, or nullptr.
  static const ParsedField* field(const ParsedFields& fields, std::string_view key);

  // The scalar as text: nullopt for an absent field or scalar, an empty one and the word `null`; a
  // value in double quotes is read as a JSON string when it is one; anything else as it stands.
  static std::optional<std::string> parseStringValue(const ParsedField* field);
  // `true` or `false`, ignoring case and surrounding white space; anything else is nullopt.
  static std::optional<bool> parseBoolValue(const ParsedField* field);
  // A decimal integer with an optional sign that fits 64 bits, else nullopt.
  static std::optional<int64_t> parseIntValue(const ParsedField* field);
  // A finite decimal number, else nullopt.
  static std::optional<double> parseDoubleValue(const ParsedField* field);
  // A JSON array of strings written as a `[...]` scalar, any other non-blank scalar as one element,
  // or nested `- element` lines (elements taken as they stand). A nested line of another form
  // throws CodecError::invalidStringArray(errorKey). An absent field gives an empty array.
  static std::vector<std::string> parseStringArray(const ParsedField* field,
                                                   std::string_view errorKey);

  // Spaces and tabs removed from both ends.
  static std::string_view trimSpacesAndTabs(std::string_view text);
  static bool isBlank(std::string_view line) { return trimSpacesAndTabs(line).empty(); }
};

}  // namespace zorvik
