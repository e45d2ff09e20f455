// The type of a stored card as slide tools name it: the snake-case words that slots list in
// allowed_card_types ("image", "rich_text", "table"), "item" for link cards, and the raw value for
// the other types ("chat", "html", "browser", "folder", "video").
#pragma once

#include <optional>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/workspace_card_type.h"

namespace zorvik {

// The type of a runtime payload ({"type": ..., "<type>": {...}} or {"<type>": {...}}): the first of
// the keys link, image, chat, richText, html, browser, folder, table, video that is present and not
// null, as a card payload decodes. nullopt when there is none. The inner value is not checked.
std::optional<WorkspaceCardType> runtimePayloadCardType(const AnyCodableValue& payload);

std::string_view slideCardTypeWord(WorkspaceCardType type);

}  // namespace zorvik
