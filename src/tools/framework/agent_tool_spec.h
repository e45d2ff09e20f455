// AgentToolSpec: a tool's self-description (schemas, examples, notes, execution hint), and
// AgentToolCatalogEntry, its light form for catalogues. Absent optional fields are left out of the
// JSON form.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"

namespace zorvik {

class ValueDecoder;

// Whether a call may run beside others in one step of the run loop.
enum class AgentToolExecutionMode { serial, parallel };

template <>
struct EnumRawValues<AgentToolExecutionMode> {
  static constexpr std::string_view typeName = "AgentToolExecutionMode";
  static constexpr std::array table{
      std::pair{AgentToolExecutionMode::serial, std::string_view("serial")},
      std::pair{AgentToolExecutionMode::parallel, std::string_view("parallel")},
  };
};

struct AgentToolSpec {
  std::string name;
  std::string summary;
  std::optional<AnyCodableValue> inputSchema;                // "input_schema"
  std::optional<AnyCodableValue> outputSchema;               // "output_schema"
  std::optional<std::vector<std::string>> mediaOutputPaths;  // "media_output_paths"
  std::optional<std::vector<AnyCodableValue>> examples;      // each a complete input object
  std::optional<std::string> notes;
  std::optional<AgentToolExecutionMode> execution;

  static AgentToolSpec decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const AgentToolSpec&) const = default;
};

struct AgentToolCatalogEntry {
  std::string name;
  std::string summary;
  std::optional<AgentToolExecutionMode> execution;
  std::optional<std::string> notes;
  std::optional<AnyCodableValue> inputSchema;  // "input_schema"

  static AgentToolCatalogEntry fromSpec(const AgentToolSpec& spec);
  static AgentToolCatalogEntry decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const AgentToolCatalogEntry&) const = default;
};

}  // namespace zorvik
