#include "workspace_store/compiler/workspace_compile_summary.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCompileSummary WorkspaceCompileSummary::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCompileSummary{
      .checkedFiles = object.required<int64_t>("checked_files"),
      .cardCount = object.required<int64_t>("card_count"),
      .errorCount = object.required<int64_t>("error_count"),
      .warningCount = object.required<int64_t>("warning_count"),
      .elapsedMS = object.required<int64_t>("elapsed_ms"),
  };
}

AnyCodableValue WorkspaceCompileSummary::encode() const {
  return ObjectEncoder()
      .add("checked_files", checkedFiles)
      .add("card_count", cardCount)
      .add("error_count", errorCount)
      .add("warning_count", warningCount)
      .add("elapsed_ms", elapsedMS)
      .build();
}

}  // namespace zorvik
