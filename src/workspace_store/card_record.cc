#include "workspace_store/card_record.h"

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/filesystem_workspace_state.h"

namespace zorvik {
namespace {

std::vector<GroupStack> groupStacksOf(const AnyCodableValue& payload) {
  const AnyCodableValue* folder = payload.member("folder");
  const AnyCodableValue* stacks = folder ? folder->member("groupStacks") : nullptr;
  if (!stacks) return {};
  try {
    return decodeValue<std::vector<GroupStack>>(*stacks);
  } catch (const DecodingError&) {
    return {};
  }
}

}  // namespace

std::string CardRecord::inlinePath(const Uuid& id) {
  return std::string(FilesystemWorkspaceState::kDocumentRelativePath) + "#" + id.uppercaseString();
}

CardRecord CardRecord::fromEntry(const FilesystemWorkspaceEntry& entry, AnyCodableValue payload) {
  const FilesystemWorkspaceLayout& layout = entry.layout;
  std::vector<GroupStack> groupStacks = groupStacksOf(payload);
  return CardRecord{
      .id = entry.id,
      .parentID = entry.parentID,
      .title = entry.title,
      .createdAt = entry.createdAt,
      .path = entry.contentPath().value_or(inlinePath(entry.id)),
      .folderID = std::nullopt,
      .frame = Frame{.x = layout.position.x,
                     .y = layout.position.y,
                     .width = layout.actualWidth,
                     .height = layout.actualHeight},
      .zIndex = layout.zIndex,
      .snapConstraints = layout.snapConstraints,
      .payload = std::move(payload),
      .groupStacks = std::move(groupStacks),
  };
}

CardRecord CardRecord::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return CardRecord{
      .id = object.required<Uuid>("id"),
      .parentID = object.optional<Uuid>("parentID"),
      .title = object.required<std::string>("title"),
      .createdAt = object.required<Date>("createdAt"),
      .path = object.required<std::string>("path"),
      .folderID = object.optional<Uuid>("folderID"),
      .frame = object.required<Frame>("frame"),
      .zIndex = object.required<int64_t>("zIndex"),
      .snapConstraints = object.optional<SnapConstraints>("snapConstraints"),
      .payload = object.required<AnyCodableValue>("payload"),
      .groupStacks = object.required<std::vector<GroupStack>>("groupStacks"),
  };
}

AnyCodableValue CardRecord::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("parentID", parentID)
      .add("title", title)
      .add("createdAt", createdAt)
      .add("path", path)
      .add("folderID", folderID)
      .add("frame", frame)
      .add("zIndex", zIndex)
      .add("snapConstraints", snapConstraints)
      .add("payload", payload)
      .add("groupStacks", groupStacks)
      .build();
}

}  // namespace zorvik
