// Unicode text helpers over UTF-8 strings.
//
// "Characters" are user-perceived characters (extended grapheme clusters); runs of ASCII without
// CR take a fast path where one byte is one character. Cuts never split a UTF-8 sequence
// or a cluster. Ill-formed UTF-8 is tolerated: each ill-formed sequence counts as one U+FFFD and is
// replaced by U+FFFD wherever text is converted. All functions are thread-safe.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

// Strips Unicode White_Space (which includes line and paragraph separators) from both ends. The
// view form returns the part of `text` that remains.
std::string trimWhitespaceAndNewlines(std::string_view text);
std::string_view trimmedView(std::string_view text);

// Unicode default (locale-independent) lower-case mapping.
std::string lowercased(std::string_view text);

// True when the text is well-formed UTF-8 (no overlong forms, surrogates or truncated sequences).
bool isValidUTF8(std::string_view text);

bool isASCII(std::string_view text);

size_t characterCount(std::string_view text);
// Whether `text` has more than `limit` characters. Stops counting past the limit, and settles
// most texts by their byte or code point count without segmenting them at all.
bool hasMoreCharactersThan(std::string_view text, size_t limit);

// The first `count` characters, or the whole text when it has fewer.
std::string prefixCharacters(std::string_view text, size_t count);

// The system's text cut: a text of at least `atOrAbove` characters keeps its first `keep`
// characters and gets "…" appended; shorter text is returned unchanged. The two-argument form keeps
// atOrAbove - 2 characters (0 when atOrAbove < 2).
std::string cutText(std::string_view text, size_t atOrAbove);
std::string cutText(std::string_view text, size_t atOrAbove, size_t keep);
// Where cutText(text, atOrAbove, keep) cuts: the byte length of the kept characters, or nullopt
// when the text stays unchanged.
std::optional<size_t> cutLength(std::string_view text, size_t atOrAbove, size_t keep);
// Writes the cut text into `out`, replacing what it held: the first `keptBytes` bytes of `text`
// (a length from cutLength) and "…".
void writeCut(std::string_view text, size_t keptBytes, std::string& out);

// Number of UTF-16 code units of the text's conversion by toUTF16.
size_t utf16Length(std::string_view utf8);
std::u16string toUTF16(std::string_view utf8);
std::string toUTF8(std::u16string_view utf16);

// Compares for the default locale, ignoring case (collation at secondary strength); returns <0, 0
// or >0. The POSIX/C locale, whose collation orders by code point, uses the root collation instead.
int compareLocalizedCaseInsensitive(std::string_view a, std::string_view b);

}  // namespace zorvik
