#include "tools/cards/workspace_card_content_request.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCardRange WorkspaceCardRange::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<int64_t>("start"), object.optional<int64_t>("end")};
}

AnyCodableValue WorkspaceCardRange::encode() const {
  return ObjectEncoder().add("start", start).add("end", end).build();
}

WorkspaceCardLinkOptions WorkspaceCardLinkOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::vector<std::string>>("fields"),
          object.optional<int64_t>("max_items"), object.optional<int64_t>("max_chars")};
}

AnyCodableValue WorkspaceCardLinkOptions::encode() const {
  return ObjectEncoder()
      .add("fields", fields)
      .add("max_items", maxItems)
      .add("max_chars", maxChars)
      .build();
}

WorkspaceCardTableRowFilter WorkspaceCardTableRowFilter::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("column"), object.required<std::string>("match"),
          object.optional<WorkspaceCardTableMatchMode>("mode"),
          object.optional<bool>("case_sensitive")};
}

AnyCodableValue WorkspaceCardTableRowFilter::encode() const {
  return ObjectEncoder()
      .add("column", column)
      .add("match", match)
      .add("mode", mode)
      .add("case_sensitive", caseSensitive)
      .build();
}

WorkspaceCardTableCell WorkspaceCardTableCell::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<int64_t>("row_index"), object.optional<int64_t>("column_index"),
          object.optional<std::string>("column_name")};
}

AnyCodableValue WorkspaceCardTableCell::encode() const {
  return ObjectEncoder()
      .add("row_index", rowIndex)
      .add("column_index", columnIndex)
      .add("column_name", columnName)
      .build();
}

WorkspaceCardTableFind WorkspaceCardTableFind::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("match"),
          object.optional<WorkspaceCardTableMatchMode>("mode"),
          object.optional<bool>("case_sensitive"),
          object.optional<std::string>("column"),
          object.optional<WorkspaceCardRange>("row_range"),
          object.optional<WorkspaceCardRange>("column_range"),
          object.optional<int64_t>("max_matches")};
}

AnyCodableValue WorkspaceCardTableFind::encode() const {
  return ObjectEncoder()
      .add("match", match)
      .add("mode", mode)
      .add("case_sensitive", caseSensitive)
      .add("column", column)
      .add("row_range", rowRange)
      .add("column_range", columnRange)
      .add("max_matches", maxMatches)
      .build();
}

WorkspaceCardTableOptions WorkspaceCardTableOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<WorkspaceCardRange>("row_range"),
          object.optional<WorkspaceCardRange>("column_range"),
          object.optional<std::vector<std::string>>("column_names"),
          object.optional<WorkspaceCardTableRowFilter>("row_filter"),
          object.optional<WorkspaceCardTableCell>("cell"),
          object.optional<WorkspaceCardTableFind>("find"),
          object.optional<int64_t>("max_rows"),
          object.optional<int64_t>("max_columns"),
          object.optional<bool>("include_headers")};
}

AnyCodableValue WorkspaceCardTableOptions::encode() const {
  return ObjectEncoder()
      .add("row_range", rowRange)
      .add("column_range", columnRange)
      .add("column_names", columnNames)
      .add("row_filter", rowFilter)
      .add("cell", cell)
      .add("find", find)
      .add("max_rows", maxRows)
      .add("max_columns", maxColumns)
      .add("include_headers", includeHeaders)
      .build();
}

WorkspaceCardRichTextOptions WorkspaceCardRichTextOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<WorkspaceCardRange>("line_range"), object.optional<int64_t>("max_lines"),
          object.optional<int64_t>("max_chars")};
}

AnyCodableValue WorkspaceCardRichTextOptions::encode() const {
  return ObjectEncoder()
      .add("line_range", lineRange)
      .add("max_lines", maxLines)
      .add("max_chars", maxChars)
      .build();
}

WorkspaceCardChatOptions WorkspaceCardChatOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<WorkspaceCardRange>("message_range"), object.optional<int64_t>("last_n"),
          object.optional<int64_t>("max_chars")};
}

AnyCodableValue WorkspaceCardChatOptions::encode() const {
  return ObjectEncoder()
      .add("message_range", messageRange)
      .add("last_n", lastN)
      .add("max_chars", maxChars)
      .build();
}

WorkspaceCardImageOptions WorkspaceCardImageOptions::decode(const ValueDecoder& decoder) {
  return {decoder.object().optional<std::vector<std::string>>("fields")};
}

AnyCodableValue WorkspaceCardImageOptions::encode() const {
  return ObjectEncoder().add("fields", fields).build();
}

WorkspaceCardFolderOptions WorkspaceCardFolderOptions::decode(const ValueDecoder& decoder) {
  return {decoder.object().optional<std::vector<std::string>>("fields")};
}

AnyCodableValue WorkspaceCardFolderOptions::encode() const {
  return ObjectEncoder().add("fields", fields).build();
}

WorkspaceCardHTMLOptions WorkspaceCardHTMLOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::vector<std::string>>("fields"),
          object.optional<int64_t>("max_chars"),
          object.optional<WorkspaceCardRange>("source_range")};
}

AnyCodableValue WorkspaceCardHTMLOptions::encode() const {
  return ObjectEncoder()
      .add("fields", fields)
      .add("max_chars", maxChars)
      .add("source_range", sourceRange)
      .build();
}

WorkspaceCardTypeOptions WorkspaceCardTypeOptions::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<WorkspaceCardLinkOptions>("item"),
          object.optional<WorkspaceCardTableOptions>("table"),
          object.optional<WorkspaceCardRichTextOptions>("rich_text"),
          object.optional<WorkspaceCardChatOptions>("chat"),
          object.optional<WorkspaceCardImageOptions>("image"),
          object.optional<WorkspaceCardHTMLOptions>("html"),
          object.optional<WorkspaceCardFolderOptions>("folder")};
}

AnyCodableValue WorkspaceCardTypeOptions::encode() const {
  return ObjectEncoder()
      .add("item", link)
      .add("table", table)
      .add("rich_text", richText)
      .add("chat", chat)
      .add("image", image)
      .add("html", html)
      .add("folder", folder)
      .build();
}

WorkspaceCardContentRequest WorkspaceCardContentRequest::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.value<WorkspaceCardContentMode>("mode", WorkspaceCardContentMode::full),
          object.optional<int64_t>("max_chars"),
          object.optional<WorkspaceCardTypeOptions>("type_options")};
}

AnyCodableValue WorkspaceCardContentRequest::encode() const {
  return ObjectEncoder()
      .add("mode", mode)
      .add("max_chars", maxChars)
      .add("type_options", typeOptions)
      .build();
}

}  // namespace zorvik
