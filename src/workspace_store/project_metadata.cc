#include "workspace_store/project_metadata.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/filesystem_workspace_state.h"

namespace zorvik {

ProjectMetadata ProjectMetadata::fromDocument(const FilesystemWorkspaceState& document) {
  const FilesystemWorkspaceUIState& ui = document.uiState;
  return ProjectMetadata{
      .structureVersion = document.version,
      .projectId = document.projectId,
      .createdAt = document.createdAt,
      .updatedAt = document.updatedAt,
      .resourcesFolderName = std::string(kResourcesFolderName),
      .backgroundStyle = ui.backgroundStyle.value_or(std::string(kDefaultBackgroundStyle)),
      .currentFolderId = ui.currentFolderId,
      .leftSidebarOpen = ui.leftSidebarOpen,
      .chatSidebarWidth = ui.chatSidebarWidth,
      .chatSidebarOpen = ui.chatSidebarOpen,
      .boardAgentGuideCardId = ui.boardAgentGuideCardId,
      .agentAffinityByScope = ui.agentAffinityByScope.value_or(std::map<std::string, Uuid>{}),
  };
}

ProjectMetadata ProjectMetadata::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return ProjectMetadata{
      .structureVersion = object.required<int64_t>("structureVersion"),
      .projectId = object.required<std::string>("projectId"),
      .createdAt = object.required<Date>("createdAt"),
      .updatedAt = object.required<Date>("updatedAt"),
      .resourcesFolderName = object.required<std::string>("resourcesFolderName"),
      .backgroundStyle = object.required<std::string>("backgroundStyle"),
      .currentFolderId = object.optional<Uuid>("currentFolderId"),
      .leftSidebarOpen = object.optional<bool>("leftSidebarOpen"),
      .chatSidebarWidth = object.optional<double>("chatSidebarWidth"),
      .chatSidebarOpen = object.optional<bool>("chatSidebarOpen"),
      .boardAgentGuideCardId = object.optional<Uuid>("boardAgentGuideCardId"),
      .agentAffinityByScope = object.required<std::map<std::string, Uuid>>("agentAffinityByScope"),
  };
}

AnyCodableValue ProjectMetadata::encode() const {
  return ObjectEncoder()
      .add("structureVersion", structureVersion)
      .add("projectId", projectId)
      .add("createdAt", createdAt)
      .add("updatedAt", updatedAt)
      .add("resourcesFolderName", resourcesFolderName)
      .add("backgroundStyle", backgroundStyle)
      .add("currentFolderId", currentFolderId)
      .add("leftSidebarOpen", leftSidebarOpen)
      .add("chatSidebarWidth", chatSidebarWidth)
      .add("chatSidebarOpen", chatSidebarOpen)
      .add("boardAgentGuideCardId", boardAgentGuideCardId)
      .add("agentAffinityByScope", agentAffinityByScope)
      .build();
}

}  // namespace zorvik
