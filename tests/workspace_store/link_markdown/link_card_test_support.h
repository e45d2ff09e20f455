// Shared helpers of the link-card Markdown tests.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

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
