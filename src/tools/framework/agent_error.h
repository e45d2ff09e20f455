// AgentError: the errors a tool or the run loop raises on purpose. what() is the fixed description.
#pragma once

#include <stdexcept>
#include <string>

namespace zorvik {

class AgentError : public std::runtime_error {
 public:
  enum class Kind { invalidPlan, toolNotFound, plannerFailed };

  // "Invalid plan: " + message
  static AgentError invalidPlan(const std::string& message) {
    return AgentError(Kind::invalidPlan, message, "Invalid plan: " + message);
  }
  // "Tool not found: " + name
  static AgentError toolNotFound(const std::string& name) {
    return AgentError(Kind::toolNotFound, name, "Tool not found: " + name);
  }
  // "Planner failed: " + message
  static AgentError plannerFailed(const std::string& message) {
    return AgentError(Kind::plannerFailed, message, "Planner failed: " + message);
  }

  Kind kind() const { return kind_; }
  // The case's payload: the message or the tool name.
  const std::string& payload() const { return payload_; }

 private:
  AgentError(Kind kind, std::string payload, const std::string& description)
      : std::runtime_error(description), kind_(kind), payload_(std::move(payload)) {}

  Kind kind_;
  std::string payload_;
};

}  // namespace zorvik
