// FolderRecord: a folder of the loaded board with its view settings. JSON keys equal the field
// names; `path` is required, the others are optional and encoded only when present. A plain value.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/point.h"

namespace zorvik {

class ValueDecoder;
struct FilesystemWorkspaceState;

struct FolderRecord {
  std::optional<Uuid> folderID;  // absent for the board root
  std::string path;
  std::optional<Point> viewportCenter;
  std::optional<double> zoomLevel;

  // The board root of a document: no folderID, path ".", the uiState's viewportCenter and the zoom
  // level under the "root" key of zoomLevelsByFolder. Other folders' settings are not surfaced.
  static FolderRecord rootFromDocument(const FilesystemWorkspaceState& document);

  static FolderRecord decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const FolderRecord&) const = default;
};

}  // namespace zorvik
