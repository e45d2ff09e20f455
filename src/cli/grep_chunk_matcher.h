// GrepChunkMatcher: finds where one grep_cards query matches inside chunk texts. Ranges are
// half-open and counted in UTF-16 units of the chunk, in text order.
//
// Modes: "contains" (repeated substring search from the end of the last match, case-insensitive
// by full Unicode case folding unless asked otherwise), "equals" (trimmed, lower-cased unless
// case-sensitive, whole chunk), "word" (`\b` + escaped query + `\b`) and "regex" (ICU, case-
// insensitive unless asked otherwise).
//
// Contains-searches run on the UTF-8 bytes when that gives the same ranges as searching the
// folded UTF-16 text: always when case-sensitive, and when the folded query is ASCII and the chunk
// holds no character whose folding yields ASCII (the Kelvin sign, the long s, ß, ligatures, ...).
// Built once per call; find() is const and may run on several threads at once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class RegexPattern;
U_NAMESPACE_END

namespace zorvik {

enum class GrepMode { contains, equals, word, regex };

// A half-open range of UTF-16 units.
struct GrepMatchRange {
  int32_t start = 0;
  int32_t end = 0;

  bool operator==(const GrepMatchRange&) const = default;
};

class GrepChunkMatcher {
 public:
  // Throws std::invalid_argument "grep_cards regex is invalid: " + ICU's error name for a pattern
  // that does not compile. `searchBytes` false always searches the folded UTF-16 text: the
  // reference the byte search must agree with.
  GrepChunkMatcher(GrepMode mode, const std::string& query, bool caseSensitive,
                   bool searchBytes = true);
  ~GrepChunkMatcher();

  // At most `limit` ranges of `text` (valid UTF-8).
  std::vector<GrepMatchRange> find(std::string_view text, size_t limit) const;
  // find(text, limit).size(), without working out where the matches are when it need not.
  size_t count(std::string_view text, size_t limit) const;

 private:
  // Whether a contains-search of `text` runs on its bytes.
  bool searchesBytes(std::string_view text) const;
  // Where byteQuery_ next occurs at or after `from`, comparing ASCII letters without case unless
  // the search is case-sensitive; npos when nowhere.
  size_t findBytes(std::string_view text, size_t from) const;
  // Calls `onMatch` with the byte offset of each of the first `limit` byte-search matches, each
  // searched for from the end of the one before.
  template <class OnMatch>
  void forEachByteMatch(std::string_view text, size_t limit, const OnMatch& onMatch) const {
    size_t from = 0;
    for (size_t found = 0; found < limit; ++found) {
      const size_t at = findBytes(text, from);
      if (at == std::string_view::npos) return;
      onMatch(at);
      from = at + byteQuery_.size();
    }
  }
  std::vector<GrepMatchRange> findContainedBytes(std::string_view text, size_t limit) const;
  std::vector<GrepMatchRange> findContainedFolded(std::string_view text, size_t limit) const;
  std::vector<GrepMatchRange> findEqual(std::string_view text) const;
  std::vector<GrepMatchRange> findPattern(std::string_view text, size_t limit) const;

  GrepMode mode_;
  bool caseSensitive_;
  bool searchBytes_;
  std::string query_;             // as given
  std::u16string searchQuery16_;  // contains: the query in UTF-16, case-folded unless sensitive
  std::string byteQuery_;         // the query for a byte search: as given, or folded when ASCII
  std::array<size_t, 256> foldedShifts_{};  // the case-insensitive byte search's window moves
  bool byteSearchPossible_ = false;
  std::string equalsQuery_;  // equals: trimmed, lower-cased unless case-sensitive
  std::unique_ptr<icu::RegexPattern> pattern_;
};

}  // namespace zorvik
