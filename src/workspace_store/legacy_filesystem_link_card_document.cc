#include "workspace_store/legacy_filesystem_link_card_document.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"

namespace zorvik {

LegacyFilesystemLinkCardDocument LegacyFilesystemLinkCardDocument::fromMarkdown(
    FilesystemMarkdownLinkCardDocument document) {
  return LegacyFilesystemLinkCardDocument{
      .source = std::move(document.source),
      .url = std::move(document.url),
      .note = std::move(document.note),
      .summary = std::move(document.summary),
      .richText = std::move(document.richText),
      .rowItems = std::move(document.rowItems),
      .availableFields = std::move(document.availableFields),
      .hiddenRowItems = std::move(document.hiddenRowItems),
      .images = std::move(document.images),
      .currentImageIndex = document.currentImageIndex,
      .availableImages = std::move(document.availableImages),
      .heroImageAspectRatio = document.heroImageAspectRatio,
      .isTemplate = document.isTemplate,
  };
}

LegacyFilesystemLinkCardDocument LegacyFilesystemLinkCardDocument::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  using RowItems = std::vector<WorkspaceRowItem>;
  using Strings = std::vector<std::string>;
  return LegacyFilesystemLinkCardDocument{
      .source = object.required<std::string>("source"),
      .url = object.required<std::string>("url"),
      .note = object.required<std::string>("note"),
      .summary = object.optional<std::string>("summary"),
      .richText = object.required<std::string>("richText"),
      .sanitizedHTML = object.optional<std::string>("sanitizedHTML"),
      .rowItems = object.required<RowItems>("rowItems"),
      .availableFields = object.required<RowItems>("availableFields"),
      .hiddenRowItems = object.required<RowItems>("hiddenRowItems"),
      .images = object.required<Strings>("images"),
      .currentImageIndex = object.required<int64_t>("currentImageIndex"),
      .availableImages = object.required<Strings>("availableImages"),
      .heroImageAspectRatio = object.optional<double>("heroImageAspectRatio"),
      .isTemplate = object.required<bool>("isTemplate"),
  };
}

AnyCodableValue LegacyFilesystemLinkCardDocument::linkRuntimePayload() const {
  AnyCodableValue link = ObjectEncoder()
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
                             .add("heroImageAspectRatio", heroImageAspectRatio)
                             .add("isTemplate", isTemplate)
                             .build();
  return JSONObject{{"type", "link"}, {"link", std::move(link)}};
}

}  // namespace zorvik
