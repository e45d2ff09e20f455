#include "tools/slides/slide_card_type.h"

namespace zorvik {

std::optional<WorkspaceCardType> runtimePayloadCardType(const AnyCodableValue& payload) {
  for (const auto& [type, key] : EnumRawValues<WorkspaceCardType>::table) {
    const AnyCodableValue* member = payload.member(key);
    if (member && !member->isNull()) return type;
  }
  return std::nullopt;
}

std::string_view slideCardTypeWord(WorkspaceCardType type) {
  switch (type) {
    case WorkspaceCardType::link:
      return "item";
    case WorkspaceCardType::richText:
      return "rich_text";
    default:
      return rawValue(type);
  }
}

}  // namespace zorvik
