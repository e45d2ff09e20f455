#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"

#include <charconv>
#include <exception>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_decoder.h"
#include "workspace_store/link_markdown/front_matter_parser.h"
#include "workspace_store/link_markdown/front_matter_writer.h"

namespace zorvik {

namespace {

using ParsedField = FrontMatterParser::ParsedField;
using ParsedFields = FrontMatterParser::ParsedFields;

constexpr std::string_view kSourceKey = "source";
constexpr std::string_view kURLKey = "url";
constexpr std::string_view kNoteKey = "note";
constexpr std::string_view kSummaryKey = "summary";
constexpr std::string_view kRowItemsKey = "row-items";
constexpr std::string_view kAvailableFieldsKey = "available-fields";
constexpr std::string_view kHiddenRowItemsKey = "hidden-row-items";
constexpr std::string_view kImagesKey = "images";
constexpr std::string_view kCurrentImageIndexKey = "current-image-index";
constexpr std::string_view kAvailableImagesKey = "available-images";
constexpr std::string_view kHeroImageAspectRatioKey = "hero-image-aspect-ratio";
constexpr std::string_view kIsTemplateKey = "is-template";

constexpr std::string_view kDefaultSource = "remote";
constexpr std::string_view kKeyValueType = "key_value";
constexpr std::string_view kExpandableListType = "expandable_list";
constexpr std::string_view kRatingType = "rating";
constexpr std::string_view kTodoType = "todo";

// Row-item fields sit four spaces deep: two for the list, two for the item.
constexpr size_t kRowItemIndent = 4;

std::string_view boolText(bool value) { return value ? "true" : "false"; }

// The shortest decimal text that reads back as the same double.
std::string doubleText(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

void writeRowItems(FrontMatterWriter& writer, std::string_view key,
                   const std::vector<WorkspaceRowItem>& items) {
  writer.addLine(std::string(key) + ":");
  const std::string indent(kRowItemIndent, ' ');
  for (const WorkspaceRowItem& item : items) {
    const std::string type = normalizeRowItemType(item.type);
    writer.addLine("  - label: " + item.label);
    writer.addPlain("type", type, kRowItemIndent);
    if (type == kRatingType) {
      writer.addPlain("rating", std::to_string(item.rating ? item.rating->value : 0),
                      kRowItemIndent);
    } else if (type == kTodoType) {
      writer.addPlain("checked", boolText(item.todo && item.todo->isChecked), kRowItemIndent);
    } else if (type == kExpandableListType) {
      const ExpandableListPayload list = item.expandableList.value_or(ExpandableListPayload{});
      writer.addPlain("expanded", boolText(list.isExpanded), kRowItemIndent);
      writer.addStringArray("items", list.items, kRowItemIndent);
    } else {
      writer.addScalar("value", item.value(), kRowItemIndent);
    }
  }
}

// Splits nested lines into items: `- ` starts one, lines indented by two spaces continue it. Each
// item's lines come back less their first two characters. Blank lines stay with the item they
// follow, so that blocks inside an item keep their empty lines.
std::vector<std::vector<std::string>> rowItemLines(const std::vector<std::string>& lines,
                                                   std::string_view key) {
  std::vector<std::vector<std::string>> items;
  for (const std::string& line : lines) {
    if (line.starts_with("- ")) {
      items.push_back({line.substr(2)});
    } else if (line.starts_with("  ")) {
      if (items.empty()) throw CodecError::invalidRowItems(std::string(key));
      items.back().push_back(line.substr(2));
    } else if (FrontMatterParser::isBlank(line)) {
      if (!items.empty()) items.back().emplace_back();
    } else {
      throw CodecError::invalidRowItems(std::string(key));
    }
  }
  return items;
}

WorkspaceRowItem parseRowItem(const std::vector<std::string>& lines, std::string_view key) {
  const ParsedFields fields = FrontMatterParser::parseFields(lines);
  const auto field = [&](std::string_view name) { return FrontMatterParser::field(fields, name); };

  WorkspaceRowItem item;
  auto label = FrontMatterParser::parseStringValue(field("label"));
  if (!label) throw CodecError::invalidRowItems(std::string(key));
  item.label = std::move(*label);
  item.type = normalizeRowItemType(
      FrontMatterParser::parseStringValue(field("type")).value_or(std::string(kKeyValueType)));

  if (item.type == kExpandableListType) {
    item.expandableList = ExpandableListPayload{
        FrontMatterParser::parseStringArray(field("items"), std::string(key) + ".items"),
        FrontMatterParser::parseBoolValue(field("expanded")).value_or(false)};
  } else if (item.type == kRatingType) {
    item.rating = RatingPayload{FrontMatterParser::parseIntValue(field("rating")).value_or(0)};
  } else if (item.type == kTodoType) {
    item.todo = TodoPayload{FrontMatterParser::parseBoolValue(field("checked")).value_or(false)};
  } else {
    // Every other kind shows its key-value text, which the writer stores under `value`.
    item.keyValue =
        KeyValuePayload{FrontMatterParser::parseStringValue(field("value")).value_or("")};
  }
  return item;
}

std::vector<WorkspaceRowItem> parseRowItemArray(const ParsedFields& fields, std::string_view key) {
  const ParsedField* field = FrontMatterParser::field(fields, key);
  if (!field) return {};
  if (field->scalar) {
    if (FrontMatterParser::isBlank(*field->scalar)) return {};
    try {
      return decodeValue<std::vector<WorkspaceRowItem>>(AnyCodableValue::parse(*field->scalar));
    } catch (const std::exception&) {
      throw CodecError::invalidRowItems(std::string(key));
    }
  }
  std::vector<WorkspaceRowItem> items;
  if (!field->nestedLines) return items;
  for (const auto& lines : rowItemLines(*field->nestedLines, key)) {
    items.push_back(parseRowItem(lines, key));
  }
  return items;
}

}  // namespace

std::string FilesystemMarkdownLinkCardCodec::encode(
    const FilesystemMarkdownLinkCardDocument& document) {
  FrontMatterWriter writer;
  writer.addScalar(kindKey, kindValue);
  writer.addScalar(kSourceKey, document.source);
  writer.addScalar(kURLKey, document.url);
  if (!document.note.empty()) writer.addScalar(kNoteKey, document.note);
  if (document.summary && !document.summary->empty()) {
    writer.addScalar(kSummaryKey, *document.summary);
  }
  if (!document.rowItems.empty()) writeRowItems(writer, kRowItemsKey, document.rowItems);
  if (!document.availableFields.empty()) {
    writeRowItems(writer, kAvailableFieldsKey, document.availableFields);
  }
  if (!document.hiddenRowItems.empty()) {
    writeRowItems(writer, kHiddenRowItemsKey, document.hiddenRowItems);
  }
  if (!document.images.empty()) writer.addStringArray(kImagesKey, document.images);
  writer.addPlain(kCurrentImageIndexKey, std::to_string(document.currentImageIndex));
  if (!document.availableImages.empty()) {
    writer.addStringArray(kAvailableImagesKey, document.availableImages);
  }
  if (document.heroImageAspectRatio) {
    writer.addPlain(kHeroImageAspectRatioKey, doubleText(*document.heroImageAspectRatio));
  }
  writer.addPlain(kIsTemplateKey, boolText(document.isTemplate));
  return writer.text(document.richText);
}

FilesystemMarkdownLinkCardDocument FilesystemMarkdownLinkCardCodec::decode(std::string_view text) {
  FrontMatterParser::SplitText split = FrontMatterParser::splitFrontMatter(text);
  const ParsedFields fields = FrontMatterParser::parseFields(split.frontMatterLines);
  const auto field = [&](std::string_view key) { return FrontMatterParser::field(fields, key); };

  auto kind = FrontMatterParser::parseStringValue(field(kindKey));
  if (kind != kindValue) throw CodecError::unsupportedKind(std::move(kind));

  FilesystemMarkdownLinkCardDocument document;
  document.source =
      FrontMatterParser::parseStringValue(field(kSourceKey)).value_or(std::string(kDefaultSource));
  document.url = FrontMatterParser::parseStringValue(field(kURLKey)).value_or("");
  document.note = FrontMatterParser::parseStringValue(field(kNoteKey)).value_or("");
  document.summary = FrontMatterParser::parseStringValue(field(kSummaryKey));
  document.richText = std::move(split.body);
  document.rowItems = parseRowItemArray(fields, kRowItemsKey);
  document.availableFields = parseRowItemArray(fields, kAvailableFieldsKey);
  document.hiddenRowItems = parseRowItemArray(fields, kHiddenRowItemsKey);
  document.images = FrontMatterParser::parseStringArray(field(kImagesKey), kImagesKey);
  document.currentImageIndex =
      FrontMatterParser::parseIntValue(field(kCurrentImageIndexKey)).value_or(0);
  document.availableImages =
      FrontMatterParser::parseStringArray(field(kAvailableImagesKey), kAvailableImagesKey);
  document.heroImageAspectRatio =
      FrontMatterParser::parseDoubleValue(field(kHeroImageAspectRatioKey));
  document.isTemplate = FrontMatterParser::parseBoolValue(field(kIsTemplateKey)).value_or(false);
  return document;
}

std::optional<FilesystemMarkdownLinkCardDocument> FilesystemMarkdownLinkCardCodec::decodeIfPresent(
    std::string_view text) {
  // Most Markdown files are plain notes: tell them apart without building the error.
  if (!text.starts_with("---\n") && !text.starts_with("---\r\n")) return std::nullopt;
  try {
    return decode(text);
  } catch (const CodecError&) {
    return std::nullopt;
  }
}

}  // namespace zorvik
