// LegacyFilesystemLinkCardDocument: the older JSON form of a link card file, `{name}.link.json`.
// Read only. Keys equal the field names; all but the three optional ones are required.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

class ValueDecoder;
struct FilesystemMarkdownLinkCardDocument;

struct LegacyFilesystemLinkCardDocument {
  std::string source;
  std::string url;
  std::string note;
  std::optional<std::string> summary;
  std::string richText;
  std::optional<std::string> sanitizedHTML;
  std::vector<WorkspaceRowItem> rowItems;
  std::vector<WorkspaceRowItem> availableFields;
  std::vector<WorkspaceRowItem> hiddenRowItems;
  std::vector<std::string> images;
  int64_t currentImageIndex = 0;
  std::vector<std::string> availableImages;
  std::optional<double> heroImageAspectRatio;
  bool isTemplate = false;

  // The same fields from a link Markdown file, which has no sanitized HTML.
  static LegacyFilesystemLinkCardDocument fromMarkdown(FilesystemMarkdownLinkCardDocument document);
  static LegacyFilesystemLinkCardDocument decode(const ValueDecoder& decoder);

  // The runtime payload {"type":"link","link":{...}}; summary, sanitizedHTML and
  // heroImageAspectRatio appear only when present.
  AnyCodableValue linkRuntimePayload() const;

  bool operator==(const LegacyFilesystemLinkCardDocument&) const = default;
};

}  // namespace zorvik
