// In-process checks of the discovery building blocks: the selection rule, the registry and root
// lists, and reading an application bundle's identifier.
#include "cli/project_discovery.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdlib>

#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::TempDirectory;

RuntimeDiscoveryCandidate candidate(const char* name, int secondsAgo, bool foreground) {
  RuntimeDiscoveryCandidate result;
  result.url = fs::path("/boards") / name;
  result.heartbeat.projectPath = result.url.string();
  result.heartbeat.timestamp = Date(std::chrono::seconds(1'800'000'000 - secondsAgo));
  result.heartbeat.isForeground = foreground;
  return result;
}

TEST(SelectionRuleTest, ForegroundFirstThenStrictlyLater) {
  const auto oldForeground = candidate("a", 4, true);
  const auto newBackground = candidate("b", 0, false);
  EXPECT_FALSE(isPreferredCandidate(newBackground, oldForeground));
  EXPECT_TRUE(isPreferredCandidate(oldForeground, newBackground));

  const auto older = candidate("c", 3, false);
  const auto newer = candidate("d", 1, false);
  EXPECT_TRUE(isPreferredCandidate(newer, older));
  EXPECT_FALSE(isPreferredCandidate(older, newer));
  // On equal times the one met first stays.
  EXPECT_FALSE(isPreferredCandidate(candidate("e", 1, false), newer));
  EXPECT_FALSE(isPreferredCandidate(candidate("f", 1, true), candidate("g", 1, true)));
}

// Sets or removes an environment variable for one scope.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, std::optional<std::string> value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    set(name, value);
  }
  ~ScopedEnvironment() { set(name_, old_); }

 private:
  static void set(const char* name, const std::optional<std::string>& value) {
    value ? setenv(name, value->c_str(), 1) : unsetenv(name);
  }
  const char* name_;
  std::optional<std::string> old_;
};

TEST(CandidateLocationsTest, FollowTheDataHomeAndTheWorkingDirectory) {
  TempDirectory home;
  ScopedEnvironment homeVariable("HOME", home.path().string());
  {
    ScopedEnvironment data("XDG_DATA_HOME", "/srv/data");
    EXPECT_EQ(candidateRuntimeRegistryURLs(),
              std::vector<fs::path>{"/srv/data/Zorvik/active-runtime.json"});
    EXPECT_EQ(candidateProjectRoots(),
              (std::vector<fs::path>{"/srv/data/Zorvik", fs::current_path()}));
  }
  for (const auto& unusable :
       std::vector<std::optional<std::string>>{std::nullopt, "", "relative"}) {
    ScopedEnvironment data("XDG_DATA_HOME", unusable);
    EXPECT_EQ(candidateRuntimeRegistryURLs(),
              std::vector<fs::path>{home.path() / ".local/share/Zorvik/active-runtime.json"});
    EXPECT_EQ(candidateProjectRoots().front(), home.path() / ".local/share/Zorvik");
  }
}

std::string infoPlistXML(const std::string& identifier) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>CFBundleName</key><string>Desk</string>
  <key>CFBundleIdentifier</key><string>)" +
         identifier + R"(</string>
</dict>
</plist>
)";
}

TEST(BundleIdentifierTest, ReadsXMLAndBinaryInfoPlists) {
  TempDirectory folder;
  folder.write("Desk.app/Contents/Info.plist", infoPlistXML("com.example.Desk"));
  EXPECT_EQ(resolveBundleIdentifier((folder.path() / "Desk.app").string()), "com.example.Desk");
  EXPECT_EQ(resolveBundleIdentifier("  " + (folder.path() / "Desk.app").string() + "\n"),
            "com.example.Desk")
      << "the path is trimmed";

  plist_t root = plist_new_dict();
  plist_dict_set_item(root, "CFBundleIdentifier", plist_new_string("org.example.Binary"));
  char* data = nullptr;
  uint32_t length = 0;
  plist_to_bin(root, &data, &length);
  folder.write("Binary.app/Contents/Info.plist", std::string_view(data, length));
  plist_to_bin_free(data);
  plist_free(root);
  EXPECT_EQ(resolveBundleIdentifier((folder.path() / "Binary.app").string()), "org.example.Binary");
}

TEST(BundleIdentifierTest, AnythingElseHasNoIdentifier) {
  TempDirectory folder;
  folder.write("NoKey.app/Contents/Info.plist",
               R"(<?xml version="1.0"?><plist version="1.0"><dict><key>CFBundleName</key>)"
               R"(<string>x</string></dict></plist>)");
  folder.write("Garbage.app/Contents/Info.plist", "not a property list");
  folder.write("Number.app/Contents/Info.plist",
               R"(<?xml version="1.0"?><plist version="1.0"><dict><key>CFBundleIdentifier</key>)"
               R"(<integer>3</integer></dict></plist>)");
  folder.write("Flat.app/Info.plist", infoPlistXML("com.example.Flat"));
  EXPECT_EQ(resolveBundleIdentifier(std::nullopt), std::nullopt);
  EXPECT_EQ(resolveBundleIdentifier(" \t"), std::nullopt);
  for (const char* bundle : {"NoKey.app", "Garbage.app", "Number.app", "Flat.app", "Missing.app"}) {
    EXPECT_EQ(resolveBundleIdentifier((folder.path() / bundle).string()), std::nullopt) << bundle;
  }
  EXPECT_EQ(resolveBundleIdentifier(folder.path().string()), std::nullopt);
}

}  // namespace
}  // namespace zorvik
