// WorkspaceProjectCheckpointTrigger: why a project state checkpoint was taken, persisted as its raw
// string.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class WorkspaceProjectCheckpointTrigger {
  periodic,
  onDemand,
  turnStart,
  turnEnd,
  mutationBefore,
  mutationAfter,
};

template <>
struct EnumRawValues<WorkspaceProjectCheckpointTrigger> {
  static constexpr std::string_view typeName = "WorkspaceProjectCheckpointTrigger";
  static constexpr std::array table{
      std::pair{WorkspaceProjectCheckpointTrigger::periodic, std::string_view("periodic")},
      std::pair{WorkspaceProjectCheckpointTrigger::onDemand, std::string_view("on_demand")},
      std::pair{WorkspaceProjectCheckpointTrigger::turnStart, std::string_view("turn_start")},
      std::pair{WorkspaceProjectCheckpointTrigger::turnEnd, std::string_view("turn_end")},
      std::pair{WorkspaceProjectCheckpointTrigger::mutationBefore,
                std::string_view("mutation_before")},
      std::pair{WorkspaceProjectCheckpointTrigger::mutationAfter,
                std::string_view("mutation_after")},
  };
};

}  // namespace zorvik
