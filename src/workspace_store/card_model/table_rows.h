// TableRows: the body rows of a table card, each a list of text cells. All cells live in one text
// buffer with their boundaries beside it, so a table of any size costs three allocations rather
// than one per row and per long cell.
//
// A value type. Rows and cells are read through views (`Row`, std::string_view) that stay valid
// while the TableRows lives and is not changed. Rows may differ in length. The JSON form is an
// array of arrays of strings. A table holds at most 4 GiB of cell text and 2^32 - 1 cells;
// appending beyond that throws std::length_error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

class TableRows {
 private:
  // An iterator over items `index`, `index + 1`, ... of a table, each read by `Read`.
  template <class Value, Value (*Read)(const TableRows&, size_t)>
  class IndexIterator {
   public:
    using value_type = Value;
    using difference_type = std::ptrdiff_t;

    IndexIterator() = default;
    IndexIterator(const TableRows* rows, size_t index) : rows_(rows), index_(index) {}
    Value operator*() const { return Read(*rows_, index_); }
    IndexIterator& operator++() {
      ++index_;
      return *this;
    }
    IndexIterator operator++(int) {
      IndexIterator previous = *this;
      ++index_;
      return previous;
    }
    bool operator==(const IndexIterator& other) const { return index_ == other.index_; }

   private:
    const TableRows* rows_ = nullptr;
    size_t index_ = 0;
  };

  // Cell `index` among all cells of the table.
  static std::string_view cellAt(const TableRows& rows, size_t index);

 public:
  // A view of one row's cells.
  class Row {
   public:
    using Iterator = IndexIterator<std::string_view, &TableRows::cellAt>;

    size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    std::string_view operator[](size_t column) const { return cellAt(*rows_, firstCell_ + column); }
    // The first `count` cells (all of them when the row is shorter).
    Row first(size_t count) const;
    std::vector<std::string> toStrings() const;
    Iterator begin() const { return Iterator(rows_, firstCell_); }
    Iterator end() const { return Iterator(rows_, firstCell_ + count_); }

   private:
    friend class TableRows;
    Row(const TableRows& rows, size_t firstCell, size_t count)
        : rows_(&rows), firstCell_(firstCell), count_(count) {}

    const TableRows* rows_;
    size_t firstCell_;
    size_t count_;
  };

 private:
  static Row rowAt(const TableRows& rows, size_t index);

 public:
  using Iterator = IndexIterator<Row, &TableRows::rowAt>;

  TableRows() = default;
  TableRows(std::initializer_list<std::vector<std::string>> rows);
  TableRows(const std::vector<std::vector<std::string>>& rows);  // NOLINT: converts implicitly

  size_t size() const { return rowEnds_.size(); }
  bool empty() const { return rowEnds_.empty(); }
  Row operator[](size_t index) const { return rowAt(*this, index); }
  Iterator begin() const { return Iterator(this, 0); }
  Iterator end() const { return Iterator(this, size()); }

  // Room for `rows` rows, `cells` cells and `textBytes` bytes of cell text in all.
  void reserve(size_t rows, size_t cells, size_t textBytes);
  // Appends one row; `cells` is any range of string-like values.
  template <class Cells>
  void appendRow(const Cells& cells) {
    for (const auto& cell : cells) appendCell(cell);
    endRow();
  }
  // Builds a row cell by cell: appendCell() adds to the row being built, endRow() closes it.
  void appendCell(std::string_view text);
  void endRow();
  // The number of cells in the row being built.
  size_t openRowSize() const { return cellEnds_.size() - (rowEnds_.empty() ? 0 : rowEnds_.back()); }

  // Decodes an array of arrays of strings, failing as a vector of vectors of strings would, under
  // that type's name.
  static constexpr std::string_view kCodingTypeName = "Array<Array<String>>";
  static TableRows decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const TableRows&) const = default;

 private:
  std::string text_;
  std::vector<uint32_t> cellEnds_;  // the end offset in text_ of each cell
  std::vector<uint32_t> rowEnds_;   // the end index in cellEnds_ of each row
};

inline std::string_view TableRows::cellAt(const TableRows& rows, size_t index) {
  const size_t start = index == 0 ? 0 : rows.cellEnds_[index - 1];
  return std::string_view(rows.text_).substr(start, rows.cellEnds_[index] - start);
}

inline TableRows::Row TableRows::rowAt(const TableRows& rows, size_t index) {
  const size_t firstCell = index == 0 ? 0 : rows.rowEnds_[index - 1];
  return Row(rows, firstCell, rows.rowEnds_[index] - firstCell);
}

}  // namespace zorvik
