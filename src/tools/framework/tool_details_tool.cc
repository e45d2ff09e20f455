#include "tools/framework/tool_details_tool.h"

#include <algorithm>
#include <array>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/framework/agent_error.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

struct ToolDetailsRequest {
  std::string name;
  std::optional<std::string> cardType;

  static ToolDetailsRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<std::string>("name"), object.optional<std::string>("card_type")};
  }
};

AgentToolSpec toolDetailsSpec() {
  return AgentToolSpec{
      .name = "tool_details",
      .summary = "Return full JSON schema and metadata for a tool.",
      .inputSchema = schema::object(
          {
              {"name", schema::string("Tool name to fetch details for.")},
              {"card_type", schema::string("Optional card type to focus examples (e.g., item, "
                                           "table, image, chat, rich_text, html, folder).")},
          },
          {"name"}),
      .outputSchema = schema::object({
          {"name", schema::string()},
          {"summary", schema::string()},
          {"input_schema", schema::typed("object")},
          {"output_schema", schema::typed("object")},
          {"media_output_paths", JSONObject{{"type", AnyCodableValue::Array{"array", "null"}},
                                            {"items", schema::string()}}},
          {"examples", schema::typed("array")},
          {"notes", schema::string()},
          {"execution", schema::stringEnum({"serial", "parallel"})},
      }),
      .examples = std::vector<AnyCodableValue>{JSONObject{{"name", "create_cards"},
                                                          {"card_type", "table"}}},
      .notes = "Use this tool to fetch schemas before calling other tools.",
  };
}

// Edit keys that mark an edit as concerning a card type.
std::vector<std::string_view> editKeysForCardType(std::string_view cardType) {
  if (cardType == "table") return {"table_cell", "table_row", "table_column"};
  if (cardType == "item") return {"row_action", "row_items", "item_url", "item_source", "note"};
  if (cardType == "image") return {"images"};
  if (cardType == "rich_text") return {"markdown"};
  if (cardType == "html") return {"html", "css", "js", "source_edits", "board_resource_url"};
  if (cardType == "folder") return {"group_style"};
  return {};
}

// Whether `example[listKey]` is an array holding an object that satisfies `matches`.
template <class Predicate>
bool listHoldsMatchingObject(const AnyCodableValue& example, std::string_view listKey,
                             Predicate matches) {
  const AnyCodableValue* list = example.member(listKey);
  const AnyCodableValue::Array* elements = list ? list->asArray() : nullptr;
  if (!elements) return false;
  return std::any_of(elements->begin(), elements->end(), [&](const AnyCodableValue& element) {
    const JSONObject* object = element.asObject();
    return object && matches(*object);
  });
}

bool exampleMatches(const AnyCodableValue& example, std::string_view toolName,
                    std::string_view cardType) {
  if (!example.isObject()) return false;
  if (toolName == "create_cards") {
    return listHoldsMatchingObject(example, "cards", [&](const JSONObject& card) {
      const AnyCodableValue* type = card.find("type");
      return type && type->asString() && lowercased(*type->asString()) == cardType;
    });
  }
  if (toolName == "edit_cards") {
    const auto keys = editKeysForCardType(cardType);
    return listHoldsMatchingObject(example, "edits", [&](const JSONObject& edit) {
      return std::any_of(keys.begin(), keys.end(),
                         [&](std::string_view key) { return edit.contains(key); });
    });
  }
  // get_card_content
  const AnyCodableValue* typeOptions = example.member("type_options");
  return typeOptions && typeOptions->isObject() && typeOptions->asObject()->contains(cardType);
}

}  // namespace

std::optional<std::vector<AnyCodableValue>> filterExamples(
    const std::vector<AnyCodableValue>& examples, std::string_view toolName,
    std::string_view cardType) {
  if (toolName != "create_cards" && toolName != "edit_cards" && toolName != "get_card_content") {
    return std::nullopt;
  }
  std::vector<AnyCodableValue> kept;
  std::copy_if(
      examples.begin(), examples.end(), std::back_inserter(kept),
      [&](const AnyCodableValue& example) { return exampleMatches(example, toolName, cardType); });
  return kept;
}

AgentToolSpec filterSpec(const AgentToolSpec& spec, std::string_view toolName,
                         std::string_view cardType) {
  AgentToolSpec filtered = spec;
  std::string notes = "Filtered examples for card_type=" + std::string(cardType) + ".";
  if (spec.notes && !spec.notes->empty()) notes += " " + *spec.notes;
  filtered.notes = std::move(notes);
  if (spec.examples) {
    auto kept = filterExamples(*spec.examples, toolName, cardType);
    if (kept && !kept->empty()) filtered.examples = std::move(*kept);
  }
  return filtered;
}

ToolDetailsTool::ToolDetailsTool(const AgentToolRegistry& registry)
    : registry_(registry), spec_(toolDetailsSpec()) {}

AnyCodableValue ToolDetailsTool::run(const AnyCodableValue& input, const AgentToolContext&) const {
  const auto request = decodeValue<ToolDetailsRequest>(input);
  auto found = registry_.spec(request.name);
  if (!found) throw AgentError::toolNotFound(request.name);
  const std::string cardType = trimWhitespaceAndNewlines(request.cardType.value_or(""));
  if (cardType.empty()) return encodeValue(*found);
  return encodeValue(filterSpec(*found, request.name, lowercased(cardType)));
}

}  // namespace zorvik
