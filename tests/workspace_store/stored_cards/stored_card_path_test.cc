#include "workspace_store/stored_cards/stored_card_path.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "stored_cards_test_support.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using Kind = StoredCardStorageError::Kind;

TEST(StoredCardPathTest, NormalizesProjectResourcePaths) {
  const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
      {" resources/a/b.md \n", "resources/a/b.md"},
      {"/resources/a.md", "resources/a.md"},
      {"resources\\x\\y.md", "resources/x/y.md"},
      {"\\resources\\x.md", "resources/x.md"},
      {"resources/My%20File.md", "resources/My File.md"},
      {"resources%2Fencoded.md", "resources/encoded.md"},
      {"resources/bad%zz.md", "resources/bad%zz.md"},  // a malformed escape stays as written
      {"resources/%FF.md", "resources/%FF.md"},        // so does one that decodes to no UTF-8
      {"resources/cards/" + kCardUpper + "/content.md",
       "resources/cards/" + kCardUpper + "/content.md"},
      {"//resources/a.md", std::nullopt},  // only one leading slash is dropped
      {"resources/a:b/c.md", std::nullopt},
      {"resources//c.md", std::nullopt},
      {"resources/./c.md", std::nullopt},
      {"resources/../c.md", std::nullopt},
      {"resources/%2E%2E/c.md", std::nullopt},
      {"resources/a/", std::nullopt},
      {"resources/", std::nullopt},
      {"Resources/a.md", std::nullopt},
      {"notes/a.md", std::nullopt},
      {" \n", std::nullopt},
  };
  for (const auto& [input, expected] : cases) {
    EXPECT_EQ(normalizedProjectResourcePath(input), expected) << input;
  }
}

TEST(StoredCardPathTest, AcceptsOnlyLocalFilesOutsideTheProject) {
  const char* savedHome = std::getenv("HOME");
  const std::string previousHome = savedHome ? savedHome : "";
  setenv("HOME", "/home/tester", 1);
  const std::vector<std::pair<std::string, std::optional<fs::path>>> cases = {
      {"/tmp/a/../b.md", fs::path("/tmp/b.md")},
      {"  /tmp/x.md \n", fs::path("/tmp/x.md")},
      {"/tmp/My%20File.md", fs::path("/tmp/My%20File.md")},  // plain paths are not decoded
      {"file:///tmp/My%20File.md", fs::path("/tmp/My File.md")},
      {"file://localhost/tmp/./x.md", fs::path("/tmp/x.md")},
      {"~/notes/x.md", fs::path("/home/tester/notes/x.md")},
      {"~", fs::path("/home/tester")},
      {"file://elsewhere/tmp/x.md", std::nullopt},
      {"https://example.com/x.md", std::nullopt},
      {"resources/x.md", std::nullopt},
      {"notes\\x.md", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& [input, expected] : cases) {
    EXPECT_EQ(externalLocalFileURL(input), expected) << input;
  }
  if (savedHome) {
    setenv("HOME", previousHome.c_str(), 1);
  } else {
    unsetenv("HOME");
  }
}

TEST(StoredCardPathTest, ValidatesRelativeSidecarPaths) {
  const std::string underCard = "Sidecar path `%` must stay under `" + kCardFolder + "/`.";
  const std::vector<std::pair<std::string, std::string>> failures = {
      {"/" + kCardFolder + "/x.md", "Sidecar path `%` must be project-relative."},
      {kCardFolder + "/../x.md", "Sidecar path `%` must not contain `.` or `..` segments."},
      {kCardFolder + "/./x.md", "Sidecar path `%` must not contain `.` or `..` segments."},
      {"resources\\cards\\..\\x.md", "Sidecar path `%` must not contain `.` or `..` segments."},
      {"resources/cards/1B4E28BA-2FA1-11D2-883F-0016D3CCA427/x.md", underCard},
      {kCardFolder, underCard},
      {kCardFolder + "0/x.md", underCard},
      {"\\" + kCardFolder + "\\x.md", underCard},
      {"resources//x.md", underCard},
  };
  for (const auto& [path, pattern] : failures) {
    std::string message = pattern;
    message.replace(message.find('%'), 1, path);
    expectStorageError([&] { validateRelativeSidecarPath(path, kCardID); }, Kind::invalidPath,
                       message);
  }
  // The card folder is compared without regard to case; empty segments are ignored.
  for (const std::string& path :
       {kCardFolder + "/x.md", "resources/cards/" + kCardLower + "/x.md",
        "RESOURCES/Cards/" + kCardUpper + "/x.md", "resources\\cards\\" + kCardUpper + "\\a:b.md",
        "resources/cards/" + kCardUpper + "//x.md"}) {
    EXPECT_NO_THROW(validateRelativeSidecarPath(path, kCardID)) << path;
  }
}

TEST(StoredCardPathTest, ResolvesSidecarFilesUnderTheCardFolderOnly) {
  const fs::path root = "/projects/board";
  EXPECT_EQ(resolveFileURL(root, kCardFolder + "/x.md", kCardID), root / kCardFolder / "x.md");
  EXPECT_EQ(resolveFileURL("/projects/./board/", kCardFolder + "//sub/./x.md", kCardID),
            root / kCardFolder / "sub/x.md");
  EXPECT_EQ(resolveFileURL(root, "resources\\cards\\" + kCardUpper + "\\x.md", kCardID),
            root / kCardFolder / "x.md");
  EXPECT_EQ(resolveFileURL("relative/board", kCardFolder + "/x.md", kCardID),
            fs::current_path() / "relative/board" / kCardFolder / "x.md");

  const std::string card = " for card " + kCardUpper + ".";
  for (const std::string& path : {kCardFolder + "/../../../../etc/passwd", std::string("..")}) {
    expectStorageError([&] { resolveFileURL(root, path, kCardID); }, Kind::invalidPath,
                       "Sidecar path `" + path + "` escapes the project root" + card);
  }
  // The card folder itself is no file; a lower-case id names another folder on this system.
  for (const std::string& path :
       {kCardFolder + "/../OTHER/x.md", kCardFolder, "resources/cards/" + kCardLower + "/x.md"}) {
    expectStorageError([&] { resolveFileURL(root, path, kCardID); }, Kind::invalidPath,
                       "Sidecar path `" + path + "` must stay under `" + kCardFolder + "/`.");
  }
}

TEST(StoredCardPathTest, ResolvesProjectResourcesAnywhereUnderResources) {
  const fs::path root = "/projects/board";
  EXPECT_EQ(resolveProjectResourceFileURL(root, "resources/shared/a.md", kCardID),
            root / "resources/shared/a.md");
  EXPECT_EQ(resolveProjectResourceFileURL(root, "/resources/My%20File.md", kCardID),
            root / "resources/My File.md");
  for (std::string path : {"notes/a.md", "resources/../a.md", "resources/a:b/c.md"}) {
    expectStorageError(
        [&] { resolveProjectResourceFileURL(root, path, kCardID); }, Kind::invalidPath,
        "Sidecar path `" + path + "` must stay under `resources/` for card " + kCardUpper + ".");
  }
}

}  // namespace
}  // namespace zorvik
