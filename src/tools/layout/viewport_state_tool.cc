#include "tools/layout/viewport_state_tool.h"

#include <string>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/layout/viewport_camera_scope.h"
#include "tools/layout/viewport_runtime_call.h"

namespace zorvik {
namespace {

constexpr std::string_view kToolName = "viewport_state";

struct ViewportStateRequest {
  std::optional<ViewportCameraScope> cameraScope;

  static ViewportStateRequest decode(const ValueDecoder& decoder) {
    return {decoder.object().optional<ViewportCameraScope>("camera_scope")};
  }
};

AgentToolSpec viewportStateSpec() {
  const AnyCodableValue number = schema::number();
  const AnyCodableValue nullableString =
      JSONObject{{"type", AnyCodableValue::Array{"string", "null"}}};
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary =
          "Get viewport center, zoom, size, and bounds from the running app (user or agent "
          "camera scope).",
      .inputSchema = schema::object({
          {"project_path",
           schema::string("Project folder; defaults to the project the session is bound to.")},
          {"camera_scope",
           schema::stringEnum({"user", "agent"}, "Camera to read; default \"user\".")},
      }),
      .outputSchema = schema::object({
          {"status", schema::stringEnum({"ok", "error"})},
          {"center", schema::object({{"x", number}, {"y", number}})},
          {"zoom", number},
          {"size", schema::object({{"width", number}, {"height", number}})},
          {"bounds",
           schema::object({{"x", number}, {"y", number}, {"width", number}, {"height", number}})},
          {"camera_scope", schema::stringEnum({"user", "agent"})},
          {"engine_mode",
           schema::string("\"headless\" when no app is running; otherwise the app's word.")},
          {"error_code", nullableString},
          {"message", nullableString},
      }),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{{"camera_scope", "agent"}},
          },
      .notes =
          "Needs the running app; the viewport fields are the app's own. Without it the answer "
          "comes at once with status=error, error_code=runtime_unavailable and "
          "engine_mode=headless.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

ViewportStateTool::ViewportStateTool(std::optional<std::filesystem::path> defaultProjectURL,
                                     RuntimeControlBridge bridge)
    : defaultProjectURL_(std::move(defaultProjectURL)),
      bridge_(bridge),
      spec_(viewportStateSpec()) {}

AnyCodableValue ViewportStateTool::run(const AnyCodableValue& input,
                                       const AgentToolContext& context) const {
  const auto request = decodeValue<ViewportStateRequest>(input);
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  const ViewportCameraScope scope = request.cameraScope.value_or(ViewportCameraScope::user);
  const auto failure = [&](std::string_view engineMode, std::string_view errorCode,
                           std::string_view message) {
    return ObjectEncoder()
        .add("status", "error")
        .add("engine_mode", engineMode)
        .add("camera_scope", scope)
        .add("error_code", errorCode)
        .add("message", message)
        .build();
  };

  const std::optional<RuntimeToolResponse> response =
      callViewportRuntime(bridge_, projectURL, std::string(kToolName),
                          ObjectEncoder().add("camera_scope", scope).build(), context);
  if (!response) {
    return failure(kHeadlessEngineMode, kRuntimeUnavailableCode, kRuntimeUnavailableMessage);
  }
  if (response->ok) {
    if (response->payload) return *response->payload;
    return ObjectEncoder().add("status", "ok").add("camera_scope", scope).build();
  }
  const std::string errorCode = response->errorCode.value_or(std::string(kRuntimeErrorCode));
  const std::string message = response->message.value_or(std::string(kRuntimeCommandFailedMessage));
  AnyCodableValue answer =
      overlayRuntimePayload(failure(kRuntimeEngineMode, errorCode, message), response->payload);
  JSONObject& members = *answer.asObject();
  members.set("status", "error");
  members.set("error_code", errorCode);
  members.set("message", message);
  return answer;
}

}  // namespace zorvik
