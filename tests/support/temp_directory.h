// TempDirectory: a fresh folder under the system's temporary directory, removed with its contents
// when the object goes away.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zorvik::testing {

class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // Writes `contents` to `relative` below the folder, creating parent folders; returns the path.
  std::filesystem::path write(std::string_view relative, std::string_view contents) const;

 private:
  std::filesystem::path path_;
};

}  // namespace zorvik::testing
