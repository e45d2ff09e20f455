#include "workspace_store/filesystem_workspace_state.h"

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <optional>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {
namespace {

constexpr const char* kFolderId = "1B4E28BA-2FA1-11D2-883F-0016D3CCA427";
constexpr const char* kLinkId = "9C5B94B1-35AD-49BB-B118-8E8FC24ABF80";

// A board with a folder, a note inside it snapped on two edges, and an inline link card.
constexpr const char* kDocument =
    R"({"createdAt":"2024-03-01T09:30:00Z","entries":[)"
    R"({"createdAt":"2024-03-01T09:31:00Z","id":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427",)"
    R"("kindRawValue":"folder","layout":{"actualHeight":300,"actualWidth":420.5,)"
    R"("position":{"x":-40,"y":12.25},"zIndex":1},"payload":{"folder":{"groupStacks":[)"
    R"({"anchorId":"6FA459EA-EE8A-3CA4-894E-DB77E160355E","axis":"vertical","crossOffset":8,)"
    R"("orderedIds":["6FA459EA-EE8A-3CA4-894E-DB77E160355E","9C5B94B1-35AD-49BB-B118-8E8FC24ABF80"]}]},)"
    R"("type":"folder"},"relativePath":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427",)"
    R"("shadowEnabled":true,"title":"Sources"},)"
    R"({"createdAt":"2024-03-02T10:00:00Z","id":"6FA459EA-EE8A-3CA4-894E-DB77E160355E",)"
    R"("kindRawValue":"richText","layout":{"actualHeight":180,"actualWidth":240,)"
    R"("position":{"x":0,"y":0},"snapConstraints":{"bottom":{"anchorId":)"
    R"("9C5B94B1-35AD-49BB-B118-8E8FC24ABF80","crossOffset":0,"gap":16,)"
    R"("localOffset":{"x":0,"y":180},"side":"top"},"left":{"anchorId":)"
    R"("1B4E28BA-2FA1-11D2-883F-0016D3CCA427","crossOffset":-2.5,"gap":8,)"
    R"("localOffset":{"x":0,"y":0},"side":"right"}},"zIndex":3},)"
    R"("parentID":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427",)"
    R"("payload":{"richText":{"fontScale":1.1},"type":"richText"},)"
    R"("relativePath":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427\/intro.md",)"
    R"("shadowEnabled":false,"title":"Intro"},)"
    R"({"createdAt":"2024-03-02T10:05:00Z","id":"9C5B94B1-35AD-49BB-B118-8E8FC24ABF80",)"
    R"("kindRawValue":"link","layout":{"actualHeight":120,"actualWidth":320,)"
    R"("position":{"x":500,"y":-75.5},"zIndex":2},"parentID":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427",)"
    R"("payload":{"link":{"title":"Example","url":"https:\/\/example.com\/a"},"type":"link"},)"
    R"("shadowEnabled":true,"title":"Example link"}],)"
    R"("projectId":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","uiState":{"agentAffinityByScope":)"
    R"({"board":"9C5B94B1-35AD-49BB-B118-8E8FC24ABF80"},"backgroundStyle":"Grid",)"
    R"("boardAgentGuideCardId":"6FA459EA-EE8A-3CA4-894E-DB77E160355E","chatSidebarOpen":true,)"
    R"("chatSidebarWidth":360.5,"currentFolderId":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427",)"
    R"("leftSidebarOpen":false,"viewportCenter":{"x":120.5,"y":-64},"zoomLevelsByFolder":)"
    R"({"1B4E28BA-2FA1-11D2-883F-0016D3CCA427":0.75,"root":1.25}},)"
    R"("updatedAt":"2024-03-05T18:45:10Z","version":1})";

// Lower-cases the 36 characters after every occurrence of `prefix`.
std::string lowerCaseAfter(std::string text, const std::string& prefix) {
  for (size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix, at + 1)) {
    for (size_t i = at + prefix.size(); i < at + prefix.size() + 36; ++i) {
      text[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
    }
  }
  return text;
}

JSONObject& entryObject(AnyCodableValue& document, int index) {
  return *document.asObject()->find("entries")->asArray()->at(index).asObject();
}

// The message of the DecodingError that decoding `document` throws; "" when it decodes. Both
// decoders are run and must agree: the one that takes the document over decodes in parallel.
std::string decodingFailure(const AnyCodableValue& document) {
  std::string message;
  std::optional<FilesystemWorkspaceState> decoded;
  try {
    decoded = decodeValue<FilesystemWorkspaceState>(document);
  } catch (const DecodingError& error) {
    message = error.what();
  }
  try {
    const FilesystemWorkspaceState taken = FilesystemWorkspaceState::decodeDocument(document);
    EXPECT_EQ(message, "") << "only the parallel decoder accepted the document";
    EXPECT_EQ(decoded, taken);
  } catch (const DecodingError& error) {
    EXPECT_EQ(message, error.what());
  }
  return message;
}

// kDocument with its entries repeated until there are `count`.
AnyCodableValue documentWithEntries(size_t count) {
  AnyCodableValue document = AnyCodableValue::parse(kDocument);
  AnyCodableValue::Array& entries = *document.asObject()->find("entries")->asArray();
  const AnyCodableValue::Array originals = entries;
  while (entries.size() < count) entries.push_back(originals[entries.size() % originals.size()]);
  return document;
}

TEST(FilesystemWorkspaceStateTest, DecodesFullDocumentAndEncodesItBackExactly) {
  const auto state = decodeValue<FilesystemWorkspaceState>(AnyCodableValue::parse(kDocument));
  ASSERT_EQ(state.entries.size(), 3u);
  EXPECT_EQ(state.version, 1);
  EXPECT_EQ(formatISO8601(state.updatedAt), "2024-03-05T18:45:10Z");
  EXPECT_EQ(state.uiState.zoomLevelsByFolder->at("root"), 1.25);
  EXPECT_EQ(state.uiState.agentAffinityByScope->at("board"), *Uuid::parse(kLinkId));
  const auto& note = state.entries[1];
  EXPECT_EQ(note.parentID, Uuid::parse(kFolderId));
  EXPECT_EQ(note.layout.snapConstraints->left->crossOffset, -2.5);
  EXPECT_EQ(note.layout.snapConstraints->right, std::nullopt);
  EXPECT_EQ(note.contentPath(), std::string(kFolderId) + "/intro.md");
  EXPECT_EQ(state.entries[2].relativePath, std::nullopt);
  EXPECT_EQ(state.entries[2].layout.position, (Point{500, -75.5}));

  EXPECT_EQ(encodeValue(state).compactJSONString(), kDocument);
}

TEST(FilesystemWorkspaceStateTest, AcceptsLowerCaseUuidsAndNullOptionalsAndWritesCanonicalForm) {
  // Every UUID-typed value in lower case; UUIDs inside payloads and plain strings are kept as is.
  std::string text = kDocument;
  for (const char* prefix :
       {R"("id":")", R"("parentID":")", R"("left":{"anchorId":")", R"("bottom":{"anchorId":")",
        R"("board":")", R"("currentFolderId":")", R"("boardAgentGuideCardId":")"}) {
    text = lowerCaseAfter(text, prefix);
  }
  ASSERT_NE(text.find(R"("id":"6fa459ea-ee8a-3ca4-894e-db77e160355e")"), std::string::npos);
  AnyCodableValue document = AnyCodableValue::parse(text);
  entryObject(document, 0).set("parentID", nullptr);
  entryObject(document, 2).set("relativePath", nullptr);
  entryObject(document, 2).find("layout")->asObject()->set("snapConstraints", nullptr);
  EXPECT_EQ(encodeValue(decodeValue<FilesystemWorkspaceState>(document)).compactJSONString(),
            kDocument);
}

TEST(FilesystemWorkspaceStateTest, UIStateWithEveryKeyNullIsEmpty) {
  const auto ui = decodeValue<FilesystemWorkspaceUIState>(AnyCodableValue::parse(
      R"({"backgroundStyle":null,"viewportCenter":null,"currentFolderId":null,)"
      R"("leftSidebarOpen":null,"chatSidebarWidth":null,"chatSidebarOpen":null,)"
      R"("boardAgentGuideCardId":null,"agentAffinityByScope":null,"zoomLevelsByFolder":null})"));
  EXPECT_EQ(ui, FilesystemWorkspaceUIState{});
  EXPECT_EQ(encodeValue(ui).compactJSONString(), "{}");
}

TEST(FilesystemWorkspaceStateTest, MissingKeysAndWrongTypesNameTheirPath) {
  struct Case {
    std::function<void(AnyCodableValue&)> mutate;
    std::string message;
  };
  const std::vector<Case> cases = {
      {[](auto& d) { entryObject(d, 1).erase("layout"); },
       "Missing required key at entries.[1].layout."},
      {[](auto& d) { entryObject(d, 1).erase("shadowEnabled"); },
       "Missing required key at entries.[1].shadowEnabled."},
      {[](auto& d) { entryObject(d, 2).erase("payload"); },
       "Missing required key at entries.[2].payload."},
      {[](auto& d) {
         auto& snaps = *entryObject(d, 1).find("layout")->asObject()->find("snapConstraints");
         snaps.asObject()->find("left")->asObject()->erase("gap");
       },
       "Missing required key at entries.[1].layout.snapConstraints.left.gap."},
      {[](auto& d) { d.asObject()->erase("uiState"); }, "Missing required key 'uiState'."},
      {[](auto& d) { entryObject(d, 0).set("title", nullptr); },
       "Missing value at entries.[0].title for String: Expected String value but found null "
       "instead."},
      {[](auto& d) { entryObject(d, 0).find("layout")->asObject()->set("zIndex", "3"); },
       "Type mismatch at entries.[0].layout.zIndex for Int: Expected to decode Int but found a "
       "string instead."},
      {[](auto& d) { d.asObject()->find("uiState")->asObject()->set("chatSidebarOpen", 1); },
       "Type mismatch at uiState.chatSidebarOpen for Bool: Expected to decode Bool but found a "
       "number instead."},
      {[](auto& d) { entryObject(d, 1).set("id", "not-a-uuid"); },
       "Attempted to decode UUID from invalid UUID string. at entries.[1].id"},
  };
  for (const auto& c : cases) {
    AnyCodableValue document = AnyCodableValue::parse(kDocument);
    c.mutate(document);
    EXPECT_EQ(decodingFailure(document), c.message);
  }
  // A null payload is a value like any other.
  AnyCodableValue document = AnyCodableValue::parse(kDocument);
  entryObject(document, 2).set("payload", nullptr);
  EXPECT_EQ(decodingFailure(document), "");
}

TEST(FilesystemWorkspaceStateTest, LongDocumentsDecodeAndFailAsAPlainLoopWould) {
  AnyCodableValue document = documentWithEntries(3000);
  EXPECT_EQ(decodingFailure(document), "");
  EXPECT_EQ(FilesystemWorkspaceState::decodeDocument(document).entries[2999].payload,
            *entryObject(document, 2999).find("payload"));

  entryObject(document, 2500).erase("title");
  entryObject(document, 2000).erase("layout");
  EXPECT_EQ(decodingFailure(document), "Missing required key at entries.[2000].layout.");
  document.asObject()->erase("uiState");
  EXPECT_EQ(decodingFailure(document), "Missing required key 'uiState'.");
}

TEST(FilesystemWorkspaceStateTest, ContentPathIsAbsentForMissingOrBlankRelativePath) {
  FilesystemWorkspaceEntry entry;
  EXPECT_EQ(entry.contentPath(), std::nullopt);
  for (const char* blank : {"", "  ", "\t\n", "\u2003\u2028 "}) {
    entry.relativePath = blank;
    EXPECT_EQ(entry.contentPath(), std::nullopt) << blank;
  }
  entry.relativePath = " notes/a.md";
  EXPECT_EQ(entry.contentPath(), " notes/a.md");
}

TEST(SnapConstraintsTest, AllListsPresentEdgesInFixedOrder) {
  auto edge = [](const char* side) {
    return SnapConstraint{Uuid::random(), side, 1, Point{2, 3}, 4};
  };
  SnapConstraints snaps{.left = edge("l"), .top = edge("t"), .bottom = edge("b")};
  std::vector<std::string> sides;
  for (const auto& constraint : snaps.all()) sides.push_back(constraint.side);
  EXPECT_EQ(sides, (std::vector<std::string>{"l", "t", "b"}));
  EXPECT_TRUE(SnapConstraints{}.all().empty());
  EXPECT_FALSE(encodeValue(snaps).asObject()->contains("right"));
}

}  // namespace
}  // namespace zorvik
