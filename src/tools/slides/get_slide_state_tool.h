// get_slide_state: slide groups of a project as stored on disk: template, theme and layout
// metadata, which card fills each slot, unresolved required slots and geometry.
//
// Each run loads the project snapshot afresh (WorkspaceProjectSnapshotStore) and checks it against
// the built-in slide catalogue; works without the desktop application. Which groups are reported,
// and how bindings, stray slots and unknown templates are shown, is described in
// slide_state_reader.h. The tool keeps no state beyond its default project, so concurrent runs are
// safe (execution "parallel").
//
// Input: project_path (wins over the default project), group_ids (array of text; absent or empty
// means every slide group), include_child_frames (boolean, default false). Answer: status "ok",
// slides, missing_group_ids.
// Failures: undecodable input throws DecodingError; with neither project_path nor a default
// project it throws std::invalid_argument "get_slide_state requires project_path when session is
// not bound.". A project folder that does not exist answers status "error" with error_code
// "project_not_found"; one whose workspace document cannot be read answers status "error" with
// error_code "project_load_failed"; both with message, and empty slides and missing_group_ids.
#pragma once

#include <filesystem>
#include <optional>

#include "tools/framework/agent_tool.h"

namespace zorvik {

class GetSlideStateTool final : public AgentTool {
 public:
  explicit GetSlideStateTool(std::optional<std::filesystem::path> defaultProjectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
