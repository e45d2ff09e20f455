// WorkspaceFolderPayload: the body of a folder card, which also stands for groups and slides.
//
// Decoding tries these keys, first present wins:
//   nodeRole     node_role, nodeRole                          (default "folder")
//   gridColumns  grid_columns, gridColumns, gridColumnCount   (default absent)
//   groupKind    group_kind   (default "slide" when slideTemplateId is present, else "regular")
//   isDropbox    is_dropbox                                   (default false)
//   slideLayoutMode slide_layout_mode                         (default "adaptive")
// `layout` is required; summary, slideTemplateId, slideThemeId and slideVersion are optional.
// Encoding writes summary, layout, node_role, grid_columns, group_kind, is_dropbox,
// slide_layout_mode, slideTemplateId, slideThemeId and slideVersion, absent optionals left out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceFolderPayload {
  std::optional<std::string> summary;
  std::string layout;
  std::string nodeRole = "folder";
  std::optional<int64_t> gridColumns;
  std::string groupKind = "regular";
  bool isDropbox = false;
  std::string slideLayoutMode = "adaptive";
  std::optional<std::string> slideTemplateId;
  std::optional<std::string> slideThemeId;
  std::optional<int64_t> slideVersion;

  static WorkspaceFolderPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceFolderPayload&) const = default;
};

}  // namespace zorvik
