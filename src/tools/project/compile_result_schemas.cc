#include "tools/project/compile_result_schemas.h"

#include "tools/framework/json_schema.h"

namespace zorvik {

AnyCodableValue compileSummarySchema() {
  return schema::object(
      {
          {"checked_files", schema::integer("Files read by the load.")},
          {"card_count", schema::integer("Cards that loaded.")},
          {"error_count", schema::integer("All errors found, before any filter or cap.")},
          {"warning_count", schema::integer("All warnings found, before any filter or cap.")},
          {"elapsed_ms", schema::integer()},
      },
      {"checked_files", "card_count", "error_count", "warning_count", "elapsed_ms"});
}

AnyCodableValue compileDiagnosticSchema() {
  return schema::object(
      {
          {"severity", schema::stringEnum({"error", "warning"})},
          {"code", schema::string("Stable code such as structure.parent_missing.")},
          {"message", schema::string()},
          {"path", schema::string("Content path of the card, or the failing file.")},
          {"card_id", schema::string()},
          {"hint", schema::string()},
          {"owner", schema::stringEnum({"user", "runtime", "unknown"},
                                       "Who should act: runtime-owned state is only reported.")},
          {"actionability", schema::stringEnum({"fixable", "report_only", "inspect"})},
      },
      {"severity", "code", "message", "path", "owner", "actionability"});
}

AnyCodableValue compileResultSchema() {
  return schema::object(
      {
          {"status", schema::stringEnum({"ok", "error"})},
          {"compile_token",
           schema::string("SHA-256 of the validated state; unchanged projects keep it.")},
          {"summary", compileSummarySchema()},
          {"diagnostics", schema::array(compileDiagnosticSchema())},
      },
      {"status", "compile_token", "summary", "diagnostics"});
}

}  // namespace zorvik
