#include "foundation/uuid.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

namespace zorvik {
namespace {

TEST(UuidTest, ParsesCanonicalFormInAnyCase) {
  const auto lower = Uuid::parse("f81d4fae-7dec-11d0-a765-00a0c91e6bf6");
  const auto upper = Uuid::parse("F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6");
  const auto mixed = Uuid::parse("f81D4FaE-7dEc-11d0-A765-00a0C91e6bF6");
  ASSERT_TRUE(lower && upper && mixed);
  EXPECT_EQ(*lower, *upper);
  EXPECT_EQ(*lower, *mixed);
  EXPECT_EQ(lower->bytes()[0], 0xf8);
  EXPECT_EQ(lower->bytes()[15], 0xf6);
  EXPECT_EQ(mixed->uppercaseString(), "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6");
  EXPECT_EQ(mixed->lowercaseString(), "f81d4fae-7dec-11d0-a765-00a0c91e6bf6");
  EXPECT_EQ(Uuid::parse("00000000-0000-0000-0000-000000000000"), Uuid());
}

TEST(UuidTest, RejectsEverythingButTheCanonicalForm) {
  // No dashes, braces, URN prefix, short, long, non-hex, misplaced dash, stray characters.
  for (const char* text :
       {"", "f81d4fae7dec11d0a76500a0c91e6bf6", "{f81d4fae-7dec-11d0-a765-00a0c91e6bf6}",
        "urn:uuid:f81d4fae-7dec-11d0-a765-00a0c91e6bf6", "f81d4fae-7dec-11d0-a765-00a0c91e6bf",
        "f81d4fae-7dec-11d0-a765-00a0c91e6bf66", "f81d4fae-7dec-11d0-a765-00a0c91e6bfg",
        "f81d4fae-7dec-11d0-a76500-a0c91e6bf6", "f81d4fae-7dec-11d0-a765 00a0c91e6bf6",
        " f81d4fae-7dec-11d0-a765-00a0c91e6bf6", "+81d4fae-7dec-11d0-a765-00a0c91e6bf6"}) {
    EXPECT_EQ(Uuid::parse(text), std::nullopt) << text;
  }
}

TEST(UuidTest, RandomIsVersion4WithTheRfcVariant) {
  std::set<Uuid> seen;
  for (int i = 0; i < 200; ++i) {
    const Uuid uuid = Uuid::random();
    EXPECT_EQ(uuid.bytes()[6] >> 4, 4);
    EXPECT_EQ(uuid.bytes()[8] & 0xc0, 0x80);
    const std::string text = uuid.lowercaseString();
    EXPECT_EQ(text[14], '4');
    EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos);
    EXPECT_EQ(Uuid::parse(uuid.uppercaseString()), uuid);
    seen.insert(uuid);
  }
  EXPECT_EQ(seen.size(), 200u);
}

TEST(UuidTest, OrdersByBytesAndHashes) {
  const Uuid a = *Uuid::parse("00000000-0000-0000-0000-0000000000ff");
  const Uuid b = *Uuid::parse("00000000-0000-0000-0001-000000000000");
  EXPECT_LT(a, b);
  EXPECT_GT(b, a);
  std::unordered_set<Uuid> set{a, b, a};
  EXPECT_EQ(set.size(), 2u);
  EXPECT_EQ(std::hash<Uuid>{}(a), std::hash<Uuid>{}(*Uuid::parse(a.uppercaseString())));
}

}  // namespace
}  // namespace zorvik
