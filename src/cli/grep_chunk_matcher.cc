#include "cli/grep_chunk_matcher.h"

#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
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

// The characters beyond ASCII whose full case folding holds an ASCII unit, and the bytes their
// UTF-8 forms start with. When ICU cannot say, every character beyond ASCII is taken to be one,
// which turns the byte search off. Built once, frozen (safe to read from any thread) and never
// destroyed.
struct FoldsIntoASCII {
  icu::UnicodeSet set;
  std::array<bool, 256> leadsOne{};  // the first UTF-8 bytes of the set's characters
};

const FoldsIntoASCII& foldsIntoASCII() {
  static const FoldsIntoASCII* const characters = [] {
    auto* result = new FoldsIntoASCII();
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeSet changing(icu::UnicodeString(u"[:Changes_When_Casefolded:]"), status);
    if (U_FAILURE(status)) {
      result->set.add(0x80, 0x10FFFF);
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
          if (holdsASCII) result->set.add(c);
        }
      }
    }
    result->set.freeze();
    for (int32_t range = 0; range < result->set.getRangeCount(); ++range) {
      for (UChar32 c = result->set.getRangeStart(range); c <= result->set.getRangeEnd(range); ++c) {
        uint8_t bytes[U8_MAX_LENGTH];
        int32_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, c);
        result->leadsOne[bytes[0]] = true;
      }
    }
    return result;
  }();
  return *characters;
}

// Only a byte that can start one of those characters is decoded; the rest are passed over. (An
// ill-formed sequence reads as U+FFFD, which folds to itself.)
bool holdsCharacterFoldingIntoASCII(std::string_view text) {
  const FoldsIntoASCII& special = foldsIntoASCII();
  const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
  for (size_t offset = 0; offset < text.size(); ++offset) {
    // Eight ASCII bytes at a time.
    while (offset + sizeof(uint64_t) <= text.size()) {
      uint64_t word;
      std::memcpy(&word, bytes + offset, sizeof word);
      if ((word & 0x8080808080808080) != 0) break;
      offset += sizeof word;
    }
    if (offset == text.size()) break;
    if (!special.leadsOne[bytes[offset]]) continue;
    size_t next = offset;
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes, next, text.size(), c);
    if (special.set.contains(c)) return true;
  }
  return false;
}

bool allASCII(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

char asciiLowercase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char asciiUppercase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

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
      if (byteSearchPossible_) {
        byteQuery_ = toUTF8(searchQuery16_);
        // Each byte's shift is its distance from the query's end, in either case; bytes not in
        // the query (but as its last) move the window by the whole query.
        const size_t length = byteQuery_.size();
        foldedShifts_.fill(length);
        for (size_t i = 0; i + 1 < length; ++i) {
          const char c = byteQuery_[i];
          foldedShifts_[static_cast<unsigned char>(c)] = length - 1 - i;
          foldedShifts_[static_cast<unsigned char>(asciiUppercase(c))] = length - 1 - i;
        }
      }
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
      return searchesBytes(text) ? findContainedBytes(text, limit)
                                 : findContainedFolded(text, limit);
    case GrepMode::equals:
      return findEqual(text);
    case GrepMode::word:
    case GrepMode::regex:
      return findPattern(text, limit);
  }
  return {};
}

size_t GrepChunkMatcher::count(std::string_view text, size_t limit) const {
  if (mode_ != GrepMode::contains || !searchesBytes(text)) return find(text, limit).size();
  size_t found = 0;
  forEachByteMatch(text, limit, [&](size_t) { ++found; });
  return found;
}

bool GrepChunkMatcher::searchesBytes(std::string_view text) const {
  return searchBytes_ && byteSearchPossible_ &&
         (caseSensitive_ || !holdsCharacterFoldingIntoASCII(text));
}

size_t GrepChunkMatcher::findBytes(std::string_view text, size_t from) const {
  if (caseSensitive_) return text.find(byteQuery_, from);
  // Horspool's search: the window moves by the shift of its last byte.
  const size_t length = byteQuery_.size();
  const char last = byteQuery_.back();
  for (size_t at = from; length <= text.size() && at <= text.size() - length;
       at += foldedShifts_[static_cast<unsigned char>(text[at + length - 1])]) {
    if (asciiLowercase(text[at + length - 1]) != last) continue;
    size_t i = 0;
    while (i + 1 < length && asciiLowercase(text[at + i]) == byteQuery_[i]) ++i;
    if (i + 1 == length) return at;
  }
  return std::string_view::npos;
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
  forEachByteMatch(text, limit, [&](size_t at) {
    const int32_t start = unitsUpTo(at);
    ranges.push_back({start, unitsUpTo(at + byteQuery_.size())});
  });
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
