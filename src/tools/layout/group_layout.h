// GroupLayout: the arrangement of one folder card (folder, group or slide) as get_group_layout
// reports it.
//
// JSON form: folder_id, layout (the folder's layout word), grid_column_count (null when the folder
// has none), ordered_child_ids, group_stacks (the stored GroupStack records), child_count and,
// only when asked for, child_layouts (one LayoutItem per child, in child order). A plain value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "tools/layout/layout_item.h"
#include "tools/layout/snapshot_card_index.h"
#include "workspace_store/card_record.h"
#include "workspace_store/group_stack.h"

namespace zorvik {

struct GroupLayout {
  Uuid folderID;
  std::string layout;
  std::optional<int64_t> gridColumnCount;
  std::vector<Uuid> orderedChildIDs;
  std::vector<GroupStack> groupStacks;
  int64_t childCount = 0;
  std::optional<std::vector<LayoutItem>> childLayouts;

  // The layout of `card` when its payload decodes as a folder payload, else nullopt.
  //
  // Child order: the folder payload's own order (`orderedChildIds` or `ordered_child_ids`, UUID
  // texts) when it has one, keeping only ids of present children, each once, followed by the
  // children it leaves out; otherwise the children in the document's entry order.
  static std::optional<GroupLayout> forCard(const CardRecord& card, const SnapshotCardIndex& index,
                                            bool includeChildLayouts, bool includeConstraints);

  AnyCodableValue encode() const;
  // The JSON schema of the encoded form.
  static AnyCodableValue jsonSchema();
  bool operator==(const GroupLayout&) const = default;
};

}  // namespace zorvik
