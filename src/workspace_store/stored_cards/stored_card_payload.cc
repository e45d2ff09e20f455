#include "workspace_store/stored_cards/stored_card_payload.h"

#include <charconv>

#include "foundation/file_url.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/json_writer.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "workspace_store/stored_cards/csv_table.h"
#include "workspace_store/stored_cards/stored_card_path.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {
namespace {

using Kind = StoredCardStorageError::Kind;
using Rows = std::vector<std::vector<std::string>>;

[[noreturn]] void fail(Kind kind, std::string message) {
  throw StoredCardStorageError(kind, std::move(message));
}

[[noreturn]] void failPayload(std::string message) {
  fail(Kind::invalidPayload, std::move(message));
}

// A string as it stands, a number by its decimal text; nullopt for any other kind or absence.
std::optional<std::string> textOf(const AnyCodableValue* value) {
  if (!value) return std::nullopt;
  if (const std::string* text = value->asString()) return *text;
  if (value->asInt() || value->asDouble()) return writeJSON(*value, JSONStyle::compact);
  return std::nullopt;
}

// A number, or a string that holds one in full ("1.5", "-2", "1e3", an optional leading "+").
std::optional<double> numberOf(const AnyCodableValue* value) {
  if (!value) return std::nullopt;
  if (auto number = value->numericValue()) return number;
  const std::string* text = value->asString();
  if (!text || text->empty()) return std::nullopt;
  std::string_view digits = *text;
  if (digits.starts_with('+') && digits.size() > 1 && digits[1] != '-') digits.remove_prefix(1);
  double parsed = 0;
  auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), parsed);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return parsed;
}

std::optional<bool> boolOf(const AnyCodableValue* value) {
  if (!value || !value->asBool()) return std::nullopt;
  return *value->asBool();
}

std::optional<AnyCodableValue> anyOf(const AnyCodableValue* value) {
  if (!value || value->isNull()) return std::nullopt;
  return *value;
}

// The elements of an array that `read` accepts; nullopt when the value is no array.
template <class T, class Read>
std::optional<std::vector<T>> arrayOf(const AnyCodableValue* value, Read read) {
  if (!value || !value->asArray()) return std::nullopt;
  std::vector<T> result;
  for (const AnyCodableValue& element : *value->asArray()) {
    if (auto converted = read(&element)) result.push_back(std::move(*converted));
  }
  return result;
}

std::optional<std::string> typeOf(const AnyCodableValue& payload) {
  const JSONObject* object = payload.asObject();
  return object ? textOf(object->find("type")) : std::nullopt;
}

StoredCardSidecarFile sidecarFile(std::string path, std::string text) {
  if (!isValidUTF8(text))
    fail(Kind::unsupportedEncoding, "Unable to encode UTF-8 for " + path + ".");
  return {std::move(path), std::move(text)};
}

AnyCodableValue tagged(std::string_view type, AnyCodableValue inner) {
  return JSONObject{{"type", AnyCodableValue(type)}, {std::string(type), std::move(inner)}};
}

StoredCardWritePlan richTextPlan(const AnyCodableValue& runtime, const Uuid& cardID,
                                 StoredCardContentStorageMode mode) {
  const JSONObject* object = runtime.asObject();
  if (!object) failPayload("Runtime richText payload must be an object.");
  std::optional<std::string> markdown = textOf(object->find("markdown"));
  if (!markdown) failPayload("Runtime richText payload is missing `markdown`.");

  StoredRichTextPayload stored{.summary = textOf(object->find("summary")),
                               .rtfData = anyOf(object->find("rtfData")),
                               .backgroundColor = anyOf(object->find("backgroundColor")),
                               .textColor = anyOf(object->find("textColor")),
                               .fontScale = numberOf(object->find("fontScale")),
                               .fontName = textOf(object->find("fontName"))};
  std::vector<StoredCardSidecarFile> sidecars;
  if (mode == StoredCardContentStorageMode::inlined) {
    stored.markdownSource =
        StoredTextContent::makeInline(StoredTextContentFormat::markdown, std::move(*markdown));
    return {{std::move(stored)}, {}};
  }
  // A text that already lives in a file of its own stays there.
  std::optional<std::string> reference;
  std::optional<std::string> sourceURL = textOf(object->find("sourceURL"));
  if (sourceURL && !trimWhitespaceAndNewlines(*sourceURL).empty()) {
    if (auto resource = normalizedProjectResourcePath(*sourceURL)) {
      reference = std::move(resource);
    } else if (auto file = externalLocalFileURL(*sourceURL)) {
      reference = fileURLString(*file);
    }
  }
  if (!reference) {
    reference = StoredCardPath::richTextMarkdown(cardID);
    sidecars.push_back(sidecarFile(*reference, std::move(*markdown)));
  }
  stored.markdownSource =
      StoredTextContent::makeExternal(StoredTextContentFormat::markdown, std::move(*reference));
  return {{std::move(stored)}, std::move(sidecars)};
}

StoredCardWritePlan tablePlan(const AnyCodableValue& runtime, const Uuid& cardID,
                              StoredCardContentStorageMode mode) {
  const JSONObject* object = runtime.asObject();
  if (!object) failPayload("Runtime table payload must be an object.");

  const AnyCodableValue* rawColumns = object->find("columns");
  if (!rawColumns || !rawColumns->asArray())
    failPayload("Runtime table payload is missing `columns`.");
  std::vector<std::string> columns;
  for (const AnyCodableValue& column : *rawColumns->asArray()) {
    auto text = textOf(&column);
    if (!text) failPayload("Runtime table payload is missing `columns`.");
    columns.push_back(std::move(*text));
  }

  const AnyCodableValue* rawRows = object->find("rows");
  if (!rawRows) failPayload("Runtime table payload is missing `rows`.");
  if (!rawRows->asArray()) failPayload("Runtime table payload `rows` must be an array.");
  Rows rows;
  for (const AnyCodableValue& rawRow : *rawRows->asArray()) {
    if (!rawRow.asArray()) failPayload("Runtime table row must be an array.");
    std::vector<std::string>& row = rows.emplace_back();
    for (const AnyCodableValue& cell : *rawRow.asArray()) row.push_back(textOf(&cell).value_or(""));
  }

  StoredTablePayload stored{.summary = textOf(object->find("summary")),
                            .showsRowHeaders = boolOf(object->find("showsRowHeaders")),
                            .usesManualSize = boolOf(object->find("usesManualSize")),
                            .columnWidths = arrayOf<double>(object->find("columnWidths"), numberOf),
                            .rowHeights = arrayOf<double>(object->find("rowHeights"), numberOf),
                            .rowColors = arrayOf<std::string>(object->find("rowColors"), textOf),
                            .fontSize = numberOf(object->find("fontSize"))};
  if (mode == StoredCardContentStorageMode::inlined) {
    stored.dataSource = StoredTableDataSource::makeInline(std::move(columns), std::move(rows));
    return {{std::move(stored)}, {}};
  }
  std::string path = StoredCardPath::tableCSV(cardID);
  std::vector<StoredCardSidecarFile> sidecars{sidecarFile(path, renderCSV(columns, rows))};
  stored.dataSource = StoredTableDataSource::makeExternal(std::move(path));
  return {{std::move(stored)}, std::move(sidecars)};
}

std::vector<WorkspaceHTMLPublicFunction> publicFunctionsOf(const AnyCodableValue* value) {
  if (!value || value->isNull()) return {};
  try {
    return decodeValue<std::vector<WorkspaceHTMLPublicFunction>>(*value);
  } catch (const DecodingError&) {
    return {};  // an undecodable list counts as absent, like any other mistyped runtime field
  }
}

StoredCardWritePlan htmlPlan(const AnyCodableValue& runtime, const Uuid& cardID,
                             StoredCardContentStorageMode mode) {
  const JSONObject* object = runtime.asObject();
  if (!object) failPayload("Runtime html payload must be an object.");
  std::optional<std::string> html = textOf(object->find("html"));
  if (!html) failPayload("Runtime html payload is missing `html`.");
  std::string css = textOf(object->find("css")).value_or("");
  std::string js = textOf(object->find("js")).value_or("");

  StoredHTMLPayload stored{.summary = textOf(object->find("summary")),
                           .allowRemoteAssets = boolOf(object->find("allow_remote_assets")),
                           .persistedState = textOf(object->find("persisted_state")),
                           .publicFunctions = publicFunctionsOf(object->find("public_functions"))};
  if (mode == StoredCardContentStorageMode::inlined) {
    stored.htmlSource =
        StoredTextContent::makeInline(StoredTextContentFormat::html, std::move(*html));
    stored.cssSource = StoredTextContent::makeInline(StoredTextContentFormat::css, std::move(css));
    stored.jsSource =
        StoredTextContent::makeInline(StoredTextContentFormat::javascript, std::move(js));
    return {{std::move(stored)}, {}};
  }
  // All three files are written, empty ones too, so that the folder is always complete.
  std::vector<StoredCardSidecarFile> sidecars{
      sidecarFile(StoredCardPath::htmlDocument(cardID), std::move(*html)),
      sidecarFile(StoredCardPath::htmlCSS(cardID), std::move(css)),
      sidecarFile(StoredCardPath::htmlJS(cardID), std::move(js))};
  stored.htmlSource =
      StoredTextContent::makeExternal(StoredTextContentFormat::html, sidecars[0].relativePath);
  stored.cssSource =
      StoredTextContent::makeExternal(StoredTextContentFormat::css, sidecars[1].relativePath);
  stored.jsSource = StoredTextContent::makeExternal(StoredTextContentFormat::javascript,
                                                    sidecars[2].relativePath);
  return {{std::move(stored)}, std::move(sidecars)};
}

template <class T>
T decodeInner(const AnyCodableValue& raw, std::string_view key, const char* missingMessage) {
  ObjectDecoder object = ValueDecoder(raw).object();
  if (!object.contains(key)) failPayload(missingMessage);
  return object.required<T>(key);
}

void appendSidecar(std::vector<StoredCardSidecarFile>& sidecars,
                   std::optional<StoredCardSidecarFile> sidecar) {
  if (sidecar) sidecars.push_back(std::move(*sidecar));
}

void appendExternalPath(std::vector<std::string>& paths, StoredCardContentMode mode,
                        const std::optional<std::string>& path) {
  if (mode == StoredCardContentMode::external && path && !externalLocalFileURL(*path)) {
    paths.push_back(*path);
  }
}

}  // namespace

StoredRichTextPayload StoredRichTextPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.summary = object.optional<std::string>("summary"),
          .markdownSource = object.required<StoredTextContent>("markdownSource"),
          .rtfData = object.optional<AnyCodableValue>("rtfData"),
          .backgroundColor = object.optional<AnyCodableValue>("backgroundColor"),
          .textColor = object.optional<AnyCodableValue>("textColor"),
          .fontScale = object.optional<double>("fontScale"),
          .fontName = object.optional<std::string>("fontName")};
}

AnyCodableValue StoredRichTextPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("markdownSource", markdownSource)
      .add("rtfData", rtfData)
      .add("backgroundColor", backgroundColor)
      .add("textColor", textColor)
      .add("fontScale", fontScale)
      .add("fontName", fontName)
      .build();
}

StoredTablePayload StoredTablePayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.summary = object.optional<std::string>("summary"),
          .dataSource = object.required<StoredTableDataSource>("dataSource"),
          .showsRowHeaders = object.optional<bool>("showsRowHeaders"),
          .usesManualSize = object.optional<bool>("usesManualSize"),
          .columnWidths = object.optional<std::vector<double>>("columnWidths"),
          .rowHeights = object.optional<std::vector<double>>("rowHeights"),
          .rowColors = object.optional<std::vector<std::string>>("rowColors"),
          .fontSize = object.optional<double>("fontSize")};
}

AnyCodableValue StoredTablePayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("dataSource", dataSource)
      .add("showsRowHeaders", showsRowHeaders)
      .add("usesManualSize", usesManualSize)
      .add("columnWidths", columnWidths)
      .add("rowHeights", rowHeights)
      .add("rowColors", rowColors)
      .add("fontSize", fontSize)
      .build();
}

StoredHTMLPayload StoredHTMLPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.summary = object.optional<std::string>("summary"),
          .htmlSource = object.required<StoredTextContent>("htmlSource"),
          .cssSource = object.required<StoredTextContent>("cssSource"),
          .jsSource = object.required<StoredTextContent>("jsSource"),
          .allowRemoteAssets = object.optional<bool>("allow_remote_assets"),
          .persistedState = object.optional<std::string>("persisted_state"),
          .publicFunctions =
              object.value<std::vector<WorkspaceHTMLPublicFunction>>("public_functions", {})};
}

AnyCodableValue StoredHTMLPayload::encode() const {
  ObjectEncoder encoder;
  encoder.add("summary", summary)
      .add("htmlSource", htmlSource)
      .add("cssSource", cssSource)
      .add("jsSource", jsSource)
      .add("allow_remote_assets", allowRemoteAssets)
      .add("persisted_state", persistedState);
  if (!publicFunctions.empty()) encoder.add("public_functions", publicFunctions);
  return encoder.build();
}

StoredCardPayload StoredCardPayload::fromRaw(const AnyCodableValue& raw) {
  std::optional<std::string> type = typeOf(raw);
  if (!type) failPayload("Stored card payload is missing required field `type`.");
  if (*type == "richText") {
    return {decodeInner<StoredRichTextPayload>(raw, "richText",
                                               "Stored richText payload is missing `richText`.")};
  }
  if (*type == "table") {
    return {
        decodeInner<StoredTablePayload>(raw, "table", "Stored table payload is missing `table`.")};
  }
  if (*type == "html") {
    return {decodeInner<StoredHTMLPayload>(raw, "html", "Stored html payload is missing `html`.")};
  }
  return {raw};
}

AnyCodableValue StoredCardPayload::asRawValue() const {
  if (auto* p = richText()) return tagged("richText", p->encode());
  if (auto* p = table()) return tagged("table", p->encode());
  if (auto* p = html()) return tagged("html", p->encode());
  return *passthrough();
}

StoredCardWritePlan StoredCardPayload::writePlan(const AnyCodableValue& runtimePayload,
                                                 const Uuid& cardID,
                                                 StoredCardContentStorageMode storageMode) {
  std::optional<std::string> type = typeOf(runtimePayload);
  if (!type) failPayload("Runtime payload is missing required field `type`.");
  if (*type != "richText" && *type != "table" && *type != "html") {
    return {{runtimePayload}, {}};
  }
  const AnyCodableValue* inner = runtimePayload.member(*type);
  if (!inner) failPayload("Runtime " + *type + " payload is missing `" + *type + "`.");
  if (*type == "richText") return richTextPlan(*inner, cardID, storageMode);
  if (*type == "table") return tablePlan(*inner, cardID, storageMode);
  return htmlPlan(*inner, cardID, storageMode);
}

StoredCardResolvedPayload StoredCardPayload::resolvedPayload(
    const std::filesystem::path& projectRoot, const Uuid& cardID) const {
  StoredCardResolvedPayload resolved;
  if (auto* p = richText()) {
    ResolvedStoredText markdown = p->markdownSource.resolveString(projectRoot, cardID);
    resolved.runtimePayload = tagged("richText", ObjectEncoder()
                                                     .add("markdown", markdown.text)
                                                     .add("summary", p->summary)
                                                     .add("rtfData", p->rtfData)
                                                     .add("backgroundColor", p->backgroundColor)
                                                     .add("fontScale", p->fontScale)
                                                     .add("fontName", p->fontName)
                                                     .add("textColor", p->textColor)
                                                     .add("sourceURL", markdown.sourceURL)
                                                     .build());
    appendSidecar(resolved.referencedSidecars, std::move(markdown.sidecar));
  } else if (auto* p = table()) {
    ResolvedStoredTable data = p->dataSource.resolveTable(projectRoot, cardID);
    resolved.runtimePayload = tagged("table", ObjectEncoder()
                                                  .add("columns", data.columns)
                                                  .add("rows", data.rows)
                                                  .add("summary", p->summary)
                                                  .add("showsRowHeaders", p->showsRowHeaders)
                                                  .add("usesManualSize", p->usesManualSize)
                                                  .add("columnWidths", p->columnWidths)
                                                  .add("rowHeights", p->rowHeights)
                                                  .add("rowColors", p->rowColors)
                                                  .add("fontSize", p->fontSize)
                                                  .build());
    appendSidecar(resolved.referencedSidecars, std::move(data.sidecar));
  } else if (auto* p = html()) {
    ResolvedStoredText htmlText = p->htmlSource.resolveString(projectRoot, cardID);
    ResolvedStoredText cssText = p->cssSource.resolveString(projectRoot, cardID);
    ResolvedStoredText jsText = p->jsSource.resolveString(projectRoot, cardID);
    ObjectEncoder inner;
    inner.add("html", htmlText.text)
        .add("css", cssText.text)
        .add("js", jsText.text)
        .add("summary", p->summary)
        .add("allow_remote_assets", p->allowRemoteAssets)
        .add("persisted_state", p->persistedState);
    if (!p->publicFunctions.empty()) inner.add("public_functions", p->publicFunctions);
    resolved.runtimePayload = tagged("html", inner.build());
    appendSidecar(resolved.referencedSidecars, std::move(htmlText.sidecar));
    appendSidecar(resolved.referencedSidecars, std::move(cssText.sidecar));
    appendSidecar(resolved.referencedSidecars, std::move(jsText.sidecar));
  } else {
    resolved.runtimePayload = *passthrough();
  }
  return resolved;
}

std::vector<std::string> StoredCardPayload::referencedSidecarPaths() const {
  std::vector<std::string> paths;
  if (auto* p = richText()) {
    appendExternalPath(paths, p->markdownSource.mode, p->markdownSource.path);
  } else if (auto* p = table()) {
    appendExternalPath(paths, p->dataSource.mode, p->dataSource.path);
  } else if (auto* p = html()) {
    for (const StoredTextContent* source : {&p->htmlSource, &p->cssSource, &p->jsSource}) {
      appendExternalPath(paths, source->mode, source->path);
    }
  }
  return paths;
}

StoredCardPayload StoredCardPayload::decode(const ValueDecoder& decoder) {
  return fromRaw(decoder.value());
}

}  // namespace zorvik
