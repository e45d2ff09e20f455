#include "schema_conformance.h"

#include <gtest/gtest.h>

namespace zorvik {
namespace {

AnyCodableValue json(std::string_view text) { return AnyCodableValue::parse(text); }

constexpr std::string_view kSchema = R"({
  "type": "object",
  "properties": {
    "name": {"type": "string"},
    "count": {"type": "integer", "minimum": 2, "maximum": 5},
    "note": {"type": ["string", "null"]},
    "mode": {"type": "string", "enum": ["a", "b"]},
    "ids": {"type": "array", "items": {"type": "string"}, "minItems": 1},
    "closed": {"type": "object", "properties": {"x": {"type": "number"}},
               "additionalProperties": false},
    "edits": {"type": "array"},
    "cards": {"type": "array"}
  },
  "required": ["name"],
  "oneOf": [{"type": "object", "properties": {}, "required": ["edits"]},
            {"type": "object", "properties": {}, "required": ["cards"]}]
})";

TEST(SchemaConformanceTest, ReportsEachKindOfViolationAtItsPath) {
  struct Case {
    std::string value;
    std::string expectedProblem;  // empty: conforms
  };
  const Case cases[] = {
      {R"({"name": "n", "edits": [], "count": 3, "note": null, "mode": "b", "ids": ["x"],
           "closed": {"x": 1.5}})",
       ""},
      {R"({"edits": []})", "$: missing required key name"},
      {R"({"name": 1, "edits": []})", "$.name: expected type \"string\", got 1"},
      {R"({"name": "n", "edits": [], "count": 2.5})", "$.count: expected type \"integer\""},
      {R"({"name": "n", "edits": [], "count": 1})", "$.count: 1 is below the minimum 2"},
      {R"({"name": "n", "edits": [], "count": 6})", "$.count: 6 is above the maximum 5"},
      {R"({"name": "n", "edits": [], "mode": "c"})", "$.mode: \"c\" is not one of"},
      {R"({"name": "n", "edits": [], "ids": []})", "$.ids: fewer than 1 items"},
      {R"({"name": "n", "edits": [], "ids": ["x", 2]})", "$.ids[1]: expected type"},
      {R"({"name": "n", "edits": [], "closed": {"y": 1}})", "$.closed.y: key is not declared"},
      {R"({"name": "n"})", "$: matches 0 of the oneOf alternatives, not 1"},
      {R"({"name": "n", "edits": [], "cards": []})", "$: matches 2 of the oneOf alternatives"},
  };
  const AnyCodableValue schema = json(kSchema);
  for (const Case& c : cases) {
    const auto problems = schemaViolations(schema, json(c.value));
    if (c.expectedProblem.empty()) {
      EXPECT_TRUE(problems.empty()) << c.value << " -> " << problems.front();
    } else {
      ASSERT_EQ(problems.size(), 1u) << c.value;
      EXPECT_EQ(problems[0].rfind(c.expectedProblem, 0), 0u) << problems[0];
    }
  }
}

TEST(SchemaConformanceTest, UndeclaredKeysCountOnlyWhenAsked) {
  const AnyCodableValue schema = json(kSchema);
  const AnyCodableValue value = json(R"({"name": "n", "edits": [], "extra": true})");
  EXPECT_TRUE(schemaViolations(schema, value).empty());
  EXPECT_EQ(schemaViolations(schema, value, {.rejectUndeclaredKeys = true}),
            std::vector<std::string>{"$.extra: key is not declared"});
}

TEST(SchemaConformanceTest, FindsDefectsOfTheSchemaItself) {
  EXPECT_TRUE(schemaDefects(json(kSchema)).empty());
  struct Case {
    std::string schema;
    std::string expectedDefect;
  };
  const Case cases[] = {
      {R"({"type": "object", "requried": ["a"]})", "$: unknown keyword requried"},
      {R"({"type": "object", "properties": {"a": {"type": "string"}}, "required": ["b"]})",
       "$: required key \"b\" is not declared"},
      {R"({"type": "object", "properties": {"a": {"type": "array", "items": {"type": "int"}}}})",
       "$.properties.a.items: unknown type int"},
      {R"({"type": "object", "properties": {"a": {"type": "string"}},
           "oneOf": [{"required": ["a"]}, {"required": ["b"]}]})",
       "$.oneOf[1]: required key \"b\" is not declared"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(schemaDefects(json(c.schema)), std::vector<std::string>{c.expectedDefect})
        << c.schema;
  }
}

}  // namespace
}  // namespace zorvik
