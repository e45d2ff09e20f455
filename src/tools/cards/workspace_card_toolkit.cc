#include "tools/cards/workspace_card_toolkit.h"

#include <algorithm>

#include "foundation/text.h"

namespace zorvik {
namespace {

constexpr WorkspaceCardRange kEmptyRange{0, 0};

// Lines of `text` with CR LF read as LF; an empty text has no lines.
std::vector<std::string_view> splitLines(std::string_view text, std::string& normalized) {
  normalized.clear();
  normalized.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    normalized.push_back(text[i]);
  }
  std::vector<std::string_view> lines;
  if (normalized.empty()) return lines;
  std::string_view rest = normalized;
  while (true) {
    size_t newline = rest.find('\n');
    lines.push_back(rest.substr(0, newline));
    if (newline == std::string_view::npos) break;
    rest.remove_prefix(newline + 1);
  }
  return lines;
}

}  // namespace

WorkspaceCardContentPayload WorkspaceCardToolkit::content(
    const WorkspaceCard& card, const WorkspaceCardContentRequest& request,
    const WorkspaceCardContext& context) {
  switch (request.mode) {
    case WorkspaceCardContentMode::full:
      return {.mode = request.mode, .text = truncate(contextText(card, context), request.maxChars)};
    case WorkspaceCardContentMode::summary:
      return {.mode = request.mode, .text = truncate(summaryText(card), request.maxChars)};
    case WorkspaceCardContentMode::typeSpecific:
      break;
  }
  return typeSpecificContent(card, request, context);
}

std::string WorkspaceCardToolkit::truncate(std::string_view text, std::optional<int64_t> maxChars) {
  const std::optional<size_t> kept = truncationLength(text, maxChars);
  if (!kept) return std::string(text);
  std::string result;
  writeCut(text, *kept, result);
  return result;
}

std::optional<size_t> WorkspaceCardToolkit::truncationLength(std::string_view text,
                                                             std::optional<int64_t> maxChars) {
  if (!maxChars || *maxChars < 1) return std::nullopt;
  // More than `limit` characters keep limit - 1 of them and end in "…".
  const auto limit = static_cast<size_t>(*maxChars);
  return cutLength(text, limit + 1, limit - 1);
}

WorkspaceCardRange WorkspaceCardToolkit::clampRange(int64_t total,
                                                    const std::optional<WorkspaceCardRange>& range,
                                                    std::optional<int64_t> maxCount) {
  if (total < 1) return kEmptyRange;
  int64_t start = 1;
  int64_t end = total;
  if (range) {
    start = range->start.value_or(1);
    end = range->end.value_or(total);
    if (start < 1) {
      start = 1;
      end = end < 1 ? 1 : std::min(end, total);
    } else if (end >= 1) {
      if (end < start) std::swap(start, end);
      start = std::min(start, total);
      end = std::min(end, total);
    } else {
      // Only the end is nonsense: read the first `start` items.
      end = std::min(start, total);
      start = 1;
    }
  }
  if (maxCount && *maxCount >= 1 && end - start >= *maxCount) {
    end = std::min(start + *maxCount - 1, total);
  }
  return {start, end};
}

WorkspaceCardLineSlice WorkspaceCardToolkit::sliceLines(
    std::string_view text, const WorkspaceCardRichTextOptions& options) {
  std::string normalized;
  const auto lines = splitLines(text, normalized);
  WorkspaceCardLineSlice slice;
  slice.range = clampRange(static_cast<int64_t>(lines.size()), options.lineRange, options.maxLines);
  for (int64_t line = *slice.range.start; line >= 1 && line <= *slice.range.end; ++line) {
    if (line > *slice.range.start) slice.text += '\n';
    slice.text += lines[static_cast<size_t>(line - 1)];
  }
  return slice;
}

WorkspaceCardMessageSlice WorkspaceCardToolkit::sliceMessages(
    const std::vector<WorkspaceChatMessage>& messages, const WorkspaceCardChatOptions& options) {
  const auto total = static_cast<int64_t>(messages.size());
  WorkspaceCardMessageSlice slice;
  if (options.lastN && *options.lastN >= 1) {
    const int64_t taken = std::min(*options.lastN, total);
    slice.range = taken == 0 ? kEmptyRange : WorkspaceCardRange{total - taken + 1, total};
  } else {
    slice.range = clampRange(total, options.messageRange, std::nullopt);
  }
  for (int64_t index = *slice.range.start; index >= 1 && index <= *slice.range.end; ++index) {
    slice.messages.push_back(messages[static_cast<size_t>(index - 1)]);
  }
  return slice;
}

WorkspaceHTMLSourceSlice WorkspaceCardToolkit::sliceHTMLSource(
    std::string_view text, const std::optional<WorkspaceCardRange>& sourceRange,
    std::optional<int64_t> maxChars) {
  const std::u16string units = toUTF16(text);
  const auto length = static_cast<int64_t>(units.size());
  const int64_t start =
      std::clamp<int64_t>(sourceRange ? sourceRange->start.value_or(0) : 0, 0, length);
  const int64_t end =
      std::clamp<int64_t>(sourceRange ? sourceRange->end.value_or(length) : length, start, length);
  int64_t taken = end - start;
  if (maxChars && *maxChars >= 1) taken = std::min(taken, *maxChars);

  WorkspaceHTMLSourceSlice slice;
  slice.text = toUTF8(
      std::u16string_view(units).substr(static_cast<size_t>(start), static_cast<size_t>(taken)));
  slice.window.start = start;
  slice.window.end = start + taken;
  slice.window.totalLength = length;
  slice.window.truncated = slice.window.end < length;
  if (slice.window.truncated) slice.window.nextStart = slice.window.end;
  return slice;
}

bool WorkspaceCardToolkit::matchesQuery(std::string_view value, std::string_view match,
                                        std::optional<WorkspaceCardTableMatchMode> mode,
                                        std::optional<bool> caseSensitive) {
  std::string candidate = trimWhitespaceAndNewlines(value);
  std::string query = trimWhitespaceAndNewlines(match);
  if (!caseSensitive.value_or(false)) {
    candidate = lowercased(candidate);
    query = lowercased(query);
  }
  switch (mode.value_or(WorkspaceCardTableMatchMode::equals)) {
    case WorkspaceCardTableMatchMode::equals:
      return candidate == query;
    case WorkspaceCardTableMatchMode::contains:
      return candidate.find(query) != std::string::npos;
    case WorkspaceCardTableMatchMode::startsWith:
      return candidate.starts_with(query);
    case WorkspaceCardTableMatchMode::endsWith:
      return candidate.ends_with(query);
  }
  return false;
}

bool WorkspaceCardToolkit::matchesFilter(TableRows::Row row, size_t columnIndex,
                                         const WorkspaceCardTableRowFilter& filter) {
  std::string_view value = columnIndex < row.size() ? row[columnIndex] : "";
  return matchesQuery(value, filter.match, filter.mode, filter.caseSensitive);
}

WorkspaceCardOwnership WorkspaceCardToolkit::ownership(const WorkspaceCard& card) {
  if (const auto* chat = card.payload.as<WorkspaceChatPayload>()) {
    if (chat->isInvisible.value_or(false)) return {"runtime", true, "read_only"};
    return {"user", false, "tool_only"};
  }
  return {"user", false, "file_editable"};
}

}  // namespace zorvik
