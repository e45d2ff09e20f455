#include "foundation/json/any_codable_value.h"

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/domain_error.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/json_writer.h"

namespace zorvik {
namespace {

using Kind = AnyCodableValue::Kind;

// One JSON text, the kind it parses to, and its compact rewrite.
struct RoundTripCase {
  std::string input;
  Kind kind;
  std::string compact;
};

TEST(AnyCodableValueTest, ParsesAndRewritesEveryForm) {
  const std::vector<RoundTripCase> cases = {
      {"null", Kind::null, "null"},
      {"true", Kind::boolean, "true"},
      {"3", Kind::integer, "3"},
      {"-0", Kind::integer, "0"},
      {"3.25", Kind::number, "3.25"},
      {"2.0", Kind::integer, "2"},
      {"1e2", Kind::integer, "100"},
      {"0.1", Kind::number, "0.1"},
      {"1e300", Kind::number, "1e+300"},
      {"18446744073709551615", Kind::number, "18446744073709551616"},
      {"-9223372036854775808", Kind::integer, "-9223372036854775808"},
      {"[123456789012345678901234567890, \"99999999999999999999999\"]", Kind::array,
       "[1.2345678901234568e+29,\"99999999999999999999999\"]"},
      {"\"a/b\"", Kind::string, "\"a\\/b\""},
      {"\"\\u00e9\\ud83d\\ude00\"", Kind::string, "\"\xC3\xA9\xF0\x9F\x98\x80\""},
      {"\"\\u0001\\t\\n\\\"\\\\\"", Kind::string, "\"\\u0001\\t\\n\\\"\\\\\""},
      {"[]", Kind::array, "[]"},
      {" [1, [2, {}], \"x\"] ", Kind::array, "[1,[2,{}],\"x\"]"},
      {"{\"b\":1,\"a\":{\"d\":[],\"c\":null}}", Kind::object,
       "{\"a\":{\"c\":null,\"d\":[]},\"b\":1}"},
      {"{\"k\":1,\"k\":2}", Kind::object, "{\"k\":2}"},
      // Keys sort by UTF-8 bytes: upper case before lower case, non-ASCII last.
      {"{\"\xC3\xA9\":1,\"b\":2,\"B\":3}", Kind::object, "{\"B\":3,\"b\":2,\"\xC3\xA9\":1}"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.input);
    const AnyCodableValue value = AnyCodableValue::parse(test.input);
    EXPECT_EQ(value.kind(), test.kind);
    EXPECT_EQ(value.compactJSONString(), test.compact);
    EXPECT_EQ(AnyCodableValue::parse(*value.compactJSONString()), value);
  }
}

TEST(AnyCodableValueTest, RejectsMalformedJSONAsCorruptedData) {
  for (std::string text : {"", "{", "[1,]", "{\"a\" 1}", "tru", "01", "\"\\x\"", "[1] 2", "NaN",
                           "{'a':1}", "\"unterminated"}) {
    SCOPED_TRACE(text);
    try {
      AnyCodableValue::parse(text);
      FAIL() << "parsed";
    } catch (const DecodingError& error) {
      EXPECT_EQ(error.kind(), DecodingError::Kind::dataCorrupted);
      EXPECT_TRUE(std::string(error.what()).starts_with("The given data was not valid JSON"));
    }
  }
}

TEST(AnyCodableValueTest, RejectsTextThatIsNotUTF8) {
  try {
    AnyCodableValue::parse("{\"a\":\"\xC3\x28\"}");
    FAIL() << "parsed";
  } catch (const DomainError& error) {
    EXPECT_EQ(error.domain(), "AnyCodableValue");
    EXPECT_EQ(error.code(), 1);
    EXPECT_STREQ(error.what(), "Invalid UTF-8 string");
  }
}

TEST(AnyCodableValueTest, PrettyFormIndentsByTwoWithSpacedColons) {
  const AnyCodableValue value(JSONObject{
      {"z", AnyCodableValue::Array{1, JSONObject{}}},
      {"a", JSONObject{{"k", "v"}}},
      {"e", AnyCodableValue::Array{}},
  });
  EXPECT_EQ(*value.jsonString(),
            "{\n  \"a\" : {\n    \"k\" : \"v\"\n  },\n  \"e\" : [],\n"
            "  \"z\" : [\n    1,\n    {}\n  ]\n}");
}

TEST(AnyCodableValueTest, WriterHandlesNumbersAndBadText) {
  EXPECT_EQ(writeJSON(AnyCodableValue(2.0), JSONStyle::compact), "2");
  EXPECT_EQ(writeJSON(AnyCodableValue(-1.5e-7), JSONStyle::compact), "-1.5e-07");
  EXPECT_EQ(writeJSON(AnyCodableValue(0.30000000000000004), JSONStyle::compact),
            "0.30000000000000004");
  EXPECT_EQ(writeJSON(AnyCodableValue(std::nan("")), JSONStyle::compact), std::nullopt);
  EXPECT_EQ(AnyCodableValue(JSONObject{{"x", 1.0 / 0.0}}).jsonString(), std::nullopt);
  // Invalid UTF-8 inside a string comes out as U+FFFD, so the output is always valid JSON.
  EXPECT_EQ(writeJSON(AnyCodableValue(std::string("a\xFF"
                                                  "b\xE2\x82")),
                      JSONStyle::compact),
            "\"a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD\"");
}

TEST(AnyCodableValueTest, ObjectsKeepUniqueSortedKeysUnderMutation) {
  JSONObject object{{"b", 1}, {"a", 2}};
  object.set("c", 3);
  object.set("a", "replaced");
  EXPECT_TRUE(object.erase("b"));
  EXPECT_FALSE(object.erase("missing"));
  EXPECT_EQ(AnyCodableValue(object).compactJSONString(), "{\"a\":\"replaced\",\"c\":3}");
  EXPECT_EQ(object, (JSONObject{{"c", 3}, {"a", "replaced"}}));
  EXPECT_EQ(AnyCodableValue(object).member("c")->asInt() != nullptr, true);
  EXPECT_EQ(AnyCodableValue(3).member("c"), nullptr);
}

TEST(AnyCodableValueTest, NumberNormalisesIntegralDoubles) {
  EXPECT_EQ(AnyCodableValue::number(200.0).kind(), Kind::integer);
  EXPECT_EQ(AnyCodableValue::number(200.5).kind(), Kind::number);
  EXPECT_EQ(AnyCodableValue::number(9.3e18).kind(), Kind::number);
  EXPECT_EQ(AnyCodableValue::number(-9223372036854775808.0).kind(), Kind::integer);
  EXPECT_NE(AnyCodableValue(2), AnyCodableValue(2.0));
}

}  // namespace
}  // namespace zorvik
