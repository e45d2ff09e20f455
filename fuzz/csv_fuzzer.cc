// Parses arbitrary bytes as table CSV; a failed parse must fail the same way through parseCSV, and
// every successful one must survive rendering: parseCSV(renderCSV(columns, rows)) gives back the
// same columns and the rows padded to the column count. The one permitted difference: a final
// padded row that is a single empty cell renders as `""`, which reads back as no row.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "workspace_store/stored_cards/csv_table.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  auto rows = zorvik::parseCSVRows(text);
  if (!rows) {
    try {
      zorvik::parseCSV("fuzz.csv", text);
    } catch (const zorvik::StoredCardStorageError&) {
      return 0;
    }
    std::abort();  // parseCSV accepted what parseCSVRows refused
  }
  if (rows->empty() || rows->front().empty()) return 0;  // no columns: nothing to render

  const std::vector<std::string> columns = rows->front();
  const std::vector<std::vector<std::string>> body(rows->begin() + 1, rows->end());
  std::vector<std::vector<std::string>> padded = body;
  for (auto& row : padded) {
    if (row.size() < columns.size()) row.resize(columns.size());
  }
  if (!(zorvik::parseCSV("fuzz.csv", text) == zorvik::ParsedCSV{columns, padded})) std::abort();

  std::vector<std::vector<std::string>> expected = padded;
  if (!expected.empty() && expected.back() == std::vector<std::string>{""}) expected.pop_back();
  const zorvik::ParsedCSV reread = zorvik::parseCSV("fuzz.csv", zorvik::renderCSV(columns, body));
  if (reread.columns != columns || reread.rows != expected) std::abort();
  return 0;
}
