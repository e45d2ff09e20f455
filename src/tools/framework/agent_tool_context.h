// AgentToolContext: what every tool call is given about the run it belongs to.
#pragma once

#include <functional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/uuid.h"

namespace zorvik {

struct AgentToolContext {
  Uuid runID;
  int stepIndex = 0;
  int attempt = 1;  // from 1
  Date startedAt;
  // Sink for progress lines; must be safe to call from any thread. Empty from the command line.
  std::function<void(const std::string&)> thinkingHandler;

  // The context of a one-shot command-line call: a fresh run id, step 0, attempt 1, started now.
  static AgentToolContext forSingleCall();
};

}  // namespace zorvik
