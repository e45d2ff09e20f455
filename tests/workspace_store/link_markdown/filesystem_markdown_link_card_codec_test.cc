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
  const std::string expected = textLines({
                                   "---",
                                   "zorvik-kind: link",
                                   "source: local",
                                   "url: https://example.com/a?b=c#d",
                                   "note: |",
                                   "  First line",
                                   "  Second line",
                                   "summary: A short summary",
                                   "row-items:",
                                   "  - label: Price",
                                   "    type: key_value",
                                   "    value: 3 EUR",
                                   "  - label: Tags",
                                   "    type: expandable_list",
                                   "    expanded: true",
                                   "    items:",
                                   "      - a",
                                   "      -  b",
                                   "      - ",
                                   "  - label: Done",
                                   "    type: todo",
                                   "    checked: true",
                                   "  - label: Score",
                                   "    type: rating",
                                   "    rating: 4",
                                   "available-fields:",
                                   "  - label: Empty list",
                                   "    type: expandable_list",
                                   "    expanded: false",
                                   "    items:",
                                   "  - label: Open",
                                   "    type: todo",
                                   "    checked: false",
                                   "  - label: Padded",
                                   "    type: key_value",
                                   "    value: |",
                                   "       padded\t",
                                   "hidden-row-items:",
                                   "  - label: Secret",
                                   "    type: key_value",
                                   "    value: |",
                                   "      ",
                                   "  - label: Low",
                                   "    type: rating",
                                   "    rating: -2",
                                   "images:",
                                   "  - a.png",
                                   "  - b c.png",
                                   "current-image-index: 1",
                                   "available-images:",
                                   "  - c.png",
                                   "hero-image-aspect-ratio: 1.5",
                                   "is-template: true",
                                   "---",
                               }) +
                               "# Heading\n\nBody text.\n";
  EXPECT_EQ(Codec::encode(fullDocument()), expected);
  EXPECT_EQ(Codec::decode(expected), fullDocument());
}

TEST(LinkCardWriterTest, WritesMinimalDocumentWithAlwaysPresentKeysOnly) {
  FilesystemMarkdownLinkCardDocument document;
  document.summary = "";  // present but empty: left out
  const std::string expected = textLines({
      "---",
      "zorvik-kind: link",
      "source: remote",
      "url: |",
      "  ",
      "current-image-index: 0",
      "is-template: false",
      "---",
  });
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
  EXPECT_NE(text.find(textLines({"row-items:", "  - label: Tags", "    type: expandable_list",
                                 "    expanded: false", "    items:", "      - x",
                                 "  - label: Site", "    type: link", "    value: example.com",
                                 "  - label: Bare", "    type: rating", "    rating: 0"})),
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
  const std::string text = textLines({
      "---",
      "",
      "zorvik-kind:   link  ",
      "url:\thttps://example.com  ",
      "note: |",
      "  first",
      "",
      "   indented",
      "summary: null",
      "unknown-key: ignored",
      "other:",
      "  - nested and ignored",
      "images:",
      "",
      "available-images: [\"x.png\", \"y\\u0041.png\"]",
      "current-image-index: 12abc",
      "is-template: TRUE",
      "hero-image-aspect-ratio: wide",
      "---",
  });
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
      rows(textLines({
          "row-items:",
          "  - label: \"Quoted\\tlabel\"",
          "  - label: Tags",
          "    type: Expandable-List",
          "    expanded: TRUE",
          "    items: [\"a\", \"b\"]",
          "",
          "  - label: Multi",
          "    value: |",
          "      one",
          "",
          "      two",
          "  - label: Stars",
          "    type: rating",
          "    rating: lots",
          "  - label: Task",
          "    type: todo",
          "    checked: maybe",
          "    unknown: kept out",
      })),
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
  const std::string head = "---\nzorvik-kind: link\n";
  const std::vector<Case> cases = {
      {"", CodecError::Kind::missingFrontMatter, "Link markdown is missing required front matter."},
      {"zorvik-kind: link\n---\n", CodecError::Kind::missingFrontMatter,
       "Link markdown is missing required front matter."},
      {"--- \nzorvik-kind: link\n---\n", CodecError::Kind::missingFrontMatter,
       "Link markdown is missing required front matter."},
      {"---\nzorvik-kind: link\n--- \n", CodecError::Kind::missingFrontMatter,
       "Link markdown is missing required front matter."},
      {"---\nurl: x\n---\n", CodecError::Kind::unsupportedKind,
       "Markdown front matter is missing `zorvik-kind: link`."},
      {"---\nzorvik-kind:\n---\n", CodecError::Kind::unsupportedKind,
       "Markdown front matter is missing `zorvik-kind: link`."},
      {"---\nzorvik-kind: page\n---\n", CodecError::Kind::unsupportedKind,
       "Unsupported markdown card kind 'page'."},
      {"---\nzorvik-kind: Link\n---\n", CodecError::Kind::unsupportedKind,
       "Unsupported markdown card kind 'Link'."},
      {head + " url: x\n---\n", CodecError::Kind::invalidFrontMatterLine,
       "Invalid front-matter line ' url: x'."},
      {head + "no colon here\n---\n", CodecError::Kind::invalidFrontMatterLine,
       "Invalid front-matter line 'no colon here'."},
      {head + ": empty key\n---\n", CodecError::Kind::invalidFrontMatterLine,
       "Invalid front-matter line ': empty key'."},
      {head + "\t: empty key\n---\n", CodecError::Kind::invalidFrontMatterLine,
       "Invalid front-matter line '\t: empty key'."},
      {head + "images:\n  - a\n  b\n---\n", CodecError::Kind::invalidStringArray,
       "Invalid array value for front-matter key 'images'."},
      {head + "available-images:\n  -a\n---\n", CodecError::Kind::invalidStringArray,
       "Invalid array value for front-matter key 'available-images'."},
      {head + "row-items:\n  - label: L\n    type: expandable_list\n    items:\n      x\n---\n",
       CodecError::Kind::invalidStringArray,
       "Invalid array value for front-matter key 'row-items.items'."},
      {head + "row-items: not json\n---\n", CodecError::Kind::invalidRowItems,
       "Invalid row-item list for front-matter key 'row-items'."},
      {head + "available-fields: [{\"type\":\"todo\"}]\n---\n", CodecError::Kind::invalidRowItems,
       "Invalid row-item list for front-matter key 'available-fields'."},
      {head + "hidden-row-items:\n    type: todo\n---\n", CodecError::Kind::invalidRowItems,
       "Invalid row-item list for front-matter key 'hidden-row-items'."},
      {head + "row-items:\n  - label: L\n  stray\n---\n", CodecError::Kind::invalidRowItems,
       "Invalid row-item list for front-matter key 'row-items'."},
      {head + "row-items:\n  - type: todo\n---\n", CodecError::Kind::invalidRowItems,
       "Invalid row-item list for front-matter key 'row-items'."},
      {head + "row-items:\n  - label: L\n    oops\n---\n", CodecError::Kind::invalidFrontMatterLine,
       "Invalid front-matter line 'oops'."},
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

TEST(LinkCardReaderTest, DecodeIfPresentGivesTheDocument) {
  EXPECT_EQ(Codec::decodeIfPresent(Codec::encode(fullDocument())), fullDocument());
  EXPECT_EQ(Codec::decodeIfPresent("# just markdown\n"), std::nullopt);
}

}  // namespace
}  // namespace zorvik
