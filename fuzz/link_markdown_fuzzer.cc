// Feeds arbitrary bytes to the link-card Markdown reader, which must never crash. A document that
// reads and that the writer can represent must come back equal from its own encoding, and that
// encoding must be canonical (writing the re-read document gives the same text).
//
// "Representable" leaves out what the reader produces only from hand-made input and the writer
// deliberately does not reproduce:
// - a value read as text (source, url, note, summary, a row's label, type and value) that is the
//   word `null` or begins with a double quote: a quoted JSON string decodes to text that, written
//   plainly, may read as a JSON string or as absent again;
// - an empty `source` or `summary` (only a quoted "" gives one): both read back as absent;
// - a line break in a list element, a row label or type, or a label or type that is empty,
//   untrimmed or `|`: those are written on one line as they stand;
// - a row whose payloads do not match its kind (only the JSON form gives one): the writer keeps
//   just the payload of the kind;
// - a carriage return anywhere: before the writer's line feed it reads as a CR LF line end.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"

namespace {

using zorvik::FilesystemMarkdownLinkCardCodec;
using zorvik::FilesystemMarkdownLinkCardDocument;
using zorvik::WorkspaceRowItem;

bool hasCarriageReturn(std::string_view text) { return text.find('\r') != std::string_view::npos; }

bool readsBackAsText(std::string_view value) {
  return value != "null" && !value.starts_with('"') && !hasCarriageReturn(value);
}

bool isListElement(std::string_view value) {
  return value.find('\n') == std::string_view::npos && !hasCarriageReturn(value);
}

bool isPlainLine(std::string_view value) {
  if (value.empty() || value == "|" || !isListElement(value)) return false;
  const auto isSpaceOrTab = [](char c) { return c == ' ' || c == '\t'; };
  return !isSpaceOrTab(value.front()) && !isSpaceOrTab(value.back()) && readsBackAsText(value);
}

bool isRepresentable(const std::vector<std::string>& elements) {
  for (const auto& element : elements) {
    if (!isListElement(element)) return false;
  }
  return true;
}

bool isRepresentable(const WorkspaceRowItem& item) {
  if (!isPlainLine(item.label) || !isPlainLine(item.type)) return false;
  if (zorvik::normalizeRowItemType(item.type) != item.type) return false;
  const int payloads = item.keyValue.has_value() + item.expandableList.has_value() +
                       item.todo.has_value() + item.rating.has_value();
  if (payloads != 1) return false;
  if (item.type == "expandable_list") {
    return item.expandableList && isRepresentable(item.expandableList->items);
  }
  if (item.type == "todo") return item.todo.has_value();
  if (item.type == "rating") return item.rating.has_value();
  return item.keyValue && (item.keyValue->value.empty() || readsBackAsText(item.keyValue->value));
}

bool isRepresentable(const std::vector<WorkspaceRowItem>& items) {
  for (const auto& item : items) {
    if (!isRepresentable(item)) return false;
  }
  return true;
}

bool isRepresentable(const FilesystemMarkdownLinkCardDocument& document) {
  const auto textOrEmpty = [](std::string_view value) {
    return value.empty() || readsBackAsText(value);
  };
  return !document.source.empty() && readsBackAsText(document.source) &&
         textOrEmpty(document.url) && textOrEmpty(document.note) &&
         (!document.summary ||
          (!document.summary->empty() && readsBackAsText(*document.summary))) &&
         !hasCarriageReturn(document.richText) && isRepresentable(document.rowItems) &&
         isRepresentable(document.availableFields) && isRepresentable(document.hiddenRowItems) &&
         isRepresentable(document.images) && isRepresentable(document.availableImages);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto document = FilesystemMarkdownLinkCardCodec::decodeIfPresent(text);
  if (!document) return 0;
  const std::string written = FilesystemMarkdownLinkCardCodec::encode(*document);
  if (!isRepresentable(*document)) return 0;

  const auto reread = FilesystemMarkdownLinkCardCodec::decodeIfPresent(written);
  if (!reread || !(*reread == *document)) std::abort();
  if (FilesystemMarkdownLinkCardCodec::encode(*reread) != written) std::abort();
  return 0;
}
