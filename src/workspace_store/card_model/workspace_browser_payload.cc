#include "workspace_store/card_model/workspace_browser_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceBrowserPayload WorkspaceBrowserPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::string>("summary"), object.required<std::string>("current_url"),
          object.optional<std::string>("page_title"), object.optional<std::string>("favicon_url"),
          object.optional<std::string>("last_error")};
}

AnyCodableValue WorkspaceBrowserPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("current_url", currentURL)
      .add("page_title", pageTitle)
      .add("favicon_url", faviconURL)
      .add("last_error", lastError)
      .build();
}

}  // namespace zorvik
