#include "foundation/text.h"

#include <cstring>

#include <simdjson.h>
#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

namespace zorvik {
namespace {

constexpr std::string_view kEllipsis = "\u2026";

const uint8_t* bytesOf(std::string_view text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}

// Pure ASCII without CR LF: every byte is its own grapheme cluster.
icu::BreakIterator* characterIterator() {
  // Creating a break iterator loads rules; keep one per thread.
  thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> created(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    return U_SUCCESS(status) ? std::move(created) : nullptr;
  }();
  return iterator.get();
}

struct CharacterWalk {
  size_t characters = 0;  // characters passed, at most the limit
  size_t offset = 0;      // byte offset just past them
};

// Unicode White_Space; nothing above U+3000 (the ideographic space) has the property.
bool isWhiteSpace(UChar32 c) {
  if (c < 0x80) return c == ' ' || (c >= '\t' && c <= '\r');
  return c <= 0x3000 && u_isUWhiteSpace(c);
}

// Whether the code point is in a block of common letters whose break class is Other throughout:
// Latin-1 and the Latin extensions (the soft hyphen aside), kana, and the CJK ideographs.
bool isCommonLetterOfClassOther(UChar32 c) {
  return (c >= 0xA0 && c < 0x300 && c != 0xAD) || (c >= 0x3041 && c <= 0x3096) ||
         (c >= 0x30A0 && c <= 0x30FF) || (c >= 0x4E00 && c <= 0x9FFF);
}

// The grapheme-cluster-break class of a code point; ASCII and common letters are answered
// without a table lookup.
int32_t clusterBreakClass(UChar32 c) {
  if (c >= 0x80) {
    return isCommonLetterOfClassOther(c) ? U_GCB_OTHER
                                         : u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK);
  }
  if (c == '\r') return U_GCB_CR;
  if (c == '\n') return U_GCB_LF;
  return c < 0x20 || c == 0x7f ? U_GCB_CONTROL : U_GCB_OTHER;
}

// The byte length of the character at `offset` when the segmentation rules settle it from its
// own code point and the next one, else 0 (ICU decides). Controls, CR and LF always stand alone
// (CR LF together); a code point of class Other stands alone when the next one cannot join it
// (Other, a control, CR, LF, or the end). Every joining rule (extenders, joiners, spacing marks,
// prepends, Hangul syllables, regional indicators) involves a class other than these.
size_t selfContainedCharacterLength(std::string_view text, size_t offset) {
  // The break class of the code point at `at`, moving `at` past it; nullopt when ill-formed.
  const auto classAt = [&](size_t& at) -> std::optional<int32_t> {
    UChar32 c;
    U8_NEXT(bytesOf(text), at, text.size(), c);
    if (c < 0) return std::nullopt;
    return clusterBreakClass(c);
  };
  size_t next = offset;
  const std::optional<int32_t> kind = classAt(next);
  if (!kind) return 0;
  if (*kind == U_GCB_CR) return next < text.size() && text[next] == '\n' ? 2 : 1;
  if (*kind == U_GCB_LF || *kind == U_GCB_CONTROL) return next - offset;
  if (*kind != U_GCB_OTHER) return 0;
  if (next == text.size() || static_cast<unsigned char>(text[next]) < 0x80) return next - offset;
  size_t after = next;
  const std::optional<int32_t> following = classAt(after);
  if (!following) return 0;
  const bool joins = *following != U_GCB_OTHER && *following != U_GCB_CONTROL &&
                     *following != U_GCB_CR && *following != U_GCB_LF;
  return joins ? 0 : next - offset;
}

// Advances over at most `limit` characters from the start of the text. Characters that settle
// themselves are walked directly; ICU finds the boundaries around everything else.
CharacterWalk walkCharacters(std::string_view text, size_t limit) {
  CharacterWalk walk;
  icu::BreakIterator* iterator = nullptr;
  UText utext = UTEXT_INITIALIZER;
  bool segmenting = false;
  while (walk.characters < limit && walk.offset < text.size()) {
    // In a run of ASCII bytes other than CR every byte but the last is a character of its own:
    // only CR joins what follows it, and only bytes beyond ASCII join what precedes them.
    // The run is looked at no further than one byte past the characters still wanted.
    const size_t wanted = limit - walk.characters;
    const size_t scanEnd =
        text.size() - walk.offset > wanted ? walk.offset + wanted + 1 : text.size();
    size_t runEnd = walk.offset;
    while (runEnd < scanEnd && static_cast<unsigned char>(text[runEnd]) < 0x80 &&
           text[runEnd] != '\r') {
      ++runEnd;
    }
    if (runEnd - walk.offset > 1) {
      const size_t step = std::min(runEnd - walk.offset - 1, wanted);
      walk.offset += step;
      walk.characters += step;
      continue;
    }
    if (const size_t length = selfContainedCharacterLength(text, walk.offset)) {
      walk.offset += length;
      ++walk.characters;
      continue;
    }
    if (!segmenting) {
      UErrorCode status = U_ZERO_ERROR;
      utext_openUTF8(&utext, text.data(), static_cast<int64_t>(text.size()), &status);
      iterator = characterIterator();
      if (iterator != nullptr && U_SUCCESS(status)) iterator->setText(&utext, status);
      if (iterator == nullptr || U_FAILURE(status)) iterator = nullptr;
      segmenting = true;
    }
    if (iterator != nullptr) {
      // UTF-8 UText indexes are byte offsets; the walk always stands on a boundary.
      const int32_t next = iterator->following(static_cast<int32_t>(walk.offset));
      walk.offset = next == icu::BreakIterator::DONE ? text.size() : static_cast<size_t>(next);
    } else {
      // Without break data fall back to code points, which still never split a UTF-8 sequence.
      UChar32 c;
      U8_NEXT_OR_FFFD(bytesOf(text), walk.offset, text.size(), c);
    }
    ++walk.characters;
  }
  if (segmenting) utext_close(&utext);
  return walk;
}

std::unique_ptr<icu::Collator> makeCaseInsensitiveCollator() {
  icu::Locale locale = icu::Locale::getDefault();
  if (std::string_view(locale.getVariant()) == "POSIX") locale = icu::Locale::getRoot();
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
  if (U_FAILURE(status) || collator == nullptr) return nullptr;
  collator->setStrength(icu::Collator::SECONDARY);
  return collator;
}

}  // namespace

bool isASCII(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string trimWhitespaceAndNewlines(std::string_view text) {
  return std::string(trimmedView(text));
}

std::string_view trimmedView(std::string_view text) {
  const uint8_t* bytes = bytesOf(text);
  size_t start = 0;
  while (start < text.size()) {
    size_t next = start;
    UChar32 c;
    U8_NEXT(bytes, next, text.size(), c);
    if (c < 0 || !isWhiteSpace(c)) break;
    start = next;
  }
  size_t end = text.size();
  while (end > start) {
    // Step back to the lead byte of the last sequence, then decode it forwards.
    size_t previous = end - 1;
    while (previous > start && end - previous < U8_MAX_LENGTH && U8_IS_TRAIL(bytes[previous])) {
      --previous;
    }
    size_t next = previous;
    UChar32 c;
    U8_NEXT(bytes, next, end, c);
    if (c < 0 || next != end || !isWhiteSpace(c)) break;
    end = previous;
  }
  return text.substr(start, end - start);
}

std::string lowercased(std::string_view text) {
  // When no code point beyond ASCII changes when lower-cased, lowering the ASCII letters is the
  // whole mapping: such characters map to themselves in every context. Otherwise, and for
  // ill-formed text, ICU maps the whole text.
  std::string result(text);
  const auto* bytes = bytesOf(text);
  bool settled = true;
  for (size_t offset = 0; offset < result.size() && settled;) {
    if (bytes[offset] < 0x80) {
      char& c = result[offset++];
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      continue;
    }
    UChar32 c;
    U8_NEXT(bytes, offset, result.size(), c);
    settled = c >= 0 && !u_hasBinaryProperty(c, UCHAR_CHANGES_WHEN_LOWERCASED);
  }
  if (settled) return result;
  std::u16string utf16 = toUTF16(text);
  icu::UnicodeString unicode(false, utf16.data(), static_cast<int32_t>(utf16.size()));
  unicode.toLower(icu::Locale::getRoot());
  result.clear();
  unicode.toUTF8String(result);
  return result;
}

bool isValidUTF8(std::string_view text) { return simdjson::validate_utf8(text); }

size_t characterCount(std::string_view text) { return walkCharacters(text, SIZE_MAX).characters; }

namespace {

// Whether `text` has more than `limit` code points, counting no further than that. A character
// holds at least one code point, so a false answer settles the character count too.
bool hasMoreCodePointsThan(std::string_view text, size_t limit) {
  if (text.size() <= limit) return false;
  // A code point, or an ill-formed sequence read as one, takes at most four bytes.
  if (text.size() / 4 > limit) return true;
  size_t codePoints = 0;
  size_t offset = 0;
  while (offset < text.size() && codePoints <= limit) {
    UChar32 c;
    U8_NEXT_OR_FFFD(bytesOf(text), offset, text.size(), c);
    ++codePoints;
  }
  return codePoints > limit;
}

}  // namespace

bool hasMoreCharactersThan(std::string_view text, size_t limit) {
  return hasMoreCodePointsThan(text, limit) && walkCharacters(text, limit + 1).characters > limit;
}

std::string prefixCharacters(std::string_view text, size_t count) {
  return std::string(text.substr(0, walkCharacters(text, count).offset));
}

std::string cutText(std::string_view text, size_t atOrAbove) {
  return cutText(text, atOrAbove, atOrAbove >= 2 ? atOrAbove - 2 : 0);
}

std::string cutText(std::string_view text, size_t atOrAbove, size_t keep) {
  const std::optional<size_t> kept = cutLength(text, atOrAbove, keep);
  if (!kept) return std::string(text);
  std::string result;
  writeCut(text, *kept, result);
  return result;
}

void writeCut(std::string_view text, size_t keptBytes, std::string& out) {
  out.assign(text.substr(0, keptBytes));
  out += kEllipsis;
}

std::optional<size_t> cutLength(std::string_view text, size_t atOrAbove, size_t keep) {
  // Fewer characters than the limit: unchanged. A limit of 0 cuts every text.
  if (atOrAbove > 0 && !hasMoreCodePointsThan(text, atOrAbove - 1)) return std::nullopt;
  // One walk over the kept characters; what follows them only has to be long enough. The walk
  // ends on a boundary, so the rest segments as it does within the whole text.
  const size_t kept = walkCharacters(text, keep).offset;
  if (atOrAbove > keep && !hasMoreCharactersThan(text.substr(kept), atOrAbove - 1 - keep)) {
    return std::nullopt;
  }
  if (atOrAbove <= keep && atOrAbove > 0 && !hasMoreCharactersThan(text, atOrAbove - 1)) {
    return std::nullopt;
  }
  return kept;
}

size_t utf16Length(std::string_view utf8) {
  size_t length = 0;
  size_t offset = 0;
  while (offset < utf8.size()) {
    UChar32 c;
    U8_NEXT_OR_FFFD(bytesOf(utf8), offset, utf8.size(), c);
    length += U16_LENGTH(c);
  }
  return length;
}

std::u16string toUTF16(std::string_view utf8) {
  std::u16string result;
  result.reserve(utf8.size());
  size_t offset = 0;
  while (offset < utf8.size()) {
    UChar32 c;
    U8_NEXT_OR_FFFD(bytesOf(utf8), offset, utf8.size(), c);
    if (U_IS_BMP(c)) {
      result.push_back(static_cast<char16_t>(c));
    } else {
      result.push_back(U16_LEAD(c));
      result.push_back(U16_TRAIL(c));
    }
  }
  return result;
}

std::string toUTF8(std::u16string_view utf16) {
  std::string result;
  result.reserve(utf16.size());
  size_t offset = 0;
  while (offset < utf16.size()) {
    UChar32 c;
    U16_NEXT_OR_FFFD(utf16.data(), offset, utf16.size(), c);
    uint8_t buffer[U8_MAX_LENGTH];
    size_t length = 0;
    U8_APPEND_UNSAFE(buffer, length, c);
    result.append(reinterpret_cast<const char*>(buffer), length);
  }
  return result;
}

int compareLocalizedCaseInsensitive(std::string_view a, std::string_view b) {
  // Collators are cheap to clone and not meant for unguarded sharing: one clone per thread.
  static const std::unique_ptr<icu::Collator> prototype = makeCaseInsensitiveCollator();
  thread_local const std::unique_ptr<icu::Collator> collator(prototype ? prototype->clone()
                                                                       : nullptr);
  if (collator != nullptr) {
    UErrorCode status = U_ZERO_ERROR;
    UCollationResult result =
        collator->compareUTF8(icu::StringPiece(a.data(), static_cast<int32_t>(a.size())),
                              icu::StringPiece(b.data(), static_cast<int32_t>(b.size())), status);
    if (U_SUCCESS(status)) return static_cast<int>(result);
  }
  std::string lowerA = lowercased(a);
  std::string lowerB = lowercased(b);
  return lowerA < lowerB ? -1 : (lowerA == lowerB ? 0 : 1);
}

}  // namespace zorvik
