#include "tools/layout/focus_card_tool.h"

#include <stdexcept>
#include <string>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/layout/layout_item.h"
#include "tools/layout/snapshot_card_index.h"
#include "tools/layout/viewport_camera_scope.h"
#include "tools/layout/viewport_runtime_call.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

constexpr std::string_view kToolName = "focus_card";

struct FocusCardRequest {
  std::string cardID;
  std::optional<double> zoom;
  std::optional<bool> persistViewport;
  std::optional<ViewportCameraScope> cameraScope;

  static FocusCardRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<std::string>("card_id"), object.optional<double>("zoom"),
            object.optional<bool>("persist_viewport"),
            object.optional<ViewportCameraScope>("camera_scope")};
  }
};

AgentToolSpec focusCardSpec() {
  const AnyCodableValue number = schema::number();
  const AnyCodableValue nullableString =
      JSONObject{{"type", AnyCodableValue::Array{"string", "null"}}};
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary =
          "Focus viewport on a specific card and optionally persist viewport. Supports user or "
          "agent camera scope.",
      .inputSchema = schema::object(
          {
              {"project_path", schema::string("Project folder; defaults to the project the "
                                              "session is bound to.")},
              {"card_id", schema::string("UUID of the card to center on.")},
              {"zoom", schema::number("Zoom level; default 1.0.")},
              {"persist_viewport",
               schema::boolean("Keep the new viewport as the folder's saved viewport.")},
              {"camera_scope",
               schema::stringEnum({"user", "agent"}, "Camera to move; default \"user\".")},
          },
          {"card_id"}),
      .outputSchema = schema::object(
          {
              {"resolved_folder_id", nullableString},
              {"resolved_center", schema::object({{"x", number}, {"y", number}}, {"x", "y"})},
              {"zoom", number},
              {"applied_runtime_scroll",
               schema::boolean("Whether the running app moved its camera.")},
              {"camera_scope", schema::stringEnum({"user", "agent"})},
              {"error_code", nullableString},
              {"message", nullableString},
          },
          {"resolved_folder_id", "resolved_center", "zoom", "applied_runtime_scroll",
           "camera_scope"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{{"card_id", "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"}},
              JSONObject{{"card_id", "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"},
                         {"zoom", 1.5},
                         {"camera_scope", "agent"}},
          },
      .notes =
          "Needs the running app. Without it the answer comes at once with the card's center, "
          "applied_runtime_scroll=false and error_code=runtime_unavailable.",
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace

FocusCardTool::FocusCardTool(std::optional<std::filesystem::path> defaultProjectURL,
                             RuntimeControlBridge bridge)
    : defaultProjectURL_(std::move(defaultProjectURL)), bridge_(bridge), spec_(focusCardSpec()) {}

AnyCodableValue FocusCardTool::run(const AnyCodableValue& input,
                                   const AgentToolContext& context) const {
  const auto request = decodeValue<FocusCardRequest>(input);
  const std::optional<Uuid> cardID = parseCardUUID(request.cardID);
  if (!cardID) throw std::invalid_argument(std::string(kInvalidCardIDMessage));
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  const WorkspaceProjectSnapshot snapshot = WorkspaceProjectSnapshotStore().load(projectURL);
  const CardRecord* card = SnapshotCardIndex(snapshot).card(*cardID);
  if (card == nullptr) throw std::invalid_argument(std::string(kCardNotFoundMessage));

  const Point center = LayoutItem::fromCard(*card, false).center;
  const double zoom = request.zoom.value_or(1.0);
  const ViewportCameraScope scope = request.cameraScope.value_or(ViewportCameraScope::user);
  const auto answer = [&](bool applied, std::optional<std::string_view> errorCode,
                          std::optional<std::string_view> message) {
    return ObjectEncoder()
        .addNullable("resolved_folder_id", card->parentID)
        .add("resolved_center", center)
        .add("zoom", zoom)
        .add("camera_scope", scope)
        .add("applied_runtime_scroll", applied)
        .addNullable("error_code", errorCode)
        .addNullable("message", message)
        .build();
  };

  ObjectEncoder arguments;
  arguments.add("card_id", *cardID)
      .add("center", center)
      .add("zoom", zoom)
      .add("camera_scope", scope)
      .add("persist_viewport", request.persistViewport);
  const std::optional<RuntimeToolResponse> response =
      callViewportRuntime(bridge_, projectURL, std::string(kToolName), arguments.build(), context);
  if (!response) return answer(false, kRuntimeUnavailableCode, kRuntimeUnavailableMessage);
  if (response->ok) return overlayRuntimePayload(answer(true, {}, {}), response->payload);

  AnyCodableValue failure = overlayRuntimePayload(answer(false, {}, {}), response->payload);
  JSONObject& members = *failure.asObject();
  members.set("applied_runtime_scroll", false);
  members.set("error_code", response->errorCode.value_or(std::string(kRuntimeErrorCode)));
  members.set("message", response->message.value_or(std::string(kRuntimeCommandFailedMessage)));
  return failure;
}

}  // namespace zorvik
