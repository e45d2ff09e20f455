// ProjectMetadata: the project-wide facts of a loaded board, derived from the workspace document.
//
// JSON keys equal the field names. structureVersion, projectId, createdAt, updatedAt,
// resourcesFolderName, backgroundStyle and agentAffinityByScope are required on decoding (missing
// ones throw DecodingError); the other fields are optional and encoded only when present. A plain
// value.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"

namespace zorvik {

class ValueDecoder;
struct FilesystemWorkspaceState;

struct ProjectMetadata {
  // The project folder that holds user and card resources.
  static constexpr std::string_view kResourcesFolderName = "resources";
  // The board background when the document names none.
  static constexpr std::string_view kDefaultBackgroundStyle = "Dots";

  int64_t structureVersion = 1;
  std::string projectId;
  Date createdAt;
  Date updatedAt;
  std::string resourcesFolderName{kResourcesFolderName};
  std::string backgroundStyle{kDefaultBackgroundStyle};
  std::optional<Uuid> currentFolderId;
  std::optional<bool> leftSidebarOpen;
  std::optional<double> chatSidebarWidth;
  std::optional<bool> chatSidebarOpen;
  std::optional<Uuid> boardAgentGuideCardId;
  std::map<std::string, Uuid> agentAffinityByScope;

  // The metadata of a document: its version, identity and dates, and the view settings of its
  // uiState with their defaults applied (background "Dots", empty affinity map).
  static ProjectMetadata fromDocument(const FilesystemWorkspaceState& document);

  static ProjectMetadata decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const ProjectMetadata&) const = default;
};

}  // namespace zorvik
