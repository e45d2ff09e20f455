#include "workspace_store/checkpoints/project_checkpoint_snapshot_archive.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {
namespace {

FolderRecord decodeArchivedFolder(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return FolderRecord{
      .folderID = object.optional<Uuid>("folder_id"),
      .path = object.required<std::string>("path"),
      .viewportCenter = object.optional<Point>("viewport_center"),
      .zoomLevel = object.optional<double>("zoom_level"),
  };
}

AnyCodableValue encodeArchivedFolder(const FolderRecord& folder) {
  return ObjectEncoder()
      .add("folder_id", folder.folderID)
      .add("path", folder.path)
      .add("viewport_center", folder.viewportCenter)
      .add("zoom_level", folder.zoomLevel)
      .build();
}

CardRecord decodeArchivedCard(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return CardRecord{
      .id = object.required<Uuid>("id"),
      .parentID = object.optional<Uuid>("parent_id"),
      .title = object.required<std::string>("title"),
      .createdAt = object.required<Date>("created_at"),
      .path = object.required<std::string>("path"),
      .folderID = object.optional<Uuid>("folder_id"),
      .frame = object.required<Frame>("frame"),
      .zIndex = object.required<int64_t>("z_index"),
      .snapConstraints = object.optional<SnapConstraints>("snap_constraints"),
      .payload = object.required<AnyCodableValue>("payload"),
      .groupStacks = object.required<std::vector<GroupStack>>("group_stacks"),
  };
}

AnyCodableValue encodeArchivedCard(const CardRecord& card) {
  return ObjectEncoder()
      .add("id", card.id)
      .add("parent_id", card.parentID)
      .add("title", card.title)
      .add("created_at", card.createdAt)
      .add("path", card.path)
      .add("folder_id", card.folderID)
      .add("frame", card.frame)
      .add("z_index", card.zIndex)
      .add("snap_constraints", card.snapConstraints)
      .add("payload", card.payload)
      .add("group_stacks", card.groupStacks)
      .build();
}

// The required array under `key`, each element read by `decodeOne`.
template <class Record>
std::vector<Record> requiredArray(const ObjectDecoder& object, std::string_view key,
                                  Record (*decodeOne)(const ValueDecoder&)) {
  const AnyCodableValue* member = object.raw(key);
  if (!member) object.throwKeyNotFound(key);
  const ValueDecoder array = object.nested(*member, key);
  const AnyCodableValue::Array& elements = array.array();
  std::vector<Record> records;
  records.reserve(elements.size());
  for (size_t i = 0; i < elements.size(); ++i) {
    records.push_back(decodeOne(array.element(elements[i], static_cast<int>(i))));
  }
  return records;
}

template <class Record>
AnyCodableValue encodedArray(const std::vector<Record>& records,
                             AnyCodableValue (*encodeOne)(const Record&)) {
  AnyCodableValue::Array values;
  values.reserve(records.size());
  for (const Record& record : records) values.push_back(encodeOne(record));
  return AnyCodableValue(std::move(values));
}

}  // namespace

ProjectCheckpointSnapshotArchive ProjectCheckpointSnapshotArchive::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return ProjectCheckpointSnapshotArchive{
      .checkpointID = object.required<std::string>("checkpoint_id"),
      .createdAt = object.required<Date>("created_at"),
      .trigger = object.required<WorkspaceProjectCheckpointTrigger>("trigger"),
      .reason = object.optional<std::string>("reason"),
      .stateHash = object.required<std::string>("state_hash"),
      .projectFingerprint = object.required<std::string>("project_fingerprint"),
      .metadata = object.required<ProjectMetadata>("metadata"),
      .folders = requiredArray(object, "folders", &decodeArchivedFolder),
      .cards = requiredArray(object, "cards", &decodeArchivedCard),
  };
}

AnyCodableValue ProjectCheckpointSnapshotArchive::encode() const {
  return ObjectEncoder()
      .add("checkpoint_id", checkpointID)
      .add("created_at", createdAt)
      .add("trigger", trigger)
      .add("reason", reason)
      .add("state_hash", stateHash)
      .add("project_fingerprint", projectFingerprint)
      .add("metadata", metadata)
      .add("folders", encodedArray(folders, &encodeArchivedFolder))
      .add("cards", encodedArray(cards, &encodeArchivedCard))
      .build();
}

}  // namespace zorvik
