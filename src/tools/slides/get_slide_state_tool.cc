#include "tools/slides/get_slide_state_tool.h"

#include <string>
#include <system_error>
#include <vector>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/slides/slide_state_reader.h"
#include "workspace_store/workspace_project_snapshot_error.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

constexpr std::string_view kToolName = "get_slide_state";

struct GetSlideStateRequest {
  std::optional<std::string> projectPath;
  std::optional<std::vector<std::string>> groupIds;
  std::optional<bool> includeChildFrames;

  static GetSlideStateRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::string>("project_path"),
            object.optional<std::vector<std::string>>("group_ids"),
            object.optional<bool>("include_child_frames")};
  }
};

AnyCodableValue outputSchema() {
  AnyCodableValue frame = schema::object({{"x", schema::number()},
                                          {"y", schema::number()},
                                          {"width", schema::number()},
                                          {"height", schema::number()}},
                                         {"x", "y", "width", "height"});
  AnyCodableValue slot = schema::object(
      {
          {"slot_id", schema::string()},
          {"slot_role", schema::string()},
          {"required", schema::boolean()},
          {"card_id", schema::string("The bound card, absent when the slot is unbound.")},
          {"card_type", schema::string("image, rich_text, table, item, ...")},
          {"in_group", schema::boolean("Whether the bound card is a child of the slide group.")},
          {"frame", frame},
      },
      {"slot_id"});
  AnyCodableValue constraint = schema::object(
      {
          {"slot_id", schema::string()},
          {"overflow_policy", schema::stringEnum({"clip", "shrink", "expand"})},
          {"priority", schema::integer()},
          {"min_width_factor", schema::number()},
          {"max_width_factor", schema::number()},
          {"min_height_factor", schema::number()},
          {"max_height_factor", schema::number()},
      },
      {"slot_id", "overflow_policy", "priority"});
  AnyCodableValue childFrame = schema::object(
      {{"card_id", schema::string()}, {"card_type", schema::string()}, {"frame", frame}},
      {"card_id", "frame"});
  AnyCodableValue slide = schema::object(
      {
          {"group_id", schema::string()},
          {"title", schema::string()},
          {"template_id", schema::string()},
          {"template_family", schema::string()},
          {"theme_id", schema::string()},
          {"group_kind", schema::string()},
          {"layout_mode", schema::string()},
          {"slide_version", schema::integer()},
          {"slide_updated_at", schema::string()},
          {"group_frame", frame},
          {"slots", schema::array(slot)},
          {"slot_constraints", schema::array(constraint)},
          {"unresolved_slots", schema::array(schema::string())},
          {"child_frames", schema::array(childFrame)},
      },
      {"group_id", "title", "group_kind", "layout_mode", "group_frame", "slots", "slot_constraints",
       "unresolved_slots"});
  return schema::object(
      {
          {"status", schema::stringEnum({"ok", "error"})},
          {"slides", schema::array(slide)},
          {"missing_group_ids", schema::array(schema::string())},
          {"error_code", schema::stringEnum({"project_not_found", "project_load_failed"})},
          {"message", schema::string()},
      },
      {"status", "slides", "missing_group_ids"});
}

AgentToolSpec getSlideStateSpec() {
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary =
          "Inspect slide group state: template/theme/layout metadata, slot occupancy, "
          "unresolved slots, and geometry.",
      .inputSchema = schema::object({
          {"project_path", schema::string("Project folder; defaults to the bound project.")},
          {"group_ids",
           schema::array(schema::string(), "Slide group UUIDs; omit for every slide group.")},
          {"include_child_frames",
           schema::boolean("Also list the frame of every card inside each group.")},
      }),
      .outputSchema = outputSchema(),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{
                  {"group_ids", AnyCodableValue::Array{"3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"}},
                  {"include_child_frames", true}},
          },
      .notes =
          "Reads the project files; the desktop app need not run. A slide group is a folder "
          "with group_kind \"slide\". Slots follow the template from list_slide_templates; "
          "in_group=false means the bound card lies outside the group. unresolved_slots lists "
          "required slots without a bound card (a binding to a deleted card counts as none). "
          "Ids that are not slide groups are returned in missing_group_ids.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

AnyCodableValue errorAnswer(std::string_view code, const std::string& message) {
  return ObjectEncoder()
      .add("status", "error")
      .add("error_code", code)
      .add("message", message)
      .add("slides", AnyCodableValue::Array{})
      .add("missing_group_ids", AnyCodableValue::Array{})
      .build();
}

}  // namespace

GetSlideStateTool::GetSlideStateTool(std::optional<std::filesystem::path> defaultProjectURL)
    : defaultProjectURL_(std::move(defaultProjectURL)), spec_(getSlideStateSpec()) {}

AnyCodableValue GetSlideStateTool::run(const AnyCodableValue& input,
                                       const AgentToolContext&) const {
  const auto request = decodeValue<GetSlideStateRequest>(input);
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);

  std::error_code error;
  if (!std::filesystem::is_directory(projectURL, error)) {
    return errorAnswer("project_not_found", "Project folder not found: " + projectURL.string());
  }
  WorkspaceProjectSnapshot snapshot;
  try {
    snapshot = WorkspaceProjectSnapshotStore().load(projectURL);
  } catch (const WorkspaceProjectSnapshotError& failure) {
    return errorAnswer("project_load_failed", failure.what());
  } catch (const std::filesystem::filesystem_error& failure) {
    return errorAnswer("project_load_failed", failure.what());
  }

  const SlideStateReport report =
      readSlideStates(snapshot, SlideTemplateCatalog::standard(),
                      request.groupIds.value_or(std::vector<std::string>{}),
                      request.includeChildFrames.value_or(false));
  return ObjectEncoder()
      .add("status", "ok")
      .add("slides", report.slides)
      .add("missing_group_ids", report.missingGroupIds)
      .build();
}

}  // namespace zorvik
