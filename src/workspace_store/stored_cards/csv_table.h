// The CSV dialect of table sidecars: reading with one "inside quotes" state, writing with every
// cell quoted.
//
// Reading: LF, CR and CR LF end a row outside quotes; a comma ends a cell; a double quote opens a
// quoted cell only at the start of a cell, "" inside quotes is one quote, and text after a closing
// quote is kept as part of the cell. A line end at the very end adds no empty row. The special
// characters are ASCII, so the text is walked byte by byte and any other byte, UTF-8 or not, is
// copied into the cell. All functions are pure and thread-safe.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvik {

enum class CSVFailure { invalidQuoting, unterminatedQuote };

// The one CSV state machine. Hands every cell to `sink.cell(std::string&&)` and ends every row with
// `sink.endRow()`; returns the failure, if any, after which the sink's rows are incomplete.
template <class Sink>
std::optional<CSVFailure> readCSV(std::string_view text, Sink& sink) {
  std::string cell;
  bool rowHasCells = false;
  bool anyRow = false;
  bool insideQuotes = false;
  // A cell's first piece is copied into a string of its exact size: appending to an empty string
  // would round its capacity up, and tables hold millions of cells.
  const auto appendToCell = [&](std::string_view piece) {
    if (cell.empty()) {
      cell = std::string(piece);
    } else {
      cell.append(piece);
    }
  };
  const auto finishCell = [&] {
    sink.cell(std::move(cell));
    cell.clear();
    rowHasCells = true;
  };
  const auto finishRow = [&] {
    finishCell();
    sink.endRow();
    rowHasCells = false;
    anyRow = true;
  };
  size_t i = 0;
  while (i < text.size()) {
    if (insideQuotes) {
      const size_t quote = text.find('"', i);
      if (quote == std::string_view::npos) return CSVFailure::unterminatedQuote;
      appendToCell(text.substr(i, quote - i));
      if (quote + 1 < text.size() && text[quote + 1] == '"') {
        cell += '"';
        i = quote + 2;
      } else {
        insideQuotes = false;
        i = quote + 1;
      }
      continue;
    }
    const size_t special = text.find_first_of(",\r\n\"", i);
    const size_t end = special == std::string_view::npos ? text.size() : special;
    appendToCell(text.substr(i, end - i));
    if (end == text.size()) break;
    i = end + 1;
    switch (text[end]) {
      case '\n':
        finishRow();
        break;
      case '\r':
        finishRow();
        if (i < text.size() && text[i] == '\n') ++i;
        break;
      case '"':
        if (!cell.empty()) return CSVFailure::invalidQuoting;
        insideQuotes = true;
        break;
      default:  // ','
        finishCell();
    }
  }
  if (insideQuotes) return CSVFailure::unterminatedQuote;
  // A line end at the very end adds no empty row.
  if (!(cell.empty() && !rowHasCells && anyRow)) finishRow();
  return std::nullopt;
}

struct ParsedCSV {
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;

  bool operator==(const ParsedCSV&) const = default;
};

// Every row of `text`, the header included, each as it stands (ragged rows stay ragged). Always at
// least one row with at least one cell: "" gives {{""}}. nullopt for a double quote inside an
// unquoted, non-empty cell or for a quoted cell that never closes.
std::optional<std::vector<std::vector<std::string>>> parseCSVRows(std::string_view text);

// The first row becomes `columns`; every later row shorter than that is padded with empty strings,
// longer rows keep all their cells. Throws StoredCardStorageError (invalidCSV) naming `path`:
// "Invalid CSV quoting in `{path}`." or "Unterminated quoted cell in `{path}`.".
ParsedCSV parseCSV(std::string_view path, std::string_view text);

// The header and then every row, each padded to the column count (longer rows keep their cells),
// each cell quoted with inner quotes doubled, cells joined by "," and lines by CR LF, no line end
// at the end. Throws StoredCardStorageError (invalidCSV) when `columns` is empty.
//
// parseCSV(renderCSV(c, r)) gives back `c` and the padded rows, except that a final row holding one
// empty cell (only possible with one column) renders as `""` and is read back as no row.
std::string renderCSV(const std::vector<std::string>& columns,
                      const std::vector<std::vector<std::string>>& rows);

}  // namespace zorvik
