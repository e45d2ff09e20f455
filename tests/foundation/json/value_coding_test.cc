#include <gtest/gtest.h>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {
namespace {

enum class Shade { light, dark };

}  // namespace

template <>
struct EnumRawValues<Shade> {
  static constexpr std::string_view typeName = "Shade";
  static constexpr std::array table{std::pair{Shade::light, std::string_view("light")},
                                    std::pair{Shade::dark, std::string_view("dark")}};
};

namespace {

struct Pin {
  double x = 0;
  std::optional<std::string> label;

  static Pin decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<double>("x"), object.optionalAny<std::string>({"label", "title"})};
  }
  AnyCodableValue encode() const { return ObjectEncoder().add("x", x).add("label", label).build(); }
  bool operator==(const Pin&) const = default;
};

struct Board {
  Uuid id;
  Date createdAt;
  int32_t count = 0;
  Shade shade = Shade::light;
  std::vector<Pin> pins;
  std::map<std::string, double> zoom;
  std::optional<Uuid> parent;
  AnyCodableValue payload;

  static Board decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<Uuid>("id"),
            object.required<Date>("createdAt"),
            object.value<int32_t>("count", 7),
            object.required<Shade>("shade"),
            object.required<std::vector<Pin>>("pins"),
            object.value<std::map<std::string, double>>("zoom", {}),
            object.optional<Uuid>("parent"),
            object.required<AnyCodableValue>("payload")};
  }
  AnyCodableValue encode() const {
    return ObjectEncoder()
        .add("id", id)
        .add("createdAt", createdAt)
        .add("count", count)
        .add("shade", shade)
        .add("pins", pins)
        .add("zoom", zoom)
        .addNullable("parent", parent)
        .add("payload", payload)
        .build();
  }
  bool operator==(const Board&) const = default;
};

constexpr const char* kBoardJSON = R"({
  "id": "0f8fad5b-d9cb-469f-a165-70867728950e",
  "createdAt": "2026-01-02T03:04:05Z",
  "shade": "dark",
  "pins": [{"x": 1.5, "title": "first"}, {"x": 2}],
  "zoom": {"root": 1.25},
  "parent": null,
  "payload": null
})";

TEST(ValueCodingTest, DecodesTolerantlyAndEncodesOneSpelling) {
  const Board board = decodeValue<Board>(AnyCodableValue::parse(kBoardJSON));
  EXPECT_EQ(board.id.uppercaseString(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
  EXPECT_EQ(board.count, 7);
  EXPECT_EQ(board.shade, Shade::dark);
  ASSERT_EQ(board.pins.size(), 2u);
  EXPECT_EQ(board.pins[0].label, "first");
  EXPECT_EQ(board.pins[1].label, std::nullopt);
  EXPECT_EQ(board.parent, std::nullopt);
  EXPECT_TRUE(board.payload.isNull());

  const AnyCodableValue encoded = encodeValue(board);
  EXPECT_EQ(*encoded.compactJSONString(),
            "{\"count\":7,\"createdAt\":\"2026-01-02T03:04:05Z\","
            "\"id\":\"0F8FAD5B-D9CB-469F-A165-70867728950E\",\"parent\":null,\"payload\":null,"
            "\"pins\":[{\"label\":\"first\",\"x\":1.5},{\"x\":2}],\"shade\":\"dark\","
            "\"zoom\":{\"root\":1.25}}");
  EXPECT_EQ(decodeValue<Board>(encoded), board);
}

// The message of the DecodingError that decoding `value` as T throws.
template <class T>
std::string failureOf(const AnyCodableValue& value) {
  try {
    decodeValue<T>(value);
  } catch (const DecodingError& error) {
    return error.what();
  }
  return "decoded";
}

// One damaged document and the sentence its decoding error reads as.
struct FailureCase {
  std::string patchKey;    // top-level key to replace ("" for none)
  std::string patchValue;  // JSON text of its new value ("" removes the key)
  std::string expected;
};

TEST(ValueCodingTest, FailuresNameTheirPathAndCause) {
  const std::vector<FailureCase> cases = {
      {"shade", "", "Missing required key 'shade'."},
      {"pins", R"([{"x":1},{"label":"a"}])", "Missing required key at pins.[1].x."},
      {"pins", R"([{"x":"one"}])",
       "Type mismatch at pins.[0].x for Double: Expected to decode Double but found a string "
       "instead."},
      {"pins", R"({"x":1})",
       "Type mismatch at pins for Array<Any>: Expected to decode Array<Any> but found a "
       "dictionary instead."},
      {"pins", "[null]",
       "Missing value at pins.[0] for Pin: Expected Pin value but found null instead."},
      {"shade", "null",
       "Missing value at shade for Shade: Expected Shade value but found null instead."},
      {"shade", "\"grey\"", "Cannot initialize Shade from invalid String value grey at shade"},
      {"id", "\"not-a-uuid\"", "Attempted to decode UUID from invalid UUID string. at id"},
      {"createdAt", "\"yesterday\"", "Expected date string to be ISO8601-formatted. at createdAt"},
      {"count", "3.5", "Parsed JSON number <3.5> does not fit in Int. at count"},
      {"count", "4294967296", "Parsed JSON number <4294967296> does not fit in Int. at count"},
      {"zoom", R"({"root":"x"})",
       "Type mismatch at zoom.root for Double: Expected to decode Double but found a string "
       "instead."},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.expected);
    AnyCodableValue document = AnyCodableValue::parse(kBoardJSON);
    if (test.patchValue.empty()) {
      document.asObject()->erase(test.patchKey);
    } else {
      document.asObject()->set(test.patchKey, AnyCodableValue::parse(test.patchValue));
    }
    EXPECT_EQ(failureOf<Board>(document), test.expected);
  }
}

// Long arrays are parsed and decoded on several threads: order and the first failure must be
// what a plain loop gives.
TEST(ValueCodingTest, LongArraysKeepOrderAndReportTheirFirstFailure) {
  std::string pins = "[";
  for (int i = 0; i < 5000; ++i) {
    if (i) pins += ",";
    pins += i == 3000 || i == 4500 ? R"({"label":"bad"})" : "{\"x\":" + std::to_string(i) + "}";
  }
  pins += "]";
  const AnyCodableValue parsed = AnyCodableValue::parse(pins);
  ASSERT_EQ(parsed.asArray()->size(), 5000u);
  for (int round = 0; round < 10; ++round) {
    EXPECT_EQ(failureOf<std::vector<Pin>>(parsed), "Missing required key at [3000].x.");
  }
  AnyCodableValue::Array repaired = *parsed.asArray();
  repaired[3000] = AnyCodableValue::parse(R"({"x":3000})");
  repaired[4500] = AnyCodableValue::parse(R"({"x":4500})");
  const std::vector<Pin> decoded = decodeValue<std::vector<Pin>>(AnyCodableValue(repaired));
  ASSERT_EQ(decoded.size(), 5000u);
  for (int i = 0; i < 5000; ++i) ASSERT_EQ(decoded[i].x, i);
}

TEST(ValueCodingTest, StringArraysAndRootMismatchesNameTheirFailure) {
  EXPECT_EQ(decodeValue<std::vector<std::string>>(AnyCodableValue::parse(R"(["a","","b"])")),
            (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(failureOf<std::vector<std::string>>(AnyCodableValue::parse(R"(["a",3,null])")),
            "Type mismatch at [1] for String: Expected to decode String but found a number "
            "instead.");
  // A mismatch at the root has no path.
  EXPECT_EQ(failureOf<Pin>(AnyCodableValue::parse("[1]")),
            "Type mismatch for Dictionary<String, Any>: Expected to decode Dictionary<String, "
            "Any> but found an array instead.");
}

}  // namespace
}  // namespace zorvik
