#include "tools/framework/agent_tool_context.h"

namespace zorvik {

AgentToolContext AgentToolContext::forSingleCall() {
  return AgentToolContext{Uuid::random(), 0, 1, currentDate(), {}};
}

}  // namespace zorvik
