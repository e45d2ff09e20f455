#include "tools/slides/folder_payload.h"

#include <initializer_list>
#include <string_view>

#include "foundation/json/value_decoder.h"
#include "tools/slides/slide_card_type.h"

namespace zorvik {
namespace {

// The first spelling that is present and not null, or nullptr.
const AnyCodableValue* firstPresent(const ObjectDecoder& object,
                                    std::initializer_list<std::string_view> keys) {
  for (std::string_view key : keys) {
    const AnyCodableValue* member = object.raw(key);
    if (member && !member->isNull()) return member;
  }
  return nullptr;
}

std::optional<std::string> text(const ObjectDecoder& object,
                                std::initializer_list<std::string_view> keys) {
  const AnyCodableValue* member = firstPresent(object, keys);
  const std::string* value = member ? member->asString() : nullptr;
  return value ? std::optional<std::string>(*value) : std::nullopt;
}

}  // namespace

std::optional<FolderPayload> FolderPayload::fromRuntimePayload(const AnyCodableValue& payload) {
  if (runtimePayloadCardType(payload) != WorkspaceCardType::folder) return std::nullopt;
  const AnyCodableValue* body = payload.member("folder");
  if (!body->isObject()) return std::nullopt;
  return decodeValue<FolderPayload>(*body);
}

FolderPayload FolderPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  FolderPayload payload;
  payload.nodeRole = text(object, {"node_role", "nodeRole"}).value_or("folder");
  payload.slideLayoutMode =
      text(object, {"slide_layout_mode", "slideLayoutMode"}).value_or("adaptive");
  payload.slideTemplateId = text(object, {"slideTemplateId", "slide_template_id"});
  payload.slideThemeId = text(object, {"slideThemeId", "slide_theme_id"});
  payload.slideUpdatedAt = text(object, {"slideUpdatedAt", "slide_updated_at"});
  payload.groupKind = text(object, {"group_kind", "groupKind"})
                          .value_or(payload.slideTemplateId ? "slide" : "regular");
  if (const AnyCodableValue* version = firstPresent(object, {"slideVersion", "slide_version"})) {
    if (const int64_t* number = version->asInt()) payload.slideVersion = *number;
  }
  const AnyCodableValue* bindings =
      firstPresent(object, {"slideSlotBindings", "slide_slot_bindings"});
  if (const JSONObject* members = bindings ? bindings->asObject() : nullptr) {
    for (const auto& [slotId, cardId] : *members) {
      if (const std::string* id = cardId.asString()) payload.slideSlotBindings.emplace(slotId, *id);
    }
  }
  return payload;
}

}  // namespace zorvik
