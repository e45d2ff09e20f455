#include "tools/framework/agent_tool_registry.h"

namespace zorvik {

void AgentToolRegistry::registerTool(std::shared_ptr<const AgentTool> tool) {
  std::string name = tool->spec().name;
  std::lock_guard lock(mutex_);
  tools_.insert_or_assign(std::move(name), std::move(tool));
}

std::shared_ptr<const AgentTool> AgentToolRegistry::tool(std::string_view name) const {
  std::lock_guard lock(mutex_);
  auto it = tools_.find(name);
  return it == tools_.end() ? nullptr : it->second;
}

std::optional<AgentToolSpec> AgentToolRegistry::spec(std::string_view name) const {
  auto found = tool(name);
  if (!found) return std::nullopt;
  return found->spec();
}

std::vector<AgentToolCatalogEntry> AgentToolRegistry::catalog() const {
  std::lock_guard lock(mutex_);
  std::vector<AgentToolCatalogEntry> entries;
  entries.reserve(tools_.size());
  for (const auto& [name, tool] : tools_) {
    entries.push_back(AgentToolCatalogEntry::fromSpec(tool->spec()));
  }
  return entries;
}

std::vector<AgentToolSpec> AgentToolRegistry::allSpecs() const {
  std::lock_guard lock(mutex_);
  std::vector<AgentToolSpec> specs;
  specs.reserve(tools_.size());
  for (const auto& [name, tool] : tools_) specs.push_back(tool->spec());
  return specs;
}

}  // namespace zorvik
