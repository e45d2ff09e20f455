#include "workspace_store/stored_cards/stored_card_content.h"

#include <gtest/gtest.h>

#include "foundation/file_url.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_decoder.h"
#include "stored_cards_test_support.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using Kind = StoredCardStorageError::Kind;
using zorvik::testing::TempDirectory;

StoredTextContent markdownAt(std::string path) {
  return StoredTextContent::makeExternal(StoredTextContentFormat::markdown, std::move(path));
}

class StoredTextContentTest : public ::testing::Test {
 protected:
  ResolvedStoredText resolve(const StoredTextContent& content) const {
    return content.resolveString(project_.path(), kCardID);
  }
  std::string fileURL(const std::string& relative) const {
    return fileURLString(project_.path() / relative);
  }

  TempDirectory project_;
  TempDirectory outside_;
};

// The JSON forms are checked through the stored payloads and records that carry them.
TEST_F(StoredTextContentTest, UnknownModeIsADecodingError) {
  EXPECT_THROW(decodeValue<StoredTextContent>(
                   AnyCodableValue::parse(R"({"mode":"linked","format":"markdown"})")),
               DecodingError);
}

TEST_F(StoredTextContentTest, InlineTextNeedsValueAlone) {
  const auto text = resolve(StoredTextContent::makeInline(StoredTextContentFormat::css, "a{}"));
  EXPECT_EQ(text, (ResolvedStoredText{"a{}", std::nullopt, std::nullopt}));

  const std::string message = "Inline text source for card " + kCardUpper +
                              " must include `value` and omit `path`/`encoding`.";
  StoredTextContent noValue{.mode = StoredCardContentMode::inlined};
  StoredTextContent withPath = StoredTextContent::makeInline(StoredTextContentFormat::css, "");
  withPath.path = "resources/a.css";
  StoredTextContent withEncoding = StoredTextContent::makeInline(StoredTextContentFormat::css, "");
  withEncoding.encoding = "utf-8";
  for (const StoredTextContent& content : {noValue, withPath, withEncoding}) {
    expectStorageError([&] { resolve(content); }, Kind::invalidDescriptor, message);
  }
}

TEST_F(StoredTextContentTest, ExternalDescriptorChecks) {
  const std::string card = "External text source for card " + kCardUpper;
  StoredTextContent withValue = markdownAt(kCardFolder + "/content.md");
  withValue.value = "inline too";
  expectStorageError([&] { resolve(withValue); }, Kind::invalidDescriptor,
                     card + " must omit `value`.");
  for (std::optional<std::string> path :
       {std::optional<std::string>(), std::optional<std::string>("")}) {
    StoredTextContent content = markdownAt("");
    content.path = path;
    expectStorageError([&] { resolve(content); }, Kind::invalidDescriptor,
                       card + " is missing `path`.");
  }
  // A missing encoding fails too, although the factory always sets one.
  project_.write(kCardFolder + "/content.md", "body");
  for (std::optional<std::string> encoding :
       {std::optional<std::string>(), std::optional<std::string>("latin1")}) {
    StoredTextContent content = markdownAt(kCardFolder + "/content.md");
    content.encoding = encoding;
    expectStorageError(
        [&] { resolve(content); }, Kind::unsupportedEncoding,
        "External text source `" + kCardFolder + "/content.md` must use encoding `utf-8`.");
  }
  StoredTextContent upper = markdownAt(kCardFolder + "/content.md");
  upper.encoding = "UTF-8";
  EXPECT_EQ(resolve(upper).text, "body");
}

TEST_F(StoredTextContentTest, ReadsSidecarsAndProjectResources) {
  project_.write(kCardFolder + "/content.md", "# Card body\n");
  project_.write("resources/My File.md", "spaced");
  project_.write("resources/shared/notes.md", "shared");
  project_.write(kCardFolder + "/a:b.md", "colon");

  const std::string sidecar = kCardFolder + "/content.md";
  EXPECT_EQ(resolve(markdownAt(sidecar)),
            (ResolvedStoredText{"# Card body\n", StoredCardSidecarFile{sidecar, "# Card body\n"},
                                fileURL(sidecar)}));
  // Percent escapes are decoded for the read; the sidecar keeps the path as written.
  EXPECT_EQ(resolve(markdownAt("resources/My%20File.md")),
            (ResolvedStoredText{"spaced", StoredCardSidecarFile{"resources/My%20File.md", "spaced"},
                                fileURL("resources/My File.md")}));
  // A project resource need not lie in the card's folder, not even another card's folder.
  project_.write("resources/cards/OTHER/content.md", "other card");
  EXPECT_EQ(resolve(markdownAt("resources/cards/OTHER/content.md")).text, "other card");
  EXPECT_EQ(resolve(markdownAt("resources/shared/notes.md")).text, "shared");
  EXPECT_EQ(resolve(markdownAt("resources\\shared\\notes.md")).text, "shared");
  // A colon rules out the resource way; the sidecar way reads it from the card's own folder.
  EXPECT_EQ(resolve(markdownAt(kCardFolder + "/a:b.md")).text, "colon");
}

TEST_F(StoredTextContentTest, RejectsPathsOutsideTheRules) {
  project_.write("resources/a:b/c.md", "x");
  project_.write("resources/c.md", "x");
  project_.write("Resources/cards/" + kCardUpper + "/content.md", "x");
  project_.write("resources/cards/" + kCardLower + "/a:b.md", "x");
  const std::string underCard = "` must stay under `" + kCardFolder + "/`.";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"resources/a:b/c.md", underCard},
      {"notes/c.md", underCard},
      // Both pass the case-insensitive prefix rule but name folders other than the card's own.
      {"Resources/cards/" + kCardUpper + "/content.md", underCard},
      {"resources/cards/" + kCardLower + "/a:b.md", underCard},
      {"resources/../../outside.md", "` must not contain `.` or `..` segments."},
  };
  for (const auto& [path, tail] : cases) {
    expectStorageError([&] { resolve(markdownAt(path)); }, Kind::invalidPath,
                       "Sidecar path `" + path + tail);
  }
}

TEST_F(StoredTextContentTest, ReadsLocalFilesOutsideTheProjectWithoutSidecar) {
  const fs::path file = outside_.write("My Notes.md", "outside text");
  const std::string url = fileURLString(file);
  for (const std::string& path :
       {file.string(), url, (outside_.path() / "x/../My Notes.md").string()}) {
    EXPECT_EQ(resolve(markdownAt(path)), (ResolvedStoredText{"outside text", std::nullopt, url}))
        << path;
  }
}

TEST_F(StoredTextContentTest, ReportsMissingAndNonUTF8Files) {
  project_.write(kCardFolder + "/latin1.md", "caf\xE9");
  fs::create_directories(project_.path() / kCardFolder / "folder.md");
  project_.write("resources/shared/notes.md", "exists in the project");
  const std::string missing = " for card " + kCardUpper + ".";
  const std::vector<std::string> paths = {
      kCardFolder + "/absent.md", kCardFolder + "/folder.md", "resources/absent.md",
      (outside_.path() / "absent.md").string(),
      // A leading slash makes an absolute path, not a project path.
      "/resources/shared/notes.md"};
  for (const std::string& path : paths) {
    expectStorageError([&] { resolve(markdownAt(path)); }, Kind::missingSidecar,
                       "Missing sidecar file `" + path + "`" + missing);
  }
  expectStorageError([&] { resolve(markdownAt(kCardFolder + "/latin1.md")); },
                     Kind::unsupportedEncoding,
                     "Sidecar file `" + kCardFolder + "/latin1.md` is not valid UTF-8.");
  const fs::path outsideLatin1 = outside_.write("latin1.md", "\xFF");
  expectStorageError([&] { resolve(markdownAt(outsideLatin1.string())); },
                     Kind::unsupportedEncoding,
                     "Sidecar file `" + outsideLatin1.string() + "` is not valid UTF-8.");
}

// The path checks are lexical: a symlink inside the card's folder is followed to wherever it
// points, outside the project included.
TEST_F(StoredTextContentTest, FollowsSymlinksInsideTheCardFolder) {
  const fs::path secret = outside_.write("secret/secret.md", "outside the project");
  fs::create_directories(project_.path() / kCardFolder);
  fs::create_symlink(secret, project_.path() / kCardFolder / "link.md");
  fs::create_directory_symlink(secret.parent_path(), project_.path() / kCardFolder / "dir");

  const auto viaFile = resolve(markdownAt(kCardFolder + "/link.md"));
  EXPECT_EQ(viaFile.text, "outside the project");
  EXPECT_EQ(viaFile.sourceURL, fileURL(kCardFolder + "/link.md"));
  EXPECT_EQ(resolve(markdownAt(kCardFolder + "/dir/secret.md")).text, "outside the project");
  // Leaving through ".." after the link is still refused, since ".." is judged on the text.
  expectStorageError(
      [&] { resolve(markdownAt(kCardFolder + "/dir/../../x.md")); }, Kind::invalidPath,
      "Sidecar path `" + kCardFolder + "/dir/../../x.md` must not contain `.` or `..` segments.");
}

class StoredTableDataSourceTest : public StoredTextContentTest {
 protected:
  ResolvedStoredTable resolveTable(const StoredTableDataSource& source) const {
    return source.resolveTable(project_.path(), kCardID);
  }
};

TEST_F(StoredTableDataSourceTest, InlineTablesStayAsTheyAre) {
  const auto table = resolveTable(StoredTableDataSource::makeInline({"a", "b"}, {{"1"}}));
  EXPECT_EQ(table, (ResolvedStoredTable{{"a", "b"}, {{"1"}}, std::nullopt}));

  const std::string message = "Inline table source for card " + kCardUpper +
                              " must include `columns`/`rows` and omit external-only fields.";
  StoredTableDataSource noRows = StoredTableDataSource::makeInline({"a"}, {});
  noRows.rows.reset();
  StoredTableDataSource withHeader = StoredTableDataSource::makeInline({"a"}, {});
  withHeader.headerRow = true;
  StoredTableDataSource withFormat = StoredTableDataSource::makeInline({"a"}, {});
  withFormat.format = "csv";
  for (const auto& source : {noRows, withHeader, withFormat}) {
    expectStorageError([&] { resolveTable(source); }, Kind::invalidDescriptor, message);
  }
}

TEST_F(StoredTableDataSourceTest, ExternalDescriptorChecksInOrder) {
  const std::string card = "External table source for card " + kCardUpper;
  const std::string path = kCardFolder + "/table.csv";
  auto source = [&](auto change) {
    StoredTableDataSource s = StoredTableDataSource::makeExternal(path);
    change(s);
    return s;
  };
  const std::vector<std::tuple<StoredTableDataSource, Kind, std::string>> cases = {
      // Inline fields are reported before anything else is wrong.
      {source([](auto& s) {
         s.columns = std::vector<std::string>{"a"};
         s.format.reset();
       }),
       Kind::invalidDescriptor, card + " must omit inline `columns`/`rows`."},
      {source([](auto& s) { s.rows = std::vector<std::vector<std::string>>{}; }),
       Kind::invalidDescriptor, card + " must omit inline `columns`/`rows`."},
      {source([](auto& s) {
         s.format = "tsv";
         s.path.reset();
       }),
       Kind::invalidDescriptor, card + " must use format `csv`."},
      {source([](auto& s) { s.format.reset(); }), Kind::invalidDescriptor,
       card + " must use format `csv`."},
      {source([](auto& s) {
         s.path = "";
         s.encoding.reset();
       }),
       Kind::invalidDescriptor, card + " is missing `path`."},
      {source([](auto& s) {
         s.encoding = "utf-16";
         s.headerRow = false;
       }),
       Kind::unsupportedEncoding,
       "External table source `" + path + "` must use encoding `utf-8`."},
      {source([](auto& s) { s.headerRow = false; }), Kind::invalidDescriptor,
       "External table source `" + path + "` must set `headerRow` to true."},
      {source([](auto& s) { s.headerRow.reset(); }), Kind::invalidDescriptor,
       "External table source `" + path + "` must set `headerRow` to true."},
      {source([](auto&) {}), Kind::missingSidecar,
       "Missing sidecar file `" + path + "` for card " + kCardUpper + "."},
  };
  for (const auto& [s, kind, message] : cases) {
    expectStorageError([&] { resolveTable(s); }, kind, message);
  }
}

TEST_F(StoredTableDataSourceTest, ReadsCSVFilesPaddingShortRows) {
  const std::string path = kCardFolder + "/table.csv";
  const std::string csv = "name,score\r\nada,3\r\nbob\r\n";
  project_.write(path, csv);
  StoredTableDataSource source = StoredTableDataSource::makeExternal(path);
  source.format = "CSV";
  EXPECT_EQ(resolveTable(source),
            (ResolvedStoredTable{
                {"name", "score"}, {{"ada", "3"}, {"bob", ""}}, StoredCardSidecarFile{path, csv}}));

  const fs::path outside = outside_.write("t.csv", "x\n1");
  EXPECT_EQ(resolveTable(StoredTableDataSource::makeExternal(fileURLString(outside))),
            (ResolvedStoredTable{{"x"}, {{"1"}}, std::nullopt}));

  project_.write("resources/bad.csv", "a,b\"c");
  expectStorageError(
      [&] { resolveTable(StoredTableDataSource::makeExternal("resources/bad.csv")); },
      Kind::invalidCSV, "Invalid CSV quoting in `resources/bad.csv`.");
  project_.write("resources/bad.txt", "a,\xC0");
  expectStorageError(
      [&] { resolveTable(StoredTableDataSource::makeExternal("resources/bad.txt")); },
      Kind::unsupportedEncoding, "Sidecar file `resources/bad.txt` is not valid UTF-8.");
}

}  // namespace
}  // namespace zorvik
