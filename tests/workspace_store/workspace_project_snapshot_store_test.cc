#include "workspace_store/workspace_project_snapshot_store.h"

#include <gtest/gtest.h>

#include "foundation/json/value_decoder.h"
#include "foundation/sha256.h"
#include "foundation/standardized_path.h"
#include "support/temp_directory.h"
#include "workspace_store/cli_workspace_cards_loader.h"
#include "workspace_store/workspace_board_loader.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {
namespace {

using testing::TempDirectory;

// A workspace entry; `extra` is spliced into the object as further members.
std::string entry(const std::string& id, const std::string& kind, const std::string& path,
                  const std::string& payload = "{}", const std::string& extra = "") {
  std::string json =
      R"({"id":")" + id + R"(","kindRawValue":")" + kind + R"(","title":"Card )" + id.substr(0, 4) +
      R"(","shadowEnabled":true,"createdAt":"2026-01-01T00:00:00Z",)" +
      R"("layout":{"position":{"x":1,"y":2},"zIndex":1,"actualWidth":100,"actualHeight":50},)" +
      R"("payload":)" + payload;
  if (!path.empty())
    json += R"(,"relativePath":)" + AnyCodableValue(path).compactJSONString().value();
  return json + extra + "}";
}

std::string document(const std::vector<std::string>& entries) {
  std::string joined;
  for (const auto& item : entries) joined += (joined.empty() ? "" : ",") + item;
  return R"({"version":1,"projectId":"P","createdAt":"2026-01-01T00:00:00Z",)"
         R"("updatedAt":"2026-01-02T00:00:00Z","uiState":{"zoomLevelsByFolder":{"root":1.5}},)"
         R"("entries":[)" +
         joined + "]}";
}

std::string uuid(int n) {
  char text[40];
  std::snprintf(text, sizeof text, "%08X-0000-4000-8000-000000000000", n);
  return text;
}

constexpr const char* kLinkMarkdown =
    "---\nzorvik-kind: link\nsource: remote\nurl: https://example.org/solar\nnote: Good source\n"
    "current-image-index: 0\nis-template: false\n---\nBody text\n";

class SnapshotStoreTest : public ::testing::Test {
 protected:
  void writeBoard(const std::vector<std::string>& entries) {
    project_.write(".zorvik/workspace.json", document(entries));
  }
  WorkspaceProjectSnapshot load() { return WorkspaceProjectSnapshotStore().load(project_.path()); }

  // The payload of the card with `id` in `snapshot`.
  static const AnyCodableValue& payloadOf(const WorkspaceProjectSnapshot& snapshot, int id) {
    for (const auto& card : snapshot.cards) {
      if (card.id.uppercaseString() == uuid(id)) return card.payload;
    }
    static const AnyCodableValue none;
    ADD_FAILURE() << "no card " << id;
    return none;
  }

  TempDirectory project_;
};

TEST_F(SnapshotStoreTest, LoadsACardOfEveryKind) {
  project_.write("notes/a.md", "# Heading\ntext");
  project_.write("notes/b.txt", "plain");
  project_.write("links/solar.md", kLinkMarkdown);
  project_.write("links/old.link.json",
                 R"({"source":"remote","url":"https://example.org","note":"","richText":"",)"
                 R"("sanitizedHTML":"<p>x</p>","rowItems":[{"label":"Price","value":"3"}],)"
                 R"("availableFields":[],"hiddenRowItems":[],"images":[],"currentImageIndex":0,)"
                 R"("availableImages":[],"isTemplate":false})");
  project_.write("data/t.csv", "a,b\n1,2\n3\n");
  project_.write("page/index.html", "<p>hi</p>");
  project_.write("page/styles.css", "p{}");
  std::filesystem::create_directories(project_.path() / "group");
  writeBoard({
      entry(uuid(1), "richText", "notes/a.md", R"({"type":"richText","richText":{"fontSize":14}})"),
      entry(uuid(2), "richText", "notes/b.txt"),
      entry(uuid(3), "richText", "links/solar.md"),  // the file says link
      entry(uuid(4), "link", "links/old.link.json", R"({"type":"link","link":{"url":"stale"}})"),
      entry(uuid(5), "table", "data/t.csv", R"({"type":"table","table":{"showsRowHeaders":true}})"),
      entry(uuid(6), "html", "page"),
      entry(uuid(7), "folder", "group", R"({"type":"folder","folder":{"layout":"grid"}})"),
      entry(uuid(8), "richText", "", R"({"type":"richText","richText":{"markdown":"inline"}})"),
      entry(uuid(9), "image", "media/photo.png", R"({"type":"image","image":{"url":"x"}})"),
  });

  const WorkspaceProjectSnapshot snapshot = load();
  EXPECT_TRUE(snapshot.loadDiagnostics.empty());
  ASSERT_EQ(snapshot.cards.size(), 9u);
  EXPECT_EQ(snapshot.checkedFiles, 1 + 5 + 2);
  EXPECT_EQ(snapshot.cards[7].path, ".zorvik/workspace.json#" + uuid(8));
  EXPECT_EQ(snapshot.cards[0].frame, (Frame{1, 2, 100, 50}));

  EXPECT_EQ(
      payloadOf(snapshot, 1),
      AnyCodableValue::parse(
          R"({"richText":{"fontSize":14,"markdown":"# Heading\ntext","sourceURL":"file://)" +
          standardizedPath(project_.path()).string() + R"(/notes/a.md"},"type":"richText"})"));
  EXPECT_EQ(*payloadOf(snapshot, 2).member("richText")->member("markdown")->asString(), "plain");
  const AnyCodableValue& link = *payloadOf(snapshot, 3).member("link");
  EXPECT_EQ(*link.member("url")->asString(), "https://example.org/solar");
  EXPECT_EQ(*link.member("richText")->asString(), "Body text\n");
  EXPECT_EQ(link.member("sanitizedHTML"), nullptr);
  const AnyCodableValue& legacy = *payloadOf(snapshot, 4).member("link");
  EXPECT_EQ(*legacy.member("url")->asString(), "https://example.org");
  EXPECT_EQ(*legacy.member("sanitizedHTML")->asString(), "<p>x</p>");
  EXPECT_EQ(payloadOf(snapshot, 5).compactJSONString(),
            R"({"table":{"columns":["a","b"],"rows":[["1","2"],["3",""]],"showsRowHeaders":true},)"
            R"("type":"table"})");
  EXPECT_EQ(
      payloadOf(snapshot, 6),
      AnyCodableValue::parse(R"({"html":{"css":"p{}","html":"<p>hi</p>","js":""},"type":"html"})"));
  EXPECT_EQ(payloadOf(snapshot, 9).compactJSONString(), R"({"image":{"url":"x"},"type":"image"})");
  EXPECT_EQ(snapshot.folders.size(), 1u);
  EXPECT_EQ(snapshot.folders[0].zoomLevel, 1.5);
}

TEST_F(SnapshotStoreTest, DamagedEntriesBecomeDiagnosticsAndTheRestLoads) {
  std::error_code ignored;
  project_.write("ok.md", "fine");
  project_.write("latin1.md", "caf\xE9");
  project_.write("bad.csv", "a,\"b\n");
  project_.write("bad.link.json", "{\"url\": 3}");
  project_.write("bare-html/readme.txt", "no index");
  project_.write("front.md", "---\nzorvik-kind: link\n  broken\n---\nbody");
  TempDirectory outside;
  const auto secret = outside.write("secret.md", "secret");
  outside.write("site/index.html", "<p>outside</p>");
  std::filesystem::create_symlink(secret, project_.path() / "escape.md");
  std::filesystem::create_symlink(outside.path() / "site", project_.path() / "escape-site");
  std::filesystem::create_directories(project_.path() / "inner");
  std::filesystem::create_symlink(secret, project_.path() / "inner" / "index.html");
  // Symlinks that stay inside the project are followed, written relative or absolute.
  std::filesystem::create_symlink("ok.md", project_.path() / "alias.md");
  std::filesystem::create_symlink(project_.path() / "ok.md", project_.path() / "absolute-alias.md");

  struct Damage {
    std::string path;
    std::string kind;
    std::string message;  // empty: the card loads
  };
  const std::vector<Damage> damages = {
      {"ok.md", "richText", ""},
      {"front.md", "richText", ""},  // broken front matter is plain rich text
      {"alias.md", "richText", ""},
      {"absolute-alias.md", "richText", ""},
      {"missing.md", "richText", "Failed to decode missing.md: The file could not be read"},
      {"latin1.md", "richText", "Failed to decode latin1.md: Expected UTF-8 text."},
      {"bad.csv", "table", "Failed to decode bad.csv: Expected valid UTF-8 CSV content."},
      {"bad.link.json", "link", "Failed to decode bad.link.json: Missing required key 'source'."},
      {"bare-html", "html", "Failed to decode bare-html: HTML folder is missing index.html."},
      {"../x.md", "richText", "Failed to decode ../x.md: Resolved path escapes the project root."},
      {"notes/../../x.md", "richText",
       "Failed to decode notes/../../x.md: Resolved path escapes the project root."},
      {"/etc/hostname", "richText", "Failed to decode /etc/hostname: Invalid relative path."},
      {"escape.md", "richText",
       "Failed to decode escape.md: Resolved path escapes the project root."},
      {"escape-site", "html",
       "Failed to decode escape-site/index.html: Resolved path escapes the project root."},
      {"inner", "html",
       "Failed to decode inner/index.html: Resolved path escapes the project root."},
      {"%2e%2e/x.md", "richText", "Failed to decode %2e%2e/x.md: The file could not be read"},
      {"..\\x.md", "richText", "Failed to decode ..\\x.md: The file could not be read"},
  };
  std::vector<std::string> entries;
  for (size_t i = 0; i < damages.size(); ++i) {
    entries.push_back(entry(uuid(int(i) + 1), damages[i].kind, damages[i].path));
  }
  writeBoard(entries);

  const WorkspaceProjectSnapshot snapshot = load();
  size_t diagnostic = 0;
  for (size_t i = 0; i < damages.size(); ++i) {
    SCOPED_TRACE(damages[i].path);
    if (damages[i].message.empty()) continue;
    ASSERT_LT(diagnostic, snapshot.loadDiagnostics.size());
    const auto& found = snapshot.loadDiagnostics[diagnostic++];
    EXPECT_TRUE(found.message.starts_with(damages[i].message)) << found.message;
    EXPECT_EQ(found.code, "parse.card");
    EXPECT_EQ(found.path, damages[i].path);
    EXPECT_EQ(found.cardID->uppercaseString(), uuid(int(i) + 1));
    EXPECT_EQ(
        found.hint,
        "Repair the referenced content file or `.zorvik/workspace.json`, then re-run validation.");
    EXPECT_EQ(found.owner, WorkspaceCompileDiagnosticOwner::user);
    EXPECT_EQ(found.actionability, WorkspaceCompileDiagnosticActionability::fixable);
  }
  EXPECT_EQ(diagnostic, snapshot.loadDiagnostics.size());
  ASSERT_EQ(snapshot.cards.size(), 4u);
  EXPECT_EQ(*snapshot.cards[1].payload.member("richText")->member("markdown")->asString(),
            "---\nzorvik-kind: link\n  broken\n---\nbody");
  for (size_t alias : {2, 3}) {
    EXPECT_EQ(*snapshot.cards[alias].payload.member("richText")->member("markdown")->asString(),
              "fine");
  }
}

TEST_F(SnapshotStoreTest, FingerprintFollowsFilesNotEntryOrder) {
  project_.write("a.md", "A");
  project_.write("site/index.html", "<p/>");
  project_.write("site/styles.css", "p{}");
  const std::string first = entry(uuid(1), "richText", "a.md");
  const std::string second = entry(uuid(2), "html", "site");
  writeBoard({first, second});
  const auto original = load();
  EXPECT_EQ(load(), original);

  writeBoard({second, first});
  const auto reordered = load();
  EXPECT_EQ(reordered.cards[0].id, original.cards[1].id);
  EXPECT_NE(reordered.projectFingerprint, original.projectFingerprint)
      << "the document's own bytes changed";

  // Same document bytes, changed content files.
  writeBoard({first, second});
  EXPECT_EQ(load().projectFingerprint, original.projectFingerprint);
  std::filesystem::remove(project_.path() / "site/styles.css");
  const auto withoutStyles = load();
  EXPECT_NE(withoutStyles.projectFingerprint, original.projectFingerprint);
  EXPECT_TRUE(withoutStyles.loadDiagnostics.empty());
  EXPECT_EQ(withoutStyles.checkedFiles, original.checkedFiles - 1);
  project_.write("a.md", "B");
  const auto changed = load();
  EXPECT_NE(changed.projectFingerprint, withoutStyles.projectFingerprint);

  // Without a fingerprint the load is the same in every other respect.
  WorkspaceProjectSnapshot unhashed =
      WorkspaceProjectSnapshotStore().load(project_.path(), {.fingerprint = false});
  EXPECT_EQ(unhashed.projectFingerprint, "");
  unhashed.projectFingerprint = changed.projectFingerprint;
  EXPECT_EQ(unhashed, changed);
}

TEST_F(SnapshotStoreTest, LargeBoardsKeepEntryOrderAcrossWorkers) {
  std::vector<std::string> entries;
  for (int i = 1; i <= 900; ++i) {
    const std::string name = "n/" + std::to_string(i) + (i % 7 == 0 ? ".missing.md" : ".md");
    if (i % 7 != 0) project_.write(name, "note " + std::to_string(i));
    entries.push_back(entry(uuid(i), "richText", name));
  }
  writeBoard(entries);
  const auto snapshot = load();
  ASSERT_EQ(snapshot.loadDiagnostics.size(), 900u / 7);
  ASSERT_EQ(snapshot.cards.size(), 900u - 900u / 7);
  for (size_t i = 1; i < snapshot.cards.size(); ++i) {
    ASSERT_LT(snapshot.cards[i - 1].id, snapshot.cards[i].id);
  }
  for (size_t i = 0; i < snapshot.loadDiagnostics.size(); ++i) {
    EXPECT_EQ(snapshot.loadDiagnostics[i].cardID->uppercaseString(), uuid(int(i + 1) * 7));
  }
  EXPECT_EQ(snapshot.checkedFiles, 1 + int(snapshot.cards.size()));
  EXPECT_EQ(load(), snapshot);

  // A reader that takes each card as it resolves sees every card that loads, once, under its
  // entry index, and the snapshot keeps what the reader left.
  std::vector<std::string> seen;
  WorkspaceProjectSnapshotStore::LoadOptions options;
  options.entriesFound = [&](size_t count) { seen.assign(count, ""); };
  options.cardResolved = [&](size_t index, CardRecord& card) {
    seen[index] += card.id.uppercaseString();
    card.payload = AnyCodableValue();
  };
  const auto taken = WorkspaceProjectSnapshotStore().load(project_.path(), options);
  ASSERT_EQ(seen.size(), 900u);
  for (size_t i = 0; i < seen.size(); ++i) {
    EXPECT_EQ(seen[i], (i + 1) % 7 == 0 ? "" : uuid(int(i + 1))) << i;
  }
  ASSERT_EQ(taken.cards.size(), snapshot.cards.size());
  EXPECT_TRUE(taken.cards.back().payload.isNull());
  EXPECT_EQ(taken.loadDiagnostics, snapshot.loadDiagnostics);
}

// The rows of a table payload, which the test knows to be there.
AnyCodableValue& rowsIn(AnyCodableValue& payload) {
  return *payload.asObject()->find("table")->asObject()->find("rows");
}

TEST_F(SnapshotStoreTest, TableRowsApartAreTheRowsThePayloadWouldHold) {
  // CR LF, doubled quotes, a line break inside quotes, short and long rows, a header alone, and
  // rows that the workspace entry already names (the file wins).
  project_.write("a.csv",
                 "h1,h2,h3\r\n1,\"two, \"\"quoted\"\"\"\r\nx,y,z,extra\n\"multi\nline\",,\n");
  project_.write("b.csv", "only,header");
  project_.write("c.csv", "h\n\xFF\n");
  const std::string given = R"({"type":"table","table":{"showsRowHeaders":true,"rows":[["old"]]}})";
  writeBoard({entry(uuid(1), "table", "a.csv", given), entry(uuid(2), "table", "b.csv", given),
              entry(uuid(3), "table", "c.csv", given)});
  const WorkspaceProjectSnapshot whole = load();
  const WorkspaceProjectSnapshot apart =
      WorkspaceProjectSnapshotStore().load(project_.path(), {.tableRowsApart = true});
  EXPECT_EQ(apart.loadDiagnostics, whole.loadDiagnostics);
  ASSERT_EQ(whole.cards.size(), 2u);
  ASSERT_EQ(apart.cards.size(), 2u);
  for (size_t i = 0; i < whole.cards.size(); ++i) {
    CardRecord expected = whole.cards[i];
    ASSERT_TRUE(apart.cards[i].tableRows) << i;
    EXPECT_EQ(*apart.cards[i].tableRows, decodeValue<TableRows>(rowsIn(expected.payload))) << i;
    rowsIn(expected.payload) = AnyCodableValue::Array();
    expected.tableRows = apart.cards[i].tableRows;
    EXPECT_EQ(apart.cards[i], expected) << i;
  }
  EXPECT_EQ(apart.cards[0].tableRows->size(), 3u);
  EXPECT_EQ((*apart.cards[0].tableRows)[1].size(), 4u);

  // The command-line loader, which takes the rows apart, types the same cards.
  const auto board =
      CLIWorkspaceCardsLoader::loadBoard(project_.path(), WorkspaceProjectSnapshotStore());
  ASSERT_EQ(board.cards.size(), 2u);
  for (size_t i = 0; i < board.cards.size(); ++i) {
    EXPECT_EQ(board.cards[i].payload, decodeValue<WorkspaceCardPayload>(whole.cards[i].payload));
  }
}

TEST_F(SnapshotStoreTest, AFolderWithoutDocumentIsAStableEmptyProject) {
  const auto snapshot = load();
  EXPECT_TRUE(snapshot.cards.empty());
  EXPECT_EQ(snapshot.checkedFiles, 0);
  EXPECT_EQ(snapshot.metadata.projectId, sha256Hex(standardizedPath(project_.path()).string()));
  EXPECT_EQ(snapshot.metadata.backgroundStyle, "Dots");
  EXPECT_EQ(snapshot.metadata.createdAt, Date{});
  EXPECT_EQ(load(), snapshot);
}

TEST_F(SnapshotStoreTest, AnUndecodableDocumentFailsTheLoad) {
  project_.write(".zorvik/workspace.json", R"({"version":"one"})");
  try {
    load();
    FAIL() << "loaded";
  } catch (const WorkspaceProjectSnapshotError& error) {
    EXPECT_EQ(error.kind(), WorkspaceProjectSnapshotError::Kind::decodeFailed);
    EXPECT_EQ(error.path(), ".zorvik/workspace.json");
    EXPECT_EQ(std::string(error.what()),
              "Failed to decode .zorvik/workspace.json: Type mismatch at version for Int: Expected "
              "to decode Int but found a string instead.");
  }
}

TEST_F(SnapshotStoreTest, CardsLoaderDropsUndecodablePayloadsSilently) {
  project_.write("t.csv", "a\n1\n");
  writeBoard({
      entry(uuid(1), "table", "t.csv"),  // no showsRowHeaders: not a valid table payload
      entry(uuid(2), "richText", "", R"({"type":"mystery","mystery":{}})"),
      entry(uuid(3), "richText", "", R"({"richText":{"markdown":"kept","summary":"S"}})"),
      entry(uuid(4), "richText", "gone.md"),
  });
  const auto board =
      CLIWorkspaceCardsLoader::loadBoard(project_.path(), WorkspaceProjectSnapshotStore());
  ASSERT_EQ(board.cards.size(), 1u);
  EXPECT_EQ(board.cards[0].id.uppercaseString(), uuid(3));
  EXPECT_EQ(board.cards[0].type, WorkspaceCardType::richText);
  EXPECT_EQ(board.cards[0].summary, "S");
  EXPECT_FALSE(board.cards[0].isLoading);
  ASSERT_EQ(board.loadDiagnostics.size(), 1u);
  EXPECT_EQ(board.loadDiagnostics[0].path, "gone.md");
  EXPECT_EQ(WorkspaceProjectSnapshotStore().load(project_.path()).cards.size(), 3u);
}

TEST(WorkspaceBoardLoaderTest, LoadsCardFilesAndFailsAsAWhole) {
  TempDirectory folder;
  folder.write("card_b.json",
               R"({"id":")" + uuid(2) + R"(","title":"B","payload":{"image":{"url":"u"}}})");
  folder.write("card_a.json", R"({"id":")" + uuid(1) +
                                  R"(","title":"A","payload":{"richText":{"markdown":"m"}}})");
  folder.write("other.json", "not a card");
  const auto cards = WorkspaceBoardLoader::loadCards(folder.path());
  ASSERT_EQ(cards.size(), 2u);
  EXPECT_EQ(cards[0].title, "A");
  EXPECT_EQ(cards[1].type, WorkspaceCardType::image);

  folder.write("card_c.json", R"({"id":"x","title":"C","payload":{}})");
  EXPECT_ANY_THROW(WorkspaceBoardLoader::loadCards(folder.path()));
}

}  // namespace
}  // namespace zorvik
