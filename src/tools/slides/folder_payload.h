// FolderPayload: what slide tools read from a stored folder card: its role, group kind and the
// slide metadata the application keeps on it, including which card fills which slot.
//
// Reading is lenient, since slide metadata is written by the application and may predate this
// reader: each field takes the first of its spellings that is present and not null, and a value of
// the wrong type counts as absent. Spellings, first tried first:
//   nodeRole          node_role, nodeRole                  (default "folder")
//   groupKind         group_kind, groupKind                (default "slide" with a template id,
//                                                           else "regular")
//   slideLayoutMode   slide_layout_mode, slideLayoutMode   (default "adaptive")
//   slideTemplateId   slideTemplateId, slide_template_id
//   slideThemeId      slideThemeId, slide_theme_id
//   slideVersion      slideVersion, slide_version          (an integer)
//   slideUpdatedAt    slideUpdatedAt, slide_updated_at     (text, kept as written)
//   slideSlotBindings slideSlotBindings, slide_slot_bindings
//                     (an object from slot id to card id text; members whose value is not text
//                     are left out)
// A plain value.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct FolderPayload {
  std::string nodeRole = "folder";
  std::string groupKind = "regular";
  std::string slideLayoutMode = "adaptive";
  std::optional<std::string> slideTemplateId;
  std::optional<std::string> slideThemeId;
  std::optional<int64_t> slideVersion;
  std::optional<std::string> slideUpdatedAt;
  std::map<std::string, std::string> slideSlotBindings;  // slot id -> card id as written

  // A folder whose group kind is "slide".
  bool isSlideGroup() const { return groupKind == "slide"; }

  // The folder payload of a card's runtime payload: the object under "folder" when the payload's
  // type (see runtimePayloadCardType) is folder; nullopt for other cards or a non-object body.
  static std::optional<FolderPayload> fromRuntimePayload(const AnyCodableValue& payload);

  // Throws DecodingError only when the value is not an object.
  static FolderPayload decode(const ValueDecoder& decoder);
  bool operator==(const FolderPayload&) const = default;
};

}  // namespace zorvik
