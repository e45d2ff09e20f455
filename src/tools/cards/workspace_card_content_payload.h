// WorkspaceCardContentPayload: one card's content as get_card_content answers it: a text rendering
// or one typed content record, with the slices and error words of the request.
//
// Encoding only (these are answers). Keys are snake case; absent optionals are left out, so a field
// left out by a field selector does not appear. Row and column numbers are 1-based. Plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "tools/cards/workspace_card_content_request.h"
#include "workspace_store/card_model/workspace_chat_payload.h"
#include "workspace_store/card_model/workspace_html_public_function.h"
#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

// "source", "url", "note", "summary", "rich_text", "sanitized_html", "row_items",
// "available_fields", "hidden_fields", "images", "primary_image", "available_images".
struct WorkspaceLinkContent {
  std::optional<std::string> source;
  std::optional<std::string> url;
  std::optional<std::string> note;
  std::optional<std::string> summary;
  std::optional<std::string> richText;
  std::optional<std::string> sanitizedHTML;
  std::optional<std::vector<WorkspaceRowItem>> rowItems;
  std::optional<std::vector<WorkspaceRowItem>> availableFields;
  std::optional<std::vector<WorkspaceRowItem>> hiddenFields;
  std::optional<std::vector<std::string>> images;
  std::optional<std::string> primaryImage;
  std::optional<std::vector<std::string>> availableImages;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceLinkContent&) const = default;
};

// "url", "summary", "board_resource_url".
struct WorkspaceImageContent {
  std::optional<std::string> url;
  std::optional<std::string> summary;
  std::optional<std::string> boardResourceURL;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceImageContent&) const = default;
};

// "messages" (role and text), "message_range".
struct WorkspaceChatContent {
  std::vector<WorkspaceChatMessage> messages;
  WorkspaceCardRange messageRange;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceChatContent&) const = default;
};

// "markdown", "line_range".
struct WorkspaceRichTextContent {
  std::string markdown;
  WorkspaceCardRange lineRange;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceRichTextContent&) const = default;
};

// A window into an html source, in UTF-16 units: "start", "end" (exclusive), "total_length",
// "truncated" (end before total length), "next_start" (end, only when truncated).
struct WorkspaceHTMLSourceWindow {
  int64_t start = 0;
  int64_t end = 0;
  int64_t totalLength = 0;
  bool truncated = false;
  std::optional<int64_t> nextStart;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceHTMLSourceWindow&) const = default;
};

// "html", "css", "js", "allow_remote_assets", "persisted_state", "public_functions", and the
// windows "html_window", "css_window", "js_window", "persisted_state_window".
struct WorkspaceHTMLContent {
  std::optional<std::string> html;
  std::optional<std::string> css;
  std::optional<std::string> js;
  std::optional<bool> allowRemoteAssets;
  std::optional<std::string> persistedState;
  std::optional<std::vector<WorkspaceHTMLPublicFunction>> publicFunctions;
  std::optional<WorkspaceHTMLSourceWindow> htmlWindow;
  std::optional<WorkspaceHTMLSourceWindow> cssWindow;
  std::optional<WorkspaceHTMLSourceWindow> jsWindow;
  std::optional<WorkspaceHTMLSourceWindow> persistedStateWindow;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceHTMLContent&) const = default;
};

// "layout", "node_role", "summary", "child_ids", "child_count".
struct WorkspaceFolderContent {
  std::optional<std::string> layout;
  std::optional<std::string> nodeRole;
  std::optional<std::string> summary;
  std::optional<std::vector<Uuid>> childIDs;
  std::optional<int64_t> childCount;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceFolderContent&) const = default;
};

// One table cell: "row_index", "column_index" (1-based), "column_name", "value".
struct WorkspaceTableCellMatch {
  int64_t rowIndex = 0;
  int64_t columnIndex = 0;
  std::optional<std::string> columnName;
  std::string value;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceTableCellMatch&) const = default;
};

// "columns" (titles of the returned columns; absent when headers are excluded), "rows",
// "row_range", "column_range" (absent when columns were picked by name or automatically),
// "shows_row_headers", "total_rows", "total_columns", "row_count", "column_count", "row_filter",
// "filter_error", "column_names_requested", "column_names_missing", "cell", "cell_error",
// "matches", "match_error".
struct WorkspaceTableContent {
  std::optional<std::vector<std::string>> columns;
  std::vector<std::vector<std::string>> rows;
  std::optional<WorkspaceCardRange> rowRange;
  std::optional<WorkspaceCardRange> columnRange;
  bool showsRowHeaders = false;
  std::optional<int64_t> totalRows;
  std::optional<int64_t> totalColumns;
  std::optional<int64_t> rowCount;
  std::optional<int64_t> columnCount;
  std::optional<WorkspaceCardTableRowFilter> rowFilter;
  std::optional<std::string> filterError;
  std::optional<std::vector<std::string>> columnNamesRequested;
  std::optional<std::vector<std::string>> columnNamesMissing;
  std::optional<WorkspaceTableCellMatch> cell;
  std::optional<std::string> cellError;
  std::optional<std::vector<WorkspaceTableCellMatch>> matches;
  std::optional<std::string> matchError;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceTableContent&) const = default;
};

// "mode", "text", and at most one of "item", "image", "chat", "rich_text", "html", "folder",
// "table".
struct WorkspaceCardContentPayload {
  WorkspaceCardContentMode mode = WorkspaceCardContentMode::full;
  std::optional<std::string> text;
  std::optional<WorkspaceLinkContent> item;
  std::optional<WorkspaceImageContent> image;
  std::optional<WorkspaceChatContent> chat;
  std::optional<WorkspaceRichTextContent> richText;
  std::optional<WorkspaceHTMLContent> html;
  std::optional<WorkspaceFolderContent> folder;
  std::optional<WorkspaceTableContent> table;

  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardContentPayload&) const = default;
};

}  // namespace zorvik
