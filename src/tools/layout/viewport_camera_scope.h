// ViewportCameraScope: whose camera a viewport tool moves or reads in the running application,
// the user's own view or the separate camera the agent works with. Persists as "user" / "agent";
// tools default to `user`.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class ViewportCameraScope { user, agent };

template <>
struct EnumRawValues<ViewportCameraScope> {
  static constexpr std::string_view typeName = "ViewportCameraScope";
  static constexpr std::array table{
      std::pair{ViewportCameraScope::user, std::string_view("user")},
      std::pair{ViewportCameraScope::agent, std::string_view("agent")},
  };
};

}  // namespace zorvik
