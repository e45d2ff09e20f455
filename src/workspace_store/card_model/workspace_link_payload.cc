#include "workspace_store/card_model/workspace_link_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceLinkPayload WorkspaceLinkPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  using Rows = std::vector<WorkspaceRowItem>;
  using Strings = std::vector<std::string>;
  return WorkspaceLinkPayload{
      .source = object.value<WorkspaceLinkSource>("source", WorkspaceLinkSource::remote),
      .url = object.required<std::string>("url"),
      .note = object.value<std::string>("note", ""),
      .summary = object.optional<std::string>("summary"),
      .richText = object.value<std::string>("richText", ""),
      .sanitizedHTML = object.optional<std::string>("sanitizedHTML"),
      .rowItems = object.value<Rows>("rowItems", {}),
      .availableFields = object.value<Rows>("availableFields", {}),
      .hiddenRowItems = object.value<Rows>("hiddenRowItems", {}),
      .images = object.value<Strings>("images", {}),
      .currentImageIndex = object.value<int64_t>("currentImageIndex", 0),
      .availableImages = object.value<Strings>("availableImages", {}),
      .isTemplate = object.value<bool>("isTemplate", false),
  };
}

AnyCodableValue WorkspaceLinkPayload::encode() const {
  return ObjectEncoder()
      .add("source", source)
      .add("url", url)
      .add("note", note)
      .add("summary", summary)
      .add("richText", richText)
      .add("sanitizedHTML", sanitizedHTML)
      .add("rowItems", rowItems)
      .add("availableFields", availableFields)
      .add("hiddenRowItems", hiddenRowItems)
      .add("images", images)
      .add("currentImageIndex", currentImageIndex)
      .add("availableImages", availableImages)
      .add("isTemplate", isTemplate)
      .build();
}

}  // namespace zorvik
