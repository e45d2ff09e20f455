// WorkspaceCardContentRequest and its option records: what a caller asks of one card's content.
//
// JSON keys are snake case as noted per field. Every field but the noted ones is optional; unknown
// keys are ignored. Decoding failures (a wrong type, an unknown mode word such as "raw") throw
// DecodingError. Ranges are 1-based and inclusive, except the html source range, which counts
// UTF-16 units from 0 with an exclusive end. Plain values.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"

namespace zorvik {

class ValueDecoder;

enum class WorkspaceCardContentMode { full, summary, typeSpecific };

template <>
struct EnumRawValues<WorkspaceCardContentMode> {
  static constexpr std::string_view typeName = "WorkspaceCardContentMode";
  static constexpr std::array table{
      std::pair{WorkspaceCardContentMode::full, std::string_view("full")},
      std::pair{WorkspaceCardContentMode::summary, std::string_view("summary")},
      std::pair{WorkspaceCardContentMode::typeSpecific, std::string_view("type_specific")},
  };
};

// How a cell value is compared with a query; equals when absent.
enum class WorkspaceCardTableMatchMode { equals, contains, startsWith, endsWith };

template <>
struct EnumRawValues<WorkspaceCardTableMatchMode> {
  static constexpr std::string_view typeName = "WorkspaceCardTableMatchMode";
  static constexpr std::array table{
      std::pair{WorkspaceCardTableMatchMode::equals, std::string_view("equals")},
      std::pair{WorkspaceCardTableMatchMode::contains, std::string_view("contains")},
      std::pair{WorkspaceCardTableMatchMode::startsWith, std::string_view("starts_with")},
      std::pair{WorkspaceCardTableMatchMode::endsWith, std::string_view("ends_with")},
  };
};

// {"start", "end"}: both optional.
struct WorkspaceCardRange {
  std::optional<int64_t> start;
  std::optional<int64_t> end;

  static WorkspaceCardRange decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardRange&) const = default;
};

// type_options.item: "fields", "max_items", "max_chars".
struct WorkspaceCardLinkOptions {
  std::optional<std::vector<std::string>> fields;
  std::optional<int64_t> maxItems;
  std::optional<int64_t> maxChars;

  static WorkspaceCardLinkOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardLinkOptions&) const = default;
};

// "column" and "match" required; "mode", "case_sensitive" (false when absent).
struct WorkspaceCardTableRowFilter {
  std::string column;
  std::string match;
  std::optional<WorkspaceCardTableMatchMode> mode;
  std::optional<bool> caseSensitive;

  static WorkspaceCardTableRowFilter decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardTableRowFilter&) const = default;
};

// "row_index" (1-based) required; the column by "column_index" (1-based) or "column_name".
struct WorkspaceCardTableCell {
  int64_t rowIndex = 0;
  std::optional<int64_t> columnIndex;
  std::optional<std::string> columnName;

  static WorkspaceCardTableCell decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardTableCell&) const = default;
};

// "match" required; "mode", "case_sensitive", "column", "row_range", "column_range",
// "max_matches" (50 when absent, at least 1).
struct WorkspaceCardTableFind {
  std::string match;
  std::optional<WorkspaceCardTableMatchMode> mode;
  std::optional<bool> caseSensitive;
  std::optional<std::string> column;
  std::optional<WorkspaceCardRange> rowRange;
  std::optional<WorkspaceCardRange> columnRange;
  std::optional<int64_t> maxMatches;

  static WorkspaceCardTableFind decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardTableFind&) const = default;
};

// type_options.table: "row_range", "column_range", "column_names", "row_filter", "cell", "find",
// "max_rows", "max_columns", "include_headers" (true when absent).
struct WorkspaceCardTableOptions {
  std::optional<WorkspaceCardRange> rowRange;
  std::optional<WorkspaceCardRange> columnRange;
  std::optional<std::vector<std::string>> columnNames;
  std::optional<WorkspaceCardTableRowFilter> rowFilter;
  std::optional<WorkspaceCardTableCell> cell;
  std::optional<WorkspaceCardTableFind> find;
  std::optional<int64_t> maxRows;
  std::optional<int64_t> maxColumns;
  std::optional<bool> includeHeaders;

  static WorkspaceCardTableOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardTableOptions&) const = default;
};

// type_options.rich_text: "line_range", "max_lines", "max_chars".
struct WorkspaceCardRichTextOptions {
  std::optional<WorkspaceCardRange> lineRange;
  std::optional<int64_t> maxLines;
  std::optional<int64_t> maxChars;

  static WorkspaceCardRichTextOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardRichTextOptions&) const = default;
};

// type_options.chat: "message_range", "last_n" (wins when at least 1), "max_chars" (per message).
struct WorkspaceCardChatOptions {
  std::optional<WorkspaceCardRange> messageRange;
  std::optional<int64_t> lastN;
  std::optional<int64_t> maxChars;

  static WorkspaceCardChatOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardChatOptions&) const = default;
};

// type_options.image and type_options.folder: "fields".
struct WorkspaceCardImageOptions {
  std::optional<std::vector<std::string>> fields;

  static WorkspaceCardImageOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardImageOptions&) const = default;
};

struct WorkspaceCardFolderOptions {
  std::optional<std::vector<std::string>> fields;

  static WorkspaceCardFolderOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardFolderOptions&) const = default;
};

// type_options.html: "fields", "max_chars" (UTF-16 units per source window), "source_range"
// (0-based UTF-16 offsets, end exclusive).
struct WorkspaceCardHTMLOptions {
  std::optional<std::vector<std::string>> fields;
  std::optional<int64_t> maxChars;
  std::optional<WorkspaceCardRange> sourceRange;

  static WorkspaceCardHTMLOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardHTMLOptions&) const = default;
};

// Keys: "item" (link cards), "table", "rich_text", "chat", "image", "html", "folder".
struct WorkspaceCardTypeOptions {
  std::optional<WorkspaceCardLinkOptions> link;
  std::optional<WorkspaceCardTableOptions> table;
  std::optional<WorkspaceCardRichTextOptions> richText;
  std::optional<WorkspaceCardChatOptions> chat;
  std::optional<WorkspaceCardImageOptions> image;
  std::optional<WorkspaceCardHTMLOptions> html;
  std::optional<WorkspaceCardFolderOptions> folder;

  static WorkspaceCardTypeOptions decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardTypeOptions&) const = default;
};

// "mode" (full when absent), "max_chars", "type_options".
struct WorkspaceCardContentRequest {
  WorkspaceCardContentMode mode = WorkspaceCardContentMode::full;
  std::optional<int64_t> maxChars;
  std::optional<WorkspaceCardTypeOptions> typeOptions;

  static WorkspaceCardContentRequest decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardContentRequest&) const = default;
};

}  // namespace zorvik
