#include "workspace_store/filesystem_workspace_state.h"

#include <utility>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/parallel_for.h"
#include "foundation/text.h"

namespace zorvik {

FilesystemWorkspaceUIState FilesystemWorkspaceUIState::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FilesystemWorkspaceUIState{
      .backgroundStyle = object.optional<std::string>("backgroundStyle"),
      .viewportCenter = object.optional<Point>("viewportCenter"),
      .currentFolderId = object.optional<Uuid>("currentFolderId"),
      .leftSidebarOpen = object.optional<bool>("leftSidebarOpen"),
      .chatSidebarWidth = object.optional<double>("chatSidebarWidth"),
      .chatSidebarOpen = object.optional<bool>("chatSidebarOpen"),
      .boardAgentGuideCardId = object.optional<Uuid>("boardAgentGuideCardId"),
      .agentAffinityByScope = object.optional<std::map<std::string, Uuid>>("agentAffinityByScope"),
      .zoomLevelsByFolder = object.optional<std::map<std::string, double>>("zoomLevelsByFolder"),
  };
}

AnyCodableValue FilesystemWorkspaceUIState::encode() const {
  return ObjectEncoder()
      .add("backgroundStyle", backgroundStyle)
      .add("viewportCenter", viewportCenter)
      .add("currentFolderId", currentFolderId)
      .add("leftSidebarOpen", leftSidebarOpen)
      .add("chatSidebarWidth", chatSidebarWidth)
      .add("chatSidebarOpen", chatSidebarOpen)
      .add("boardAgentGuideCardId", boardAgentGuideCardId)
      .add("agentAffinityByScope", agentAffinityByScope)
      .add("zoomLevelsByFolder", zoomLevelsByFolder)
      .build();
}

FilesystemWorkspaceLayout FilesystemWorkspaceLayout::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FilesystemWorkspaceLayout{
      .position = object.required<Point>("position"),
      .zIndex = object.required<int64_t>("zIndex"),
      .actualWidth = object.required<double>("actualWidth"),
      .actualHeight = object.required<double>("actualHeight"),
      .snapConstraints = object.optional<SnapConstraints>("snapConstraints"),
  };
}

AnyCodableValue FilesystemWorkspaceLayout::encode() const {
  return ObjectEncoder()
      .add("position", position)
      .add("zIndex", zIndex)
      .add("actualWidth", actualWidth)
      .add("actualHeight", actualHeight)
      .add("snapConstraints", snapConstraints)
      .build();
}

std::optional<std::string> FilesystemWorkspaceEntry::contentPath() const {
  if (!relativePath || trimWhitespaceAndNewlines(*relativePath).empty()) return std::nullopt;
  return relativePath;
}

FilesystemWorkspaceEntry FilesystemWorkspaceEntry::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FilesystemWorkspaceEntry{
      .id = object.required<Uuid>("id"),
      .relativePath = object.optional<std::string>("relativePath"),
      .kindRawValue = object.required<std::string>("kindRawValue"),
      .title = object.required<std::string>("title"),
      .shadowEnabled = object.required<bool>("shadowEnabled"),
      .parentID = object.optional<Uuid>("parentID"),
      .createdAt = object.required<Date>("createdAt"),
      .layout = object.required<FilesystemWorkspaceLayout>("layout"),
      .payload = object.required<AnyCodableValue>("payload"),
  };
}

AnyCodableValue FilesystemWorkspaceEntry::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("relativePath", relativePath)
      .add("kindRawValue", kindRawValue)
      .add("title", title)
      .add("shadowEnabled", shadowEnabled)
      .add("parentID", parentID)
      .add("createdAt", createdAt)
      .add("layout", layout)
      .add("payload", payload)
      .build();
}

FilesystemWorkspaceState FilesystemWorkspaceState::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FilesystemWorkspaceState{
      .version = object.required<int64_t>("version"),
      .projectId = object.required<std::string>("projectId"),
      .createdAt = object.required<Date>("createdAt"),
      .updatedAt = object.required<Date>("updatedAt"),
      .uiState = object.required<FilesystemWorkspaceUIState>("uiState"),
      .entries = object.required<std::vector<FilesystemWorkspaceEntry>>("entries"),
  };
}

FilesystemWorkspaceState FilesystemWorkspaceState::decodeDocument(AnyCodableValue document) {
  JSONObject* members = document.asObject();
  AnyCodableValue* entriesMember = members ? members->find("entries") : nullptr;
  if (!entriesMember || !entriesMember->asArray()) {
    return decodeValue<FilesystemWorkspaceState>(document);  // fails, or has no entries to move
  }
  // The other members decode first, as they would in a whole decode, with the entries set aside.
  AnyCodableValue::Array entries = std::move(*entriesMember->asArray());
  *entriesMember = AnyCodableValue::Array();
  FilesystemWorkspaceState state = decodeValue<FilesystemWorkspaceState>(document);

  const ObjectDecoder documentMembers = ValueDecoder(document).object();
  const ValueDecoder entriesDecoder = documentMembers.nested(*entriesMember, "entries");
  state.entries.resize(entries.size());
  parallelFor(
      entries.size(),
      [&](size_t i) {
        AnyCodableValue& raw = entries[i];
        // A present payload is taken out and decodes as null, which any payload accepts.
        AnyCodableValue payload;
        JSONObject* fields = raw.asObject();
        if (AnyCodableValue* given = fields ? fields->find("payload") : nullptr) {
          payload = std::exchange(*given, AnyCodableValue());
        }
        FilesystemWorkspaceEntry& entry = state.entries[i];
        entry = entriesDecoder.element(raw, static_cast<int>(i)).decode<FilesystemWorkspaceEntry>();
        entry.payload = std::move(payload);
        raw = AnyCodableValue();
      },
      512);
  return state;
}

AnyCodableValue FilesystemWorkspaceState::encode() const {
  return ObjectEncoder()
      .add("version", version)
      .add("projectId", projectId)
      .add("createdAt", createdAt)
      .add("updatedAt", updatedAt)
      .add("uiState", uiState)
      .add("entries", entries)
      .build();
}

}  // namespace zorvik
