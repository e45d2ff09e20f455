// GuidedChatToolContracts: the AgentToolSpecs of ask_user and propose_options, the two tools that
// put a guided message with structured controls (a form, or option buttons) into a chat of the
// desktop application. Both reach the application through the runtime control bridge; the user's
// answer comes back later as a new chat message, not as the tool's answer.
//
// All operations are pure and build fresh values, so any thread may call them.
#pragma once

#include "foundation/json/any_codable_value.h"
#include "tools/framework/agent_tool_spec.h"

namespace zorvik {

struct GuidedChatToolContracts {
  static AgentToolSpec askUserSpec();
  static AgentToolSpec proposeOptionsSpec();
  // The answer of both: status, tool, chat_id and message_id, all required, nothing else.
  static AnyCodableValue guidedChatOutputSchema();
};

}  // namespace zorvik
