// WorkspaceCompileDiagnostic: one finding about a project, from the loader or the compiler. It says
// what is wrong, where, and who should act on it: the user's agent (owner user, fixable) or the
// running application, whose own state is only to be reported (owner runtime, report_only).
#pragma once

#include <array>
#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"
#include "foundation/uuid.h"

namespace zorvik {

class ValueDecoder;

enum class WorkspaceCompileSeverity { error, warning };
enum class WorkspaceCompileDiagnosticOwner { user, runtime, unknown };
enum class WorkspaceCompileDiagnosticActionability { fixable, reportOnly, inspect };

template <>
struct EnumRawValues<WorkspaceCompileSeverity> {
  static constexpr std::string_view typeName = "WorkspaceCompileSeverity";
  static constexpr std::array table{
      std::pair{WorkspaceCompileSeverity::error, std::string_view("error")},
      std::pair{WorkspaceCompileSeverity::warning, std::string_view("warning")},
  };
};

template <>
struct EnumRawValues<WorkspaceCompileDiagnosticOwner> {
  static constexpr std::string_view typeName = "WorkspaceCompileDiagnosticOwner";
  static constexpr std::array table{
      std::pair{WorkspaceCompileDiagnosticOwner::user, std::string_view("user")},
      std::pair{WorkspaceCompileDiagnosticOwner::runtime, std::string_view("runtime")},
      std::pair{WorkspaceCompileDiagnosticOwner::unknown, std::string_view("unknown")},
  };
};

template <>
struct EnumRawValues<WorkspaceCompileDiagnosticActionability> {
  static constexpr std::string_view typeName = "WorkspaceCompileDiagnosticActionability";
  static constexpr std::array table{
      std::pair{WorkspaceCompileDiagnosticActionability::fixable, std::string_view("fixable")},
      std::pair{WorkspaceCompileDiagnosticActionability::reportOnly,
                std::string_view("report_only")},
      std::pair{WorkspaceCompileDiagnosticActionability::inspect, std::string_view("inspect")},
  };
};

struct WorkspaceCompileDiagnostic {
  WorkspaceCompileSeverity severity = WorkspaceCompileSeverity::error;
  std::string code;
  std::string message;
  std::string path;
  std::optional<Uuid> cardID;  // "card_id"
  std::optional<std::string> hint;
  WorkspaceCompileDiagnosticOwner owner = WorkspaceCompileDiagnosticOwner::user;
  WorkspaceCompileDiagnosticActionability actionability =
      WorkspaceCompileDiagnosticActionability::fixable;

  static WorkspaceCompileDiagnostic decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCompileDiagnostic&) const = default;
};

}  // namespace zorvik
