#include "tools/layout/get_group_layout_tool.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/layout/group_layout.h"
#include "tools/layout/snapshot_card_index.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

constexpr std::string_view kToolName = "get_group_layout";

struct GetGroupLayoutRequest {
  std::optional<std::vector<std::string>> groupIDs;
  bool includeChildLayouts = false;
  bool includeChildFrames = false;
  bool includeConstraints = false;

  static GetGroupLayoutRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::vector<std::string>>("group_ids"),
            object.value<bool>("include_child_layouts", false),
            object.value<bool>("include_child_frames", false),
            object.value<bool>("include_constraints", false)};
  }
};

AgentToolSpec getGroupLayoutSpec() {
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary = "Return folder/group topology including group stacks and children.",
      .inputSchema = schema::object({
          {"project_path",
           schema::string("Project folder; defaults to the project the session is bound to.")},
          {"group_ids",
           schema::array(schema::string(), "Folder/group card UUIDs; omit for every folder.")},
          {"include_child_layouts",
           schema::boolean("Add child_layouts with each child's geometry (default false).")},
          {"include_child_frames", schema::boolean("Same as include_child_layouts.")},
          {"include_constraints",
           schema::boolean("Add snap constraints to child layouts (default false).")},
      }),
      .outputSchema = schema::object(
          {
              {"groups", schema::array(GroupLayout::jsonSchema())},
              {"missing_group_ids", schema::array(schema::string())},
          },
          {"groups", "missing_group_ids"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{
                  {"group_ids", AnyCodableValue::Array{"7D1E2F3A-4B5C-4D6E-8F7A-9B0C1D2E3F4A"}},
                  {"include_child_layouts", true}},
          },
      .notes =
          "Reads the saved project; works without the running app. Ids that are not folder or "
          "group cards are listed in missing_group_ids.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

GetGroupLayoutTool::GetGroupLayoutTool(std::optional<std::filesystem::path> defaultProjectURL)
    : defaultProjectURL_(std::move(defaultProjectURL)), spec_(getGroupLayoutSpec()) {}

AnyCodableValue GetGroupLayoutTool::run(const AnyCodableValue& input,
                                        const AgentToolContext&) const {
  const auto request = decodeValue<GetGroupLayoutRequest>(input);
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  const WorkspaceProjectSnapshot snapshot = WorkspaceProjectSnapshotStore().load(projectURL);
  const SnapshotCardIndex index(snapshot);
  const bool withChildren = request.includeChildLayouts || request.includeChildFrames;

  const auto layoutOf = [&](const CardRecord& card) {
    return GroupLayout::forCard(card, index, withChildren, request.includeConstraints);
  };
  std::vector<GroupLayout> groups;
  std::vector<std::string> missing;
  if (!request.groupIDs || request.groupIDs->empty()) {
    for (const CardRecord& card : snapshot.cards) {
      if (auto layout = layoutOf(card)) groups.push_back(std::move(*layout));
    }
  } else {
    std::unordered_set<const CardRecord*> taken;
    std::unordered_set<std::string> missed;
    for (const std::string& text : *request.groupIDs) {
      const std::optional<Uuid> id = parseCardUUID(text);
      const CardRecord* card = id ? index.card(*id) : nullptr;
      if (card && taken.contains(card)) continue;
      if (std::optional<GroupLayout> layout = card ? layoutOf(*card) : std::nullopt) {
        taken.insert(card);
        groups.push_back(std::move(*layout));
        continue;
      }
      if (missed.insert(text).second) missing.push_back(text);
    }
  }
  return ObjectEncoder().add("groups", groups).add("missing_group_ids", missing).build();
}

}  // namespace zorvik
