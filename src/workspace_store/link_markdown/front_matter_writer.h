// FrontMatterWriter: builds a Markdown file whose front matter is the small YAML subset that
// FrontMatterParser reads back. The output is canonical: the same calls always give the same text.
//
// Values are written as they are given; the caller decides which keys to write and in which order.
// Not thread-safe; one writer builds one file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorvik {

class FrontMatterWriter {
 public:
  // Whether `value` must be written as a `|` block: it is empty, holds a line feed, has spaces or
  // tabs at either end, or begins with '-' or '|'.
  static bool shouldUseBlockScalar(std::string_view value);

  // `key: value` indented by `indent` spaces, or, when a block is needed, `key: |` followed by
  // each line of the value indented by `indent` + 2 spaces.
  void addScalar(std::string_view key, std::string_view value, size_t indent = 0);
  // `key: text` without any block rule, for numbers, booleans and fixed words.
  void addPlain(std::string_view key, std::string_view text, size_t indent = 0);
  // `key:` followed by `- element` for each element, indented by `indent` + 2 spaces. Elements are
  // written as they stand.
  void addStringArray(std::string_view key, const std::vector<std::string>& elements,
                      size_t indent = 0);
  // A line taken as it is.
  void addLine(std::string line);

  // The file: `---`, the added lines, `---`, each followed by a line feed, then `body`.
  std::string text(std::string_view body) const;

 private:
  std::vector<std::string> lines_;
};

}  // namespace zorvik
