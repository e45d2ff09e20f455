#include "cli/grep_chunk_matcher.h"

#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "foundation/text.h"

namespace zorvik {
namespace {

// Case-folded text with, for every folded unit, the source units it came from. Full case folding
// is context-free, so folding code point by code point equals folding the whole.
struct FoldedText {
  std::u16string text;
  std::vector<int32_t> sourceStart;
  std::vector<int32_t> sourceEnd;
};

FoldedText foldCase(std::u16string_view source) {
  FoldedText folded;
  folded.text.reserve(source.size());
  folded.sourceStart.reserve(source.size());
  folded.sourceEnd.reserve(source.size());
  const auto length = static_cast<int32_t>(source.size());
  int32_t offset = 0;
  while (offset < length) {
    const int32_t start = offset;
    UChar32 codePoint;
    U16_NEXT(source.data(), offset, length, codePoint);
    UChar mapped[8];
    int32_t mappedLength = 0;
    if (codePoint < 0x80) {
      const bool upper = codePoint >= 'A' && codePoint <= 'Z';
      mapped[mappedLength++] = static_cast<UChar>(upper ? codePoint + ('a' - 'A') : codePoint);
    } else {
      UErrorCode status = U_ZERO_ERROR;
      mappedLength = u_strFoldCase(mapped, 8, source.data() + start, offset - start,
                                   U_FOLD_CASE_DEFAULT, &status);
      if (U_FAILURE(status) || mappedLength > 8) {
        mappedLength = offset - start;
        std::copy(source.data() + start, source.data() + offset, mapped);
      }
    }
    for (int32_t i = 0; i < mappedLength; ++i) {
      folded.text.push_back(mapped[i]);
      folded.sourceStart.push_back(start);
      folded.sourceEnd.push_back(offset);
    }
  }
  return folded;
}

// The characters beyond ASCII whose full case folding holds an ASCII unit. When ICU cannot say,
// every character beyond ASCII is taken to be one, which turns the byte search off. Built once,
// frozen (safe to read from any thread) and never destroyed.
const icu::UnicodeSet& foldsIntoASCII() {
  static const icu::UnicodeSet* const set = [] {
    auto* result = new icu::UnicodeSet();
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeSet changing(icu::UnicodeString(u"[:Changes_When_Casefolded:]"), status);
    if (U_FAILURE(status)) {
      result->add(0x80, 0x10FFFF);
    } else {
      for (int32_t range = 0; range < changing.getRangeCount(); ++range) {
        for (UChar32 c = std::max<UChar32>(changing.getRangeStart(range), 0x80);
             c <= changing.getRangeEnd(range); ++c) {
          UChar source[2];
          int32_t length = 0;
          U16_APPEND_UNSAFE(source, length, c);
          UChar folded[8];
          UErrorCode foldStatus = U_ZERO_ERROR;
          const int32_t foldedLength =
              u_strFoldCase(folded, 8, source, length, U_FOLD_CASE_DEFAULT, &foldStatus);
          const bool holdsASCII =
              U_FAILURE(foldStatus) || std::any_of(folded, folded + std::min(foldedLength, 8),
                                                   [](UChar u) { return u < 0x80; });
          if (holdsASCII) result->add(c);
        }
      }
    }
    result->freeze();
    return result;
  }();
  return *set;
}

bool holdsCharacterFoldingIntoASCII(std::string_view text) {
  const icu::UnicodeSet& special = foldsIntoASCII();
  size_t offset = 0;
  while (offset < text.size()) {
    if (static_cast<unsigned char>(text[offset]) < 0x80) {
      ++offset;
      continue;
    }
    UChar32 c;
    U8_NEXT_OR_FFFD(reinterpret_cast<const uint8_t*>(text.data()), offset, text.size(), c);
    if (special.contains(c)) return true;
  }
  return false;
}

bool allASCII(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

// Where `query` (ASCII, lower-case letters) starts in `text` at or after `from`, comparing ASCII
// letters without case; npos when nowhere.
size_t findIgnoringASCIICase(std::string_view text, std::string_view query, size_t from) {
  if (query.size() > text.size()) return std::string_view::npos;
  const auto lower = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  };
  const char first = query.front();
  const char firstUpper =
      first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
  for (size_t at = from; at + query.size() <= text.size(); ++at) {
    if (text[at] != first && text[at] != firstUpper) continue;
    size_t i = 1;
    while (i < query.size() && lower(text[at + i]) == query[i]) ++i;
    if (i == query.size()) return at;
  }
  return std::string_view::npos;
}

// Backslash before every ASCII character that is not a letter, digit or white space: ICU reads
// such a pair as the literal character.
std::u16string escapedPattern(std::u16string_view literal) {
  std::u16string escaped;
  escaped.reserve(literal.size() * 2);
  for (char16_t unit : literal) {
    if (unit < 0x80 && std::ispunct(static_cast<unsigned char>(unit))) escaped.push_back(u'\\');
    escaped.push_back(unit);
  }
  return escaped;
}

}  // namespace

GrepChunkMatcher::GrepChunkMatcher(GrepMode mode, const std::string& query, bool caseSensitive,
                                   bool searchBytes)
    : mode_(mode), caseSensitive_(caseSensitive), searchBytes_(searchBytes), query_(query) {
  if (mode_ == GrepMode::contains) {
    if (caseSensitive_) {
      searchQuery16_ = toUTF16(query_);
      byteQuery_ = query_;
      byteSearchPossible_ = !query_.empty();
    } else {
      searchQuery16_ = foldCase(toUTF16(query_)).text;
      byteSearchPossible_ = !searchQuery16_.empty() && allASCII(searchQuery16_);
      if (byteSearchPossible_) byteQuery_ = toUTF8(searchQuery16_);
    }
  }
  if (mode_ == GrepMode::equals) {
    const std::string trimmed = trimWhitespaceAndNewlines(query);
    equalsQuery_ = caseSensitive_ ? trimmed : lowercased(trimmed);
  }
  if (mode_ == GrepMode::word || mode_ == GrepMode::regex) {
    const std::u16string query16 = toUTF16(query_);
    const std::u16string source =
        mode_ == GrepMode::word ? u"\\b" + escapedPattern(query16) + u"\\b" : query16;
    UErrorCode status = U_ZERO_ERROR;
    UParseError parseError;
    pattern_.reset(icu::RegexPattern::compile(
        icu::UnicodeString(source.data(), static_cast<int32_t>(source.size())),
        caseSensitive_ ? 0 : UREGEX_CASE_INSENSITIVE, parseError, status));
    if (U_FAILURE(status) || !pattern_) {
      throw std::invalid_argument(std::string("grep_cards regex is invalid: ") +
                                  u_errorName(status));
    }
  }
}

GrepChunkMatcher::~GrepChunkMatcher() = default;

std::vector<GrepMatchRange> GrepChunkMatcher::find(std::string_view text, size_t limit) const {
  switch (mode_) {
    case GrepMode::contains:
      return findContained(text, limit);
    case GrepMode::equals:
      return findEqual(text);
    case GrepMode::word:
    case GrepMode::regex:
      return findPattern(text, limit);
  }
  return {};
}

std::vector<GrepMatchRange> GrepChunkMatcher::findContained(std::string_view text,
                                                            size_t limit) const {
  const bool bytesAgree = searchBytes_ && byteSearchPossible_ &&
                          (caseSensitive_ || !holdsCharacterFoldingIntoASCII(text));
  return bytesAgree ? findContainedBytes(text, limit) : findContainedFolded(text, limit);
}

std::vector<GrepMatchRange> GrepChunkMatcher::findContainedBytes(std::string_view text,
                                                                 size_t limit) const {
  // Byte offsets become UTF-16 offsets by counting the units of the text passed since the last
  // match; matches come in text order.
  std::vector<GrepMatchRange> ranges;
  size_t countedBytes = 0;
  int32_t countedUnits = 0;
  const auto unitsUpTo = [&](size_t byteOffset) {
    countedUnits +=
        static_cast<int32_t>(utf16Length(text.substr(countedBytes, byteOffset - countedBytes)));
    countedBytes = byteOffset;
    return countedUnits;
  };
  size_t from = 0;
  while (ranges.size() < limit) {
    const size_t at = caseSensitive_ ? text.find(byteQuery_, from)
                                     : findIgnoringASCIICase(text, byteQuery_, from);
    if (at == std::string_view::npos) break;
    const int32_t start = unitsUpTo(at);
    const int32_t end = unitsUpTo(at + byteQuery_.size());
    ranges.push_back({start, end});
    from = at + byteQuery_.size();
  }
  return ranges;
}

std::vector<GrepMatchRange> GrepChunkMatcher::findContainedFolded(std::string_view text,
                                                                  size_t limit) const {
  const std::u16string text16 = toUTF16(text);
  std::vector<GrepMatchRange> ranges;
  const std::u16string& query = searchQuery16_;
  if (caseSensitive_) {
    size_t from = 0;
    while (ranges.size() < limit) {
      const size_t at = text16.find(query, from);
      if (at == std::u16string::npos) break;
      ranges.push_back({static_cast<int32_t>(at), static_cast<int32_t>(at + query.size())});
      from = at + std::max<size_t>(query.size(), 1);
    }
    return ranges;
  }
  const FoldedText folded = foldCase(text16);
  size_t from = 0;
  while (ranges.size() < limit) {
    const size_t at = folded.text.find(query, from);
    if (at == std::u16string::npos) break;
    const size_t last = at + std::max<size_t>(query.size(), 1) - 1;
    ranges.push_back({folded.sourceStart[at], folded.sourceEnd[last]});
    from = last + 1;
  }
  return ranges;
}

std::vector<GrepMatchRange> GrepChunkMatcher::findEqual(std::string_view text) const {
  const std::string trimmed = trimWhitespaceAndNewlines(text);
  if ((caseSensitive_ ? trimmed : lowercased(trimmed)) != equalsQuery_) return {};
  return {{0, static_cast<int32_t>(utf16Length(text))}};
}

std::vector<GrepMatchRange> GrepChunkMatcher::findPattern(std::string_view text,
                                                          size_t limit) const {
  std::vector<GrepMatchRange> ranges;
  const std::u16string text16 = toUTF16(text);
  // The matcher reads the chunk in place; `input` outlives it.
  const icu::UnicodeString input(false, text16.data(), static_cast<int32_t>(text16.size()));
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::RegexMatcher> matcher(pattern_->matcher(input, status));
  if (U_FAILURE(status) || !matcher) return ranges;
  while (ranges.size() < limit && matcher->find(status) && U_SUCCESS(status)) {
    const int32_t start = matcher->start(status);
    const int32_t end = matcher->end(status);
    if (U_FAILURE(status)) break;
    ranges.push_back({start, end});
  }
  return ranges;
}

}  // namespace zorvik
