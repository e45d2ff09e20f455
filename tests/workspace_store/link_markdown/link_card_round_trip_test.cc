// decode(encode(document)) == document over many generated documents.
//
// The generator stays inside what the writer can represent, which leaves out exactly these
// values:
// - a value read as text (source, url, note, summary, a row's label, type and value) that begins
//   with a double quote: a plain `"..."` is read back as a JSON string, by design;
// - such a value that is the word `null`, and an empty or absent-looking `source` or `summary`:
//   the reader takes them as absent and fills its default;
// - a line break in a list element, a row label or type: those are written on one line as they
//   stand, and labels are never written as blocks, so they must also be non-empty and trimmed;
// - a carriage return anywhere: before the writer's line feed it would read as a CR LF line end.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"
#include "workspace_store/link_markdown/link_card_test_support.h"

namespace zorvik {
namespace {

using Codec = FilesystemMarkdownLinkCardCodec;

class DocumentGenerator {
 public:
  explicit DocumentGenerator(uint32_t seed) : random_(seed) {}

  FilesystemMarkdownLinkCardDocument document() {
    FilesystemMarkdownLinkCardDocument document;
    document.source = chance(4) ? textValue(false) : std::string(chance(2) ? "remote" : "local");
    document.url = textValue(true);
    document.note = textValue(true);
    if (chance(2)) document.summary = textValue(false);
    document.richText = text(true, 40);
    document.rowItems = rows();
    document.availableFields = rows();
    document.hiddenRowItems = rows();
    document.images = list();
    document.currentImageIndex = integer();
    document.availableImages = list();
    if (chance(2)) document.heroImageAspectRatio = ratio();
    document.isTemplate = chance(2);
    return document;
  }

 private:
  bool chance(int oneIn) { return std::uniform_int_distribution<int>(1, oneIn)(random_) == 1; }
  size_t below(size_t bound) {
    return std::uniform_int_distribution<size_t>(0, bound - 1)(random_);
  }

  std::string text(bool withLineBreaks, size_t maxPieces) {
    static const std::vector<std::string> pieces = {
        "a", "Z", "7",   " ",    " ", "\t",   "-",    "- ",       "|",  ":", ": ", "#",  "\"", "[",
        "]", "{", "---", "null", "é", "日本", "🙂", "\xc2\xa0", "\\", "'", "\n", "\n", "  "};
    std::string result;
    const size_t count = below(maxPieces + 1);
    for (size_t i = 0; i < count; ++i) {
      const std::string& piece = pieces[below(pieces.size())];
      if (!withLineBreaks && piece == "\n") continue;
      result += piece;
    }
    return result;
  }

  // Text read through the string-value rules: not `null`, not starting with a double quote and,
  // unless it may be empty, not empty.
  std::string textValue(bool mayBeEmpty) {
    std::string value = text(true, 10);
    if (value.starts_with('"') || value == "null" || (!mayBeEmpty && value.empty())) {
      value.insert(0, "x");
    }
    return value;
  }

  // A single trimmed line that is no block marker.
  std::string label() {
    std::string value = text(false, 8);
    const size_t first = value.find_first_not_of(" \t");
    value = first == std::string::npos
                ? ""
                : value.substr(first, value.find_last_not_of(" \t") - first + 1);
    if (value.empty() || value == "|" || value == "null" || value.starts_with('"')) {
      value.insert(0, "L");
    }
    return value;
  }

  std::vector<std::string> list() {
    std::vector<std::string> elements(below(4));
    for (auto& element : elements) element = text(false, 6);
    return elements;
  }

  std::vector<WorkspaceRowItem> rows() {
    std::vector<WorkspaceRowItem> items(below(4));
    for (auto& item : items) {
      const std::string name = label();
      const size_t kind = below(5);
      // Kinds other than list, todo and rating keep their key-value text.
      item = kind == 0   ? listRow(name, list(), chance(2))
             : kind == 1 ? todoRow(name, chance(2))
             : kind == 2 ? ratingRow(name, integer())
                         : keyValueRow(name, textValue(true));
      if (kind > 2 && chance(3)) item.type = "link";
    }
    return items;
  }

  // An extreme one time in four each way, otherwise a small number.
  int64_t integer() {
    if (chance(2)) {
      return chance(2) ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
    }
    return std::uniform_int_distribution<int64_t>(-1000, 1000)(random_);
  }

  // Whole, huge, tiny or ordinary, one time in four each.
  double ratio() {
    const size_t kind = below(4);
    if (kind == 0) return static_cast<double>(std::uniform_int_distribution<int>(-5, 5)(random_));
    const auto [low, high] =
        std::vector<std::pair<double, double>>{{-1e300, 1e300}, {0, 1e-9}, {0.1, 4}}[kind - 1];
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  std::mt19937 random_;
};

TEST(LinkCardRoundTripTest, GeneratedDocumentsReadBackEqual) {
  DocumentGenerator generator(20240611);
  for (int i = 0; i < 3000; ++i) {
    const FilesystemMarkdownLinkCardDocument document = generator.document();
    const std::string text = Codec::encode(document);
    FilesystemMarkdownLinkCardDocument decoded;
    ASSERT_NO_THROW(decoded = Codec::decode(text)) << "document " << i << ":\n" << text;
    ASSERT_EQ(decoded, document) << "document " << i << ":\n" << text;
    ASSERT_EQ(Codec::encode(decoded), text) << "document " << i;
  }
}

}  // namespace
}  // namespace zorvik
