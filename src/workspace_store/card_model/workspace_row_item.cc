#include "workspace_store/card_model/workspace_row_item.h"

#include <algorithm>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"

namespace zorvik {

KeyValuePayload KeyValuePayload::decode(const ValueDecoder& decoder) {
  return {decoder.object().required<std::string>("value")};
}

AnyCodableValue KeyValuePayload::encode() const {
  return ObjectEncoder().add("value", value).build();
}

ExpandableListPayload ExpandableListPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::vector<std::string>>("items"),
          object.optionalAny<bool>({"is_expanded", "isExpanded"}).value_or(false)};
}

AnyCodableValue ExpandableListPayload::encode() const {
  return ObjectEncoder().add("items", items).add("is_expanded", isExpanded).build();
}

TodoPayload TodoPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optionalAny<bool>({"is_checked", "isChecked"}).value_or(false)};
}

AnyCodableValue TodoPayload::encode() const {
  return ObjectEncoder().add("is_checked", isChecked).build();
}

RatingPayload RatingPayload::decode(const ValueDecoder& decoder) {
  return {decoder.object().required<int64_t>("value")};
}

AnyCodableValue RatingPayload::encode() const {
  return ObjectEncoder().add("value", value).build();
}

std::string normalizeRowItemType(std::string_view type) {
  std::string normalized = lowercased(trimWhitespaceAndNewlines(type));
  std::replace(normalized.begin(), normalized.end(), '-', '_');
  return normalized;
}

std::string WorkspaceRowItem::value() const {
  const std::string kind = normalizeRowItemType(type);
  if (kind == "expandable_list") {
    if (!expandableList) return "";
    std::string joined;
    for (size_t i = 0; i < expandableList->items.size(); ++i) {
      if (i > 0) joined += ", ";
      joined += expandableList->items[i];
    }
    return joined;
  }
  if (kind == "todo") return todo ? (todo->isChecked ? "completed" : "open") : "";
  if (kind == "rating") return rating ? std::to_string(rating->value) + " stars" : "";
  return keyValue ? keyValue->value : "";
}

namespace {

// Fills `target` from `object[key]` unless it already holds a value.
template <class T>
void fillIfAbsent(std::optional<T>& target, const ObjectDecoder& object, std::string_view key) {
  if (!target) target = object.optional<T>(key);
}

}  // namespace

WorkspaceRowItem WorkspaceRowItem::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  WorkspaceRowItem item;
  item.label = object.required<std::string>("label");
  std::optional<std::string> type = object.optional<std::string>("type");
  item.keyValue = object.optional<KeyValuePayload>("keyValue");
  item.expandableList = object.optional<ExpandableListPayload>("expandableList");
  item.todo = object.optional<TodoPayload>("todo");
  item.rating = object.optional<RatingPayload>("rating");

  if (const AnyCodableValue* content = object.raw("content"); content && !content->isNull()) {
    auto nested = object.nested(*content, "content").object();
    fillIfAbsent(item.keyValue, nested, "keyValue");
    fillIfAbsent(item.expandableList, nested, "expandableList");
    fillIfAbsent(item.todo, nested, "todo");
    fillIfAbsent(item.rating, nested, "rating");
  }

  if (!item.keyValue) {
    if (const AnyCodableValue* value = object.raw("value"); value && value->isString()) {
      item.keyValue = KeyValuePayload{*value->asString()};
    }
  }

  if (type) {
    item.type = normalizeRowItemType(*type);
  } else if (item.expandableList) {
    item.type = "expandable_list";
  } else if (item.todo) {
    item.type = "todo";
  } else if (item.rating) {
    item.type = "rating";
  } else {
    item.type = "key_value";
  }
  return item;
}

AnyCodableValue WorkspaceRowItem::encode() const {
  return ObjectEncoder()
      .add("label", label)
      .add("type", type)
      .add("keyValue", keyValue)
      .add("expandableList", expandableList)
      .add("todo", todo)
      .add("rating", rating)
      .add("value", value())
      .build();
}

}  // namespace zorvik
