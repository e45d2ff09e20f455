#include "workspace_store/card_model/table_rows.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "foundation/json/value_decoder.h"

namespace zorvik {

TableRows::Row TableRows::Row::first(size_t count) const {
  return Row(*rows_, firstCell_, std::min(count, count_));
}

std::vector<std::string> TableRows::Row::toStrings() const {
  return std::vector<std::string>(begin(), end());
}

TableRows::TableRows(std::initializer_list<std::vector<std::string>> rows) {
  for (const std::vector<std::string>& row : rows) appendRow(row);
}

TableRows::TableRows(const std::vector<std::vector<std::string>>& rows) {
  for (const std::vector<std::string>& row : rows) appendRow(row);
}

void TableRows::reserve(size_t rows, size_t cells, size_t textBytes) {
  rowEnds_.reserve(rows);
  cellEnds_.reserve(cells);
  text_.reserve(textBytes);
}

void TableRows::appendCell(std::string_view text) {
  constexpr size_t kLimit = std::numeric_limits<uint32_t>::max();
  if (text.size() > kLimit - text_.size() || cellEnds_.size() >= kLimit) {
    throw std::length_error("A table holds at most 4 GiB of cell text and 2^32 - 1 cells.");
  }
  text_.append(text);
  cellEnds_.push_back(static_cast<uint32_t>(text_.size()));
}

void TableRows::endRow() { rowEnds_.push_back(static_cast<uint32_t>(cellEnds_.size())); }

TableRows TableRows::decode(const ValueDecoder& decoder) {
  const AnyCodableValue::Array& rows = decoder.array();
  // Sized in a first pass, so that each buffer is allocated once.
  size_t cells = 0;
  size_t textBytes = 0;
  for (const AnyCodableValue& row : rows) {
    if (const AnyCodableValue::Array* rowCells = row.asArray()) {
      cells += rowCells->size();
      for (const AnyCodableValue& cell : *rowCells) {
        if (const std::string* text = cell.asString()) textBytes += text->size();
      }
    }
  }
  TableRows result;
  result.reserve(rows.size(), cells, textBytes);
  for (size_t r = 0; r < rows.size(); ++r) {
    const ValueDecoder rowDecoder = decoder.element(rows[r], static_cast<int>(r));
    const AnyCodableValue::Array& rowCells = rowDecoder.array();
    for (size_t c = 0; c < rowCells.size(); ++c) {
      if (const std::string* text = rowCells[c].asString()) {
        result.appendCell(*text);
      } else {  // not a string: fails with the decoder's own error
        result.appendCell(
            rowDecoder.element(rowCells[c], static_cast<int>(c)).decode<std::string>());
      }
    }
    result.endRow();
  }
  return result;
}

AnyCodableValue TableRows::encode() const {
  AnyCodableValue::Array rows;
  rows.reserve(size());
  for (Row row : *this) {
    AnyCodableValue::Array cells;
    cells.reserve(row.size());
    for (std::string_view cell : row) cells.emplace_back(std::string(cell));
    rows.emplace_back(std::move(cells));
  }
  return AnyCodableValue(std::move(rows));
}

}  // namespace zorvik
