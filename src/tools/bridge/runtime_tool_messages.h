// The records exchanged with the desktop application through the project's control folder:
// RuntimeToolRequest (written to the inbox by this system), RuntimeToolEnvelope (written to the
// outbox by the application) and RuntimeToolResponse (what a caller of the bridge receives).
// Absent optional fields are left out of the JSON form; decoding reads absent and null alike.
#pragma once

#include <optional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"

namespace zorvik {

class ValueDecoder;

struct RuntimeToolRequest {
  std::string requestId;      // "request_id", a lower-case UUID
  std::string projectPath;    // "project_path"
  std::optional<Uuid> runId;  // "run_id"
  std::string command;        // "command", the tool name
  AnyCodableValue arguments;  // "arguments"
  Date createdAt;             // "created_at"

  static RuntimeToolRequest decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const RuntimeToolRequest&) const = default;
};

struct RuntimeToolEnvelope {
  std::string requestId;  // "request_id"
  bool ok = false;
  std::optional<AnyCodableValue> payload;
  std::optional<std::string> errorCode;  // "error_code"
  std::optional<std::string> message;

  static RuntimeToolEnvelope decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const RuntimeToolEnvelope&) const = default;
};

struct RuntimeToolResponse {
  bool ok = false;
  std::optional<AnyCodableValue> payload;
  std::optional<std::string> errorCode;  // "error_code"
  std::optional<std::string> message;

  static RuntimeToolResponse failure(std::string errorCode, std::string message);

  static RuntimeToolResponse decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const RuntimeToolResponse&) const = default;
};

}  // namespace zorvik
