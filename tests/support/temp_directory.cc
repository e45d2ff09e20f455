#include "support/temp_directory.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

#include <stdlib.h>

namespace zorvik::testing {

TempDirectory::TempDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "zorvik-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempDirectory::write(std::string_view relative,
                                           std::string_view contents) const {
  std::filesystem::path target = path_ / relative;
  std::filesystem::create_directories(target.parent_path());
  std::ofstream out(target, std::ios::binary | std::ios::trunc);
  out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
  if (!out) throw std::runtime_error("cannot write " + target.string());
  return target;
}

}  // namespace zorvik::testing
