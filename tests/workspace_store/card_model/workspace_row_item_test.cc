#include "workspace_store/card_model/workspace_row_item.h"

#include <gtest/gtest.h>

#include "card_model_test_support.h"
#include "foundation/json/decoding_error.h"

namespace zorvik {
namespace {

using testing::compactJSON;
using testing::decodeJSON;
using testing::decodingError;

struct RowDecodingCase {
  std::string json;
  std::string type;
  std::string displayValue;
};

TEST(WorkspaceRowItemTest, DecodesNestingsValueAndTypeInference) {
  const std::vector<RowDecodingCase> cases = {
      // A bare string value stands for a key-value payload.
      {R"({"label":"Price","value":"3"})", "key_value", "3"},
      // The type is normalised; the payload comes from `content`.
      {R"({"label":"x","type":"Expandable-List","content":{"expandableList":{"items":["a"]}}})",
       "expandable_list", "a"},
      {R"({"label":"x","type":"  TODO\n","content":{"todo":{"isChecked":true}}})", "todo",
       "completed"},
      {R"({"label":"r","rating":{"value":4}})", "rating", "4 stars"},
      // Inference order: expandableList, then todo, then rating.
      {R"({"label":"m","todo":{},"rating":{"value":2},"expandableList":{"items":["a","b"]}})",
       "expandable_list", "a, b"},
      {R"({"label":"m","rating":{"value":2},"content":{"todo":{"is_checked":false}}})", "todo",
       "open"},
      {R"({"label":"m","content":{"rating":{"value":0}}})", "rating", "0 stars"},
      {R"({"label":"n"})", "key_value", ""},
      // Top-level payloads beat `content`, and `content` beats a bare value.
      {R"({"label":"k","keyValue":{"value":"top"},"content":{"keyValue":{"value":"in"}},"value":"v"})",
       "key_value", "top"},
      {R"({"label":"k","content":{"keyValue":{"value":"in"}},"value":"v"})", "key_value", "in"},
      // A value that is not a string is not a key-value payload.
      {R"({"label":"k","value":5})", "key_value", ""},
      // A stated type without its payload displays as empty.
      {R"({"label":"t","type":"todo","keyValue":{"value":"ignored"}})", "todo", ""},
      {R"({"label":"t","type":"rating","value":"ignored"})", "rating", ""},
      {R"({"label":"t","type":"expandable_list"})", "expandable_list", ""},
      // An unknown kind keeps its normalised text and shows the key-value text.
      {R"({"label":"t","type":"Long-Text","value":"body"})", "long_text", "body"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.json);
    auto item = decodeJSON<WorkspaceRowItem>(testCase.json);
    EXPECT_EQ(item.type, testCase.type);
    EXPECT_EQ(item.value(), testCase.displayValue);
  }
}

TEST(WorkspaceRowItemTest, KeepsEveryPayloadFoundAndNotOnlyTheTypedOne) {
  auto item = decodeJSON<WorkspaceRowItem>(
      R"({"label":"x","todo":{"isChecked":true},"content":{"rating":{"value":3},"todo":{}}})");
  EXPECT_EQ(item.label, "x");
  EXPECT_EQ(item.type, "todo");
  ASSERT_TRUE(item.todo.has_value());
  EXPECT_TRUE(item.todo->isChecked);  // top level wins over content
  ASSERT_TRUE(item.rating.has_value());
  EXPECT_EQ(item.rating->value, 3);
  EXPECT_FALSE(item.keyValue.has_value());
  EXPECT_FALSE(item.expandableList.has_value());
}

TEST(WorkspaceRowItemTest, PayloadFlagsPreferSnakeCaseAndDefaultToFalse) {
  EXPECT_FALSE(
      decodeJSON<ExpandableListPayload>(R"({"items":[],"is_expanded":false,"isExpanded":true})")
          .isExpanded);
  EXPECT_TRUE(decodeJSON<ExpandableListPayload>(R"({"items":[],"isExpanded":true})").isExpanded);
  EXPECT_FALSE(decodeJSON<ExpandableListPayload>(R"({"items":["a"]})").isExpanded);
  EXPECT_TRUE(decodeJSON<TodoPayload>(R"({"is_checked":true,"isChecked":false})").isChecked);
  EXPECT_TRUE(decodeJSON<TodoPayload>(R"({"isChecked":true})").isChecked);
  EXPECT_FALSE(decodeJSON<TodoPayload>(R"({})").isChecked);
}

TEST(WorkspaceRowItemTest, RejectsMissingRequiredKeys) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {R"({"value":"3"})", "label"},
      {R"({"label":"x","expandableList":{"isExpanded":true}})", "items"},
      {R"({"label":"x","content":{"rating":{}}})", "value"},
      {R"({"label":"x","keyValue":{}})", "value"},
  };
  for (const auto& [json, key] : cases) {
    const DecodingError error = decodingError<WorkspaceRowItem>(json);
    EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound) << json;
    EXPECT_EQ(error.key(), key) << json;
  }
  EXPECT_THROW(decodeJSON<WorkspaceRowItem>(R"({"label":"x","content":"text"})"), DecodingError);
}

TEST(WorkspaceRowItemTest, NormalisesTypeText) {
  EXPECT_EQ(normalizeRowItemType(" Key-Value\n"), "key_value");
  EXPECT_EQ(normalizeRowItemType("EXPANDABLE-LIST"), "expandable_list");
  EXPECT_EQ(normalizeRowItemType("a--b"), "a__b");
  EXPECT_EQ(normalizeRowItemType(""), "");
}

TEST(WorkspaceRowItemTest, EncodesOneSpellingWithDisplayValue) {
  const std::vector<std::pair<WorkspaceRowItem, std::string>> cases = {
      {{.label = "Price", .type = "key_value", .keyValue = KeyValuePayload{"3"}},
       R"({"keyValue":{"value":"3"},"label":"Price","type":"key_value","value":"3"})"},
      {{.label = "L",
        .type = "expandable_list",
        .expandableList = ExpandableListPayload{{"a", "b"}, true}},
       R"({"expandableList":{"is_expanded":true,"items":["a","b"]},"label":"L",)"
       R"("type":"expandable_list","value":"a, b"})"},
      {{.label = "T", .type = "todo", .todo = TodoPayload{false}},
       R"({"label":"T","todo":{"is_checked":false},"type":"todo","value":"open"})"},
      {{.label = "R", .type = "rating", .rating = RatingPayload{4}},
       R"({"label":"R","rating":{"value":4},"type":"rating","value":"4 stars"})"},
  };
  for (const auto& [item, expected] : cases) {
    EXPECT_EQ(compactJSON(item), expected);
  }
}

}  // namespace
}  // namespace zorvik
