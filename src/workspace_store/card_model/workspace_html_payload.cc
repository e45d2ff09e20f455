#include "workspace_store/card_model/workspace_html_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceHTMLPayload WorkspaceHTMLPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceHTMLPayload{
      .summary = object.optional<std::string>("summary"),
      .html = object.required<std::string>("html"),
      .css = object.value<std::string>("css", ""),
      .js = object.value<std::string>("js", ""),
      .allowRemoteAssets = object.value<bool>("allow_remote_assets", false),
      .persistedState = object.optional<std::string>("persisted_state"),
      .publicFunctions =
          object.value<std::vector<WorkspaceHTMLPublicFunction>>("public_functions", {}),
  };
}

AnyCodableValue WorkspaceHTMLPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("html", html)
      .add("css", css)
      .add("js", js)
      .add("allow_remote_assets", allowRemoteAssets)
      .add("persisted_state", persistedState)
      .add("public_functions", publicFunctions)
      .build();
}

}  // namespace zorvik
