#include "tools/layout/group_layout.h"

#include <unordered_set>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"
#include "workspace_store/card_model/workspace_card_payload.h"

namespace zorvik {
namespace {

std::optional<WorkspaceFolderPayload> folderPayload(const CardRecord& card) {
  try {
    const auto payload = decodeValue<WorkspaceCardPayload>(card.payload);
    if (const auto* folder = payload.as<WorkspaceFolderPayload>()) return *folder;
  } catch (const std::exception&) {
    // A payload that does not decode is no folder.
  }
  return std::nullopt;
}

const AnyCodableValue::Array* storedChildOrder(const CardRecord& card) {
  const AnyCodableValue* body = card.payload.member("folder");
  if (body == nullptr) return nullptr;
  for (const char* key : {"orderedChildIds", "ordered_child_ids"}) {
    if (const AnyCodableValue* order = body->member(key); order && order->asArray()) {
      return order->asArray();
    }
  }
  return nullptr;
}

std::vector<const CardRecord*> orderedChildren(const CardRecord& folder,
                                               const SnapshotCardIndex& index) {
  const std::vector<const CardRecord*>& children = index.children(folder.id);
  const AnyCodableValue::Array* order = storedChildOrder(folder);
  if (order == nullptr) return children;

  std::vector<const CardRecord*> result;
  result.reserve(children.size());
  std::unordered_set<const CardRecord*> taken;
  for (const AnyCodableValue& element : *order) {
    const std::string* text = element.asString();
    const std::optional<Uuid> id = text ? parseCardUUID(*text) : std::nullopt;
    const CardRecord* child = id ? index.card(*id) : nullptr;
    if (child && child->parentID == folder.id && taken.insert(child).second) {
      result.push_back(child);
    }
  }
  for (const CardRecord* child : children) {
    if (taken.insert(child).second) result.push_back(child);
  }
  return result;
}

}  // namespace

std::optional<GroupLayout> GroupLayout::forCard(const CardRecord& card,
                                                const SnapshotCardIndex& index,
                                                bool includeChildLayouts, bool includeConstraints) {
  std::optional<WorkspaceFolderPayload> folder = folderPayload(card);
  if (!folder) return std::nullopt;

  const std::vector<const CardRecord*> children = orderedChildren(card, index);
  GroupLayout layout{
      .folderID = card.id,
      .layout = std::move(folder->layout),
      .gridColumnCount = folder->gridColumns,
      .groupStacks = card.groupStacks,
      .childCount = static_cast<int64_t>(children.size()),
  };
  layout.orderedChildIDs.reserve(children.size());
  for (const CardRecord* child : children) layout.orderedChildIDs.push_back(child->id);
  if (includeChildLayouts) {
    layout.childLayouts.emplace();
    layout.childLayouts->reserve(children.size());
    for (const CardRecord* child : children) {
      layout.childLayouts->push_back(LayoutItem::fromCard(*child, includeConstraints));
    }
  }
  return layout;
}

AnyCodableValue GroupLayout::encode() const {
  return ObjectEncoder()
      .add("folder_id", folderID)
      .add("layout", layout)
      .addNullable("grid_column_count", gridColumnCount)
      .add("ordered_child_ids", orderedChildIDs)
      .add("group_stacks", groupStacks)
      .add("child_count", childCount)
      .add("child_layouts", childLayouts)
      .build();
}

AnyCodableValue GroupLayout::jsonSchema() {
  const AnyCodableValue stack = schema::object(
      {
          {"axis", schema::string()},
          {"anchorId", schema::string()},
          {"orderedIds", schema::array(schema::string())},
          {"crossOffset", schema::number()},
      },
      {"axis", "anchorId", "orderedIds", "crossOffset"});
  return schema::object(
      {
          {"folder_id", schema::string()},
          {"layout", schema::string("freeform, horizontal, vertical or grid.")},
          {"grid_column_count", JSONObject{{"type", AnyCodableValue::Array{"integer", "null"}}}},
          {"ordered_child_ids", schema::array(schema::string())},
          {"group_stacks", schema::array(stack)},
          {"child_count", schema::integer()},
          {"child_layouts",
           schema::array(LayoutItem::jsonSchema(),
                         "Only with include_child_layouts or include_child_frames.")},
      },
      {"folder_id", "layout", "grid_column_count", "ordered_child_ids", "group_stacks",
       "child_count"});
}

}  // namespace zorvik
