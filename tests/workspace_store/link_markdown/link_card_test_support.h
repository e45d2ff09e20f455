// Shared helpers of the link-card Markdown tests.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

// The lines joined, each followed by a line feed; trailing spaces stay visible in the test source.
inline std::string textLines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (std::string_view line : lines) text.append(line).append("\n");
  return text;
}

inline WorkspaceRowItem keyValueRow(std::string label, std::string value) {
  return {.label = std::move(label), .type = "key_value", .keyValue = KeyValuePayload{value}};
}

inline WorkspaceRowItem listRow(std::string label, std::vector<std::string> items, bool expanded) {
  return {.label = std::move(label),
          .type = "expandable_list",
          .expandableList = ExpandableListPayload{std::move(items), expanded}};
}

inline WorkspaceRowItem todoRow(std::string label, bool checked) {
  return {.label = std::move(label), .type = "todo", .todo = TodoPayload{checked}};
}

inline WorkspaceRowItem ratingRow(std::string label, int64_t value) {
  return {.label = std::move(label), .type = "rating", .rating = RatingPayload{value}};
}

}  // namespace zorvik
