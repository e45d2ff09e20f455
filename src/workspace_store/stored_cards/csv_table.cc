#include "workspace_store/stored_cards/csv_table.h"

#include <algorithm>
#include <variant>

#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {
namespace {

using Rows = std::vector<std::vector<std::string>>;

// Collects rows as they are read.
struct RowsSink {
  Rows rows;
  std::vector<std::string> row;

  void cell(std::string_view text) { row.emplace_back(text); }
  void endRow() {
    rows.push_back(std::move(row));
    row.clear();
  }
};

std::variant<Rows, CSVFailure> readRows(std::string_view text) {
  RowsSink sink;
  if (auto failure = readCSV(text, sink)) return *failure;
  return std::move(sink.rows);
}

[[noreturn]] void throwCSV(std::string message) {
  throw StoredCardStorageError(StoredCardStorageError::Kind::invalidCSV, std::move(message));
}

void appendQuoted(std::string& out, std::string_view cell) {
  out += '"';
  for (char c : cell) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void appendLine(std::string& out, const std::vector<std::string>& cells, size_t width) {
  const size_t count = std::max(width, cells.size());
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) out += ',';
    appendQuoted(out, i < cells.size() ? std::string_view(cells[i]) : std::string_view());
  }
}

}  // namespace

std::optional<Rows> parseCSVRows(std::string_view text) {
  auto result = readRows(text);
  if (auto* rows = std::get_if<Rows>(&result)) return std::move(*rows);
  return std::nullopt;
}

ParsedCSV parseCSV(std::string_view path, std::string_view text) {
  auto result = readRows(text);
  if (auto* failure = std::get_if<CSVFailure>(&result)) {
    if (*failure == CSVFailure::invalidQuoting) {
      throwCSV("Invalid CSV quoting in `" + std::string(path) + "`.");
    }
    throwCSV("Unterminated quoted cell in `" + std::string(path) + "`.");
  }
  Rows& rows = std::get<Rows>(result);
  if (rows.empty()) throwCSV("CSV sidecar `" + std::string(path) + "` must include a header row.");

  ParsedCSV parsed;
  parsed.columns = std::move(rows.front());
  parsed.rows.reserve(rows.size() - 1);
  for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
    if (row->size() < parsed.columns.size()) row->resize(parsed.columns.size());
    parsed.rows.push_back(std::move(*row));
  }
  return parsed;
}

std::string renderCSV(const std::vector<std::string>& columns, const Rows& rows) {
  if (columns.empty()) throwCSV("Table sidecar requires at least one column.");
  std::string out;
  appendLine(out, columns, 0);
  for (const auto& row : rows) {
    out += "\r\n";
    appendLine(out, row, columns.size());
  }
  return out;
}

}  // namespace zorvik
