#include "cli/grep_chunk_matcher.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace zorvik {
namespace {

// Pieces whose mixtures stress the byte search: ASCII in both cases, accented and CJK text, and
// characters whose case folding yields ASCII (Kelvin sign, long s, sharp s, capital sharp s, the
// fi ligature, dotted capital I, n preceded by apostrophe, j with caron), plus a combining mark,
// an emoji and a line break.
std::vector<std::string> pieces() {
  std::vector<std::string> result;
  std::istringstream joined(
      "s|S|u|U|b|B|i|I|d|y|Y|k|K|t| |.|\n|sub|SUB|sidy|SiDy|\xC3\xA9|\xC3\x89|\xE3\x83\x87|"
      "\xE2\x84\xAA|\xC5\xBF|\xC3\x9F|\xE1\xBA\x9E|\xEF\xAC\x81|\xC4\xB0|\xC5\x89|\xC7\xB0|"
      "\xCC\x81|\xF0\x9F\x98\x80");
  for (std::string piece; std::getline(joined, piece, '|');) result.push_back(piece);
  return result;
}

TEST(GrepChunkMatcherTest, ByteSearchFindsWhatTheFoldedSearchFinds) {
  const std::vector<std::string> parts = pieces();
  const std::vector<std::string> queries = {"subsidy",
                                            "SUBSIDY",
                                            "s",
                                            "ss",
                                            "k",
                                            "fi",
                                            "si",
                                            "i",
                                            "\xC3\xA9",
                                            "\xC3\x89t",
                                            "\xC5\xBF",
                                            "Sub ",
                                            "\xE3\x83\x87s",
                                            "sss",
                                            "subSub"};
  std::mt19937 random(11);
  for (const std::string& query : queries) {
    for (const bool caseSensitive : {false, true}) {
      const GrepChunkMatcher fast(GrepMode::contains, query, caseSensitive);
      const GrepChunkMatcher reference(GrepMode::contains, query, caseSensitive, false);
      for (int round = 0; round < 400; ++round) {
        std::string text;
        const int length = std::uniform_int_distribution<int>(0, 30)(random);
        for (int i = 0; i < length; ++i) {
          text += parts[std::uniform_int_distribution<size_t>(0, parts.size() - 1)(random)];
        }
        for (const size_t limit : {size_t{1}, size_t{3}, size_t{100}}) {
          const std::vector<GrepMatchRange> expected = reference.find(text, limit);
          ASSERT_EQ(fast.find(text, limit), expected)
              << "query " << query << (caseSensitive ? " (case-sensitive)" : "") << " in " << text;
          ASSERT_EQ(fast.count(text, limit), expected.size()) << query << " in " << text;
        }
      }
    }
  }
}

TEST(GrepChunkMatcherTest, RangesCountUTF16Units) {
  const GrepChunkMatcher matcher(GrepMode::contains, "sub", false);
  // U+1F600 takes two units, U+00E9 one, ASCII one each.
  EXPECT_EQ(matcher.find("\xF0\x9F\x98\x80\xC3\xA9 SUBsub", 10),
            (std::vector<GrepMatchRange>{{4, 7}, {7, 10}}));
  // The Kelvin sign folds to k: "\u212Aey" matches "key" only through folding.
  const GrepChunkMatcher kelvin(GrepMode::contains, "key", false);
  EXPECT_EQ(kelvin.find("a \xE2\x84\xAA"
                        "ey",
                        10),
            (std::vector<GrepMatchRange>{{2, 5}}));
}

}  // namespace
}  // namespace zorvik
