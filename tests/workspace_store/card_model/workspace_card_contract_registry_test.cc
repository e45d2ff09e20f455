#include "workspace_store/card_model/workspace_card_contract_registry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "foundation/atomic_file.h"
#include "foundation/domain_error.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/resource_locator.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::TempDirectory;

// Runs the test body from another working directory and returns to the old one afterwards.
class ScopedWorkingDirectory {
 public:
  explicit ScopedWorkingDirectory(const fs::path& path) : previous_(fs::current_path()) {
    fs::current_path(path);
  }
  ~ScopedWorkingDirectory() { fs::current_path(previous_); }

 private:
  fs::path previous_;
};

constexpr std::string_view kVersionSeven = R"({
  "version": 7, "status": "legacy", "canonicalEnvelope": "old",
  "cardMeta": {"required": false}, "projectStructureVersions": [1, 2],
  "storageModes": ["filesystem"], "sidecarLayout": {}, "notes": []
})";

TEST(WorkspaceCardContractRegistryTest, LoadsTheBundledCurrentContractOnce) {
  const auto& current = WorkspaceCardContractRegistry::current();
  EXPECT_EQ(current.status, "current");
  EXPECT_FALSE(current.sidecarLayout.empty());
  EXPECT_EQ(&current, &WorkspaceCardContractRegistry::current());
  EXPECT_EQ(WorkspaceCardContractRegistry::contract(current.version), current);
}

TEST(WorkspaceCardContractRegistryTest, MissingVersionIsADomainError) {
  try {
    WorkspaceCardContractRegistry::contract(999);
    ADD_FAILURE() << "loaded";
  } catch (const DomainError& error) {
    EXPECT_EQ(error.domain(), "WorkspaceCardContractRegistry");
    EXPECT_EQ(error.code(), 1);
    EXPECT_STREQ(error.what(),
                 "Missing bundled card contract resource: CardContracts/versions/999.json");
  }
}

TEST(WorkspaceCardContractRegistryTest, LoadsOtherVersionsFromTheWorkingDirectoryResources) {
  TempDirectory temp;
  temp.write("resources/CardContracts/versions/7.json", kVersionSeven);
  temp.write("resources/CardContracts/versions/8.json", R"({"version": 8})");
  fs::create_directories(temp.path() / "nested" / "deeper");
  ScopedWorkingDirectory cwd(temp.path() / "nested" / "deeper");

  auto seven = WorkspaceCardContractRegistry::contract(7);
  EXPECT_EQ(seven.version, 7);
  EXPECT_EQ(seven.status, "legacy");
  EXPECT_EQ(seven.cardMeta.field, std::nullopt);
  EXPECT_EQ(seven.projectStructureVersions, (std::vector<int64_t>{1, 2}));

  EXPECT_THROW(WorkspaceCardContractRegistry::contract(8), DecodingError);
}

TEST(ResourceLocatorTest, FindsSourceTreeResourcesAndNothingForUnknownNames) {
  auto found = findResource(WorkspaceCardContractRegistry::currentResourcePath);
  ASSERT_TRUE(found.has_value());
  EXPECT_TRUE(fs::is_regular_file(*found));
  EXPECT_EQ(found->filename(), "current.json");
  EXPECT_EQ(found->parent_path().parent_path().filename(), "resources");

  EXPECT_EQ(findResource("CardContracts/no-such-contract.json"), std::nullopt);
}

TEST(ResourceLocatorTest, InstalledShareFolderComesBeforeTheWorkingDirectory) {
  const std::string name = "card-model-locator-" + std::to_string(::getpid()) + ".txt";
  const fs::path executableDir = fs::read_symlink("/proc/self/exe").parent_path();
  TempDirectory temp;
  temp.write("resources/" + name, "cwd");
  ScopedWorkingDirectory cwd(temp.path());

  EXPECT_EQ(findResource(name), fs::canonical(temp.path()) / "resources" / name);
  const fs::path installed = executableDir / ".." / "share" / "zorvik" / name;
  fs::create_directories(installed.parent_path());
  writeFileAtomically(installed, "installed");
  EXPECT_EQ(findResource(name), installed.lexically_normal());
  // Removes the file and the folders made for it; folders holding anything else stay.
  std::error_code notEmpty;
  for (fs::path path = installed; path != executableDir / ".."; path = path.parent_path()) {
    fs::remove(path, notEmpty);
  }
  EXPECT_EQ(findResource(name), fs::canonical(temp.path()) / "resources" / name);
}

}  // namespace
}  // namespace zorvik
