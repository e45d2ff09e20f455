#include "tools/bridge/runtime_tool_messages.h"

#include <utility>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

RuntimeToolRequest RuntimeToolRequest::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      .requestId = object.required<std::string>("request_id"),
      .projectPath = object.required<std::string>("project_path"),
      .runId = object.optional<Uuid>("run_id"),
      .command = object.required<std::string>("command"),
      .arguments = object.required<AnyCodableValue>("arguments"),
      .createdAt = object.required<Date>("created_at"),
  };
}

AnyCodableValue RuntimeToolRequest::encode() const {
  return ObjectEncoder()
      .add("request_id", requestId)
      .add("project_path", projectPath)
      .add("run_id", runId)
      .add("command", command)
      .add("arguments", arguments)
      .add("created_at", createdAt)
      .build();
}

RuntimeToolEnvelope RuntimeToolEnvelope::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      .requestId = object.required<std::string>("request_id"),
      .ok = object.required<bool>("ok"),
      .payload = object.optional<AnyCodableValue>("payload"),
      .errorCode = object.optional<std::string>("error_code"),
      .message = object.optional<std::string>("message"),
  };
}

AnyCodableValue RuntimeToolEnvelope::encode() const {
  return ObjectEncoder()
      .add("request_id", requestId)
      .add("ok", ok)
      .add("payload", payload)
      .add("error_code", errorCode)
      .add("message", message)
      .build();
}

RuntimeToolResponse RuntimeToolResponse::failure(std::string errorCode, std::string message) {
  return {.ok = false, .errorCode = std::move(errorCode), .message = std::move(message)};
}

RuntimeToolResponse RuntimeToolResponse::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      .ok = object.required<bool>("ok"),
      .payload = object.optional<AnyCodableValue>("payload"),
      .errorCode = object.optional<std::string>("error_code"),
      .message = object.optional<std::string>("message"),
  };
}

AnyCodableValue RuntimeToolResponse::encode() const {
  return ObjectEncoder()
      .add("ok", ok)
      .add("payload", payload)
      .add("error_code", errorCode)
      .add("message", message)
      .build();
}

}  // namespace zorvik
