#include "workspace_store/stored_cards/stored_card_content.h"

#include "foundation/atomic_file.h"
#include "foundation/file_url.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "workspace_store/stored_cards/csv_table.h"
#include "workspace_store/stored_cards/stored_card_path.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {
namespace {

using Kind = StoredCardStorageError::Kind;

[[noreturn]] void fail(Kind kind, std::string message) {
  throw StoredCardStorageError(kind, std::move(message));
}

std::string backticked(std::string_view path) { return "`" + std::string(path) + "`"; }

bool isUTF8Name(const std::optional<std::string>& encoding) {
  return encoding && lowercased(*encoding) == "utf-8";
}

// Reads the external file named by `path`: a local file outside the project as it is, anything
// else as a project resource or a sidecar of the card.
ResolvedStoredText readExternalText(const std::filesystem::path& projectRoot,
                                    const std::string& path, const Uuid& cardID) {
  const std::optional<std::filesystem::path> outside = externalLocalFileURL(path);
  std::filesystem::path file;
  if (outside) {
    file = *outside;
  } else if (normalizedProjectResourcePath(path)) {
    file = resolveProjectResourceFileURL(projectRoot, path, cardID);
  } else {
    validateRelativeSidecarPath(path, cardID);
    file = resolveFileURL(projectRoot, path, cardID);
  }
  std::optional<std::string> bytes = readFileContents(file);
  if (!bytes) {
    fail(Kind::missingSidecar, "Missing sidecar file " + backticked(path) + " for card " +
                                   cardID.uppercaseString() + ".");
  }
  if (!isValidUTF8(*bytes)) {
    fail(Kind::unsupportedEncoding, "Sidecar file " + backticked(path) + " is not valid UTF-8.");
  }
  ResolvedStoredText result{
      .text = *bytes, .sidecar = std::nullopt, .sourceURL = fileURLString(file)};
  if (!outside) result.sidecar = StoredCardSidecarFile{path, std::move(*bytes)};
  return result;
}

}  // namespace

StoredTextContent StoredTextContent::makeInline(StoredTextContentFormat format, std::string value) {
  return {.mode = StoredCardContentMode::inlined, .format = format, .value = std::move(value)};
}

StoredTextContent StoredTextContent::makeExternal(StoredTextContentFormat format,
                                                  std::string path) {
  return {.mode = StoredCardContentMode::external,
          .format = format,
          .path = std::move(path),
          .encoding = "utf-8"};
}

ResolvedStoredText StoredTextContent::resolveString(const std::filesystem::path& projectRoot,
                                                    const Uuid& cardID) const {
  const std::string card = cardID.uppercaseString();
  if (mode == StoredCardContentMode::inlined) {
    if (!value || path || encoding) {
      fail(Kind::invalidDescriptor, "Inline text source for card " + card +
                                        " must include `value` and omit `path`/`encoding`.");
    }
    return {.text = *value};
  }
  if (value)
    fail(Kind::invalidDescriptor, "External text source for card " + card + " must omit `value`.");
  if (!path || path->empty()) {
    fail(Kind::invalidDescriptor, "External text source for card " + card + " is missing `path`.");
  }
  if (!isUTF8Name(encoding)) {
    fail(Kind::unsupportedEncoding,
         "External text source " + backticked(*path) + " must use encoding `utf-8`.");
  }
  return readExternalText(projectRoot, *path, cardID);
}

StoredTextContent StoredTextContent::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.mode = object.required<StoredCardContentMode>("mode"),
          .format = object.required<StoredTextContentFormat>("format"),
          .value = object.optional<std::string>("value"),
          .path = object.optional<std::string>("path"),
          .encoding = object.optional<std::string>("encoding")};
}

AnyCodableValue StoredTextContent::encode() const {
  return ObjectEncoder()
      .add("mode", mode)
      .add("format", format)
      .add("value", value)
      .add("path", path)
      .add("encoding", encoding)
      .build();
}

StoredTableDataSource StoredTableDataSource::makeInline(
    std::vector<std::string> columns, std::vector<std::vector<std::string>> rows) {
  return {.mode = StoredCardContentMode::inlined,
          .columns = std::move(columns),
          .rows = std::move(rows)};
}

StoredTableDataSource StoredTableDataSource::makeExternal(std::string path) {
  return {.mode = StoredCardContentMode::external,
          .format = "csv",
          .path = std::move(path),
          .encoding = "utf-8",
          .headerRow = true};
}

ResolvedStoredTable StoredTableDataSource::resolveTable(const std::filesystem::path& projectRoot,
                                                        const Uuid& cardID) const {
  const std::string card = cardID.uppercaseString();
  if (mode == StoredCardContentMode::inlined) {
    if (!columns || !rows || format || path || encoding || headerRow) {
      fail(Kind::invalidDescriptor,
           "Inline table source for card " + card +
               " must include `columns`/`rows` and omit external-only fields.");
    }
    return {.columns = *columns, .rows = *rows};
  }
  if (columns || rows) {
    fail(Kind::invalidDescriptor,
         "External table source for card " + card + " must omit inline `columns`/`rows`.");
  }
  if (!format || lowercased(*format) != "csv") {
    fail(Kind::invalidDescriptor,
         "External table source for card " + card + " must use format `csv`.");
  }
  if (!path || path->empty()) {
    fail(Kind::invalidDescriptor, "External table source for card " + card + " is missing `path`.");
  }
  if (!isUTF8Name(encoding)) {
    fail(Kind::unsupportedEncoding,
         "External table source " + backticked(*path) + " must use encoding `utf-8`.");
  }
  if (headerRow != true) {
    fail(Kind::invalidDescriptor,
         "External table source " + backticked(*path) + " must set `headerRow` to true.");
  }
  ResolvedStoredText file = readExternalText(projectRoot, *path, cardID);
  ParsedCSV table = parseCSV(*path, file.text);
  return {.columns = std::move(table.columns),
          .rows = std::move(table.rows),
          .sidecar = std::move(file.sidecar)};
}

StoredTableDataSource StoredTableDataSource::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.mode = object.required<StoredCardContentMode>("mode"),
          .columns = object.optional<std::vector<std::string>>("columns"),
          .rows = object.optional<std::vector<std::vector<std::string>>>("rows"),
          .format = object.optional<std::string>("format"),
          .path = object.optional<std::string>("path"),
          .encoding = object.optional<std::string>("encoding"),
          .headerRow = object.optional<bool>("headerRow")};
}

AnyCodableValue StoredTableDataSource::encode() const {
  return ObjectEncoder()
      .add("mode", mode)
      .add("columns", columns)
      .add("rows", rows)
      .add("format", format)
      .add("path", path)
      .add("encoding", encoding)
      .add("headerRow", headerRow)
      .build();
}

}  // namespace zorvik
