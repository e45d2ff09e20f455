// WorkspaceLinkPayload: the body of a link card (a remote page or a local file) with its rows.
//
// JSON keys equal the field names. Only `url` is required; the rest default to remote, empty
// texts and lists, index 0 and false, and summary and sanitizedHTML stay absent. Encoding writes
// every field, absent optionals left out. Decoding failures throw DecodingError.
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
#include "workspace_store/card_model/workspace_row_item.h"

namespace zorvik {

class ValueDecoder;

enum class WorkspaceLinkSource { remote, local };

template <>
struct EnumRawValues<WorkspaceLinkSource> {
  static constexpr std::string_view typeName = "WorkspaceLinkSource";
  static constexpr std::array table{
      std::pair{WorkspaceLinkSource::remote, std::string_view("remote")},
      std::pair{WorkspaceLinkSource::local, std::string_view("local")},
  };
};

struct WorkspaceLinkPayload {
  WorkspaceLinkSource source = WorkspaceLinkSource::remote;
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
  bool isTemplate = false;

  static WorkspaceLinkPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceLinkPayload&) const = default;
};

}  // namespace zorvik
