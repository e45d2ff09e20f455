// FilesystemMarkdownLinkCardDocument: everything a link card's Markdown file holds, the
// front-matter fields and the body (`richText`). A plain value; FilesystemMarkdownLinkCardCodec
// reads and writes it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

struct FilesystemMarkdownLinkCardDocument {
  std::string source = "remote";
  std::string url;
  std::string note;
  std::optional<std::string> summary;
  std::string richText;
  std::vector<WorkspaceRowItem> rowItems;
  std::vector<WorkspaceRowItem> availableFields;
  std::vector<WorkspaceRowItem> hiddenRowItems;
  std::vector<std::string> images;
  int64_t currentImageIndex = 0;
  std::vector<std::string> availableImages;
  std::optional<double> heroImageAspectRatio;
  bool isTemplate = false;

  bool operator==(const FilesystemMarkdownLinkCardDocument&) const = default;
};

}  // namespace zorvik
