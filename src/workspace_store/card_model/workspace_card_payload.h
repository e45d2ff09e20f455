// WorkspaceCardPayload: the typed body of a card, one case per WorkspaceCardType, in its order.
//
// JSON form: an object whose key is the type's raw value and whose value is the record. Decoding
// tests the keys link, image, chat, richText, html, browser, folder, table, video in that order;
// the first present (non-null) one decides and must decode, and every other key, `type` included,
// is ignored, so a runtime payload {"type":"link","link":{...}} decodes directly. No known key
// throws DecodingError (data corrupted, "Unknown payload type."). Encoding writes the runtime form
// {"type": "<raw>", "<raw>": record}.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/workspace_browser_payload.h"
#include "workspace_store/card_model/workspace_card_type.h"
#include "workspace_store/card_model/workspace_chat_payload.h"
#include "workspace_store/card_model/workspace_folder_payload.h"
#include "workspace_store/card_model/workspace_html_payload.h"
#include "workspace_store/card_model/workspace_image_payload.h"
#include "workspace_store/card_model/workspace_link_payload.h"
#include "workspace_store/card_model/workspace_rich_text_payload.h"
#include "workspace_store/card_model/workspace_table_payload.h"
#include "workspace_store/card_model/workspace_video_payload.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceCardPayload {
  // Alternative i belongs to the WorkspaceCardType with underlying value i.
  using Value =
      std::variant<WorkspaceLinkPayload, WorkspaceImagePayload, WorkspaceChatPayload,
                   WorkspaceRichTextPayload, WorkspaceHTMLPayload, WorkspaceBrowserPayload,
                   WorkspaceFolderPayload, WorkspaceTablePayload, WorkspaceVideoPayload>;
  Value value;

  WorkspaceCardType type() const { return static_cast<WorkspaceCardType>(value.index()); }
  // The record's own summary.
  std::optional<std::string> summary() const;

  // The record when it is of type T, else nullptr.
  template <class T>
  const T* as() const {
    return std::get_if<T>(&value);
  }

  static WorkspaceCardPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardPayload&) const = default;
};

}  // namespace zorvik
