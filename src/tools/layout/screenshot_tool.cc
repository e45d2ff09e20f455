#include "tools/layout/screenshot_tool.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/layout/viewport_camera_scope.h"
#include "tools/layout/viewport_runtime_call.h"
#include "workspace_store/point.h"

namespace zorvik {

enum class ScreenshotSnapshotMode { board, card, cards };

template <>
struct EnumRawValues<ScreenshotSnapshotMode> {
  static constexpr std::string_view typeName = "ScreenshotSnapshotMode";
  static constexpr std::array table{
      std::pair{ScreenshotSnapshotMode::board, std::string_view("board")},
      std::pair{ScreenshotSnapshotMode::card, std::string_view("card")},
      std::pair{ScreenshotSnapshotMode::cards, std::string_view("cards")},
  };
};

namespace {

constexpr std::string_view kToolName = "screenshot";

struct ScreenshotSize {
  int64_t width = 0;
  int64_t height = 0;

  static ScreenshotSize decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<int64_t>("width"), object.required<int64_t>("height")};
  }
};

// The request is decoded to check its types; the application receives the input itself.
struct ScreenshotRequest {
  std::optional<std::string> cardID;
  std::optional<std::vector<std::string>> cardIDs;
  std::optional<Point> center;
  std::optional<double> zoom;
  std::optional<ScreenshotSize> size;
  std::optional<std::string> folderID;
  std::optional<std::string> format;
  std::optional<std::string> outputPath;
  std::optional<ViewportCameraScope> cameraScope;
  std::optional<ScreenshotSnapshotMode> snapshotMode;
  std::optional<bool> focus;

  static ScreenshotRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::string>("card_id"),
            object.optional<std::vector<std::string>>("card_ids"),
            object.optional<Point>("center"),
            object.optional<double>("zoom"),
            object.optional<ScreenshotSize>("size"),
            object.optional<std::string>("folder_id"),
            object.optional<std::string>("format"),
            object.optional<std::string>("output_path"),
            object.optional<ViewportCameraScope>("camera_scope"),
            object.optional<ScreenshotSnapshotMode>("snapshot_mode"),
            object.optional<bool>("focus")};
  }
};

AnyCodableValue outputSchema() {
  const AnyCodableValue number = schema::number();
  const AnyCodableValue nullableString =
      JSONObject{{"type", AnyCodableValue::Array{"string", "null"}}};
  const AnyCodableValue rect =
      schema::object({{"x", number}, {"y", number}, {"width", number}, {"height", number}},
                     {"x", "y", "width", "height"});
  const AnyCodableValue snapshot = schema::object({
      {"card_id", schema::string()},
      {"image_path", schema::string()},
      {"captured_rect", rect},
      {"zoom", number},
      {"folder_id", nullableString},
      {"engine_mode", schema::string()},
      {"camera_scope", schema::stringEnum({"user", "agent"})},
  });
  return schema::object(
      {
          {"status", schema::stringEnum({"ok", "error"})},
          {"snapshot_mode", schema::stringEnum({"board", "card", "cards"})},
          {"focus_applied", schema::boolean()},
          {"image_path", schema::with(nullableString, "description",
                                      "The captured image file (board and card modes).")},
          {"image_paths", schema::array(schema::string(), "Every captured image file.")},
          {"snapshots", schema::array(snapshot, "One entry per captured image.")},
          {"captured_rect", rect},
          {"zoom", number},
          {"folder_id", nullableString},
          {"engine_mode",
           schema::string("\"headless\" when no app is running; otherwise the app's word.")},
          {"camera_scope", schema::stringEnum({"user", "agent"})},
          {"error_code", nullableString},
          {"message", nullableString},
      },
      {"status", "snapshot_mode"});
}

AgentToolSpec screenshotSpec() {
  const AnyCodableValue number = schema::number();
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary =
          "Capture board viewport snapshots or isolated full-card snapshots "
          "(`snapshot_mode=card|cards`), with optional focus and user/agent camera scope.",
      .inputSchema = schema::object({
          {"project_path",
           schema::string("Project folder; defaults to the project the session is bound to.")},
          {"card_id", schema::string("Card UUID: the target in card mode, or to frame in board "
                                     "mode.")},
          {"card_ids", schema::array(schema::string(), "Card UUIDs for cards mode.")},
          {"center", schema::object({{"x", number}, {"y", number}}, {"x", "y"})},
          {"zoom", schema::number("Zoom level; default 1.0.")},
          {"size", schema::object({{"width", schema::integer()}, {"height", schema::integer()}},
                                  {"width", "height"})},
          {"folder_id", schema::string("Folder whose canvas to capture.")},
          {"format", schema::string("Image format, e.g. png or jpeg.")},
          {"output_path", schema::string("Where to write the image.")},
          {"camera_scope",
           schema::stringEnum({"user", "agent"}, "Camera to use; default \"user\".")},
          {"snapshot_mode",
           schema::stringEnum({"board", "card", "cards"},
                              "board (default): the viewport; card: one isolated card "
                              "(needs card_id); cards: several (needs card_ids).")},
          {"focus", schema::boolean("Focus target before capture. Applies to board mode; ignored "
                                    "for isolated card/cards renders.")},
      }),
      .outputSchema = outputSchema(),
      .mediaOutputPaths =
          std::vector<std::string>{"image_path", "image_paths[*]", "snapshots[*].image_path"},
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{{"snapshot_mode", "card"},
                         {"card_id", "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"}},
              JSONObject{{"snapshot_mode", "board"},
                         {"card_id", "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"},
                         {"focus", true},
                         {"camera_scope", "agent"}},
          },
      .notes =
          "Needs the running app. Without it the answer comes at once with status=error, "
          "error_code=runtime_unavailable and engine_mode=headless.",
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace

ScreenshotTool::ScreenshotTool(std::optional<std::filesystem::path> defaultProjectURL,
                               RuntimeControlBridge bridge)
    : defaultProjectURL_(std::move(defaultProjectURL)), bridge_(bridge), spec_(screenshotSpec()) {}

AnyCodableValue ScreenshotTool::run(const AnyCodableValue& input,
                                    const AgentToolContext& context) const {
  const auto request = decodeValue<ScreenshotRequest>(input);
  const ScreenshotSnapshotMode mode = request.snapshotMode.value_or(ScreenshotSnapshotMode::board);
  if (mode == ScreenshotSnapshotMode::card &&
      trimWhitespaceAndNewlines(request.cardID.value_or("")).empty()) {
    throw std::invalid_argument(std::string(kCardModeMessage));
  }
  if (mode == ScreenshotSnapshotMode::cards && (!request.cardIDs || request.cardIDs->empty())) {
    throw std::invalid_argument(std::string(kCardsModeMessage));
  }
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  const double zoom = request.zoom.value_or(1.0);
  const ViewportCameraScope scope = request.cameraScope.value_or(ViewportCameraScope::user);

  const auto failure = [&](std::string_view engineMode, std::string_view errorCode,
                           const std::optional<std::string>& message) {
    return ObjectEncoder()
        .add("status", "error")
        .add("snapshot_mode", mode)
        .add("focus_applied", false)
        .add("image_path", AnyCodableValue())
        .add("image_paths", AnyCodableValue::Array{})
        .add("snapshots", AnyCodableValue::Array{})
        .add("captured_rect", AnyCodableValue())
        .add("zoom", zoom)
        .addNullable("folder_id", request.folderID)
        .add("engine_mode", engineMode)
        .add("camera_scope", scope)
        .add("error_code", errorCode)
        .addNullable("message", message)
        .build();
  };

  const std::optional<RuntimeToolResponse> response =
      callViewportRuntime(bridge_, projectURL, std::string(kToolName), input, context);
  if (!response) {
    return failure(kHeadlessEngineMode, kRuntimeUnavailableCode,
                   std::string(kRuntimeUnavailableMessage));
  }
  if (response->ok) {
    const AnyCodableValue base = ObjectEncoder()
                                     .add("status", "ok")
                                     .add("snapshot_mode", mode)
                                     .add("zoom", zoom)
                                     .add("camera_scope", scope)
                                     .build();
    return overlayRuntimePayload(base, response->payload);
  }
  // The payload may word the failure further, but the status and the bridge's code and message
  // stand.
  const std::string errorCode = response->errorCode.value_or(std::string(kRuntimeErrorCode));
  AnyCodableValue answer = overlayRuntimePayload(
      failure(kRuntimeEngineMode, errorCode, response->message), response->payload);
  JSONObject& members = *answer.asObject();
  members.set("status", "error");
  members.set("error_code", errorCode);
  if (response->message) members.set("message", *response->message);
  return answer;
}

}  // namespace zorvik
