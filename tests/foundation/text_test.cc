#include "foundation/text.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zorvik {
namespace {

// Combining marks, emoji sequences, flags and CR LF that each form a single character.
const std::string kEAcute = "e\u0301";                                     // e + combining acute
const std::string kFamily = "\U0001F468\u200D\U0001F469\u200D\U0001F467";  // ZWJ sequence
const std::string kFlag = "\U0001F1E9\U0001F1EA";                          // regional indicators
const std::string kThumbs = "\U0001F44D\U0001F3FD";                        // emoji + skin tone

TEST(TextTest, TrimsUnicodeWhiteSpaceOnlyAtTheEnds) {
  EXPECT_EQ(trimWhitespaceAndNewlines(" \t\r\n hello world \n\v\f"), "hello world");
  EXPECT_EQ(trimWhitespaceAndNewlines("\u00A0\u3000\u2028caf\u00E9\u2029\u00A0\u0085"),
            "caf\u00E9");
  EXPECT_EQ(trimWhitespaceAndNewlines("\u2003a\u00A0b\u2003"), "a\u00A0b");
  EXPECT_EQ(trimWhitespaceAndNewlines(" \u3000 \u2028"), "");
  EXPECT_EQ(trimWhitespaceAndNewlines(""), "");
  const std::string padded = "\u2003a b\n";
  EXPECT_EQ(trimmedView(padded), "a b");
  EXPECT_EQ(trimmedView(padded).data(), padded.data() + 3);  // a view into the text
  // Zero-width space is not White_Space; ill-formed bytes are kept as they are.
  EXPECT_EQ(trimWhitespaceAndNewlines("\u200Bx\u200B"), "\u200Bx\u200B");
  EXPECT_EQ(trimWhitespaceAndNewlines(" \xE2\x80 "), "\xE2\x80");
}

TEST(TextTest, LowercasesAsciiAndBeyond) {
  EXPECT_EQ(lowercased("Hello, WORLD 123"), "hello, world 123");
  EXPECT_EQ(lowercased("\u00C4\u00D6\u00DC Stra\u00DFe"), "\u00E4\u00F6\u00FC stra\u00DFe");
  EXPECT_EQ(lowercased("\u039A\u0391\u039B\u0397\u039C\u0395\u03A1\u0391"),
            "\u03BA\u03B1\u03BB\u03B7\u03BC\u03B5\u03C1\u03B1");
  // Locale-independent mapping: dotted capital I becomes i + combining dot, not Turkish i.
  EXPECT_EQ(lowercased("\u0130I"), "i\u0307i");
  // Final sigma depends on its neighbours; ill-formed bytes become U+FFFD.
  EXPECT_EQ(lowercased("\u00E9\u03A3A \u03A3"), "\u00E9\u03C3a \u03C3");
  EXPECT_EQ(lowercased("AB\u03A3 "), "ab\u03C2 ");
  EXPECT_EQ(lowercased("A\xFF"), "a\uFFFD");
}

// Every code point of the BMP and of the cased blocks beyond it, among ASCII capitals, alone and
// before a capital sigma, lower-cases as ICU lower-cases the whole text.
TEST(TextTest, LowercasingAgreesWithICUOnEveryCodePoint) {
  const auto reference = [](const std::string& text) {
    icu::UnicodeString unicode = icu::UnicodeString::fromUTF8(text);
    unicode.toLower(icu::Locale::getRoot());
    std::string lower;
    return unicode.toUTF8String(lower);
  };
  for (const auto& [first, last] : {std::pair{0x80, 0xFFFF}, std::pair{0x10400, 0x1044F},
                                    std::pair{0x16E40, 0x16E7F}, std::pair{0x1E900, 0x1E95F}}) {
    for (UChar32 c = first; c <= last; ++c) {
      if (U_IS_SURROGATE(c)) continue;
      uint8_t buffer[U8_MAX_LENGTH];
      size_t length = 0;
      U8_APPEND_UNSAFE(buffer, length, c);
      const std::string text = "Ab" + std::string(reinterpret_cast<const char*>(buffer), length);
      for (const char* tail : {"Z", "Z\u03A3"}) {
        ASSERT_EQ(lowercased(text + tail), reference(text + tail)) << std::hex << c;
      }
    }
  }
}

TEST(TextTest, DetectsIllFormedUTF8) {
  EXPECT_TRUE(isValidUTF8(""));
  EXPECT_TRUE(isValidUTF8("plain \u00E9 \u20AC \U0001F600"));
  EXPECT_TRUE(isValidUTF8("\xF4\x8F\xBF\xBF"));   // U+10FFFF
  EXPECT_FALSE(isValidUTF8("\xC0\xAF"));          // overlong "/"
  EXPECT_FALSE(isValidUTF8("\xE0\x80\xAF"));      // overlong three-byte
  EXPECT_FALSE(isValidUTF8("\xED\xA0\x80"));      // surrogate U+D800
  EXPECT_FALSE(isValidUTF8("\xED\xBF\xBF"));      // surrogate U+DFFF
  EXPECT_FALSE(isValidUTF8("\xF4\x90\x80\x80"));  // beyond U+10FFFF
  EXPECT_FALSE(isValidUTF8("ok\xE2\x82"));        // truncated at the end
  EXPECT_FALSE(isValidUTF8("\xE2\x82 ok"));       // truncated in the middle
  EXPECT_FALSE(isValidUTF8("\x80"));              // lone continuation byte
  EXPECT_FALSE(isValidUTF8("\xFF"));
}

TEST(TextTest, CountsUserPerceivedCharacters) {
  EXPECT_EQ(characterCount(""), 0u);
  EXPECT_EQ(characterCount("hello"), 5u);
  EXPECT_EQ(characterCount("a\r\nb"), 3u);  // CR LF is one character
  EXPECT_EQ(characterCount("a\n\rb"), 4u);
  EXPECT_EQ(characterCount(kEAcute), 1u);
  EXPECT_EQ(characterCount("a\u0301\u0302\u0323b"), 2u);
  EXPECT_EQ(characterCount(kFamily), 1u);
  EXPECT_EQ(characterCount(kFlag + kFlag), 2u);
  EXPECT_EQ(characterCount(kThumbs + "!"), 2u);
  EXPECT_EQ(characterCount("\uD55C\uAD6D\uC5B4"), 3u);  // precomposed Hangul
  EXPECT_EQ(characterCount("\u1100\u1161\u11A8"), 1u);  // conjoining jamo
}

TEST(TextTest, PrefixesNeverSplitAClusterOrSequence) {
  EXPECT_EQ(prefixCharacters("hello", 3), "hel");
  EXPECT_EQ(prefixCharacters("hello", 0), "");
  EXPECT_EQ(prefixCharacters("hello", 99), "hello");
  EXPECT_EQ(prefixCharacters("a\r\nb", 2), "a\r\n");
  EXPECT_EQ(prefixCharacters(kEAcute + kEAcute + "x", 1), kEAcute);
  EXPECT_EQ(prefixCharacters(kFamily + kFlag + kFlag, 2), kFamily + kFlag);
  EXPECT_EQ(prefixCharacters("\u00E9t\u00E9", 2), "\u00E9t");
}

TEST(TextTest, CutsAtAndAboveTheLimitOnly) {
  const std::string nine = "123456789";
  EXPECT_EQ(cutText(nine, 10), nine);            // below
  EXPECT_EQ(cutText(nine, 9), "1234567\u2026");  // at the limit: keeps limit - 2
  EXPECT_EQ(cutText(nine, 5), "123\u2026");      // above
  EXPECT_EQ(cutText(nine, 9, 4), "1234\u2026");
  EXPECT_EQ(cutText(nine, 10, 4), nine);
  EXPECT_EQ(cutText("", 0, 0), "\u2026");
  EXPECT_EQ(cutText("ab", 1), "\u2026");

  // Clusters count as one character on both sides of the cut.
  const std::string clusters = kFamily + kEAcute + kFlag + "a\r\n" + kThumbs;
  ASSERT_EQ(characterCount(clusters), 6u);
  EXPECT_EQ(cutText(clusters, 7), clusters);
  EXPECT_EQ(cutText(clusters, 6), kFamily + kEAcute + kFlag + "a\u2026");
  EXPECT_EQ(cutText(clusters, 6, 3), kFamily + kEAcute + kFlag + "\u2026");
  EXPECT_EQ(cutText(clusters, 5, 1), kFamily + "\u2026");
  for (size_t keep = 0; keep <= 6; ++keep) {
    EXPECT_TRUE(isValidUTF8(cutText(clusters, 1, keep))) << keep;
  }

  // cutLength says where cutText cuts, and nothing when it does not.
  EXPECT_EQ(cutLength(nine, 10, 8), std::nullopt);
  EXPECT_EQ(cutLength(nine, 9, 4), 4u);
  EXPECT_EQ(cutLength(clusters, 6, 3), (kFamily + kEAcute + kFlag).size());
  EXPECT_EQ(cutLength(clusters, 7, 5), std::nullopt);
}

TEST(TextTest, ConvertsBetweenUTF8AndUTF16) {
  const std::string text = "a\u00E9\u20AC\U0001F600";
  const std::u16string expected = u"a\u00E9\u20AC\U0001F600";
  EXPECT_EQ(toUTF16(text), expected);
  EXPECT_EQ(utf16Length(text), 5u);
  EXPECT_EQ(toUTF8(expected), text);
  EXPECT_EQ(utf16Length(""), 0u);
  // Ill-formed input becomes U+FFFD, and the length agrees with the conversion.
  EXPECT_EQ(toUTF16("a\xE2\x82"
                    "b"),
            u"a\uFFFDb");
  EXPECT_EQ(utf16Length("a\xE2\x82"
                        "b"),
            3u);
  EXPECT_EQ(toUTF8(std::u16string(1, char16_t(0xD800)) + u"x"), "\uFFFDx");
}

TEST(TextTest, ComparesIgnoringCaseButNotAccents) {
  EXPECT_EQ(compareLocalizedCaseInsensitive("apple", "APPLE"), 0);
  EXPECT_EQ(compareLocalizedCaseInsensitive("\u00C4rger", "\u00E4RGER"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("apple", "Banana"), 0);
  EXPECT_GT(compareLocalizedCaseInsensitive("Banana", "apple"), 0);
  EXPECT_NE(compareLocalizedCaseInsensitive("resume", "r\u00E9sum\u00E9"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("\u00E9clair", "f"), 0);

  std::vector<std::thread> threads;
  std::vector<int> results(4, -1);
  for (size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&results, i] {
      int sum = 0;
      for (int n = 0; n < 200; ++n) sum += compareLocalizedCaseInsensitive("Zebra", "zEBRA");
      results[i] = sum;
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(results, std::vector<int>(4, 0));
}

// Cluster count by ICU alone, as the reference for the ASCII fast paths.
size_t referenceCharacterCount(const std::string& text) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  UText utext = UTEXT_INITIALIZER;
  utext_openUTF8(&utext, text.data(), static_cast<int64_t>(text.size()), &status);
  iterator->setText(&utext, status);
  size_t count = 0;
  for (iterator->first(); iterator->next() != icu::BreakIterator::DONE;) ++count;
  utext_close(&utext);
  return count;
}

// Every code point of the blocks whose class is settled without ICU, and of their neighbours,
// alone and before a combining mark, a joiner and a spacing mark.
TEST(TextTest, CharacterWalksAgreeWithPlainSegmentationOnCommonLetters) {
  for (const auto& [first, last] :
       {std::pair{0x80, 0x36F}, std::pair{0x3000, 0x3100}, std::pair{0x4DF0, 0xA00F}}) {
    for (const char* follower : {"a", "\xCC\x81", "\xE2\x80\x8D", "\xE0\xA4\xBE"}) {
      std::string text;
      for (UChar32 c = first; c <= last; ++c) {
        uint8_t buffer[U8_MAX_LENGTH];
        size_t length = 0;
        U8_APPEND_UNSAFE(buffer, length, c);
        text.append(reinterpret_cast<const char*>(buffer), length);
        text += follower;
      }
      ASSERT_EQ(characterCount(text), referenceCharacterCount(text)) << std::hex << first;
    }
  }
}

TEST(TextTest, CharacterWalksAgreeWithPlainSegmentationOnMixedText) {
  // ASCII, CR LF, combining acute, ZWJ, woman, two regional indicators, an Arabic prepend mark,
  // Hangul L and V jamo, precomposed letters and a skin tone modifier, and more below.
  std::vector<std::string> pieces;
  std::istringstream joined(
      "a|Z| |1|\r|\n|\r\n|\xCC\x81|\xE2\x80\x8D|\xF0\x9F\x91\xA9|\xF0\x9F\x87\xA9|\xF0\x9F\x87\xAA|"
      "\xD8\x80|\xE1\x84\x80|\xE1\x85\xA1|\xC3\xA9|\xE3\x83\x87|\xF0\x9F\x8F\xBD|"
      // A control, Devanagari KA and its spacing vowel sign, Hangul LV and T, a heart and a
      // variation selector, Thai SARA AM, a stray continuation byte.
      "\x01|\xE0\xA4\x95|\xE0\xA4\xBE|\xEA\xB0\x80|\xE1\x86\xA8|\xE2\x9D\xA4|\xEF\xB8\x8F|"
      "\xE0\xB8\xB3|\x80");
  for (std::string piece; std::getline(joined, piece, '|');) pieces.push_back(piece);
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    const int length = std::uniform_int_distribution<int>(0, 24)(random);
    for (int i = 0; i < length; ++i) {
      text += pieces[std::uniform_int_distribution<size_t>(0, pieces.size() - 1)(random)];
    }
    const size_t expected = referenceCharacterCount(text);
    ASSERT_EQ(characterCount(text), expected) << text;
    for (size_t limit : {size_t{0}, size_t{1}, expected / 2, expected}) {
      ASSERT_EQ(hasMoreCharactersThan(text, limit), expected > limit) << text;
      const std::string prefix = prefixCharacters(text, limit);
      ASSERT_EQ(referenceCharacterCount(prefix), std::min(limit, expected)) << text;
      ASSERT_TRUE(text.starts_with(prefix));
      if (limit > 0) {
        const std::string cut =
            expected > limit ? prefixCharacters(text, limit - 1) + "\u2026" : text;
        ASSERT_EQ(cutText(text, limit + 1, limit - 1), cut) << text;
        ASSERT_EQ(cutText(text, limit, limit), expected >= limit ? prefix + "\u2026" : text)
            << text;
      }
    }
  }
}

}  // namespace
}  // namespace zorvik
