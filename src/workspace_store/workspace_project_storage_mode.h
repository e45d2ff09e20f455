// WorkspaceProjectStorageMode: how a project is stored, persisted as its raw string. Every project
// this system loads is `filesystem`; `package` names the legacy single-file form (extension .zpk),
// which is not read.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class WorkspaceProjectStorageMode { package, filesystem };

template <>
struct EnumRawValues<WorkspaceProjectStorageMode> {
  static constexpr std::string_view typeName = "WorkspaceProjectStorageMode";
  static constexpr std::array table{
      std::pair{WorkspaceProjectStorageMode::package, std::string_view("package")},
      std::pair{WorkspaceProjectStorageMode::filesystem, std::string_view("filesystem")},
  };
};

}  // namespace zorvik
