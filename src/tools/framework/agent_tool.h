// AgentTool: the interface of every tool, and AnyAgentTool, a tool made of a spec and a closure.
//
// Tools are shared between threads: `run` may be called concurrently and keeps no per-call state in
// the tool. Business failures are answers (`status` "error" or `ok` false); only bad input and bugs
// are thrown (DecodingError for undecodable input, AgentError or another exception otherwise).
#pragma once

#include <functional>

#include "foundation/json/any_codable_value.h"
#include "tools/framework/agent_tool_context.h"
#include "tools/framework/agent_tool_spec.h"

namespace zorvik {

class AgentTool {
 public:
  virtual ~AgentTool() = default;
  virtual const AgentToolSpec& spec() const = 0;
  virtual AnyCodableValue run(const AnyCodableValue& input,
                              const AgentToolContext& context) const = 0;
};

class AnyAgentTool final : public AgentTool {
 public:
  using Handler = std::function<AnyCodableValue(const AnyCodableValue&, const AgentToolContext&)>;

  AnyAgentTool(AgentToolSpec spec, Handler handler)
      : spec_(std::move(spec)), handler_(std::move(handler)) {}

  const AgentToolSpec& spec() const override { return spec_; }
  AnyCodableValue run(const AnyCodableValue& input,
                      const AgentToolContext& context) const override {
    return handler_(input, context);
  }

 private:
  AgentToolSpec spec_;
  Handler handler_;
};

}  // namespace zorvik
