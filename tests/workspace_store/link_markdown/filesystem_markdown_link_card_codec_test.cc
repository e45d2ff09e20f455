#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workspace_store/link_markdown/link_card_test_support.h"

namespace zorvik {
namespace {

using Codec = FilesystemMarkdownLinkCardCodec;

FilesystemMarkdownLinkCardDocument fullDocument() {
  FilesystemMarkdownLinkCardDocument document;
  document.source = "local";
  document.url = "https://example.com/a?b=c#d";
  document.note = "First line\nSecond line";
  document.summary = "A short summary";
  document.richText = "# Heading\n\nBody text.\n";
  document.rowItems = {keyValueRow("Price", "3 EUR"), listRow("Tags", {"a", " b", ""}, true),
                       todoRow("Done", true), ratingRow("Score", 4)};
  document.availableFields = {listRow("Empty list", {}, false), todoRow("Open", false),
                              keyValueRow("Padded", " padded\t")};
  document.hiddenRowItems = {keyValueRow("Secret", ""), ratingRow("Low", -2)};
  document.images = {"a.png", "b c.png"};
  document.currentImageIndex = 1;
  document.availableImages = {"c.png"};
  document.heroImageAspectRatio = 1.5;
  document.isTemplate = true;
  return document;
}

CodecError decodeError(const std::string& text) {
  try {
    Codec::decode(text);
  } catch (const CodecError& error) {
    return error;
  }
  ADD_FAILURE() << "decoded without error: " << text;
  return CodecError::missingFrontMatter();
}

TEST(LinkCardWriterTest, WritesFullDocumentExactly) {
  const std::string expected =
      "---\nzorvik-kind: link\nsource: local\nurl: https://example.com/a?b=c#d\n"
      "note: |\n  First line\n  Second line\nsummary: A short summary\nrow-items:\n"
      "  - label: Price\n    type: key_value\n    value: 3 EUR\n"
      "  - label: Tags\n    type: expandable_list\n    expanded: true\n"
      "    items:\n      - a\n      -  b\n      - \n"
      "  - label: Done\n    type: todo\n    checked: true\n"
      "  - label: Score\n    type: rating\n    rating: 4\navailable-fields:\n"
      "  - label: Empty list\n    type: expandable_list\n    expanded: false\n    items:\n"
      "  - label: Open\n    type: todo\n    checked: false\n"
      "  - label: Padded\n    type: key_value\n    value: |\n       padded\t\n"
      "hidden-row-items:\n  - label: Secret\n    type: key_value\n    value: |\n      \n"
      "  - label: Low\n    type: rating\n    rating: -2\nimages:\n  - a.png\n  - b c.png\n"
      "current-image-index: 1\navailable-images:\n  - c.png\nhero-image-aspect-ratio: 1.5\n"
      "is-template: true\n---\n# Heading\n\nBody text.\n";
  EXPECT_EQ(Codec::encode(fullDocument()), expected);
  EXPECT_EQ(Codec::decode(expected), fullDocument());
  EXPECT_EQ(Codec::decodeIfPresent(expected), fullDocument());
  EXPECT_EQ(Codec::decodeIfPresent("# just markdown\n"), std::nullopt);
}

TEST(LinkCardWriterTest, WritesMinimalDocumentWithAlwaysPresentKeysOnly) {
  FilesystemMarkdownLinkCardDocument document;
  document.summary = "";  // present but empty: left out
  const std::string expected =
      "---\nzorvik-kind: link\nsource: remote\nurl: |\n  \ncurrent-image-index: 0\n"
      "is-template: false\n---\n";
  EXPECT_EQ(Codec::encode(document), expected);
  EXPECT_EQ(Codec::decode(expected), FilesystemMarkdownLinkCardDocument{});
}

TEST(LinkCardWriterTest, NormalisesRowTypesAndWritesOtherKindsAsKeyValueText) {
  FilesystemMarkdownLinkCardDocument document;
  document.url = "u";
  document.rowItems = {
      {.label = "Tags",
       .type = " Expandable-List ",
       .expandableList = ExpandableListPayload{{"x"}, false}},
      {.label = "Site", .type = "link", .keyValue = KeyValuePayload{"example.com"}},
      {.label = "Bare", .type = "rating"},
  };
  const std::string text = Codec::encode(document);
  EXPECT_NE(
      text.find(
          "row-items:\n"
          "  - label: Tags\n    type: expandable_list\n    expanded: false\n    items:\n      - x\n"
          "  - label: Site\n    type: link\n    value: example.com\n"
          "  - label: Bare\n    type: rating\n    rating: 0\n"),
      std::string::npos)
      << text;
  const auto decoded = Codec::decode(text);
  EXPECT_EQ(decoded.rowItems[0].type, "expandable_list");
  EXPECT_EQ(decoded.rowItems[1], document.rowItems[1]);
  EXPECT_EQ(decoded.rowItems[2].rating, RatingPayload{0});
}

TEST(LinkCardWriterTest, WritesDoublesInShortestForm) {
  FilesystemMarkdownLinkCardDocument document;
  for (const auto& [ratio, text] : std::vector<std::pair<double, std::string>>{
           {1.5, "1.5"}, {2.0, "2"}, {0.1, "0.1"}, {1.0 / 3.0, "0.3333333333333333"}}) {
    document.heroImageAspectRatio = ratio;
    const std::string encoded = Codec::encode(document);
    EXPECT_NE(encoded.find("\nhero-image-aspect-ratio: " + text + "\n"), std::string::npos)
        << encoded;
    EXPECT_EQ(Codec::decode(encoded).heroImageAspectRatio, ratio);
  }
}

// Which values need a `|` block, at top level (two-space lines) and inside a row item (six).
TEST(LinkCardWriterTest, WritesBlockScalarsWhereAPlainValueWouldNotReadBack) {
  struct Case {
    std::string value;
    std::vector<std::string> topLevel;  // the lines of `note`
    std::vector<std::string> rowItem;   // the lines of the row's `value`
  };
  const std::vector<Case> cases = {
      {"plain: text # here", {"note: plain: text # here"}, {"    value: plain: text # here"}},
      {"a-b|c", {"note: a-b|c"}, {"    value: a-b|c"}},
      {" lead", {"note: |", "   lead"}, {"    value: |", "       lead"}},
      {"trail\t", {"note: |", "  trail\t"}, {"    value: |", "      trail\t"}},
      {"- dash", {"note: |", "  - dash"}, {"    value: |", "      - dash"}},
      {"|pipe", {"note: |", "  |pipe"}, {"    value: |", "      |pipe"}},
      {"|", {"note: |", "  |"}, {"    value: |", "      |"}},
      {"one\n\ntwo\n",
       {"note: |", "  one", "  ", "  two", "  "},
       {"    value: |", "      one", "      ", "      two", "      "}},
  };
  for (const Case& c : cases) {
    FilesystemMarkdownLinkCardDocument document;
    document.url = "u";
    document.note = c.value;
    document.rowItems = {keyValueRow("L", c.value)};
    std::string expected = "url: u\n";
    for (const auto& line : c.topLevel) expected += line + "\n";
    expected += "row-items:\n  - label: L\n    type: key_value\n";
    for (const auto& line : c.rowItem) expected += line + "\n";
    const std::string text = Codec::encode(document);
    EXPECT_NE(text.find(expected), std::string::npos) << "value '" << c.value << "':\n" << text;
    EXPECT_EQ(Codec::decode(text), document) << "value '" << c.value << "'";
  }
}

TEST(LinkCardReaderTest, BodyStartingWithDelimiterSurvives) {
  const std::string text = "---\nzorvik-kind: link\n---\n---\nnot: front matter\n---\n";
  const auto document = Codec::decode(text);
  EXPECT_EQ(document.richText, "---\nnot: front matter\n---\n");
  EXPECT_EQ(Codec::encode(document),
            "---\nzorvik-kind: link\nsource: remote\nurl: |\n  \n"
            "current-image-index: 0\nis-template: false\n" +
                text.substr(22));
}

TEST(LinkCardReaderTest, CarriageReturnLineEndsReadLikeLineFeeds) {
  const std::string lf = Codec::encode(fullDocument());
  std::string crlf;
  for (char c : lf) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(Codec::decode(crlf), fullDocument());
  EXPECT_EQ(Codec::decode("---\r\nzorvik-kind: link\r\n---\r\nbody\r\nend").richText, "body\nend");
}

TEST(LinkCardReaderTest, ReadsHandWrittenFrontMatter) {
  const std::string text =
      "---\n\nzorvik-kind:   link  \nurl:\thttps://example.com  \n"
      "note: |\n  first\n\n   indented\nsummary: null\n"
      "unknown-key: ignored\nother:\n  - nested and ignored\nimages:\n\n"
      "available-images: [\"x.png\", \"y\\u0041.png\"]\ncurrent-image-index: 12abc\n"
      "is-template: TRUE\nhero-image-aspect-ratio: wide\n---\n";
  const auto document = Codec::decode(text);
  FilesystemMarkdownLinkCardDocument expected;
  expected.url = "https://example.com";
  expected.note = "first\n\n indented";
  expected.availableImages = {"x.png", "yA.png"};
  expected.isTemplate = true;
  EXPECT_EQ(document, expected);
}

TEST(LinkCardReaderTest, ReadsQuotedStringsAndTheirFallbacks) {
  const auto decode = [](const std::string& line) {
    return Codec::decode("---\nzorvik-kind: link\n" + line + "\n---\n");
  };
  EXPECT_EQ(decode(R"(note: "a\nb \"q\"")").note, "a\nb \"q\"");
  EXPECT_EQ(decode(R"(note: "unterminated)").note, "\"unterminated");
  EXPECT_EQ(decode(R"(note: "bad \x escape")").note, "\"bad \\x escape\"");
  EXPECT_EQ(decode(R"(summary: "")").summary, "");
  EXPECT_EQ(decode("source: null").source, "remote");
  EXPECT_EQ(decode("source: |\n  ").source, "remote");
  EXPECT_EQ(decode(R"(zorvik-kind: "link")").source, "remote");
  EXPECT_EQ(decode("is-template: yes").isTemplate, false);
  EXPECT_EQ(decode("is-template: |\n  False").isTemplate, false);
  EXPECT_EQ(decode("current-image-index: +7").currentImageIndex, 7);
  EXPECT_EQ(decode("current-image-index: -3").currentImageIndex, -3);
  EXPECT_EQ(decode("current-image-index: 3.5").currentImageIndex, 0);
  EXPECT_EQ(decode("current-image-index: 99999999999999999999").currentImageIndex, 0);
  EXPECT_EQ(decode("current-image-index: +-1").currentImageIndex, 0);
  EXPECT_EQ(decode("hero-image-aspect-ratio: 1.25e1").heroImageAspectRatio, 12.5);
  EXPECT_EQ(decode("hero-image-aspect-ratio: nan").heroImageAspectRatio, std::nullopt);
  EXPECT_EQ(decode("hero-image-aspect-ratio: 1e999").heroImageAspectRatio, std::nullopt);
}

TEST(LinkCardReaderTest, ReadsStringArrayForms) {
  const auto images = [](const std::string& lines) {
    return Codec::decode("---\nzorvik-kind: link\n" + lines + "\n---\n").images;
  };
  using Strings = std::vector<std::string>;
  EXPECT_EQ(images("images:"), Strings{});
  EXPECT_EQ(images("images:\n  - a\n\n  -  b \n  - "), (Strings{"a", " b ", ""}));
  EXPECT_EQ(images(R"(images: ["a", "b c"])"), (Strings{"a", "b c"}));
  EXPECT_EQ(images("images: []"), Strings{});
  EXPECT_EQ(images("images: [1, 2]"), Strings{"[1, 2]"});
  EXPECT_EQ(images("images: [unclosed"), Strings{"[unclosed"});
  EXPECT_EQ(images("images: single.png"), Strings{"single.png"});
  EXPECT_EQ(images(R"(images: "quoted.png")"), Strings{"quoted.png"});
  EXPECT_EQ(images("images: null"), Strings{});
  EXPECT_EQ(images("images: |\n  [\"x\"]"), Strings{"x"});
}

TEST(LinkCardReaderTest, ReadsRowItemForms) {
  const auto rows = [](const std::string& lines) {
    return Codec::decode("---\nzorvik-kind: link\n" + lines + "\n---\n").rowItems;
  };
  EXPECT_EQ(rows(R"(row-items: [{"label":"Price","value":"3"}, {"label":"T","todo":{}}])"),
            (std::vector<WorkspaceRowItem>{keyValueRow("Price", "3"), todoRow("T", false)}));
  EXPECT_EQ(rows("row-items: []"), std::vector<WorkspaceRowItem>{});
  EXPECT_EQ(rows("row-items:"), std::vector<WorkspaceRowItem>{});
  EXPECT_EQ(
      rows("row-items:\n  - label: \"Quoted\\tlabel\"\n"
           "  - label: Tags\n    type: Expandable-List\n    expanded: TRUE\n"
           "    items: [\"a\", \"b\"]\n\n"
           "  - label: Multi\n    value: |\n      one\n\n      two\n"
           "  - label: Stars\n    type: rating\n    rating: lots\n"
           "  - label: Task\n    type: todo\n    checked: maybe\n    unknown: kept out\n"),
      (std::vector<WorkspaceRowItem>{
          keyValueRow("Quoted\tlabel", ""), listRow("Tags", {"a", "b"}, true),
          keyValueRow("Multi", "one\n\ntwo"), ratingRow("Stars", 0), todoRow("Task", false)}));
}

TEST(LinkCardReaderTest, ReportsEachErrorWithItsText) {
  struct Case {
    std::string text;
    CodecError::Kind kind;
    std::string description;
  };
  using enum CodecError::Kind;
  const std::string head = "---\nzorvik-kind: link\n";
  const std::string noFrontMatter = "Link markdown is missing required front matter.";
  const std::string noKind = "Markdown front matter is missing `zorvik-kind: link`.";
  const auto badLine = [](std::string line) { return "Invalid front-matter line '" + line + "'."; };
  const auto badArray = [](std::string key) {
    return "Invalid array value for front-matter key '" + key + "'.";
  };
  const auto badRows = [](std::string key) {
    return "Invalid row-item list for front-matter key '" + key + "'.";
  };
  const std::vector<Case> cases = {
      {"", missingFrontMatter, noFrontMatter},
      {"zorvik-kind: link\n---\n", missingFrontMatter, noFrontMatter},
      {"--- \nzorvik-kind: link\n---\n", missingFrontMatter, noFrontMatter},
      {"---\nzorvik-kind: link\n--- \n", missingFrontMatter, noFrontMatter},
      {"---\nurl: x\n---\n", unsupportedKind, noKind},
      {"---\nzorvik-kind:\n---\n", unsupportedKind, noKind},
      {"---\nzorvik-kind: page\n---\n", unsupportedKind, "Unsupported markdown card kind 'page'."},
      {"---\nzorvik-kind: Link\n---\n", unsupportedKind, "Unsupported markdown card kind 'Link'."},
      {head + " url: x\n---\n", invalidFrontMatterLine, badLine(" url: x")},
      {head + "no colon here\n---\n", invalidFrontMatterLine, badLine("no colon here")},
      {head + ": empty key\n---\n", invalidFrontMatterLine, badLine(": empty key")},
      {head + "\t: empty key\n---\n", invalidFrontMatterLine, badLine("\t: empty key")},
      {head + "images:\n  - a\n  b\n---\n", invalidStringArray, badArray("images")},
      {head + "available-images:\n  -a\n---\n", invalidStringArray, badArray("available-images")},
      {head + "row-items:\n  - label: L\n    type: expandable_list\n    items:\n      x\n---\n",
       invalidStringArray, badArray("row-items.items")},
      {head + "row-items: not json\n---\n", invalidRowItems, badRows("row-items")},
      {head + "available-fields: [{\"type\":\"todo\"}]\n---\n", invalidRowItems,
       badRows("available-fields")},
      {head + "hidden-row-items:\n    type: todo\n---\n", invalidRowItems,
       badRows("hidden-row-items")},
      {head + "row-items:\n  - label: L\n  stray\n---\n", invalidRowItems, badRows("row-items")},
      {head + "row-items:\n  - type: todo\n---\n", invalidRowItems, badRows("row-items")},
      {head + "row-items:\n  - label: L\n    oops\n---\n", invalidFrontMatterLine, badLine("oops")},
  };
  for (const Case& c : cases) {
    const CodecError error = decodeError(c.text);
    EXPECT_EQ(error.kind(), c.kind) << c.text;
    EXPECT_EQ(std::string(error.what()), c.description) << c.text;
    EXPECT_EQ(Codec::decodeIfPresent(c.text), std::nullopt) << c.text;
  }
}

TEST(LinkCardReaderTest, ErrorsCarryTheirPayload) {
  const CodecError page = decodeError("---\nzorvik-kind: page\n---\n");
  EXPECT_EQ(page.cardKind(), "page");
  EXPECT_EQ(decodeError("---\n---\n").cardKind(), std::nullopt);
  EXPECT_EQ(decodeError("---\nzorvik-kind: link\nbad\n---\n").line(), "bad");
  EXPECT_EQ(decodeError("---\nzorvik-kind: link\nimages:\n  x\n---\n").key(), "images");
  EXPECT_EQ(decodeError("---\nzorvik-kind: link\nrow-items: x\n---\n").key(), "row-items");
  EXPECT_EQ(page.line(), "");
  EXPECT_EQ(page.key(), "");
}

}  // namespace
}  // namespace zorvik
