// StoredCardPayload: the persisted form of a card's runtime payload, and the conversions between
// the two.
//
// Rich text, table and html cards have a structured stored form whose heavy bodies may live in
// sidecar files under resources/cards/{card_id}/; every other payload passes through untouched.
// Making a write plan is pure (the caller writes the plan's sidecars); resolving reads sidecars and
// nothing else. Failures throw StoredCardStorageError, or DecodingError for a malformed stored
// record; nothing is partly applied. Plain values.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/card_model/workspace_html_public_function.h"
#include "workspace_store/stored_cards/stored_card_content.h"

namespace zorvik {

class ValueDecoder;

struct StoredRichTextPayload {
  std::optional<std::string> summary;
  StoredTextContent markdownSource;
  std::optional<AnyCodableValue> rtfData;
  std::optional<AnyCodableValue> backgroundColor;
  std::optional<AnyCodableValue> textColor;
  std::optional<double> fontScale;
  std::optional<std::string> fontName;

  static StoredRichTextPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredRichTextPayload&) const = default;
};

struct StoredTablePayload {
  std::optional<std::string> summary;
  StoredTableDataSource dataSource;
  std::optional<bool> showsRowHeaders;
  std::optional<bool> usesManualSize;
  std::optional<std::vector<double>> columnWidths;
  std::optional<std::vector<double>> rowHeights;
  std::optional<std::vector<std::string>> rowColors;
  std::optional<double> fontSize;

  static StoredTablePayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredTablePayload&) const = default;
};

// The last three fields keep snake-case keys: allow_remote_assets, persisted_state,
// public_functions (absent decodes as empty; empty is not written).
struct StoredHTMLPayload {
  std::optional<std::string> summary;
  StoredTextContent htmlSource;
  StoredTextContent cssSource;
  StoredTextContent jsSource;
  std::optional<bool> allowRemoteAssets;
  std::optional<std::string> persistedState;
  std::vector<WorkspaceHTMLPublicFunction> publicFunctions;

  static StoredHTMLPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredHTMLPayload&) const = default;
};

// A runtime payload with its sidecar files read back.
struct StoredCardResolvedPayload {
  AnyCodableValue runtimePayload;
  std::vector<StoredCardSidecarFile> referencedSidecars;  // in the order they were read

  bool operator==(const StoredCardResolvedPayload&) const = default;
};

struct StoredCardWritePlan;

// The tagged union {"type":"richText","richText":{...}}, "table", "html", or any other value as it
// stands (passthrough).
struct StoredCardPayload {
  std::variant<StoredRichTextPayload, StoredTablePayload, StoredHTMLPayload, AnyCodableValue> value;

  // Reads the JSON form. A value without a string (or numeric) `type`, or a known type without its
  // inner key, throws StoredCardStorageError (invalidPayload); a malformed inner record throws
  // DecodingError.
  static StoredCardPayload fromRaw(const AnyCodableValue& rawStoredPayload);
  // The JSON form; fromRaw(asRawValue()) gives an equal payload.
  AnyCodableValue asRawValue() const;

  // The stored form of a runtime payload ({"type":..., "<type>":{...}}). In external mode the
  // bodies go to the card's sidecar paths, except a rich text `sourceURL` naming a project resource
  // or a local file, which is referenced where it is. Numeric runtime fields may be numbers or
  // strings holding one; cells and other text fields take numbers by their decimal text; a runtime
  // value of another kind counts as absent (a table cell: empty).
  static StoredCardWritePlan writePlan(const AnyCodableValue& runtimePayload, const Uuid& cardID,
                                       StoredCardContentStorageMode storageMode);

  // The runtime payload, with every external body read from its file.
  StoredCardResolvedPayload resolvedPayload(const std::filesystem::path& projectRoot,
                                            const Uuid& cardID) const;

  // The `path` of every external source (rich text markdown; table data; html, css, js in that
  // order), leaving out local files outside the project. Passthrough gives none.
  std::vector<std::string> referencedSidecarPaths() const;

  const StoredRichTextPayload* richText() const { return std::get_if<0>(&value); }
  const StoredTablePayload* table() const { return std::get_if<1>(&value); }
  const StoredHTMLPayload* html() const { return std::get_if<2>(&value); }
  const AnyCodableValue* passthrough() const { return std::get_if<3>(&value); }

  // Record coding through fromRaw and asRawValue.
  static StoredCardPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const { return asRawValue(); }
  bool operator==(const StoredCardPayload&) const = default;
};

struct StoredCardWritePlan {
  StoredCardPayload payload;
  std::vector<StoredCardSidecarFile> sidecarFiles;  // to be written by the caller, in this order

  bool operator==(const StoredCardWritePlan&) const = default;
};

}  // namespace zorvik
