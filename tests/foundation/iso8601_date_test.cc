#include "foundation/iso8601_date.h"

#include <gtest/gtest.h>

namespace zorvik {
namespace {

using namespace std::chrono;

Date utc(int y, unsigned mo, unsigned d, int h = 0, int mi = 0, int s = 0) {
  return sys_days(year(y) / month(mo) / day(d)) + hours(h) + minutes(mi) + seconds(s);
}

TEST(Iso8601DateTest, FormatsUtcWholeSecondsTruncatingTowardThePast) {
  EXPECT_EQ(formatISO8601(utc(1970, 1, 1)), "1970-01-01T00:00:00Z");
  EXPECT_EQ(formatISO8601(utc(2024, 2, 29, 23, 59, 59) + milliseconds(999)),
            "2024-02-29T23:59:59Z");
  EXPECT_EQ(formatISO8601(utc(1969, 12, 31, 23, 59, 59) + milliseconds(500)),
            "1969-12-31T23:59:59Z");
  EXPECT_EQ(formatISO8601(utc(2262, 1, 1, 1, 2, 3)), "2262-01-01T01:02:03Z");
  EXPECT_EQ(formatISO8601(utc(1700, 3, 1)), "1700-03-01T00:00:00Z");
}

TEST(Iso8601DateTest, ParsesZuluOffsetsAndFractions) {
  EXPECT_EQ(parseISO8601("2024-03-05T07:08:09Z"), utc(2024, 3, 5, 7, 8, 9));
  EXPECT_EQ(parseISO8601("2024-03-05T09:38:09+02:30"), utc(2024, 3, 5, 7, 8, 9));
  EXPECT_EQ(parseISO8601("2024-03-04T23:08:09-08:00"), utc(2024, 3, 5, 7, 8, 9));
  EXPECT_EQ(parseISO8601("2024-01-01T00:30:00+01:00"), utc(2023, 12, 31, 23, 30));
  EXPECT_EQ(parseISO8601("2024-03-05T07:08:09.5Z"), utc(2024, 3, 5, 7, 8, 9) + milliseconds(500));
  EXPECT_EQ(parseISO8601("2024-03-05T07:08:09.123456Z"),
            utc(2024, 3, 5, 7, 8, 9) + microseconds(123456));
  // Digits beyond the microsecond are accepted and dropped.
  EXPECT_EQ(parseISO8601("2024-03-05T07:08:09.1234567891234Z"),
            utc(2024, 3, 5, 7, 8, 9) + microseconds(123456));
  EXPECT_EQ(parseISO8601("2024-03-05T07:08:09.000+00:00"), utc(2024, 3, 5, 7, 8, 9));
  EXPECT_EQ(parseISO8601("2024-02-29T00:00:00Z"), utc(2024, 2, 29));
}

TEST(Iso8601DateTest, RoundTripsThroughText) {
  for (const Date date :
       {utc(2001, 9, 9, 1, 46, 40), utc(1900, 1, 1), utc(2100, 12, 31, 23, 59, 59)}) {
    EXPECT_EQ(parseISO8601(formatISO8601(date)), date);
  }
  const Date now = currentDate();
  const auto parsed = parseISO8601(formatISO8601(now));
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ(*parsed, floor<seconds>(now));
}

TEST(Iso8601DateTest, RejectsMalformedAndOutOfRangeText) {
  // Missing or extra parts, wrong separators or case, malformed fractions and offsets, fields out
  // of range (29 February 2023 included), and years a Date cannot hold.
  const char* const texts[] = {"2024-03-05",
                               "2024-03-05T07:08:09",
                               "2024-03-05 07:08:09Z",
                               "2024-03-05T07:08:09z",
                               "2024-03-05T07:08:09Z ",
                               "2024-3-05T07:08:09Z",
                               "2024-03-05T07:08Z",
                               "2024-03-05T07:08:09.Z",
                               "2024-03-05T07:08:09,5Z",
                               "2024-03-05T07:08:09+0200",
                               "2024-03-05T07:08:09+02",
                               "2024-03-05T07:08:09+24:00",
                               "2024-03-05T07:08:09+02:60",
                               "2024-13-05T07:08:09Z",
                               "2024-03-32T07:08:09Z",
                               "2023-02-29T07:08:09Z",
                               "2024-02-30T07:08:09Z",
                               "2024-04-31T07:08:09Z",
                               "2024-03-05T24:00:00Z",
                               "2024-03-05T07:60:09Z",
                               "2024-03-05T07:08:60Z",
                               "+2024-03-05T07:08:09Z",
                               "2024-03-05T07:08:-9Z",
                               "9999-12-31T23:59:59Z",
                               "1000-01-01T00:00:00Z"};
  for (const char* text : texts) {
    EXPECT_EQ(parseISO8601(text), std::nullopt) << text;
  }
  EXPECT_EQ(parseISO8601(""), std::nullopt);
}

}  // namespace
}  // namespace zorvik
