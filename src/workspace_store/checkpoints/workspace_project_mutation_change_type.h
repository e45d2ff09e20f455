// WorkspaceProjectMutationChangeType: what a mutation did to one card, persisted as its raw string
// ("added", "removed", "updated").
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class WorkspaceProjectMutationChangeType { added, removed, updated };

template <>
struct EnumRawValues<WorkspaceProjectMutationChangeType> {
  static constexpr std::string_view typeName = "WorkspaceProjectMutationChangeType";
  static constexpr std::array table{
      std::pair{WorkspaceProjectMutationChangeType::added, std::string_view("added")},
      std::pair{WorkspaceProjectMutationChangeType::removed, std::string_view("removed")},
      std::pair{WorkspaceProjectMutationChangeType::updated, std::string_view("updated")},
  };
};

}  // namespace zorvik
