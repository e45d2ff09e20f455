// get_group_layout: the topology of folder cards (folders, groups, slides): layout word, grid
// columns, ordered children, group stacks and, on request, the children's geometry. Read from the
// project on disk at each call; the application is not needed.
//
// The project is the input's project_path, else the default given at construction (without
// either, std::invalid_argument). Undecodable input throws DecodingError; a project that fails to
// load throws the load's error. Immutable; concurrent runs are safe.
#pragma once

#include <filesystem>
#include <optional>

#include "tools/framework/agent_tool.h"

namespace zorvik {

class GetGroupLayoutTool final : public AgentTool {
 public:
  explicit GetGroupLayoutTool(std::optional<std::filesystem::path> defaultProjectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: project_path, group_ids, include_child_layouts, include_child_frames (the same switch
  // under a second name), include_constraints. Absent or empty group_ids mean every folder card in
  // entry order; otherwise the named folders in requested order, each once. Answer: groups
  // (GroupLayout) and missing_group_ids (requested ids, as given, that are no UUID or name no
  // folder card).
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
