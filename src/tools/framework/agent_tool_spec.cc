#include "tools/framework/agent_tool_spec.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

AgentToolSpec AgentToolSpec::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return AgentToolSpec{
      .name = object.required<std::string>("name"),
      .summary = object.required<std::string>("summary"),
      .inputSchema = object.optional<AnyCodableValue>("input_schema"),
      .outputSchema = object.optional<AnyCodableValue>("output_schema"),
      .mediaOutputPaths = object.optional<std::vector<std::string>>("media_output_paths"),
      .examples = object.optional<std::vector<AnyCodableValue>>("examples"),
      .notes = object.optional<std::string>("notes"),
      .execution = object.optional<AgentToolExecutionMode>("execution"),
  };
}

AnyCodableValue AgentToolSpec::encode() const {
  return ObjectEncoder()
      .add("name", name)
      .add("summary", summary)
      .add("input_schema", inputSchema)
      .add("output_schema", outputSchema)
      .add("media_output_paths", mediaOutputPaths)
      .add("examples", examples)
      .add("notes", notes)
      .add("execution", execution)
      .build();
}

AgentToolCatalogEntry AgentToolCatalogEntry::fromSpec(const AgentToolSpec& spec) {
  return {spec.name, spec.summary, spec.execution, spec.notes, spec.inputSchema};
}

AgentToolCatalogEntry AgentToolCatalogEntry::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return AgentToolCatalogEntry{
      .name = object.required<std::string>("name"),
      .summary = object.required<std::string>("summary"),
      .execution = object.optional<AgentToolExecutionMode>("execution"),
      .notes = object.optional<std::string>("notes"),
      .inputSchema = object.optional<AnyCodableValue>("input_schema"),
  };
}

AnyCodableValue AgentToolCatalogEntry::encode() const {
  return ObjectEncoder()
      .add("name", name)
      .add("summary", summary)
      .add("execution", execution)
      .add("notes", notes)
      .add("input_schema", inputSchema)
      .build();
}

}  // namespace zorvik
