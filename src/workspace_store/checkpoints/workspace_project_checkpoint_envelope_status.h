// WorkspaceProjectCheckpointEnvelopeStatus: whether a checkpoint envelope carries a checkpoint
// ("ok") or explains why there is none ("unavailable").
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class WorkspaceProjectCheckpointEnvelopeStatus { ok, unavailable };

template <>
struct EnumRawValues<WorkspaceProjectCheckpointEnvelopeStatus> {
  static constexpr std::string_view typeName = "WorkspaceProjectCheckpointEnvelopeStatus";
  static constexpr std::array table{
      std::pair{WorkspaceProjectCheckpointEnvelopeStatus::ok, std::string_view("ok")},
      std::pair{WorkspaceProjectCheckpointEnvelopeStatus::unavailable,
                std::string_view("unavailable")},
  };
};

}  // namespace zorvik
