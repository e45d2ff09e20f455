// WorkspaceHTMLPayload: the body of an html card: page sources, remote-asset policy, the page's
// persisted state and the functions it publishes.
//
// JSON keys: `summary` (optional), `html` (required), `css` and `js` (default empty),
// `allow_remote_assets` (default false), `persisted_state` (optional), `public_functions` (default
// empty). Encoding writes every field, absent optionals left out.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/workspace_html_public_function.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceHTMLPayload {
  std::optional<std::string> summary;
  std::string html;
  std::string css;
  std::string js;
  bool allowRemoteAssets = false;                            // "allow_remote_assets"
  std::optional<std::string> persistedState;                 // "persisted_state"
  std::vector<WorkspaceHTMLPublicFunction> publicFunctions;  // "public_functions"

  static WorkspaceHTMLPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceHTMLPayload&) const = default;
};

}  // namespace zorvik
