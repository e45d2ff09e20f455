// findResource: where a bundled resource file lives on this machine.
//
// A resource path such as "CardContracts/current.json" is looked up, in this order, under
//   1. <executable dir>/../share/zorvik/ (an installed program), then
//   2. a `resources/` folder in the executable's folder or any of its ancestors (the source tree
//      seen from a build tree), then
//   3. a `resources/` folder in the working directory or any of its ancestors.
// The executable is found through /proc/self/exe. Never throws; thread-safe.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace zorvik {

// The first existing candidate for `relativePath`, or nullopt when no candidate exists.
std::optional<std::filesystem::path> findResource(std::string_view relativePath);

}  // namespace zorvik
