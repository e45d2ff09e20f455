#include <gtest/gtest.h>

#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

using Toolkit = WorkspaceCardToolkit;

std::optional<WorkspaceCardRange> range(std::optional<int64_t> start, std::optional<int64_t> end) {
  return WorkspaceCardRange{start, end};
}

TEST(CardToolkitTruncate, CutsByUserPerceivedCharacters) {
  struct Case {
    std::string text;
    std::optional<int64_t> maxChars;
    std::string expected;
  };
  const std::string family = "👨‍👩‍👧";  // one cluster, many code points
  const std::vector<Case> cases = {
      {"0123456789", 10, "0123456789"},
      {"0123456789", 1, "…"},
      {"0123456789", 4, "012…"},
      {"0123456789", std::nullopt, "0123456789"},
      {"0123456789", 0, "0123456789"},
      {"0123456789", -3, "0123456789"},
      {family + family + family, 3, family + family + family},
      {family + family + family, 2, family + "…"},
      {"e\u0301e\u0301e\u0301", 2, "e\u0301…"},
      {"", 1, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Toolkit::truncate(c.text, c.maxChars), c.expected) << c.text << " / " << *c.maxChars;
  }
}

TEST(CardToolkitClampRange, FollowsTheClampingRules) {
  struct Case {
    int64_t total;
    std::optional<WorkspaceCardRange> range;
    std::optional<int64_t> maxCount;
    int64_t start;
    int64_t end;
  };
  const std::vector<Case> cases = {
      {0, range(1, 5), std::nullopt, 0, 0},      // empty data
      {-1, std::nullopt, std::nullopt, 0, 0},    //
      {10, std::nullopt, std::nullopt, 1, 10},   // no range: everything
      {10, std::nullopt, 3, 1, 3},               // ... capped
      {10, range(5, 2), std::nullopt, 2, 5},     // reversed ends swap
      {10, range(3, 0), std::nullopt, 1, 3},     // nonsense end: the first `start` items
      {10, range(30, -1), std::nullopt, 1, 10},  // ... within the data
      {10, range(-2, 4), std::nullopt, 1, 4},    // start below 1
      {10, range(0, 40), std::nullopt, 1, 10},   //
      {10, range(-2, -7), std::nullopt, 1, 1},   // both below 1
      {10, range(4, std::nullopt), std::nullopt, 4, 10},
      {10, range(std::nullopt, 6), std::nullopt, 1, 6},
      {10, range(8, 25), std::nullopt, 8, 10},    // clipped to total
      {10, range(12, 15), std::nullopt, 10, 10},  // past the end: the last item
      {10, range(2, 9), 3, 2, 4},                 // maxCount caps from the start
      {10, range(9, 10), 5, 9, 10},               //
      {10, range(2, 9), 0, 2, 9},                 // maxCount below 1 is ignored
      {10, range(2, 4), 3, 2, 4},                 // exactly maxCount long
  };
  for (const auto& c : cases) {
    const auto clamped = Toolkit::clampRange(c.total, c.range, c.maxCount);
    EXPECT_EQ(clamped, (WorkspaceCardRange{c.start, c.end}))
        << "total " << c.total << " range "
        << (c.range ? *c.range->encode().compactJSONString() : std::string("none"));
  }
}

TEST(CardToolkitSliceLines, SelectsLinesAfterNormalisingLineEnds) {
  const std::string text = "one\r\ntwo\nthree\r\nfour\nfive";
  auto slice = Toolkit::sliceLines(text, {range(2, 4), std::nullopt, std::nullopt});
  EXPECT_EQ(slice.text, "two\nthree\nfour");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{2, 4}));

  slice = Toolkit::sliceLines(text, {range(4, 1), 2, std::nullopt});
  EXPECT_EQ(slice.text, "one\ntwo");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{1, 2}));

  slice = Toolkit::sliceLines(text, {});
  EXPECT_EQ(slice.text, "one\ntwo\nthree\nfour\nfive");

  slice = Toolkit::sliceLines("", {range(1, 3), std::nullopt, std::nullopt});
  EXPECT_EQ(slice.text, "");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{0, 0}));
}

TEST(CardToolkitSliceMessages, LastNWinsOverMessageRange) {
  std::vector<WorkspaceChatMessage> messages;
  for (int i = 1; i <= 6; ++i) messages.push_back({"user", "m" + std::to_string(i)});
  auto texts = [](const WorkspaceCardMessageSlice& slice) {
    std::string joined;
    for (const auto& m : slice.messages) joined += m.text + ",";
    return joined;
  };

  auto slice = Toolkit::sliceMessages(messages, {range(1, 2), 2, std::nullopt});
  EXPECT_EQ(texts(slice), "m5,m6,");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{5, 6}));

  slice = Toolkit::sliceMessages(messages, {range(2, 3), 0, std::nullopt});
  EXPECT_EQ(texts(slice), "m2,m3,");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{2, 3}));

  slice = Toolkit::sliceMessages(messages, {std::nullopt, 50, std::nullopt});
  EXPECT_EQ(texts(slice), "m1,m2,m3,m4,m5,m6,");
  EXPECT_EQ(slice.range, (WorkspaceCardRange{1, 6}));

  slice = Toolkit::sliceMessages({}, {std::nullopt, 3, std::nullopt});
  EXPECT_TRUE(slice.messages.empty());
  EXPECT_EQ(slice.range, (WorkspaceCardRange{0, 0}));
}

TEST(CardToolkitSliceHTMLSource, PagesThroughAScriptWithNextStart) {
  const std::string script(5000, 'x');
  auto first = Toolkit::sliceHTMLSource(script, range(0, 1800), std::nullopt);
  EXPECT_EQ(first.text.size(), 1800u);
  EXPECT_EQ(first.window, (WorkspaceHTMLSourceWindow{0, 1800, 5000, true, 1800}));

  // Paging with next_start and a window size reaches the end without a next_start.
  int64_t start = 0;
  std::string collected;
  std::vector<int64_t> starts;
  while (true) {
    auto page = Toolkit::sliceHTMLSource(script, range(start, std::nullopt), 1800);
    collected += page.text;
    starts.push_back(page.window.start);
    if (!page.window.nextStart) {
      EXPECT_FALSE(page.window.truncated);
      EXPECT_EQ(page.window.end, 5000);
      break;
    }
    start = *page.window.nextStart;
  }
  EXPECT_EQ(collected, script);
  EXPECT_EQ(starts, (std::vector<int64_t>{0, 1800, 3600}));
}

TEST(CardToolkitSliceHTMLSource, CountsUTF16UnitsAndClipsOffsets) {
  // "é" is one unit, "😀" two.
  const std::string text = "aé😀b";
  auto slice = Toolkit::sliceHTMLSource(text, range(1, 4), std::nullopt);
  EXPECT_EQ(slice.text, "é😀");
  EXPECT_EQ(slice.window, (WorkspaceHTMLSourceWindow{1, 4, 5, true, 4}));

  slice = Toolkit::sliceHTMLSource(text, range(-4, 99), std::nullopt);
  EXPECT_EQ(slice.text, text);
  EXPECT_EQ(slice.window, (WorkspaceHTMLSourceWindow{0, 5, 5, false, std::nullopt}));

  slice = Toolkit::sliceHTMLSource(text, range(4, 2), std::nullopt);  // end clipped up to start
  EXPECT_EQ(slice.text, "");
  EXPECT_EQ(slice.window, (WorkspaceHTMLSourceWindow{4, 4, 5, true, 4}));

  slice = Toolkit::sliceHTMLSource(text, std::nullopt, 2);
  EXPECT_EQ(slice.text, "aé");
  EXPECT_EQ(slice.window.nextStart, 2);
}

TEST(CardToolkitMatchesQuery, ComparesTrimmedTextByMode) {
  using Mode = WorkspaceCardTableMatchMode;
  struct Case {
    std::string value, match;
    std::optional<Mode> mode;
    std::optional<bool> caseSensitive;
    bool expected;
  };
  const std::vector<Case> cases = {
      {"  Open ", "open", std::nullopt, std::nullopt, true},
      {"Open", "open", std::nullopt, true, false},
      {"Reopened", "open", std::nullopt, std::nullopt, false},
      {"Reopened", "OPEN", Mode::contains, std::nullopt, true},
      {"Reopened", "re", Mode::startsWith, std::nullopt, true},
      {"Reopened", "open", Mode::startsWith, std::nullopt, false},
      {"Reopened", "ENED ", Mode::endsWith, std::nullopt, true},
      {"Reopened", "ENED", Mode::endsWith, true, false},
      {"ПРИВЕТ", "привет", Mode::equals, std::nullopt, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Toolkit::matchesQuery(c.value, c.match, c.mode, c.caseSensitive), c.expected)
        << c.value << " ~ " << c.match;
  }
}

}  // namespace
}  // namespace zorvik
