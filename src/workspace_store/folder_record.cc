#include "workspace_store/folder_record.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/filesystem_workspace_state.h"

namespace zorvik {

FolderRecord FolderRecord::rootFromDocument(const FilesystemWorkspaceState& document) {
  const FilesystemWorkspaceUIState& ui = document.uiState;
  std::optional<double> zoomLevel;
  if (ui.zoomLevelsByFolder) {
    if (auto found = ui.zoomLevelsByFolder->find("root"); found != ui.zoomLevelsByFolder->end()) {
      zoomLevel = found->second;
    }
  }
  return FolderRecord{.folderID = std::nullopt,
                      .path = ".",
                      .viewportCenter = ui.viewportCenter,
                      .zoomLevel = zoomLevel};
}

FolderRecord FolderRecord::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FolderRecord{
      .folderID = object.optional<Uuid>("folderID"),
      .path = object.required<std::string>("path"),
      .viewportCenter = object.optional<Point>("viewportCenter"),
      .zoomLevel = object.optional<double>("zoomLevel"),
  };
}

AnyCodableValue FolderRecord::encode() const {
  return ObjectEncoder()
      .add("folderID", folderID)
      .add("path", path)
      .add("viewportCenter", viewportCenter)
      .add("zoomLevel", zoomLevel)
      .build();
}

}  // namespace zorvik
