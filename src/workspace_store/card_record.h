// CardRecord: one card of the loaded board, as all read-side code sees it.
//
// JSON keys equal the field names; parentID, folderID and snapConstraints are optional and encoded
// only when present, every other key is required on decoding. A plain value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/card_model/table_rows.h"
#include "workspace_store/frame.h"
#include "workspace_store/group_stack.h"
#include "workspace_store/snap_constraints.h"

namespace zorvik {

class ValueDecoder;
struct FilesystemWorkspaceEntry;

struct CardRecord {
  Uuid id;
  std::optional<Uuid> parentID;
  std::string title;
  Date createdAt;
  // The content path relative to the project root, or inlinePath(id) for a card without a file.
  std::string path;
  std::optional<Uuid> folderID;
  Frame frame;
  int64_t zIndex = 0;
  std::optional<SnapConstraints> snapConstraints;
  AnyCodableValue payload;  // the resolved runtime payload
  std::vector<GroupStack> groupStacks;
  // Only from loads that ask for table rows apart (WorkspaceProjectSnapshotStore::LoadOptions::
  // tableRowsApart): a table card's body rows, read straight from its CSV file, while the
  // payload's `rows` is an empty array. Not part of the JSON form.
  std::optional<TableRows> tableRows;

  // The path of a card that lives wholly in the workspace document:
  // ".zorvik/workspace.json#" followed by the upper-case UUID.
  static std::string inlinePath(const Uuid& id);

  // The record of a document entry whose payload has been resolved. The path is the entry's
  // contentPath() or inlinePath(id); folderID stays absent; the frame is the layout's position and
  // actual size. Group stacks come from payload.folder.groupStacks; when that is absent or cannot
  // be decoded the list is empty, without error. Never throws for a decoded entry.
  static CardRecord fromEntry(const FilesystemWorkspaceEntry& entry, AnyCodableValue payload);

  static CardRecord decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const CardRecord&) const = default;
};

}  // namespace zorvik
