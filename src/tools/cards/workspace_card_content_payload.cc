#include "tools/cards/workspace_card_content_payload.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue WorkspaceLinkContent::encode() const {
  return ObjectEncoder()
      .add("source", source)
      .add("url", url)
      .add("note", note)
      .add("summary", summary)
      .add("rich_text", richText)
      .add("sanitized_html", sanitizedHTML)
      .add("row_items", rowItems)
      .add("available_fields", availableFields)
      .add("hidden_fields", hiddenFields)
      .add("images", images)
      .add("primary_image", primaryImage)
      .add("available_images", availableImages)
      .build();
}

AnyCodableValue WorkspaceImageContent::encode() const {
  return ObjectEncoder()
      .add("url", url)
      .add("summary", summary)
      .add("board_resource_url", boardResourceURL)
      .build();
}

AnyCodableValue WorkspaceChatContent::encode() const {
  return ObjectEncoder().add("messages", messages).add("message_range", messageRange).build();
}

AnyCodableValue WorkspaceRichTextContent::encode() const {
  return ObjectEncoder().add("markdown", markdown).add("line_range", lineRange).build();
}

AnyCodableValue WorkspaceHTMLSourceWindow::encode() const {
  return ObjectEncoder()
      .add("start", start)
      .add("end", end)
      .add("total_length", totalLength)
      .add("truncated", truncated)
      .add("next_start", nextStart)
      .build();
}

AnyCodableValue WorkspaceHTMLContent::encode() const {
  return ObjectEncoder()
      .add("html", html)
      .add("css", css)
      .add("js", js)
      .add("allow_remote_assets", allowRemoteAssets)
      .add("persisted_state", persistedState)
      .add("public_functions", publicFunctions)
      .add("html_window", htmlWindow)
      .add("css_window", cssWindow)
      .add("js_window", jsWindow)
      .add("persisted_state_window", persistedStateWindow)
      .build();
}

AnyCodableValue WorkspaceFolderContent::encode() const {
  return ObjectEncoder()
      .add("layout", layout)
      .add("node_role", nodeRole)
      .add("summary", summary)
      .add("child_ids", childIDs)
      .add("child_count", childCount)
      .build();
}

AnyCodableValue WorkspaceTableCellMatch::encode() const {
  return ObjectEncoder()
      .add("row_index", rowIndex)
      .add("column_index", columnIndex)
      .add("column_name", columnName)
      .add("value", value)
      .build();
}

AnyCodableValue WorkspaceTableContent::encode() const {
  return ObjectEncoder()
      .add("columns", columns)
      .add("rows", rows)
      .add("row_range", rowRange)
      .add("column_range", columnRange)
      .add("shows_row_headers", showsRowHeaders)
      .add("total_rows", totalRows)
      .add("total_columns", totalColumns)
      .add("row_count", rowCount)
      .add("column_count", columnCount)
      .add("row_filter", rowFilter)
      .add("filter_error", filterError)
      .add("column_names_requested", columnNamesRequested)
      .add("column_names_missing", columnNamesMissing)
      .add("cell", cell)
      .add("cell_error", cellError)
      .add("matches", matches)
      .add("match_error", matchError)
      .build();
}

AnyCodableValue WorkspaceCardContentPayload::encode() const {
  return ObjectEncoder()
      .add("mode", mode)
      .add("text", text)
      .add("item", item)
      .add("image", image)
      .add("chat", chat)
      .add("rich_text", richText)
      .add("html", html)
      .add("folder", folder)
      .add("table", table)
      .build();
}

}  // namespace zorvik
