#include "workspace_store/workspace_project_snapshot.h"

#include <gtest/gtest.h>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/filesystem_workspace_state.h"

namespace zorvik {
namespace {

const Uuid kFolderId = *Uuid::parse("1b4e28ba-2fa1-11d2-883f-0016d3cca427");
const Uuid kNoteId = *Uuid::parse("6FA459EA-EE8A-3CA4-894E-DB77E160355E");

FilesystemWorkspaceState sampleDocument() {
  FilesystemWorkspaceState document;
  document.version = 2;
  document.projectId = "project-7";
  document.createdAt = *parseISO8601("2024-03-01T09:30:00Z");
  document.updatedAt = *parseISO8601("2024-03-05T18:45:10Z");
  document.uiState.viewportCenter = Point{10, -20.5};
  document.uiState.chatSidebarWidth = 300;
  document.uiState.zoomLevelsByFolder = {{kFolderId.uppercaseString(), 0.5}, {"root", 1.5}};
  return document;
}

FilesystemWorkspaceEntry sampleEntry() {
  FilesystemWorkspaceEntry entry;
  entry.id = kNoteId;
  entry.parentID = kFolderId;
  entry.title = "Intro";
  entry.createdAt = *parseISO8601("2024-03-02T10:00:00Z");
  entry.layout = {.position = {4, 8}, .zIndex = 3, .actualWidth = 240, .actualHeight = 180};
  entry.layout.snapConstraints = SnapConstraints{.top = SnapConstraint{kFolderId, "top", 0, {}, 6}};
  return entry;
}

TEST(ProjectMetadataTest, DerivesFromDocumentWithDefaults) {
  const auto metadata = ProjectMetadata::fromDocument(sampleDocument());
  EXPECT_EQ(metadata.structureVersion, 2);
  EXPECT_EQ(metadata.projectId, "project-7");
  EXPECT_EQ(formatISO8601(metadata.updatedAt), "2024-03-05T18:45:10Z");
  EXPECT_EQ(encodeValue(metadata).compactJSONString(),
            R"({"agentAffinityByScope":{},"backgroundStyle":"Dots","chatSidebarWidth":300,)"
            R"("createdAt":"2024-03-01T09:30:00Z","projectId":"project-7",)"
            R"("resourcesFolderName":"resources","structureVersion":2,)"
            R"("updatedAt":"2024-03-05T18:45:10Z"})");

  auto document = sampleDocument();
  document.uiState.backgroundStyle = "Grid";
  document.uiState.agentAffinityByScope = {{"board", kNoteId}};
  const auto styled = ProjectMetadata::fromDocument(document);
  EXPECT_EQ(styled.backgroundStyle, "Grid");
  EXPECT_EQ(styled.agentAffinityByScope.at("board"), kNoteId);
}

TEST(ProjectMetadataTest, RequiresItsFixedKeys) {
  const auto encoded = encodeValue(ProjectMetadata::fromDocument(sampleDocument()));
  for (const char* key : {"structureVersion", "projectId", "createdAt", "updatedAt",
                          "resourcesFolderName", "backgroundStyle", "agentAffinityByScope"}) {
    AnyCodableValue value = encoded;
    value.asObject()->erase(key);
    EXPECT_THROW(decodeValue<ProjectMetadata>(value), DecodingError) << key;
  }
  AnyCodableValue value = encoded;
  value.asObject()->erase("chatSidebarWidth");
  EXPECT_EQ(decodeValue<ProjectMetadata>(value).chatSidebarWidth, std::nullopt);
}

TEST(FolderRecordTest, RootComesFromUIState) {
  const auto root = FolderRecord::rootFromDocument(sampleDocument());
  EXPECT_EQ(root, (FolderRecord{std::nullopt, ".", Point{10, -20.5}, 1.5}));
  EXPECT_EQ(encodeValue(root).compactJSONString(),
            R"({"path":".","viewportCenter":{"x":10,"y":-20.5},"zoomLevel":1.5})");

  // A document whose uiState was all null.
  EXPECT_EQ(FolderRecord::rootFromDocument(FilesystemWorkspaceState{}),
            (FolderRecord{std::nullopt, ".", std::nullopt, std::nullopt}));
}

TEST(CardRecordTest, CopiesEntryFieldsAndBuildsFrame) {
  auto entry = sampleEntry();
  entry.relativePath = "notes/intro.md";
  const AnyCodableValue payload = JSONObject{{"type", "richText"}};
  const auto card = CardRecord::fromEntry(entry, payload);
  EXPECT_EQ(card, (CardRecord{kNoteId,
                              kFolderId,
                              "Intro",
                              entry.createdAt,
                              "notes/intro.md",
                              std::nullopt,
                              Frame{4, 8, 240, 180},
                              3,
                              entry.layout.snapConstraints,
                              payload,
                              {}}));
  EXPECT_EQ(decodeValue<CardRecord>(encodeValue(card)), card);
}

TEST(CardRecordTest, CardWithoutFileLivesInTheDocument) {
  const std::string expected = ".zorvik/workspace.json#6FA459EA-EE8A-3CA4-894E-DB77E160355E";
  auto entry = sampleEntry();
  EXPECT_EQ(CardRecord::fromEntry(entry, nullptr).path, expected);
  entry.relativePath = " \t\n";
  EXPECT_EQ(CardRecord::fromEntry(entry, nullptr).path, expected);
  entry.id = *Uuid::parse("6fa459ea-ee8a-3ca4-894e-db77e160355e");
  EXPECT_EQ(CardRecord::fromEntry(entry, nullptr).path, expected);
}

TEST(CardRecordTest, GroupStacksComeFromFolderPayloadOrAreEmpty) {
  const auto stacks = AnyCodableValue::parse(
      R"([{"axis":"vertical","anchorId":"6fa459ea-ee8a-3ca4-894e-db77e160355e",)"
      R"("orderedIds":["6FA459EA-EE8A-3CA4-894E-DB77E160355E"],"crossOffset":12}])");
  auto folderPayload = [](AnyCodableValue groupStacks) {
    return AnyCodableValue(
        JSONObject{{"type", "folder"}, {"folder", JSONObject{{"groupStacks", groupStacks}}}});
  };
  const auto card = CardRecord::fromEntry(sampleEntry(), folderPayload(stacks));
  EXPECT_EQ(card.groupStacks,
            (std::vector<GroupStack>{GroupStack{"vertical", kNoteId, {kNoteId}, 12}}));

  for (const AnyCodableValue& undecodable : {
           AnyCodableValue("oops"),
           AnyCodableValue(AnyCodableValue::Array{JSONObject{{"axis", "vertical"}}}),
           AnyCodableValue(nullptr),
       }) {
    EXPECT_TRUE(
        CardRecord::fromEntry(sampleEntry(), folderPayload(undecodable)).groupStacks.empty());
  }
  EXPECT_TRUE(CardRecord::fromEntry(sampleEntry(), JSONObject{{"folder", 3}}).groupStacks.empty());
}

TEST(WorkspaceProjectSnapshotTest, DefaultsToFilesystemStorage) {
  EXPECT_EQ(WorkspaceProjectSnapshot{}.storageMode, WorkspaceProjectStorageMode::filesystem);
}

}  // namespace
}  // namespace zorvik
