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

// The index of the first comma, line end or double quote at or after `from`, else the text's size.
// Cells are short, so a plain loop beats a general character-set search.
inline size_t nextCSVSpecialCharacter(std::string_view text, size_t from) {
  for (size_t i = from; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ',' || c == '\n' || c == '\r' || c == '"') return i;
  }
  return text.size();
}

// The one CSV state machine. Hands every cell to `sink.cell(std::string_view)` (valid only during
// the call) and ends every row with `sink.endRow()`; returns the failure, if any, after which the
// sink's rows are incomplete.
template <class Sink>
std::optional<CSVFailure> readCSV(std::string_view text, Sink& sink) {
  // A cell is usually one piece of the text and is handed over as a view of it; only a cell with
  // doubled quotes or text after its closing quote is assembled in `assembled`.
  std::string_view piece;
  std::string assembled;
  bool isAssembled = false;
  bool rowHasCells = false;
  bool anyRow = false;
  bool insideQuotes = false;
  const auto cellIsEmpty = [&] { return isAssembled ? assembled.empty() : piece.empty(); };
  const auto appendToCell = [&](std::string_view more) {
    if (!isAssembled && piece.empty()) {
      piece = more;
      return;
    }
    if (!isAssembled) {
      assembled.assign(piece);
      isAssembled = true;
    }
    assembled.append(more);
  };
  const auto finishCell = [&] {
    sink.cell(isAssembled ? std::string_view(assembled) : piece);
    piece = {};
    assembled.clear();
    isAssembled = false;
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
      if (quote + 1 < text.size() && text[quote + 1] == '"') {
        appendToCell(text.substr(i, quote + 1 - i));  // the text with one of the two quotes
        i = quote + 2;
      } else {
        appendToCell(text.substr(i, quote - i));
        insideQuotes = false;
        i = quote + 1;
      }
      continue;
    }
    const size_t end = nextCSVSpecialCharacter(text, i);
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
        if (!cellIsEmpty()) return CSVFailure::invalidQuoting;
        insideQuotes = true;
        break;
      default:  // ','
        finishCell();
    }
  }
  if (insideQuotes) return CSVFailure::unterminatedQuote;
  // A line end at the very end adds no empty row.
  if (!(cellIsEmpty() && !rowHasCells && anyRow)) finishRow();
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
