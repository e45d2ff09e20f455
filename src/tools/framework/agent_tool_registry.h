// AgentToolRegistry: the tools of a run or a command, by name. Thread-safe: every operation takes
// the registry's lock. The registry shares ownership of its tools; specs are read from the tools on
// each request.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/framework/agent_tool.h"

namespace zorvik {

class AgentToolRegistry {
 public:
  AgentToolRegistry() = default;
  AgentToolRegistry(const AgentToolRegistry&) = delete;
  AgentToolRegistry& operator=(const AgentToolRegistry&) = delete;

  // Adds the tool under its spec name; a later tool of the same name replaces the earlier one.
  void registerTool(std::shared_ptr<const AgentTool> tool);
  // Exact, case-sensitive lookup; nullptr when there is none.
  std::shared_ptr<const AgentTool> tool(std::string_view name) const;
  std::optional<AgentToolSpec> spec(std::string_view name) const;
  // Sorted by name (plain byte comparison).
  std::vector<AgentToolCatalogEntry> catalog() const;
  std::vector<AgentToolSpec> allSpecs() const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const AgentTool>, std::less<>> tools_;
};

}  // namespace zorvik
