// Table slicing: column resolution, automatic column choice for wide tables, and the typed table
// content with its filter, cell and find lookups.
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <unordered_set>

#include "foundation/text.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

struct ColumnAliases {
  std::string_view key;
  std::vector<std::string_view> aliases;
};

// Normalised titles that stand for the well-known columns when no title matches the name itself.
const std::vector<ColumnAliases>& aliasTable() {
  static const std::vector<ColumnAliases> table = {
      {"status", {"status", "state", "stage", "progress", "статус", "состояние"}},
      {"state", {"state", "status", "stage", "статус", "состояние"}},
      {"title", {"title", "name", "subject", "summary", "заголовок", "название"}},
      {"name", {"name", "title", "label", "имя", "название", "заголовок"}},
      {"priority", {"priority", "prio", "importance", "urgency", "приоритет"}},
      {"severity",
       {"severity", "impact", "criticality", "серьезность", "серьёзность", "критичность"}},
  };
  return table;
}

// The title lists of the automatic column choice, in picking order.
const std::vector<std::vector<std::string_view>>& autoColumnGroups() {
  static const std::vector<std::vector<std::string_view>> groups = {
      {"id"},
      {"title", "name", "заголовок"},
      {"status", "state", "статус"},
      {"priority", "приоритет"},
      {"severity", "серьезность"},
  };
  return groups;
}

size_t totalColumnCount(const WorkspaceTablePayload& table) {
  size_t total = table.columns.size();
  for (TableRows::Row row : table.rows) total = std::max(total, row.size());
  return total;
}

std::string_view cellAt(const WorkspaceTablePayload& table, size_t row, size_t column) {
  const TableRows::Row cells = table.rows[row];
  return column < cells.size() ? cells[column] : std::string_view();
}

std::string columnTitle(const WorkspaceTablePayload& table, size_t column) {
  return column < table.columns.size() ? table.columns[column] : std::string();
}

// The title, or "Column <n>" when it is empty.
std::string columnDisplayName(const WorkspaceTablePayload& table, size_t column) {
  std::string title = columnTitle(table, column);
  return title.empty() ? "Column " + std::to_string(column + 1) : title;
}

std::vector<size_t> indicesOf(const WorkspaceCardRange& range) {
  std::vector<size_t> indices;
  for (int64_t n = *range.start; n >= 1 && n <= *range.end; ++n) {
    indices.push_back(static_cast<size_t>(n - 1));
  }
  return indices;
}

bool isBlank(std::string_view text) { return trimWhitespaceAndNewlines(text).empty(); }

}  // namespace

std::string WorkspaceCardToolkit::normalizeColumnName(std::string_view name) {
  const std::string trimmed = trimWhitespaceAndNewlines(name);
  std::string collapsed;
  collapsed.reserve(trimmed.size());
  bool inSpace = false;
  int32_t offset = 0;
  const auto length = static_cast<int32_t>(trimmed.size());
  while (offset < length) {
    const int32_t begin = offset;
    UChar32 c;
    U8_NEXT(trimmed.data(), offset, length, c);
    if (c >= 0 && u_isUWhiteSpace(c)) {
      if (!inSpace) collapsed.push_back(' ');
      inSpace = true;
    } else {
      collapsed.append(trimmed, static_cast<size_t>(begin), static_cast<size_t>(offset - begin));
      inSpace = false;
    }
  }
  return lowercased(collapsed);
}

std::optional<size_t> WorkspaceCardToolkit::resolveColumnIndex(
    std::string_view name, const std::vector<std::string>& columns, size_t total) {
  const std::string trimmed = trimWhitespaceAndNewlines(name);
  if (trimmed.empty()) return std::nullopt;

  int64_t number = 0;
  const char* last = trimmed.data() + trimmed.size();
  if (auto [end, error] = std::from_chars(trimmed.data(), last, number);
      error == std::errc() && end == last && number >= 1 &&
      static_cast<uint64_t>(number) <= total) {
    return static_cast<size_t>(number - 1);
  }

  std::vector<std::string> normalizedTitles;
  normalizedTitles.reserve(columns.size());
  for (const auto& title : columns) normalizedTitles.push_back(normalizeColumnName(title));
  const std::string normalized = normalizeColumnName(trimmed);
  auto findTitle = [&](auto&& matches) -> std::optional<size_t> {
    for (size_t i = 0; i < columns.size(); ++i) {
      if (matches(i)) return i;
    }
    return std::nullopt;
  };

  if (auto found = findTitle([&](size_t i) { return normalizedTitles[i] == normalized; })) {
    return found;
  }
  const std::string lower = lowercased(trimmed);
  if (auto found = findTitle([&](size_t i) { return lowercased(columns[i]) == lower; })) {
    return found;
  }
  if (auto found = findTitle([&](size_t i) {
        const std::string& title = normalizedTitles[i];
        return !title.empty() && (title.find(normalized) != std::string::npos ||
                                  normalized.find(title) != std::string::npos);
      })) {
    return found;
  }
  // Aliases: an exact title for any alias first, then a title containing one.
  auto entry =
      std::find_if(aliasTable().begin(), aliasTable().end(),
                   [&](const ColumnAliases& aliases) { return aliases.key == normalized; });
  if (entry == aliasTable().end()) return std::nullopt;
  for (std::string_view alias : entry->aliases) {
    if (auto found = findTitle([&](size_t i) { return normalizedTitles[i] == alias; })) {
      return found;
    }
  }
  for (std::string_view alias : entry->aliases) {
    if (auto found = findTitle(
            [&](size_t i) { return normalizedTitles[i].find(alias) != std::string::npos; })) {
      return found;
    }
  }
  return std::nullopt;
}

std::vector<size_t> WorkspaceCardToolkit::autoSelectColumnIndices(
    const std::vector<std::string>& columns) {
  std::vector<std::string> normalizedTitles;
  normalizedTitles.reserve(columns.size());
  for (const auto& title : columns) normalizedTitles.push_back(normalizeColumnName(title));

  std::vector<size_t> picked;
  for (const auto& group : autoColumnGroups()) {
    for (size_t i = 0; i < normalizedTitles.size(); ++i) {
      const bool listed = std::find(group.begin(), group.end(), normalizedTitles[i]) != group.end();
      if (listed && std::find(picked.begin(), picked.end(), i) == picked.end()) {
        picked.push_back(i);
        break;
      }
    }
  }
  return picked;
}

WorkspaceTableContent WorkspaceCardToolkit::tableContent(const WorkspaceTablePayload& table,
                                                         const WorkspaceCardTableOptions& options,
                                                         std::optional<int64_t> maxChars) {
  const size_t totalRows = table.rows.size();
  const size_t totalColumns = totalColumnCount(table);
  WorkspaceTableContent content;
  content.showsRowHeaders = table.showsRowHeaders;
  content.totalRows = static_cast<int64_t>(totalRows);
  content.totalColumns = static_cast<int64_t>(totalColumns);

  // Columns: by name, by range, or picked automatically for wide tables.
  std::vector<size_t> columnIndices;
  if (options.columnNames && !options.columnNames->empty()) {
    std::vector<std::string> missing;
    for (const std::string& name : *options.columnNames) {
      auto index = resolveColumnIndex(name, table.columns, totalColumns);
      if (!index) {
        missing.push_back(name);
      } else if (std::find(columnIndices.begin(), columnIndices.end(), *index) ==
                 columnIndices.end()) {
        columnIndices.push_back(*index);
      }
    }
    content.columnNamesRequested = *options.columnNames;
    content.columnNamesMissing = std::move(missing);
  } else {
    if (!options.columnRange && totalColumns >= 7) {
      columnIndices = autoSelectColumnIndices(table.columns);
    }
    if (columnIndices.empty()) {
      WorkspaceCardRange range =
          clampRange(static_cast<int64_t>(totalColumns), options.columnRange, options.maxColumns);
      columnIndices = indicesOf(range);
      content.columnRange = range;
    }
  }

  // Rows: the clamped range, narrowed by the row filter.
  const WorkspaceCardRange rowRange =
      clampRange(static_cast<int64_t>(totalRows), options.rowRange, options.maxRows);
  content.rowRange = rowRange;
  std::vector<size_t> rowIndices = indicesOf(rowRange);
  if (options.rowFilter) {
    const WorkspaceCardTableRowFilter& filter = *options.rowFilter;
    content.rowFilter = filter;
    auto column = resolveColumnIndex(filter.column, table.columns, totalColumns);
    if (!column) {
      content.filterError = "column_not_found";
      rowIndices.clear();
    } else if (isBlank(filter.match)) {
      content.filterError = "empty_match";
      rowIndices.clear();
    } else {
      std::erase_if(rowIndices,
                    [&](size_t row) { return !matchesFilter(table.rows[row], *column, filter); });
    }
  }

  content.rows.reserve(rowIndices.size());
  for (size_t row : rowIndices) {
    std::vector<std::string> cells;
    cells.reserve(columnIndices.size());
    for (size_t column : columnIndices)
      cells.push_back(truncate(cellAt(table, row, column), maxChars));
    content.rows.push_back(std::move(cells));
  }
  content.rowCount = static_cast<int64_t>(rowIndices.size());
  content.columnCount = static_cast<int64_t>(columnIndices.size());
  if (options.includeHeaders.value_or(true)) {
    std::vector<std::string> titles;
    titles.reserve(columnIndices.size());
    for (size_t column : columnIndices) titles.push_back(columnTitle(table, column));
    content.columns = std::move(titles);
  }

  auto cellMatch = [&](size_t row, size_t column) {
    return WorkspaceTableCellMatch{static_cast<int64_t>(row + 1), static_cast<int64_t>(column + 1),
                                   columnDisplayName(table, column),
                                   truncate(cellAt(table, row, column), maxChars)};
  };

  if (options.cell) {
    const WorkspaceCardTableCell& cell = *options.cell;
    if (cell.rowIndex < 1 || static_cast<uint64_t>(cell.rowIndex) > totalRows) {
      content.cellError = "row_out_of_range";
    } else {
      std::optional<size_t> column;
      if (cell.columnIndex) {
        if (*cell.columnIndex >= 1 && static_cast<uint64_t>(*cell.columnIndex) <= totalColumns) {
          column = static_cast<size_t>(*cell.columnIndex - 1);
        }
      } else if (cell.columnName) {
        column = resolveColumnIndex(*cell.columnName, table.columns, totalColumns);
      }
      if (column) {
        content.cell = cellMatch(static_cast<size_t>(cell.rowIndex - 1), *column);
      } else {
        content.cellError = "column_not_found";
      }
    }
  }

  if (options.find) {
    const WorkspaceCardTableFind& find = *options.find;
    std::vector<WorkspaceTableCellMatch> matches;
    std::optional<size_t> onlyColumn;
    if (isBlank(find.match)) {
      content.matchError = "empty_match";
    } else if (find.column &&
               !(onlyColumn = resolveColumnIndex(*find.column, table.columns, totalColumns))) {
      content.matchError = "column_not_found";
    } else {
      const auto limit = static_cast<size_t>(std::max<int64_t>(find.maxMatches.value_or(50), 1));
      const auto rows =
          indicesOf(clampRange(static_cast<int64_t>(totalRows), find.rowRange, std::nullopt));
      const auto columns = onlyColumn ? std::vector<size_t>{*onlyColumn}
                                      : indicesOf(clampRange(static_cast<int64_t>(totalColumns),
                                                             find.columnRange, std::nullopt));
      for (size_t row : rows) {
        for (size_t column : columns) {
          if (matches.size() >= limit) break;
          if (matchesQuery(cellAt(table, row, column), find.match, find.mode, find.caseSensitive)) {
            matches.push_back(cellMatch(row, column));
          }
        }
        if (matches.size() >= limit) break;
      }
    }
    content.matches = std::move(matches);
  }
  return content;
}

}  // namespace zorvik
