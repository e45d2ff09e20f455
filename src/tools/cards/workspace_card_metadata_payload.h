// WorkspaceCardMetadataPayload: the light facts about one card that list_card_metadata reports,
// only those of the card's type set.
//
// Encoding only; keys are snake case (link_url, table_columns, rich_text_suggested_role, ...) and
// absent fields are left out. Text lengths count characters, except the html lengths, which count
// UTF-16 units so that they line up with html source windows. Plain value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct WorkspaceCardMetadataPayload {
  std::optional<std::string> linkUrl;
  std::optional<std::string> linkSource;
  std::optional<int64_t> linkPropertiesCount;  // shown and hidden row items
  std::optional<std::string> imageUrl;
  std::optional<int64_t> imagesCount;
  std::optional<int64_t> noteLength;
  std::optional<int64_t> rowItemsCount;
  std::optional<int64_t> availableFieldsCount;
  std::optional<int64_t> hiddenFieldsCount;
  std::optional<int64_t> tableColumns;
  std::optional<int64_t> tableRows;
  std::optional<bool> tableShowsRowHeaders;
  std::optional<std::vector<std::string>> tableColumnHeaders;
  std::optional<int64_t> chatMessageCount;
  std::optional<int64_t> richTextLength;
  std::optional<int64_t> richTextLineCount;
  std::optional<int64_t> htmlLength;
  std::optional<int64_t> htmlCSSLength;
  std::optional<int64_t> htmlJSLength;
  std::optional<bool> htmlAllowRemoteAssets;
  std::optional<int64_t> htmlPersistedStateLength;
  std::optional<double> richTextCurrentFontSize;
  std::optional<double> richTextDefaultFontSize;
  std::optional<double> richTextRecommendedMinFontSize;
  std::optional<double> richTextRecommendedMaxFontSize;
  std::optional<std::string> richTextSuggestedRole;  // "title_or_heading" or "body"
  std::optional<std::string> folderLayout;
  std::optional<std::string> folderNodeRole;
  std::optional<int64_t> folderChildCount;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardMetadataPayload&) const = default;
};

}  // namespace zorvik
