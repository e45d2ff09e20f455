#include "foundation/standardized_path.h"

#include <gtest/gtest.h>

namespace zorvik {
namespace {

TEST(StandardizedJoinTest, GivesWhatNormalisingTheJoinedPathGives) {
  struct Case {
    const char* root;
    const char* relative;
    const char* expected;
  };
  const Case cases[] = {
      {"/board", "notes/a.md", "/board/notes/a.md"},
      {"/", "a.md", "/a.md"},
      {"/board", "a/./b.md", "/board/a/b.md"},
      {"/board", "a/../b.md", "/board/b.md"},
      {"/board", "../outside.md", "/outside.md"},
      {"/board", "a//b.md", "/board/a/b.md"},
      {"/board", "folder/", "/board/folder"},
      {"/board", "/etc/passwd", "/etc/passwd"},
      {"/board", "..", "/"},
      {"/board", ".hidden/..md", "/board/.hidden/..md"},
      {"/board", "a\\..\\b.md", "/board/a\\..\\b.md"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(standardizedJoin(c.root, c.relative).native(), c.expected) << c.relative;
    EXPECT_EQ(standardizedJoin(c.root, c.relative),
              standardizedPath(std::filesystem::path(c.root) / c.relative))
        << c.relative;
  }
}

TEST(IsSameOrBelowTest, ComparesWholeComponents) {
  EXPECT_TRUE(isSameOrBelow("/board", "/board"));
  EXPECT_TRUE(isSameOrBelow("/board/a/b", "/board"));
  EXPECT_TRUE(isSameOrBelow("/board/a", "/board/"));
  EXPECT_FALSE(isSameOrBelow("/boardroom/a", "/board"));
  EXPECT_FALSE(isSameOrBelow("/", "/board"));
}

}  // namespace
}  // namespace zorvik
