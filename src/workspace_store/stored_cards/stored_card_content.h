// The sources of a stored card's heavy bodies: text (markdown, html, css, javascript) and table
// data, each either inline in the card or external in a UTF-8 file.
//
// External paths are project resource paths ("resources/..."), sidecar paths under
// resources/cards/{card_id}/, or local files outside the project (absolute paths, "~" paths and
// "file:" URLs); see stored_card_path.h for the rules. Resolving reads files and nothing else;
// failures throw StoredCardStorageError. Plain values; JSON keys equal the field names, absent
// optionals are not written.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"
#include "foundation/uuid.h"

namespace zorvik {

class ValueDecoder;

// Where a body is stored ("inline" or "external").
enum class StoredCardContentMode { inlined, external };
// What a writer asks for ("inline" or "external").
enum class StoredCardContentStorageMode { inlined, external };
enum class StoredTextContentFormat { markdown, html, css, javascript };

template <>
struct EnumRawValues<StoredCardContentMode> {
  static constexpr std::string_view typeName = "StoredCardContentMode";
  static constexpr std::array table{
      std::pair{StoredCardContentMode::inlined, std::string_view("inline")},
      std::pair{StoredCardContentMode::external, std::string_view("external")},
  };
};

template <>
struct EnumRawValues<StoredCardContentStorageMode> {
  static constexpr std::string_view typeName = "StoredCardContentStorageMode";
  static constexpr std::array table{
      std::pair{StoredCardContentStorageMode::inlined, std::string_view("inline")},
      std::pair{StoredCardContentStorageMode::external, std::string_view("external")},
  };
};

template <>
struct EnumRawValues<StoredTextContentFormat> {
  static constexpr std::string_view typeName = "StoredTextContentFormat";
  static constexpr std::array table{
      std::pair{StoredTextContentFormat::markdown, std::string_view("markdown")},
      std::pair{StoredTextContentFormat::html, std::string_view("html")},
      std::pair{StoredTextContentFormat::css, std::string_view("css")},
      std::pair{StoredTextContentFormat::javascript, std::string_view("javascript")},
  };
};

// One file a card body lives in: its path as the card names it, and its raw bytes.
struct StoredCardSidecarFile {
  std::string relativePath;
  std::string data;

  bool operator==(const StoredCardSidecarFile&) const = default;
};

// A text body after resolution. `sidecar` is set when the text came from a file inside the
// project; `sourceURL` (a "file://" URL of the standardised path) whenever it came from a file.
struct ResolvedStoredText {
  std::string text;
  std::optional<StoredCardSidecarFile> sidecar;
  std::optional<std::string> sourceURL;

  bool operator==(const ResolvedStoredText&) const = default;
};

struct StoredTextContent {
  StoredCardContentMode mode = StoredCardContentMode::inlined;
  StoredTextContentFormat format = StoredTextContentFormat::markdown;
  std::optional<std::string> value;     // inline only
  std::optional<std::string> path;      // external only
  std::optional<std::string> encoding;  // "utf-8", external only

  static StoredTextContent makeInline(StoredTextContentFormat format, std::string value);
  // Sets encoding "utf-8".
  static StoredTextContent makeExternal(StoredTextContentFormat format, std::string path);

  // The text of this source. Inline: `value`, which must be the only payload field. External: the
  // file named by `path`, whose encoding must be given as "utf-8" (any case) and whose bytes must
  // be UTF-8. A local file outside the project reports no sidecar.
  ResolvedStoredText resolveString(const std::filesystem::path& projectRoot,
                                   const Uuid& cardID) const;

  static StoredTextContent decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredTextContent&) const = default;
};

// A table body after resolution; external rows are padded to the column count.
struct ResolvedStoredTable {
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
  std::optional<StoredCardSidecarFile> sidecar;

  bool operator==(const ResolvedStoredTable&) const = default;
};

struct StoredTableDataSource {
  StoredCardContentMode mode = StoredCardContentMode::inlined;
  std::optional<std::vector<std::string>> columns;            // inline only
  std::optional<std::vector<std::vector<std::string>>> rows;  // inline only
  std::optional<std::string> format;                          // "csv", external only
  std::optional<std::string> path;                            // external only
  std::optional<std::string> encoding;                        // "utf-8", external only
  std::optional<bool> headerRow;                              // true, external only

  static StoredTableDataSource makeInline(std::vector<std::string> columns,
                                          std::vector<std::vector<std::string>> rows);
  // Sets format "csv", encoding "utf-8" and headerRow true.
  static StoredTableDataSource makeExternal(std::string path);

  // The table of this source: inline `columns` and `rows` as they stand, or the CSV file named by
  // `path`, read under the same path rules as text.
  ResolvedStoredTable resolveTable(const std::filesystem::path& projectRoot,
                                   const Uuid& cardID) const;

  static StoredTableDataSource decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredTableDataSource&) const = default;
};

}  // namespace zorvik
